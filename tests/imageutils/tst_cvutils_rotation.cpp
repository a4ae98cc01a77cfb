// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <support/matrices.h>

#include <QtTest/QTest>

#include <climits>
#include <cmath>
#include <limits>

using namespace TestSupport;
Q_DECLARE_METATYPE(cv::Size)
Q_DECLARE_METATYPE(cv::RotatedRect)

namespace {

constexpr double pi = 3.141592653589793;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The pixel at (x, y) of `numbered`, which bilinear sampling leaves exact between pixels too.
double numberedAt(cv::Point2d p) { return p.x + 10 * p.y; }

/// Where the point (u, v) of the unit square lies in the quadrangle of `corners` (bottom-left,
/// top-left, top-right, bottom-right): Heckbert, "Fundamentals of Texture Mapping", 1989, 2.2.3.
cv::Point2d inQuadrangle(const cv::Point2d (&corners)[4], double u, double v)
{
    const auto& [p3, p0, p1, p2] = corners;
    const cv::Point2d sum = p0 - p1 + p2 - p3;
    const double area = (p1 - p2).cross(p3 - p2);
    const double g = sum.cross(p3 - p2) / area;
    const double h = (p1 - p2).cross(sum) / area;
    return ((p1 - p0 + g * p1) * u + (p3 - p0 + h * p3) * v + p0) / (g * u + h * v + 1);
}

} // namespace

/// Rotated crops, the rectangles around them, similarity.
class CvUtilsRotationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void rectanglesAreDescribedInDegrees();
    void boundsEncloseTheCorners_data();
    void boundsEncloseTheCorners();
    void cropIsTheTurnedRectangleOfTheImage_data();
    void cropIsTheTurnedRectangleOfTheImage();
    void cornersMoveToTheEdges_data();
    void cornersMoveToTheEdges();
    void refusesWhatHasNoTransform_data();
    void refusesWhatHasNoTransform();
    void fullTurnsShareThePixels();
    void similarityFallsWithTheNorm();
};

void CvUtilsRotationTest::rectanglesAreDescribedInDegrees()
{
    const cv::RotatedRect rect = CvUtils::getRotatedRect(QRect(0, 0, 10, 10), pi / 2);
    QCOMPARE(rect.center, cv::Point2f(4, 4));
    QCOMPARE(rect.size, cv::Size2f(10, 10));
    QCOMPARE(rect.angle, 270.0f);
    QCOMPARE(CvUtils::getRotatedRect(QRect(), 0).angle, 360.0f);
    const QRect widest(QPoint(INT_MIN, 0), QPoint(INT_MAX, 4));
    QCOMPARE(CvUtils::getRotatedRect(widest, 0).size.width, 4294967296.0f);
}

void CvUtilsRotationTest::boundsEncloseTheCorners_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<double>("rotation");
    QTest::addColumn<QRect>("bounds");
    QTest::newRow("even") << QRect(0, 0, 10, 10) << 0.0 << QRect(-1, -1, 11, 11);
    QTest::newRow("odd") << QRect(0, 0, 11, 11) << 0.0 << QRect(-1, -1, 13, 13);
    QTest::newRow("elsewhere") << QRect(100, 50, 200, 100) << 0.0 << QRect(99, 49, 201, 101);
    QTest::newRow("quarter") << QRect(0, 0, 20, 10) << pi / 2 << QRect(4, -6, 11, 21);
    QTest::newRow("eighth") << QRect(0, 0, 20, 10) << pi / 4 << QRect(-2, -7, 23, 23);
    QTest::newRow("null") << QRect() << 1.0 << QRect(0, 0, 1, 1);
    QTest::newRow("inverted") << QRect(QPoint(10, 10), QPoint(0, 5)) << 0.0 << QRect(0, 5, 11, 5);
    for (const double rotation : {notANumber, infinity, -infinity})
        QTest::addRow("turned by %f", rotation) << QRect(0, 0, 10, 10) << rotation << QRect();
    const QRect widest(QPoint(INT_MIN, 0), QPoint(INT_MAX, 4));
    QTest::newRow("beyond int") << widest << 0.0 << QRect();
    QTest::newRow("turned beyond int") << widest << pi / 2 << QRect();
}

void CvUtilsRotationTest::boundsEncloseTheCorners()
{
    QFETCH(QRect, rect);
    QFETCH(double, rotation);
    QFETCH(QRect, bounds);
    if (bounds.isNull())
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^getBoundingRect: "));
    QCOMPARE(NImageUtils::getBoundingRect(rect, rotation), bounds);
}

void CvUtilsRotationTest::cropIsTheTurnedRectangleOfTheImage_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<double>("rotation");
    for (const double rotation : {0.1, pi / 4, pi / 2, 2.0, pi, -0.7, 1e6})
        QTest::addRow("%f", rotation) << QRect(100, 80, 60, 31) << rotation;
}

void CvUtilsRotationTest::cropIsTheTurnedRectangleOfTheImage()
{
    QFETCH(QRect, rect);
    QFETCH(double, rotation);
    const QRect bounds = NImageUtils::getBoundingRect(rect, rotation);
    const cv::Mat image = numbered(200, 220, CV_32FC1);
    const cv::Mat region = image(cv::Rect(bounds.x(), bounds.y(), bounds.width(), bounds.height()));
    const cv::Mat crop = CvUtils::applyRotation(region, CvUtils::getRotatedRect(rect, rotation));
    QCOMPARE(crop.size(), cv::Size(rect.width(), rect.height()));
    QCOMPARE(crop.type(), CV_32FC1);
    const cv::Point2d center(rect.center().x(), rect.center().y());
    for (int y = 0; y < crop.rows; ++y) {
        for (int x = 0; x < crop.cols; ++x) {
            // From corner to corner, as wide and high as the rectangle.
            const cv::Point2d offset((x / (crop.cols - 1.0) - 0.5) * rect.width(),
                                     (y / (crop.rows - 1.0) - 0.5) * rect.height());
            const cv::Point2d expected(
                center.x + offset.x * std::cos(rotation) + offset.y * std::sin(rotation),
                center.y - offset.x * std::sin(rotation) + offset.y * std::cos(rotation));
            // Corners are whole pixels of the image, so a pixel may be off by one in x and y.
            const double off = std::abs(double(crop.at<float>(y, x)) - numberedAt(expected));
            QVERIFY2(off <= 11.2, qPrintable(QStringLiteral("%1, %2: %3").arg(x).arg(y).arg(off)));
        }
    }
}

void CvUtilsRotationTest::cornersMoveToTheEdges_data()
{
    QTest::addColumn<cv::Size>("size");
    QTest::addColumn<cv::RotatedRect>("rect");
    const auto row = [](const char* name, cv::Size size, cv::Size2f sides, float degrees) {
        QTest::newRow(name) << size << cv::RotatedRect({20.25f, 30.5f}, sides, degrees);
    };
    row("inside", {40, 60}, {30, 21}, 25);
    row("cut at the right", {20, 60}, {30, 21}, 25);
    row("cut below", {60, 24}, {30, 21}, 205);
    row("fractions of pixels", {60, 60}, {30.5f, 21.5f}, 300);
    row("two pixels", {9, 9}, {2, 2}, 45);
    row("one and a half", {9, 9}, {1.5f, 1.5f}, 45);
}

void CvUtilsRotationTest::cornersMoveToTheEdges()
{
    QFETCH(cv::Size, size);
    QFETCH(cv::RotatedRect, rect);
    const cv::Mat region = numbered(size.height, size.width, CV_32FC1);
    const cv::Mat crop = CvUtils::applyRotation(asView(region), rect);
    QCOMPARE(crop.size(), cv::Size(cvRound(rect.size.width), cvRound(rect.size.height)));

    cv::Point2f corners[4];
    rect.points(corners);
    cv::Point2d moved[4];
    for (int i = 0; i < 4; ++i) {
        const cv::Point origin = rect.boundingRect().tl();
        moved[i] = {
            std::clamp(std::trunc(double(corners[i].x)) - origin.x, 0.0, size.width - 1.0),
            std::clamp(std::trunc(double(corners[i].y)) - origin.y, 0.0, size.height - 1.0)};
    }
    for (int y = 0; y < crop.rows; ++y) {
        for (int x = 0; x < crop.cols; ++x) {
            const cv::Point2d expected = inQuadrangle(moved, x / (double(rect.size.width) - 1),
                                                      y / (double(rect.size.height) - 1));
            if (!cv::Rect2d(0, 0, size.width - 1, size.height - 1).contains(expected))
                continue; // black may be mixed in
            const double off = std::abs(double(crop.at<float>(y, x)) - numberedAt(expected));
            // OpenCV samples at multiples of 1/32 of a pixel.
            QVERIFY2(off <= 11.0 / 64 + 1e-3,
                     qPrintable(QStringLiteral("%1, %2: %3").arg(x).arg(y).arg(off)));
        }
    }
}

void CvUtilsRotationTest::refusesWhatHasNoTransform_data()
{
    QTest::addColumn<cv::Size>("size");
    QTest::addColumn<cv::RotatedRect>("rect");
    const auto row = [](const char* name, cv::Size size, double width, double height,
                        double degrees = 30, double x = 5) {
        QTest::newRow(name) << size
                            << cv::RotatedRect({float(x), 5}, {float(width), float(height)},
                                               float(degrees));
    };
    row("empty matrix", {0, 9}, 4, 4);
    row("no width", {9, 9}, 0, 4);
    row("width below one", {9, 9}, 0.6, 4);
    row("height of one", {9, 9}, 4, 1);
    row("negative", {9, 9}, -4, 4);
    row("not a number", {9, 9}, 4, notANumber);
    row("infinite", {9, 9}, infinity, 4);
    row("beyond int", {9, 9}, 4, 2147483648.0);
    row("angle not a number", {9, 9}, 4, 4, notANumber);
    row("center beyond int", {9, 9}, 4, 4, 30, 1e10);
    row("bounds beyond int", {9, 9}, 2147483520.0, 2147483520.0);
    row("one pixel left", {1, 1}, 4, 4);
    row("one row left", {9, 1}, 4, 4);
    row("two rows left, three corners on one", {9, 2}, 4, 4);
}

void CvUtilsRotationTest::refusesWhatHasNoTransform()
{
    QFETCH(cv::Size, size);
    QFETCH(cv::RotatedRect, rect);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^applyRotation: "));
    QVERIFY(CvUtils::applyRotation(cv::Mat(size, CV_8UC3), rect).empty());
}

void CvUtilsRotationTest::fullTurnsShareThePixels()
{
    const cv::Mat mat(3, 3, CV_8UC1);
    for (const float degrees : {0.0f, -0.0f, 360.0f})
        QCOMPARE(CvUtils::applyRotation(mat, {{1, 1}, {0, 9}, degrees}).data, mat.data);
}

void CvUtilsRotationTest::similarityFallsWithTheNorm()
{
    const cv::Mat first = noise(10, 10, CV_32FC1);
    cv::Mat second = first.clone();
    QCOMPARE(CvUtils::similarity(first, second), 1.0);
    second.at<float>(3, 4) = first.at<float>(3, 4) + 1.0f;
    QCOMPARE(CvUtils::similarity(first, second), 0.99);
    const cv::Mat black(20, 10, CV_8UC3, cv::Scalar::all(0));
    const cv::Mat white(20, 10, CV_8UC3, cv::Scalar::all(255));
    QCOMPARE(CvUtils::similarity(black, white), 1 - 255 * std::sqrt(600.0) / 200);
    QVERIFY_EXCEPTION_THROWN(CvUtils::similarity(first, black), cv::Exception);
}

QTEST_GUILESS_MAIN(CvUtilsRotationTest)
#include "tst_cvutils_rotation.moc"

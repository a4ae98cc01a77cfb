// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <support/matrices.h>

#include <QtTest/QTest>

#include <climits>
#include <cmath>

using namespace TestSupport;

namespace {

constexpr double pi = 3.141592653589793;
const QRect widest(QPoint(INT_MIN, 0), QPoint(INT_MAX, 4));

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
    void boundsEncloseTheCorners();
    void cropIsTheTurnedRectangleOfTheImage_data();
    void cropIsTheTurnedRectangleOfTheImage();
    void refusesWhatHasNoTransform();
    void fullTurnsShareThePixels();
    void similarityFallsWithTheNorm();
};

void CvUtilsRotationTest::boundsEncloseTheCorners()
{
    const cv::RotatedRect quarter = CvUtils::getRotatedRect(QRect(0, 0, 20, 10), pi / 2);
    QCOMPARE(quarter.center, cv::Point2f(9, 4));
    QCOMPARE(quarter.angle, 270.0f); // counter-clockwise
    QCOMPARE(CvUtils::getRotatedRect(widest, pi / 2).size.width, 4294967296.0f);
    const auto bounds = NImageUtils::getBoundingRect;
    QCOMPARE(bounds(QRect(0, 0, 10, 10), 0), QRect(-1, -1, 11, 11));
    QCOMPARE(bounds(QRect(0, 0, 11, 11), 0), QRect(-1, -1, 13, 13));
    QCOMPARE(bounds(QRect(0, 0, 20, 10), pi / 4), QRect(-2, -7, 23, 23));
    QCOMPARE(bounds(QRect(QPoint(10, 10), QPoint(0, 5)), 0), QRect(0, 5, 11, 5));
    for (const double rotation : {std::nan(""), -HUGE_VAL, 0.0, pi / 2}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^getBoundingRect: "));
        QCOMPARE(bounds(std::isfinite(rotation) ? widest : QRect(0, 0, 9, 9), rotation), QRect());
    }
}

void CvUtilsRotationTest::cropIsTheTurnedRectangleOfTheImage_data()
{
    QTest::addColumn<cv::RotatedRect>("rect");
    QTest::addColumn<QRect>("bounds");
    for (const double rotation : {0.1, pi / 4, pi / 2, 2.0, pi, -0.7, 1e6}) {
        const QRect rect(100, 80, 60, 31);
        QTest::addRow("turned by %f", rotation) << CvUtils::getRotatedRect(rect, rotation)
                                                << NImageUtils::getBoundingRect(rect, rotation);
    }
    const auto row = [](const char* name, cv::Size2f sides, float degrees, QSize bounds) {
        const cv::RotatedRect rect({20.25f, 30.5f}, sides, degrees);
        const cv::Point origin = rect.boundingRect().tl();
        QTest::newRow(name) << rect << QRect(QPoint(origin.x, origin.y), bounds);
    };
    const cv::RotatedRect early({10.25f, 12.5f}, {60, 45}, 25);
    const cv::Rect covered = early.boundingRect();
    QTest::newRow("left of and above 0")
        << early << QRect(covered.x, covered.y, covered.width, covered.height);
    row("cut at the right", {30, 21}, 25, {20, 60});
    row("cut below", {30, 21}, 205, {60, 24});
    row("fractions of pixels", {30.5f, 21.5f}, 300, {60, 60});
    row("two pixels", {2, 2}, 45, {9, 9});
    row("one and a half", {1.5f, 1.5f}, 45, {9, 9});
}

void CvUtilsRotationTest::cropIsTheTurnedRectangleOfTheImage()
{
    QFETCH(cv::RotatedRect, rect);
    QFETCH(QRect, bounds);
    const cv::Rect region(bounds.x(), bounds.y(), bounds.width(), bounds.height());
    const cv::Point2d first = region.tl();
    const cv::Point2d last = region.br() - cv::Point(1, 1);
    // Exact between its pixels too. What is left of and above 0 has negative numbers.
    const cv::Mat image = numbered(300, 320, CV_32FC1);
    const cv::Mat seen = image(region + cv::Point(100, 100)) - cv::Scalar(1100);
    const cv::Mat crop = CvUtils::applyRotation(seen, rect);
    QCOMPARE(crop.size(), cv::Size(cvRound(rect.size.width), cvRound(rect.size.height)));

    cv::Point2f corners[4];
    rect.points(corners);
    cv::Point2d moved[4]; // to whole pixels of the region
    for (int i = 0; i < 4; ++i)
        moved[i] = {std::clamp(std::trunc(double(corners[i].x)), first.x, last.x),
                    std::clamp(std::trunc(double(corners[i].y)), first.y, last.y)};
    for (int i = 0; i < int(crop.total()); ++i) {
        const int x = i % crop.cols;
        const int y = i / crop.cols;
        const cv::Point2d expected = inQuadrangle(moved, x / (double(rect.size.width) - 1),
                                                  y / (double(rect.size.height) - 1));
        if (!cv::Rect2d(first, last).contains(expected))
            continue; // black may be mixed in
        const double off = std::abs(double(crop.at<float>(y, x)) - expected.x - 10 * expected.y);
        // OpenCV samples at multiples of 1/32 of a pixel.
        QVERIFY2(off <= 11.0 / 64 + 1e-3, qPrintable(QStringLiteral("%1: %2").arg(i).arg(off)));
    }
}

void CvUtilsRotationTest::refusesWhatHasNoTransform()
{
    const auto refuses = [](cv::Size2f sides, float degrees = 30, float x = 5,
                            cv::Size size = {9, 9}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^applyRotation: "));
        return CvUtils::applyRotation(cv::Mat(size, CV_8UC3), {{x, 5}, sides, degrees}).empty();
    };
    QVERIFY(refuses({0, 4}));
    QVERIFY(refuses({0.6f, 4}));
    QVERIFY(refuses({4, 1}));
    QVERIFY(refuses({4, std::nanf("")}));
    QVERIFY(refuses({4, 2147483648.0f}));
    QVERIFY(refuses({2147483520.0f, 2147483520.0f}));
    QVERIFY(refuses({4, 4}, std::nanf("")));
    QVERIFY(refuses({4, 4}, 30, 1e10f));
    QVERIFY(refuses({4, 4}, 30, 5, {0, 9}));
    QVERIFY(refuses({4, 4}, 30, 5, {9, 2})); // leaves three corners on one line
}

void CvUtilsRotationTest::fullTurnsShareThePixels()
{
    const cv::Mat mat(3, 3, CV_8UC1);
    for (const float degrees : {-0.0f, 360.0f})
        QCOMPARE(CvUtils::applyRotation(mat, {{1, 1}, {0, 9}, degrees}).data, mat.data);
}

void CvUtilsRotationTest::similarityFallsWithTheNorm()
{
    const cv::Mat black(20, 10, CV_8UC3, cv::Scalar::all(0));
    const cv::Mat white(20, 10, CV_8UC3, cv::Scalar::all(255));
    QCOMPARE(CvUtils::similarity(white, white), 1.0);
    QCOMPARE(CvUtils::similarity(black, white), 1 - 255 * std::sqrt(600.0) / 200);
    QVERIFY_EXCEPTION_THROWN(CvUtils::similarity(numbered(20, 10, CV_32FC1), black), cv::Exception);
}

QTEST_GUILESS_MAIN(CvUtilsRotationTest)
#include "tst_cvutils_rotation.moc"

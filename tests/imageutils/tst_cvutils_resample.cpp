// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>
#include <imageutils/cvutils_p.h>

#include <support/log.h>
#include <support/matrices.h>
#include <support/threadpool.h>

#include <QtTest/QTest>

#include <cmath>

using namespace TestSupport;

namespace {

/// One pass worked out apart from the library: centre, base and fraction in single precision, as
/// the filter defines them, all else in double.
cv::Mat passAlongRows(const cv::Mat& source, int length, float scale, double b, double c)
{
    const auto kernel = [b, c](double x) {
        const double t = std::abs(x);
        if (t < 1)
            return ((12 - 9 * b - 6 * c) * t * t * t + (-18 + 12 * b + 6 * c) * t * t + 6 - 2 * b) /
                   6;
        if (t < 2)
            return ((-b - 6 * c) * t * t * t + (6 * b + 30 * c) * t * t + (-12 * b - 48 * c) * t +
                    8 * b + 24 * c) /
                   6;
        return 0.0;
    };
    const double stretch = std::min(1.0f, scale);
    const int radius = int(std::ceil(2.0f / std::min(1.0f, scale)));
    cv::Mat result(source.rows, length, CV_64FC3);
    for (int i = 0; i < length; ++i) {
        const float centre = float(i) / scale;
        const int base = std::min(int(centre), source.cols - 1);
        const float fraction = centre - std::floor(centre);
        std::vector<double> weights;
        double sum = 0;
        for (int k = -radius; k <= radius; ++k) {
            weights.push_back(kernel((k - double(fraction)) * stretch));
            sum += weights.back();
        }
        for (int y = 0; y < source.rows; ++y) {
            for (int channel = 0; channel < 3; ++channel) {
                double value = 0;
                for (int k = -radius; k <= radius; ++k) {
                    const int x = std::clamp(base + k, 0, source.cols - 1);
                    value +=
                        weights[std::size_t(k + radius)] / sum * source.ptr<double>(y, x)[channel];
                }
                result.ptr<double>(y, i)[channel] = value;
            }
        }
    }
    return result;
}

/// What rounding may cost in one pass over samples of at most 1.
double roundingOfPass(double scale)
{
    const int radius = int(std::ceil(2.0 / std::min(1.0, scale)));
    return 4.0 * (2 * radius + 1) * std::ldexp(1.0, -24);
}

} // namespace

/// Resampling, against an independent evaluation in double precision and against itself on other
/// threads.
class CvUtilsResampleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void equalsAnIndependentEvaluation_data();
    void equalsAnIndependentEvaluation();
};

void CvUtilsResampleTest::equalsAnIndependentEvaluation_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("cols");
    QTest::addColumn<double>("scaleX");
    QTest::addColumn<double>("scaleY");
    QTest::addColumn<float>("b");
    QTest::addColumn<float>("c");
    const float third = 0.33333f;
    QTest::newRow("a tenth") << 61 << 83 << 0.1 << 0.0 << third << third;
    QTest::newRow("half, B-spline") << 101 << 99 << 0.5 << 0.5 << 1.0f << 0.0f;
    QTest::newRow("identity") << 17 << 19 << 1.0 << 1.0 << third << third;
    QTest::newRow("three, Catmull-Rom") << 13 << 7 << 3.0 << 0.7 << 0.0f << 0.5f;
    QTest::newRow("eight, interpolating") << 9 << 11 << 8.0 << 8.0 << 0.0f << 0.0f;
    QTest::newRow("one row, long") << 1 << 70000 << 0.3 << 1.0 << third << third;
    QTest::newRow("one column") << 301 << 1 << 2.0 << 0.37 << third << third;
    QTest::newRow("one pixel") << 1 << 1 << 5.0 << 5.0 << third << third;
}

void CvUtilsResampleTest::equalsAnIndependentEvaluation()
{
    QFETCH(int, rows);
    QFETCH(int, cols);
    QFETCH(double, scaleX);
    QFETCH(double, scaleY);
    QFETCH(float, b);
    QFETCH(float, c);
    const cv::Mat source = noise(rows, cols, CV_32FC3);
    const cv::Mat result = CvUtils::resize(asView(source), scaleX, scaleY, 0, 0, b, c);
    if (scaleY == 0)
        scaleY = scaleX;
    QCOMPARE(result.cols, int(std::ceil(cols * scaleX)));
    QCOMPARE(result.rows, int(std::ceil(rows * scaleY)));

    cv::Mat wide;
    source.convertTo(wide, CV_64F);
    const cv::Mat across = passAlongRows(wide, result.cols, float(scaleX), b, c);
    const cv::Mat expected = passAlongRows(across.t(), result.rows, float(scaleY), b, c).t();
    result.convertTo(wide, CV_64F);
    const double error = cv::norm(wide, expected, cv::NORM_INF);
    const double allowed = 2 * std::max(roundingOfPass(scaleX), roundingOfPass(scaleY));
    QVERIFY2(error <= allowed, qPrintable(QStringLiteral("%1 > %2").arg(error).arg(allowed)));
}

QTEST_GUILESS_MAIN(CvUtilsResampleTest)
#include "tst_cvutils_resample.moc"

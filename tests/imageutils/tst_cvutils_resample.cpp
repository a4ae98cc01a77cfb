// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>
#include <imageutils/cvutils_resample_p.h>

#include <support/log.h>
#include <support/matrices.h>
#include <support/threadpool.h>

#include <QtTest/QTest>

#include <cmath>
#include <cstring>
#include <tuple>

using namespace TestSupport;

Q_DECLARE_METATYPE(cv::Size)

namespace {

constexpr float third = 0.33333f;

/// One vertical pass, computed independently of the library: centre, base and fraction in single
/// precision, as the filter defines them, everything else in double.
cv::Mat passDown(const cv::Mat& source, int length, float scale, double b, double c)
{
    const auto kernelTimesSix = [b, c](double x) {
        const double t = std::abs(x);
        if (t < 1)
            return ((12 - 9 * b - 6 * c) * t + 12 * b + 6 * c - 18) * t * t + 6 - 2 * b;
        const double outer = ((-b - 6 * c) * t + 6 * b + 30 * c) * t - 12 * b - 48 * c;
        return t < 2 ? outer * t + 8 * b + 24 * c : 0.0;
    };
    const float stretch = std::min(1.0f, scale);
    const int radius = int(std::ceil(2.0f / stretch));
    cv::Mat result(length, source.cols, CV_64FC3, cv::Scalar());
    for (int i = 0; i < length; ++i) {
        const float centre = float(i) / scale, fraction = centre - std::floor(centre);
        const cv::Mat line = result.row(i);
        double sum = 0;
        for (int k = -radius; k <= radius; ++k) {
            const double weight = kernelTimesSix((k - double(fraction)) * double(stretch));
            const int row =
                std::clamp(std::min(int(centre), source.rows - 1) + k, 0, source.rows - 1);
            cv::scaleAdd(source.row(row), weight, line, line);
            sum += weight;
        }
        line /= sum;
    }
    return result;
}

} // namespace

/// Resampling, against an independent evaluation in double precision and against itself on other
/// threads.
class CvUtilsResampleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useThreads(2); }
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void equalsAnIndependentEvaluation_data();
    void equalsAnIndependentEvaluation();
    void overshootsBeyondTheLastSample();
    void bitsDoNotDependOnThreadsStripesOrBands();
    void capsCutOff();
    void upsamplesInWholeSteps();
    void refuses();
    void centreStaysInsideTheLine();
};

void CvUtilsResampleTest::equalsAnIndependentEvaluation_data()
{
    QTest::addColumn<cv::Size>("size");
    QTest::addColumn<double>("scaleX");
    QTest::addColumn<double>("scaleY");
    QTest::addColumn<float>("b");
    QTest::addColumn<float>("c");
    QTest::newRow("a tenth") << cv::Size(83, 61) << 0.1 << 0.0 << third << third;
    QTest::newRow("half, B-spline") << cv::Size(99, 101) << 0.5 << 0.5 << 1.0f << 0.0f;
    QTest::newRow("identity") << cv::Size(19, 17) << 1.0 << 1.0 << third << third;
    QTest::newRow("three, Catmull-Rom") << cv::Size(7, 13) << 3.0 << 0.7 << 0.0f << 0.5f;
    QTest::newRow("eight, interpolating") << cv::Size(11, 9) << 8.0 << 8.0 << 0.0f << 0.0f;
    QTest::newRow("several bands of wide rows")
        << cv::Size(700, 600) << 0.5 << 0.6 << third << third;
    QTest::newRow("one row, long") << cv::Size(70000, 1) << 0.3 << 1.0 << third << third;
    QTest::newRow("one column") << cv::Size(1, 301) << 2.0 << 0.37 << third << third;
    QTest::newRow("one pixel") << cv::Size(1, 1) << 5.0 << 5.0 << third << third;
}

void CvUtilsResampleTest::equalsAnIndependentEvaluation()
{
    QFETCH(cv::Size, size);
    QFETCH(double, scaleX);
    QFETCH(double, scaleY);
    QFETCH(float, b);
    QFETCH(float, c);
    const cv::Mat source = noise(size.height, size.width, CV_32FC3);
    const cv::Mat result = CvUtils::resize(asView(source), scaleX, scaleY, 0, 0, b, c);
    if (scaleY == 0)
        scaleY = scaleX;
    const int cols = int(std::ceil(size.width * scaleX)),
              rows = int(std::ceil(size.height * scaleY));
    QCOMPARE(result.size(), cv::Size(cols, rows));
    cv::Mat wide;
    source.convertTo(wide, CV_64F);
    const cv::Mat across = passDown(wide.t(), cols, float(scaleX), b, c).t();
    const cv::Mat expected = passDown(across, rows, float(scaleY), b, c);
    result.convertTo(wide, CV_64F);
    const double error = cv::norm(wide, expected, cv::NORM_INF);
    const double radius = std::ceil(2 / std::min({1.0, scaleX, scaleY}));
    const double allowed = 8 * (2 * radius + 1) * std::ldexp(1.0, -24); // rounding of two passes
    QVERIFY2(error <= allowed, qPrintable(QStringLiteral("%1 > %2").arg(error).arg(allowed)));

    const cv::Mat constant(size, CV_32FC3, cv::Scalar::all(0.75));
    const cv::Mat kept = CvUtils::resize(constant, scaleX, scaleY, 0, 0, b, c);
    QVERIFY(cv::norm(kept, cv::Mat(kept.size(), CV_32FC3, cv::Scalar::all(0.75)), cv::NORM_INF) <
            1e-6);
}

void CvUtilsResampleTest::overshootsBeyondTheLastSample()
{
    const cv::Mat edge = (cv::Mat_<cv::Vec3f>(1, 2) << cv::Vec3f(0, 0, 0), cv::Vec3f(1, 1, 1));
    const cv::Mat result = CvUtils::resize(edge, 2, 1, 0, 0, third, third);
    const float expected[] = {0.055555f, 0.5f, 0.944445f, 1.034721f};
    QCOMPARE(result.size(), cv::Size(4, 1));
    for (int x = 0; x < 4; ++x)
        QVERIFY(std::abs(result.at<cv::Vec3f>(0, x)[2] - expected[x]) < 1e-6f);
}

void CvUtilsResampleTest::bitsDoNotDependOnThreadsStripesOrBands()
{
    cv::Mat source = noise(5000, 97, CV_32FC3);    // some 4 MiB: several bands
    for (const float scale : {1.0f, 6.1f, 0.5f}) { // 6.1: large enough to be prefaulted
        if (scale < 1) // spreads as far as its taps reach, and no farther
            source.at<cv::Vec3f>(2500, 50)[1] = INFINITY;
        const int height = int(std::ceil(5000 * double(scale)));
        int radius = 0, radiusX = 0;
        const auto weightsX = Kernels::computeWeights(97, 0, 0.5f, 1, radiusX);
        const auto weights = Kernels::computeWeights(height, 0, 0.5f, scale, radius);
        cv::Mat across(source.size(), CV_32FC3), whole(height, 97, CV_32FC3);
        ParallelInterpRow32FC3(source, across, 1, radiusX, weightsX)(cv::Range(0, 5000));
        const ParallelInterpCols32FC3 body(across, whole, scale, radius, weights);
        for (int x = 0; x < 97; ++x)
            body(cv::Range(x, x + 1));
        for (const int threads : {200, 5, 1}) { // with 200, ranges of one column
            useThreads(threads);
            QVERIFY(sameBytes(CvUtils::resize(source, 1, double(scale), 0, 0, 0, 0.5f), whole));
        }
    }
}

void CvUtilsResampleTest::capsCutOff()
{
    const cv::Mat source = noise(40, 100, CV_32FC3);
    const cv::Mat whole = CvUtils::resize(source, 2, 0, 0, 0, 0, 0.5f);
    const cv::Mat capped = CvUtils::resize(source, 2, 0, 30, 150, 0, 0.5f);
    QVERIFY(sameBytes(capped, whole(cv::Rect(0, 0, 150, 30))));
    QCOMPARE(CvUtils::resize(source, 1e9, 1, 0, 150, 0, 0.5f).size(), cv::Size(150, 40));
}

void CvUtilsResampleTest::upsamplesInWholeSteps()
{
    const cv::Mat source = noise(5, 100, CV_32FC3);
    for (const auto& [scale, limit, steps] :
         {std::tuple(2.0f, 2.0f, 1), std::tuple(2.5f, 2.0f, 1), std::tuple(3.0f, 2.0f, 2),
          std::tuple(6.0f, 2.0f, 3), std::tuple(0.5f, 0.8f, 1), std::tuple(3.0f, NAN, 1)}) {
        const double step = steps == 1 ? double(scale) : std::pow(double(scale), 1.0 / steps);
        cv::Mat expected = source;
        for (int i = 1; i < steps; ++i)
            expected = CvUtils::resize(expected, step, step, 0, 0, third, third);
        expected = CvUtils::resize(expected, step, step, 9, 300, third, third);
        QVERIFY(sameBytes(CvUtils::upsample(source, scale, 9, 300, limit), expected));
    }
}

void CvUtilsResampleTest::refuses()
{
    const cv::Mat picture(7, 7, CV_32FC3, cv::Scalar::all(1)), bytes(7, 7, CV_8UC3);
    LogCapture log;
    const auto refusal = [&log](const cv::Mat& mat, double scaleX, double scaleY, float b = 0) {
        const bool empty = CvUtils::resize(mat, scaleX, scaleY, 0, 0, b, 0).empty();
        return empty ? log.takeTexts().join(u'\n') : QStringLiteral("not refused");
    };
    const QString begin = "warning: resize: ", large = begin + "result is too large, got: ",
                  factor = begin + "factor must be finite and above 0.000002, got: ";
    QCOMPARE(refusal(cv::Mat(0, 7, CV_32FC3), 1, 1), begin + "input is empty, got type: 21");
    QCOMPARE(refusal(bytes, 1, 1), begin + "input must be CV_32FC3, got type: 16");
    QCOMPARE(refusal(picture, -2, -1), factor + "-2");
    QCOMPARE(refusal(picture, 1, NAN), factor + "nan");
    QCOMPARE(refusal(picture, INFINITY, 1), factor + "inf");
    QCOMPARE(refusal(picture, 1.9e-6, 1), factor + "1.9e-06");
    QCOMPARE(refusal(picture, 1, 1, NAN), begin + "filter parameters must be finite, got: nan 0");
    QCOMPARE(refusal(picture, 1e9, 1), large + "7e+09 x 7");                 // a side beyond int
    QCOMPARE(refusal(picture, 2.5e8, 2.5e8), large + "1.75e+09 x 1.75e+09"); // bytes beyond 64 bits
    QVERIFY(CvUtils::upsample(bytes, 2, 0, 0, 2).empty());
    QVERIFY(CvUtils::upsample(picture, -2, 0, 0, 2).empty());
    QVERIFY(CvUtils::upsample(picture, 2.5e8f, 0, 0, 4e8f).empty());
    QCOMPARE(log.take().size(), 3);
    for (const float limit :
         {1.0f, 0.0f, -3.0f, 1.000001f}) // no number of steps is enough, or too many are needed
        QVERIFY(CvUtils::upsample(picture, 2, 0, 0, limit).data == picture.data);
    QCOMPARE(log.take().size(), 4);
}

void CvUtilsResampleTest::centreStaysInsideTheLine()
{
    // In single precision the last centre reaches the input length here.
    for (const auto& [length, scale, inputLength] :
         {std::tuple(16777217, 1.0f, 16777216), std::tuple(30, 3.0f, 9)}) {
        const std::vector<int> centres = Kernels::centreSamples(0, length, scale, inputLength);
        QCOMPARE(centres.back(), inputLength - 1);
        QVERIFY(std::is_sorted(centres.begin(), centres.end()));
    }
}

QTEST_GUILESS_MAIN(CvUtilsResampleTest)
#include "tst_cvutils_resample.moc"

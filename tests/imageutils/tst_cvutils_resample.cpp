// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>
#include <imageutils/cvutils_p.h>

#include <support/log.h>
#include <support/matrices.h>
#include <support/threadpool.h>

#include <QtTest/QTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <tuple>

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
    void initTestCase() { useThreads(2); }
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void weightsFollowTheFilter();
    void equalsAnIndependentEvaluation_data();
    void equalsAnIndependentEvaluation();
    void overshootsBeyondTheLastSample();
    void keepsAConstantPicture();
    void bitsDoNotDependOnThreadsOrStripes();
    void capsCutOff();
    void upsamplesInWholeSteps_data();
    void upsamplesInWholeSteps();
    void refuses_data();
    void refuses();
    void centreStaysInsideTheLine();
    void vectorsEqualThePlainLoop();
    void bandsEqualOnePiece();
};

void CvUtilsResampleTest::weightsFollowTheFilter()
{
    int radius = 0;
    const std::vector<float> half = Kernels::computeWeights(5, 0.33333f, 0.33333f, 0.5f, radius);
    const float expected[] = {0,         -0.017361f, 0.027778f,  0.267361f, 0.444445f,
                              0.267361f, 0.027778f,  -0.017361f, 0};
    QVERIFY(radius == 4 && half.size() == 5 * 9);
    for (std::size_t k = 0; k < 9; ++k)
        QVERIFY(std::abs(half[9 + k] - expected[k]) < 6e-7f); // those of the second sample
}

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

void CvUtilsResampleTest::overshootsBeyondTheLastSample()
{
    const cv::Mat edge = (cv::Mat_<cv::Vec3f>(1, 2) << cv::Vec3f(0, 0, 0), cv::Vec3f(1, 1, 1));
    const cv::Mat result = CvUtils::resize(edge, 2, 1, 0, 0, 0.33333f, 0.33333f);
    const float expected[] = {0.055555f, 0.5f, 0.944445f, 1.034721f};
    QCOMPARE(result.size(), cv::Size(4, 1));
    for (int x = 0; x < 4; ++x)
        QVERIFY(std::abs(result.at<cv::Vec3f>(0, x)[2] - expected[x]) < 1e-6f);
}

void CvUtilsResampleTest::keepsAConstantPicture()
{
    const cv::Mat constant(23, 31, CV_32FC3, cv::Scalar(0.25, 0.5, 0.75));
    for (const double scale : {0.13, 0.5, 1.0, 2.7}) {
        const cv::Mat result = CvUtils::resize(constant, scale, scale, 0, 0, 0.33333f, 0.33333f);
        const cv::Mat expected(result.size(), CV_32FC3, cv::Scalar(0.25, 0.5, 0.75));
        QVERIFY(cv::norm(result, expected, cv::NORM_INF) < 1e-6);
    }
}

void CvUtilsResampleTest::bitsDoNotDependOnThreadsOrStripes()
{
    const cv::Mat source = noise(67, 131, CV_32FC3);
    const auto resized = [&source](int threads) {
        useThreads(threads);
        return CvUtils::resize(source, 0.77, 1.9, 0, 0, 0.33333f, 0.33333f);
    };
    const cv::Mat expected = resized(1);
    for (const int threads : {2, 5, 200}) // with 200, ranges of one column
        QVERIFY(sameBytes(resized(threads), expected));

    cv::Mat byColumn(expected.rows, source.cols, CV_32FC3), whole = byColumn.clone();
    int radius = 0;
    const std::vector<float> weights =
        Kernels::computeWeights(expected.rows, 0.33333f, 0.33333f, 1.9f, radius);
    const ParallelInterpCols32FC3 body(source, byColumn, 1.9f, radius, weights);
    for (int x = 0; x < source.cols; ++x)
        body(cv::Range(x, x + 1));
    ParallelInterpCols32FC3(source, whole, 1.9f, radius, weights)(cv::Range(0, source.cols));
    QVERIFY(sameBytes(byColumn, whole));
}

void CvUtilsResampleTest::capsCutOff()
{
    const cv::Mat source = noise(40, 100, CV_32FC3);
    const cv::Mat whole = CvUtils::resize(source, 2, 0, 0, 0, 0, 0.5f);
    const cv::Mat capped = CvUtils::resize(source, 2, 0, 30, 150, 0, 0.5f);
    QCOMPARE(capped.size(), cv::Size(150, 30));
    QVERIFY(sameBytes(capped, whole(cv::Rect(0, 0, 150, 30))));
    QCOMPARE(CvUtils::resize(source, 1e9, 1, 0, 150, 0, 0.5f).size(), cv::Size(150, 40));
}

void CvUtilsResampleTest::upsamplesInWholeSteps_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<float>("limit");
    QTest::addColumn<int>("steps");
    QTest::newRow("at the limit") << 2.0f << 2.0f << 1;
    QTest::newRow("rounded down to one step") << 2.5f << 2.0f << 1;
    QTest::newRow("rounded up to two") << 3.0f << 2.0f << 2;
    QTest::newRow("two") << 4.0f << 2.0f << 2;
    QTest::newRow("three") << 6.0f << 2.0f << 3;
    QTest::newRow("below 1") << 0.5f << 0.8f << 1;
    QTest::newRow("no limit") << 3.0f << std::numeric_limits<float>::quiet_NaN() << 1;
}

void CvUtilsResampleTest::upsamplesInWholeSteps()
{
    QFETCH(float, scale);
    QFETCH(float, limit);
    QFETCH(int, steps);
    const cv::Mat source = noise(5, 100, CV_32FC3);
    cv::Mat expected = source;
    const double step = steps == 1 ? double(scale) : std::pow(double(scale), 1.0 / steps);
    for (int i = 1; i <= steps; ++i)
        expected = CvUtils::resize(expected, step, step, i == steps ? 9 : 0, i == steps ? 300 : 0,
                                   0.33333f, 0.33333f);
    QVERIFY(sameBytes(CvUtils::upsample(source, scale, 9, 300, limit), expected));
}

void CvUtilsResampleTest::refuses_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<double>("scaleX");
    QTest::addColumn<double>("scaleY");
    QTest::addColumn<float>("b");
    QTest::addColumn<QString>("line");
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 infinite = std::numeric_limits<double>::infinity();
    const QString type = "resize: input must be CV_32FC3, got type: ",
                  factor = "resize: factor must be ";
    QTest::newRow("no pixels") << -1 << 1.0 << 1.0 << 0.0f << "resize: input is empty";
    QTest::newRow("8 bit") << CV_8UC3 << 1.0 << 1.0 << 0.0f << type + "16";
    QTest::newRow("four channels") << CV_32FC4 << 1.0 << 1.0 << 0.0f << type + "29";
    QTest::newRow("zero") << CV_32FC3 << 0.0 << 1.0 << 0.0f << factor;
    QTest::newRow("negative, both") << CV_32FC3 << -2.0 << -1.0 << 0.0f << factor;
    QTest::newRow("not a number, x") << CV_32FC3 << nan << 1.0 << 0.0f << factor;
    QTest::newRow("not a number, y") << CV_32FC3 << 1.0 << nan << 0.0f << factor;
    QTest::newRow("infinite") << CV_32FC3 << infinite << 1.0 << 0.0f << factor;
    QTest::newRow("radius") << CV_32FC3 << 1.9e-6 << 1.0 << 0.0f << factor;
    QTest::newRow("parameter") << CV_32FC3 << 1.0 << 1.0 << float(nan)
                               << "resize: filter parameters must be finite";
    QTest::newRow("side beyond int")
        << CV_32FC3 << 1e9 << 1.0 << 0.0f << "resize: result is too large";
    QTest::newRow("bytes beyond 64 bits")
        << CV_32FC3 << 2.5e8 << 2.5e8 << 0.0f << "resize: result is too large";
}

void CvUtilsResampleTest::refuses()
{
    QFETCH(int, type);
    QFETCH(double, scaleX);
    QFETCH(double, scaleY);
    QFETCH(float, b);
    QFETCH(QString, line);
    const cv::Mat mat =
        type < 0 ? cv::Mat(0, 7, CV_32FC3) : cv::Mat(7, 7, type, cv::Scalar::all(1));
    LogCapture log;
    QVERIFY(CvUtils::resize(mat, scaleX, scaleY, 0, 0, b, 0).empty());
    const QStringList lines = log.takeTexts();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith("warning: " + line), qPrintable(lines[0]));

    if (scaleX == scaleY && std::isfinite(b)) {
        QVERIFY(CvUtils::upsample(mat, float(scaleX), 0, 0, 4e8f).empty() || scaleX == 1);
        QCOMPARE(log.take().size(), 1);
    }
    const cv::Mat picture(2, 2, CV_32FC3, cv::Scalar::all(1));
    for (const float limit :
         {1.0f, 0.0f, -3.0f, 1.000001f}) { // no step gets there, or too many would
        QVERIFY(CvUtils::upsample(picture, 2, 0, 0, limit).data == picture.data);
        QCOMPARE(log.take().size(), 1);
    }
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

void CvUtilsResampleTest::vectorsEqualThePlainLoop()
{
    const cv::Mat samples = noise(1, 100 * 48, CV_32FC1), weights = noise(1, 40 * 17, CV_32FC1, 2);
    for (const int taps : {5, 9, 17}) {
        for (const std::size_t width : {3, 6, 47, 48}) {
            for (int length = 1; length <= 19; ++length) { // two vectors of outputs, and three
                const std::vector<int> centres =
                    Kernels::centreSamples(0, length, 0.7f, 100 - taps - 1);
                const float* const line = samples.ptr<float>() + length % 4; // odd offsets
                std::vector<float> plain(20 * 48, -7), vectors = plain;
                const std::size_t stride = width + std::size_t(length % 2);
                Kernels::interpolateLine(line, width, centres.data(), weights.ptr<float>(), taps,
                                         length, plain.data(), stride);
                Kernels::interpolateLineInVectors(line, width, centres.data(), weights.ptr<float>(),
                                                  taps, length, vectors.data(), stride);
                QVERIFY(std::memcmp(plain.data(), vectors.data(), plain.size() * 4) == 0);
            }
        }
    }
}

void CvUtilsResampleTest::bandsEqualOnePiece()
{
    const cv::Mat source = noise(5000, 97, CV_32FC3); // some 4 MiB at a factor of 1: several bands
    for (const auto& [scale, infinite] :
         {std::pair(1.0, false), std::pair(0.5, true), std::pair(1.7, false)}) {
        cv::Mat input = source.clone();
        if (infinite) // spreads as far as its taps reach, and no farther
            input.at<cv::Vec3f>(2500, 50)[1] = std::numeric_limits<float>::infinity();
        const int height = int(std::ceil(5000 * scale));
        int radius = 0;
        const std::vector<float> weights =
            Kernels::computeWeights(height, 0, 0.5f, float(scale), radius);
        cv::Mat across(5000, 97, CV_32FC3), whole(height, 97, CV_32FC3);
        int radiusX = 0;
        const std::vector<float> unit = Kernels::computeWeights(97, 0, 0.5f, 1, radiusX);
        ParallelInterpRow32FC3(input, across, 1, radiusX, unit)(cv::Range(0, 5000));
        ParallelInterpCols32FC3(across, whole, float(scale), radius, weights)(cv::Range(0, 97));
        QVERIFY(sameBytes(CvUtils::resize(input, 1, scale, 0, 0, 0, 0.5f), whole));
    }
}

QTEST_GUILESS_MAIN(CvUtilsResampleTest)
#include "tst_cvutils_resample.moc"

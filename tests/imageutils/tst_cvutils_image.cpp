// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>
#include <imageutils/cvutils_p.h>

#include <support/log.h>
#include <support/matrices.h>
#include <support/threadpool.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <cstring>
#include <numeric>

using namespace TestSupport;

namespace {

/// The pixels of an image of four floats a pixel.
cv::Mat pixelsOf(QImage& image)
{
    return cv::Mat(image.height(), image.width(), CV_32FC4, image.bits(),
                   std::size_t(image.bytesPerLine()));
}

/// Noise that is the same in all three channels.
cv::Mat greyNoise(int rows, int cols, int depth)
{
    cv::Mat grey;
    cv::merge(std::vector<cv::Mat>(3, noise(rows, cols, depth)), grey);
    return grey;
}

} // namespace

/// Matrices to images and back, their depths and channels, what they show, and bitmap files.
class CvUtilsImageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useThreads(2); }
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void wrapsPixelsInPlaceAndKeepsThem();
    void refusesOtherMatrices();
    void convertsDepths();
    void splitsAndMerges();
    void imageAndPlanesRoundTrip();
    void refusesImagesAndPlanes();
    void findsMonochrome();
    void makesMonochrome();
    void tellsLumaNoise();
    void detailDoesNotDependOnBands();
    void writesBitmapsOnly();
};

void CvUtilsImageTest::wrapsPixelsInPlaceAndKeepsThem()
{
    cv::Mat view = asView(numbered(40, 30, CV_32FC4));
    QImage image = CvUtils::matToQImage(view, QImage::Format_RGBA32FPx4);
    QVERIFY(image.size() == QSize(30, 40) && image.constBits() == view.data);
    QCOMPARE(CvUtils::memoryUsage(view), 40ull * view.step[0]);
    QCOMPARE(CvUtils::memoryUsage(cv::Mat()), 0ull);
    view.release();
    const cv::Mat other(43, 35, CV_32FC4, cv::Scalar::all(7)); // would take freed memory
    QVERIFY(sameBytes(pixelsOf(image), numbered(40, 30, CV_32FC4)));
}

void CvUtilsImageTest::refusesOtherMatrices()
{
    const int cube[] = {2, 2, 2};
    const cv::Mat square(2, 2, CV_8UC2);
    LogCapture log;
    for (const auto& [mat, format] :
         {std::pair(cv::Mat(), QImage::Format_RGBA32FPx4),
          std::pair(cv::Mat(3, cube, CV_8UC4), QImage::Format_RGB32),
          std::pair(square, QImage::Format_Invalid), std::pair(square, QImage::NImageFormats),
          std::pair(square, QImage::Format_RGB666)}) { // 24 bits that say 18
        const int references = mat.u ? mat.u->refcount : 0;
        QVERIFY(CvUtils::matToQImage(mat, format).isNull());
        QCOMPARE(mat.u ? mat.u->refcount : 0, references); // no header is left behind
    }
    QCOMPARE(log.takeTexts().filter("warning: matToQImage: ").size(), 4);

    cv::Mat mat = numbered(2, 2, CV_8UC3);
    QVERIFY(!CvUtils::isMonochrome(cv::Mat(2, 2, CV_16SC3)));
    CvUtils::toMonochrome(mat);
    QVERIFY(sameBytes(mat, numbered(2, 2, CV_8UC3)));
    const QString line = "critical: Wrong mat type passed to %1 ). Not checking to avoid crash.";
    QCOMPARE(log.takeTexts(),
             QStringList({line.arg("isMonochrome ( 19"), line.arg("toMonochrome ( 16")}));
    QVERIFY_EXCEPTION_THROWN(CvUtils::isLumaNoise(cv::Mat(2, 2, CV_8UC1)), cv::Exception);
}

void CvUtilsImageTest::convertsDepths()
{
    const auto converted = [](int from, int to, const cv::Scalar& values) {
        const cv::Mat mat(1, 1, CV_MAKETYPE(from, 4), values);
        cv::Mat result = CvUtils::convert(mat, to);
        if (result.type() != CV_MAKETYPE(to & 7, 4) || CvUtils::convert(mat, from).data != mat.data)
            return cv::Scalar::all(-7);
        result.convertTo(result, CV_32F); // the only depth that half floats turn into
        return cv::Scalar(result.at<cv::Vec4f>(0));
    };
    LogCapture log;
    QCOMPARE(converted(CV_8U, CV_16U, {255, 1, 0}), cv::Scalar(65535, 257, 0));
    QCOMPARE(converted(CV_16U, CV_8U, {65535, 257, 0}), cv::Scalar(255, 1, 0));
    QCOMPARE(converted(CV_32F, CV_8U, {1.0, 0.5, 1.2, -0.1}), cv::Scalar(255, 128, 255, 0));
    QCOMPARE(converted(CV_32F, CV_16U, {1.0, 0.8}), cv::Scalar(65535, 52428));
    QCOMPARE(converted(CV_8U, CV_32F, {255, 51}), cv::Scalar(1, double(51 * (1 / 255.0f))));
    QCOMPARE(converted(CV_8S, CV_8U, {127, -1}), cv::Scalar(1, 0));
    QCOMPARE(converted(CV_16S, CV_8U, {32767, -1}), cv::Scalar(255, 0));
    QCOMPARE(converted(CV_8U, CV_16S, {255, 51}), cv::Scalar(32767, 6553));
    QCOMPARE(converted(CV_64F, CV_16U, {1, 0.25}), cv::Scalar(65535, 16384));
    QCOMPARE(converted(CV_32F, CV_16F, {0.5, 2}), cv::Scalar(0.5, 2));
    QCOMPARE(converted(CV_16U, CV_32S, {65535, 40000}), cv::Scalar(1, 1));
    QCOMPARE(converted(CV_32S, CV_32F, {7}), cv::Scalar(7));
    QCOMPARE(converted(CV_32F, -1, {0.5, 2}), cv::Scalar(0.5, 2)); // to halves
    const QString invalid = "warning: Invalid conversion depth given: ";
    QCOMPARE(log.takeTexts(), QStringList({invalid + "4", invalid + "4", invalid + "-1"}));
}

void CvUtilsImageTest::splitsAndMerges()
{
    for (const int type : {CV_8UC2, CV_16UC4, CV_16FC4, CV_32FC4, CV_64FC2}) {
        // The type of most photographs gets a size at which memory is prefaulted.
        const cv::Mat mat = type == CV_32FC4 ? noise(2000, 1500, type) : noise(33, 17, type);
        cv::Mat chroma, alpha;
        CvUtils::splitChromaAlpha(asView(mat), chroma, alpha);
        QVERIFY(chroma.type() == type - 8 && alpha.type() == CV_MAT_DEPTH(type));
        const std::size_t colourBytes = chroma.elemSize(), alphaBytes = alpha.elemSize();
        for (std::size_t i = 0; i < mat.total(); ++i) {
            const uchar* const pixel = mat.data + i * mat.elemSize();
            QVERIFY(std::memcmp(chroma.data + i * colourBytes, pixel, colourBytes) == 0);
            QVERIFY(std::memcmp(alpha.data + i * alphaBytes, pixel + colourBytes, alphaBytes) == 0);
        }
        QVERIFY(sameBytes(CvUtils::mergeChromaAlpha(asView(chroma), asView(alpha)), mat));

        // An output may be the variable that holds the input, and outputs still in use elsewhere
        // are not written into.
        cv::Mat first = mat.clone(), second = mat.clone();
        const cv::Mat shown = chroma, kept = chroma.clone();
        CvUtils::splitChromaAlpha(first, first, alpha);
        CvUtils::splitChromaAlpha(second, chroma, second);
        QVERIFY(sameBytes(first, kept) && sameBytes(second, alpha) && chroma.data != shown.data);
    }
}

void CvUtilsImageTest::imageAndPlanesRoundTrip()
{
    const cv::Mat pixels = noise(30, 44, CV_32FC4), half = noise(15, 22, CV_32FC1);
    cv::Mat chroma, alpha, small = half, none(3, 0, CV_8UC3), stretched;
    {
        const QImage shared = CvUtils::matToQImage(asView(pixels), QImage::Format_RGBA32FPx4);
        QImage image = shared; // which gets rows without gaps
        QVERIFY(CvUtils::qimageToMat(image, chroma, alpha));
    }
    cv::resize(half, stretched, chroma.size());
    const cv::Mat opaque(chroma.size(), CV_32FC1, cv::Scalar(1.0));
    LogCapture log;
    QImage back = CvUtils::matToQImage(chroma, alpha);
    QVERIFY(sameBytes(pixelsOf(back), pixels));
    back = CvUtils::matToQImage(chroma, small);
    QVERIFY(sameBytes(small, stretched));
    QVERIFY(sameBytes(pixelsOf(back), CvUtils::mergeChromaAlpha(chroma, stretched)));
    back = CvUtils::matToQImage(chroma, none);
    QVERIFY(sameBytes(pixelsOf(back), CvUtils::mergeChromaAlpha(chroma, opaque)));
    const QString lines =
        "benchmark\nwarning: Alpha mat is different size, using generic upscaling to make it merge."
        "\nbenchmark\ninfo: No alpha mat needed, using generic RGB -> RGBA conversion\nbenchmark";
    const QRegularExpression benchmark("info: .Benchmark. Time to convert mat to 4 channel: "
                                       "\"[0-9.]+ (ns|us|ms|s)\"");
    QCOMPARE(log.takeTexts().join(u'\n').replace(benchmark, "benchmark"), lines);
}

void CvUtilsImageTest::refusesImagesAndPlanes()
{
    cv::Mat chroma = numbered(2, 3, CV_32FC3), alpha = numbered(2, 3, CV_32FC1);
    const cv::Mat chromaBefore = chroma, alphaBefore = alpha;
    LogCapture log;
    QImage null, half(4, 4, QImage::Format_RGBA16FPx4);
    for (QImage* const image : {&null, &half})
        QVERIFY(!CvUtils::qimageToMat(*image, chroma, alpha));
    cv::Mat wide(2, 3, CV_64FC1), small(1, 1, CV_8UC1);
    QVERIFY(CvUtils::matToQImage(numbered(2, 3, CV_32FC4), alpha).isNull());
    QVERIFY(CvUtils::matToQImage(cv::Mat(), alpha).isNull());
    QVERIFY(CvUtils::matToQImage(chroma, wide).isNull());
    QVERIFY(CvUtils::matToQImage(chroma, small).isNull() && small.size() == cv::Size(1, 1));
    QVERIFY(chroma.data == chromaBefore.data && alpha.data == alphaBefore.data);

    const cv::Mat two(2, 3, CV_8UC2), one(2, 3, CV_8UC1);
    CvUtils::splitChromaAlpha(numbered(2, 3, CV_8UC3), chroma, alpha);
    QVERIFY(chroma.type() == CV_8UC2 && alpha.type() == CV_8UC1 && alpha.size() == two.size());
    CvUtils::splitChromaAlpha(one, chroma, alpha);
    QVERIFY(chroma.empty() && alpha.size() == two.size());
    for (const cv::Mat& none :
         {cv::Mat(3, 0, CV_32FC4), cv::Mat(0, 3, CV_8UC4)}) // rows of no bytes
        CvUtils::splitChromaAlpha(none, chroma, alpha);
    QVERIFY(chroma.type() == CV_8UC3 && chroma.size() == cv::Size(3, 0) && alpha.cols == 3);
    QVERIFY(CvUtils::mergeChromaAlpha(two, one).data == two.data);
    QVERIFY_EXCEPTION_THROWN(CvUtils::mergeChromaAlpha(chromaBefore, one), cv::Exception);
    const QString channels = "critical: Unsupported amount of channels in ";
    const QStringList lines = log.takeTexts();
    QCOMPARE(lines.value(0), "critical: Image is null, cannot convert to cv::Mat");
    QCOMPARE(lines.filter("critical: matToQImage: ").size(), 4);
    QCOMPARE(lines.mid(6),
             QStringList({channels + "splitChromaAlpha: 3", channels + "splitChromaAlpha: 1",
                          channels + "mergeChromaAlpha: 2"}));
}

void CvUtilsImageTest::findsMonochrome()
{
    for (const int threads : {1, 5}) {
        useThreads(threads);
        for (const int depth : {CV_8U, CV_16U, CV_32F}) {
            const cv::Mat view = asView(greyNoise(37, 41, depth));
            QVERIFY(CvUtils::isMonochrome(view));
            view.row(36).reshape(1).col(122).setTo(0); // the last value
            QVERIFY(!CvUtils::isMonochrome(view));
        }
    }
    QVERIFY(CvUtils::isMonochrome(cv::Mat(1, 1, CV_32FC1, cv::Scalar(NAN))));
    QVERIFY(!CvUtils::isMonochrome(cv::Mat(1, 1, CV_32FC3, cv::Scalar::all(NAN))));
    QVERIFY(CvUtils::isMonochrome(cv::Mat(1, 1, CV_32FC2, cv::Scalar(0.0, -0.0))));
    QVERIFY(CvUtils::isMonochrome(cv::Mat(0, 5, CV_8UC3)));
}

void CvUtilsImageTest::makesMonochrome()
{
    useThreads(3);
    cv::Mat colour = noise(19, 23, CV_16UC3);
    colour.at<cv::Vec3w>(0) = cv::Vec3w::all(65535);
    cv::Mat view = asView(colour);
    const uchar* const before = view.data;
    CvUtils::toMonochrome(view);
    QVERIFY(view.data == before);
    for (int i = 0; i < int(colour.total()); ++i) {
        const auto pixel = colour.at<cv::Vec3w>(i);
        QCOMPARE(view.at<cv::Vec3w>(i),
                 cv::Vec3w::all(ushort((pixel[0] + pixel[1] + pixel[2]) / 3)));
    }
    view.adjustROI(0, 0, 1, 0); // a pixel outside the view
    QCOMPARE(view.at<cv::Vec3w>(0), cv::Vec3w(77, 77, 77));
}

void CvUtilsImageTest::tellsLumaNoise()
{
    for (const int depth : {CV_8U, CV_16U, CV_32F}) {
        QVERIFY(CvUtils::isLumaNoise(greyNoise(64, 64, depth)));
        QVERIFY(!CvUtils::isLumaNoise(noise(64, 64, CV_MAKETYPE(depth, 3))));
        QVERIFY(!CvUtils::isLumaNoise(cv::Mat(9, 9, CV_MAKETYPE(depth, 4), cv::Scalar(1, 1, 1))));
    }
    // One bright pixel that lacks red or blue: where this changes Y as much as four times U and V
    // together follows from the weights 0.299, 0.587, 0.114, 0.492 and 0.877.
    cv::Mat edge(9, 9, CV_32FC3, cv::Scalar::all(0.25));
    for (const auto& [channel, limit] : {std::pair(0, 0.2988f), std::pair(2, 0.4429f)}) {
        for (const float beyond : {-0.002f, 0.002f}) {
            cv::Vec3f pixel(1, 1, 1);
            pixel[channel] -= 0.75f * (limit + beyond);
            edge.at<cv::Vec3f>(4, 4) = pixel;
            QCOMPARE(CvUtils::isLumaNoise(edge), beyond < 0);
        }
    }
}

void CvUtilsImageTest::detailDoesNotDependOnBands()
{
    for (const cv::Size size : {cv::Size(1, 1), cv::Size(7, 1), cv::Size(1, 7), cv::Size(31, 11)}) {
        const cv::Mat mat = noise(size.height, size.width, CV_16UC3); // whole: the sums are exact
        cv::Mat yuv, detail;
        cv::cvtColor(mat, yuv, cv::COLOR_RGB2YUV);
        cv::Laplacian(yuv, detail, yuv.depth(), 1);
        for (const int bandRows : {2, 3, 5, 64}) {
            std::vector<cv::Scalar> sums(std::size_t((size.height + bandRows - 1) / bandRows));
            ParallelDetailSum(asView(mat), bandRows, sums)(cv::Range(0, int(sums.size())));
            QCOMPARE(std::accumulate(sums.begin(), sums.end(), cv::Scalar()),
                     cv::sum(cv::Mat(cv::abs(detail))));
        }
    }
}

void CvUtilsImageTest::writesBitmapsOnly()
{
    const QTemporaryDir folder;
    const cv::Mat mat(100, 100, CV_32FC3, cv::Scalar(1.2, -0.1, 0.5));
    const auto write = [&folder, &mat](const QString& name, float scale) {
        CvUtils::imwrite(folder.path() + u'/' + name, mat, cv::COLOR_RGB2BGR, 255, 0, scale);
    };
    write("archive.tar.bmp", 0.5f);
    QFile file(folder.filePath("archive.tar.bmp"));
    const QImage image(file.fileName()); // Qt's reader, so that no fault of OpenCV's hides another
    QCOMPARE(image.size(), QSize(50, 50));
    QCOMPARE(image.pixel(49, 49), qRgb(255, 0, 128));
    QCOMPARE(file.size(), 54 + 50 * 152);

    cv::Mat detail(2, 3, CV_32FC3);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x)
            detail.at<cv::Vec3f>(y, x) = cv::Vec3f(float(x) / 4, float(y) / 2, 1);
    }
    const QString path = folder.filePath("detail.bmp");
    CvUtils::imwrite(path, detail, cv::COLOR_RGB2BGR, 100, 20, 1);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(QImage(path).pixel(i % 3, i / 3), qRgb(20 + i % 3 * 25, 20 + i / 3 * 50, 120));
    QVERIFY(QFile::remove(path));

    write("missing/a.bmp", 1); // says nothing
    QVERIFY_EXCEPTION_THROWN(write("b.bmp", 0), cv::Exception);
    LogCapture log;
    for (const char* const name : {"a.BMP", "a.bmp.png", "bmp"})
        write(name, 1);
    const QString line = "critical: Attempting to write an image format that is not supported: ";
    QCOMPARE(log.takeTexts(), QStringList({line + "\"BMP\"", line + "\"png\"", line + "\"\""}));
    write(QStringLiteral("a\0.bmp"), 1);
    QVERIFY(log.takeTexts().join(u'\n').startsWith("critical: imwrite: path holds a null char"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("archive.tar.bmp"));
}

QTEST_GUILESS_MAIN(CvUtilsImageTest)
#include "tst_cvutils_image.moc"

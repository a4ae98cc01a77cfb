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
#include <limits>
#include <numeric>

using namespace TestSupport;

Q_DECLARE_METATYPE(cv::Mat)

/// Matrices to images and back, their depths and channels, what they show, and bitmap files.
class CvUtilsImageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useThreads(2); }
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }

    void wrapsPixelsInPlace();
    void wrappedImageOutlivesItsMatrix();
    void refusesToWrap_data();
    void refusesToWrap();

    void convertsDepths_data();
    void convertsDepths();

    void splitsAndMerges_data();
    void splitsAndMerges();
    void imageAndPlanesRoundTrip();
    void alphaIsStretchedOrMadeOpaque();
    void refusesImagesAndPlanes();

    void findsMonochrome_data();
    void findsMonochrome();
    void findsEverySingleDifference();
    void makesMonochrome();
    void tellsLumaNoise_data();
    void tellsLumaNoise();
    void detailDoesNotDependOnBands();
    void refusesToAnalyse();

    void writesBitmaps();
    void refusesSuffixes_data();
    void refusesSuffixes();
};

void CvUtilsImageTest::wrapsPixelsInPlace()
{
    const cv::Mat view = asView(numbered(4, 3, CV_32FC4));
    const QImage image = CvUtils::matToQImage(view, QImage::Format_RGBA32FPx4);
    QCOMPARE(image.size(), QSize(3, 4));
    QCOMPARE(image.bytesPerLine(), qsizetype(view.step[0]));
    QVERIFY(image.constBits() == view.data);
    QCOMPARE(CvUtils::memoryUsage(view), 4ull * view.step[0]);
    QCOMPARE(CvUtils::memoryUsage(cv::Mat()), 0ull);
    QCOMPARE(reinterpret_cast<const float*>(image.constScanLine(2))[4 + 3], 1 + 20 + 300);
}

void CvUtilsImageTest::wrappedImageOutlivesItsMatrix()
{
    QImage image;
    {
        const cv::Mat mat = numbered(50, 40, CV_8UC4);
        image = CvUtils::matToQImage(mat, QImage::Format_RGBA8888);
    }
    cv::Mat(50, 40, CV_8UC4, cv::Scalar::all(7)); // would take freed memory
    QVERIFY(sameBytes(cv::Mat(50, 40, CV_8UC4, image.bits(), std::size_t(image.bytesPerLine())),
                      numbered(50, 40, CV_8UC4)));
}

void CvUtilsImageTest::refusesToWrap_data()
{
    QTest::addColumn<cv::Mat>("mat");
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("lines");
    const int cube[] = {2, 2, 2};
    QTest::newRow("empty, whatever format") << cv::Mat() << int(QImage::Format_RGBA32FPx4) << 0;
    QTest::newRow("no columns") << cv::Mat(5, 0, CV_8UC4) << int(QImage::Format_RGBA8888) << 0;
    QTest::newRow("three dimensions")
        << cv::Mat(3, cube, CV_8UC4, cv::Scalar()) << int(QImage::Format_RGBA8888) << 1;
    QTest::newRow("invalid format")
        << cv::Mat(2, 2, CV_8UC4, cv::Scalar()) << int(QImage::Format_Invalid) << 1;
    QTest::newRow("beyond the formats")
        << cv::Mat(2, 2, CV_8UC4, cv::Scalar()) << int(QImage::NImageFormats) << 1;
    QTest::newRow("too wide") << cv::Mat(2, 2, CV_32FC3, cv::Scalar())
                              << int(QImage::Format_RGBA32FPx4) << 1;
    QTest::newRow("24 bits that say 18")
        << cv::Mat(2, 2, CV_8UC2, cv::Scalar()) << int(QImage::Format_RGB666) << 1;
}

void CvUtilsImageTest::refusesToWrap()
{
    QFETCH(cv::Mat, mat);
    QFETCH(int, format);
    QFETCH(int, lines);
    LogCapture log;
    QVERIFY(CvUtils::matToQImage(mat, QImage::Format(format)).isNull());
    const QStringList texts = log.takeTexts();
    QCOMPARE(texts.size(), lines);
    QVERIFY(lines == 0 || texts[0].startsWith("warning: matToQImage: "));
    QVERIFY(!mat.u || mat.u->refcount == 2); // the row's and ours: no header is left behind
}

void CvUtilsImageTest::convertsDepths_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("resultDepth");
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QList<double>>("expected");
    QTest::addColumn<QStringList>("lines");
    const QString invalid = "warning: Invalid conversion depth given: ";
    const auto row = [](const char* name, int from, int to, QList<double> values,
                        QList<double> expected, int resultDepth = -1, QStringList lines = {}) {
        QTest::newRow(name) << from << to << (resultDepth < 0 ? to : resultDepth) << values
                            << expected << lines;
    };
    row("8 to 16 bit", CV_8U, CV_16U, {255, 1, 0}, {65535, 257, 0});
    row("16 to 8 bit", CV_16U, CV_8U, {65535, 257, 0}, {255, 1, 0});
    row("float to 8 bit", CV_32F, CV_8U, {1.0, 0.5, 1.2, -0.1}, {255, 128, 255, 0});
    row("float to 16 bit", CV_32F, CV_16U, {1.0, 0.5}, {65535, 32768});
    row("8 bit to float", CV_8U, CV_32F, {255, 51}, {1, double(51 * float(1 / 255.0f))});
    row("signed 8 bit", CV_8S, CV_8U, {127, -1}, {1, 0});
    row("float to double", CV_32F, CV_64F, {0.25}, {0.25});
    row("to 32 bit", CV_16U, CV_32S, {65535, 40000}, {1, 1}, CV_32S, {invalid + "4"});
    row("from 32 bit", CV_32S, CV_32F, {7}, {7}, CV_32F, {invalid + "4"});
    row("-1 is half", CV_32F, -1, {0.5, 2}, {0.5, 2}, CV_16F, {invalid + "-1"});
}

void CvUtilsImageTest::convertsDepths()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, resultDepth);
    QFETCH(QList<double>, values);
    QFETCH(QList<double>, expected);
    QFETCH(QStringList, lines);
    cv::Mat mat;
    cv::Mat(1, int(values.size()), CV_64F, values.data()).convertTo(mat, from);
    cv::merge(std::vector<cv::Mat>(3, mat), mat);
    LogCapture log;
    cv::Mat result = CvUtils::convert(mat, to);
    QCOMPARE(log.takeTexts(), lines);
    QCOMPARE(result.type(), CV_MAKETYPE(resultDepth, 3));
    result.convertTo(result, CV_32F); // the only depth that half floats turn into
    for (qsizetype x = 0; x < expected.size(); ++x)
        QCOMPARE(double(result.at<cv::Vec3f>(0, int(x))[2]), expected[x]);

    QVERIFY(CvUtils::convert(mat, from).data == mat.data);
    QVERIFY(CvUtils::convert(cv::Mat(), CV_32F).empty());
}

void CvUtilsImageTest::splitsAndMerges_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("grey, 8 bit") << CV_8UC2;
    QTest::newRow("colour, 8 bit") << CV_8UC4;
    QTest::newRow("colour, 16 bit") << CV_16UC4;
    QTest::newRow("colour, half") << CV_16FC4;
    QTest::newRow("colour, float") << CV_32FC4;
    QTest::newRow("grey, double") << CV_64FC2;
}

void CvUtilsImageTest::splitsAndMerges()
{
    QFETCH(int, type);
    const cv::Mat mat = noise(33, 17, type);
    cv::Mat chroma, alpha;
    CvUtils::splitChromaAlpha(asView(mat), chroma, alpha);
    QCOMPARE(chroma.type(), type - 8);
    QCOMPARE(alpha.type(), CV_MAT_DEPTH(type));
    const std::size_t colourBytes = chroma.elemSize(), alphaBytes = alpha.elemSize();
    for (int i = 0; i < int(mat.total()); ++i) {
        const uchar* const pixel = mat.ptr(i / mat.cols, i % mat.cols);
        QVERIFY(std::memcmp(chroma.ptr(i / mat.cols, i % mat.cols), pixel, colourBytes) == 0);
        QVERIFY(std::memcmp(alpha.ptr(i / mat.cols, i % mat.cols), pixel + colourBytes,
                            alphaBytes) == 0);
    }
    QVERIFY(sameBytes(CvUtils::mergeChromaAlpha(asView(chroma), asView(alpha)), mat));

    // An output may be the variable that holds the input, and outputs still in use elsewhere are
    // not written into.
    cv::Mat first = mat.clone(), second = mat.clone();
    const cv::Mat shown = chroma, kept = chroma.clone();
    CvUtils::splitChromaAlpha(first, first, alpha);
    CvUtils::splitChromaAlpha(second, chroma, second);
    QVERIFY(sameBytes(first, kept) && sameBytes(second, alpha) && sameBytes(shown, kept));
    QVERIFY(chroma.data != shown.data);
}

void CvUtilsImageTest::imageAndPlanesRoundTrip()
{
    const cv::Mat pixels = noise(31, 45, CV_32FC4);
    cv::Mat chroma, alpha;
    LogCapture log;
    {
        QImage image = CvUtils::matToQImage(asView(pixels), QImage::Format_RGBA32FPx4);
        QVERIFY(CvUtils::qimageToMat(image, chroma, alpha));
    }
    QVERIFY(chroma.type() == CV_32FC3 && alpha.type() == CV_32FC1);
    QCOMPARE(chroma.at<cv::Vec3f>(3, 4)[2], pixels.at<cv::Vec4f>(3, 4)[2]);
    QImage back = CvUtils::matToQImage(chroma, alpha);
    QVERIFY(sameBytes(cv::Mat(31, 45, CV_32FC4, back.bits(), std::size_t(back.bytesPerLine())),
                      pixels));
    const QStringList lines = log.takeTexts();
    QCOMPARE(lines.size(), 1);
    const QRegularExpression benchmark("^info: .Benchmark. Time to convert mat to 4 channel: "
                                       "\"[0-9.]+ (ns|us|ms|s)\"$");
    QVERIFY2(benchmark.match(lines[0]).hasMatch(), qPrintable(lines[0]));
}

void CvUtilsImageTest::alphaIsStretchedOrMadeOpaque()
{
    const cv::Mat chroma = noise(8, 12, CV_32FC3), half = noise(4, 6, CV_32FC1, 2);
    cv::Mat alpha = half, expected;
    LogCapture log;
    QImage image = CvUtils::matToQImage(chroma, alpha);
    QCOMPARE(
        log.takeTexts().value(0),
        QString("warning: Alpha mat is different size, using generic upscaling to make it merge."));
    cv::resize(half, expected, chroma.size(), 0, 0, cv::INTER_LINEAR);
    QVERIFY(sameBytes(alpha, expected));
    QCOMPARE(reinterpret_cast<const float*>(image.constScanLine(5))[4 * 7 + 3],
             expected.at<float>(5, 7));

    cv::Mat none(3, 0, CV_8UC3); // empty, of any type
    image = CvUtils::matToQImage(chroma, none);
    QCOMPARE(log.takeTexts().value(0),
             QString("info: No alpha mat needed, using generic RGB -> RGBA conversion"));
    const float* const pixel = reinterpret_cast<const float*>(image.constScanLine(5)) + 4 * 7;
    QCOMPARE(cv::Vec4f(pixel),
             cv::Vec4f(chroma.at<cv::Vec3f>(5, 7)[0], chroma.at<cv::Vec3f>(5, 7)[1],
                       chroma.at<cv::Vec3f>(5, 7)[2], 1.0f));
}

void CvUtilsImageTest::refusesImagesAndPlanes()
{
    cv::Mat chroma = numbered(2, 2, CV_32FC3), alpha = numbered(2, 2, CV_32FC1);
    const cv::Mat chromaBefore = chroma, alphaBefore = alpha;
    LogCapture log;
    QImage null, rgb(4, 4, QImage::Format_RGB32), half(4, 4, QImage::Format_RGBA16FPx4);
    QVERIFY(!CvUtils::qimageToMat(null, chroma, alpha));
    QCOMPARE(log.takeTexts(), QStringList("critical: Image is null, cannot convert to cv::Mat"));
    QVERIFY(!CvUtils::qimageToMat(rgb, chroma, alpha) &&
            !CvUtils::qimageToMat(half, chroma, alpha));
    QCOMPARE(log.takeTexts().size(), 2);

    cv::Mat parted, opacity;
    const cv::Mat two(2, 3, CV_8UC2), one(2, 3, CV_8UC1);
    CvUtils::splitChromaAlpha(cv::Mat(2, 3, CV_8UC3), parted, opacity);
    QVERIFY(parted.type() == CV_8UC2 && opacity.type() == CV_8UC1 && opacity.size() == two.size());
    CvUtils::splitChromaAlpha(one, parted, opacity);
    QVERIFY(parted.empty() && opacity.size() == two.size());
    QVERIFY(CvUtils::mergeChromaAlpha(two, one).data == two.data);
    QCOMPARE(log.takeTexts(),
             QStringList({"critical: Unsupported amount of channels in splitChromaAlpha: 3",
                          "critical: Unsupported amount of channels in splitChromaAlpha: 1",
                          "critical: Unsupported amount of channels in mergeChromaAlpha: 2"}));
    QVERIFY_EXCEPTION_THROWN(CvUtils::mergeChromaAlpha(cv::Mat(2, 3, CV_32FC3), one),
                             cv::Exception);

    cv::Mat wide(2, 2, CV_64FC1), small(1, 1, CV_8UC1);
    QVERIFY(CvUtils::matToQImage(numbered(2, 2, CV_32FC4), alpha).isNull());
    QVERIFY(CvUtils::matToQImage(cv::Mat(), alpha).isNull());
    QVERIFY(CvUtils::matToQImage(chroma, wide).isNull() &&
            CvUtils::matToQImage(chroma, small).isNull());
    QCOMPARE(small.size(), cv::Size(1, 1));
    for (const LogLine& line : log.take())
        QVERIFY(line.level == QtCriticalMsg && line.text.startsWith("matToQImage: "));
    QVERIFY(chroma.data == chromaBefore.data && alpha.data == alphaBefore.data);
}

void CvUtilsImageTest::findsMonochrome_data()
{
    QTest::addColumn<cv::Mat>("mat");
    QTest::addColumn<bool>("monochrome");
    for (const int depth : {CV_8U, CV_16U, CV_32F}) {
        cv::Mat grey;
        cv::merge(std::vector<cv::Mat>(3, noise(37, 41, depth)), grey);
        cv::Mat last = asView(grey);
        cv::Mat(last, cv::Rect(40, 36, 1, 1)).reshape(1).col(2).setTo(0);
        QTest::addRow("grey view, depth %d", depth) << asView(grey) << true;
        QTest::addRow("last value of a view, depth %d", depth) << last << false;
    }
    const float nan = std::numeric_limits<float>::quiet_NaN();
    QTest::newRow("one channel") << noise(5, 5, CV_8UC1) << true;
    QTest::newRow("not a number, one channel")
        << cv::Mat(1, 1, CV_32FC1, cv::Scalar(double(nan))) << true;
    QTest::newRow("not a number") << cv::Mat(1, 1, CV_32FC3, cv::Scalar::all(double(nan))) << false;
    QTest::newRow("negative zero") << cv::Mat(1, 1, CV_32FC2, cv::Scalar(0.0, -0.0)) << true;
    QTest::newRow("empty") << cv::Mat(0, 5, CV_8UC3) << true;
}

void CvUtilsImageTest::findsMonochrome()
{
    QFETCH(cv::Mat, mat);
    QFETCH(bool, monochrome);
    for (const int threads : {1, 5}) {
        useThreads(threads);
        QCOMPARE(CvUtils::isMonochrome(mat), monochrome);
    }
}

void CvUtilsImageTest::findsEverySingleDifference()
{
    for (const int type : {CV_8UC2, CV_8UC3, CV_8UC4, CV_16UC3, CV_16UC4, CV_32FC2, CV_32FC3,
                           CV_32FC4, CV_32FC(5)}) {
        for (int pixels = 1; pixels <= 35; ++pixels) { // two vectors of bytes and a bit
            const cv::Mat row(1, pixels, type);
            const int channels = row.channels();
            cv::Mat value = row.reshape(1);
            for (int x = 0; x < pixels; ++x) // neighbours may differ
                value.colRange(x * channels, (x + 1) * channels).setTo(x % 3);
            QVERIFY(CvUtils::isMonochrome(row));
            for (int i = 0; i < pixels * channels; ++i) {
                cv::Mat one = value.col(i);
                one.setTo(200);
                QVERIFY2(!CvUtils::isMonochrome(row),
                         qPrintable(QString("type %1, value %2").arg(type).arg(i)));
                one.setTo(i / channels % 3);
            }
        }
    }
}

void CvUtilsImageTest::makesMonochrome()
{
    useThreads(3);
    const cv::Mat colour = noise(19, 23, CV_16UC3);
    cv::Mat view = asView(colour);
    const cv::Mat parent = view;
    CvUtils::toMonochrome(view);
    QVERIFY(view.data == parent.data);
    for (int y = 0; y < colour.rows; ++y) {
        for (int x = 0; x < colour.cols; ++x) {
            const auto pixel = colour.at<cv::Vec3w>(y, x);
            const ushort mean = ushort((pixel[0] + pixel[1] + pixel[2]) / 3);
            QCOMPARE(view.at<cv::Vec3w>(y, x), cv::Vec3w(mean, mean, mean));
        }
    }
    view.adjustROI(0, 0, 1, 0); // a pixel outside the view
    QCOMPARE(view.at<cv::Vec3w>(0, 0), cv::Vec3w(77, 77, 77));
    cv::Mat white(1, 1, CV_16UC3, cv::Scalar::all(65535));
    CvUtils::toMonochrome(white);
    QCOMPARE(white.at<cv::Vec3w>(0, 0), cv::Vec3w(65535, 65535, 65535));
}

void CvUtilsImageTest::tellsLumaNoise_data()
{
    QTest::addColumn<cv::Mat>("mat");
    QTest::addColumn<bool>("lumaNoise");
    for (const int depth : {CV_8U, CV_16U, CV_32F}) {
        cv::Mat luma;
        cv::merge(std::vector<cv::Mat>(3, noise(64, 64, depth)), luma);
        QTest::addRow("luma noise, depth %d", depth) << luma << true;
        QTest::addRow("colour noise, depth %d", depth)
            << noise(64, 64, CV_MAKETYPE(depth, 3)) << false;
        QTest::addRow("uniform, depth %d", depth)
            << cv::Mat(9, 9, CV_MAKETYPE(depth, 4), cv::Scalar::all(0.5)) << false;
    }
    // One bright pixel each in Y alone and in blue: the ratio of the means lies on either side
    // of 4.
    cv::Mat edge(9, 9, CV_32FC3, cv::Scalar::all(0.25));
    edge.at<cv::Vec3f>(4, 4) = {1, 1, 0.85f};
    QTest::newRow("above four") << edge.clone() << true;
    edge.at<cv::Vec3f>(4, 4) = {1, 1, 0.55f};
    QTest::newRow("below four") << edge.clone() << false;
}

void CvUtilsImageTest::tellsLumaNoise()
{
    QFETCH(cv::Mat, mat);
    QFETCH(bool, lumaNoise);
    QCOMPARE(CvUtils::isLumaNoise(mat), lumaNoise);
}

void CvUtilsImageTest::detailDoesNotDependOnBands()
{
    for (const cv::Size size :
         {cv::Size(1, 1), cv::Size(7, 1), cv::Size(1, 7), cv::Size(9, 2), cv::Size(31, 11)}) {
        const cv::Mat mat =
            noise(size.height, size.width, CV_16UC3); // whole numbers: their sums are exact
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

void CvUtilsImageTest::refusesToAnalyse()
{
    const auto wrongType = [](const char* function, int type) {
        return QStringList(
            QString("critical: Wrong mat type passed to %1 ( %2 ). Not checking to avoid crash.")
                .arg(QLatin1String(function), QString::number(type)));
    };
    LogCapture log;
    QVERIFY(!CvUtils::isMonochrome(cv::Mat(2, 2, CV_16SC3)));
    QCOMPARE(log.takeTexts(), wrongType("isMonochrome", 19));
    QVERIFY(!CvUtils::isMonochrome(cv::Mat(2, 2, CV_64FC3)));
    QCOMPARE(log.takeTexts(), wrongType("isMonochrome", 22));
    cv::Mat mat = numbered(2, 2, CV_8UC3);
    CvUtils::toMonochrome(mat);
    QCOMPARE(log.takeTexts(), wrongType("toMonochrome", 16));
    QVERIFY(sameBytes(mat, numbered(2, 2, CV_8UC3)));
    QVERIFY_EXCEPTION_THROWN(CvUtils::isLumaNoise(cv::Mat(2, 2, CV_8UC1)), cv::Exception);
}

void CvUtilsImageTest::writesBitmaps()
{
    const QTemporaryDir folder;
    cv::Mat mat(100, 100, CV_32FC3, cv::Scalar(1.2, -0.1, 0.5));
    for (const char* const name : {"/a.bmp", "/archive.tar.bmp"}) {
        const QString path = folder.path() + QLatin1String(name);
        CvUtils::imwrite(path, mat, cv::COLOR_RGB2BGR, 255, 0, 0.5f);
        const QImage image(path); // Qt's reader, so that no fault of OpenCV's hides another
        QCOMPARE(image.size(), QSize(50, 50));
        QCOMPARE(image.pixel(49, 49), qRgb(255, 0, 128));
        QCOMPARE(QFileInfo(path).size(), 54 + 50 * 152);
    }
    CvUtils::imwrite(folder.filePath("missing/a.bmp"), mat, cv::COLOR_RGB2BGR, 255, 0,
                     1); // says nothing
    QVERIFY_EXCEPTION_THROWN(
        CvUtils::imwrite(folder.filePath("b.bmp"), mat, cv::COLOR_RGB2BGR, 255, 0, 0),
        cv::Exception);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
}

void CvUtilsImageTest::refusesSuffixes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("line");
    const QString unsupported =
        "critical: Attempting to write an image format that is not supported: ";
    QTest::newRow("upper case") << "a.BMP" << unsupported + "\"BMP\"";
    QTest::newRow("png") << "a.bmp.png" << unsupported + "\"png\"";
    QTest::newRow("none") << "bmp" << unsupported + "\"\"";
    QTest::newRow("null character")
        << QStringLiteral("a\0.bmp") << "critical: imwrite: path holds a null character";
}

void CvUtilsImageTest::refusesSuffixes()
{
    QFETCH(QString, name);
    QFETCH(QString, line);
    const QTemporaryDir folder;
    LogCapture log;
    CvUtils::imwrite(folder.path() + u'/' + name, numbered(2, 2, CV_32FC3), cv::COLOR_RGB2BGR, 255,
                     0, 1);
    const QStringList lines = log.takeTexts();
    QVERIFY2(lines.size() == 1 && lines[0].startsWith(line), qPrintable(lines.join(u'\n')));
    QVERIFY(QDir(folder.path()).isEmpty());
}

QTEST_GUILESS_MAIN(CvUtilsImageTest)
#include "tst_cvutils_image.moc"

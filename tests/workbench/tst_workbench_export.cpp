// SPDX-License-Identifier: Apache-2.0
#include "workbench.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace Workbench;

namespace {

/// The attributes that a camera writes and a photographer keeps.
void addCameraData(OIIO::ImageSpec& spec)
{
    spec.attribute("Make", "Maker");
    spec.attribute("FNumber", 2.8F);
    spec.attribute("Exif:DateTimeOriginal", "2024:05:06 07:08:09");
    spec.attribute("Exif:PhotographicSensitivity", 400);
}

/// Where the pixel of a picture that is shown upright at (x, y) is stored, by the definition of the
/// Exif tag: which side of the stored picture is the shown top, and which its left.
QPoint storedAt(QPoint shown, int orientation, QSize stored)
{
    const int right = stored.width() - 1;
    const int bottom = stored.height() - 1;
    const auto [x, y] = std::pair(shown.x(), shown.y());
    switch (orientation) {
    case 2:
        return {right - x, y};
    case 3:
        return {right - x, bottom - y};
    case 4:
        return {x, bottom - y};
    case 5:
        return {y, x};
    case 6:
        return {y, bottom - x};
    case 7:
        return {right - y, bottom - x};
    case 8:
        return {right - y, x};
    default:
        return shown;
    }
}

double overWhite(const Picture& picture, QPoint pixel, int c)
{
    const double alpha = picture.at(pixel.x(), pixel.y(), 3);
    return picture.at(pixel.x(), pixel.y(), c) * alpha + 1.0 - alpha;
}

} // namespace

class WorkbenchExportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsPixelsAndMetadata_data();
    void keepsPixelsAndMetadata();
    void turnsUpright();
    void composesOverWhite();
    void makesRgbOfCmyk();
    void agreesWithExiftool_data();
    void agreesWithExiftool();
    void fitsTheWholePicture_data();
    void fitsTheWholePicture();
    void keepsColoursBesideTransparency();
    void writesBitmaps();
    void printsJson();
    void turnsAndMakesThumbnails();

private:
    QString in(const QString& name) const { return m_folder->filePath(name); }
    /// Exports `source` with `options`; the output's path.
    QString exported(const QString& source, const QStringList& options = {});

    std::unique_ptr<QTemporaryDir> m_folder;
};

void WorkbenchExportTest::init() { m_folder = std::make_unique<QTemporaryDir>(); }

QString WorkbenchExportTest::exported(const QString& source, const QStringList& options)
{
    const Run run = Workbench::run(QStringList{source, "-o", in("out"), "--json"} + options);
    if (run.exitCode != 0 || !run.errors.isEmpty())
        qWarning() << run.exitCode << run.errors;
    const QJsonObject result = QJsonDocument::fromJson(run.output.value(0).toUtf8()).object();
    return result.value("output").toString();
}

void WorkbenchExportTest::keepsPixelsAndMetadata_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("format");
    const auto add = [](const char* source, int channels, int bits, const char* format) {
        QTest::addRow("%s of %d channels, %d bits, as %s", source, channels, bits, format)
            << QString::fromLatin1(source) << channels << bits << QString::fromLatin1(format);
    };
    for (const char* format : {"tiff", "PRESERVE", "exr"})
        add("png", 4, 16, format);
    add("png", 4, 8, "tga");
    add("png", 2, 16, "tiff");
    add("png", 2, 16, "png");
    add("jpg", 1, 8, "tiff");
    add("jpg", 3, 8, "png");
    add("jpg", 3, 8, "jp2");
    add("tif", 3, 16, "tiff");
    add("tif", 4, 8, "png");
    add("exr", 3, 32, "tiff");
    add("ppm", 3, 8, "sgi");
}

void WorkbenchExportTest::keepsPixelsAndMetadata()
{
    QFETCH(QString, source);
    QFETCH(int, channels);
    QFETCH(int, bits);
    QFETCH(QString, format);
    const OIIO::TypeDesc type = bits == 8    ? OIIO::TypeUInt8
                                : bits == 16 ? OIIO::TypeUInt16
                                             : OIIO::TypeFloat;
    OIIO::ImageSpec spec(37, 33, channels, type);
    addCameraData(spec);
    if (channels % 2 == 0) {
        spec.alpha_channel = channels - 1;
        spec.attribute("oiio:UnassociatedAlpha", 1);
    }
    const QByteArray icc = profile(channels < 3 ? "GRAY" : "RGB ");
    const bool hasProfile = source == "jpg" && channels == 3;
    if (hasProfile)
        attach(spec, icc);
    const QString path = in(QString("photo.") + source);
    makePicture(path, spec);

    const Picture before = readPicture(path);
    const Picture after = readPicture(exported(path, {"--format", format}));
    QCOMPARE(after.spec.nchannels, channels);
    QCOMPARE(after.spec.width, 37);
    if (format != "exr") // which has no integers
        QCOMPARE(int(after.spec.format.size()) * 8, bits);
    for (std::size_t i = 0; i < before.samples.size(); ++i) {
        // OpenEXR holds colours that are multiplied by alpha.
        const bool isMultiplied = format == "exr" && i % 4 != 3;
        const float alpha = isMultiplied ? before.samples[i / 4 * 4 + 3] : 1.0F;
        QVERIFY2(std::abs(after.samples[i] - before.samples[i] * alpha) < 1e-6,
                 qPrintable(QString::number(i)));
    }
    const bool carriesExif = format != "sgi" && format != "tga" && format != "jp2";
    if (source != "png" && source != "ppm" && source != "exr" && carriesExif) {
        QCOMPARE(after.spec.get_float_attribute("FNumber"), 2.8F);
        QCOMPARE(after.spec.get_string_attribute("Make").str(), std::string("Maker"));
    }
    const OIIO::ParamValue* const kept = after.spec.find_attribute("ICCProfile");
    if (hasProfile && format == "png")
        QCOMPARE(QByteArray(static_cast<const char*>(kept->data()), kept->type().size()), icc);
}

void WorkbenchExportTest::turnsUpright()
{
    OIIO::ImageSpec spec(17, 9, 3, OIIO::TypeUInt16);
    for (int orientation = 1; orientation <= 9; ++orientation) {
        spec.attribute("Orientation", orientation);
        makePicture(in(QString("in/%1.tif").arg(orientation)), spec);
    }
    exported(in("in"));
    for (int orientation = 1; orientation <= 9; ++orientation) {
        const Picture after = readPicture(in(QString("out/%1.tiff").arg(orientation)));
        const bool isTurned = orientation >= 5 && orientation <= 8;
        QCOMPARE(after.spec.width, isTurned ? 9 : 17);
        QCOMPARE(after.spec.height, isTurned ? 17 : 9);
        QCOMPARE(after.spec.get_int_attribute("Orientation", 1), 1);
        for (int y = 0; y < after.spec.height; ++y)
            for (int x = 0; x < after.spec.width; ++x) {
                const QPoint stored = storedAt({x, y}, orientation, {17, 9});
                QVERIFY2(std::abs(after.at(x, y, 1) - sampleAt(stored.x(), stored.y(), 1)) < 1e-4,
                         qPrintable(QString::number(orientation)));
            }
    }
}

void WorkbenchExportTest::composesOverWhite()
{
    OIIO::ImageSpec spec(16, 16, 4, OIIO::TypeUInt16);
    spec.attribute("oiio:UnassociatedAlpha", 1);
    makePicture(in("photo.png"), spec);
    const Picture before = readPicture(in("photo.png"));
    const Picture after = readPicture(exported(in("photo.png"), {"--format", "ppm"}));
    QCOMPARE(after.spec.nchannels, 3);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            QVERIFY(std::abs(after.at(x, y, 2) - overWhite(before, {x, y}, 2)) < 0.5 / 255 + 1e-6);
}

void WorkbenchExportTest::makesRgbOfCmyk()
{
    OIIO::ImageSpec spec(16, 16, 3, OIIO::TypeUInt8);
    spec.attribute("tiff:ColorSpace", "CMYK"); // the writer converts
    attach(spec, profile("CMYK"));
    makePicture(in("photo.tif"), spec);
    const Picture after = readPicture(exported(in("photo.tif")));
    QCOMPARE(after.spec.nchannels, 3);
    QVERIFY(!after.spec.find_attribute("ICCProfile")); // that of CMYK would spoil RGB
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            for (int c = 0; c < 3; ++c)
                QVERIFY(std::abs(after.at(x, y, c) - sampleAt(x, y, c)) < 0.02);
}

void WorkbenchExportTest::agreesWithExiftool_data()
{
    QTest::addColumn<QString>("format");
    for (const char* format : {"tiff", "jpg", "png"})
        QTest::newRow(format) << QString::fromLatin1(format);
}

void WorkbenchExportTest::agreesWithExiftool()
{
    QFETCH(QString, format);
    if (QStandardPaths::findExecutable("exiftool").isEmpty())
        QSKIP("exiftool is not installed");
    OIIO::ImageSpec spec(32, 16, 3, OIIO::TypeUInt8);
    addCameraData(spec);
    spec.attribute("Orientation", 6);
    attach(spec, profile("RGB "));
    makePicture(in("photo.jpg"), spec);
    const QString output = exported(in("photo.jpg"), {"--format", format});
    QProcess exiftool;
    exiftool.start("exiftool", {"-j", "-n", output});
    QVERIFY(exiftool.waitForFinished());
    const QJsonObject tags =
        QJsonDocument::fromJson(exiftool.readAllStandardOutput()).array().at(0).toObject();
    const QString sensitivity = format == "tiff" ? "RecommendedExposureIndex" : "ISO";
    QCOMPARE(tags.value("Orientation").toInt(), 1);
    QCOMPARE(tags.value("ImageWidth").toInt(), 16);
    QCOMPARE(tags.value("Make").toString(), "Maker");
    QVERIFY(std::abs(tags.value("FNumber").toDouble() - 2.8) < 1e-6);
    QCOMPARE(tags.value(sensitivity).toInt(), 400);
    QCOMPARE(tags.value("ColorSpaceData").toString(), "RGB ");
    QVERIFY(!tags.contains("Warning"));
}

void WorkbenchExportTest::fitsTheWholePicture_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QSize>("size");
    const auto words = [](const char* text) {
        return QString::fromLatin1(text).split(QLatin1Char(' '));
    };
    QTest::newRow("width") << words("--max-width 100") << QSize(100, 67);
    QTest::newRow("height") << words("--max-height 100") << QSize(150, 100);
    QTest::newRow("both, the smaller counts")
        << words("--max-width 30 --max-height 150") << QSize(30, 20);
    QTest::newRow("scale below the limit") << words("--scale 0.1 --max-width 100") << QSize(30, 20);
    QTest::newRow("never enlarged to fit") << words("--max-width 5000") << QSize(301, 201);
    QTest::newRow("enlarged in steps") << words("--scale 3") << QSize(903, 603);
    QTest::newRow("enlarged and fitted") << words("--scale 3 --max-width 400") << QSize(400, 267);
    QTest::newRow("to one pixel") << words("--max-width 1") << QSize(1, 1);
    QTest::newRow("sharp filter") << words("--scale 0.5 --filter 0,0.5") << QSize(151, 101);
}

void WorkbenchExportTest::fitsTheWholePicture()
{
    QFETCH(QStringList, options);
    QFETCH(QSize, size);
    // A ramp: the value names the place, so a picture that was cut off or moved shows.
    OIIO::ImageSpec spec(301, 201, 3, OIIO::TypeFloat);
    std::vector<float> ramp;
    for (int y = 0; y < 201; ++y)
        for (int x = 0; x < 301; ++x)
            ramp.insert(ramp.end(), {float(x) / 300, float(y) / 200, 0.5F});
    const std::string path = in("ramp.tif").toStdString();
    const auto writer = OIIO::ImageOutput::create(path);
    QVERIFY(writer->open(path, spec) && writer->write_image(OIIO::TypeFloat, ramp.data()) &&
            writer->close());
    const Picture after = readPicture(exported(in("ramp.tif"), options));
    QCOMPARE(QSize(after.spec.width, after.spec.height), size);
    const float pixel = 1.6F / float(std::min(size.width(), 301)); // the last sample lies inside
    QVERIFY(after.at(0, 0, 0) < pixel);
    QVERIFY(size.width() == 1 || after.at(size.width() - 1, 0, 0) > 1.0F - pixel);
    QVERIFY(std::abs(after.at(size.width() / 2, size.height() / 2, 2) - 0.5F) < 1e-5F);
}

void WorkbenchExportTest::keepsColoursBesideTransparency()
{
    // Red, beside green that nothing shows: a half transparent pixel between them is red.
    std::vector<float> samples;
    for (int i = 0; i < 64 * 64; ++i) {
        const bool isShown = i % 64 < 31;
        samples.insert(samples.end(), {float(isShown), float(!isShown), 0.0F, float(isShown)});
    }
    OIIO::ImageSpec spec(64, 64, 4, OIIO::TypeUInt8);
    spec.attribute("oiio:UnassociatedAlpha", 1);
    const std::string path = in("edge.png").toStdString();
    const auto writer = OIIO::ImageOutput::create(path);
    QVERIFY(writer->open(path, spec) && writer->write_image(OIIO::TypeFloat, samples.data()) &&
            writer->close());
    const Picture after = readPicture(exported(in("edge.png"), {"--scale", "0.25"}));
    int edges = 0;
    for (int x = 0; x < 16; ++x) {
        const float alpha = after.at(x, 8, 3);
        edges += alpha > 0.1F && alpha < 0.9F;
        QVERIFY(alpha < 0.1F || (after.at(x, 8, 0) > 0.95F && after.at(x, 8, 1) < 0.05F));
    }
    QVERIFY(edges > 0);
}

void WorkbenchExportTest::writesBitmaps()
{
    makePicture(in("photo.png"), OIIO::ImageSpec(31, 8, 3, OIIO::TypeUInt8));
    const QStringList arguments{in("photo.png"), "-o", in("out"), "--bitmap"};
    QCOMPARE(run(arguments).output.last(), "1 exported, 0 kept, 0 failed");
    const Picture bitmap = readPicture(in("out/photo.bmp"));
    QCOMPARE(bitmap.spec.width, 31);
    for (int c = 0; c < 3; ++c)
        QVERIFY(std::abs(bitmap.at(30, 7, c) - sampleAt(30, 7, c)) < 1e-6);
    QCOMPARE(run(arguments).output.last(), "0 exported, 1 kept, 0 failed");
}

void WorkbenchExportTest::printsJson()
{
    const QString path = in("gr\u00e4y \"1\"\n.png");
    makePicture(path, OIIO::ImageSpec(20, 10, 1, OIIO::TypeUInt8));
    const Run run = Workbench::run({path, in("missing.jpg"), "-o", in("out"), "--json"});
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.output.size(), 2);
    const QJsonObject good = QJsonDocument::fromJson(run.output.at(0).toUtf8()).object();
    QCOMPARE(good.value("file").toString(), path);
    QCOMPARE(good.value("grey"), QJsonValue(true));
    QCOMPARE(good.value("stored"), QJsonValue(QJsonArray{20, 10}));
    QVERIFY(QFile::exists(good.value("output").toString()));
    QVERIFY(good.value("milliseconds").toObject().contains("decode"));
    const QJsonObject bad = QJsonDocument::fromJson(run.output.at(1).toUtf8()).object();
    QCOMPARE(bad.value("error").toString(), "no such file");
}

void WorkbenchExportTest::turnsAndMakesThumbnails()
{
    // Dark above, bright below; named as a format whose pictures get a thumbnail whatever their
    // size.
    std::vector<float> samples(200 * 100 * 3, 0.0F);
    std::fill(samples.begin() + 200 * 50 * 3, samples.end(), 1.0F);
    const std::string path = in("photo.jpg").toStdString();
    const auto writer = OIIO::ImageOutput::create(path);
    QVERIFY(writer->open(path, OIIO::ImageSpec(200, 100, 3, OIIO::TypeUInt8)) &&
            writer->write_image(OIIO::TypeFloat, samples.data()) && writer->close());
    const QString source = in("photo.heic");
    QVERIFY(QFile::rename(QString::fromStdString(path), source));
    const auto answer = [&] {
        const Run run = Workbench::run({source, "-o", in("out"), "--rotate", "10", "--json"});
        return QJsonDocument::fromJson(run.output.value(0).toUtf8()).object();
    };
    const QJsonObject first = answer();
    const Picture turned = readPicture(first.value("output").toString());
    QCOMPARE(turned.spec.width / turned.spec.height, 2);
    const int middle = turned.spec.height / 2;
    QVERIFY(turned.at(2, middle, 0) > 0.9F); // clockwise: the right has sunk, the left has risen
    QVERIFY(turned.at(turned.spec.width - 3, middle, 0) < 0.1F);

    const QString thumbnail = first.value("thumbnail").toString();
    QCOMPARE(thumbnail,
             QDir::temp().filePath(QString("VOLK_Thumbnail_%1.jpeg").arg(qHash(source, 0))));
    QCOMPARE(readPicture(thumbnail).spec.width, 200);
    QVERIFY(answer().value("kept").toBool());
    QFile picture(thumbnail);
    QVERIFY(picture.open(QIODevice::ReadWrite) &&
            picture.setFileTime(QDateTime::currentDateTime().addDays(-3),
                                QFileDevice::FileModificationTime));
    picture.close();
    QCOMPARE(answer().value("thumbnail").toString(),
             thumbnail); // older than its picture
    QVERIFY(QFileInfo(thumbnail).lastModified().daysTo(QDateTime::currentDateTime()) == 0);
    QVERIFY(!QFile::exists(QString(thumbnail).replace(".jpeg", "-2.jpeg")));
}

QTEST_GUILESS_MAIN(WorkbenchExportTest)
#include "tst_workbench_export.moc"

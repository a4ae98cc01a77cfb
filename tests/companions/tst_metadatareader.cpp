// SPDX-License-Identifier: Apache-2.0
#include <metadatareader/metadatareader.h>

#include <baseutils/baseutils.h>

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <OpenImageIO/imageio.h>

namespace {

/// A grey picture of 64 x 40 at `path`, in the format of its extension.
bool writePicture(const QString& path)
{
    const auto output = OIIO::ImageOutput::create(path.toStdString());
    const std::vector<unsigned char> pixels(64 * 40 * 3, 99);
    return output &&
           output->open(path.toStdString(), OIIO::ImageSpec(64, 40, 3, OIIO::TypeUInt8)) &&
           output->write_image(OIIO::TypeUInt8, pixels.data()) && output->close();
}

bool exiftool(const QStringList& arguments, QByteArray* output = nullptr)
{
    QProcess process;
    process.start(QStringLiteral("exiftool"), arguments);
    const bool done = process.waitForFinished() && process.exitCode() == 0;
    if (output)
        *output = process.readAllStandardOutput();
    return done;
}

bool hasExiftool() { return !QStandardPaths::findExecutable(QStringLiteral("exiftool")).isEmpty(); }

/// What of the formats written here Exiv2 reads.
const QStringList exiv2Formats{"bmp", "jpg", "png", "tif", "gif", "webp", "jp2", "tga", "heic"};

/// What exiftool calls the keys that it names otherwise.
QString exiftoolName(const QString& key)
{
    static const QHash<QString, QString> names = {
        {"DateTime", "ModifyDate"},
        {"DateTimeDigitized", "CreateDate"},
        {"ExposureBiasValue", "ExposureCompensation"},
        {"FocalLengthIn35mmFilm", "FocalLengthIn35mmFormat"},
        {"BodySerialNumber", "SerialNumber"}};
    return names.value(key, key);
}

const QVariantMap written = {
    {"Make", "Acme"},
    {"Model", "M \xC3\xA9"},
    {"Artist", "An Artist"},
    {"Copyright", "c"},
    {"ImageDescription", "d"},
    {"LensMake", "Lm"},
    {"LensModel", "L 35"},
    {"BodySerialNumber", "12"},
    {"DateTime", "2021:01:02 03:04:05"},
    {"DateTimeOriginal", "2020:01:02 03:04:05"},
    {"DateTimeDigitized", "2020:01:02 03:04:06"},
    {"Orientation", 6},
    {"ISO", 400},
    {"ExposureProgram", 2},
    {"MeteringMode", 5},
    {"Flash", 9},
    {"WhiteBalance", 1},
    {"FocalLengthIn35mmFilm", 50},
    {"ExposureTime", 0.004},
    {"FNumber", 2.8},
    {"ExposureBiasValue", -0.5},
    {"FocalLength", 35.5},
    {"GPSLatitude", -48.505},
    {"GPSLongitude", -11.25},
    {"GPSAltitude", -12.5},
};

/// The keys of `written` that a provider need not see, by extension; "*" for all.
struct Unseen
{
    const char* extension;
    QStringList openImageIO;
    QStringList exiv2;
};
const Unseen unseen[] = {
    {"jpg", {}, {}},    {"tif", {"ISO", "GPSLatitude", "GPSLongitude", "GPSAltitude"}, {}},
    {"png", {}, {}},    {"webp", {"*"}, {}},
    {"jp2", {"*"}, {}},
};

} // namespace

/// Records read from picture files.
class MetadataReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void formatFollowsTheContents_data();
    void formatFollowsTheContents();
    void tagsComeInTheirUnits_data();
    void tagsComeInTheirUnits();
    void photographsAgreeWithExiftool();
    void whatIsNoPictureHasAName_data();
    void whatIsNoPictureHasAName();

private:
    QTemporaryDir m_folder;
};

void MetadataReaderTest::formatFollowsTheContents_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("fileType");
    for (const char* extension :
         {"bmp", "jpg",  "png", "tif", "gif", "webp", "jp2", "tga", "psd",  "exr",
          "dpx", "fits", "hdr", "ico", "iff", "ppm",  "rla", "sgi", "heic", "avif"})
        QTest::newRow(extension) << extension << QStringLiteral("a.%1").arg(extension) << extension;
    const auto row = [](const char* extension, const char* name, const char* fileType) {
        QTest::addRow("%s as %s", extension, name) << extension << name << fileType;
    };
    row("jpg", "a.JPEG", "jpeg");
    row("jpg", "a.png", "jpg");
    row("jpg", "none", "jpg");
    row("png", "a.jpg", "png");
    row("tif", "a.tiff", "tiff");
    row("tif", "a.exr", "tif");
    row("heic", "a.hif", "hif");
    row("heic", "a.heics", "heic");
}

void MetadataReaderTest::formatFollowsTheContents()
{
    QFETCH(QString, extension);
    QFETCH(QString, name);
    QFETCH(QString, fileType);
    const QString source = m_folder.filePath(QStringLiteral("source.") + extension);
    if (!QFile::exists(source) && !writePicture(source)) {
        OIIO::geterror();
        QSKIP("the installed OpenImageIO does not write this format");
    }
    const QString path = m_folder.filePath(name);
    QVERIFY(QFile::exists(path) ? QFile::remove(path) : true);
    QVERIFY(QFile::copy(source, path));
    if (IMAGEUTILS_PROVIDER_IS_EXIV2 && !exiv2Formats.contains(extension))
        QSKIP("Exiv2 does not read this format");
    const NExifToolMetadata record = readMetadata(path);
    QCOMPARE(record.fileType(), fileType);
    QVERIFY(BaseUtils::supportedFileFormats().contains(fileType));
    QCOMPARE(record.imageName(), name);
    if (!IMAGEUTILS_PROVIDER_IS_EXIV2) { // which says 64 x 64 of HEIC
        QCOMPARE(record.imageWidth(), 64);
        QCOMPARE(record.imageHeight(), 40);
    }
    QVERIFY(!record.value("thumbnail").isValid());
}

void MetadataReaderTest::tagsComeInTheirUnits_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QStringList>("unseenKeys");
    for (const Unseen& row : unseen)
        QTest::newRow(row.extension)
            << row.extension << (IMAGEUTILS_PROVIDER_IS_EXIV2 ? row.exiv2 : row.openImageIO);
}

void MetadataReaderTest::tagsComeInTheirUnits()
{
    QFETCH(QString, extension);
    QFETCH(QStringList, unseenKeys);
    if (!hasExiftool())
        QSKIP("exiftool is not installed");
    const QString path = m_folder.filePath(QStringLiteral("tagged.") + extension);
    const QString preview = m_folder.filePath(QStringLiteral("preview.jpg"));
    QVERIFY(writePicture(path) && writePicture(preview));
    // Exiv2 takes the tags of a preview for those of a WebP file.
    QVERIFY(exiftool({"-q", "-overwrite_original", "-all=", preview}));
    QStringList arguments{"-n",
                          "-overwrite_original",
                          "-q",
                          "-GPSLatitudeRef=S",
                          "-GPSLongitudeRef=W",
                          "-GPSAltitudeRef=1",
                          "-EXIF:ExifImageWidth=9999",
                          "-ThumbnailImage<=" + preview};
    for (auto tag = written.begin(); tag != written.end(); ++tag)
        arguments +=
            QStringLiteral("-EXIF:%1=%2")
                .arg(exiftoolName(tag.key()),
                     tag.value().toString().remove(tag.key().startsWith("GPS") ? "-" : "?"));
    QVERIFY(exiftool(arguments << path));

    const NExifToolMetadata record = readMetadata(path);
    QCOMPARE(record.imageWidth(), 64); // whatever the tags say
    for (auto tag = written.begin(); tag != written.end(); ++tag) {
        const QVariant value = record.value(tag.key());
        if (!value.isValid() && (unseenKeys.contains("*") || unseenKeys.contains(tag.key())))
            continue;
        QVERIFY2(value.typeId() == tag.value().typeId(), qPrintable(tag.key()));
        if (value.typeId() == QMetaType::Double)
            QVERIFY2(std::abs(value.toDouble() - tag.value().toDouble()) < 1e-6,
                     qPrintable(tag.key()));
        else
            QVERIFY2(value == tag.value(), qPrintable(tag.key() + value.toString()));
    }
    if (extension == "jpg")
        QCOMPARE(record.value("thumbnail"), QVariant("jpeg 64x40"));
}

void MetadataReaderTest::photographsAgreeWithExiftool()
{
    const QString folder = QStringLiteral("/usr/share/backgrounds/mate/nature");
    if (!QFile::exists(folder) || !hasExiftool())
        QSKIP("needs exiftool and the photographs of the package mate-backgrounds");
    QByteArray json;
    QVERIFY(exiftool({"-n", "-j", "-q", "-ext", "jpg", "-EXIF:all", "-ImageWidth", "-ImageHeight",
                      "-ThumbnailImage", folder},
                     &json));
    const QJsonArray photographs = QJsonDocument::fromJson(json).array();
    QVERIFY(photographs.size() > 5);
    for (const QJsonValue& photograph : photographs) {
        const QVariantMap truth = photograph.toObject().toVariantMap();
        const QString path = truth["SourceFile"].toString();
        const NExifToolMetadata record = readMetadata(path);
        QCOMPARE(record.imageWidth(), truth["ImageWidth"].toInt());
        QCOMPARE(record.imageHeight(), truth["ImageHeight"].toInt());
        QCOMPARE(record.value("thumbnail").isValid(), truth.contains("ThumbnailImage"));
        for (const QString& key :
             written.keys() + QStringList{"Software", "ColorSpace", "SubSecTimeOriginal",
                                          "OffsetTimeOriginal"}) {
            const QString expected = truth.value(exiftoolName(key)).toString().trimmed();
            const QVariant value = record.value(key);
            const QString what = path + ' ' + key + ": " + value.toString() + ", not " + expected;
            QVERIFY2(value.isValid() != expected.isEmpty(), qPrintable(what));
            if (value.typeId() == QMetaType::Double)
                QVERIFY2(std::abs(value.toDouble() - expected.toDouble()) < 1e-6, qPrintable(what));
            else
                QVERIFY2(value.toString() == expected, qPrintable(what));
        }
    }
}

void MetadataReaderTest::whatIsNoPictureHasAName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("missing") << "missing.jpg" << QByteArray();
    QTest::newRow("folder") << "" << QByteArray();
    QTest::newRow("pipe") << "pipe.jpg" << QByteArray();
    QTest::newRow("null in the name") << QString("a.jpg") + QChar(0) + "b" << QByteArray();
    QTest::newRow("junk") << "junk.jpg" << QByteArray(4000, 'x');
    QTest::newRow("cut") << "cut.jpg" << QByteArray::fromHex("ffd8ffe000104a46494600");
    QTest::newRow("Exif without end")
        << "exif.jpg" << QByteArray::fromHex("ffd8ffe1ffff457869660000") + QByteArray(99, 'I');
}

void MetadataReaderTest::whatIsNoPictureHasAName()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, contents);
    const QString path = m_folder.filePath(name);
    if (name == "pipe.jpg" && QProcess::execute("mkfifo", {path}) != 0)
        QSKIP("no pipe can be made here");
    QFile file(path);
    if (!contents.isEmpty())
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
    file.close();
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("^readMetadata: could not read the picture: "));
    const NExifToolMetadata record = readMetadata(path);
    QCOMPARE(record.imageName(), QFileInfo(path).fileName());
    QVERIFY(record.fileType().isEmpty() && record.imageWidth() == 0 && record.imageHeight() == 0);
}

QTEST_GUILESS_MAIN(MetadataReaderTest)
#include "tst_metadatareader.moc"

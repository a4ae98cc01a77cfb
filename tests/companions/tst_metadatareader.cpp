// SPDX-License-Identifier: Apache-2.0
#include <metadatareader/metadatareader.h>

#include <support/files.h>
#include <support/log.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <OpenImageIO/imageio.h>

namespace {

/// A grey picture of 64 x 40 at `path`, in the format of its extension.
bool writePicture(const QString& path)
{
    const auto output = OIIO::ImageOutput::create(path.toStdString());
    const std::vector<unsigned char> pixels(64 * 40 * 3, 99);
    OIIO::ImageSpec spec(64, 40, 3, OIIO::TypeUInt8);
    spec.attribute("jpeg:progressive", int(path.endsWith("jpeg"))); // in several scans
    return output && output->open(path.toStdString(), spec) &&
           output->write_image(OIIO::TypeUInt8, pixels.data()) && output->close();
}

/// What exiftool prints; nothing where it fails.
QByteArray exiftool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("exiftool"), arguments);
    const bool done = process.waitForFinished() && process.exitCode() == 0;
    return done ? process.readAllStandardOutput() : QByteArray();
}

/// A key, what exiftool calls it, and a value of the type that a record has.
struct Tag
{
    QString key;
    QString name;
    QVariant value;
};

QList<Tag> tags()
{
    const QString texts =
        "Make=Acme;Model=M \xC3\xA9;Artist=An Artist;Copyright=c;Software=s;ImageDescription=d;"
        "LensMake=Lm;LensModel=L 35;BodySerialNumber=12=SerialNumber;SubSecTimeOriginal=34;"
        "DateTime=2021:01:02 03:04:05=ModifyDate;DateTimeOriginal=2020:01:02 03:04:05;"
        "DateTimeDigitized=2020:01:02 03:04:06=CreateDate;OffsetTimeOriginal=+01:00";
    const QString integers =
        "Orientation=6;ISO=400;ExposureProgram=2;MeteringMode=5;Flash=9;WhiteBalance=1;"
        "ColorSpace=1;FocalLengthIn35mmFilm=50=FocalLengthIn35mmFormat";
    const QString reals =
        "ExposureTime=0.004;FNumber=2.8;ExposureBiasValue=-0.5=ExposureCompensation;"
        "FocalLength=35.5;GPSLatitude=-48.505;GPSLongitude=-11.25;GPSAltitude=-12.5";
    QList<Tag> tags;
    for (const QString& text : (texts + ';' + integers + ';' + reals).split(';')) {
        const QStringList parts = text.split('=');
        tags.append({parts[0], parts.value(2, parts[0]), parts[1]});
        if (!texts.contains(text))
            tags.last().value.convert(
                QMetaType(integers.contains(text) ? QMetaType::Int : QMetaType::Double));
    }
    return tags;
}

/// The keys of which `record` says something else than `truth`, which holds exiftool's names.
QStringList disagreements(const NExifToolMetadata& record, const QVariantMap& truth)
{
    QStringList keys;
    for (const Tag& tag : tags()) {
        const QVariant value = record.value(tag.key);
        const QVariant expected = truth[tag.name];
        const bool isReal = value.typeId() == QMetaType::Double;
        const bool isSame = isReal ? std::abs(value.toDouble() - expected.toDouble()) < 1e-6
                                   : value.toString() == expected.toString().trimmed();
        if (!isSame || (value.isValid() && value.typeId() != tag.value.typeId()))
            keys.append(tag.key);
    }
    return keys;
}

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
    void whatIsNoPictureHasAName();
    void isNotHeldUpByAPipe();

private:
    QTemporaryDir m_folder;
};

void MetadataReaderTest::formatFollowsTheContents_data()
{
    QTest::addColumn<QString>("name");
    const QByteArray types = "bmp jpg png tif gif webp jp2 tga exr dpx fits hdr ico iff "
                             "ppm rla sgi heic avif";
    for (const QByteArray& type : types.split(' '))
        QTest::newRow(type) << QString("a." + type);
    // Extensions that are another name of the format stay, others give way to its usual name.
    for (const char* name : {"jpeg/a.JPEG", "jpg/a.png", "jpg/none", "tiff/a.tiff", "tif/a.exr",
                             "hif/a.hif", "heic/a.heics"})
        QTest::newRow(name) << QString(name).section('/', 1);
}

void MetadataReaderTest::formatFollowsTheContents()
{
    QFETCH(QString, name);
    const QString fileType = QString(QTest::currentDataTag()).section('/', 0, 0);
    const QString format = fileType == "hif" ? QString("heic") : fileType;
    const QString source = m_folder.filePath("source." + format);
    if (!writePicture(source)) {
        OIIO::geterror();
        QSKIP("the installed OpenImageIO does not write this format");
    }
    const QString path = m_folder.filePath(name);
    QFile::remove(path);
    QVERIFY(QFile::rename(source, path));
    const QByteArray exiv2Formats = "bmp jpg jpeg png tif tiff gif webp jp2 tga heic";
    if (IMAGEUTILS_PROVIDER_IS_EXIV2 && !exiv2Formats.split(' ').contains(format.toLatin1()))
        QSKIP("Exiv2 does not read this format");
    const NExifToolMetadata record = readMetadata(path);
    QCOMPARE(record.fileType(), fileType);
    QCOMPARE(record.imageName(), name);
    if (!IMAGEUTILS_PROVIDER_IS_EXIV2) // which says 64 x 64 of HEIC
        QCOMPARE(QSize(record.imageWidth(), record.imageHeight()), QSize(64, 40));
    QVERIFY(!record.value("thumbnail").isValid());
}

void MetadataReaderTest::tagsComeInTheirUnits_data()
{
    QTest::addColumn<QString>("unseen"); // by OpenImageIO
    QTest::newRow("jpg") << "^$";
    QTest::newRow("jpeg") << "^$";
    QTest::newRow("png") << "^$";
    QTest::newRow("tif") << "^(ISO|GPS.*)$";
    QTest::newRow("webp") << "";
    QTest::newRow("jp2") << "";
}

void MetadataReaderTest::tagsComeInTheirUnits()
{
    QFETCH(QString, unseen);
    const QString path = m_folder.filePath(QStringLiteral("tagged.") + QTest::currentDataTag());
    const QString preview = m_folder.filePath(QStringLiteral("preview.jpg"));
    QVERIFY(writePicture(path) && writePicture(preview));
    if (exiftool({"-ver"}).isEmpty())
        QSKIP("exiftool is not installed");
    // Exiv2 takes the tags of a preview for those of a WebP file.
    exiftool({"-overwrite_original", "-all=", preview});
    QStringList arguments{"-n", "-overwrite_original", "-GPSLatitudeRef=S", "-GPSLongitudeRef=W"};
    arguments << "-GPSAltitudeRef=1"
              << "-ExifImageWidth=9999"
              << "-ThumbnailImage<=" + preview;
    if (QByteArray("jpg jpeg tif").contains(QTest::currentDataTag()))
        arguments << "-XMP-xmp:CreateDate=1999:01:02 03:04:05"; // of another event
    for (const Tag& tag : tags())
        arguments << "-EXIF:" + tag.name + '=' +
                         tag.value.toString().remove(tag.key.startsWith("GPS") ? "-" : "?");
    exiftool(arguments << path);

    if (path.endsWith("jpeg")) { // with a comment, and a segment that is empty
        QFile file(path);
        QVERIFY(file.open(QFile::ReadOnly));
        const QByteArray segments = QByteArray::fromHex("fffe000378ffef0002");
        TestSupport::writeBytes(path, file.readAll().insert(2, segments));
    }
    const NExifToolMetadata record = readMetadata(path);
    QCOMPARE(record.imageWidth(), 64); // whatever the tags say
    QVariantMap truth;
    for (const Tag& tag : tags()) {
        if (record.value(tag.key).isValid() || IMAGEUTILS_PROVIDER_IS_EXIV2 ||
            !tag.key.contains(QRegularExpression(unseen)))
            truth[tag.name] = tag.value;
    }
    QCOMPARE(disagreements(record, truth).join(' '), QString());
    if (path.endsWith("jpg"))
        QCOMPARE(record.value("thumbnail"), QVariant("jpeg 64x40"));
}

void MetadataReaderTest::photographsAgreeWithExiftool()
{
    const QString folder = QStringLiteral("/usr/share/backgrounds/mate/nature");
    if (exiftool({"-ver"}).isEmpty() || !QFile::exists(folder))
        QSKIP("needs exiftool and the photographs of the package mate-backgrounds");
    const QByteArray json = exiftool(
        {"-n", "-j", "-q", "-ext", "jpg", "-EXIF:all", "-ImageSize", "-ThumbnailImage", folder});
    const QVariantList photographs = QJsonDocument::fromJson(json).toVariant().toList();
    QVERIFY(photographs.size() > 5);
    for (const QVariant& photograph : photographs) {
        const QVariantMap truth = photograph.toMap();
        const NExifToolMetadata record = readMetadata(truth["SourceFile"].toString());
        const QString size =
            QStringLiteral("%1 %2").arg(record.imageWidth()).arg(record.imageHeight());
        QCOMPARE(size, truth["ImageSize"].toString());
        QCOMPARE(record.value("thumbnail").isValid(), truth.contains("ThumbnailImage"));
        QCOMPARE(disagreements(record, truth).join(' '), QString());
    }
}

void MetadataReaderTest::whatIsNoPictureHasAName()
{
    QVERIFY(writePicture(m_folder.filePath("a.jpg")));
    QFile picture(m_folder.filePath("a.jpg"));
    QVERIFY(picture.open(QFile::ReadOnly));
    TestSupport::writeBytes(m_folder.filePath("lossless.jpg"),
                            picture.readAll().replace("\xff\xc0", "\xff\xc3"));
    TestSupport::writeBytes(m_folder.filePath("junk.jpg"), QByteArray(4000, 'x'));
    TestSupport::writeBytes(m_folder.filePath("cut.jpg"),
                            QByteArray::fromHex("ffd8ffe000104a46494600"));
    TestSupport::writeBytes(m_folder.filePath("exif.jpg"),
                            QByteArray::fromHex("ffd8ffe1ffff457869660000") + QByteArray(99, 'I'));
    QStringList names{"",
                      "missing.jpg",
                      "junk.jpg",
                      "lossless.jpg",
                      "cut.jpg",
                      "exif.jpg",
                      QString("a.jpg") + QChar(0)};
    if (TestSupport::makePipe(m_folder.filePath("pipe.jpg")))
        names << "pipe.jpg";
    for (const QString& name : names) {
        const QString path = m_folder.filePath(name);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("^readMetadata: could not read the picture: "));
        const NExifToolMetadata record = readMetadata(path);
        QCOMPARE(record.imageName(), QFileInfo(path).fileName());
        QVERIFY2(record.fileType().isEmpty() && record.imageWidth() == 0 &&
                     record.imageHeight() == 0,
                 qPrintable(name));
    }
}

// Between the check and the moment when the file is opened, a pipe may take its name.
void MetadataReaderTest::isNotHeldUpByAPipe()
{
    for (const char* const name : {"swapped.png", "swapped.jpg"}) {
        const QString path = m_folder.filePath(name);
        QVERIFY(writePicture(path));
        const TestSupport::LogCapture log;
        QCOMPARE(TestSupport::callsHeldUpByPipe(path, [&] { readMetadata(path); }), 0);
    }
}

QTEST_GUILESS_MAIN(MetadataReaderTest)
#include "tst_metadatareader.moc"

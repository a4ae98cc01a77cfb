// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

namespace {

constexpr int noFile = -1000;

/// Makes a file at `path` that was modified `seconds` after a fixed time; nothing for `noFile`.
void makeFile(const QString& path, int seconds)
{
    if (seconds == noFile)
        return;
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QDateTime time = QDateTime::fromSecsSinceEpoch(1700000000 + seconds);
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

} // namespace

/// Whether a thumbnail is due, asked with real files.
class ImageUtilsThumbnailTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void decides_data();
    void decides();
};

void ImageUtilsThumbnailTest::decides_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("fileType");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QVariant>("embedded");
    QTest::addColumn<int>("imageSeconds");
    QTest::addColumn<int>("thumbnailSeconds");
    QTest::addColumn<bool>("due");
    const auto row = [](const char* title, const char* name, const char* type, QSize size, bool due,
                        int image = 0, int thumbnail = noFile, const QVariant& embedded = {}) {
        QTest::newRow(title) << name << type << size << embedded << image << thumbnail << due;
    };
    const QSize large(4096, 4096);
    row("large", "a.jpg", "jpg", large, true);
    row("one row too few", "a.jpg", "jpg", {4096, 4095}, false);
    row("beyond 32 bits", "a.jpg", "jpg", {60000, 60000}, true);
    row("product wraps to 0", "a.jpg", "jpg", {65536, 65536}, true);
    row("no width", "a.jpg", "jpg", {0, 4096}, false);
    row("no height", "a.jpg", "jpg", {4096, 0}, false);
    row("raw, no size", "a.NEF", "nef", {0, 0}, true);
    for (const char* name : {"a.heic", "a.HEIC", "a.heif", "a.hif"})
        row(name, name, "heic", {0, 0}, true);
    row("AVIF takes the size test", "a.avif", "avif", {9, 9}, false);
    row("raw by its type only", "a.jpg", "nef", {9, 9}, false);
    row("embedded", "a.jpg", "jpg", large, false, 0, noFile, "jpeg 160x120");
    row("embedded, a number", "a.jpg", "jpg", large, false, 0, noFile, 1);
    row("embedded, empty", "a.jpg", "jpg", large, true, 0, noFile, "");
    row("no image", "a.jpg", "jpg", large, false, noFile);
    row("unknown type", "a.jpg", "mp4", large, false);
    row("type in capitals", "a.jpg", "JPG", large, false);
    row("image is newer", "a.jpg", "jpg", large, true, 1, 0);
    row("thumbnail is newer", "a.jpg", "jpg", large, false, 0, 1);
    row("as old", "a.jpg", "jpg", large, true, 0, 0);
    row("raw, thumbnail is newer", "a.cr2", "cr2", {0, 0}, false, 0, 1);
}

void ImageUtilsThumbnailTest::decides()
{
    QFETCH(QString, name);
    QFETCH(QString, fileType);
    QFETCH(QSize, size);
    QFETCH(QVariant, embedded);
    QFETCH(int, imageSeconds);
    QFETCH(int, thumbnailSeconds);
    QFETCH(bool, due);
    const QTemporaryDir folder;
    const QString image = folder.filePath(name);
    const QString thumbnail = folder.filePath(QStringLiteral("thumbnail.jpeg"));
    makeFile(image, imageSeconds);
    makeFile(thumbnail, thumbnailSeconds);
    const NExifToolMetadata metadata(fileType, QStringLiteral("IMG \"1\""), size.width(),
                                     size.height(), {{QStringLiteral("thumbnail"), embedded}});
    if (QByteArrayView(QTest::currentDataTag()).startsWith("no width") ||
        QByteArrayView(QTest::currentDataTag()).startsWith("no height"))
        QTest::ignoreMessage(QtCriticalMsg,
                             "Could not get image width and height via metadata. Thumbnail "
                             "generation may be incorrect. \"IMG \\\"1\\\"\"");
    QCOMPARE(NImageUtils::shouldGenerateThumbnail(image, thumbnail, metadata), due);
}

QTEST_GUILESS_MAIN(ImageUtilsThumbnailTest)
#include "tst_imageutils_thumbnail.moc"

// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

namespace {

struct Case
{
    const char* name = "a.jpg";
    const char* fileType = "jpg";
    QSize size = {4096, 4096};
    QVariant embedded = {};
    int imageSeconds = 0; // after a fixed time; below 0: no file
    int thumbnailSeconds = -1;
};

void makeFile(const QString& path, int seconds)
{
    QFile file(path);
    const QDateTime time = QDateTime::fromSecsSinceEpoch(1700000000 + seconds);
    QVERIFY(seconds < 0 || (file.open(QIODevice::WriteOnly) &&
                            file.setFileTime(time, QFileDevice::FileModificationTime)));
}

bool due(const Case& given)
{
    const QTemporaryDir folder;
    const QString image = folder.filePath(given.name);
    const QString thumbnail = folder.filePath(QStringLiteral("thumbnail.jpeg"));
    makeFile(image, given.imageSeconds);
    makeFile(thumbnail, given.thumbnailSeconds);
    const NExifToolMetadata metadata(given.fileType, "IMG \"1\"", given.size.width(),
                                     given.size.height(), {{"thumbnail", given.embedded}});
    return NImageUtils::shouldGenerateThumbnail(image, thumbnail, metadata);
}

} // namespace

/// Whether a thumbnail is due, asked with real files.
class ImageUtilsThumbnailTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void decides();
    void comparesRectangles();
};

void ImageUtilsThumbnailTest::decides()
{
    QVERIFY(due({}));
    QVERIFY(!due({.size = {4096, 4095}}));
    QVERIFY(due({.size = {65536, 65536}})); // whose product in 32 bits is 0
    for (const QSize size : {QSize(0, 4096), QSize(4096, 0)}) {
        QTest::ignoreMessage(QtCriticalMsg,
                             "Could not get image width and height via metadata. Thumbnail "
                             "generation may be incorrect. \"IMG \\\"1\\\"\"");
        QVERIFY(!due({.size = size}));
    }
    for (const char* name : {"a.heic", "a.HEIF", "a.hif", "a.NEF"})
        QVERIFY2(due({.name = name, .size = {0, 0}}), name);
    QVERIFY(!due({.name = "a.avif", .fileType = "avif", .size = {9, 9}}));
    QVERIFY(!due({.fileType = "nef", .size = {9, 9}}));
    QVERIFY(!due({.fileType = "mp4"}));
    QVERIFY(!due({.fileType = "JPG"}));
    QVERIFY(!due({.embedded = "jpeg 160x120"}));
    QVERIFY(due({.embedded = ""}));
    QVERIFY(!due({.imageSeconds = -1}));
    QVERIFY(due({.imageSeconds = 1, .thumbnailSeconds = 0}));
    QVERIFY(due({.thumbnailSeconds = 0}));
    QVERIFY(!due({.name = "a.cr2", .thumbnailSeconds = 1}));
}

void ImageUtilsThumbnailTest::comparesRectangles()
{
    const QRect rect(2, 3, 10, 20);
    for (const QMargins& smaller : {QMargins(), QMargins(1, 0, 0, 0), QMargins(0, 1, 0, 0),
                                    QMargins(0, 0, 1, 0), QMargins(0, 0, 0, 1)}) {
        const QRect inner = rect - smaller;
        QVERIFY(NImageUtils::doesRectCoverRect(rect, inner));
        QCOMPARE(NImageUtils::doesRectCoverRect(inner, rect), smaller.isNull());
    }
    for (const double side : {-1.0, 0.0, 0.5}) {
        QCOMPARE(NImageUtils::isEmpty(QRectF(0, 0, side, 3)), side <= 0);
        QCOMPARE(NImageUtils::isEmpty(QRectF(0, 0, 3, side)), side <= 0);
    }
    QVERIFY(!NImageUtils::doesRectCoverRect(rect, QRect()));
    QVERIFY(!NImageUtils::doesRectCoverRect(QRect(), QRect()));
}

QTEST_GUILESS_MAIN(ImageUtilsThumbnailTest)
#include "tst_imageutils_thumbnail.moc"

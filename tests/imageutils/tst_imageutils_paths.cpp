// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <support/files.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

/// Paths, URLs, formats and the names of exported files.
using TestSupport::linkTo;

class ImageUtilsPathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void takesPathsApart();
    void knowsFormats();
    void choosesTheExportExtension();
    void findsAFreePath_data();
    void findsAFreePath();
    void turnsPathsIntoUrlsAndTellsEqualOnes();
};

void ImageUtilsPathsTest::takesPathsApart()
{
    const auto parts = [](const QString& path) {
        return QStringList({NImageUtils::getFilename(path), NImageUtils::getBaseName(path),
                            NImageUtils::getPath(path), NImageUtils::getExtension(path)})
            .join(u' ');
    };
    QCOMPARE(parts("/a/b.PNG"), "b.PNG b /a PNG");
    QCOMPARE(parts("/a.b/c.tar.gz"), "c.tar.gz c.tar /a.b gz");
    QCOMPARE(parts("README"), "README README . ");
    QCOMPARE(parts("/a"), "a a / ");
    QCOMPARE(parts("/a/.jpg"), ".jpg  /a jpg");
    QCOMPARE(parts("/a/b/"), "  /a/b ");
}

void ImageUtilsPathsTest::knowsFormats()
{
    for (const QString& path :
         QStringList{"/nowhere/a.JPG", "a.hif", "a.b.Nef", "a.dng", "a.mp4", "jpg", "a.jpgx"}) {
        const QString extension = NImageUtils::getExtension(path);
        const bool raw = path == "a.b.Nef" || path == "a.dng";
        const bool supported = raw || path == "/nowhere/a.JPG" || path == "a.hif";
        QCOMPARE(NImageUtils::isSupportedFile(path), supported);
        QCOMPARE(NImageUtils::isRawFile(path), raw);
        QCOMPARE(NImageUtils::isRawExt(extension), raw);
        QCOMPARE(NImageUtils::supportedFileFormats().contains(extension.toLower()), supported);
        QCOMPARE(NImageUtils::rawFileFormats().contains(extension.toLower()), raw);
        QCOMPARE(NImageUtils::nonRawFileFormats().contains(extension.toLower()), supported && !raw);
    }
}

void ImageUtilsPathsTest::choosesTheExportExtension()
{
    const auto extensions = [](const QString& source, const QString& output) { // then raw edited
        return NImageUtils::getExportExtension(source, output) + u' ' +
               NImageUtils::getExportExtension(source, output, true);
    };
    QCOMPARE(extensions("", "preserve"), " ");
    QCOMPARE(extensions("jpg", "PNG"), "PNG PNG");
    QCOMPARE(extensions("JPG", "Preserve"), "JPG JPG");
    QCOMPARE(extensions("NEF", "preserve"), "dng tiff");
    QCOMPARE(extensions("NEF", "DNG"), "DNG tiff");
    QCOMPARE(extensions("png", "dng"), "tiff tiff");
    QCOMPARE(NImageUtils::getExportExtension("NEF"), "tiff");
    QCOMPARE(NImageUtils::getExportExtension(""), "");
}

void ImageUtilsPathsTest::findsAFreePath_data()
{
    QTest::addColumn<QStringList>("existing"); // a name that ends with '/' is a folder
    QTest::addColumn<QString>("free");
    QTest::newRow("a.png") << QStringList{} << "a.png";
    QTest::newRow("photo.png") << QStringList{"photo.png", "photo-2.png", "photo-4.png"}
                               << "photo-3.png";
    QTest::newRow("photo-2.png") << QStringList{"photo-2.png"} << "photo-2-2.png";
    QTest::newRow("archive.tar.gz") << QStringList{"archive.tar.gz"} << "archive.tar-2.gz";
    QTest::newRow("README") << QStringList{"README"} << "README-2";
    QTest::newRow("b.png") << QStringList{"b.png", "b-2.png/"} << "b-3.png";
}

void ImageUtilsPathsTest::findsAFreePath()
{
    QFETCH(QStringList, existing);
    QFETCH(QString, free);
    const QTemporaryDir folder(QDir::tempPath() + "/no-dots-XXXXXX");
    const QDir dir(folder.path());
    QVERIFY(!dir.path().contains(u'.'));
    for (const QString& name : existing)
        QVERIFY(name.endsWith(u'/') ? dir.mkdir(name.chopped(1))
                                    : QFile(dir.filePath(name)).open(QFile::WriteOnly));
    QCOMPARE(NImageUtils::adjustPathWhenOverwriting(dir.filePath(QTest::currentDataTag())),
             dir.filePath(free));
    QVERIFY(!QFileInfo::exists(dir.filePath(free))); // nothing is reserved
}

void ImageUtilsPathsTest::turnsPathsIntoUrlsAndTellsEqualOnes()
{
    QCOMPARE(NImageUtils::urlToString(QUrl("file:///a%20b%25c%23.png")), "/a b%c#.png");
    QCOMPARE(NImageUtils::stringToUrl("/a b%c#.png"), QUrl("file:///a%20b%25c%23.png"));
    QCOMPARE(NImageUtils::urlToString(QUrl("https://example.org/a.png")),
             "https://example.org/a.png");
    const QTemporaryDir folder;
    QFile file(folder.filePath("a.png"));
    QVERIFY(file.open(QFile::WriteOnly));
    QVERIFY(NImageUtils::arePathsEqual("/missing/a", "/missing/a"));
    const bool isLinked = linkTo(file.fileName(), folder.filePath("link.png"));
    QCOMPARE(NImageUtils::arePathsEqual(file.fileName(), folder.filePath("./link.png")), isLinked);
    QVERIFY(isLinked || QSysInfo::kernelType() == "winnt");
    QCOMPARE(NImageUtils::arePathsEqual(file.fileName(), folder.filePath("./A.png")),
             QSysInfo::kernelType() == "winnt"); // which does not tell capitals apart
    QVERIFY(!NImageUtils::arePathsEqual(folder.filePath("a.png"), folder.filePath("b.png")));
}

QTEST_GUILESS_MAIN(ImageUtilsPathsTest)
#include "tst_imageutils_paths.moc"

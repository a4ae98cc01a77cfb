// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

/// Paths, URLs, formats and the names of exported files.
class ImageUtilsPathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void takesPathsApart_data();
    void takesPathsApart();
    void knowsFormats_data();
    void knowsFormats();
    void choosesTheExportExtension_data();
    void choosesTheExportExtension();
    void findsAFreePath_data();
    void findsAFreePath();
    void turnsPathsIntoUrlsAndTellsEqualOnes();
};

void ImageUtilsPathsTest::takesPathsApart_data()
{
    QTest::addColumn<QStringList>("parts"); // name, base name, folder, extension
    QTest::newRow("/a/b.PNG") << QStringList{"b.PNG", "b", "/a", "PNG"};
    QTest::newRow("/a.b/c.tar.gz") << QStringList{"c.tar.gz", "c.tar", "/a.b", "gz"};
    QTest::newRow("README") << QStringList{"README", "README", ".", ""};
    QTest::newRow("/a") << QStringList{"a", "a", "/", ""};
    QTest::newRow("/a/.jpg") << QStringList{".jpg", "", "/a", "jpg"};
    QTest::newRow("/a/b/") << QStringList{"", "", "/a/b", ""};
}

void ImageUtilsPathsTest::takesPathsApart()
{
    QFETCH(QStringList, parts);
    const QString path = QTest::currentDataTag();
    QCOMPARE(QStringList({NImageUtils::getFilename(path), NImageUtils::getBaseName(path),
                          NImageUtils::getPath(path), NImageUtils::getExtension(path)}),
             parts);
}

void ImageUtilsPathsTest::knowsFormats_data()
{
    QTest::addColumn<bool>("supported");
    QTest::addColumn<bool>("raw");
    QTest::newRow("/nowhere/a.JPG") << true << false;
    QTest::newRow("a.hif") << true << false;
    QTest::newRow("a.b.Nef") << true << true;
    QTest::newRow("a.dng") << true << true;
    QTest::newRow("a.mp4") << false << false;
    QTest::newRow("jpg") << false << false;
    QTest::newRow("a.jpgx") << false << false;
}

void ImageUtilsPathsTest::knowsFormats()
{
    QFETCH(bool, supported);
    QFETCH(bool, raw);
    const QString path = QTest::currentDataTag(), extension = NImageUtils::getExtension(path);
    QCOMPARE(NImageUtils::isSupportedFile(path), supported);
    QCOMPARE(NImageUtils::isRawFile(path), raw);
    QCOMPARE(NImageUtils::isRawExt(extension), raw);
    QCOMPARE(NImageUtils::supportedFileFormats().contains(extension.toLower()), supported);
    QCOMPARE(NImageUtils::rawFileFormats().contains(extension.toLower()), raw);
    QCOMPARE(NImageUtils::nonRawFileFormats().contains(extension.toLower()), supported && !raw);
}

void ImageUtilsPathsTest::choosesTheExportExtension_data()
{
    QTest::addColumn<QString>("plain");   // raw exposure and colour left alone
    QTest::addColumn<QString>("changed"); // or changed
    QTest::newRow(" preserve") << ""
                               << "";
    QTest::newRow("jpg png") << "png"
                             << "png";
    QTest::newRow("jpg PNG") << "PNG"
                             << "PNG";
    QTest::newRow("JPG Preserve") << "JPG"
                                  << "JPG";
    QTest::newRow("NEF preserve") << "dng"
                                  << "tiff";
    QTest::newRow("NEF DNG") << "DNG"
                             << "tiff";
    QTest::newRow("png dng") << "tiff"
                             << "tiff";
}

void ImageUtilsPathsTest::choosesTheExportExtension()
{
    QFETCH(QString, plain);
    QFETCH(QString, changed);
    const QStringList names =
        QString::fromLatin1(QTest::currentDataTag()).split(u' '); // source, output
    QCOMPARE(NImageUtils::getExportExtension(names[0], names[1]), plain);
    QCOMPARE(NImageUtils::getExportExtension(names[0], names[1], true), changed);
    QCOMPARE(NImageUtils::getExportExtension(names[0]), names[0].isEmpty() ? "" : "tiff");
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
    QVERIFY(file.open(QFile::WriteOnly) && file.link(folder.filePath("link.png")));
    QVERIFY(NImageUtils::arePathsEqual("/missing/a", "/missing/a"));
    QVERIFY(NImageUtils::arePathsEqual(folder.filePath("a.png"), folder.filePath("./link.png")));
    QVERIFY(!NImageUtils::arePathsEqual(folder.filePath("a.png"), folder.filePath("b.png")));
}

QTEST_GUILESS_MAIN(ImageUtilsPathsTest)
#include "tst_imageutils_paths.moc"

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
    void turnsPathsIntoUrls_data();
    void turnsPathsIntoUrls();
    void knowsFormats_data();
    void knowsFormats();
    void choosesTheExportExtension_data();
    void choosesTheExportExtension();
    void findsAFreePath_data();
    void findsAFreePath();
    void tellsEqualPaths();
    void tellsValidVariants();
};

void ImageUtilsPathsTest::takesPathsApart_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("parts"); // name, base name, folder, extension
    QTest::newRow("plain") << "/a/b.PNG" << QStringList{"b.PNG", "b", "/a", "PNG"};
    QTest::newRow("two dots") << "/a.b/c.tar.gz" << QStringList{"c.tar.gz", "c.tar", "/a.b", "gz"};
    QTest::newRow("bare") << "README" << QStringList{"README", "README", ".", ""};
    QTest::newRow("at the root") << "/a" << QStringList{"a", "a", "/", ""};
    QTest::newRow("hidden") << "/a/.jpg" << QStringList{".jpg", "", "/a", "jpg"};
    QTest::newRow("folder") << "/a/b/" << QStringList{"", "", "/a/b", ""};
    QTest::newRow("empty") << "" << QStringList{"", "", "", ""};
}

void ImageUtilsPathsTest::takesPathsApart()
{
    QFETCH(QString, path);
    QFETCH(QStringList, parts);
    QCOMPARE(QStringList({NImageUtils::getFilename(path), NImageUtils::getBaseName(path),
                          NImageUtils::getPath(path), NImageUtils::getExtension(path)}),
             parts);
}

void ImageUtilsPathsTest::turnsPathsIntoUrls_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("back");
    QTest::newRow("blank, per cent, hash")
        << QUrl("file:///a%20b%25c%23.png") << "/a b%c#.png" << true;
    QTest::newRow("remote") << QUrl("https://example.org/a%20b.png")
                            << "https://example.org/a b.png" << false;
    QTest::newRow("plain path") << QUrl("/a/b.png") << "/a/b.png" << false;
}

void ImageUtilsPathsTest::turnsPathsIntoUrls()
{
    QFETCH(QUrl, url);
    QFETCH(QString, path);
    QFETCH(bool, back);
    QCOMPARE(NImageUtils::urlToString(url), path);
    QCOMPARE(NImageUtils::stringToUrl(path) == url, back);
}

void ImageUtilsPathsTest::knowsFormats_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("supported");
    QTest::addColumn<bool>("raw");
    QTest::newRow("jpeg") << "/nowhere/a.JPG" << true << false;
    QTest::newRow("heif") << "a.hif" << true << false;
    QTest::newRow("raw") << "a.b.Nef" << true << true;
    QTest::newRow("dng") << "a.dng" << true << true;
    QTest::newRow("film") << "a.mp4" << false << false;
    QTest::newRow("no extension") << "jpg" << false << false;
    QTest::newRow("similar") << "a.jpgx" << false << false;
    QTest::newRow("not ASCII") << QString::fromUtf8("a.jp\xc3\xa4") << false << false;
}

void ImageUtilsPathsTest::knowsFormats()
{
    QFETCH(QString, path);
    QFETCH(bool, supported);
    QFETCH(bool, raw);
    QCOMPARE(NImageUtils::isSupportedFile(path), supported);
    QCOMPARE(NImageUtils::isRawFile(path), raw);
    QCOMPARE(NImageUtils::isRawExt(NImageUtils::getExtension(path)), raw);
    const QString lowered = NImageUtils::getExtension(path).toLower();
    QCOMPARE(NImageUtils::supportedFileFormats().contains(lowered), supported);
    QCOMPARE(NImageUtils::rawFileFormats().contains(lowered), raw);
    QCOMPARE(NImageUtils::nonRawFileFormats().contains(lowered), supported && !raw);
}

void ImageUtilsPathsTest::choosesTheExportExtension_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("plain");   // raw exposure and colour left alone
    QTest::addColumn<QString>("changed"); // or changed
    QTest::newRow("empty source") << ""
                                  << "preserve"
                                  << ""
                                  << "";
    QTest::newRow("plain") << "jpg"
                           << "png"
                           << "png"
                           << "png";
    QTest::newRow("letter case kept") << "jpg"
                                      << "PNG"
                                      << "PNG"
                                      << "PNG";
    QTest::newRow("preserve") << "JPG"
                              << "Preserve"
                              << "JPG"
                              << "JPG";
    QTest::newRow("preserve raw") << "NEF"
                                  << "preserve"
                                  << "dng"
                                  << "tiff";
    QTest::newRow("dng from raw") << "NEF"
                                  << "DNG"
                                  << "DNG"
                                  << "tiff";
    QTest::newRow("dng from dng") << "dng"
                                  << "dng"
                                  << "dng"
                                  << "tiff";
    QTest::newRow("dng from png") << "png"
                                  << "dng"
                                  << "tiff"
                                  << "tiff";
}

void ImageUtilsPathsTest::choosesTheExportExtension()
{
    QFETCH(QString, source);
    QFETCH(QString, output);
    QFETCH(QString, plain);
    QFETCH(QString, changed);
    QCOMPARE(NImageUtils::getExportExtension(source, output), plain);
    QCOMPARE(NImageUtils::getExportExtension(source, output, true), changed);
    QCOMPARE(NImageUtils::getExportExtension(source), source.isEmpty() ? "" : "tiff");
}

void ImageUtilsPathsTest::findsAFreePath_data()
{
    QTest::addColumn<QStringList>("existing"); // a name that ends with '/' is a folder
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("free");
    QTest::newRow("free") << QStringList{} << "photo.png"
                          << "photo.png";
    QTest::newRow("third") << QStringList{"photo.png", "photo-2.png"} << "photo.png"
                           << "photo-3.png";
    QTest::newRow("counter in the name") << QStringList{"photo-2.png"} << "photo-2.png"
                                         << "photo-2-2.png";
    QTest::newRow("last dot") << QStringList{"archive.tar.gz"} << "archive.tar.gz"
                              << "archive.tar-2.gz";
    QTest::newRow("no dot in the name") << QStringList{"README"} << "README"
                                        << "README-2";
    QTest::newRow("folder in the way") << QStringList{"a.png", "a-2.png/"} << "a.png"
                                       << "a-3.png";
    QTest::newRow("gap") << QStringList{"a.png", "a-3.png"} << "a.png"
                         << "a-2.png";
}

void ImageUtilsPathsTest::findsAFreePath()
{
    QFETCH(QStringList, existing);
    QFETCH(QString, wanted);
    QFETCH(QString, free);
    const QTemporaryDir folder(QDir::tempPath() + "/no-dots-XXXXXX");
    const QDir dir(folder.path());
    for (const QString& name : existing) {
        QFile file(dir.filePath(name));
        QVERIFY(name.endsWith(u'/') ? dir.mkdir(name.chopped(1)) : file.open(QFile::WriteOnly));
    }
    QVERIFY(!dir.path().contains(u'.'));
    QCOMPARE(NImageUtils::adjustPathWhenOverwriting(dir.filePath(wanted)), dir.filePath(free));
    QVERIFY(!QFileInfo::exists(dir.filePath(free))); // nothing is reserved
}

void ImageUtilsPathsTest::tellsEqualPaths()
{
    const QTemporaryDir folder;
    const QDir dir(folder.path());
    QFile file(dir.filePath("a.png"));
    QVERIFY(file.open(QFile::WriteOnly) && file.link(dir.filePath("link.png")));
    QVERIFY(NImageUtils::arePathsEqual("/missing/a", "/missing/a"));
    QVERIFY(NImageUtils::arePathsEqual(dir.filePath("a.png"), dir.filePath("./link.png")));
    QVERIFY(!NImageUtils::arePathsEqual(dir.filePath("a.png"), dir.filePath("b.png")));
}

void ImageUtilsPathsTest::tellsValidVariants()
{
    QVERIFY(!NImageUtils::isValidVariant(QVariant()));
    QVERIFY(NImageUtils::isValidVariant(QVariant(QString())));
}

QTEST_GUILESS_MAIN(ImageUtilsPathsTest)
#include "tst_imageutils_paths.moc"

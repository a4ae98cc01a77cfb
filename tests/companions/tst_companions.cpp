// SPDX-License-Identifier: Apache-2.0
#include <baseutils/baseutils.h>
#include <timing/elapsedtime.h>

#include <QtCore/QSet>
#include <QtTest/QTest>

#include <OpenImageIO/imageio.h>

#include <limits>

namespace {

QSet<QString> asSet(const QStringList& list) { return QSet<QString>(list.begin(), list.end()); }

} // namespace

/// The small libraries beside ours: paths and formats, durations.
class CompanionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void formatsAreTheStillPicturesOfOpenImageIO();
    void namesTellTheFormat();
    void pathsAreTakenApart_data();
    void pathsAreTakenApart();
    void urlsComeBack_data();
    void urlsComeBack();
    void durationsAreWrittenForPeople_data();
    void durationsAreWrittenForPeople();
    void durationsArePerRun();
};

void CompanionsTest::formatsAreTheStillPicturesOfOpenImageIO()
{
    const QStringList supported = BaseUtils::supportedFileFormats();
    const QStringList raw = BaseUtils::rawFileFormats();
    QStringList sorted = supported;
    sorted.sort();
    QCOMPARE(supported, sorted);
    QCOMPARE(supported.size(), asSet(supported).size());
    QCOMPARE(asSet(supported), asSet(raw) + asSet(BaseUtils::nonRawFileFormats()));
    QVERIFY(!asSet(raw).intersects(asSet(BaseUtils::nonRawFileFormats())));

    QSet<QString> readable{"hif"}; // HEIC as some cameras call it
    QSet<QString> readableRaw;
    const QSet<QString> noPictures{"dicom", "ffmpeg", "null", "openvdb", "term", "zfile"};
    const QSet<QString> noStills{"cine", "heics"};
    for (const auto& [format, extensions] : OIIO::get_extension_map()) {
        for (const std::string& extension : extensions) {
            const QString name = QString::fromStdString(extension);
            if (!noPictures.contains(QString::fromStdString(format)) && !noStills.contains(name))
                (format == "raw" ? readableRaw : readable).insert(name);
        }
    }
    QCOMPARE(asSet(raw) - readableRaw, QSet<QString>());
    QCOMPARE(asSet(BaseUtils::nonRawFileFormats()) - readable, QSet<QString>());
    if (OIIO::openimageio_version() / 100 == 204) // the floor: newer ones read more
        QCOMPARE(asSet(supported), readable + readableRaw);
}

void CompanionsTest::namesTellTheFormat()
{
    for (const char* name : {"a.jpg", "/b/A.JPEG", "x.y.Tif", "a.DNG", "a.hif", "missing/.png"})
        QVERIFY2(BaseUtils::isSupportedFile(name), name);
    for (const char* name :
         {"a.mp4", "jpg", "a.jpg/b", "a.jpg.", "", "a.j", "a.zzzz", "a.\xC4\xB0"})
        QVERIFY2(!BaseUtils::isSupportedFile(QString::fromUtf8(name)), name);
    QVERIFY(BaseUtils::isRawFile("a.NEF") && !BaseUtils::isRawFile("nef.jpg"));
    QVERIFY(BaseUtils::isRawExt("Cr2") && !BaseUtils::isRawExt(".cr2"));
}

void CompanionsTest::pathsAreTakenApart_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("parts"); // file name, base name, folder, extension
    QTest::newRow("two dots") << "/a/b.tar.gz" << QStringList{"b.tar.gz", "b.tar", "/a", "gz"};
    QTest::newRow("bare") << "b.PNG" << QStringList{"b.PNG", "b", ".", "PNG"};
    QTest::newRow("at the root") << "/a" << QStringList{"a", "a", "/", ""};
    QTest::newRow("folder") << "/a.b/" << QStringList{"", "", "/a.b", ""};
    QTest::newRow("dot file") << "x/.png" << QStringList{".png", "", "x", "png"};
}

void CompanionsTest::pathsAreTakenApart()
{
    QFETCH(QString, path);
    QFETCH(QStringList, parts);
    QCOMPARE(QStringList({BaseUtils::getFilename(path), BaseUtils::getBaseName(path),
                          BaseUtils::getPath(path), BaseUtils::getExtension(path)}),
             parts);
}

void CompanionsTest::urlsComeBack_data()
{
    QTest::addColumn<QString>("path");
    for (const char* path : {"/a/b c.jpg", "/a/100%20#?;\"'\n.jpg", "a.jpg", "/\xC3\xA4.jpg"})
        QTest::newRow(path) << QString::fromUtf8(path);
}

void CompanionsTest::urlsComeBack()
{
    QFETCH(QString, path);
    QCOMPARE(BaseUtils::urlToString(BaseUtils::stringToUrl(path)), path);
    const QUrl remote("https://example.org/a%20b.jpg?c#d");
    QCOMPARE(BaseUtils::urlToString(remote), remote.toString());
}

void CompanionsTest::durationsAreWrittenForPeople_data()
{
    QTest::addColumn<qint64>("nanoseconds");
    QTest::addColumn<QString>("text");
    const auto row = [](qint64 nanoseconds, const char* text) {
        QTest::newRow(text) << nanoseconds << text;
    };
    row(0, "0 ns");
    row(999, "999 ns");
    row(1000, "1.00 us");
    row(9994, "9.99 us");
    row(9996, "10.0 us");
    row(99960, "100 us");
    row(999499, "999 us");
    row(999600, "1.00 ms");
    row(45600000, "45.6 ms");
    row(999600000, "1.00 s");
    row(12000000000, "12.0 s");
    row(1234567000000000, "1234567 s");
}

void CompanionsTest::durationsAreWrittenForPeople()
{
    QFETCH(qint64, nanoseconds);
    QFETCH(QString, text);
    QCOMPARE(QString(ElapsedTime(nanoseconds, 1)), text);
}

void CompanionsTest::durationsArePerRun()
{
    const auto perRun = [](qint64 nanoseconds, unsigned runs) {
        return ElapsedTime(nanoseconds, runs).duration();
    };
    QCOMPARE(perRun(1000, 3), 333u);
    QCOMPARE(perRun(1000, 0), 1000u);
    QCOMPARE(perRun(-5, 2), 0u);
    QCOMPARE(perRun(5, std::numeric_limits<unsigned>::max()), 0u);
    const quint64 most = std::numeric_limits<quint64>::max();
    for (const auto& [unit, factor] : {std::pair(ElapsedTimeUnit(0), 1ull),
                                       {ElapsedTimeUnit(1), 1000ull},
                                       {ElapsedTimeUnit(2), 1000000ull},
                                       {ElapsedTimeUnit(3), 1000000000ull}}) {
        QCOMPARE(ElapsedTime(quint64(10), unit).duration(), 10 * factor);
        QCOMPARE(ElapsedTime(most, unit).duration(), most);
    }
    const qint64 before = ElapsedTime::monotonicNanoseconds();
    QTRY_VERIFY(ElapsedTime::monotonicNanoseconds() > before);
}

QTEST_GUILESS_MAIN(CompanionsTest)
#include "tst_companions.moc"

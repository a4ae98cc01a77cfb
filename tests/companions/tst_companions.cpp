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
    void pathsTellTheFormatAndTheirParts();
    void durationsArePerRunAndWrittenForPeople();
};

void CompanionsTest::formatsAreTheStillPicturesOfOpenImageIO()
{
    const QStringList supported = BaseUtils::supportedFileFormats();
    const QStringList raw = BaseUtils::rawFileFormats();
    QCOMPARE(supported.size(), asSet(supported).size());
    QCOMPARE(asSet(supported), asSet(raw) + asSet(BaseUtils::nonRawFileFormats()));
    QVERIFY(std::is_sorted(supported.begin(), supported.end()));

    QSet<QString> readable{"hif"}; // HEIC as some cameras call it
    QSet<QString> readableRaw;
    const QSet<QString> noPictures{"dicom", "ffmpeg", "null", "openvdb", "term", "zfile"};
    const QSet<QString> noStills{"cine", "heics"};
    const auto known = OIIO::get_extension_map();
    for (const char* const optional : {"gif", "heif"}) // OpenImageIO may be built without
        if (known.count(optional) == 0)
            readable += optional == QLatin1String("gif") ? QSet<QString>{"gif"}
                                                         : QSet<QString>{"avif", "heic", "heif"};
    for (const auto& [format, extensions] : known) {
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

void CompanionsTest::pathsTellTheFormatAndTheirParts()
{
    for (const char* name : {"a.jpg", "/b/A.JPEG", "x.y.Tif", "a.DNG", "missing/.png"})
        QVERIFY2(BaseUtils::isSupportedFile(name), name);
    for (const char* name : {"a.mp4", "jpg", "a.jpg/b", "a.jpg.", "", "a.j", "a.\xC4\xB0"})
        QVERIFY2(!BaseUtils::isSupportedFile(name), name);
    QVERIFY(BaseUtils::isRawFile("a.NEF") && !BaseUtils::isRawFile("nef.jpg"));
    QVERIFY(BaseUtils::isRawExt("Cr2") && !BaseUtils::isRawExt(".cr2"));
    const auto parts = [](const QString& path) {
        return QStringList{BaseUtils::getFilename(path), BaseUtils::getBaseName(path),
                           BaseUtils::getPath(path), BaseUtils::getExtension(path)};
    };
    QCOMPARE(parts("/a/b.tar.GZ"), QStringList({"b.tar.GZ", "b.tar", "/a", "GZ"}));
    QCOMPARE(parts("b"), QStringList({"b", "b", ".", ""}));
    for (const char* path : {"/a/b c.jpg", "/a/100%20#?;\"'\n.jpg", "a.jpg", "/\xC3\xA4.jpg"})
        QCOMPARE(BaseUtils::urlToString(BaseUtils::stringToUrl(path)), path);
    const QUrl remote("https://example.org/a%20b.jpg?c#d");
    QCOMPARE(BaseUtils::urlToString(remote), remote.toString());
}

void CompanionsTest::durationsArePerRunAndWrittenForPeople()
{
    const auto text = [](qint64 nanoseconds) { return QString(ElapsedTime(nanoseconds, 1)); };
    QCOMPARE(text(999), "999 ns");
    QCOMPARE(text(1000), "1.00 us");
    QCOMPARE(text(9994), "9.99 us");
    QCOMPARE(text(9996), "10.0 us");
    QCOMPARE(text(99960), "100 us");
    QCOMPARE(text(999499), "999 us");
    QCOMPARE(text(999500), "1.00 ms");
    QCOMPARE(text(1234567000000000), "1234567 s");
    QCOMPARE(ElapsedTime(1000, 3).duration(), 333u);
    QCOMPARE(ElapsedTime(1000, 0).duration(), 1000u);
    QCOMPARE(ElapsedTime(-5, 2).duration(), 0u);
    const quint64 most = std::numeric_limits<quint64>::max();
    quint64 factor = 1;
    for (int unit = 0; unit < 4; ++unit, factor *= 1000) {
        QCOMPARE(ElapsedTime(quint64(10), ElapsedTimeUnit(unit)).duration(), 10 * factor);
        QCOMPARE(ElapsedTime(most, ElapsedTimeUnit(unit)).duration(), most);
        QCOMPARE(ElapsedTime(most / 3, ElapsedTimeUnit(unit)).duration(), unit ? most : most / 3);
    }
    const qint64 before = ElapsedTime::monotonicNanoseconds();
    QTRY_VERIFY(ElapsedTime::monotonicNanoseconds() > before);
}

QTEST_GUILESS_MAIN(CompanionsTest)
#include "tst_companions.moc"

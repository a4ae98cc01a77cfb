// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/readers.h>
#include <imageutils/imageutils.h>

#include <support/files.h>
#include <support/log.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <OpenImageIO/imageio.h>

using namespace TestSupport;

/// The readers of single formats beside OpenImageIO, on files of several writers
/// (tests/support/make-headers).
class ImageUtilsHeadersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void agreesWithOpenImageIO_data();
    void agreesWithOpenImageIO();
    void needsOnlyTheHeader_data() { agreesWithOpenImageIO_data(); }
    void needsOnlyTheHeader();

private:
    static QSize sizeInBytes(const QByteArray& bytes);
    static QSize sizeByOpenImageIO(const QString& path);

    QTemporaryDir m_folder;
};

void ImageUtilsHeadersTest::initTestCase()
{
    QProcess maker;
    maker.setProcessChannelMode(QProcess::ForwardedChannels);
    maker.start("sh", {"-c", "exec \"$0\" \"$1\"", MAKE_HEADERS, m_folder.path()});
    QVERIFY(maker.waitForFinished(120'000));
    QCOMPARE(maker.exitCode(), 0);
}

/// The answer of the format's own reader; invalid where it refuses the file or leaves the turn to
/// OpenImageIO.
QSize ImageUtilsHeadersTest::sizeInBytes(const QByteArray& bytes)
{
    FileBytes file([&bytes](qint64 position, char* to, qint64 count) {
        const QByteArray part = bytes.mid(qsizetype(position), qsizetype(count));
        return std::copy(part.begin(), part.end(), to) - to;
    });
    const std::optional<FoundHeader> found = readKnownHeader(file);
    if (!found || found->refusal || !found->unclearTurn.empty())
        return {};
    const QSize size(found->header.width, found->header.height);
    return found->header.turned ? size.transposed() : size;
}

QSize ImageUtilsHeadersTest::sizeByOpenImageIO(const QString& path)
{
    const auto input = OIIO::ImageInput::open(path.toStdString());
    if (!input) {
        OIIO::geterror();
        return {};
    }
    // libheif has turned HEIF pictures, but OpenImageIO 2.5 says the orientation of their Exif
    // blocks.
    const bool isTurned = input->format_name() == std::string_view("heif");
    const int orientation = isTurned ? 1 : input->spec().get_int_attribute("Orientation");
    const QSize size(input->spec().width, input->spec().height);
    if (size.isEmpty()) // is no answer
        return {};
    return orientation >= 5 && orientation <= 8 ? size.transposed() : size;
}

static bool isHeif(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) && file.peek(8).endsWith("ftyp");
}

void ImageUtilsHeadersTest::agreesWithOpenImageIO_data()
{
    QTest::addColumn<QString>("path");
    const QFileInfoList files = QDir(m_folder.path()).entryInfoList(QDir::Files);
    const bool readsHeif =
        OIIO::get_string_attribute("format_list").find("heif") != std::string::npos;
    for (const QFileInfo& file : files)
        if (readsHeif || !isHeif(file.filePath()))
            QTest::newRow(qPrintable(file.fileName())) << file.filePath();
}

void ImageUtilsHeadersTest::agreesWithOpenImageIO()
{
    QFETCH(QString, path);
    const QSize wanted = sizeByOpenImageIO(path);
    LogCapture log; // of what OpenImageIO refuses
    QCOMPARE(NImageUtils::imageSize(path), wanted);
    QCOMPARE(log.take().size(), wanted.isValid() ? 0 : 1);
    QFile file(path);
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(sizeInBytes(file.readAll()).isValid(), !path.contains("asks") && wanted.isValid());
}

// Cut off behind the header the answer stays, cut off in it there is none, but never another one.
void ImageUtilsHeadersTest::needsOnlyTheHeader()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QFile::ReadOnly));
    const QByteArray bytes = file.readAll();
    const QSize whole = sizeInBytes(bytes);
    QCOMPARE(sizeInBytes(bytes.chopped(1)), whole);
    for (qsizetype missing = 2; missing < bytes.size(); missing += 1 + missing / 8) {
        const QSize size = sizeInBytes(bytes.chopped(missing));
        QVERIFY(size == whole || !size.isValid());
    }
}

QTEST_GUILESS_MAIN(ImageUtilsHeadersTest)
#include "tst_imageutils_headers.moc"

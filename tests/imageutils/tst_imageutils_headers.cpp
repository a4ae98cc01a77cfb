// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageheader.h>
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
    static QSize shownSize(const std::optional<ImageHeader>& header);
    static QSize sizeByOpenImageIO(const QString& path);

    QTemporaryDir m_folder;
};

void ImageUtilsHeadersTest::initTestCase()
{
    QProcess maker;
    maker.setProcessChannelMode(QProcess::ForwardedChannels);
    maker.start(MAKE_HEADERS, {m_folder.path()});
    QVERIFY(maker.waitForFinished(120'000));
    QCOMPARE(maker.exitCode(), 0);
}

QSize ImageUtilsHeadersTest::shownSize(const std::optional<ImageHeader>& header)
{
    if (!header)
        return {};
    const QSize size(header->width, header->height);
    return header->turned ? size.transposed() : size;
}

QSize ImageUtilsHeadersTest::sizeByOpenImageIO(const QString& path)
{
    const auto input = OIIO::ImageInput::open(path.toStdString());
    if (!input) {
        OIIO::geterror();
        return {};
    }
    const int orientation = input->spec().get_int_attribute("Orientation");
    const QSize size(input->spec().width, input->spec().height);
    if (size.isEmpty()) // is no answer
        return {};
    return orientation >= 5 && orientation <= 8 ? size.transposed() : size;
}

void ImageUtilsHeadersTest::agreesWithOpenImageIO_data()
{
    QTest::addColumn<QString>("path");
    const QFileInfoList files = QDir(m_folder.path()).entryInfoList(QDir::Files);
    for (const QFileInfo& file : files)
        QTest::newRow(qPrintable(file.fileName())) << file.filePath();
}

void ImageUtilsHeadersTest::agreesWithOpenImageIO()
{
    QFETCH(QString, path);
    const QSize wanted = sizeByOpenImageIO(path);
    LogCapture log; // of what OpenImageIO refuses
    QCOMPARE(NImageUtils::imageSize(path), wanted);
    QCOMPARE(log.take().size(), wanted.isValid() ? 0 : 1);
    const std::optional<ImageHeader> alone = readHeaderAlone(path.toStdString());
    QCOMPARE(alone.has_value(), !path.contains("asks"));
}

// Cut off behind the header the answer stays, cut off in it there is none, but never another one.
void ImageUtilsHeadersTest::needsOnlyTheHeader()
{
    QFETCH(QString, path);
    const QSize whole = shownSize(readHeaderAlone(path.toStdString()));
    QFile file(path);
    const qint64 length = file.size();
    bool lacksPixels = false;
    for (qint64 missing = 1; missing < length; missing += 1 + missing / 4) {
        QVERIFY(file.resize(length - missing));
        const QSize size = shownSize(readHeaderAlone(path.toStdString()));
        QVERIFY(size == whole || !size.isValid());
        lacksPixels = lacksPixels || size == whole;
    }
    QVERIFY(lacksPixels); // the first cut, at least
}

QTEST_GUILESS_MAIN(ImageUtilsHeadersTest)
#include "tst_imageutils_headers.moc"

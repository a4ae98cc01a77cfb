// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <support/files.h>
#include <support/log.h>

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <thread>
#include <vector>

using namespace TestSupport;

/// Sizes read from headers and kept. Each test works in a folder of its own, so no path meets an
/// older record.
class ImageUtilsSizeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_folder.reset(); }
    void turnsByOrientation_data();
    void turnsByOrientation();
    void keepsUntilTheFileChanges();
    void keepsAHundred();
    void keepsEachSpelling();
    void refuses_data();
    void refuses();
    void answersManyThreads();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    /// Whether the cache knows the file: it is taken away, and a kept size is still the answer.
    bool isKept(const QString& name) const;

    std::optional<QTemporaryDir> m_folder;
};

void ImageUtilsSizeTest::init()
{
    QTest::failOnWarning(QRegularExpression(".*"));
    m_folder.emplace();
}

bool ImageUtilsSizeTest::isKept(const QString& name) const
{
    LogCapture log;
    QFile::rename(path(name), path("away"));
    const bool kept = NImageUtils::imageSize(path(name)).isValid();
    QFile::rename(path("away"), path(name));
    return kept;
}

void ImageUtilsSizeTest::turnsByOrientation_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QSize>("size");
    for (int orientation = 0; orientation <= 9; ++orientation) {
        const QSize size = orientation >= 5 && orientation <= 8 ? QSize(30, 40) : QSize(40, 30);
        QTest::addRow("jpeg, orientation %d", orientation) << "a.jpg" << orientation << size;
    }
    QTest::newRow("tiff, turned") << "a.tif" << 6 << QSize(30, 40);
    QTest::newRow("wrong extension") << "a.png" << 8 << QSize(30, 40);
    QTest::newRow("blank and umlaut") << QString::fromUtf8("a \xc3\xa4.jpg") << 1 << QSize(40, 30);
}

void ImageUtilsSizeTest::turnsByOrientation()
{
    QFETCH(QString, name);
    QFETCH(int, orientation);
    QFETCH(QSize, size);
    writePicture(path(name), 40, 30, orientation, name.endsWith(".tif") ? "tiff" : "jpeg");
    QCOMPARE(NImageUtils::imageSize(path(name)), size);
    QCOMPARE(NImageUtils::imageSize(path(name)), size);
}

void ImageUtilsSizeTest::keepsUntilTheFileChanges()
{
    writePicture(path("a.jpg"), 40, 30);
    QCOMPARE(NImageUtils::imageSize(path("a.jpg")), QSize(40, 30));
    QVERIFY(isKept("a.jpg"));
    const QDateTime before = QFileInfo(path("a.jpg")).fileTime(QFileDevice::FileMetadataChangeTime);
    do // the clock of the file system may stand still for some milliseconds
        writePicture(path("a.jpg"), 50, 20);
    while (QFileInfo(path("a.jpg")).fileTime(QFileDevice::FileMetadataChangeTime) <= before);
    QCOMPARE(NImageUtils::imageSize(path("a.jpg")), QSize(50, 20));

    LogCapture
        log; // a changed file that cannot be read leaves the old record, which still does not count
    const QDateTime then = QFileInfo(path("a.jpg")).fileTime(QFileDevice::FileMetadataChangeTime);
    do
        writeBytes(path("a.jpg"), "no picture");
    while (QFileInfo(path("a.jpg")).fileTime(QFileDevice::FileMetadataChangeTime) <= then);
    QCOMPARE(NImageUtils::imageSize(path("a.jpg")), QSize());
    QCOMPARE(NImageUtils::imageSize(path("a.jpg")), QSize());
    QCOMPARE(log.take().size(), 2);
    QVERIFY(isKept("a.jpg"));
}

void ImageUtilsSizeTest::keepsAHundred()
{
    const auto name = [](int i) { return QStringLiteral("%1.jpg").arg(i); };
    for (int i = 0; i < 100; ++i) {
        writePicture(path(name(i)), 8 + i, 8);
        QCOMPARE(NImageUtils::imageSize(path(name(i))), QSize(8 + i, 8));
    }
    QVERIFY(isKept(name(0))); // and now used last
    writePicture(path(name(100)), 9, 9);
    QCOMPARE(NImageUtils::imageSize(path(name(100))), QSize(9, 9));
    QVERIFY(isKept(name(0)));
    QVERIFY(!isKept(name(1)));
    QVERIFY(isKept(name(2)) && isKept(name(99)));
}

void ImageUtilsSizeTest::keepsEachSpelling()
{
    writePicture(path("a.jpg"), 40, 30);
    QCOMPARE(NImageUtils::imageSize(path("a.jpg")), QSize(40, 30));
    LogCapture log;
    QFile::remove(path("a.jpg"));
    QCOMPARE(NImageUtils::imageSize(path("a.jpg")), QSize(40, 30));
    QCOMPARE(NImageUtils::imageSize(path("./a.jpg")), QSize());
    QCOMPARE(log.take().size(), 1);
}

void ImageUtilsSizeTest::refuses_data()
{
    QTest::addColumn<QByteArray>(
        "bytes"); // null: not a file to write, the name alone says what it is
    QTest::addColumn<QString>("name");
    const QByteArray lyingHdr = "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y -5 +X 2147483647\n";
    QTest::newRow("missing") << QByteArray() << "missing.jpg";
    QTest::newRow("empty") << QByteArray("") << "a.jpg";
    QTest::newRow("text") << QByteArray("hello, I am no picture at all\n") << "a.jpg";
    QTest::newRow("cut in the header")
        << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) << "a.png";
    QTest::newRow("negative sides") << QByteArray("P6\n-4 -5\n255\n................") << "a.ppm";
    QTest::newRow("negative height") << lyingHdr << "a.hdr";
    QTest::newRow("width beyond int") << lyingTiff() << "a.tif";
    QTest::newRow("folder") << QByteArray() << "folder.jpg";
    QTest::newRow("pipe") << QByteArray() << "pipe.jpg";
    QTest::newRow("endless device") << QByteArray() << "zero.jpg";
    QTest::newRow("name with a line break") << QByteArray() << "a\nb.jpg";
    QTest::newRow("name with a null character") << QByteArray() << QStringLiteral("good.jpg\0.jpg");
    QTest::newRow("empty name") << QByteArray() << "";
}

void ImageUtilsSizeTest::refuses()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    writePicture(path("good.jpg"), 40, 30);
    if (!bytes.isNull())
        writeBytes(path(name), bytes);
    QVERIFY(QDir(m_folder->path()).mkdir("folder.jpg"));
    if (!makePipe(path("pipe.jpg")) || !linkEndlessDevice(path("zero.jpg")))
        QSKIP("this system has no pipes and devices among its files");
    for (int call = 0; call < 2; ++call) { // no answer is kept
        LogCapture log;
        QCOMPARE(NImageUtils::imageSize(name.isEmpty() ? name : path(name)), QSize());
        const QStringList lines = log.takeTexts();
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines[0].startsWith("warning: Could not get image size: ") && lines[0].size() > 40,
                 qPrintable(lines[0]));
    }
}

void ImageUtilsSizeTest::answersManyThreads()
{
    std::vector<std::string>
        names; // QString's shared counts would be noise to the thread sanitizer
    for (int i = 0; i < 110; ++i) {
        names.push_back(path(QStringLiteral("%1.jpg").arg(i)).toStdString());
        writePicture(QString::fromStdString(names.back()), 10 + i, 10);
    }
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&names, &wrong, t] {
            for (int i = 0; i < 330; ++i) {
                const int k =
                    (i * (t + 1)) % int(names.size()); // hits, misses and evictions at once
                if (NImageUtils::imageSize(QString::fromStdString(names[std::size_t(k)])) !=
                    QSize(10 + k, 10))
                    ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(wrong, 0);
}

QTEST_GUILESS_MAIN(ImageUtilsSizeTest)
#include "tst_imageutils_size.moc"

// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageheader.h>
#include <imageutils/imageutils.h>
#include <platform/filestate.h>
#include <platform/plugin.h>

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
    void recoversFromAMomentWithoutDescriptors(); // first: it opens the plug-in
    void takesNamesLiterally();
    void keepsTheTextOfThePath();
    void turnsByOrientation();
    void keepsUntilTheFileChanges();
    void asksForTheTimeThatQtGives();
    void keepsAHundred();
    void refuses_data();
    void refuses();
    void isNotHeldUpByAPipe();
    void answersManyThreads();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QSize sizeOf(const QString& name) const { return NImageUtils::imageSize(path(name)); }

    std::optional<QTemporaryDir> m_folder;
};

void ImageUtilsSizeTest::init()
{
    // Qt 6.11 reads its settings anew where a file of theirs cannot be opened.
    QTest::failOnWarning(QRegularExpression("^(?!Failed to load file .*qtlogging.ini)"));
    m_folder.emplace();
}

void ImageUtilsSizeTest::recoversFromAMomentWithoutDescriptors()
{
    writePicture(path("a.png"), 40, 30, 0, "png");
    LogCapture log;
#ifndef __SANITIZE_ADDRESS__        // whose check of objects needs descriptors itself
    for (const int left : {0, 1}) { // for the file, not for the plug-in
        const FewDescriptors few(left);
        QCOMPARE(sizeOf("a.png"), few.isActive() ? QSize() : QSize(40, 30));
        QCOMPARE(log.take().size(), few.isActive() ? 1 : 0);
    }
#endif
    QCOMPARE(sizeOf("a.png"), QSize(40, 30));
    // A name without a folder would be searched for in the system's folders.
    const std::string error = Platform::openPlugin("none", "none").error;
    QVERIFY(error == "none.so: not installed" || error == "none.dll: not installed" ||
            error.starts_with("none: "));
}

void ImageUtilsSizeTest::takesNamesLiterally()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    for (const char* const format : {"jpeg", "png"}) {
        for (const char* const name : {"Is it?.png", "?", "a?b=c&d=e.png", "?.jpg", "%1 %2.png",
                                       "pipe:0.png", "a=b&c.tif", "http:x.png", "-.png"}) {
            QFile::remove(name);
            writePicture(QStringLiteral("source.jpg"), 40, 30, 0, format);
            if (!canBeNamed(name))
                continue;
            QVERIFY(QFile::rename(QStringLiteral("source.jpg"), name));
            for (const QString& spelling : {QString(name), path(name)})
                QCOMPARE(NImageUtils::imageSize(spelling), QSize(40, 30));
        }
    }
    QVERIFY(QDir::setCurrent(before));
}

void ImageUtilsSizeTest::keepsTheTextOfThePath()
{
    const QString file = path("a.jpg");
    writePicture(file, 40, 30);
    std::u16string text = file.toStdU16String();
    QCOMPARE(NImageUtils::imageSize(QString::fromRawData(
                 reinterpret_cast<const QChar*>(text.data()), qsizetype(text.size()))),
             QSize(40, 30));
    text.assign(text.size(), u'x');
    QVERIFY(QFile::remove(file));
    QCOMPARE(sizeOf("a.jpg"), QSize(40, 30)); // the kept answer is found under its path
}

void ImageUtilsSizeTest::turnsByOrientation()
{
    for (const char* const format : {"jpeg", "tiff"}) {
        for (int orientation = 0; orientation <= 9; ++orientation) {
            const QString name =
                QString::fromUtf8("%1 \xc3\xa4 %2.jpg").arg(format).arg(orientation);
            writePicture(path(name), 40, 30, orientation, format);
            const bool turned = orientation >= 5 && orientation <= 8;
            for (int call = 0; call < 2; ++call)
                QCOMPARE(sizeOf(name), turned ? QSize(30, 40) : QSize(40, 30));
        }
    }
}

void ImageUtilsSizeTest::keepsUntilTheFileChanges()
{
    const QString file = path("a.jpg");
    const auto changed = [&file] {
        return QFileInfo(file).fileTime(QFileDevice::FileMetadataChangeTime);
    };
    writePicture(file, 40, 30);
    QCOMPARE(sizeOf("a.jpg"), QSize(40, 30));
    const QDateTime before = changed();
    do // the clock of the file system may stand still for some milliseconds
        writeBytes(file, "no picture");
    while (changed() <= before);
    LogCapture log;
    QCOMPARE(sizeOf("a.jpg"), QSize()); // the old record stays and does not count
    QCOMPARE(sizeOf("a.jpg"), QSize());
    QFile::remove(file);
    QCOMPARE(sizeOf("a.jpg"), QSize(40, 30));
    writePicture(file, 50, 20);
    QCOMPARE(sizeOf("a.jpg"), QSize(50, 20));
    QFile::remove(file);
    QCOMPARE(sizeOf("a.jpg"), QSize(50, 20));
    QCOMPARE(sizeOf("./a.jpg"), QSize()); // each spelling has a record of its own
    QCOMPARE(log.take().size(), 3);
}

void ImageUtilsSizeTest::asksForTheTimeThatQtGives()
{
    using Kind = Platform::FileState::Kind;
    writePicture(path("a.jpg"), 40, 30);
    if (Platform::fileState("/").kind == Kind::Unknown)
        QSKIP("Qt is asked on this system");
    for (const QString& name : {path("a.jpg"), path(QStringLiteral("missing")), m_folder->path(),
                                QCoreApplication::applicationFilePath()}) {
        const QFileInfo file(name);
        const Platform::FileState state = Platform::fileState(qPrintable(name));
        QCOMPARE(state.kind == Kind::Regular, file.isFile());
        QCOMPARE(state.kind == Kind::Missing, !file.exists());
        const QDateTime changed = file.fileTime(QFileDevice::FileMetadataChangeTime);
        if (file.exists())
            QCOMPARE(QDateTime::fromMSecsSinceEpoch(state.changedMs), changed);
    }
}

void ImageUtilsSizeTest::keepsAHundred()
{
    const auto name = [](int i) { return QStringLiteral("%1.jpg").arg(i); };
    for (int i = 0; i <= 100; ++i) {
        writePicture(path(name(i)), 8 + i, 8);
        QCOMPARE(sizeOf(name(0)), QSize(8, 8)); // used again, before the next one comes
        QCOMPARE(sizeOf(name(i)), QSize(8 + i, 8));
    }
    QVERIFY(QDir(m_folder->path()).removeRecursively());
    LogCapture log;
    for (int i = 0; i <= 100; ++i)
        QCOMPARE(sizeOf(name(i)).isValid(), i != 1);
}

void ImageUtilsSizeTest::refuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes"); // null where the name alone says what it is
    const auto row = [](const QString& name, const QByteArray& bytes = {}) {
        QTest::newRow(qPrintable(name)) << name << bytes;
    };
    row("empty.jpg", "");
    row("text.jpg", "hello, I am no picture at all\n");
    row("cut in the header.png", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    row("negative sides.ppm", "P6\n-4 -5\n255\n................");
    row("negative height.hdr", "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y -5 +X 2147483647\n");
    row("width beyond int.tif", lyingTiff());
    for (const char* const name :
         {"missing.jpg", "folder.jpg", "pipe.jpg", "zero.jpg", "a\nb.jpg", ""})
        row(name);
    row(QStringLiteral("good.jpg\0.jpg"));
    for (const char* const name :
         {"http://127.0.0.1:9/x.mp4", "pipe:0.mov", "none.null", "mem.jpg"})
        row(name);
}

void ImageUtilsSizeTest::refuses()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    writePicture(path("good.jpg"), 40, 30);
    if (!bytes.isNull())
        writeBytes(path(name), bytes);
    QVERIFY(QDir(m_folder->path()).mkdir("folder.jpg"));
    // Where the system has no pipes and devices among its files, these are missing.
    if (makePipe(path("pipe.jpg")))
        QVERIFY(linkEndlessDevice(path("zero.jpg")) &&
                QFile::link("/proc/self/mem", path("mem.jpg"))); // every read of it fails
    const bool isText = name.isEmpty() || name.contains(u':') || name == "none.null";
    for (int call = 0; call < 2; ++call) { // no answer is kept
        LogCapture log;
        QCOMPARE(NImageUtils::imageSize(isText ? name : path(name)), QSize());
        const QStringList lines = log.takeTexts();
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines[0].startsWith("warning: Could not get image size: ") && lines[0].size() > 40);
        QVERIFY(!lines[0].contains("basic_") && !lines[0].contains("Unknown error"));
    }
    std::string error; // a pipe may take the name after its state was read
    QVERIFY(!readImageHeader(path("pipe.jpg").toStdString(), error) && !error.empty());
}

// Between the check and the moment when OpenImageIO opens the file, a pipe may take its name.
void ImageUtilsSizeTest::isNotHeldUpByAPipe()
{
    writePicture(path("a.png"), 40, 30, 0, "png");
    const std::string name = path("a.png").toStdString();
    int read = 0;
    const int heldUp = callsHeldUpByPipe(path("a.png"), [&] {
        std::string error;
        const std::optional<ImageHeader> header = readImageHeader(name, error);
        read += header && header->width == 40 ? 1 : 0;
        QVERIFY(header || error == name + ": not a regular file");
    });
    QCOMPARE(heldUp, 0);
    QVERIFY(read > 0 || !makePipe(path("pipe")));
}

void ImageUtilsSizeTest::answersManyThreads()
{
    std::vector<std::string>
        names; // a QString's shared count would be noise to the thread sanitizer
    for (int i = 0; i < 110; ++i) {
        names.push_back(path(QStringLiteral("%1.jpg").arg(i)).toStdString());
        writePicture(QString::fromStdString(names.back()), 10 + i, 10);
    }
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (std::size_t t = 1; t <= 8; ++t) {
        threads.emplace_back([&names, &wrong, t] {
            for (std::size_t i = 0; i < 330; ++i) { // hits, misses and evictions at once
                const std::size_t k = i * t % names.size();
                const QSize size = NImageUtils::imageSize(QString::fromStdString(names[k]));
                wrong += size != QSize(10 + int(k), 10);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(wrong, 0);
}

QTEST_GUILESS_MAIN(ImageUtilsSizeTest)
#include "tst_imageutils_size.moc"

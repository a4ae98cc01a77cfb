// SPDX-License-Identifier: Apache-2.0
#include <support/files.h>

#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <OpenImageIO/imageio.h>

#if defined(Q_OS_UNIX)
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <thread>
#include <vector>

void TestSupport::writePicture(const QString& path, int width, int height, int orientation,
                               const char* format)
{
    OIIO::ImageSpec spec(width, height, 3, OIIO::TypeDesc::UINT8);
    if (orientation != 0)
        spec.attribute("Orientation", orientation);
    std::vector<unsigned char> pixels(std::size_t(width) * std::size_t(height) * 3);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<unsigned char>(i / 3);
    const auto output = OIIO::ImageOutput::create(format);
    QVERIFY(output && output->open(path.toStdString(), spec));
    QVERIFY(output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) && output->close());
}

void TestSupport::writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray TestSupport::lyingTiff()
{
    QByteArray bytes("II*\0\x08\0\0\0\x09\0", 10);
    QDataStream stream(&bytes, QDataStream::Append);
    stream.setByteOrder(QDataStream::LittleEndian);
    for (const auto& [tag, value] :
         {std::pair(256, 0x80000000u), std::pair(257, 1u), std::pair(258, 8u), std::pair(259, 1u),
          std::pair(262, 1u), std::pair(273, 8u), std::pair(277, 1u), std::pair(278, 1u),
          std::pair(279, 1u)})
        stream << quint16(tag) << quint16(4) << quint32(1) << value;
    return bytes + QByteArray(4, '\0');
}

bool TestSupport::canBeNamed([[maybe_unused]] const QString& name)
{
#if defined(Q_OS_WIN)
    return !name.contains(QRegularExpression("[<>:\"|?*]"));
#else
    return true;
#endif
}

void TestSupport::setTemporaryFolder(const QString& path)
{
#if defined(Q_OS_WIN)
    const QString absolute = QFileInfo(path).absoluteFilePath(); // with a drive
    qputenv("TMPDIR", absolute.toLocal8Bit());
    qputenv("TMP", QDir::toNativeSeparators(absolute).toLocal8Bit());
#else
    qputenv("TMPDIR", path.toUtf8());
#endif
}

bool TestSupport::makePipe(const QString& path)
{
#if defined(Q_OS_UNIX)
    return mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
#else
    Q_UNUSED(path)
    return false;
#endif
}

int TestSupport::callsHeldUpByPipe(const QString& path, const std::function<void()>& call)
{
    int heldUp = 0;
#if defined(Q_OS_LINUX)
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(1);
    const QByteArray file = QFile::encodeName(path), pipe = file + ".pipe";
    std::atomic<int> done = 0;
    std::atomic<bool> isOver = !makePipe(QFile::decodeName(pipe));
    std::thread swapper([&] {
        auto lastChange = Clock::now();
        for (int seen = 0; !isOver; seen = done) {
            renameat2(AT_FDCWD, file.constData(), AT_FDCWD, pipe.constData(), RENAME_EXCHANGE);
            const auto now = Clock::now();
            if (done != seen)
                lastChange = now;
            if (now - lastChange < std::chrono::seconds(10))
                continue;
            for (const QByteArray& name : {file, pipe}) // which of them is the pipe is not known
                close(open(name.constData(), O_WRONLY | O_NONBLOCK | O_APPEND));
            ++heldUp;
            lastChange = now;
        }
    });
    for (; !isOver; ++done) {
        call();
        isOver = Clock::now() > end;
    }
    swapper.join();
#else
    Q_UNUSED(path)
    Q_UNUSED(call)
#endif
    return heldUp;
}

bool TestSupport::linkTo(const QString& path, const QString& link)
{
    std::error_code error; // QFile::link makes a shortcut on Windows
    std::filesystem::create_symlink(QFileInfo(path).filesystemFilePath(),
                                    QFileInfo(link).filesystemFilePath(), error);
    return !error;
}

bool TestSupport::linkEndlessDevice(const QString& path)
{
    return QFile::exists("/dev/zero") && QFile::link("/dev/zero", path);
}

void TestSupport::letFileLimitsFail()
{
#if defined(Q_OS_UNIX)
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

TestSupport::FewDescriptors::FewDescriptors([[maybe_unused]] int left)
{
#if defined(Q_OS_UNIX)
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    m_before = limit.rlim_cur;
    const int lowestFree = dup(0);
    close(lowestFree);
    limit.rlim_cur = rlim_t(lowestFree) + rlim_t(left);
    setrlimit(RLIMIT_NOFILE, &limit);
#endif
}

TestSupport::FewDescriptors::~FewDescriptors()
{
#if defined(Q_OS_UNIX)
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = m_before;
    setrlimit(RLIMIT_NOFILE, &limit);
#endif
}

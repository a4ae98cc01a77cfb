// SPDX-License-Identifier: Apache-2.0
#include <support/files.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

#include <OpenImageIO/imageio.h>

#if defined(Q_OS_UNIX)
#include <sys/stat.h>
#endif

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
    const auto entry = [](int tag, int type, unsigned int value) {
        QByteArray bytes;
        for (const int byte : {tag, tag >> 8, type, type >> 8, 1, 0, 0, 0})
            bytes.append(char(byte));
        for (int shift = 0; shift < 32; shift += 8)
            bytes.append(char(value >> shift));
        return bytes;
    };
    const int shortType = 3, longType = 4;
    const QByteArray entries =
        entry(256, longType, 0x80000000u) + entry(257, longType, 1) + entry(258, shortType, 8) +
        entry(259, shortType, 1) + entry(262, shortType, 1) + entry(273, longType, 8) +
        entry(277, shortType, 1) + entry(278, longType, 1) + entry(279, longType, 1);
    return QByteArray("II*\0\x08\0\0\0", 8) + QByteArray("\x09\0", 2) + entries +
           QByteArray(4, '\0');
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

bool TestSupport::linkEndlessDevice(const QString& path)
{
    return QFile::exists("/dev/zero") && QFile::link("/dev/zero", path);
}

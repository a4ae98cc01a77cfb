// SPDX-License-Identifier: Apache-2.0
//
// Sizes from headers: a kept answer beside the one system query that it costs, and first answers,
// format by format, beside Qt's reader. The pictures, of 12 megapixels, are made here; what this
// OpenImageIO cannot write is left out.
#include "ratios.h"

#include <imageutils/imageutils.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImageReader>

#include <OpenImageIO/imageio.h>

#include <memory>
#include <vector>

namespace {

bool writePicture(const QString& path)
{
    constexpr int width = 4000, height = 3000;
    std::vector<unsigned char> pixels(std::size_t(width) * height * 3);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<unsigned char>(((i / 3) % 251) ^ (i >> 14));
    const auto output = OIIO::ImageOutput::create(path.toStdString());
    const OIIO::ImageSpec spec(width, height, 3, OIIO::TypeDesc::UINT8);
    return output && output->open(path.toStdString(), spec) &&
           output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) && output->close();
}

/// Asks for the size under one spelling of the path after the other: each is a file of its own to
/// the cache, which keeps a hundred of them.
class FirstAnswer
{
public:
    explicit FirstAnswer(const QString& path)
    {
        for (int i = 1; i <= 150; ++i)
            m_spellings->push_back(QFileInfo(path).path() + QString(i, u'/') +
                                   QFileInfo(path).fileName());
    }
    QSize operator()() const
    {
        return NImageUtils::imageSize((*m_spellings)[(*m_next)++ % m_spellings->size()]);
    }

private:
    std::shared_ptr<std::vector<QString>> m_spellings = std::make_shared<std::vector<QString>>();
    std::shared_ptr<std::size_t> m_next = std::make_shared<std::size_t>(0);
};

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir folder;
    for (const char* const format : {"jpg", "png", "tif", "heic", "avif", "jp2"}) {
        const QString path = folder.filePath(QStringLiteral("a.") + QLatin1String(format));
        if (!writePicture(path))
            continue;
        addOperation(format, "ours", FirstAnswer(path));
        addOperation(format, "QImageReader", [path] { return QImageReader(path).size(); });
    }
    const QString path = folder.filePath("a.jpg");
    addOperation("kept", "ours", [path] { return NImageUtils::imageSize(path); });
    addOperation("kept", "QFileInfo::fileTime",
                 [path] { return QFileInfo(path).fileTime(QFileDevice::FileMetadataChangeTime); });
    return runBenchmarks(argc, argv);
}

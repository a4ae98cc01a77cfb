// SPDX-License-Identifier: Apache-2.0
//
// Sizes from headers: a kept answer beside the one system query that it costs, by one thread and by
// eight, and first answers, format by format, beside Qt's reader and opening through OpenImageIO.
// The pictures, of 12 megapixels, are made here; what this OpenImageIO cannot write is left out.
#include "ratios.h"

#include <imageutils/imageutils.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

#include <OpenImageIO/imageio.h>

#include <filesystem>
#include <memory>
#include <thread>
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

/// The JPEG file at `path` again, in several scans.
bool writeInScans(const QString& path, const QString& scansPath)
{
    QImageWriter writer(scansPath, "jpeg");
    writer.setProgressiveScanWrite(true);
    return writer.write(QImage(path));
}

QSize openThroughOpenImageIO(const QString& path)
{
    const auto input = OIIO::ImageInput::open(path.toStdString());
    return input ? QSize(input->spec().width, input->spec().height) : QSize();
}

/// 16,000 questions about eight kept files, shared out to threads.
void askByThreads(const std::vector<QString>& paths, std::size_t count)
{
    constexpr std::size_t questions = 16'000;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([&paths, i, count] {
            for (std::size_t k = 0; k < questions / count; ++k)
                benchmark::DoNotOptimize(NImageUtils::imageSize(paths[(i + k) % paths.size()]));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
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
    const QString path = folder.filePath("a.jpg");
    const auto addFormat = [](const std::string& format, const QString& file) {
        addOperation(format, "ours", FirstAnswer(file));
        addOperation(format, "QImageReader", [file] { return QImageReader(file).size(); });
        addOperation(format, "OpenImageIO", [file] { return openThroughOpenImageIO(file); });
    };
    for (const char* const format : {"jpg", "png", "tif", "heic", "avif", "jp2"}) {
        const QString file = folder.filePath(QStringLiteral("a.") + QLatin1String(format));
        if (writePicture(file))
            addFormat(format, file);
    }
    if (writeInScans(path, folder.filePath("scans.jpg")))
        addFormat("jpg in scans", folder.filePath("scans.jpg"));

    addOperation("kept", "ours", [path] { return NImageUtils::imageSize(path); });
    addOperation("kept", "QFileInfo::fileTime",
                 [path] { return QFileInfo(path).fileTime(QFileDevice::FileMetadataChangeTime); });
    const std::filesystem::path standardPath(path.toStdString());
    addOperation("kept", "one stat", [standardPath] {
        std::error_code error;
        return std::filesystem::status(standardPath, error).type();
    });
    std::vector<QString> kept;
    for (int i = 0; i < 8; ++i) {
        kept.push_back(folder.filePath(QString::number(i) + ".jpg"));
        QFile::copy(path, kept.back());
        NImageUtils::imageSize(kept.back());
    }
    for (const std::size_t threads : {std::size_t(8), std::size_t(1)}) {
        addOperation("16000 kept", threads == 1 ? "one thread" : "ours", [kept, threads] {
            askByThreads(kept, threads);
            return threads;
        });
    }
    return runBenchmarks(argc, argv);
}

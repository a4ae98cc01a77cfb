// SPDX-License-Identifier: Apache-2.0
//
// Sizes from headers, format by format, without the cache; and cached sizes beside the one system
// call that each of them needs. Formats that this machine cannot write are skipped.
#include "groups.h"
#include "pictures.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>

#include <libheif/heif.h>
#include <OpenImageIO/imageio.h>
#include <vips/vips.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <thread>

namespace Bench {
namespace {

/// Asks for the size under a different spelling of the path each time, so that the cache, which
/// keeps a hundred paths, never has the answer.
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

QSize sizeByOpenImageIo(const std::string& path)
{
    const auto input = OIIO::ImageInput::open(path);
    return input ? QSize(input->spec().width, input->spec().height) : QSize();
}

QSize sizeByVips(const std::string& path)
{
    VipsImage* const image = vips_image_new_from_file(path.c_str(), nullptr);
    if (!image)
        return {};
    const QSize size(vips_image_get_width(image), vips_image_get_height(image));
    g_object_unref(image);
    return size;
}

QSize sizeByHeif(const std::string& path)
{
    heif_context* const context = heif_context_alloc();
    heif_image_handle* handle = nullptr;
    heif_context_read_from_file(context, path.c_str(), nullptr);
    heif_context_get_primary_image_handle(context, &handle);
    QSize size;
    if (handle) {
        size = QSize(heif_image_handle_get_width(handle), heif_image_handle_get_height(handle));
        heif_image_handle_release(handle);
    }
    heif_context_free(context);
    return size;
}

void firstAnswers(const QString& folder, const QString& name, const char* format,
                  const PictureSize& size, const Options& options)
{
    const QSize expected(size.cols, size.rows);
    const QString path = Pictures::make(folder, name, expected);
    if (path.isEmpty()) {
        std::printf("imageSize, %s: nothing here writes it\n", format);
        return;
    }
    const auto same = [expected](QSize answer) { return answer == expected ? 0 : 1; };
    const std::string file = path.toStdString();
    Benchmark benchmark(std::string("imageSize, ") + format, size.name);
    benchmark.add(Role::Ours, "ours", FirstAnswer(path), same);
    benchmark.add(
        Role::Peer, "OpenImageIO", [file] { return sizeByOpenImageIo(file); }, same);
    if (QImageReader(path).size() == expected)
        benchmark.add(
            Role::Peer, "QImageReader", [path] { return QImageReader(path).size(); }, same);
    if (sizeByHeif(file) == expected)
        benchmark.add(
            Role::Peer, "libheif", [file] { return sizeByHeif(file); }, same);
    if (sizeByVips(file) == expected)
        benchmark.add(
            Role::Peer, "libvips", [file] { return sizeByVips(file); }, same);
    benchmark.run(options);
}

void keptAnswers(const QString& path, QSize expected, const Options& options)
{
    const auto same = [expected](QSize answer) { return answer == expected ? 0 : 1; };
    Benchmark benchmark("imageSize, cached", "one file");
    benchmark.add(
        Role::Ours, "ours", [path] { return NImageUtils::imageSize(path); }, same);
    benchmark.addYardstick("QFileInfo::fileTime", [path] {
        return QFileInfo(path).fileTime(QFileDevice::FileMetadataChangeTime);
    });
    benchmark.addYardstick("stat", [file = std::filesystem::path(path.toStdString())] {
        return std::filesystem::last_write_time(file);
    });
    benchmark.run(options);
}

/// Asks `count` times for the sizes of files in turn, in each of `threads` threads.
QSize askedOften(const std::vector<QString>& paths, std::size_t threads, std::size_t count)
{
    std::vector<std::thread> askers;
    for (std::size_t i = 0; i < threads; ++i) {
        askers.emplace_back([&paths, i, count] {
            for (std::size_t k = 0; k < count; ++k)
                NImageUtils::imageSize(paths[(i + k) % paths.size()]);
        });
    }
    for (std::thread& asker : askers)
        asker.join();
    return NImageUtils::imageSize(paths.front());
}

void keptAnswersInThreads(const QString& path, QSize expected, const Options& options)
{
    constexpr std::size_t count = 16000;
    constexpr std::size_t threads = 8;
    std::vector<QString> paths;
    for (std::size_t i = 0; i < threads; ++i) {
        paths.push_back(path + QString::number(i) + QStringLiteral(".jpg"));
        QFile::copy(path, paths.back());
    }
    const auto same = [expected](QSize answer) { return answer == expected ? 0 : 1; };
    Benchmark benchmark("imageSize, cached, 16,000 calls", "eight files");
    benchmark.add(
        Role::Ours, "ours, eight threads",
        [paths] { return askedOften(paths, threads, count / threads); }, same);
    benchmark.addYardstick("ours, one thread", [paths] { return askedOften(paths, 1, count); });
    benchmark.run(options);
}

} // namespace

void imageSize(const Options& options)
{
    const PictureSize size = options.sizes.front();
    const QString folder =
        QDir(QDir::tempPath())
            .filePath(QStringLiteral("imageutils-bench-%1x%2").arg(size.cols).arg(size.rows));
    QDir().mkpath(folder);
    for (const auto& [name, format] : {std::pair{"one.jpg", "JPEG in one scan"},
                                       {"progressive.jpg", "JPEG in several scans"},
                                       {"a.heic", "HEIC"},
                                       {"a.avif", "AVIF"},
                                       {"a.jp2", "JPEG 2000"}})
        firstAnswers(folder, QLatin1String(name), format, size, options.onOneThread());
    const QString path = QDir(folder).filePath(QStringLiteral("one.jpg"));
    keptAnswers(path, QSize(size.cols, size.rows), options.onOneThread());
    keptAnswersInThreads(path, QSize(size.cols, size.rows), options.onOneThread());
}

} // namespace Bench

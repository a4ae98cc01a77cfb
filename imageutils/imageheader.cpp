// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageheader.h>

#include <imageutils/plugins/headerplugin.h>
#include <platform/plugin.h>

#include <baseutils/baseutils.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr const char* entryPoint = "imageutilsPlugin";

/// Whether OpenImageIO chooses the reader by the name alone: its raw reader comes first for raw
/// extensions, its film reader for whatever ends like these, and one for no file at all.
bool isReadByName(const std::string& utf8Path)
{
    constexpr std::array endings = {"avi"sv, "mov"sv, "qt"sv,  "mp4"sv, "m4a"sv, "3gp"sv,
                                    "3g2"sv, "mj2"sv, "m4v"sv, "mpg"sv, "nul"sv, "null"sv};
    const QString name = QString::fromStdString(utf8Path);
    const std::string lower = name.toLower().toStdString();
    return BaseUtils::isRawFile(name) ||
           std::any_of(endings.begin(), endings.end(),
                       [&lower](std::string_view ending) { return lower.ends_with(ending); });
}

ReadHeaderFunction* openReader(const char* part)
{
    return reinterpret_cast<ReadHeaderFunction*>(Platform::openPlugin(part, entryPoint).function);
}

/// The reader of the format of a file that begins with `start`; null where there is none.
ReadHeaderFunction* readerOf(std::string_view start)
{
    if (start.starts_with("\xff\xd8\xff"sv)) {
        static ReadHeaderFunction* const jpeg = openReader("imageutils-header-jpeg");
        return jpeg;
    }
    if (start.substr(0, 8).ends_with("ftyp"sv)) {
        static ReadHeaderFunction* const heif = openReader("imageutils-header-heif");
        return heif;
    }
    if (start == "\0\0\0\x0cjP  \r\n\x87\n"sv || start.starts_with("\xff\x4f\xff\x51"sv)) {
        static ReadHeaderFunction* const jpeg2000 = openReader("imageutils-header-jpeg2000");
        return jpeg2000;
    }
    return nullptr;
}

/// Not more pixels than int can count: beyond that OpenImageIO is to find out what is true.
bool isPlausible(const ImageHeader& header)
{
    return std::int64_t(header.width) * header.height <= std::numeric_limits<int>::max();
}

bool hasSides(const ImageHeader& header) { return header.width >= 1 && header.height >= 1; }

} // namespace

std::optional<ImageHeader> readHeaderAlone(const std::string& utf8Path)
{
    std::filebuf file;
    file.pubsetbuf(nullptr, 0); // readers have buffers of their own
    const std::u8string path(utf8Path.begin(), utf8Path.end());
    if (!file.open(std::filesystem::path(path), std::ios::in | std::ios::binary))
        return {};
    std::array<char, 12> start = {};
    if (file.sgetn(start.data(), start.size()) != std::streamsize(start.size()))
        return {};
    ReadHeaderFunction* const read = readerOf({start.data(), start.size()});
    ImageHeader header;
    if (!read || isReadByName(utf8Path) || file.pubseekpos(0) != std::streampos(0) ||
        !read(file, header) || !hasSides(header) || !isPlausible(header))
        return {};
    return header;
}

std::optional<ImageHeader> readImageHeader(const std::string& utf8Path, std::string& error)
{
    if (const std::optional<ImageHeader> header = readHeaderAlone(utf8Path))
        return header;

    static const Platform::PluginFunction part =
        Platform::openPlugin("imageutils-header-openimageio", entryPoint);
    if (!part.function) {
        error = part.error;
        return {};
    }
    ImageHeader header;
    if (!reinterpret_cast<OpenHeaderFunction*>(part.function)(utf8Path.c_str(), header, error))
        return {};
    if (!hasSides(header)) {
        error =
            "header says " + std::to_string(header.width) + " x " + std::to_string(header.height);
        return {};
    }
    return header;
}

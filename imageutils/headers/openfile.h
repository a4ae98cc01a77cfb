// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <OpenImageIO/strutil.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// How the library and the companion `metadatareader` open a file by OpenImageIO, which each of
/// them links on its own.
namespace OpenFile {

using Input = std::unique_ptr<OIIO::ImageInput>;

/// Whether the reader of OpenImageIO named `format` is tried for the file at `path`. Two readers
/// read no file, and three read files of any kind to their end in search of a mark.
inline bool isTried(const std::string& format, const std::string& path)
{
    const bool isDicom = format == "dicom";
    const std::string_view mark = isDicom ? "DICM" : format == "iff" ? "FOR4" : "P";
    if (!isDicom && format != "iff" && format != "pnm")
        return format != "null" && format != "term";
    std::string found(mark.size(), '\0');
    OIIO::Filesystem::read_bytes(path, found.data(), found.size(), isDicom ? 128 : 0);
    return found == mark;
}

/// The file at `path`, by the first reader that opens it: that of the extension, then all others in
/// the order in which `ImageInput::open` tries them.
inline Input byEachReader(const std::string& path)
{
    const std::string list = OIIO::get_string_attribute("format_list");
    for (const std::string& format :
         OIIO::Strutil::splits(OIIO::Filesystem::extension(path, false) + "," + list, ",")) {
        Input input(isTried(format, path) ? OIIO::ImageInput::create(format) : nullptr);
        OIIO::ImageSpec spec;
        if (input && input->open(path, spec))
            return input;
    }
    return {};
}

/// The file at the absolute path `path`; null if no reader opens it. `ImageInput::open` expects
/// settings of a reader behind a '?', and some of its readers take minutes for large files.
inline Input open(const std::string& path)
{
    constexpr std::uint64_t large = 1 << 26;
    const bool isSpecial = path.find('?') != path.npos || OIIO::Filesystem::file_size(path) > large;
    return isSpecial ? byEachReader(path) : OIIO::ImageInput::open(path);
}

} // namespace OpenFile

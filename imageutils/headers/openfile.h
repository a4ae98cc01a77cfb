// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <OpenImageIO/strutil.h>

#include <memory>
#include <string>
#include <string_view>

/// How the library and the companion `metadatareader` open a file by OpenImageIO, which each of
/// them links on its own.
namespace OpenFile {

using Input = std::unique_ptr<OIIO::ImageInput>;

/// Whether the reader of OpenImageIO named `format` is tried for the file that is opened by `name`.
/// Two readers read no file, and three read files of any kind to their end in search of a mark, as
/// that of JPEG 2000 does in OpenImageIO 3.1. JPEG 2000 never needs it: `readKnownHeader` answers.
inline bool isTried(const std::string& format, const std::string& name)
{
    const bool isDicom = format == "dicom";
    const std::string_view mark = isDicom ? "DICM" : format == "iff" ? "FOR4" : "P";
    if (!isDicom && format != "iff" && format != "pnm")
        return format != "null" && format != "term" && format != "jpeg2000";
    std::string found(mark.size(), '\0');
    OIIO::Filesystem::read_bytes(name, found.data(), found.size(), isDicom ? 128 : 0);
    return found == mark;
}

/// What a reader says about a file that it does not open, with `path` in place of the name by which
/// it was opened.
inline std::string errorOf(const OIIO::ImageInput& input, const std::string& name,
                           const std::string& path)
{
    return OIIO::Strutil::replace(input.geterror(), name, path, true);
}

/// The file at `path`, which is opened by the absolute path `name`, by the first reader that opens
/// it: that of the extension, then all others in the order in which `ImageInput::open` tries them.
/// Null if none does; then `error` holds what the reader of the extension said.
///
/// `ImageInput::open` is not called: it expects settings of a reader behind a '?', and a name of a
/// descriptor has no extension.
inline Input open(const std::string& path, const std::string& name, std::string& error)
{
    const std::string extension = OIIO::Filesystem::extension(path, false);
    std::string formats = extension;
    formats.append(",").append(OIIO::get_string_attribute("format_list"));
    std::string usual; // the format of the extension
    for (const std::string& format : OIIO::Strutil::splits(formats, ",")) {
        if (format == usual || !isTried(format, name))
            continue;
        Input input = OIIO::ImageInput::create(format);
        OIIO::geterror(); // an extension that names no reader
        OIIO::ImageSpec spec;
        if (input && input->open(name, spec))
            return input;
        const std::string said = input ? errorOf(*input, name, path) : std::string();
        if (input && format == extension) {
            usual = input->format_name();
            error = said;
        }
    }
    return {};
}

} // namespace OpenFile

// SPDX-License-Identifier: Apache-2.0
//
// A plug-in, because opening OpenImageIO opens some 250 libraries.
#include <imageutils/exceptionreason.h>
#include <imageutils/imageutils_export.h>
#include <imageutils/plugins/headerplugin.h>

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <OpenImageIO/strutil.h>

#include <memory>

namespace {

using Input = std::unique_ptr<OIIO::ImageInput>;

Input openBy(const std::string& reader, const std::string& utf8Path)
{
    Input input(OIIO::ImageInput::create(reader));
    OIIO::ImageSpec spec;
    return input && input->open(utf8Path, spec) ? std::move(input) : Input();
}

/// A file whose path has a '?', behind which `ImageInput::open` expects settings of a reader: the
/// readers are tried in the order in which it tries them, that of the extension first.
Input openLiterally(const std::string& utf8Path)
{
    if (Input input = openBy(OIIO::Filesystem::extension(utf8Path, false), utf8Path))
        return input;
    for (const std::string& format :
         OIIO::Strutil::splits(OIIO::get_string_attribute("format_list"), ",")) {
        const bool readsNoFile = format == "null" || format == "term";
        if (Input input = readsNoFile ? Input() : openBy(format, utf8Path))
            return input;
    }
    return {};
}

bool openHeader(const std::string& utf8Path, const std::string& jpeg, ImageHeader& header,
                std::string& error)
{
    OIIO::Filesystem::IOMemReader memory(const_cast<char*>(jpeg.data()), jpeg.size());
    Input input;
    if (!jpeg.empty())
        input = OIIO::ImageInput::open("header.jpg", nullptr, &memory);
    else if (utf8Path.find('?') != utf8Path.npos)
        input = openLiterally(utf8Path);
    else
        input = OIIO::ImageInput::open(utf8Path);
    if (!input) {
        error = OIIO::geterror(true); // on the same thread, because each has an error of its own
        if (error.empty())
            error = utf8Path + ": no reader of OpenImageIO opens this file";
        return false;
    }
    const OIIO::ImageSpec& spec = input->spec();
    const OIIO::ParamValue* const tag =
        spec.find_attribute("Orientation", OIIO::TypeUnknown, false);
    const int orientation = tag ? tag->get_int(0) : 0;
    header = {spec.width, spec.height, orientation >= 5 && orientation <= 8};
    input->close();
    return true;
}

} // namespace

extern "C" IMAGEUTILS_EXPORT OpenHeaderFunction imageutilsPlugin;

bool imageutilsPlugin(const std::string& utf8Path, const std::string& jpeg, ImageHeader& header,
                      std::string& error) noexcept
{
    const char* reason = nullptr;
    try { // damaged files make some readers throw
        return openHeader(utf8Path, jpeg, header, error);
    } catch (...) {
        reason = exceptionReason();
    }
    try {
        error = utf8Path + ": " + reason;
    } catch (...) {
        error.clear();
    }
    return false;
}

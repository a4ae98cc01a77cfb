// SPDX-License-Identifier: Apache-2.0
//
// A plug-in, because opening OpenImageIO opens some 250 libraries.
#include <imageutils/exceptionreason.h>
#include <imageutils/headers/openfile.h>
#include <imageutils/imageutils_export.h>
#include <imageutils/plugins/headerplugin.h>

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

namespace {

using OpenFile::Input;

bool openHeader(const std::string& utf8Path, const std::string& name, const std::string& jpeg,
                ImageHeader& header, std::string& error)
{
    OIIO::Filesystem::IOMemReader memory(const_cast<char*>(jpeg.data()), jpeg.size());
    const Input input = jpeg.empty() ? OpenFile::open(utf8Path, name, error)
                                     : OIIO::ImageInput::open("header.jpg", nullptr, &memory);
    if (!input) {
        if (!jpeg.empty())
            error = OIIO::geterror(); // on the same thread, because each has an error of its own
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

bool imageutilsPlugin(const std::string& utf8Path, const std::string& name, const std::string& jpeg,
                      ImageHeader& header, std::string& error) noexcept
{
    const char* reason = nullptr;
    try { // damaged files make some readers throw
        return openHeader(utf8Path, name, jpeg, header, error);
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

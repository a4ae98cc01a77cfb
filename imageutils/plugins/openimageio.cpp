// SPDX-License-Identifier: Apache-2.0
//
// A part of its own, because opening OpenImageIO opens some 250 libraries.
#include <imageutils/imageutils_export.h>
#include <imageutils/plugins/headerplugin.h>

#include <OpenImageIO/imageio.h>

#include <exception>

namespace {

bool openHeader(const char* utf8Path, ImageHeader& header, std::string& error)
{
    const auto input = OIIO::ImageInput::open(utf8Path, nullptr, nullptr);
    if (!input) {
        error = OIIO::geterror(true); // per thread, so it is asked at once
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

bool imageutilsPlugin(const char* utf8Path, ImageHeader& header, std::string& error)
{
    try { // damaged files make some readers throw
        return openHeader(utf8Path, header, error);
    } catch (const std::exception& exception) {
        error = exception.what();
        return false;
    }
}

// SPDX-License-Identifier: Apache-2.0
//
// The only source that includes OpenImageIO: its headers bring the initialiser of the standard
// streams, which no other file of the library is to have.
#include <imageutils/imageheader.h>

#include <OpenImageIO/imageio.h>

#include <exception>

namespace {

std::optional<ImageHeader> openHeader(const std::string& utf8Path, std::string& error)
{
    const auto input = OIIO::ImageInput::open(utf8Path, nullptr, nullptr);
    if (!input) {
        error = OIIO::geterror(true); // per thread, so it is asked at once
        return {};
    }
    const OIIO::ImageSpec& spec = input->spec();
    ImageHeader header{spec.width, spec.height, 0};
    if (const OIIO::ParamValue* tag = spec.find_attribute("Orientation", OIIO::TypeUnknown, false))
        header.orientation = tag->get_int(0);
    input->close();
    if (header.width < 1 || header.height < 1) {
        error =
            "header says " + std::to_string(header.width) + " x " + std::to_string(header.height);
        return {};
    }
    return header;
}

} // namespace

std::optional<ImageHeader> readImageHeader(const std::string& utf8Path, std::string& error)
{
    try { // damaged files make some readers throw
        return openHeader(utf8Path, error);
    } catch (const std::exception& exception) {
        error = exception.what();
        return {};
    }
}

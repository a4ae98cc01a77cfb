// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/readers.h>

namespace {

std::optional<FoundHeader> named(const char* format, std::optional<FoundHeader> found)
{
    if (found)
        found->format = format;
    return found;
}

} // namespace

std::optional<FoundHeader> readKnownHeader(FileBytes& bytes)
{
    using namespace std::string_view_literals;
    const std::string_view start = bytes.at(0, 12);
    if (start.starts_with("\xff\xd8\xff"sv))
        return named("jpeg", readJpegHeader(bytes));
    if (start.starts_with("BM"sv))
        return readBitmapHeader(bytes);
    if (start.substr(0, 8).ends_with("ftyp"sv))
        return named("heif", readHeifHeader(bytes));
    if (start == "\0\0\0\x0cjP  \r\n\x87\n"sv || start.starts_with("\xff\x4f\xff\x51"sv))
        return named("jpeg2000", readJpeg2000Header(bytes));
    return readVastClaims(bytes);
}

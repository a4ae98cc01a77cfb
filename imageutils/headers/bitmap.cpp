// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/readers.h>

#include <cstdlib>
#include <limits>

std::optional<FoundHeader> readBitmapHeader(FileBytes& bytes)
{
    constexpr std::int64_t mostPixels = 1 << 26;
    constexpr std::int64_t largest = std::numeric_limits<int>::max();
    const std::string_view head = bytes.at(0, 34);
    if (head.empty() || littleEndian(head.substr(14, 4)) < 40) // no run lengths
        return {};
    const auto field = [head](std::size_t at) {
        return std::int64_t(std::int32_t(littleEndian(head.substr(at, 4))));
    };
    const std::int64_t width = field(18);
    const std::int64_t height = std::abs(field(22)); // below 0: from the top
    const std::int64_t compression = field(30);
    const bool isRunLength = compression == 1 || compression == 2;
    if (!isRunLength || width < 1 || height < 1 || height > largest || width * height <= mostPixels)
        return {};
    return FoundHeader{{int(width), int(height), false}, nullptr, {}, "bmp"};
}

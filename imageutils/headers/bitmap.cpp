// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/readers.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

/// The number of 32 bits whose bytes are `bytes`, the least significant byte first.
std::int64_t littleEndian(std::string_view bytes)
{
    std::string reversed(bytes);
    std::reverse(reversed.begin(), reversed.end());
    return std::int32_t(bigEndian(reversed));
}

} // namespace

std::optional<FoundHeader> readBitmapHeader(FileBytes& bytes)
{
    constexpr std::int64_t mostPixels = 1 << 26;
    constexpr std::int64_t largest = std::numeric_limits<int>::max();
    const std::string_view head = bytes.at(0, 34);
    if (head.empty() || littleEndian(head.substr(14, 4)) < 40) // older headers have no run lengths
        return {};
    const std::int64_t width = littleEndian(head.substr(18, 4));
    const std::int64_t height = std::abs(littleEndian(head.substr(22, 4))); // below 0: from the top
    const std::int64_t compression = littleEndian(head.substr(30, 4));
    const bool isRunLength = compression == 1 || compression == 2;
    if (!isRunLength || width < 1 || height < 1 || height > largest || width * height <= mostPixels)
        return {};
    return FoundHeader{{int(width), int(height), false}, nullptr, {}};
}

// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/orientation.h>
#include <imageutils/headers/readers.h>

namespace {

constexpr std::size_t longestExif = 1 << 20;

bool turnsPicture(std::string_view exif)
{
    using namespace std::string_view_literals;
    if (exif.starts_with("Exif\0\0"sv)) // some writers put the name of JPEG's segment in front
        exif.remove_prefix(6);
    QuarterTurn turn;
    turn.addExif(exif);
    return turn.isCertain() && turn.isTurned();
}

} // namespace

bool isWebpTurned(FileBytes& bytes)
{
    std::int64_t position = 12;
    for (int chunks = 0; chunks < mostBoxes; ++chunks) {
        const std::string head(bytes.at(position, 8));
        if (head.empty())
            return false;
        const auto size = std::uint32_t(littleEndian(std::string_view(head).substr(4)));
        if (head.starts_with("EXIF"))
            return size <= longestExif && turnsPicture(bytes.at(position + 8, size));
        position += 8 + std::int64_t(size) + size % 2;
    }
    return false;
}

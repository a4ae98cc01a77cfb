// SPDX-License-Identifier: Apache-2.0
//
// JPEG 2000, in its file format and as a bare codestream: the segment of the picture's size alone.
// Refuses what OpenJPEG refuses there, because OpenImageIO reads JPEG 2000 through OpenJPEG.
#include <imageutils/headers/readers.h>

#include <algorithm>
#include <climits>

namespace {

/// Where the codestream of a file is, and what its boxes say about the channels.
struct Codestream
{
    std::int64_t position = 0;
    std::uint64_t paletteChannels = 0; ///< 0 without a palette
};

std::uint64_t paletteChannels(FileBytes& bytes, std::int64_t position, std::int64_t end)
{
    for (int i = 0; i < mostBoxes && position < end; ++i) {
        const Box box = boxAt(bytes, position);
        if (box.end == 0)
            break;
        if (box.type == boxType("pclr")) // its number of entries, then of channels
            return bigEndian(bytes.at(box.content + 2, 1));
        position = box.end;
    }
    return 0;
}

std::optional<Codestream> codestreamIn(FileBytes& bytes)
{
    std::optional<Codestream> found;
    std::int64_t position = 0;
    for (int i = 0; i < mostBoxes; ++i) {
        const Box box = boxAt(bytes, position);
        if (box.end == 0)
            return {};
        if (box.type == boxType("jp2h"))
            found = {0, paletteChannels(bytes, box.content, box.end)};
        if (box.type == boxType("jp2c")) {
            if (found)
                found->position = box.content;
            return found;
        }
        position = box.end;
    }
    return {};
}

std::int64_t dividedUp(std::int64_t number, std::int64_t divisor)
{
    return (number + divisor - 1) / divisor;
}

/// The area of the reference grid that the picture takes, and the tiles on it.
struct Grid
{
    std::int64_t right, bottom, left, top, tileWidth, tileHeight, tileLeft, tileTop;

    bool isValid() const
    {
        if (left >= right || top >= bottom)
            return false;
        // Also tiles without a width or height.
        if (tileLeft > left || tileTop > top || tileLeft + tileWidth <= left ||
            tileTop + tileHeight <= top)
            return false;
        const std::int64_t across = dividedUp(right - tileLeft, tileWidth);
        const std::int64_t down = dividedUp(bottom - tileTop, tileHeight);
        return across <= 65535 / down;
    }
};

Grid gridOf(std::string_view fields)
{
    const auto field = [fields](std::size_t i) {
        return std::int64_t(bigEndian(fields.substr(4 * i, 4)));
    };
    return {field(0), field(1), field(2), field(3), field(4), field(5), field(6), field(7)};
}

/// The smallest rectangle that holds the samples of all components, as OpenImageIO forms it, of
/// `components` with three bytes each: depth and distances between samples.
FoundHeader sizeOf(const Grid& grid, std::string_view components)
{
    constexpr auto damaged = "JPEG 2000 file with an impossible size";
    std::int64_t left = INT_MAX, top = INT_MAX, right = 0, bottom = 0;
    for (std::size_t i = 0; i < components.size(); i += 3) {
        const std::int64_t dx = static_cast<unsigned char>(components[i + 1]);
        const std::int64_t dy = static_cast<unsigned char>(components[i + 2]);
        if (dx == 0 || dy == 0)
            return refusedHeader(damaged);
        const std::int64_t firstColumn = dividedUp(grid.left, dx);
        const std::int64_t firstRow = dividedUp(grid.top, dy);
        left = std::min(left, firstColumn);
        top = std::min(top, firstRow);
        right = std::max(right, firstColumn + (dividedUp(grid.right, dx) - firstColumn) * dx);
        bottom = std::max(bottom, firstRow + (dividedUp(grid.bottom, dy) - firstRow) * dy);
    }
    if (right > INT_MAX || bottom > INT_MAX || right <= left || bottom <= top)
        return refusedHeader(damaged);
    return {{int(right - left), int(bottom - top), false}, nullptr, {}};
}

} // namespace

std::optional<FoundHeader> readJpeg2000Header(FileBytes& bytes)
{
    constexpr std::string_view start = "\xff\x4f\xff\x51";
    constexpr std::size_t fixedBytes = 42; // up to the number of components
    const bool isBare = bytes.at(0, start.size()) == start;
    const std::optional<Codestream> stream = isBare ? Codestream() : codestreamIn(bytes);
    const std::string head(stream ? bytes.at(stream->position, fixedBytes) : std::string_view());
    if (!head.starts_with(start))
        return refusedHeader("JPEG 2000 file without a complete header");

    const std::uint64_t length = bigEndian(std::string_view(head).substr(4, 2));
    const std::uint64_t count = bigEndian(std::string_view(head).substr(40, 2));
    const std::uint64_t channels = stream->paletteChannels ? stream->paletteChannels : count;
    if (channels != 1 && channels != 3 && channels != 4)
        return refusedHeader("only JPEG 2000 files of one, three or four components are supported");
    const std::string_view components =
        bytes.at(stream->position + std::int64_t(fixedBytes), 3 * std::size_t(count));
    const Grid grid = gridOf(std::string_view(head).substr(8, 32));
    if (components.empty() || length != 38 + 3 * count || !grid.isValid())
        return refusedHeader("JPEG 2000 file with an impossible size");
    return sizeOf(grid, components);
}

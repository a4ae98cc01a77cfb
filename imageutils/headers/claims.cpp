// SPDX-License-Identifier: Apache-2.0
//
// Files that OpenImageIO reads, looked at before it does. While OpenImageIO opens a file, it
// allocates what the header claims and reads text, blocks and frames to their end. These readers
// answer or refuse only where that would take more than about 64 MiB or a second.
#include <imageutils/headers/readers.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <string_view>

namespace {

using namespace std::string_view_literals;
using Answer = std::optional<FoundHeader>;

constexpr std::int64_t mostBytes = 1 << 26;
constexpr std::int64_t mostPixels = 1 << 24;
constexpr int mostBlocks = 4096;
constexpr auto excessive = "the header claims more than a picture holds";

/// The number of `count` bytes at `position`; 0 where the file is shorter.
std::int64_t little(FileBytes& bytes, std::int64_t position, std::size_t count)
{
    return std::int64_t(littleEndian(bytes.at(position, count)));
}

std::int64_t big(FileBytes& bytes, std::int64_t position, std::size_t count)
{
    return std::int64_t(bigEndian(bytes.at(position, count)));
}

/// This size of a file of `format`, or a refusal where no picture has it.
Answer answer(const char* format, std::int64_t width, std::int64_t height)
{
    const bool isSize = width >= 1 && height >= 1 && width <= INT_MAX && height <= INT_MAX;
    return isSize ? FoundHeader{{int(width), int(height), false}, nullptr, {}, format}
                  : refusedHeader(excessive);
}

/// The position behind the sub-blocks of a GIF file at `at`; 0 where there are too many.
std::int64_t behindSubBlocks(FileBytes& bytes, std::int64_t at)
{
    for (int i = 0; i < 16 * mostBlocks; ++i) {
        const std::int64_t length = little(bytes, at, 1);
        at += 1 + length;
        if (length == 0)
            return at;
    }
    return 0;
}

/// A GIF file is decoded up to its first frame, on a canvas of four bytes per pixel.
Answer readGif(FileBytes& bytes)
{
    constexpr int extension = 0x21, frame = 0x2c;
    const std::int64_t width = little(bytes, 6, 2), height = little(bytes, 8, 2);
    const std::int64_t flags = little(bytes, 10, 1);
    std::int64_t at = 13 + (flags & 0x80 ? 6LL << (flags & 7) : 0); // behind the table of colours
    for (int i = 0; i < mostBlocks && little(bytes, at, 1) == extension; ++i) {
        at = behindSubBlocks(bytes, at + 2);
        if (at == 0)
            return answer("gif", width, height);
    }
    const std::int64_t block = little(bytes, at, 1);
    const std::int64_t drawn =
        block == frame ? little(bytes, at + 5, 2) * little(bytes, at + 7, 2) : 0;
    const bool isVast = block == extension || std::max(width * height, drawn) > mostPixels;
    return isVast ? answer("gif", width, height) : std::nullopt;
}

/// libpng expands each compressed text to up to 8 MB, before the pixels.
Answer readPng(FileBytes& bytes)
{
    constexpr std::int64_t mostExpanded = 8'000'000, mostRatio = 1032;
    const std::int64_t width = big(bytes, 16, 4), height = big(bytes, 20, 4);
    std::int64_t at = 8, expanded = 0;
    for (int i = 0; i < mostBlocks; ++i) {
        const std::int64_t length = big(bytes, at, 4);
        const std::string_view type = bytes.at(at + 4, 4);
        if (type.empty() || type == "IDAT"sv || type == "IEND"sv)
            return {};
        const bool isCompressed = type == "zTXt"sv || type == "iTXt"sv || type == "iCCP"sv;
        expanded += isCompressed ? std::min(mostExpanded, length * mostRatio) : length;
        if (expanded > mostBytes)
            break;
        at += 12 + length;
    }
    return answer("png", width, height);
}

/// A text that ends with a zero, at most 255 bytes; moves `at` behind it.
std::string exrText(FileBytes& bytes, std::int64_t& at)
{
    std::string text;
    for (std::string_view byte = bytes.at(at++, 1); !byte.empty() && byte[0] != 0;
         byte = bytes.at(at++, 1)) {
        if (text.size() == 255)
            break;
        text += byte;
    }
    return text;
}

/// The table of an EXR file has an entry of eight bytes for each line or tile.
class ExrHeader
{
public:
    void take(FileBytes& bytes, const std::string& name, std::int64_t at)
    {
        const auto number = [&](int i) {
            return std::int64_t(std::int32_t(little(bytes, at + 4LL * i, 4)));
        };
        if (name == "dataWindow" && !bytes.at(at, 16).empty()) {
            m_width = number(2) - number(0) + 1;
            m_height = number(3) - number(1) + 1;
        } else if (name == "tiles") {
            m_tileWidth = std::max<std::int64_t>(number(0), 1);
            m_tileHeight = std::max<std::int64_t>(number(1), 1);
        }
    }

    bool isVast() const
    {
        constexpr std::int64_t mostEntries = 1 << 22;
        if (m_tileWidth == 0)
            return m_height > mostEntries;
        const std::int64_t down = std::max<std::int64_t>(m_height / m_tileHeight, 1);
        return m_width / m_tileWidth > mostEntries / down;
    }

    Answer size() const { return answer("openexr", m_width, m_height); }

private:
    std::int64_t m_width = 0, m_height = 0, m_tileWidth = 0, m_tileHeight = 0;
};

/// An EXR file has attributes of any length, and those of several parts.
Answer readExr(FileBytes& bytes)
{
    const bool hasParts = little(bytes, 4, 4) & 0x1000;
    std::int64_t at = 8;
    ExrHeader header;
    for (int i = 0; i < mostBlocks; ++i) {
        const std::string name = exrText(bytes, at);
        if (name.empty() && header.isVast())
            return header.size();
        if (name.empty() && (!hasParts || little(bytes, at, 1) == 0))
            return {};
        if (name.empty())
            continue;       // with the header of the next part
        exrText(bytes, at); // its type
        const std::int64_t length = little(bytes, at, 4);
        header.take(bytes, name, at + 4);
        at += 4 + length;
        if (at > mostBytes)
            break;
    }
    return refusedHeader(excessive);
}

/// Whether decoding the thumbnail of a PSD file, of `length` bytes at `at`, takes much memory.
bool isVastThumbnail(FileBytes& bytes, std::int64_t at, std::int64_t length)
{
    constexpr std::int64_t headBytes = 28, mostThumbnailBytes = 1 << 23;
    if (length > mostThumbnailBytes)
        return true;
    const std::string jpeg(
        length > headBytes ? bytes.at(at + headBytes, std::size_t(length - headBytes)) : ""sv);
    FileBytes inside([&jpeg](std::int64_t position, char* to, std::int64_t count) {
        return position < std::int64_t(jpeg.size())
                   ? std::int64_t(jpeg.copy(to, std::size_t(count), std::size_t(position)))
                   : 0;
    });
    const Answer found = jpeg.starts_with("\xff\xd8\xff"sv) ? readJpegHeader(inside) : Answer();
    const std::int64_t claimed = big(bytes, at + 4, 4) * big(bytes, at + 8, 4);
    return claimed > mostPixels ||
           (found && std::int64_t(found->header.width) * found->header.height > mostPixels);
}

/// A PSD file has blocks of any length before its pixels.
Answer readPsd(FileBytes& bytes)
{
    constexpr std::int64_t oldThumbnail = 1033, thumbnail = 1036;
    std::int64_t at = 30 + big(bytes, 26, 4); // behind the table of colours
    const std::int64_t end = at + 4 + big(bytes, at, 4);
    at += 4;
    for (int i = 0; i < mostBlocks && at <= mostBytes; ++i) {
        if (at >= end || bytes.at(at, 4).empty())
            return {};
        const std::int64_t id = big(bytes, at + 4, 2);
        at += 6 + (big(bytes, at + 6, 1) / 2 + 1) * 2; // behind the name
        const std::int64_t length = big(bytes, at, 4);
        at += 4;
        if ((id == oldThumbnail || id == thumbnail) && isVastThumbnail(bytes, at, length))
            break;
        at += (length + 1) / 2 * 2;
    }
    return refusedHeader(excessive);
}

/// So has an IFF file.
Answer readIff(FileBytes& bytes)
{
    std::int64_t at = 12;
    for (int i = 0; i < mostBlocks && at <= mostBytes; ++i) {
        const std::string_view type = bytes.at(at, 4);
        if (type.empty() || type == "FOR4"sv)
            return {};
        at += 8 + (big(bytes, at + 4, 4) + 3) / 4 * 4;
    }
    return refusedHeader(excessive);
}

/// A directory of a TIFF file, or of a BigTIFF file.
class TiffDirectory
{
public:
    explicit TiffDirectory(FileBytes& bytes)
        : m_bytes(bytes), m_isLittle(bytes.at(0, 1) == "I"sv), m_isBig(number(2, 2) == 43)
    {}

    bool isVast() { return isVast(word(m_isBig ? 8 : 4), 2); }

private:
    std::int64_t number(std::int64_t at, std::size_t count)
    {
        const std::string_view found = m_bytes.at(at, count);
        return std::int64_t(m_isLittle ? littleEndian(found) : bigEndian(found));
    }

    /// A count or position.
    std::int64_t word(std::int64_t at) { return number(at, m_isBig ? 8 : 4); }

    /// Whether the values of the directory at `at` take too much memory, or those of Exif and GPS.
    bool isVast(std::int64_t at, int levels)
    {
        constexpr int valueBytes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8};
        constexpr std::int64_t exif = 34665, gps = 34853;
        if (at < 0 || at > INT64_MAX / 2)
            return false; // no file is that long
        const std::int64_t count = std::min<std::int64_t>(number(at, m_isBig ? 8 : 2), mostBlocks);
        std::int64_t claimed = 0;
        at += m_isBig ? 8 : 2;
        for (std::int64_t i = 0; i < count; ++i, at += m_isBig ? 20 : 12) {
            const std::int64_t tag = number(at, 2), type = number(at + 2, 2);
            const std::int64_t values = word(at + 4);
            if (values < 0 || values > mostBytes)
                return true;
            claimed += values * (type < std::ssize(valueBytes) ? valueBytes[type] : 0);
            const bool isDirectory = levels > 1 && (tag == exif || tag == gps);
            if (claimed > mostBytes || (isDirectory && isVast(word(at + (m_isBig ? 12 : 8)), 1)))
                return true;
        }
        return false;
    }

    FileBytes& m_bytes;
    bool m_isLittle;
    bool m_isBig;
};

Answer readTiff(FileBytes& bytes)
{
    return TiffDirectory(bytes).isVast() ? Answer(refusedHeader(excessive)) : Answer();
}

/// Cineon and DPX files have a block for the user, whose length is at `at`.
Answer readFilm(FileBytes& bytes, std::int64_t at, bool isBigEndian)
{
    constexpr std::int64_t undefined = 0xffffffff;
    const std::int64_t length = isBigEndian ? big(bytes, at, 4) : little(bytes, at, 4);
    return length > mostBytes && length != undefined ? Answer(refusedHeader(excessive)) : Answer();
}

/// A header in text, which has to end within 1 MiB: with the line `last`.
Answer readText(FileBytes& bytes, std::string_view last)
{
    constexpr std::size_t mostText = 1 << 20;
    for (std::size_t size = 4096; size <= mostText; size *= 2) {
        const std::string_view text = bytes.at(0, size);
        if (text.empty() || text.find(last) != text.npos)
            return {};
    }
    return refusedHeader(excessive);
}

/// The number that begins `text`; 0 where none does, and for numbers that no picture has.
std::int64_t numberOf(const std::string& text)
{
    std::int64_t number = 0;
    for (std::size_t i = 0; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        number = std::min<std::int64_t>(number * 10 + text[i] - '0', 1LL << 32);
    return number;
}

/// OpenImageIO reads the whole of a PNM file. Its header is a text of three or four words, between
/// which comments may stand.
Answer readPnm(FileBytes& bytes)
{
    constexpr std::int64_t mostText = 1 << 16;
    constexpr auto spaces = " \t\r\n\v\f"sv;
    if (bytes.at(mostBytes, 1).empty())
        return {};
    std::string words[3];
    std::size_t word = 0;
    bool isComment = false;
    for (std::int64_t at = 0; at < mostText; ++at) {
        const char character = bytes.at(at, 1).empty() ? ' ' : bytes.at(at, 1)[0];
        isComment = isComment ? character != '\n' : character == '#';
        if (isComment)
            continue;
        if (spaces.find(character) == spaces.npos)
            words[word] += character;
        else if (!words[word].empty() && ++word == 3)
            return answer("pnm", numberOf(words[1]), numberOf(words[2]));
    }
    return refusedHeader(excessive);
}

/// A FITS file has one card of 80 bytes for each key. OpenImageIO takes quadratic time for them.
Answer readFits(FileBytes& bytes)
{
    for (int i = 0; i < mostBlocks; ++i) {
        const std::string_view card = bytes.at(80LL * i, 80);
        if (card.empty() || card.starts_with("END     "))
            return {};
    }
    return refusedHeader(excessive);
}

/// OpenImageIO reads the whole of a WebP file.
Answer readWebP(FileBytes& bytes)
{
    if (little(bytes, 4, 4) <= mostBytes)
        return {};
    if (bytes.at(12, 4) == "VP8X"sv && !bytes.at(24, 6).empty())
        return answer("webp", little(bytes, 24, 3) + 1, little(bytes, 27, 3) + 1);
    return refusedHeader(excessive);
}

} // namespace

std::optional<FoundHeader> readVastClaims(FileBytes& bytes)
{
    const std::string start(bytes.at(0, 12));
    const auto startsWith = [&start](std::string_view first) { return start.starts_with(first); };
    if (startsWith("GIF8"sv))
        return readGif(bytes);
    if (startsWith("\x89PNG\r\n\x1a\n"sv))
        return readPng(bytes);
    if (startsWith("\x76\x2f\x31\x01"sv))
        return readExr(bytes);
    if (startsWith("8BPS"sv))
        return readPsd(bytes);
    if (startsWith("FOR4"sv))
        return readIff(bytes);
    if (startsWith("II*\0"sv) || startsWith("MM\0*"sv) || startsWith("II+\0"sv) ||
        startsWith("MM\0+"sv))
        return readTiff(bytes);
    if (startsWith("\x80\x2a\x5f\xd7"sv) || startsWith("\xd7\x5f\x2a\x80"sv))
        return readFilm(bytes, 16, start[0] == '\x80');
    if (startsWith("SDPX"sv) || startsWith("XPDS"sv))
        return readFilm(bytes, 32, start[0] == 'S');
    if (startsWith("#?"sv))
        return readText(bytes, "\n\n"sv);
    if (startsWith("SIMPLE  "sv))
        return readFits(bytes);
    if (startsWith("RIFF"sv) && start.ends_with("WEBP"sv))
        return readWebP(bytes);
    const bool isPnm = startsWith("P"sv) && start.find_first_of("123456Ff") == 1;
    return isPnm ? readPnm(bytes) : std::nullopt;
}

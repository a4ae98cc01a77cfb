// SPDX-License-Identifier: Apache-2.0
//
// JPEG: the segments up to the first scan. Refuses what libjpeg refuses there, because OpenImageIO
// reads JPEG through libjpeg.
#include <imageutils/headers/orientation.h>
#include <imageutils/headers/readers.h>

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

enum Marker : unsigned {
    Temporary = 0x01,
    HuffmanTables = 0xC4,
    ArithmeticTables = 0xCC,
    FirstRestart = 0xD0,
    LastRestart = 0xD7,
    Scan = 0xDA,
    QuantizationTables = 0xDB,
    NumberOfLines = 0xDC,
    RestartInterval = 0xDD,
    FirstApplication = 0xE0,
    Metadata = 0xE1,
    LastApplication = 0xEF,
    Comment = 0xFE,
};

bool isFrame(unsigned marker)
{
    return (marker >= 0xC0 && marker <= 0xC2) || marker == 0xC9 || marker == 0xCA;
}

/// Whether `marker` begins a segment that the size does not depend on.
bool isSkipped(unsigned marker)
{
    return (marker >= FirstApplication && marker <= LastApplication) || marker == Comment ||
           marker == HuffmanTables || marker == ArithmeticTables || marker == QuantizationTables ||
           marker == NumberOfLines || marker == RestartInterval;
}

/// Whether libjpeg decodes frames like `frame`, the content of a segment without its length.
bool isDecodable(std::string_view frame)
{
    constexpr std::uint64_t longestSide = 65500;
    constexpr std::size_t mostComponents = 10;
    const std::size_t components =
        frame.size() < 6 ? 0 : std::size_t(bigEndian(frame.substr(5, 1)));
    if (components == 0 || components > mostComponents || frame.size() != 6 + 3 * components)
        return false;
    for (std::size_t i = 0; i < components; ++i) {
        const auto sampling = static_cast<unsigned char>(frame[6 + 3 * i + 1]);
        const unsigned across = sampling >> 4, down = sampling & 15;
        if (across < 1 || across > 4 || down < 1 || down > 4)
            return false;
    }
    const std::uint64_t height = bigEndian(frame.substr(1, 2));
    const std::uint64_t width = bigEndian(frame.substr(3, 2));
    return frame[0] == 8 && width >= 1 && width <= longestSide && height >= 1 &&
           height <= longestSide;
}

/// What follows the metadata in a JPEG file of one grey pixel: a quantization table of ones, the
/// frame, Huffman tables with a code of one bit each, and the scan.
std::string onePixel()
{
    const std::string code = "\1"s + std::string(16, '\0');
    return "\xff\xdb\0\x43\0"s + std::string(64, '\1') +
           "\xff\xc0\0\x0b\x08\0\1\0\1\1\1\x11\0\xff\xc4\0\x14\0"s + code + "\xff\xc4\0\x14\x10"s +
           code + "\xff\xda\0\x08\1\1\0\0\x3f\0\x3f\xff\xd9"s;
}

/// The segments of a file, one after the other.
class JpegSegments
{
public:
    explicit JpegSegments(FileBytes& bytes) : m_bytes(bytes) {}

    /// The next marker that has a segment; 0 where there is none. Bytes between two segments are
    /// skipped, as libjpeg does, but not without end: a file may have gigabytes of holes.
    unsigned next()
    {
        constexpr int mostSegments = 1 << 16, mostSkipped = 1 << 16;
        if (++m_count > mostSegments)
            return 0;
        m_position = m_end;
        unsigned last = 0;
        for (int i = 0; i < mostSkipped; ++i, ++m_position) {
            const std::string_view byte = m_bytes.at(m_position, 1);
            if (byte.empty())
                return 0;
            const auto marker = static_cast<unsigned char>(byte[0]);
            const bool isAlone =
                marker == Temporary || (marker >= FirstRestart && marker <= LastRestart);
            if (last == 0xFF && marker != 0 && marker != 0xFF && !isAlone)
                return isWhole(++m_position) ? marker : 0;
            last = marker;
        }
        return 0;
    }

    /// What the segment holds behind its length, valid until the next call.
    std::string_view content()
    {
        return m_bytes.at(m_position + 2, std::size_t(m_end - m_position - 2));
    }

private:
    bool isWhole(std::int64_t position)
    {
        const std::string_view length = m_bytes.at(position, 2);
        m_end = position + std::int64_t(bigEndian(length));
        return !length.empty() && m_end >= position + 2;
    }

    FileBytes& m_bytes;
    std::int64_t m_position = 0; ///< of the segment's length
    std::int64_t m_end = 2;      ///< behind the segment; at first, behind the mark of the file
    int m_count = 0;
};

/// What the metadata segments say, and the segments themselves.
class JpegMetadata
{
public:
    /// False where the file has more than any program writes: libjpeg takes quadratic time for
    /// them.
    bool add(std::string_view content)
    {
        constexpr std::size_t mostBlocks = 64;
        constexpr std::string_view exif = "Exif\0\0"sv;
        constexpr std::string_view xmp = "http://ns.adobe.com/xap/1.0/\0"sv;
        if (content.starts_with(exif.substr(0, 5)) && content.size() >= exif.size())
            m_turn.addExif(content.substr(exif.size()));
        else if (content.starts_with(xmp))
            m_turn.addXmp(content.substr(xmp.size()));
        else
            return true;
        const std::size_t length = content.size() + 2;
        m_segments.append("\xff\xe1").append(1, char(length >> 8)).append(1, char(length & 255));
        m_segments += content;
        return ++m_blocks <= mostBlocks;
    }

    FoundHeader with(int width, int height) const
    {
        FoundHeader found{{width, height, m_turn.isTurned()}, nullptr, {}};
        if (!m_turn.isCertain())
            found.unclearTurn = "\xff\xd8" + m_segments + onePixel();
        return found;
    }

private:
    QuarterTurn m_turn;
    std::string m_segments;
    std::size_t m_blocks = 0;
};

} // namespace

std::optional<FoundHeader> readJpegHeader(FileBytes& bytes)
{
    JpegSegments segments(bytes);
    JpegMetadata metadata;
    int width = 0, height = 0;
    while (const unsigned marker = segments.next()) {
        if (marker == Scan) {
            if (width == 0)
                break;
            return metadata.with(width, height);
        }
        if (isFrame(marker)) {
            const std::string_view frame = segments.content();
            if (width != 0 || !isDecodable(frame))
                return refusedHeader("JPEG file with a frame that cannot be decoded");
            height = int(bigEndian(frame.substr(1, 2)));
            width = int(bigEndian(frame.substr(3, 2)));
        } else if (marker == Metadata) {
            if (!metadata.add(segments.content()))
                return refusedHeader("JPEG file with too many blocks of metadata");
        } else if (!isSkipped(marker)) {
            return refusedHeader("JPEG file of an unsupported kind, or damaged");
        }
    }
    return refusedHeader("JPEG file without a complete header");
}

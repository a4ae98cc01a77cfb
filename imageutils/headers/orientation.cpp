// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/orientation.h>

namespace {

constexpr std::size_t entryBytes = 12;
constexpr unsigned typeShort = 3;
constexpr std::size_t mostEntries = 1000; // of all directories; they may lead back to each other

enum Tag : unsigned { Orientation = 0x0112, ExifDirectory = 0x8769, Interoperability = 0xa005 };

/// `size` bytes at `at` as a number, in the order of bytes that the block's first two name.
unsigned numberAt(std::string_view tiff, std::size_t at, std::size_t size)
{
    const bool largeEndFirst = tiff[0] == 'M';
    unsigned number = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(tiff[at + i]);
        number |= unsigned(byte) << 8 * (largeEndFirst ? size - 1 - i : i);
    }
    return number;
}

} // namespace

QuarterTurn::Claim QuarterTurn::claimOf(unsigned orientation)
{
    return orientation >= 5 && orientation <= 8 ? Claim::Turned : Claim::Upright;
}

QuarterTurn::Claim QuarterTurn::merged(Claim a, Claim b)
{
    if (a == Claim::None || a == b)
        return b;
    return b == Claim::None ? a : Claim::Unclear;
}

QuarterTurn::Claim QuarterTurn::claimOfDirectory(std::string_view tiff, unsigned offset,
                                                 std::size_t& entriesLeft)
{
    if (offset > tiff.size() || tiff.size() - offset < 2)
        return Claim::Unclear;
    const std::size_t first = std::size_t(offset) + 2;
    const std::size_t count = numberAt(tiff, offset, 2);
    if (count == 0)
        return Claim::None;
    // Whether an entry at the very end is read differs, too.
    if (count > entriesLeft || count * entryBytes >= tiff.size() - first)
        return Claim::Unclear;
    entriesLeft -= count;
    Claim claim = Claim::None;
    for (std::size_t entry = first; entry < first + count * entryBytes; entry += entryBytes) {
        const unsigned tag = numberAt(tiff, entry, 2);
        if (tag == ExifDirectory || tag == Interoperability)
            claim =
                merged(claim, claimOfDirectory(tiff, numberAt(tiff, entry + 8, 4), entriesLeft));
        if (tag != Orientation)
            continue;
        const bool isOneShort =
            numberAt(tiff, entry + 2, 2) == typeShort && numberAt(tiff, entry + 4, 4) == 1;
        claim = merged(claim, isOneShort ? claimOf(numberAt(tiff, entry + 8, 2)) : Claim::Unclear);
    }
    return claim;
}

void QuarterTurn::addExif(std::string_view tiff)
{
    std::size_t entriesLeft = mostEntries;
    if (tiff.size() < 8)
        m_exif = Claim::Unclear;
    else if (tiff.starts_with("II") || tiff.starts_with("MM"))
        m_exif = merged(m_exif, claimOfDirectory(tiff, numberAt(tiff, 4, 4), entriesLeft));
}

// Read as text: parsing XML for one digit would cost more than all the rest. Every mention is
// looked at, and one of another form than the two usual ones is not understood here.
void QuarterTurn::addXmp(std::string_view packet)
{
    using namespace std::string_view_literals;
    constexpr std::string_view name = "rientation"; // with any letter case before it
    for (std::size_t at = packet.find(name); at != packet.npos; at = packet.find(name, at)) {
        const std::size_t start = at - (at >= 7 ? 7 : at); // that of "</tiff:O"
        const bool isEnd = packet.substr(start, at - start) == "/tiff:O"sv;
        const bool isTiff = packet.substr(start, at - start).ends_with("tiff:O"sv);
        const bool isExif = packet.substr(start, at - start).ends_with("exif:O"sv);
        at += name.size();
        if (isEnd || isExif) // no reader honours exif:Orientation in XMP
            continue;
        std::string_view value = packet.substr(at, 4);
        if (value.starts_with("=\"") || value.starts_with("='"))
            value.remove_prefix(2);
        else if (value.starts_with(">"))
            value.remove_prefix(1);
        else
            value = {};
        const bool isDigit = value.size() >= 2 && value[0] >= '0' && value[0] <= '9' &&
                             (value[1] == '"' || value[1] == '\'' || value[1] == '<');
        m_xmp =
            merged(m_xmp, isTiff && isDigit ? claimOf(unsigned(value[0] - '0')) : Claim::Unclear);
    }
}

bool QuarterTurn::isCertain() const
{
    // OpenImageIO overlooks some packets, so one must not add anything to what Exif says.
    const Claim exif = m_exif == Claim::None ? Claim::Upright : m_exif;
    return exif != Claim::Unclear && (m_xmp == Claim::None || m_xmp == exif);
}

// SPDX-License-Identifier: Apache-2.0
//
// HEIC and AVIF: the properties of the primary picture. The standard lets them alone decide how the
// picture is turned, whatever its Exif block says.
#include <imageutils/headers/readers.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int longestSide = 32767; // libheif decodes no more

/// Reads fields one after the other. Behind the end of the bytes every field is 0, and `isWhole`
/// is false.
class Fields
{
public:
    explicit Fields(std::string_view bytes) : m_bytes(bytes) {}

    bool isWhole() const { return m_isWhole; }
    bool isAtEnd() const { return m_bytes.empty(); }

    std::string_view take(std::uint64_t count)
    {
        m_isWhole = m_isWhole && count <= m_bytes.size();
        const std::string_view taken = m_bytes.substr(0, m_isWhole ? std::size_t(count) : 0);
        m_bytes.remove_prefix(taken.size());
        return taken;
    }
    std::uint32_t number(std::size_t size) { return std::uint32_t(bigEndian(take(size))); }

private:
    std::string_view m_bytes;
    bool m_isWhole = true;
};

/// A box in memory, and the version and flags with which the content of many of them begins.
struct MemoryBox
{
    std::uint32_t type = 0;
    std::string_view content;

    std::uint32_t version() const { return content.empty() ? 0 : std::uint8_t(content[0]); }
    std::uint32_t flags() const
    {
        return std::uint32_t(bigEndian(content.substr(0, 4))) & 0xFFFFFF;
    }
    Fields fields() const { return Fields(content.size() < 4 ? content : content.substr(4)); }
};

/// The next box of `fields`; of type 0 where there is none that is whole.
MemoryBox nextBox(Fields& fields)
{
    const std::uint32_t size = fields.number(4);
    const std::uint32_t type = fields.number(4);
    if (!fields.isWhole() || size < 8)
        return {};
    const std::string_view content = fields.take(size - 8);
    return fields.isWhole() ? MemoryBox{type, content} : MemoryBox{};
}

/// The first box of `type` in `bytes`; of type 0 where there is none.
MemoryBox boxIn(std::string_view bytes, std::uint32_t type)
{
    Fields fields(bytes);
    MemoryBox box;
    do
        box = nextBox(fields);
    while (box.type != 0 && box.type != type);
    return box;
}

/// Whether the brands of the file are those of pictures: films and raw files begin alike.
bool isPicture(FileBytes& bytes)
{
    constexpr int mostBrands = 64;
    const Box box = boxAt(bytes, 0);
    for (int i = 0; i < mostBrands && box.content + 4 * i < box.end; ++i) {
        const std::string_view name =
            i == 1 ? std::string_view() : bytes.at(box.content + 4 * i, 4);
        for (const char* brand : {"heic", "heix", "mif1", "avif"})
            if (name == brand)
                return true;
    }
    return false;
}

/// What the box `meta` holds; empty where there is none that is whole.
std::string metaOf(FileBytes& bytes)
{
    constexpr std::int64_t longestMeta = 1 << 24; // of 10,000 tiles and a profile
    std::int64_t position = 0;
    for (int i = 0; i < mostBoxes; ++i) {
        const Box box = boxAt(bytes, position);
        if (box.end == 0)
            break;
        if (box.type == boxType("meta")) {
            // Behind the version and the flags, of which there is but one form.
            const std::int64_t size = box.end - box.content - 4;
            return std::string(size < 0 || size > longestMeta
                                   ? std::string_view()
                                   : bytes.at(box.content + 4, std::size_t(size)));
        }
        position = box.end;
    }
    return {};
}

/// The properties of the picture `id`, in their order.
std::vector<MemoryBox> propertiesOf(std::uint32_t id, std::string_view properties)
{
    constexpr std::size_t mostProperties = 256;
    std::vector<MemoryBox> all;
    Fields container(boxIn(properties, boxType("ipco")).content);
    for (MemoryBox box = nextBox(container); box.type != 0; box = nextBox(container))
        all.push_back(box);

    const MemoryBox associations = boxIn(properties, boxType("ipma"));
    const bool areLong = associations.flags() & 1;
    Fields fields = associations.fields();
    std::vector<MemoryBox> found;
    for (std::uint32_t items = fields.number(4); items > 0 && fields.isWhole(); --items) {
        const std::uint32_t item = fields.number(associations.version() < 1 ? 2 : 4);
        for (std::uint32_t count = fields.number(1); count > 0; --count) {
            const std::uint32_t index = fields.number(areLong ? 2 : 1) & (areLong ? 0x7FFF : 0x7F);
            if (item == id && index >= 1 && index <= all.size() && found.size() < mostProperties)
                found.push_back(all[index - 1]);
        }
    }
    return found;
}

/// A clean aperture's side, the quotient of two numbers, rounded; 0 for what is none.
std::int64_t cleanSide(Fields& fields)
{
    const std::int64_t numerator = std::int32_t(fields.number(4));
    const std::int64_t denominator = std::int32_t(fields.number(4));
    return denominator > 0 ? (numerator + denominator / 2) / denominator : 0;
}

/// The size that is left of a stored picture after its properties, in their order.
ImageHeader sizeAfter(const std::vector<MemoryBox>& properties)
{
    std::int64_t width = 0, height = 0;
    for (const MemoryBox& property : properties) {
        Fields fields = property.fields();
        if (property.type == boxType("ispe")) {
            width = fields.number(4);
            height = fields.number(4);
        } else if (property.type == boxType("clap")) {
            Fields clean(property.content);
            width = std::min(width, cleanSide(clean));
            height = std::min(height, cleanSide(clean));
        } else if (property.type == boxType("irot") && !property.content.empty()) {
            if (property.content[0] & 1) // quarter turns
                std::swap(width, height);
        }
    }
    const bool isPossible =
        width >= 1 && height >= 1 && width <= longestSide && height <= longestSide;
    return isPossible ? ImageHeader{int(width), int(height), false} : ImageHeader();
}

} // namespace

std::optional<FoundHeader> readHeifHeader(FileBytes& bytes)
{
    if (!isPicture(bytes))
        return {};
    const std::string meta = metaOf(bytes);
    const MemoryBox primary = boxIn(meta, boxType("pitm"));
    const MemoryBox properties = boxIn(meta, boxType("iprp"));
    if (primary.type == 0 || properties.type == 0)
        return refusedHeader("HEIF file without a complete header");
    Fields fields = primary.fields();
    const std::uint32_t id = fields.number(primary.version() == 0 ? 2 : 4);
    const ImageHeader header = sizeAfter(propertiesOf(id, properties.content));
    if (header.width < 1)
        return refusedHeader("HEIF file with an impossible size");
    return FoundHeader{header, nullptr, {}};
}

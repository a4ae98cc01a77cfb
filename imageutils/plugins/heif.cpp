// SPDX-License-Identifier: Apache-2.0
//
// HEIC and AVIF through libheif, which needs no more than the boxes before the pixels. Sizes come
// turned already.
#include <imageutils/imageutils_export.h>
#include <imageutils/plugins/boxes.h>
#include <imageutils/plugins/headerplugin.h>
#include <imageutils/plugins/orientation.h>

#include <libheif/heif.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ios>
#include <memory>
#include <vector>

namespace {

constexpr int longestSide = 32768;

struct Release
{
    void operator()(heif_context* context) const { heif_context_free(context); }
    void operator()(heif_image_handle* image) const { heif_image_handle_release(image); }
};

bool isOk(const heif_error& error) { return error.code == heif_error_Ok; }

/// A file as libheif is to see it: as long as its boxes say, though it may be cut off, and with
/// zeros in place of pixels, which some versions read although they only serve decoding.
class HeaderOf
{
public:
    explicit HeaderOf(std::streambuf& file) : m_file(file)
    {
        m_size = std::streamoff(file.pubseekoff(0, std::ios_base::end, std::ios_base::in));
        m_claimedSize = std::min(claimedSize(), m_size + mostMissing);
    }

    std::int64_t position() const { return m_position; }
    std::int64_t claimedEnd() const { return m_claimedSize; }
    void seek(std::int64_t position) { m_position = position; }

    bool read(char* bytes, std::int64_t size)
    {
        if (size < 0 || m_position < 0 || size > m_claimedSize - m_position)
            return false;
        const std::int64_t there = size >= leastPixels ? 0 : std::min(size, m_size - m_position);
        if (there > 0 && (m_file.pubseekpos(m_position) < 0 || m_file.sgetn(bytes, there) != there))
            return false;
        std::fill(bytes + std::max<std::int64_t>(there, 0), bytes + size, '\0');
        m_position += size;
        return true;
    }

private:
    static constexpr std::int64_t leastPixels = 1 << 18; // no block of Exif or XMP is as long
    static constexpr std::int64_t mostMissing = 1 << 26; // that libheif may ask memory for

    /// Where the last box ends.
    std::int64_t claimedSize() const
    {
        std::int64_t end = 0;
        for (int i = 0; end < m_size; ++i) {
            const std::int64_t size = boxAt(m_file, end).size;
            if (size == 0 || i == mostBoxes)
                return m_size;
            end += size;
        }
        return end;
    }

    std::streambuf& m_file;
    std::int64_t m_size = 0;
    std::int64_t m_claimedSize = 0;
    std::int64_t m_position = 0;
};

HeaderOf& headerOf(void* data) { return *static_cast<HeaderOf*>(data); }

int64_t position(void* data) { return headerOf(data).position(); }

int read(void* bytes, std::size_t size, void* data)
{
    return headerOf(data).read(static_cast<char*>(bytes), std::int64_t(size)) ? 0 : 1;
}

int seek(int64_t position, void* data)
{
    headerOf(data).seek(position);
    return 0;
}

heif_reader_grow_status waitForSize(int64_t size, void* data)
{
    return size <= headerOf(data).claimedEnd() ? heif_reader_grow_status_size_reached
                                               : heif_reader_grow_status_size_beyond_eof;
}

// Newer versions of libheif have more functions, which the first version of the interface lacks.
constexpr heif_reader reader = [] {
    heif_reader functions = {};
    functions.reader_api_version = 1;
    functions.get_position = position;
    functions.read = read;
    functions.seek = seek;
    functions.wait_for_file_size = waitForSize;
    return functions;
}();

bool isOfKnownType(std::streambuf& file)
{
    std::array<std::uint8_t, 12> start = {};
    return file.sgetn(reinterpret_cast<char*>(start.data()), start.size()) == start.size() &&
           heif_check_filetype(start.data(), int(start.size())) != heif_filetype_no;
}

/// Whether an Exif block asks for a quarter turn that the picture's own boxes do not make: versions
/// of OpenImageIO differ in whether that counts.
bool isTurnedByExifAlone(const heif_image_handle* image)
{
    constexpr std::size_t lead = 10; // the place of the TIFF header, and its usual mark
    std::array<heif_item_id, 16> ids = {};
    const int count = heif_image_handle_get_list_of_metadata_block_IDs(image, "Exif", ids.data(),
                                                                       int(ids.size()));
    QuarterTurn turn;
    for (int i = 0; i < count; ++i) {
        std::vector<char> block(heif_image_handle_get_metadata_size(image, ids[i]));
        if (block.size() > lead &&
            isOk(heif_image_handle_get_metadata(image, ids[i], block.data())))
            turn.addExif({block.data() + lead, block.size() - lead});
    }
    const bool isTurnedByBoxes =
        heif_image_handle_get_ispe_width(image) == heif_image_handle_get_height(image) &&
        heif_image_handle_get_ispe_height(image) == heif_image_handle_get_width(image);
    return (turn.isTurned() || !turn.isCertain()) && !isTurnedByBoxes;
}

} // namespace

extern "C" IMAGEUTILS_EXPORT ReadHeaderFunction imageutilsPlugin;

bool imageutilsPlugin(std::streambuf& file, ImageHeader& header)
{
    if (!isOfKnownType(file))
        return false;
    HeaderOf bytes(file);
    const std::unique_ptr<heif_context, Release> context(heif_context_alloc());
    if (!isOk(heif_context_read_from_reader(context.get(), &reader, &bytes, nullptr)))
        return false;
    heif_image_handle* opened = nullptr;
    if (!isOk(heif_context_get_primary_image_handle(context.get(), &opened)))
        return false;
    const std::unique_ptr<heif_image_handle, Release> image(opened);
    header = {heif_image_handle_get_width(image.get()), heif_image_handle_get_height(image.get()),
              false};
    // Longer sides are not decoded by every version.
    return std::max(header.width, header.height) <= longestSide &&
           !isTurnedByExifAlone(image.get());
}

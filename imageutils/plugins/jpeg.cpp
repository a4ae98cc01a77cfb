// SPDX-License-Identifier: Apache-2.0
//
// JPEG through libjpeg-turbo, up to the first scan. Qt's own reader would not do: it takes all
// blocks of metadata for one, and finds no orientation behind an XMP packet.
#include <imageutils/imageutils_export.h>
#include <imageutils/plugins/headerplugin.h>
#include <imageutils/plugins/orientation.h>

#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdio> // for jpeglib.h
#include <ios>
#include <string_view>

#include <jpeglib.h>

namespace {

using namespace std::string_view_literals;

constexpr int metadataMarker = JPEG_APP0 + 1;
constexpr unsigned longestMarker = 0xffff;

/// What libjpeg is given, and the way back from its refusals.
struct Input
{
    jpeg_source_mgr source; // first, so that a pointer to it is one to the whole
    std::streambuf* file;
    std::array<JOCTET, 4096> bytes;
};
struct Refusal
{
    jpeg_error_mgr errors; // first, as above
    std::jmp_buf back;
};

[[noreturn]] void refuse(j_common_ptr jpeg)
{
    std::longjmp(reinterpret_cast<Refusal*>(jpeg->err)->back, 1); // NOLINT(cert-err52-cpp): C
}

boolean fill(j_decompress_ptr jpeg)
{
    Input& input = *reinterpret_cast<Input*>(jpeg->src);
    const std::streamsize count =
        input.file->sgetn(reinterpret_cast<char*>(input.bytes.data()), input.bytes.size());
    if (count <= 0)
        refuse(reinterpret_cast<j_common_ptr>(jpeg)); // cut off before the first scan
    input.source.next_input_byte = input.bytes.data();
    input.source.bytes_in_buffer = std::size_t(count);
    return TRUE;
}

void skip(j_decompress_ptr jpeg, long count)
{
    Input& input = *reinterpret_cast<Input*>(jpeg->src);
    const std::size_t wanted = count > 0 ? std::size_t(count) : 0;
    if (wanted <= input.source.bytes_in_buffer) {
        input.source.next_input_byte += wanted;
        input.source.bytes_in_buffer -= wanted;
        return;
    }
    const std::size_t beyond = wanted - input.source.bytes_in_buffer;
    input.source.bytes_in_buffer = 0;
    if (input.file->pubseekoff(std::streamoff(beyond), std::ios::cur) < 0)
        refuse(reinterpret_cast<j_common_ptr>(jpeg));
}

void doNothing(j_decompress_ptr /*jpeg*/) {}
void sayNothing(j_common_ptr /*jpeg*/) {}

// Objects that are released stand in the caller: a refusal jumps past destructors.
bool readHeader(jpeg_decompress_struct& jpeg, Input& input, Refusal& refusal)
{
    jpeg.err = jpeg_std_error(&refusal.errors);
    refusal.errors.error_exit = refuse;
    refusal.errors.output_message = sayNothing;
    if (setjmp(refusal.back) != 0) // NOLINT(cert-err52-cpp): libjpeg knows no other way
        return false;
    jpeg_create_decompress(&jpeg);
    input.source.init_source = doNothing;
    input.source.fill_input_buffer = fill;
    input.source.skip_input_data = skip;
    input.source.resync_to_restart = jpeg_resync_to_restart;
    input.source.term_source = doNothing;
    jpeg.src = &input.source;
    jpeg_save_markers(&jpeg, metadataMarker, longestMarker);
    return jpeg_read_header(&jpeg, FALSE) == JPEG_HEADER_OK;
}

QuarterTurn turnOf(const jpeg_decompress_struct& jpeg)
{
    constexpr std::string_view exif = "Exif\0\0"sv;
    constexpr std::string_view xmp = "http://ns.adobe.com/xap/1.0/\0"sv;
    QuarterTurn turn;
    for (jpeg_saved_marker_ptr marker = jpeg.marker_list; marker; marker = marker->next) {
        const std::string_view bytes(reinterpret_cast<const char*>(marker->data),
                                     marker->data_length);
        if (bytes.starts_with(exif.substr(0, 5)) && bytes.size() >= exif.size())
            turn.addExif(bytes.substr(exif.size()));
        else if (bytes.starts_with(xmp))
            turn.addXmp(bytes.substr(xmp.size()));
    }
    return turn;
}

} // namespace

extern "C" IMAGEUTILS_EXPORT ReadHeaderFunction imageutilsPlugin;

bool imageutilsPlugin(std::streambuf& file, ImageHeader& header)
{
    struct Jpeg : jpeg_decompress_struct
    {
        Jpeg() : jpeg_decompress_struct() {}
        ~Jpeg() { jpeg_destroy_decompress(this); } // of one that was never made, too
        Jpeg(const Jpeg&) = delete;
        Jpeg& operator=(const Jpeg&) = delete;
    } jpeg;
    Input input = {};
    input.file = &file;
    Refusal refusal = {};
    if (!readHeader(jpeg, input, refusal))
        return false;
    const QuarterTurn turn = turnOf(jpeg);
    header = {int(jpeg.image_width), int(jpeg.image_height), turn.isTurned()};
    return turn.isCertain();
}

// SPDX-License-Identifier: Apache-2.0
//
// JPEG 2000, in its file format and as a bare codestream, through OpenJPEG: the main header alone.
#include <imageutils/imageutils_export.h>
#include <imageutils/plugins/boxes.h>
#include <imageutils/plugins/headerplugin.h>

#include <openjpeg.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <ios>
#include <memory>

namespace {

// Codec and stream are of one type in OpenJPEG's header, so the function tells them apart.
template<auto function>
struct Release
{
    void operator()(auto* object) const { function(object); }
};
using Codec = std::unique_ptr<opj_codec_t, Release<opj_destroy_codec>>;
using Stream = std::unique_ptr<opj_stream_t, Release<opj_stream_destroy>>;
using Image = std::unique_ptr<opj_image_t, Release<opj_image_destroy>>;

std::streambuf& fileOf(void* file) { return *static_cast<std::streambuf*>(file); }

OPJ_SIZE_T read(void* bytes, OPJ_SIZE_T size, void* file)
{
    const std::streamsize count =
        fileOf(file).sgetn(static_cast<char*>(bytes), std::streamsize(size));
    return count > 0 ? OPJ_SIZE_T(count) : OPJ_SIZE_T(-1);
}

OPJ_OFF_T skip(OPJ_OFF_T count, void* file)
{
    return fileOf(file).pubseekoff(count, std::ios::cur, std::ios::in) < 0 ? -1 : count;
}

OPJ_BOOL seek(OPJ_OFF_T position, void* file)
{
    return fileOf(file).pubseekpos(position) < 0 ? OPJ_FALSE : OPJ_TRUE;
}

std::uint64_t sizeOf(std::streambuf& file)
{
    const std::streampos end = file.pubseekoff(0, std::ios::end, std::ios::in);
    file.pubseekpos(0);
    return end < 0 ? 0 : std::uint64_t(std::streamoff(end));
}

/// Whether a box of the file's header holds a palette: only decoding tells then how many channels
/// there are, and with some numbers OpenImageIO refuses.
bool hasPalette(std::streambuf& file)
{
    constexpr std::uint32_t codestream = 0x6a703263, header = 0x6a703268, palette = 0x70636c72;
    std::int64_t at = 0;
    for (int i = 0; i < mostBoxes; ++i) {
        const Box box = boxAt(file, at);
        if (box.type == palette)
            return true;
        if (box.type == codestream || box.size == 0)
            return false;
        at += box.type == header ? 8 : box.size; // its boxes stand inside it
    }
    return true; // perhaps
}

/// The smallest rectangle that holds the samples of all components, as OpenImageIO forms it.
bool setSides(const opj_image_t& image, ImageHeader& header)
{
    std::int64_t left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;
    for (OPJ_UINT32 i = 0; i < image.numcomps; ++i) {
        const opj_image_comp_t& samples = image.comps[i];
        left = std::min<std::int64_t>(left, samples.x0);
        top = std::min<std::int64_t>(top, samples.y0);
        right = std::max(right, samples.x0 + std::int64_t(samples.w) * samples.dx);
        bottom = std::max(bottom, samples.y0 + std::int64_t(samples.h) * samples.dy);
    }
    if (right > INT_MAX || bottom > INT_MAX)
        return false;
    header = {int(right - left), int(bottom - top), false};
    return true;
}

} // namespace

extern "C" IMAGEUTILS_EXPORT ReadHeaderFunction imageutilsPlugin;

bool imageutilsPlugin(std::streambuf& file, ImageHeader& header)
{
    constexpr OPJ_SIZE_T bufferBytes = 4096;
    char first = '\0';
    const bool isBare = file.sgetn(&first, 1) == 1 && first == '\xff';
    if (!isBare && hasPalette(file))
        return false;
    const Codec codec(opj_create_decompress(isBare ? OPJ_CODEC_J2K : OPJ_CODEC_JP2));
    const Stream stream(opj_stream_create(bufferBytes, OPJ_TRUE));
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (!codec || !stream || !opj_setup_decoder(codec.get(), &parameters))
        return false;
    opj_stream_set_user_data(stream.get(), &file, nullptr);
    opj_stream_set_user_data_length(stream.get(), sizeOf(file));
    opj_stream_set_read_function(stream.get(), read);
    opj_stream_set_skip_function(stream.get(), skip);
    opj_stream_set_seek_function(stream.get(), seek);
    opj_image_t* read = nullptr;
    const bool isRead = opj_read_header(stream.get(), codec.get(), &read);
    const Image image(read);
    const OPJ_UINT32 channels = isRead && image ? image->numcomps : 0;
    // OpenImageIO knows what to say of any other number.
    return (channels == 1 || channels == 3 || channels == 4) && setSides(*image, header);
}

// SPDX-License-Identifier: Apache-2.0
#include "cmyk.h"

#include <cstdio> // before jpeglib.h, which needs FILE

#include <jpeglib.h>
#include <OpenImageIO/filesystem.h>

#include <csetjmp>
#include <memory>

namespace {

constexpr int inks = 4;

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// libjpeg reports through it instead of ending the program.
struct Errors
{
    jpeg_error_mgr manager;
    std::jmp_buf onError;
};

[[noreturn]] void leave(j_common_ptr codec)
{
    std::longjmp(reinterpret_cast<Errors*>(codec->err)->onError, 1);
}

void beQuiet(j_common_ptr) {}

/// Decodes `file` into `result`, whose size the file must have. No object with a destructor may be
/// made in here, because an error of libjpeg jumps past it.
bool decodeJpeg(std::FILE* file, cv::Mat& result)
{
    jpeg_decompress_struct codec;
    Errors errors;
    codec.err = jpeg_std_error(&errors.manager);
    errors.manager.error_exit = leave;
    errors.manager.output_message = beQuiet;
    if (setjmp(errors.onError) != 0) {
        jpeg_destroy_decompress(&codec);
        return false;
    }
    jpeg_create_decompress(&codec);
    jpeg_stdio_src(&codec, file);
    jpeg_read_header(&codec, TRUE);
    codec.out_color_space = JCS_CMYK;
    jpeg_start_decompress(&codec);
    if (int(codec.output_height) != result.rows || int(codec.output_width) != result.cols)
        leave(reinterpret_cast<j_common_ptr>(&codec));
    while (codec.output_scanline < codec.output_height) {
        JSAMPROW row = result.ptr(int(codec.output_scanline));
        jpeg_read_scanlines(&codec, &row, 1);
    }
    jpeg_finish_decompress(&codec);
    const bool isWhole = codec.err->num_warnings == 0;
    if (codec.saw_Adobe_marker) // such files hold the paper that remains, not the ink
        cv::bitwise_not(result, result);
    jpeg_destroy_decompress(&codec);
    return isWhole;
}

Result<cv::Mat> readJpeg(const std::string& path, const OIIO::ImageSpec& spec)
{
    const std::unique_ptr<std::FILE, CloseFile> file(OIIO::Filesystem::fopen(path, "rb"));
    cv::Mat result(spec.height, spec.width, CV_8UC4);
    if (!file || !decodeJpeg(file.get(), result))
        return Failure{QStringLiteral("cannot be decoded")};
    return result;
}

/// The colour mode of a Photoshop file, which OpenImageIO does not tell: two bytes at offset 24.
int photoshopColourMode(const std::string& path)
{
    const std::unique_ptr<std::FILE, CloseFile> file(OIIO::Filesystem::fopen(path, "rb"));
    unsigned char header[26] = {};
    return file && std::fread(header, sizeof(header), 1, file.get()) == 1
               ? header[24] * 256 + header[25]
               : -1;
}

} // namespace

bool isCmyk(const OIIO::ImageInput& input, const std::string& path)
{
    constexpr int photoshopCmyk = 4;
    const std::string format = input.format_name();
    const std::string jpegColours = input.spec().get_string_attribute("jpeg:ColorSpace");
    if (format == "jpeg")
        return jpegColours == "CMYK" || jpegColours == "YCbCrK";
    if (format == "psd")
        return photoshopColourMode(path) == photoshopCmyk;
    return format == "tiff" && input.spec().get_string_attribute("tiff:ColorSpace") == "CMYK";
}

Result<cv::Mat> readInks(const OIIO::ImageInput& input, const std::string& path)
{
    const std::string format = input.format_name();
    if (format == "jpeg")
        return readJpeg(path, input.spec());
    const int subimage = input.current_subimage();
    OIIO::ImageSpec wishes;
    wishes.attribute("oiio:RawColor", 1);
    const auto raw = OIIO::ImageInput::open(path, &wishes);
    if (!raw || !raw->seek_subimage(subimage, 0))
        return Failure{QString::fromStdString(OIIO::geterror(true)).simplified()};
    const OIIO::ImageSpec& spec = raw->spec();
    if (spec.nchannels < inks || spec.depth > 1 || spec.width != input.spec().width ||
        spec.height != input.spec().height)
        return Failure{QStringLiteral("holds no picture")};
    const bool isByte = spec.format.size() == 1;
    cv::Mat result(spec.height, spec.width, isByte ? CV_8UC4 : CV_16UC4);
    const OIIO::TypeDesc type = isByte ? OIIO::TypeUInt8 : OIIO::TypeUInt16;
    if (!raw->read_image(subimage, 0, 0, inks, type, result.data) || raw->has_error())
        return Failure{QString::fromStdString(raw->geterror()).simplified()};
    if (format == "psd") // which stores the paper that remains
        cv::bitwise_not(result, result);
    return result;
}

// SPDX-License-Identifier: Apache-2.0
#include "peers.h"

#include <vips/vips.h>

#include <stdexcept>

namespace {

struct Unreference
{
    void operator()(VipsImage* image) const { g_object_unref(image); }
};
using Image = std::unique_ptr<VipsImage, Unreference>;

void require(int failure)
{
    if (failure != 0)
        throw std::runtime_error(std::string("libvips: ") + vips_error_buffer());
}

/// Wraps the matrix as an image without copying.
Image imageOver(const cv::Mat& mat)
{
    return Image(vips_image_new_from_memory(mat.data, mat.total() * mat.elemSize(), mat.cols,
                                            mat.rows, mat.channels(), VIPS_FORMAT_FLOAT));
}

Peers::GlibMemory written(VipsImage* image)
{
    std::size_t size = 0;
    return Peers::GlibMemory(vips_image_write_to_memory(image, &size));
}

Image band(VipsImage* image, int first, int count)
{
    VipsImage* out = nullptr;
    require(vips_extract_band(image, &out, first, "n", count, nullptr));
    return Image(out);
}

} // namespace

void Peers::ReleaseByGlib::operator()(void* memory) const { g_free(memory); }

Peers::GlibMemory Peers::vipsResized(const cv::Mat& source, cv::Size size)
{
    const Image image = imageOver(source);
    VipsImage* out = nullptr;
    require(vips_resize(image.get(), &out, double(size.width) / source.cols, "vscale",
                        double(size.height) / source.rows, "kernel", VIPS_KERNEL_MITCHELL, "gap",
                        0.0, nullptr));
    const Image resized(out);
    if (out->Xsize != size.width || out->Ysize != size.height)
        throw std::runtime_error("libvips: the result has another size");
    return written(out);
}

std::pair<Peers::GlibMemory, Peers::GlibMemory> Peers::vipsSplit(const cv::Mat& pixels)
{
    const Image image = imageOver(pixels);
    const Image chroma = band(image.get(), 0, 3);
    const Image alpha = band(image.get(), 3, 1);
    return {written(chroma.get()), written(alpha.get())};
}

Peers::GlibMemory Peers::vipsMerged(const cv::Mat& chroma, const cv::Mat& alpha)
{
    const Image colour = imageOver(chroma);
    const Image opacity = imageOver(alpha);
    VipsImage* out = nullptr;
    require(vips_bandjoin2(colour.get(), opacity.get(), &out, nullptr));
    return written(Image(out).get());
}

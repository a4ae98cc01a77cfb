// SPDX-License-Identifier: Apache-2.0
#include "peers.h"

#if __has_include(<stb/stb_image_resize2.h>) // the second version, of 2023
#define STB_IMAGE_RESIZE_IMPLEMENTATION
#define STB_IMAGE_RESIZE_STATIC
#include <stb/stb_image_resize2.h>

cv::Mat Peers::stbResized(const cv::Mat& source, cv::Size size)
{
    cv::Mat result(size, CV_32FC3);
    stbir_resize(source.data, source.cols, source.rows, int(source.step[0]), result.data,
                 size.width, size.height, int(result.step[0]), STBIR_RGB, STBIR_TYPE_FLOAT,
                 STBIR_EDGE_CLAMP, STBIR_FILTER_MITCHELL);
    return result;
}
#else
#define STB_IMAGE_RESIZE_IMPLEMENTATION
#define STB_IMAGE_RESIZE_STATIC
#include <stb/stb_image_resize.h>

cv::Mat Peers::stbResized(const cv::Mat& source, cv::Size size)
{
    cv::Mat result(size, CV_32FC3);
    stbir_resize_float_generic(source.ptr<float>(), source.cols, source.rows, int(source.step[0]),
                               result.ptr<float>(), size.width, size.height, int(result.step[0]), 3,
                               STBIR_ALPHA_CHANNEL_NONE, 0, STBIR_EDGE_CLAMP, STBIR_FILTER_MITCHELL,
                               STBIR_COLORSPACE_LINEAR, nullptr);
    return result;
}
#endif

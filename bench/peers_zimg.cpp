// SPDX-License-Identifier: Apache-2.0
#include "peers.h"

#include <zimg++.hpp>

namespace {

constexpr std::size_t alignment = 64; // of rows and memory

zimgxx::zimage_format formatOf(cv::Size size)
{
    zimgxx::zimage_format format;
    format.width = unsigned(size.width);
    format.height = unsigned(size.height);
    format.pixel_type = ZIMG_PIXEL_FLOAT;
    format.color_family = ZIMG_COLOR_RGB;
    format.matrix_coefficients = ZIMG_MATRIX_RGB;
    return format;
}

zimgxx::FilterGraph graphOf(cv::Size from, cv::Size size)
{
    zimgxx::zfilter_graph_builder_params params;
    params.resample_filter = ZIMG_RESIZE_BICUBIC;
    params.filter_param_a = params.filter_param_b = 1.0 / 3.0;
    params.cpu_type = ZIMG_CPU_AUTO_64B; // all instruction sets of the CPU
    return zimgxx::FilterGraph::build(formatOf(from), formatOf(size), &params);
}

/// The used columns of the padded planes.
std::vector<cv::Mat> viewsOf(const std::vector<cv::Mat>& planes, int columns)
{
    std::vector<cv::Mat> views(planes.size());
    for (std::size_t p = 0; p < planes.size(); ++p)
        views[p] = planes[p].colRange(0, columns);
    return views;
}

} // namespace

std::vector<cv::Mat> Peers::zimgPlanes(cv::Size size)
{
    constexpr int step = int(alignment / sizeof(float));
    const int columns = (size.width + step - 1) / step * step;
    return {cv::Mat(size.height, columns, CV_32F), cv::Mat(size.height, columns, CV_32F),
            cv::Mat(size.height, columns, CV_32F)};
}

std::vector<cv::Mat> Peers::zimgSplit(const cv::Mat& source)
{
    const std::vector<cv::Mat> planes = zimgPlanes(source.size());
    std::vector<cv::Mat> views = viewsOf(planes, source.cols);
    cv::split(source, views);
    return planes;
}

std::vector<cv::Mat> Peers::zimgResized(const std::vector<cv::Mat>& planes, cv::Size from,
                                        cv::Size size)
{
    const zimgxx::FilterGraph graph = graphOf(from, size);
    std::vector<cv::Mat> result = zimgPlanes(size);
    zimgxx::zimage_buffer_const source;
    zimgxx::zimage_buffer destination;
    for (unsigned p = 0; p < 3; ++p) {
        source.data(p) = planes[p].data;
        source.stride(p) = ptrdiff_t(planes[p].step[0]);
        source.mask(p) = ZIMG_BUFFER_MAX;
        destination.data(p) = result[p].data;
        destination.stride(p) = ptrdiff_t(result[p].step[0]);
        destination.mask(p) = ZIMG_BUFFER_MAX;
    }
    const cv::Mat scratch(1, int(graph.get_tmp_size()), CV_8U); // aligned as every matrix
    graph.process(source, destination, scratch.data);
    return result;
}

cv::Mat Peers::zimgMerged(const std::vector<cv::Mat>& planes, cv::Size size)
{
    cv::Mat result;
    cv::merge(viewsOf(planes, size.width), result);
    return result;
}

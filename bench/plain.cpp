// SPDX-License-Identifier: Apache-2.0
#include "plain.h"

#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <atomic>

namespace {

/// One pass along the rows, or along the columns, one column at a time.
cv::Mat resizedAlong(bool rows, const cv::Mat& source, float scale, int length, float filterB,
                     float filterC)
{
    const int lines = rows ? source.rows : source.cols;
    const int samples = rows ? source.cols : source.rows;
    cv::Mat result(rows ? lines : length, rows ? length : lines, CV_32FC3);
    int radius = 0;
    const auto weights = Kernels::computeWeights(length, filterB, filterC, scale, radius);
    const auto centres = Kernels::centreSamples(0, length, scale, samples);
    const std::size_t stride = rows ? 3 : result.step1();
    cv::parallel_for_(cv::Range(0, lines), [&](const cv::Range& range) {
        std::vector<cv::Vec3f> line(std::size_t(samples + 2 * radius));
        for (int n = range.start; n < range.end; ++n) {
            for (int i = -radius; i < samples + radius; ++i) {
                const int inside = std::clamp(i, 0, samples - 1);
                line[std::size_t(i + radius)] =
                    rows ? source.at<cv::Vec3f>(n, inside) : source.at<cv::Vec3f>(inside, n);
            }
            Kernels::interpolateLine(line.front().val, 3, centres.data(), weights.data(),
                                     2 * radius + 1, length,
                                     rows ? result.ptr<float>(n) : result.ptr<float>(0, n), stride);
        }
    });
    return result;
}

template<typename T>
bool areRowsMonochrome(const cv::Mat& mat)
{
    std::atomic<bool> monochrome = true;
    cv::parallel_for_(cv::Range(0, mat.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end && monochrome; ++y) {
            if (!Kernels::isRowMonochrome(mat.ptr<T>(y), std::size_t(mat.cols), mat.channels()))
                monochrome = false;
        }
    });
    return monochrome;
}

} // namespace

cv::Mat Plain::resized(const cv::Mat& source, double scale, cv::Size size, float filterB,
                       float filterC)
{
    const cv::Mat wide = resizedAlong(true, source, float(scale), size.width, filterB, filterC);
    return resizedAlong(false, wide, float(scale), size.height, filterB, filterC);
}

std::pair<cv::Mat, cv::Mat> Plain::split(const cv::Mat& pixels)
{
    cv::Mat chroma(pixels.size(), CV_32FC3), alpha(pixels.size(), CV_32FC1);
    cv::parallel_for_(cv::Range(0, pixels.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y)
            Kernels::splitRow(pixels.ptr<float>(y), std::size_t(pixels.cols), chroma.ptr<float>(y),
                              alpha.ptr<float>(y));
    });
    return {chroma, alpha};
}

cv::Mat Plain::merged(const cv::Mat& chroma, const cv::Mat& alpha)
{
    cv::Mat pixels(chroma.size(), CV_32FC4);
    cv::parallel_for_(cv::Range(0, chroma.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y)
            Kernels::mergeRow(chroma.ptr<float>(y), alpha.ptr<float>(y), std::size_t(chroma.cols),
                              pixels.ptr<float>(y));
    });
    return pixels;
}

bool Plain::isMonochrome(const cv::Mat& mat)
{
    return mat.depth() == CV_32F ? areRowsMonochrome<float>(mat) : areRowsMonochrome<uchar>(mat);
}

void Plain::makeMonochrome(cv::Mat& mat)
{
    cv::parallel_for_(cv::Range(0, mat.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y)
            Kernels::makeRowMonochrome(mat.ptr<ushort>(y), std::size_t(mat.cols));
    });
}

bool Plain::isLumaNoise(const cv::Mat& mat)
{
    cv::Mat yuv, detail;
    cv::cvtColor(mat, yuv, cv::COLOR_RGB2YUV);
    cv::Laplacian(yuv, detail, yuv.depth());
    const cv::Scalar mean = cv::mean(cv::abs(detail));
    return float(mean[0] / (mean[1] + mean[2]) * 0.25) > 1.0F;
}

std::string Plain::encoded(const std::vector<unsigned char>& bytes)
{
    const char* const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text((bytes.size() + 2) / 3 * 4, '\0');
    text.resize(Kernels::encodeBase64(bytes.data(), bytes.size(), alphabet, text.data()));
    return text;
}

std::vector<unsigned char> Plain::decoded(const std::string& text)
{
    std::vector<unsigned char> bytes((text.size() + 3) / 4 * 3);
    bytes.resize(Kernels::decodeBase64(text.data(), text.size(), bytes.data()));
    return bytes;
}

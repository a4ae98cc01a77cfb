// SPDX-License-Identifier: Apache-2.0
#include "scalarloops.h"

#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <atomic>

namespace {

/// The weights and centres of one pass.
struct Filter
{
    Filter(int length, float scale, int inputLength, float filterB, float filterC)
        : weights(Kernels::computeWeights(length, filterB, filterC, scale, radius)),
          centres(Kernels::centreSamples(0, length, scale, inputLength))
    {}

    int radius = 0;
    std::vector<float> weights;
    std::vector<int> centres;
};

/// Resamples one line of pixels. `line` begins `radius` pixels before the first pixel, and output
/// pixels lie `stride` floats apart.
void resampleLine(const std::vector<cv::Vec3f>& line, const Filter& filter, float* out,
                  std::size_t stride)
{
    const int taps = 2 * filter.radius + 1;
    const float* weight = filter.weights.data();
    for (std::size_t i = 0; i < filter.centres.size(); ++i, out += stride) {
        float sum[3] = {};
        const cv::Vec3f* tap = &line[std::size_t(filter.centres[i])];
        for (int k = 0; k < taps; ++k, ++tap, ++weight) {
            for (int c = 0; c < 3; ++c)
                sum[c] += *weight * (*tap)[c];
        }
        std::copy_n(sum, 3, out);
    }
}

cv::Mat resizedAlongRows(const cv::Mat& source, int length, const Filter& filter)
{
    cv::Mat result(source.rows, length, CV_32FC3);
    cv::parallel_for_(cv::Range(0, source.rows), [&](const cv::Range& rows) {
        std::vector<cv::Vec3f> line(std::size_t(source.cols + 2 * filter.radius));
        for (int y = rows.start; y < rows.end; ++y) {
            for (int i = 0; i < int(line.size()); ++i)
                line[std::size_t(i)] =
                    source.at<cv::Vec3f>(y, std::clamp(i - filter.radius, 0, source.cols - 1));
            resampleLine(line, filter, result.ptr<float>(y), 3);
        }
    });
    return result;
}

/// Resamples one column at a time.
cv::Mat resizedAlongColumns(const cv::Mat& source, int length, const Filter& filter)
{
    cv::Mat result(length, source.cols, CV_32FC3);
    cv::parallel_for_(cv::Range(0, source.cols), [&](const cv::Range& columns) {
        std::vector<cv::Vec3f> line(std::size_t(source.rows + 2 * filter.radius));
        for (int x = columns.start; x < columns.end; ++x) {
            for (int i = 0; i < int(line.size()); ++i)
                line[std::size_t(i)] =
                    source.at<cv::Vec3f>(std::clamp(i - filter.radius, 0, source.rows - 1), x);
            resampleLine(line, filter, result.ptr<float>(0, x), result.step1());
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
            if (!Kernels::Scalar::isRowMonochrome(mat.ptr<T>(y), std::size_t(mat.cols),
                                                  mat.channels()))
                monochrome = false;
        }
    });
    return monochrome;
}

} // namespace

cv::Mat ScalarLoops::resized(const cv::Mat& source, double scale, cv::Size size, float filterB,
                             float filterC)
{
    const Filter alongRows(size.width, float(scale), source.cols, filterB, filterC);
    const Filter alongColumns(size.height, float(scale), source.rows, filterB, filterC);
    return resizedAlongColumns(resizedAlongRows(source, size.width, alongRows), size.height,
                               alongColumns);
}

std::pair<cv::Mat, cv::Mat> ScalarLoops::split(const cv::Mat& pixels)
{
    cv::Mat chroma(pixels.size(), CV_32FC3), alpha(pixels.size(), CV_32FC1);
    cv::parallel_for_(cv::Range(0, pixels.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y)
            Kernels::Scalar::splitRow(pixels.ptr<float>(y), std::size_t(pixels.cols),
                                      chroma.ptr<float>(y), alpha.ptr<float>(y));
    });
    return {chroma, alpha};
}

cv::Mat ScalarLoops::merged(const cv::Mat& chroma, const cv::Mat& alpha)
{
    cv::Mat pixels(chroma.size(), CV_32FC4);
    cv::parallel_for_(cv::Range(0, chroma.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y)
            Kernels::Scalar::mergeRow(chroma.ptr<float>(y), alpha.ptr<float>(y),
                                      std::size_t(chroma.cols), pixels.ptr<float>(y));
    });
    return pixels;
}

bool ScalarLoops::isMonochrome(const cv::Mat& mat)
{
    return mat.depth() == CV_32F ? areRowsMonochrome<float>(mat) : areRowsMonochrome<uchar>(mat);
}

void ScalarLoops::makeMonochrome(cv::Mat& mat)
{
    cv::parallel_for_(cv::Range(0, mat.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y)
            Kernels::Scalar::makeRowMonochrome(mat.ptr<ushort>(y), std::size_t(mat.cols));
    });
}

bool ScalarLoops::isLumaNoise(const cv::Mat& mat)
{
    cv::Mat yuv, detail;
    cv::cvtColor(mat, yuv, cv::COLOR_RGB2YUV);
    cv::Laplacian(yuv, detail, yuv.depth());
    const cv::Scalar mean = cv::mean(cv::abs(detail));
    return float(mean[0] / (mean[1] + mean[2]) * 0.25) > 1.0F;
}

std::string ScalarLoops::encoded(const std::vector<unsigned char>& bytes)
{
    const char* const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text((bytes.size() + 2) / 3 * 4, '\0');
    text.resize(Kernels::Scalar::encodeBase64(bytes.data(), bytes.size(), alphabet, text.data()));
    return text;
}

std::vector<unsigned char> ScalarLoops::decoded(const std::string& text)
{
    std::vector<unsigned char> bytes((text.size() + 3) / 4 * 3);
    bytes.resize(Kernels::Scalar::decodeBase64(text.data(), text.size(), bytes.data()));
    return bytes;
}

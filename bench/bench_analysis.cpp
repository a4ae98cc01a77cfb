// SPDX-License-Identifier: Apache-2.0
//
// Analysis (isMonochrome, isLumaNoise), conversion to grey, and conversion of depths.
#include "groups.h"
#include "scalarloops.h"

#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <opencv2/imgproc.hpp>

#include <atomic>
#include <memory>

namespace Bench {
namespace {

/// Reads all bytes of a matrix: a lower bound for every analysis.
std::uint64_t sumOfWords(const cv::Mat& mat)
{
    std::atomic<std::uint64_t> total = 0;
    cv::parallel_for_(cv::Range(0, mat.rows), [&](const cv::Range& rows) {
        const auto* word = mat.ptr<std::uint64_t>(rows.start);
        const std::size_t words = std::size_t(rows.size()) * mat.step[0] / sizeof(*word);
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < words; ++i)
            sum += word[i];
        total += sum;
    });
    return total;
}

bool isMonochromeByNorm(const cv::Mat& mat)
{
    std::vector<cv::Mat> planes;
    cv::split(mat, planes);
    return cv::norm(planes[0], planes[1], cv::NORM_INF) == 0 &&
           cv::norm(planes[1], planes[2], cv::NORM_INF) == 0;
}

void monochrome(const cv::Mat& mat, bool expected, const std::string& picture,
                const std::string& size, const Options& options)
{
    const auto same = [expected](bool answer) { return answer == expected ? 0 : 1; };
    Benchmark benchmark("isMonochrome, " + picture, size);
    benchmark.add(
        Role::Ours, "ours", [mat] { return CvUtils::isMonochrome(mat); }, same);
    benchmark.add(
        Role::Scalar, "scalar loop", [mat] { return ScalarLoops::isMonochrome(mat); }, same);
    benchmark.add(
        Role::Peer, "cv::split and cv::norm", [mat] { return isMonochromeByNorm(mat); }, same);
    benchmark.addYardstick("reading the picture", [mat] { return sumOfWords(mat); });
    benchmark.run(options);
}

cv::Mat greyOf(const cv::Mat& plane)
{
    cv::Mat grey;
    cv::cvtColor(plane, grey, cv::COLOR_GRAY2RGB);
    return grey;
}

void makeMonochrome(const PictureSize& size, const Options& options)
{
    const cv::Mat colour = TestSupport::noise(size.rows, size.cols, CV_16UC3);
    cv::Mat expected = colour.clone();
    ScalarLoops::makeMonochrome(expected);
    const auto same = [expected](const cv::Mat& mat) {
        return TestSupport::sameBytes(mat, expected) ? 0 : 1;
    };
    // In place: after the first call the picture is grey, which changes nothing about the work.
    const auto add = [&](Benchmark& benchmark, Role role, const std::string& name, auto work) {
        const auto mat = std::make_shared<cv::Mat>(colour.clone());
        benchmark.add(
            role, name,
            [mat, work] {
                work(*mat);
                return *mat;
            },
            same);
    };
    Benchmark benchmark("toMonochrome", size.name);
    add(benchmark, Role::Ours, "ours", [](cv::Mat& mat) { CvUtils::toMonochrome(mat); });
    add(benchmark, Role::Scalar, "scalar loop",
        [](cv::Mat& mat) { ScalarLoops::makeMonochrome(mat); });
    const auto mat = std::make_shared<cv::Mat>(colour.clone());
    benchmark.addYardstick("cv::cvtColor to grey and back", [mat] { // other weights
        cv::Mat grey;
        cv::cvtColor(*mat, grey, cv::COLOR_RGB2GRAY);
        cv::cvtColor(grey, *mat, cv::COLOR_GRAY2RGB);
        return *mat;
    });
    benchmark.run(options);
}

void lumaNoise(const cv::Mat& mat, const std::string& picture, const std::string& size,
               const Options& options)
{
    const bool expected = ScalarLoops::isLumaNoise(mat);
    const auto same = [expected](bool answer) { return answer == expected ? 0 : 1; };
    Benchmark benchmark("isLumaNoise, " + picture, size);
    benchmark.add(
        Role::Ours, "ours", [mat] { return CvUtils::isLumaNoise(mat); }, same);
    benchmark.add(
        Role::Scalar, "OpenCV's calls on the whole picture",
        [mat] { return ScalarLoops::isLumaNoise(mat); }, same);
    benchmark.addYardstick("cv::cvtColor alone", [mat] {
        cv::Mat yuv;
        cv::cvtColor(mat, yuv, cv::COLOR_RGB2YUV);
        return yuv;
    });
    benchmark.run(options);
}

void conversion(const PictureSize& size, const Options& options)
{
    const cv::Mat bytes = TestSupport::noise(size.rows, size.cols, CV_8UC3);
    const auto byOpenCv = [bytes] {
        cv::Mat result;
        bytes.convertTo(result, CV_32F, 1.0F / 255.0F);
        return result;
    };
    const auto same = [expected = byOpenCv()](const cv::Mat& result) {
        return cv::norm(result, expected, cv::NORM_INF);
    };
    Benchmark benchmark("convert, 8 bit to float", size.name);
    benchmark.add(
        Role::Ours, "ours", [bytes] { return CvUtils::convert(bytes, CV_32F); }, same, 1e-7);
    benchmark.add(Role::Peer, "cv::Mat::convertTo", byOpenCv, same);
    benchmark.run(options);
}

} // namespace

void analysis(const Options& options)
{
    for (const PictureSize& size : options.sizes) {
        const Options forSize = options.forSize(size);
        const cv::Mat colour = TestSupport::noise(size.rows, size.cols, CV_32FC3);
        monochrome(greyOf(TestSupport::noise(size.rows, size.cols, CV_32FC1)), true, "grey float",
                   size.name, forSize);
        monochrome(greyOf(TestSupport::noise(size.rows, size.cols, CV_8UC1)), true, "grey 8 bit",
                   size.name, forSize);
        monochrome(colour, false, "coloured float", size.name, forSize);
        makeMonochrome(size, forSize);
        lumaNoise(colour, "float", size.name, forSize);
        lumaNoise(TestSupport::noise(size.rows, size.cols, CV_8UC3), "8 bit", size.name, forSize);
        conversion(size, forSize);
    }
}

} // namespace Bench

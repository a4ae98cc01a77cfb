// SPDX-License-Identifier: Apache-2.0
//
// Splitting and merging colour and alpha, beside a copy of the larger side.
#include "groups.h"
#include "peers.h"
#include "scalarloops.h"

#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <algorithm>

namespace Bench {
namespace {

using Planes = std::pair<cv::Mat, cv::Mat>;

constexpr int pairsOfSplit[] = {0, 0, 1, 1, 2, 2, 3, 3}; // of channels, for cv::mixChannels

double differenceOf(const cv::Mat& a, const cv::Mat& b)
{
    return TestSupport::sameBytes(a, b) ? 0 : 1;
}

/// The largest difference of the planes from `expected`.
auto differenceFrom(const Planes& expected)
{
    return [expected](const auto& result) {
        const cv::Size size = expected.first.size();
        const auto matOf = [size](const auto& plane, int type) -> cv::Mat {
            if constexpr (std::is_same_v<std::decay_t<decltype(plane)>, cv::Mat>)
                return plane;
            else
                return {size, type, plane.get()};
        };
        return differenceOf(matOf(result.first, CV_32FC3), expected.first) +
               differenceOf(matOf(result.second, CV_32FC1), expected.second);
    };
}

void split(const cv::Mat& pixels, const std::string& size, const Options& options)
{
    const auto same = differenceFrom(ScalarLoops::split(pixels));
    Benchmark benchmark("splitChromaAlpha", size);
    benchmark.add(
        Role::Ours, "ours",
        [pixels] {
            Planes result;
            CvUtils::splitChromaAlpha(pixels, result.first, result.second);
            return result;
        },
        same);
    benchmark.add(
        Role::Scalar, "scalar loop", [pixels] { return ScalarLoops::split(pixels); }, same);
    benchmark.add(
        Role::Peer, "cv::mixChannels",
        [pixels] {
            const Planes result{cv::Mat(pixels.size(), CV_32FC3), cv::Mat(pixels.size(), CV_32F)};
            cv::Mat outputs[] = {result.first, result.second};
            cv::mixChannels(&pixels, 1, outputs, 2, pairsOfSplit, 4);
            return result;
        },
        same);
    benchmark.add(
        Role::Peer, "cv::split and cv::merge",
        [pixels] {
            std::vector<cv::Mat> planes;
            cv::split(pixels, planes);
            Planes result{{}, planes.back()};
            planes.pop_back();
            cv::merge(planes, result.first);
            return result;
        },
        same);
    benchmark.add(
        Role::Peer, "libvips", [pixels] { return Peers::vipsSplit(pixels); }, same);
    benchmark.addYardstick("clone() of the larger side", [pixels] { return pixels.clone(); });
    benchmark.run(options);
}

void merge(const Planes& planes, const cv::Mat& pixels, const std::string& size,
           const Options& options)
{
    const auto same = [pixels](const cv::Mat& result) { return differenceOf(result, pixels); };
    Benchmark benchmark("mergeChromaAlpha", size);
    benchmark.add(
        Role::Ours, "ours",
        [planes] { return CvUtils::mergeChromaAlpha(planes.first, planes.second); }, same);
    benchmark.add(
        Role::Scalar, "scalar loop",
        [planes] { return ScalarLoops::merged(planes.first, planes.second); }, same);
    benchmark.add(
        Role::Peer, "cv::mixChannels",
        [planes] {
            cv::Mat result(planes.first.size(), CV_32FC4);
            const cv::Mat inputs[] = {planes.first, planes.second};
            cv::mixChannels(inputs, 2, &result, 1, pairsOfSplit, 4);
            return result;
        },
        same);
    benchmark.add(
        Role::Peer, "libvips", [planes] { return Peers::vipsMerged(planes.first, planes.second); },
        [pixels](const Peers::GlibMemory& result) {
            return differenceOf(cv::Mat(pixels.size(), CV_32FC4, result.get()), pixels);
        });
    benchmark.addYardstick("clone() of the larger side", [pixels] { return pixels.clone(); });
    benchmark.run(options);
}

void images(const Planes& planes, const cv::Mat& pixels, const std::string& size,
            const Options& options)
{
    // The image is not shared, so bits() never copies it.
    const auto image =
        std::make_shared<QImage>(CvUtils::matToQImage(pixels, QImage::Format_RGBA32FPx4).copy());
    Benchmark benchmark("qimageToMat", size);
    benchmark.add(
        Role::Ours, "ours",
        [image] {
            Planes result;
            CvUtils::qimageToMat(*image, result.first, result.second);
            return result;
        },
        differenceFrom(planes));
    benchmark.addYardstick("clone() of the larger side", [pixels] { return pixels.clone(); });
    benchmark.run(options);

    Benchmark back("matToQImage", size);
    back.add(
        Role::Ours, "ours",
        [planes] {
            cv::Mat alpha = planes.second;
            return CvUtils::matToQImage(planes.first, alpha);
        },
        [pixels](const QImage& result) {
            return differenceOf(cv::Mat(pixels.size(), CV_32FC4,
                                        const_cast<uchar*>(result.constBits()),
                                        std::size_t(result.bytesPerLine())),
                                pixels);
        });
    back.addYardstick("clone() of the larger side", [pixels] { return pixels.clone(); });
    back.run(options);
}

} // namespace

void planes(const Options& options)
{
    for (const PictureSize& size : options.sizes) {
        const cv::Mat pixels = TestSupport::noise(size.rows, size.cols, CV_32FC4);
        const Planes apart = ScalarLoops::split(pixels);
        split(pixels, size.name, options.forSize(size));
        merge(apart, pixels, size.name, options.forSize(size));
        images(apart, pixels, size.name, options.forSize(size));
    }
}

} // namespace Bench

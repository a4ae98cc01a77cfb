// SPDX-License-Identifier: Apache-2.0
//
// Resampling of float colour by the cubic filter with B = C = 1/3, stretched for reductions. Only
// OpenCV does not stretch the filter: it always reads four taps, so its reductions alias.
#include "groups.h"
#include "peers.h"
#include "reference.h"
#include "scalarloops.h"

#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <opencv2/imgproc.hpp>

#include <cstring>

namespace Bench {
namespace {

constexpr float third = 0.33333F;
// The error allowed for sums in single precision; libvips rounds weights to one of 64 phases.
constexpr double roundings = 5e-4;
constexpr double phases = 5e-3;
// In pixels: OpenImageIO needs seconds for larger pictures, and the ratio stays the same.
constexpr std::size_t largestForOpenImageIo = 12'000'000;

using Reference::Origin;
constexpr Reference::Filter ourFilter{1.0 / 3, 1.0 / 3, true, Origin::OnSample};
constexpr Reference::Filter mitchell{1.0 / 3, 1.0 / 3, true, Origin::Areas};
constexpr Reference::Filter vipsEnlarging{0, 0.5, false, Origin::HalfBefore}; // Catmull and Rom's
constexpr Reference::Filter openCvCubic{0, 0.75, false, Origin::Areas};

/// The work of one benchmark, and the comparison of results of all types with the reference.
struct Work
{
    cv::Mat source;
    double scale;
    cv::Size size;

    auto differenceFrom(const Reference::Filter& filter) const
    {
        return [source = source, scale = scale, size = size, filter](const auto& result) {
            return Reference::differenceOf(matOf(result, size), source, scale, filter);
        };
    }

    static cv::Mat matOf(const cv::Mat& mat, cv::Size) { return mat; }
    static cv::Mat matOf(const Peers::GlibMemory& memory, cv::Size size)
    {
        return {size, CV_32FC3, memory.get()};
    }
    static cv::Mat matOf(const OIIO::ImageBuf& image, cv::Size size)
    {
        return {size, CV_32FC3, const_cast<void*>(image.localpixels())};
    }
    static cv::Mat matOf(const std::vector<cv::Mat>& planes, cv::Size size)
    {
        return Peers::zimgMerged(planes, size);
    }
};

void addOurs(Benchmark& benchmark, const Work& work)
{
    const cv::Mat plain = ScalarLoops::resized(work.source, work.scale, work.size, third, third);
    benchmark.add(
        Role::Ours, "ours",
        [=] { return CvUtils::resize(work.source, work.scale, work.scale, 0, 0, third, third); },
        [plain](const cv::Mat& result) { return !TestSupport::sameBytes(result, plain); });
    benchmark.add(
        Role::Scalar, "scalar loops, two passes",
        [=] { return ScalarLoops::resized(work.source, work.scale, work.size, third, third); },
        work.differenceFrom(ourFilter), roundings);
}

void addPeers(Benchmark& benchmark, const Work& work)
{
    const auto [source, scale, size] = work;
    benchmark.add(
        Role::Peer, "stb_image_resize",
        [source = source, size = size] { return Peers::stbResized(source, size); },
        work.differenceFrom(mitchell), roundings);
    benchmark.add(
        Role::Peer, "libvips",
        [source = source, size = size] { return Peers::vipsResized(source, size); },
        work.differenceFrom(scale < 1 ? mitchell : vipsEnlarging), phases);
    if (source.total() <= largestForOpenImageIo)
        benchmark.add(
            Role::Peer, "OpenImageIO",
            [source = source, size = size] { return Peers::oiioResized(source, size); },
            work.differenceFrom(mitchell), roundings);
    benchmark.add(
        Role::Peer, "zimg, planes already apart",
        [planes = Peers::zimgSplit(source), from = source.size(), size = size] {
            return Peers::zimgResized(planes, from, size);
        },
        work.differenceFrom(mitchell), roundings);
    benchmark.add(
        Role::Peer, "zimg, with copies",
        [source = source, size = size] {
            return Peers::zimgMerged(
                Peers::zimgResized(Peers::zimgSplit(source), source.size(), size), size);
        },
        work.differenceFrom(mitchell), roundings);
    benchmark.add(
        Role::Peer, "OpenCV cubic (4 taps, aliases)",
        [source = source, size = size] {
            cv::Mat result;
            cv::resize(source, result, size, 0, 0, cv::INTER_CUBIC);
            return result;
        },
        work.differenceFrom(openCvCubic), roundings);
    benchmark.addYardstick("filling the result with zeros", [size = size] {
        cv::Mat result(size, CV_32FC3);
        std::memset(result.data, 0, result.total() * result.elemSize());
        return result;
    });
}

void resampleBy(double scale, const std::string& name, const PictureSize& size,
                const Options& options)
{
    Work work{TestSupport::noise(size.rows, size.cols, CV_32FC3), scale, {}};
    work.size = CvUtils::resize(work.source, scale, scale, 0, 0, third, third).size();
    Benchmark benchmark("resize " + name, size.name);
    addOurs(benchmark, work);
    addPeers(benchmark, work);
    benchmark.run(options);
}

} // namespace

void resample(const Options& options)
{
    for (const PictureSize& size : options.sizes) {
        resampleBy(0.25, "to 0.25", size, options);
        if (&size != &options.sizes.front())
            continue; // one factor is enough to show how the time grows with the size
        resampleBy(0.37, "to 0.37", size, options);
        resampleBy(0.5, "to 0.5", size, options);
        resampleBy(2, "times 2", {"to " + size.name, size.cols / 2, size.rows / 2}, options);
    }
}

} // namespace Bench

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

#include <OpenImageIO/imagebuf.h>

#include <cstddef>
#include <memory>
#include <vector>

/// Other libraries, called as their users would.
namespace Peers {

/// Must be called once, before any other function.
void start(const char* program);

/// Sets the number of threads of every peer, and of the library, to `count`.
void useThreads(int count);

/// Versions of the peers, one "NAME VERSION" each.
std::vector<std::string> versions();

/// A result of libvips, whose memory g_free() must release.
struct ReleaseByGlib
{
    void operator()(void* memory) const;
};
using GlibMemory = std::unique_ptr<void, ReleaseByGlib>;

/// `source`, three floats a pixel, at `size` by the cubic filter with B = C = 1/3, widened for a
/// reduction (libvips enlarges by Catmull and Rom's).
GlibMemory vipsResized(const cv::Mat& source, cv::Size size);
cv::Mat stbResized(const cv::Mat& source, cv::Size size);
OIIO::ImageBuf oiioResized(const cv::Mat& source, cv::Size size);

/// zimg needs planes whose rows begin at multiples of 64 bytes: three matrices with padded rows.
std::vector<cv::Mat> zimgPlanes(cv::Size size);
std::vector<cv::Mat> zimgSplit(const cv::Mat& source);
std::vector<cv::Mat> zimgResized(const std::vector<cv::Mat>& planes, cv::Size from, cv::Size size);
cv::Mat zimgMerged(const std::vector<cv::Mat>& planes, cv::Size size);

/// The first three channels of `pixels`, four floats each, and the fourth.
std::pair<GlibMemory, GlibMemory> vipsSplit(const cv::Mat& pixels);
GlibMemory vipsMerged(const cv::Mat& chroma, const cv::Mat& alpha);

} // namespace Peers

// SPDX-License-Identifier: Apache-2.0
//
// Four pixels at a time. A pixel of four floats is one vector. A store of three floats writes a
// fourth, which the next pixel overwrites. The scalar loop writes the last pixels of a row, because
// nothing may be written after them.
#include <imageutils/kernels/planes.h>
#include <imageutils/kernels/simddispatch.h>

#define HWY_TARGET_INCLUDE "imageutils/kernels/planes_simd.cpp"
#include <hwy/foreach_target.h> // IWYU pragma: keep
#include <hwy/highway.h>

#if HWY_TARGET != HWY_SCALAR
HWY_BEFORE_NAMESPACE();
namespace Kernels::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Quad = hn::CappedTag<float, 4>;

void splitRow(const float* pixels, std::size_t count, float* chroma, float* alpha)
{
    constexpr Quad quad;
    constexpr hn::RepartitionToWide<Quad> pairs;
    for (; count > 4; count -= 4, pixels += 16, chroma += 12, alpha += 4) {
        const auto a = hn::LoadU(quad, pixels), b = hn::LoadU(quad, pixels + 4);
        const auto c = hn::LoadU(quad, pixels + 8), d = hn::LoadU(quad, pixels + 12);
        hn::StoreU(a, quad, chroma);
        hn::StoreU(b, quad, chroma + 3);
        hn::StoreU(c, quad, chroma + 6);
        hn::StoreU(d, quad, chroma + 9);
        const auto ab = hn::BitCast(pairs, hn::InterleaveUpper(quad, a, b));
        const auto cd = hn::BitCast(pairs, hn::InterleaveUpper(quad, c, d));
        hn::StoreU(hn::BitCast(quad, hn::InterleaveUpper(pairs, ab, cd)), quad, alpha);
    }
    Scalar::splitRow(pixels, count, chroma, alpha);
}

void mergeRow(const float* chroma, const float* alpha, std::size_t count, float* pixels)
{
    constexpr Quad quad;
    const auto colour = hn::FirstN(quad, 3);
    const auto merge = [=](const float* three, auto fourth, float* pixel) {
        hn::StoreU(hn::IfThenElse(colour, hn::LoadU(quad, three), fourth), quad, pixel);
    };
    for (; count > 4; count -= 4, chroma += 12, alpha += 4, pixels += 16) {
        const auto opacity = hn::LoadU(quad, alpha);
        merge(chroma, hn::Broadcast<0>(opacity), pixels);
        merge(chroma + 3, hn::Broadcast<1>(opacity), pixels + 4);
        merge(chroma + 6, hn::Broadcast<2>(opacity), pixels + 8);
        merge(chroma + 9, hn::Broadcast<3>(opacity), pixels + 12);
    }
    Scalar::mergeRow(chroma, alpha, count, pixels);
}

} // namespace
} // namespace Kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif

#if HWY_ONCE
namespace Kernels {

void splitRow(const float* pixels, std::size_t count, float* chroma, float* alpha)
{
    IMAGEUTILS_BEST(splitRow)(pixels, count, chroma, alpha);
}

void mergeRow(const float* chroma, const float* alpha, std::size_t count, float* pixels)
{
    IMAGEUTILS_BEST(mergeRow)(chroma, alpha, count, pixels);
}

} // namespace Kernels
#endif

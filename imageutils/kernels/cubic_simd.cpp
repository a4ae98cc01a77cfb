// SPDX-License-Identifier: Apache-2.0
//
// The filter with SIMD. Each lane of a vector holds a sum of its own and adds its taps in the order
// of the scalar loop, so the bits are the same. In the horizontal pass the lanes belong to
// different rows, so that all of them share a weight: the pixels are transposed first, and the sums
// are transposed back. In the vertical pass the lanes are neighbouring floats of a row.
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/simddispatch.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#define HWY_TARGET_INCLUDE "imageutils/kernels/cubic_simd.cpp"
#include <hwy/foreach_target.h> // IWYU pragma: keep

#include <hwy/highway.h>

#if HWY_TARGET != HWY_SCALAR
HWY_BEFORE_NAMESPACE();
namespace Kernels::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t channels = 3;
constexpr std::size_t quad = 4; // floats of a row that are transposed together, and outputs
using Wide = hn::CappedTag<float, rowsAtOnce>;
using Narrow = hn::CappedTag<float, quad>;

template<typename Tag>
constexpr std::size_t lanesOf = hn::MaxLanes(Tag());

/// Loads the four floats from `at` on of every fourth row.
template<typename Tag>
HWY_INLINE hn::Vec<Tag> loadRows(Tag tag, const float* const* rows, std::size_t at)
{
    if constexpr (lanesOf<Tag> == quad) {
        return hn::LoadU(tag, rows[0] + at);
    } else {
        const hn::Half<Tag> half;
        return hn::Combine(tag, loadRows(half, rows + lanesOf<Tag> / 2, at),
                           loadRows(half, rows, at));
    }
}

template<typename Tag>
HWY_INLINE void storeRows(Tag tag, hn::Vec<Tag> vector, float* const* rows, std::size_t at)
{
    if constexpr (lanesOf<Tag> == quad) {
        hn::StoreU(vector, tag, rows[0] + at);
    } else {
        const hn::Half<Tag> half;
        storeRows(half, hn::LowerHalf(half, vector), rows, at);
        storeRows(half, hn::UpperHalf(half, vector), rows + lanesOf<Tag> / 2, at);
    }
}

/// Transposes each block of four by four floats: float i of vector j becomes float j of vector i.
template<typename Tag, typename Vector>
HWY_INLINE void transpose(Tag tag, Vector& a, Vector& b, Vector& c, Vector& d)
{
    const hn::RepartitionToWide<Tag> pairs;
    const auto ab = hn::BitCast(pairs, hn::InterleaveLower(tag, a, b));
    const auto cd = hn::BitCast(pairs, hn::InterleaveLower(tag, c, d));
    const auto abUpper = hn::BitCast(pairs, hn::InterleaveUpper(tag, a, b));
    const auto cdUpper = hn::BitCast(pairs, hn::InterleaveUpper(tag, c, d));
    a = hn::BitCast(tag, hn::InterleaveLower(pairs, ab, cd));
    b = hn::BitCast(tag, hn::InterleaveUpper(pairs, ab, cd));
    c = hn::BitCast(tag, hn::InterleaveLower(pairs, abUpper, cdUpper));
    d = hn::BitCast(tag, hn::InterleaveUpper(pairs, abUpper, cdUpper));
}

/// Transposes the pixels `first` to `last` of as many rows as a vector has lanes: each pixel
/// becomes three vectors whose lanes are the rows. Pixels before and after a row repeat its ends.
template<typename Tag>
void gatherPixels(Tag tag, const float* const* rows, int samples, int first, int last, float* out)
{
    constexpr std::size_t lanes = lanesOf<Tag>, pixel = channels * lanes;
    const std::size_t begin = std::size_t(std::max(first, 0)),
                      end = std::size_t(std::min(last, samples - 1)) + 1;
    float* const inner = out + std::size_t(std::max(-first, 0)) * pixel;
    float* next = inner;
    constexpr std::size_t ahead = 256;
    constexpr int toRead = 0, once = 0; // no locality: the larger caches need not keep it
    std::size_t at = begin * channels;
    for (; at + quad <= end * channels; at += quad, next += quad * lanes) {
        if (at / quad % 4 == 0) { // once per cache line; saves a sixth of the time
            for (std::size_t row = 0; row < lanes; ++row)
                __builtin_prefetch(rows[row] + at + ahead, toRead, once);
        }
        auto a = loadRows(tag, rows, at), b = loadRows(tag, rows + 1, at);
        auto c = loadRows(tag, rows + 2, at), d = loadRows(tag, rows + 3, at);
        transpose(tag, a, b, c, d);
        hn::StoreU(a, tag, next);
        hn::StoreU(b, tag, next + lanes);
        hn::StoreU(c, tag, next + 2 * lanes);
        hn::StoreU(d, tag, next + 3 * lanes);
    }
    for (; at < end * channels; ++at, next += lanes) {
        for (std::size_t row = 0; row < lanes; ++row)
            next[row] = rows[row][at];
    }
    for (; out < inner; out += pixel)
        std::memcpy(out, inner, pixel * sizeof(float));
    for (int x = int(end); x <= last; ++x, next += pixel)
        std::memcpy(next, next - pixel, pixel * sizeof(float));
}

/// Computes four neighbouring output pixels of as many rows as a vector has lanes.
template<typename Tag>
HWY_INLINE void sumPixels(Tag tag, const float* const (&pixels)[quad], const float* weights,
                          std::size_t taps, float* const* out, std::size_t at)
{
    constexpr std::size_t lanes = lanesOf<Tag>;
    hn::Vec<Tag> sums[quad * channels];
    for (auto& sum : sums)
        sum = hn::Zero(tag);
    for (std::size_t k = 0; k < taps; ++k) {
        for (std::size_t n = 0; n < quad; ++n) {
            const auto weight = hn::Set(tag, weights[n * taps + k]);
            const float* const pixel = pixels[n] + k * channels * lanes;
            for (std::size_t c = 0; c < channels; ++c)
                sums[n * channels + c] = hn::Add(
                    sums[n * channels + c], hn::Mul(weight, hn::LoadU(tag, pixel + c * lanes)));
        }
    }
    for (std::size_t n = 0; n < quad * channels; n += quad) {
        transpose(tag, sums[n], sums[n + 1], sums[n + 2], sums[n + 3]);
        for (std::size_t row = 0; row < quad; ++row)
            storeRows(tag, sums[n + row], out + row, at + n);
    }
}

/// Computes one output pixel of as many rows as a vector has lanes.
template<typename Tag>
void sumPixel(Tag tag, const float* pixels, const float* weights, std::size_t taps,
              float* const* out, std::size_t at)
{
    constexpr std::size_t lanes = lanesOf<Tag>;
    for (std::size_t c = 0; c < channels; ++c) {
        auto sum = hn::Zero(tag);
        for (std::size_t k = 0; k < taps; ++k)
            sum = hn::Add(sum, hn::Mul(hn::Set(tag, weights[k]),
                                       hn::LoadU(tag, pixels + (k * channels + c) * lanes)));
        float values[lanes];
        hn::StoreU(sum, tag, values);
        for (std::size_t row = 0; row < lanes; ++row)
            out[row][at + c] = values[row];
    }
}

/// Resamples as many rows as a vector has lanes.
template<typename Tag>
void interpolateRowsOf(Tag tag, const float* const* rows, int samples, const Filter& filter,
                       float* const* out, float* buffer)
{
    constexpr std::size_t pixel = channels * lanesOf<Tag>;
    const int radius = filter.taps / 2;
    const std::size_t taps = std::size_t(filter.taps);
    for (int begin = 0; begin < filter.length; begin += outputsPerGathering) {
        const int end = std::min(begin + outputsPerGathering, filter.length);
        const int* const centres = filter.centres;
        gatherPixels(tag, rows, samples, centres[begin] - radius, centres[end - 1] + radius,
                     buffer);
        const auto pixelsOf = [=](int i) {
            return buffer + std::size_t(centres[i] - centres[begin]) * pixel;
        };
        int i = begin;
        for (; i + int(quad) <= end; i += int(quad)) {
            const float* const pixels[] = {pixelsOf(i), pixelsOf(i + 1), pixelsOf(i + 2),
                                           pixelsOf(i + 3)};
            sumPixels(tag, pixels, filter.weights + std::size_t(i) * taps, taps, out,
                      std::size_t(i) * channels);
        }
        for (; i < end; ++i)
            sumPixel(tag, pixelsOf(i), filter.weights + std::size_t(i) * taps, taps, out,
                     std::size_t(i) * channels);
    }
}

void interpolateRows(const float* const* rows, int count, int samples, const Filter& filter,
                     float* const* out, float* buffer)
{
    constexpr int wide = int(lanesOf<Wide>), narrow = int(lanesOf<Narrow>);
    if (filter.taps > mostSimdTaps) {
        Scalar::interpolateRows(rows, count, samples, filter, out, buffer);
        return;
    }
    while (reinterpret_cast<std::uintptr_t>(buffer) % (alignmentFloats * sizeof(float)) != 0)
        ++buffer;
    int done = 0;
    for (; done + wide <= count; done += wide)
        interpolateRowsOf(Wide(), rows + done, samples, filter, out + done, buffer);
    for (; done + narrow <= count; done += narrow)
        interpolateRowsOf(Narrow(), rows + done, samples, filter, out + done, buffer);
    if (done < count) { // the last row is repeated to fill the vector
        const float* from[narrow];
        float* to[narrow];
        for (int row = 0; row < narrow; ++row) {
            from[row] = rows[std::min(done + row, count - 1)];
            to[row] = out[std::min(done + row, count - 1)];
        }
        interpolateRowsOf(Narrow(), from, samples, filter, to, buffer);
    }
}

/// Computes `Vectors` vectors of each output row, `at` floats from its beginning. Their sums stay
/// in registers.
template<std::size_t Vectors>
void sumColumns(const float* const* rows, std::size_t at, const Filter& filter, float* out,
                std::size_t outStride)
{
    constexpr Wide tag;
    const float* weights = filter.weights;
    for (int i = 0; i < filter.length; ++i, weights += filter.taps, out += outStride) {
        const float* const* const taps = rows + filter.centres[i];
        hn::Vec<Wide> sums[Vectors];
        for (auto& sum : sums)
            sum = hn::Zero(tag);
        for (int k = 0; k < filter.taps; ++k) {
            const auto weight = hn::Set(tag, weights[k]);
            const float* const row = taps[k] + at;
            for (std::size_t n = 0; n < Vectors; ++n)
                sums[n] =
                    hn::Add(sums[n], hn::Mul(weight, hn::LoadU(tag, row + n * lanesOf<Wide>)));
        }
        for (std::size_t n = 0; n < Vectors; ++n)
            hn::StoreU(sums[n], tag, out + at + n * lanesOf<Wide>);
    }
}

// The last vectors overlap those before them instead of leaving a rest; the sums are the same.
void interpolateColumns(const float* const* rows, std::size_t width, const Filter& filter,
                        float* out, std::size_t outStride)
{
    constexpr std::size_t lanes = lanesOf<Wide>, many = 12, block = many * lanes;
    if (width < lanes) {
        Scalar::interpolateColumns(rows, width, filter, out, outStride);
    } else if (width < block) {
        for (std::size_t at = 0; at < width; at += lanes)
            sumColumns<1>(rows, std::min(at, width - lanes), filter, out, outStride);
    } else {
        for (std::size_t at = 0; at < width; at += block)
            sumColumns<many>(rows, std::min(at, width - block), filter, out, outStride);
    }
}

} // namespace
} // namespace Kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif

#if HWY_ONCE
namespace Kernels {

void interpolateColumns(const float* const* rows, std::size_t width, const Filter& filter,
                        float* out, std::size_t outStride)
{
    IMAGEUTILS_BEST(interpolateColumns)(rows, width, filter, out, outStride);
}

void interpolateRows(const float* const* rows, int count, int samples, const Filter& filter,
                     float* const* out, float* buffer)
{
    IMAGEUTILS_BEST(interpolateRows)(rows, count, samples, filter, out, buffer);
}

} // namespace Kernels
#endif

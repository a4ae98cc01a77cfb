// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/simddispatch.h>

#include <algorithm>
#include <cstring>

#define HWY_TARGET_INCLUDE "imageutils/kernels/monochrome_simd.cpp"
#include <hwy/foreach_target.h> // IWYU pragma: keep
#include <hwy/highway.h>

#if HWY_TARGET != HWY_SCALAR
HWY_BEFORE_NAMESPACE();
namespace Kernels::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr int mostChannels = 4;
constexpr std::size_t mostBytes = 32; // of a vector
// A row that is not grey is left after at most so many patterns.
constexpr std::size_t patternsPerTest = 32;

/// The channels of a pixel are equal if each equals the next one. So the row is compared with
/// itself shifted by one value, and a mask leaves out the last channel of each pixel. The mask
/// repeats after as many vectors as a pixel has channels.
template<int Channels, typename T>
bool isRowMonochromeOf(const T* row, std::size_t count)
{
    constexpr hn::CappedTag<T, mostBytes / sizeof(T)> tag;
    constexpr std::size_t lanes = hn::MaxLanes(tag); // also the pixels of a pattern
    T inside[lanes * Channels];                      // 1 but where a pixel ends
    for (std::size_t i = 0; i < lanes * Channels; ++i)
        inside[i] = i % Channels != Channels - 1;
    hn::Mask<decltype(tag)> compared[Channels];
    for (int n = 0; n < Channels; ++n)
        compared[n] = hn::Ne(hn::LoadU(tag, inside + std::size_t(n) * lanes), hn::Zero(tag));

    const std::size_t patterns = count == 0 ? 0 : (count * Channels - 1) / (lanes * Channels);
    for (std::size_t done = 0; done < patterns;) {
        auto different = hn::MaskFromVec(hn::Zero(tag));
        const std::size_t until = std::min(patterns, done + patternsPerTest);
        for (; done < until; ++done) {
            for (int n = 0; n < Channels; ++n, row += lanes) {
                const auto values = hn::LoadU(tag, row), next = hn::LoadU(tag, row + 1);
                different = hn::Or(different, hn::And(hn::Ne(values, next), compared[n]));
            }
        }
        if (!hn::AllFalse(tag, different))
            return false;
    }
    return Scalar::isRowMonochrome(row, count - patterns * lanes, Channels);
}

template<typename T>
bool isRowMonochrome(const T* row, std::size_t count, int channels)
{
    switch (channels) {
    case 2:
        return isRowMonochromeOf<2>(row, count);
    case 3:
        return isRowMonochromeOf<3>(row, count);
    case mostChannels:
        return isRowMonochromeOf<mostChannels>(row, count);
    default:
        return Scalar::isRowMonochrome(row, count, channels);
    }
}

void makeRowMonochrome(std::uint16_t* row, std::size_t count)
{
    constexpr hn::CappedTag<std::uint16_t, mostBytes / 2> tag;
    constexpr std::size_t lanes = hn::MaxLanes(tag);
    const auto one = hn::Set(tag, 1);
    for (; count >= lanes; count -= lanes, row += 3 * lanes) {
        hn::Vec<decltype(tag)> red, green, blue;
        hn::LoadInterleaved3(tag, row, red, green, blue);
        // The sum of the three channels is 65536 x `carries` + `low`.
        const auto two = hn::Add(red, green), low = hn::Add(two, blue);
        const auto carries = hn::Add(hn::IfThenElseZero(hn::Lt(two, red), one),
                                     hn::IfThenElseZero(hn::Lt(low, two), one));
        // 65536 = 3 x 21845 + 1. Only 65536 saturates, and a third of 65535 is the same integer.
        const auto rest = hn::SaturatedAdd(low, carries);
        const auto third = hn::ShiftRight<1>(hn::MulHigh(rest, hn::Set(tag, 0xAAAB)));
        const auto mean = hn::Add(third, hn::Mul(carries, hn::Set(tag, 21845)));
        hn::StoreInterleaved3(mean, mean, mean, tag, row);
    }
    Scalar::makeRowMonochrome(row, count);
}

} // namespace
} // namespace Kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif

#if HWY_ONCE
namespace Kernels {
namespace {

template<typename T>
auto bestCheck()
{
    using Check = bool(const T*, std::size_t, int);
    return IMAGEUTILS_IMPLEMENTATIONS(Check, isRowMonochrome)[implementationIndex()];
}

} // namespace

bool isRowMonochrome(const std::uint8_t* row, std::size_t count, int channels)
{
    return bestCheck<std::uint8_t>()(row, count, channels);
}

bool isRowMonochrome(const std::uint16_t* row, std::size_t count, int channels)
{
    return bestCheck<std::uint16_t>()(row, count, channels);
}

bool isRowMonochrome(const float* row, std::size_t count, int channels)
{
    return bestCheck<float>()(row, count, channels);
}

void makeRowMonochrome(std::uint16_t* row, std::size_t count)
{
    IMAGEUTILS_BEST(makeRowMonochrome)(row, count);
}

} // namespace Kernels
#endif

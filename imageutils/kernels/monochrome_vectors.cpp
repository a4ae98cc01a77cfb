// SPDX-License-Identifier: Apache-2.0
//
// The comparison in vectors of 16 bytes, which every 64-bit processor has, so nothing is chosen at
// run time. The channels of a pixel are equal when each equals the next: a row is compared with
// itself one value further on, and the places where a pixel ends are masked out. That pattern
// repeats after as many vectors as a pixel has channels.
#include <imageutils/kernels/monochrome.h>

#include <cstring>

namespace Kernels {
namespace {

using Bytes = std::uint8_t __attribute__((vector_size(16)));
using Words = std::uint16_t __attribute__((vector_size(16)));
using Floats = float __attribute__((vector_size(16)));
using Bits = std::uint64_t __attribute__((vector_size(16)));

constexpr int mostChannels = 4;
constexpr std::size_t patternsPerTest =
    32; // a row that is not grey ends after at most so many patterns

template<typename Vector, typename T>
Vector load(const T* values)
{
    Vector vector;
    std::memcpy(&vector, values, sizeof vector);
    return vector;
}

/// `Channels` vectors of all ones, but zeros where the value is the last of its pixel.
template<typename Vector, typename T, int Channels>
void fillMasks(Bits (&masks)[Channels])
{
    constexpr int lanes = sizeof(Vector) / sizeof(T);
    unsigned char bytes[sizeof masks];
    for (int i = 0; i < lanes * Channels; ++i)
        std::memset(bytes + std::size_t(i) * sizeof(T), i % Channels == Channels - 1 ? 0 : 0xff,
                    sizeof(T));
    std::memcpy(masks, bytes, sizeof masks);
}

template<typename Vector, typename T, int Channels>
bool isRowMonochromeOf(const T* row, std::size_t count)
{
    constexpr std::size_t lanes = sizeof(Vector) / sizeof(T); // also the pixels of a pattern
    Bits masks[Channels];
    fillMasks<Vector, T>(masks);
    const std::size_t patterns = count == 0 ? 0 : (count * Channels - 1) / (lanes * Channels);
    for (std::size_t done = 0; done < patterns;) {
        Bits different = {};
        const std::size_t until =
            patterns - done < patternsPerTest ? patterns : done + patternsPerTest;
        for (; done < until; ++done) {
            for (int n = 0; n < Channels; ++n, row += lanes)
                different |= (Bits)(load<Vector>(row) != load<Vector>(row + 1)) & masks[n];
        }
        if ((different[0] | different[1]) != 0)
            return false;
    }
    return isRowMonochrome(row, count - patterns * lanes, Channels);
}

template<typename Vector, typename T>
bool chooseChannels(const T* row, std::size_t count, int channels)
{
    switch (channels) {
    case 2:
        return isRowMonochromeOf<Vector, T, 2>(row, count);
    case 3:
        return isRowMonochromeOf<Vector, T, 3>(row, count);
    case mostChannels:
        return isRowMonochromeOf<Vector, T, mostChannels>(row, count);
    default:
        return isRowMonochrome(row, count, channels);
    }
}

} // namespace

bool isRowMonochromeInVectors(const std::uint8_t* row, std::size_t count, int channels)
{
    return chooseChannels<Bytes>(row, count, channels);
}

bool isRowMonochromeInVectors(const std::uint16_t* row, std::size_t count, int channels)
{
    return chooseChannels<Words>(row, count, channels);
}

bool isRowMonochromeInVectors(const float* row, std::size_t count, int channels)
{
    return chooseChannels<Floats>(row, count, channels);
}

} // namespace Kernels

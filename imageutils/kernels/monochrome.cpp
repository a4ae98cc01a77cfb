// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/monochrome.h>

namespace Kernels {
namespace {

template<typename T>
bool isRowMonochromeOf(const T* row, std::size_t count, int channels)
{
    if (channels == 1) // nothing to compare: a NaN alone is monochrome
        return true;
    for (std::size_t i = 0; i < count; ++i, row += channels) {
        for (int k = 1; k < channels; ++k) {
            if (!(row[k] == row[0]))
                return false;
        }
    }
    return true;
}

} // namespace

namespace Scalar {

bool isRowMonochrome(const std::uint8_t* row, std::size_t count, int channels)
{
    return isRowMonochromeOf(row, count, channels);
}

bool isRowMonochrome(const std::uint16_t* row, std::size_t count, int channels)
{
    return isRowMonochromeOf(row, count, channels);
}

bool isRowMonochrome(const float* row, std::size_t count, int channels)
{
    return isRowMonochromeOf(row, count, channels);
}

void makeRowMonochrome(std::uint16_t* row, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i, row += 3) {
        const std::uint32_t sum = std::uint32_t(row[0]) + row[1] + row[2];
        row[0] = row[1] = row[2] = std::uint16_t(sum / 3);
    }
}

} // namespace Scalar
} // namespace Kernels

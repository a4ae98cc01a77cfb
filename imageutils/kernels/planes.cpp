// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/planes.h>

namespace Kernels::Scalar {

void splitRow(const float* pixels, std::size_t count, float* chroma, float* alpha)
{
    for (std::size_t i = 0; i < count; ++i, pixels += 4, chroma += 3) {
        chroma[0] = pixels[0];
        chroma[1] = pixels[1];
        chroma[2] = pixels[2];
        alpha[i] = pixels[3];
    }
}

void mergeRow(const float* chroma, const float* alpha, std::size_t count, float* pixels)
{
    for (std::size_t i = 0; i < count; ++i, chroma += 3, pixels += 4) {
        pixels[0] = chroma[0];
        pixels[1] = chroma[1];
        pixels[2] = chroma[2];
        pixels[3] = alpha[i];
    }
}

} // namespace Kernels::Scalar

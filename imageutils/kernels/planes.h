// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Loops over one row of `count` RGBA float pixels that separate colour and alpha, or interleave
/// them, in one pass over the memory.
namespace Kernels {

/// Writes the first three of each four floats of `pixels` to `chroma` and the fourth to `alpha`.
void splitRow(const float* pixels, std::size_t count, float* chroma, float* alpha);

/// Writes three floats of `chroma` and one of `alpha` in turn to `pixels`.
void mergeRow(const float* chroma, const float* alpha, std::size_t count, float* pixels);

namespace Scalar {

void splitRow(const float* pixels, std::size_t count, float* chroma, float* alpha);
void mergeRow(const float* chroma, const float* alpha, std::size_t count, float* pixels);

} // namespace Scalar
} // namespace Kernels

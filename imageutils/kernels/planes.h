// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Loops over one row of `count` float pixels that part and join colour and opacity, in one pass
/// over the memory.
namespace Kernels {

/// Writes the first three of each four floats of `pixels` to `chroma` and the fourth to `alpha`.
void splitRow(const float* pixels, std::size_t count, float* chroma, float* alpha);

/// Writes three floats of `chroma` and one of `alpha` in turn to `pixels`.
void mergeRow(const float* chroma, const float* alpha, std::size_t count, float* pixels);

/// The same in vectors.
void splitRowInVectors(const float* pixels, std::size_t count, float* chroma, float* alpha);
void mergeRowInVectors(const float* chroma, const float* alpha, std::size_t count, float* pixels);

} // namespace Kernels

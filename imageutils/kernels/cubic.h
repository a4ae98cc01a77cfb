// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

/// The separable cubic resampling filter: weights, and the loop over one line.
///
/// A line is a row of samples of `width` floats each: the pixels of an image row (3 floats), or
/// rows of a block of columns (3 floats per column). Everything is single precision and sums its
/// taps from the first to the last, so the bits do not depend on how a picture is cut into lines.
namespace Kernels {

/// The cubic of Mitchell and Netravali ("Reconstruction Filters in Computer Graphics", 1988) with
/// the parameters `filterB` and `filterC`, at the distance `x` in samples; 0 from 2 on.
float cubicKernel(float x, float filterB, float filterC);

/// The weights of `length` output samples at the factor `scale` (above 0): 2 x `radius` + 1 for
/// each, those of sample i from index (2 x `radius` + 1) x i on, with the sum 1. A reduction
/// stretches the filter by 1 / `scale`, so `radius`, which is set here, is 2 at and above 1, 4 at
/// 0.5.
std::vector<float> computeWeights(int length, float filterB, float filterC, float scale,
                                  int& radius);

/// The input sample on or before the centre of each of `length` output samples from sample `first`
/// on, at most `inputLength` - 1.
std::vector<int> centreSamples(int first, int length, float scale, int inputLength);

/// One pass over lines of equal length: what each output sample sums. The `taps` input samples of
/// output sample i lie around sample centres[i] and have the weights from weights[i x taps] on.
struct Filter
{
    const int* centres;
    const float* weights;
    int taps;
    int length; ///< output samples
};

/// Writes the output pixels of a row from `out` on. `line` begins `taps` / 2 pixels before the
/// first input pixel and ends as many after the last.
void interpolateLine(const float* line, const Filter& filter, float* out);

/// Resamples `count` rows of `samples` pixels, three floats each: row i from rows[i] to out[i]. The
/// samples at the ends are repeated outwards. `buffer` must have space for `rowBufferFloats`.
/// Fastest for `rowsAtOnce` rows.
void interpolateRows(const float* const* rows, int count, int samples, const Filter& filter,
                     float* const* out, float* buffer);

/// The floats that `interpolateRows` needs for `filter` and rows of `samples` pixels.
std::size_t rowBufferFloats(int samples, const Filter& filter);

/// Resamples columns, `width` floats side by side: output row i, `outStride` floats after the one
/// before it, is the sum of the rows from rows[centres[i]] on.
void interpolateColumns(const float* const* rows, std::size_t width, const Filter& filter,
                        float* out, std::size_t outStride);

namespace Scalar {

void interpolateRows(const float* const* rows, int count, int samples, const Filter& filter,
                     float* const* out, float* buffer);
void interpolateColumns(const float* const* rows, std::size_t width, const Filter& filter,
                        float* out, std::size_t outStride);

} // namespace Scalar

/// The SIMD code resamples so many rows together, and transposes the source pixels of so many
/// outputs at a time.
constexpr int rowsAtOnce = 8;
constexpr int outputsPerGathering = 64;

/// The floats that the SIMD code may skip at the beginning of its buffer, so that no vector lies
/// across two cache lines.
constexpr std::size_t alignmentFloats = 16;

/// Filters of more taps than this, for factors below 0.001, use the scalar loop across rows: the
/// transposed pixels would not fit into a cache.
constexpr int mostSimdTaps = 4096;

} // namespace Kernels

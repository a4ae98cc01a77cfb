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

/// Writes `length` output samples of `width` floats, one every `outStride` floats from `out` on:
/// the sum of the `taps` samples of `line` from sample centres[i] on, weighted by weights[i x taps]
/// and those after it. `line` begins `taps` / 2 samples before the first input sample and ends as
/// many after the last.
void interpolateLine(const float* line, std::size_t width, const int* centres, const float* weights,
                     int taps, int length, float* out, std::size_t outStride);

/// `interpolateLine` in vectors of four floats, with the same bits; its gain is for widths of 3 and
/// `vectorBlockFloats`, other widths take the plain road. It may read one float beyond `line`.
void interpolateLineInVectors(const float* line, std::size_t width, const int* centres,
                              const float* weights, int taps, int length, float* out,
                              std::size_t outStride);

/// The width that keeps all sums of one output sample in registers: 16 columns of pixels.
constexpr std::size_t vectorBlockFloats = 48;

} // namespace Kernels

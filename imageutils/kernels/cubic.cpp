// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/cubic.h>

#include <algorithm>
#include <cmath>

namespace Kernels {
namespace {

constexpr std::size_t channels = 3;

} // namespace

float cubicKernel(float x, float filterB, float filterC)
{
    const float t = std::abs(x);
    if (t < 1.0f) {
        return ((12.0f - 9.0f * filterB - 6.0f * filterC) * t * t * t +
                (-18.0f + 12.0f * filterB + 6.0f * filterC) * t * t + (6.0f - 2.0f * filterB)) /
               6.0f;
    }
    if (t < 2.0f) {
        return ((-filterB - 6.0f * filterC) * t * t * t +
                (6.0f * filterB + 30.0f * filterC) * t * t +
                (-12.0f * filterB - 48.0f * filterC) * t + (8.0f * filterB + 24.0f * filterC)) /
               6.0f;
    }
    return 0.0f;
}

std::vector<float> computeWeights(int length, float filterB, float filterC, float scale,
                                  int& radius)
{
    const float stretch = std::min(1.0f, scale);
    radius = int(std::ceil(2.0f / stretch));
    const std::size_t taps = 2 * std::size_t(radius) + 1;
    std::vector<float> weights(taps * std::size_t(length));
    for (int i = 0; i < length; ++i) {
        // Single precision, as in centreSamples: a centre in double precision would change the
        // result at sample 66,666 by 6.5e-4.
        const float centre = float(i) / scale;
        const float fraction = centre - std::trunc(centre);
        float* const row = weights.data() + taps * std::size_t(i);
        float sum = 0.0f;
        for (int k = -radius; k <= radius; ++k) {
            const float weight = cubicKernel((float(k) - fraction) * stretch, filterB, filterC);
            row[radius + k] = weight;
            sum += weight;
        }
        for (std::size_t k = 0; k < taps; ++k)
            row[k] /= sum;
    }
    return weights;
}

std::vector<int> centreSamples(int first, int length, float scale, int inputLength)
{
    std::vector<int> centres(static_cast<std::size_t>(length));
    // The division may round up to the input length itself. The comparison is one of floats,
    // because int(2^31) is undefined.
    const float last = float(inputLength - 1);
    for (int i = 0; i < length; ++i) {
        const float centre = float(first + i) / scale;
        centres[std::size_t(i)] = centre < last ? int(centre) : inputLength - 1;
    }
    return centres;
}

void interpolateLine(const float* line, const Filter& filter, float* out)
{
    const float* weights = filter.weights;
    for (int i = 0; i < filter.length; ++i, weights += filter.taps, out += channels) {
        const float* tap = line + std::size_t(filter.centres[i]) * channels;
        float sums[channels] = {};
        for (int k = 0; k < filter.taps; ++k, tap += channels) {
            for (std::size_t c = 0; c < channels; ++c)
                sums[c] += weights[k] * tap[c];
        }
        std::copy_n(sums, channels, out);
    }
}

namespace Scalar {

void interpolateColumns(const float* const* rows, std::size_t width, const Filter& filter,
                        float* out, std::size_t outStride)
{
    const float* weights = filter.weights;
    for (int i = 0; i < filter.length; ++i, weights += filter.taps, out += outStride) {
        std::fill_n(out, width, 0.0f);
        for (int k = 0; k < filter.taps; ++k) {
            const float* const row = rows[filter.centres[i] + k];
            for (std::size_t j = 0; j < width; ++j)
                out[j] += weights[k] * row[j];
        }
    }
}

void interpolateRows(const float* const* rows, int count, int samples, const Filter& filter,
                     float* const* out, float* buffer)
{
    const std::size_t radius = std::size_t(filter.taps) / 2;
    float* const inner = buffer + radius * channels;
    float* const after = inner + std::size_t(samples) * channels;
    for (int y = 0; y < count; ++y) {
        std::copy(rows[y], rows[y] + std::size_t(samples) * channels, inner);
        for (std::size_t i = 0; i < radius; ++i) {
            std::copy_n(inner, channels, buffer + i * channels);
            std::copy_n(after - channels, channels, after + i * channels);
        }
        interpolateLine(buffer, filter, out[y]);
    }
}

} // namespace Scalar

std::size_t rowBufferFloats(int samples, const Filter& filter)
{
    const std::size_t padded = std::size_t(samples) + std::size_t(filter.taps);
    if (filter.taps > mostSimdTaps)
        return padded * channels;
    int span = 0;
    for (int i = 0; i < filter.length; i += outputsPerGathering) {
        const int last = std::min(i + outputsPerGathering, filter.length) - 1;
        span = std::max(span, filter.centres[last] - filter.centres[i]);
    }
    const std::size_t gathered = std::size_t(span) + std::size_t(filter.taps);
    return std::max(padded, gathered * std::size_t(rowsAtOnce)) * channels + alignmentFloats;
}

} // namespace Kernels

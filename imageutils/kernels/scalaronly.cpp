// SPDX-License-Identifier: Apache-2.0
//
// The loops of a build without Highway: each runs the scalar code.
#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>
#include <imageutils/kernels/simd.h>

namespace Kernels {

const char* simdInstructionSet() { return "scalar"; }

std::vector<const char*> simdInstructionSets() { return {simdInstructionSet()}; }

void useSimdInstructionSet(const char* /*name*/) {}

void interpolateColumns(const float* const* rows, std::size_t width, const Filter& filter,
                        float* out, std::size_t outStride)
{
    Scalar::interpolateColumns(rows, width, filter, out, outStride);
}

void interpolateRows(const float* const* rows, int count, int samples, const Filter& filter,
                     float* const* out, float* buffer)
{
    Scalar::interpolateRows(rows, count, samples, filter, out, buffer);
}

void splitRow(const float* pixels, std::size_t count, float* chroma, float* alpha)
{
    Scalar::splitRow(pixels, count, chroma, alpha);
}

void mergeRow(const float* chroma, const float* alpha, std::size_t count, float* pixels)
{
    Scalar::mergeRow(chroma, alpha, count, pixels);
}

bool isRowMonochrome(const std::uint8_t* row, std::size_t count, int channels)
{
    return Scalar::isRowMonochrome(row, count, channels);
}

bool isRowMonochrome(const std::uint16_t* row, std::size_t count, int channels)
{
    return Scalar::isRowMonochrome(row, count, channels);
}

bool isRowMonochrome(const float* row, std::size_t count, int channels)
{
    return Scalar::isRowMonochrome(row, count, channels);
}

void makeRowMonochrome(std::uint16_t* row, std::size_t count)
{
    Scalar::makeRowMonochrome(row, count);
}

std::size_t encodeBase64(const std::uint8_t* bytes, std::size_t count, const char* alphabet,
                         char* text)
{
    return Scalar::encodeBase64(bytes, count, alphabet, text);
}

std::size_t decodeBase64(const char* text, std::size_t count, std::uint8_t* bytes)
{
    return Scalar::decodeBase64(text, count, bytes);
}

} // namespace Kernels

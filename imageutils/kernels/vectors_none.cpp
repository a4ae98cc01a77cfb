// SPDX-License-Identifier: Apache-2.0
//
// The loops in vectors where there is no library to write them with: the plain ones.
#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>
#include <imageutils/kernels/vectors.h>

namespace Kernels {

const char* vectorInstructionSet() { return "none"; }

std::vector<const char*> vectorInstructionSets() { return {"none"}; }

void useVectorInstructionSet(const char*) {}

void interpolateColumnsInVectors(const float* const* rows, std::size_t width, const Filter& filter,
                                 float* out, std::size_t outStride)
{
    interpolateColumns(rows, width, filter, out, outStride);
}

void interpolateRowsInVectors(const float* const* rows, int count, int samples,
                              const Filter& filter, float* const* out, float* buffer)
{
    interpolateRows(rows, count, samples, filter, out, buffer);
}

void splitRowInVectors(const float* pixels, std::size_t count, float* chroma, float* alpha)
{
    splitRow(pixels, count, chroma, alpha);
}

void mergeRowInVectors(const float* chroma, const float* alpha, std::size_t count, float* pixels)
{
    mergeRow(chroma, alpha, count, pixels);
}

bool isRowMonochromeInVectors(const std::uint8_t* row, std::size_t count, int channels)
{
    return isRowMonochrome(row, count, channels);
}

bool isRowMonochromeInVectors(const std::uint16_t* row, std::size_t count, int channels)
{
    return isRowMonochrome(row, count, channels);
}

bool isRowMonochromeInVectors(const float* row, std::size_t count, int channels)
{
    return isRowMonochrome(row, count, channels);
}

void makeRowMonochromeInVectors(std::uint16_t* row, std::size_t count)
{
    makeRowMonochrome(row, count);
}

std::size_t encodeBase64InVectors(const std::uint8_t* bytes, std::size_t count,
                                  const char* alphabet, char* text)
{
    return encodeBase64(bytes, count, alphabet, text);
}

std::size_t decodeBase64InVectors(const char* text, std::size_t count, std::uint8_t* bytes)
{
    return decodeBase64(text, count, bytes);
}

} // namespace Kernels

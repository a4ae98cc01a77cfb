// SPDX-License-Identifier: Apache-2.0
//
// What the library runs for the loops in vectors: those of the part, or where there is none, as in
// a build without Highway, the plain loops.
#include <imageutils/vectorloops.h>

#include <imageutils/kernels/vectors.h>
#include <platform/part.h>

namespace Kernels {
namespace {

const char* noInstructionSet() { return "none"; }

constexpr VectorLoops plainLoops = {
    noInstructionSet,  interpolateColumns, interpolateRows, splitRow,
    mergeRow,          isRowMonochrome,    isRowMonochrome, isRowMonochrome,
    makeRowMonochrome, encodeBase64,       decodeBase64,
};

const VectorLoops& loops()
{
    static const auto part = reinterpret_cast<VectorLoopsPart*>(
        Platform::openPart("imageutils-vectors", "imageutilsPart").function);
    static const VectorLoops& opened = part ? *part() : plainLoops;
    return opened;
}

} // namespace

const char* vectorInstructionSet() { return loops().instructionSet(); }

void interpolateColumnsInVectors(const float* const* rows, std::size_t width, const Filter& filter,
                                 float* out, std::size_t outStride)
{
    loops().interpolateColumns(rows, width, filter, out, outStride);
}

void interpolateRowsInVectors(const float* const* rows, int count, int samples,
                              const Filter& filter, float* const* out, float* buffer)
{
    loops().interpolateRows(rows, count, samples, filter, out, buffer);
}

void splitRowInVectors(const float* pixels, std::size_t count, float* chroma, float* alpha)
{
    loops().splitRow(pixels, count, chroma, alpha);
}

void mergeRowInVectors(const float* chroma, const float* alpha, std::size_t count, float* pixels)
{
    loops().mergeRow(chroma, alpha, count, pixels);
}

bool isRowMonochromeInVectors(const std::uint8_t* row, std::size_t count, int channels)
{
    return loops().isRowMonochrome8(row, count, channels);
}

bool isRowMonochromeInVectors(const std::uint16_t* row, std::size_t count, int channels)
{
    return loops().isRowMonochrome16(row, count, channels);
}

bool isRowMonochromeInVectors(const float* row, std::size_t count, int channels)
{
    return loops().isRowMonochromeFloat(row, count, channels);
}

void makeRowMonochromeInVectors(std::uint16_t* row, std::size_t count)
{
    loops().makeRowMonochrome(row, count);
}

std::size_t encodeBase64InVectors(const std::uint8_t* bytes, std::size_t count,
                                  const char* alphabet, char* text)
{
    return loops().encodeBase64(bytes, count, alphabet, text);
}

std::size_t decodeBase64InVectors(const char* text, std::size_t count, std::uint8_t* bytes)
{
    return loops().decodeBase64(text, count, bytes);
}

} // namespace Kernels

// SPDX-License-Identifier: Apache-2.0
//
// The loops in vectors where there is no library to write them with: the plain ones.
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/vectors.h>

namespace Kernels {

const char* vectorInstructionSet() { return "none"; }

std::vector<const char*> vectorInstructionSets() { return {"none"}; }

void useVectorInstructionSet(const char*) {}

void interpolateLineInVectors(const float* line, std::size_t width, const Filter& filter,
                              float* out, std::size_t outStride)
{
    interpolateLine(line, width, filter, out, outStride);
}

void interpolateRowsInVectors(const float* const* rows, int count, int samples,
                              const Filter& filter, float* const* out, float* buffer)
{
    interpolateRows(rows, count, samples, filter, out, buffer);
}

} // namespace Kernels

// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils_export.h>
#include <imageutils/kernels/vectors.h>
#include <imageutils/vectorloops.h>

extern "C" IMAGEUTILS_EXPORT VectorLoopsPart imageutilsPart;

const VectorLoops* imageutilsPart()
{
    using namespace Kernels;
    static constexpr VectorLoops loops = {
        vectorInstructionSet,     interpolateColumnsInVectors, interpolateRowsInVectors,
        splitRowInVectors,        mergeRowInVectors,           isRowMonochromeInVectors,
        isRowMonochromeInVectors, isRowMonochromeInVectors,    makeRowMonochromeInVectors,
        encodeBase64InVectors,    decodeBase64InVectors,
    };
    return &loops;
}

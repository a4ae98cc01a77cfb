// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>

/// The loops that come in vectors, and the name of the instruction set that these are made of. The
/// vectors are a part of their own, because Highway measures the clock of the machine while it is
/// loaded: a quarter of what a start took.
struct VectorLoops
{
    const char* (*instructionSet)();
    decltype(&Kernels::interpolateColumns) interpolateColumns;
    decltype(&Kernels::interpolateRows) interpolateRows;
    decltype(&Kernels::splitRow) splitRow;
    decltype(&Kernels::mergeRow) mergeRow;
    bool (*isRowMonochrome8)(const std::uint8_t* row, std::size_t count, int channels);
    bool (*isRowMonochrome16)(const std::uint16_t* row, std::size_t count, int channels);
    bool (*isRowMonochromeFloat)(const float* row, std::size_t count, int channels);
    decltype(&Kernels::makeRowMonochrome) makeRowMonochrome;
    decltype(&Kernels::encodeBase64) encodeBase64;
    decltype(&Kernels::decodeBase64) decodeBase64;
};

/// The function that the part exports by the name `imageutilsPart`; what it gives is never null and
/// never goes away.
extern "C" using VectorLoopsPart = const VectorLoops * ();

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

/// The loops of this folder exist twice: as scalar code in `Kernels::Scalar`, which is the
/// reference, and as SIMD code. `Kernels::splitRow` and its siblings run the SIMD code that was
/// compiled for the best instruction set of the CPU, and give the same bits. In a build without
/// Highway, and on a CPU without SIMD support, they run the scalar code.
namespace Kernels {

/// The name of the instruction set that the loops use: "AVX2", "SSE4", "SSSE3", the compiler's
/// baseline ("SSE2", "NEON"), or "scalar".
const char* simdInstructionSet();

/// The names of all instruction sets that this build and this CPU have, best first. For tests.
std::vector<const char*> simdInstructionSets();

/// Makes the loops use the instruction set `name` of `simdInstructionSets`, or the best one if
/// `name` is null. For tests; no loop may run during the call.
void useSimdInstructionSet(const char* name);

} // namespace Kernels

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

// Included first by every source in vectors. Such a source is compiled once for each instruction
// set (hwy/foreach_target.h includes it again and again), and the best set that the processor has
// is taken at run time.

// Left out: the sets beyond AVX2 (on x86 a better set is a lower bit), with which no loop was
// faster, for these loops wait for memory, and merging took nearly twice as long; and those whose
// vectors have no size at compile time, so that no array can hold sums.
#define HWY_DISABLED_TARGETS                                                                       \
    ((HWY_AVX2 - 1) | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)

namespace Kernels {

/// The name of the instruction set that the vectors are made of here, "none" for the plain loops.
const char* vectorInstructionSet();

/// Those that this build has and this processor too, the best one first. For tests.
std::vector<const char*> vectorInstructionSets();

/// Lets vectors be made of this one of `vectorInstructionSets` alone, of the best one for null. For
/// tests; no loop may run meanwhile.
void useVectorInstructionSet(const char* name);

} // namespace Kernels

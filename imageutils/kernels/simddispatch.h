// SPDX-License-Identifier: Apache-2.0
#pragma once

// Included first by every `*_simd.cpp`. Highway compiles such a file once for each instruction set:
// `hwy/foreach_target.h` includes it again for each of them.
//
// Highway's own dispatcher is not used. It lives in libhwy, whose load-time constructor measures
// the CPU's clock for 2.7 ms, as long as all of OpenCV's core takes to load. Only Highway's headers
// are needed here, and the table below replaces the dispatcher.

#include <array>
#include <cstddef>

// Instruction sets beyond AVX2 are left out (on x86 a lower bit is a better set): these loops wait
// for memory, so no loop was faster with AVX-512, and merging took nearly twice as long. Scalable
// vectors are left out because no array can hold them.
#define HWY_DISABLED_TARGETS                                                                       \
    ((HWY_AVX2 - 1) | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
// The loops do not need these extensions of SSE4 and AVX2, so the CPU is not asked for them either.
#define HWY_DISABLE_PCLMUL_AES
#define HWY_DISABLE_BMI2_FMA
#define HWY_DISABLE_F16C

#include <hwy/detect_targets.h>

namespace Kernels {

/// The implementations of one function, best first. Null where this build has none; the last one,
/// for the instruction set that the compiler assumes anyway, always exists.
template<typename Function>
using Implementations = std::array<Function*, 4>;

/// The index into `Implementations` that was chosen for this CPU.
std::size_t implementationIndex();

} // namespace Kernels

#if HWY_STATIC_TARGET == HWY_SCALAR
#define IMAGEUTILS_BASELINE(function) &Scalar::function
#else
#define IMAGEUTILS_BASELINE(function) &HWY_STATIC_DISPATCH(function)
#endif

/// Defines the table of `function`, whose type is `Type`. To be used where HWY_ONCE holds.
#define IMAGEUTILS_IMPLEMENTATIONS(Type, function)                                                 \
    Implementations<Type>                                                                          \
    {                                                                                              \
        HWY_CHOOSE_AVX2(function), HWY_CHOOSE_SSE4(function), HWY_CHOOSE_SSSE3(function),          \
            IMAGEUTILS_BASELINE(function)                                                          \
    }

/// The chosen implementation of the function `Kernels::function`, which has only one overload.
#define IMAGEUTILS_BEST(function)                                                                  \
    IMAGEUTILS_IMPLEMENTATIONS(decltype(Scalar::function), function)[implementationIndex()]

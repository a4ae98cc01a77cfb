// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/simd.h>
#include <imageutils/kernels/simddispatch.h>

#include <atomic>
#include <cstring>

#define HWY_TARGET_INCLUDE "imageutils/kernels/simd.cpp"
#include <hwy/foreach_target.h> // IWYU pragma: keep
#include <hwy/highway.h>

// Compiled for each instruction set, so that the answer tells which code really ran.
#if HWY_TARGET != HWY_SCALAR
HWY_BEFORE_NAMESPACE();
namespace Kernels::HWY_NAMESPACE {
namespace {

const char* instructionSetName() { return &HWY_STR(HWY_NAMESPACE)[std::strlen("N_")]; }

} // namespace
} // namespace Kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif

#if HWY_ONCE
namespace Kernels {
namespace Scalar {
namespace {

[[maybe_unused]] const char* instructionSetName() { return "scalar"; }

} // namespace
} // namespace Scalar

namespace {

constexpr Implementations<const char*()> names =
    IMAGEUTILS_IMPLEMENTATIONS(const char*(), instructionSetName);

/// Whether the CPU, and the operating system where it must save wider registers, supports
/// implementation `index`. Only GCC and Clang can be asked; elsewhere the baseline is used.
bool isSupported(std::size_t index)
{
#if HWY_ARCH_X86 && (HWY_COMPILER_GCC || HWY_COMPILER_CLANG)
    switch (index) {
    case 0:
        return __builtin_cpu_supports("avx2");
    case 1:
        return __builtin_cpu_supports("sse4.2");
    case 2:
        return __builtin_cpu_supports("ssse3");
    default:
        break;
    }
#endif
    return index == names.size() - 1;
}

std::size_t bestIndex(const char* name)
{
    std::size_t index = 0;
    while (!names[index] || !isSupported(index) || (name && std::strcmp(names[index](), name) != 0))
        ++index;
    return index;
}

constexpr std::size_t unknown = names.size();
std::atomic<std::size_t> chosen = unknown;

} // namespace

std::size_t implementationIndex()
{
    std::size_t index = chosen.load(std::memory_order_relaxed);
    if (index == unknown) // several threads may find the same answer at once
        chosen.store(index = bestIndex(nullptr), std::memory_order_relaxed);
    return index;
}

const char* simdInstructionSet() { return names[implementationIndex()](); }

std::vector<const char*> simdInstructionSets()
{
    std::vector<const char*> sets;
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (names[index] && isSupported(index))
            sets.push_back(names[index]());
    }
    return sets;
}

void useSimdInstructionSet(const char* name) { chosen = bestIndex(name); }

} // namespace Kernels
#endif

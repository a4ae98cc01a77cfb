// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/vectors.h>

#include <cstdint>
#include <string_view>

#define HWY_TARGET_INCLUDE "imageutils/kernels/vectors.cpp"
#include <hwy/foreach_target.h> // IWYU pragma: keep
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace Kernels::HWY_NAMESPACE {
namespace {

const char* name() { return hwy::TargetName(HWY_TARGET); }

} // namespace
} // namespace Kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Kernels {

HWY_EXPORT(name);

const char* vectorInstructionSet() { return HWY_DYNAMIC_DISPATCH(name)(); }

std::vector<const char*> vectorInstructionSets()
{
    std::vector<const char*> names;
    for (const std::int64_t set : hwy::SupportedAndGeneratedTargets())
        names.push_back(hwy::TargetName(set));
    return names;
}

void useVectorInstructionSet(const char* name)
{
    hwy::SetSupportedTargetsForTest(0);
    for (const std::int64_t set : hwy::SupportedAndGeneratedTargets()) {
        if (name && std::string_view(name) == hwy::TargetName(set))
            hwy::SetSupportedTargetsForTest(set);
    }
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

} // namespace Kernels
#endif

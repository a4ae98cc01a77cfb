// SPDX-License-Identifier: Apache-2.0
#include "../addressspace.h"

#include <algorithm>
#include <thread>

#include <windows.h>

#include <psapi.h>

namespace {

/// Memory that this process has been promised, in bytes; 0 where the system does not tell.
std::int64_t committed()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
        return 0;
    return std::int64_t(counters.PagefileUsage);
}

/// A job that holds this process alone; null where the system allows none.
HANDLE ownJob()
{
    static const HANDLE job = [] {
        const HANDLE made = CreateJobObjectW(nullptr, nullptr);
        return made && AssignProcessToJobObject(made, GetCurrentProcess()) ? made : nullptr;
    }();
    return job;
}

} // namespace

/// Beside the pixels there are libraries that are loaded later, and for each thread of a pool a
/// stack and blocks that its allocator keeps.
void AddressSpace::limit(std::int64_t bytes)
{
    constexpr std::int64_t mib = 1024 * 1024;
    const auto processors = std::int64_t(std::max(1U, std::thread::hardware_concurrency()));
    const std::int64_t used = committed();
    if (used <= 0 || !ownJob())
        return;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_PROCESS_MEMORY;
    limits.ProcessMemoryLimit = SIZE_T(used + bytes + (512 + 128 * processors) * mib);
    SetInformationJobObject(ownJob(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

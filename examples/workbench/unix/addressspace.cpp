// SPDX-License-Identifier: Apache-2.0
#include "../addressspace.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

namespace {

/// 0 where the system does not tell.
std::int64_t mappedBytes()
{
    long long pages = 0;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%lld", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return pages * sysconf(_SC_PAGESIZE);
}

} // namespace

void AddressSpace::limit(std::int64_t bytes)
{
    const std::int64_t mapped = mappedBytes();
    rlimit limits{};
    if (mapped <= 0 || getrlimit(RLIMIT_AS, &limits) != 0)
        return;
    limits.rlim_cur = std::min(limits.rlim_max, rlim_t(mapped) + rlim_t(bytes));
    setrlimit(RLIMIT_AS, &limits);
}

std::int64_t AddressSpace::ownNeed()
{
    constexpr std::int64_t mib = 1024 * 1024;
    const auto processors = std::int64_t(std::max(1U, std::thread::hardware_concurrency()));
    return (1024 + 256 * processors) * mib;
}

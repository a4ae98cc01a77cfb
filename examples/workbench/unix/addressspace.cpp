// SPDX-License-Identifier: Apache-2.0
#include "../addressspace.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

namespace {

/// What the system counts against its two limits, in bytes: all that is mapped, and private memory
/// that can be written.
struct Usage
{
    std::int64_t mapped = 0; ///< 0 where the system does not tell
    std::int64_t writable = 0;
};

Usage currentUsage()
{
    long long mapped = 0;
    long long writable = 0;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%lld %*d %*d %*d %*d %lld", &mapped, &writable) != 2)
            mapped = 0;
        std::fclose(file);
    }
    const std::int64_t page = sysconf(_SC_PAGESIZE);
    return {mapped * page, writable * page};
}

void setLimit(int resource, std::int64_t bytes)
{
    rlimit limits{};
    if (getrlimit(resource, &limits) != 0)
        return;
    limits.rlim_cur = std::min(limits.rlim_max, rlim_t(bytes));
    setrlimit(resource, &limits);
}

} // namespace

/// Beside the pixels there are libraries that are loaded later, and for each thread of a pool a
/// stack and an arena of the allocator, which maps more than it can write to.
void AddressSpace::limit(std::int64_t bytes)
{
    constexpr std::int64_t mib = 1024 * 1024;
    const auto processors = std::int64_t(std::max(1U, std::thread::hardware_concurrency()));
    const Usage usage = currentUsage();
    if (usage.mapped <= 0)
        return;
    setLimit(RLIMIT_AS, usage.mapped + bytes + (1024 + 256 * processors) * mib);
    setLimit(RLIMIT_DATA, usage.writable + bytes + (512 + 128 * processors) * mib);
}

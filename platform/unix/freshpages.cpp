// SPDX-License-Identifier: Apache-2.0
#include <platform/freshpages.h>

#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

#ifdef MADV_POPULATE_WRITE

// Whole pages only; Linux knows the question since 5.14, and whether it was answered makes no
// difference to what follows.
void Platform::backPages(void* begin, std::size_t bytes)
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t before = (page - reinterpret_cast<std::uintptr_t>(begin) % page) % page;
    if (bytes < before + page)
        return;
    const std::size_t whole = (bytes - before) / page * page;
    madvise(static_cast<std::byte*>(begin) + before, whole, MADV_POPULATE_WRITE);
}

#else

void Platform::backPages(void*, std::size_t) {}

#endif

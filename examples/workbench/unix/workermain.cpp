// SPDX-License-Identifier: Apache-2.0
#include "../workerprocess.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// Gives back the pages of an object's file that are only read. The loader has touched the symbols
/// of all libraries, some 60 MB, and few of these pages are needed again. They stay in the system's
/// cache of files.
int releaseReadOnlyPages(dl_phdr_info* object, std::size_t, void*)
{
    const auto page = ElfW(Addr)(sysconf(_SC_PAGESIZE));
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = object->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) // what was relocated stays
            continue;
        const ElfW(Addr) begin = object->dlpi_addr + segment.p_vaddr;
        const ElfW(Addr) end = begin + segment.p_memsz;
        const ElfW(Addr) first = begin / page * page;
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the loader gives addresses as numbers
        madvise(reinterpret_cast<void*>(first), end - first, MADV_DONTNEED);
    }
    return 0;
}

/// The module with the work, in the launcher's own folder. The folder is named, because a sanitizer
/// calls dlopen in the program's place, and the loader then does not know the program's RUNPATH.
std::filesystem::path workModule()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).replace_filename(WORKBENCH_WORK);
}

/// Whether the process can have some more threads. Libraries behind OpenImageIO make threads while
/// they are loaded, and abort the process or wait for ever where they cannot.
bool canHaveThreads()
{
    constexpr int needed = 8;
    std::mutex mutex;
    std::unique_lock gate(mutex);
    std::vector<std::thread> threads;
    try {
        while (threads.size() < needed)
            threads.emplace_back([&mutex] { const std::lock_guard wait(mutex); });
    } catch (const std::system_error&) {
        // as few as there are
    }
    gate.unlock();
    for (std::thread& thread : threads)
        thread.join();
    return threads.size() == needed;
}

} // namespace

/// The launcher of a worker process, which opens the module with the work. The dynamic loader looks
/// for each of 160,000 symbols in all libraries that are loaded together, in their order, and most
/// of the symbols belong to five libraries behind a hundred others (57,000 to OpenVDB alone). A
/// library that is opened by itself is searched first for its own symbols. That halves the time in
/// which a process is ready. A library that is not there is opened by the module, if at all.
int main(int argc, char** argv)
{
    constexpr int niceness = 5; // a third of the usual share
    if (argc > 1 && std::strcmp(argv[1], lowPriorityArgument) == 0)
        (void)nice(niceness);
    if (!canHaveThreads()) {
        std::fputs("the system has no threads left\n", stderr);
        return 1;
    }
    constexpr const char* libraries[] = {WORKBENCH_EARLY_LIBRARIES nullptr};
    for (const char* const* name = libraries; *name; ++name)
        dlopen(*name, RTLD_LAZY);
    void* const work = dlopen(workModule().c_str(), RTLD_LAZY);
    void* const run = work ? dlsym(work, "runWorker") : nullptr;
    if (!run) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    dl_iterate_phdr(releaseReadOnlyPages, nullptr);
    return reinterpret_cast<decltype(&runWorker)>(run)(argc, argv);
}

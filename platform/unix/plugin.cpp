// SPDX-License-Identifier: Apache-2.0
#include <platform/plugin.h>

#include <dlfcn.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace {

/// The absolute path of the file from which `address` was loaded, as the kernel knows it; empty
/// where it does not say. The loader may have been given a path relative to a working folder that
/// the program has left since.
std::string mappedFile(std::uintptr_t address)
{
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        std::size_t dash = 0, path = line.find('/');
        const std::uintptr_t first = std::stoull(line, &dash, 16);
        if (path != line.npos && address >= first &&
            address < std::stoull(line.substr(dash + 1), nullptr, 16))
            return line.substr(path);
    }
    return {};
}

/// The absolute folder of the library, or of the program, that holds this code; it ends with '/'.
/// Empty where the system does not say: never the working folder.
std::string ownFolder()
{
    void* const address = reinterpret_cast<void*>(&ownFolder);
    Dl_info self = {};
    std::string file;
    if (dladdr(address, &self) != 0 && self.dli_fname)
        file = self.dli_fname;
    if (!file.starts_with('/'))
        file = mappedFile(reinterpret_cast<std::uintptr_t>(address));
    return file.substr(0, file.rfind('/') + 1); // npos + 1 is 0
}

/// Whether the process can have some more threads. Libraries of OpenImageIO and OpenCV make
/// threads while they are opened, and abort the program or wait for ever where they cannot.
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

std::string Platform::installedFile(const char* name)
{
    const std::string own = ownFolder();
    for (const char* const folder : {IMAGEUTILS_PLUGIN_FOLDERS}) {
        const std::string file = std::string(own).append(folder).append("/").append(name);
        if (!own.empty() && access(file.c_str(), F_OK) == 0)
            return file;
    }
    return {};
}

// Opened by its own path, not through a run path: sanitizers intercept `dlopen`, which then
// searches the run path of the sanitizer.
Platform::PluginFunction Platform::openPlugin(const char* plugin, const char* function)
{
    const std::string name = std::string(plugin) + ".so";
    const std::string file = installedFile(name.c_str());
    if (file.empty()) // a name without a folder would be searched for in the system's folders
        return {nullptr, name + ": not installed"};
    if (!canHaveThreads())
        return {nullptr, "the system has no threads left"};
    void* const opened = dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* const symbol = opened ? dlsym(opened, function) : nullptr;
    if (!symbol) {
        const char* const error = dlerror();
        return {nullptr, error ? error : file};
    }
    return {reinterpret_cast<void (*)()>(symbol), {}};
}

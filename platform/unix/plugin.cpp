// SPDX-License-Identifier: Apache-2.0
#include <platform/plugin.h>

#include <dlfcn.h>
#include <unistd.h>

namespace {

/// The folder of the library, or of the program, that holds this code; it ends with '/'. Empty for
/// a program that was found through the search path: never the folder that it works in.
std::string ownFolder()
{
    Dl_info self = {};
    if (dladdr(reinterpret_cast<void*>(&ownFolder), &self) == 0 || !self.dli_fname)
        return {};
    const std::string file = self.dli_fname;
    return file.substr(0, file.rfind('/') + 1); // npos + 1 is 0
}

/// The file of `part`; where there is none, its name alone.
std::string fileOf(const char* part)
{
    const std::string name = std::string("/") + part + ".so";
    const std::string own = ownFolder();
    for (const char* const folder : {IMAGEUTILS_PLUGIN_FOLDERS}) {
        const std::string file = std::string(own).append(folder).append(name);
        if (!own.empty() && access(file.c_str(), F_OK) == 0)
            return file;
    }
    return name.substr(1);
}

} // namespace

// By its own path, not through a run path: sanitizers stand between a caller and `dlopen`, which
// then looks at the run path of the sanitizer.
Platform::PluginFunction Platform::openPlugin(const char* part, const char* function)
{
    const std::string file = fileOf(part);
    if (file.find('/') == std::string::npos)
        return {nullptr, file + ": not installed"};
    void* const opened = dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* const symbol = opened ? dlsym(opened, function) : nullptr;
    if (!symbol) {
        const char* const error = dlerror();
        return {nullptr, error ? error : file};
    }
    return {reinterpret_cast<void (*)()>(symbol), {}};
}

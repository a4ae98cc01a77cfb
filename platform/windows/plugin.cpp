// SPDX-License-Identifier: Apache-2.0
#include <platform/plugin.h>

#include <platform/windows/widestring.h>

#include <algorithm>
#include <windows.h>

namespace {

/// The folder of the library, or of the program, that holds this code; it ends with '\'.
std::wstring ownFolder()
{
    constexpr DWORD longestPath = 32768;
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ownFolder), &self);
    std::wstring file(longestPath, L'\0');
    file.resize(GetModuleFileNameW(self, file.data(), longestPath));
    return file.substr(0, file.rfind(L'\\') + 1); // npos + 1 is 0
}

/// The opened plug-in; null where no folder has it.
HMODULE opened(const char* plugin)
{
    for (const char* const folder : {IMAGEUTILS_PLUGIN_FOLDERS}) {
        // With backslashes alone, as the altered search path wants it.
        std::wstring file =
            ownFolder() + Platform::wideString(std::string(folder) + '\\' + plugin + ".dll");
        std::replace(file.begin(), file.end(), L'/', L'\\');
        if (HMODULE library = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH))
            return library;
    }
    return nullptr;
}

} // namespace

Platform::PluginFunction Platform::openPlugin(const char* plugin, const char* function)
{
    HMODULE library = opened(plugin);
    const FARPROC found = library ? GetProcAddress(library, function) : nullptr;
    if (!found)
        return {nullptr, std::string(plugin) + ".dll: error " + std::to_string(GetLastError())};
    // By way of void*: the compiler warns of a cast between types of functions.
    return {reinterpret_cast<void (*)()>(reinterpret_cast<void*>(found)), {}};
}

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

/// The file `name` in the folder of the plug-ins, with backslashes alone; empty where there is
/// none.
std::wstring fileOf(const std::string& name)
{
    for (const char* const folder : {IMAGEUTILS_PLUGIN_FOLDERS}) {
        std::wstring file = ownFolder() + Platform::wideString(std::string(folder) + '\\' + name);
        std::replace(file.begin(), file.end(), L'/', L'\\');
        if (GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES)
            return file;
    }
    return {};
}

/// The libraries that the plug-in needs lie beside the program, or else in a folder of PATH.
HMODULE openLibrary(const std::wstring& file)
{
    constexpr DWORD fixedFolders =
        LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
    HMODULE library = LoadLibraryExW(file.c_str(), nullptr, fixedFolders);
    return library ? library : LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

} // namespace

std::string Platform::installedFile(const char* name)
{
    const std::wstring file = fileOf(name);
    const int length = int(file.size());
    std::string utf8(std::size_t(length) * 3, '\0'); // no character takes more bytes
    utf8.resize(std::size_t(WideCharToMultiByte(CP_UTF8, 0, file.data(), length, utf8.data(),
                                                int(utf8.size()), nullptr, nullptr)));
    return utf8;
}

Platform::PluginFunction Platform::openPlugin(const char* plugin, const char* function)
{
    const std::wstring file = fileOf(std::string(plugin) + ".dll");
    if (file.empty())
        return {nullptr, std::string(plugin) + ".dll: not installed"};
    HMODULE library = openLibrary(file);
    const FARPROC found = library ? GetProcAddress(library, function) : nullptr;
    if (!found)
        return {nullptr, std::string(plugin) + ".dll: error " + std::to_string(GetLastError())};
    // By way of void*: the compiler warns of a cast between types of functions.
    return {reinterpret_cast<void (*)()>(reinterpret_cast<void*>(found)), {}};
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <string>

namespace Platform {

/// A function of a plug-in, or the reason why it cannot be called.
struct PluginFunction
{
    void (*function)() = nullptr; ///< to be cast to its true type; valid until the program ends
    std::string error;            ///< the system's words, UTF-8, where `function` is null
};

/// Opens the plug-in `plugin`, a small shared library of our own, and gives its function
/// `function`. The plug-ins of the library's version lie in a folder beside the library; neither
/// the system's search path nor the working folder is searched. A plug-in stays open.
PluginFunction openPlugin(const char* plugin, const char* function);

/// The absolute path, UTF-8, of the file `name` in the folder of the plug-ins; empty where there is
/// none.
std::string installedFile(const char* name);

/// A plug-in that is opened at first use. A failure is not remembered: it may have been a moment
/// without free file descriptors.
class Plugin
{
public:
    constexpr explicit Plugin(const char* name) : m_name(name) {}

    /// The plug-in's function `imageutilsPlugin`.
    PluginFunction function()
    {
        if (const auto known = m_function.load(std::memory_order_acquire))
            return {known, {}};
        PluginFunction opened = openPlugin(m_name, "imageutilsPlugin");
        m_function.store(opened.function, std::memory_order_release);
        return opened;
    }

private:
    const char* m_name;
    std::atomic<void (*)()> m_function = nullptr;
};

} // namespace Platform

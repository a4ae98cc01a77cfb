// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace Platform {

/// A function of a part of the library, or the reason why there is none.
struct PluginFunction
{
    void (*function)() = nullptr; ///< to be cast to what it is; stays valid until the program ends
    std::string error;            ///< the system's words, UTF-8, where `function` is null
};

/// The function `function` of the part `part`: a small shared library of our own that is opened at
/// first need because of what it brings along. Parts lie in the folder that the build chose, beside
/// the code that asks; the system's search path plays no role. A part stays open once it is.
PluginFunction openPlugin(const char* part, const char* function);

} // namespace Platform

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace Platform {

/// `text` (UTF-8) as the wide characters of the system's calls; bytes that are not UTF-8 become
/// U+FFFD.
std::wstring wideString(const std::string& text);

} // namespace Platform

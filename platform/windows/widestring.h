// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace Platform {

/// `text` (UTF-8) as the wide characters of the system's calls; what is no UTF-8 becomes U+FFFD.
std::wstring wideString(const std::string& text);

} // namespace Platform

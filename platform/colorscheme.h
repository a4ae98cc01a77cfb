// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace Platform {

/// The user's setting for all programs of the desktop; `NoAnswer` if it could not be read.
enum class ColorScheme { NoAnswer, NoPreference, Dark, Light };

/// The colour scheme that the desktop's settings ask for. Waits for the answer, not longer than
/// `limit`; connecting to a bus that accepts connections and does not answer may take longer.
ColorScheme preferredColorScheme(std::chrono::milliseconds limit);

} // namespace Platform

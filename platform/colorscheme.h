// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace Platform {

/// What the user has set for all programs of the desktop, and `NoAnswer` where nobody told.
enum class ColorScheme { NoAnswer, NoPreference, Dark, Light };

/// The colour scheme that the desktop's settings ask for. Waits for the answer, not longer than
/// `limit`; connecting to a bus that accepts connections and then says nothing may take longer.
ColorScheme preferredColorScheme(std::chrono::milliseconds limit);

} // namespace Platform

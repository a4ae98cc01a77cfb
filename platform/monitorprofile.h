// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace Platform {

/// The step at which reading a monitor's colour profile ended.
enum class MonitorProfileStep {
    Read,       ///< the last step: the profile was read
    NoContext,  ///< there is no display, or its window system does not give profiles
    NoProfile,  ///< the monitor has no profile, or one above `MaxProfileBytes`
    CannotOpen, ///< its file cannot be opened or read
    NoHeader,   ///< the bytes do not begin like an ICC profile
};

struct MonitorProfile
{
    MonitorProfileStep step = MonitorProfileStep::NoContext;
    std::vector<unsigned char> bytes; ///< the whole ICC profile; empty unless `step` is Read
};

/// No profile is longer than this; real ones stay below 4 MiB.
inline constexpr std::size_t MaxProfileBytes = std::size_t(16) << 20;

/// The ICC profile of the monitor under the active window. `screenName` (UTF-8) names that monitor
/// where the window system has names for them. Called on the thread of the user interface, while an
/// application object exists; after connecting, all services together may take `limit`.
MonitorProfile monitorProfile(const std::string& screenName, std::chrono::milliseconds limit);

} // namespace Platform

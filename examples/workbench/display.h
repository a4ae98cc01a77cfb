// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Desktop {

/// Whether the desktop that the environment names answers, so that a window can be shown. Qt ends
/// the program when it does not. Takes at most 3 s. Needs no application object.
bool isReachable();

} // namespace Desktop

// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The user's wish to end the program (Ctrl+C, or the system's signal to terminate), for a program
/// that leaves nothing unfinished behind.
namespace Interruption {

/// From now on the first wish is only noted; a second one ends the program at once.
void install();

/// Whether the program is to end.
bool isWanted();

/// Ends the program as the signal that was noted would have done.
void obey();

} // namespace Interruption

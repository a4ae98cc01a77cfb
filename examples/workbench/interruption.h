// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The user's wish to end the program (Ctrl+C, or the system's signal to terminate), for a program
/// that leaves nothing unfinished behind.
namespace Interruption {

/// From now on the program is not ended by what it writes: a reader that has gone and a file beyond
/// the user's limit are errors of the write, as a full disk is.
void ignoreWriteSignals();

/// From now on a wish is noted for `isWanted`. The third one ends the program at once.
void install();

/// From now on no wish is heeded: a worker process gets the terminal's Ctrl+C as well as the
/// program, which ends its workers itself.
void ignore();

/// Whether the program is to end.
bool isWanted();

/// Ends the program as the signal that was noted would have done.
void obey();

} // namespace Interruption

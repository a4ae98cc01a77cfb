// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Requests to end the program (Ctrl+C, or the system's signal to terminate). They are recorded, so
/// that the program can remove its unfinished files before it ends.
namespace Interruption {

/// From now on, writing to a closed pipe or beyond the user's limit of file sizes fails with an
/// error, as on a full disk, instead of ending the program by a signal.
void ignoreWriteSignals();

/// From now on a request is recorded for `isWanted`. The third one ends the program immediately.
void install();

/// From now on requests are ignored. Worker processes do this: the terminal sends Ctrl+C to them as
/// well as to the program, and the program ends its workers itself.
void ignore();

/// Whether the program was requested to end.
bool isWanted();

/// Ends the program as the recorded signal would have done.
void obey();

} // namespace Interruption

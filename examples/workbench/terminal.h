// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// All writing to the standard and the error output goes through these functions: whole lines, and
/// one line of progress that never mixes with them. May be called from any thread. Control
/// characters of file names are written as U+FFFD, so that a line stays one line.
namespace Terminal {

/// Writes one line to the standard output.
void printLine(const QString& line);

/// Writes one line to the error output.
void printError(const QString& line);

/// Shows `text` as the line of progress, which replaces itself and vanishes before any other line.
/// Nothing where the error output is no terminal.
void showProgress(const QString& text);

/// Removes the line of progress.
void clearProgress();

/// Whether the reader of the standard output has gone, as `head` does after some lines.
bool isReaderGone();

/// Says on the error output why a line did not arrive on the standard output, if one did not; a
/// reader that has gone needs no explanation. Returns whether all lines arrived.
bool reportLostLines();

} // namespace Terminal

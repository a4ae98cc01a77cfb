// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"
#include "sources.h"

/// Shows a window with `sources` before and after, and takes them through the library meanwhile.
/// Returns the program's exit status when the window has been closed. Needs a `QGuiApplication`.
int runWindow(const Options& options, const QList<Source>& sources);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"
#include "sources.h"

/// Shows the window with `sources` until it is closed, or the program is interrupted. Returns the
/// program's exit status. Needs a `QGuiApplication`.
int runWindow(const Options& options, const QList<Source>& sources);

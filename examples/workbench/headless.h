// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"
#include "sources.h"

/// Takes `sources` through the library one after the other, without a window, with progress on a
/// terminal. Returns the program's exit status.
int runHeadless(const Options& options, const QList<Source>& sources);

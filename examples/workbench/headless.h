// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"
#include "sources.h"

/// Exports `sources` in worker processes, several at once, without a window. The reports come in
/// the order of `sources`, with progress on a terminal. Returns the program's exit status. Needs a
/// `QCoreApplication`.
int runHeadless(const Options& options, const QList<Source>& sources);

/// The bytes that the pixels of all photographs in work may take together.
qint64 memoryFor(const Options& options);

/// How many photographs are in work at once.
int jobsFor(const Options& options);

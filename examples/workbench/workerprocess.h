// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// The main function of a worker process (jobmessage.h says what goes in and out). It stands in a
/// module that only workers open, because OpenImageIO brings some 200 libraries, which take a
/// quarter of a second to load. Returns the exit status.
extern "C" Q_DECL_EXPORT int runWorkerProcess();

// SPDX-License-Identifier: Apache-2.0
//
// The program that was built without its window.
#include "display.h"
#include "runwindow.h"

bool Desktop::isReachable() { return false; }

int runWindow(const Options&, const QList<Source>&) { return 1; }

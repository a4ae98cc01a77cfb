// SPDX-License-Identifier: Apache-2.0
#include "display.h"

bool Desktop::isReachable() { return true; }

// SPDX-License-Identifier: Apache-2.0
#include <aiengine/machine.h>

aiengine::Processor aiengine::processor() { return {}; }

bool aiengine::isAppleMachine() { return false; }

std::pair<double, double> aiengine::memoryGiB() { return {}; }

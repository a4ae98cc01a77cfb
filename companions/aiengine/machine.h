// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

// The facts of the machine that only the operating system knows; the build chooses the source.
namespace aiengine {

struct Processor
{
    std::string name;  ///< for people, blanks at the ends and doubled ones taken out
    std::string maker; ///< the processor's own name of its maker, e.g. "GenuineIntel"
};

/// The first processor; unknown facts stay empty.
Processor processor();

/// Whether the machine is one of Apple's; false when the system does not tell.
bool isAppleMachine();

/// The memory in GiB: the total, and the amount available to new programs. Both 0 when unknown.
std::pair<double, double> memoryGiB();

} // namespace aiengine

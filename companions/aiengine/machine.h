// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

// What only the operating system knows of the machine; the build chooses the implementation.
namespace aiengine {

struct Processor
{
    std::string name;  ///< for people, blanks at the ends and doubled ones taken out
    std::string maker; ///< as the processor calls it itself, e.g. "GenuineIntel"
};

/// The first processor; what is not known stays empty.
Processor processor();

/// Whether the machine is one of Apple's; false where that is not known.
bool isAppleMachine();

/// The memory in GiB: all of it, and what new programs may have of it. Both 0 when not known.
std::pair<double, double> memoryGiB();

} // namespace aiengine

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// The memory that this process may map. Standard types only.
namespace AddressSpace {

/// Lets the process map `bytes` more than it has mapped now; an allocation beyond that fails. Does
/// nothing where the system has no limit for address space.
void limit(std::int64_t bytes);

/// What a process needs beside pixels: libraries opened later, and a stack and an arena of the
/// allocator for each thread of the libraries' pools. Most of it is mapped and never used.
std::int64_t ownNeed();

} // namespace AddressSpace

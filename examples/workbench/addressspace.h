// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// The memory that this process may map. Standard types only.
namespace AddressSpace {

/// Limits the process to `bytes` more address space than it uses now; larger allocations fail. Does
/// nothing where the system has no limit for address space.
void limit(std::int64_t bytes);

/// The address space, in bytes, that a process needs besides pixels: for libraries that are loaded
/// later, and for a stack and an allocator arena of each pool thread. Most of it is mapped and
/// never used.
std::int64_t ownNeed();

} // namespace AddressSpace

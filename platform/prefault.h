// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Platform {

/// Whether the `bytes` bytes from `begin` on are a large block of memory that no page of was
/// touched yet, so that prefaulting it pays off. Where huge pages pay off too, the system is
/// advised to use them for the block. Blocks below 4 MiB, and blocks that the allocator kept from
/// an earlier use, give false, as do systems without such a call.
bool isWorthPrefaulting(void* begin, std::size_t bytes);

/// Backs the pages of the range of `bytes` bytes from `begin` on with memory by one system call,
/// which costs a sixth of a page fault for each page. The contents stay. The pages at both ends
/// count only where they lie in the range as a whole. Several threads may call this for parts of
/// one block.
void prefault(void* begin, std::size_t bytes);

} // namespace Platform

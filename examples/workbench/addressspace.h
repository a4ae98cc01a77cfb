// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// The memory that this process may map. Standard types only.
namespace AddressSpace {

/// Limits the process to `bytes` more memory than it uses now, beside what libraries and threads
/// need; larger allocations fail. Does nothing where the system has no such limit.
void limit(std::int64_t bytes);

} // namespace AddressSpace

// SPDX-License-Identifier: Apache-2.0
#include <platform/prefault.h>

namespace Platform {

// PrefetchVirtualMemory only fetches pages that were written out, so Windows has no such call.

bool isWorthPrefaulting(void* /*begin*/, std::size_t /*bytes*/) { return false; }

void prefault(void* /*begin*/, std::size_t /*bytes*/) {}

} // namespace Platform

// SPDX-License-Identifier: Apache-2.0
#include <platform/freshpages.h>

namespace Platform {

// Nothing: what there is (PrefetchVirtualMemory) fetches pages that have been written out, no new
// ones.
FreshPages::FreshPages(void*, std::size_t) {}

void FreshPages::back(void*, std::size_t) {}

void FreshPages::backLargePage(std::byte*) {}

} // namespace Platform

// SPDX-License-Identifier: Apache-2.0
#include <platform/freshpages.h>

// Nothing: what there is (PrefetchVirtualMemory) fetches pages that have been written out, no new
// ones.
void Platform::backPages(void*, std::size_t) {}

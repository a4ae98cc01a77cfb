// SPDX-License-Identifier: Apache-2.0
#include <platform/freshpages.h>

namespace Platform {

FreshPages::FreshPages(void*, std::size_t) {}

void FreshPages::back(void*, std::size_t) {}

void FreshPages::backLargePage(std::byte*) {}

} // namespace Platform

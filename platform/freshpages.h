// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Platform {

/// Asks the system to put memory behind the `bytes` bytes from `begin` on in one go; otherwise each
/// page is asked for when it is first written to, which costs a third more. What the memory holds
/// stays. Nothing happens where the system has no such question or refuses.
void backPages(void* begin, std::size_t bytes);

} // namespace Platform

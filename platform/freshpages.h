// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Platform {

/// A new block of memory that is about to be written to. Where it is large and was never touched,
/// the system must still put memory behind it; a block that the allocator had kept is left alone.
class FreshPages
{
public:
    /// The `bytes` bytes from `begin` on. They stay the caller's.
    FreshPages(void* begin, std::size_t bytes);

    /// Asks the system to put memory behind a part of the block in one go, in large pages where it
    /// has them at hand; otherwise a page is asked for by each first write, which takes up to six
    /// times as long. What the memory holds stays. Nothing happens where the system has no such
    /// question or refuses. Several threads may ask at once.
    void back(void* begin, std::size_t bytes);

private:
    void backLargePage(std::byte* begin);

    [[maybe_unused]] std::byte* m_begin = nullptr;
    [[maybe_unused]] std::byte* m_end = nullptr;
    std::atomic<std::int64_t> m_toSpendNs = 0;
};

} // namespace Platform

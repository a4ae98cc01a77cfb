// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <functional>
#include <list>

/// The memory that the photographs being processed may take together.
class MemoryBudget
{
public:
    explicit MemoryBudget(qint64 bytes) : m_bytes(bytes) {}

    /// Calls `grant` when `bytes` are free. A request that exceeds the whole budget is granted when
    /// nothing else is taken. Requests are granted in order; otherwise a stream of small
    /// photographs would keep a large one waiting for ever.
    void take(const void* holder, qint64 bytes, std::function<void()> grant);

    /// Returns what was granted to `holder`, or withdraws its request.
    void giveBack(const void* holder);

private:
    struct Share
    {
        const void* holder;
        qint64 bytes;
        std::function<void()> grant; ///< empty when it was called
    };

    void grantWaiting();

    const qint64 m_bytes;
    std::list<Share> m_shares; ///< in the order of the requests
};

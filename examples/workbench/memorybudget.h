// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <functional>
#include <list>

/// The memory that photographs in work may take together.
class MemoryBudget
{
public:
    explicit MemoryBudget(qint64 bytes) : m_bytes(bytes) {}

    /// Calls `grant` when `bytes` are free, or when nothing is taken and they are more than there
    /// are. Those who ask later wait behind, or small photographs would keep a large one out.
    void take(const void* holder, qint64 bytes, std::function<void()> grant);

    /// Ends what `holder` has, or waits for.
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

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <condition_variable>
#include <mutex>
#include <stop_token>

/// The memory that photographs in work may take together.
class MemoryBudget
{
public:
    explicit MemoryBudget(qint64 bytes) : m_bytes(bytes) {}

    /// Bytes that are taken while it lives.
    class Share
    {
    public:
        Share() = default;
        Share(MemoryBudget& budget, qint64 bytes) : m_budget(&budget), m_bytes(bytes) {}
        Share(Share&& other) noexcept;
        Share& operator=(Share&& other) noexcept;
        ~Share() { giveBack(); }

    private:
        void giveBack();

        MemoryBudget* m_budget = nullptr;
        qint64 m_bytes = 0;
    };

    /// `bytes` of the budget, or more than it has when nothing else is taken. Waits until they are
    /// free, and those who ask later wait behind, or small photographs would keep a large one out.
    /// An empty share when `stop` is requested meanwhile.
    Share take(qint64 bytes, const std::stop_token& stop);

private:
    const qint64 m_bytes;
    qint64 m_taken = 0;
    std::mutex m_turn; ///< held while waiting
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
};

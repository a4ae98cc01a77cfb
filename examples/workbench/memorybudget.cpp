// SPDX-License-Identifier: Apache-2.0
#include "memorybudget.h"

#include <utility>

MemoryBudget::Share::Share(Share&& other) noexcept
    : m_budget(std::exchange(other.m_budget, nullptr)), m_bytes(other.m_bytes)
{}

MemoryBudget::Share& MemoryBudget::Share::operator=(Share&& other) noexcept
{
    giveBack();
    m_budget = std::exchange(other.m_budget, nullptr);
    m_bytes = other.m_bytes;
    return *this;
}

void MemoryBudget::Share::giveBack()
{
    if (!m_budget)
        return;
    {
        const std::lock_guard lock(m_budget->m_mutex);
        m_budget->m_taken -= m_bytes;
    }
    m_budget->m_changed.notify_all();
    m_budget = nullptr;
}

MemoryBudget::Share MemoryBudget::take(qint64 bytes, const std::stop_token& stop)
{
    const std::lock_guard turn(m_turn);
    std::unique_lock lock(m_mutex);
    const auto fits = [&] { return m_taken == 0 || m_taken + bytes <= m_bytes; };
    if (!m_changed.wait(lock, stop, fits))
        return {};
    m_taken += bytes;
    return {*this, bytes};
}

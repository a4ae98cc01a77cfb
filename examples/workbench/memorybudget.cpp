// SPDX-License-Identifier: Apache-2.0
#include "memorybudget.h"

#include <utility>

void MemoryBudget::take(const void* holder, qint64 bytes, std::function<void()> grant)
{
    m_shares.push_back({holder, bytes, std::move(grant)});
    grantWaiting();
}

void MemoryBudget::giveBack(const void* holder)
{
    m_shares.remove_if([holder](const Share& share) { return share.holder == holder; });
    grantWaiting();
}

void MemoryBudget::grantWaiting()
{
    qint64 taken = 0;
    for (Share& share : m_shares) { // those that were granted come first
        if (share.grant) {
            if (taken > 0 && taken + share.bytes > m_bytes)
                return;
            std::exchange(share.grant, {})();
        }
        taken += share.bytes;
    }
}

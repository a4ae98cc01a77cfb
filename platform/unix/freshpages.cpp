// SPDX-License-Identifier: Apache-2.0
#include <platform/freshpages.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>
#include <sys/mman.h>
#include <time.h>
#include <unistd.h>

namespace Platform {

#if defined(MADV_POPULATE_WRITE) && defined(MADV_HUGEPAGE)

namespace {

constexpr std::size_t largePage = 2 << 20;

// A large page is cleared in 0.1 to 0.3 ms; small pages of as much take 0.8, their release
// included. But where the machine has given that piece of its free memory back to its host, a large
// page takes 4 ms and more, which small ones mostly come around. So what quick pages save may be
// spent on slow ones, which are quick the next time, and a little more; what is left gets small
// pages. The whole is never slower than with small pages by more than one slow page on each thread.
constexpr std::int64_t smallPagesNs = 800'000;
constexpr std::int64_t lentNs = 500'000;

// What was paid for is soon taken back again: on such a machine it only pays for blocks in a row.
constexpr std::int64_t inARowNs = 500'000'000;
std::atomic<std::int64_t> lastUseNs = 0; // by the monotonic clock

bool reportsFreePages()
{
    constexpr int upToReporting = 6; // of the features, a digit each
    const QDir balloons("/sys/bus/virtio/drivers/virtio_balloon");
    for (const QString& balloon : balloons.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile features(balloons.filePath(balloon + "/features"));
        if (features.open(QIODevice::ReadOnly) && features.read(upToReporting).endsWith('1'))
            return true;
    }
    return false;
}

// Whether the machine gives free memory back: it says so, or a slow page was met.
std::atomic<bool>& givesMemoryBack()
{
    static std::atomic<bool> known = reportsFreePages();
    return known;
}

std::byte* roundDown(std::byte* address, std::size_t step)
{
    return address - reinterpret_cast<std::uintptr_t>(address) % step;
}

std::byte* roundUp(std::byte* address, std::size_t step)
{
    return roundDown(address + (step - 1), step);
}

std::size_t smallPage() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }

bool hasMemoryBehind(std::byte* page)
{
    unsigned char flags = 0;
    return mincore(page, 1, &flags) != 0 || (flags & 1) != 0;
}

std::int64_t nowNs(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return std::int64_t(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

bool mayPayOff() { return !givesMemoryBack() || nowNs(CLOCK_MONOTONIC) - lastUseNs < inARowNs; }

// Linux knows the question since 5.14; whether it was answered makes no difference to what follows.
void populate(std::byte* begin, std::byte* end)
{
    if (begin < end)
        madvise(begin, std::size_t(end - begin), MADV_POPULATE_WRITE);
}

} // namespace

FreshPages::FreshPages(void* begin, std::size_t bytes)
{
    if (bytes < 2 * largePage)
        return;
    const std::size_t page = smallPage();
    std::byte* const first = roundUp(static_cast<std::byte*>(begin), page);
    std::byte* const end = roundDown(static_cast<std::byte*>(begin) + bytes, page);
    if (hasMemoryBehind(first) && hasMemoryBehind(end - page))
        return;
    m_begin = first;
    m_end = end;
    if (mayPayOff() && madvise(m_begin, std::size_t(m_end - m_begin), MADV_HUGEPAGE) == 0)
        m_toSpendNs = lentNs;
}

void FreshPages::back(void* begin, std::size_t bytes)
{
    if (!m_begin)
        return;
    const std::size_t page = smallPage();
    std::byte* at = std::max(roundDown(static_cast<std::byte*>(begin), page), m_begin);
    std::byte* const end = std::min(roundUp(static_cast<std::byte*>(begin) + bytes, page), m_end);
    while (at < end && m_toSpendNs > 0) {
        std::byte* const large = roundDown(at, largePage);
        std::byte* const next = std::min(large + largePage, m_end);
        if (large < m_begin || next - large < std::ptrdiff_t(largePage))
            populate(std::max(large, m_begin), next); // an edge, which has no room for one
        else if (!hasMemoryBehind(large)) // rows that end in a page share it with the next ones
            backLargePage(large);
        at = next;
    }
    populate(at, end);
    lastUseNs = nowNs(CLOCK_MONOTONIC);
}

void FreshPages::backLargePage(std::byte* begin)
{
    // Of this thread alone: what other programs do meanwhile says nothing about the memory.
    const std::int64_t started = nowNs(CLOCK_THREAD_CPUTIME_ID);
    populate(begin, begin + largePage);
    const std::int64_t saved = smallPagesNs - (nowNs(CLOCK_THREAD_CPUTIME_ID) - started);
    if (saved < 0)
        givesMemoryBack() = true;
    const std::int64_t before = m_toSpendNs.fetch_add(saved);
    if (before > 0 && before + saved <= 0)
        madvise(m_begin, std::size_t(m_end - m_begin), MADV_NOHUGEPAGE);
}

#else

FreshPages::FreshPages(void*, std::size_t) {}

void FreshPages::back(void*, std::size_t) {}

void FreshPages::backLargePage(std::byte*) {}

#endif

} // namespace Platform

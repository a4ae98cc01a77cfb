// SPDX-License-Identifier: Apache-2.0
#include <timing/elapsedtime.h>

#include <algorithm>
#include <chrono>
#include <limits>

namespace {

constexpr quint64 nanosecondsPer(ElapsedTimeUnit unit)
{
    switch (unit) {
    case ElapsedTimeUnit::Nanoseconds:
        return 1;
    case ElapsedTimeUnit::Microseconds:
        return 1'000;
    case ElapsedTimeUnit::Milliseconds:
        return 1'000'000;
    case ElapsedTimeUnit::Seconds:
        return 1'000'000'000;
    }
    return 1;
}

quint64 saturatingProduct(quint64 count, quint64 factor)
{
    constexpr quint64 largest = std::numeric_limits<quint64>::max();
    return count > largest / factor ? largest : count * factor;
}

} // namespace

ElapsedTime::ElapsedTime(qint64 nanoseconds, unsigned int runs)
    : m_nanosecondsPerRun(quint64(std::max<qint64>(nanoseconds, 0)) / std::max(runs, 1u))
{}

ElapsedTime::ElapsedTime(quint64 count, ElapsedTimeUnit unit)
    : m_nanosecondsPerRun(saturatingProduct(count, nanosecondsPer(unit)))
{}

ElapsedTime::operator QString() const
{
    struct Scale
    {
        double nanoseconds;
        const char* name;
    };
    static constexpr Scale scales[] = {{1e9, "s"}, {1e6, "ms"}, {1e3, "us"}};
    if (m_nanosecondsPerRun < 1000)
        return QStringLiteral("%1 ns").arg(m_nanosecondsPerRun);

    // 999.6 us rounds to four digits, so each unit begins where the one below would print "1000".
    const double nanoseconds = double(m_nanosecondsPerRun);
    const Scale* scale = scales;
    while (nanoseconds < 0.9995 * scale->nanoseconds)
        ++scale;
    const double amount = nanoseconds / scale->nanoseconds;
    const int decimals = amount < 9.995 ? 2 : amount < 99.95 ? 1 : 0;
    return QStringLiteral("%1 %2").arg(QString::number(amount, 'f', decimals),
                                       QLatin1String(scale->name));
}

qint64 ElapsedTime::monotonicNanoseconds()
{
    const auto sinceOrigin = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(sinceOrigin).count();
}

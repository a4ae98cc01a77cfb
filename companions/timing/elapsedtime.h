// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <timing/timing_export.h>

#include <QtCore/QString>

/// The unit of a duration given as a count. The codes are fixed.
///
/// @ingroup amounts
/// @since 1.0
enum class ElapsedTimeUnit {
    Nanoseconds = 0,  ///< 10^-9 s
    Microseconds = 1, ///< 10^-6 s
    Milliseconds = 2, ///< 10^-3 s
    Seconds = 3,      ///< 1 s
};

/// A measured duration, kept as nanoseconds per run. CMake target `imageutils::timing`.
///
/// @ingroup amounts
/// @par Thread safety
/// A value without shared state; `monotonicNanoseconds()` may be called by any thread.
/// @par Ownership
/// Copies are independent of each other.
/// @par Units
/// Nanoseconds, unless `ElapsedTimeUnit` says otherwise.
/// @par Failure
/// Values out of range are clamped, as named at each function. Nothing is logged or thrown.
/// @since 1.0
class TIMING_EXPORT ElapsedTime
{
public:
    /// The time of one run when `runs` runs took `nanoseconds` together, rounded down. A negative
    /// time counts as 0, as a clock that was set back gives one; 0 runs count as 1.
    ElapsedTime(qint64 nanoseconds, unsigned int runs);

    /// `count` times `unit`. A product beyond 64 bits becomes the largest value.
    ElapsedTime(quint64 count, ElapsedTimeUnit unit);

    /// Nanoseconds per run.
    quint64 duration() const { return m_nanosecondsPerRun; }

    /// For people: three significant digits and the unit that fits, e.g. "1.23 ms", "45.6 us", "789
    /// ns", "12.0 s". From 1000 s on all digits of the whole seconds are given.
    operator QString() const;

    /// The monotonic clock in nanoseconds from an arbitrary origin; the difference of two readings
    /// is an elapsed time.
    static qint64 monotonicNanoseconds();

private:
    quint64 m_nanosecondsPerRun;
};

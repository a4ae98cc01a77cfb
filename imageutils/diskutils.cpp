// SPDX-License-Identifier: Apache-2.0
#include <imageutils/diskutils.h>

#include <imageutils/osutils.h>

#include <timing/elapsedtime.h>

#include <QtCore/QDebug>

quint64 DiskUtils::getDiskSpace(const QString& path)
{
    const qint64 start = ElapsedTime::monotonicNanoseconds();
    const quint64 space = OSUtils::freeSpace(path);
    const ElapsedTime elapsed(ElapsedTime::monotonicNanoseconds() - start, 1u);
    const ElapsedTime limit(quint64(10), ElapsedTimeUnit::Milliseconds);
    if (elapsed.duration() > limit.duration())
        qWarning() << "Free disk space check took too long:" << QString(elapsed);
    return space;
}

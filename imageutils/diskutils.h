// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QString>

/// The disks. Free of state; may be called from any thread.
class IMAGEUTILS_EXPORT DiskUtils
{
public:
    /// The bytes available to the user on the volume that holds `path`, as `OSUtils::freeSpace`
    /// gives them: the largest number where there is no such volume. A query of more than 10 ms,
    /// by the clock of `ElapsedTime`, writes a warning. A volume that hangs blocks the call.
    static quint64 getDiskSpace(const QString& path);
};

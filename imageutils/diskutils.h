// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QString>

/// Queries of the disks that are timed.
///
/// @ingroup amounts
/// @par Thread safety
/// Stateless; any thread may call it. A volume that hangs blocks the call.
/// @par Ownership
/// Results are plain numbers.
/// @par Units
/// Bytes.
/// @par Failure
/// Named at the function. Nothing is thrown.
/// @since 1.0
class IMAGEUTILS_EXPORT DiskUtils
{
public:
    /// The bytes available to the user on the volume that holds `path`, as `OSUtils::freeSpace`
    /// gives them: the largest number when there is no such volume. A query of more than 10 ms,
    /// by the clock of `ElapsedTime`, writes a warning.
    static quint64 getDiskSpace(const QString& path);
};

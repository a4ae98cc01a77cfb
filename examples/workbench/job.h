// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobmessage.h"
#include "pixelbuffer.h"
#include "result.h"

#include <functional>
#include <optional>

/// What a photograph in work needs from its process.
struct JobContext
{
    std::function<void(Step)> onStep;       ///< called as each step begins
    std::function<void(qint64)> takeMemory; ///< returns when the pixels may take so many bytes
    PixelBuffer& buffer;                    ///< for the colours
};

/// Why `path` cannot be a photograph, as far as can be said without opening the file: opening a
/// pipe or a device might never return.
std::optional<Failure> refusalOf(const QString& path);

/// The tags of the photograph at `path` that a photographer looks for first, those that it has.
QJsonObject tagsOf(const QString& path);

/// Exports one photograph: size from the header, format, decoding, planes, analysis, resampling and
/// writing of a new file. Throws nothing: whatever goes wrong is a failure of this photograph.
JobResult runJob(const Request& request, const JobContext& context);

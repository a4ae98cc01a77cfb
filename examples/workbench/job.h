// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobmessage.h"
#include "pixelbuffer.h"

#include <functional>

/// What a photograph in work needs from its process.
struct JobContext
{
    std::function<void(Step)> onStep;       ///< called as each step begins
    std::function<void(qint64)> takeMemory; ///< returns when the pixels may take so many bytes
    PixelBuffer& buffer;                    ///< for the colours
};

/// Exports one photograph: size from the header, format, decoding, planes, analysis, resampling and
/// writing of a new file. Throws nothing: whatever goes wrong is a failure of this photograph.
JobResult runJob(const Request& request, const JobContext& context);

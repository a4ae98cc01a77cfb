// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bufferpool.h"
#include "memorybudget.h"
#include "options.h"

#include <metadata/nexiftoolmetadata.h>

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <functional>
#include <optional>
#include <stop_token>

/// The steps of a photograph's road, in their order.
enum class Step { Header, Decode, Split, Analyse, Resample, Join, Write, Bitmap };
inline constexpr std::array<const char*, 8> stepNames{"header",   "decode", "split", "analyse",
                                                      "resample", "join",   "write", "bitmap"};

/// What became of one photograph.
struct JobResult
{
    QString path;
    QString failure; ///< why there is no output; empty when there is one
    QStringList warnings;
    QSize storedSize; ///< of the pixels in the file; invalid until they were read
    QSize size;       ///< as a viewer shows it; invalid while unknown
    QSize outputSize;
    NExifToolMetadata metadata;
    quint64 key = 0;                 ///< of the settings that the outputs are made with
    std::optional<bool> isGrey;      ///< whether all pixels are grey
    std::optional<bool> isLumaNoise; ///< whether the finest detail is in the lightness
    QString output;
    QString bitmap;
    QString thumbnail;   ///< empty when none was due
    bool isKept = false; ///< all outputs were up to date
    std::array<double, stepNames.size()> milliseconds{};
};

/// What photographs in work share.
struct Resources
{
    MemoryBudget memory;
    BufferPool buffers;
};

/// Takes the photograph at `path` down the road: size from the header, format, decoding, planes,
/// analysis, resampling, and the export of a new file. Never throws: whatever goes wrong is a
/// failure of this photograph. `onStep` is called as each step begins; a requested stop counts as a
/// failure at the next one. The pixels take their part of `resources`, which may have to be waited
/// for. May be called from several threads at once, for different output names.
JobResult runJob(const QString& path, const Options& options, Resources& resources,
                 const std::function<void(Step)>& onStep, const std::stop_token& stop = {});

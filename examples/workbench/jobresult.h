// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "result.h"

#include <QtCore/QJsonObject>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <optional>

/// The steps of a photograph, in their order.
enum class Step { Header, Decode, Split, Analyse, Resample, Join, Write, Bitmap };
inline constexpr std::array<const char*, 8> stepNames{"header",   "decode", "split", "analyse",
                                                      "resample", "join",   "write", "bitmap"};

/// What became of one photograph.
struct JobResult
{
    QString path;
    QString failure; ///< why there is no output; empty when there is one
    FailureCode code = FailureCode::ByStep;
    Step failedStep = Step::Header; ///< the step that gave `failure`
    QStringList warnings;
    QSize storedSize; ///< of the pixels in the file; invalid until the header was read
    QSize size;       ///< as a viewer shows the photograph; invalid while unknown
    QSize outputSize;
    QJsonObject metadata; ///< the tags that a photographer looks for first, those that the file has
    quint64 key = 0;      ///< of the settings that the outputs are made with
    std::optional<bool> isGrey;      ///< whether all pixels are grey
    std::optional<bool> isLumaNoise; ///< whether the finest detail is in the lightness
    QString output;
    QString bitmap;
    QString thumbnail;        ///< empty when none was due
    bool isKept = false;      ///< all outputs were up to date
    bool isPlanned = false;   ///< the outputs would be written, were it not for a dry run
    bool isOwnOutput = false; ///< the photograph is itself an output of this program
    std::array<double, stepNames.size()> milliseconds{};
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exportsettings.h"
#include "planes.h"
#include "result.h"

#include <QtCore/QRect>

/// How large a picture becomes: its part `crop`, by `factor` in both directions, and exactly `size`
/// pixels.
struct Fit
{
    double factor;
    QSize size;
    QRect crop;
};

/// The size that `settings` ask for, for a picture of `size`: the wanted one, or a smaller one when
/// the picture would exceed the limits of width and height. Fails if the result has more pixels
/// than the settings allow.
Result<Fit> fitFor(QSize size, const ExportSettings& settings);

/// `planes` resampled to `fit` with `filter`, or with the one that suits the factor.
Result<Planes> resampled(const Planes& planes, const Fit& fit,
                         const std::optional<FilterShape>& filter);

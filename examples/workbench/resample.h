// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"
#include "planes.h"
#include "result.h"

#include <QtCore/QSize>

/// How large a picture becomes: `factor` in both directions, and exactly `size` pixels.
struct Fit
{
    double factor;
    QSize size;
};

/// The size that `options` ask for, for a picture of `size`: the wanted scale, or a smaller one
/// when the picture would exceed the wanted width and height. Fails if the result has more pixels
/// than the options allow.
Result<Fit> fitFor(QSize size, const Options& options);

/// `planes` resampled to `fit` with `filter`, or with the one that suits the factor.
Result<Planes> resampled(const Planes& planes, const Fit& fit,
                         const std::optional<FilterShape>& filter);

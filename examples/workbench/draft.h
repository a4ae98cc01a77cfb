// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "planes.h"
#include "resample.h"
#include "result.h"

#include <vector>

/// What makes a first view of a picture quickly, before the exact one is ready.
namespace Draft {

/// Copies of `planes`, each half as large as the one before it, while they are larger than what a
/// screen shows. None where there is no memory for them.
std::vector<Planes> halvesOf(const Planes& planes);

/// The smallest one of `planes` and its `halves` that is still half as large again as `planes`
/// reduced by `factor`, so that the last step filters what it shows.
const Planes& copyFor(const Planes& planes, const std::vector<Planes>& halves, double factor);

/// The pixels of a picture of the size `to` that lie where `part` lies in one of the size `from`.
QRect scaled(const QRect& part, QSize from, QSize to);

/// The source pixels that lie where `part` lies in what `fit` makes of them.
QRect sourceOf(const QRect& part, const Fit& fit);

/// The pixels `part` of what an export with `settings` makes of `planes` by `fit`. Only those
/// source pixels are read that they need. The library places output sample 0 on input sample 0, so
/// the source begins where an output pixel lies on a source pixel, or as near to one as possible.
Result<Planes> resampledPart(const Planes& planes, const Fit& fit, const ExportSettings& settings,
                             const QRect& part);

/// `part` of a picture of `size`, in at most `pixels` pixels, taken from `copy`, which may be a
/// smaller copy of the picture.
Result<Planes> partOfCopy(const Planes& copy, QSize size, const QRect& part, QSize pixels,
                          const std::optional<FilterShape>& filter);

} // namespace Draft

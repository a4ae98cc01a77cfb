// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "planes.h"
#include "result.h"

#include <QtCore/QRect>

/// `planes` turned or mirrored as a viewer does it for the Exif `orientation`; every sample stays
/// as it is.
Planes turned(const Planes& planes, int orientation);

/// `planes` turned clockwise by `degrees` and cropped to `crop`, as croparea.h describes it. A null
/// `crop` leaves the largest picture of the same shape without empty corners; quarter turns then
/// move samples and change none. Without a turn a crop changes no sample either.
Result<Planes> turnedAndCropped(const Planes& planes, double degrees, const QRect& crop);

/// The size of what `turnedAndCropped` makes of a picture of `size`.
QSize turnedAndCroppedSize(QSize size, double degrees, const QRect& crop);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "planes.h"
#include "result.h"

/// `planes` turned or mirrored as a viewer does it for the Exif `orientation`; every sample stays
/// as it is.
Planes turned(const Planes& planes, int orientation);

/// `planes` turned clockwise by `degrees` and cropped to the largest picture of the same shape
/// without empty corners. Quarter turns move samples and change none.
Result<Planes> turnedAndCropped(const Planes& planes, double degrees);

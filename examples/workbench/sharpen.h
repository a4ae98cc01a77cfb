// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exportsettings.h"
#include "planes.h"

/// `planes` after an unsharp mask of the luminance, which leaves the colours' differences as they
/// are. With Y = 0.2126 R + 0.7152 G + 0.0722 B of the samples as they are encoded, and G a
/// Gaussian blur whose standard deviation is the radius, every channel C becomes C + amount * (Y -
/// G(Y)). Beyond the edges the outermost samples are repeated.
Planes sharpened(const Planes& planes, const Sharpening& sharpening);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "planes.h"
#include "result.h"

/// `planes` turned clockwise by `degrees` and cropped to the largest picture of the same shape
/// without empty corners; the input itself for whole turns.
Result<Planes> turnedAndCropped(const Planes& planes, double degrees);

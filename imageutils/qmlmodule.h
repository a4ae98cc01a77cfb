// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

/// Registers the QML element types `OSUtils` and `NImageUtils` and the module `NImageUtils` 1.0.
/// The QML engine calls it when the module is first imported; calling it earlier does no harm.
IMAGEUTILS_EXPORT void qml_register_types_NImageUtils();

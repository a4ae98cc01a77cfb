// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

/// @file
/// The registration of the QML module.

/// Registers the QML element types `OSUtils` and `NImageUtils` and the module `NImageUtils` 1.0.
/// The QML engine calls this function when the module is first imported; an earlier call does no
/// harm.
///
/// @ingroup qmlmodule
/// @par Thread safety
/// Any thread may call it, as Qt's registration functions lock by themselves.
/// @par Ownership
/// Qt keeps the registration until the program ends.
/// @par Failure
/// None.
/// @since 1.0
IMAGEUTILS_EXPORT void qml_register_types_NImageUtils();

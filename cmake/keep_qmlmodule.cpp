// SPDX-License-Identifier: Apache-2.0
//
// Added to every program that links imageutils::qmlmodule: uses the library, so that the linker
// keeps it.
#include <imageutils/qmlmodule.h>

namespace {
[[maybe_unused]] void (*volatile s_keepNImageUtils)() = &qml_register_types_NImageUtils;
} // namespace

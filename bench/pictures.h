// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

/// Picture files for benchmarks of sizes.
namespace Pictures {

/// The path of a picture of `size` in `folder`, named `name` and made by the suffix of the name
/// unless it is there. A name that begins with "progressive" asks for several scans. Empty when
/// this machine has no writer for the format.
QString make(const QString& folder, const QString& name, QSize size);

} // namespace Pictures

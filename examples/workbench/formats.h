// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

/// What is known of the formats that pictures are exported in, without asking OpenImageIO, which
/// takes a quarter of a second to load and whose writers may end the process for a picture that
/// they cannot store.
namespace Formats {

/// Whether pictures can be exported with `extension`, in any letter case.
bool isWritable(const QString& extension);

/// Whether the format with `extension` has a setting for its quality.
bool hasQuality(const QString& extension);

/// Why the format with `extension` cannot hold a picture of `size`; empty when it can.
QString refusalOf(const QString& extension, QSize size);

/// The extensions that `isWritable` knows, for people.
QString writableText();

} // namespace Formats

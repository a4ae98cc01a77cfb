// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exportsettings.h"

/// What is known of the formats that pictures are exported in, without asking OpenImageIO, which
/// takes a quarter of a second to load and whose writers may end the process for a picture that
/// they cannot store.
namespace Formats {

/// Whether pictures can be exported with `extension`, in any letter case.
bool isWritable(const QString& extension);

/// The first one of the extensions that a format has, for files with the extension `extension`;
/// empty for those that are not written.
QString usualExtensionOf(const QString& extension);

/// Why the format with `extension` cannot hold a picture of `size`; empty when it can.
QString refusalOf(const QString& extension, QSize size);

/// Why the format with `extension` cannot be encoded as `settings` want it; empty when it can.
QString refusalOf(const QString& extension, const ExportSettings& settings);

/// The settings of the encoder that make a difference for the format with `extension`.
QJsonObject encodingOf(const ExportSettings& settings, const QString& extension);

/// Whether `path` is named as a photograph that can be read.
bool isPhotographName(const QString& path);

/// Why files named as `path` are not read although they are photographs; empty when that is not
/// the reason.
QString refusalOfName(const QString& path);

/// The extensions that `isWritable` knows, for people.
QString writableText();

} // namespace Formats

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "photograph.h"
#include "result.h"

#include <metadata/nexiftoolmetadata.h>

/// Where the thumbnail of the photograph at `path` belongs: in the temporary folder, under the name
/// by which the library's clean-up finds it. Empty where there is no temporary folder.
QString thumbnailPath(const QString& path);

/// Whether the photograph at `path`, known by `metadata`, has no thumbnail that is up to date but
/// should have one.
bool isThumbnailDue(const QString& path, const NExifToolMetadata& metadata);

/// Writes the thumbnail of `photograph`, at most 512 pixels on its longer side, as sRGB in the
/// place of an older one of ours. Returns its name.
Result<QString> writeThumbnail(const Photograph& photograph, Intent intent, PixelBuffer& buffer,
                               const QString& path, int quality);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

/// What the header of an image file says of its first picture.
struct ImageHeader
{
    int width;       ///< in pixels, as stored, at least 1
    int height;      ///< in pixels, as stored, at least 1
    int orientation; ///< the Exif orientation tag; 0 when there is none
};

/// Reads the header of the file at `utf8Path`, no pixels. Without a value, `error` says why.
std::optional<ImageHeader> readImageHeader(const std::string& utf8Path, std::string& error);

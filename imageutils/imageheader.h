// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

/// What the header of an image file says of its first picture.
struct ImageHeader
{
    int width = 0;       ///< in pixels, as stored, at least 1
    int height = 0;      ///< in pixels, as stored, at least 1
    bool turned = false; ///< shown after a quarter turn: orientation 5 to 8 of the Exif standard
};

/// Reads the header of the regular file at `utf8Path`, no pixels. Without a value, `error` says
/// why.
std::optional<ImageHeader> readImageHeader(const std::string& utf8Path, std::string& error);

/// The same through the reader of the file's format alone, which its first bytes tell. Without a
/// value where there is no such reader, it is not installed, or it leaves the answer to
/// OpenImageIO.
std::optional<ImageHeader> readHeaderAlone(const std::string& utf8Path);

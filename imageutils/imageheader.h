// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

/// What the header of an image file says about its first picture.
struct ImageHeader
{
    int width = 0;       ///< in pixels, as stored, at least 1
    int height = 0;      ///< in pixels, as stored, at least 1
    bool turned = false; ///< shown after a quarter turn: orientation 5 to 8 of the Exif standard
};

/// Reads the header of the regular file at `utf8Path`, no pixels. Without a value, `error` says
/// why.
///
/// A format that has a reader here (headers/readers.h), which the first bytes tell, gets its answer
/// or refusal from that reader. It is not passed on to OpenImageIO, which decodes such files while
/// it opens them, in memory and time that the file chooses.
std::optional<ImageHeader> readImageHeader(const std::string& utf8Path, std::string& error);

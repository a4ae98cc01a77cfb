// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <OpenImageIO/imageio.h>

/// Where the chunk belongs in a PNG file: behind the signature and the header chunk.
inline constexpr qint64 pngExifOffset = 8 + 25;

/// The eXIf chunk of a PNG file with the Exif of `header`, as the standard of PNG (third edition,
/// 11.3.4.5) describes it. OpenImageIO reads this chunk and does not write it.
QByteArray pngExifChunk(const OIIO::ImageSpec& header);

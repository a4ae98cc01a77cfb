// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>
#include <QtGui/QImage>

/// Writes `image` into `file` as a WebP picture that loses nothing of 8 bits per channel. The
/// writer of OpenImageIO 2.4 halves the resolution of the colours before it encodes them without
/// loss. Returns whether every byte was written.
bool writeLosslessWebP(QFile& file, const QImage& image);

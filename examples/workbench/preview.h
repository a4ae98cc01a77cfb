// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

/// The photograph at `path` as a window shows it: read as for an export, upright, fitted into
/// `bounds`, in sRGB, as `Format_RGBA8888` with rows that are not padded. Null when it cannot be
/// read, or claims more than `maxPixels`.
QImage previewOf(const QString& path, QSize bounds, qint64 maxPixels);

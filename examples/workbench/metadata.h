// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "containers.h"
#include "options.h"

#include <QtCore/QSize>
#include <QtCore/QString>

/// What an exported picture says about itself.
struct PictureFacts
{
    QSize size;
    bool isSRgb;    ///< its colours are those of sRGB
    QString record; ///< stored as the name of the software
};

/// What of `source` goes into an exported picture: everything that describes the photograph, with
/// Orientation 1 and the size of `facts`. What describes the source's file does not, nor do maker
/// notes, whose offsets lose their meaning, and previews, which show the picture as it was.
MetadataBlocks exportedBlocks(const MetadataBlocks& source, MetadataChoice choice,
                              const PictureFacts& facts);

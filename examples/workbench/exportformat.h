// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "photograph.h"

#include <memory>

/// How the samples of an exported picture are laid out in its file.
struct Layout
{
    bool isGrey;       ///< one colour channel instead of three
    bool hasAlpha;     ///< and an alpha channel after the colours
    bool isAssociated; ///< the colours are multiplied by alpha
    OIIO::TypeDesc type;

    int channels() const { return (isGrey ? 1 : 3) + (hasAlpha ? 1 : 0); }
};

/// OpenImageIO's writer of pictures with `extension`, in any letter case; null where it has none.
std::unique_ptr<OIIO::ImageOutput> writerFor(const QString& extension);

/// The layout in which `writer` keeps most of `photograph`: grey, alpha, and more than 8 bits per
/// channel where source and format have them.
Layout layoutFor(const OIIO::ImageOutput& writer, const Photograph& photograph);

/// The header of the exported picture: `layout` and `size`, the metadata, colour profile and
/// resolution of `photograph`, Orientation 1, and `record` as the name of the software.
OIIO::ImageSpec headerFor(const OIIO::ImageOutput& writer, const Photograph& photograph,
                          const Layout& layout, QSize size, int quality, const QString& record);

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
/// channel where source and format have them, or `bitDepth` unless it is 0.
Layout layoutFor(const OIIO::ImageOutput& writer, const Photograph& photograph, int bitDepth);

/// What happens to the colours on the way into a file.
struct ColourPlan
{
    ColourTransform transform;
    QByteArray profile;  ///< goes into the file; empty where the format has no place or no need
    bool isSRgb;         ///< the file's colours are those of sRGB
    bool keepsPrimaries; ///< OpenEXR's own attribute stays
};

/// How the colours of `photograph` come into the file, for the `choice` of the user: "keep", "srgb"
/// or the path of a profile. Kept is what the format can name: an ICC profile, or linear light in
/// formats that hold it. Everything else becomes sRGB, or linear light with its primaries. A
/// profile of RGB makes three channels of a grey layout.
Result<ColourPlan> planColours(const OIIO::ImageOutput& writer, const Photograph& photograph,
                               Layout& layout, const QString& choice, Intent intent);

/// The header of the exported picture: `layout` and `size`, the profile of `plan`, the metadata and
/// resolution of `photograph`, Orientation 1, `record` as the name of the software,
/// and what `settings` say of the encoding.
OIIO::ImageSpec headerFor(const OIIO::ImageOutput& writer, const Photograph& photograph,
                          const Layout& layout, const ColourPlan& plan, QSize size,
                          const ExportSettings& settings, const QString& record);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "colours.h"

#include <OpenImageIO/imageio.h>

/// What the samples of a picture mean.
struct SourceColours
{
    QByteArray profile;           ///< that of the file, or one made for what the file says
    bool isLinear = false;        ///< proportional to light, without a profile in the file
    bool isAssumed = false;       ///< the file says nothing, and sRGB is assumed
    bool hasOwnPrimaries = false; ///< named by OpenEXR's attribute `chromaticities`
    QString warning;              ///< about a profile that does not fit; usually empty
};

/// From the colours of a source to sRGB, or no change where its profile cannot be converted.
ColourTransform toSRgb(const SourceColours& colours, Intent intent);

/// The colours of a picture with this header, whose file holds the profile `icc` (empty: none), and
/// whose Exif says `isAdobeRgb`.
SourceColours sourceColours(const OIIO::ImageSpec& spec, const QByteArray& icc, bool isGrey,
                            bool isAdobeRgb);

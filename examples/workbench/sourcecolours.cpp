// SPDX-License-Identifier: Apache-2.0
#include "sourcecolours.h"

#include <cmath>

namespace {

/// The gamma with which samples become light, as the file says it by number or by OpenImageIO's
/// name; 0 where it says sRGB, a gamma close to it, or nothing.
double gammaOf(const OIIO::ImageSpec& spec)
{
    const OIIO::string_view name = spec.get_string_attribute("oiio:ColorSpace");
    for (const char* linear : {"linear", "lin_rec709", "lin_rec709_scene"}) // in OpenImageIO 2 to 3
        if (OIIO::Strutil::iequals(name, linear))
            return 1.0;
    const double gamma = spec.get_float_attribute("oiio:Gamma", 0.0F);
    const bool isLikeSRgb = gamma > 2.0 && gamma < 2.4;
    return gamma > 0.1 && gamma < 10.0 && !isLikeSRgb ? gamma : 0.0;
}

bool areOfSRgb(const Profiles::Chromaticities& primaries)
{
    for (std::size_t at = 0; at < primaries.size(); ++at)
        if (std::abs(primaries[at] - Profiles::sRgbChromaticities[at]) > 0.001F)
            return false;
    return true;
}

SourceColours poweredColours(const OIIO::ImageSpec& spec, double gamma)
{
    SourceColours colours;
    auto primaries = Profiles::sRgbChromaticities;
    constexpr OIIO::TypeDesc eightFloats(OIIO::TypeDesc::FLOAT, 8);
    if (const auto* named = spec.find_attribute("chromaticities", eightFloats)) {
        const auto* const numbers = static_cast<const float*>(named->data());
        std::copy(numbers, numbers + primaries.size(), primaries.begin());
    }
    colours.hasOwnPrimaries = !areOfSRgb(primaries);
    if (!colours.hasOwnPrimaries)
        primaries = Profiles::sRgbChromaticities;
    colours.profile = Profiles::power(gamma, primaries);
    colours.isLinear = gamma == 1.0;
    return colours;
}

} // namespace

ColourTransform toSRgb(const SourceColours& colours, Intent intent)
{
    const auto transform = ColourTransform::between(colours.profile, Profiles::sRgb(), intent);
    return transform ? *transform : ColourTransform();
}

SourceColours sourceColours(const OIIO::ImageSpec& spec, const QByteArray& icc, bool isGrey,
                            bool isAdobeRgb)
{
    SourceColours colours;
    colours.profile = icc;
    const Profiles::Space space = icc.isEmpty() ? Profiles::Space::Other : Profiles::spaceOf(icc);
    const bool fits = space == Profiles::Space::Rgb || (space == Profiles::Space::Grey && isGrey);
    if (fits && ColourTransform::between(icc, Profiles::sRgb(), Intent::Perceptual))
        return colours;
    if (const double gamma = gammaOf(spec); icc.isEmpty() && gamma > 0.0) {
        colours = poweredColours(spec, gamma);
        if (!colours.profile.isEmpty())
            return colours;
    }
    colours.profile = isAdobeRgb ? Profiles::adobeRgb() : Profiles::sRgb();
    colours.isAssumed = !isAdobeRgb;
    colours.isLinear = false;
    if (!icc.isEmpty())
        colours.warning = QStringLiteral("its colour profile cannot be used; sRGB is assumed");
    return colours;
}

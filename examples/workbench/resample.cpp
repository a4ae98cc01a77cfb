// SPDX-License-Identifier: Apache-2.0
#include "resample.h"

#include "photograph.h"

#include <imageutils/cvutils.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr FilterShape unchanged{0.0F, 0.0F};      // at a factor of 1 every pixel stays as it is
constexpr FilterShape smooth{1.0F / 3, 1.0F / 3}; // neither rings nor blurs much
constexpr float largestStep = 2.0F;               // of enlarging

double factorToFit(int length, int limit)
{
    return limit > 0 ? double(limit) / length : std::numeric_limits<double>::infinity();
}

/// The library rounds sizes up and crops to its caps. With the exact size as the cap, it crops only
/// the column or row that rounding up may have added.
cv::Mat resampledColours(const cv::Mat& colours, const Fit& fit, FilterShape filter)
{
    const int height = fit.size.height();
    const int width = fit.size.width();
    if (fit.factor > 1.0)
        return CvUtils::upsample(colours, float(fit.factor), height, width, largestStep);
    return CvUtils::resize(colours, fit.factor, fit.factor, height, width, filter.b, filter.c);
}

} // namespace

Result<Fit> fitFor(QSize size, const Options& options)
{
    const double factor = std::min({options.scale, factorToFit(size.width(), options.maxWidth),
                                    factorToFit(size.height(), options.maxHeight)});
    const double width = std::max(1.0, std::round(size.width() * factor));
    const double height = std::max(1.0, std::round(size.height() * factor));
    if (auto refusal = refuseSize(width, height, options.maxPixels))
        return *refusal;
    return Fit{factor, QSize(int(width), int(height))};
}

Result<Planes> resampled(const Planes& planes, const Fit& fit,
                         const std::optional<FilterShape>& filter)
{
    const FilterShape shape = filter.value_or(fit.factor == 1.0 ? unchanged : smooth);
    const bool mixesPixels = fit.factor != 1.0 || shape.b != 0.0F || shape.c != 0.0F;
    // The filter would multiply by 0, which makes NaN of infinite samples and of their neighbours.
    if (!mixesPixels)
        return planes;
    // Transparent pixels may hold any colour; multiplied by alpha it does not reach their
    // neighbours.
    const Planes source = associated(planes, true);

    Planes result{resampledColours(source.chroma, fit, shape), {}, source.isAssociated};
    if (result.chroma.cols != fit.size.width() || result.chroma.rows != fit.size.height())
        return Failure{QStringLiteral("the library refused to resample by %1").arg(fit.factor)};
    // Alpha goes through the library, too. Another filter places its samples up to half a pixel
    // away, which would give edges a fringe.
    if (!source.alpha.empty())
        result.alpha = coloursAsAlpha(resampledColours(alphaAsColours(source.alpha), fit, shape));
    return associated(result, planes.isAssociated);
}

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

constexpr double unlimited = std::numeric_limits<double>::infinity();

double factorToFit(int length, int limit) { return limit > 0 ? double(limit) / length : unlimited; }

/// The factor that the user wants, whatever the limits.
double wantedFactor(QSize size, const ExportSettings& settings)
{
    const double across = factorToFit(size.width(), settings.box.width());
    const double down = factorToFit(size.height(), settings.box.height());
    switch (settings.sizeChoice) {
    case SizeChoice::Scale:
        return settings.scale;
    case SizeChoice::LongEdge:
        return factorToFit(std::max(size.width(), size.height()), settings.longEdge);
    case SizeChoice::Fit:
        return std::min(across, down);
    case SizeChoice::Fill:
        return std::max(across, down);
    }
    return 1.0;
}

/// The middle of a picture of `size`, in the shape of the box that it is to fill.
Fit fillFor(QSize size, const ExportSettings& settings)
{
    const double factor = wantedFactor(size, settings);
    const auto side = [factor](int length, int wanted) {
        return std::clamp(int(std::round(wanted / factor)), 1, length);
    };
    const QSize part(side(size.width(), settings.box.width()),
                     side(size.height(), settings.box.height()));
    const QRect crop(QPoint(size.width() - part.width(), size.height() - part.height()) / 2, part);
    if (factor > 1.0 && !settings.mayEnlarge)
        return {1.0, part, crop};
    // Of a part in whole pixels the sides may differ a little in what they need.
    return {std::max(factorToFit(part.width(), settings.box.width()),
                     factorToFit(part.height(), settings.box.height())),
            settings.box, crop};
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

Result<Fit> fitFor(QSize size, const ExportSettings& settings)
{
    if (settings.sizeChoice == SizeChoice::Fill) {
        const Fit fit = fillFor(size, settings);
        if (auto refusal = refuseSize(fit.size.width(), fit.size.height(), settings.maxPixels))
            return *refusal;
        return fit;
    }
    const double factor =
        std::min({wantedFactor(size, settings), settings.mayEnlarge ? unlimited : 1.0,
                  factorToFit(size.width(), settings.maxWidth),
                  factorToFit(size.height(), settings.maxHeight)});
    const double width = std::max(1.0, std::round(size.width() * factor));
    const double height = std::max(1.0, std::round(size.height() * factor));
    if (auto refusal = refuseSize(width, height, settings.maxPixels))
        return *refusal;
    return Fit{factor, QSize(int(width), int(height)), QRect(QPoint(), size)};
}

Result<Planes> resampled(const Planes& whole, const Fit& fit,
                         const std::optional<FilterShape>& filter)
{
    const Planes planes = cut(whole, fit.crop);
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

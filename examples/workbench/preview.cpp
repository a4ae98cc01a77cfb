// SPDX-License-Identifier: Apache-2.0
#include "preview.h"

#include "messages.h"
#include "photograph.h"
#include "resample.h"

#include <imageutils/cvutils.h>

#include <exception>

namespace {

QImage fitted(const Photograph& photograph, QSize bounds)
{
    ExportSettings settings;
    settings.maxWidth = bounds.width();
    settings.maxHeight = bounds.height();
    const auto fit = fitFor(uprightSize(photograph), settings);
    PixelBuffer buffer;
    const auto planes = splitPhotograph(photograph, buffer);
    if (!fit || !planes)
        return {};
    auto small = resampled(*planes, *fit, {});
    if (!small)
        return {};
    const ColourTransform transform = toSRgb(photograph.colours, Intent::Perceptual);
    Planes shown = associated(transform.converted(*small), false);
    return CvUtils::matToQImage(shown.chroma, shown.alpha).convertToFormat(QImage::Format_RGBA8888);
}

} // namespace

QImage previewOf(const QString& path, QSize bounds, qint64 maxPixels)
{
    const Messages::Collector collector; // the export says what is wrong with the file
    try {
        const auto photograph = readPhotograph(path, {maxPixels});
        return photograph ? fitted(*photograph, bounds) : QImage();
    } catch (const std::exception&) {
        return {};
    }
}

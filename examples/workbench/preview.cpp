// SPDX-License-Identifier: Apache-2.0
#include "preview.h"

#include "messages.h"
#include "photograph.h"
#include "resample.h"

#include <imageutils/cvutils.h>

#include <QtGui/QColorSpace>

#include <exception>

namespace {

/// `image` as a screen of the usual kind shows it.
QImage onScreen(QImage image, const Photograph& photograph)
{
    image = image.convertToFormat(QImage::Format_RGBA8888);
    const OIIO::ParamValue* const profile = photograph.spec.find_attribute("ICCProfile");
    if (!profile || photograph.isGrey)
        return image;
    const QColorSpace space = QColorSpace::fromIccProfile(
        QByteArray(static_cast<const char*>(profile->data()), qsizetype(profile->type().size())));
    if (!space.isValid())
        return image;
    image.setColorSpace(space);
    image.convertToColorSpace(QColorSpace::SRgb);
    return image;
}

QImage fitted(const Photograph& photograph, QSize bounds)
{
    Options options;
    options.maxWidth = bounds.width();
    options.maxHeight = bounds.height();
    const auto fit = fitFor(uprightSize(photograph), options);
    PixelBuffer buffer;
    const auto planes = splitPhotograph(photograph, buffer);
    if (!fit || !planes)
        return {};
    auto small = resampled(*planes, *fit, {});
    if (!small)
        return {};
    Planes shown = associated(*small, false);
    return CvUtils::matToQImage(shown.chroma, shown.alpha);
}

} // namespace

QImage previewOf(const QString& path, QSize bounds, qint64 maxPixels)
{
    const Messages::Collector collector; // the export says what is wrong with the file
    try {
        const auto photograph = readPhotograph(path, maxPixels);
        return photograph ? onScreen(fitted(*photograph, bounds), *photograph) : QImage();
    } catch (const std::exception&) {
        return {};
    }
}

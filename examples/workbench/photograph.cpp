// SPDX-License-Identifier: Apache-2.0
#include "photograph.h"

#include "console.h"
#include "upright.h"

#include <imageutils/cvutils.h>

#include <algorithm>
#include <climits>
#include <new>

namespace {

constexpr int channelsPerPixel = 4;
constexpr OIIO::stride_t bytesPerPixel = channelsPerPixel * sizeof(float);

QString oneLine(const std::string& text) { return QString::fromStdString(text).simplified(); }

/// What the reader says about damaged data. Stray bytes before a marker are skipped without harm;
/// some cameras write them.
QString damageReported(OIIO::ImageInput& input)
{
    const QString text = oneLine(input.geterror());
    return text.contains(QLatin1String("extraneous bytes before marker")) ? QString() : text;
}

/// Which channels the file has, as far as a photograph goes: the first or the first three are the
/// colour, and the one after them may be the alpha.
void describeChannels(Photograph& photograph, const std::string& format)
{
    const OIIO::ImageSpec& spec = photograph.spec;
    photograph.isGrey = spec.nchannels < 3;
    photograph.hasAlpha = spec.alpha_channel == (photograph.isGrey ? 1 : 3);
    const bool formatAssociates = format == "openexr" || format == "tiff";
    photograph.isAssociated = photograph.hasAlpha && formatAssociates &&
                              spec.get_int_attribute("oiio:UnassociatedAlpha") == 0;
}

/// Spreads the channels as read (grey, grey and alpha, RGB, RGB and alpha) over R, G, B and A.
void arrangeChannels(cv::Mat& pixels, const Photograph& photograph)
{
    if (photograph.isGrey && photograph.hasAlpha) {
        const int alphaLast[] = {1, 3};
        cv::mixChannels(&pixels, 1, &pixels, 1, alphaLast, 1);
    }
    if (photograph.isGrey) {
        const int greyEverywhere[] = {0, 1, 0, 2};
        cv::mixChannels(&pixels, 1, &pixels, 1, greyEverywhere, 2);
    }
    if (!photograph.hasAlpha)
        cv::insertChannel(cv::Mat(pixels.size(), CV_32FC1, cv::Scalar(1.0)), pixels, 3);
}

Result<Photograph> decode(OIIO::ImageInput& input)
{
    Photograph photograph;
    photograph.spec = input.spec();
    describeChannels(photograph, input.format_name());
    const OIIO::ImageSpec& spec = photograph.spec;
    QImage image(spec.width, spec.height, QImage::Format_RGBA32FPx4);
    if (image.isNull())
        throw std::bad_alloc();

    const int channels = std::min(spec.nchannels, channelsPerPixel);
    const bool isRead = input.read_image(0, 0, 0, channels, OIIO::TypeFloat, image.bits(),
                                         bytesPerPixel, image.bytesPerLine());
    const QString damage = damageReported(input);
    if (!isRead || !damage.isEmpty())
        return Failure{damage.isEmpty() ? QStringLiteral("cannot be decoded") : damage};

    cv::Mat pixels(image.height(), image.width(), CV_32FC4, image.bits(),
                   std::size_t(image.bytesPerLine()));
    arrangeChannels(pixels, photograph);
    const int orientation = spec.get_int_attribute("Orientation", 1);
    photograph.pixels =
        isUpright(orientation)
            ? image
            : CvUtils::matToQImage(turnedUpright(pixels, orientation), QImage::Format_RGBA32FPx4);
    return photograph;
}

} // namespace

std::optional<Failure> refuseSize(double width, double height, qint64 maxPixels)
{
    if (width * height <= double(maxPixels) && std::max(width, height) <= INT_MAX)
        return {};
    return Failure{QStringLiteral("%1 x %2 pixels are more than --max-megapixels allows (%3)")
                       .arg(width, 0, 'f', 0)
                       .arg(height, 0, 'f', 0)
                       .arg(maxPixels / 1'000'000)};
}

Result<Photograph> readPhotograph(const QString& path, qint64 maxPixels)
{
    const Console::SilencedErrors silenced; // libpng reports here and to the caller
    OIIO::ImageSpec wishes;
    wishes.attribute("oiio:UnassociatedAlpha", 1); // colours as stored, not multiplied by alpha
    const auto input = OIIO::ImageInput::open(path.toStdString(), &wishes);
    if (!input)
        return Failure{oneLine(OIIO::geterror(true))};
    const OIIO::ImageSpec& spec = input->spec();
    if (spec.width < 1 || spec.height < 1 || spec.nchannels < 1 || spec.deep)
        return Failure{QStringLiteral("holds no picture")};
    if (const auto refusal = refuseSize(spec.width, spec.height, maxPixels))
        return *refusal;
    return decode(*input);
}

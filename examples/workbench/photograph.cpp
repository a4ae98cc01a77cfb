// SPDX-License-Identifier: Apache-2.0
#include "photograph.h"

#include "upright.h"

#include <imageutils/cvutils.h>

#include <QtGui/QImage>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <atomic>
#include <climits>
#include <new>
#include <string_view>

namespace {

constexpr int channelsPerPixel = 4;

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

/// The type in which the samples are kept: that of the file, or floats where it is rare.
int depthOf(const OIIO::ImageSpec& spec)
{
    if (spec.channelformats.empty() && spec.format == OIIO::TypeUInt8)
        return CV_8U;
    return spec.channelformats.empty() && spec.format == OIIO::TypeUInt16 ? CV_16U : CV_32F;
}

/// The largest value of a channel of this depth.
double fullRange(int depth) { return depth == CV_8U ? 255.0 : depth == CV_16U ? 65535.0 : 1.0; }

Result<Photograph> decode(OIIO::ImageInput& input)
{
    Photograph photograph;
    photograph.spec = input.spec();
    describeChannels(photograph, input.format_name());
    const OIIO::ImageSpec& spec = photograph.spec;
    const int channels = std::min(spec.nchannels, channelsPerPixel);
    photograph.samples.create(spec.height, spec.width, CV_MAKETYPE(depthOf(spec), channels));
    const bool isAsStored = photograph.samples.depth() != CV_32F; // then nothing is copied
    const OIIO::TypeDesc type = isAsStored ? OIIO::TypeUnknown : OIIO::TypeFloat;
    const bool isRead = input.read_image(0, 0, 0, channels, type, photograph.samples.data);
    const QString damage = damageReported(input);
    if (!isRead || !damage.isEmpty())
        return Failure{damage.isEmpty() ? QStringLiteral("cannot be decoded") : damage};
    return photograph;
}

int orientationOf(const Photograph& photograph)
{
    return photograph.spec.get_int_attribute("Orientation", 1);
}

/// `samples` (grey, grey and alpha, RGB, RGB and alpha) as R, G, B and A, which is opaque where the
/// file has none.
cv::Mat arranged(const cv::Mat& samples, const Photograph& photograph)
{
    cv::Mat pixels;
    if (samples.channels() == 3 && !photograph.hasAlpha) {
        cv::cvtColor(samples, pixels, cv::COLOR_RGB2RGBA);
        return pixels;
    }
    const int step = photograph.isGrey ? 0 : 1;
    const int places[] = {0, 0, step, 1, 2 * step, 2, 2 * step + 1, 3};
    pixels = cv::Mat(samples.size(), CV_MAKETYPE(samples.depth(), channelsPerPixel),
                     cv::Scalar::all(fullRange(samples.depth())));
    cv::mixChannels(&samples, 1, &pixels, 1, places, photograph.hasAlpha ? 4 : 3);
    return pixels;
}

/// Splits its rows into planes, a few at a time, so that what lies between samples and planes does
/// not leave the caches.
class ParallelSplit : public cv::ParallelLoopBody
{
public:
    ParallelSplit(const Photograph& photograph, Planes& planes)
        : m_photograph(photograph), m_planes(planes), m_orientation(orientationOf(photograph))
    {}

    void operator()(const cv::Range& rows) const override
    {
        const int step = std::max(1, pixelsAtOnce / m_photograph.samples.cols);
        for (int y = rows.start; y < rows.end; y += step)
            split(cv::Range(y, std::min(y + step, rows.end)));
    }

    bool isRefused() const { return m_isRefused; }

private:
    void split(const cv::Range& rows) const;
    void place(const cv::Mat& band, const cv::Range& rows, cv::Mat& whole) const;

    static constexpr int pixelsAtOnce = 1 << 14;
    const Photograph& m_photograph;
    Planes& m_planes;
    const int m_orientation;
    mutable std::atomic<bool> m_isRefused = false;
};

void ParallelSplit::split(const cv::Range& rows) const
{
    const cv::Mat samples = arranged(m_photograph.samples.rowRange(rows), m_photograph);
    QImage image(samples.cols, samples.rows, QImage::Format_RGBA32FPx4);
    if (image.isNull())
        throw std::bad_alloc();
    cv::Mat pixels(samples.size(), CV_32FC4, image.bits(), std::size_t(image.bytesPerLine()));
    samples.convertTo(pixels, CV_32F, 1.0 / fullRange(samples.depth()));
    Planes band;
    if (!CvUtils::qimageToMat(image, band.chroma, band.alpha)) {
        m_isRefused = true;
        return;
    }
    place(band.chroma, rows, m_planes.chroma);
    if (m_photograph.hasAlpha)
        place(band.alpha, rows, m_planes.alpha);
}

/// Puts the `rows` of the stored picture where they stand in the upright one.
void ParallelSplit::place(const cv::Mat& band, const cv::Range& rows, cv::Mat& whole) const
{
    cv::Mat part = whole(uprightPlace(rows, m_photograph.samples.size(), m_orientation));
    if (isUpright(m_orientation))
        band.copyTo(part);
    else
        turnedUpright(band, m_orientation).copyTo(part);
}

/// Why the picture that `spec` describes is not decoded. `ImageInput::read_image` writes all slices
/// of a volume, for which the caller's pixels have no space, and readers allocate what a header
/// claims: all channels, however many they are, and whole tiles, however large they are.
std::optional<Failure> refuseHeader(const OIIO::ImageSpec& spec, qint64 maxPixels)
{
    if (spec.width < 1 || spec.height < 1 || spec.nchannels < 1 || spec.deep)
        return Failure{QStringLiteral("holds no picture")};
    if (spec.depth > 1)
        return Failure{
            QStringLiteral("is a volume of %1 slices and no photograph").arg(spec.depth)};
    if (auto refusal = refuseSize(spec.width, spec.height, maxPixels))
        return refusal;
    const auto maxBytes = quint64(maxPixels) * channelsPerPixel * sizeof(float);
    if (spec.image_bytes(true) > maxBytes || spec.tile_bytes(true) > maxBytes)
        return Failure{QStringLiteral("claims %1 channels and tiles of %2 x %3, which take more "
                                      "memory than --max-megapixels allows")
                           .arg(spec.nchannels)
                           .arg(spec.tile_width)
                           .arg(spec.tile_height)};
    return {};
}

} // namespace

QSize uprightSize(const Photograph& photograph)
{
    const cv::Size size = uprightSize(photograph.samples.size(), orientationOf(photograph));
    return {size.width, size.height};
}

Result<Planes> splitPhotograph(const Photograph& photograph, PixelBuffer& buffer)
{
    const cv::Size size = uprightSize(photograph.samples.size(), orientationOf(photograph));
    Planes planes{buffer.colours(size), {}, photograph.isAssociated};
    if (photograph.hasAlpha)
        planes.alpha.create(size, CV_32FC1);
    const ParallelSplit split(photograph, planes);
    cv::parallel_for_(cv::Range(0, photograph.samples.rows), split);
    if (split.isRefused())
        return Failure{QStringLiteral("the library refused the picture")};
    if (isOpaque(planes.alpha))
        planes.alpha.release();
    return planes;
}

std::optional<Failure> refuseSize(double width, double height, qint64 maxPixels)
{
    if (width * height <= double(maxPixels) && std::max(width, height) <= INT_MAX)
        return {};
    return Failure{QStringLiteral("%1 x %2 pixels are more than --max-megapixels allows (%3)")
                       .arg(width, 0, 'g', 10)
                       .arg(height, 0, 'g', 10)
                       .arg(maxPixels / 1'000'000)};
}

Result<Photograph> readPhotograph(const QString& path, qint64 maxPixels)
{
    OIIO::ImageSpec wishes;
    wishes.attribute("oiio:UnassociatedAlpha", 1); // colours as stored, not multiplied by alpha
    const auto input = OIIO::ImageInput::open(path.toStdString(), &wishes);
    if (!input)
        return Failure{oneLine(OIIO::geterror(true))};
    if (std::string_view(input->format_name()) == "ico") // its reader writes beyond its memory
        return Failure{QStringLiteral("is an icon and no photograph")};
    if (const auto refusal = refuseHeader(input->spec(), maxPixels))
        return *refusal;
    return decode(*input);
}

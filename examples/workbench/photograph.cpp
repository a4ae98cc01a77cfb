// SPDX-License-Identifier: Apache-2.0
#include "photograph.h"

#include "cmyk.h"
#include "regularfile.h"
#include "upright.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QImage>

#include <OpenImageIO/strutil.h>
#include <OpenImageIO/tiffutils.h>

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

/// The type that OpenImageIO is asked for: that of the file where it is kept, which copies nothing.
OIIO::TypeDesc formatOf(int depth)
{
    return depth == CV_32F ? OIIO::TypeDesc(OIIO::TypeFloat) : OIIO::TypeDesc(OIIO::TypeUnknown);
}

/// Why what `input` has just read, if it has, is no picture.
std::optional<Failure> failureToDecode(OIIO::ImageInput& input, bool isRead)
{
    const QString damage = damageReported(input);
    if (!isRead || !damage.isEmpty())
        return Failure{damage.isEmpty() ? QStringLiteral("cannot be decoded") : damage};
    return {};
}

/// The largest value of a channel of this depth.
double fullRange(int depth) { return depth == CV_8U ? 255.0 : depth == CV_16U ? 65535.0 : 1.0; }

/// What OpenImageIO decoded of the Exif of formats whose files we do not take apart.
std::optional<Exif> decodedExif(OIIO::ImageSpec spec)
{
    // Four numbers of 16 bits, which OpenImageIO writes as if they had 32: what lies behind them in
    // the program's memory would be in the file. The preview that they are about is not, either.
    spec.erase_attribute("Canon:ThumbnailImageValidArea");
    std::vector<char> blob;
    OIIO::encode_exif(spec, blob, OIIO::endian::little);
    QByteArray bytes(blob.data(), qsizetype(blob.size()));
    if (bytes.startsWith(QByteArrayView("Exif\0\0", 6))) // JPEG's way of naming the block
        bytes.remove(0, 6);
    return parseExif([&bytes](qint64 offset, qint64 size) { return bytes.mid(offset, size); });
}

/// Reads the metadata of the file itself, and lets OpenImageIO fill in what that did not find. Its
/// reader of WebP knows no Exif, so the orientation comes from here.
void readMetadataOf(Photograph& photograph, const std::string& name, const std::string& format)
{
    MetadataBlocks& blocks = photograph.blocks;
    OIIO::ImageSpec& spec = photograph.spec;
    blocks = readBlocks(QString::fromStdString(name));
    if (format == "webp" && blocks.exif) {
        const QByteArray exif = exifBlock(*blocks.exif);
        OIIO::decode_exif(OIIO::string_view(exif.constData(), std::size_t(exif.size())), spec);
    }
    // Some programs store the orientation as a signed number of 32 bits, which OpenImageIO ignores.
    if (format == "jpeg" && blocks.exif && !spec.find_attribute("Orientation"))
        if (const auto found = blocks.exif->image.find(ExifTag::Orientation);
            found != blocks.exif->image.end() && !found->second.value.isEmpty())
            spec.attribute("Orientation", int(uchar(found->second.value.front())));
    // libheif has turned the picture by HEIF's own properties, which alone count. OpenImageIO 2.4
    // leaves out the orientation of the Exif block, and 2.5 does not.
    if (format == "heif")
        spec.erase_attribute("Orientation");
    if (!blocks.exif)
        blocks.exif = decodedExif(spec);
    if (takesBlocks(format))
        return;
    // OpenImageIO aborts the process when it encodes an empty text, as of a comment in a GIF file.
    auto& attributes = spec.extra_attribs;
    attributes.erase(std::remove_if(attributes.begin(), attributes.end(),
                                    [](const OIIO::ParamValue& attribute) {
                                        return attribute.type() == OIIO::TypeString &&
                                               attribute.get_string().empty();
                                    }),
                     attributes.end());
    if (blocks.xmp.isEmpty())
        blocks.xmp = QByteArray::fromStdString(OIIO::encode_xmp(spec, true));
    std::vector<char> iptc;
    OIIO::encode_iptc_iim(spec, iptc);
    blocks.iptc = QByteArray(iptc.data(), qsizetype(iptc.size()));
}

QByteArray profileOf(const Photograph& photograph)
{
    const OIIO::ParamValue* const profile = photograph.spec.find_attribute("ICCProfile");
    return profile ? QByteArray(static_cast<const char*>(profile->data()),
                                qsizetype(profile->type().size()))
                   : photograph.blocks.profile;
}

/// Adobe RGB has no number of its own in Exif: it is "uncalibrated" with a name for
/// interoperability, and 2 by some cameras.
bool saysAdobeRgb(const std::optional<Exif>& exif)
{
    constexpr quint16 interoperabilityIndex = 1;
    if (!exif)
        return false;
    const auto space = exif->photo.find(ExifTag::ColorSpace);
    const auto index = exif->interoperability.find(interoperabilityIndex);
    const bool isUncalibrated = space == exif->photo.end() || space->second.value == "\xFF\xFF";
    return (isUncalibrated && index != exif->interoperability.end() &&
            index->second.value.startsWith("R03")) ||
           (space != exif->photo.end() && space->second.value == QByteArray("\2\0", 2));
}

/// `inks` through the standard profile, of which a warning tells; nothing where none is installed.
std::optional<cv::Mat> throughStandardProfile(const cv::Mat& inks, Intent intent,
                                              QStringList& warnings)
{
    const QByteArray icc = Profiles::standardCmyk();
    const auto rgb = cmykToSRgb(inks, icc, intent);
    warnings.append(rgb ? QStringLiteral("CMYK without a usable profile: %1 is taken")
                              .arg(Profiles::nameOf(icc))
                        : QStringLiteral("CMYK without a usable profile: its colours are made by "
                                         "arithmetic, as default_cmyk.icc is not installed"));
    return rgb ? std::optional(*rgb) : std::nullopt;
}

/// Replaces the four inks by sRGB. The samples stay empty where only OpenImageIO can do it.
std::optional<Failure> decodeInks(Photograph& photograph, const OIIO::ImageInput& input,
                                  const std::string& name, Intent intent)
{
    const Result<cv::Mat> inks = readInks(input, name);
    if (!inks)
        return inks.failure();
    photograph.colours.profile = Profiles::sRgb();
    photograph.colours.isAssumed = true;
    photograph.isGrey = photograph.hasAlpha = false;
    const auto own = cmykToSRgb(*inks, profileOf(photograph), intent);
    if (own)
        photograph.samples = *own;
    else if (const auto rgb = throughStandardProfile(*inks, intent, photograph.warnings))
        photograph.samples = *rgb;
    return {};
}

std::optional<Failure> decodeSamples(Photograph& photograph, OIIO::ImageInput& input)
{
    const OIIO::ImageSpec& spec = photograph.spec;
    const int type = sampleTypeOf(photograph);
    photograph.samples.create(spec.height, spec.width, type);
    const bool isRead = input.read_image(input.current_subimage(), 0, 0, CV_MAT_CN(type),
                                         formatOf(CV_MAT_DEPTH(type)), photograph.samples.data);
    return failureToDecode(input, isRead);
}

/// Whether the rows may be decoded while the output is written: they are stored as they are shown,
/// and no transparency has to be looked for before.
bool canBeInRows(const Photograph& photograph)
{
    return !photograph.hasAlpha && photograph.spec.tile_width == 0 &&
           isUpright(photograph.spec.get_int_attribute("Orientation", 1));
}

/// Whether the alpha channel of any pixel is below its largest value.
bool holdsTransparency(const Photograph& photograph)
{
    if (!photograph.hasAlpha)
        return false;
    const cv::Mat& samples = photograph.samples;
    const double opaque = fullRange(samples.depth());
    for (int y = 0; y < samples.rows; ++y) {
        cv::Mat alpha;
        cv::extractChannel(samples.row(y), alpha, samples.channels() - 1);
        if (cv::countNonZero(alpha != opaque) != 0)
            return true;
    }
    return false;
}

Result<Photograph> decode(OIIO::ImageInput& input, const std::string& name,
                          const ReadSettings& settings)
{
    Photograph photograph;
    photograph.spec = input.spec();
    const std::string format = input.format_name();
    if ((format == "openexr" || format == "hdr") &&
        !photograph.spec.find_attribute("oiio:ColorSpace"))     // as with OpenImageIO 3.1
        photograph.spec.attribute("oiio:ColorSpace", "Linear"); // which both formats hold
    describeChannels(photograph, format);
    readMetadataOf(photograph, name, format);
    const bool isInk = isCmyk(input, name);
    if (isInk)
        if (auto failure = decodeInks(photograph, input, name, settings.intent))
            return *failure;
    const bool isInRows = settings.mayBeInRows && !isInk && canBeInRows(photograph);
    if (photograph.samples.empty() && !isInRows)
        if (auto failure = decodeSamples(photograph, input))
            return *failure;
    if (!isInk)
        photograph.colours = sourceColours(photograph.spec, profileOf(photograph),
                                           photograph.isGrey, saysAdobeRgb(photograph.blocks.exif));
    if (!photograph.colours.warning.isEmpty())
        photograph.warnings.append(photograph.colours.warning);
    photograph.isTransparent = !isInRows && holdsTransparency(photograph);
    if (const int orientation = photograph.spec.get_int_attribute("Orientation", 1);
        !isUpright(orientation))
        photograph.samples = turnedUpright(photograph.samples, orientation);
    return photograph;
}

/// A photograph's file, which is opened once: a pipe that takes its path meanwhile is not read.
struct Source
{
    const QString& path;
    std::string name; ///< by which readers open the file
    std::unique_ptr<QFile> file = std::make_unique<QFile>();
};

Result<Source> openSource(const QString& path)
{
    const Failure failure{QStringLiteral("is not a regular file that can be read")};
    const auto opened = RegularFile::open(path.toStdString());
    if (!opened)
        return failure;
    Source source{path, opened->name};
    if (opened->descriptor >= 0 &&
        !source.file->open(opened->descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return failure;
    return source;
}

/// The open file, by the reader of its extension or else by the first that takes it.
Result<std::unique_ptr<OIIO::ImageInput>> openInput(const Source& source)
{
    OIIO::ImageSpec wishes;
    wishes.attribute("oiio:UnassociatedAlpha", 1); // colours as stored, not multiplied by alpha
    OIIO::ImageSpec spec;
    auto input = OIIO::ImageInput::create(QFileInfo(source.path).suffix().toStdString());
    if (input && input->open(source.name, spec, wishes))
        return input;
    const std::string said = input ? input->geterror() : std::string();
    input = OIIO::ImageInput::open(source.name, &wishes);
    const std::string reason = OIIO::geterror(true); // of the extension as well
    if (input)
        return input;
    return Failure{oneLine(OIIO::Strutil::replace(said.empty() ? reason : said, source.name,
                                                  source.path.toStdString(), true))};
}

/// How many pictures can be chosen from, 0 where nothing was counted because the format has one
/// picture or, as HEIF's, a reader that decodes what it seeks. Previews in a raw file and layers of
/// a Photoshop file are none.
int pagesOf(OIIO::ImageInput& input)
{
    const std::string_view format = input.format_name();
    if (format != "tiff" && format != "gif" && format != "webp" && format != "openexr")
        return 0;
    int pages = 1;
    while (pages < 10'000 && input.seek_subimage(pages, 0))
        ++pages;
    input.geterror(); // the end is no error
    return pages;
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

/// Splits rows of the photograph into planes, a few at a time, so that what lies between samples
/// and planes does not leave the caches.
class ParallelSplit : public cv::ParallelLoopBody
{
public:
    ParallelSplit(const Photograph& photograph, const cv::Mat& samples, Planes& planes)
        : m_photograph(photograph), m_samples(samples), m_planes(planes)
    {}

    void operator()(const cv::Range& rows) const override
    {
        const int step = std::max(1, pixelsAtOnce / m_samples.cols);
        for (int y = rows.start; y < rows.end; y += step)
            split(cv::Range(y, std::min(y + step, rows.end)));
    }

    bool isRefused() const { return m_isRefused; }

private:
    void split(const cv::Range& rows) const;

    static constexpr int pixelsAtOnce = 1 << 14;
    const Photograph& m_photograph;
    const cv::Mat& m_samples;
    Planes& m_planes;
    mutable std::atomic<bool> m_isRefused = false;
};

void ParallelSplit::split(const cv::Range& rows) const
{
    const cv::Mat samples = arranged(m_samples.rowRange(rows), m_photograph);
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
    band.chroma.copyTo(m_planes.chroma.rowRange(rows));
    if (!m_planes.alpha.empty())
        band.alpha.copyTo(m_planes.alpha.rowRange(rows));
}

/// Why the file is not opened. A block of 64 pixels takes one bit of a JPEG file at least, or a
/// little less with arithmetic coding. A large picture in a file with less than an eighth of these
/// bits is cut off. libjpeg would fill it with grey when it is opened, in gigabytes of memory.
std::optional<Failure> refuseShortJpeg(const Source& source)
{
    constexpr double mostPixelsPerByte = 8 * 64 * 8;
    constexpr double harmlessPixels = 64'000'000;
    QFile file(QString::fromStdString(source.name));
    if (!file.open(QIODevice::ReadOnly) || file.peek(3) != QByteArrayView("\xff\xd8\xff"))
        return {};
    const QSize size = NImageUtils::imageSize(source.path);
    const double pixels = double(size.width()) * size.height();
    if (pixels <= std::max(harmlessPixels, mostPixelsPerByte * double(file.size())))
        return {};
    return Failure{QStringLiteral("is cut off: %1 bytes are too few for %2 x %3 pixels")
                       .arg(file.size())
                       .arg(size.width())
                       .arg(size.height())};
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

QSize sizeOf(const Photograph& photograph)
{
    const cv::Mat& samples = photograph.samples;
    return samples.empty() ? QSize(photograph.spec.width, photograph.spec.height)
                           : QSize(samples.cols, samples.rows);
}

int sampleTypeOf(const Photograph& photograph)
{
    const OIIO::ImageSpec& spec = photograph.spec;
    return CV_MAKETYPE(depthOf(spec), std::min(spec.nchannels, channelsPerPixel));
}

std::optional<Failure> decodeRows(const Photograph& photograph, int firstRow, cv::Mat& samples)
{
    OIIO::ImageInput& input = *photograph.input;
    const int begin = photograph.spec.y + firstRow;
    const bool isRead = input.read_scanlines(
        input.current_subimage(), 0, begin, begin + samples.rows, photograph.spec.z, 0,
        samples.channels(), formatOf(samples.depth()), samples.data);
    return failureToDecode(input, isRead);
}

cv::Mat coloursOf(const Photograph& photograph, const cv::Mat& samples)
{
    if (!photograph.isGrey && samples.channels() == 3)
        return samples;
    const int step = photograph.isGrey ? 0 : 1;
    const int places[] = {0, 0, step, 1, 2 * step, 2};
    cv::Mat colours(samples.size(), CV_MAKETYPE(samples.depth(), 3));
    cv::mixChannels(&samples, 1, &colours, 1, places, 3);
    return colours;
}

Result<Planes> splitSamples(const Photograph& photograph, const cv::Mat& samples,
                            PixelBuffer& buffer)
{
    Planes planes{buffer.colours(samples.size()), {}, photograph.isAssociated};
    if (photograph.isTransparent)
        planes.alpha.create(samples.size(), CV_32FC1);
    const ParallelSplit split(photograph, samples, planes);
    cv::parallel_for_(cv::Range(0, samples.rows), split);
    if (split.isRefused())
        return Failure{QStringLiteral("the library refused the picture")};
    return planes;
}

std::optional<Failure> refuseSize(double width, double height, qint64 maxPixels)
{
    if (width * height <= double(maxPixels) && std::max(width, height) <= INT_MAX)
        return {};
    return Failure{QStringLiteral("%1 x %2 pixels are more than --max-megapixels allows (%3)")
                       .arg(width, 0, 'g', 10)
                       .arg(height, 0, 'g', 10)
                       .arg(maxPixels / 1'000'000),
                   FailureCode::TooLarge};
}

Result<Photograph> readPhotograph(const QString& path, const ReadSettings& settings)
{
    Result<Source> source = openSource(path);
    if (!source)
        return source.failure();
    if (const auto refusal = refuseShortJpeg(*source))
        return *refusal;
    auto input = openInput(*source);
    if (!input)
        return input.failure();
    if (std::string_view((*input)->format_name()) == "ico") // its reader writes beyond its memory
        return Failure{QStringLiteral("is an icon and no photograph")};
    const int pages = pagesOf(**input);
    if (pages != 0) // some readers are of no use after a page that does not exist
        input = openInput(*source);
    if (!input || (settings.page > 1 && !(*input)->seek_subimage(settings.page - 1, 0)))
        return Failure{QStringLiteral("has no page %1").arg(settings.page)};
    if (const auto refusal = refuseHeader((*input)->spec(), settings.maxPixels))
        return *refusal;
    Result<Photograph> photograph = decode(**input, source->name, settings);
    if (photograph && pages > 1 && settings.page == 1)
        photograph->warnings.append(
            QStringLiteral("has %1 pages, of which the first is taken (--page)").arg(pages));
    if (photograph && photograph->samples.empty()) {
        photograph->file = std::move(source->file);
        photograph->input = std::move(*input);
    }
    return photograph;
}

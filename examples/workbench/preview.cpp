// SPDX-License-Identifier: Apache-2.0
#include "preview.h"

#include "atomicfile.h"
#include "bands.h"
#include "crop.h"
#include "croparea.h"
#include "draft.h"
#include "exporter.h"
#include "formats.h"
#include "job.h"
#include "messages.h"
#include "naming.h"
#include "photograph.h"
#include "resample.h"
#include "samplerows.h"
#include "sharpen.h"
#include "thumbnail.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <metadatareader/metadatareader.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtGui/QColorSpace>
#include <QtGui/QImageReader>

#include <algorithm>
#include <cmath>
#include <exception>
#include <new>
#include <set>
#include <utility>

namespace {

/// The export of a photograph with fewer pixels is made in less time than an eye notices.
constexpr double quickPixels = 3e6;

double pixelsIn(QSize size) { return double(size.width()) * size.height(); }

/// Changes when the file changes, or what decoding it makes of it.
QString versionOf(const Request& request)
{
    const QFileInfo info(request.path);
    return QStringLiteral("%1 %2 %3 %4")
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(info.size())
        .arg(request.options.settings.page)
        .arg(int(request.options.settings.intent));
}

QString geometryText(const ExportSettings& settings)
{
    ExportSettings geometry;
    geometry.turn = settings.turn;
    geometry.rotate = settings.rotate;
    geometry.crop = settings.crop;
    return QString::fromUtf8(QJsonDocument(jsonOf(geometry)).toJson(QJsonDocument::Compact));
}

/// What the pixels of an export depend on, beside the photograph.
QByteArray pixelsText(const ExportSettings& settings)
{
    ExportSettings pixels;
    pixels.sizeChoice = settings.sizeChoice;
    pixels.scale = settings.scale;
    pixels.longEdge = settings.longEdge;
    pixels.box = settings.box;
    pixels.maxWidth = settings.maxWidth;
    pixels.maxHeight = settings.maxHeight;
    pixels.mayEnlarge = settings.mayEnlarge;
    pixels.rotate = settings.rotate;
    pixels.turn = settings.turn;
    pixels.crop = settings.crop;
    pixels.filter = settings.filter;
    pixels.sharpening = settings.sharpening;
    return QJsonDocument(jsonOf(pixels)).toJson(QJsonDocument::Compact);
}

/// The size of a photograph of `size` before its export.
QSize sizeBefore(QSize size, const ExportSettings& settings)
{
    const QSize upright = settings.turn > 4 ? size.transposed() : size; // as Exif numbers turns
    return turnedAndCroppedSize(upright, settings.rotate, settings.crop);
}

/// The pixels of a picture of `size` that `part` touches.
QRect pixelsOf(const QRectF& part, QSize size)
{
    const int left = int(std::floor(part.left() * size.width()));
    const int top = int(std::floor(part.top() * size.height()));
    const int right = int(std::ceil(part.right() * size.width()));
    const int bottom = int(std::ceil(part.bottom() * size.height()));
    return QRect(QPoint(left, top), QPoint(right - 1, bottom - 1)) & QRect(QPoint(), size);
}

/// `planes` reduced to `bounds`; a picture that fits stays as it is.
Result<Planes> reduced(const Planes& planes, QSize bounds)
{
    ExportSettings settings;
    settings.maxWidth = bounds.width();
    settings.maxHeight = bounds.height();
    const Result<Fit> fit = fitFor(sizeOf(planes), settings);
    return fit ? resampled(planes, *fit, {}) : fit.failure();
}

/// The exported file of `after`, a picture made of `photograph`, in the temporary folder. The file
/// is removed with the result.
Result<std::unique_ptr<AtomicFile>> encodedFile(const Photograph& photograph, const Planes& after,
                                                const Request& request)
{
    const ExportSettings& settings = request.options.settings;
    const QString extension = Naming::extensionOf(request.path, settings);
    const auto writer = writerFor(extension);
    if (const QString reason = Formats::refusalOf(extension, settings);
        !writer || !reason.isEmpty())
        return Failure{reason};
    Layout layout = layoutFor(*writer, photograph, settings.bitDepth);
    const Result<ColourPlan> plan =
        planColours(*writer, photograph, layout, settings.profile, settings.intent);
    if (!plan)
        return plan.failure();
    const Result<QImage> image = joined(after, *plan, layout);
    if (!image)
        return image.failure();
    const OIIO::ImageSpec header =
        headerFor(*writer, photograph, layout, *plan, image->size(), settings, "view");
    return exportPicture([&image] { return image; }, header, {},
                         QDir::temp().filePath(QStringLiteral("view.") + extension),
                         AtomicFile::Access::OwnerOnly);
}

/// A small picture of the file at `path` by Qt's reader, which reads JPEG files in an eighth of the
/// time that decoding them takes. Null when Qt cannot read the file.
QImage readSmall(const QString& path, QSize bounds)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid() || reader.format() != "jpeg")
        return {};
    if (size.width() > bounds.width() || size.height() > bounds.height())
        reader.setScaledSize(size.scaled(bounds * 2, Qt::KeepAspectRatio));
    QImage image = reader.read();
    if (image.colorSpace().isValid())
        image.convertToColorSpace(QColorSpace::SRgb);
    return image;
}

/// Thrown where a view is not finished because another request has come.
class GivenUp
{};

} // namespace

Message Preview::of(const Request& request, const std::function<Interrupt()>& interrupt)
{
    const Messages::Collector collector; // what is wrong with the file is told as its failure
    Message message{Message::Kind::Preview};
    message.result.path = request.path;
    m_image = {};
    m_interrupt = interrupt;
    try {
        show(request, message);
    } catch (const GivenUp&) {
        message.isGivenUp = true;
    } catch (const std::bad_alloc&) {
        m_decoded.clear();
        message.result.failure = QStringLiteral("needs more memory than there is for pictures");
    } catch (const std::exception& exception) {
        message.result.failure = QString::fromUtf8(exception.what()).simplified();
    }
    if (!message.result.failure.isEmpty() && !collector.warnings().isEmpty())
        message.result.failure = collector.warnings().last(); // the library knows better
    message.size = m_image.size();
    message.bytes = m_image.sizeInBytes();
    return message;
}

QByteArray Preview::pixels() const
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(m_image.constBits()),
                                   m_image.sizeInBytes());
}

void Preview::show(const Request& request, Message& message)
{
    if (const auto refusal = refusalOf(request.path)) {
        message.result.failure = refusal->reason;
        return;
    }
    if (request.view.kind == View::Kind::Thumbnail && showThumbnail(request, message))
        return;
    Decoded* const photograph = decoded(request, message.result);
    if (!photograph || request.view.kind == View::Kind::Prepare)
        return;
    if (request.view.mayBeDraft && showDraft(*photograph, request, message))
        return;
    message.result.failure = update(*photograph, request);
    if (!message.result.failure.isEmpty())
        return;
    if (request.view.kind == View::Kind::Encoded) {
        const Encoded& encoded = photograph->encoded;
        message.result.outputSize = sizeOf(encoded.planes);
        showPart(encoded.planes, {}, encoded.toDisplay, request.view, message);
        return;
    }
    const bool isAfter = request.view.kind == View::Kind::After;
    const Picture& picture = isAfter ? photograph->after : photograph->before;
    const QSize size = sizeOf(picture.planes);
    message.result.outputSize = isAfter ? size : QSize();
    const Result<Fit> fit = fitFor(size, request.options.settings);
    if (!isAfter && fit && fit->crop.size() != size) // what sticks out of a box is not exported
        showPart(cut(picture.planes, fit->crop), {}, photograph->toDisplay, request.view, message);
    else
        showPart(picture.planes, picture.halves, photograph->toDisplay, request.view, message);
}

/// Shows a picture that is made quickly. Returns whether there is one: not where the exact picture
/// is known already, or the photograph is so small that the exact picture is made as quickly.
bool Preview::showDraft(const Decoded& photograph, const Request& request, Message& message)
{
    const ExportSettings& settings = request.options.settings;
    const bool isAfter = request.view.kind == View::Kind::After;
    const bool isKnown = isAfter ? photograph.after.settings == pixelsText(settings)
                                 : photograph.before.settings == geometryText(settings);
    if (isKnown || pixelsIn(sizeOf(photograph.planes)) < quickPixels)
        return false;
    const Result<Fit> fit = fitFor(sizeBefore(sizeOf(photograph.planes), settings), settings);
    if (!fit)
        return false;
    const Fit shown = isAfter ? *fit : Fit{1.0, fit->crop.size(), fit->crop};
    const QRect part = pixelsOf(request.view.part, shown.size);
    const Result<Planes> planes = draftOf(photograph, request, shown, part);
    if (!planes)
        return false;
    message.whole = shown.size;
    message.part = part;
    message.isDraft = true;
    message.result.outputSize = isAfter ? shown.size : QSize();
    showPlanes(*planes, photograph.toDisplay);
    return true;
}

/// The pixels `part` of what `fit` makes of the photograph before its export: exactly those of the
/// export where they need few source pixels, otherwise from a smaller copy of the photograph.
Result<Planes> Preview::draftOf(const Decoded& photograph, const Request& request, const Fit& fit,
                                const QRect& part) const
{
    ExportSettings settings = request.options.settings;
    if (request.view.kind == View::Kind::Before) {
        settings.filter.reset();
        settings.sharpening.reset();
    }
    const QRect source = Draft::sourceOf(part, fit);
    const bool isTurned = photograph.before.settings == geometryText(settings);
    if (part.isEmpty())
        return Failure{QStringLiteral("nothing is visible")};
    if (isTurned && pixelsIn(source.size()) < quickPixels) {
        const Result<Planes> exact =
            Draft::resampledPart(photograph.before.planes, fit, settings, part);
        return exact ? reduced(*exact, request.view.bounds) : exact;
    }
    const QSize target =
        part.size().boundedTo(part.size().scaled(request.view.bounds, Qt::KeepAspectRatio));
    const Result<Planes> copy =
        reducedBefore(photograph, settings, double(target.width()) / source.width());
    if (!copy)
        return copy;
    return Draft::partOfCopy(*copy, sizeBefore(sizeOf(photograph.planes), settings), source, target,
                             target == part.size() ? settings.filter : std::nullopt);
}

/// The photograph before its export, reduced by `factor` or less.
Result<Planes> Preview::reducedBefore(const Decoded& photograph, const ExportSettings& settings,
                                      double factor)
{
    const Picture& before = photograph.before;
    if (before.settings == geometryText(settings))
        return Draft::copyFor(before.planes, before.halves, factor);
    const Planes upright =
        turned(Draft::copyFor(photograph.planes, photograph.halves, factor), settings.turn);
    if (settings.crop.isNull())
        return turnedAndCropped(upright, settings.rotate, {});
    const QSize size = sizeOf(photograph.planes);
    const QRect crop =
        Draft::scaled(settings.crop, settings.turn > 4 ? size.transposed() : size, sizeOf(upright));
    return turnedAndCropped(upright, settings.rotate,
                            CropArea::shrunk(sizeOf(upright), crop, settings.rotate));
}

/// Makes what `request` shows. Returns why this is not possible; empty when it is.
QString Preview::update(Decoded& photograph, const Request& request) const
{
    const ExportSettings& settings = request.options.settings;
    if (request.view.kind == View::Kind::Encoded)
        return updateEncoded(photograph, request);
    return request.view.kind == View::Kind::After ? updateAfter(photograph, settings)
                                                  : updateBefore(photograph, settings);
}

/// The library decides whether the photograph needs a thumbnail of its own. It needs none when one
/// that is newer than the photograph lies in the temporary folder, which is read then. None is
/// written: that is left to the export.
bool Preview::showThumbnail(const Request& request, Message& message)
{
    const QString kept = thumbnailPath(request.path);
    const bool isDue = isThumbnailDue(request.path, readMetadata(request.path));
    const bool isKept = !isDue && QFileInfo::exists(kept);
    QImage image = readSmall(isKept ? kept : request.path, request.view.bounds);
    if (image.isNull())
        return false;
    message.result.size = NImageUtils::imageSize(request.path);
    m_image = image.scaled(request.view.bounds, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                  .convertToFormat(QImage::Format_RGBA8888);
    message.part = m_image.rect();
    message.whole = m_image.size();
    return true;
}

Preview::Decoded* Preview::decoded(const Request& request, JobResult& facts)
{
    const QString version = versionOf(request);
    const auto known =
        std::find_if(m_decoded.begin(), m_decoded.end(), [&](const Decoded& photograph) {
            return photograph.path == request.path && photograph.version == version;
        });
    if (known != m_decoded.end()) {
        m_decoded.splice(m_decoded.begin(), m_decoded, known);
    } else if (request.view.kind == View::Kind::Thumbnail) {
        // Thumbnails pass through once, so they take nothing from the photographs that are shown.
        m_decoded.clear();
    }
    if (known == m_decoded.end()) {
        std::optional<Decoded> photograph = decode(request, facts);
        if (!photograph)
            return nullptr;
        photograph->version = version;
        m_decoded.push_front(std::move(*photograph));
    }
    dropOldest();
    facts = m_decoded.front().facts;
    return &m_decoded.front();
}

std::optional<Preview::Decoded> Preview::decode(const Request& request, JobResult& facts) const
{
    Result<Photograph> photograph = readPhotograph(
        request.path, {request.options.settings.maxPixels, request.options.settings.page,
                       request.options.settings.intent, true});
    Decoded result{request.path, {}, std::make_unique<PixelBuffer>(), {}, {}, {}, facts, {}};
    const Result<Planes> planes =
        !photograph ? photograph.failure()
        : photograph->samples.empty()
            ? splitInRows(*photograph, *result.buffer)
            : splitSamples(*photograph, photograph->samples, *result.buffer);
    if (!planes) {
        facts.failure = planes.failure().reason;
        return {};
    }
    result.planes = *planes;
    result.halves = Draft::halvesOf(*planes);
    result.toDisplay = toSRgb(photograph->colours, request.options.settings.intent);
    result.facts.storedSize = QSize(photograph->spec.width, photograph->spec.height);
    result.facts.size = sizeOf(*photograph);
    result.facts.metadata = tagsOf(request.path);
    result.facts.warnings = photograph->warnings;
    photograph->samples.release();
    photograph->input.reset();
    result.file = std::move(*photograph);
    return result;
}

/// Ends the work on a view, which `least` and what counts more interrupt.
void Preview::giveUpFor(Interrupt least) const
{
    if (m_interrupt() >= least)
        throw GivenUp();
}

/// Splits the rows of `photograph` while another thread decodes the next ones.
Result<Planes> Preview::splitInRows(const Photograph& photograph, PixelBuffer& buffer) const
{
    constexpr int rowsAtOnce = 128;
    const QSize size = sizeOf(photograph);
    std::vector<cv::Range> ranges;
    for (int y = 0; y < size.height(); y += rowsAtOnce)
        ranges.emplace_back(y, std::min(y + rowsAtOnce, size.height()));
    SampleRows rows(photograph, ranges);
    PixelBuffer rowBuffer;
    const Planes result{
        buffer.colours(cv::Size(size.width(), size.height())), {}, photograph.isAssociated};
    for (const cv::Range& range : ranges) {
        giveUpFor(Interrupt::Decoding);
        const Result<SampleRows::Part> part = rows.next();
        const Result<Planes> planes =
            part ? splitSamples(photograph, part->samples, rowBuffer) : part.failure();
        if (!planes)
            return planes;
        planes->chroma.copyTo(result.chroma.rowRange(range));
    }
    return result;
}

/// Returns why there is no such picture; empty when there is one.
QString Preview::updateBefore(Decoded& photograph, const ExportSettings& settings) const
{
    const QString made = geometryText(settings);
    if (photograph.before.settings == made)
        return {};
    const Result<Planes> planes =
        turnedAndCropped(turned(photograph.planes, settings.turn), settings.rotate, settings.crop);
    if (!planes)
        return planes.failure().reason;
    const bool isSame = planes->chroma.data == photograph.planes.chroma.data &&
                        sizeOf(*planes) == sizeOf(photograph.planes);
    photograph.before = {made, *planes, isSame ? photograph.halves : Draft::halvesOf(*planes)};
    return {};
}

/// Returns why there is no such picture; empty when there is one.
QString Preview::updateAfter(Decoded& photograph, const ExportSettings& settings) const
{
    const QString made = QString::fromUtf8(pixelsText(settings));
    if (photograph.after.settings == made)
        return {};
    if (QString failure = updateBefore(photograph, settings); !failure.isEmpty())
        return failure;
    const Result<Fit> fit = fitFor(sizeOf(photograph.before.planes), settings);
    const Result<Planes> planes =
        fit ? resampledInSteps(photograph, *fit, settings.filter) : fit.failure();
    if (!planes)
        return planes.failure().reason;
    photograph.after = {
        made, settings.sharpening ? sharpened(*planes, *settings.sharpening) : *planes, {}};
    return {};
}

/// Resamples the photograph before its export in bands, as the export does, and into memory that
/// was used before.
Result<Planes> Preview::resampledInSteps(Decoded& photograph, const Fit& fit,
                                         const std::optional<FilterShape>& filter) const
{
    const Planes source = cut(photograph.before.planes, fit.crop);
    const std::vector<Band> bands = bandsOf(sizeOf(source), fit);
    if (bands.size() == 1 || (fit.factor == 1.0 && !filter)) // shares the samples
        return resampled(source, {fit.factor, fit.size, {{}, sizeOf(source)}}, filter);
    photograph.after = {};
    const cv::Size size(fit.size.width(), fit.size.height());
    Planes result{photograph.afterBuffer->colours(size), {}, source.isAssociated};
    if (!source.alpha.empty())
        result.alpha.create(size, CV_32FC1);
    int y = 0;
    for (const Band& band : bands) {
        giveUpFor(Interrupt::Picture);
        const QRect part(0, band.source.start, source.chroma.cols, band.source.size());
        const Result<Planes> rows = resampled(
            source, {fit.factor, QSize(size.width, band.surplus + band.rows), part}, filter);
        if (!rows)
            return rows;
        const cv::Range kept(band.surplus, band.surplus + band.rows);
        const cv::Range place(y, y + band.rows);
        rows->chroma.rowRange(kept).copyTo(result.chroma.rowRange(place));
        if (!result.alpha.empty())
            rows->alpha.rowRange(kept).copyTo(result.alpha.rowRange(place));
        y += band.rows;
    }
    return result;
}

/// Encodes the exported picture and reads it back. Returns why this is not possible; empty when it
/// is.
QString Preview::updateEncoded(Decoded& photograph, const Request& request) const
{
    const ExportSettings& settings = request.options.settings;
    const QString made =
        QString::fromUtf8(QJsonDocument(jsonOf(settings)).toJson(QJsonDocument::Compact));
    if (photograph.encoded.settings == made)
        return {};
    if (QString failure = updateAfter(photograph, settings); !failure.isEmpty())
        return failure;
    const auto file = encodedFile(photograph.file, photograph.after.planes, request);
    if (!file)
        return file.failure().reason;
    const auto decoded =
        readPhotograph((*file)->file().fileName(), {settings.maxPixels, 1, settings.intent});
    if (!decoded)
        return decoded.failure().reason;
    Encoded& encoded = photograph.encoded;
    encoded.settings.clear(); // the planes change now
    const Result<Planes> planes = splitSamples(*decoded, decoded->samples, *encoded.buffer);
    if (!planes)
        return planes.failure().reason;
    encoded.settings = made;
    encoded.planes = *planes;
    encoded.toDisplay = toSRgb(decoded->colours, settings.intent);
    return {};
}

/// Where the view is much smaller than the picture, it is made of one of `halves`.
void Preview::showPart(const Planes& planes, const std::vector<Planes>& halves,
                       const ColourTransform& toDisplay, const View& view, Message& message)
{
    message.whole = sizeOf(planes);
    message.part = pixelsOf(view.part, message.whole);
    if (message.part.isEmpty())
        return;
    const QSize target = message.part.size().scaled(view.bounds, Qt::KeepAspectRatio);
    const Planes& copy =
        Draft::copyFor(planes, halves, double(target.width()) / message.part.width());
    const QRect part = Draft::scaled(message.part, message.whole, sizeOf(copy));
    const Result<Planes> small = reduced(cut(copy, part), view.bounds);
    if (small)
        showPlanes(*small, toDisplay);
    else
        message.result.failure = small.failure().reason;
}

void Preview::showPlanes(const Planes& planes, const ColourTransform& toDisplay)
{
    Planes shown = associated(toDisplay.converted(planes), false);
    m_image = CvUtils::matToQImage(shown.chroma, shown.alpha);
    m_image.convertTo(QImage::Format_RGBA8888);
}

/// The bytes of the samples that a photograph keeps; those that two pictures share count once.
qint64 Preview::bytesOf(const Decoded& photograph)
{
    std::vector<Planes> all{photograph.planes, photograph.before.planes, photograph.after.planes,
                            photograph.encoded.planes};
    all.insert(all.end(), photograph.halves.begin(), photograph.halves.end());
    all.insert(all.end(), photograph.before.halves.begin(), photograph.before.halves.end());
    std::set<const uchar*> counted;
    qint64 bytes = 0;
    for (const Planes& planes : all)
        if (counted.insert(planes.chroma.datastart).second)
            bytes += qint64(planes.chroma.total() * planes.chroma.elemSize() +
                            planes.alpha.total() * planes.alpha.elemSize());
    return bytes;
}

/// The photograph that is shown stays, however large it is.
void Preview::dropOldest()
{
    qint64 bytes = 0;
    for (auto photograph = m_decoded.begin(); photograph != m_decoded.end();) {
        bytes += bytesOf(*photograph);
        const bool isTooMuch = photograph != m_decoded.begin() && bytes > m_bytes;
        photograph = isTooMuch ? m_decoded.erase(photograph) : std::next(photograph);
    }
}

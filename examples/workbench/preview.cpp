// SPDX-License-Identifier: Apache-2.0
#include "preview.h"

#include "atomicfile.h"
#include "bands.h"
#include "crop.h"
#include "exporter.h"
#include "formats.h"
#include "job.h"
#include "messages.h"
#include "naming.h"
#include "photograph.h"
#include "resample.h"
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
#include <utility>

namespace {

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

} // namespace

Message Preview::of(const Request& request)
{
    const Messages::Collector collector; // what is wrong with the file is told as its failure
    Message message{Message::Kind::Preview};
    message.result.path = request.path;
    m_image = {};
    try {
        show(request, message);
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
    message.result.failure = update(*photograph, request);
    if (!message.result.failure.isEmpty())
        return;
    if (request.view.kind == View::Kind::Encoded) {
        const Encoded& encoded = photograph->encoded;
        message.result.outputSize = sizeOf(encoded.planes);
        showPart(encoded.planes, encoded.toDisplay, request.view, message);
        return;
    }
    const bool isAfter = request.view.kind == View::Kind::After;
    Planes planes = isAfter ? photograph->after.planes : photograph->before.planes;
    const Result<Fit> fit = fitFor(sizeOf(planes), request.options.settings);
    if (!isAfter && fit) // without what sticks out of a box that is to be filled
        planes = cut(planes, fit->crop);
    message.result.outputSize = isAfter ? sizeOf(planes) : QSize();
    showPart(planes, photograph->toDisplay, request.view, message);
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
                       request.options.settings.intent});
    Decoded result{request.path, {}, std::make_unique<PixelBuffer>(), {}, {}, facts, {}};
    const Result<Planes> planes =
        photograph ? splitSamples(*photograph, photograph->samples, *result.buffer)
                   : photograph.failure();
    if (!planes) {
        facts.failure = planes.failure().reason;
        return {};
    }
    result.planes = *planes;
    result.toDisplay = toSRgb(photograph->colours, request.options.settings.intent);
    result.facts.storedSize = QSize(photograph->spec.width, photograph->spec.height);
    result.facts.size = sizeOf(*photograph);
    result.facts.metadata = tagsOf(request.path);
    result.facts.warnings = photograph->warnings;
    photograph->samples.release();
    result.file = std::move(*photograph);
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
    photograph.before = {made, *planes};
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
    const Planes& source = photograph.before.planes;
    const Result<Fit> fit = fitFor(sizeOf(source), settings);
    const Result<Planes> planes = fit ? resampled(source, *fit, settings.filter) : fit.failure();
    if (!planes)
        return planes.failure().reason;
    photograph.after = {made,
                        settings.sharpening ? sharpened(*planes, *settings.sharpening) : *planes};
    return {};
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

void Preview::showPart(const Planes& planes, const ColourTransform& toDisplay, const View& view,
                       Message& message)
{
    message.whole = sizeOf(planes);
    message.part = pixelsOf(view.part, message.whole);
    if (message.part.isEmpty())
        return;
    const Result<Planes> small = reduced(cut(planes, message.part), view.bounds);
    if (!small) {
        message.result.failure = small.failure().reason;
        return;
    }
    Planes shown = associated(toDisplay.converted(*small), false);
    m_image = CvUtils::matToQImage(shown.chroma, shown.alpha);
    m_image.convertTo(QImage::Format_RGBA8888);
}

/// The bytes of the samples that a photograph keeps; those that two pictures share count once.
qint64 Preview::bytesOf(const Decoded& photograph)
{
    qint64 bytes = 0;
    for (const Planes* const planes : {&photograph.planes, &photograph.before.planes,
                                       &photograph.after.planes, &photograph.encoded.planes})
        if (planes == &photograph.planes ||
            planes->chroma.datastart != photograph.planes.chroma.datastart)
            bytes += qint64(planes->chroma.total() * planes->chroma.elemSize() +
                            planes->alpha.total() * planes->alpha.elemSize());
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

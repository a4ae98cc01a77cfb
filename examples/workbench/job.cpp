// SPDX-License-Identifier: Apache-2.0
#include "job.h"

#include "bands.h"
#include "crop.h"
#include "croparea.h"
#include "exporter.h"
#include "exportrecord.h"
#include "folderlock.h"
#include "formats.h"
#include "messages.h"
#include "naming.h"
#include "photograph.h"
#include "sharpen.h"
#include "thumbnail.h"
#include "upright.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <metadatareader/metadatareader.h>
#include <timing/elapsedtime.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

#include <exception>
#include <filesystem>
#include <initializer_list>
#include <new>
#include <system_error>
#include <utility>

namespace {

using Refusal = std::optional<Failure>;

/// What can be said without opening the file. Opening a pipe or a device might never return.
Refusal refuseEntry(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Failure{QStringLiteral("no such file"), FailureCode::Missing};
    if (info.isDir())
        return Failure{QStringLiteral("is a folder"), FailureCode::NotAFile};
    if (!info.isFile())
        return Failure{QStringLiteral("is not a regular file"), FailureCode::NotAFile};
    if (info.size() == 0)
        return Failure{QStringLiteral("is empty"), FailureCode::Empty};
    if (const QString refusal = Formats::refusalOfName(path); !refusal.isEmpty())
        return Failure{refusal, FailureCode::NotAPhotograph};
    if (!Formats::isPhotographName(path))
        return Failure{QStringLiteral("is not named as a photograph"), FailureCode::NotAPhotograph};
    return {};
}

Refusal refuseForFormat(const QString& extension, QSize size)
{
    const QString reason = Formats::refusalOf(extension, size);
    return reason.isEmpty() ? Refusal() : Failure{reason, FailureCode::Format};
}

/// The tags that a photographer looks for first; those that the file does not have are left out.
QJsonObject tagsOf(const NExifToolMetadata& metadata)
{
    QJsonObject tags{{QStringLiteral("FileType"), metadata.fileType()}};
    for (const char* const key :
         {"Make", "Model", "LensModel", "DateTimeOriginal", "ExposureTime", "FNumber", "ISO",
          "FocalLength", "Orientation", "GPSLatitude", "GPSLongitude", "thumbnail"}) {
        const QVariant value = metadata.value(QString::fromLatin1(key));
        if (value.isValid())
            tags.insert(QString::fromLatin1(key), QJsonValue::fromVariant(value));
    }
    return tags;
}

/// Everything that changes the bytes of an output of the kind `extension`. Of a profile the content
/// counts, not its name.
QString settingsText(const ExportSettings& settings, const QString& extension)
{
    const Result<QByteArray> profile = Profiles::fromFile(settings.profile);
    const QByteArray digest =
        profile ? QCryptographicHash::hash(*profile, QCryptographicHash::Sha256).toHex() : "";
    return QString::fromUtf8(
        QJsonDocument(recordedSettings(settings, extension)).toJson(QJsonDocument::Compact) +
        digest);
}

/// The day when the photograph at `path` was taken, by the camera's clock; without it the day of
/// the file's last change, in the time zone of the machine.
QString dateOf(const QString& path, const QJsonObject& tags)
{
    const QString taken = tags[QLatin1String("DateTimeOriginal")].toString();
    const QDate date = QDate::fromString(taken.left(10), QStringLiteral("yyyy:MM:dd"));
    return (date.isValid() ? date : QFileInfo(path).lastModified().date()).toString(Qt::ISODate);
}

/// One file that a photograph gives.
struct Output
{
    QString wantedPath;
    QString record;
};

/// The bytes that the pixels of a photograph take while it is in work, as measured.
qint64 memoryFor(QSize source, QSize output, const ExportSettings& settings)
{
    constexpr qint64 bytesPerPixel = 16; // samples, and what decoders hold besides
    constexpr qint64 bytesPerTurnedPixel = 64;
    constexpr qint64 bytesPerOutputPixel = 64;
    const auto pixels = [](QSize size) { return qint64(size.width()) * size.height(); };
    return pixels(source) * (settings.rotate == 0.0 ? bytesPerPixel : bytesPerTurnedPixel) +
           pixels(output) * bytesPerOutputPixel;
}

/// Whether both names, or the links that they are, lead to one file.
bool isSameFile(const QString& a, const QString& b)
{
    std::error_code error;
    return std::filesystem::equivalent(QFileInfo(a).filesystemFilePath(),
                                       QFileInfo(b).filesystemFilePath(), error);
}

class Job
{
public:
    Job(const Request& request, const JobContext& context, JobResult& result)
        : m_request(request), m_settings(request.options.settings), m_context(context),
          m_result(result)
    {}

    Refusal run();

private:
    using Work = Refusal (Job::*)();
    using Stage = std::pair<Step, Work>;

    /// Does one step and measures its time.
    Refusal step(Step step, Work work);
    Refusal take(std::initializer_list<Stage> stages);

    Refusal readHeader();
    Refusal planOutputs();
    Output outputOf(const QString& extension, bool isBitmap) const;
    bool findKept();
    void plan();
    Refusal decode();
    Refusal split();
    Refusal analyse();
    Refusal resample();
    Refusal join();
    Refusal write();
    Refusal writeInBands();
    Refusal writeBitmap();
    Refusal exportRows(QSize size, const NextRows& nextRows);
    bool isMadeInBands() const;
    bool isOutputSizeKnown() const;
    void writeThumbnailBeside();
    ExportRecord::Output find(const Output& output) const;
    QString recordOf(const Output& output) const;
    Refusal publish(const Result<std::unique_ptr<AtomicFile>>& file, const Output& output,
                    QString& path);

    const Request& m_request;
    const ExportSettings& m_settings;
    const JobContext& m_context;
    JobResult& m_result;

    Output m_picture;
    Output m_bitmap;
    std::unique_ptr<OIIO::ImageOutput> m_writer;
    Photograph m_photograph;
    Layout m_layout{};
    ColourPlan m_colours{};
    bool m_isThumbnailDue = false;
    QSize m_outputSize; ///< as far as the header tells
    Planes m_planes;
    QImage m_image;
};

Refusal Job::step(Step step, Work work)
{
    m_result.failedStep = step; // if it fails
    m_context.onStep(step);
    const qint64 begin = ElapsedTime::monotonicNanoseconds();
    const Refusal refusal = (this->*work)();
    const qint64 end = ElapsedTime::monotonicNanoseconds();
    m_result.milliseconds[std::size_t(step)] += double(end - begin) / 1e6;
    return refusal;
}

Refusal Job::run()
{
    if (Refusal refusal = refuseEntry(m_result.path))
        return refusal;
    if (m_request.mayBeOutput && ExportRecord::isOutput(m_result.path)) {
        m_result.output = m_result.path;
        m_result.isKept = m_result.isOwnOutput = true;
        return {};
    }
    if (Refusal refusal = step(Step::Header, &Job::readHeader))
        return refusal;
    if (findKept())
        return {};
    if (m_request.options.isDryRun) {
        plan();
        return {};
    }
    m_context.takeMemory(memoryFor(m_result.size, m_outputSize, m_settings));
    if (isMadeInBands())
        return take({{Step::Decode, &Job::decode},
                     {Step::Analyse, &Job::analyse},
                     {Step::Write, &Job::writeInBands}});
    return take({{Step::Decode, &Job::decode},
                 {Step::Analyse, &Job::analyse},
                 {Step::Split, &Job::split},
                 {Step::Resample, &Job::resample},
                 {Step::Bitmap, &Job::writeBitmap},
                 {Step::Join, &Job::join},
                 {Step::Write, &Job::write}});
}

Refusal Job::take(std::initializer_list<Stage> stages)
{
    for (const auto& [name, work] : stages) {
        if (name == Step::Bitmap && !m_settings.bitmap)
            continue;
        if (Refusal refusal = step(name, work))
            return refusal;
    }
    return {};
}

/// Whether each row of the output needs only some rows of the photograph.
bool Job::isMadeInBands() const
{
    return m_settings.rotate == 0.0 && m_settings.crop.isNull() && !m_settings.bitmap &&
           !m_settings.sharpening && !m_settings.isLossless &&
           m_settings.sizeChoice != SizeChoice::Fill;
}

/// Before a turned photograph is decoded, only a crop of given size tells what is left of it.
bool Job::isOutputSizeKnown() const
{
    return m_settings.rotate == 0.0 || !m_settings.crop.isNull();
}

Refusal Job::readHeader()
{
    m_result.size = NImageUtils::imageSize(m_result.path);
    if (!m_result.size.isValid())
        return Failure{QStringLiteral("has no header that can be read")};
    if (Refusal refusal =
            refuseSize(m_result.size.width(), m_result.size.height(), m_settings.maxPixels))
        return refusal;
    const bool isTransposed = m_settings.turn > 4; // as Exif orientations are numbered
    const QSize turned = isTransposed ? m_result.size.transposed() : m_result.size;
    const QString reason = CropArea::refusalOf(turned, m_settings.crop, m_settings.rotate);
    if (!reason.isEmpty())
        return Failure{reason};
    const Result<Fit> fit =
        fitFor(m_settings.crop.isNull() ? turned : m_settings.crop.size(), m_settings);
    if (!fit)
        return fit.failure();
    m_outputSize = fit->size;
    const NExifToolMetadata metadata = readMetadata(m_result.path);
    m_result.metadata = tagsOf(metadata);
    m_isThumbnailDue = isThumbnailDue(m_result.path, metadata);
    return planOutputs();
}

Refusal Job::planOutputs()
{
    const QString extension = Naming::extensionOf(m_result.path, m_settings);
    m_writer = writerFor(extension);
    if (!m_writer)
        return Failure{
            QStringLiteral("files of the format \"%1\" cannot be written").arg(extension),
            FailureCode::Format};
    if (const QString refusal = Formats::refusalOf(extension, m_settings); !refusal.isEmpty())
        return Failure{refusal, FailureCode::Format};
    if (isOutputSizeKnown())
        if (Refusal refusal = refuseForFormat(extension, m_outputSize))
            return refusal;
    m_result.key = NImageUtils::hashParams(recordedSettings(m_settings, extension).toVariantMap());
    m_picture = outputOf(extension, false);
    m_bitmap = outputOf(QStringLiteral("bmp"), true);
    return {};
}

Output Job::outputOf(const QString& extension, bool isBitmap) const
{
    const Source source{m_result.path,
                        {},
                        false,
                        m_request.subfolder,
                        m_request.number,
                        dateOf(m_result.path, m_result.metadata)};
    const QString text =
        settingsText(m_settings, extension) + (isBitmap ? QStringLiteral(" bitmap") : QString());
    return {Naming::pathOf(source, m_settings, extension),
            ExportRecord::recordFor(m_result.path, text)};
}

bool Job::findKept()
{
    const ExportRecord::Output kept = find(m_picture);
    m_result.output = kept.path;
    if (m_settings.bitmap)
        m_result.bitmap = find(m_bitmap).path;
    m_result.isKept = !m_result.output.isEmpty() &&
                      (!m_settings.bitmap || !m_result.bitmap.isEmpty()) && !m_isThumbnailDue;
    if (!m_result.output.isEmpty())
        m_result.outputSize = NImageUtils::imageSize(m_result.output);
    if (m_result.isKept) {
        m_result.storedSize = kept.facts.storedSize;
        m_result.isGrey = kept.facts.isGrey;
        m_result.isLumaNoise = kept.facts.isLumaNoise;
    }
    return m_result.isKept;
}

ExportRecord::Output Job::find(const Output& output) const
{
    return ExportRecord::find(output.wantedPath, output.record, !m_settings.mayOverwrite);
}

/// Names the outputs that a run would write.
void Job::plan()
{
    const auto name = [this](const Output& output) {
        return m_settings.mayOverwrite ? output.wantedPath : freeName(output.wantedPath);
    };
    m_result.isPlanned = true;
    if (isOutputSizeKnown())
        m_result.outputSize = m_outputSize;
    if (m_result.output.isEmpty())
        m_result.output = name(m_picture);
    if (m_settings.bitmap && m_result.bitmap.isEmpty())
        m_result.bitmap = name(m_bitmap);
}

Refusal Job::decode()
{
    const bool mayBeInRows = isMadeInBands() && isUpright(m_settings.turn) && !m_isThumbnailDue;
    Result<Photograph> photograph = readPhotograph(
        m_result.path, {m_settings.maxPixels, m_settings.page, m_settings.intent, mayBeInRows});
    if (!photograph)
        return photograph.failure();
    m_photograph = std::move(*photograph);
    m_result.storedSize = QSize(m_photograph.spec.width, m_photograph.spec.height);
    m_result.size = sizeOf(m_photograph);
    m_result.warnings.append(m_photograph.warnings);
    m_layout = layoutFor(*m_writer, m_photograph, m_settings.bitDepth);
    const Result<ColourPlan> plan =
        planColours(*m_writer, m_photograph, m_layout, m_settings.profile, m_settings.intent);
    if (!plan)
        return plan.failure();
    m_colours = *plan;
    if (m_isThumbnailDue)
        writeThumbnailBeside();
    if (!isUpright(m_settings.turn))
        m_photograph.samples = turnedUpright(m_photograph.samples, m_settings.turn);
    return {};
}

Refusal Job::split()
{
    Result<Planes> planes = splitSamples(m_photograph, m_photograph.samples, m_context.buffer);
    if (!planes)
        return planes.failure();
    m_planes = std::move(*planes);
    m_photograph.samples.release();
    return {};
}

Refusal Job::analyse()
{
    if (m_photograph.samples.empty())
        return {}; // the rows are examined as they pass by
    const cv::Mat colours = coloursOf(m_photograph, m_photograph.samples);
    m_result.isGrey = CvUtils::isMonochrome(colours);
    m_result.isLumaNoise = CvUtils::isLumaNoise(colours);
    return {};
}

Refusal Job::resample()
{
    const Result<Planes> cropped = turnedAndCropped(m_planes, m_settings.rotate, m_settings.crop);
    if (!cropped)
        return cropped.failure();
    m_planes = *cropped;
    const Result<Fit> fit = fitFor(sizeOf(m_planes), m_settings);
    if (!fit)
        return fit.failure();
    Result<Planes> planes = resampled(m_planes, *fit, m_settings.filter);
    if (!planes)
        return planes.failure();
    m_planes = m_settings.sharpening ? sharpened(*planes, *m_settings.sharpening) : *planes;
    m_result.outputSize = fit->size;
    return refuseForFormat(QFileInfo(m_picture.wantedPath).suffix(), fit->size);
}

/// A thumbnail that cannot be written is no reason to lose the photograph.
void Job::writeThumbnailBeside()
{
    const Result<QString> thumbnail = writeThumbnail(
        m_photograph, m_settings.intent, m_context.buffer, m_result.path, m_settings.quality);
    if (thumbnail)
        m_result.thumbnail = *thumbnail;
    else
        m_result.warnings.append(
            QStringLiteral("no thumbnail: %1").arg(thumbnail.failure().reason));
}

Refusal Job::writeBitmap()
{
    if (!m_result.bitmap.isEmpty())
        return {}; // it was kept
    const ColourTransform transform = toSRgb(m_photograph.colours, m_settings.intent);
    return publish(
        exportBitmap(overWhite(transform.converted(m_planes)).chroma, m_bitmap.wantedPath),
        m_bitmap, m_result.bitmap);
}

Refusal Job::join()
{
    const Result<QImage> image = joined(std::exchange(m_planes, {}), m_colours, m_layout);
    if (!image)
        return image.failure();
    m_image = *image;
    return {};
}

Refusal Job::write()
{
    return exportRows(m_image.size(), [this] { return Result<QImage>(m_image); });
}

/// Makes the output while it is written, a few rows at a time.
Refusal Job::writeInBands()
{
    const Result<Fit> fit = fitFor(sizeOf(m_photograph), m_settings);
    if (!fit)
        return fit.failure();
    m_result.outputSize = fit->size;
    if (Refusal refusal = refuseForFormat(QFileInfo(m_picture.wantedPath).suffix(), fit->size))
        return refusal;
    BandedOutput output(m_photograph, {*fit, m_settings.filter, m_layout, m_colours},
                        m_context.buffer, m_context.onStep);
    Refusal refusal = exportRows(fit->size, [&output] { return output.next(); });
    // The rest of the time is the encoder's.
    for (const Step step : {Step::Decode, Step::Analyse, Step::Resample, Step::Join}) {
        m_result.milliseconds[std::size_t(step)] += output.milliseconds(step);
        m_result.milliseconds[std::size_t(Step::Write)] -= output.milliseconds(step);
    }
    if (output.isUndecodable())
        m_result.failedStep = Step::Decode;
    if (!refusal && m_photograph.samples.empty()) {
        m_result.isGrey = output.examination().isGrey();
        m_result.isLumaNoise = output.examination().isLumaNoise();
    }
    return refusal;
}

Refusal Job::exportRows(QSize size, const NextRows& nextRows)
{
    if (!m_result.output.isEmpty())
        return {}; // it was kept
    const QString record = recordOf(m_picture);
    const OIIO::ImageSpec header =
        headerFor(*m_writer, m_photograph, m_layout, m_colours, size, m_settings, record);
    const MetadataBlocks blocks =
        exportedBlocks(m_photograph.blocks, m_settings.metadata, {size, m_colours.isSRgb, record});
    for (const QString& title : leftOutBlocks(m_writer->format_name(), blocks))
        m_result.warnings.append(
            QStringLiteral("its %1 is left out, as JPEG has 64 KB for it").arg(title));
    return publish(exportPicture(nextRows, header, blocks, m_picture.wantedPath), m_picture,
                   m_result.output);
}

/// With what a later run wants to know of the photograph when it keeps the output.
QString Job::recordOf(const Output& output) const
{
    return ExportRecord::withFacts(output.record,
                                   {m_result.storedSize, m_result.isGrey, m_result.isLumaNoise});
}

/// Gives the file its name, unless another run has written the same picture meanwhile.
Refusal Job::publish(const Result<std::unique_ptr<AtomicFile>>& file, const Output& output,
                     QString& path)
{
    if (!file)
        return file.failure();
    const FolderLock lock(QFileInfo(output.wantedPath).filesystemPath());
    path = find(output).path;
    if (!path.isEmpty())
        return {};
    if (m_settings.mayOverwrite && isSameFile(output.wantedPath, m_result.path))
        return Failure{QStringLiteral("its output would replace it"), FailureCode::Refused};
    const Result<QString> published = m_settings.mayOverwrite ? (*file)->replace(output.wantedPath)
                                                              : (*file)->publish(output.wantedPath);
    if (!published)
        return published.failure();
    path = *published;
    if (const auto failure = ExportRecord::remember(path, recordOf(output)))
        m_result.warnings.append(
            QStringLiteral("cannot be kept next time: %1").arg(failure->reason));
    return {};
}

} // namespace

std::optional<Failure> refusalOf(const QString& path) { return refuseEntry(path); }

QJsonObject tagsOf(const QString& path) { return tagsOf(readMetadata(path)); }

JobResult runJob(const Request& request, const JobContext& context)
{
    Messages::Collector collector;
    JobResult result;
    result.path = request.path;
    try {
        if (const Refusal refusal = Job(request, context, result).run()) {
            result.failure = refusal->reason;
            result.code = refusal->code;
        }
    } catch (const std::exception& exception) {
        const auto* const error = dynamic_cast<const cv::Exception*>(&exception);
        const bool isMemory = dynamic_cast<const std::bad_alloc*>(&exception) ||
                              (error && error->code == cv::Error::StsNoMem);
        result.failure =
            isMemory ? QStringLiteral("needs more memory than --max-memory allows or there is")
                     : QString::fromUtf8(exception.what()).simplified();
        result.code = isMemory ? FailureCode::Memory : result.code;
    }
    const QStringList& said = collector.warnings();
    if (result.failure.isEmpty())
        result.warnings.append(said);
    else if (!said.isEmpty())
        result.failure = said.last(); // the library knows better what was wrong
    return result;
}

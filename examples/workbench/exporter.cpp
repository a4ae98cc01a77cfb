// SPDX-License-Identifier: Apache-2.0
#include "exporter.h"

#include "atomicfile.h"
#include "checkedfile.h"
#include "losslesswebp.h"
#include "readback.h"

#include <imageutils/cvutils.h>

#include <QtCore/QFileInfo>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <string_view>

namespace {

constexpr OIIO::stride_t bytesPerPixel = 4 * sizeof(float);

/// Why the system gives the file at `path` no more space; empty when it does. Encoders lose this
/// reason, and the file is of no use any more.
QString refusalToGrow(const QString& path)
{
    const QByteArray block(1 << 16, '\0');
    QFile file(path);
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered))
        return {};
    // The first part of a block may still be accepted, without an error.
    for (int attempt = 0; attempt < 2; ++attempt)
        if (file.write(block) < 0)
            return file.errorString();
    return {};
}

Failure cannotBeWritten(AtomicFile& whole, const QString& reason)
{
    const QString ofSystem = refusalToGrow(whole.file().fileName());
    return {QStringLiteral("cannot be written: %1").arg(ofSystem.isEmpty() ? reason : ofSystem)};
}

/// Puts the channels of `image` that are written in front: of grey and alpha that is R and A.
void packChannels(QImage& image, int channels)
{
    if (channels != 2)
        return;
    cv::Mat pixels(image.height(), image.width(), CV_32FC4, image.bits(),
                   std::size_t(image.bytesPerLine()));
    const int alphaSecond[] = {3, 1};
    cv::mixChannels(&pixels, 1, &pixels, 1, alphaSecond, 1);
}

/// Colours outside the primaries of a format are negative in one channel. Radiance's HDR stores the
/// magnitude alone, and such a channel would come out bright.
void clipNegatives(QImage& image)
{
    cv::Mat pixels(image.height(), image.width(), CV_32FC4, image.bits(),
                   std::size_t(image.bytesPerLine()));
    cv::max(pixels, 0.0, pixels);
}

/// Writes the rows until `file` fails, and gives their failure back where they cannot be made. What
/// the writer itself has refused it tells afterwards.
std::optional<Failure> writeRows(OIIO::ImageOutput& writer, const CheckedFile& file,
                                 const NextRows& nextRows, const OIIO::ImageSpec& header,
                                 ReadBack& readBack, bool& isWritten)
{
    for (int y = 0; y < header.height && isWritten;) {
        Result<QImage> rows = nextRows();
        if (!rows)
            return rows.failure();
        packChannels(*rows, header.nchannels);
        if (std::string_view(writer.format_name()) == "hdr")
            clipNegatives(*rows);
        readBack.add(*rows);
        const int end = y + rows->height();
        isWritten = writer.write_scanlines(y, end, 0, OIIO::TypeFloat, rows->constBits(),
                                           bytesPerPixel, rows->bytesPerLine()) &&
                    file.failure().isEmpty();
        y = end;
    }
    return {};
}

/// Whether `writer` writes into a file of ours. That of TIFF loses the picture when there is Exif,
/// which it writes last and for which it reads the file again, from nowhere.
bool writesInto(CheckedFile& file, OIIO::ImageOutput& writer)
{
    return writer.supports("ioproxy") && std::string_view(writer.format_name()) != "tiff" &&
           writer.set_ioproxy(&file);
}

/// Why the file that `writer` has closed is not whole; empty when it is.
QString failureToFinish(AtomicFile& whole, const OIIO::ImageSpec& header,
                        const MetadataBlocks& blocks, const ReadBack& readBack)
{
    const QSize size(header.width, header.height);
    const QString failure = writeBlocks(whole.file(), blocks, size, header.alpha_channel >= 0);
    if (!failure.isEmpty())
        return failure;
    if (!readBack.isWhole(whole.file().fileName().toStdString()))
        return QStringLiteral("the file does not hold the picture");
    return {};
}

std::optional<Failure> failureToWriteLossless(AtomicFile& whole, const NextRows& nextRows,
                                              const OIIO::ImageSpec& header,
                                              const MetadataBlocks& blocks)
{
    const Result<QImage> image = nextRows(); // all of them
    if (!image)
        return image.failure();
    if (!writeLosslessWebP(whole.file(), *image))
        return cannotBeWritten(whole, QStringLiteral("not all bytes were encoded and written"));
    const QString failure = failureToFinish(whole, header, blocks, ReadBack(header, "webp", false));
    return failure.isEmpty() ? std::nullopt : std::optional(cannotBeWritten(whole, failure));
}

/// Why there is no whole file.
std::optional<Failure> failureToWrite(AtomicFile& whole, const NextRows& nextRows,
                                      const OIIO::ImageSpec& header, const MetadataBlocks& blocks)
{
    const QString extension = QFileInfo(whole.file().fileName()).suffix();
    CheckedFile file(whole.file()); // outlives the writer, which may close only as it goes away
    if (header.get_string_attribute("compression") == "lossless")
        return failureToWriteLossless(whole, nextRows, header, blocks);
    const auto writer = writerFor(extension);
    const bool isChecked = writesInto(file, *writer);
    bool isWritten = writer->open(whole.file().fileName().toStdString(), header);
    ReadBack readBack(writer->spec(), writer->format_name(), isChecked);
    if (auto failure = writeRows(*writer, file, nextRows, header, readBack, isWritten))
        return failure;
    isWritten = isWritten && writer->close();
    if (isChecked)
        file.finish();
    if (!file.failure().isEmpty())
        return cannotBeWritten(whole, file.failure());
    if (!isWritten)
        return cannotBeWritten(whole, QString::fromStdString(writer->geterror()).simplified());
    const QString failure = failureToFinish(whole, header, blocks, readBack);
    return failure.isEmpty() ? std::nullopt : std::optional(cannotBeWritten(whole, failure));
}

qint64 bitmapLength(const cv::Mat& pixels)
{
    constexpr qint64 headers = 54;
    const qint64 paddedRow = (qint64(pixels.cols) * 3 + 3) / 4 * 4;
    return headers + pixels.rows * paddedRow;
}

} // namespace

Result<std::unique_ptr<AtomicFile>>
exportPicture(const NextRows& nextRows, const OIIO::ImageSpec& header, const MetadataBlocks& blocks,
              const QString& wantedPath, AtomicFile::Access access)
{
    const QFileInfo wanted(wantedPath);
    auto whole = AtomicFile::create(wanted.path(), wanted.suffix(), access);
    if (!whole)
        return whole;
    OIIO::ImageSpec spec = header;
    const auto writer = writerFor(wanted.suffix());
    if (writer && std::string_view(writer->format_name()) == "heif") {
        spec.attribute("ImageDescription", exifPlaceholder(blocks));
        // Without the name of the encoder the writer ignores the quality.
        const bool isAvif = wanted.suffix().toLower() == QLatin1String("avif");
        spec.attribute("compression", isAvif ? "avif" : "heic");
    }
    if (const auto failure = failureToWrite(**whole, nextRows, spec, blocks)) {
        const auto lost = (*whole)->failureIfLost(); // the reason of a writer's failure
        return lost ? *lost : *failure;
    }
    return whole;
}

Result<std::unique_ptr<AtomicFile>> exportBitmap(const cv::Mat& chroma, const QString& wantedPath)
{
    const QFileInfo wanted(wantedPath);
    auto whole = AtomicFile::create(wanted.path(), wanted.suffix());
    if (!whole)
        return whole;
    const QString path = (*whole)->file().fileName();
    CvUtils::imwrite(path, chroma, cv::COLOR_RGB2BGR, 255.0F, 0.0F, 1.0F);
    // It reports nothing, and says nothing of a full disk.
    if (QFileInfo(path).size() != bitmapLength(chroma))
        return cannotBeWritten(**whole, QStringLiteral("not all bytes arrived"));
    return whole;
}

// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>

#include <imageutils/cvutils_p.h>
#include <imageutils/picturewriter.h>

#include <timing/elapsedtime.h>

#include <QtCore/QDebug>
#include <QtCore/QFileInfo>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <memory>
#include <numeric>

namespace {

constexpr int depthMask = 7;

/// Prefaults the rows of new matrices, the widest of which has `rowBytes` bytes in a row, and calls
/// `convert` for each. This happens a few rows at a time, so that the memory that the kernel has
/// just cleared is still in the cache.
template<typename Convert>
void writeNewRows(const cv::Range& rows, std::size_t rowBytes,
                  std::initializer_list<const RowPrefaulter*> prefaulters, const Convert& convert)
{
    constexpr std::size_t blockBytes = 1 << 20;
    const int blockRows = int(blockBytes / rowBytes) + 1;
    for (int top = rows.start; top < rows.end; top += blockRows) {
        const cv::Range block(top, std::min(top + blockRows, rows.end));
        for (const RowPrefaulter* const prefault : prefaulters)
            (*prefault)(block);
        for (int y = block.start; y < block.end; ++y)
            convert(y);
    }
}

bool isImageFormat(QImage::Format format)
{
    return format > QImage::Format_Invalid && format < QImage::NImageFormats;
}

} // namespace

void ParallelMonochromeConversion::operator()(const cv::Range& rows) const
{
    for (int y = rows.start; y < rows.end; ++y)
        Kernels::makeRowMonochrome(m_mat.ptr<ushort>(y), std::size_t(m_mat.cols));
}

void RowPrefaulter::operator()(const cv::Range& rows) const
{
    if (m_isWorthIt)
        Platform::prefault(m_mat.ptr(rows.start), std::size_t(rows.size()) * m_mat.step[0]);
}

void ParallelSplit32FC4::operator()(const cv::Range& rows) const
{
    writeNewRows(rows, m_chroma.step[0], {&m_prefaultChroma, &m_prefaultAlpha}, [this](int y) {
        Kernels::splitRow(m_pixels.ptr<float>(y), std::size_t(m_pixels.cols),
                          m_chroma.ptr<float>(y), m_alpha.ptr<float>(y));
    });
}

void ParallelMerge32FC4::operator()(const cv::Range& rows) const
{
    writeNewRows(rows, m_pixels.step[0], {&m_prefault}, [this](int y) {
        Kernels::mergeRow(m_chroma.ptr<float>(y), m_alpha.ptr<float>(y), std::size_t(m_pixels.cols),
                          m_pixels.ptr<float>(y));
    });
}

void ParallelDetailSum::operator()(const cv::Range& bands) const
{
    cv::Mat yuv, detail, magnitude; // outside the loop, so that each band reuses their memory
    for (int band = bands.start; band < bands.end; ++band) {
        const cv::Range rows(band * m_bandRows, std::min((band + 1) * m_bandRows, m_mat.rows));
        // The Laplacian of a sub-matrix reads the rows of its parent beside it, so one more row on
        // either side is converted; at the edges of the image it reflects instead.
        const cv::Range around(std::max(rows.start - 1, 0), std::min(rows.end + 1, m_mat.rows));
        cv::cvtColor(m_mat.rowRange(around), yuv, cv::COLOR_RGB2YUV);
        const cv::Mat inner = yuv.rowRange(rows.start - around.start, rows.end - around.start);
        cv::Laplacian(inner, detail, inner.depth(), 1, 1.0, 0.0, cv::BORDER_DEFAULT);
        magnitude = cv::abs(detail);
        m_sums[std::size_t(band)] = cv::sum(magnitude);
    }
}

void CvUtils::prefaultBlock(void* begin, std::size_t bytes)
{
    if (Platform::isWorthPrefaulting(begin, bytes))
        Platform::prefault(begin, bytes);
}

void CvUtils::prefaultWhole(cv::Mat& mat) { prefaultBlock(mat.data, mat.total() * mat.elemSize()); }

float CvUtils::depthMaxValue(int depth)
{
    switch (depth) {
    case CV_8U:
        return 255.0f;
    case CV_16U:
        return 65535.0f;
    case CV_8S:
    case CV_16S:
        return 32767.0f;
    case CV_32F:
    case CV_64F:
    case CV_16F:
        return 1.0f;
    default:
        qWarning() << "Invalid conversion depth given:" << depth;
        return 1.0f;
    }
}

void CvUtils::deleteMat(void* info) { delete static_cast<cv::Mat*>(info); }

QImage CvUtils::matToQImage(const cv::Mat& mat, QImage::Format format)
{
    if (mat.empty())
        return {};
    if (mat.dims > 2) {
        qWarning() << "matToQImage: matrix must have two dimensions, got:" << mat.dims;
        return {};
    }
    if (!isImageFormat(format)) {
        qWarning() << "matToQImage: invalid image format:" << int(format);
        return {};
    }
    // QPixelFormat::bitsPerPixel() says 18 for RGB666, which takes 24; a real image tells.
    const int pixelBits = QImage(1, 1, format).depth();
    if (std::size_t(pixelBits) > 8 * mat.elemSize()) {
        qWarning() << "matToQImage: format takes more bits than an element of the matrix has:"
                   << pixelBits;
        return {};
    }
    auto header = std::make_unique<cv::Mat>(mat);
    const QImage image(header->data, header->cols, header->rows, qsizetype(header->step[0]), format,
                       deleteMat, header.get());
    if (!image.isNull())
        static_cast<void>(
            header.release()); // the image owns it; a null image never calls deleteMat
    return image;
}

cv::Mat CvUtils::convert(const cv::Mat& mat, int depth)
{
    const int type = CV_MAKETYPE(depth & depthMask, mat.channels());
    if (type == mat.type())
        return mat;
    const double scale = depthMaxValue(depth) / depthMaxValue(mat.depth());
    cv::Mat result(mat.dims, mat.size.p, type);
    prefaultWhole(result);
    mat.convertTo(result, type, scale, 0.0);
    return result;
}

unsigned long long CvUtils::memoryUsage(const cv::Mat& mat)
{
    return mat.empty() ? 0 : static_cast<unsigned long long>(mat.size[0]) * mat.step[0];
}

void CvUtils::splitChromaAlpha(const cv::Mat& mat, cv::Mat& chroma, cv::Mat& alpha)
{
    const cv::Mat input = mat; // keeps the pixels alive: an output may be the same variable
    const int channels = input.channels();
    cv::Mat newAlpha(input.dims, input.size.p, input.depth());
    cv::Mat newChroma;
    if (channels > 1)
        newChroma.create(input.dims, input.size.p, CV_MAKETYPE(input.depth(), channels - 1));
    if (input.type() == CV_32FC4 && input.dims == 2 && !input.empty()) {
        // Decoded photographs are of this type, so they are split in one pass.
        cv::parallel_for_(cv::Range(0, input.rows), ParallelSplit32FC4(input, newChroma, newAlpha),
                          -1);
    } else if (channels != 4 && channels != 2) {
        qCritical() << "Unsupported amount of channels in splitChromaAlpha:" << channels;
    } else if (!input.empty()) { // cv::split gives no planes for an empty matrix
        std::vector<cv::Mat> planes;
        cv::split(input, planes);
        newAlpha = planes.back();
        planes.pop_back();
        cv::merge(planes, newChroma);
    }
    chroma = newChroma;
    alpha = newAlpha;
}

cv::Mat CvUtils::mergeChromaAlpha(const cv::Mat& chroma, const cv::Mat& alpha)
{
    if (alpha.empty())
        return chroma;
    if (chroma.type() == CV_32FC3 && alpha.type() == CV_32FC1 && chroma.dims == 2 &&
        alpha.dims == 2 && alpha.size() == chroma.size()) {
        cv::Mat result(chroma.size(), CV_32FC4);
        cv::parallel_for_(cv::Range(0, chroma.rows), ParallelMerge32FC4(chroma, alpha, result), -1);
        return result;
    }
    std::vector<cv::Mat> planes;
    if (chroma.channels() == 3) {
        cv::split(chroma, planes);
        planes.resize(3); // cv::split gives no planes for an empty matrix; cv::merge throws then
    } else if (chroma.channels() == 1) {
        planes = {chroma};
    } else {
        qCritical() << "Unsupported amount of channels in mergeChromaAlpha:" << chroma.channels();
        return chroma;
    }
    planes.push_back(alpha);
    cv::Mat result;
    cv::merge(planes, result);
    return result;
}

bool CvUtils::qimageToMat(QImage& image, cv::Mat& chroma, cv::Mat& alpha)
{
    if (image.isNull()) {
        qCritical() << "Image is null, cannot convert to cv::Mat";
        return false;
    }
    if (image.depth() < 128) {
        qCritical() << "qimageToMat: pixels must be four 32-bit floats, got bits:" << image.depth();
        return false;
    }
    // Called before bytesPerLine(): an image that detaches may get another row stride, or no
    // memory.
    uchar* const bits = image.bits();
    if (!bits) {
        qCritical() << "qimageToMat: no memory for pixels of its own, got image:" << image;
        return false;
    }
    const cv::Mat pixels(image.height(), image.width(), CV_32FC4, bits,
                         std::size_t(image.bytesPerLine()));
    splitChromaAlpha(pixels, chroma, alpha);
    return true;
}

QImage CvUtils::matToQImage(const cv::Mat& chroma, cv::Mat& alpha)
{
    if (chroma.empty() || chroma.dims > 2 || chroma.type() != CV_32FC3 ||
        (!alpha.empty() && alpha.type() != CV_32FC1)) {
        qCritical() << "matToQImage: chroma must be CV_32FC3 and alpha CV_32FC1, got types:"
                    << chroma.type() << alpha.type();
        return {};
    }
    cv::Mat result;
    const qint64 start = ElapsedTime::monotonicNanoseconds();
    if (alpha.empty()) {
        qInfo() << "No alpha mat needed, using generic RGB -> RGBA conversion";
        // Adds an opaque channel; the order of the other channels stays.
        cv::cvtColor(chroma, result, cv::COLOR_BGR2BGRA);
    } else {
        if (alpha.size() != chroma.size()) {
            qWarning() << "Alpha mat is different size, using generic upscaling to make it merge.";
            cv::resize(alpha, alpha, chroma.size(), 0, 0, cv::INTER_LINEAR);
        }
        result = mergeChromaAlpha(chroma, alpha);
    }
    const ElapsedTime elapsed(ElapsedTime::monotonicNanoseconds() - start, 1);
    qInfo() << "[Benchmark] Time to convert mat to 4 channel:" << QString(elapsed);
    return matToQImage(result, QImage::Format_RGBA32FPx4);
}

bool CvUtils::isMonochrome(const cv::Mat& mat)
{
    const auto check = [&mat](const auto& body) {
        cv::parallel_for_(cv::Range(0, mat.rows), body, -1);
        return body.isMonochrome();
    };
    if (mat.dims > 2) {
        qCritical() << "isMonochrome: matrix must have two dimensions, got:" << mat.dims;
        return false;
    }
    switch (mat.depth()) {
    case CV_8U:
        return check(ParallelMonochromeCheck<uchar>(mat));
    case CV_16U:
        return check(ParallelMonochromeCheck<ushort>(mat));
    case CV_32F:
        return check(ParallelMonochromeCheck<float>(mat));
    default:
        qCritical() << "Wrong mat type passed to isMonochrome (" << mat.type()
                    << "). Not checking to avoid crash.";
        return false;
    }
}

void CvUtils::toMonochrome(cv::Mat& mat)
{
    if (mat.type() != CV_16UC3) {
        qCritical() << "Wrong mat type passed to toMonochrome (" << mat.type()
                    << "). Not checking to avoid crash.";
        return;
    }
    if (mat.dims > 2) {
        qCritical() << "toMonochrome: matrix must have two dimensions, got:" << mat.dims;
        return;
    }
    cv::parallel_for_(cv::Range(0, mat.rows), ParallelMonochromeConversion(mat), -1);
}

bool CvUtils::isLumaNoise(const cv::Mat& mat)
{
    // Bands of about 256 KiB. A matrix without rows is passed on whole, so that OpenCV throws.
    constexpr std::size_t bandBytes = 256 << 10;
    const bool inBands = mat.dims == 2 && !mat.empty();
    const int bandRows = inBands
                             ? int(std::clamp(bandBytes / (std::size_t(mat.cols) * mat.elemSize()),
                                              std::size_t(2), std::size_t(mat.rows) + 2))
                             : 1;
    std::vector<cv::Scalar> sums(inBands ? std::size_t((mat.rows + bandRows - 1) / bandRows) : 1);
    cv::parallel_for_(cv::Range(0, int(sums.size())), ParallelDetailSum(mat, bandRows, sums), -1);
    const cv::Scalar sum = std::accumulate(sums.begin(), sums.end(), cv::Scalar());
    const cv::Scalar mean = sum / double(mat.total());
    const float ratio = float(mean[0] / (mean[1] + mean[2]) * 0.25);
    return ratio > 1.0f;
}

void CvUtils::imwrite(const QString& path, const cv::Mat& mat, int colorConversion, float alpha,
                      float beta, float scale)
{
    const QString suffix = QFileInfo(path).suffix();
    if (suffix != QLatin1String("bmp")) {
        qCritical() << "Attempting to write an image format that is not supported:" << suffix;
        return;
    }
    if (path.contains(QChar(u'\0'))) { // system calls would see only the name before it
        qCritical() << "imwrite: path holds a null character:" << path;
        return;
    }
    std::string error;
    WriteBitmapFunction* const write = pictureWriter(error);
    if (!write) {
        qCritical() << "imwrite: OpenCV's codecs cannot be loaded:" << error.c_str();
        return;
    }
    std::exception_ptr thrown;
    write(path.toStdString(), mat, colorConversion, double(alpha), double(beta), double(scale),
          thrown);
    if (thrown)
        std::rethrow_exception(thrown);
}

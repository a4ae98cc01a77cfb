// SPDX-License-Identifier: Apache-2.0
#include <imageutils/cvutils.h>

#include <imageutils/cvutils_p.h>

#include <timing/elapsedtime.h>

#include <QtCore/QDebug>
#include <QtCore/QFileInfo>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <memory>

namespace {

constexpr std::size_t channels32FC3 = 3;
constexpr int depthMask = 7;

bool isImageFormat(QImage::Format format)
{
    return format > QImage::Format_Invalid && format < QImage::NImageFormats;
}

/// Copies `count` samples of `width` floats, one every `stride` bytes from `first` on, into `line`,
/// with `radius` copies of the first sample before them and of the last one after them.
void gatherLine(const uchar* first, std::size_t stride, int count, std::size_t width, int radius,
                float* line)
{
    for (int i = -radius; i < count + radius; ++i, line += width) {
        const uchar* const sample = first + std::size_t(std::clamp(i, 0, count - 1)) * stride;
        std::memcpy(line, sample, width * sizeof(float));
    }
}

bool isResizable(const char* function, const cv::Mat& mat)
{
    if (mat.type() == CV_32FC3 && mat.dims == 2 && !mat.empty())
        return true;
    if (mat.empty())
        qWarning().nospace() << function << ": input is empty, got type: " << mat.type();
    else
        qWarning().nospace() << function << ": input must be CV_32FC3, got type: " << mat.type();
    return false;
}

/// Whether `scale` is finite, above 0 and large enough for a filter radius of at most 2^20 samples.
bool isResizeFactor(const char* function, double scale)
{
    constexpr double largestRadius = 1 << 20;
    if (std::isfinite(float(scale)) && scale > 0 &&
        std::ceil(2.0 / std::min(1.0, scale)) <= largestRadius)
        return true;
    qWarning().nospace() << function
                         << ": factor must be finite and above 0.000002, got: " << scale;
    return false;
}

double resizedLength(int length, double scale, int maxLength)
{
    const double resized = std::ceil(length * scale);
    return maxLength > 0 ? std::min(resized, double(maxLength)) : resized;
}

/// Whether a `CV_32FC3` matrix of these sides has a size that int and the address space can hold.
bool isSize32FC3(double rows, double cols)
{
    return rows <= INT_MAX && cols <= INT_MAX && rows * cols * 12 < double(PTRDIFF_MAX);
}

/// `resize` for `function`, whose name begins every line.
cv::Mat resample(const char* function, const cv::Mat& mat, double scaleX, double scaleY,
                 int maxHeight, int maxWidth, float filterB, float filterC)
{
    if (scaleY < 0.000001)
        scaleY = scaleX;
    if (!isResizable(function, mat) || !isResizeFactor(function, scaleX) ||
        !isResizeFactor(function, scaleY))
        return {};
    if (!std::isfinite(filterB) || !std::isfinite(filterC)) {
        qWarning().nospace() << function << ": filter parameters must be finite, got: " << filterB
                             << " " << filterC;
        return {};
    }
    const double width = resizedLength(mat.cols, scaleX, maxWidth);
    const double height = resizedLength(mat.rows, scaleY, maxHeight);
    if (!isSize32FC3(height, width) || !isSize32FC3(mat.rows, width)) {
        qWarning().nospace() << function << ": result is too large, got: " << width << " x "
                             << height;
        return {};
    }

    int radius = 0;
    cv::Mat intermediate(mat.rows, int(width), CV_32FC3);
    const std::vector<float> rowWeights =
        Kernels::computeWeights(int(width), filterB, filterC, float(scaleX), radius);
    cv::parallel_for_(cv::Range(0, mat.rows),
                      ParallelInterpRow32FC3(mat, intermediate, float(scaleX), radius, rowWeights),
                      -1);

    cv::Mat result(int(height), int(width), CV_32FC3);
    const std::vector<float> columnWeights =
        Kernels::computeWeights(int(height), filterB, filterC, float(scaleY), radius);
    cv::parallel_for_(
        cv::Range(0, int(width)),
        ParallelInterpCols32FC3(intermediate, result, float(scaleY), radius, columnWeights), -1);
    return result;
}

} // namespace

void ParallelMonochromeConversion::operator()(const cv::Range& rows) const
{
    for (int y = rows.start; y < rows.end; ++y)
        Kernels::makeRowMonochrome(m_mat.ptr<ushort>(y), std::size_t(m_mat.cols));
}

void ParallelInterpRow32FC3::operator()(const cv::Range& rows) const
{
    const std::vector<int> centres =
        Kernels::centreSamples(m_destination.cols, m_scale, m_source.cols);
    std::vector<float> line((std::size_t(m_source.cols) + 2 * std::size_t(m_radius)) *
                            channels32FC3);
    for (int y = rows.start; y < rows.end; ++y) {
        gatherLine(m_source.ptr(y), m_source.elemSize(), m_source.cols, channels32FC3, m_radius,
                   line.data());
        Kernels::interpolateLine(line.data(), channels32FC3, centres.data(), m_weights.data(),
                                 2 * m_radius + 1, m_destination.cols, m_destination.ptr<float>(y),
                                 channels32FC3);
    }
}

void ParallelInterpCols32FC3::operator()(const cv::Range& columns) const
{
    constexpr int blockColumns = 16; // 192 bytes: three cache lines of each row
    const std::vector<int> centres =
        Kernels::centreSamples(m_destination.rows, m_scale, m_source.rows);
    const int widest = std::min(blockColumns, columns.size());
    std::vector<float> line((std::size_t(m_source.rows) + 2 * std::size_t(m_radius)) *
                            std::size_t(widest) * channels32FC3);
    for (int x = columns.start; x < columns.end; x += blockColumns) {
        const std::size_t width =
            std::size_t(std::min(blockColumns, columns.end - x)) * channels32FC3;
        gatherLine(m_source.ptr(0, x), m_source.step[0], m_source.rows, width, m_radius,
                   line.data());
        Kernels::interpolateLine(line.data(), width, centres.data(), m_weights.data(),
                                 2 * m_radius + 1, m_destination.rows,
                                 m_destination.ptr<float>(0, x),
                                 m_destination.step[0] / sizeof(float));
    }
}

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
    // Asked of a real pixel: QPixelFormat says 18 bits for RGB666, which takes 24.
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
        header.release(); // the image's now; a null one never calls deleteMat
    return image;
}

cv::Mat CvUtils::convert(const cv::Mat& mat, int depth)
{
    const int type = CV_MAKETYPE(depth & depthMask, mat.channels());
    if (type == mat.type())
        return mat;
    const double scale = depthMaxValue(depth) / depthMaxValue(mat.depth());
    cv::Mat result;
    mat.convertTo(result, type, scale, 0.0);
    return result;
}

unsigned long long CvUtils::memoryUsage(const cv::Mat& mat)
{
    return mat.empty() ? 0 : static_cast<unsigned long long>(mat.size[0]) * mat.step[0];
}

void CvUtils::splitChromaAlpha(const cv::Mat& mat, cv::Mat& chroma, cv::Mat& alpha)
{
    const cv::Mat input = mat; // an output may be the variable that holds the input
    const int channels = input.channels();
    cv::Mat newAlpha(input.dims, input.size.p, input.depth());
    cv::Mat newChroma;
    if (channels > 1)
        newChroma.create(input.dims, input.size.p, CV_MAKETYPE(input.depth(), channels - 1));
    if (channels == 4 || channels == 2) {
        std::vector<cv::Mat> planes;
        cv::split(input, planes);
        newAlpha = planes.back();
        planes.pop_back();
        cv::merge(planes, newChroma);
    } else {
        qCritical() << "Unsupported amount of channels in splitChromaAlpha:" << channels;
    }
    chroma = newChroma;
    alpha = newAlpha;
}

cv::Mat CvUtils::mergeChromaAlpha(const cv::Mat& chroma, const cv::Mat& alpha)
{
    if (alpha.empty())
        return chroma;
    std::vector<cv::Mat> planes;
    if (chroma.channels() == 3) {
        cv::split(chroma, planes);
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
    const cv::Mat pixels(image.height(), image.width(), CV_32FC4, image.bits(),
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
        cv::cvtColor(chroma, result,
                     cv::COLOR_BGR2BGRA); // adds an opaque channel; the order of the others stays
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

cv::Mat CvUtils::resize(const cv::Mat& mat, double scaleX, double scaleY, int maxHeight,
                        int maxWidth, float filterB, float filterC)
{
    return resample("resize", mat, scaleX, scaleY, maxHeight, maxWidth, filterB, filterC);
}

cv::Mat CvUtils::upsample(const cv::Mat& mat, float scale, int maxHeight, int maxWidth,
                          float maxStepScale)
{
    constexpr float filterParameter = 0.33333f;
    constexpr float mostSteps = 1000;
    if (!isResizable("upsample", mat) || !isResizeFactor("upsample", scale))
        return {};

    int steps = 1;
    double stepScale = scale;
    if (scale > maxStepScale) {
        const float wanted = maxStepScale > 1 ? std::log(scale) / std::log(maxStepScale) : INFINITY;
        if (!(std::round(wanted) <= mostSteps)) {
            qWarning() << "upsample: step limit must be above 1 and need at most 1000 steps, got:"
                       << maxStepScale;
            return mat;
        }
        steps = int(std::round(wanted)); // the nearest whole number, halves away from zero
        stepScale = std::pow(double(scale), 1.0 / steps);
    }
    cv::Mat result = mat;
    for (int i = 1; i <= steps && !result.empty(); ++i) {
        const bool last = i == steps;
        result = resample("upsample", result, stepScale, stepScale, last ? maxHeight : 0,
                          last ? maxWidth : 0, filterParameter, filterParameter);
    }
    return result;
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
    cv::Mat yuv;
    cv::cvtColor(mat, yuv, cv::COLOR_RGB2YUV);
    cv::Mat detail;
    cv::Laplacian(yuv, detail, yuv.depth(), 1, 1.0, 0.0, cv::BORDER_DEFAULT);
    const cv::Scalar mean = cv::mean(cv::Mat(cv::abs(detail)));
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
    if (path.contains(QChar(u'\0'))) { // the system would take the name before it
        qCritical() << "imwrite: path holds a null character:" << path;
        return;
    }
    cv::Mat working;
    cv::resize(mat, working, cv::Size(), double(scale), double(scale), cv::INTER_LINEAR);
    working.convertTo(working, CV_8UC3, double(alpha), double(beta));
    cv::cvtColor(working, working, colorConversion);
    cv::imwrite(path.toStdString(), working);
}

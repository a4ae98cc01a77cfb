// SPDX-License-Identifier: Apache-2.0
//
// Resampling: `resize` and `upsample`.
#include <imageutils/cvutils.h>

#include <imageutils/cvutils_resample_p.h>

#include <QtCore/QDebug>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <optional>

namespace {

constexpr std::size_t channels32FC3 = 3;

template<typename Integer>
Integer roundUp(Integer value, Integer step)
{
    return (value + step - 1) / step * step;
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

ResamplePass passOf(int length, double scale, float filterB, float filterC)
{
    ResamplePass pass;
    pass.scale = float(scale);
    pass.weights = Kernels::computeWeights(length, filterB, filterC, pass.scale, pass.radius);
    return pass;
}

/// Cuts the rows of `result` into bands that fit into the cache together with their rows of the
/// intermediate image, and makes at least one band for each thread. Each band but the last adds a
/// multiple of the number of source rows that are resampled together.
std::vector<ResampleBand> bandsOf(const cv::Mat& result, int sourceRows, const ResamplePass& down)
{
    constexpr double bandBytes = 3 << 20;
    const std::vector<int> centres = Kernels::centreSamples(0, result.rows, down.scale, sourceRows);
    const auto neededRows = [&](int row) {
        return std::min(centres[std::size_t(row)] + down.radius, sourceRows - 1) + 1;
    };
    const int allRows = neededRows(result.rows - 1);
    const double rowBytes = double(result.step[0]) * (1 + double(down.scale));
    const int wanted =
        std::min(int(bandBytes / rowBytes), allRows / std::max(cv::getNumThreads(), 1));
    // Enough source rows for one row of the result, so that no band is empty.
    const int newRows = roundUp(std::max(wanted, 2 * down.radius + 1), Kernels::rowsAtOnce);
    std::vector<ResampleBand> bands;
    for (int top = 0, known = 0; top < result.rows;) {
        const int begin = top, first = std::max(centres[std::size_t(begin)] - down.radius, 0);
        known += std::min(newRows, allRows - known);
        while (top < result.rows && neededRows(top) <= known)
            ++top;
        bands.push_back({cv::Range(begin, top), cv::Range(first, known)});
    }
    return bands;
}

/// The bytes from one row of the intermediate image to the next: whole cache lines, but no multiple
/// of 4096. Rows that far apart share a cache set, and the rows of one sum would evict each other
/// from the L1 cache; `offset` keeps one block of columns of each row apart.
std::size_t ringStride(std::size_t rowBytes)
{
    constexpr std::size_t line = 64, period = 4096, offset = 7 * line;
    return rowBytes < period ? roundUp(rowBytes, line)
                             : roundUp(rowBytes - offset, period) + offset;
}

/// The size of the result. Without a value, and with a warning that begins with `function`, if the
/// arguments are refused.
std::optional<cv::Size> resampledSize(const char* function, const cv::Mat& mat, double scaleX,
                                      double scaleY, int maxHeight, int maxWidth, float filterB,
                                      float filterC)
{
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

    return cv::Size(int(width), int(height));
}

/// `resize` for the public function `function`, whose name begins every warning.
cv::Mat resample(const char* function, const cv::Mat& mat, double scaleX, double scaleY,
                 int maxHeight, int maxWidth, float filterB, float filterC)
{
    if (scaleY < 0.000001)
        scaleY = scaleX;
    const std::optional<cv::Size> size =
        resampledSize(function, mat, scaleX, scaleY, maxHeight, maxWidth, filterB, filterC);
    if (!size)
        return {};
    const ResamplePass across = passOf(size->width, scaleX, filterB, filterC);
    const ResamplePass down = passOf(size->height, scaleY, filterB, filterC);
    cv::Mat result(*size, CV_32FC3);
    const std::vector<ResampleBand> bands = bandsOf(result, mat.rows, down);
    const ParallelResampleBands body(mat, result, across, down, bands);
    // OpenCV runs nested loops on one thread, so a single band must not be a loop of its own.
    if (bands.size() == 1)
        body(cv::Range(0, 1));
    else
        cv::parallel_for_(cv::Range(0, int(bands.size())), body);
    return result;
}

} // namespace

void ParallelInterpRow32FC3::operator()(const cv::Range& rows) const
{
    const std::vector<int> centres =
        Kernels::centreSamples(0, m_destination.cols, m_scale, m_source.cols);
    const Kernels::Filter filter = {centres.data(), m_weights.data(), 2 * m_radius + 1,
                                    m_destination.cols};
    std::vector<float> buffer(Kernels::rowBufferFloats(m_source.cols, filter));
    for (int y = rows.start, count = 0; y < rows.end; y += count) {
        count = std::min(Kernels::rowsAtOnce, rows.end - y);
        std::array<const float*, Kernels::rowsAtOnce> from;
        std::array<float*, Kernels::rowsAtOnce> to;
        for (int i = 0; i < count; ++i) {
            from[std::size_t(i)] = m_source.ptr<float>(y + i);
            to[std::size_t(i)] = m_destination.ptr<float>((y + i) % m_destination.rows);
        }
        Kernels::interpolateRows(from.data(), count, m_source.cols, filter, to.data(),
                                 buffer.data());
    }
}

void ParallelInterpCols32FC3::operator()(const cv::Range& columns) const
{
    const int taps = 2 * m_radius + 1;
    std::vector<int> centres =
        Kernels::centreSamples(m_resultRows.start, m_resultRows.size(), m_scale, m_sourceRows);
    const int first = centres.front() - m_radius, last = centres.back() + m_radius;
    for (int& centre : centres)
        centre -= first + m_radius; // the column begins with the first tap of the first row
    std::vector<const float*> column;
    for (int y = first; y <= last; ++y)
        column.push_back(
            m_source.ptr<float>(std::clamp(y, 0, m_sourceRows - 1) % m_source.rows, columns.start));
    const Kernels::Filter filter = {
        centres.data(), m_weights.data() + std::size_t(m_resultRows.start) * std::size_t(taps),
        taps, m_resultRows.size()};
    Kernels::interpolateColumns(column.data(), std::size_t(columns.size()) * channels32FC3, filter,
                                m_destination.ptr<float>(m_resultRows.start, columns.start),
                                m_destination.step[0] / sizeof(float));
}

void ParallelResampleBands::operator()(const cv::Range& bands) const
{
    int ringRows = 0;
    for (int i = bands.start; i < bands.end; ++i)
        ringRows = std::max(ringRows, m_bands[std::size_t(i)].sourceRows.size());
    const std::size_t stride = ringStride(m_result.step[0]);
    const cv::Mat memory(ringRows, int(stride / sizeof(float)), CV_32FC1);
    cv::Mat ring(ringRows, m_result.cols, CV_32FC3, memory.data, stride);
    int resampled = 0; // source rows before this one were resampled for an earlier band
    for (int i = bands.start; i < bands.end; ++i) {
        const auto [resultRows, sourceRows] = m_bands[std::size_t(i)];
        const cv::Range newRows(std::max(resampled, sourceRows.start), sourceRows.end);
        resampled = sourceRows.end;
        cv::parallel_for_(newRows,
                          ParallelInterpRow32FC3(m_source, ring, m_across.scale, m_across.radius,
                                                 m_across.weights),
                          -1);
        m_prefault(resultRows);
        cv::parallel_for_(cv::Range(0, m_result.cols),
                          ParallelInterpCols32FC3(ring, m_result, m_down.scale, m_down.radius,
                                                  m_down.weights, resultRows, m_source.rows),
                          -1);
    }
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

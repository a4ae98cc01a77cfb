// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/kernels/cubic.h>
#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>
#include <platform/freshpages.h>

#include <opencv2/core.hpp>

#include <atomic>
#include <optional>
#include <vector>

struct PictureFilters;

namespace CvUtils {

/// The value that stands for full intensity at the OpenCV depth code `depth`; 1 and a warning for
/// `CV_32S` and for codes outside 0 to 7.
float depthMaxValue(int depth);

/// Deletes the `cv::Mat` that `info` points to; the cleanup function of a wrapped `QImage`.
void deleteMat(void* info);

/// `rect.boundingRect()` where the corners are finite and the result is within `int`; OpenCV gives
/// any rectangle for others.
std::optional<cv::Rect> enclosingRect(const cv::RotatedRect& rect);

/// Has memory put behind all of a new matrix, for a function of OpenCV that is about to fill it.
void backWhole(cv::Mat& mat);

} // namespace CvUtils

/// Clears its flag when a pixel of the given rows has channels that differ. The flag is read once
/// per row: rows that a worker meets with the flag down are stepped over.
template<typename T>
class ParallelMonochromeCheck : public cv::ParallelLoopBody
{
public:
    explicit ParallelMonochromeCheck(const cv::Mat& mat) : m_mat(mat) {}

    void operator()(const cv::Range& rows) const override
    {
        for (int y = rows.start; y < rows.end; ++y) {
            if (m_monochrome && !Kernels::isRowMonochromeInVectors(
                                    m_mat.ptr<T>(y), std::size_t(m_mat.cols), m_mat.channels()))
                m_monochrome = false;
        }
    }

    bool isMonochrome() const { return m_monochrome; }

private:
    const cv::Mat& m_mat;
    mutable std::atomic<bool> m_monochrome = true;
};

/// Replaces the pixels of the given rows of a `CV_16UC3` matrix by their grey value.
class ParallelMonochromeConversion : public cv::ParallelLoopBody
{
public:
    explicit ParallelMonochromeConversion(cv::Mat& mat) : m_mat(mat) {}
    void operator()(const cv::Range& rows) const override;

private:
    cv::Mat& m_mat;
};

/// Has memory put behind the given rows of a new matrix, which are about to be written.
class ParallelFirstTouch : public cv::ParallelLoopBody
{
public:
    explicit ParallelFirstTouch(cv::Mat& mat)
        : m_mat(mat), m_pages(mat.data, mat.total() * mat.elemSize())
    {}
    void operator()(const cv::Range& rows) const override;

private:
    cv::Mat& m_mat;
    mutable Platform::FreshPages m_pages;
};

/// Parts the given rows of a `CV_32FC4` matrix into chroma and alpha.
class ParallelSplit32FC4 : public cv::ParallelLoopBody
{
public:
    ParallelSplit32FC4(const cv::Mat& pixels, cv::Mat& chroma, cv::Mat& alpha)
        : m_pixels(pixels), m_chroma(chroma), m_alpha(alpha), m_touchChroma(chroma),
          m_touchAlpha(alpha)
    {}
    void operator()(const cv::Range& rows) const override;

private:
    const cv::Mat& m_pixels;
    cv::Mat& m_chroma;
    cv::Mat& m_alpha;
    ParallelFirstTouch m_touchChroma, m_touchAlpha;
};

/// Joins the given rows of chroma and alpha to a `CV_32FC4` matrix.
class ParallelMerge32FC4 : public cv::ParallelLoopBody
{
public:
    ParallelMerge32FC4(const cv::Mat& chroma, const cv::Mat& alpha, cv::Mat& pixels)
        : m_chroma(chroma), m_alpha(alpha), m_pixels(pixels), m_touch(pixels)
    {}
    void operator()(const cv::Range& rows) const override;

private:
    const cv::Mat& m_chroma;
    const cv::Mat& m_alpha;
    cv::Mat& m_pixels;
    ParallelFirstTouch m_touch;
};

/// Sums the absolute Laplacian of Y, U and V over bands of rows that stay in the cache; each band
/// has a sum of its own, so that the order of the additions does not depend on the threads.
class ParallelDetailSum : public cv::ParallelLoopBody
{
public:
    ParallelDetailSum(const PictureFilters& filters, const cv::Mat& mat, int bandRows,
                      std::vector<cv::Scalar>& sums)
        : m_filters(filters), m_mat(mat), m_bandRows(bandRows), m_sums(sums)
    {}
    void operator()(const cv::Range& bands) const override;

private:
    const PictureFilters& m_filters;
    const cv::Mat& m_mat;
    int m_bandRows;
    std::vector<cv::Scalar>& m_sums;
};

/// The horizontal resampling pass over the given rows of a `CV_32FC3` matrix, several rows at a
/// time. The destination may have fewer rows than the source and is then used again from its top:
/// source row y goes to row y modulo their number.
class ParallelInterpRow32FC3 : public cv::ParallelLoopBody
{
public:
    ParallelInterpRow32FC3(const cv::Mat& source, cv::Mat& destination, float scale, int radius,
                           const std::vector<float>& weights)
        : m_source(source), m_destination(destination), m_scale(scale), m_radius(radius),
          m_weights(weights)
    {}
    void operator()(const cv::Range& rows) const override;

private:
    const cv::Mat& m_source;
    cv::Mat& m_destination;
    float m_scale;
    int m_radius;
    const std::vector<float>& m_weights;
};

/// The vertical resampling pass over the given columns of a `CV_32FC3` matrix. It takes several
/// columns at a time, so that memory is walked along its rows; one column alone gives the same
/// bits.
class ParallelInterpCols32FC3 : public cv::ParallelLoopBody
{
public:
    /// The source stands for `sourceRows` rows, of which it holds those that `resultRows` of the
    /// destination need: row y at y modulo its own number of rows.
    ParallelInterpCols32FC3(const cv::Mat& source, cv::Mat& destination, float scale, int radius,
                            const std::vector<float>& weights, const cv::Range& resultRows,
                            int sourceRows)
        : m_source(source), m_destination(destination), m_scale(scale), m_radius(radius),
          m_weights(weights), m_resultRows(resultRows), m_sourceRows(sourceRows)
    {}
    /// The whole picture in one piece.
    ParallelInterpCols32FC3(const cv::Mat& source, cv::Mat& destination, float scale, int radius,
                            const std::vector<float>& weights)
        : ParallelInterpCols32FC3(source, destination, scale, radius, weights,
                                  cv::Range(0, destination.rows), source.rows)
    {}
    void operator()(const cv::Range& columns) const override;

private:
    const cv::Mat& m_source;
    cv::Mat& m_destination;
    float m_scale;
    int m_radius;
    const std::vector<float>& m_weights;
    cv::Range m_resultRows;
    int m_sourceRows;
};

/// A part of a picture that is resampled in one go: rows of the result, and the source rows that
/// they are made of.
struct ResampleBand
{
    cv::Range resultRows;
    cv::Range sourceRows;
};

/// One pass of a resampling: the factor, the radius that the filter has for it, and its weights.
struct ResamplePass
{
    float scale = 1;
    int radius = 0;
    std::vector<float> weights;
};

/// Resamples the given bands one after the other: the rows of a band across, then its columns down.
/// Of the intermediate picture it has only the rows that a band needs, in places that are used
/// again, since memory that is not asked for is not paid for.
class ParallelResampleBands : public cv::ParallelLoopBody
{
public:
    ParallelResampleBands(const cv::Mat& source, cv::Mat& result, const ResamplePass& across,
                          const ResamplePass& down, const std::vector<ResampleBand>& bands)
        : m_source(source), m_result(result), m_touch(result), m_across(across), m_down(down),
          m_bands(bands)
    {}
    void operator()(const cv::Range& bands) const override;

private:
    const cv::Mat& m_source;
    cv::Mat& m_result;
    ParallelFirstTouch m_touch;
    const ResamplePass& m_across;
    const ResamplePass& m_down;
    const std::vector<ResampleBand>& m_bands;
};

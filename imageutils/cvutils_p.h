// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/kernels/monochrome.h>
#include <imageutils/kernels/planes.h>
#include <platform/prefault.h>

#include <opencv2/core.hpp>

#include <atomic>
#include <optional>
#include <vector>

namespace CvUtils {

/// The value that stands for full intensity at the OpenCV depth code `depth`; 1 and a warning for
/// `CV_32S` and for codes outside 0 to 7.
float depthMaxValue(int depth);

/// Deletes the `cv::Mat` that `info` points to; the cleanup function of a wrapped `QImage`.
void deleteMat(void* info);

/// `rect.boundingRect()` if the corners are finite and the result fits into `int`. OpenCV returns
/// an arbitrary rectangle for all others.
std::optional<cv::Rect> enclosingRect(const cv::RotatedRect& rect);

/// Prefaults all of a new matrix that a function of OpenCV is about to fill.
void prefaultWhole(cv::Mat& mat);

/// The same for a new block of memory.
void prefaultBlock(void* begin, std::size_t bytes);

} // namespace CvUtils

/// Clears its flag when a pixel of the given rows has channels that differ. The flag is read once
/// per row, and rows are skipped once it is cleared.
template<typename T>
class ParallelMonochromeCheck : public cv::ParallelLoopBody
{
public:
    explicit ParallelMonochromeCheck(const cv::Mat& mat) : m_mat(mat) {}

    void operator()(const cv::Range& rows) const override
    {
        for (int y = rows.start; y < rows.end; ++y) {
            if (m_monochrome && !Kernels::isRowMonochrome(m_mat.ptr<T>(y), std::size_t(m_mat.cols),
                                                          m_mat.channels()))
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

/// Prefaults rows of a new matrix shortly before they are written.
class RowPrefaulter
{
public:
    explicit RowPrefaulter(cv::Mat& mat)
        : m_mat(mat),
          m_isWorthIt(Platform::isWorthPrefaulting(mat.data, mat.total() * mat.elemSize()))
    {}
    void operator()(const cv::Range& rows) const;

private:
    cv::Mat& m_mat;
    bool m_isWorthIt;
};

/// Splits the given rows of a `CV_32FC4` matrix into chroma and alpha.
class ParallelSplit32FC4 : public cv::ParallelLoopBody
{
public:
    ParallelSplit32FC4(const cv::Mat& pixels, cv::Mat& chroma, cv::Mat& alpha)
        : m_pixels(pixels), m_chroma(chroma), m_alpha(alpha), m_prefaultChroma(chroma),
          m_prefaultAlpha(alpha)
    {}
    void operator()(const cv::Range& rows) const override;

private:
    const cv::Mat& m_pixels;
    cv::Mat& m_chroma;
    cv::Mat& m_alpha;
    RowPrefaulter m_prefaultChroma, m_prefaultAlpha;
};

/// Merges the given rows of chroma and alpha into a `CV_32FC4` matrix.
class ParallelMerge32FC4 : public cv::ParallelLoopBody
{
public:
    ParallelMerge32FC4(const cv::Mat& chroma, const cv::Mat& alpha, cv::Mat& pixels)
        : m_chroma(chroma), m_alpha(alpha), m_pixels(pixels), m_prefault(pixels)
    {}
    void operator()(const cv::Range& rows) const override;

private:
    const cv::Mat& m_chroma;
    const cv::Mat& m_alpha;
    cv::Mat& m_pixels;
    RowPrefaulter m_prefault;
};

/// Sums the absolute Laplacian of Y, U and V over bands of rows that fit into the cache. Each band
/// has its own sum, so that the order of the additions does not depend on the threads.
class ParallelDetailSum : public cv::ParallelLoopBody
{
public:
    ParallelDetailSum(const cv::Mat& mat, int bandRows, std::vector<cv::Scalar>& sums)
        : m_mat(mat), m_bandRows(bandRows), m_sums(sums)
    {}
    void operator()(const cv::Range& bands) const override;

private:
    const cv::Mat& m_mat;
    int m_bandRows;
    std::vector<cv::Scalar>& m_sums;
};

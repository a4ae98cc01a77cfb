// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/cvutils_p.h>
#include <imageutils/kernels/cubic.h>

#include <opencv2/core.hpp>

#include <vector>

/// The horizontal resampling pass over the given rows of a `CV_32FC3` matrix, several rows at a
/// time. A destination with fewer rows than the source is a ring buffer: source row y goes to row
/// y modulo the number of its rows.
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

/// The vertical resampling pass over the given columns of a `CV_32FC3` matrix. It processes several
/// columns at a time, because memory is read fastest along rows; one column alone gives the same
/// bits.
class ParallelInterpCols32FC3 : public cv::ParallelLoopBody
{
public:
    /// The source is a ring buffer over an image of `sourceRows` rows. It holds those that
    /// `resultRows` of the destination need: row y lies at y modulo the number of its own rows.
    ParallelInterpCols32FC3(const cv::Mat& source, cv::Mat& destination, float scale, int radius,
                            const std::vector<float>& weights, const cv::Range& resultRows,
                            int sourceRows)
        : m_source(source), m_destination(destination), m_scale(scale), m_radius(radius),
          m_weights(weights), m_resultRows(resultRows), m_sourceRows(sourceRows)
    {}
    /// The whole image at once, without a ring buffer.
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

/// Rows of the result that are computed together, and the source rows that they are made of.
struct ResampleBand
{
    cv::Range resultRows;
    cv::Range sourceRows;
};

/// One pass, horizontal or vertical: the scale, the filter radius at this scale, and the weights.
struct ResamplePass
{
    float scale = 1;
    int radius = 0;
    std::vector<float> weights;
};

/// Resamples the given bands one after the other, each first horizontally, then vertically. The
/// intermediate image is a ring buffer that holds only the rows that a band needs. It stays in the
/// cache, and no memory for a whole intermediate image must be allocated and cleared.
class ParallelResampleBands : public cv::ParallelLoopBody
{
public:
    ParallelResampleBands(const cv::Mat& source, cv::Mat& result, const ResamplePass& across,
                          const ResamplePass& down, const std::vector<ResampleBand>& bands)
        : m_source(source), m_result(result), m_prefault(result), m_across(across), m_down(down),
          m_bands(bands)
    {}
    void operator()(const cv::Range& bands) const override;

private:
    const cv::Mat& m_source;
    cv::Mat& m_result;
    RowPrefaulter m_prefault;
    const ResamplePass& m_across;
    const ResamplePass& m_down;
    const std::vector<ResampleBand>& m_bands;
};

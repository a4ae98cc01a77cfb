// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/cvutils_p.h>
#include <imageutils/kernels/cubic.h>

#include <opencv2/core.hpp>

#include <vector>

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

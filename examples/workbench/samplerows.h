// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "photograph.h"

#include <future>
#include <optional>
#include <vector>

/// Ranges of rows of a photograph, one after another. Rows that are decoded one by one are decoded
/// for the next range, on a thread of its own, while the caller works on the last one.
class SampleRows
{
public:
    struct Part
    {
        cv::Mat samples;
        int firstNew; ///< the rows from here on were not in the part before
    };

    /// Each of `ranges` begins in or below the one before, and leaves no row out. `photograph`
    /// outlives this.
    SampleRows(const Photograph& photograph, std::vector<cv::Range> ranges);
    ~SampleRows();
    SampleRows(const SampleRows&) = delete;
    SampleRows& operator=(const SampleRows&) = delete;

    /// The part for the next range.
    Result<Part> next();

private:
    Result<Part> read(std::size_t index);
    void readAhead();

    const Photograph& m_photograph;
    const std::vector<cv::Range> m_ranges;
    std::size_t m_next = 0;
    cv::Mat m_last; ///< the samples of the range that was decoded last
    std::future<Result<Part>> m_ahead;
};

/// What the samples of a photograph say about it, learnt from its rows as they pass by. The grain
/// of a small photograph is judged as a whole. Of a large one, blocks of rows that are spread
/// evenly over it, together some eight megabytes, decide by majority.
class Examination
{
public:
    explicit Examination(const Photograph& photograph);

    /// The next rows, as `coloursOf` gives them.
    void add(const cv::Mat& colours);

    bool isGrey() const { return m_isGrey; }
    bool isLumaNoise() const { return 2 * m_noisyBlocks > m_blocks; }

private:
    void addToBlock(const cv::Mat& rows);

    const int m_rows;
    int m_blockRows;
    int m_stride; ///< from the first row of a block to that of the next
    int m_seen = 0;
    bool m_isGrey = true;
    cv::Mat m_block;
    int m_blocks = 0;
    int m_noisyBlocks = 0; ///< of these, those with the grain in the luminance
};

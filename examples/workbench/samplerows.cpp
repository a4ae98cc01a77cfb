// SPDX-License-Identifier: Apache-2.0
#include "samplerows.h"

#include <imageutils/cvutils.h>

#include <algorithm>
#include <utility>

SampleRows::SampleRows(const Photograph& photograph, std::vector<cv::Range> ranges)
    : m_photograph(photograph), m_ranges(std::move(ranges))
{
    readAhead();
}

SampleRows::~SampleRows()
{
    if (m_ahead.valid())
        m_ahead.wait();
}

void SampleRows::readAhead()
{
    if (m_next == m_ranges.size())
        return;
    // Where the system has no thread left, the rows are decoded when they are wanted.
    constexpr auto policy = std::launch::async | std::launch::deferred;
    m_ahead = std::async(policy, [this, index = m_next] { return read(index); });
    ++m_next;
}

Result<SampleRows::Part> SampleRows::next()
{
    Result<Part> part = m_ahead.get();
    if (part)
        readAhead();
    return part;
}

Result<SampleRows::Part> SampleRows::read(std::size_t index)
{
    const cv::Range range = m_ranges[index];
    const int known = index == 0 ? 0 : std::max(0, m_ranges[index - 1].end - range.start);
    if (!m_photograph.samples.empty())
        return Part{m_photograph.samples.rowRange(range), known};
    cv::Mat samples(range.size(), m_photograph.spec.width, sampleTypeOf(m_photograph));
    if (known > 0)
        m_last.rowRange(m_last.rows - known, m_last.rows).copyTo(samples.rowRange(0, known));
    cv::Mat missing = samples.rowRange(known, samples.rows);
    if (const auto failure = decodeRows(m_photograph, range.start + known, missing))
        return *failure;
    m_last = samples;
    return Part{samples, known};
}

Examination::Examination(const Photograph& photograph)
    : m_rows(sizeOf(photograph).height()), m_blockRows(m_rows), m_stride(m_rows)
{
    constexpr double mostBytes = 8 << 20;
    constexpr int rowsOfMany = 64;
    const double bytes = double(photograph.spec.width) * m_rows * 3 *
                         double(CV_ELEM_SIZE1(sampleTypeOf(photograph)));
    if (bytes > mostBytes && m_rows > rowsOfMany) {
        m_blockRows = rowsOfMany;
        m_stride = int(rowsOfMany * std::min(bytes / mostBytes, double(m_rows)));
    }
}

void Examination::add(const cv::Mat& colours)
{
    m_isGrey = m_isGrey && CvUtils::isMonochrome(colours);
    for (int y = 0; y < colours.rows;) {
        const int place = m_seen % m_stride;
        const int end = place < m_blockRows ? m_blockRows : m_stride;
        const int count = std::min(colours.rows - y, end - place);
        if (place < m_blockRows)
            addToBlock(colours.rowRange(y, y + count));
        y += count;
        m_seen += count;
    }
}

/// A block that the end of the photograph cuts off does not count.
void Examination::addToBlock(const cv::Mat& rows)
{
    m_block.push_back(rows);
    if (m_block.rows < m_blockRows)
        return;
    ++m_blocks;
    if (CvUtils::isLumaNoise(m_block))
        ++m_noisyBlocks;
    m_block.resize(0);
}

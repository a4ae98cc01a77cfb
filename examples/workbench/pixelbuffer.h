// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

#include <memory>

/// Memory for the colours of a whole picture in floats, the largest thing that a photograph needs.
/// It is used again for the next one: to get memory from the system takes longer than to fill it.
class PixelBuffer
{
public:
    /// Colours of `size`, which are there while the buffer is and until it is used again. They hold
    /// what the buffer held. Throws `std::bad_alloc`.
    cv::Mat colours(const cv::Size& size);

private:
    struct Free
    {
        void operator()(float* floats) const;
    };

    std::unique_ptr<float, Free> m_floats;
    std::size_t m_count = 0;
};

// SPDX-License-Identifier: Apache-2.0
#include "pixelbuffer.h"

#include <cstdlib>
#include <limits>
#include <new>

cv::Mat PixelBuffer::colours(const cv::Size& size)
{
    constexpr std::size_t mostFloats = std::numeric_limits<std::size_t>::max() / sizeof(float);
    const std::size_t count = std::size_t(size.width) * std::size_t(size.height) * 3;
    if (count > mostFloats)
        throw std::bad_alloc();
    if (!m_floats || count > m_count) {
        // Large memory is moved without being copied, and what was filled once stays so.
        float* const held = m_floats.release();
        void* const grown = std::realloc(held, count * sizeof(float));
        m_floats.reset(grown ? static_cast<float*>(grown) : held);
        if (!grown)
            throw std::bad_alloc();
        m_count = count;
    }
    return cv::Mat(size, CV_32FC3, m_floats.get());
}

void PixelBuffer::Free::operator()(float* floats) const { std::free(floats); }

// SPDX-License-Identifier: Apache-2.0
#include "bufferpool.h"

#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

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

BufferPool::Lease::Lease(Lease&& other) noexcept
    : m_pool(std::exchange(other.m_pool, nullptr)), m_buffer(std::move(other.m_buffer))
{}

BufferPool::Lease& BufferPool::Lease::operator=(Lease&& other) noexcept
{
    release();
    m_pool = std::exchange(other.m_pool, nullptr);
    m_buffer = std::move(other.m_buffer);
    return *this;
}

void BufferPool::Lease::release()
{
    if (!m_pool)
        return;
    {
        const std::lock_guard lock(m_pool->m_mutex);
        m_pool->m_free.push_back(std::move(m_buffer));
    }
    m_pool->m_changed.notify_one();
    m_pool = nullptr;
}

BufferPool::Lease BufferPool::take(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait(lock, stop, [this] { return !m_free.empty(); }))
        return {};
    Lease key(*this, std::move(m_free.back()));
    m_free.pop_back();
    return key;
}

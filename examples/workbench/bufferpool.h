// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <stop_token>
#include <vector>

/// Memory for the colours of a whole picture in floats, the largest thing that a photograph needs.
/// It is used again for the next one: to get memory from the system takes longer than to fill it.
class PixelBuffer
{
public:
    /// Colours of `size`, which are there while the room is and until it is used again. What they
    /// hold is what the room held. Throws `std::bad_alloc`.
    cv::Mat colours(const cv::Size& size);

    /// Whether the samples of `mat` lie in this room.
    bool holds(const cv::Mat& mat) const { return m_floats && mat.datastart == begin(); }

private:
    struct Free
    {
        void operator()(float* floats) const;
    };

    const uchar* begin() const { return reinterpret_cast<const uchar*>(m_floats.get()); }

    std::unique_ptr<float, Free> m_floats;
    std::size_t m_count = 0;
};

/// A few rooms, for those of many photographs that are between being decoded and being written.
class BufferPool
{
public:
    explicit BufferPool(int count) : m_free(std::size_t(count)) {}

    /// A room that nobody else has while this lives.
    class Lease
    {
    public:
        Lease() = default;
        Lease(BufferPool& pool, PixelBuffer buffer) : m_pool(&pool), m_buffer(std::move(buffer)) {}
        Lease(Lease&& other) noexcept;
        Lease& operator=(Lease&& other) noexcept;
        ~Lease() { release(); }

        PixelBuffer& buffer() { return m_buffer; }
        void release();

    private:
        BufferPool* m_pool = nullptr;
        PixelBuffer m_buffer;
    };

    /// Waits for a room that is free; gives none when `stop` is requested meanwhile.
    Lease take(const std::stop_token& stop);

private:
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::vector<PixelBuffer> m_free;
};

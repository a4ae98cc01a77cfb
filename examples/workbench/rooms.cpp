// SPDX-License-Identifier: Apache-2.0
#include "rooms.h"

#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

cv::Mat Room::colours(const cv::Size& size)
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

void Room::Free::operator()(float* floats) const { std::free(floats); }

Rooms::Key::Key(Key&& other) noexcept
    : m_rooms(std::exchange(other.m_rooms, nullptr)), m_room(std::move(other.m_room))
{}

Rooms::Key& Rooms::Key::operator=(Key&& other) noexcept
{
    giveBack();
    m_rooms = std::exchange(other.m_rooms, nullptr);
    m_room = std::move(other.m_room);
    return *this;
}

void Rooms::Key::giveBack()
{
    if (!m_rooms)
        return;
    {
        const std::lock_guard lock(m_rooms->m_mutex);
        m_rooms->m_free.push_back(std::move(m_room));
    }
    m_rooms->m_changed.notify_one();
    m_rooms = nullptr;
}

Rooms::Key Rooms::take(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait(lock, stop, [this] { return !m_free.empty(); }))
        return {};
    Key key(*this, std::move(m_free.back()));
    m_free.pop_back();
    return key;
}

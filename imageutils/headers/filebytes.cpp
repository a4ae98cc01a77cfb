// SPDX-License-Identifier: Apache-2.0
#include <imageutils/headers/filebytes.h>

#include <algorithm>
#include <limits>

std::uint64_t bigEndian(std::string_view bytes)
{
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

std::uint64_t littleEndian(std::string_view bytes)
{
    std::uint64_t number = 0;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
        number = number << 8 | static_cast<unsigned char>(*byte);
    return number;
}

std::string_view FileBytes::at(std::int64_t position, std::size_t count)
{
    constexpr std::size_t windowBytes = 4096;
    const auto size = std::int64_t(m_window.size());
    if (position < m_windowStart || position - m_windowStart > size - std::int64_t(count)) {
        m_window.resize(std::max(count, windowBytes));
        m_windowStart = position;
        const std::int64_t read =
            m_readAt(position, m_window.data(), std::int64_t(m_window.size()));
        m_hasFailed = m_hasFailed || read < 0;
        m_window.resize(
            std::size_t(std::clamp<std::int64_t>(read, 0, std::int64_t(m_window.size()))));
    }
    const std::string_view found =
        std::string_view(m_window).substr(std::size_t(position - m_windowStart));
    return found.size() < count ? std::string_view() : found.substr(0, count);
}

Box boxAt(FileBytes& bytes, std::int64_t position)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    const std::string_view head = bytes.at(position, 8);
    if (head.empty())
        return {};
    const auto type = std::uint32_t(bigEndian(head.substr(4)));
    std::uint64_t size = bigEndian(head.substr(0, 4));
    std::uint64_t headSize = 8;
    if (size == 0)
        return {type, position + 8, most, true};
    if (size == 1) { // then a size of 64 bits follows the type
        headSize = 16;
        size = bigEndian(bytes.at(position + 8, 8));
    }
    if (size < headSize || size > std::uint64_t(most - position))
        return {};
    return {type, position + std::int64_t(headSize), position + std::int64_t(size), false};
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// The number whose bytes are `bytes`, the most significant byte first.
std::uint64_t bigEndian(std::string_view bytes);

/// The number whose bytes are `bytes`, the least significant byte first.
std::uint64_t littleEndian(std::string_view bytes);

/// The bytes of a file by their position, read through a window of 4 KiB. After a failed read the
/// file reads as if it ended there, and `hasFailed` says so.
class FileBytes
{
public:
    /// Reads up to `count` bytes at `position` to `to`. Gives their number, which is lower at the
    /// end of the file, or a negative number after a failure.
    using ReadAt = std::function<std::int64_t(std::int64_t position, char* to, std::int64_t count)>;

    explicit FileBytes(ReadAt readAt) : m_readAt(std::move(readAt)) {}

    /// `count` bytes at `position`, valid until the next call; empty where the file has fewer.
    std::string_view at(std::int64_t position, std::size_t count);

    /// Whether a read has failed.
    bool hasFailed() const { return m_hasFailed; }

private:
    ReadAt m_readAt;
    std::string m_window;
    std::int64_t m_windowStart = 0;
    bool m_hasFailed = false;
};

/// The head of one of the boxes of which HEIF and JPEG 2000 files consist.
struct Box
{
    std::uint32_t type = 0;
    std::int64_t content = 0; ///< position of the first byte behind the head
    std::int64_t end = 0;     ///< position behind the box; 0 where there is none
    bool isLast = false;      ///< says that it ends with the file; `end` is then the largest number
};

/// The box at `position`; one whose `end` is 0 where no whole head begins there, or where its size
/// is impossible.
Box boxAt(FileBytes& bytes, std::int64_t position);

/// The type of a box as the standards write it.
constexpr std::uint32_t boxType(const char (&name)[5])
{
    std::uint32_t type = 0;
    for (int i = 0; i < 4; ++i)
        type = type << 8 | static_cast<unsigned char>(name[i]);
    return type;
}

/// No file has more boxes on one level: a reader gives up there.
constexpr int mostBoxes = 256;

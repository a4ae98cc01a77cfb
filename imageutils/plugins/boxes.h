// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <streambuf>

/// The head of one of the boxes of which HEIF and JPEG 2000 files are made, one after the other.
struct Box
{
    std::uint32_t type = 0;
    std::int64_t size = 0; ///< as it says itself, with its head, at least 8; 0: none, or unknown
};

/// No file has as many boxes: who walks them gives up there.
constexpr int mostBoxes = 256;

/// The box at `position` of `file`; one of size 0 where none begins there, it says that it ends
/// with the file, or its end is beyond 64 bits.
Box boxAt(std::streambuf& file, std::int64_t position);

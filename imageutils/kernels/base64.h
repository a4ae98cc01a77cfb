// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Base64 (RFC 4648, section 4) over raw bytes and characters.
namespace Kernels {

constexpr std::string_view standardAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Writes `count` bytes as base64, padded with "=", and returns the number of characters written: 4
/// for each 3 bytes begun. `alphabet` must hold the 64 characters of the standard alphabet; only
/// the scalar version accepts others.
std::size_t encodeBase64(const std::uint8_t* bytes, std::size_t count, const char* alphabet,
                         char* text);

/// Writes the bytes of the `count` characters of base64 at `text`, up to the first character that
/// is not one of the standard alphabet, and returns their number. An unfinished group of k
/// characters gives k - 1 bytes. `bytes` must have space for 3 bytes for each 4 characters begun.
std::size_t decodeBase64(const char* text, std::size_t count, std::uint8_t* bytes);

namespace Scalar {

std::size_t encodeBase64(const std::uint8_t* bytes, std::size_t count, const char* alphabet,
                         char* text);
std::size_t decodeBase64(const char* text, std::size_t count, std::uint8_t* bytes);

} // namespace Scalar
} // namespace Kernels

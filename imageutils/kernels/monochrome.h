// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

/// Loops over one row of interleaved pixels that compare or replace their channels.
namespace Kernels {

/// Whether the `channels` values of each of `count` pixels are equal. Values compare with `==`, so
/// a NaN equals nothing. Pixels of more than four channels are compared by the scalar loop.
bool isRowMonochrome(const std::uint8_t* row, std::size_t count, int channels);
bool isRowMonochrome(const std::uint16_t* row, std::size_t count, int channels);
bool isRowMonochrome(const float* row, std::size_t count, int channels);

/// Replaces the three values of each of `count` pixels by their integer mean.
void makeRowMonochrome(std::uint16_t* row, std::size_t count);

namespace Scalar {

bool isRowMonochrome(const std::uint8_t* row, std::size_t count, int channels);
bool isRowMonochrome(const std::uint16_t* row, std::size_t count, int channels);
bool isRowMonochrome(const float* row, std::size_t count, int channels);
void makeRowMonochrome(std::uint16_t* row, std::size_t count);

} // namespace Scalar
} // namespace Kernels

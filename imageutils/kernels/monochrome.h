// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

/// Loops over one row of interleaved pixels that compare or replace their channels.
namespace Kernels {

/// Whether in each of `count` pixels of `channels` values the values are equal (`==`: a NaN never
/// is).
bool isRowMonochrome(const std::uint8_t* row, std::size_t count, int channels);
bool isRowMonochrome(const std::uint16_t* row, std::size_t count, int channels);
bool isRowMonochrome(const float* row, std::size_t count, int channels);

/// The same in vectors, for up to four channels; more take the plain road.
bool isRowMonochromeInVectors(const std::uint8_t* row, std::size_t count, int channels);
bool isRowMonochromeInVectors(const std::uint16_t* row, std::size_t count, int channels);
bool isRowMonochromeInVectors(const float* row, std::size_t count, int channels);

/// Replaces the three values of each of `count` pixels by their integer mean.
void makeRowMonochrome(std::uint16_t* row, std::size_t count);
void makeRowMonochromeInVectors(std::uint16_t* row, std::size_t count);

} // namespace Kernels

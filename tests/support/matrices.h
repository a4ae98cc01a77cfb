// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

namespace TestSupport {

/// A matrix in which channel c of pixel (x, y) holds x + 10 y + 100 c: neighbours differ, and a
/// wrong value tells its origin.
cv::Mat numbered(int rows, int cols, int type);

/// A matrix of random values, the same for the same `seed`: the full range of integer depths, 0 to
/// 1 for floats.
cv::Mat noise(int rows, int cols, int type, unsigned int seed = 1);

/// `mat` as a view into a wider and higher matrix that holds other values around it.
cv::Mat asView(const cv::Mat& mat);

/// Whether two matrices have the same type, size and bytes.
bool sameBytes(const cv::Mat& a, const cv::Mat& b);

} // namespace TestSupport

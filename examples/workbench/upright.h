// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

/// Whether a picture with this Exif orientation is shown as it is stored: 1, and every value that
/// Exif does not define.
bool isUpright(int orientation);

/// `pixels`, stored with the Exif `orientation` 2 to 8, as a viewer shows them; a new matrix.
cv::Mat turnedUpright(const cv::Mat& pixels, int orientation);

// SPDX-License-Identifier: Apache-2.0
#include "upright.h"

namespace {

enum Flip { UpsideDown = 0, LeftToRight = 1, Both = -1 }; // cv::flip's codes

cv::Mat flipped(const cv::Mat& pixels, Flip flip)
{
    cv::Mat result;
    cv::flip(pixels, result, flip);
    return result;
}

cv::Mat transposed(const cv::Mat& pixels)
{
    cv::Mat result;
    cv::transpose(pixels, result);
    return result;
}

} // namespace

bool isUpright(int orientation) { return orientation < 2 || orientation > 8; }

cv::Mat turnedUpright(const cv::Mat& pixels, int orientation)
{
    switch (orientation) {
    case 2:
        return flipped(pixels, LeftToRight);
    case 3:
        return flipped(pixels, Both);
    case 4:
        return flipped(pixels, UpsideDown);
    case 5:
        return transposed(pixels);
    case 6:
        return flipped(transposed(pixels), LeftToRight);
    case 7:
        return flipped(transposed(pixels), Both);
    case 8:
        return flipped(transposed(pixels), UpsideDown);
    default:
        return pixels.clone();
    }
}

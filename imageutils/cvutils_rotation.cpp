// SPDX-License-Identifier: Apache-2.0
//
// Rotated crops, and how alike two images are.
#include <imageutils/cvutils.h>

#include <imageutils/cvutils_p.h>

#include <QtCore/QDebug>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>

namespace {

constexpr double pi = 3.141592653589793;

using Corners = std::array<cv::Point2f, 4>;

Corners cornersOf(const cv::RotatedRect& rect)
{
    Corners corners;
    rect.points(corners.data());
    return corners;
}

/// Whether an output side of `side` pixels can be warped to. Its corners are `side` - 1 apart, so
/// at 1 and below the transform is singular.
bool isWarpSide(float side) { return side > 1 && double(side) <= INT_MAX; }

/// Whether no three of the four points lie on one line. Only then a perspective transform can map
/// them to the corners of an upright rectangle.
bool spanQuadrangle(const Corners& points)
{
    for (std::size_t skipped = 0; skipped < 4; ++skipped) {
        // The coordinates are whole numbers below 2^31, so their differences are exact in double;
        // the comparison is exact unless both products are near 2^62.
        const cv::Point2d a = points[(skipped + 1) % 4];
        const cv::Point2d b = points[(skipped + 2) % 4];
        const cv::Point2d c = points[(skipped + 3) % 4];
        if ((b - a).cross(c - a) == 0)
            return false;
    }
    return true;
}

/// The corners of `rect` relative to the origin of `bounds`, in whole pixels. Corners outside the
/// matrix, whose size is `size`, are moved to its edges.
Corners cornersInRegion(const cv::RotatedRect& rect, const cv::Rect& bounds, const cv::Size& size)
{
    const auto place = [](float coordinate, int origin, int length) {
        return float(std::clamp<qint64>(qint64(coordinate) - origin, 0, length - 1));
    };
    Corners corners = cornersOf(rect);
    for (cv::Point2f& corner : corners)
        corner = {place(corner.x, bounds.x, size.width), place(corner.y, bounds.y, size.height)};
    return corners;
}

} // namespace

std::optional<cv::Rect> CvUtils::enclosingRect(const cv::RotatedRect& rect)
{
    const Corners corners = cornersOf(rect);
    const auto fits = [&corners](float cv::Point2f::*coordinate) {
        double least = INT_MAX;
        double most = INT_MIN;
        for (const cv::Point2f& corner : corners) {
            if (!std::isfinite(corner.*coordinate))
                return false;
            least = std::min(least, std::floor(double(corner.*coordinate)));
            most = std::max(most, std::ceil(double(corner.*coordinate)));
        }
        return least >= INT_MIN && most <= INT_MAX && most - least + 1 <= INT_MAX;
    };
    if (!fits(&cv::Point2f::x) || !fits(&cv::Point2f::y))
        return {};
    return rect.boundingRect();
}

cv::RotatedRect CvUtils::getRotatedRect(const QRect& rect, double angle)
{
    const QPoint center = rect.center();
    // QRect::width() overflows for a rectangle that spans more than int can count.
    const qint64 width = qint64(rect.right()) - rect.left() + 1;
    const qint64 height = qint64(rect.bottom()) - rect.top() + 1;
    return {cv::Point2f(float(center.x()), float(center.y())),
            cv::Size2f(float(width), float(height)), float(360.0 - angle * 180.0 / pi)};
}

cv::Mat CvUtils::applyRotation(const cv::Mat& mat, const cv::RotatedRect& rect)
{
    if (rect.angle == 0.0f || rect.angle == 360.0f)
        return mat;
    if (mat.empty() || mat.dims > 2) {
        qWarning() << "applyRotation: matrix must have pixels and two dimensions, got dimensions:"
                   << mat.dims;
        return {};
    }
    const cv::Size2f size = rect.size;
    if (!isWarpSide(size.width) || !isWarpSide(size.height)) {
        qWarning() << "applyRotation: sides must be finite and above 1, got:" << size.width << "x"
                   << size.height;
        return {};
    }
    const std::optional<cv::Rect> bounds = enclosingRect(rect);
    if (!bounds) {
        qWarning() << "applyRotation: corners must be finite and within int, got angle:"
                   << rect.angle;
        return {};
    }
    const Corners source = cornersInRegion(rect, *bounds, mat.size());
    if (!spanQuadrangle(source)) {
        qWarning() << "applyRotation: the region leaves no area between the corners, got:"
                   << mat.cols << "x" << mat.rows;
        return {};
    }
    const float right = size.width - 1;
    const float bottom = size.height - 1;
    const Corners destination = {cv::Point2f(0, bottom), {0, 0}, {right, 0}, {right, bottom}};
    cv::Mat output(cvRound(size.height), cvRound(size.width), mat.type());
    prefaultWhole(output);
    const cv::Mat transform = cv::getPerspectiveTransform(source.data(), destination.data());
    cv::warpPerspective(mat, output, transform, output.size(), cv::INTER_LINEAR,
                        cv::BORDER_CONSTANT, 0);
    return output;
}

double CvUtils::similarity(const cv::Mat& first, const cv::Mat& second)
{
    const double pixels = double(qint64(first.rows) * first.cols);
    return 1.0 - cv::norm(first, second, cv::NORM_L2) / pixels;
}

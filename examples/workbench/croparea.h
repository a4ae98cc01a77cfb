// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>

/// Rectangles of a picture that an export keeps when the picture is turned by an angle. Each is
/// given as it would be without the angle, and stands in the picture turned about its own centre,
/// as `CvUtils::getRotatedRect` describes it. The worker processes crop by these functions, and
/// the window draws by them.
namespace CropArea {

/// How many pixels around the picture a turned rectangle may need, because the library rounds its
/// corners outwards and counts them at both ends.
constexpr int border = 4;

/// The largest rectangle of the shape of a picture of `size`, about its centre, that leaves no
/// empty corners.
QRect largest(QSize size, double degrees);

/// Whether `crop` is at least 2x2 pixels and lies in a picture of `size`.
bool isWithin(QSize size, const QRect& crop, double degrees);

/// Why a picture of `size` cannot be cropped to `crop`; empty when it can, and for a null `crop`.
QString refusalOf(QSize size, const QRect& crop, double degrees);

/// `to`, or, if that reaches beyond the picture, what comes nearest to it: on the straight way from
/// `from` to the edge, and then along the edge. `from` lies within the picture.
QRect nearest(QSize size, const QRect& from, const QRect& to, double degrees);

/// `crop`, or, if that reaches beyond the picture, the largest part of the same shape about the
/// same centre.
QRect shrunk(QSize size, const QRect& crop, double degrees);

} // namespace CropArea

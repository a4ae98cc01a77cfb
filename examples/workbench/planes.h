// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>

#include <opencv2/core.hpp>

/// The planes of a picture: `CV_32FC3` colours and `CV_32FC1` alpha of the same size. Functions
/// return new matrices, or share those of the input when nothing changes.
struct Planes
{
    cv::Mat chroma;
    cv::Mat alpha;             ///< empty for a picture that is opaque throughout
    bool isAssociated = false; ///< the colours are multiplied by alpha
};

/// The size of the picture.
inline QSize sizeOf(const Planes& planes) { return {planes.chroma.cols, planes.chroma.rows}; }

/// The rectangle `part` of `planes`, whose samples it shares.
Planes cut(const Planes& planes, const QRect& part);

/// `alpha` copied into three channels, for functions that take colours only.
cv::Mat alphaAsColours(const cv::Mat& alpha);

/// The first channel of `colours`, clamped to the range of 0 to 1, because a cubic filter may
/// overshoot it.
cv::Mat coloursAsAlpha(const cv::Mat& colours);

/// `planes` with colours that are multiplied by alpha (associated), or are not. Where alpha is 0,
/// dividing by it is impossible, and the colours become 0.
Planes associated(const Planes& planes, bool wanted);

/// `planes` laid over white.
Planes overWhite(const Planes& planes);

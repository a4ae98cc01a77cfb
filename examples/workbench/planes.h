// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>

#include <opencv2/core.hpp>

/// The planes of a picture in work: `CV_32FC3` colours and `CV_32FC1` alpha of the same size. All
/// functions give new matrices, or the input's where nothing changes.
struct Planes
{
    cv::Mat chroma;
    cv::Mat alpha;             ///< empty for a picture that is opaque throughout
    bool isAssociated = false; ///< the colours are multiplied by alpha
};

/// The size of the picture.
inline QSize sizeOf(const Planes& planes) { return {planes.chroma.cols, planes.chroma.rows}; }

/// Whether every sample of `alpha` is 1.
bool isOpaque(const cv::Mat& alpha);

/// The one channel of `alpha` three times, for what works on colours.
cv::Mat alphaAsColours(const cv::Mat& alpha);

/// The first channel of `colours`, held between 0 and 1, which a cubic filter may leave.
cv::Mat coloursAsAlpha(const cv::Mat& colours);

/// `planes` with colours that are multiplied by alpha, or are not. Colours that nothing shows come
/// back from the multiplication as 0.
Planes associated(const Planes& planes, bool wanted);

/// `planes` laid over white.
Planes overWhite(const Planes& planes);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

/// The expected pixels of a resized picture, in double precision.
namespace Reference {

/// Where sample 0 of the result lies.
enum class Origin {
    OnSample,  ///< On sample 0 of the source.
    Areas,     ///< Where the centre of the first pixel lies, when pixels are areas.
    HalfBefore ///< Half a sample before sample 0.
};

/// How an implementation resamples. The cubic is Mitchell and Netravali's with `b` and `c`.
struct Filter
{
    double b;
    double c;
    bool widens; ///< Whether the filter is stretched for a reduction.
    Origin origin;
};

/// The largest difference of `result`, at a few hundred places off the edges, from `source`, both
/// `CV_32FC3`, resampled by `filter`.
double differenceOf(const cv::Mat& result, const cv::Mat& source, double scale,
                    const Filter& filter);

} // namespace Reference

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "result.h"

#include <opencv2/core.hpp>

#include <OpenImageIO/imageio.h>

/// Whether the picture that `input` has opened from `path` is stored in inks. OpenImageIO describes
/// it as RGB, which it makes without a profile.
bool isCmyk(const OIIO::ImageInput& input, const std::string& path);

/// The inks of that picture as `CV_8UC4` or `CV_16UC4`, in which 0 is no ink. An alpha channel is
/// left out.
Result<cv::Mat> readInks(const OIIO::ImageInput& input, const std::string& path);

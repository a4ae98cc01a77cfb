// SPDX-License-Identifier: Apache-2.0
#include "peers.h"

#include <OpenImageIO/imagebufalgo.h>

OIIO::ImageBuf Peers::oiioResized(const cv::Mat& source, cv::Size size)
{
    const OIIO::ImageSpec spec(source.cols, source.rows, 3, OIIO::TypeDesc::FLOAT);
    const OIIO::ImageBuf image(spec, source.data);
    return OIIO::ImageBufAlgo::resize(image, "mitchell", 0.0F,
                                      OIIO::ROI(0, size.width, 0, size.height, 0, 1, 0, 3));
}

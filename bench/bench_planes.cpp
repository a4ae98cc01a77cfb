// SPDX-License-Identifier: Apache-2.0
//
// Planes, wrapping and analysis of 12-megapixel float pictures, beside a copy of the larger side.
#include "ratios.h"

#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <vector>

int main(int argc, char** argv)
{
    const cv::Mat colour = TestSupport::noise(3000, 4000, CV_32FC4);
    cv::Mat chroma, alpha, grey;
    CvUtils::splitChromaAlpha(colour, chroma, alpha);
    cv::merge(std::vector<cv::Mat>(3, alpha), grey);

    const auto copy = [colour] { return colour.clone(); };
    addOperation("split", "ours", [colour] {
        cv::Mat newChroma, newAlpha;
        CvUtils::splitChromaAlpha(colour, newChroma, newAlpha);
        return newChroma;
    });
    addOperation("split", "clone", copy);
    addOperation("merge", "ours",
                 [chroma, alpha] { return CvUtils::mergeChromaAlpha(chroma, alpha); });
    addOperation("merge", "clone", copy);
    // Wrapping is free of copies, so a hundredth of the rows takes the same time.
    addOperation("wrap", "ours",
                 [colour] { return CvUtils::matToQImage(colour, QImage::Format_RGBA32FPx4); });
    addOperation("wrap", "30 rows", [rows = cv::Mat(colour.rowRange(0, 30))] {
        return CvUtils::matToQImage(rows, QImage::Format_RGBA32FPx4);
    });
    addOperation("is monochrome", "ours", [grey] { return CvUtils::isMonochrome(grey); });
    addOperation("is monochrome", "sum", [grey] { return cv::sum(grey); });
    addOperation("is luma noise", "ours", [chroma] { return CvUtils::isLumaNoise(chroma); });
    addOperation("is luma noise", "clone", [chroma] { return chroma.clone(); });
    return runBenchmarks(argc, argv);
}

// SPDX-License-Identifier: Apache-2.0
//
// Resampling of float colour, a fresh result for every call, beside OpenCV's cubic resize. OpenCV
// reads four taps whatever the factor, so a reduction by it aliases; ours widens the filter and
// reads seventeen at 0.25.
#include "ratios.h"

#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <opencv2/imgproc.hpp>

int main(int argc, char** argv)
{
    const cv::Mat large = TestSupport::noise(3000, 4000, CV_32FC3);
    const cv::Mat small = TestSupport::noise(1500, 2000, CV_32FC3);
    struct Work
    {
        const char* name;
        cv::Mat source;
        double scale;
    };
    for (const Work& work : {Work{"12 MP x 0.25", large, 0.25}, Work{"12 MP x 0.5", large, 0.5},
                             Work{"3 MP x 2", small, 2}}) {
        const auto [name, source, scale] = work;
        addOperation(name, "ours", [source = source, scale = scale] {
            return CvUtils::resize(source, scale, scale, 0, 0, 0.33333f, 0.33333f);
        });
        addOperation(name, "OpenCV cubic", [source = source, scale = scale] {
            cv::Mat result;
            cv::resize(source, result, cv::Size(), scale, scale, cv::INTER_CUBIC);
            return result;
        });
    }
    return runBenchmarks(argc, argv);
}

// SPDX-License-Identifier: Apache-2.0
//
// after_pause CALLS SECONDS
//
// CALLS times: sleeps for SECONDS and doubles the size of a picture of 3 megapixels. Prints the
// seconds of each call, including the release of its result, one per line. The program is also
// built without prefaulting (after_pause_unprefaulted).
#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

int main(int argc, char** argv)
{
    if (argc != 3)
        return EXIT_FAILURE;
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    const cv::Mat picture = TestSupport::noise(1500, 2000, CV_32FC3);
    for (int i = 0; i < std::atoi(argv[1]); ++i) {
        std::this_thread::sleep_for(Seconds(std::atof(argv[2])));
        const Clock::time_point start = Clock::now();
        CvUtils::resize(picture, 2, 2, 0, 0, 0.33333F, 0.33333F);
        std::printf("%g\n", Seconds(Clock::now() - start).count());
    }
}

// SPDX-License-Identifier: Apache-2.0
//
// Serialising a picture of 12 megapixels and reading it back beside copying its bytes into fresh
// memory.
#include "ratios.h"

#include <imageutils/cvutils.h>

#include <opencv2/core.hpp>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct Free
{
    void operator()(void* memory) const { std::free(memory); }
};

std::unique_ptr<void, Free> copied(const void* data, std::size_t size)
{
    std::unique_ptr<void, Free> copy(std::malloc(size));
    std::memcpy(copy.get(), data, size);
    return copy;
}

} // namespace

int main(int argc, char** argv)
{
    const cv::Mat picture(3000, 4000, CV_32FC3, cv::Scalar::all(0.5));
    const std::vector<unsigned char> bytes = CvUtils::serializeMat(picture);

    const auto copy = [&] { return copied(picture.data, picture.total() * picture.elemSize()); };
    addOperation("serialise", "ours", [&] { return CvUtils::serializeMat(picture); });
    addOperation("serialise", "memcpy", copy);
    addOperation("read", "ours", [&] { return CvUtils::deserializeMat(bytes); });
    addOperation("read", "memcpy", copy);
    return runBenchmarks(argc, argv);
}

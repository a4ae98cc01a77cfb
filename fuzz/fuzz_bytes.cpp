// SPDX-License-Identifier: Apache-2.0
//
// Any bytes, read as a serialised matrix and as base64 text.
#include <imageutils/cvutils.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void readMatrix(const std::vector<unsigned char>& bytes)
{
    const cv::Mat mat = CvUtils::deserializeMat(bytes);
    if (mat.empty())
        return;
    const std::vector<unsigned char> again = CvUtils::serializeMat(mat);
    require(again.size() <= bytes.size());
    require(
        std::equal(again.begin(), again.begin() + 12, bytes.begin())); // then: channels, not read
    require(std::equal(again.begin() + 16, again.end(), bytes.begin() + 16));
}

void readText(const std::string& text)
{
    const std::vector<unsigned char> bytes = CvUtils::base64Decode(text);
    require(bytes.size() <= text.size() / 4 * 3 + 2);
    const std::string again = CvUtils::base64Encode(bytes);
    require(CvUtils::base64Decode(again) == bytes);
    const std::size_t groups = bytes.size() / 3 * 4;
    require(again.compare(0, groups, text, 0, groups) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    readMatrix({data, data + size});
    readText({reinterpret_cast<const char*>(data), size});
    return 0;
}

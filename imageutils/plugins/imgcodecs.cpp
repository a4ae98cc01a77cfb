// SPDX-License-Identifier: Apache-2.0
//
// A plug-in, because opening OpenCV's codecs opens some 120 libraries.
#include <imageutils/imageutils_export.h>
#include <imageutils/picturewriter.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <filesystem>
#include <fstream>
#include <type_traits>
#include <vector>

namespace {

/// Writes the bitmap `mat`. OpenCV opens a file by a name in bytes, and where the system's names
/// are no bytes, it reaches only those that the code page of the system can express.
void writeBitmap(const std::string& utf8Path, const cv::Mat& mat)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, char>) {
        cv::imwrite(utf8Path, mat);
    } else {
        std::vector<unsigned char> bytes;
        cv::imencode(".bmp", mat, bytes);
        const std::u8string name(utf8Path.begin(), utf8Path.end());
        std::ofstream file(std::filesystem::path(name), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    }
}

} // namespace

extern "C" IMAGEUTILS_EXPORT WriteBitmapFunction imageutilsPlugin;

void imageutilsPlugin(const std::string& utf8Path, const cv::Mat& mat, int colorConversion,
                      double alpha, double beta, double scale, std::exception_ptr& thrown) noexcept
{
    try {
        cv::Mat working;
        cv::resize(mat, working, cv::Size(), scale, scale, cv::INTER_LINEAR);
        working.convertTo(working, CV_8UC3, alpha, beta);
        cv::cvtColor(working, working, colorConversion);
        writeBitmap(utf8Path, working);
    } catch (...) {
        thrown = std::current_exception();
    }
}

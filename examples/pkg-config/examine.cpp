// SPDX-License-Identifier: Apache-2.0
//
// examine FILE…
//
// Prints of each picture whether it is grey, whether its finest detail is in the luminance, its
// memory and the key of its size.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <iostream>

namespace {

/// The pixels of `image` as an 8-bit R, G, B matrix that `image` owns.
cv::Mat pixelsOf(QImage& image)
{
    image.convertTo(QImage::Format_RGB888);
    return {image.height(), image.width(), CV_8UC3, image.bits(),
            std::size_t(image.bytesPerLine())};
}

} // namespace

int main(int argc, char** argv)
{
    int unreadable = 0;
    for (int i = 1; i < argc; ++i) {
        QImage image(QString::fromLocal8Bit(argv[i]));
        if (image.isNull()) {
            std::cout << argv[i] << ": unreadable\n";
            ++unreadable;
            continue;
        }
        const cv::Mat pixels = pixelsOf(image);
        const QVariantMap facts = {{QStringLiteral("width"), pixels.cols},
                                   {QStringLiteral("height"), pixels.rows}};
        std::cout << argv[i] << ": " << (CvUtils::isMonochrome(pixels) ? "grey" : "colour") << ", "
                  << (CvUtils::isLumaNoise(pixels) ? "noise in the luminance"
                                                   : "no luminance noise")
                  << ", " << CvUtils::memoryUsage(pixels) << " bytes, key " << std::hex
                  << NImageUtils::hashParams(facts) << std::dec << '\n';
    }
    return unreadable == 0 ? 0 : 1;
}

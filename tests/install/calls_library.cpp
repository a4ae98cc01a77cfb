// SPDX-License-Identifier: Apache-2.0
//
// Calls a little of each installed library.
#include <baseutils/baseutils.h>
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/mathutils.h>
#include <imageutils/osutils.h>
#include <imageutils/qmlmodule.h>
#include <metadata/nexiftoolmetadata.h>
#include <timing/elapsedtime.h>

namespace {

int s_wrong = 0;

void expect(bool answer, const char* question)
{
    if (!answer) {
        qCritical() << "wrong:" << question;
        ++s_wrong;
    }
}

} // namespace

int main()
{
    QImage image(6, 4, QImage::Format_RGBA32FPx4);
    image.fill(QColor::fromRgbF(0.25f, 0.5f, 0.75f, 0.5f));
    const QImage original = image.copy();
    cv::Mat chroma;
    cv::Mat alpha;
    expect(CvUtils::qimageToMat(image, chroma, alpha), "qimageToMat");
    expect(!CvUtils::isMonochrome(chroma), "isMonochrome");
    expect(CvUtils::resize(chroma, 0.5, 0, 0, 0, 0, 0).size() == cv::Size(3, 2), "resize");
    expect(CvUtils::matToQImage(chroma, alpha) == original, "matToQImage");
    expect(NImageUtils::getExportExtension("jpg", "png") == "png", "export extension");
    const QMetaObject& math = NMathUtils::staticMetaObject;
    expect(math.indexOfMethod("mapBrushSize(float,QSize)") >= 0, "brush size is invokable");
    expect(OSUtils::staticMetaObject.indexOfProperty("maxWidth") >= 0,
           "maximum width is a property");
    expect(BaseUtils::isRawExt("dng"), "raw extension");
    expect(QString(ElapsedTime(1500, 1)) == "1.50 us", "elapsed time");
    expect(NExifToolMetadata("jpg", "a.jpg", 6, 4, {{"A", 1}}).value("A") == 1, "metadata");
    return s_wrong;
}

// SPDX-License-Identifier: Apache-2.0
//
// batch FOLDER FILE…
//
// Writes every picture at half of its size into FOLDER, as PNG, and prints a line for each.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <metadatareader/metadatareader.h>
#include <timing/elapsedtime.h>

#include <QtCore/QDir>
#include <QtCore/QTextStream>

namespace {

/// `image` at half of its size; a null image if it holds no pixels.
QImage halved(QImage image)
{
    const bool isOpaque = !image.hasAlphaChannel();
    image.convertTo(QImage::Format_RGBA32FPx4);
    cv::Mat chroma;
    cv::Mat alpha;
    if (!CvUtils::qimageToMat(image, chroma, alpha))
        return {};
    chroma = CvUtils::resize(chroma, 0.5, 0.5, 0, 0, 1 / 3.0f, 1 / 3.0f);
    if (isOpaque)
        alpha.release();
    return CvUtils::matToQImage(chroma, alpha); // brings an alpha to the size of the colours
}

/// Whether `path` was processed; `line` describes the picture, or the reason why not.
bool process(const QString& path, const QDir& folder, QString& line)
{
    line = NImageUtils::getFilename(path) + QStringLiteral(": ");
    if (!NImageUtils::imageSize(path).isValid()) {
        line += QStringLiteral("not a picture");
        return false;
    }
    const qint64 start = ElapsedTime::monotonicNanoseconds();
    const QImage result = halved(QImage(path));
    const ElapsedTime elapsed(ElapsedTime::monotonicNanoseconds() - start, 1);
    const QString name = NImageUtils::getBaseName(path) + QStringLiteral(".png");
    const QString output = NImageUtils::adjustPathWhenOverwriting(folder.filePath(name));
    if (result.isNull() || !result.convertToFormat(QImage::Format_RGBA8888).save(output)) {
        line += QStringLiteral("cannot be read or written");
        return false;
    }
    const QString camera = readMetadata(path).value(QStringLiteral("Model")).toString();
    line += QStringLiteral("%1 x %2 in %3, camera: %4")
                .arg(QString::number(result.width()), QString::number(result.height()),
                     QString(elapsed), camera.isEmpty() ? QStringLiteral("unknown") : camera);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QTextStream out(stdout);
    if (argc < 3) {
        out << "usage: batch FOLDER FILE...\n";
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    bool allWell = folder.mkpath(QStringLiteral("."));
    for (int i = 2; i < argc; ++i) {
        QString line;
        allWell = process(QString::fromLocal8Bit(argv[i]), folder, line) && allWell;
        out << line << Qt::endl;
    }
    return allWell ? 0 : 1;
}

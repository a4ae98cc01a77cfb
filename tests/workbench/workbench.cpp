// SPDX-License-Identifier: Apache-2.0
#include "workbench.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtGui/QColorSpace>
#include <QtTest/QTest>

namespace {

QStringList lines(const QByteArray& text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

Workbench::Run Workbench::run(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(WORKBENCH_PROGRAM),
                  QStringList{QStringLiteral("--headless")} + arguments);
    Run run;
    if (!process.waitForFinished(60'000)) {
        process.kill();
        process.waitForFinished();
    } else if (process.exitStatus() == QProcess::NormalExit) {
        run.exitCode = process.exitCode();
    }
    run.output = lines(process.readAllStandardOutput());
    run.errors = lines(process.readAllStandardError());
    return run;
}

float Workbench::sampleAt(int x, int y, int c)
{
    auto bits = unsigned(x) * 73856093U ^ unsigned(y) * 19349663U ^ unsigned(c) * 83492791U;
    bits = (bits ^ (bits >> 13)) * 0x5bd1e995U;
    return float(bits >> 24) / 255.0F;
}

void Workbench::makePicture(const QString& path, const OIIO::ImageSpec& spec)
{
    QDir().mkpath(QFileInfo(path).path());
    std::vector<float> samples;
    for (int y = 0; y < spec.height; ++y)
        for (int x = 0; x < spec.width; ++x)
            for (int c = 0; c < spec.nchannels; ++c)
                samples.push_back(sampleAt(x, y, c));
    const auto writer = OIIO::ImageOutput::create(path.toStdString());
    QVERIFY(writer && writer->open(path.toStdString(), spec));
    QVERIFY(writer->write_image(OIIO::TypeFloat, samples.data()) && writer->close());
}

Workbench::Picture Workbench::readPicture(const QString& path)
{
    Picture picture;
    OIIO::ImageSpec wishes;
    wishes.attribute("oiio:UnassociatedAlpha", 1);
    const auto reader = OIIO::ImageInput::open(path.toStdString(), &wishes);
    if (!reader)
        return picture;
    picture.spec = reader->spec();
    picture.samples.resize(picture.spec.image_pixels() * std::size_t(picture.spec.nchannels));
    reader->read_image(0, 0, 0, picture.spec.nchannels, OIIO::TypeFloat, picture.samples.data());
    return picture;
}

QByteArray Workbench::profile(const QByteArray& colourSpace)
{
    if (colourSpace == "RGB ")
        return QColorSpace(QColorSpace::AdobeRgb).iccProfile();
    return QByteArray(16, '\0') + colourSpace + QByteArray(16, '\0') + "acsp" +
           QByteArray(92, '\0');
}

void Workbench::attach(OIIO::ImageSpec& spec, const QByteArray& profile)
{
    spec.attribute("ICCProfile", OIIO::TypeDesc(OIIO::TypeDesc::UINT8, int(profile.size())),
                   profile.constData());
}

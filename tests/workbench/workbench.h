// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <OpenImageIO/imageio.h>

#include <vector>

/// The workbench as a process, and the pictures that it reads and writes.
namespace Workbench {

struct Run
{
    int exitCode = -1; ///< -1 when it crashed or hung
    QStringList output;
    QStringList errors;
};

/// Runs the program without a window.
Run run(const QStringList& arguments);

/// The sample of channel `c` at (x, y) of the pictures that makePicture() writes: one of 256
/// values, without a pattern, so that neighbours differ and compression gains nothing.
float sampleAt(int x, int y, int c);

/// Writes a picture of `spec`'s size, channels, sample type and attributes.
void makePicture(const QString& path, const OIIO::ImageSpec& spec);

/// A picture as it is stored: samples 0 to 1, alpha not multiplied into the colours.
struct Picture
{
    OIIO::ImageSpec spec;
    std::vector<float> samples;
    float at(int x, int y, int c) const
    {
        return samples[(std::size_t(y) * spec.width + x) * spec.nchannels + c];
    }
};
Picture readPicture(const QString& path);

/// A colour profile: "RGB " is a real one (Adobe RGB), others are a header of that colour space.
QByteArray profile(const QByteArray& colourSpace);
void attach(OIIO::ImageSpec& spec, const QByteArray& profile);

} // namespace Workbench

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>

/// The two shape parameters of the cubic filter.
struct FilterShape
{
    float b;
    float c;
};

/// How colours that the target of a conversion cannot hold are replaced.
enum class Intent { Perceptual, Relative };

/// How much of the metadata of a photograph its outputs get.
enum class MetadataChoice { All, NoGps, None };

/// What the size of an output follows from.
enum class SizeChoice {
    Scale,    ///< `scale`
    LongEdge, ///< the longer side gets `longEdge` pixels
    Fit,      ///< the whole picture as large as it fits into `box`
    Fill      ///< exactly `box`, which the picture covers; what sticks out is cropped evenly
};

/// The unsharp mask; sharpen.h has the formula.
struct Sharpening
{
    double amount;
    double radius; ///< of the Gaussian blur, as its standard deviation in output pixels
};

/// Everything that decides what the outputs of a photograph are: their pixels, their encoding,
/// their names and their folder. The command line and the window fill the same structure.
struct ExportSettings
{
    SizeChoice sizeChoice = SizeChoice::Scale;
    double scale = 1.0;
    int longEdge = 0;
    QSize box;
    int maxWidth = 0;       ///< 0: no limit
    int maxHeight = 0;      ///< 0: no limit
    bool mayEnlarge = true; ///< otherwise a picture that is small already keeps its size
    double rotate = 0.0;    ///< degrees, clockwise
    QRect crop;             ///< in pixels after `turn`, as croparea.h describes it; null: none
    int page = 1;           ///< of a file of several pictures
    int turn = 1;           ///< as an Exif orientation
    std::optional<FilterShape> filter;
    std::optional<Sharpening> sharpening;

    QString profile = QStringLiteral("keep"); ///< "keep", "srgb" or the path of a profile
    Intent intent = Intent::Perceptual;       ///< of conversions between profiles
    MetadataChoice metadata = MetadataChoice::All;

    QString format = QStringLiteral("tiff"); ///< an extension, or "preserve"
    int quality = 95;
    int bitDepth = 0; ///< 8, 16 or 32 (floats); 0: as the source
    bool isProgressive = false;
    bool isLossless = false;
    QString subsampling; ///< of chroma, "4:4:4" (as for an empty one), "4:2:2" or "4:2:0"
    QString compression; ///< of TIFF and OpenEXR; empty: the format's usual one
    bool bitmap = false; ///< a Windows bitmap as well

    QString outputFolder = QStringLiteral("workbench-output");
    QString nameTemplate = QStringLiteral("{name}"); ///< naming.h has its fields
    bool mayOverwrite = false;
    qint64 maxPixels = 250'000'000; ///< what a header may claim before it is not believed
};

/// What is wrong with `settings`, without looking at any photograph; empty when nothing is.
QString problemOf(const ExportSettings& settings);

/// The settings that change the bytes of outputs with `extension`, which are part of their record:
/// equal ones give equal outputs. Names and folders are not among them, and neither is what the
/// format has no use for.
QJsonObject recordedSettings(const ExportSettings& settings, const QString& extension);

/// `settings` as JSON.
QJsonObject jsonOf(const ExportSettings& settings);

/// The settings in `json`, as `jsonOf` makes it; what is missing is as in a default structure.
ExportSettings settingsOf(const QJsonObject& json);

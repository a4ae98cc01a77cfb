// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

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

/// What the user asks for.
struct Options
{
    QStringList paths; ///< photographs and folders, as given; empty: the sample photographs
    QString outputFolder = QStringLiteral("workbench-output");
    QString format = QStringLiteral("tiff"); ///< an extension, or "preserve"
    double scale = 1.0;
    double rotate = 0.0; ///< degrees, clockwise
    int maxWidth = 0;    ///< 0: no limit
    int maxHeight = 0;   ///< 0: no limit
    std::optional<FilterShape> filter;
    int quality = 95;
    int page = 1;                             ///< of a file of several pictures
    int turn = 1;                             ///< as an Exif orientation
    QString profile = QStringLiteral("keep"); ///< "keep", "srgb" or the path of a profile
    Intent intent = Intent::Perceptual;       ///< of conversions between profiles
    MetadataChoice metadata = MetadataChoice::All;
    int jobs = 0;         ///< photographs at once; 0: as many as there are processors
    qint64 maxMemory = 0; ///< bytes that their pixels may take together; 0: half of what there is
    qint64 maxPixels = 250'000'000; ///< what a header may claim before it is not believed
    bool bitmap = false;
    bool json = false;
    bool headless = false;
    bool verbose = false;
};

/// A command line that has been read.
struct CommandLine
{
    Options options;
    QString error;             ///< what is wrong with it, empty when nothing is
    bool wantsHelp = false;    ///< helpText() was asked for
    bool wantsVersion = false; ///< name and version were asked for
    bool wantsMachine = false; ///< the facts of the machine were asked for
};

/// Reads `arguments`, of which the first is the program's name. Needs no application object.
CommandLine readCommandLine(const QStringList& arguments);

/// The whole `--help`. Needs an application object, whose name it shows.
QString helpText();

// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "formats.h"

#include <QtCore/QCommandLineParser>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>

namespace {

const QCommandLineOption& outputOption()
{
    static const QCommandLineOption option(
        {QStringLiteral("o"), QStringLiteral("output")},
        QStringLiteral("Write into the folder DIR, which is made when it is missing "
                       "(default: ./workbench-output). Files that exist are never overwritten."),
        QStringLiteral("DIR"), QStringLiteral("workbench-output"));
    return option;
}

void describe(QCommandLineParser& parser)
{
    const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
    parser.setApplicationDescription(
        text("Takes photographs through the library: reads, examines, resamples and exports them.\n"
             "Exit status: 0 when every photograph was exported or kept, 1 when one failed, 2 for "
             "a wrong command line."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        text("FILE|FOLDER"),
        text("Photographs, and folders whose photographs are taken in the order of their names "
             "(hidden files and folders inside are not). Without any: the photographs of the "
             "package mate-backgrounds."),
        text("[FILE|FOLDER...]"));
    parser.addOption(outputOption());
    parser.addOptions({
        {text("scale"), text("Resample by the factor S, above 0 (default: 1)."), text("S"),
         text("1")},
        {text("rotate"),
         text("Turn clockwise by DEGREES and crop to the largest picture of the same shape without "
              "empty corners (default: 0)."),
         text("DEGREES"), text("0")},
        {text("max-width"),
         text("Make the picture fit into N columns, whole and undistorted. Never enlarges."),
         text("N"), text("0")},
        {text("max-height"),
         text("Make the picture fit into N rows, whole and undistorted. Never enlarges."),
         text("N"), text("0")},
        {text("filter"),
         text("Shape of the cubic filter for a factor of 1 or less (default: 0,0 at exactly 1, "
              "which leaves every pixel as it is, otherwise 1/3,1/3). Enlarging always uses "
              "1/3,1/3."),
         text("B,C")},
        {text("format"),
         text(
             "Export as the format with the extension EXT, or \"preserve\" for the source's own "
             "(default: tiff). Raw photographs are developed, so for them \"preserve\" and \"dng\" "
             "mean tiff."),
         text("EXT"), text("tiff")},
        {text("quality"), text("Quality of formats that lose some, 1 to 100 (default: 95)."),
         text("Q"), text("95")},
        {text("page"), text("Of a file of several pictures, take the Nth (default: 1)."), text("N"),
         text("1")},
        {text("turn"),
         text("Turn clockwise by 90, 180 or 270 degrees, or mirror: \"horizontal\" exchanges left "
              "and "
              "right, \"vertical\" top and bottom. Every pixel stays as it is."),
         text("TURN"), text("0")},
        {text("profile"),
         text("Colours of the output: \"keep\" (default) those of the source where the format can "
              "name them, \"srgb\", or those of the ICC profile in the file P. Formats without "
              "profiles get sRGB, OpenEXR and HDR linear light."),
         text("P"), text("keep")},
        {text("intent"), text("Rendering intent of conversions: perceptual (default) or relative."),
         text("I"), text("perceptual")},
        {text("metadata"), text("Copy Exif, XMP and IPTC: all (default), no-gps or none."),
         text("M"), text("all")},
        {text("bitmap"), text("Also write a Windows bitmap of every picture.")},
        {text("max-megapixels"),
         text("Refuse files whose header claims more than N megapixels (default: 250). A "
              "photograph takes some 20 bytes of memory per pixel."),
         text("N"), text("250")},
        {text("jobs"),
         text("Without a window, work on up to N photographs at once (default: as many as there "
              "are processors)."),
         text("N"), text("0")},
        {text("max-memory"),
         text("Let the pixels of these photographs take N MiB together; a larger one is taken "
              "alone (default: half of the memory that is available)."),
         text("N"), text("0")},
        {text("machine"),
         text("Print the facts of this machine, with --json as one line of JSON, and take no "
              "photographs.")},
        {text("json"),
         text("Print one line of JSON per photograph instead of a table; implies --headless.")},
        {text("headless"), text("Show no window, even with a display.")},
        {text("verbose"), text("Show everything that is known of each photograph, and the "
                               "library's information lines.")},
    });
}

/// A long option behind a single dash, which would be read as several short ones or as a value of
/// -o; empty when there is none.
QString misspelt(const QStringList& arguments)
{
    for (qsizetype i = 1; i < arguments.size() && arguments[i] != QLatin1String("--"); ++i) {
        const QString& argument = arguments[i];
        const bool isValue = arguments[i - 1] == QLatin1String("-o") ||
                             arguments[i - 1] == QLatin1String("--output");
        const bool isLong = argument.size() > 2 && argument[0] == u'-' && argument[1].isLetter();
        const bool isFolder = argument.startsWith(QLatin1String("-o")) &&
                              !argument.startsWith(QLatin1String("-output"));
        if (isLong && !isValue && !isFolder)
            return argument;
    }
    return {};
}

/// What is wrong with values that are right by themselves; empty when nothing is.
QString contradiction(const Options& options)
{
    const QString format = options.format.toLower();
    if (format != QLatin1String("preserve") && format != QLatin1String("dng") &&
        !Formats::isWritable(format))
        return QStringLiteral("--format takes preserve or one of %1, not \"%2\"")
            .arg(Formats::writableText(), options.format);
    if (options.scale * options.scale > double(options.maxPixels))
        return QStringLiteral("--scale %1 makes more of one pixel than --max-megapixels allows")
            .arg(options.scale);
    return {};
}

/// Reads option values; the first one that is wrong is kept as the error.
class Reader
{
public:
    Reader(const QCommandLineParser& parser, QString& error) : m_parser(parser), m_error(error) {}

    double number(const char* name, double above)
    {
        bool isNumber = false;
        const double value = text(name).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(value) || !(value > above))
            refuse(name, std::isfinite(above) ? QStringLiteral("a number above %1").arg(above)
                                              : QStringLiteral("a number"));
        return value;
    }

    int integer(const char* name, int lowest, int highest)
    {
        bool isNumber = false;
        const int value = text(name).toInt(&isNumber);
        if (!isNumber || value < lowest || value > highest)
            refuse(name, QStringLiteral("a whole number from %1 to %2").arg(lowest).arg(highest));
        return value;
    }

    std::optional<FilterShape> filter(const char* name)
    {
        if (!m_parser.isSet(QString::fromLatin1(name)))
            return {};
        const QStringList parts = text(name).split(QLatin1Char(','));
        bool isB = false;
        bool isC = false;
        const FilterShape shape{parts.value(0).toFloat(&isB), parts.value(1).toFloat(&isC)};
        if (parts.size() != 2 || !isB || !isC || !std::isfinite(shape.b) || !std::isfinite(shape.c))
            refuse(name, QStringLiteral("two numbers as in 0.33,0.33"));
        return shape;
    }

    /// The place of the value among `words`.
    int word(const char* name, const QStringList& words)
    {
        const qsizetype at = words.indexOf(text(name));
        if (at < 0)
            refuse(name, QStringLiteral("one of ") + words.join(QStringLiteral(", ")));
        return int(at);
    }

private:
    QString text(const char* name) const { return m_parser.value(QString::fromLatin1(name)); }

    void refuse(const char* name, const QString& wanted)
    {
        if (m_error.isEmpty())
            m_error = QStringLiteral("--%1 takes %2, not \"%3\"")
                          .arg(QString::fromLatin1(name), wanted, text(name));
    }

    const QCommandLineParser& m_parser;
    QString& m_error;
};

} // namespace

CommandLine readCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    CommandLine line;
    if (!parser.parse(arguments))
        line.error = parser.errorText();
    if (const QString argument = misspelt(arguments); !argument.isEmpty()) {
        line.error = QStringLiteral("\"%1\" needs two dashes").arg(argument);
        return line; // whatever else was read from it, --help for example, is not meant
    }
    const auto isSet = [&parser](const char* name) {
        return parser.isSet(QString::fromLatin1(name));
    };
    line.wantsHelp = isSet("help") || isSet("help-all");
    line.wantsVersion = isSet("version");
    line.wantsMachine = isSet("machine");

    Reader reader(parser, line.error);
    Options& options = line.options;
    options.paths = parser.positionalArguments();
    options.outputFolder = parser.value(outputOption());
    options.format = parser.value(QStringLiteral("format"));
    options.scale = reader.number("scale", 0.0);
    options.rotate = reader.number("rotate", -std::numeric_limits<double>::infinity());
    options.maxWidth = reader.integer("max-width", 0, INT_MAX);
    options.maxHeight = reader.integer("max-height", 0, INT_MAX);
    options.filter = reader.filter("filter");
    options.quality = reader.integer("quality", 1, 100);
    options.page = reader.integer("page", 1, INT_MAX);
    constexpr int orientations[] = {1, 6, 3, 8, 2, 4};
    options.turn = orientations[std::max(
        0, reader.word("turn", {QStringLiteral("0"), QStringLiteral("90"), QStringLiteral("180"),
                                QStringLiteral("270"), QStringLiteral("horizontal"),
                                QStringLiteral("vertical")}))];
    options.profile = parser.value(QStringLiteral("profile"));
    options.intent =
        Intent(reader.word("intent", {QStringLiteral("perceptual"), QStringLiteral("relative")}));
    options.metadata = MetadataChoice(reader.word(
        "metadata", {QStringLiteral("all"), QStringLiteral("no-gps"), QStringLiteral("none")}));
    options.maxPixels = qint64(reader.integer("max-megapixels", 1, 1'000'000)) * 1'000'000;
    options.jobs = reader.integer("jobs", 0, 1024);
    options.maxMemory = qint64(reader.integer("max-memory", 0, INT_MAX)) * 1024 * 1024;
    options.bitmap = isSet("bitmap");
    options.json = isSet("json");
    options.headless = isSet("headless") || options.json;
    options.verbose = isSet("verbose");
    if (line.error.isEmpty())
        line.error = contradiction(options);
    return line;
}

QString helpText()
{
    QCommandLineParser parser;
    describe(parser);
    return parser.helpText();
}

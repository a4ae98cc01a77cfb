// SPDX-License-Identifier: Apache-2.0
#include "optiontable.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <climits>
#include <cmath>
#include <iterator>
#include <limits>

namespace {

constexpr double anyNumber = -std::numeric_limits<double>::infinity();

QString readNumber(const QString& text, double above, double& value)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number) || !(number > above))
        return above == anyNumber ? QStringLiteral("a number")
                                  : QStringLiteral("a number above %1").arg(above);
    value = number;
    return {};
}

QString readInteger(const QString& text, int lowest, int highest, int& value)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < lowest || number > highest)
        return QStringLiteral("a whole number from %1 to %2").arg(lowest).arg(highest);
    value = number;
    return {};
}

/// Reads the number of units of which each is `unit`.
QString readAmount(const QString& text, int lowest, int highest, qint64 unit, qint64& value)
{
    int number = 0;
    const QString wanted = readInteger(text, lowest, highest, number);
    if (wanted.isEmpty())
        value = number * unit;
    return wanted;
}

QString readFilter(const QString& text, std::optional<FilterShape>& value)
{
    const QStringList parts = text.split(QLatin1Char(','));
    bool isB = false;
    bool isC = false;
    const FilterShape shape{parts.value(0).toFloat(&isB), parts.value(1).toFloat(&isC)};
    if (parts.size() != 2 || !isB || !isC || !std::isfinite(shape.b) || !std::isfinite(shape.c))
        return QStringLiteral("two numbers as in 0.33,0.33");
    value = shape;
    return {};
}

/// The amount and, behind a comma, the radius.
QString readSharpening(const QString& text, std::optional<Sharpening>& value)
{
    constexpr double mostAmount = 10.0;
    constexpr double mostRadius = 20.0;
    const QStringList parts = text.split(QLatin1Char(','));
    Sharpening sharpening{0.0, 0.7};
    if (parts.size() > 2 || !readNumber(parts[0], 0.0, sharpening.amount).isEmpty() ||
        (parts.size() == 2 && !readNumber(parts[1], 0.0, sharpening.radius).isEmpty()) ||
        sharpening.amount > mostAmount || sharpening.radius > mostRadius)
        return QStringLiteral("an amount up to %1, or with a radius up to %2 as in 0.8,0.7")
            .arg(mostAmount)
            .arg(mostRadius);
    value = sharpening;
    return {};
}

QString readBox(const QString& text, SizeChoice choice, ExportSettings& settings)
{
    const QStringList sides = text.split(QLatin1Char('x'));
    int width = 0;
    int height = 0;
    if (sides.size() != 2 || !readInteger(sides[0], 1, INT_MAX, width).isEmpty() ||
        !readInteger(sides[1], 1, INT_MAX, height).isEmpty())
        return QStringLiteral("a width and a height as in 800x600");
    settings.sizeChoice = choice;
    settings.box = {width, height};
    return {};
}

/// A width, a height, and the place of the upper left corner.
QString readCrop(const QString& text, QRect& value)
{
    static const QRegularExpression pattern(
        QStringLiteral("^([0-9]{1,9})x([0-9]{1,9})\\+([0-9]{1,9})\\+([0-9]{1,9})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    if (!match.hasMatch() || number(1) < 2 || number(2) < 2)
        return QStringLiteral("a width, a height and a place as in 800x600+20+10");
    value = {number(3), number(4), number(1), number(2)};
    return {};
}

/// The place of `text` among `words`, which are separated by spaces.
template<typename T>
QString readWord(const QString& text, const char* words, T& value)
{
    const QStringList all = QString::fromLatin1(words).split(QLatin1Char(' '));
    const qsizetype at = all.indexOf(text);
    if (at < 0)
        return QStringLiteral("one of ") + all.join(QStringLiteral(", "));
    value = T(at);
    return {};
}

/// One of `words`, which are separated by spaces.
QString readText(const QString& text, const char* words, QString& value)
{
    int at = 0;
    const QString wanted = readWord(text, words, at);
    if (wanted.isEmpty())
        value = text;
    return wanted;
}

QString readSuffix(const QString& text, QString& nameTemplate)
{
    if (text.contains(QLatin1Char('{')) || text.contains(QLatin1Char('}')))
        return QStringLiteral("what stands behind the name, without braces");
    nameTemplate = QLatin1String("{name}") + text;
    return {};
}

constexpr const char* turns = "0 90 180 270 horizontal vertical";
constexpr const char* intents = "perceptual relative";
constexpr const char* metadataChoices = "all no-gps none";
constexpr const char* depths = "8 16 32";
constexpr const char* subsamplings = "4:4:4 4:2:2 4:2:0";
constexpr const char* compressions = "none lzw zip packbits rle zips piz";
constexpr const char* shells = "bash zsh fish";

using Text = const QString&;
using Line = CommandLine&;

const OptionRow table[] = {
    {"Size", "scale", "", "S", "", "Resample by the factor S, above 0 (default: 1).",
     [](Text t, Line l) { return readNumber(t, 0.0, l.options.settings.scale); }},
    {"Size", "percent", "", "P", "", "Resample to P percent, as --scale P/100.",
     [](Text t, Line l) {
         const QString wanted = readNumber(t, 0.0, l.options.settings.scale);
         l.options.settings.scale /= 100.0;
         return wanted;
     }},
    {"Size", "long-edge", "", "N", "", "Give the longer side N pixels.",
     [](Text t, Line l) {
         l.options.settings.sizeChoice = SizeChoice::LongEdge;
         return readInteger(t, 1, INT_MAX, l.options.settings.longEdge);
     }},
    {"Size", "fit", "", "WxH", "", "Make the whole picture as large as it fits into W x H pixels.",
     [](Text t, Line l) { return readBox(t, SizeChoice::Fit, l.options.settings); }},
    {"Size", "fill", "", "WxH", "",
     "Give the picture exactly W x H pixels: it covers them, and what sticks out is cropped evenly "
     "at both ends.",
     [](Text t, Line l) { return readBox(t, SizeChoice::Fill, l.options.settings); }},
    {"Size", "max-width", "", "N", "",
     "Make the picture fit into N columns, whole and undistorted. Never enlarges.",
     [](Text t, Line l) { return readInteger(t, 0, INT_MAX, l.options.settings.maxWidth); }},
    {"Size", "max-height", "", "N", "",
     "Make the picture fit into N rows, whole and undistorted. Never enlarges.",
     [](Text t, Line l) { return readInteger(t, 0, INT_MAX, l.options.settings.maxHeight); }},
    {"Size", "no-enlarge", "", "", "",
     "Let pictures that are smaller than wanted keep their size; with --fill they are cropped to "
     "the shape of W x H.",
     [](Text, Line l) {
         l.options.settings.mayEnlarge = false;
         return QString();
     }},
    {"Size", "filter", "", "B,C", "",
     "Shape of the cubic filter for a factor of 1 or less (default: 0,0 at exactly 1, which leaves "
     "every pixel as it is, otherwise 1/3,1/3). Enlarging always uses 1/3,1/3.",
     [](Text t, Line l) { return readFilter(t, l.options.settings.filter); }},

    {"Picture", "turn", "", "TURN", turns,
     "Turn clockwise by 90, 180 or 270 degrees, or mirror: \"horizontal\" exchanges left and "
     "right, \"vertical\" top and bottom. Every pixel stays as it is.",
     [](Text t, Line l) {
         constexpr int orientations[] = {1, 6, 3, 8, 2, 4};
         int at = 0;
         const QString wanted = readWord(t, turns, at);
         l.options.settings.turn = orientations[at];
         return wanted;
     }},
    {"Picture", "rotate", "", "DEGREES", "",
     "Turn clockwise by DEGREES and crop to the largest picture of the same shape without empty "
     "corners (default: 0).",
     [](Text t, Line l) { return readNumber(t, anyNumber, l.options.settings.rotate); }},
    {"Picture", "crop", "", "WxH+X+Y", "",
     "Keep the W x H pixels that begin at the column X and the row Y of the picture after --turn. "
     "With --rotate the picture is turned about the middle of this rectangle, which must leave no "
     "empty corners.",
     [](Text t, Line l) { return readCrop(t, l.options.settings.crop); }},
    {"Picture", "sharpen", "", "A[,R]", "",
     "Sharpen the luminance of the resampled picture with an unsharp mask of the amount A and the "
     "radius R, in pixels (default radius: 0.7).",
     [](Text t, Line l) { return readSharpening(t, l.options.settings.sharpening); }},
    {"Picture", "page", "", "N", "", "Of a file of several pictures, take the Nth (default: 1).",
     [](Text t, Line l) { return readInteger(t, 1, INT_MAX, l.options.settings.page); }},
    {"Picture", "profile", "", "P", "keep srgb FILE",
     "Colours of the output: \"keep\" (default) those of the source where the format can name "
     "them, \"srgb\", or those of the ICC profile in the file P. Formats without profiles get "
     "sRGB, OpenEXR and HDR linear light.",
     [](Text t, Line l) {
         l.options.settings.profile = t;
         return QString();
     }},
    {"Picture", "intent", "", "I", intents,
     "Rendering intent of conversions: perceptual (default) or relative.",
     [](Text t, Line l) { return readWord(t, intents, l.options.settings.intent); }},
    {"Picture", "metadata", "", "M", metadataChoices,
     "Copy Exif, XMP and IPTC: all (default), no-gps or none.",
     [](Text t, Line l) { return readWord(t, metadataChoices, l.options.settings.metadata); }},

    {"Format", "format", "", "EXT", "FORMAT",
     "Export as the format with the extension EXT, or \"preserve\" for the source's own (default: "
     "tiff). Raw photographs are developed, so for them \"preserve\" and \"dng\" mean tiff.",
     [](Text t, Line l) {
         l.options.settings.format = t;
         return QString();
     }},
    {"Format", "quality", "", "Q", "",
     "Quality of formats that lose some, 1 to 100 (default: 95). Others have no use for it.",
     [](Text t, Line l) { return readInteger(t, 1, 100, l.options.settings.quality); }},
    {"Format", "bit-depth", "", "N", depths,
     "Bits per sample: 8, 16 or 32, of which 32, and in OpenEXR 16, are floats (default: as the "
     "source has them, where the format can).",
     [](Text t, Line l) {
         constexpr int bits[] = {8, 16, 32};
         int at = 0;
         const QString wanted = readWord(t, depths, at);
         l.options.settings.bitDepth = bits[at];
         return wanted;
     }},
    {"Format", "progressive", "", "", "",
     "Write JPEG in several scans, of which each makes the picture clearer.",
     [](Text, Line l) {
         l.options.settings.isProgressive = true;
         return QString();
     }},
    {"Format", "subsampling", "", "S", subsamplings,
     "Resolution of the colours of a JPEG file: 4:4:4 (default) the whole one, 4:2:2 half of it "
     "across, 4:2:0 half of it in both directions.",
     [](Text t, Line l) { return readText(t, subsamplings, l.options.settings.subsampling); }},
    {"Format", "lossless", "", "", "", "Write WebP without any loss.",
     [](Text, Line l) {
         l.options.settings.isLossless = true;
         return QString();
     }},
    {"Format", "compression", "", "C", compressions,
     "Compression of TIFF: none, lzw, zip (default) or packbits; of OpenEXR: none, rle, zips, zip "
     "(default) or piz.",
     [](Text t, Line l) { return readText(t, compressions, l.options.settings.compression); }},
    {"Format", "bitmap", "", "", "", "Also write a Windows bitmap of every picture.",
     [](Text, Line l) {
         l.options.settings.bitmap = true;
         return QString();
     }},

    {"Files", "output", "o", "DIR", "FOLDER",
     "Write into the folder DIR, which is made when it is missing (default: ./workbench-output).",
     [](Text t, Line l) {
         l.options.settings.outputFolder = t;
         return QString();
     }},
    {"Files", "suffix", "", "TEXT", "",
     "Name the outputs as the photographs with TEXT behind, as --name {name}TEXT.",
     [](Text t, Line l) { return readSuffix(t, l.options.settings.nameTemplate); }},
    {"Files", "name", "", "TEMPLATE", "",
     "Name the outputs as TEMPLATE says (default: {name}). {name} is the photograph's name without "
     "its extension, {folder} the name of its folder, {date} the day when it was taken, as in "
     "2024-05-06, or of the file's last change where Exif does not say it, {number} its place in "
     "the run, with four digits. The extension follows.",
     [](Text t, Line l) {
         l.options.settings.nameTemplate = t;
         return QString();
     }},
    {"Files", "overwrite", "", "", "",
     "Replace files that have the name of an output, except the photographs of this run. Without "
     "it no file is replaced: a number is added to the name.",
     [](Text, Line l) {
         l.options.settings.mayOverwrite = true;
         return QString();
     }},
    {"Files", "recursive", "r", "", "",
     "Take the photographs of folders inside of folders as well. The outputs lie in the same "
     "folders below the folder of the outputs.",
     [](Text, Line l) {
         l.options.isRecursive = true;
         return QString();
     }},
    {"Files", "null", "", "", "",
     "The names on the standard input (-) end with a NUL each instead of a line feed.",
     [](Text, Line l) {
         l.options.isNullSeparated = true;
         return QString();
     }},
    {"Files", "max-megapixels", "", "N", "",
     "Refuse files whose header claims more than N megapixels (default: 250). A photograph takes "
     "1 to 40 bytes of memory per pixel, by its format and by what is done.",
     [](Text t, Line l) {
         return readAmount(t, 1, 1'000'000, 1'000'000, l.options.settings.maxPixels);
     }},

    {"Running", "jobs", "", "N", "",
     "Without a window, work on up to N photographs at once (default: as many as there are "
     "processors).",
     [](Text t, Line l) { return readInteger(t, 0, 1024, l.options.jobs); }},
    {"Running", "max-memory", "", "N", "",
     "Let the pixels of these photographs take N MiB together (default: half of the memory that is "
     "available). One that may need more is taken alone, and fails when it does need more than N.",
     [](Text t, Line l) { return readAmount(t, 0, INT_MAX, 1024 * 1024, l.options.maxMemory); }},
    {"Running", "dry-run", "n", "", "",
     "Read the headers alone, say what would be written, and write nothing. Shows no window.",
     [](Text, Line l) {
         l.options.isDryRun = true;
         return QString();
     }},
    {"Running", "headless", "", "", "", "Show no window, even with a display.",
     [](Text, Line l) {
         l.options.headless = true;
         return QString();
     }},
    {"Running", "json", "", "", "",
     "Print one line of JSON per photograph instead of a table. Shows no window.",
     [](Text, Line l) {
         l.options.json = true;
         return QString();
     }},
    {"Running", "quiet", "q", "", "", "Print nothing but warnings and failures. Shows no window.",
     [](Text, Line l) {
         l.options.quiet = true;
         return QString();
     }},
    {"Running", "verbose", "", "", "",
     "Show everything that is known of each photograph, and the library's information lines.",
     [](Text, Line l) {
         l.options.verbose = true;
         return QString();
     }},
    {"Running", "machine", "", "", "",
     "Print the facts of this machine, with --json as one line of JSON, and take no photographs.",
     [](Text, Line l) {
         l.wantsMachine = true;
         return QString();
     }},
    {"Running", "completion", "", "SHELL", shells,
     "Print the completion of these options for bash, zsh or fish.",
     [](Text t, Line l) { return readText(t, shells, l.page); }},
    {"Running", "man", "", "", "", "Print the manual page, in roff.",
     [](Text, Line l) {
         l.page = QStringLiteral("man");
         return QString();
     }},
    {"Running", "version", "v", "", "", "Print the version.",
     [](Text, Line l) {
         l.page = QStringLiteral("version");
         return QString();
     }},
    {"Running", "help", "h", "", "", "Print these options.",
     [](Text, Line l) {
         l.page = QStringLiteral("help");
         return QString();
     }},
};

} // namespace

std::span<const OptionRow> optionTable() { return table; }

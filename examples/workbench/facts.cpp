// SPDX-License-Identifier: Apache-2.0
#include "facts.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <array>
#include <cmath>
#include <utility>

namespace {

using Fact = std::pair<QString, QString>;

/// Gives tr() to functions that belong to no QObject.
class Words
{
    Q_DECLARE_TR_FUNCTIONS(Facts)
};

QString number(double value, int digits)
{
    QString result = QLocale().toString(value, 'f', digits);
    const QString point = QLocale().decimalPoint();
    while (result.contains(point) && (result.endsWith(QLatin1Char('0')) || result.endsWith(point)))
        result.chop(1);
    return result;
}

QString pixelsText(QSize size)
{
    if (!size.isValid())
        return {};
    const double megapixels = double(size.width()) * size.height() / 1e6;
    return Words::tr("%1 × %2 pixels (%3 megapixels)")
        .arg(size.width())
        .arg(size.height())
        .arg(number(megapixels, megapixels < 1 ? 2 : 1));
}

/// Makers often begin the model with their own name.
QString cameraText(const QJsonObject& tags)
{
    const QString make = tags[QLatin1String("Make")].toString().simplified();
    const QString model = tags[QLatin1String("Model")].toString().simplified();
    return model.startsWith(make, Qt::CaseInsensitive) ? model : (make + ' ' + model).simplified();
}

/// "1/250 s, f/8, ISO 100, 35 mm"
QString exposureText(const QJsonObject& tags)
{
    QStringList parts;
    const double seconds = tags[QLatin1String("ExposureTime")].toDouble();
    if (seconds > 0 && seconds < 0.3)
        parts.append(Words::tr("1/%1 s").arg(std::lround(1 / seconds)));
    else if (seconds > 0)
        parts.append(Words::tr("%1 s").arg(number(seconds, 1)));
    if (const double aperture = tags[QLatin1String("FNumber")].toDouble(); aperture > 0)
        parts.append(Words::tr("f/%1").arg(number(aperture, 1)));
    if (const double iso = tags[QLatin1String("ISO")].toDouble(); iso > 0)
        parts.append(Words::tr("ISO %1").arg(int(iso)));
    if (const double length = tags[QLatin1String("FocalLength")].toDouble(); length > 0)
        parts.append(Words::tr("%1 mm").arg(number(length, 1)));
    return parts.join(QLatin1String(", "));
}

QString dateText(const QJsonObject& tags)
{
    const QString stored = tags[QLatin1String("DateTimeOriginal")].toString();
    const QDateTime date = QDateTime::fromString(stored, QStringLiteral("yyyy:MM:dd hh:mm:ss"));
    return date.isValid() ? QLocale().toString(date, QLocale::ShortFormat) : stored;
}

QString placeText(const QJsonObject& tags)
{
    const QJsonValue latitude = tags[QLatin1String("GPSLatitude")];
    const QJsonValue longitude = tags[QLatin1String("GPSLongitude")];
    if (!latitude.isDouble() || !longitude.isDouble())
        return {};
    const double north = latitude.toDouble();
    const double east = longitude.toDouble();
    return Words::tr("%1° %2, %3° %4")
        .arg(number(std::abs(north), 4), north < 0 ? Words::tr("S") : Words::tr("N"),
             number(std::abs(east), 4), east < 0 ? Words::tr("W") : Words::tr("E"));
}

QString coloursText(const JobResult& facts)
{
    return facts.isGrey.value_or(false) ? Words::tr("black and white") : QString();
}

QList<Fact> known(const JobResult& facts)
{
    const QJsonObject& tags = facts.metadata;
    QList<Fact> all{{Words::tr("Size"), pixelsText(facts.size)},
                    {Words::tr("Camera"), cameraText(tags)},
                    {Words::tr("Lens"), tags[QLatin1String("LensModel")].toString().simplified()},
                    {Words::tr("Exposure"), exposureText(tags)},
                    {Words::tr("Taken"), dateText(tags)},
                    {Words::tr("Place"), placeText(tags)},
                    {Words::tr("Colours"), coloursText(facts)},
                    {Words::tr("Exported"), pixelsText(facts.outputSize)},
                    {Words::tr("Note"), facts.warnings.join(QLatin1String("; "))}};
    all.removeIf([](const Fact& fact) { return fact.second.isEmpty(); });
    return all;
}

QString bytesText(qint64 bytes)
{
    const double megabytes = double(bytes) / 1e6;
    if (megabytes < 0.1)
        return Words::tr("%1 kB").arg(number(double(bytes) / 1e3, 1));
    return Words::tr("%1 MB").arg(number(megabytes, megabytes < 1 ? 2 : 1));
}

/// A part of a reason, and what can be done about it.
struct Advice
{
    const char* part;
    const char* text;
};

// clang-format off
constexpr std::array advices{
    Advice{"removed during the export", QT_TRANSLATE_NOOP("Facts", "The folder for exported photographs is gone. Export again to make it anew, or choose another folder.")},
    Advice{"no such file", QT_TRANSLATE_NOOP("Facts", "The file is gone. Bring it back and try again, or remove it from the list.")},
    Advice{"is a folder", QT_TRANSLATE_NOOP("Facts", "This is a folder. Open it to list the photographs in it.")},
    Advice{"not a regular file", QT_TRANSLATE_NOOP("Facts", "This is no ordinary file, so it is not opened.")},
    Advice{"is empty", QT_TRANSLATE_NOOP("Facts", "The file is empty. Copy it from the camera or card again.")},
    Advice{"no photographs", QT_TRANSLATE_NOOP("Facts", "The folder holds no photographs. Choose another one.")},
    Advice{"not named as a photograph", QT_TRANSLATE_NOOP("Facts", "The name does not end as that of a photograph. Rename the file if it is one.")},
    Advice{"memory", QT_TRANSLATE_NOOP("Facts", "There is not enough memory for it. Close other programs, or export it alone.")},
    Advice{"megapixels", QT_TRANSLATE_NOOP("Facts", "The picture is too large. Choose a smaller size, or start the program with --max-megapixels.")},
    Advice{"cannot be written", QT_TRANSLATE_NOOP("Facts", "Choose another format.")},
    Advice{"No space left", QT_TRANSLATE_NOOP("Facts", "The disk is full. Make room, or choose another folder.")},
    Advice{"Permission denied", QT_TRANSLATE_NOOP("Facts", "You may not read the file or write into the folder. Choose another folder.")},
    Advice{"make the folder", QT_TRANSLATE_NOOP("Facts", "The folder cannot be made. Choose another folder.")},
    Advice{"hold the crop", QT_TRANSLATE_NOOP("Facts", "The crop reaches beyond the picture. Crop it anew.")},
    Advice{"turned by", QT_TRANSLATE_NOOP("Facts", "The picture is too small to be turned by that much.")},
    Advice{"", QT_TRANSLATE_NOOP("Facts", "The file seems to be damaged. Open it in the program that wrote it, or copy it again.")},
};
// clang-format on

} // namespace

QStringList Facts::names(const JobResult& facts)
{
    QStringList names;
    for (const Fact& fact : known(facts))
        names.append(fact.first);
    return names;
}

QStringList Facts::values(const JobResult& facts)
{
    QStringList values;
    for (const Fact& fact : known(facts))
        values.append(fact.second);
    return values;
}

QString Facts::sizesText(qint64 bytes, qint64 outputBytes)
{
    if (bytes < 0)
        return {};
    if (outputBytes < 0)
        return bytesText(bytes);
    return bytesText(bytes) + QStringLiteral(" → ") + bytesText(outputBytes);
}

QString Facts::failureText(const QString& reason)
{
    for (const Advice& advice : advices)
        if (reason.contains(QLatin1String(advice.part), Qt::CaseInsensitive))
            return Words::tr(advice.text) + QStringLiteral(" (%1)").arg(reason);
    return reason;
}

// SPDX-License-Identifier: Apache-2.0
#include "exportsettings.h"

#include "formats.h"
#include "naming.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

namespace {

QJsonValue jsonOf(QSize size) { return QJsonArray{size.width(), size.height()}; }

/// What a picture's size and pixels follow from.
QJsonObject pixelsOf(const ExportSettings& settings)
{
    QJsonObject object{{"sizeChoice", int(settings.sizeChoice)},
                       {"scale", settings.scale},
                       {"longEdge", settings.longEdge},
                       {"box", jsonOf(settings.box)},
                       {"maxWidth", settings.maxWidth},
                       {"maxHeight", settings.maxHeight},
                       {"mayEnlarge", settings.mayEnlarge},
                       {"rotate", settings.rotate},
                       {"page", settings.page},
                       {"turn", settings.turn},
                       {"profile", settings.profile},
                       {"intent", int(settings.intent)},
                       {"metadata", int(settings.metadata)},
                       {"bitDepth", settings.bitDepth}};
    if (settings.filter)
        object.insert("filter", QJsonArray{double(settings.filter->b), double(settings.filter->c)});
    if (!settings.crop.isNull())
        object.insert("crop", QJsonArray{settings.crop.x(), settings.crop.y(),
                                         settings.crop.width(), settings.crop.height()});
    if (settings.sharpening)
        object.insert("sharpening",
                      QJsonArray{settings.sharpening->amount, settings.sharpening->radius});
    return object;
}

void readSize(const QJsonObject& json, ExportSettings& settings)
{
    settings.sizeChoice = SizeChoice(json["sizeChoice"].toInt());
    settings.scale = json["scale"].toDouble(settings.scale);
    settings.longEdge = json["longEdge"].toInt();
    settings.box = QSize(json["box"][0].toInt(-1), json["box"][1].toInt(-1));
    settings.maxWidth = json["maxWidth"].toInt();
    settings.maxHeight = json["maxHeight"].toInt();
    settings.mayEnlarge = json["mayEnlarge"].toBool(settings.mayEnlarge);
}

void readPixels(const QJsonObject& json, ExportSettings& settings)
{
    settings.rotate = json["rotate"].toDouble();
    settings.page = json["page"].toInt(settings.page);
    settings.turn = json["turn"].toInt(settings.turn);
    settings.profile = json["profile"].toString(settings.profile);
    settings.intent = Intent(json["intent"].toInt());
    settings.metadata = MetadataChoice(json["metadata"].toInt());
    settings.bitDepth = json["bitDepth"].toInt();
    const QJsonValue filter = json["filter"];
    if (filter.isArray())
        settings.filter = FilterShape{float(filter[0].toDouble()), float(filter[1].toDouble())};
    const QJsonValue crop = json["crop"];
    if (crop.isArray())
        settings.crop = {crop[0].toInt(), crop[1].toInt(), crop[2].toInt(), crop[3].toInt()};
    const QJsonValue sharpening = json["sharpening"];
    if (sharpening.isArray())
        settings.sharpening = Sharpening{sharpening[0].toDouble(), sharpening[1].toDouble()};
}

/// The extension that is known before any photograph is; empty for "preserve".
QString knownExtension(const ExportSettings& settings)
{
    const QString format = settings.format.toLower();
    if (format == QLatin1String("dng"))
        return QStringLiteral("tiff");
    return format == QLatin1String("preserve") ? QString() : format;
}

QString problemOfFormat(const ExportSettings& settings)
{
    const QString extension = knownExtension(settings);
    if (extension.isEmpty())
        return {};
    const QString refusal = Formats::refusalOfName(QLatin1Char('.') + extension);
    if (!refusal.isEmpty())
        return QStringLiteral("--format jxl ") + refusal;
    if (!Formats::isWritable(extension))
        return QStringLiteral("--format takes preserve or one of %1, not \"%2\"")
            .arg(Formats::writableText(), settings.format);
    if (settings.bitmap && settings.mayOverwrite && extension == QLatin1String("bmp"))
        return QStringLiteral("with --format bmp the output of --bitmap would replace the picture");
    return Formats::refusalOf(extension, settings);
}

/// A size that no picture can have.
QString problemOfSize(const ExportSettings& settings)
{
    const auto most = double(settings.maxPixels);
    if (settings.scale * settings.scale > most)
        return QStringLiteral("--scale %1 makes more of one pixel than --max-megapixels allows")
            .arg(settings.scale);
    if (settings.sizeChoice == SizeChoice::LongEdge && settings.mayEnlarge &&
        settings.longEdge > most)
        return QStringLiteral("--long-edge %1 is more than --max-megapixels allows")
            .arg(settings.longEdge);
    if (settings.sizeChoice != SizeChoice::Fill || !settings.mayEnlarge)
        return {};
    if (double(settings.box.width()) * settings.box.height() > most)
        return QStringLiteral("--fill %1x%2 is more than --max-megapixels allows")
            .arg(settings.box.width())
            .arg(settings.box.height());
    return Formats::refusalOf(knownExtension(settings), settings.box);
}

/// The file of a profile is read by the worker processes; a wrong name is noticed before.
QString problemOfProfile(const QString& profile)
{
    if (profile == QLatin1String("keep") || profile == QLatin1String("srgb"))
        return {};
    constexpr qint64 headerLength = 128;
    constexpr qsizetype signatureAt = 36;
    QFile file(profile);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return QStringLiteral("--profile takes keep, srgb or the file of a profile, and %1 cannot "
                              "be read")
            .arg(profile);
    return file.read(headerLength).mid(signatureAt, 4) == "acsp"
               ? QString()
               : QStringLiteral("--profile: %1 is no ICC profile").arg(profile);
}

} // namespace

QString problemOf(const ExportSettings& settings)
{
    for (const QString& problem :
         {problemOfFormat(settings), problemOfSize(settings), problemOfProfile(settings.profile)})
        if (!problem.isEmpty())
            return problem;
    return Naming::problemOf(settings);
}

QJsonObject recordedSettings(const ExportSettings& settings, const QString& extension)
{
    QJsonObject object = pixelsOf(settings);
    object.insert("encoding", Formats::encodingOf(settings, extension));
    object.insert("extension", extension);
    return object;
}

QJsonObject jsonOf(const ExportSettings& settings)
{
    QJsonObject object = pixelsOf(settings);
    object.insert("format", settings.format);
    object.insert("quality", settings.quality);
    object.insert("isProgressive", settings.isProgressive);
    object.insert("isLossless", settings.isLossless);
    object.insert("subsampling", settings.subsampling);
    object.insert("compression", settings.compression);
    object.insert("bitmap", settings.bitmap);
    object.insert("outputFolder", settings.outputFolder);
    object.insert("nameTemplate", settings.nameTemplate);
    object.insert("mayOverwrite", settings.mayOverwrite);
    object.insert("maxPixels", settings.maxPixels);
    return object;
}

ExportSettings settingsOf(const QJsonObject& json)
{
    ExportSettings settings;
    readSize(json, settings);
    readPixels(json, settings);
    settings.format = json["format"].toString(settings.format);
    settings.quality = json["quality"].toInt(settings.quality);
    settings.isProgressive = json["isProgressive"].toBool();
    settings.isLossless = json["isLossless"].toBool();
    settings.subsampling = json["subsampling"].toString();
    settings.compression = json["compression"].toString();
    settings.bitmap = json["bitmap"].toBool();
    settings.outputFolder = json["outputFolder"].toString(settings.outputFolder);
    settings.nameTemplate = json["nameTemplate"].toString(settings.nameTemplate);
    settings.mayOverwrite = json["mayOverwrite"].toBool();
    settings.maxPixels = json["maxPixels"].toInteger(settings.maxPixels);
    return settings;
}

// SPDX-License-Identifier: Apache-2.0
#include "settingsmodel.h"

#include "formats.h"
#include "naming.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>

#include <array>

namespace {

QString lastKey() { return QStringLiteral("export/last"); }
QString presetsKey() { return QStringLiteral("export/presets"); }

/// The settings that are kept, by the names of their properties. The folder is none of them: a
/// program that is started elsewhere would write where the user does not look.
constexpr std::array keptNames{"sizing",  "longEdge", "width",    "height",      "percent",
                               "filterB", "filterC",  "format",   "quality",     "bitDepth",
                               "intent",  "profile",  "metadata", "compression", "nameTemplate"};

/// Whether files of the format of `settings` can be written as these say. Of "preserve" nothing is
/// known before there is a photograph.
bool isTaken(const ExportSettings& settings)
{
    return settings.format != QLatin1String("preserve") &&
           Formats::refusalOf(settings.format, settings).isEmpty();
}

/// Whether the command line says nothing about what is kept.
bool isUntouched(const ExportSettings& settings)
{
    ExportSettings usual;
    usual.outputFolder = settings.outputFolder;
    usual.maxPixels = settings.maxPixels;
    return jsonOf(settings) == jsonOf(usual);
}

/// A user without a home has no settings; Qt would write into the root folder.
bool hasHome() { return !QDir::home().isRoot(); }

QVariantMap keptPresets() { return QSettings().value(presetsKey()).toMap(); }

} // namespace

SettingsModel::SettingsModel(const Options& options) : m_base(options)
{
    if (isUntouched(options.settings))
        setValues(QSettings().value(lastKey()).toMap());
    else
        takeSize();
}

/// The sizes of the command line as the window shows them.
void SettingsModel::takeSize()
{
    const ExportSettings& settings = m_base.settings;
    constexpr int unlimited = 100'000;
    if (settings.sizeChoice == SizeChoice::LongEdge) {
        m_sizing = LongEdge;
        m_longEdge = settings.longEdge;
    } else if (settings.sizeChoice != SizeChoice::Scale) {
        m_sizing = Box;
        m_width = settings.box.width();
        m_height = settings.box.height();
    } else if (settings.maxWidth > 0 || settings.maxHeight > 0) {
        m_sizing = Box;
        m_width = settings.maxWidth > 0 ? settings.maxWidth : unlimited;
        m_height = settings.maxHeight > 0 ? settings.maxHeight : unlimited;
    } else if (settings.scale != 1.0) {
        m_sizing = Scale;
        m_percent = settings.scale * 100;
    }
    if (settings.filter) {
        m_filterB = double(settings.filter->b);
        m_filterC = double(settings.filter->c);
    }
}

Options SettingsModel::options() const
{
    Options options = m_base;
    ExportSettings& settings = options.settings;
    settings.outputFolder = folder();
    settings.sizeChoice = SizeChoice::Scale;
    settings.scale = m_sizing == Scale ? m_percent / 100 : 1.0;
    settings.maxWidth = m_sizing == Box ? m_width : m_sizing == LongEdge ? m_longEdge : 0;
    settings.maxHeight = m_sizing == Box ? m_height : m_sizing == LongEdge ? m_longEdge : 0;
    const SettingsModel usual;
    const bool isUsual = m_filterB == usual.m_filterB && m_filterC == usual.m_filterC;
    settings.filter.reset(); // the usual one leaves every pixel as it is at a scale of 1
    if (!isUsual)
        settings.filter = FilterShape{float(m_filterB), float(m_filterC)};
    return options;
}

QString SettingsModel::nameProblem() const { return Naming::problemOf(m_base.settings); }

bool SettingsModel::hasQuality() const
{
    return m_base.settings.format == QLatin1String("preserve") ||
           Formats::encodingOf(m_base.settings, m_base.settings.format)
               .contains(QLatin1String("quality"));
}

void SettingsModel::setFormat(const QString& format)
{
    if (m_base.settings.format == format)
        return;
    m_base.settings.format = format;
    if (!bitDepths().contains(bitDepth()))
        m_base.settings.bitDepth = 0;
    if (!compressions().contains(compression()))
        m_base.settings.compression.clear();
    Q_EMIT changed();
}

QList<int> SettingsModel::bitDepths() const
{
    QList<int> depths{0};
    ExportSettings settings = m_base.settings;
    for (const int bits : {8, 16, 32}) {
        settings.bitDepth = bits;
        if (isTaken(settings))
            depths.append(bits);
    }
    return depths;
}

QStringList SettingsModel::compressions() const
{
    QStringList names{QString()};
    ExportSettings settings = m_base.settings;
    for (const char* const name : {"zip", "zips", "piz", "lzw", "rle", "packbits", "none"}) {
        settings.compression = QLatin1String(name);
        if (isTaken(settings))
            names.append(settings.compression);
    }
    return names;
}

QString SettingsModel::folder() const
{
    return QFileInfo(m_base.settings.outputFolder).absoluteFilePath();
}

QVariantMap SettingsModel::values() const
{
    QVariantMap values;
    for (const char* const name : keptNames)
        values.insert(QLatin1String(name), property(name));
    return values;
}

/// Unknown names and values of other types, which other versions may have written, are left out.
void SettingsModel::setValues(const QVariantMap& values)
{
    for (const char* const name : keptNames)
        if (const QVariant value = values.value(QLatin1String(name)); value.isValid())
            setProperty(name, value);
}

void SettingsModel::keep() const
{
    if (hasHome())
        QSettings().setValue(lastKey(), values());
}

void SettingsModel::reset(const QString& setting)
{
    const QByteArray name = setting.toLatin1();
    const SettingsModel usual;
    setProperty(name.constData(), usual.property(name.constData()));
}

QStringList SettingsModel::presets() const { return keptPresets().keys(); }

void SettingsModel::savePreset(const QString& name)
{
    if (name.trimmed().isEmpty() || !hasHome())
        return;
    QVariantMap presets = keptPresets();
    presets.insert(name.trimmed(), values());
    QSettings().setValue(presetsKey(), presets);
    Q_EMIT presetsChanged();
}

void SettingsModel::usePreset(const QString& name) { setValues(keptPresets().value(name).toMap()); }

void SettingsModel::removePreset(const QString& name)
{
    QVariantMap presets = keptPresets();
    presets.remove(name);
    QSettings().setValue(presetsKey(), presets);
    Q_EMIT presetsChanged();
}

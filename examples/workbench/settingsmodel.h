// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

/// The settings of exports, as the window shows them beside the picture. They begin as the command
/// line gave them or, where it said nothing, as they were at the end of the run before.
class SettingsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int sizing READ sizing WRITE setSizing NOTIFY changed)
    Q_PROPERTY(int longEdge READ longEdge WRITE setLongEdge NOTIFY changed)
    Q_PROPERTY(int width READ width WRITE setWidth NOTIFY changed)
    Q_PROPERTY(int height READ height WRITE setHeight NOTIFY changed)
    Q_PROPERTY(double percent READ percent WRITE setPercent NOTIFY changed)
    Q_PROPERTY(double filterB READ filterB WRITE setFilterB NOTIFY changed)
    Q_PROPERTY(double filterC READ filterC WRITE setFilterC NOTIFY changed)
    Q_PROPERTY(QString format READ format WRITE setFormat NOTIFY changed)
    Q_PROPERTY(bool hasQuality READ hasQuality NOTIFY changed)
    Q_PROPERTY(int quality READ quality WRITE setQuality NOTIFY changed)
    Q_PROPERTY(QString profile READ profile WRITE setProfile NOTIFY changed)
    Q_PROPERTY(int intent READ intent WRITE setIntent NOTIFY changed)
    Q_PROPERTY(int bitDepth READ bitDepth WRITE setBitDepth NOTIFY changed)
    Q_PROPERTY(QList<int> bitDepths READ bitDepths NOTIFY changed)
    Q_PROPERTY(QString compression READ compression WRITE setCompression NOTIFY changed)
    Q_PROPERTY(QStringList compressions READ compressions NOTIFY changed)
    Q_PROPERTY(int metadata READ metadata WRITE setMetadata NOTIFY changed)
    Q_PROPERTY(QString nameTemplate READ nameTemplate WRITE setNameTemplate NOTIFY changed)
    Q_PROPERTY(QString nameProblem READ nameProblem NOTIFY changed)
    Q_PROPERTY(QString folder READ folder WRITE setFolder NOTIFY changed)
    Q_PROPERTY(QStringList presets READ presets NOTIFY presetsChanged)

public:
    /// What says how large the exported picture becomes.
    enum Sizing { Original, LongEdge, Box, Scale };
    Q_ENUM(Sizing)

    explicit SettingsModel(const Options& options);

    /// The options of an export with these settings.
    Options options() const;

    /// Writes the settings for the next run.
    void keep() const;

    int sizing() const { return m_sizing; }
    void setSizing(int sizing) { set(m_sizing, sizing); }
    int longEdge() const { return m_longEdge; }
    void setLongEdge(int pixels) { set(m_longEdge, pixels); }
    int width() const { return m_width; }
    void setWidth(int pixels) { set(m_width, pixels); }
    int height() const { return m_height; }
    void setHeight(int pixels) { set(m_height, pixels); }
    double percent() const { return m_percent; }
    void setPercent(double percent) { set(m_percent, percent); }
    double filterB() const { return m_filterB; }
    void setFilterB(double b) { set(m_filterB, b); }
    double filterC() const { return m_filterC; }
    void setFilterC(double c) { set(m_filterC, c); }
    QString format() const { return m_base.settings.format; }
    void setFormat(const QString& format); ///< settings that it does not take become the usual ones
    bool hasQuality() const;               ///< whether files of the format depend on `quality`
    int quality() const { return m_base.settings.quality; }
    void setQuality(int quality) { set(m_base.settings.quality, quality); }
    QString profile() const { return m_base.settings.profile; }
    void setProfile(const QString& profile) { set(m_base.settings.profile, profile); }
    int intent() const { return int(m_base.settings.intent); }
    void setIntent(int intent) { set(m_base.settings.intent, Intent(intent)); }
    int bitDepth() const { return m_base.settings.bitDepth; }
    void setBitDepth(int bits) { set(m_base.settings.bitDepth, bits); }
    QList<int> bitDepths() const; ///< that the format takes; 0 is that of the photograph
    QString compression() const { return m_base.settings.compression; }
    void setCompression(const QString& name) { set(m_base.settings.compression, name); }
    QStringList compressions() const; ///< that the format takes; empty names the usual one
    int metadata() const { return int(m_base.settings.metadata); }
    void setMetadata(int choice) { set(m_base.settings.metadata, MetadataChoice(choice)); }
    QString nameTemplate() const { return m_base.settings.nameTemplate; }
    void setNameTemplate(const QString& text) { set(m_base.settings.nameTemplate, text); }
    QString nameProblem() const; ///< what is wrong with the name; empty when nothing is
    QString folder() const;      ///< an absolute path
    void setFolder(const QString& folder) { set(m_base.settings.outputFolder, folder); }
    QStringList presets() const;

    /// Gives the setting, named as the property, the value that it has at first.
    Q_INVOKABLE void reset(const QString& setting);

    /// Keeps the settings, all but the folder, under `name`.
    Q_INVOKABLE void savePreset(const QString& name);
    Q_INVOKABLE void usePreset(const QString& name);
    Q_INVOKABLE void removePreset(const QString& name);

Q_SIGNALS:
    void changed();
    void presetsChanged();

private:
    SettingsModel() = default; ///< with the values that the settings have at first

    template<typename T>
    void set(T& member, const T& value)
    {
        if (member == value)
            return;
        member = value;
        Q_EMIT changed();
    }

    QVariantMap values() const;
    void setValues(const QVariantMap& values);
    void takeSize();

    Options m_base;
    int m_sizing = Original;
    int m_longEdge = 2048;
    int m_width = 1920;
    int m_height = 1080;
    double m_percent = 50.0;
    double m_filterB = 1.0 / 3;
    double m_filterC = 1.0 / 3;
};

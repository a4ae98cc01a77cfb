// SPDX-License-Identifier: Apache-2.0
#include "naming.h"

#include "exportsettings.h"
#include "sources.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

namespace {

constexpr int digitsOfNumber = 4;

const QRegularExpression& field()
{
    static const QRegularExpression expression(QStringLiteral("\\{([^{}]*)\\}"));
    return expression;
}

QString valueOf(const QString& name, const Source& source)
{
    if (name == QLatin1String("name"))
        return NImageUtils::getBaseName(source.path);
    if (name == QLatin1String("folder"))
        return QFileInfo(source.path).absoluteDir().dirName();
    if (name == QLatin1String("date"))
        return source.date;
    return QString::number(source.number).rightJustified(digitsOfNumber, QLatin1Char('0'));
}

/// In one pass, so that braces in the name of a photograph are no fields.
QString nameOf(const Source& source, const QString& nameTemplate)
{
    QString name;
    qsizetype end = 0;
    for (auto match = field().globalMatch(nameTemplate); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        name += nameTemplate.mid(end, found.capturedStart() - end);
        name += valueOf(found.captured(1), source);
        end = found.capturedEnd();
    }
    return name + nameTemplate.mid(end);
}

} // namespace

QString Naming::problemOf(const ExportSettings& settings)
{
    const QString& nameTemplate = settings.nameTemplate;
    static const QRegularExpression known(QStringLiteral("\\{(name|folder|date|number)\\}"));
    static const QRegularExpression foreign(QStringLiteral("[{}/\\\\\\x00-\\x1f]"));
    if (QString(nameTemplate).remove(known).contains(foreign))
        return QStringLiteral("a name may have the fields {name}, {folder}, {date} and {number}, "
                              "and neither slashes nor other braces, unlike \"%1\"")
            .arg(nameTemplate);
    if (!nameTemplate.contains(QLatin1String("{name}")) &&
        !nameTemplate.contains(QLatin1String("{number}")))
        return QStringLiteral("a name needs {name} or {number}, unlike \"%1\"").arg(nameTemplate);
    if (nameTemplate.startsWith(QLatin1Char('.')))
        return QStringLiteral("the name \"%1\" would hide the outputs").arg(nameTemplate);
    if (settings.mayOverwrite && nameTemplate.contains(QLatin1String("{date}")))
        return QStringLiteral(
            "--overwrite and {date} exclude each other, because which files would "
            "be replaced is known only when the photographs have been read");
    return {};
}

QString Naming::pathOf(const Source& source, const ExportSettings& settings,
                       const QString& extension)
{
    const QDir folder(QDir(settings.outputFolder).filePath(source.subfolder));
    return folder.filePath(nameOf(source, settings.nameTemplate) + QLatin1Char('.') + extension);
}

void Naming::refuseLosses(QList<Source>& sources, const ExportSettings& settings)
{
    if (!settings.mayOverwrite)
        return;
    QSet<QString> photographs;
    for (const Source& source : sources)
        photographs.insert(QFileInfo(source.path).canonicalFilePath());
    QHash<QString, QString> sourceOfOutput;
    for (Source& source : sources) {
        if (!source.refusal.isEmpty())
            continue;
        QStringList extensions{extensionOf(source.path, settings)};
        if (settings.bitmap)
            extensions.append(QStringLiteral("bmp"));
        for (const QString& extension : extensions) {
            const QString path = pathOf(source, settings, extension);
            // Lowered for file systems that take names in different letter cases for the same.
            const QString key = path.toLower();
            if (photographs.contains(QFileInfo(path).canonicalFilePath()))
                source.refusal =
                    QStringLiteral("its output would replace the photograph %1").arg(path);
            else if (sourceOfOutput.contains(key))
                source.refusal =
                    QStringLiteral("its output would replace that of %1").arg(sourceOfOutput[key]);
            else
                sourceOfOutput.insert(key, source.path);
        }
    }
}

QString Naming::extensionOf(const QString& path, const ExportSettings& settings)
{
    return NImageUtils::getExportExtension(NImageUtils::getExtension(path), settings.format, true);
}

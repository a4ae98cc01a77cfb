// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include "terminal.h"

#include <imageutils/imageutils.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <numeric>

namespace {

constexpr qsizetype longestFileName = 32;
constexpr qsizetype sizeColumns = 11;
constexpr qsizetype answerColumns = 5;
constexpr qsizetype keyColumns = 16;
constexpr qsizetype cameraColumns = 20;

double total(const JobResult& result)
{
    return std::accumulate(result.milliseconds.begin(), result.milliseconds.end(), 0.0);
}

/// Of the arithmetic on the decoded picture, which is the library's.
double ours(const JobResult& result)
{
    double sum = 0.0;
    for (const Step step : {Step::Split, Step::Analyse, Step::Resample, Step::Join})
        sum += result.milliseconds[std::size_t(step)];
    return sum;
}

QString millisecondsText(double milliseconds)
{
    return QString::number(milliseconds, 'f', milliseconds < 10.0 ? 1 : 0);
}

QJsonValue jsonOf(QSize size)
{
    return size.isValid() ? QJsonArray{size.width(), size.height()} : QJsonValue();
}

QJsonValue jsonOf(std::optional<bool> answer)
{
    return answer ? QJsonValue(*answer) : QJsonValue();
}

QString keyText(const JobResult& result)
{
    return QString::number(result.key, 16).rightJustified(keyColumns, QLatin1Char('0'));
}

QString elided(const QString& text, qsizetype columns)
{
    return text.size() > columns ? text.left(columns - 1) + QChar(0x2026) : text; // an ellipsis
}

QJsonObject jsonOf(const JobResult& result)
{
    if (!result.failure.isEmpty())
        return {{QStringLiteral("file"), result.path},
                {QStringLiteral("error"), result.failure},
                {QStringLiteral("step"), QLatin1String(stepNames[std::size_t(result.failedStep)])}};
    QJsonObject milliseconds;
    for (std::size_t step = 0; step < stepNames.size(); ++step)
        milliseconds.insert(QString::fromLatin1(stepNames[step]), result.milliseconds[step]);
    QJsonObject object{{QStringLiteral("file"), result.path},
                       {QStringLiteral("stored"), jsonOf(result.storedSize)},
                       {QStringLiteral("upright"), jsonOf(result.size)},
                       {QStringLiteral("raw"), NImageUtils::isRawFile(result.path)},
                       {QStringLiteral("grey"), jsonOf(result.isGrey)},
                       {QStringLiteral("lumaNoise"), jsonOf(result.isLumaNoise)},
                       {QStringLiteral("output"), result.output},
                       {QStringLiteral("outputSize"), jsonOf(result.outputSize)},
                       {QStringLiteral("kept"), result.isKept},
                       {QStringLiteral("key"), keyText(result)},
                       {QStringLiteral("metadata"), result.metadata},
                       {QStringLiteral("milliseconds"), milliseconds},
                       {QStringLiteral("warnings"), QJsonArray::fromStringList(result.warnings)}};
    if (!result.bitmap.isEmpty())
        object.insert(QStringLiteral("bitmap"), result.bitmap);
    if (!result.thumbnail.isEmpty())
        object.insert(QStringLiteral("thumbnail"), result.thumbnail);
    return object;
}

} // namespace

QString sizeText(QSize size)
{
    return size.isValid() ? QStringLiteral("%1x%2").arg(size.width()).arg(size.height())
                          : QStringLiteral("-");
}

QString answerText(std::optional<bool> answer)
{
    if (!answer)
        return QStringLiteral("-");
    return *answer ? QStringLiteral("yes") : QStringLiteral("no");
}

QString cameraText(const JobResult& result)
{
    const QString model = result.metadata.value(QLatin1String("Model")).toString().simplified();
    return model.isEmpty() ? QStringLiteral("-") : model;
}

Report::Report(const Options& options, const QList<Source>& sources)
    : m_isJson(options.json), m_steps(options.bitmap ? stepNames.size() : stepNames.size() - 1)
{
    if (m_isJson)
        return;
    for (const Source& source : sources)
        m_fileColumns = std::max(m_fileColumns, NImageUtils::getFilename(source.path).size());
    m_fileColumns = std::clamp<qsizetype>(m_fileColumns, 4, longestFileName);
    QStringList head{QStringLiteral("file"), QStringLiteral("stored"), QStringLiteral("upright"),
                     QStringLiteral("grey"), QStringLiteral("noise")};
    for (std::size_t step = 0; step < m_steps; ++step)
        head.append(QString::fromLatin1(stepNames[step]));
    head += {QStringLiteral("ours ms"), QStringLiteral("total ms"), QStringLiteral("size"),
             QStringLiteral("key"),     QStringLiteral("camera"),   QStringLiteral("output")};
    printRow(head);
}

void Report::add(const JobResult& result)
{
    if (result.isOwnOutput)
        return;
    const QString name = NImageUtils::getFilename(result.path);
    for (const QString& warning : result.warnings)
        Terminal::printError(name + QLatin1String(": ") + warning);
    if (!result.failure.isEmpty()) {
        ++m_failed;
        Terminal::printError(result.path + QLatin1String(": ") + result.failure);
    } else {
        ++(result.isKept ? m_kept : m_exported);
    }
    if (m_isJson)
        Terminal::printLine(
            QString::fromUtf8(QJsonDocument(jsonOf(result)).toJson(QJsonDocument::Compact)));
    else if (result.failure.isEmpty())
        printRow(rowOf(result));
}

int Report::finish()
{
    const QString summary =
        QStringLiteral("%1 exported, %2 kept, %3 failed").arg(m_exported).arg(m_kept).arg(m_failed);
    if (m_isJson)
        Terminal::clearProgress();
    else
        Terminal::printLine(summary);
    if (m_isJson && m_failed > 0)
        Terminal::printError(summary);
    return m_failed > 0 || !Terminal::reportLostLines() ? 1 : 0;
}

QStringList Report::rowOf(const JobResult& result) const
{
    const QString name = NImageUtils::getFilename(result.path);
    QStringList row{elided(name, m_fileColumns), sizeText(result.storedSize), sizeText(result.size),
                    answerText(result.isGrey), answerText(result.isLumaNoise)};
    for (std::size_t step = 0; step < m_steps; ++step)
        row.append(millisecondsText(result.milliseconds[step]));
    const QString output = result.isKept ? QStringLiteral("kept ") + result.output : result.output;
    row += {millisecondsText(ours(result)),
            millisecondsText(total(result)),
            sizeText(result.outputSize),
            keyText(result),
            cameraText(result),
            output};
    return row;
}

/// Names and texts to the left of their columns, numbers to the right.
void Report::printRow(const QStringList& cells) const
{
    QString row = cells.at(0).leftJustified(m_fileColumns);
    const auto addNumber = [&row](const QString& cell, qsizetype columns) {
        row += QLatin1String("  ") + cell.rightJustified(columns);
    };
    qsizetype cell = 1;
    for (const qsizetype columns : {sizeColumns, sizeColumns, answerColumns, answerColumns})
        addNumber(cells.at(cell++), columns);
    for (std::size_t step = 0; step < m_steps; ++step)
        addNumber(cells.at(cell++), qsizetype(QLatin1String(stepNames[step]).size()));
    addNumber(cells.at(cell++), qsizetype(QLatin1String("ours ms").size()));
    addNumber(cells.at(cell++), qsizetype(QLatin1String("total ms").size()));
    addNumber(cells.at(cell++), sizeColumns);
    addNumber(cells.at(cell++), keyColumns);
    row +=
        QLatin1String("  ") + elided(cells.at(cell++), cameraColumns).leftJustified(cameraColumns);
    Terminal::printLine(row + QLatin1String("  ") + cells.at(cell));
}

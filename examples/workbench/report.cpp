// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include "terminal.h"

#include <imageutils/imageutils.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <limits>
#include <numeric>

namespace {

constexpr qsizetype shortNameColumns = 24;
constexpr qsizetype longNameColumns = 32;
constexpr qsizetype shortOutputColumns = 19; // the rest of 80
constexpr qsizetype sizeColumns = 11;
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

/// With an ellipsis in the middle: names differ at their beginning, or by the number at their end.
QString elided(const QString& text, qsizetype columns)
{
    if (text.size() <= columns)
        return text;
    const qsizetype end = columns / 2;
    return text.left(columns - 1 - end) + QChar(0x2026) + text.right(end);
}

QString keptText(const JobResult& result)
{
    return result.isKept ? QStringLiteral("kept ") : QString();
}

/// A word for the kind of failure, which stays the same when its sentence is worded anew.
QString codeText(const JobResult& result)
{
    switch (result.code) {
    case FailureCode::Missing:
        return QStringLiteral("missing");
    case FailureCode::NotAFile:
        return QStringLiteral("not-a-file");
    case FailureCode::Empty:
        return QStringLiteral("empty");
    case FailureCode::NotAPhotograph:
        return QStringLiteral("not-a-photograph");
    case FailureCode::Refused:
        return QStringLiteral("refused");
    case FailureCode::TooLarge:
        return QStringLiteral("too-large");
    case FailureCode::Format:
        return QStringLiteral("format");
    case FailureCode::Memory:
        return QStringLiteral("memory");
    case FailureCode::Process:
        return QStringLiteral("process");
    case FailureCode::ByStep:
        break;
    }
    if (result.failedStep == Step::Header || result.failedStep == Step::Decode)
        return QStringLiteral("unreadable");
    const bool isWriting = result.failedStep == Step::Write || result.failedStep == Step::Bitmap;
    return isWriting ? QStringLiteral("unwritable") : QStringLiteral("unprocessable");
}

QJsonObject jsonOf(const JobResult& result)
{
    if (!result.failure.isEmpty())
        return {{QStringLiteral("file"), result.path},
                {QStringLiteral("error"), result.failure},
                {QStringLiteral("code"), codeText(result)},
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
                       {QStringLiteral("planned"), result.isPlanned},
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
    : m_isJson(options.json), m_isQuiet(options.quiet), m_isDryRun(options.isDryRun)
{
    if (m_isJson || m_isQuiet)
        return;
    const qsizetype limit = options.verbose ? longNameColumns : shortNameColumns;
    qsizetype width = 4;
    for (const Source& source : sources)
        width = std::max(width, NImageUtils::getFilename(source.path).size());
    m_columns.push_back({QStringLiteral("file"), std::min(width, limit), false,
                         [](const JobResult& r) { return NImageUtils::getFilename(r.path); }});
    if (options.verbose)
        addAllColumns(options.settings.bitmap);
    else
        addShortColumns();
    printRow([](const Column& column) { return column.head; });
}

void Report::addShortColumns()
{
    addSize("upright", &JobResult::size);
    addSize("size", &JobResult::outputSize);
    m_columns.push_back({QStringLiteral("ms"), 7, true,
                         [](const JobResult& r) { return millisecondsText(total(r)); }});
    m_columns.push_back(
        {QStringLiteral("output"), shortOutputColumns, false, [](const JobResult& r) {
             const QString name = NImageUtils::getFilename(r.output);
             return r.failure.isEmpty() ? keptText(r) + name : QStringLiteral("failed");
         }});
}

void Report::addAllColumns(bool withBitmap)
{
    const auto add = [this](const char* head, qsizetype width, bool isNumber, auto text) {
        m_columns.push_back({QString::fromLatin1(head), width, isNumber, text});
    };
    addSize("stored", &JobResult::storedSize);
    addSize("upright", &JobResult::size);
    add("grey", 5, true, [](const JobResult& r) { return answerText(r.isGrey); });
    add("noise", 5, true, [](const JobResult& r) { return answerText(r.isLumaNoise); });
    for (std::size_t step = 0; step < stepNames.size() - (withBitmap ? 0 : 1); ++step)
        add(stepNames[step], qsizetype(qstrlen(stepNames[step])), true,
            [step](const JobResult& r) { return millisecondsText(r.milliseconds[step]); });
    add("ours ms", 7, true, [](const JobResult& r) { return millisecondsText(ours(r)); });
    add("total ms", 8, true, [](const JobResult& r) { return millisecondsText(total(r)); });
    addSize("size", &JobResult::outputSize);
    add("key", keyColumns, true, [](const JobResult& r) { return keyText(r); });
    add("camera", cameraColumns, false, [](const JobResult& r) { return cameraText(r); });
    add("output", std::numeric_limits<qsizetype>::max(), false, [](const JobResult& r) {
        return r.failure.isEmpty() ? keptText(r) + r.output : QStringLiteral("failed");
    });
}

void Report::addSize(const char* head, QSize JobResult::*size)
{
    m_columns.push_back({QString::fromLatin1(head), sizeColumns, true,
                         [size](const JobResult& r) { return sizeText(r.*size); }});
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
    if (m_isQuiet)
        return;
    if (m_isJson)
        Terminal::printLine(
            QString::fromUtf8(QJsonDocument(jsonOf(result)).toJson(QJsonDocument::Compact)));
    else
        printRow([&result](const Column& column) { return column.text(result); });
}

int Report::finish()
{
    const QString summary = (m_isDryRun ? QStringLiteral("%1 would be exported, %2 kept, %3 failed")
                                        : QStringLiteral("%1 exported, %2 kept, %3 failed"))
                                .arg(m_exported)
                                .arg(m_kept)
                                .arg(m_failed);
    if (m_isJson || m_isQuiet)
        Terminal::clearProgress();
    else
        Terminal::printLine(summary);
    if (m_isJson && m_failed > 0)
        Terminal::printError(summary);
    return m_failed > 0 || !Terminal::reportLostLines() ? 1 : 0;
}

void Report::printRow(const std::function<QString(const Column&)>& text) const
{
    QStringList cells;
    for (const Column& column : m_columns) {
        const QString cell = elided(text(column), column.width);
        const bool isLast = &column == &m_columns.back();
        cells.append(column.isNumber ? cell.rightJustified(column.width)
                     : isLast        ? cell
                                     : cell.leftJustified(column.width));
    }
    Terminal::printLine(cells.join(QLatin1String("  ")));
}

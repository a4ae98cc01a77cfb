// SPDX-License-Identifier: Apache-2.0
#include "exportrecord.h"

#include "atomicfile.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <OpenImageIO/imageio.h>

#include <exception>

namespace {

QString programName() { return QStringLiteral("imageutils-workbench"); }

QString timeOf(const QFileInfo& file)
{
    return QString::number(file.lastModified().toMSecsSinceEpoch());
}

QString notePathOf(const QString& path) { return path + QLatin1String(".workbench"); }

/// What stands beside `path`. It names length and time of the picture, so that another file that
/// was put in its place is not taken for it.
QByteArray noteFor(const QString& path, const QString& record)
{
    const QFileInfo file(path);
    return QStringLiteral("%1\n%2 %3\n").arg(record).arg(file.size()).arg(timeOf(file)).toUtf8();
}

/// The name of the software that the file itself carries; empty when there is none.
QString softwareOf(const QString& path)
{
    try { // damaged files make some readers throw
        const auto input = OIIO::ImageInput::open(path.toStdString());
        OIIO::geterror(true); // else the next one to ask gets the answer
        return input ? QString::fromStdString(
                           std::string(input->spec().get_string_attribute("Software")))
                     : QString();
    } catch (const std::exception&) {
        return {};
    }
}

/// Whether `note` is one of ours; it is open then.
bool isNote(QFile& note)
{
    return QFileInfo(note).isFile() && note.open(QIODevice::ReadOnly) &&
           note.peek(64).startsWith(programName().toUtf8());
}

/// The record with its facts that stands beside the picture at `path`; empty when there is none or
/// when it is that of another picture.
QString notedRecordOf(const QString& path)
{
    constexpr qint64 longest = 4096;
    QFile note(notePathOf(path));
    if (!isNote(note))
        return {};
    const QByteArray text = note.read(longest);
    const QString record = QString::fromUtf8(text.left(text.indexOf('\n')));
    return text == noteFor(path, record) ? record : QString();
}

/// Whether `text` is `record`, alone or with facts behind it.
bool isRecord(const QString& text, const QString& record)
{
    return text == record || text.startsWith(record + QLatin1Char(' '));
}

ExportRecord::Facts factsIn(const QString& text)
{
    static const QRegularExpression expression(
        QStringLiteral("(\\d+)x(\\d+), grey: (yes|no), noise: (yes|no)$"));
    const QRegularExpressionMatch match = expression.match(text);
    if (!match.hasMatch())
        return {};
    return {QSize(match.captured(1).toInt(), match.captured(2).toInt()),
            match.captured(3) == QLatin1String("yes"), match.captured(4) == QLatin1String("yes")};
}

} // namespace

QString ExportRecord::recordFor(const QString& sourcePath, const QString& settings)
{
    const QFileInfo source(sourcePath);
    const QStringList facts{source.canonicalFilePath(), timeOf(source),
                            QString::number(source.size()), settings};
    const QByteArray digest = QCryptographicHash::hash(facts.join(QLatin1Char('\n')).toUtf8(),
                                                       QCryptographicHash::Sha256);
    return QStringLiteral("%1 (%2)").arg(programName(),
                                         QString::fromLatin1(digest.toHex().left(32)));
}

QString ExportRecord::withFacts(const QString& record, const Facts& facts)
{
    const auto word = [](std::optional<bool> answer) {
        return answer.value_or(false) ? QStringLiteral("yes") : QStringLiteral("no");
    };
    return QStringLiteral("%1 %2x%3, grey: %4, noise: %5")
        .arg(record)
        .arg(facts.storedSize.width())
        .arg(facts.storedSize.height())
        .arg(word(facts.isGrey), word(facts.isLumaNoise));
}

ExportRecord::Output ExportRecord::find(const QString& wantedPath, const QString& record,
                                        bool mayBeNumbered)
{
    QString path = wantedPath;
    for (int number = 2; isNameTaken(path); ++number) {
        if (QFileInfo(path).isFile())
            for (const QString& text : {notedRecordOf(path), softwareOf(path)})
                if (isRecord(text, record))
                    return {path, factsIn(text)};
        if (!mayBeNumbered)
            break;
        path = numberedName(wantedPath, number);
    }
    return {};
}

bool ExportRecord::isOutput(const QString& path)
{
    QFile note(notePathOf(path));
    return isNote(note) || softwareOf(path).startsWith(programName());
}

std::optional<Failure> ExportRecord::remember(const QString& path, const QString& record)
{
    if (isRecord(softwareOf(path), record))
        return {};
    const QString notePath = notePathOf(path);
    QFile note(notePath);
    if (isNote(note))
        note.remove(); // of a picture that is gone
    auto whole = AtomicFile::create(QFileInfo(path).path(), QStringLiteral("workbench"));
    if (!whole)
        return whole.failure();
    const QByteArray text = noteFor(path, record);
    if ((*whole)->file().write(text) != text.size())
        return Failure{(*whole)->file().errorString()};
    const auto published = (*whole)->publish(notePath);
    return published ? std::nullopt : std::optional(published.failure());
}

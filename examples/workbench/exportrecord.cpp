// SPDX-License-Identifier: Apache-2.0
#include "exportrecord.h"

#include "atomicfile.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

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

bool hasNote(const QString& path, const QString& record)
{
    QFile note(notePathOf(path));
    const QByteArray expected = noteFor(path, record);
    return isNote(note) && note.read(expected.size() + 1) == expected;
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

QString ExportRecord::find(const QString& wantedPath, const QString& record)
{
    QString path = wantedPath;
    for (int number = 2; isNameTaken(path); ++number) {
        if (QFileInfo(path).isFile() && (hasNote(path, record) || softwareOf(path) == record))
            return path;
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
    if (softwareOf(path) == record)
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

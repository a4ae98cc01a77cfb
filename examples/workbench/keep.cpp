// SPDX-License-Identifier: Apache-2.0
#include "keep.h"

#include "console.h"
#include "wholefile.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <OpenImageIO/imageio.h>

#include <exception>

namespace {

QString programName() { return QStringLiteral("imageutils-workbench " WORKBENCH_VERSION); }

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

bool carriesRecord(const QString& path, const QString& record)
{
    const Console::SilencedErrors silenced;
    try { // damaged files make some readers throw
        const auto input = OIIO::ImageInput::open(path.toStdString());
        OIIO::geterror(true);
        return input && input->spec().get_string_attribute("Software") == record.toStdString();
    } catch (const std::exception&) {
        return false;
    }
}

bool hasNote(const QString& path, const QString& record)
{
    QFile note(notePathOf(path));
    const QByteArray expected = noteFor(path, record);
    return QFileInfo(note).isFile() && note.open(QIODevice::ReadOnly) &&
           note.read(expected.size() + 1) == expected;
}

} // namespace

QString Keep::recordFor(const QString& sourcePath, const QString& settings)
{
    const QFileInfo source(sourcePath);
    const QStringList facts{source.canonicalFilePath(), timeOf(source),
                            QString::number(source.size()), settings};
    const QByteArray digest = QCryptographicHash::hash(facts.join(QLatin1Char('\n')).toUtf8(),
                                                       QCryptographicHash::Sha256);
    return QStringLiteral("%1 (%2)").arg(programName(),
                                         QString::fromLatin1(digest.toHex().left(32)));
}

QString Keep::find(const QString& wantedPath, const QString& record)
{
    const QFileInfo wanted(wantedPath);
    QString path = wantedPath;
    for (int number = 2; QFileInfo::exists(path); ++number) {
        if (QFileInfo(path).isFile() && (hasNote(path, record) || carriesRecord(path, record)))
            return path;
        path = wanted.dir().filePath(QStringLiteral("%1-%2.%3")
                                         .arg(wanted.completeBaseName())
                                         .arg(number)
                                         .arg(wanted.suffix()));
    }
    return {};
}

std::optional<Failure> Keep::remember(const QString& path, const QString& record)
{
    if (carriesRecord(path, record))
        return {};
    const QString notePath = notePathOf(path);
    QFile note(notePath);
    if (note.open(QIODevice::ReadOnly) && note.readLine(256).startsWith("imageutils-workbench"))
        note.remove(); // of a picture that is gone
    auto whole = WholeFile::create(QFileInfo(path).path(), QStringLiteral("workbench"));
    if (!whole)
        return whole.failure();
    const QByteArray text = noteFor(path, record);
    if ((*whole)->file().write(text) != text.size())
        return Failure{(*whole)->file().errorString()};
    const auto published = (*whole)->publish(notePath);
    return published ? std::nullopt : std::optional(published.failure());
}

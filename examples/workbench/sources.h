// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>

/// A photograph to be taken through the library, or a name that cannot be one.
struct Source
{
    QString path;
    QString refusal{};        ///< why it cannot be one; empty for a photograph
    bool mayBeOutput = false; ///< is passed over when an earlier run wrote it
    QString subfolder{};      ///< of the folder that was named, in which --recursive found it
    int number = 0;           ///< its place in the run, from 1 on
    QString date{};           ///< the day of the photograph; empty until the file has been read
};

/// What the user's arguments `paths` name: files as they are, folders as their photographs in the
/// order of their names (hidden files and files of other formats are passed over). The folders
/// inside of folders are passed over as well, or, if `isRecursive`, follow in the same way, except
/// hidden ones, links to folders and `outputFolder`.
/// Names in `undecodable`, whose bytes were no text, are refused. The photographs of `outputFolder`
/// may be outputs: each run would export the pictures of the one before.
QList<Source> findSources(const QStringList& paths, const QSet<QString>& undecodable,
                          const QString& outputFolder, bool isRecursive = false);

/// The names that stand in `list`, each followed by `separator`; names whose bytes are no text are
/// in `undecodable` as well. Empty names are passed over.
QStringList namesIn(const QByteArray& list, char separator, QSet<QString>& undecodable);

/// The camera photographs that the system's sample pictures hold, sorted; empty when they are not
/// installed.
QStringList samplePhotographs();

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "result.h"

#include <QtCore/QFile>

#include <functional>
#include <memory>

/// Whether something has the name `path`, a link that leads nowhere included.
bool isNameTaken(const QString& path);

/// `wanted`, or the first of the numbered names beside it that nothing has.
QString freeName(const QString& wanted);

/// `path` with `number` after its base name: "photo-2.tiff".
QString numberedName(const QString& path, int number);

/// A file that appears under its name when it is complete, or not at all: written under a random
/// name in the same folder, and removed from there unless it was published.
class AtomicFile
{
public:
    /// Who may read the file: those that the user lets read new files, or the user alone.
    enum class Access { AsUsual, OwnerOnly };

    /// A new empty file in `folder`, which is made when it is missing. Its name ends in
    /// ".`extension`".
    static Result<std::unique_ptr<AtomicFile>>
    create(const QString& folder, const QString& extension, Access access = Access::AsUsual);
    ~AtomicFile();

    /// The file, open for reading and writing.
    QFile& file() { return m_file; }

    /// Why the file can never be published, where its folder was removed meanwhile; nothing
    /// otherwise.
    std::optional<Failure> failureIfLost() const;

    /// Closes the file, checks that every byte was written, and gives it the name `wantedPath` or,
    /// as nothing that exists is replaced, the first free one beside it. Returns the name.
    Result<QString> publish(const QString& wantedPath);

    /// As `publish`, but replaces a file that has the name, in one step: a program that opens
    /// the name gets the old file or the new one, whole. A link is replaced and not followed.
    Result<QString> replace(const QString& path);

    /// Removes temporary files that are older than a day from `folder`: their run was killed.
    static void sweep(const QString& folder);

    /// From now on `observer` is called with the temporary name of each file before it is created.
    static void setObserver(std::function<void(const QString&)> observer);

private:
    explicit AtomicFile(const QString& path) : m_file(path) {}

    /// Why not every byte has arrived; nothing when the file is complete.
    std::optional<Failure> close();

    QFile m_file;
};

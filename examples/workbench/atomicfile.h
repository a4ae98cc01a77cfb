// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "result.h"

#include <QtCore/QFile>

#include <memory>

/// A file that appears under its name when it is complete, or not at all: written under a random
/// name in the same folder, and removed from there unless it was published.
class AtomicFile
{
public:
    /// A new empty file in `folder`, which is made when it is missing. Its name ends in
    /// ".`extension`".
    static Result<std::unique_ptr<AtomicFile>> create(const QString& folder,
                                                      const QString& extension);
    ~AtomicFile();

    /// The file, open for reading and writing.
    QFile& file() { return m_file; }

    /// Closes the file, checks that all was written, and gives it the name `wantedPath` or, as
    /// nothing that exists is replaced, the first free one beside it. Returns the name.
    Result<QString> publish(const QString& wantedPath);

    /// Removes what a run that was killed has left behind in `folder` more than a day ago.
    static void sweep(const QString& folder);

private:
    explicit AtomicFile(const QString& path) : m_file(path) {}

    QFile m_file;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "result.h"

#include <QtCore/QString>

/// How a later run finds out that an output is up to date: every output carries a record of its
/// source, the source's time and all settings, in its own metadata or, where its format has no
/// place for it, in a small file beside it.
namespace ExportRecord {

/// The record of an output that is made from `sourcePath`, as it is now, with `settings`. It names
/// the program and a digest, so that a picture that is given away does not tell where it was made.
QString recordFor(const QString& sourcePath, const QString& settings);

/// The output with `record` at `wantedPath`, or at the numbered names beside it up to the first
/// one that is free; empty when there is none.
QString find(const QString& wantedPath, const QString& record);

/// Whether the file at `path` was written by this program, from whatever source.
bool isOutput(const QString& path);

/// Makes sure that `find` will know `path`, an output just written: writes the record beside it
/// unless the file itself carries it.
std::optional<Failure> remember(const QString& path, const QString& record);

} // namespace ExportRecord

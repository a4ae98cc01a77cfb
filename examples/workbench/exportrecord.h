// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "result.h"

#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>

/// How a later run finds out that an output is up to date: every output carries a record of its
/// source, the source's time and all settings, in its own metadata or, where its format has no
/// place for it, in a small file beside it.
namespace ExportRecord {

/// The record of an output that is made from `sourcePath`, as it is now, with `settings`. It names
/// the program and a digest, so that a picture that is given away does not tell where it was made.
QString recordFor(const QString& sourcePath, const QString& settings);

/// What is known of the photograph that an output was made from.
struct Facts
{
    QSize storedSize{}; ///< invalid while unknown
    std::optional<bool> isGrey{};
    std::optional<bool> isLumaNoise{};
};

/// An output that is there already.
struct Output
{
    QString path; ///< empty when there is none
    Facts facts{};
};

/// `record` with `facts` behind it, as outputs carry it: a later run that keeps the output needs
/// not decode the photograph to tell them.
QString withFacts(const QString& record, const Facts& facts);

/// The output with `record` at `wantedPath`, or, if it `mayBeNumbered`, at the numbered names
/// beside it up to the first one that is free.
Output find(const QString& wantedPath, const QString& record, bool mayBeNumbered);

/// Whether the file at `path` was written by this program, from whatever source.
bool isOutput(const QString& path);

/// Makes sure that `find` will know `path`, an output just written: writes the record with its
/// facts beside it unless the file itself carries it.
std::optional<Failure> remember(const QString& path, const QString& record);

} // namespace ExportRecord

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

struct ExportSettings;
struct Source;

/// How outputs are named: ExportSettings::nameTemplate is a name without an extension, in which
/// {name} stands for the photograph's name without its extension, {folder} for the name of the
/// folder that it lies in, {date} for Source::date, and {number} for its place in the run, with
/// four digits.
namespace Naming {

/// What is wrong with the names of `settings`; empty when nothing is.
QString problemOf(const ExportSettings& settings);

/// The path that the output of `source` gets when nothing has it yet: the folder of the outputs,
/// the folder below it that the source has with --recursive, and the name.
QString pathOf(const Source& source, const ExportSettings& settings, const QString& extension);

/// Refuses those of `sources` whose output would replace a photograph of the run or the output of
/// an earlier one. Without ExportSettings::mayOverwrite nothing is replaced, and nothing refused.
void refuseLosses(QList<Source>& sources, const ExportSettings& settings);

/// The extension of the picture that `path` is exported as. Raw files are developed.
QString extensionOf(const QString& path, const ExportSettings& settings);

} // namespace Naming

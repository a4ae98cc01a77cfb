// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

struct ExportSettings;
struct Source;

/// How outputs are named: ExportSettings::nameTemplate is a name without an extension, in which
/// {name} stands for the photograph's name without its extension, {folder} for the name of the
/// folder that it lies in, and {number} for its place in the run, with four digits.
namespace Naming {

/// What is wrong with `nameTemplate`; empty when nothing is.
QString problemOf(const QString& nameTemplate);

/// The path that the output of `source` gets when nothing has it yet: the folder of the outputs,
/// the folder below it that the source has with --recursive, and the name.
QString pathOf(const Source& source, const ExportSettings& settings, const QString& extension);

/// The extension of the picture that `path` is exported as. Raw files are developed.
QString extensionOf(const QString& path, const ExportSettings& settings);

} // namespace Naming

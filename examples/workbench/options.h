// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exportsettings.h"

#include <QtCore/QStringList>

/// What the user asks for.
struct Options
{
    QStringList paths; ///< photographs and folders, as given; empty: the sample photographs
    ExportSettings settings;
    bool isRecursive = false;     ///< photographs in folders inside of folders as well
    bool isNullSeparated = false; ///< the list on the standard input ends each name with a NUL
    int jobs = 0;                 ///< photographs at once; 0: as many as there are processors
    qint64 maxMemory = 0; ///< bytes that their pixels may take together; 0: half of what there is
    bool isDryRun = false;
    bool json = false;
    bool headless = false;
    bool quiet = false;
    bool verbose = false;
};

/// A command line that has been read.
struct CommandLine
{
    Options options;
    QString error;             ///< what is wrong with it, empty when nothing is
    QString page;              ///< a text that was asked for instead of work, see pageText()
    bool wantsMachine = false; ///< the facts of the machine were asked for
};

/// Reads `arguments`, of which the first is the program's name. Needs no application object.
CommandLine readCommandLine(const QStringList& arguments);

/// The pages that are made from the table of options: "help", "version", "man" (a manual page in
/// roff), and the completions of the shells "bash", "zsh" and "fish".
QString pageText(const QString& page);

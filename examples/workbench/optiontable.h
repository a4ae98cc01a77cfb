// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"

#include <span>

/// One option of the command line. The parser, --help, the manual page and the completions of the
/// shells are all made from the table of these.
struct OptionRow
{
    const char* group;  ///< the heading above it
    const char* name;   ///< without the dashes
    const char* letter; ///< the short form; empty when there is none
    const char* value;  ///< what stands for its value; empty for a switch
    /// The values that a shell offers, separated by spaces; FILE or FOLDER for the names of those.
    const char* words;
    const char* help;

    /// Puts the value into the command line. Returns what the option takes when it does not take
    /// this value, otherwise an empty text.
    QString (*read)(const QString& value, CommandLine& line);
};

/// All options, those of a group one after the other.
std::span<const OptionRow> optionTable();

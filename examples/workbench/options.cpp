// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "optiontable.h"

#include <QtCore/QCommandLineParser>

namespace {

void describe(QCommandLineParser& parser)
{
    for (const OptionRow& row : optionTable()) {
        QStringList names{QString::fromLatin1(row.name)};
        if (*row.letter)
            names.append(QString::fromLatin1(row.letter));
        parser.addOption({names, QString(), QString::fromLatin1(row.value)});
    }
}

/// A long option behind a single dash, which would be read as several short ones or as a value of
/// -o; empty when there is none.
QString misspelt(const QStringList& arguments)
{
    for (qsizetype i = 1; i < arguments.size() && arguments[i] != QLatin1String("--"); ++i) {
        const QString& argument = arguments[i];
        const bool isValue = arguments[i - 1] == QLatin1String("-o") ||
                             arguments[i - 1] == QLatin1String("--output");
        const bool isLong = argument.size() > 2 && argument[0] == u'-' && argument[1].isLetter();
        const bool isFolder = argument.startsWith(QLatin1String("-o")) &&
                              !argument.startsWith(QLatin1String("-output"));
        if (isLong && !isValue && !isFolder)
            return argument;
    }
    return {};
}

/// Reads the values of the options; returns what is wrong with the first one that is.
QString readValues(const QCommandLineParser& parser, CommandLine& line)
{
    QString error;
    for (const OptionRow& row : optionTable()) {
        const QString name = QString::fromLatin1(row.name);
        if (!parser.isSet(name))
            continue;
        const QString value = *row.value ? parser.value(name) : QString();
        const QString wanted = row.read(value, line);
        if (!wanted.isEmpty() && error.isEmpty())
            error = QStringLiteral("--%1 takes %2, not \"%3\"").arg(name, wanted, value);
    }
    return error;
}

/// Two options of `names` that are both set, of which only one can hold; empty when there are none.
QString conflictAmong(const QCommandLineParser& parser, const QStringList& names)
{
    QString first;
    for (const QString& name : names) {
        if (!parser.isSet(name))
            continue;
        if (!first.isEmpty())
            return QStringLiteral("--%1 and --%2 exclude each other").arg(first, name);
        first = name;
    }
    return {};
}

QString conflictIn(const QCommandLineParser& parser)
{
    const QStringList groups[] = {{"scale", "percent", "long-edge", "fit", "fill"},
                                  {"fill", "max-width"},
                                  {"fill", "max-height"},
                                  {"suffix", "name"},
                                  {"quiet", "json"},
                                  {"quiet", "verbose"}};
    for (const QStringList& names : groups)
        if (const QString conflict = conflictAmong(parser, names); !conflict.isEmpty())
            return conflict;
    return {};
}

} // namespace

CommandLine readCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    CommandLine line;
    const bool isParsed = parser.parse(arguments);
    if (const QString argument = misspelt(arguments); !argument.isEmpty()) {
        line.error = QStringLiteral("\"%1\" needs two dashes").arg(argument);
        return line; // whatever else was read from it, --help for example, is not meant
    }
    Options& options = line.options;
    line.error = readValues(parser, line);
    if (!isParsed)
        line.error = parser.errorText();
    options.paths = parser.positionalArguments();
    options.headless = options.headless || options.json || options.quiet || options.isDryRun;
    if (line.error.isEmpty())
        line.error = conflictIn(parser);
    if (line.error.isEmpty() && options.isNullSeparated && !options.paths.contains("-"))
        line.error = QStringLiteral("--null needs - among the photographs");
    if (line.error.isEmpty())
        line.error = problemOf(options.settings);
    return line;
}

// SPDX-License-Identifier: Apache-2.0
#include "formats.h"
#include "optiontable.h"

#include <QtCore/QStringList>

#include <cstring>

namespace {

const QString program = QStringLiteral("imageutils-workbench");

QString description()
{
    return QStringLiteral(
        "Takes photographs through the library: reads, examines, resamples and exports them.");
}

QString exitStatus()
{
    return QStringLiteral("0 when every photograph was exported or kept, 1 when one failed, 2 for "
                          "a wrong command line.");
}

QString arguments()
{
    return QStringLiteral(
        "FILE is a photograph, FOLDER one whose photographs are taken in the order of their names "
        "(hidden files are not), - a list of both on the standard input, one name a line. Without "
        "any: the photographs of the package mate-backgrounds.");
}

QString synopsis() { return QStringLiteral("[OPTION]... [FILE|FOLDER|-]..."); }

QString longName(const OptionRow& row) { return QLatin1String("--") + QLatin1String(row.name); }

/// "-o, --output DIR"
QString usageOf(const OptionRow& row)
{
    QString usage = longName(row);
    if (*row.letter)
        usage.prepend(QLatin1Char('-') + QLatin1String(row.letter) + QLatin1String(", "));
    return *row.value ? usage + QLatin1Char(' ') + QLatin1String(row.value) : usage;
}

/// The values that a shell offers, without the words for files.
QStringList wordsOf(const OptionRow& row)
{
    QStringList words = QString::fromLatin1(row.words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    words.removeAll(QStringLiteral("FILE"));
    words.removeAll(QStringLiteral("FOLDER"));
    if (words.removeAll(QStringLiteral("FORMAT")) > 0)
        words = Formats::writableText().split(QStringLiteral(", ")) << QStringLiteral("preserve");
    return words;
}

bool takesFiles(const OptionRow& row) { return std::strstr(row.words, "FILE"); }
bool takesFolders(const OptionRow& row) { return std::strstr(row.words, "FOLDER"); }

/// `text` in lines of at most `columns`, each behind `indent` spaces.
QString wrapped(const QString& text, qsizetype indent, qsizetype columns)
{
    const QString begin(indent, QLatin1Char(' '));
    QString lines;
    QString line;
    for (const QString& word : text.split(QLatin1Char(' '))) {
        if (!line.isEmpty() && indent + line.size() + 1 + word.size() > columns) {
            lines += begin + line + QLatin1Char('\n');
            line.clear();
        }
        line += line.isEmpty() ? word : QLatin1Char(' ') + word;
    }
    return lines + begin + line + QLatin1Char('\n');
}

QString help()
{
    constexpr qsizetype columns = 79;
    constexpr qsizetype textColumn = 24;
    QString text = QStringLiteral("Usage: %1 %2\n").arg(program, synopsis()) +
                   wrapped(description(), 0, columns) + QLatin1Char('\n') +
                   wrapped(arguments(), 0, columns);
    QString group;
    for (const OptionRow& row : optionTable()) {
        if (group != QLatin1String(row.group))
            text += QLatin1Char('\n') + (group = QLatin1String(row.group)) + QLatin1String(":\n");
        const QString usage = QLatin1String("  ") + usageOf(row);
        const QString lines = wrapped(QString::fromLatin1(row.help), textColumn, columns);
        text += usage.size() < textColumn ? usage + lines.mid(usage.size())
                                          : usage + QLatin1Char('\n') + lines;
    }
    return text + QLatin1String("\nExit status: ") + exitStatus();
}

QString version() { return program + QStringLiteral(" " WORKBENCH_VERSION); }

/// In roff a dash is a hyphen, and a line that begins with a point is a request.
QString roff(QString text)
{
    return text.replace(QLatin1Char('\\'), QLatin1String("\\e"))
        .replace(QLatin1Char('-'), QLatin1String("\\-"))
        .replace(QLatin1Char('\''), QLatin1String("\\(aq"));
}

QString manualPage()
{
    QString text =
        QStringLiteral(".TH IMAGEUTILS\\-WORKBENCH 1 \"\" \"%1\"\n"
                       ".SH NAME\n%2 \\- export photographs resampled, turned and "
                       "upright\n.SH SYNOPSIS\n.B %2\n%3\n.SH DESCRIPTION\n%4\n.PP\n%5\n")
            .arg(roff(version()), roff(program), roff(synopsis()), roff(description()),
                 roff(arguments()));
    text += QLatin1String(".SH OPTIONS\n");
    QString group;
    for (const OptionRow& row : optionTable()) {
        if (group != QLatin1String(row.group))
            text += QLatin1String(".SS ") + (group = QLatin1String(row.group)) + QLatin1Char('\n');
        text += QStringLiteral(".TP\n\\fB%1\\fR\n%2\n")
                    .arg(roff(usageOf(row)), roff(QString::fromLatin1(row.help)));
    }
    return text + QLatin1String(".SH EXIT STATUS\n") + roff(exitStatus());
}

/// The letters and names of all options, as a pattern of a shell or as words.
QStringList spellingsOf(const OptionRow& row)
{
    QStringList spellings{longName(row)};
    if (*row.letter)
        spellings.append(QLatin1Char('-') + QLatin1String(row.letter));
    return spellings;
}

QString bash()
{
    QString cases;
    QStringList all;
    for (const OptionRow& row : optionTable()) {
        all.append(longName(row));
        if (!*row.value)
            continue;
        QString reply;
        if (const QStringList words = wordsOf(row); !words.isEmpty())
            reply += QStringLiteral("words='%1'; ").arg(words.join(QLatin1Char(' ')));
        if (takesFiles(row) || takesFolders(row))
            reply +=
                takesFolders(row) ? QStringLiteral("files=-d; ") : QStringLiteral("files=-f; ");
        cases +=
            QStringLiteral("    %1) %2;;\n").arg(spellingsOf(row).join(QLatin1Char('|')), reply);
    }
    return QStringLiteral("_imageutils_workbench() {\n"
                          "  local current=${COMP_WORDS[COMP_CWORD]} "
                          "previous=${COMP_WORDS[COMP_CWORD-1]} words= "
                          "files=\n"
                          "  [[ $current == = ]] && current=\n"
                          "  [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD-2]}\n"
                          "  case $previous in\n%1"
                          "    *) files=-f; [[ $current == -* ]] && files= words='%2' ;;\n"
                          "  esac\n"
                          "  local IFS=$' \\t\\n'\n"
                          "  COMPREPLY=()\n"
                          "  [[ $words ]] && COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
                          "  local IFS=$'\\n'\n"
                          "  [[ $files ]] && COMPREPLY+=($(compgen $files -- \"$current\"))\n"
                          "}\n"
                          "complete -o filenames -F _imageutils_workbench imageutils-workbench")
        .arg(cases, all.join(QLatin1Char(' ')));
}

/// A text between single quotes of a shell.
QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

QString zsh()
{
    QString rows;
    for (const OptionRow& row : optionTable()) {
        const QString help = QString::fromLatin1(row.help)
                                 .replace(QLatin1Char('['), QLatin1String("\\["))
                                 .replace(QLatin1Char(']'), QLatin1String("\\]"))
                                 .replace(QLatin1Char(':'), QLatin1String("\\:"));
        QString action;
        if (takesFolders(row))
            action = QStringLiteral(":%1:_files -/").arg(QLatin1String(row.name));
        else if (takesFiles(row))
            action = QStringLiteral(":%1:_files").arg(QLatin1String(row.name));
        else if (*row.value)
            action = QStringLiteral(":%1:(%2)")
                         .arg(QLatin1String(row.name),
                              wordsOf(row)
                                  .join(QLatin1Char(' '))
                                  .replace(QLatin1Char(':'), QLatin1String("\\:")));
        for (const QString& spelling : spellingsOf(row))
            rows += QLatin1String("  ") +
                    quoted(spelling + QLatin1Char('[') + help + QLatin1Char(']') + action) +
                    QLatin1String(" \\\n");
    }
    return QStringLiteral("#compdef imageutils-workbench\n_arguments \\\n%1  '*:photograph:_files'")
        .arg(rows);
}

QString fish()
{
    QString rows;
    for (const OptionRow& row : optionTable()) {
        QString line =
            QStringLiteral("complete -c imageutils-workbench -l %1").arg(QLatin1String(row.name));
        if (*row.letter)
            line += QLatin1String(" -s ") + QLatin1String(row.letter);
        const bool hasNames = takesFiles(row) || takesFolders(row);
        if (*row.value)
            line += hasNames ? QLatin1String(" -r") : QLatin1String(" -x");
        if (const QStringList words = wordsOf(row); !words.isEmpty())
            line += QLatin1String(" -a ") + quoted(words.join(QLatin1Char(' ')));
        rows += line + QLatin1String(" -d ") + quoted(QString::fromLatin1(row.help)) +
                QLatin1Char('\n');
    }
    return rows.trimmed();
}

} // namespace

QString pageText(const QString& page)
{
    if (page == QLatin1String("version"))
        return version();
    if (page == QLatin1String("man"))
        return manualPage();
    if (page == QLatin1String("bash"))
        return bash();
    if (page == QLatin1String("zsh"))
        return zsh();
    return page == QLatin1String("fish") ? fish() : help();
}

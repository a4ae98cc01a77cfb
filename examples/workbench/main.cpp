// SPDX-License-Identifier: Apache-2.0
#include "atomicfile.h"
#include "console.h"
#include "display.h"
#include "headless.h"
#include "interruption.h"
#include "machine.h"
#include "messages.h"
#include "naming.h"
#include "options.h"
#include "runwindow.h"
#include "sources.h"
#include "terminal.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringDecoder>
#include <QtGui/QGuiApplication>

#include <cstdio>
#include <memory>
#include <utility>

namespace {

constexpr int wrongUsage = 2;

/// The arguments as the user typed them, and those whose bytes are no text.
struct Arguments
{
    QStringList all;
    QSet<QString> undecodable;
};

/// Reads what the user typed; Qt's own list replaces bytes that are no text, and the name would be
/// that of another file.
Arguments readArguments(int argc, char** argv)
{
    Arguments arguments;
    for (const std::string& argument : Console::arguments(argc, argv)) {
        QStringDecoder decoder(QStringDecoder::Utf8);
        const QString text = decoder(argument);
        arguments.all.append(text);
        if (decoder.hasError())
            arguments.undecodable.insert(text);
    }
    return arguments;
}

/// Puts the names on the standard input in the place of the "-" among `paths`.
void replaceList(QStringList& paths, char separator, QSet<QString>& undecodable)
{
    const qsizetype at = paths.indexOf(QStringLiteral("-"));
    if (at < 0)
        return;
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return;
    paths = paths.mid(0, at) + namesIn(input.readAll(), separator, undecodable) + paths.mid(at + 1);
}

/// The first folder above `path` that exists, or `path` itself.
QFileInfo existing(const QString& path)
{
    QFileInfo info(QDir(path).absolutePath());
    while (!info.exists() && !info.isRoot())
        info.setFile(info.path());
    return info;
}

/// The folder of the outputs, which goes away again when nothing was written.
class OutputFolder
{
public:
    OutputFolder(const QString& path, const QList<Source>& sources, bool isDryRun)
        : m_path(path), m_isNew(!isDryRun && !QFileInfo::exists(path))
    {
        if (isDryRun) {
            if (const QFileInfo info = existing(path); !info.isDir() || !info.isWritable())
                m_failure = QStringLiteral("cannot write in %1").arg(info.filePath());
            return;
        }
        if (const auto file = AtomicFile::create(path, QStringLiteral("test")); !file)
            m_failure = file.failure().reason;
        QSet<QString> subfolders{QString()};
        for (const Source& source : sources)
            subfolders.insert(source.subfolder);
        for (const QString& subfolder : std::as_const(subfolders))
            AtomicFile::sweep(QDir(path).filePath(subfolder));
    }
    ~OutputFolder()
    {
        if (m_isNew)
            QDir().rmdir(m_path);
    }
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    const QString& failure() const { return m_failure; }

private:
    const QString m_path;
    const bool m_isNew;
    QString m_failure;
};

/// What a command line without photographs asks for.
std::optional<int> answer(const CommandLine& line)
{
    if (!line.page.isEmpty())
        for (const QString& text : pageText(line.page).split(QLatin1Char('\n')))
            Terminal::printLine(text);
    else if (!line.error.isEmpty())
        Terminal::printError(
            QStringLiteral("imageutils-workbench: %1 (see --help)").arg(line.error));
    else if (line.wantsMachine)
        for (const QString& text : line.options.json ? QStringList(machineJson()) : machineText())
            Terminal::printLine(text);
    else
        return {};
    return !line.page.isEmpty() || line.error.isEmpty() ? 0 : wrongUsage;
}

/// Without a window the folder is tried before any work.
int runTable(const Options& options, const QList<Source>& sources)
{
    const OutputFolder folder(options.settings.outputFolder, sources, options.isDryRun);
    if (folder.failure().isEmpty())
        return runHeadless(options, sources);
    Terminal::printError(QLatin1String("imageutils-workbench: ") + folder.failure());
    return wrongUsage;
}

} // namespace

int main(int argc, char** argv)
{
    Interruption::ignoreWriteSignals();
    Arguments arguments = readArguments(argc, argv);
    const CommandLine line = readCommandLine(arguments.all);
    Messages::install(line.options.verbose, Terminal::printError);

    const bool isWindowed = line.error.isEmpty() && line.page.isEmpty() && !line.wantsMachine &&
                            !line.options.headless && Desktop::isReachable();
    const std::unique_ptr<QCoreApplication> application(
        isWindowed ? new QGuiApplication(argc, argv) : new QCoreApplication(argc, argv));
    QCoreApplication::setApplicationName(QStringLiteral("imageutils-workbench"));
    QCoreApplication::setOrganizationName(QStringLiteral("imageutils")); // of its settings
    if (const std::optional<int> status = answer(line))
        return *status;

    QStringList paths = line.options.paths;
    if (paths.isEmpty() && !isWindowed) // a window begins empty
        paths = samplePhotographs();
    if (paths.isEmpty() && !isWindowed) {
        Terminal::printError(QStringLiteral("imageutils-workbench: name a photograph or a folder; "
                                            "the sample photographs (package mate-backgrounds) are "
                                            "not installed"));
        return wrongUsage;
    }
    replaceList(paths, line.options.isNullSeparated ? '\0' : '\n', arguments.undecodable);
    QList<Source> sources = findSources(
        paths, arguments.undecodable, line.options.settings.outputFolder, line.options.isRecursive);
    Naming::refuseLosses(sources, line.options.settings);
    const int status =
        isWindowed ? runWindow(line.options, sources) : runTable(line.options, sources);
    if (Interruption::isWanted())
        Interruption::obey();
    return status;
}

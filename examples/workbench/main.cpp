// SPDX-License-Identifier: Apache-2.0
#include "atomicfile.h"
#include "headless.h"
#include "interruption.h"
#include "machine.h"
#include "messages.h"
#include "options.h"
#include "sources.h"
#include "terminal.h"
#include "window.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibrary>
#include <QtCore/QOperatingSystemVersion>
#include <QtCore/QStringDecoder>
#include <QtGui/QGuiApplication>

#include <memory>
#include <string_view>

namespace {

constexpr int wrongUsage = 2;

/// The arguments as the user typed them, and those whose bytes are no text.
struct Arguments
{
    QStringList all;
    QSet<QString> undecodable;
};

/// Reads what the system gave to main(); Qt's own list replaces bytes that are no text, and the
/// name would be that of another file.
Arguments readArguments(int argc, char** argv)
{
    Arguments arguments;
    for (int i = 0; i < argc; ++i) {
        QStringDecoder decoder(QStringDecoder::System);
        const QString text = decoder(QByteArrayView(argv[i]));
        arguments.all.append(text);
        if (decoder.hasError())
            arguments.undecodable.insert(text);
    }
    return arguments;
}

/// Whether a window can be shown. Asked before there is an application object: one with windows
/// ends the program where there is no display.
bool hasDisplay()
{
    const auto system = QOperatingSystemVersion::currentType();
    if (system == QOperatingSystemVersion::Windows || system == QOperatingSystemVersion::MacOS)
        return true;
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

/// Works for another process of this program; worker.h says what for.
int runWorker(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QLibrary module(QCoreApplication::applicationDirPath() + QLatin1String("/" WORKBENCH_MODULE));
    const auto run = reinterpret_cast<int (*)()>(module.resolve("runWorkerProcess"));
    if (run)
        return run();
    Terminal::printError(module.errorString());
    return 1;
}

/// What a command line without photographs asks for.
std::optional<int> answer(const CommandLine& line)
{
    if (line.wantsHelp)
        for (const QString& text : helpText().trimmed().split(QLatin1Char('\n')))
            Terminal::printLine(text);
    else if (line.wantsVersion)
        Terminal::printLine(QStringLiteral("imageutils-workbench " WORKBENCH_VERSION));
    else if (!line.error.isEmpty())
        Terminal::printError(
            QStringLiteral("imageutils-workbench: %1 (see --help)").arg(line.error));
    else if (line.wantsMachine)
        for (const QString& text : line.options.json ? QStringList(machineJson()) : machineText())
            Terminal::printLine(text);
    else
        return {};
    return line.wantsHelp || line.wantsVersion || line.error.isEmpty() ? 0 : wrongUsage;
}

} // namespace

int main(int argc, char** argv)
{
    Interruption::ignoreWriteSignals();
    if (argc == 2 && std::string_view(argv[1]) == "--worker")
        return runWorker(argc, argv);
    const Arguments arguments = readArguments(argc, argv);
    const CommandLine line = readCommandLine(arguments.all);
    Messages::install(line.options.verbose, Terminal::printError);

    const bool isWindowed = line.error.isEmpty() && !line.wantsHelp && !line.wantsVersion &&
                            !line.wantsMachine && !line.options.headless && hasDisplay();
    const std::unique_ptr<QCoreApplication> application(
        isWindowed ? new QGuiApplication(argc, argv) : new QCoreApplication(argc, argv));
    QCoreApplication::setApplicationName(QStringLiteral("imageutils-workbench"));
    QCoreApplication::setOrganizationName(QStringLiteral("imageutils")); // of its settings
    if (const std::optional<int> status = answer(line))
        return *status;

    const QStringList paths =
        line.options.paths.isEmpty() ? samplePhotographs() : line.options.paths;
    if (paths.isEmpty()) {
        Terminal::printError(QStringLiteral("imageutils-workbench: name a photograph or a folder; "
                                            "the sample photographs (package mate-backgrounds) are "
                                            "not installed"));
        return wrongUsage;
    }
    const QList<Source> sources =
        findSources(paths, arguments.undecodable, line.options.outputFolder);
    AtomicFile::sweep(line.options.outputFolder);
    if (!isWindowed)
        return runHeadless(line.options, sources);
    const int status = runWindow(line.options, sources);
    if (Interruption::isWanted())
        Interruption::obey();
    return status;
}

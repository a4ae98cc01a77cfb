// SPDX-License-Identifier: Apache-2.0
#include "atomicfile.h"
#include "headless.h"
#include "machine.h"
#include "messages.h"
#include "options.h"
#include "sources.h"
#include "terminal.h"
#include "window.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QOperatingSystemVersion>
#include <QtCore/QStringDecoder>
#include <QtGui/QGuiApplication>

#include <opencv2/core/utils/logger.hpp>

#include <csignal>
#include <memory>

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

/// A full disk quota is reported for the file, as a full disk is, and does not end the program.
void ignoreFileSizeSignal()
{
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
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
    ignoreFileSizeSignal();
    cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT); // reported by its caller
    const Arguments arguments = readArguments(argc, argv);
    const CommandLine line = readCommandLine(arguments.all);
    Messages::install(line.options.verbose);

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
    return isWindowed ? runWindow(line.options, sources) : runHeadless(line.options, sources);
}

// SPDX-License-Identifier: Apache-2.0
//
// imageutils-bench [OPTION…] [GROUP…]: the benchmarks of all groups, or of those named.
#include "groups.h"
#include "peers.h"

#include <imageutils/kernels/simd.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>

namespace {

struct Group
{
    const char* name;
    void (*run)(const Bench::Options& options);
};

constexpr Group groups[] = {{"resample", Bench::resample},   {"planes", Bench::planes},
                            {"analysis", Bench::analysis},   {"base64", Bench::base64},
                            {"serialize", Bench::serialize}, {"hash", Bench::hash},
                            {"imagesize", Bench::imageSize}};

const QCommandLineOption
    smallOption("small", "Use a small picture once, only to show that everything runs.");
const QCommandLineOption sizesOption("megapixels", "Sizes of pictures: 12, 48.", "LIST", "12,48");
const QCommandLineOption threadsOption("threads", "Numbers of threads.", "LIST", "1,2");
const QCommandLineOption memoryOption("memory",
                                      "How the allocator was configured by bench/run; printed.",
                                      "WORD", "fresh");
const QCommandLineOption inARowOption("in-a-row", "Calls in each turn of an implementation.",
                                      "NUMBER", "12");
const QCommandLineOption dataOption("data", "Append the figures to FILE.", "FILE");
const QCommandLineOption versionsOption("versions", "Print the versions of the peers.");
const QCommandLineOption
    simdOption("simd", "Print which SIMD instruction set the library uses on this CPU.");

std::vector<Bench::PictureSize> sizesOf(const QCommandLineParser& parser)
{
    if (parser.isSet(smallOption))
        return {{"0.08 MP", 320, 240}};
    std::vector<Bench::PictureSize> sizes;
    for (const QString& size : parser.value(sizesOption).split(u',')) {
        if (size == u"12")
            sizes.push_back({"12 MP", 4000, 3000});
        if (size == u"48")
            sizes.push_back({"48 MP", 8000, 6000});
    }
    return sizes;
}

Bench::Options optionsOf(const QCommandLineParser& parser)
{
    Bench::Options options;
    options.sizes = sizesOf(parser);
    for (const QString& threads : parser.value(threadsOption).split(u','))
        options.threads.push_back(threads.toInt());
    options.memory = parser.value(memoryOption).toStdString();
    options.dataPath = parser.value(dataOption).toStdString();
    options.isSmall = parser.isSet(smallOption);
    options.callsInARow = std::max(parser.value(inARowOption).toInt(), 1);
    if (options.callsInARow == 1)
        options.turns = 12;
    if (options.isSmall)
        options.turns = options.callsInARow = 1;
    return options;
}

/// Drops log lines: some operations log their own time.
void dropInformation(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtInfoMsg && type != QtDebugMsg)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

int run(const QCommandLineParser& parser)
{
    const Bench::Options options = optionsOf(parser);
    const QStringList wanted = parser.positionalArguments();
    for (const QString& name : wanted) {
        if (std::none_of(std::begin(groups), std::end(groups),
                         [&](const Group& group) { return name == QLatin1String(group.name); })) {
            std::fprintf(stderr, "no such group: %s\n", qPrintable(name));
            return 1;
        }
    }
    for (const Group& group : groups) {
        if (wanted.isEmpty() || wanted.contains(QLatin1String(group.name)))
            group.run(options);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(dropInformation);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({smallOption, sizesOption, threadsOption, memoryOption, inARowOption,
                       dataOption, versionsOption, simdOption});
    parser.addPositionalArgument("GROUP", "resample, planes, analysis, base64, serialize, hash, "
                                          "imagesize; all when none is named.");
    parser.process(application);
    if (parser.isSet(simdOption)) {
        std::printf("%s\n", Kernels::simdInstructionSet());
        return 0;
    }
    try {
        Peers::start(argv[0]);
        if (!parser.isSet(versionsOption))
            return run(parser);
        for (const std::string& version : Peers::versions())
            std::printf("%s\n", version.c_str());
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "imageutils-bench: %s\n", error.what());
        return 1;
    }
}

// SPDX-License-Identifier: Apache-2.0
//
// What a program pays for linking the library: from its start to its end, beside one that links
// only Qt and OpenCV's core, and one that does nothing.
#include "ratios.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>

namespace {

int run(const QString& program) { return QProcess::execute(program, {}); }

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString folder = QCoreApplication::applicationDirPath();
    addOperation("start", "ours", [=] { return run(folder + "/start_ours"); });
    addOperation("start", "Qt and OpenCV's core", [=] { return run(folder + "/start_peers"); });
    addOperation("start", "nothing", [=] { return run(folder + "/start_nothing"); });
    return runBenchmarks(argc, argv);
}

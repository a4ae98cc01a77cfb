// SPDX-License-Identifier: Apache-2.0
//
// imageutils-figures FOLDER
//
// Writes the figures of the interface documentation. A warning of the library ends the program,
// because a figure must not show a refused call.
#include "figures.h"

#include <QtCore/QDir>

#include <cstdio>
#include <cstdlib>

namespace {

void endOnWarning(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    std::fprintf(stderr, "imageutils-figures: %s\n", qPrintable(message));
    std::exit(1);
}

struct Figure
{
    const char* name;
    Svg (*draw)();
};

constexpr Figure figures[] = {
    {"filters.svg", filterShapes}, {"cap.svg", cappedResult},      {"lumanoise.svg", lumaNoise},
    {"crop.svg", rotatedCrop},     {"base64.svg", base64StopRule}, {"brush.svg", brushSizes},
};

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(endOnWarning);
    const QDir folder(QString::fromLocal8Bit(argc > 1 ? argv[1] : "."));
    for (const Figure& figure : figures) {
        if (!figure.draw().write(folder.filePath(QLatin1String(figure.name))))
            qFatal("%s cannot be written", figure.name);
    }
    return 0;
}

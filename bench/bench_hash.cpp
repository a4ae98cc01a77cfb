// SPDX-License-Identifier: Apache-2.0
//
// The key of a nested parameter set of 60 entries beside writing the same map to a data stream.
#include "ratios.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

namespace {

/// Settings as an image application has them: numbers, switches, names, sizes, a list.
QVariantMap settings(int depth)
{
    QVariantMap map;
    for (int i = 0; i < 2; ++i) {
        const QString number = QString::number(i);
        map[QStringLiteral("strength") + number] = 0.25 * i;
        map[QStringLiteral("radius") + number] = i;
        map[QStringLiteral("enabled") + number] = i % 2 == 0;
        map[QStringLiteral("model") + number] = QStringLiteral("Sharpen Standard v2");
        map[QStringLiteral("size") + number] = QSize(4000, 3000);
        map[QStringLiteral("curve") + number] = QVariantList{0.0, 0.25, 0.75, 1.0};
        map[QStringLiteral("tags") + number] = QStringList{QStringLiteral("a"), number};
    }
    if (depth > 0)
        map[QStringLiteral("nested")] = settings(depth - 1);
    return map;
}

} // namespace

int main(int argc, char** argv)
{
    const QVariantMap map = settings(3); // 4 levels of 14 entries, and what holds them: 59
    addOperation("hashParams", "ours", [&] { return NImageUtils::hashParams(map); });
    addOperation("hashParams", "QDataStream", [&] {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << map;
        return bytes;
    });
    return runBenchmarks(argc, argv);
}

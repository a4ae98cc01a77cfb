// SPDX-License-Identifier: Apache-2.0
//
// The key of a nested parameter set of 60 entries beside hashing the same map as a data stream.
#include "groups.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QSize>

namespace Bench {
namespace {

/// Settings as an image application has them: numbers, switches, names, sizes, lists.
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
    else
        map[QStringLiteral("opacity")] = 0.5F;
    return map;
}

} // namespace

void hash(const Options& options)
{
    const QVariantMap map = settings(3); // 60 entries: 4 levels of 14, 3 nested maps, and one more
    Benchmark benchmark("hashParams", "60 entries");
    benchmark.add(
        Role::Ours, "ours", [&] { return NImageUtils::hashParams(map); },
        [key = NImageUtils::hashParams(settings(3))](quint64 result) { return result != key; });
    benchmark.addYardstick("QDataStream and qHash", [&] { // gives another number
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << map;
        return qHash(bytes, 0);
    });
    benchmark.run(options.onOneThread());
}

} // namespace Bench

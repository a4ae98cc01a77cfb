// SPDX-License-Identifier: Apache-2.0
#include <imageutils/mathutils.h>

#include <QtCore/QDebug>

NMathUtils::NMathUtils() = default;

NMathUtils::~NMathUtils() = default;

int NMathUtils::mapBrushSize(float, const QSize&)
{
    qWarning() << "mapBrushSize is not available yet";
    return 0;
}

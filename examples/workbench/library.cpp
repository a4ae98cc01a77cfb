// SPDX-License-Identifier: Apache-2.0
#include "library.h"

#include <imageutils/mathutils.h>
#include <imageutils/osutils.h>

QString Library::monitorColorSpace()
{
    const QColorSpace space = OSUtils::getMonitorColorSpace();
    if (!space.isValid())
        return QStringLiteral("of no use to Qt");
    return space.description().isEmpty() ? QStringLiteral("without a name") : space.description();
}

double Library::brushShare(double brushSize, QSizeF size)
{
    if (size.isEmpty())
        return 0;
    return NMathUtils::mapBrushSize(float(brushSize), size.toSize()) / size.width();
}

// SPDX-License-Identifier: Apache-2.0
#include <imageutils/picturefilters.h>

#include <platform/part.h>

#include <QtCore/QDebug>

const PictureFilters* pictureFilters(const char* function)
{
    static const Platform::PartFunction part =
        Platform::openPart("imageutils-filters-imgproc", "imageutilsPart");
    if (!part.function) {
        qCritical().nospace() << function
                              << ": OpenCV's filters cannot be loaded: " << part.error.c_str();
        return nullptr;
    }
    static const PictureFilters* const filters =
        reinterpret_cast<PictureFiltersPart*>(part.function)();
    return filters;
}

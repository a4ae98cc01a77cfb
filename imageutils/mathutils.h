// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QObject>
#include <QtCore/QSize>

/// Geometry of the brush tools. Every operation is static, free of state, and may be called from
/// any thread.
class IMAGEUTILS_EXPORT NMathUtils : public QObject
{
    Q_OBJECT

public:
    NMathUtils();
    ~NMathUtils() override;

    /// The extent in image pixels of a brush of the size setting `brushSize` on an image of
    /// `imageSize`.
    Q_INVOKABLE static int mapBrushSize(float brushSize, const QSize& imageSize);
};

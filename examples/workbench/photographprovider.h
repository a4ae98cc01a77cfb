// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQuick/QQuickImageProvider>

/// Gives the window the photograph at the percent-encoded path after "image://photograph/", before
/// or after its export, read as the job reads it, fitted into the wanted size and in sRGB. Works on
/// Qt's thread for images, never on that of the window.
class PhotographProvider : public QQuickImageProvider
{
public:
    /// Files whose header claims more than `maxPixels` are not shown.
    explicit PhotographProvider(qint64 maxPixels);

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    const qint64 m_maxPixels;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColorTransform>
#include <QtGui/QImage>

#include <optional>

/// The conversion of pictures in sRGB to the colours of the monitor that the window is on.
class MonitorColours
{
public:
    /// The conversion of now. The monitor is asked once and then whenever `update` was called. Only
    /// on the thread of the window.
    static MonitorColours current();

    /// The window has moved, or its monitor has changed.
    static void update();

    /// `image` as the monitor needs it; on any thread.
    QImage converted(const QImage& image) const;

private:
    std::optional<QColorTransform> m_transform; ///< nothing where pictures stay as they are
};

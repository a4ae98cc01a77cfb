// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtGui/QColorSpace>

/// The colours of the monitor, for `OSUtils::getMonitorColorSpace`, which only calls this class:
/// the class and its slot are part of the meta-object interface. Not exported.
class WinUtils : public QObject
{
    Q_OBJECT

public:
    WinUtils();
    ~WinUtils() override;

public Q_SLOTS:
    /// The colour space of the monitor that shows the active window; sRGB if it is not known.
    static QColorSpace getMonitorColorSpace();
};

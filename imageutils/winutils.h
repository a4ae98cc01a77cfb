// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtGui/QColorSpace>

/// What `OSUtils` asks of the window system. Not exported: applications reach it through `OSUtils`.
class WinUtils : public QObject
{
    Q_OBJECT

public:
    WinUtils();
    ~WinUtils() override;

public Q_SLOTS:
    /// The colour space of the monitor under the active window, sRGB when it cannot be told.
    static QColorSpace getMonitorColorSpace();
};

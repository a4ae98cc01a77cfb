// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QThread>
#include <QtGui/QGuiApplication>

/// Whether Qt's user interface may be asked here: a `QGuiApplication` lives, and this is its
/// thread. Without one, or after its end, Qt's own calls crash.
inline bool onGuiThread()
{
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return application && application->thread() == QThread::currentThread();
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QThread>
#include <QtGui/QGuiApplication>

/// Whether functions of Qt's GUI can be called here: a `QGuiApplication` exists, and this is its
/// thread. Without an application object, or after its end, these functions crash.
inline bool onGuiThread()
{
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return application && application->thread() == QThread::currentThread();
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "options.h"
#include "sources.h"

#include <imageutils/osutils.h>

#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtQml/QQmlApplicationEngine>

#include <memory>

class QQuickWindow;
class WorkbenchModel;

/// The window of the program. Its place, its state and the settings are those of the run before.
class Window : public QObject
{
    Q_OBJECT

public:
    /// Lists `sources`. Needs a `QGuiApplication`.
    Window(const Options& options, const QList<Source>& sources);
    ~Window() override;

    /// The window; null when QML could not make it, and has said why.
    QQuickWindow* window() const { return m_window; }

    /// Keeps the place and the settings for the next run.
    void keep() const;

    WorkbenchModel& photographs() { return *m_photographs; }

private:
    void restorePlace();
    void watchPlace();
    void notePlace();
    void keepPlace() const;

    QTranslator m_translator;
    QTranslator m_qtTranslator;
    std::unique_ptr<WorkbenchModel> m_photographs;
    QQmlApplicationEngine m_engine;
    std::unique_ptr<OSUtils> m_desktop; ///< made when there is a window, of which it reads
    QQuickWindow* m_window = nullptr;   ///< the engine's
    QTimer m_settled;                   ///< since the window was moved
    QRect m_place;                      ///< while it is not maximised; empty while unknown
};

// SPDX-License-Identifier: Apache-2.0
#include "window.h"

#include "headless.h"
#include "interruption.h"
#include "monitorcolours.h"
#include "runwindow.h"
#include "workbenchmodel.h"
#include "worker.h"

#include <QtCore/QDir>
#include <QtCore/QLibraryInfo>
#include <QtCore/QSettings>
#include <QtCore/QThreadPool>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtQuick/QQuickWindow>

void qml_register_types_Workbench(); // written by CMake; called so that the linker keeps it

namespace {

QString placeKey() { return QStringLiteral("window/geometry"); }
QString maximisedKey() { return QStringLiteral("window/maximised"); }

/// `place` as far as it is on a screen, which may be smaller than the one of the run before.
QRect onScreen(const QRect& place)
{
    const QScreen* const screen = QGuiApplication::screenAt(place.center());
    const QRect available =
        (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    QRect result(place.topLeft(), place.size().boundedTo(available.size()));
    result.moveLeft(
        qBound(available.left(), result.left(), available.right() - result.width() + 1));
    result.moveTop(qBound(available.top(), result.top(), available.bottom() - result.height() + 1));
    return result;
}

} // namespace

Window::Window(const Options& options, const QList<Source>& sources)
{
    qml_register_types_Workbench();
    if (m_translator.load(QLocale(), QStringLiteral("workbench"), QStringLiteral("_"),
                          QStringLiteral(":/i18n")))
        QCoreApplication::installTranslator(&m_translator);
    if (m_qtTranslator.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                            QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_qtTranslator);
    m_photographs = std::make_unique<WorkbenchModel>(options, sources, memoryFor(options) / 2);
    m_engine.addImportPath(QStringLiteral("qrc:/qml"));
    m_engine.setInitialProperties(
        {{QStringLiteral("photographs"), QVariant::fromValue(m_photographs.get())}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qml/Workbench/Main.qml")));
    if (!m_engine.rootObjects().isEmpty())
        m_window = qobject_cast<QQuickWindow*>(m_engine.rootObjects().first());
    if (!m_window)
        return;
    m_desktop = std::make_unique<OSUtils>();
    restorePlace();
    watchPlace();
}

/// The QML objects go first: they show what belongs to this object.
Window::~Window()
{
    if (!m_window)
        return;
    keep();
    delete m_window;
    // Items that QML has only marked for deletion point to what is destroyed next.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QThreadPool::globalInstance()->waitForDone(); // it converts pictures for the window
}

void Window::keep() const
{
    keepPlace();
    m_photographs->settings()->keep();
}

void Window::restorePlace()
{
    const QSettings settings;
    const QRect place = settings.value(placeKey()).toRect();
    if (!place.isEmpty()) {
        m_place = onScreen(place);
        m_desktop->setGeometry(m_place);
    }
    if (settings.value(maximisedKey()).toBool())
        m_window->showMaximized();
}

/// A window that is being maximised has its new size before it has the state. Its place counts when
/// it has not changed for a while.
void Window::watchPlace()
{
    using namespace std::chrono_literals;
    m_settled.setSingleShot(true);
    m_settled.setInterval(200ms);
    connect(&m_settled, &QTimer::timeout, this, &Window::notePlace);
    const auto restart = [this] { m_settled.start(); };
    connect(m_window, &QWindow::xChanged, this, restart);
    connect(m_window, &QWindow::yChanged, this, restart);
    connect(m_window, &QWindow::widthChanged, this, restart);
    connect(m_window, &QWindow::heightChanged, this, restart);
    connect(m_window, &QWindow::screenChanged, this, &MonitorColours::update);
}

void Window::notePlace()
{
    if (m_window->isVisible() && m_window->windowStates() == Qt::WindowNoState)
        m_place = m_desktop->geometry();
}

/// Settings that cannot be written are no failure: the next window opens at its usual place. A user
/// without a home has none to write to; Qt would take the root folder.
void Window::keepPlace() const
{
    if (QDir::home().isRoot())
        return;
    QSettings settings;
    settings.setValue(maximisedKey(), m_window->windowStates().testFlag(Qt::WindowMaximized));
    if (!m_place.isEmpty())
        settings.setValue(placeKey(), m_place);
}

int runWindow(const Options& options, const QList<Source>& sources)
{
    using namespace std::chrono_literals;
    const Window window(options, sources);
    if (!window.window())
        return 1;
    Interruption::install();
    QTimer poll; // a signal handler may do nothing but set a number
    QObject::connect(&poll, &QTimer::timeout, qGuiApp, [&window] {
        if (!Interruption::isWanted())
            return;
        Worker::endAll(); // removes what they have not finished
        window.keep();
        Interruption::obey(); // the window's objects would take longer to go than all of this
    });
    poll.start(20ms);
    QGuiApplication::exec();
    Worker::endAll(); // all at once; their owners would end one after the other
    return 0;
}

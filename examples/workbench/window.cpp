// SPDX-License-Identifier: Apache-2.0
#include "window.h"

#include "headless.h"
#include "interruption.h"
#include "photographprovider.h"
#include "workbenchmodel.h"

#include <imageutils/osutils.h>

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

namespace {

QString geometryKey() { return QStringLiteral("window/geometry"); }

/// Puts the window where it was at the end of the run before, unless no screen is there any more.
void restoreGeometry(OSUtils& desktop)
{
    const QRect geometry = QSettings().value(geometryKey()).toRect();
    if (!geometry.isEmpty())
        desktop.setGeometry(geometry);
}

/// Settings that cannot be written are no failure: the next window opens at its usual place. A user
/// without a home has none to write to; Qt would take the root folder.
void keepGeometry(OSUtils& desktop)
{
    if (!QDir::home().isRoot())
        QSettings().setValue(geometryKey(), desktop.geometry());
}

} // namespace

int runWindow(const Options& options, const QList<Source>& sources)
{
    using namespace std::chrono_literals;
    const qint64 memoryShare = memoryFor(options) / 2; // one photograph, and one that is shown
    WorkbenchModel model(options, sources, memoryShare);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qml"));
    engine.addImageProvider(
        QStringLiteral("photograph"),
        new PhotographProvider(options, memoryShare)); // the engine's from here on
    engine.setInitialProperties({{QStringLiteral("photographs"), QVariant::fromValue(&model)}});
    engine.load(QUrl(QStringLiteral("qrc:/qml/Workbench/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1; // the engine has said why
    OSUtils desktop;
    restoreGeometry(desktop);
    model.start();
    Interruption::install();
    QTimer poll; // a signal handler may do nothing but set a number
    QObject::connect(&poll, &QTimer::timeout, qGuiApp, [] {
        if (Interruption::isWanted())
            QGuiApplication::quit();
    });
    poll.start(50ms);
    QGuiApplication::exec();
    keepGeometry(desktop);
    return model.failed() > 0 ? 1 : 0;
}

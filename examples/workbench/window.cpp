// SPDX-License-Identifier: Apache-2.0
#include "window.h"

#include "photographprovider.h"
#include "workbenchmodel.h"

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

int runWindow(const Options& options, const QList<Source>& sources)
{
    WorkbenchModel model(options, sources);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qml"));
    engine.addImageProvider(QStringLiteral("photograph"),
                            new PhotographProvider(options.maxPixels)); // the engine's from here on
    engine.setInitialProperties({{QStringLiteral("photographs"), QVariant::fromValue(&model)}});
    engine.load(QUrl(QStringLiteral("qrc:/qml/Workbench/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1; // the engine has said why
    model.start();
    QGuiApplication::exec();
    return model.failed() > 0 ? 1 : 0;
}

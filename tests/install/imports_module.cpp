// SPDX-License-Identifier: Apache-2.0
//
// imports_module DOCUMENT [IMPORT_PATH…]
//
// Creates the document's object and asks it for the extension that it found through the QML module.
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <memory>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    const QStringList arguments = QGuiApplication::arguments();
    for (const QString& path : arguments.mid(2))
        engine.addImportPath(path);
    QQmlComponent component(&engine, QUrl::fromLocalFile(arguments.value(1)));
    const std::unique_ptr<QObject> object(component.create());
    if (!object) {
        qCritical() << component.errors();
        return 1;
    }
    return object->property("extension").toString() == "tiff" ? 0 : 2;
}

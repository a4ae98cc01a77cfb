// SPDX-License-Identifier: Apache-2.0
#include <QtQml/QQmlEngine>
#include <QtQuickTest/quicktest.h>

void qml_register_types_Workbench(); // written by CMake

/// Lets the tests of the components, tst_NAME.qml, import the module of the window.
class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        qml_register_types_Workbench();
        engine->addImportPath(QStringLiteral("qrc:/qml"));
    }
};

QUICK_TEST_MAIN_WITH_SETUP(components, Setup)
#include "tst_workbench_components.moc"

// SPDX-License-Identifier: Apache-2.0
#include "workbenchmodel.h"
#include "worker.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuickTest/quicktest.h>

#include <memory>
#include <vector>

void qml_register_types_Workbench(); // written by CMake

/// Lets the tests of the components, tst_NAME.qml, import the module of the window, and gives them
/// two photographs.
class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable()
    {
        Worker::setProgram(QStringLiteral(WORKBENCH_PROGRAM));
        for (const char* const name : {"a.png", "b.png"}) {
            QImage image(60, 40, QImage::Format_RGB32);
            image.fill(Qt::darkGreen);
            m_sources.append({m_folder.filePath(QLatin1String(name)), {}});
            // A quality of 100 is a PNG file without compression, so a.png is the larger one.
            image.save(m_sources.last().path, nullptr, m_sources.size() == 1 ? 100 : -1);
        }
        qml_register_types_Workbench();
    }

    void qmlEngineAvailable(QQmlEngine* engine)
    {
        m_models.push_back(std::make_unique<WorkbenchModel>(Options{}, m_sources, 64 << 20));
        engine->addImportPath(QStringLiteral("qrc:/qml"));
        engine->rootContext()->setContextProperty(QStringLiteral("photographsOfTest"),
                                                  m_models.back().get());
    }

    void cleanupTestCase() { m_models.clear(); }

private:
    QTemporaryDir m_folder;
    QList<Source> m_sources;
    std::vector<std::unique_ptr<WorkbenchModel>> m_models; // they outlive their engines
};

QUICK_TEST_MAIN_WITH_SETUP(components, Setup)
#include "tst_workbench_components.moc"

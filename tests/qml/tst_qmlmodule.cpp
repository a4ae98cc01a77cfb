// SPDX-License-Identifier: Apache-2.0
#include <imageutils/qmlmodule.h>

#include <support/files.h>
#include <support/log.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExpression>
#include <QtTest/QTest>

#include <memory>

/// The QML module of the shared library, imported by a program that calls nothing else of
/// the library.
class QmlModuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void carriesItsQmldir();
    void importsAsOneVersion();
    void evaluates_data();
    void evaluates();
    void nothingIsWritable();

private:
    QVariant evaluate(const QString& expression); // the answer, or the error as text

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_elements;
    QTemporaryDir m_folder;
};

void QmlModuleTest::initTestCase()
{
    qml_register_types_NImageUtils(); // again, after the library itself
    TestSupport::LogCapture log;      // the constructor of OSUtils describes the screens
    TestSupport::writePicture(m_folder.filePath("a.jpg"), 40, 30, 6);
    m_engine.rootContext()->setContextProperty("folder", m_folder.path());
    QQmlComponent component(&m_engine);
    component.setData("import QtQml\nimport NImageUtils 1.0\nQtObject { property var images: "
                      "NImageUtils {}\n property var os: OSUtils {} }",
                      QUrl());
    m_elements.reset(component.create());
    QVERIFY2(m_elements, qPrintable(component.errorString()));
}

QVariant QmlModuleTest::evaluate(const QString& expression)
{
    QQmlExpression question(m_engine.rootContext(), m_elements.get(), expression);
    const QVariant answer = question.evaluate();
    return question.hasError() ? question.error().description() : answer;
}

void QmlModuleTest::carriesItsQmldir()
{
    QFile file(":/NImageUtils/qmldir");
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("module NImageUtils\r\nlinktarget imageutilsplugin\r\n"
                        "optional plugin imageutilsplugin\r\nclassname NImageUtilsPlugin\r\n"
                        "typeinfo imageutils.qmltypes\r\nprefer :/NImageUtils/\r\n\r\n"));
}

void QmlModuleTest::importsAsOneVersion()
{
    const auto imports = [this](const QByteArray& version, const QByteArray& type) {
        QQmlComponent component(&m_engine);
        component.setData("import NImageUtils" + version + "\n" + type + " {}", QUrl());
        return std::unique_ptr<QObject>(component.create()) != nullptr;
    };
    QVERIFY(imports(" 1.0", "NImageUtils") && imports("", "NImageUtils"));
    QVERIFY(!imports(" 1.1", "NImageUtils") && !imports(" 2.0", "NImageUtils"));
    QVERIFY(!imports(" 1.0", "NMathUtils") && !imports(" 1.0", "WinUtils"));
}

void QmlModuleTest::evaluates_data()
{
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* expression, const QVariant& expected) {
        QTest::newRow(expression) << expected;
    };
    row("images.highConfidenceThreshold", 0.9700000286102295);
    row("images.lowConfidenceThreshold", 0.30000001192092896);
    row("images.getExportExtension('dng')", "tiff");
    row("images.getExportExtension('dng', 'png')", "png");
    row("images.getExportExtension('nef', 'dng', true)", "tiff");
    row("images.urlToString('file:///a%20b.png')", "/a b.png");
    row("images.stringToUrl('/a b.png').toString()", "file:///a b.png");
    row("['Filename', 'BaseName', 'Path', 'Extension'].map(n => images['get' + "
        "n]('/a/b.c.png')).join()",
        "b.c.png,b.c,/a,png");
    row("images.isSupportedFile('a.JPG') && !images.isSupportedFile('a.txt')", true);
    row("images.isRawFile('a.nef') && !images.isRawFile('a.jpg')", true);
    row("images.isRawExt('NEF') && !images.isRawExt('jpg')", true);
    row("images.arePathsEqual('/x', '/x')", true);
    row("images.adjustPathWhenOverwriting(folder + '/a.jpg').slice(folder.length)", "/a-2.jpg");
    row("images.supportedFileFormats().length - images.rawFileFormats().length - "
        "images.nonRawFileFormats().length",
        0);
    row("images.imageSize(folder + '/a.jpg').width", 30);
    row("images.isValidVariant(0) && !images.isValidVariant(undefined)", true);
    row("os.devicePixelRatio", 1.0);
}

void QmlModuleTest::evaluates()
{
    QFETCH(QVariant, expected);
    const QVariant answer = evaluate(QString::fromUtf8(QTest::currentDataTag()));
    QVERIFY2(answer == expected, qPrintable(answer.toString()));
}

void QmlModuleTest::nothingIsWritable()
{
    for (const char* const name :
         {"maxWidth", "maxHeight", "devicePixelRatio", "machineId", "username"})
        QVERIFY(evaluate(QStringLiteral("os.%1 = 5").arg(name)).toString().contains("read-only"));
}

QTEST_MAIN(QmlModuleTest)
#include "tst_qmlmodule.moc"

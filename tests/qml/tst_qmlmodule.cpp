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

/// The module as a QML document meets it, in the shared library: this program calls nothing else of
/// the library.
class QmlModuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void carriesItsQmldir();
    void imports_data();
    void imports();
    void evaluates_data();
    void evaluates();
    void nothingIsWritable_data();
    void nothingIsWritable();
    void registersTwice();

private:
    QVariant evaluate(const QString& expression, QString* error = nullptr);

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_elements;
    QTemporaryDir m_folder;
};

void QmlModuleTest::initTestCase()
{
    TestSupport::LogCapture log; // the constructor of OSUtils describes the screens
    TestSupport::writePicture(m_folder.filePath("a.jpg"), 40, 30, 6);
    m_engine.rootContext()->setContextProperty("folder", m_folder.path());
    QQmlComponent component(&m_engine);
    component.setData("import QtQml\nimport NImageUtils 1.0\n"
                      "QtObject { property NImageUtils images: NImageUtils {}\n property OSUtils "
                      "os: OSUtils {} }",
                      QUrl());
    m_elements.reset(component.create());
    QVERIFY2(m_elements, qPrintable(component.errorString()));
}

QVariant QmlModuleTest::evaluate(const QString& expression, QString* error)
{
    QQmlExpression question(m_engine.rootContext(), m_elements.get(), expression);
    const QVariant answer = question.evaluate();
    if (error)
        *error = question.error().description();
    return answer;
}

void QmlModuleTest::carriesItsQmldir()
{
    QFile file(":/NImageUtils/qmldir");
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("module NImageUtils\r\nlinktarget imageutilsplugin\r\n"
                        "optional plugin imageutilsplugin\r\nclassname NImageUtilsPlugin\r\n"
                        "typeinfo imageutils.qmltypes\r\nprefer :/NImageUtils/\r\n\r\n"));
    QCOMPARE(file.size(), 167);
}

void QmlModuleTest::imports_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<bool>("works");
    QTest::newRow("1.0") << QByteArray("import NImageUtils 1.0\nNImageUtils {}") << true;
    QTest::newRow("any version") << QByteArray("import NImageUtils\nNImageUtils {}") << true;
    QTest::newRow("1.1") << QByteArray("import NImageUtils 1.1\nNImageUtils {}") << false;
    QTest::newRow("2.0") << QByteArray("import NImageUtils 2.0\nNImageUtils {}") << false;
    QTest::newRow("NMathUtils") << QByteArray("import NImageUtils 1.0\nNMathUtils {}") << false;
    QTest::newRow("WinUtils") << QByteArray("import NImageUtils 1.0\nWinUtils {}") << false;
}

void QmlModuleTest::imports()
{
    QFETCH(QByteArray, document);
    QFETCH(bool, works);
    QQmlComponent component(&m_engine);
    component.setData(document, QUrl());
    QCOMPARE(std::unique_ptr<QObject>(component.create()) != nullptr, works);
}

void QmlModuleTest::evaluates_data()
{
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* expression, const QVariant& expected) {
        QTest::newRow(expression) << expected;
    };
    row("images.highConfidenceThreshold", 0.9700000286102295);
    row("images.lowConfidenceThreshold", 0.30000001192092896);
    row("images.getExportExtension('dng')",
        evaluate("images.getExportExtension('dng', 'tiff', false)"));
    row("images.getExportExtension('dng', 'png')", "png");
    row("images.getExportExtension('nef', 'dng', true)", "tiff");
    row("images.urlToString('file:///a%20b.png')", "/a b.png");
    row("images.stringToUrl('/a b.png').toString()", "file:///a b.png");
    row("images.getFilename('/a/b.c.png')", "b.c.png");
    row("images.getBaseName('/a/b.c.png')", "b.c");
    row("images.getPath('/a/b.c.png')", "/a");
    row("images.getExtension('/a/b.c.png')", "png");
    row("images.isSupportedFile('a.JPG') && !images.isSupportedFile('a.txt')", true);
    row("images.isRawFile('a.nef') && !images.isRawFile('a.jpg')", true);
    row("images.isRawExt('NEF') && !images.isRawExt('jpg')", true);
    row("images.arePathsEqual('/x', '/x')", true);
    row("images.adjustPathWhenOverwriting(folder + '/a.jpg') === folder + '/a-2.jpg'", true);
    row("images.supportedFileFormats().length === images.rawFileFormats().length + "
        "images.nonRawFileFormats().length",
        true);
    row("images.imageSize(folder + '/a.jpg').width", 30);
    row("images.isValidVariant(0) && !images.isValidVariant(undefined)", true);
    row("os.devicePixelRatio", 1.0);
}

void QmlModuleTest::evaluates()
{
    QFETCH(QVariant, expected);
    QString error;
    const QVariant answer = evaluate(QString::fromUtf8(QTest::currentDataTag()), &error);
    QCOMPARE(error, QString());
    QCOMPARE(answer.toString(), expected.toString());
    QCOMPARE(answer, expected);
}

void QmlModuleTest::nothingIsWritable_data()
{
    QTest::addColumn<QString>("property");
    for (const char* const name :
         {"maxWidth", "maxHeight", "devicePixelRatio", "machineId", "username"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void QmlModuleTest::nothingIsWritable()
{
    QFETCH(QString, property);
    QString error;
    evaluate(QStringLiteral("os.%1 = 5").arg(property), &error);
    QVERIFY2(error.contains("read-only"), qPrintable(error));
}

void QmlModuleTest::registersTwice()
{
    qml_register_types_NImageUtils();
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import NImageUtils 1.0\nNImageUtils {}", QUrl());
    QVERIFY(std::unique_ptr<QObject>(component.create()));
}

QTEST_MAIN(QmlModuleTest)
#include "tst_qmlmodule.moc"

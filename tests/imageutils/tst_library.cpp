// SPDX-License-Identifier: Apache-2.0
#include <QtCore/QProcess>
#include <QtTest/QTest>

/// Loads the shared library at run time in a program that reports the order in which its objects
/// are constructed and destroyed.
class LibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void buildsInOrderAndTakesDownInReverse();
};

void LibraryTest::buildsInOrderAndTakesDownInReverse()
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QStringLiteral(LIBRARY_ORDER), {QStringLiteral(IMAGEUTILS_LIBRARY)});
    QVERIFY(program.waitForFinished() && program.exitStatus() == QProcess::NormalExit &&
            program.exitCode() == 0);
    QCOMPARE(
        QString::fromUtf8(program.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts),
        QStringList({"module registered, cache not built", "resource registered, cache not built",
                     "alphabet built, cache not built", "loaded, cache of 100, qmldir of 167 bytes",
                     "resource unregistered", "module unregistered"}));
}

QTEST_GUILESS_MAIN(LibraryTest)
#include "tst_library.moc"

// SPDX-License-Identifier: Apache-2.0
#include <QtCore/QProcess>
#include <QtTest/QTest>

/// Loads the shared library at run time in a program that reports the order in which its objects
/// are constructed and destroyed.
class LibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constructsInOrderAndDestroysInReverse();
};

void LibraryTest::constructsInOrderAndDestroysInReverse()
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QStringLiteral(LIBRARY_ORDER), {QStringLiteral(IMAGEUTILS_LIBRARY)});
    QVERIFY(program.waitForFinished() && program.exitStatus() == QProcess::NormalExit &&
            program.exitCode() == 0);
    const QStringList constructed = {
        "module registered, cache not built", "resource registered, cache not built",
        "alphabet built, cache not built", "loaded, cache of 100, qmldir of 167 bytes"};
    const QStringList destroyed = {"resource unregistered", "module unregistered"};
    QCOMPARE(QString::fromUtf8(program.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts),
             LIBRARY_IS_UNLOADED ? constructed + destroyed + QStringList("closed, unmapped")
                                 : constructed + QStringList("closed, still mapped") + destroyed);
}

QTEST_GUILESS_MAIN(LibraryTest)
#include "tst_library.moc"

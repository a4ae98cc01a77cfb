// SPDX-License-Identifier: Apache-2.0
#include <imageutils/diskutils.h>
#include <imageutils/osutils.h>

#include <timing/elapsedtime.h>

#include <QtCore/QDir>
#include <QtTest/QTest>

#include <utility>

// This program brings a timing library of its own, whose clock makes one step and whose durations
// count runs of three nanoseconds: what the application's library may look like.
namespace {
qint64 s_now = 1000;
qint64 s_step = 0;
} // namespace

ElapsedTime::ElapsedTime(qint64 nanoseconds, unsigned int runs)
    : m_nanosecondsPerRun(quint64(nanoseconds) / runs / 3)
{}

ElapsedTime::ElapsedTime(quint64 count, ElapsedTimeUnit unit)
    : m_nanosecondsPerRun(unit == ElapsedTimeUnit::Milliseconds ? count * 1000000 / 3 : 0)
{}

ElapsedTime::operator QString() const { return QStringLiteral("%1 x 3").arg(m_nanosecondsPerRun); }

qint64 ElapsedTime::monotonicNanoseconds() { return std::exchange(s_now, s_now + s_step); }

/// The timed disk query, against a clock that steps.
class DiskUtilsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(".*")); }
    void aSlowQueryIsLogged_data();
    void aSlowQueryIsLogged();
};

void DiskUtilsTest::aSlowQueryIsLogged_data()
{
    QTest::addColumn<qint64>("step");
    QTest::addColumn<QString>("path");
    for (const QString& path : {QDir::tempPath(), QStringLiteral("/missing")}) {
        QTest::addRow("at the limit, %s", qPrintable(path)) << qint64(10000000) << path;
        QTest::addRow("beyond, %s", qPrintable(path)) << qint64(10000003) << path;
    }
}

void DiskUtilsTest::aSlowQueryIsLogged()
{
    QFETCH(qint64, step);
    QFETCH(QString, path);
    s_step = step;
    if (step > 10000000)
        QTest::ignoreMessage(QtWarningMsg, "Free disk space check took too long: \"3333334 x 3\"");
    const quint64 space = DiskUtils::getDiskSpace(path);
    if (path == QLatin1String("/missing")) {
        QCOMPARE(space, ~quint64(0));
        QCOMPARE(OSUtils::freeSpace(path), ~quint64(0));
        QCOMPARE(OSUtils::storageName(path), QString());
        return;
    }
    s_step = 0;
    QTRY_COMPARE(DiskUtils::getDiskSpace(path), OSUtils::freeSpace(path)); // others write, too
    QVERIFY(space > 0);
}

QTEST_GUILESS_MAIN(DiskUtilsTest)
#include "tst_diskutils.moc"

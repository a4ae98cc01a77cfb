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
    void aSlowQueryIsLogged();
};

void DiskUtilsTest::aSlowQueryIsLogged()
{
    s_step = 10000000;
    QCOMPARE(DiskUtils::getDiskSpace("/missing"), ~quint64(0));
    s_step = 10000003;
    QTest::ignoreMessage(QtWarningMsg, "Free disk space check took too long: \"3333334 x 3\"");
    QCOMPARE(DiskUtils::getDiskSpace("/missing"), ~quint64(0));
    QCOMPARE(OSUtils::storageName("/missing"), QString());
    s_step = 0; // and again until they agree: others write, too
    QTRY_COMPARE(DiskUtils::getDiskSpace(QDir::tempPath()), OSUtils::freeSpace(QDir::tempPath()));
    QVERIFY(OSUtils::freeSpace(QDir::tempPath()) > 0);
}

QTEST_GUILESS_MAIN(DiskUtilsTest)
#include "tst_diskutils.moc"

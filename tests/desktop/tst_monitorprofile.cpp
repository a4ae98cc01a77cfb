// SPDX-License-Identifier: Apache-2.0
//
// Profiles on the root window of a real X server with two monitors, L and R, and through a colour
// service of ours that knows R.
#include <imageutils/osutils.h>
#include <platform/monitorprofile.h>
#include <support/log.h>

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QWindow>
#include <QtTest/QtTest>

#include <thread>

using namespace std::chrono_literals;

class MonitorProfileTest : public QObject
{
    Q_OBJECT

private:
    const QByteArray m_p3 = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    const QByteArray m_adobe = QColorSpace(QColorSpace::AdobeRgb).iccProfile();
    const QTemporaryDir m_folder;
    const QString m_file = m_folder.filePath("colour service's.icc");
    QProcess m_bus, m_colord;
    QWindow m_window;

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
    }

    static void setProperty(const QString& name, const QByteArray& value, int bits = 8)
    {
        const QString path = QDir::temp().filePath("property");
        write(path, value);
        QCOMPARE(QProcess::execute(SET_ROOT_PROPERTY, {name, path, QString::number(bits)}), 0);
    }

    void expect(const QByteArray& profile, const QString& warning)
    {
        TestSupport::LogCapture log;
        const QColorSpace space = OSUtils::getMonitorColorSpace();
        QCOMPARE(space, profile.isEmpty() ? QColorSpace(QColorSpace::SRgb)
                                          : QColorSpace::fromIccProfile(profile));
        QStringList lines = warning.isEmpty() ? QStringList() : QStringList("warning: " + warning);
        QDebug(&lines.emplaceBack("info: ")).noquote()
            << "Reading display/monitor colorspace as: " << space;
        lines.last().chop(1);
        QCOMPARE(log.takeTexts(), lines);
    }

    bool startColord(const QString& mood)
    {
        m_colord.kill();
        m_colord.waitForFinished();
        m_colord.start(FAKE_SERVICE, {"system", "org.freedesktop.ColorManager", mood});
        return m_colord.waitForReadyRead();
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QString address = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"); // of our world
        m_bus.start("dbus-daemon",
                    {"--session", "--nofork", "--print-address", "--address", address});
        QVERIFY(m_bus.waitForReadyRead());
        QVERIFY(startColord(m_file));
        QProcess::execute("xrandr", {"--setmonitor", "*L", "1280/338x800/211+0+0", "screen"});
        QProcess::execute("xrandr", {"--setmonitor", "R", "1024/270x768/203+1280+0", "none"});
        m_window.setGeometry(1400, 100, 300, 200);
        m_window.show();
        m_window.requestActivate();
        QTRY_COMPARE(QGuiApplication::focusWindow(), &m_window);
        QTRY_COMPARE(m_window.screen()->name(), "R");
        setProperty("_ICC_PROFILE", m_adobe);
    }
    void cleanupTestCase()
    {
        for (QProcess* process : {&m_colord, &m_bus}) {
            process->kill();
            process->waitForFinished();
        }
    }

    void readsTheProfileOfTheWindowsMonitor_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<int>("bits");
        QTest::addColumn<QByteArray>("file"); // of the colour service; without bytes there is none
        QTest::addColumn<QByteArray>("profile");
        QTest::addColumn<QString>("warning");
        const QByteArray none, other = QByteArray(m_p3).replace("acsp", "ACSP");
        const QByteArray endless = m_p3 + QByteArray(17 << 20, 'x'), shorter = m_p3.left(127);
        const QByteArray junk = QByteArray(36, 'x') + "acsp" + QByteArray(100, 'x');
        const QString noHeader = "Color Profile Header not found";
        const QString noFile = "Color Profile could not be opened";
        const QString invalid = "Color Profile invalid 188";
        QTest::newRow("property") << m_p3 << 8 << m_adobe << m_p3 << "";
        QTest::newRow("numbers") << m_p3 << 32 << m_adobe << m_adobe << "";
        QTest::newRow("endless") << endless << 8 << m_adobe << m_adobe << "";
        QTest::newRow("short") << shorter << 8 << m_adobe << none << noHeader;
        QTest::newRow("other file") << other << 8 << m_adobe << none << noHeader;
        QTest::newRow("junk") << junk << 8 << m_adobe << junk << invalid;
        QTest::newRow("service") << none << 8 << m_adobe << m_adobe << "";
        QTest::newRow("service, no file") << none << 8 << none << none << noFile;
    }
    void readsTheProfileOfTheWindowsMonitor()
    {
        QFETCH(QByteArray, property);
        QFETCH(int, bits);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, profile);
        QFETCH(QString, warning);
        setProperty("_ICC_PROFILE_1", property, bits);
        QFile::remove(m_file);
        if (!file.isEmpty())
            write(m_file, file);
        expect(profile, warning);
    }

    void hangingServiceIsLeftInTime()
    {
        setProperty("_ICC_PROFILE_1", {});
        QVERIFY(startColord("hangs"));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(Platform::monitorProfile("R", 200ms).step,
                 Platform::MonitorProfileStep::NoProfile);
        QVERIFY(timer.elapsed() < 10'000); // the bus itself would wait for 25 s
    }

    void otherThreadsGetNoContext()
    {
        std::thread([this] {
            expect({}, "Active Window does not contain a device context");
        }).join();
    }

    void readsThePrimaryMonitorWithoutAWindow()
    {
        m_window.hide();
        QTRY_VERIFY(!QGuiApplication::focusWindow());
        expect(m_adobe, "");
        setProperty("_ICC_PROFILE", {});
        expect({}, "GetICMProfile failed");
    }
};

QTEST_MAIN(MonitorProfileTest)
#include "tst_monitorprofile.moc"

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
#include <xcb/xcb.h>

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

    /// Sets a property of the root window, with format 0 as text.
    static void setProperty(const QByteArray& name, const QByteArray& value, int format)
    {
        auto* const x = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
        const auto atom =
            xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, uint16_t(name.size()), name), nullptr)
                ->atom;
        xcb_delete_property(x, root, atom);
        for (qsizetype i = 0; i < value.size(); i += 200'000) // what one request can carry
            xcb_change_property(
                x, XCB_PROP_MODE_APPEND, root, atom,
                format == 0 ? XCB_ATOM_STRING : XCB_ATOM_CARDINAL, format == 32 ? 32 : 8,
                uint32_t(std::min(value.size() - i, 200'000ll)) / (format == 32 ? 4 : 1),
                value.data() + i);
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
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        QVERIFY(m_bus.waitForReadyRead());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_bus.readLine().trimmed());
        QVERIFY(startColord(m_file));
        QProcess::execute("xrandr", {"--setmonitor", "*L", "1280/338x800/211+0+0", "screen"});
        QProcess::execute("xrandr", {"--setmonitor", "R", "1024/270x768/203+1280+0", "none"});
        m_window.setGeometry(1400, 100, 300, 200);
        m_window.show();
        m_window.requestActivate();
        QTRY_COMPARE(QGuiApplication::focusWindow(), &m_window);
        QTRY_COMPARE(m_window.screen()->name(), "R");
        setProperty("_ICC_PROFILE", m_adobe, 8);
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
        QTest::addColumn<int>("format");
        QTest::addColumn<QByteArray>("file"); // of the colour service; "" is none
        QTest::addColumn<QByteArray>("profile");
        QTest::addColumn<QString>("warning");
        const QByteArray noProfile = QByteArray(m_p3).replace("acsp", "ACSP"), none;
        const QByteArray junk = QByteArray(36, 'x') + "acsp" + QByteArray(100, 'x');
        const QString header = "Color Profile Header not found";
        QTest::newRow("property") << m_p3 << 8 << m_adobe << m_p3 << "";
        QTest::newRow("text") << m_p3 << 0 << m_adobe << m_adobe << "";
        QTest::newRow("32 bits") << m_p3 << 32 << m_adobe << m_adobe << "";
        QTest::newRow("endless") << m_p3 + QByteArray(17 << 20, 'x') << 8 << m_adobe << m_adobe
                                 << "";
        QTest::newRow("short") << m_p3.left(127) << 8 << m_adobe << none << header;
        QTest::newRow("no profile") << noProfile << 8 << m_adobe << none << header;
        QTest::newRow("junk") << junk << 8 << m_adobe << junk << "Color Profile invalid 188";
        QTest::newRow("service only") << none << 8 << m_adobe << m_adobe << "";
        QTest::newRow("service, short file") << none << 8 << m_p3.left(127) << none << header;
        QTest::newRow("service, no file")
            << none << 8 << none << none << "Color Profile could not be opened";
    }
    void readsTheProfileOfTheWindowsMonitor()
    {
        QFETCH(QByteArray, property);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, profile);
        QFETCH(QString, warning);
        QFETCH(int, format);
        setProperty("_ICC_PROFILE_1", property, format);
        QFile::remove(m_file);
        if (QFile writer(m_file); !file.isEmpty())
            QVERIFY(writer.open(QFile::WriteOnly) && writer.write(file) == file.size());
        expect(profile, warning);
    }

    void hangingServiceIsLeftInTime()
    {
        setProperty("_ICC_PROFILE_1", {}, 8);
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
        setProperty("_ICC_PROFILE", {}, 8);
        expect({}, "GetICMProfile failed");
    }
};

QTEST_MAIN(MonitorProfileTest)
#include "tst_monitorprofile.moc"

// SPDX-License-Identifier: Apache-2.0
//
// The file manager and the portal are mock services in several modes; one test uses a real file
// manager.
#include <imageutils/osutils.h>
#include <imageutils/showfile_p.h>
#include <platform/showitem.h>
#include <support/files.h>
#include <support/log.h>

#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnectionInterface>
#include <QtTest/QtTest>

#include <csignal>
#include <optional>

using namespace std::chrono_literals;

class ShowFileTest : public QObject
{
    Q_OBJECT

private:
    const QTemporaryDir m_folder;
    // Everything that a URL, an option parser or a shell could misread.
    const QString m_name = "-a b%20#ü;'\"\n$(x)?.png", m_file = m_folder.filePath(m_name);
    const QString m_pipe = m_folder.filePath("pipe");
    const QByteArray m_path = qgetenv("PATH");
    QProcess m_services[2]; // file manager and portal
    QList<bool> m_answers;
    std::optional<TestSupport::LogCapture> m_log;

    bool startServices(const QStringList& modes)
    {
        const QStringList names{"org.freedesktop.FileManager1", "org.freedesktop.portal.Desktop"};
        for (int i : {0, 1}) {
            m_services[i].start(FAKE_SERVICE, {"session", names[i], modes[i]});
            if (!m_services[i].waitForReadyRead() || m_services[i].readLine() != "ready\n")
                return false;
        }
        return true;
    }

    void ask(const QString& path, std::chrono::milliseconds limit, bool isWanted = true)
    {
        Platform::showItem(
            path.toStdString(), limit, [isWanted] { return isWanted; },
            [this](bool answer) { m_answers.append(answer); });
    }

    /// What the mock xdg-open was called with: the number of its arguments and each of them.
    static QByteArray opened()
    {
        QFile record("opened");
        return record.open(QFile::ReadOnly) ? record.readAll() : QByteArray();
    }

    /// Asks the file manager once more, so that its answers to all earlier questions have come, and
    /// makes sure that none of them led to the portal.
    void portalWasNotAsked()
    {
        m_answers.clear();
        ask(m_file, 60s, false);
        QTRY_COMPARE_WITH_TIMEOUT(m_answers, QList{false}, 20000);
        QCOMPARE(m_services[1].peek(10000), "");
    }

private Q_SLOTS:
    void init()
    {
        m_log.emplace();
        QDir::setCurrent(m_folder.path());
        QVERIFY(QFile(m_file).open(QFile::WriteOnly));
        QVERIFY(QFile::exists(m_pipe) || TestSupport::makePipe(m_pipe));
    }

    void cleanup()
    {
        for (QProcess& service : m_services) {
            service.kill();
            service.waitForFinished();
        }
        qputenv("PATH", m_path);
        m_log.reset();
        QFile::remove("opened");
        m_answers.clear();
    }

    void asksTheServicesInTurn_data()
    {
        QTest::addColumn<QStringList>("modes");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("path");
        QTest::newRow("answers") << QStringList{"answers", "unasked"} << true << m_file;
        QTest::newRow("a pipe") << QStringList{"errors", "answers"} << true << m_pipe;
        QTest::newRow("two slashes") << QStringList{"answers", "unasked"} << true << '/' + m_file;
        QTest::newRow("hangs: no time for the portal")
            << QStringList{"hangs", "unasked"} << false << m_file;
        QTest::newRow("dies") << QStringList{"dies", "answers"} << true << m_file;
        QTest::newRow("portal refuses") << QStringList{"errors", "errors"} << false << m_file;
        QTest::newRow("portal fails later") << QStringList{"errors", "fails"} << false << m_file;
        QTest::newRow("portal hangs") << QStringList{"errors", "hangs"} << false << m_file;
        QTest::newRow("portal is silent") << QStringList{"errors", "silent"} << true << m_file;
        QTest::newRow("user cancels") << QStringList{"errors", "cancelled"} << true << m_file;
        QTest::newRow("error just in time") << QStringList{"late", "unasked"} << false << m_file;
    }
    void asksTheServicesInTurn()
    {
        QFETCH(QStringList, modes);
        QFETCH(QString, path);
        QFETCH(bool, shown);
        QVERIFY(startServices(modes));
        const auto limit = modes.contains("hangs") ? 300ms : modes[0] == "late" ? 1s : 60s;
        ask(path, modes.contains("silent") ? 1s : limit);
        QTRY_COMPARE_WITH_TIMEOUT(m_answers, QList{shown}, 20000);
        const QString item = path == m_pipe ? m_pipe : m_file;
        const QByteArray url = QUrl::fromLocalFile(item).toEncoded() + '\n';
        QTRY_COMPARE(m_services[0].peek(10000), "ShowItems " + url);
        QTRY_COMPARE(m_services[1].peek(10000),
                     modes.contains("unasked") ? "" : "OpenDirectory " + url);
    }

    void exceptionCountsAsFailure()
    {
        QVERIFY(startServices({"answers", "unasked"}));
        Platform::showItem(
            m_file.toStdString(), 60s, []() -> bool { throw std::bad_alloc(); },
            [this](bool answer) { m_answers.append(answer); });
        QTRY_COMPARE_WITH_TIMEOUT(m_answers, QList{false}, 20000);
    }

    void fallsBackOnPrograms()
    {
        QVERIFY(startServices({"errors", "errors"}));
        qputenv("PATH", LAUNCHER_FOLDER);
        OSUtils utils;
        QSignalSpy errors(&utils, &OSUtils::showFileError);
        QByteArray expected;
        for (const QString& path : {m_file, m_name, m_folder.path()}) {
            utils.showFileInGraphicalShell(path);
            expected += "1|" + m_folder.path().toUtf8() + '|';
            QTRY_COMPARE(opened(), expected);
        }
        QVERIFY(QDir().mkpath("elsewhere"));
        utils.showFileInGraphicalShell(m_name);
        QDir::setCurrent("elsewhere");
        QTRY_COMPARE(opened(), "1|" + m_folder.path().toUtf8() + '|');
        QVERIFY(errors.isEmpty());
        QDir::setCurrent(m_folder.path());
        qputenv("PATH", "");
        utils.showFileInGraphicalShell(m_name);
        QTRY_COMPARE(errors.value(0), QVariantList{m_name});
    }

    void missingFilesAreReported()
    {
        OSUtils utils;
        QSignalSpy missing(&utils, &OSUtils::fileMissing);
        const QString path = m_file + ".gone";
        m_log->takeTexts(); // the constructor describes the screens
        utils.showFileInGraphicalShell(path);
        QCOMPARE(missing.takeFirst(), QVariantList{path});
        QString line("warning:");
        QDebug(&line) << " OSUtils::showFileInGraphicalShell: " << path;
        QCOMPARE(m_log->takeTexts(), QStringList(line.trimmed()));
        utils.showFileInGraphicalShell(QUrl::fromLocalFile(m_folder.path())); // its text is no path
        QCOMPARE(missing.takeFirst(), QVariantList{"file://" + m_folder.path()});
    }

    void deletedObjectDoesNotAskThePortal()
    {
        QVERIFY(startServices({"errors", "unasked"}));
        qputenv("PATH", LAUNCHER_FOLDER);
        showFile(&*std::make_unique<OSUtils>(), m_name, 60s);
        portalWasNotAsked();
        QCOMPARE(opened(), "");
    }

    void eventLoopOfAReceiverDoesNotAskThePortal()
    {
        QVERIFY(startServices({"late", "unasked"}));
        qputenv("PATH", "");
        OSUtils utils;
        QSignalSpy errors(&utils, &OSUtils::showFileError);
        connect(&utils, &OSUtils::showFileError, this, [this] { portalWasNotAsked(); });
        showFile(&utils, m_name, 300ms);
        QTRY_COMPARE(m_answers, QList{false});
        QCOMPARE(errors.size(), 1);
    }

    void callReturnsAtOnceAndFallsBackAfterFiveSeconds()
    {
        QVERIFY(startServices({"hangs", "unasked"}));
        qputenv("PATH", LAUNCHER_FOLDER);
        OSUtils utils;
        QElapsedTimer timer;
        timer.start();
        utils.showFileInGraphicalShell(m_file);
        QVERIFY2(timer.elapsed() < 250, qPrintable(QString::number(timer.elapsed()))); // 1 ms idle
        QTRY_VERIFY_WITH_TIMEOUT(!opened().isEmpty(), 10000);
        QVERIFY2(qAbs(timer.elapsed() - 5000) < 500, qPrintable(QString::number(timer.elapsed())));
    }

    void deletedObjectDoesNotFallBack()
    {
        QVERIFY(startServices({"hangs", "unasked"}));
        qputenv("PATH", LAUNCHER_FOLDER);
        OSUtils utils;
        showFile(&*std::make_unique<OSUtils>(), m_name, 100ms);
        showFile(&utils, m_folder.path(), 300ms); // answered after the one above
        QTRY_VERIFY(!opened().isEmpty());
        QCOMPARE(opened(), "1|" + m_folder.path().toUtf8() + '|');
    }

    void realFileManagerOpensTheFolder()
    {
        if (QStandardPaths::findExecutable("thunar").isEmpty())
            QSKIP("thunar is not installed");
        const QString file = m_folder.filePath("shown by thunar/" + m_name);
        QVERIFY(QDir().mkdir("shown by thunar") && QFile::copy(m_file, file));
        OSUtils().showFileInGraphicalShell(file);
        const auto isOpen = [] {
            return QProcess::execute(
                       "xdotool", {"search", "--onlyvisible", "--name", "^shown by thunar"}) == 0;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isOpen(), 30000);
        const auto bus = QDBusConnection::sessionBus().interface();
        const auto thunar = pid_t(bus->servicePid("org.freedesktop.FileManager1").value());
        QVERIFY(thunar > 0 && kill(thunar, SIGTERM) == 0);
        QTRY_VERIFY(kill(thunar, 0) != 0);
    }
};

QTEST_MAIN(ShowFileTest)
#include "tst_showfile.moc"

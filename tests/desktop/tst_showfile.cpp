// SPDX-License-Identifier: Apache-2.0
//
// The file manager and the portal are programs of ours in several moods; once the real one is
// asked.
#include <imageutils/osutils.h>
#include <imageutils/showfile_p.h>
#include <platform/showitem.h>
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
    const QByteArray m_path = qgetenv("PATH");
    QProcess m_services[2]; // file manager and portal
    QList<bool> m_answers;
    std::optional<TestSupport::LogCapture> m_log;

    bool startServices(const QStringList& moods)
    {
        const QStringList names{"org.freedesktop.FileManager1", "org.freedesktop.portal.Desktop"};
        for (int i : {0, 1}) {
            m_services[i].start(FAKE_SERVICE, {"session", names[i], moods[i]});
            if (!m_services[i].waitForReadyRead() || m_services[i].readLine() != "ready\n")
                return false;
        }
        return true;
    }

    /// What our xdg-open was called with: the number of arguments and each of them.
    static QByteArray opened()
    {
        QFile record("opened");
        return record.open(QFile::ReadOnly) ? record.readAll() : QByteArray();
    }

private Q_SLOTS:
    void init()
    {
        m_log.emplace();
        QDir::setCurrent(m_folder.path());
        QVERIFY(QFile(m_file).open(QFile::WriteOnly));
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
        QTest::addColumn<QStringList>("moods");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("path");
        QTest::newRow("answers") << QStringList{"answers", "unasked"} << true << m_file;
        QTest::newRow("two slashes") << QStringList{"answers", "unasked"} << true << '/' + m_file;
        QTest::newRow("hangs: no time") << QStringList{"hangs", "unasked"} << false << m_file;
        QTest::newRow("dies, relative path") << QStringList{"dies", "answers"} << true << m_name;
        QTest::newRow("portal refuses") << QStringList{"errors", "errors"} << false << m_file;
        QTest::newRow("portal fails later") << QStringList{"errors", "fails"} << false << m_file;
        QTest::newRow("portal hangs") << QStringList{"errors", "hangs"} << false << m_file;
    }
    void asksTheServicesInTurn()
    {
        QFETCH(QStringList, moods);
        QFETCH(QString, path);
        QFETCH(bool, shown);
        QVERIFY(startServices(moods));
        Platform::showItem(path.toStdString(), moods.contains("hangs") ? 300ms : 60s,
                           [this](bool answer) { m_answers.append(answer); });
        QTRY_COMPARE_WITH_TIMEOUT(m_answers, QList{shown}, 20000);
        const QByteArray url = QUrl::fromLocalFile(m_file).toEncoded() + '\n';
        QTRY_COMPARE(m_services[0].peek(10000), "ShowItems " + url);
        QTRY_COMPARE(m_services[1].peek(10000),
                     moods.contains("unasked") ? "" : "OpenDirectory " + url);
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
        QVERIFY(errors.isEmpty());
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

    void deletedObjectGoesNoFurther()
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

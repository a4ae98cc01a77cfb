// SPDX-License-Identifier: Apache-2.0
#include "windowtest.h"

#include <QtCore/QDir>
#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDropEvent>

namespace {

/// Runs xdotool, which presses keys and moves the mouse of the X server.
bool xdotool(const QStringList& commands)
{
    return QProcess::execute(QStringLiteral("xdotool"), commands) == 0;
}

/// Waits for a window with the title and runs the command on it. xdotool fails when any other
/// window closes while it searches, and QTRY would run it once more after it has succeeded.
bool waitForWindow(const QString& title, const QStringList& command = {})
{
    const QStringList search{"search", "--onlyvisible", "--name", title};
    return QTest::qWaitFor([&] { return xdotool(search + command); }, patience);
}

QStringList linesOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

/// What the window exports.
class WindowExportTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void exportsWhatItShows();
    void writesNothingAndRestsUntilAsked();
    void timeLeftIsKnownAfterTheFirst();
    void pauseFinishesWhatIsInWork();
    void cancelLeavesNoFile();
    void interruptionLeavesNothing_data();
    void interruptionLeavesNothing();
};

void WindowExportTest::exportsWhatItShows()
{
    QVERIFY(pattern({400, 300}).save(at("a b%41.png")));
    open();
    QMimeData dropped;
    dropped.setUrls({QUrl::fromLocalFile(at("a b%41.png"))});
    const QPointF middle(300, 300);
    QDragEnterEvent enter(middle.toPoint(), Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_window->window(), &enter);
    QDropEvent drop(middle, Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_window->window(), &drop);
    QTRY_COMPARE(m_window->photographs().count(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);

    drag(middleOf("divider"), {-100, 0});
    QTRY_VERIFY(item("view")->property("divider").toDouble() < 0.45);

    QTest::keyClick(m_window->window(), Qt::Key_C);
    QTRY_VERIFY_WITH_TIMEOUT(item("cropFrame")->isVisible() && isShown(), patience);
    const auto kept = [this] { return item("view")->property("keptCrop").toRectF().toRect(); };
    QTRY_COMPARE(kept(), QRect(0, 0, 400, 300));
    m_window->photographs().setDegrees(0, 7);
    m_window->photographs().setCrop(0, QRectF(100, 80, 150, 130));
    drag(middleOf("cropFrame"), {-20, 10}); // moves it
    QTRY_COMPARE(kept().size(), QSize(150, 130));
    QVERIFY(kept().x() < 100 && kept().y() > 80);
    QTest::keyClick(m_window->window(), Qt::Key_Right, Qt::ShiftModifier);
    QTRY_VERIFY(kept().width() > 150);
    const QRect crop = kept();
    QTest::keyClick(m_window->window(), Qt::Key_BracketRight); // keeps the same of the photograph
    QTRY_COMPARE(kept(),
                 QRect(300 - crop.y() - crop.height(), crop.x(), crop.height(), crop.width()));
    QTest::keyClick(m_window->window(), Qt::Key_BracketLeft);
    QTRY_COMPARE(kept(), crop);
    QTest::keyClick(m_window->window(), Qt::Key_Escape);

    m_window->photographs().settings()->setSizing(SettingsModel::Scale);
    QTRY_VERIFY(item("percent")->isVisible());
    QTest::mouseDClick(m_window->window(), Qt::LeftButton, {}, middleOf("percent"));
    for (const Qt::Key key : {Qt::Key_3, Qt::Key_7, Qt::Key_Return})
        QTest::keyClick(m_window->window(), key);
    QTRY_COMPARE(m_window->photographs().settings()->percent(), 37.0);
    QTRY_COMPARE_WITH_TIMEOUT(item("view")->property("whole").toSizeF(),
                              (crop.size().toSizeF() * 0.37).toSize().toSizeF(), patience);

    QTest::mouseClick(m_window->window(), Qt::LeftButton, {}, middleOf("export"));
    QTRY_COMPARE_WITH_TIMEOUT(m_window->photographs().exported(), 1, patience);
    const QString place = QStringLiteral("%1x%2+%3+%4")
                              .arg(crop.width())
                              .arg(crop.height())
                              .arg(crop.x())
                              .arg(crop.y());
    const QStringList commandLine{
        at("a b%41.png"), "--headless", "--scale", "0.37",   "--rotate", "7",
        "--crop",         place,        "-o",      at("cli")};
    QCOMPARE(QProcess::execute(QStringLiteral(WORKBENCH_PROGRAM), commandLine), 0);
    QProcess compare;
    compare.start("compare",
                  {"-metric", "AE", at("out/a b%41.tiff"), at("cli/a b%41.tiff"), "null:"});
    QVERIFY(compare.waitForFinished());
    QCOMPARE(compare.readAllStandardError().simplified().split(' ').first(), QByteArray("0"));

    QTest::keyClick(m_window->window(), Qt::Key_J, Qt::ControlModifier);
    QVERIFY(waitForWindow("^out")); // Thunar shows the folder
}

void WindowExportTest::writesNothingAndRestsUntilAsked()
{
    QVERIFY(pattern({1600, 1200}).save(at("a.png")));
    QVERIFY(QFile(at("bad.png")).open(QIODevice::WriteOnly));
    QVERIFY(QFile(at("notes.txt")).open(QIODevice::WriteOnly));
    open({at("a.png"), at("bad.png")});
    auto* const copied = new QMimeData; // the clipboard's from here on
    copied->setUrls({QUrl::fromLocalFile(at("a.png")), QUrl::fromLocalFile(at("notes.txt"))});
    QGuiApplication::clipboard()->setMimeData(copied);
    QTest::keyClick(m_window->window(), Qt::Key_V, Qt::ControlModifier);
    QTRY_COMPARE(m_window->photographs().count(), 4); // notes.txt says why it is not shown
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    QTRY_COMPARE_WITH_TIMEOUT(m_window->photographs().failed(), 2, patience);
    QTest::qWait(1000);
    QVERIFY(comesToRest());
    // cursor of a text field may blink
    QTest::keyClick(m_window->window(), Qt::Key_Up); // the file that fails
    QTest::qWait(1500);
    QVERIFY(comesToRest());
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             (QStringList{"a.png", "bad.png", "notes.txt"}));
}

void WindowExportTest::timeLeftIsKnownAfterTheFirst()
{
    m_options.jobs = 1;
    for (const char* const name : {"a.png", "b.png"})
        QVERIFY(pattern({400, 300}).save(at(name)));
    open({at("a.png"), at("b.png")});
    const WorkbenchModel& photographs = m_window->photographs();
    QList<int> seconds{0, 0, 0}; // by the number of those that are finished
    connect(&photographs, &WorkbenchModel::progressed, this, [&photographs, &seconds] {
        int& most = seconds[photographs.finished()];
        most = std::max(most, photographs.secondsLeft());
    });
    m_window->photographs().exportAll();
    QTRY_COMPARE_WITH_TIMEOUT(photographs.exported(), 2, patience);
    QVERIFY(seconds[0] == 0 && seconds[1] > 0);
}

void WindowExportTest::pauseFinishesWhatIsInWork()
{
    QStringList paths;
    for (const char name : {'a', 'b', 'c'}) {
        paths.append(at(QString(QLatin1Char(name)) + ".png"));
        QVERIFY(pattern({1200, 900}).save(paths.last()));
    }
    m_options.jobs = 1;
    open(paths);
    WorkbenchModel& photographs = m_window->photographs();
    QTest::keyClick(m_window->window(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    const auto stage = [&] { return photographs.index(0).data(WorkbenchModel::StateRole).toInt(); };
    QTRY_COMPARE_WITH_TIMEOUT(stage(), int(WorkbenchModel::State::Exporting), patience);
    QTest::keyClick(m_window->window(), Qt::Key_P, Qt::ControlModifier);
    QTRY_COMPARE_WITH_TIMEOUT(photographs.exported(), 1, patience);
    QTest::qWait(300); // in which another one would be begun
    QCOMPARE(photographs.remaining(), 2);
    QCOMPARE(photographs.index(1).data(WorkbenchModel::StateRole).toInt(),
             int(WorkbenchModel::State::Waiting));
    QTest::keyClick(m_window->window(), Qt::Key_P, Qt::ControlModifier);
    QTRY_COMPARE_WITH_TIMEOUT(photographs.exported(), 3, patience);
}

void WindowExportTest::cancelLeavesNoFile()
{
    QVERIFY(pattern({3000, 2000}).save(at("a.png")));
    QVERIFY(QFile::copy(at("a.png"), at("b.png")));
    m_options.settings.scale = 2;
    open({at("a.png"), at("b.png")});
    QTest::keyClick(m_window->window(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    const auto stage = [this] {
        return m_window->photographs().index(0).data(WorkbenchModel::StateRole).toInt();
    };
    QTRY_COMPARE_WITH_TIMEOUT(stage(), int(WorkbenchModel::State::Exporting), patience);
    QTest::keyClick(m_window->window(), Qt::Key_Escape);
    QTRY_COMPARE(m_window->photographs().remaining(), 0);
    QTest::qWait(500);
    QCOMPARE(m_window->photographs().exported(), 0);
    QVERIFY(QDir(at("out")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

void WindowExportTest::interruptionLeavesNothing_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("SIGTERM") << QStringList{"kill", "-TERM", "PID"};
    QTest::newRow("SIGINT") << QStringList{"kill", "-INT", "PID"};
    QTest::newRow("closed") << QStringList{"xdotool", "key", "ctrl+q"};
}

void WindowExportTest::interruptionLeavesNothing()
{
    QFETCH(QStringList, command);
    QVERIFY(pattern({3000, 2000}).save(at("a.png")));
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(WORKBENCH_PROGRAM),
                  {at("a.png"), "-o", at("out"), "--scale", "2"});
    QVERIFY(waitForWindow("a.png – Workbench", {"windowactivate", "--sync"}));
    xdotool({"key", "ctrl+e"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(at("out")), patience);
    const QString pid = QString::number(program.processId());
    const QStringList workers = linesOf("pgrep", {"-P", pid});
    QVERIFY(!workers.isEmpty());
    command.replaceInStrings("PID", pid);
    QCOMPARE(QProcess::execute(command.first(), command.mid(1)), 0);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.readAll(), QByteArray()); // not a word from QML or the library
    for (const QString& worker : workers)
        QTRY_VERIFY2(linesOf("ps", {"-o", "stat=", "-p", worker}).join("").contains('Z') ||
                         !QFile::exists("/proc/" + worker),
                     qPrintable(worker));
    QVERIFY(QDir(at("out")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

QTEST_MAIN(WindowExportTest)
#include "tst_workbench_window_export.moc"

// SPDX-License-Identifier: Apache-2.0
#include <QtCore/QFile>
#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtTest/QTest>

namespace {

const QColor colour(230, 20, 200); // nothing else on the screen has it

/// The columns of the screen in which the colour stands, as ranges from left to right.
QList<QPair<int, int>> colouredRanges()
{
    const QImage screen = qGuiApp->primaryScreen()->grabWindow(0).toImage();
    QList<QPair<int, int>> ranges;
    for (int x = 0; x < screen.width(); ++x) {
        int count = 0;
        for (int y = 0; y < screen.height(); ++y)
            count += screen.pixelColor(x, y) == colour;
        if (count < 50)
            continue;
        if (ranges.isEmpty() || ranges.last().second < x - 1)
            ranges.append({x, x});
        ranges.last().second = x;
    }
    return ranges;
}

/// Runs xdotool, and returns what it says.
QByteArray xdotool(const QStringList& commands)
{
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), commands);
    return tool.waitForFinished() ? tool.readAllStandardOutput() : QByteArray();
}

/// Runs it on the window of the workbench.
QByteArray onWindow(const QStringList& commands)
{
    return xdotool(QStringList{"search", "--onlyvisible", "--name", "Workbench"} + commands);
}

} // namespace

class WorkbenchWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsBeforeAndAfter();
    void pastesFilesAndOpensWhereItWasClosed();
};

void WorkbenchWindowTest::showsBeforeAndAfter()
{
    const QTemporaryDir folder;
    QImage photograph(400, 300, QImage::Format_RGB32);
    photograph.fill(colour);
    QVERIFY(photograph.save(folder.filePath(QStringLiteral("a b%41.png"))));
    QProcess window;
    window.setProcessChannelMode(QProcess::MergedChannels);
    window.start(QStringLiteral(WORKBENCH_PROGRAM),
                 {folder.path(), QStringLiteral("-o"), folder.filePath(QStringLiteral("out")),
                  QStringLiteral("--scale"), QStringLiteral("0.5")});
    QTRY_VERIFY_WITH_TIMEOUT(colouredRanges().size() == 2, 20'000);
    const QList<QPair<int, int>> pictures = colouredRanges();
    QCOMPARE(pictures.size(), 2); // side by side, equally wide: both are fitted into their place
    const int before = pictures.at(0).second - pictures.at(0).first;
    const int after = pictures.at(1).second - pictures.at(1).first;
    QVERIFY(before > 100 && std::abs(before - after) <= 2);
    QCOMPARE(window.state(), QProcess::Running);
    window.terminate();
    QVERIFY(window.waitForFinished());
    QCOMPARE(window.readAll(), QByteArray()); // not a word from QML or the library
}

void WorkbenchWindowTest::pastesFilesAndOpensWhereItWasClosed()
{
    const QTemporaryDir folder;
    const auto at = [&folder](const char* name) { return folder.filePath(QLatin1String(name)); };
    QVERIFY(QImage(40, 30, QImage::Format_RGB32).save(at("a.png")));
    QVERIFY(QFile::copy(at("a.png"), at("b c.png")));
    const auto place = [] { // empty while there is no window
        const QByteArray geometry = onWindow({"getwindowgeometry", "--shell"});
        return geometry.mid(geometry.indexOf("X="));
    };
    QProcess window;
    window.start(QStringLiteral(WORKBENCH_PROGRAM), {at("a.png"), "-o", at("out")});
    // While the window manager takes a window over it is not found, also after it was seen before.
    bool isOpen = false;
    QTRY_VERIFY_WITH_TIMEOUT((isOpen = isOpen || !place().isEmpty()), 20'000);

    auto* const copied = new QMimeData; // the clipboard's from here on
    copied->setUrls({QUrl::fromLocalFile(at("b c.png"))});
    QGuiApplication::clipboard()->setMimeData(copied);
    QByteArray chosen;
    const auto move = [&] { // a window that is not found stays where it is
        onWindow(
            {"windowactivate", "--sync", "windowmove", "90", "70", "windowsize", "800", "600"});
        chosen = place();
        return chosen.contains("WIDTH=800");
    };
    bool isPlaced = false;
    QTRY_VERIFY_WITH_TIMEOUT((isPlaced = isPlaced || move()), 20'000);
    xdotool({"key", "ctrl+v"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(at("out/b c.tiff")), 20'000);
    chosen = place();
    QVERIFY(chosen.contains("WIDTH=800"));
    xdotool({"key", "ctrl+q"}); // to no window: it would be gone before the key is let go
    QVERIFY(window.waitForFinished());
    QCOMPARE(window.exitCode(), 0);

    window.start(QStringLiteral(WORKBENCH_PROGRAM), {at("a.png"), "-o", at("out")});
    bool isBack = false;
    QTRY_VERIFY_WITH_TIMEOUT((isBack = isBack || place() == chosen), 20'000);
    window.terminate();
    QVERIFY(window.waitForFinished());
}

QTEST_MAIN(WorkbenchWindowTest)
#include "tst_workbench_window.moc"

// SPDX-License-Identifier: Apache-2.0
#include "workbench.h"

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
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

} // namespace

class WorkbenchWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsBeforeAndAfter();
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

QTEST_MAIN(WorkbenchWindowTest)
#include "tst_workbench_window.moc"

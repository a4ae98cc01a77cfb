// SPDX-License-Identifier: Apache-2.0
#include "windowtest.h"

#include <imageutils/osutils.h>

#include <QtCore/QDir>
#include <QtCore/QtEndian>

namespace {

/// The checksum of a PNG chunk.
QByteArray crcOf(const QByteArray& chunk)
{
    quint32 crc = ~0U;
    for (const char byte : chunk) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
    }
    QByteArray result(4, '\0');
    qToBigEndian(~crc, result.data());
    return result;
}

} // namespace

/// What the window says about bad input and folders.
class WindowBadInputTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void folderThatVanishesIsTold();
    void badInputIsTold_data();
    void badInputIsTold();
};

void WindowBadInputTest::folderThatVanishesIsTold()
{
    QVERIFY(pattern({3000, 2000}).save(at("a.png")));
    m_options.settings.scale = 2;
    m_options.settings.format = "png"; // which takes long enough to be seen in work
    open({at("a.png")});
    WorkbenchModel& photographs = m_window->photographs();
    photographs.exportOne(0);
    QDir out(at("out"));
    QTRY_VERIFY_WITH_TIMEOUT(!out.isEmpty(QDir::Files | QDir::Hidden), patience);
    QVERIFY(out.removeRecursively());
    QTRY_COMPARE_WITH_TIMEOUT(photographs.failed(), 1, patience);
    const QString told = photographs.index(0).data(WorkbenchModel::FailureRole).toString();
    QVERIFY2(told.startsWith("The folder for exported photographs is gone."), qPrintable(told));
    QVERIFY(!out.exists());
    photographs.retryFailed();
    QTRY_COMPARE_WITH_TIMEOUT(photographs.exported(), 1, patience);
    QCOMPARE(out.entryList(QDir::Files | QDir::Hidden), QStringList{"a.png"});
    Q_EMIT m_window->window()->findChild<OSUtils*>()->showFileError(at("out/a.png"));
    const QString message = item("message")->property("text").toString();
    QVERIFY2(message.startsWith("No file manager was found."), qPrintable(message));
}

void WindowBadInputTest::badInputIsTold_data()
{
    QTest::addColumn<QByteArray>("size"); // as a PNG header declares it
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("vanishes");
    QTest::addColumn<QString>("sentence"); // empty: the photograph is exported
    const QByteArray pixel("\0\0\0\1\0\0\0\1", 8);
    QTest::newRow("one pixel") << pixel << "out" << false << "";
    QTest::newRow("30,000 x 30,000 declared")
        << QByteArray("\0\0\x75\x30\0\0\x75\x30", 8) << "out" << false
        << "The picture is too large.|The file seems to be damaged.";
    QTest::newRow("gone since it was listed") << pixel << "out" << true << "The file is gone.";
    QTest::newRow("a folder that cannot be made")
        << pixel << "a.png/out" << false << "Choose another folder.";
}

void WindowBadInputTest::badInputIsTold()
{
    QFETCH(QByteArray, size);
    QFETCH(QString, folder);
    QFETCH(bool, vanishes);
    QFETCH(QString, sentence);
    QVERIFY(pattern({1, 1}).save(at("a.png")));
    QFile file(at("a.png"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    bytes.replace(16, 8, size);
    bytes.replace(29, 4, crcOf(bytes.mid(12, 17)));
    file.seek(0);
    file.write(bytes);
    file.close();
    m_options.settings.outputFolder = at(folder);
    m_options.settings.format = "png";
    const QList<Source> sources = findSources({at("a.png")}, {}, {});
    if (vanishes)
        QVERIFY(file.remove());
    m_window = std::make_unique<Window>(m_options, sources);
    QVERIFY(QTest::qWaitForWindowActive(m_window->window()));
    WorkbenchModel& photographs = m_window->photographs();
    photographs.exportAll();
    QTRY_COMPARE_WITH_TIMEOUT(photographs.exported() + photographs.failed(), 1, patience);
    QTRY_COMPARE(photographs.remaining(), 0);
    QCOMPARE(photographs.exported(), int(sentence.isEmpty()));
    const QString told = photographs.index(0).data(WorkbenchModel::FailureRole).toString();
    QVERIFY2(told.contains(QRegularExpression(sentence)), qPrintable(told));
    QCOMPARE(item("view")->property("trouble").toString().isEmpty(), sentence.isEmpty());
    QCOMPARE(QFile::exists(at("out/a.png")), sentence.isEmpty());
}

QTEST_MAIN(WindowBadInputTest)
#include "tst_workbench_window_badinput.moc"

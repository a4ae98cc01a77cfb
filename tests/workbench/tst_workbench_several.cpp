// SPDX-License-Identifier: Apache-2.0
#include "workbench.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

using namespace Workbench;

namespace {

/// The files in `folder`, hidden ones too, with a digest of each.
QMap<QString, QByteArray> filesIn(const QString& folder)
{
    QMap<QString, QByteArray> files;
    for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden)) {
        QFile file(info.filePath());
        QCryptographicHash hash(QCryptographicHash::Md5);
        if (file.open(QIODevice::ReadOnly) && hash.addData(&file))
            files.insert(info.fileName(), hash.result().toHex());
    }
    return files;
}

/// What the lines of JSON say, but for the time that it took and the folder of the output.
QList<QJsonObject> answers(const Run& run)
{
    QList<QJsonObject> answers;
    for (const QString& line : run.output) {
        QJsonObject answer = QJsonDocument::fromJson(line.toUtf8()).object();
        answer.remove("milliseconds");
        if (answer.contains("output"))
            answer["output"] = QFileInfo(answer["output"].toString()).fileName();
        answers.append(answer);
    }
    return answers;
}

} // namespace

/// Several photographs in work at once, in one process and in two.
class WorkbenchSeveralTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { QDir(in("out")).removeRecursively(); }
    void givesWhatOneAfterTheOtherGives_data();
    void givesWhatOneAfterTheOtherGives();
    void sharesAFolderWithAnotherProcess();
    void leavesNothingUnfinishedWhenItIsEnded();
    void showsProgress();

private:
    QString in(const QString& name) const { return m_folder.filePath(name); }
    QStringList m_paths;
    QTemporaryDir m_folder;
};

/// Pictures of several formats, orientations and sizes, two folders with the same names, and files
/// that are none.
void WorkbenchSeveralTest::initTestCase()
{
    for (int i = 0; i < 9; ++i) {
        OIIO::ImageSpec spec(300 + 100 * i, 200, i % 2 == 0 ? 3 : 4, OIIO::TypeUInt8);
        spec.attribute("Orientation", i);
        for (const char* folder : {"a", "b"}) {
            const char* const format = i % 2 == 0 ? "jpg" : i % 4 == 1 ? "png" : "tif";
            m_paths.append(in(QString("%1/%2.%3").arg(folder).arg(i).arg(format)));
            makePicture(m_paths.last(), spec);
            spec.width += 10;
        }
    }
    m_paths.insert(3, in("missing.jpg"));
    m_paths.append(m_paths.mid(0, 2));
    shell(QString("cd '%1' && head -c 3000 a/0.jpg > half.jpg").arg(m_folder.path()));
    m_paths.insert(9, in("half.jpg"));
    // The thread sanitizer cannot follow OpenCV's pool, which has no threads on one processor. The
    // photographs' own threads are there all the same.
    if (qEnvironmentVariableIsSet("TSAN_OPTIONS"))
        shell("cpu=$(taskset -cp $PPID | sed 's/.*: //;s/[-,].*//') && taskset -cp $cpu $PPID");
}

void WorkbenchSeveralTest::givesWhatOneAfterTheOtherGives_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("as many as there are processors") << QStringList();
    QTest::newRow("all at once") << QStringList{"--jobs", "99"};
    QTest::newRow("little memory") << QStringList{"--jobs", "8", "--max-memory", "9"};
}

void WorkbenchSeveralTest::givesWhatOneAfterTheOtherGives()
{
    QFETCH(QStringList, options);
    const QStringList arguments =
        m_paths + QStringList{"--json", "--scale", "0.5", "--format", "png", "-o"};
    const Run one = run(arguments + QStringList{in("out/one"), "--jobs", "1"});
    const Run several = run(arguments + QStringList{in("out/several")} + options);
    QCOMPARE(several.exitCode, 1);
    QCOMPARE(several.errors, one.errors);
    QCOMPARE(one.errors.size(), 3);
    QCOMPARE(answers(several), answers(one));
    QCOMPARE(filesIn(in("out/several")), filesIn(in("out/one")));
    QCOMPARE(filesIn(in("out/one")).size(), 18); // and the last two were kept
}

void WorkbenchSeveralTest::sharesAFolderWithAnotherProcess()
{
    const QStringList options{"-o", in("out"), "--headless", "--jobs", "4"};
    QProcess processes[2];
    for (int i = 0; i < 2; ++i)
        processes[i].start(WORKBENCH_PROGRAM, QStringList{in(i == 0 ? "a" : "b")} + options);
    for (QProcess& process : processes)
        QVERIFY(process.waitForFinished(60'000) && process.exitCode() == 0);
    QCOMPARE(filesIn(in("out")).size(), 18);
}

void WorkbenchSeveralTest::leavesNothingUnfinishedWhenItIsEnded()
{
    constexpr int count = 60;
    makePicture(in("large/0.png"), OIIO::ImageSpec(1200, 900, 3, OIIO::TypeUInt8));
    for (int i = 1; i < count; ++i)
        QVERIFY(QFile::link(in("large/0.png"), in(QString("large/%1.png").arg(i))));
    QProcess process;
    process.start(WORKBENCH_PROGRAM, {in("large"), "-o", in("out"), "--headless"});
    QTRY_VERIFY_WITH_TIMEOUT(!QDir(in("out")).entryList(QDir::Files).isEmpty(), 60'000);
    process.terminate();
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit); // by the signal, as a shell wants to know
    QVERIFY(process.readAllStandardOutput().contains(" exported, 0 kept, "));
    const QStringList names = filesIn(in("out")).keys();
    QVERIFY(names.size() < count && names.filter(QRegularExpression("^\\.")).isEmpty());
    for (const QString& name : names)
        QCOMPARE(readPicture(in("out/" + name)).at(7, 899, 1), sampleAt(7, 899, 1));
}

void WorkbenchSeveralTest::showsProgress()
{
    shell(QString("TERM=xterm script -qec '%1 --headless -o %2/out %2/a' /dev/null | "
                  "grep -q '[1-9] of 9 done, [a-z]* [0-9]\\.'")
              .arg(WORKBENCH_PROGRAM, m_folder.path()));
}

QTEST_GUILESS_MAIN(WorkbenchSeveralTest)
#include "tst_workbench_several.moc"

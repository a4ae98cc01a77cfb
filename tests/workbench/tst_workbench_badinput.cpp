// SPDX-License-Identifier: Apache-2.0
#include "workbench.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

using namespace Workbench;

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The first half of a picture of the format that `name` ends in.
void makeHalf(const QString& name)
{
    makePicture(name, OIIO::ImageSpec(64, 48, 3, OIIO::TypeUInt8));
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(file.size() / 2));
}

/// A file that is no photograph: the command that makes $F, or "half" for the first half of a
/// picture, and what the program says of it.
struct BadFile
{
    const char* row;
    const char* name;
    const char* reason;
    const char* command;
};

constexpr BadFile badFiles[] = {
    {"missing", "a.jpg", "no such file", "true"},
    {"empty", "a.jpg", "is empty", "true > $F"},
    {"text", "a.jpg", "Could not get image size", "echo text > $F"},
    {"not named as a photograph", "a.txt", "not named", "echo text > $F"},
    {"a folder without photographs", "a.jpg", "holds no photographs", "mkdir $F"},
    {"pipe", "a.jpg", "not a regular file", "mkfifo $F"},
    {"link to a device", "a.jpg", "not a regular file", "ln -s /dev/zero $F"},
    {"link to nothing", "a.jpg", "no such file", "ln -s nowhere $F"},
    {"link to itself", "a.jpg", "no such file", "ln -s a.jpg $F"},
    {"below a file", "file/a.jpg", "no such file", "echo text > file"},
    {"18 bytes that claim 65535 x 65535", "a.tga", "--max-megapixels",
     R"(printf '\0\0\2\0\0\0\0\0\0\0\0\0\377\377\377\377\30\0' > $F)"},
    {"a size below nothing", "a.ppm", "", R"(printf 'P6\n-4 -5\n255\n' > $F)"},
    {"half a JPEG", "a.jpg", "", "half"},
    {"half a PNG", "a.png", "", "half"},
    {"half a TIFF", "a.tif", "", "half"},
    {"half a BMP", "a.bmp", "", "half"},
    {"half an OpenEXR", "a.exr", "", "half"},
    {"half a Targa", "a.tga", "", "half"},
    {"half a WebP", "a.webp", "", "half"},
    {"half a PPM", "a.ppm", "", "half"},
    {"half a GIF", "a.gif", "", "half"},
    {"half an HDR", "a.hdr", "", "half"},
    {"half a JPEG 2000", "a.jp2", "", "half"},
};

} // namespace

class WorkbenchBadInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void saysOneLineAndGoesOn();
    void refusesNamesThatAreNoText();
    void refusesFormatsThatCannotBeWritten_data();
    void refusesFormatsThatCannotBeWritten();
    void refusesFoldersThatCannotBeWritten();
    void leavesNothingOnAFullDisk_data();
    void leavesNothingOnAFullDisk();
    void refusesWrongCommandLines_data();
    void refusesWrongCommandLines();

private:
    QString in(const QString& name) const { return m_folder->filePath(name); }
    QStringList outputs() const
    {
        return QDir(in("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void WorkbenchBadInputTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    makePicture(in("good.png"), OIIO::ImageSpec(8, 8, 3, OIIO::TypeUInt8));
}

void WorkbenchBadInputTest::saysOneLineAndGoesOn()
{
    QStringList paths;
    for (const BadFile& file : badFiles) {
        const QString folder = in(QString::number(paths.size()));
        const QString path = folder + QLatin1Char('/') + QLatin1String(file.name);
        shell(QString("mkdir '%1' && cd '%1' && F=%2 && ").arg(folder, QLatin1String(file.name)) +
              QLatin1String(qstrcmp(file.command, "half") == 0 ? "true" : file.command));
        if (qstrcmp(file.command, "half") == 0)
            makeHalf(path);
        paths.append(path);
    }
    const Run run = Workbench::run(paths + QStringList{in("good.png"), "-o", in("out")});
    QCOMPARE(run.exitCode, 1);
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const QString said = run.errors.value(i);
        QVERIFY2(said.startsWith(paths.at(i) + ": ") &&
                     said.contains(QLatin1String(badFiles[i].reason)),
                 qPrintable(QLatin1String(badFiles[i].row) + " gives " + said));
    }
    QCOMPARE(run.errors.size(), paths.size());
    QCOMPARE(run.output.last(), QString("1 exported, 0 kept, %1 failed").arg(paths.size()));
    QCOMPARE(outputs(), QStringList{"good.tiff"});
}

void WorkbenchBadInputTest::refusesNamesThatAreNoText()
{
    // In a folder, and named by the user: Qt's own lists would leave it out or name another file.
    shell(QString("cd '%1' && cp good.png \"$(printf 'b\\377.png')\"").arg(m_folder->path()));
    const Run listed = run({m_folder->path(), "-o", in("out")});
    QCOMPARE(listed.exitCode, 1);
    QVERIFY(listed.errors.value(0).endsWith("name is not valid UTF-8"));
    QCOMPARE(outputs(), QStringList{"good.tiff"});
    shell(QStringLiteral("cd '%1' && ! '%2' --headless \"$(printf 'b\\377.png')\" >said 2>&1 && "
                         "grep -q 'name is not valid UTF-8' said")
              .arg(m_folder->path(), QStringLiteral(WORKBENCH_PROGRAM)));
    shell(QString("rm '%1'/b*").arg(m_folder->path())); // Qt cannot
}

void WorkbenchBadInputTest::refusesFormatsThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("format");
    for (const char* format : {"dds", "term", "null", "x/../../y", "preserve"})
        QTest::newRow(format) << QString::fromLatin1(format);
}

void WorkbenchBadInputTest::refusesFormatsThatCannotBeWritten()
{
    QFETCH(QString, format);
    shell(QString("cp '%1' '%2'").arg(in("good.png"), in("good.psd")));
    const Run run = Workbench::run({in("good.psd"), "-o", in("out"), "--format", format});
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.errors.value(0).contains("cannot be written"));
    QVERIFY(!QFile::exists(in("out")));
}

void WorkbenchBadInputTest::refusesFoldersThatCannotBeWritten()
{
    for (const char* folder : {"good.png/out", "/proc/out"}) {
        const QString path = QDir(m_folder->path()).absoluteFilePath(QString::fromLatin1(folder));
        const Run run = Workbench::run({in("good.png"), "-o", path});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.errors.size(), 1);
        QVERIFY(run.errors.at(0).contains(path));
    }
}

void WorkbenchBadInputTest::leavesNothingOnAFullDisk_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("blocks");
    // Writers that fail at once, in the middle, and with the last bytes only.
    for (const char* format : {"tiff", "png", "jpg", "exr", "sgi", "webp", "bmp", "bitmap"})
        QTest::newRow(format) << QString::fromLatin1(format) << 8;
    QTest::newRow("tiff, one block left") << "tiff" << 1;
}

void WorkbenchBadInputTest::leavesNothingOnAFullDisk()
{
    QFETCH(QString, format);
    QFETCH(int, blocks);
    const QString source = in("large.png");
    makePicture(source, OIIO::ImageSpec(256, 256, 3, OIIO::TypeUInt8));
    QStringList options{"--format", format};
    if (format == "bitmap")
        options = QStringList{"--bitmap"};
    const QStringList arguments{source, in("good.png"), "-o", in("out")};
    const QByteArray before = contents(source);
    const Run run = Workbench::run(arguments + options, blocks);
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.value(0).startsWith(source + ": cannot be written"),
             qPrintable(run.errors.join(QLatin1Char('\n'))));
    const QStringList left = outputs().filter(QRegularExpression("large|^\\."));
    QVERIFY2(left.isEmpty(), qPrintable(left.join(QLatin1Char(' '))));
    QCOMPARE(contents(source), before);
}

void WorkbenchBadInputTest::refusesWrongCommandLines_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char* text :
         {"--scale 0", "--scale nan", "--scale 1e999", "--scale x", "--max-width -1", "--filter 1",
          "--filter 1,2,3", "--filter inf,0", "--quality 0", "--unknown"})
        QTest::newRow(text) << QString::fromLatin1(text).split(QLatin1Char(' '));
}

void WorkbenchBadInputTest::refusesWrongCommandLines()
{
    QFETCH(QStringList, arguments);
    const Run run = Workbench::run(arguments + QStringList{in("good.png")});
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.errors.size(), 1);
    QVERIFY(run.output.isEmpty());
}

QTEST_GUILESS_MAIN(WorkbenchBadInputTest)
#include "tst_workbench_badinput.moc"

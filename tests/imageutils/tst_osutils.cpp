// SPDX-License-Identifier: Apache-2.0
#include <imageutils/osutils.h>

#include <support/files.h>
#include <support/log.h>

#include <QtGui/QtGui>
#include <QtTest/QtTest>

#include <thread>

static int s_argumentCount = 1;
static char** s_arguments = nullptr;

/// Plays a transcript, one row per case: its commands act on the desktop and call OSUtils, and what
/// they produce must equal the lines of the transcript. osutils/README.md explains the commands.
class OSUtilsTest : public QObject
{
    Q_OBJECT

    std::optional<TestSupport::LogCapture> m_log;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QCoreApplication> m_application;
    std::unique_ptr<OSUtils> m_os;
    std::map<QString, std::unique_ptr<QWindow>> m_windows;
    std::vector<std::unique_ptr<QProcess>> m_processes;
    QStringList m_lines;
    bool m_inThread = false;
    static inline QtMessageHandler s_capture = nullptr;
    static inline OSUtilsTest* s_test = nullptr;
    static inline QString s_trigger, s_triggered; // a beginning of a log line, a shell command

    static void hear(QtMsgType level, const QMessageLogContext& context, const QString& line);
    void perform(const QString& command, const QString& name, const QStringList& words);
    void runShell(const QString& command, bool inBackground);
    void writeProfile(const QString& name, const QString& path);
    void copy(const QString& picture, const QString& file);
    void call(const QString& name, const QStringList& words, bool showsAnswer);
    void makeApplication(const QString& kind);
    void makeWindow(const QString& name, const QString& place);
    void makeOSUtils();
    QVariant ask(const QString& name, const QStringList& words);
    void endProcesses();
    void add(const QString& line);

public:
    static inline QString s_transcript;
    Q_INVOKABLE void opened(const QUrl& url) { add("opened: " + url.toLocalFile()); }

private Q_SLOTS:
    void init();
    void cleanup();
    void plays_data();
    void plays();
};

/// Paths that differ from run to run have names in a transcript.
static QString places(QString text, bool toNames)
{
    static const QRegularExpression digest("(?<=Clipboard_)[0-9a-f]{32}");
    static const QRegularExpression colors(
        "QColorSpace\\((?:QColorSpace::(?!Primaries|ColorModel)(\\w+))?.*\\)$");
    const std::pair<QString, QString> names[] = {
        {"$TMPDIR", qEnvironmentVariable("TMPDIR")},
        {"$HERE", QDir::currentPath()},
        {"$HERE", QDir::toNativeSeparators(QDir::currentPath())},
        {"$HOME", QDir::homePath()}};
    for (const auto& [name, place] : names)
        text.replace(toNames ? place : name, toNames ? name : place, Qt::CaseInsensitive);
    if (toNames) // of a colour space only the name: the rest differs between versions of Qt
        text.replace(digest, "DIGEST").replace(colors, "QColorSpace::\\1");
    return text;
}

static QString textOf(const QVariant& value)
{
    static const QRegularExpression wrapping("^QVariant\\([^,]+, (.*)\\)$");
    QString text;
    QDebug(&text).nospace() << value;
    return text.replace(wrapping, "\\1").replace("QList(", "(");
}

static QVariant argument(const QMetaType& type, const QString& text)
{
    const QStringList n = text.split(',');
    if (type == QMetaType::fromType<QRect>())
        return QRect(n[0].toInt(), n[1].toInt(), n[2].toInt(), n[3].toInt());
    if (type == QMetaType::fromType<QSize>())
        return QSize(n[0].toInt(), n[1].toInt());
    if (type == QMetaType::fromType<QScreen*>())
        return QVariant::fromValue(text == "none" ? nullptr
                                                  : QGuiApplication::screens().value(text.toInt()));
    QVariant value(text);
    return value.convert(type) ? value : QVariant();
}

/// Waits for a process. A clipboard of this program is served meanwhile, where there is a desktop.
static bool hasEnded(QProcess& process)
{
    if (!QCoreApplication::instance())
        return process.waitForFinished();
    return QSignalSpy(&process, &QProcess::finished).wait(60000);
}

void OSUtilsTest::add(const QString& line)
{
    for (const QString& text :
         m_log->takeTexts() + QStringList(line).filter(QRegularExpression(".")))
        m_lines << places(text, true);
}

void OSUtilsTest::hear(QtMsgType level, const QMessageLogContext& context, const QString& line)
{
    s_capture(level, context, line);
    if (!s_trigger.isEmpty() && line.startsWith(s_trigger)) {
        s_trigger.clear();
        QProcess::execute("sh", {"-c", s_triggered});
    }
}

void OSUtilsTest::endProcesses()
{
    for (const auto& process : m_processes) {
        process->kill(); // ends a stopped process, too
        process->waitForFinished();
    }
}

void OSUtilsTest::init()
{
    s_test = this;
    m_folder = std::make_unique<QTemporaryDir>(QDir::homePath() + "/case");
    for (const char* name : {"temporary", "current"})
        QDir(m_folder->path()).mkdir(name);
    TestSupport::setTemporaryFolder(m_folder->filePath("temporary"));
    QDir::setCurrent(m_folder->filePath("current"));
    QDesktopServices::setUrlHandler("file", this, "opened");
    m_log.emplace();
    s_capture = qInstallMessageHandler(hear);
}

void OSUtilsTest::cleanup()
{
    QDesktopServices::unsetUrlHandler("file");
    endProcesses();
    m_processes.clear();
    m_windows.clear();
    m_os.reset();
    s_trigger.clear();
    qInstallMessageHandler(s_capture);
    m_log.reset();
    m_lines.clear();
    QDir::setCurrent(QDir::homePath());
}

void OSUtilsTest::makeApplication(const QString& kind)
{
    m_application.reset();
    if (kind == "core")
        m_application = std::make_unique<QCoreApplication>(s_argumentCount, s_arguments);
    else if (kind != "none")
        m_application = std::make_unique<QGuiApplication>(s_argumentCount, s_arguments);
    if (kind == "ended")
        m_application.reset();
    m_inThread = kind == "thread";
    QCoreApplication::setOrganizationName(kind == "domain" ? "" : "Test");
    QCoreApplication::setOrganizationDomain(kind == "domain" ? "example.org" : "");
    QCoreApplication::setApplicationName("app");
}

void OSUtilsTest::makeWindow(const QString& name, const QString& place)
{
    std::unique_ptr<QWindow>& window = m_windows[name];
    if (place.isEmpty()) {
        window->requestActivate();
    } else {
        window = std::make_unique<QRasterWindow>();
        window->setTitle(name);
        window->setGeometry(
            argument(QMetaType::fromType<QRect>(), place.section(' ', 0, 0)).toRect());
        if (place.endsWith("hidden"))
            return;
        window->show();
    }
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QTRY_COMPARE(QGuiApplication::focusWindow(), window.get());
}

void OSUtilsTest::makeOSUtils()
{
    m_os = std::make_unique<OSUtils>();
    const auto tell = [this](auto signal, const char* name) {
        connect(m_os.get(), signal, this, [this, name] { add(QString("signal: ") + name); });
    };
    tell(&OSUtils::devicePixelRatioChanged, "devicePixelRatioChanged");
    tell(&OSUtils::maxWidthChanged, "maxWidthChanged");
    tell(&OSUtils::maxHeightChanged, "maxHeightChanged");
    connect(m_os.get(), &OSUtils::fileMissing, this,
            [this](const QString& path) { add("signal: fileMissing " + path); });
}

/// Calls the operation `name` as QML would, through the meta-object, or reads the property `name`.
QVariant OSUtilsTest::ask(const QString& name, const QStringList& words)
{
    if (!m_os || name == "OSUtils") {
        makeOSUtils();
        if (name != "OSUtils")
            m_log->take();
    }
    const QMetaObject& meta = OSUtils::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.parameterCount() != words.size() ||
            (method.name() != name && method.methodSignature() != name))
            continue;
        QVariant result(method.returnMetaType()), values[2];
        QGenericArgument arguments[2];
        for (int k = 0; k < words.size(); ++k) {
            values[k] = argument(method.parameterMetaType(k), places(words[k], false));
            arguments[k] = QGenericArgument(method.parameterMetaType(k).name(), values[k].data());
        }
        method.invoke(m_os.get(), Qt::DirectConnection,
                      result.isValid() ? QGenericReturnArgument(method.typeName(), result.data())
                                       : QGenericReturnArgument(),
                      arguments[0], arguments[1]);
        return result;
    }
    if (name != "OSUtils" && meta.indexOfProperty(name.toUtf8()) < 0)
        add("OSUtils has no such operation or property");
    return m_os->property(name.toUtf8());
}

void OSUtilsTest::runShell(const QString& command, bool inBackground)
{
    m_processes.push_back(std::make_unique<QProcess>());
    QProcess& shell = *m_processes.back();
    shell.start("sh", {"-c", (inBackground ? "exec " : "") + command});
    if (inBackground)
        qputenv("LAST", QByteArray::number(shell.processId()));
    else if (!hasEnded(shell) || shell.exitCode())
        add("exit " + QString::number(shell.exitCode()));
    for (const QByteArray& line : shell.readAllStandardOutput().split('\n'))
        add(line);
}

void OSUtilsTest::writeProfile(const QString& name, const QString& path)
{
    const bool isAdobe = name == "AdobeRgb";
    QFile file(path);
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(QColorSpace(isAdobe ? QColorSpace::AdobeRgb : QColorSpace::DisplayP3).iccProfile());
}

void OSUtilsTest::copy(const QString& picture, const QString& file)
{
    auto data = std::make_unique<QMimeData>();
    data->setImageData(QImage(picture));
    data->setUrls({QUrl::fromLocalFile(QDir().absoluteFilePath(file))});
    QGuiApplication::clipboard()->setMimeData(data.release());
}

void OSUtilsTest::call(const QString& name, const QStringList& words, bool showsAnswer)
{
    QVariant answer;
    QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    if (m_inThread)
        std::thread([&] { answer = ask(name, words); }).join();
    else
        answer = ask(name, words);
    qputenv("ELAPSED", QByteArray::number(timer.elapsed()));
    QCoreApplication::processEvents();
    qputenv("ANSWER", answer.toString().toUtf8());
    add(answer.isValid() && showsAnswer ? "= " + textOf(answer) : "");
}

void OSUtilsTest::perform(const QString& command, const QString& name, const QStringList& words)
{
    const QString rest = words.join(" | "), line = name + ' ' + rest;
    if (command == "$" || command == "&") {
        runShell(line, command == "&");
    } else if (command == "wait") {
        runShell("until " + line + "; do sleep 0.02; done", false);
    } else if (command == "at") {
        s_trigger = QString(line).section(" | ", 0, 0);
        s_triggered = QString(line).section(" | ", 1);
    } else if (command == "set") {
        QProcess shell; // expands "$(command)"
        shell.start("sh", {"-c", "printf %s \"" + places(rest, false) + '"'});
        QVERIFY(shell.waitForFinished());
        const QString value = QString::fromUtf8(shell.readAllStandardOutput());
        if (name == "TMPDIR")
            TestSupport::setTemporaryFolder(value);
        else
            qputenv(name.toUtf8(), value.toLocal8Bit());
    } else if (command == "hash") {
        qputenv(name.toUtf8(), QByteArray::number(qHash(rest, 0)));
    } else if (command == "same") {
        const auto pixels = [](const QString& path) {
            return QImage(path).convertToFormat(QImage::Format_RGB32);
        };
        add("= " + textOf(pixels(name) == pixels(rest)));
    } else if (command == "copy") {
        copy(name, rest);
    } else if (command == "cursor") {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        m_lines.last() = "cursor " + (cursor ? textOf(cursor->hotSpot()) : "none");
    } else if (command == "profile") {
        writeProfile(name, rest);
    } else if (command == "application") {
        makeApplication(name);
        m_log->take(); // lines of Qt's own, which differ between versions
    } else if (command == "window") {
        makeWindow(name, rest);
    } else if (command == "palette") {
        const QColor text = name == "dark" ? Qt::white : Qt::black;
        const QColor window = name == "dark" ? Qt::black : Qt::white;
        QGuiApplication::setPalette(QPalette(text, window, {}, {}, {}, text, {}, {}, window));
    } else if (command == "?") {
        QTRY_COMPARE(textOf(ask(name, {})), rest.mid(2));
    } else {
        call(name, words, command == ">");
    }
}

void OSUtilsTest::plays_data()
{
    const bool isWindows = QSysInfo::kernelType() == "winnt";
    QTest::addColumn<QStringList>("lines");
    QFile file(s_transcript);
    QVERIFY(file.open(QIODevice::ReadOnly));
    for (const QString& text : QString::fromUtf8(file.readAll()).split("\n# ").mid(1)) {
        QStringList lines = text.split('\n', Qt::SkipEmptyParts);
        const QString name = lines.takeFirst();
        if (name.endsWith(isWindows ? ", not on Windows" : ", on Windows"))
            continue;
        lines = lines.filter(QRegularExpression("^[^%]"));
        // A case with several kinds of application is a row for each of them.
        const QStringList kinds = lines[0].section("application ", 1).split(" | ");
        for (const QString& kind : kinds) {
            if (kinds.size() > 1)
                lines[0] = "application " + kind;
            QTest::newRow(qPrintable(kinds.size() > 1 ? name + ", " + kind : name)) << lines;
        }
    }
}

void OSUtilsTest::plays()
{
    QFETCH(QStringList, lines);
    static const QRegularExpression command(
        "^(>>?|[$&?]|set|wait|at|hash|copy|same|cursor|application|"
        "window|palette|profile) ([^ ]+) ?(.*)$");
    if (!m_application && !lines[0].startsWith("application"))
        makeApplication("gui");
    for (const QString& line : lines) {
        if (const auto match = command.match(line); match.hasMatch()) {
            m_lines << line;
            perform(match.captured(1), match.captured(2),
                    match.captured(3).split(" | ", Qt::SkipEmptyParts));
            add({});
        }
    }
    for (int i = 0; i < qMin(m_lines.size(), lines.size()); ++i)
        QCOMPARE(m_lines[i], lines[i]);
    QCOMPARE(m_lines.mid(lines.size()), QStringList());
    QCOMPARE(lines.mid(m_lines.size()), QStringList());
}

int main(int argc, char** argv)
{
    TestSupport::letFileLimitsFail();
    OSUtilsTest::s_transcript = argv[1];
    qputenv("PATH", TOOLS ":" + qgetenv("PATH"));
    s_arguments = argv;
    OSUtilsTest test;
    return QTest::qExec(&test, argc - 1, argv + 1);
}
#include "tst_osutils.moc"

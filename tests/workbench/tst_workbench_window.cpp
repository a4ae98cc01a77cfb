// SPDX-License-Identifier: Apache-2.0
#include "facts.h"
#include "monitorcolours.h"
#include "photographfilter.h"
#include "pictureitem.h"
#include "window.h"
#include "workbenchmodel.h"
#include "worker.h"

#include <imageutils/osutils.h>

#include <QtCore/QDir>
#include <QtCore/QLoggingCategory>
#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QColorSpace>
#include <QtGui/QColorTransform>
#include <QtGui/QDropEvent>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int patience = 30'000; // milliseconds, on a loaded machine

/// Pixel (x, y) differs from its neighbours, so that a wrong one is seen.
QImage pattern(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, (x + y) % 256));
    return image;
}

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

/// The mean difference of the samples of two images of the same size.
double difference(const QImage& a, const QImage& b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QColor first = a.pixelColor(x, y);
            const QColor second = b.pixelColor(x, y);
            sum += std::abs(first.red() - second.red()) + std::abs(first.green() - second.green()) +
                   std::abs(first.blue() - second.blue());
        }
    return sum / (3.0 * a.width() * a.height());
}

QStringList linesOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

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

constexpr qint64 muchTooLong = 1000; // milliseconds; 100 where nothing else runs

/// How long the event loop and the frames of a window let others wait, since this was made. Frames
/// count only while something moves.
class Pauses
{
public:
    explicit Pauses(QQuickWindow* window)
    {
        QObject::connect(&m_beat, &QTimer::timeout, &m_beat, [this] { note(m_turn, m_longest); });
        QObject::connect(window, &QQuickWindow::frameSwapped, &m_beat,
                         [this] { note(m_frame, m_longestBetweenFrames); });
        m_turn.start();
        m_frame.start();
        m_beat.start(5);
    }

    qint64 longest() const { return m_longest; }
    qint64 longestBetweenFrames() const { return m_longestBetweenFrames; }

private:
    static void note(QElapsedTimer& since, qint64& longest)
    {
        longest = std::max(longest, since.restart());
    }

    QTimer m_beat;
    QElapsedTimer m_turn;
    QElapsedTimer m_frame;
    qint64 m_longest = 0;
    qint64 m_longestBetweenFrames = 0;
};

} // namespace

class WorkbenchWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Worker::setProgram(QStringLiteral(WORKBENCH_PROGRAM));
        QLoggingCategory::setFilterRules("default.info=false"); // lines of the library's own
    }
    void init();
    void cleanup() { m_window.reset(); }
    void exportsWhatItShows();
    void showsWhatALossyFileHolds();
    void factsAreInWords();
    void showsTransparencyInTheColoursOfTheMonitor();
    void showsTheThumbnailThatTheExportKept();
    void writesNothingAndRestsUntilAsked();
    void listIsUsedWithTheKeyboard();
    void listIsSorted();
    void timeLeftIsKnownAfterTheFirst();
    void manyFilesFreezeNothing();
    void largePhotographsFreezeNothing();
    void neighboursHoldNothingUp();
    void keepsPicturesWithinItsMemory_data();
    void keepsPicturesWithinItsMemory();
    void endsAnEncodingThatNothingWaitsFor();
    void pauseFinishesWhatIsInWork();
    void cancelLeavesNoFile();
    void folderThatVanishesIsTold();
    void opensAsItWasClosed();
    void interruptionLeavesNothing_data();
    void interruptionLeavesNothing();
    void badInputIsTold_data();
    void badInputIsTold();

private:
    void open(const QStringList& paths = {});
    QString at(const QString& name) const { return m_folder->filePath(name); }
    QQuickItem* item(const char* name) const
    {
        return m_window->window()->findChild<QQuickItem*>(QLatin1String(name));
    }
    QPoint middleOf(const char* name) const
    {
        QQuickItem* const found = item(name);
        return found->mapToScene(QPointF(found->width() / 2, found->height() / 2)).toPoint();
    }
    bool isShown() const
    {
        return !item("view")->property("isBusy").toBool() &&
               item("view")->property("whole").toSizeF().width() > 0;
    }
    PictureItem* after() const
    {
        const auto pictures = m_window->window()->findChildren<PictureItem*>();
        const auto found = std::find_if(pictures.begin(), pictures.end(), [](PictureItem* picture) {
            return picture->property("kind").toInt() == PictureItem::After;
        });
        return found == pictures.end() ? nullptr : *found;
    }
    bool comesToRest() const;
    void drag(QPoint from, QPoint way);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Window> m_window;
    Options m_options;
};

void WorkbenchWindowTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_options = {};
    m_options.settings.outputFolder = at(QStringLiteral("out"));
}

void WorkbenchWindowTest::open(const QStringList& paths)
{
    m_window = std::make_unique<Window>(m_options, findSources(paths, {}, {}));
    QVERIFY(m_window->window());
    QVERIFY(QTest::qWaitForWindowActive(m_window->window()));
}

/// Whether the window draws nothing for a while, once the message that it shows has gone away.
bool WorkbenchWindowTest::comesToRest() const
{
    const QSignalSpy frames(m_window->window(), &QQuickWindow::frameSwapped);
    qsizetype before = -1;
    for (int i = 0; i < 20 && before != frames.size(); ++i) {
        before = frames.size();
        QTest::qWait(1500);
    }
    return before == frames.size();
}

void WorkbenchWindowTest::drag(QPoint from, QPoint way)
{
    constexpr int steps = 10;
    QTest::mousePress(m_window->window(), Qt::LeftButton, {}, from);
    for (int i = 1; i <= steps; ++i)
        QTest::mouseMove(m_window->window(), from + way * i / steps, 20);
    QTest::mouseRelease(m_window->window(), Qt::LeftButton, {}, from + way);
}

/// The whole way: drop, compare, choose a size, export; the command line gives the same pixels.
void WorkbenchWindowTest::exportsWhatItShows()
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

/// The pixels on the screen are those that the exported JPEG file holds, which the format changed.
void WorkbenchWindowTest::showsWhatALossyFileHolds()
{
    const QImage source = pattern({200, 160});
    QVERIFY(source.save(at("a.png")));
    m_options.settings.format = "jpg";
    m_options.settings.quality = 10;
    open({at("a.png")});
    QTest::keyClick(m_window->window(), Qt::Key_5); // after
    QTRY_VERIFY_WITH_TIMEOUT(after()->isEncoded(), patience);
    QVERIFY(comesToRest());
    const QRect place(after()->mapToScene({0, 0}).toPoint(), source.size());
    const QImage shown = m_window->window()->grabWindow().copy(place);
    QTest::keyClick(m_window->window(), Qt::Key_E, Qt::ControlModifier);
    QTRY_COMPARE_WITH_TIMEOUT(m_window->photographs().exported(), 1, patience);
    const QRect inside(20, 40, 160, 110); // without the captions
    const QImage exported = QImage(at("out/a.jpg"));
    QVERIFY(difference(shown.copy(inside), exported.copy(inside)) < 1);
    QVERIFY(difference(source.copy(inside), exported.copy(inside)) > 5);
    m_window->photographs().settings()->setQuality(100);
    QTRY_VERIFY_WITH_TIMEOUT(difference(m_window->window()->grabWindow().copy(place).copy(inside),
                                        source.copy(inside)) < 2,
                             patience);
}

void WorkbenchWindowTest::factsAreInWords()
{
    JobResult facts;
    facts.size = QSize(600, 40);
    facts.metadata = {{"Make", "Acme"},
                      {"Model", "ACME  M"},
                      {"ExposureTime", 0.004},
                      {"FNumber", 0.7},
                      {"ISO", 400},
                      {"FocalLength", 35.5},
                      {"GPSLatitude", -1.5},
                      {"GPSLongitude", 11.25},
                      {"DateTimeOriginal", "then"}};
    facts.isGrey = true;
    QCOMPARE(Facts::values(facts), QStringList({"600 × 40 pixels (0.02 megapixels)", "ACME M",
                                                "1/250 s, f/0.7, ISO 400, 35.5 mm", "then",
                                                "1.5° S, 11.25° E", "black and white"}));
    facts.size = QSize(6000, 4000);
    facts.isGrey = false;
    facts.metadata = {{"Make", "A"}, {"Model", "M"}, {"ExposureTime", 0.3}, {"GPSLatitude", 0}};
    QCOMPARE(Facts::values(facts),
             QStringList({"6000 × 4000 pixels (24 megapixels)", "A M", "0.3 s"}));
    QCOMPARE(Facts::sizesText(99'900, 1'000'000), "99.9 kB → 1 MB");
    QCOMPARE(Facts::sizesText(100'000, -1), "0.1 MB");
    QCOMPARE(Facts::sizesText(-1, 5), "");
}

/// The left half of the photograph is transparent, and shows the chequerboard.
void WorkbenchWindowTest::showsTransparencyInTheColoursOfTheMonitor()
{
    const QColor colour(200, 40, 40);
    QImage image(400, 400, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int x = 200; x < 400; ++x)
        for (int y = 0; y < 400; ++y)
            image.setPixelColor(x, y, colour);
    QVERIFY(image.save(at("a.png")));
    const QColorSpace monitor(QColorSpace::ProPhotoRgb);
    QFile profile(at("monitor.icc"));
    QVERIFY(profile.open(QIODevice::WriteOnly));
    profile.write(monitor.iccProfile());
    profile.close();
    const auto setProfile = [](const QStringList& file) {
        MonitorColours::update();
        return QProcess::execute(QStringLiteral(TEST_SUPPORT "/set-root-property"),
                                 QStringList{"_ICC_PROFILE"} + file);
    };
    QCOMPARE(setProfile({profile.fileName()}), 0);
    open({at("a.png")});
    QTest::keyClick(m_window->window(), Qt::Key_5); // after
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    QTRY_COMPARE(after()->size(), QSizeF(image.size()));
    const QRect place(after()->mapToScene({0, 0}).toPoint(), image.size());
    const QImage shown = m_window->window()->grabWindow().copy(place);
    QCOMPARE(setProfile({}), 0);
    const QColor expected =
        QColorSpace(QColorSpace::SRgb).transformationToColorSpace(monitor).map(colour);
    QVERIFY(std::abs(shown.pixelColor(300, 200).red() - expected.red()) < 3);
    QVERIFY(std::abs(shown.pixelColor(300, 200).green() - expected.green()) < 3);
    QSet<QRgb> chequers;
    for (int x = 100; x < 190; ++x)
        chequers.insert(shown.pixel(x, 200));
    QCOMPARE(chequers.size(), 2);
}

void WorkbenchWindowTest::showsTheThumbnailThatTheExportKept()
{
    QVERIFY(pattern({64, 48}).save(at("a.png")));
    QImage kept(64, 48, QImage::Format_RGB32);
    kept.fill(Qt::red);
    const QString name = QString("VOLK_Thumbnail_%1.jpeg").arg(qHash(at("a.png"), 0));
    QVERIFY(kept.save(QDir::temp().filePath(name)));
    open({at("a.png")});
    const auto isRed = [this] {
        const QPoint place = item("list")->mapToScene({40, 32}).toPoint(); // in the first row
        const QColor seen = m_window->window()->grabWindow().pixelColor(place);
        return seen.red() > 240 && seen.green() < 15;
    };
    QTRY_VERIFY_WITH_TIMEOUT(isRed(), patience);
}

void WorkbenchWindowTest::writesNothingAndRestsUntilAsked()
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

void WorkbenchWindowTest::listIsUsedWithTheKeyboard()
{
    QStringList paths;
    for (const char name : {'a', 'b', 'c', 'd'}) {
        paths.append(at(QString(QLatin1Char(name)) + ".png"));
        QVERIFY(pattern({40, 30}).save(paths.last()));
    }
    open(paths);
    const auto row = [this] { return item("list")->property("currentIndex").toInt(); };
    const auto press = [this](Qt::Key key) { QTest::keyClick(m_window->window(), key); };
    QTRY_VERIFY(item("list")->hasActiveFocus());
    press(Qt::Key_F11);
    QTRY_COMPARE(m_window->window()->visibility(), QWindow::FullScreen);
    press(Qt::Key_Escape);
    QTRY_COMPARE(m_window->window()->visibility(), QWindow::Windowed);
    press(Qt::Key_Down);
    QCOMPARE(row(), 1);
    press(Qt::Key_End);
    QCOMPARE(row(), 3);
    press(Qt::Key_Home);
    QCOMPARE(row(), 0);
    press(Qt::Key_Delete);
    QTRY_COMPARE(m_window->photographs().count(), 3);
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    QSet<QObject*> reached; // by Tab, until the focus is where it began
    QObject* const first = m_window->window()->activeFocusItem();
    for (int i = 0; i < 100 && (i == 0 || m_window->window()->activeFocusItem() != first); ++i) {
        for (QQuickItem* focused = m_window->window()->activeFocusItem(); focused;
             focused = focused->parentItem())
            reached.insert(focused);
        press(Qt::Key_Tab);
    }
    for (const char* const name : {"list", "open", "export", "exportAll", "divider", "crop"})
        QVERIFY2(reached.contains(item(name)), name);
}

void WorkbenchWindowTest::listIsSorted()
{
    const QStringList paths{at("b.png"), at("c.png"), at("a.png")};
    const QStringList years{"2003", "2001", "2002"};
    for (int i = 0; i < 3; ++i) {
        QVERIFY(pattern({i == 1 ? 40 : 60 + 20 * i, 40}).save(paths[i]));
        QProcess::execute("exiftool", {"-q", "-overwrite_original", paths[i],
                                       "-DateTimeOriginal=" + years[i] + ":01:01 00:00:00"});
    }
    open(paths);
    PhotographFilter filter;
    filter.setPhotographs(&m_window->photographs());
    for (int row = 0; row < 3; ++row)
        QTRY_VERIFY_WITH_TIMEOUT(
            !filter.index(row, 0).data(WorkbenchModel::DateRole).toString().isEmpty(), patience);
    const QList<QList<int>> orders{{0, 1, 2}, {2, 0, 1}, {1, 2, 0}, {1, 0, 2}};
    for (int order = PhotographFilter::Added; order <= PhotographFilter::Size; ++order) {
        filter.setOrder(order);
        QCOMPARE(QList({filter.numberAt(0), filter.numberAt(1), filter.numberAt(2)}),
                 orders[order]);
    }
}

void WorkbenchWindowTest::timeLeftIsKnownAfterTheFirst()
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

void WorkbenchWindowTest::manyFilesFreezeNothing()
{
    QVERIFY(QDir(m_folder->path()).mkdir("many"));
    QVERIFY(pattern({60, 40}).save(at("good.png")));
    for (int i = 0; i < 10'000; ++i) {
        const QString name = at(QStringLiteral("many/%1.png").arg(i, 5, 10, QLatin1Char('0')));
        QVERIFY(i % 100 == 0 ? QFile(name).open(QIODevice::WriteOnly)
                             : QFile::link(at("good.png"), name));
    }
    open({at("good.png")});
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    const Pauses pauses(m_window->window());
    m_window->photographs().add({at("many")});
    QTRY_COMPARE_WITH_TIMEOUT(m_window->photographs().count(), 10'001, patience);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->photographs().failed() > 0, patience);
    QTest::keyClick(m_window->window(), Qt::Key_End);
    QTest::qWait(1000);
    qWarning() << "10,000 files are listed: longest pause of the window in ms" << pauses.longest();
    QVERIFY(pauses.longest() < muchTooLong);
}

/// While an 18-megapixel photograph is shown and exported, the divider follows the mouse, and each
/// change of the settings shows at once in a draft, which hardly differs from the exact pixels.
void WorkbenchWindowTest::largePhotographsFreezeNothing()
{
    const QSize size(5640, 3172);
    QVERIFY(pattern(size / 8).scaled(size, {}, Qt::SmoothTransformation).save(at("a.jpg")));
    open({at("a.jpg")});
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    SettingsModel* const settings = m_window->photographs().settings();
    settings->setSizing(SettingsModel::Scale);
    const auto seen = [this] { // of the exported picture, right of the divider
        const QRect place(middleOf("divider") + QPoint(20, -150), QSize(250, 300));
        return m_window->window()->grabWindow().copy(place);
    };
    QList<qint64> times;
    const auto change = [&](const std::function<void()>& what, double tolerance) {
        QCoreApplication::processEvents();
        QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
        QSignalSpy shown(after(), &PictureItem::shownChanged);
        QElapsedTimer clock;
        clock.start();
        what();
        while (!after()->isDraft())
            QVERIFY(shown.wait(patience));
        times.append(clock.elapsed());
        const QImage draft = seen();
        QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
        QVERIFY(!after()->isDraft());
        QVERIFY2(difference(draft, seen()) < tolerance,
                 qPrintable(QString::number(difference(draft, seen()))));
    };
    const auto width = [this] { return item("view")->property("whole").toSizeF().width(); };
    for (const int percent : {40, 37, 35, 33, 31, 29, 27}) {
        change([&] { settings->setPercent(percent); }, 6);
        QCOMPARE(width(), qRound(size.width() * percent / 100.0));
    }
    change([&] { m_window->photographs().turn(0, 1); }, 6);
    QTest::keyClick(m_window->window(), Qt::Key_Z);
    change([&] { settings->setFilterB(0.9); }, 3);
    settings->setPercent(90);
    QTRY_VERIFY_WITH_TIMEOUT(width() > size.height() * 0.8, patience);
    change([&] { settings->setFilterB(0.1); }, 0.5); // the exact pixels of the visible region
    std::sort(times.begin(), times.end());
    qWarning() << "18 megapixels: a change of the settings shows after ms"
               << times[times.size() / 2] << "at most" << times.last();
    QVERIFY(times.last() < muchTooLong);

    QTest::qWait(300);
    const Pauses pauses(m_window->window());
    QTest::keyClick(m_window->window(), Qt::Key_E, Qt::ControlModifier);
    QElapsedTimer clock;
    clock.start();
    while (m_window->photographs().remaining() > 0 || clock.elapsed() < 500) {
        item("view")->setProperty("divider", 0.3 + double(clock.elapsed() % 400) / 1000);
        QTest::qWait(5);
        QVERIFY(clock.elapsed() < patience);
    }
    QCOMPARE(m_window->photographs().exported(), 1);
    qWarning() << "18 megapixels are exported: longest pause in ms" << pauses.longest()
               << "between frames" << pauses.longestBetweenFrames();
    QVERIFY(pauses.longestBetweenFrames() < muchTooLong);
}

/// A change of the settings interrupts the decoding of the large neighbour, which is then done when
/// the user looks at it.
void WorkbenchWindowTest::neighboursHoldNothingUp()
{
    QVERIFY(pattern({1600, 1200}).save(at("a.jpg")));
    QVERIFY(pattern({800, 600}).scaled(8000, 6000).save(at("b.jpg")));
    open({at("a.jpg"), at("b.jpg")});
    const auto timeOf = [this](const std::function<void()>& action) {
        QElapsedTimer clock;
        clock.start();
        action();
        QCoreApplication::processEvents();
        return QTest::qWaitFor([this] { return isShown(); }, patience) ? clock.elapsed() : -1;
    };
    QVERIFY(timeOf([] {}) > 0);
    SettingsModel* const settings = m_window->photographs().settings();
    const qint64 change = timeOf([&] { settings->setSizing(SettingsModel::Scale); });
    const qint64 next = timeOf([this] { QTest::keyClick(m_window->window(), Qt::Key_Down); });
    QVERIFY2(change < next / 2, qPrintable(QString("%1 %2 ms").arg(change).arg(next)));
}

void WorkbenchWindowTest::keepsPicturesWithinItsMemory_data()
{
    QTest::addColumn<qint64>("megabytes"); // a twelfth of them is for decoded pictures
    QTest::addColumn<bool>("isKept");
    QTest::newRow("enough for all") << qint64(4800) << true;
    QTest::newRow("enough for one") << qint64(480) << false;
}

/// A picture that is kept is shown although its file has been damaged since it was decoded.
void WorkbenchWindowTest::keepsPicturesWithinItsMemory()
{
    QFETCH(qint64, megabytes);
    QFETCH(bool, isKept);
    const auto damage = [](const QString& path) {
        const QDateTime changed = QFileInfo(path).lastModified();
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.write(QByteArray(int(file.size()), '\0'));
        file.flush();
        QVERIFY(file.setFileTime(changed, QFileDevice::FileModificationTime));
    };
    QStringList paths;
    for (const char name : {'a', 'b', 'c', 'd', 'e'}) { // of 32 MB each, when they are decoded
        paths.append(at(QString(QLatin1Char(name)) + ".jpg"));
        QVERIFY(pattern({1600, 1250}).save(paths.last()));
    }
    m_options.maxMemory = megabytes << 20;
    open(paths);
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    QVERIFY(comesToRest());
    if (isKept)
        damage(paths[1]); // it was made ready as a neighbour
    for (int i = 1; i < 5; ++i) {
        QTest::keyClick(m_window->window(), Qt::Key_Down);
        QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    }
    QCOMPARE(m_window->photographs().failed(), 0);
    damage(paths[0]);
    QTest::keyClick(m_window->window(), Qt::Key_Home);
    QTRY_VERIFY_WITH_TIMEOUT(isShown() || m_window->photographs().failed() > 0, patience);
    const QModelIndex first = m_window->photographs().index(0);
    QVERIFY2(m_window->photographs().failed() == (isKept ? 0 : 1),
             qPrintable(first.data(WorkbenchModel::FailureRole).toString()));
}

void WorkbenchWindowTest::endsAnEncodingThatNothingWaitsFor()
{
    QVERIFY(pattern({4000, 3000}).save(at("a.jpg")));
    m_options.settings.format = "avif"; // of which this size takes many seconds
    open({at("a.jpg")});
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), patience);
    QTest::keyClick(m_window->window(), Qt::Key_Z);
    const auto encodings = [] {
        return QDir::temp().entryList({".imageutils-workbench-*.avif"}, QDir::Files | QDir::Hidden);
    };
    QTRY_COMPARE_WITH_TIMEOUT(encodings().size(), 1, patience);
    m_window->photographs().settings()->setFormat("png");
    QTRY_COMPARE(encodings().size(), 0);
}

void WorkbenchWindowTest::pauseFinishesWhatIsInWork()
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

void WorkbenchWindowTest::cancelLeavesNoFile()
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

void WorkbenchWindowTest::folderThatVanishesIsTold()
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

void WorkbenchWindowTest::opensAsItWasClosed()
{
    open();
    m_window->window()->setGeometry(90, 70, 800, 600);
    QTRY_COMPARE(m_window->window()->size(), QSize(800, 600));
    QTest::qWait(500); // the window manager may still move it
    const QPoint place = m_window->window()->position();
    m_window->photographs().settings()->setLongEdge(1234);
    m_window->window()->showMaximized();
    QTRY_VERIFY(m_window->window()->width() > 1000);
    QTest::qWait(500);
    m_window.reset();
    open();
    QTRY_COMPARE(m_window->window()->visibility(), QWindow::Maximized);
    QCOMPARE(m_window->photographs().settings()->longEdge(), 1234);
    m_window->window()->showNormal();
    QTRY_COMPARE(m_window->window()->size(), QSize(800, 600));
    QTRY_COMPARE(m_window->window()->position(), place);
    m_window->photographs().settings()->reset("longEdge");
}

void WorkbenchWindowTest::interruptionLeavesNothing_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("SIGTERM") << QStringList{"kill", "-TERM", "PID"};
    QTest::newRow("SIGINT") << QStringList{"kill", "-INT", "PID"};
    QTest::newRow("closed") << QStringList{"xdotool", "key", "ctrl+q"};
}

/// The program itself, in the middle of an export.
void WorkbenchWindowTest::interruptionLeavesNothing()
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

void WorkbenchWindowTest::badInputIsTold_data()
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

void WorkbenchWindowTest::badInputIsTold()
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

QTEST_MAIN(WorkbenchWindowTest)
#include "tst_workbench_window.moc"

// SPDX-License-Identifier: Apache-2.0
#include "windowtest.h"

#include "facts.h"
#include "monitorcolours.h"
#include "photographfilter.h"
#include "previewstore.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QSettings>
#include <QtCore/QTimer>
#include <QtGui/QColorSpace>
#include <QtGui/QColorTransform>

#include <cstdlib>
#include <functional>

namespace {

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

/// What the window shows, and when.
class WindowLookTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhatALossyFileHolds();
    void factsAreInWords();
    void showsTransparencyInTheColoursOfTheMonitor();
    void showsTheThumbnailThatTheExportKept();
    void takesTheSizesOfTheCommandLine();
    void listIsUsedWithTheKeyboard();
    void listIsSorted();
    void manyFilesFreezeNothing();
    void largePhotographsFreezeNothing();
    void neighboursHoldNothingUp();
    void keepsPicturesWithinItsMemory_data();
    void keepsPicturesWithinItsMemory();
    void endsAnEncodingThatNothingWaitsFor();
    void opensAsItWasClosed();
};

void WindowLookTest::showsWhatALossyFileHolds()
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

void WindowLookTest::factsAreInWords()
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
    facts.metadata = {
        {"Make", "A"}, {"Model", "M"}, {"ExposureTime", 0.3}, {"ISO", 1}, {"GPSLatitude", 0}};
    QCOMPARE(Facts::values(facts),
             QStringList({"6000 × 4000 pixels (24 megapixels)", "A M", "0.3 s, ISO 1"}));
    QCOMPARE(Facts::sizesText(99'900, 1'000'000), "99.9 kB → 1 MB");
    QCOMPARE(Facts::sizesText(100'000, -1), "0.1 MB");
    QCOMPARE(Facts::sizesText(-1, 5), "");
}

void WindowLookTest::showsTransparencyInTheColoursOfTheMonitor()
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

void WindowLookTest::showsTheThumbnailThatTheExportKept()
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
    Request again = *m_window->photographs().requestFor(0);
    again.view.kind = View::Kind::Thumbnail;
    bool isKnown = false;
    m_window->photographs().store()->ask(this, again, [&](const Shown&) { isKnown = true; });
    QVERIFY(isKnown); // no process makes it once more
}

void WindowLookTest::takesTheSizesOfTheCommandLine()
{
    QList<ExportSettings> sizes(4);
    sizes[0].scale = 0.37;
    sizes[1].sizeChoice = SizeChoice::LongEdge;
    sizes[1].longEdge = 321;
    sizes[2].maxWidth = 222;
    sizes[3].maxHeight = 111;
    constexpr int most = 100'000; // more than any picture has
    const QList<QSize> bounds{{0, 0}, {321, 321}, {222, most}, {most, 111}};
    for (int i = 0; i < 4; ++i) {
        Options options;
        options.settings = sizes[i];
        options.settings.filter = FilterShape{1, 0.25};
        const ExportSettings taken = SettingsModel(options).options().settings;
        QCOMPARE(taken.scale, sizes[i].scale);
        QCOMPARE(QSize(taken.maxWidth, taken.maxHeight), bounds[i]);
        QVERIFY(taken.filter->b == 1 && taken.filter->c == 0.25F);
    }
}

void WindowLookTest::listIsUsedWithTheKeyboard()
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

void WindowLookTest::listIsSorted()
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

void WindowLookTest::manyFilesFreezeNothing()
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
    WorkbenchModel& photographs = m_window->photographs();
    QTimer turns; // of the event loop
    int rows = 0; // that were added in this turn
    int most = 0;
    connect(&turns, &QTimer::timeout, &turns, [&] { rows = 0; });
    connect(&photographs, &QAbstractItemModel::rowsInserted, &turns,
            [&](const QModelIndex&, int first, int last) {
                rows += last - first + 1;
                most = std::max(most, rows);
            });
    turns.start(0);
    const Pauses pauses(m_window->window());
    const QSignalSpy added(&photographs, &WorkbenchModel::added);
    QElapsedTimer clock;
    clock.start();
    photographs.add({at("many")});
    const qint64 timeOfCall = clock.elapsed();
    QTRY_COMPARE_WITH_TIMEOUT(photographs.count(), 10'001, patience);
    QTRY_COMPARE(added.value(0), QVariantList({1, 10'000}));
    const qint64 time = clock.elapsed();
    turns.stop();
    QTRY_VERIFY_WITH_TIMEOUT(photographs.failed() > 0, patience);
    QTest::keyClick(m_window->window(), Qt::Key_End);
    QTest::qWait(1000);
    qWarning() << "10,000 files are listed in ms" << time << "longest pause of the window"
               << pauses.longest();
    QVERIFY(most < 1000);
    QVERIFY2(timeOfCall < time / 4, qPrintable(QString::number(timeOfCall)));
    QVERIFY(pauses.longest() < clock.elapsed() / 2);
}

void WindowLookTest::largePhotographsFreezeNothing()
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
    QList<qint64> times; // until a draft is seen; printed only, because they depend on the load
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
    const qint64 time = clock.elapsed();
    QCOMPARE(m_window->photographs().exported(), 1);
    qWarning() << "18 megapixels are exported in ms" << time << "longest pause" << pauses.longest()
               << "between frames" << pauses.longestBetweenFrames();
    QVERIFY(pauses.longestBetweenFrames() < time / 2);
}

void WindowLookTest::neighboursHoldNothingUp()
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

void WindowLookTest::keepsPicturesWithinItsMemory_data()
{
    QTest::addColumn<qint64>("megabytes"); // a twelfth of them is for decoded pictures
    QTest::addColumn<bool>("isKept");
    QTest::newRow("enough for all") << qint64(4800) << true;
    QTest::newRow("enough for one") << qint64(480) << false;
}

void WindowLookTest::keepsPicturesWithinItsMemory()
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

void WindowLookTest::endsAnEncodingThatNothingWaitsFor()
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

void WindowLookTest::opensAsItWasClosed()
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
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", "/"); // of a user without a home, whose settings are not kept
    m_window.reset();
    qputenv("HOME", home);
    QVERIFY(QSettings().value("window/maximised").toBool());
    QCOMPARE(QSettings().value("export/last").toMap()["longEdge"].toInt(), 1234);
    QSettings().clear();
}

QTEST_MAIN(WindowLookTest)
#include "tst_workbench_window_look.moc"

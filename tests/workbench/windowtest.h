// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pictureitem.h"
#include "window.h"
#include "workbenchmodel.h"
#include "worker.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>

constexpr int patience = 30'000; // milliseconds, on a loaded machine

/// Pixel (x, y) differs from its neighbours, so that a wrong one is seen.
inline QImage pattern(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, (x + y) % 256));
    return image;
}

/// A window, in the process of the test, and a folder for each test function.
class WindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Worker::setProgram(QStringLiteral(WORKBENCH_PROGRAM));
        QLoggingCategory::setFilterRules("default.info=false"); // lines of the library's own
    }
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_options = {};
        m_options.settings.outputFolder = at(QStringLiteral("out"));
    }
    void cleanup() { m_window.reset(); }

protected:
    void open(const QStringList& paths = {})
    {
        m_window = std::make_unique<Window>(m_options, findSources(paths, {}, {}));
        QVERIFY(m_window->window());
        QVERIFY(QTest::qWaitForWindowActive(m_window->window()));
    }
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
    /// Whether the window draws nothing for a while, once the message that it shows has gone away.
    bool comesToRest() const
    {
        const QSignalSpy frames(m_window->window(), &QQuickWindow::frameSwapped);
        qsizetype before = -1;
        for (int i = 0; i < 20 && before != frames.size(); ++i) {
            before = frames.size();
            QTest::qWait(1500);
        }
        return before == frames.size();
    }
    void drag(QPoint from, QPoint way)
    {
        constexpr int steps = 10;
        QTest::mousePress(m_window->window(), Qt::LeftButton, {}, from);
        for (int i = 1; i <= steps; ++i)
            QTest::mouseMove(m_window->window(), from + way * i / steps, 20);
        QTest::mouseRelease(m_window->window(), Qt::LeftButton, {}, from + way);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Window> m_window;
    Options m_options;
};

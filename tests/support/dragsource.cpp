// SPDX-License-Identifier: Apache-2.0
//
// dragsource FILE: shows a small window of one colour, from which FILE is dragged.
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDrag>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QRasterWindow>

namespace {

class Source : public QRasterWindow
{
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(QRect({}, size()), QColor(230, 20, 200));
    }
    void mousePressEvent(QMouseEvent*) override
    {
        auto* const file = new QMimeData; // the drag's from here on
        file->setUrls({QUrl::fromLocalFile(QGuiApplication::arguments().at(1))});
        auto* const drag = new QDrag(this); // deletes itself
        drag->setMimeData(file);
        drag->exec(Qt::CopyAction);
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    Source source;
    source.resize(80, 80);
    source.show();
    return QGuiApplication::exec();
}

// SPDX-License-Identifier: Apache-2.0
#include "pictureitem.h"

#include "facts.h"
#include "monitorcolours.h"

#include <QtCore/QPointer>
#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <algorithm>
#include <memory>

namespace {

const QRectF everything(0, 0, 1, 1);

/// What of a picture of `whole` pixels `part` is.
QRectF shareOf(const QRect& part, QSize whole)
{
    if (whole.isEmpty())
        return everything;
    return {double(part.x()) / whole.width(), double(part.y()) / whole.height(),
            double(part.width()) / whole.width(), double(part.height()) / whole.height()};
}

/// `image` over a chequerboard, as pictures with transparent places are shown.
QImage overChequers(const QImage& image)
{
    constexpr int side = 12;
    QImage tile(2 * side, 2 * side, QImage::Format_RGB32);
    tile.fill(QColor(0xc8, 0xc8, 0xc8));
    QImage result(image.size(), QImage::Format_RGB32);
    QPainter tilePainter(&tile);
    tilePainter.fillRect(0, 0, side, side, QColor(0x98, 0x98, 0x98));
    tilePainter.fillRect(side, side, side, side, QColor(0x98, 0x98, 0x98));
    tilePainter.end();
    QPainter painter(&result);
    painter.fillRect(result.rect(), QBrush(tile));
    painter.drawImage(0, 0, image);
    return result;
}

bool isTransparent(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const uchar* const row = image.constScanLine(y);
        for (int x = 0; x < image.width(); ++x)
            if (row[4 * x + 3] != 255)
                return true;
    }
    return false;
}

QList<int> histogramOf(const QImage& image)
{
    constexpr int levels = 64;
    QList<int> counts(levels);
    for (int y = 0; y < image.height(); ++y) {
        const uchar* const row = image.constScanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            const uchar* const pixel = row + 4 * x;
            const int lightness = (54 * pixel[0] + 183 * pixel[1] + 19 * pixel[2]) >> 8;
            ++counts[lightness * levels / 256];
        }
    }
    return counts;
}

} // namespace

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent)
{
    using namespace std::chrono_literals;
    setFlag(ItemHasContents);
    m_encoding.setSingleShot(true);
    m_encoding.setInterval(250ms);
    connect(&m_encoding, &QTimer::timeout, this, &PictureItem::askEncoded);
    connect(this, &PictureItem::askedFor, this, &PictureItem::scheduleAsk);
}

PictureItem::~PictureItem()
{
    if (m_photographs)
        m_photographs->store()->withdraw(this);
}

void PictureItem::setNumber(int number)
{
    if (m_number == number)
        return;
    m_number = number;
    m_isWholeCurrent = false;
    clear();
    Q_EMIT askedFor();
}

void PictureItem::setPart(const QRectF& part)
{
    if (m_part == part)
        return;
    m_part = part;
    update();
    Q_EMIT askedFor();
}

void PictureItem::clear()
{
    m_whole = {};
    m_detail = {};
    m_pixels = {};
    m_shown = View::Kind::None;
    m_failure.clear();
    m_histogram.clear();
    update();
    Q_EMIT shownChanged();
}

void PictureItem::componentComplete()
{
    QQuickItem::componentComplete();
    if (m_photographs)
        connect(m_photographs, &WorkbenchModel::viewChanged, this, [this](int number) {
            if ((number != m_number && number >= 0) || m_kind == Thumbnail)
                return;
            m_isWholeCurrent = false;
            scheduleAsk();
        });
    scheduleAsk();
}

void PictureItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        m_isWholeCurrent = false;
        scheduleAsk();
    }
    update();
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged || change == ItemDevicePixelRatioHasChanged)
        scheduleAsk();
}

/// Several properties may change before the picture is asked for once.
void PictureItem::scheduleAsk()
{
    if (m_isScheduled)
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(this, &PictureItem::ask, Qt::QueuedConnection);
}

QSize PictureItem::pixelBounds() const
{
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1.0;
    return (size() * ratio).toSize();
}

void PictureItem::ask()
{
    m_isScheduled = false;
    m_encoding.stop();
    if (!m_photographs || !isComponentComplete() || !isVisible() || pixelBounds().isEmpty())
        return;
    ++m_generation;
    m_mayBeDraft = true;
    m_isDetailCurrent = isWhole();
    if (m_number < 0)
        m_photographs->store()->withdraw(this);
    else
        askNext();
}

void PictureItem::setUncropped(bool isUncropped)
{
    if (m_isUncropped == isUncropped)
        return;
    m_isUncropped = isUncropped;
    m_isWholeCurrent = false;
    clear(); // the frame of the crop is drawn on the whole photograph
    Q_EMIT askedFor();
}

/// Whether the whole picture is visible.
bool PictureItem::isWhole() const { return m_part == everything || m_kind == Thumbnail; }

/// Requests what is still missing, the visible region first.
void PictureItem::askNext()
{
    constexpr std::array kinds{View::Kind::Thumbnail, View::Kind::Before, View::Kind::After};
    const View::Kind kind = kinds[std::size_t(m_kind)];
    const bool isMissing = !m_isWholeCurrent || (!m_isDetailCurrent && isReady());
    setBusy(isMissing);
    if (!m_isDetailCurrent && isReady())
        request(kind, m_part);
    else if (!m_isWholeCurrent)
        request(kind, everything);
    else if (losesPixels())
        m_encoding.start();
}

/// Whether a pixel of the exported picture takes one of the screen or more, and may have changed in
/// the exported file.
bool PictureItem::losesPixels() const
{
    const double magnification = pixelBounds().width() / (m_part.width() * m_pixels.width());
    return m_kind == After && m_failure.isEmpty() && m_pixels.width() > 0 && magnification > 0.99 &&
           m_photographs->losesPixels(m_number);
}

void PictureItem::askEncoded() { request(View::Kind::Encoded, m_part); }

void PictureItem::setBusy(bool isBusy)
{
    if (m_isBusy == isBusy)
        return;
    m_isBusy = isBusy;
    Q_EMIT shownChanged();
}

void PictureItem::request(View::Kind kind, const QRectF& part)
{
    auto request = m_photographs->requestFor(m_number);
    if (!request) { // it has been removed
        setBusy(false);
        return;
    }
    request->view = {kind, pixelBounds(), part, m_mayBeDraft && kind != View::Kind::Thumbnail};
    if (m_isUncropped) {
        request->options.settings.rotate = 0;
        request->options.settings.crop = {};
    }
    m_photographs->store()->ask(
        this, *request,
        [this, view = request->view, generation = m_generation](const Shown& shown) {
            if (generation == m_generation)
                show(shown, view);
        });
}

/// The colours of the monitor take a while for a large picture, so another thread converts them.
void PictureItem::show(const Shown& shown, const View& view)
{
    const auto convert = [shown, colours = MonitorColours::current()] {
        const QImage image = isTransparent(shown.image) ? overChequers(shown.image) : shown.image;
        return colours.converted(image);
    };
    if (m_kind == Thumbnail || shown.image.isNull()) {
        take(shown, convert(), view);
        return;
    }
    QThreadPool::globalInstance()->start(
        [item = QPointer(this), convert, shown, view, generation = m_generation] {
            const QImage image = convert();
            QMetaObject::invokeMethod(qApp, [=] {
                if (item && generation == item->m_generation)
                    item->take(shown, image, view);
            });
        });
}

void PictureItem::take(const Shown& shown, const QImage& image, const View& view)
{
    if (view.kind == View::Kind::Encoded && image.isNull())
        return; // the export itself will say why
    m_failure = shown.image.isNull() ? Facts::failureText(shown.facts.failure) : QString();
    const bool isDetail = view.kind == View::Kind::Encoded || view.part != everything;
    (isDetail ? m_detail : m_whole) = Layer{image, shareOf(shown.part, shown.whole), true};
    m_pixels = shown.whole;
    m_shown = view.kind;
    m_isDraft = shown.isDraft;
    m_mayBeDraft = false;
    if (isDetail)
        m_isDetailCurrent = !shown.isDraft;
    else
        takeWhole(shown);
    update();
    Q_EMIT shownChanged();
    if (view.kind != View::Kind::Encoded)
        askNext();
}

/// The whole picture is current, or a draft of it. A detail that came before it stays.
void PictureItem::takeWhole(const Shown& shown)
{
    m_isWholeCurrent = !shown.isDraft;
    if (!m_isDetailCurrent || isWhole())
        m_detail = {};
    m_histogram = m_kind == After ? histogramOf(shown.image) : QList<int>();
}

/// The rectangle that `part` of the picture covers, in coordinates of the item.
QRectF PictureItem::placeOf(const QRectF& part) const
{
    const double across = width() / m_part.width();
    const double down = height() / m_part.height();
    return {(part.x() - m_part.x()) * across, (part.y() - m_part.y()) * down, part.width() * across,
            part.height() * down};
}

QSGNode* PictureItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData*)
{
    if (!node)
        node = new QSGNode; // the scene graph's from here on
    drawLayer(node, 0, m_whole);
    drawLayer(node, 1, m_detail);
    return node;
}

/// Pictures that are reduced have mipmaps, or fine patterns would show moiré. Those of which a
/// pixel covers several of the screen show it as a square, as photographers want to see it.
void PictureItem::drawLayer(QSGNode* root, int index, Layer& layer)
{
    auto* node = index < root->childCount() ? static_cast<QSGImageNode*>(root->childAtIndex(index))
                                            : nullptr;
    const bool isNewNode = !node;
    if (isNewNode) {
        if (layer.image.isNull())
            return;
        if (index > 0 && root->childCount() == 0)
            return; // the whole picture comes first
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFlag(QSGNode::OwnedByParent);
        layer.isNew = true;
    }
    if (layer.image.isNull()) {
        node->setRect(QRectF());
        return;
    }
    if (layer.isNew) {
        node->setTexture(
            window()->createTextureFromImage(layer.image, QQuickWindow::TextureHasMipmaps));
        layer.isNew = false;
    }
    const QRectF place = placeOf(layer.part);
    const double magnification =
        place.width() * window()->effectiveDevicePixelRatio() / layer.image.width();
    node->setFiltering(magnification >= 1.9 ? QSGTexture::Nearest : QSGTexture::Linear);
    node->setMipmapFiltering(QSGTexture::Linear);
    node->setRect(place);
    if (isNewNode) // last, as the software renderer reads the texture of every node of the scene
        root->appendChildNode(node);
}

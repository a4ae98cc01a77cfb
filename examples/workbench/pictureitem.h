// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbenchmodel.h"

#include <QtQuick/QQuickItem>

/// An item that shows a photograph before or after its export, or its thumbnail. It requests the
/// whole picture at the item's size first, and then the visible region at full resolution. The old
/// image stays in place until the new one arrives.
class PictureItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(WorkbenchModel* photographs MEMBER m_photographs NOTIFY askedFor REQUIRED)
    Q_PROPERTY(int number READ number WRITE setNumber NOTIFY askedFor)
    Q_PROPERTY(Kind kind MEMBER m_kind NOTIFY askedFor)
    Q_PROPERTY(bool isUncropped READ isUncropped WRITE setUncropped NOTIFY askedFor)
    Q_PROPERTY(QRectF part READ part WRITE setPart NOTIFY askedFor)
    Q_PROPERTY(bool isReady READ isReady NOTIFY shownChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY shownChanged)
    Q_PROPERTY(QString failure READ failure NOTIFY shownChanged)
    Q_PROPERTY(QSizeF pixels READ pixels NOTIFY shownChanged)
    Q_PROPERTY(QList<int> histogram READ histogram NOTIFY shownChanged)

public:
    enum Kind { Thumbnail, Before, After };
    Q_ENUM(Kind)

    explicit PictureItem(QQuickItem* parent = nullptr);
    ~PictureItem() override;

    int number() const { return m_number; }
    void setNumber(int number);
    QRectF part() const { return m_part; }
    void setPart(const QRectF& part); ///< in widths and heights of the picture

    bool isUncropped() const { return m_isUncropped; } ///< the turn by degrees is left out
    void setUncropped(bool isUncropped);

    bool isReady() const { return !m_whole.image.isNull(); }
    bool isBusy() const { return m_isBusy; } ///< the picture that is shown is not yet the right one
    QString failure() const { return m_failure; } ///< a sentence; empty when there is none
    QSizeF pixels() const { return m_pixels; }    ///< of the whole picture; empty while unknown

    /// How many pixels of the whole picture have each of 64 levels of lightness.
    QList<int> histogram() const { return m_histogram; }

Q_SIGNALS:
    void askedFor();
    void shownChanged();

protected:
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void componentComplete() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

private:
    /// A picture that came, and what it shows of the photograph, in widths and heights.
    struct Layer
    {
        QImage image;
        QRectF part;
        bool isNew = false; ///< not yet a texture
    };

    void scheduleAsk();
    void ask();
    void askPart();
    void request(const QRectF& part);
    void show(const Shown& shown, bool isPart);
    void take(const Shown& shown, const QImage& image, bool isPart);
    void clear();
    QSize pixelBounds() const;
    QRectF placeOf(const QRectF& part) const;
    void drawLayer(QSGNode* root, int index, Layer& layer);

    WorkbenchModel* m_photographs = nullptr;
    int m_number = -1;
    Kind m_kind = Before;
    bool m_isUncropped = false;
    bool m_isWholeCurrent = false; ///< the whole picture shows what is wanted now
    QRectF m_part{0, 0, 1, 1};
    Layer m_whole;
    Layer m_detail;
    QSizeF m_pixels;
    QString m_failure;
    QList<int> m_histogram;
    bool m_isBusy = false;
    bool m_isScheduled = false;
    int m_generation = 0; ///< of the wish; pictures for older ones are dropped
};

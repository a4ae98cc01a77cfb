// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbenchmodel.h"

#include <QtCore/QTimer>
#include <QtQuick/QQuickItem>

/// An item that shows a photograph before or after its export, or its thumbnail. It first requests
/// the whole picture at the item's size, and then the visible region at full resolution; when there
/// is a picture already, and only its settings have changed, the visible region comes first. What
/// takes long to compute comes as a draft, and the exact pixels follow. Where the pixels of an
/// exported picture can be told apart, and its format loses some of them, it is then requested as
/// its file gives it back. The old image stays until the new one arrives.
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
    Q_PROPERTY(bool isEncoded READ isEncoded NOTIFY shownChanged)
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

    bool isUncropped() const
    {
        return m_isUncropped;
    } ///< the turn by degrees and the crop are left out
    void setUncropped(bool isUncropped);

    bool isReady() const { return !m_whole.image.isNull(); }
    bool isBusy() const { return m_isBusy; } ///< the picture that is shown is not yet the right one
    /// The picture that is shown was read back from the exported file.
    bool isEncoded() const { return m_shown == View::Kind::Encoded; }
    bool isDraft() const { return m_isDraft; }    ///< and the exact one has been requested
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
    void askNext();
    void askEncoded();
    void request(View::Kind kind, const QRectF& part);
    void show(const Shown& shown, const View& view);
    void take(const Shown& shown, const QImage& image, const View& view);
    void takeWhole(const Shown& shown);
    void setBusy(bool isBusy);
    void clear();
    bool isWhole() const;
    bool losesPixels() const;
    QSize pixelBounds() const;
    QRectF placeOf(const QRectF& part) const;
    void drawLayer(QSGNode* root, int index, Layer& layer);

    WorkbenchModel* m_photographs = nullptr;
    int m_number = -1;
    Kind m_kind = Before;
    bool m_isUncropped = false;
    bool m_isWholeCurrent = false;         ///< the whole picture shows what is wanted now
    bool m_isDetailCurrent = false;        ///< the visible region does
    View::Kind m_shown = View::Kind::None; ///< what the visible region came as
    QRectF m_part{0, 0, 1, 1};
    Layer m_whole;
    Layer m_detail;
    QSizeF m_pixels;
    QString m_failure;
    QList<int> m_histogram;
    bool m_isBusy = false;
    bool m_isDraft = false;
    bool m_mayBeDraft = true; ///< nothing has come yet for the settings of now
    bool m_isScheduled = false;
    int m_generation = 0; ///< of the request; pictures for older ones are dropped
    QTimer m_encoding;    ///< while settings are being changed, nothing is encoded
};

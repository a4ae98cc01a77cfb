// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbenchmodel.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtQml/qqmlregistration.h>

#include <functional>

/// The photographs that the list shows, in the order in which it shows them.
class PhotographFilter : public QSortFilterProxyModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(WorkbenchModel* photographs READ photographs WRITE setPhotographs REQUIRED)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(int order READ order WRITE setOrder NOTIFY changed)
    Q_PROPERTY(int state READ state WRITE setState NOTIFY changed)

public:
    enum Order { Added, Name, Date, Size };
    Q_ENUM(Order)
    enum Shown { All, NotExported, Exported, Failed };
    Q_ENUM(Shown)

    explicit PhotographFilter(QObject* parent = nullptr);

    /// The row of the photograph; -1 when it is not shown.
    Q_INVOKABLE int rowOf(int number) const;

    /// The number of the photograph in `row`; -1 when there is none.
    Q_INVOKABLE int numberAt(int row) const;

    WorkbenchModel* photographs() const { return m_photographs; }
    void setPhotographs(WorkbenchModel* photographs);
    QString text() const { return m_text; }
    void setText(const QString& text); ///< which the name contains, in any letter case
    int order() const { return m_order; }
    void setOrder(int order);
    int state() const { return m_state; }
    void setState(int state);

Q_SIGNALS:
    void changed();

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void changeFilter(const std::function<void()>& assign);

    WorkbenchModel* m_photographs = nullptr;
    QString m_text;
    int m_order = Added;
    int m_state = All;
};

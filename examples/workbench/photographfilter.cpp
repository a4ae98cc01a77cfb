// SPDX-License-Identifier: Apache-2.0
#include "photographfilter.h"

namespace {

QVariant datum(const QModelIndex& index, int role) { return index.data(role); }

} // namespace

PhotographFilter::PhotographFilter(QObject* parent) : QSortFilterProxyModel(parent)
{
    setDynamicSortFilter(true);
}

int PhotographFilter::rowOf(int number) const
{
    for (int row = 0; row < rowCount(); ++row)
        if (numberAt(row) == number)
            return row;
    return -1;
}

int PhotographFilter::numberAt(int row) const
{
    const QModelIndex at = index(row, 0);
    return at.isValid() ? datum(at, WorkbenchModel::NumberRole).toInt() : -1;
}

void PhotographFilter::setPhotographs(WorkbenchModel* photographs)
{
    m_photographs = photographs;
    setSourceModel(photographs);
}

/// Filters the rows again after `assign` has changed what they are compared with.
void PhotographFilter::changeFilter(const std::function<void()>& assign)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 10, 0)
    beginFilterChange();
    assign();
    endFilterChange(Direction::Rows);
#else
    assign();
    invalidateFilter();
#endif
    Q_EMIT changed();
}

void PhotographFilter::setText(const QString& text)
{
    changeFilter([&] { m_text = text; });
}

/// In the order in which they were added the rows are those of the model, which costs no sorting.
void PhotographFilter::setOrder(int order)
{
    m_order = order;
    sort(order == Added ? -1 : 0);
    invalidate();
    Q_EMIT changed();
}

void PhotographFilter::setState(int state)
{
    changeFilter([&] { m_state = state; });
}

bool PhotographFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const QModelIndex at = sourceModel()->index(row, 0, parent);
    if (!m_text.isEmpty() &&
        !datum(at, WorkbenchModel::NameRole).toString().contains(m_text, Qt::CaseInsensitive))
        return false;
    const auto state = WorkbenchModel::State(datum(at, WorkbenchModel::StateRole).toInt());
    const bool isExported =
        state == WorkbenchModel::State::Exported || state == WorkbenchModel::State::Kept;
    switch (m_state) {
    case NotExported:
        return !isExported;
    case Exported:
        return isExported;
    case Failed:
        return state == WorkbenchModel::State::Failed;
    default:
        return true;
    }
}

bool PhotographFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    if (m_order == Size)
        return datum(left, WorkbenchModel::BytesRole).toLongLong() <
               datum(right, WorkbenchModel::BytesRole).toLongLong();
    const int role = m_order == Date ? WorkbenchModel::DateRole : WorkbenchModel::NameRole;
    return datum(left, role).toString().localeAwareCompare(datum(right, role).toString()) < 0;
}

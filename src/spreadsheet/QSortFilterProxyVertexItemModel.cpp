#include "QSortFilterProxyVertexItemModel.h"

#include "QVertexItemModel.h"

#include <MatrixData.h>

#include <cmath>
#include <limits>

namespace rkBase {

QSortFilterProxyVertexItemModel::QSortFilterProxyVertexItemModel(QObject* parent)
    : QSortFilterProxyModelWithColor(parent, true)
{
}

void QSortFilterProxyVertexItemModel::setFilterEmptyCells(bool on)
{
    m_filterEmptyCells = on;
    invalidateFilter();
}

void QSortFilterProxyVertexItemModel::setFilterRows(const QList<bool>& rows)
{
    m_filterRows = rows;
    invalidateFilter();
}

void QSortFilterProxyVertexItemModel::clearFilterRows()
{
    m_filterRows.clear();
    invalidateFilter();
}

void QSortFilterProxyVertexItemModel::setSourceModel(QAbstractItemModel* source)
{
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, SLOT(dropSortKeys()));
    dropSortKeys();
    QSortFilterProxyModelWithColor::setSourceModel(source);
    if (source) {
        connect(source, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), this, SLOT(dropSortKeys()));
        connect(source, SIGNAL(modelReset()), this, SLOT(dropSortKeys()));
        connect(source, SIGNAL(layoutChanged()), this, SLOT(dropSortKeys()));
    }
}

void QSortFilterProxyVertexItemModel::dropSortKeys()
{
    std::vector<double>().swap(m_sortKeys);
    m_sortKeysColumn = -1;
}

void QSortFilterProxyVertexItemModel::sort(int column, Qt::SortOrder order)
{
    dropSortKeys();
    const auto* model = qobject_cast<const QVertexItemModel*>(sourceModel());
    MatrixData* node = model && column >= 0 ? model->getNode(column) : nullptr;
    if (node && sortRole() == Qt::UserRole
        && (node->cellType() == QVariant::Double || node->cellType() == QVariant::Int)) {
        const int rows = model->rowCount();
        m_sortKeys.resize(static_cast<std::size_t>(rows));
        for (int r = 0; r < rows; ++r) {
            const int stored = model->row(model->index(r, column));
            m_sortKeys[static_cast<std::size_t>(r)] =
                node->isValueValid(stored, 0) ? node->toDouble(stored, 0) : std::numeric_limits<double>::quiet_NaN();
        }
        m_sortKeysColumn = column;
    }
    QSortFilterProxyModelWithColor::sort(column, order);
}

bool QSortFilterProxyVertexItemModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    if (m_sortKeysColumn != left.column() || left.row() >= static_cast<int>(m_sortKeys.size())
        || right.row() >= static_cast<int>(m_sortKeys.size()))
        return QSortFilterProxyModelWithColor::lessThan(left, right);
    // Same order as the general comparison: blanks (and NaN) last either way, ties by row.
    const double a = m_sortKeys[static_cast<std::size_t>(left.row())];
    const double b = m_sortKeys[static_cast<std::size_t>(right.row())];
    const bool descending = sortOrder() == Qt::DescendingOrder;
    const bool rowOrder = descending ? left.row() > right.row() : left.row() < right.row();
    const bool aBlank = std::isnan(a), bBlank = std::isnan(b);
    if (aBlank || bBlank) {
        if (aBlank == bBlank)
            return rowOrder;
        return descending ? aBlank : !aBlank;
    }
    if (a != b)
        return a < b;
    return rowOrder;
}

bool QSortFilterProxyVertexItemModel::filterAcceptsRow(int sourceRow, const QModelIndex&) const
{
    if (m_filterEmptyCells) {
        const auto* model = qobject_cast<const QVertexItemModel*>(sourceModel());
        MatrixData* node = model ? model->getNode(filterKeyColumn()) : nullptr;
        if (node) {
            const int stored = model->row(model->index(sourceRow, filterKeyColumn()));
            const QVariant cell = node->value(stored, 0);
            if (node->cellType() == QVariant::Bool) {
                if (!cell.toBool())
                    return false;
            } else if (!cell.isValid() || cell.toString().isEmpty()) {
                return false;
            }
        }
    }
    if (m_filterRows.isEmpty())
        return true;
    return sourceRow >= 0 && sourceRow < m_filterRows.size() && m_filterRows.at(sourceRow);
}

} // namespace rkBase

#include "QSortFilterProxyVertexItemModel.h"

#include "QVertexItemModel.h"

#include <MatrixData.h>

#include <algorithm>
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

bool QSortFilterProxyVertexItemModel::isIdentity() const
{
    return sortColumn() < 0 && m_filterRows.isEmpty() && !m_filterEmptyCells && filterRegExp().isEmpty()
        && sourceModel() && rowCount() == sourceModel()->rowCount();
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
    std::vector<quint32>().swap(m_sortRank);
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
        // The same order as the general comparison: blanks and NaN last either way, equal
        // values in row order. Sorting (key, row) pairs walks memory in order and is quick.
        struct Key {
            double value;
            quint32 row;
        };
        std::vector<Key> keys(static_cast<std::size_t>(rows));
        for (int r = 0; r < rows; ++r) {
            const int stored = model->row(model->index(r, column));
            const double v = node->isValueValid(stored, 0) ? node->toDouble(stored, 0) : std::numeric_limits<double>::quiet_NaN();
            keys[static_cast<std::size_t>(r)] = {v, static_cast<quint32>(r)};
        }
        const bool descending = order == Qt::DescendingOrder;
        std::sort(keys.begin(), keys.end(), [descending](const Key& a, const Key& b) {
            const bool aBlank = std::isnan(a.value), bBlank = std::isnan(b.value);
            if (aBlank != bBlank)
                return bBlank;
            if (!aBlank && a.value != b.value)
                return descending ? a.value > b.value : a.value < b.value;
            return a.row < b.row;
        });
        m_sortRank.resize(keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i)
            m_sortRank[keys[i].row] = static_cast<quint32>(i);
        m_sortKeysColumn = column;
    }
    QSortFilterProxyModelWithColor::sort(column, order);
}

bool QSortFilterProxyVertexItemModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const std::size_t l = static_cast<std::size_t>(left.row()), r = static_cast<std::size_t>(right.row());
    if (m_sortKeysColumn != left.column() || l >= m_sortRank.size() || r >= m_sortRank.size())
        return QSortFilterProxyModelWithColor::lessThan(left, right);
    // A descending sort asks lessThan(right, left); the ranks already hold the final order.
    return sortOrder() == Qt::DescendingOrder ? m_sortRank[r] < m_sortRank[l] : m_sortRank[l] < m_sortRank[r];
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

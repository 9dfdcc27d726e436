#include "QSortFilterProxyVertexItemModel.h"

#include "QVertexItemModel.h"

#include <MatrixData.h>

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

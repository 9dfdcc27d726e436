#include "QVertexMinMaxItemModel.h"

#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <UnitManager.h>
#include <UnitRegistry.h>

#include <QColor>

namespace rkBase {

QVertexMinMaxItemModel::QVertexMinMaxItemModel(QObject* parent, MatrixData* root, int minMaxMode, bool withFieldData)
    : QVertexItemModel(parent, root, -1, withFieldData, nullptr), m_minMaxMode(minMaxMode)
{
    refreshSummaries();
}

int QVertexMinMaxItemModel::rowCount(const QModelIndex&) const
{
    return 3;
}

int QVertexMinMaxItemModel::row(const QModelIndex& index) const
{
    return index.row();
}

void QVertexMinMaxItemModel::refreshSummaries()
{
    for (MatrixData* node : m_columns)
        if (node)
            node->setMinMax(0, std::vector<int>());
}

QVariant QVertexMinMaxItemModel::summary(MatrixData* node, int which) const
{
    return which == 0 ? node->minValue() : which == 1 ? node->maxValue() : node->meanValue();
}

QVariant QVertexMinMaxItemModel::data(const QModelIndex& index, int role) const
{
    MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
    if (!node || index.row() > 2)
        return QVariant();
    const QVariant v = summary(node, index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (!v.isValid())
            return role == Qt::DisplayRole ? QVariant(QStringLiteral("-----")) : QVariant();
        if (node->cellType() == QVariant::Double) {
            const double shown = node->nodeUnitKey() == -1 ? node->convertModelToDisplay(v.toDouble()) : v.toDouble();
            return QString::number(shown, 'f', node->unitPrecision());
        }
        if (node->cellType() == QVariant::Int)
            return QString::number(v.toDouble(), 'f', index.row() == 2 ? 2 : 0);
        return v.toString();
    case Qt::TextAlignmentRole:
        return 130;
    case Qt::BackgroundRole: {
        // The colour-map colour, washed toward white so the number on it stays readable.
        const QColor c = node->minMaxMeanColor(index);
        if (!c.isValid())
            return QVariant();
        return QColor((c.red() + 2 * 255) / 3, (c.green() + 2 * 255) / 3, (c.blue() + 2 * 255) / 3);
    }
    case Qt::ToolTipRole:
        return node->unitManager() ? QVariant(node->unitManager()->displayUnitManager()->getCategoryDisplayName(
                                         node->unitManager()->category()))
                                   : QVariant();
    default:
        return QVariant();
    }
}

Qt::ItemFlags QVertexMinMaxItemModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
    if (m_withFieldData && node && (node->cellType() == QVariant::Double || node->cellType() == QVariant::Int))
        f |= Qt::ItemIsEditable;
    return f;
}

bool QVertexMinMaxItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
    if (!node || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable) || index.row() > 2)
        return false;
    bool ok = false;
    const double shown = value.toDouble(&ok);
    if (!ok)
        return false;
    const double stored = node->nodeUnitKey() == -1 && !m_withFieldData ? node->convertDisplayToModel(shown) : shown;
    if (index.row() == 0)
        node->setMinValue(stored);
    else if (index.row() == 1)
        node->setMaxValue(stored);
    else
        node->setMeanValue(stored);
    emit dataChanged(index, index);
    setModified(true);
    return true;
}

QVariant QVertexMinMaxItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        if (role != Qt::DisplayRole || !m_dataRoot || section < 0 || section > 2)
            return QVariant();
        return section == 0 ? m_dataRoot->minName() : section == 1 ? m_dataRoot->maxName() : m_dataRoot->meanName();
    }
    return QVertexItemModel::headerData(section, orientation, role);
}

bool QVertexMinMaxItemModel::setColumnUnitCategory(int column, const QString& categoryDisplayName)
{
    MatrixData* node = getNode(column);
    UnitRegistry* registry = node ? node->registry() : nullptr;
    if (!registry)
        return false;
    const std::string category = registry->displayUnitManager()->getCategoryFromDisplayName(categoryDisplayName);
    if (category.empty() || !registry->getCategory(category))
        return false;
    node->setUnitManager(category);
    node->setNodeUnitKey(-1);
    beginResetModel();
    resetFirstRowInternalPointer(m_selectedRows);
    endResetModel();
    emit unitCategoryChanged();
    return true;
}

} // namespace rkBase

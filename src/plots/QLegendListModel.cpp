#include "QLegendListModel.h"

#include "MatrixData.h"
#include "QChartDrawingArea.h"
#include "QRelationshipItemModel.h"

#include <QPixmap>
#include <QWidget>

#include <algorithm>

namespace rkBase {

QLegendListModel::QLegendListModel(QWidget* parent, QChartDrawingArea* chart, LegendType type)
    : QAbstractTableModel(parent), m_chart(chart), m_type(type)
{
}

int QLegendListModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    return std::max(m_values.size() - 1, 0);
}

int QLegendListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant::Type QLegendListModel::cellType() const
{
    // The sample value is the one under id 0, not the lowest id: an undefined class may sit below.
    return m_values.isEmpty() ? QVariant::Double : m_values.value(0).type();
}

QVariant QLegendListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= 2)
        return QVariant();
    const int id = index.row() + 1;
    if (role == Qt::DisplayRole)
        return index.column() == 0 ? m_values.value(id) : QVariant(id);
    if (role == Qt::DecorationRole && index.column() == 0) {
        if (cellType() != QVariant::Color && m_type == SymbolLegend &&
            (index.row() < m_firstVisibleRow || index.row() > m_lastVisibleRow))
            return QVariant();
        return decoration(index.row());
    }
    return QVariant();
}

QVariant QLegendListModel::decoration(int row) const
{
    const int id = row + 1;
    if (cellType() == QVariant::Color)
        return m_symbolNode ? QVariant(m_symbolNode->color(m_values.value(id).toString())) : QVariant();
    if (m_type == ColorLegend)
        return m_colors.value(id);
    if (!m_chart)
        return QVariant();
    // A legend is read on white whatever the chart's background.
    int symbolId = id;
    const QColor saved = m_chart->backgroundColor();
    m_chart->setBackgroundColor(Qt::white);
    const QPixmap pixmap = m_chart->getSymbolPixmap(symbolId, m_colors.value(id), m_type == SymbolLegend);
    m_chart->setBackgroundColor(saved);
    return pixmap;
}

QVariant QLegendListModel::symbol(int row) const
{
    if (row < 0 || row >= rowCount())
        return QVariant();
    return decoration(row);
}

void QLegendListModel::changeSymbolColor(const QModelIndex& index, const QColor& colour)
{
    if (!index.isValid() || index.row() >= rowCount())
        return;
    const int id = index.row() + 1;
    m_colors.insert(id, colour);
    QRelationshipItemModel* models[2] = {m_chart ? m_chart->model() : nullptr, m_lineationModel};
    for (QRelationshipItemModel* model : models) {
        if (!model)
            continue;
        if (m_type == SymbolLegend)
            model->changeSymbolColor(id, colour);
        else
            model->changeColorClass(id, colour);
    }
    if (m_chart)
        m_chart->updateChart();
    emit dataChanged(index, index);
}

void QLegendListModel::setClasses(const QMap<int, QVariant>& values, const QMap<int, QColor>& colours)
{
    beginResetModel();
    m_values = values;
    m_colors = colours;
    endResetModel();
}

void QLegendListModel::setVisibleRows(int first, int last)
{
    m_firstVisibleRow = first;
    m_lastVisibleRow = last;
    const int rows = rowCount();
    if (rows > 0 && first < rows)
        emit dataChanged(index(std::max(first, 0), 0), index(std::clamp(last, 0, rows - 1), 0),
                         {Qt::DecorationRole});
}

} // namespace rkBase

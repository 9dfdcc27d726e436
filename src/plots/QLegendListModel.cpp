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
    if (!m_sampleUnderIdZero)
        return static_cast<int>(m_ids.size());
    return std::max(m_values.size() - 1, 0);
}

int QLegendListModel::idOfRow(int row) const
{
    if (row < 0 || row >= rowCount())
        return -1;
    return m_sampleUnderIdZero ? row + 1 : m_ids[static_cast<std::size_t>(row)];
}

int QLegendListModel::rowOfId(int id) const
{
    if (m_sampleUnderIdZero)
        return id >= 1 && id <= rowCount() ? id - 1 : -1;
    const auto at = std::lower_bound(m_ids.begin(), m_ids.end(), id);
    return at != m_ids.end() && *at == id ? static_cast<int>(at - m_ids.begin()) : -1;
}

int QLegendListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant::Type QLegendListModel::cellType() const
{
    if (m_values.isEmpty())
        return QVariant::Double;
    // Every key a class: any of them tells the attribute's type.
    if (!m_sampleUnderIdZero)
        return m_values.first().type();
    // The sample value is the one under id 0, not the lowest id: an undefined class may sit below.
    return m_values.value(0).type();
}

QVariant QLegendListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= 2)
        return QVariant();
    const int id = idOfRow(index.row());
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
    const int id = idOfRow(row);
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
    const int id = idOfRow(index.row());
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
    m_ids.clear();
    if (!m_sampleUnderIdZero)
        m_ids.assign(values.keyBegin(), values.keyEnd());
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

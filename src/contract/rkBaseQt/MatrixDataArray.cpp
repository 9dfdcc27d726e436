#include "MatrixDataArray.h"

#include "CellColumn.h"

#include <algorithm>

namespace rkBase {

MatrixDataArray::MatrixDataArray(const QString& name, int rows, int columns, QVariant::Type type)
    : MatrixData(name, std::max(rows, 0), std::max(columns, 1), type, true)
{
    clearData();
}

MatrixDataArray::MatrixDataArray(const MatrixDataArray& other) : MatrixData(other, true) {}

MatrixDataArray& MatrixDataArray::operator=(const MatrixDataArray& other)
{
    MatrixData::operator=(other);
    return *this;
}

QVariant MatrixDataArray::value(const QModelIndex& index) const
{
    return index.isValid() ? value(index.row(), index.column()) : QVariant();
}

QVariant MatrixDataArray::value(int row, int column) const
{
    const CellColumn* c = cells(column);
    return c ? c->get(row) : QVariant();
}

double MatrixDataArray::toDouble(int row, int column) const
{
    const CellColumn* c = cells(column);
    return c ? c->toDouble(row) : 0.0;
}

int MatrixDataArray::toInt(int row, int column) const
{
    const CellColumn* c = cells(column);
    return c ? c->toInt(row) : 0;
}

bool MatrixDataArray::setValue(int row, const QVariant& value)
{
    return setValue(row, 0, value);
}

bool MatrixDataArray::setValue(const QModelIndex& index, const QVariant& value)
{
    return index.isValid() && setValue(index.row(), index.column(), value);
}

bool MatrixDataArray::setValue(int row, int column, const QVariant& value)
{
    // A grid does not grow on write: its size is its meaning.
    CellColumn* c = cells(column);
    return c && row >= 0 && row < c->size() && c->set(row, value);
}

void MatrixDataArray::addValue(int row, int column, const double& value)
{
    CellColumn* c = cells(column);
    if (!c || row < 0 || row >= c->size())
        return;
    c->setDouble(row, c->toDouble(row) + value);
}

void MatrixDataArray::reserve(int rows, int columns)
{
    rows = std::max(rows, 0);
    columns = std::max(columns, 1);
    const int oldRows = rowCount();
    const int oldColumns = columnCount();
    m_columns.resize(static_cast<std::size_t>(std::min(columns, oldColumns)));
    for (auto& c : m_columns)
        c->resize(rows);
    for (int col = oldColumns; col < columns; ++col)
        m_columns.push_back(std::make_unique<CellColumn>(m_cellType, rows));
    for (int col = 0; col < columns; ++col) {
        CellColumn* c = cells(col);
        for (int r = col < oldColumns ? oldRows : 0; r < rows; ++r)
            c->setDouble(r, 0.0);
    }
    m_validRows = rows;
}

void MatrixDataArray::clearData()
{
    for (auto& c : m_columns)
        c->fill(QVariant(0.0));
    m_validRows = rowCount();
}

} // namespace rkBase

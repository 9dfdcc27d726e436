#include "MatrixDataProxy.h"

#include <algorithm>

namespace rkBase {

MatrixDataProxy::MatrixDataProxy(const QString& name, QVariant::Type type) : MatrixData(name, 0, 1, type, false)
{
    setNodeComputed(true);
}

void MatrixDataProxy::addNode(MatrixData* node)
{
    if (!node || node == this)
        return;
    m_sources.push_back(node);
    refresh();
}

void MatrixDataProxy::clearNodes()
{
    m_sources.clear();
    refresh();
}

void MatrixDataProxy::refresh()
{
    m_firstRow.clear();
    int total = 0;
    for (MatrixData* n : m_sources) {
        m_firstRow.push_back(total);
        total += n->validValueRowCount();
    }
    m_validRows = total;
}

MatrixData* MatrixDataProxy::row(int row, int& localRow) const
{
    localRow = -1;
    if (row < 0 || row >= m_validRows || m_sources.empty())
        return nullptr;
    const auto it = std::upper_bound(m_firstRow.begin(), m_firstRow.end(), row);
    const std::size_t i = static_cast<std::size_t>(it - m_firstRow.begin()) - 1;
    localRow = row - m_firstRow[i];
    return m_sources[i];
}

int MatrixDataProxy::rowCount() const
{
    return m_validRows;
}

bool MatrixDataProxy::isValueEditable(int r, int column) const
{
    int local = 0;
    MatrixData* n = row(r, local);
    return n && n->isValueEditable(local, column);
}

bool MatrixDataProxy::isValueValid(int r, int column) const
{
    int local = 0;
    MatrixData* n = row(r, local);
    return n && n->isValueValid(local, column);
}

QVariant MatrixDataProxy::value(const QModelIndex& index) const
{
    return index.isValid() ? value(index.row(), 0) : QVariant();
}

QVariant MatrixDataProxy::value(int r, int column) const
{
    int local = 0;
    MatrixData* n = row(r, local);
    return n ? n->value(local, column) : QVariant();
}

double MatrixDataProxy::toDouble(int r, int column) const
{
    int local = 0;
    MatrixData* n = row(r, local);
    return n ? n->toDouble(local, column) : 0.0;
}

int MatrixDataProxy::toInt(int r, int column) const
{
    int local = 0;
    MatrixData* n = row(r, local);
    return n ? n->toInt(local, column) : 0;
}

bool MatrixDataProxy::setValue(int r, const QVariant& value)
{
    return setValue(r, 0, value);
}

bool MatrixDataProxy::setValue(const QModelIndex& index, const QVariant& value)
{
    return index.isValid() && setValue(index.row(), 0, value);
}

bool MatrixDataProxy::setValue(int r, int column, const QVariant& value)
{
    int local = 0;
    MatrixData* n = row(r, local);
    return n && n->setValue(local, column, value);
}

} // namespace rkBase

// Row growth and removal, and the undo and redo halves of both. On a group every operation acts
// on every column below it, so a record keeps its row in all columns.
#include "MatrixData.h"

#include "CellColumn.h"

#include <algorithm>

namespace rkBase {

namespace {
std::vector<int> sortedUnique(const QList<int>& rows, int limit)
{
    std::vector<int> out;
    out.reserve(static_cast<std::size_t>(rows.size()));
    for (int r : rows)
        if (r >= 0 && r < limit)
            out.push_back(r);
    std::sort(out.begin(), out.end());
    out.erase(std::unique(out.begin(), out.end()), out.end());
    return out;
}

int validBelow(const std::vector<int>& sorted, int valid)
{
    return static_cast<int>(std::lower_bound(sorted.begin(), sorted.end(), valid) - sorted.begin());
}
} // namespace

QList<MatrixData*> MatrixData::columnsForRows() const
{
    return leafs();
}

int MatrixData::insertRowAtPos(int row)
{
    if (isGroup()) {
        int at = row;
        if (at < 0) {
            at = 0;
            for (MatrixData* leaf : leafs())
                at = std::max(at, leaf->validValueRowCount());
        }
        for (MatrixData* leaf : leafs())
            leaf->insertRowAtPos(at);
        return leafs().isEmpty() ? -1 : at;
    }
    if (m_columns.empty())
        return -1;
    if (row < 0)
        row = m_validRows;
    for (auto& c : m_columns) {
        if (row > c->size())
            c->resize(row);
        c->insertBlank(row);
    }
    m_validRows = std::max(m_validRows, row) + 1;
    return row;
}

int MatrixData::insertRowsAtPos(const QList<int>& rows, bool before, bool /*markerMode*/)
{
    if (rows.isEmpty())
        return insertRowAtPos(-1);
    // Turn "before/after row r" into the final positions of the new rows.
    std::vector<int> anchors(rows.begin(), rows.end());
    anchors.erase(std::remove_if(anchors.begin(), anchors.end(), [](int r) { return r < 0; }), anchors.end());
    if (anchors.empty())
        return -1;
    std::sort(anchors.begin(), anchors.end());
    anchors.erase(std::unique(anchors.begin(), anchors.end()), anchors.end());
    QList<int> positions;
    for (std::size_t i = 0; i < anchors.size(); ++i)
        positions.append(anchors[i] + static_cast<int>(i) + (before ? 0 : 1));
    reInsertRowAtPos(positions, true);
    return positions.first();
}

void MatrixData::reInsertRowAtPos(const QList<int>& rows, bool recursive)
{
    if (isGroup()) {
        for (MatrixData* leaf : leafs())
            leaf->reInsertRowAtPos(rows, recursive);
        return;
    }
    std::vector<int> pos(rows.begin(), rows.end());
    pos.erase(std::remove_if(pos.begin(), pos.end(), [](int r) { return r < 0; }), pos.end());
    std::sort(pos.begin(), pos.end());
    pos.erase(std::unique(pos.begin(), pos.end()), pos.end());
    if (pos.empty() || m_columns.empty())
        return;
    const int k = static_cast<int>(pos.size());
    // A position past the end first grows the column so the new rows land where asked.
    const int needed = pos.back() + 1 - k;
    for (auto& c : m_columns) {
        if (c->size() < needed)
            c->resize(needed);
        c->insertBlankRows(pos);
    }
    for (int p : pos)
        m_validRows = p <= m_validRows ? m_validRows + 1 : p + 1;
}

void MatrixData::unInsertRowAtPos(const QList<int>& rows, bool recursive)
{
    removeRowsFromEachColumn(rows, recursive);
}

void MatrixData::incrementRows(int count)
{
    if (count <= 0)
        return;
    if (isGroup()) {
        for (MatrixData* leaf : leafs())
            leaf->incrementRows(count);
        return;
    }
    const int target = m_validRows + count;
    for (auto& c : m_columns)
        if (c->size() < target)
            c->resize(target);
    m_validRows = target;
}

void MatrixData::decrementRows(int count)
{
    if (count <= 0)
        return;
    if (isGroup()) {
        for (MatrixData* leaf : leafs())
            leaf->decrementRows(count);
        return;
    }
    const int from = std::max(0, m_validRows - count);
    for (auto& c : m_columns)
        c->erase(from, m_validRows - from);
    m_validRows = from;
}

void MatrixData::appendRows(int count)
{
    if (count <= 0)
        return;
    if (isGroup()) {
        for (MatrixData* leaf : leafs())
            leaf->appendRows(count);
        return;
    }
    for (auto& c : m_columns)
        c->resize(c->size() + count);
}

void MatrixData::appendOneRowForEachColumn()
{
    if (!isGroup()) {
        incrementRows(1);
        return;
    }
    int rows = 0;
    const QList<MatrixData*> columns = leafs();
    for (MatrixData* leaf : columns)
        rows = std::max(rows, leaf->validValueRowCount());
    for (MatrixData* leaf : columns)
        leaf->incrementRows(rows + 1 - leaf->validValueRowCount());
}

void MatrixData::appendColumns(int count)
{
    if (count <= 0)
        return;
    if (isGroup()) {
        const int rows = groupRowCount();
        for (int i = 0; i < count; ++i) {
            QString name = QStringLiteral("Column");
            root()->createUniqueName(name);
            auto* column = new MatrixData(name, rows, 1, QVariant::Double, true);
            column->setValidValueRowCount(0);
            column->setColor(getDefaultColor(false));
            appendChild(column, false);
        }
        return;
    }
    const int rows = rowCount();
    for (int i = 0; i < count; ++i)
        m_columns.push_back(std::make_unique<CellColumn>(m_cellType, rows));
}

bool MatrixData::removeRowFromEachColumn(int row)
{
    return removeRowsFromEachColumn(QList<int>{row}, true);
}

void MatrixData::removeRowsFromEachColumn()
{
    if (isGroup()) {
        for (MatrixData* leaf : leafs())
            leaf->removeRowsFromEachColumn();
        return;
    }
    for (auto& c : m_columns)
        c->resize(0);
    m_validRows = 0;
}

bool MatrixData::removeRowsFromEachColumn(const QList<int>& rows, bool recursive)
{
    if (isGroup()) {
        bool any = false;
        for (MatrixData* leaf : leafs())
            any = leaf->removeRowsFromEachColumn(rows, recursive) || any;
        return any;
    }
    const std::vector<int> sorted = sortedUnique(rows, rowCount());
    if (sorted.empty())
        return false;
    for (auto& c : m_columns)
        c->eraseRows(sorted);
    m_validRows -= validBelow(sorted, m_validRows);
    return true;
}

void MatrixData::removeRowIndices(int row)
{
    if (isGroup() || row < 0 || row >= rowCount())
        return;
    for (auto& c : m_columns)
        c->erase(row);
    if (row < m_validRows)
        --m_validRows;
}

void MatrixData::unRemoveRowFromEachColumn(int row, const QList<QVariant>& values)
{
    // One value per column: the single-row form carries column 0 only.
    const QList<MatrixData*> columns = isGroup() ? leafs() : QList<MatrixData*>{this};
    for (int i = 0; i < columns.size(); ++i) {
        MatrixData* leaf = columns[i];
        leaf->reInsertRowAtPos(QList<int>{row}, false);
        if (i < values.size())
            leaf->setValue(row, 0, values[i]);
    }
}

void MatrixData::unRemoveRowsFromEachColumn(const QList<int>& rows, const QList<QVariant>& values, bool recursive)
{
    QList<int> sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    const QList<MatrixData*> columns = isGroup() ? leafs() : QList<MatrixData*>{this};
    int v = 0;
    for (MatrixData* leaf : columns) {
        leaf->reInsertRowAtPos(sorted, recursive);
        for (int c = 0; c < leaf->columnCount(); ++c)
            for (int r : sorted)
                if (v < values.size())
                    leaf->setValue(r, c, values[v++]);
    }
}

void MatrixData::reRemoveRowFromEachColumn(int row, bool recursive)
{
    removeRowsFromEachColumn(QList<int>{row}, recursive);
}

void MatrixData::reRemoveRowsFromEachColumn(const QList<int>& rows, bool recursive)
{
    removeRowsFromEachColumn(rows, recursive);
}

void MatrixData::setValidValueRowCount(int count)
{
    if (isGroup()) {
        for (MatrixData* leaf : leafs())
            leaf->setValidValueRowCount(count);
        return;
    }
    m_validRows = std::max(count, 0);
    for (auto& c : m_columns)
        if (c->size() < m_validRows)
            c->resize(m_validRows);
}

void MatrixData::checkValidRowCount()
{
    if (!isGroup()) {
        int last = 0;
        for (auto& c : m_columns)
            last = std::max(last, c->lastValidRowPlusOne());
        m_validRows = last;
        return;
    }
    int longest = 0;
    for (MatrixData* c : m_children) {
        c->checkValidRowCount();
        if (!c->isGroup())
            longest = std::max(longest, c->validValueRowCount());
    }
    for (MatrixData* c : m_children)
        if (!c->isGroup())
            c->setValidValueRowCount(longest);
}

void MatrixData::setAllocatedRowCount(int rows)
{
    if (isGroup())
        return;
    rows = std::max(rows, 0);
    for (auto& c : m_columns)
        c->resize(rows);
    m_validRows = std::min(m_validRows, rows);
}

void MatrixData::setStartRowCount(int row)
{
    m_startRows = std::max(row, 0);
}

void MatrixData::resetRowCount(bool onlyGrow)
{
    if (isGroup()) {
        for (MatrixData* leaf : leafs())
            leaf->resetRowCount(onlyGrow);
        return;
    }
    const int rows = rowCount();
    m_validRows = onlyGrow ? std::max(m_validRows, rows) : rows;
}

} // namespace rkBase

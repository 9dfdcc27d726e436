#include "MatrixDataRestore.h"

#include "MatrixData.h"

#include <algorithm>

namespace rkBase {

MatrixDataRestore::MatrixDataRestore() = default;

MatrixDataRestore::MatrixDataRestore(MatrixData* node, const QString& actionName, bool structural)
    : m_node(node), m_name(actionName), m_structural(structural)
{
    m_rowsBefore = captureRows();
}

MatrixDataRestore::~MatrixDataRestore()
{
    // A detached attribute belongs to the action whose current state detached it: an insertion
    // that is undone, or a removal that is applied. Exactly one action in a list is in that state.
    for (Attribute& a : m_attributes)
        if (a.node && a.inserted == m_undone && !a.node->parent())
            delete a.node;
}

void MatrixDataRestore::setParent(MatrixData* node)
{
    m_node = node;
    m_rowsBefore = captureRows();
}

void MatrixDataRestore::appendRows(std::vector<RowState>& states, MatrixData* node)
{
    if (!node)
        return;
    const QList<MatrixData*> columns = node->isGroup() ? node->leafs() : QList<MatrixData*>{node};
    states.reserve(states.size() + static_cast<std::size_t>(columns.size()));
    for (MatrixData* c : columns)
        states.push_back({c, c->rowCount(), c->validValueRowCount()});
}

std::vector<MatrixDataRestore::RowState> MatrixDataRestore::captureRows() const
{
    std::vector<RowState> states;
    appendRows(states, m_node);
    for (MatrixData* node : m_rowCountNodes)
        appendRows(states, node);
    return states;
}

void MatrixDataRestore::recordRowCounts(MatrixData* node)
{
    if (!node)
        return;
    m_rowCountNodes.push_back(node);
    appendRows(m_rowsBefore, node);
}

void MatrixDataRestore::applyRows(const std::vector<RowState>& states)
{
    for (const RowState& s : states) {
        if (s.column->rowCount() != s.allocated)
            s.column->setAllocatedRowCount(s.allocated);
        s.column->setValidValueRowCount(s.valid);
    }
}

void MatrixDataRestore::dataStore(int row, const QVariant& oldValue)
{
    dataStore(row, 0, oldValue);
}

void MatrixDataRestore::dataStore(int row, int column, const QVariant& oldValue)
{
    // Callers may hand over the cell as the user saw it (an edit keeps the shown text, rounded
    // and in display units). Undo must give back the stored value itself, so the cell is read
    // here, before the change; the value handed over serves only where there is no cell.
    const bool hasCell = m_node && !m_node->isGroup();
    m_cells.push_back({row, column, hasCell ? m_node->value(row, column) : oldValue, QVariant()});
}

void MatrixDataRestore::setOldName(const QString& name)
{
    m_hasName = true;
    m_otherName = name;
    m_otherInterfaceName = m_node ? m_node->interfaceName() : name;
}

void MatrixDataRestore::setColor(const QColor& color)
{
    m_hasColor = true;
    m_otherColor = color;
}

void MatrixDataRestore::recordRemovedRows(const QList<int>& rows)
{
    if (!m_node)
        return;
    QList<int> sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    sorted.erase(std::remove_if(sorted.begin(), sorted.end(), [](int r) { return r < 0; }), sorted.end());
    m_removedRows = sorted;
    m_removedValues.clear();
    // Same layout as unRemoveRowsFromEachColumn reads: column by column, cell column by cell
    // column, row by row ascending.
    const QList<MatrixData*> columns = m_node->isGroup() ? m_node->leafs() : QList<MatrixData*>{m_node};
    for (MatrixData* leaf : columns)
        for (int c = 0; c < leaf->columnCount(); ++c)
            for (int r : sorted)
                m_removedValues.append(leaf->value(r, c));
}

void MatrixDataRestore::recordInsertedRows(const QList<int>& rows)
{
    QList<int> sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    m_insertedRows = sorted;
}

void MatrixDataRestore::recordAttribute(MatrixData* attribute, bool inserted)
{
    if (!attribute || !attribute->parent())
        return;
    Attribute a;
    a.node = attribute;
    a.parent = attribute->parent();
    a.position = a.parent->indexOfChild(attribute);
    a.inserted = inserted;
    m_attributes.push_back(a);
}

void MatrixDataRestore::recordRemovedAttribute(MatrixData* attribute)
{
    recordAttribute(attribute, false);
}

void MatrixDataRestore::recordInsertedAttribute(MatrixData* attribute)
{
    recordAttribute(attribute, true);
}

void MatrixDataRestore::recordNodeSnapshot()
{
    if (m_node)
        m_snapshot = std::make_unique<MatrixData>(*m_node, false);
}

void MatrixDataRestore::detach(Attribute& a)
{
    if (a.node->parent())
        a.node->parent()->removeChild(a.node);
}

void MatrixDataRestore::attach(Attribute& a)
{
    if (!a.node->parent())
        a.parent->insertChild(a.position, a.node);
}

namespace {
void swapNodeState(MatrixData& node, MatrixData& snapshot, void (MatrixData::*copy)(const MatrixData&))
{
    MatrixData current(node, false);
    (node.*copy)(snapshot);
    (snapshot.*copy)(current);
}
} // namespace

// Name and colour hold the other state while not applied, so one swap serves undo and redo.
void MatrixDataRestore::swapLabels()
{
    if (m_hasName) {
        const QString name = m_node->name(), iname = m_node->interfaceName();
        m_node->setName(m_otherName);
        m_node->setInterfaceName(m_otherInterfaceName);
        m_otherName = name;
        m_otherInterfaceName = iname;
    }
    if (m_hasColor) {
        const QColor c = m_node->color();
        m_node->setColor(m_otherColor);
        m_otherColor = c;
    }
}

bool MatrixDataRestore::undo()
{
    if (m_undone || !m_node)
        return false;
    m_rowsAfter = captureRows();
    for (auto it = m_cells.rbegin(); it != m_cells.rend(); ++it) {
        it->newValue = m_node->value(it->row, it->column);
        m_node->setValue(it->row, it->column, it->oldValue);
    }
    swapLabels();
    if (m_snapshot)
        swapNodeState(*m_node, *m_snapshot, &MatrixData::copySettingsFrom);
    if (!m_insertedRows.isEmpty())
        m_node->unInsertRowAtPos(m_insertedRows, true);
    if (!m_removedRows.isEmpty())
        m_node->unRemoveRowsFromEachColumn(m_removedRows, m_removedValues, true);
    for (auto it = m_attributes.rbegin(); it != m_attributes.rend(); ++it)
        it->inserted ? detach(*it) : attach(*it);
    applyRows(m_rowsBefore);
    m_undone = true;
    return true;
}

bool MatrixDataRestore::redo()
{
    if (!m_undone || !m_node)
        return false;
    for (Attribute& a : m_attributes)
        a.inserted ? attach(a) : detach(a);
    if (!m_removedRows.isEmpty())
        m_node->reRemoveRowsFromEachColumn(m_removedRows, true);
    if (!m_insertedRows.isEmpty())
        m_node->reInsertRowAtPos(m_insertedRows, true);
    if (m_snapshot)
        swapNodeState(*m_node, *m_snapshot, &MatrixData::copySettingsFrom);
    swapLabels();
    for (Cell& c : m_cells)
        m_node->setValue(c.row, c.column, c.newValue);
    applyRows(m_rowsAfter);
    m_undone = false;
    return true;
}

} // namespace rkBase

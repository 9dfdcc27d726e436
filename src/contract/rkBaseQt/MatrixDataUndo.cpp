// The root's list of undoable actions and the position a host's undo and redo commands walk.
#include "MatrixData.h"

#include "MatrixDataRestore.h"

namespace rkBase {

void MatrixData::appendUndoAction(MatrixDataRestore* action, bool changesData)
{
    if (!action)
        return;
    // A new action makes the undone ones unreachable: drop them.
    while (static_cast<int>(m_undoActions.size()) > m_undoPosition) {
        delete m_undoActions.back();
        m_undoActions.pop_back();
    }
    action->setChangesData(changesData);
    m_undoActions.push_back(action);
    m_undoPosition = static_cast<int>(m_undoActions.size());
}

MatrixDataRestore* MatrixData::undoAction(int i) const
{
    return i >= 0 && i < sizeUndoActions() ? m_undoActions[static_cast<std::size_t>(i)] : nullptr;
}

bool MatrixData::undoLastAction()
{
    if (m_undoPosition <= 0)
        return false;
    --m_undoPosition;
    m_undoActions[static_cast<std::size_t>(m_undoPosition)]->undo();
    return true;
}

bool MatrixData::redoNextAction()
{
    if (m_undoPosition >= sizeUndoActions())
        return false;
    m_undoActions[static_cast<std::size_t>(m_undoPosition)]->redo();
    ++m_undoPosition;
    return true;
}

void MatrixData::clearUndoActions()
{
    while (!m_undoActions.empty()) {
        delete m_undoActions.back();
        m_undoActions.pop_back();
    }
    m_undoPosition = 0;
}

} // namespace rkBase

#include "MatrixDataRestoreProxy.h"

#include "MatrixData.h"

namespace rkBase {

MatrixDataRestoreProxy::MatrixDataRestoreProxy() = default;

MatrixDataRestoreProxy::MatrixDataRestoreProxy(const QString& actionName)
{
    setActionName(actionName);
}

MatrixDataRestoreProxy::~MatrixDataRestoreProxy()
{
    for (MatrixDataRestore* r : m_list)
        delete r;
}

void MatrixDataRestoreProxy::addToList(MatrixDataRestore* restore, MatrixData* node)
{
    if (!restore)
        return;
    if (node && restore->parent() != node)
        restore->setParent(node);
    m_list.push_back(restore);
}

bool MatrixDataRestoreProxy::addDataStore(int index, int row, const QVariant& oldValue)
{
    if (index < 0 || index >= size())
        return false;
    m_list[static_cast<std::size_t>(index)]->dataStore(row, oldValue);
    return true;
}

MatrixDataRestore* MatrixDataRestoreProxy::at(int index) const
{
    return index >= 0 && index < size() ? m_list[static_cast<std::size_t>(index)] : nullptr;
}

MatrixDataRestore* MatrixDataRestoreProxy::firstNode()
{
    if (m_list.empty())
        return nullptr;
    MatrixDataRestore* first = m_list.front();
    m_list.erase(m_list.begin());
    return first;
}

bool MatrixDataRestoreProxy::undo()
{
    if (isUndone() || m_list.empty())
        return false;
    for (auto it = m_list.rbegin(); it != m_list.rend(); ++it)
        (*it)->undo();
    m_undone = true;
    return true;
}

bool MatrixDataRestoreProxy::redo()
{
    if (!isUndone() || m_list.empty())
        return false;
    for (MatrixDataRestore* r : m_list)
        r->redo();
    m_undone = false;
    return true;
}

} // namespace rkBase

#pragma once
// A compound undo action: several restores (one per column of a paste or a multi-cell edit)
// that undo together, in reverse order, and redo together.

#include "MatrixDataRestore.h"

#include <vector>

namespace rkBase {

class MatrixDataRestoreProxy : public MatrixDataRestore
{
public:
    MatrixDataRestoreProxy();
    explicit MatrixDataRestoreProxy(const QString& actionName);
    ~MatrixDataRestoreProxy() override;

    // Takes ownership of the sub-action; node, when given, becomes its node.
    void addToList(MatrixDataRestore* restore, MatrixData* node);
    // Stores an old cell (column 0) in sub-action index; false for an index out of range.
    bool addDataStore(int index, int row, const QVariant& oldValue);
    int size() const { return static_cast<int>(m_list.size()); }
    MatrixDataRestore* at(int index) const;
    // Hands the first sub-action over to the caller, who pushes it alone; the proxy stops
    // owning and replaying it. Null when empty.
    MatrixDataRestore* firstNode();

    bool undo() override;
    bool redo() override;

private:
    std::vector<MatrixDataRestore*> m_list;
};

} // namespace rkBase

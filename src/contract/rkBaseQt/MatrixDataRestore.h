#pragma once
// One undoable action on the data tree, as listed in the host's undo menu. It remembers what an
// edit is about to overwrite and can put it back (undo) and apply the edit again (redo).
//
// Recording rules: create the action before the change; dataStore() the old cells, setOldName()
// and setColor() the old name or colour, and for structural edits call the matching record...()
// method (rows before they are removed, new rows after they are inserted, an attribute before it
// is detached or after it is attached, a whole-node snapshot before a column is overwritten).
// The action also notes the row counts of every column under its node when it is created, and
// undo() returns to them, so that a write that grew a column is undone exactly.

#include <QColor>
#include <QList>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace rkBase {

class MatrixData;

class MatrixDataRestore
{
public:
    MatrixDataRestore(MatrixData* node, const QString& actionName, bool structural);
    virtual ~MatrixDataRestore();
    MatrixDataRestore(const MatrixDataRestore&) = delete;
    MatrixDataRestore& operator=(const MatrixDataRestore&) = delete;

    QString name() const { return m_name; }
    void setActionName(const QString& name) { m_name = name; }
    MatrixData* parent() const { return m_node; }
    void setParent(MatrixData* node);
    bool isStructural() const { return m_structural; }
    bool changesData() const { return m_changesData; }
    void setChangesData(bool changes) { m_changesData = changes; }

    void dataStore(int row, const QVariant& oldValue);
    void dataStore(int row, int column, const QVariant& oldValue);
    int dataStoreSize() const { return static_cast<int>(m_cells.size()); }
    void setOldName(const QString& name);
    void setColor(const QColor& color);

    void recordRemovedRows(const QList<int>& rows);
    void recordInsertedRows(const QList<int>& rows);
    void recordRemovedAttribute(MatrixData* attribute);
    void recordInsertedAttribute(MatrixData* attribute);
    void recordNodeSnapshot();
    // Undo also returns every column under node to the row counts it has now: for an edit of
    // one column after which a recount lengthens its neighbours.
    void recordRowCounts(MatrixData* node);

    // False when there is nothing to do (already undone, or no node).
    virtual bool undo();
    virtual bool redo();
    bool isUndone() const { return m_undone; }

protected:
    MatrixDataRestore(); // for the compound action
    bool m_undone = false;

private:
    struct Cell {
        int row;
        int column;
        QVariant oldValue;
        QVariant newValue;
    };
    struct RowState {
        MatrixData* column;
        int allocated;
        int valid;
    };
    struct Attribute {
        MatrixData* node = nullptr;
        MatrixData* parent = nullptr;
        int position = -1;
        bool inserted = false; // true: the edit attached it; false: the edit detached it
    };

    static void appendRows(std::vector<RowState>& states, MatrixData* node);
    std::vector<RowState> captureRows() const;
    static void applyRows(const std::vector<RowState>& states);
    void swapLabels();
    void recordAttribute(MatrixData* attribute, bool inserted);
    void detach(Attribute& a);
    void attach(Attribute& a);

    MatrixData* m_node = nullptr;
    QString m_name;
    bool m_structural = false;
    bool m_changesData = true;

    std::vector<Cell> m_cells;
    bool m_hasName = false;
    QString m_otherName;
    QString m_otherInterfaceName;
    bool m_hasColor = false;
    QColor m_otherColor;

    QList<int> m_removedRows;   // original row numbers, ascending
    QList<QVariant> m_removedValues;
    QList<int> m_insertedRows;  // final row numbers, ascending
    std::vector<Attribute> m_attributes;
    std::unique_ptr<MatrixData> m_snapshot;
    std::vector<MatrixData*> m_rowCountNodes;

    std::vector<RowState> m_rowsBefore;
    std::vector<RowState> m_rowsAfter;
};

} // namespace rkBase

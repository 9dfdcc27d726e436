#pragma once
// The spreadsheet's model: one column per ticked attribute of the data tree, one row per
// record. It owns no cell: reads and writes go to MatrixData, converted between stored model
// units and the units the user sees, and every edit leaves an undo record on the root.

#include "QModifyCellsDialog.h"
#include "QSelectCellsDialog.h"

#include <QAbstractItemModel>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

class QMimeData;
class QSettings;

namespace rkBase {

class DisplayUnitManager;
class MatrixData;
class MatrixDataRestore;

class QVertexItemModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    QVertexItemModel(QObject* parent, MatrixData* root, int filterStepSize, bool withFieldData,
                     DisplayUnitManager* displayUnitManager);

    void setDataRoot(MatrixData* root);
    MatrixData* dataRoot() const { return m_dataRoot; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // The stored row that a model row shows.
    virtual int row(const QModelIndex& index) const;

    MatrixData* nodeFromIndex(const QModelIndex& index) const;
    MatrixData* nodeFromProxyIndex(const QModelIndex& index) const;
    MatrixData* getNode(int column) const;
    int getColumn(MatrixData* node) const;
    void extendRows();
    void convertNodeUnit(const QModelIndex& column);
    void getMinMaxRange(double& min, double& max);
    void getStackedMinMaxRange(double& min, double& max);
    QString convertInStringValue(MatrixData* node, const QVariant& value, int role) const;

    // Tests the value a cell shows (display units, rounded as shown); a blank cell or text that
    // is no number never matches.
    bool isCellConditionSatisfied(const QModelIndex& cell, const QVariant& value1, const QVariant& value2,
                                  QSelectCellsDialog::SelectMethod method) const;
    // The cell's index when it matches, else an invalid index.
    QModelIndex isCellConditionSatisfied(int row, int column, const QVariant& value1, const QVariant& value2,
                                         QSelectCellsDialog::SelectMethod method) const;
    // Writes value into every editable cell listed (an invalid value blanks them), as one undo
    // action. False when nothing changed.
    bool clearData(const QModelIndexList& cells, const QVariant& value);
    // Applies one method of the modify dialog to the listed cells (indexes of this model), as
    // one undo action per column touched. A text first cell restricts the change to text
    // columns; a text cell otherwise takes the value as text, whatever the method. Blanks are
    // only ever filled by ReplaceEmptyCells. attributeColumn -1: all columns.
    // Nothing changes for a division by zero, or when a method that needs a number is given
    // text that is no finite number while the first cell is numeric.
    void modifySelectedCells(const QModelIndexList& cells, const QVariant& value,
                             QModifyCellsDialog::ModifyMethod method, int attributeColumn);
    // Fills the cells between each pair of valued cells of the first such cell's column with
    // linear steps. viewRows: the model row shown at each view row (a sorted or filtered
    // table interpolates in the order it shows); empty when view rows are model rows.
    void interpolate(const QModelIndexList& cells, const std::vector<int>& viewRows = std::vector<int>());

    void enableUndoRedo(bool on) { m_withUndoRedo = on; }
    bool withUndoRedo() const { return m_withUndoRedo; }
    void setRowsCanBeExtended(bool on) { m_rowsCanBeExtended = on; }
    bool rowsCanBeExtended() const { return m_rowsCanBeExtended; }
    void setWithMinMaxValues(bool on) { m_withMinMaxValues = on; }
    bool withMinMaxValues() const { return m_withMinMaxValues; }
    void showUnitTagInCells(bool on);
    bool unitTagsShownInCells() const { return m_showUnitTagInCells; }
    void setFilterStepSize(int step) { m_filterStepSize = step; }
    int filterStepSize() const { return m_filterStepSize; }
    bool withFieldData() const { return m_withFieldData; }
    bool modified() const { return m_modified; }
    void setModified(bool modified);
    const std::vector<int>& selectedRows() const { return m_selectedRows; }

    void writeSettings(const QString& group, QSettings* settings) const;
    // A new tree from what writeSettings stored, or null when nothing was stored.
    static MatrixData* readSettings(const QString& group, QSettings* settings);

    // Copy, paste and the fill handle's drag. Clipboard text is tab-separated, rows end with a
    // newline except the last, a blank cell is one space; numbers are in display units at 15
    // significant digits, so that a copy pasted back restores the stored doubles.
    QStringList mimeTypes() const override;
    // The fill drag: the column count of the cells and the last cell's row; remembers cells[0]
    // as the cell the fill repeats.
    QMimeData* mimeData(const QModelIndexList& cells) const override;
    // Text and HTML of the rectangle between the first and the last cell (view indexes, through
    // the sorting proxy or not); null for no cell. Only the HTML carries the header line.
    QMimeData* mimeDataForCopy(const QModelIndexList& cells) const;
    QMimeData* getHTML_MimeData(const std::vector<int>& rows) const;
    static QString toHTML(const QString& text);
    // Pastes the text lines into the stored rows listed, from model column `column` rightwards;
    // row is the first model row, for the undo record's name. False when a cell may not be
    // edited (cells written so far stay, without an undo record) or when the paste wrote no
    // row past the valid ones; true when it did, so the caller recounts the table.
    bool setMimeData(const QMimeData& data, int row, int column, const QList<int>& rows);
    // Repeats the drag start's cells over rows parent.row() .. row of the columns that end at
    // `column`. Rows and columns are those of parent's model: this one, or a proxy over it,
    // through which each row is mapped (the undo record names these rows).
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;
    Qt::DropActions supportedDropActions() const override;
    QModelIndex dragStartIndex() const { return m_dragStartIndex; }

public slots:
    void updateModel(int filterStepSize, const std::vector<int>& rows);
    void changeColumnHeaderName(MatrixData* node);
    void onUnitManagerUpdated(const QString& category);
    void onUnitRegistryUpdated(const std::string& property, int id);

signals:
    void dataModified(bool modified);
    void dropColumnData(int startRow, int numberOfRows, int startColumn, int numberOfColumns);

protected:
    void resetFirstRowInternalPointer(const std::vector<int>& rows);
    // Null when no record is kept.
    MatrixDataRestore* pushUndo(MatrixData* node, const QString& text, int row, const QVariant& old, int column = 0);
    void connectUnits();

    bool m_withFieldData;
    MatrixData* m_dataRoot;
    bool m_modified = false;
    std::vector<MatrixData*> m_columns;
    int m_rowCount = 0;
    int m_columnCount = 0;
    std::vector<int> m_selectedRows;
    int m_filterStepSize;
    bool m_withUndoRedo = false;
    bool m_rowsCanBeExtended = false;
    bool m_withMinMaxValues = true;
    bool m_showUnitTagInCells = false;
    // Set by mimeData(), which Qt declares const, when a fill drag starts.
    mutable QModelIndex m_dragStartIndex;
    std::vector<std::string> m_unitCategories;
    std::vector<QString> m_columnNames;
    DisplayUnitManager* m_displayUnitManager;
};

} // namespace rkBase

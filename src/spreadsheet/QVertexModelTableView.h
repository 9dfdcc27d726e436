#pragma once
// The spreadsheet's view. It holds the one row selection that every chart reads, links the cell
// model through the sorting proxy, and adds what a data sheet needs: selection by cell, row and
// column under program control, a selection rectangle with a fill handle, and a row filter.

#include "QModifyCellsDialog.h"
#include "QSelectCellsDialog.h"

#include <QList>
#include <QModelIndex>
#include <QSet>
#include <QTableView>

#include <boost/dynamic_bitset.hpp>

#include <cstdint>
#include <memory>
#include <vector>

class QMenu;
class QMimeData;

namespace rkBase {

class MatrixData;
class QSortFilterProxyVertexItemModel;
class QVertexItemDelegate;
class QVertexItemModel;

class QVertexModelTableView : public QTableView
{
    Q_OBJECT
public:
    // The last argument is accepted for hosts that pass it and has no effect.
    QVertexModelTableView(QWidget* parent, QMenu* menu, bool withMinMaxTable, bool withCheckBoxHeader, bool unused);
    ~QVertexModelTableView() override;

    QVertexItemModel* vertexItemModel() const;
    QSortFilterProxyVertexItemModel* proxyModel() const;
    QMenu* menu() const { return m_menu; }
    void setMenu(QMenu* menu) { m_menu = menu; }
    void setModel(QAbstractItemModel* model) override;
    void setSelectionModel(QItemSelectionModel* selectionModel) override;

    virtual void resizeColumnsToHeaderContents();
    void setResizeToCellContents(bool on) { m_resizeToCellContents = on; }
    bool resizeToCellContents() const { return m_resizeToCellContents; }
    void resetEmpty();
    bool isEmpty() const { return m_isEmpty; }
    int rowCount() const;
    // Source rows whose every cell is selected, ascending; a partly selected row is not one.
    std::vector<int> selectedRows(int unused) const;
    // Anything selected, cells or rows, whether on screen or not.
    bool hasSelectedCells() const;
    // Every selected cell (view indexes), the rows held beside the selection model included.
    QModelIndexList allSelectedIndexes() const;
    std::vector<int> selectedRowsInColumn() const;
    QSet<int> selectedColumns() const;
    // Source row of every row the proxy shows, in view order.
    std::vector<int> validCellRows() const;
    // Selected cells column by column, each column's rows in view order.
    QModelIndexList sortedSelectedIndexes() const;
    MatrixData* firstSelectedNode() const;
    QVariant::Type firstSelectedCellType(QString& name) const;
    void getFirstSelectedCell(int& column, int& row) const;
    bool canModifySelectedCells() const;
    // The Delete key: blanks the selected cells, or every cell of the wholly selected columns.
    void clearSelectedCellsEntries();
    // Applies the modify dialog's request to the selected cells; interpolation runs down the
    // first selected column in the order the rows are shown.
    void modifySelectedCells(QVariant value, QModifyCellsDialog::ModifyMethod method, int attributeColumn);

    // Selects the source rows set in the bitset, merged into ranges in view order; bits past the
    // sheet are ignored. Adds to the present selection.
    void setRowSelection(const boost::dynamic_bitset<>& sourceRows);
    void setCellSelection(const QList<QModelIndex>& cells);
    void selectInverse();
    // Returns the number of hits, or 0 when the hits are shown through the proxy's row mask.
    int selectCells(const QVariant& value1, const QVariant& value2, QSelectCellsDialog::SelectMethod method,
                    bool rowSelection, bool keepPrevious, bool showSelected);
    int selectColumnCells(int from, int to, bool keepPrevious, bool showSelected);
    void selectTableRow(int sourceRow);
    bool deSelectRow(int sourceRow);
    QModelIndex mapItemToSource(const QModelIndex& index) const;
    QModelIndex mapItemFromSource(const QModelIndex& index) const;
    QString scrollToSelectedItem(bool rowMode);
    QString scrollToNextSelectedItem(bool rowMode);
    QString scrollToPreviousSelectedItem(bool rowMode);
    int currentItem() const { return m_currentItem; }
    bool rowSelectionMode() const { return m_rowSelectionMode; }
    void setIgnoreDelKey(bool ignore) { m_ignoreDelKey = ignore; }
    bool isVertexHighlightOn() const { return m_vertexHighlightOn; }
    void setCellDragEnabled(bool on) { m_cellDragEnabled = on; }
    bool cellDragEnabled() const { return m_cellDragEnabled; }
    bool selectionRectangleOn() const { return m_selectionRectangleOn; }
    void aboutToClose(bool closing);
    void displaySelectedRows() {}
    void setAllColumnWidth(int width);
    int columnWidth() const { return m_defaultColumnWidth; }
    using QTableView::columnWidth;
    QModelIndex dragStartIndex() const { return m_dragStartIndex; }

    // The fill handle of the current selection lies under point (viewport coordinates).
    bool isCursorOnDragPoint(const QModelIndex& index, const QPoint& point) const;
    // The one view row (or column) that holds the whole selection; -2 when it spans both.
    int firstSelectedRowOrColumn(bool& isRow) const;
    // A fill from the selection is allowed: one row or one column of an editable, stored column
    // that is not the "Type" column and has no tick boxes.
    bool fillAllowed() const;

    // Copy and paste of the selection, and the fill handle's drop.
    // The selection as clipboard data (text and HTML), or null when nothing is selected.
    QMimeData* getSelectedData() const;
    // Pastes the clipboard text from the first selected cell (row 0, column 0 without a
    // selection), one line a view row down from there.
    bool setMimeData(const QMimeData& data);
    // The stored rows a paste would write and its first cell, without writing.
    void getMimeDataRowColumnSelection(const QMimeData& data, QList<int>& rows, int& column, int& row) const;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

public slots:
    virtual void updateView();
    void slotClearSelection();
    void clearSelectedItemList() { m_currentItem = -1; }
    void turnOffSelectionRectangle() { m_selectionRectangleOn = false; }
    void slotSortIndicatorChanged(int column, Qt::SortOrder order);
    void slotSetNextInColumn(QWidget* editor);
    void slotVertexSelected();
    void slotDeselectVertices();
    void slotVertexSelection(bool on);
    void slotVertexSelectionFromActionPushButtn(bool on);
    void slotClearFilterSelectedRows();
    void slotRowsSelected(const boost::dynamic_bitset<>& rows);
    void setNewRowSelection(const boost::dynamic_bitset<>& rows);
    void slotSectionClicked(int column);
    void slotSectionResized(int column, int oldSize, int newSize);
    void slotSliderMoved(int value);
    void slotConvertNodeUnits(const QModelIndex& column);
    void setColumnWidth(int column, int oldWidth, int newWidth);

signals:
    void sliderMoved(int value);
    void sectionResized(int logicalIndex, int oldSize, int newSize);
    void sectionClicked(int logicalIndex);
    void verteciesSelected(std::vector<int> rows);
    void showSelectedVerticesNotFromTable();
    void tableItemSelected();
    void headerCheckBoxClicked();

protected:
    QModelIndexList selectedIndexes() const override;
    void resizeEvent(QResizeEvent* event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    QStyleOptionViewItem viewOptions() const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void paintSelectionRectangle(QPainter* painter, const QRectF& from, const QRectF& to);
    void paintCellSelectionRectangle(QPainter* painter, const QRectF& cell);

private slots:
    void countSelectionChange(const QItemSelection& selected, const QItemSelection& deselected);
    void dropSelectionCounts();
    void dropRowSelection();
    void materializeVisibleRows();
    void beginModelRowChange();
    void endModelRowChange();
    void dropLeavingRows(const QModelIndex& parent, int first, int last);

private:
    int sourceRowOfViewRow(int viewRow) const;
    void rebuildSelectionCounts() const;
    int viewRowOfSourceRow(int sourceRow) const;
    QItemSelection rangesOfSourceRows(const std::vector<int>& sourceRows) const;
    // The first and the last cell of sortedSelectedIndexes(), without building that list.
    void selectionCorners(QModelIndex& first, QModelIndex& last) const;
    QString scrollToItemOf(const QModelIndexList& cells, bool rowMode);

    bool m_resizeToCellContents = false;
    bool m_isEmpty = true;
    int m_pendingResizeCount = 0;
    bool m_selectionRectangleOn = false;
    QVertexItemDelegate* m_delegate;
    int m_defaultColumnWidth = 90;
    QMenu* m_menu;
    bool m_vertexHighlightOn = false;
    bool m_cellDragEnabled = false;
    bool m_cellDropAccepted = true;
    bool m_ignoreDelKey = false;
    std::unique_ptr<QCursor> m_crossCursor;
    std::unique_ptr<QCursor> m_bigCrossCursor;
    QModelIndex m_dragStartIndex;
    int m_currentItem = -1;
    bool m_rowSelectionMode = false;
    bool m_aboutToClose = false;

    // Selected cells of each source row, kept in step with the selection model's change signals.
    // Reading the selection model's ranges copies every one of them (two persistent indexes a
    // range), which on a scattered selection of a big sheet costs more than all charts' reads
    // together; the counts answer selectedRows() in one pass over the rows. Structural changes
    // of the models drop them, and the next read rebuilds them from the ranges.
    mutable std::vector<std::int32_t> m_selectedCellsPerRow;
    mutable bool m_selectionCountsValid = false;

    // Whole rows selected by the program (charts, inverse, select-by-value), by source row. Qt
    // scans every range of its selection model for every cell it paints, so a scattered
    // selection of half a million rows made one repaint take seconds. The selection model
    // therefore holds these rows only near the viewport (m_shownRows, sorted source rows) and
    // the rest stays here; a clear of the selection model clears them too.
    boost::dynamic_bitset<> m_rowSelection;
    std::vector<int> m_shownRows;
    bool m_internalSelectionChange = false;
    // First and last view row of m_rowSelection; -1 when unknown.
    mutable int m_rowSelectionTop = -1;
    mutable int m_rowSelectionBottom = -1;
    // The cell the scroll buttons stand on, for painting without sorting the whole selection.
    QPersistentModelIndex m_currentItemIndex;
};

} // namespace rkBase

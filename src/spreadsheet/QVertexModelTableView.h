#pragma once
// The spreadsheet's view. It holds the one row selection that every chart reads, and links the
// cell model through the sorting proxy. Selection plumbing beyond plain rows grows here.

#include <QList>
#include <QModelIndex>
#include <QSet>
#include <QTableView>

#include <boost/dynamic_bitset.hpp>

#include <vector>

class QMenu;

namespace rkBase {

class MatrixData;
class QSortFilterProxyVertexItemModel;
class QVertexItemDelegate;
class QVertexItemModel;

class QVertexModelTableView : public QTableView
{
    Q_OBJECT
public:
    QVertexModelTableView(QWidget* parent, QMenu* menu, bool withMinMaxTable, bool withCheckBoxHeader, bool unused);

    QVertexItemModel* vertexItemModel() const;
    QSortFilterProxyVertexItemModel* proxyModel() const;
    QMenu* menu() const { return m_menu; }
    void setMenu(QMenu* menu) { m_menu = menu; }

    virtual void resizeColumnsToHeaderContents();
    void resetEmpty();
    bool isEmpty() const { return m_isEmpty; }
    int rowCount() const;
    // Source rows whose every cell is selected, ascending; a partly selected row is not one.
    std::vector<int> selectedRows(int unused) const;
    std::vector<int> selectedRowsInColumn() const;
    QSet<int> selectedColumns() const;
    std::vector<int> validCellRows() const;
    // Selected cells column by column, each column's rows in view order.
    QModelIndexList sortedSelectedIndexes() const;
    MatrixData* firstSelectedNode() const;
    QVariant::Type firstSelectedCellType(QString& name) const;
    void getFirstSelectedCell(int& column, int& row) const;
    bool canModifySelectedCells() const;
    // Selects the source rows set in the bitset, merged into ranges in view order; bits past the
    // sheet are ignored. Adds to the present selection.
    void setRowSelection(const boost::dynamic_bitset<>& sourceRows);
    void setRowSelection(const std::vector<int>& sourceRows);
    void setCellSelection(const QList<QModelIndex>& cells);
    void selectInverse();
    void selectTableRow(int sourceRow);
    bool deSelectRow(int sourceRow);
    QModelIndex mapItemToSource(const QModelIndex& index) const;
    QModelIndex mapItemFromSource(const QModelIndex& index) const;
    QString scrollToSelectedItem(bool rowMode);
    QString scrollToNextSelectedItem(bool rowMode);
    QString scrollToPreviousSelectedItem(bool rowMode);
    int currentItem() const { return m_currentItem; }
    void setIgnoreDelKey(bool ignore) { m_ignoreDelKey = ignore; }
    bool isVertexHighlightOn() const { return m_vertexHighlightOn; }
    void setCellDragEnabled(bool on) { m_cellDragEnabled = on; }
    void clearSelectedItemList() { m_currentItem = -1; }
    void turnOffSelectionRectangle() { m_selectionRectangleOn = false; }
    void aboutToClose(bool closing);
    void displaySelectedRows() {}
    void setAllColumnWidth(int width);
    int defaultColumnWidth() const { return m_defaultColumnWidth; }

public slots:
    virtual void updateView();
    void slotClearSelection();
    void slotSortIndicatorChanged(int column, Qt::SortOrder order);
    void slotSetNextInColumn(QWidget* editor);
    void slotVertexSelected();
    void slotDeselectVertices();
    void slotVertexSelection(bool on);
    void slotClearFilterSelectedRows();
    void slotRowsSelected(const boost::dynamic_bitset<>& rows);
    void setNewRowSelection(const boost::dynamic_bitset<>& rows);
    void slotSectionClicked(int column);
    void slotSectionResized(int column, int oldSize, int newSize);
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
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QMenu* m_menu;
    QVertexItemDelegate* m_delegate;
    bool m_isEmpty = true;
    int m_pendingResizeCount = 0;
    int m_defaultColumnWidth = 90;
    int m_currentItem = -1;
    bool m_selectionRectangleOn = false;
    bool m_vertexHighlightOn = false;
    bool m_cellDragEnabled = false;
    bool m_ignoreDelKey = false;
    bool m_aboutToClose = false;
};

} // namespace rkBase

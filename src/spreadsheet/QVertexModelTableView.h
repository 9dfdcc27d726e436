#pragma once
// The spreadsheet's view. It holds the one row selection that every chart reads, and links the
// cell model through the sorting proxy. Selection plumbing beyond plain rows grows here.

#include <QTableView>

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
    MatrixData* firstSelectedNode() const;
    void setRowSelection(const std::vector<int>& sourceRows);
    void setAllColumnWidth(int width);
    int defaultColumnWidth() const { return m_defaultColumnWidth; }

public slots:
    virtual void updateView();
    void slotClearSelection();
    void slotSortIndicatorChanged(int column, Qt::SortOrder order);
    void slotSetNextInColumn(QWidget* editor);
    void slotVertexSelected();
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
};

} // namespace rkBase

#include "QVertexModelTableView.h"

#include "QSortFilterProxyVertexItemModel.h"
#include "QVertexItemDelegate.h"
#include "QVertexItemModel.h"

#include <MatrixData.h>

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace rkBase {

QVertexModelTableView::QVertexModelTableView(QWidget* parent, QMenu* menu, bool withMinMaxTable, bool withCheckBoxHeader, bool)
    : QTableView(parent), m_menu(menu), m_delegate(new QVertexItemDelegate(this))
{
    setIconSize(QSize(24, 24));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    QHeaderView* vertical = verticalHeader();
    vertical->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    vertical->setSectionResizeMode(QHeaderView::Fixed);
    vertical->setFixedWidth(85);
    vertical->setDefaultSectionSize(fontMetrics().height() + 10);
    connect(vertical, SIGNAL(sectionClicked(int)), this, SLOT(slotVertexSelected()));
    if (withMinMaxTable) {
        // The min/max table above shows the column headers for both.
        horizontalHeader()->hide();
        connect(horizontalScrollBar(), SIGNAL(valueChanged(int)), this, SIGNAL(sliderMoved(int)));
    }
    if (withMinMaxTable || withCheckBoxHeader) {
        connect(horizontalHeader(), SIGNAL(sectionClicked(int)), this, SIGNAL(sectionClicked(int)));
        connect(horizontalHeader(), SIGNAL(sectionResized(int, int, int)), this, SIGNAL(sectionResized(int, int, int)));
    }
    setAcceptDrops(true);
    setAutoScroll(true);
    setAutoScrollMargin(40);
    setItemDelegate(m_delegate);
    connect(m_delegate, SIGNAL(setNextInColumn(QWidget*)), this, SLOT(slotSetNextInColumn(QWidget*)));
    setMouseTracking(true);
}

QSortFilterProxyVertexItemModel* QVertexModelTableView::proxyModel() const
{
    return qobject_cast<QSortFilterProxyVertexItemModel*>(model());
}

QVertexItemModel* QVertexModelTableView::vertexItemModel() const
{
    if (QSortFilterProxyVertexItemModel* proxy = proxyModel())
        return qobject_cast<QVertexItemModel*>(proxy->sourceModel());
    return qobject_cast<QVertexItemModel*>(model());
}

void QVertexModelTableView::updateView()
{
    QVertexItemModel* m = vertexItemModel();
    if (!m)
        return;
    m->updateModel(-1, std::vector<int>());
    if (QSortFilterProxyVertexItemModel* proxy = proxyModel())
        proxy->reset();
    resizeColumnsToHeaderContents();
    m_isEmpty = m->columnCount() == 0;
}

void QVertexModelTableView::resetEmpty()
{
    m_isEmpty = true;
    m_pendingResizeCount = 0;
}

void QVertexModelTableView::resizeColumnsToHeaderContents()
{
    QAbstractItemModel* m = model();
    if (!m)
        return;
    const QFontMetrics fm(horizontalHeader()->font());
    for (int c = 0; c < m->columnCount(); ++c) {
        const int text = fm.horizontalAdvance(m->headerData(c, Qt::Horizontal).toString()) + 24;
        QTableView::setColumnWidth(c, std::max(m_defaultColumnWidth, text));
    }
}

int QVertexModelTableView::rowCount() const
{
    return model() ? model()->rowCount() : 0;
}

std::vector<int> QVertexModelTableView::selectedRows(int) const
{
    std::vector<int> rows;
    if (!selectionModel() || !model())
        return rows;
    const int columns = model()->columnCount();
    const int sourceRows = vertexItemModel() ? vertexItemModel()->rowCount() : model()->rowCount();
    if (columns == 0 || sourceRows == 0)
        return rows;
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    if (proxy && proxy->isIdentity())
        proxy = nullptr;
    // Whole rows only: count the selected cells of each source row from the selection ranges,
    // never from a list of every selected index (millions on a big sheet).
    std::vector<int> count(static_cast<std::size_t>(sourceRows), 0);
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        const int width = range.right() - range.left() + 1;
        for (int r = range.top(); r <= range.bottom(); ++r) {
            const int source = proxy ? proxy->mapToSource(model()->index(r, 0)).row() : r;
            if (source >= 0 && source < sourceRows)
                count[static_cast<std::size_t>(source)] += width;
        }
    }
    for (int r = 0; r < sourceRows; ++r)
        if (count[static_cast<std::size_t>(r)] >= columns)
            rows.push_back(r);
    return rows;
}

MatrixData* QVertexModelTableView::firstSelectedNode() const
{
    if (!selectionModel() || !selectionModel()->hasSelection())
        return nullptr;
    return QVertexItemDelegate::nodeOf(selectionModel()->selectedIndexes().first());
}

void QVertexModelTableView::setRowSelection(const boost::dynamic_bitset<>& sourceRows)
{
    QAbstractItemModel* m = model();
    if (!selectionModel() || !m)
        return;
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    QAbstractItemModel* source = proxy ? proxy->sourceModel() : m;
    if (proxy && proxy->isIdentity())
        proxy = nullptr;
    const std::size_t n = std::min<std::size_t>(sourceRows.size(), static_cast<std::size_t>(source->rowCount()));
    const int lastColumn = m->columnCount() - 1;
    if (n == 0 || lastColumn < 0)
        return;
    // View rows of the wanted records: after a sort they stand elsewhere than in the tree.
    std::vector<int> viewRows;
    viewRows.reserve(sourceRows.count());
    for (auto r = sourceRows.find_first(); r < n; r = sourceRows.find_next(r)) {
        const int row = static_cast<int>(r);
        const int view = proxy ? proxy->mapFromSource(source->index(row, 0)).row() : row;
        if (view >= 0)
            viewRows.push_back(view);
    }
    std::sort(viewRows.begin(), viewRows.end());
    QItemSelection selection;
    for (std::size_t i = 0; i < viewRows.size();) {
        std::size_t j = i;
        while (j + 1 < viewRows.size() && viewRows[j + 1] == viewRows[j] + 1)
            ++j;
        selection.append(QItemSelectionRange(m->index(viewRows[i], 0), m->index(viewRows[j], lastColumn)));
        i = j + 1;
    }
    selectionModel()->select(selection, QItemSelectionModel::Select);
    if (!viewRows.empty())
        scrollTo(m->index(viewRows.front(), 0));
}

void QVertexModelTableView::setRowSelection(const std::vector<int>& sourceRows)
{
    int top = -1;
    for (int r : sourceRows)
        top = std::max(top, r);
    boost::dynamic_bitset<> bits(static_cast<std::size_t>(top + 1));
    for (int r : sourceRows)
        if (r >= 0)
            bits.set(static_cast<std::size_t>(r));
    if (selectionModel())
        selectionModel()->clearSelection();
    setRowSelection(bits);
}

void QVertexModelTableView::setNewRowSelection(const boost::dynamic_bitset<>& rows)
{
    if (m_aboutToClose)
        return;
    if (selectionModel())
        selectionModel()->clearSelection();
    m_currentItem = -1;
    setRowSelection(rows);
}

void QVertexModelTableView::slotRowsSelected(const boost::dynamic_bitset<>& rows)
{
    std::vector<int> list;
    list.reserve(rows.count());
    for (auto r = rows.find_first(); r != boost::dynamic_bitset<>::npos; r = rows.find_next(r))
        list.push_back(static_cast<int>(r));
    emit verteciesSelected(list);
}

void QVertexModelTableView::selectInverse()
{
    QVertexItemModel* m = vertexItemModel();
    if (!m)
        return;
    boost::dynamic_bitset<> bits(static_cast<std::size_t>(m->rowCount()));
    bits.set();
    for (int r : selectedRows(0))
        bits.reset(static_cast<std::size_t>(r));
    if (!m_aboutToClose) {
        if (selectionModel())
            selectionModel()->clearSelection();
        m_currentItem = -1;
        setRowSelection(bits);
    }
    slotRowsSelected(bits);
}

void QVertexModelTableView::setCellSelection(const QList<QModelIndex>& cells)
{
    if (!selectionModel() || cells.isEmpty())
        return;
    // Runs of adjacent rows in one column become one range; select once.
    QList<QModelIndex> sorted = cells;
    std::sort(sorted.begin(), sorted.end(), [](const QModelIndex& a, const QModelIndex& b) {
        return a.column() != b.column() ? a.column() < b.column() : a.row() < b.row();
    });
    QItemSelection selection;
    for (int i = 0; i < sorted.size();) {
        int j = i;
        while (j + 1 < sorted.size() && sorted[j + 1].column() == sorted[i].column() && sorted[j + 1].row() == sorted[j].row() + 1)
            ++j;
        selection.append(QItemSelectionRange(sorted[i], sorted[j]));
        i = j + 1;
    }
    selectionModel()->select(selection, QItemSelectionModel::Select);
}

QModelIndexList QVertexModelTableView::sortedSelectedIndexes() const
{
    QModelIndexList cells = selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
    std::sort(cells.begin(), cells.end(), [](const QModelIndex& a, const QModelIndex& b) {
        return a.column() != b.column() ? a.column() < b.column() : a.row() < b.row();
    });
    return cells;
}

std::vector<int> QVertexModelTableView::selectedRowsInColumn() const
{
    std::vector<int> rows;
    if (!selectionModel())
        return rows;
    const QModelIndexList cells = selectionModel()->selectedIndexes();
    if (cells.isEmpty())
        return rows;
    const int column = cells.first().column();
    for (const QModelIndex& cell : cells)
        if (cell.column() == column)
            rows.push_back(mapItemToSource(cell).row());
    return rows;
}

QSet<int> QVertexModelTableView::selectedColumns() const
{
    QSet<int> columns;
    if (!selectionModel() || !model())
        return columns;
    for (int c = 0; c < model()->columnCount(); ++c)
        if (selectionModel()->isColumnSelected(c, QModelIndex()))
            columns.insert(c);
    return columns;
}

std::vector<int> QVertexModelTableView::validCellRows() const
{
    std::vector<int> rows;
    if (!model())
        return rows;
    rows.reserve(static_cast<std::size_t>(model()->rowCount()));
    for (int r = 0; r < model()->rowCount(); ++r)
        rows.push_back(mapItemToSource(model()->index(r, 0)).row());
    return rows;
}

QVariant::Type QVertexModelTableView::firstSelectedCellType(QString& name) const
{
    MatrixData* node = firstSelectedNode();
    name = node ? node->name() : QString();
    return node ? node->cellType() : QVariant::Invalid;
}

void QVertexModelTableView::getFirstSelectedCell(int& column, int& row) const
{
    column = row = -1;
    if (!selectionModel() || !selectionModel()->hasSelection())
        return;
    const QModelIndex first = selectionModel()->selectedIndexes().first();
    column = first.column();
    row = first.row();
}

bool QVertexModelTableView::canModifySelectedCells() const
{
    if (!selectionModel())
        return false;
    for (const QModelIndex& cell : selectionModel()->selectedIndexes())
        if (cell.flags() & Qt::ItemIsEditable)
            return true;
    return false;
}

void QVertexModelTableView::selectTableRow(int sourceRow)
{
    const QModelIndex view = mapItemFromSource(vertexItemModel() ? vertexItemModel()->index(sourceRow, 0) : QModelIndex());
    if (view.isValid())
        selectRow(view.row());
}

bool QVertexModelTableView::deSelectRow(int sourceRow)
{
    if (!selectionModel())
        return false;
    for (const QModelIndex& cell : selectionModel()->selectedIndexes()) {
        if (mapItemToSource(cell).row() == sourceRow) {
            selectionModel()->select(cell, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
            return true;
        }
    }
    return false;
}

QModelIndex QVertexModelTableView::mapItemToSource(const QModelIndex& index) const
{
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    return proxy && index.model() == proxy ? proxy->mapToSource(index) : index;
}

QModelIndex QVertexModelTableView::mapItemFromSource(const QModelIndex& index) const
{
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    return proxy && index.isValid() && index.model() == proxy->sourceModel() ? proxy->mapFromSource(index) : index;
}

QString QVertexModelTableView::scrollToSelectedItem(bool rowMode)
{
    const QModelIndexList cells = sortedSelectedIndexes();
    if (cells.isEmpty())
        return QString();
    if (m_currentItem < 0 || m_currentItem >= cells.size())
        m_currentItem = 0; // wraps from the last to the first
    const QModelIndex index = cells.at(m_currentItem);
    scrollTo(index);
    selectionModel()->setCurrentIndex(index, rowMode ? QItemSelectionModel::Select | QItemSelectionModel::Rows
                                                      : QItemSelectionModel::Select);
    viewport()->update();
    return QString::number(mapItemToSource(index).row() + 1) + QStringLiteral(", ") + QString::number(index.column() + 1);
}

QString QVertexModelTableView::scrollToNextSelectedItem(bool rowMode)
{
    ++m_currentItem;
    return scrollToSelectedItem(rowMode);
}

QString QVertexModelTableView::scrollToPreviousSelectedItem(bool rowMode)
{
    --m_currentItem;
    if (m_currentItem < 0)
        m_currentItem = std::max(0, static_cast<int>(sortedSelectedIndexes().size()) - 1);
    return scrollToSelectedItem(rowMode);
}

void QVertexModelTableView::aboutToClose(bool closing)
{
    m_aboutToClose = closing;
    if (selectionModel())
        selectionModel()->clearSelection();
    m_currentItem = -1;
}

void QVertexModelTableView::slotDeselectVertices()
{
    emit verteciesSelected(std::vector<int>());
}

void QVertexModelTableView::slotVertexSelection(bool on)
{
    m_vertexHighlightOn = on;
    emit verteciesSelected(on ? selectedRows(0) : std::vector<int>());
}

void QVertexModelTableView::slotClearFilterSelectedRows()
{
    if (QSortFilterProxyVertexItemModel* proxy = proxyModel()) {
        proxy->clearFilterRows();
        proxy->setFilterKeyColumn(0);
    }
}

void QVertexModelTableView::slotSectionClicked(int column)
{
    selectColumn(column);
}

void QVertexModelTableView::slotSectionResized(int column, int oldSize, int newSize)
{
    if (oldSize != newSize)
        QTableView::setColumnWidth(column, newSize);
}

void QVertexModelTableView::slotConvertNodeUnits(const QModelIndex& column)
{
    if (QVertexItemModel* m = vertexItemModel())
        m->convertNodeUnit(column);
}

void QVertexModelTableView::setAllColumnWidth(int width)
{
    if (width >= 0)
        m_defaultColumnWidth = width;
    if (!model())
        return;
    for (int c = 0; c < model()->columnCount(); ++c)
        QTableView::setColumnWidth(c, m_defaultColumnWidth);
}

void QVertexModelTableView::setColumnWidth(int column, int, int newWidth)
{
    QTableView::setColumnWidth(column, newWidth);
}

void QVertexModelTableView::slotClearSelection()
{
    clearSelection();
    m_currentItem = -1;
    m_selectionRectangleOn = false;
    emit verteciesSelected(std::vector<int>());
    viewport()->update();
}

void QVertexModelTableView::slotSortIndicatorChanged(int column, Qt::SortOrder order)
{
    if (isSortingEnabled())
        sortByColumn(column, order);
}

void QVertexModelTableView::slotSetNextInColumn(QWidget*)
{
    const QModelIndex current = currentIndex();
    if (!current.isValid() || !model())
        return;
    const QModelIndex next = model()->index(current.row() + 1, current.column());
    if (next.isValid()) {
        setCurrentIndex(next);
        if (model()->flags(next) & Qt::ItemIsEditable)
            edit(next);
    }
}

void QVertexModelTableView::slotVertexSelected()
{
    emit verteciesSelected(selectedRows(0));
    emit tableItemSelected();
}

void QVertexModelTableView::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_menu)
        m_menu->popup(event->globalPos());
}

void QVertexModelTableView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        slotVertexSelected();
        viewport()->update();
        return;
    }
    QTableView::keyPressEvent(event);
}

void QVertexModelTableView::mousePressEvent(QMouseEvent* event)
{
    m_selectionRectangleOn = true;
    QTableView::mousePressEvent(event);
    emit tableItemSelected();
}

void QVertexModelTableView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_cellDragEnabled = false;
    if (event->button() != Qt::RightButton)
        QTableView::mouseReleaseEvent(event);
    // Queued, so that the selection model has settled before the charts read it.
    QMetaObject::invokeMethod(this, "slotVertexSelected", Qt::QueuedConnection);
    viewport()->update();
}

} // namespace rkBase

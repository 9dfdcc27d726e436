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

void QVertexModelTableView::setRowSelection(const std::vector<int>& sourceRows)
{
    if (!selectionModel() || !model())
        return;
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    const int lastColumn = model()->columnCount() - 1;
    if (lastColumn < 0)
        return;
    std::vector<int> viewRows;
    viewRows.reserve(sourceRows.size());
    for (int r : sourceRows) {
        if (proxy) {
            const QModelIndex v = proxy->mapFromSource(proxy->sourceModel()->index(r, 0));
            if (v.isValid())
                viewRows.push_back(v.row());
        } else if (r >= 0 && r < model()->rowCount()) {
            viewRows.push_back(r);
        }
    }
    std::sort(viewRows.begin(), viewRows.end());
    // Merge neighbouring rows into one range each, in view order.
    QItemSelection selection;
    for (std::size_t i = 0; i < viewRows.size();) {
        std::size_t j = i;
        while (j + 1 < viewRows.size() && viewRows[j + 1] <= viewRows[j] + 1)
            ++j;
        selection.append(QItemSelectionRange(model()->index(viewRows[i], 0), model()->index(viewRows[j], lastColumn)));
        i = j + 1;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
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

void QVertexModelTableView::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    slotVertexSelected();
}

} // namespace rkBase

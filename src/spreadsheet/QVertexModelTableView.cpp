#include "QVertexModelTableView.h"

#include "QCheckBoxHeader.h"
#include "QSortFilterProxyVertexItemModel.h"
#include "QVertexItemDelegate.h"
#include "QVertexItemModel.h"
#include "QVertexSelectionModel.h"

#include <MatrixData.h>

#include <QApplication>
#include <QBitmap>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QDrag>
#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>
#include <QMap>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <climits>
#include <cmath>

namespace rkBase {

QVertexModelTableView::QVertexModelTableView(QWidget* parent, QMenu* menu, bool withMinMaxTable, bool withCheckBoxHeader, bool)
    : QTableView(parent), m_delegate(new QVertexItemDelegate(this)), m_menu(menu)
{
    // Hosts may take the row lists across queued connections.
    qRegisterMetaType<std::vector<int>>("std::vector<int>");
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
    } else if (withCheckBoxHeader) {
        auto* header = new QCheckBoxHeader(Qt::Horizontal, this);
        setHorizontalHeader(header);
        connect(header, SIGNAL(checkBoxClicked(bool)), this, SIGNAL(headerCheckBoxClicked()));
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
    m_crossCursor = std::make_unique<QCursor>(QBitmap(QStringLiteral(":/rkBaseQt/Resources/CrossCursor.bmp")),
                                              QBitmap(QStringLiteral(":/rkBaseQt/Resources/CrossCursorMask.bmp")));
    m_bigCrossCursor = std::make_unique<QCursor>(QBitmap(QStringLiteral(":/rkBaseQt/Resources/BigCrossCursor.bmp")),
                                                 QBitmap(QStringLiteral(":/rkBaseQt/Resources/BigCrossCursorMask.bmp")));
    setCursor(*m_crossCursor);
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(materializeVisibleRows()));
}

QVertexModelTableView::~QVertexModelTableView() = default;

void QVertexModelTableView::setModel(QAbstractItemModel* m)
{
    if (model()) {
        disconnect(model(), nullptr, this, nullptr);
        if (QSortFilterProxyVertexItemModel* proxy = proxyModel())
            if (proxy->sourceModel())
                disconnect(proxy->sourceModel(), nullptr, this, nullptr);
    }
    m_rowSelection.clear();
    m_shownRows.clear();
    QTableView::setModel(m);
    dropSelectionCounts();
    if (!m)
        return;
    // Anything that renumbers rows or columns invalidates the counts; a sort does not, since
    // they are kept by source row.
    for (const char* signal : {SIGNAL(modelReset()), SIGNAL(rowsInserted(QModelIndex, int, int)),
                               SIGNAL(rowsRemoved(QModelIndex, int, int)), SIGNAL(columnsInserted(QModelIndex, int, int)),
                               SIGNAL(columnsRemoved(QModelIndex, int, int))})
        connect(m, signal, this, SLOT(dropSelectionCounts()));
    // Rows leaving or moving in the view (a filter, a sort) take their selection with them
    // without it being the user's doing: connected before the selection model is made, so that
    // the flag stands when the selection model reacts.
    connect(m, SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)), this, SLOT(beginModelRowChange()));
    connect(m, SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)), this, SLOT(dropLeavingRows(QModelIndex, int, int)));
    connect(m, SIGNAL(rowsRemoved(QModelIndex, int, int)), this, SLOT(endModelRowChange()));
    connect(m, SIGNAL(layoutAboutToBeChanged()), this, SLOT(beginModelRowChange()));
    connect(m, SIGNAL(layoutChanged()), this, SLOT(endModelRowChange()));
    connect(m, SIGNAL(rowsInserted(QModelIndex, int, int)), this, SLOT(endModelRowChange()));
    if (QSortFilterProxyVertexItemModel* proxy = proxyModel()) {
        if (QAbstractItemModel* source = proxy->sourceModel()) {
            // Source rows renumbered: the held row selection no longer names the same records.
            for (const char* signal : {SIGNAL(modelReset()), SIGNAL(rowsInserted(QModelIndex, int, int)),
                                       SIGNAL(rowsRemoved(QModelIndex, int, int))}) {
                connect(source, signal, this, SLOT(dropSelectionCounts()));
                connect(source, signal, this, SLOT(dropRowSelection()));
            }
        }
    }
    QItemSelectionModel* old = selectionModel();
    setSelectionModel(new QVertexSelectionModel(m, this));
    delete old;
}

void QVertexModelTableView::beginModelRowChange()
{
    m_internalSelectionChange = true;
}

void QVertexModelTableView::dropLeavingRows(const QModelIndex&, int first, int last)
{
    // Rows a filter takes out of the view lose their selection, as Qt's own ranges do.
    if (!m_rowSelection.any())
        return;
    for (int v = first; v <= last; ++v) {
        const int source = sourceRowOfViewRow(v);
        if (source >= 0 && static_cast<std::size_t>(source) < m_rowSelection.size())
            m_rowSelection.reset(static_cast<std::size_t>(source));
    }
    m_rowSelectionTop = m_rowSelectionBottom = -1;
}

void QVertexModelTableView::endModelRowChange()
{
    m_internalSelectionChange = false;
    m_rowSelectionTop = m_rowSelectionBottom = -1;
    materializeVisibleRows();
}

void QVertexModelTableView::dropRowSelection()
{
    m_rowSelection.clear();
    m_shownRows.clear();
    m_rowSelectionTop = m_rowSelectionBottom = -1;
    m_currentItemIndex = QPersistentModelIndex();
}

void QVertexModelTableView::setSelectionModel(QItemSelectionModel* selection)
{
    if (selectionModel())
        disconnect(selectionModel(), nullptr, this, SLOT(countSelectionChange(QItemSelection, QItemSelection)));
    QTableView::setSelectionModel(selection);
    dropSelectionCounts();
    if (!selection)
        return;
    connect(selection, SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
            SLOT(countSelectionChange(QItemSelection, QItemSelection)));
    if (qobject_cast<QVertexSelectionModel*>(selection))
        connect(selection, SIGNAL(aboutToClear()), this, SLOT(dropRowSelection()));
}

void QVertexModelTableView::dropSelectionCounts()
{
    m_selectionCountsValid = false;
    std::vector<std::int32_t>().swap(m_selectedCellsPerRow);
}

int QVertexModelTableView::sourceRowOfViewRow(int viewRow) const
{
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    if (!proxy || proxy->isIdentity())
        return viewRow;
    return proxy->mapToSource(proxy->index(viewRow, 0)).row();
}

void QVertexModelTableView::countSelectionChange(const QItemSelection& selected, const QItemSelection& deselected)
{
    if (!m_internalSelectionChange && m_rowSelection.any()) {
        // The user took cells out of a held row: it is no longer a whole selected row, and what
        // remains of it is an ordinary selection of cells.
        for (const QItemSelectionRange& range : deselected) {
            for (int r = range.top(); r <= range.bottom(); ++r) {
                const int source = sourceRowOfViewRow(r);
                if (source < 0 || source >= static_cast<int>(m_rowSelection.size()) || !m_rowSelection.test(source))
                    continue;
                m_rowSelection.reset(static_cast<std::size_t>(source));
                auto it = std::lower_bound(m_shownRows.begin(), m_shownRows.end(), source);
                if (it != m_shownRows.end() && *it == source)
                    m_shownRows.erase(it);
                m_rowSelectionTop = m_rowSelectionBottom = -1;
            }
        }
    }
    if (!m_selectionCountsValid)
        return;
    const int rows = static_cast<int>(m_selectedCellsPerRow.size());
    auto apply = [&](const QItemSelection& ranges, int sign) {
        for (const QItemSelectionRange& range : ranges) {
            const int width = sign * (range.right() - range.left() + 1);
            for (int r = range.top(); r <= range.bottom(); ++r) {
                const int source = sourceRowOfViewRow(r);
                if (source < 0 || source >= rows) {
                    // A row the counts do not know: rebuild them on the next read.
                    m_selectionCountsValid = false;
                    return;
                }
                m_selectedCellsPerRow[static_cast<std::size_t>(source)] += width;
            }
        }
    };
    apply(deselected, -1);
    if (m_selectionCountsValid)
        apply(selected, 1);
    if (!m_selectionCountsValid)
        dropSelectionCounts();
}

void QVertexModelTableView::rebuildSelectionCounts() const
{
    QAbstractItemModel* m = model();
    const int sourceRows = vertexItemModel() ? vertexItemModel()->rowCount() : (m ? m->rowCount() : 0);
    m_selectedCellsPerRow.assign(static_cast<std::size_t>(std::max(sourceRows, 0)), 0);
    m_selectionCountsValid = true;
    if (!selectionModel() || !m || !selectionModel()->hasSelection())
        return;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        const int width = range.right() - range.left() + 1;
        for (int r = range.top(); r <= range.bottom(); ++r) {
            const int source = sourceRowOfViewRow(r);
            if (source >= 0 && source < sourceRows)
                m_selectedCellsPerRow[static_cast<std::size_t>(source)] += width;
        }
    }
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
    // reset() filters and sorts the rows afresh inside its own reset; an invalidate() before it
    // would walk a million rows once more for nothing.
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
    const QFontMetrics header(horizontalHeader()->font());
    const QFontMetrics cells(font());
    for (int c = 0; c < m->columnCount(); ++c) {
        int width = std::max(m_defaultColumnWidth, header.horizontalAdvance(m->headerData(c, Qt::Horizontal).toString()) + 20);
        if (m_resizeToCellContents)
            for (int r = 0; r < m->rowCount(); ++r)
                width = std::max(width, cells.horizontalAdvance(m->index(r, c).data().toString()) + 20);
        if (width != QTableView::columnWidth(c))
            QTableView::setColumnWidth(c, width);
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
    if (columns == 0)
        return rows;
    if (!m_selectionCountsValid)
        rebuildSelectionCounts();
    // Whole rows only: a row counts when all its cells are selected.
    const std::size_t counted = m_selectedCellsPerRow.size();
    const std::size_t held = m_rowSelection.size();
    const std::size_t n = std::max(counted, held);
    if (counted == 0) {
        // Only whole rows held as bits: walk the set bits, not every row of the sheet.
        rows.reserve(m_rowSelection.count());
        for (auto r = m_rowSelection.find_first(); r != boost::dynamic_bitset<>::npos; r = m_rowSelection.find_next(r))
            rows.push_back(static_cast<int>(r));
        return rows;
    }
    for (std::size_t r = 0; r < n; ++r)
        if ((r < held && m_rowSelection.test(r)) || (r < counted && m_selectedCellsPerRow[r] >= columns))
            rows.push_back(static_cast<int>(r));
    return rows;
}

bool QVertexModelTableView::hasSelectedCells() const
{
    return m_rowSelection.any() || (selectionModel() && selectionModel()->hasSelection());
}

QModelIndexList QVertexModelTableView::allSelectedIndexes() const
{
    QModelIndexList cells;
    QAbstractItemModel* m = model();
    if (!selectionModel() || !m)
        return cells;
    const std::size_t held = m_rowSelection.size();
    for (const QModelIndex& cell : selectionModel()->selectedIndexes()) {
        const int source = sourceRowOfViewRow(cell.row());
        if (source < 0 || static_cast<std::size_t>(source) >= held || !m_rowSelection.test(static_cast<std::size_t>(source)))
            cells.append(cell);
    }
    const int columns = m->columnCount();
    for (auto r = m_rowSelection.find_first(); r != boost::dynamic_bitset<>::npos; r = m_rowSelection.find_next(r)) {
        const int view = viewRowOfSourceRow(static_cast<int>(r));
        if (view < 0)
            continue;
        for (int c = 0; c < columns; ++c)
            cells.append(m->index(view, c));
    }
    return cells;
}

QModelIndexList QVertexModelTableView::selectedIndexes() const
{
    return allSelectedIndexes();
}

int QVertexModelTableView::viewRowOfSourceRow(int sourceRow) const
{
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    if (!proxy)
        return model() && sourceRow < model()->rowCount() ? sourceRow : -1;
    if (proxy->isIdentity())
        return sourceRow < proxy->rowCount() ? sourceRow : -1;
    QAbstractItemModel* source = proxy->sourceModel();
    return source ? proxy->mapFromSource(source->index(sourceRow, 0)).row() : -1;
}

QItemSelection QVertexModelTableView::rangesOfSourceRows(const std::vector<int>& sourceRows) const
{
    QItemSelection selection;
    QAbstractItemModel* m = model();
    const int lastColumn = m ? m->columnCount() - 1 : -1;
    if (lastColumn < 0)
        return selection;
    std::vector<int> viewRows;
    viewRows.reserve(sourceRows.size());
    for (int r : sourceRows) {
        const int view = viewRowOfSourceRow(r);
        if (view >= 0)
            viewRows.push_back(view);
    }
    std::sort(viewRows.begin(), viewRows.end());
    // Runs of adjacent view rows become one range each.
    for (std::size_t i = 0; i < viewRows.size();) {
        std::size_t j = i;
        while (j + 1 < viewRows.size() && viewRows[j + 1] == viewRows[j] + 1)
            ++j;
        selection.append(QItemSelectionRange(m->index(viewRows[i], 0), m->index(viewRows[j], lastColumn)));
        i = j + 1;
    }
    return selection;
}

void QVertexModelTableView::materializeVisibleRows()
{
    QAbstractItemModel* m = model();
    if (!selectionModel() || !m)
        return;
    std::vector<int> wanted;
    if (m_rowSelection.any()) {
        const int rows = m->rowCount();
        const int sectionHeight = std::max(1, verticalHeader()->defaultSectionSize());
        int top = rowAt(0);
        int bottom = rowAt(viewport()->height() - 1);
        if (top < 0)
            top = 0;
        if (bottom < 0)
            bottom = top + viewport()->height() / sectionHeight;
        // A page of margin on each side: a small scroll need not touch the selection model.
        const int margin = std::max(64, bottom - top);
        top = std::max(0, top - margin);
        bottom = std::min(rows - 1, bottom + margin);
        for (int v = top; v <= bottom; ++v) {
            const int source = sourceRowOfViewRow(v);
            if (source >= 0 && static_cast<std::size_t>(source) < m_rowSelection.size()
                && m_rowSelection.test(static_cast<std::size_t>(source)))
                wanted.push_back(source);
        }
        std::sort(wanted.begin(), wanted.end());
    }
    if (wanted == m_shownRows)
        return;
    std::vector<int> drop, add;
    std::set_difference(m_shownRows.begin(), m_shownRows.end(), wanted.begin(), wanted.end(), std::back_inserter(drop));
    std::set_difference(wanted.begin(), wanted.end(), m_shownRows.begin(), m_shownRows.end(), std::back_inserter(add));
    const bool wasInternal = m_internalSelectionChange;
    m_internalSelectionChange = true;
    if (!drop.empty())
        selectionModel()->select(rangesOfSourceRows(drop), QItemSelectionModel::Deselect);
    if (!add.empty())
        selectionModel()->select(rangesOfSourceRows(add), QItemSelectionModel::Select);
    m_internalSelectionChange = wasInternal;
    m_shownRows = std::move(wanted);
}

void QVertexModelTableView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    materializeVisibleRows();
}

MatrixData* QVertexModelTableView::firstSelectedNode() const
{
    int column = -1, row = -1;
    getFirstSelectedCell(column, row);
    return row >= 0 ? QVertexItemDelegate::nodeOf(model()->index(row, column)) : nullptr;
}

void QVertexModelTableView::setRowSelection(const boost::dynamic_bitset<>& sourceRows)
{
    QAbstractItemModel* m = model();
    if (!selectionModel() || !m || m->columnCount() == 0)
        return;
    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    QAbstractItemModel* source = proxy ? proxy->sourceModel() : m;
    const int records = source->rowCount();
    const std::size_t n = std::min<std::size_t>(sourceRows.size(), static_cast<std::size_t>(std::max(records, 0)));
    if (n == 0)
        return;
    if (m_rowSelection.size() != static_cast<std::size_t>(records))
        m_rowSelection.resize(static_cast<std::size_t>(records));
    // The view row of each record decides what is shown first: after a sort the records stand
    // elsewhere than in the tree.
    int firstView = -1;
    const bool identity = !proxy || proxy->isIdentity();
    if (identity) {
        // Word by word: a lasso hands over half a million scattered rows.
        boost::dynamic_bitset<> rows(sourceRows);
        rows.resize(m_rowSelection.size());
        m_rowSelection |= rows;
        const auto first = rows.find_first();
        if (first != boost::dynamic_bitset<>::npos)
            firstView = static_cast<int>(first);
    } else {
        for (auto r = sourceRows.find_first(); r < n; r = sourceRows.find_next(r)) {
            m_rowSelection.set(r);
            const int view = viewRowOfSourceRow(static_cast<int>(r));
            if (view >= 0 && (firstView < 0 || view < firstView))
                firstView = view;
        }
    }
    m_rowSelectionTop = m_rowSelectionBottom = -1;
    m_selectionRectangleOn = m_selectionRectangleOn && hasSelectedCells();
    materializeVisibleRows();
    if (firstView >= 0)
        scrollTo(m->index(firstView, 0));
    viewport()->update();
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
    QModelIndexList cells = allSelectedIndexes();
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
    const QModelIndexList cells = allSelectedIndexes();
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
    QAbstractItemModel* m = model();
    if (!selectionModel() || !m || !hasSelectedCells())
        return columns;
    const int rows = m->rowCount();
    const QItemSelection ranges = selectionModel()->selection();
    std::vector<char> covered;
    for (int c = 0; c < m->columnCount(); ++c) {
        covered.assign(static_cast<std::size_t>(rows), 0);
        for (const QItemSelectionRange& range : ranges)
            if (range.left() <= c && c <= range.right())
                std::fill(covered.begin() + range.top(), covered.begin() + range.bottom() + 1, 1);
        bool all = rows > 0;
        for (int r = 0; r < rows && all; ++r) {
            if (covered[static_cast<std::size_t>(r)])
                continue;
            const int source = sourceRowOfViewRow(r);
            all = source >= 0 && static_cast<std::size_t>(source) < m_rowSelection.size()
                && m_rowSelection.test(static_cast<std::size_t>(source));
        }
        if (all)
            columns.insert(c);
    }
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
    if (!selectionModel())
        return;
    if (selectionModel()->hasSelection()) {
        const QModelIndex first = selectionModel()->selectedIndexes().first();
        column = first.column();
        row = first.row();
        return;
    }
    const auto held = m_rowSelection.find_first();
    if (held != boost::dynamic_bitset<>::npos) {
        row = viewRowOfSourceRow(static_cast<int>(held));
        column = row >= 0 ? 0 : -1;
    }
}

bool QVertexModelTableView::canModifySelectedCells() const
{
    if (!selectionModel())
        return false;
    for (const QModelIndex& cell : selectionModel()->selectedIndexes())
        if (cell.flags() & Qt::ItemIsEditable)
            return true;
    // A held row offers every column: editable if any column is.
    const auto held = m_rowSelection.find_first();
    const int view = held != boost::dynamic_bitset<>::npos ? viewRowOfSourceRow(static_cast<int>(held)) : -1;
    if (view >= 0)
        for (int c = 0; c < model()->columnCount(); ++c)
            if (model()->index(view, c).flags() & Qt::ItemIsEditable)
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
    if (sourceRow >= 0 && static_cast<std::size_t>(sourceRow) < m_rowSelection.size()
        && m_rowSelection.test(static_cast<std::size_t>(sourceRow))) {
        m_rowSelection.reset(static_cast<std::size_t>(sourceRow));
        m_rowSelectionTop = m_rowSelectionBottom = -1;
        auto it = std::lower_bound(m_shownRows.begin(), m_shownRows.end(), sourceRow);
        if (it != m_shownRows.end() && *it == sourceRow) {
            m_shownRows.erase(it);
            m_internalSelectionChange = true;
            selectionModel()->select(rangesOfSourceRows({sourceRow}), QItemSelectionModel::Deselect);
            m_internalSelectionChange = false;
        }
        return true;
    }
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
    return scrollToItemOf(sortedSelectedIndexes(), rowMode);
}

QString QVertexModelTableView::scrollToItemOf(const QModelIndexList& cells, bool rowMode)
{
    if (cells.isEmpty())
        return QString();
    if (m_currentItem < 0 || m_currentItem >= cells.size())
        m_currentItem = 0; // wraps from the last to the first
    const QModelIndex index = cells.at(m_currentItem);
    m_currentItemIndex = index;
    scrollTo(index);
    const QItemSelectionModel::SelectionFlags flags =
        rowMode ? QItemSelectionModel::Select | QItemSelectionModel::Rows : QItemSelectionModel::Select;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    selectionModel()->select(index, flags);
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
    const QModelIndexList cells = sortedSelectedIndexes();
    --m_currentItem;
    if (m_currentItem < 0)
        m_currentItem = std::max(0, static_cast<int>(cells.size()) - 1);
    return scrollToItemOf(cells, rowMode);
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
}

void QVertexModelTableView::slotVertexSelectionFromActionPushButtn(bool on)
{
    m_vertexHighlightOn = on;
    if (!on) {
        emit verteciesSelected(std::vector<int>());
        return;
    }
    const std::vector<int> rows = selectedRows(0);
    // Nothing chosen here: the host shows what other views selected instead.
    if (rows.empty())
        emit showSelectedVerticesNotFromTable();
    else
        emit verteciesSelected(rows);
}

void QVertexModelTableView::slotSliderMoved(int value)
{
    QScrollBar* bar = horizontalScrollBar();
    if (value > bar->maximum())
        bar->setMaximum(value);
    bar->setValue(value);
}

void QVertexModelTableView::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_menu)
        m_menu->popup(event->globalPos());
}

void QVertexModelTableView::keyPressEvent(QKeyEvent* event)
{
    QVertexItemModel* m = vertexItemModel();
    if (event->key() == Qt::Key_Delete && state() != EditingState) {
        if (!m_ignoreDelKey)
            clearSelectedCellsEntries();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && state() != EditingState && m
               && m->rowsCanBeExtended()) {
        m->extendRows();
        updateView();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        slotVertexSelected();
    } else {
        QTableView::keyPressEvent(event);
    }
    viewport()->update();
}

void QVertexModelTableView::mousePressEvent(QMouseEvent* event)
{
    m_selectionRectangleOn = true;
    if (event->button() == Qt::LeftButton && isCursorOnDragPoint(currentIndex(), event->pos())) {
        m_cellDragEnabled = true;
        startDrag(model()->supportedDropActions());
    } else {
        QTableView::mousePressEvent(event);
    }
    emit tableItemSelected();
}

void QVertexModelTableView::mouseMoveEvent(QMouseEvent* event)
{
    QTableView::mouseMoveEvent(event);
    const QModelIndex index = indexAt(event->pos());
    if (isCursorOnDragPoint(currentIndex(), event->pos())) {
        viewport()->setCursor(*m_bigCrossCursor);
        return;
    }
    MatrixData* node = index.isValid() ? QVertexItemDelegate::nodeOf(index) : nullptr;
    if (node && node->cellType() == QVariant::Bool) {
        const QRect cell = visualRect(index);
        const int side = cell.height() - 6;
        if (QRect(cell.topLeft() + QPoint(3, 3), QSize(side, side)).contains(event->pos())) {
            viewport()->setCursor(Qt::ArrowCursor);
            return;
        }
    }
    viewport()->setCursor(*m_crossCursor);
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

// ---------------------------------------------------------------------------------------------
// Program-controlled selection by condition

int QVertexModelTableView::selectCells(const QVariant& value1, const QVariant& value2,
                                       QSelectCellsDialog::SelectMethod method, bool rowSelection, bool keepPrevious,
                                       bool showSelected)
{
    QVertexItemModel* source = vertexItemModel();
    if (!source || !selectionModel())
        return 0;
    m_rowSelectionMode = rowSelection;
    if (!keepPrevious) {
        clearSelection();
        m_currentItem = -1;
    }
    const QModelIndexList area = sortedSelectedIndexes();
    clearSelection();

    const int rows = source->rowCount();
    const int columns = source->columnCount();
    boost::dynamic_bitset<> hits(rowSelection ? static_cast<std::size_t>(rows) : 0);
    QList<QModelIndex> cells;
    auto test = [&](int row, int column) {
        const QModelIndex hit = source->isCellConditionSatisfied(row, column, value1, value2, method);
        if (!hit.isValid())
            return;
        if (rowSelection)
            hits.set(static_cast<std::size_t>(row));
        else
            cells.append(mapItemFromSource(hit));
    };
    if (area.isEmpty()) {
        for (int c = 0; c < columns; ++c)
            for (int r = 0; r < rows; ++r)
                test(r, c);
    } else {
        for (const QModelIndex& cell : area) {
            const QModelIndex s = mapItemToSource(cell);
            if (s.isValid())
                test(s.row(), s.column());
        }
    }
    const int count = rowSelection ? static_cast<int>(hits.count()) : cells.size();

    QSortFilterProxyVertexItemModel* proxy = proxyModel();
    if (!showSelected || !proxy) {
        if (rowSelection)
            setRowSelection(hits);
        else
            setCellSelection(cells);
        return count;
    }
    // Shown through the proxy's row mask instead of a selection: only the rows found stay.
    if (!rowSelection) {
        hits.resize(static_cast<std::size_t>(rows));
        for (const QModelIndex& cell : cells) {
            const int s = mapItemToSource(cell).row();
            if (s >= 0 && s < rows)
                hits.set(static_cast<std::size_t>(s));
        }
    }
    QList<bool> mask;
    mask.reserve(rows);
    for (int r = 0; r < rows; ++r)
        mask.append(hits.test(static_cast<std::size_t>(r)));
    proxy->setFilterRows(mask);
    // The count shows 0 while the table is narrowed to the rows found.
    return 0;
}

int QVertexModelTableView::selectColumnCells(int from, int to, bool keepPrevious, bool)
{
    m_rowSelectionMode = false;
    QAbstractItemModel* m = model();
    const int last = m ? m->columnCount() - 1 : -1;
    from = std::max(from, 0);
    to = std::min(to, last);
    if (!keepPrevious) {
        clearSelection();
        m_currentItem = -1;
    }
    if (!m || !selectionModel())
        return to - from + 1;
    if (hasSelectedCells()) {
        const QModelIndexList selected = allSelectedIndexes();
        QList<QModelIndex> kept;
        for (int c = from; c <= to; ++c)
            for (const QModelIndex& cell : selected)
                if (cell.column() == c)
                    kept.append(cell);
        clearSelection();
        setCellSelection(kept);
    } else {
        const SelectionMode mode = selectionMode();
        setSelectionMode(QAbstractItemView::MultiSelection);
        for (int c = from; c <= to; ++c)
            selectColumn(c);
        setSelectionMode(mode == QAbstractItemView::MultiSelection ? mode : QAbstractItemView::ExtendedSelection);
    }
    return to - from + 1;
}

void QVertexModelTableView::clearSelectedCellsEntries()
{
    QVertexItemModel* source = vertexItemModel();
    if (!source || !selectionModel())
        return;
    QModelIndexList cells = allSelectedIndexes();
    if (cells.isEmpty()) {
        QAbstractItemModel* m = model();
        for (int c : selectedColumns())
            for (int r = 0; r < m->rowCount(); ++r)
                cells.append(m->index(r, c));
    }
    QModelIndexList sourceCells;
    sourceCells.reserve(cells.size());
    for (const QModelIndex& cell : cells)
        sourceCells.append(mapItemToSource(cell));
    source->clearData(sourceCells, QVariant(QVariant::Invalid));
}

// ---------------------------------------------------------------------------------------------
// Drag, fill handle and the selection rectangle

void QVertexModelTableView::startDrag(Qt::DropActions supportedActions)
{
    if (!selectionModel() || !model())
        return;
    const QModelIndexList cells = allSelectedIndexes();
    if (cells.isEmpty())
        return;
    // INT_MAX >> 8: larger than any row or column a sheet can have.
    int top = 8388607, left = 8388607;
    for (const QModelIndex& cell : cells) {
        top = std::min(top, cell.row());
        left = std::min(left, cell.column());
    }
    m_dragStartIndex = model()->index(top, left);
    QMimeData* mime = model()->mimeData(cells);
    if (!mime)
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setDragCursor(m_crossCursor->bitmap(Qt::ReturnByValue), Qt::CopyAction);
    drag->exec(supportedActions, Qt::CopyAction);
}

QStyleOptionViewItem QVertexModelTableView::viewOptions() const
{
    QStyleOptionViewItem option = QTableView::viewOptions();
    option.decorationPosition = QStyleOptionViewItem::Left;
    option.decorationAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.decorationSize = QSize(24, 24);
    return option;
}

void QVertexModelTableView::selectionCorners(QModelIndex& first, QModelIndex& last) const
{
    first = last = QModelIndex();
    QAbstractItemModel* m = model();
    if (!selectionModel() || !m)
        return;
    // Sorted by column, then view row: the first cell is the top of the leftmost column, the last
    // the bottom of the rightmost.
    int left = INT_MAX, right = -1, top = INT_MAX, bottom = -1;
    const QItemSelection ranges = selectionModel()->selection();
    for (const QItemSelectionRange& range : ranges) {
        left = std::min(left, range.left());
        right = std::max(right, range.right());
    }
    if (m_rowSelection.any()) {
        if (m_rowSelectionTop < 0) {
            for (auto r = m_rowSelection.find_first(); r != boost::dynamic_bitset<>::npos; r = m_rowSelection.find_next(r)) {
                const int view = viewRowOfSourceRow(static_cast<int>(r));
                if (view < 0)
                    continue;
                m_rowSelectionTop = m_rowSelectionTop < 0 ? view : std::min(m_rowSelectionTop, view);
                m_rowSelectionBottom = std::max(m_rowSelectionBottom, view);
            }
        }
        if (m_rowSelectionTop >= 0) {
            left = 0;
            right = m->columnCount() - 1;
            top = m_rowSelectionTop;
            bottom = m_rowSelectionBottom;
        }
    }
    for (const QItemSelectionRange& range : ranges) {
        if (range.left() <= left && left <= range.right())
            top = std::min(top, range.top());
        if (range.left() <= right && right <= range.right())
            bottom = std::max(bottom, range.bottom());
    }
    if (right < 0 || bottom < 0)
        return;
    first = m->index(top, left);
    last = m->index(bottom, right);
}

int QVertexModelTableView::firstSelectedRowOrColumn(bool& isRow) const
{
    isRow = false;
    if (!selectionModel())
        return -2;
    int top = INT_MAX, bottom = -1, left = INT_MAX, right = -1;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        top = std::min(top, range.top());
        bottom = std::max(bottom, range.bottom());
        left = std::min(left, range.left());
        right = std::max(right, range.right());
    }
    if (m_rowSelection.any()) {
        QModelIndex first, last;
        selectionCorners(first, last);
        if (first.isValid()) {
            top = std::min(top, m_rowSelectionTop);
            bottom = std::max(bottom, m_rowSelectionBottom);
            left = 0;
            right = std::max(right, model()->columnCount() - 1);
        }
    }
    if (bottom < 0)
        return -2;
    if (left == right)
        return left;
    if (top == bottom) {
        isRow = true;
        return top;
    }
    return -2;
}

bool QVertexModelTableView::fillAllowed() const
{
    bool isRow = false;
    if (firstSelectedRowOrColumn(isRow) == -2)
        return false;
    const QModelIndex current = currentIndex();
    MatrixData* node = current.isValid() ? QVertexItemDelegate::nodeOf(current) : nullptr;
    return node && node->name() != QLatin1String("Type") && !node->isNodeComputed() && node->isNodeEditable()
        && !node->checkStateActive();
}

bool QVertexModelTableView::isCursorOnDragPoint(const QModelIndex& index, const QPoint& point) const
{
    if (!index.isValid())
        return false;
    // The distance first: it runs on every mouse move and is almost always false, while the
    // shape of the selection costs a walk over it.
    const QPointF corner = QRectF(visualRect(index)).bottomRight() - QPointF(2, 2);
    const QPointF d = QPointF(point) - corner;
    if (std::hypot(d.x(), d.y()) > QApplication::startDragDistance())
        return false;
    return fillAllowed();
}

void QVertexModelTableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (!m_selectionRectangleOn || !hasSelectedCells())
        return;
    QModelIndex first, last;
    selectionCorners(first, last);
    if (!first.isValid())
        return;
    QPainter painter(viewport());
    paintSelectionRectangle(&painter, visualRect(first), visualRect(last));
    if (m_currentItem >= 0 && m_currentItemIndex.isValid()) {
        const QRectF cell = visualRect(m_currentItemIndex);
        if (m_rowSelectionMode)
            paintSelectionRectangle(&painter, cell, cell);
        else
            paintCellSelectionRectangle(&painter, cell);
    }
}

void QVertexModelTableView::paintSelectionRectangle(QPainter* painter, const QRectF& from, const QRectF& to)
{
    const QRectF frame = from.united(to).adjusted(0.5, 0.5, -1.5, -1.5);
    if (frame.isEmpty())
        return;
    painter->save();
    painter->setPen(QPen(Qt::black, 2));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(frame);
    if (fillAllowed()) {
        // The fill handle: drag it down or across to copy the selection on.
        const QRectF handle(frame.bottomRight() - QPointF(3, 3), QSizeF(6, 6));
        painter->setPen(QPen(Qt::white, 1));
        painter->setBrush(Qt::black);
        painter->drawRect(handle);
    }
    painter->restore();
}

void QVertexModelTableView::paintCellSelectionRectangle(QPainter* painter, const QRectF& cell)
{
    painter->save();
    painter->setPen(QPen(QColor(30, 90, 200), 2, Qt::DotLine));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(cell.adjusted(1.5, 1.5, -2.5, -2.5));
    painter->restore();
}


// ---------------------------------------------------------------------------------------------
// Modification of the selected cells

void QVertexModelTableView::modifySelectedCells(QVariant value, QModifyCellsDialog::ModifyMethod method, int attributeColumn)
{
    QVertexItemModel* source = vertexItemModel();
    if (!source || !selectionModel())
        return;
    // Interpolation pairs neighbours, so it needs the cells column by column in view order;
    // the other methods take the first selected cell as the one that decides text or numbers.
    const bool interpolating = method == QModifyCellsDialog::AttributeInterpolation;
    const QModelIndexList cells = interpolating ? sortedSelectedIndexes() : allSelectedIndexes();
    if (cells.isEmpty())
        return;
    QModelIndexList sourceCells;
    sourceCells.reserve(cells.size());
    for (const QModelIndex& cell : cells)
        sourceCells.append(mapItemToSource(cell));
    if (interpolating)
        source->interpolate(sourceCells, proxyModel() ? validCellRows() : std::vector<int>());
    else
        source->modifySelectedCells(sourceCells, value, method, attributeColumn);
}

// ---------------------------------------------------------------------------------------------
// Copy, paste and the fill handle's drop

QMimeData* QVertexModelTableView::getSelectedData() const
{
    QVertexItemModel* source = vertexItemModel();
    if (!source)
        return nullptr;
    // The copy takes the block between the first and the last cell of the sorted selection; the
    // corners are found without sorting every selected index.
    QModelIndex first, last;
    selectionCorners(first, last);
    if (!first.isValid())
        return nullptr;
    return source->mimeDataForCopy({first, last});
}

void QVertexModelTableView::getMimeDataRowColumnSelection(const QMimeData& data, QList<int>& rows, int& column,
                                                          int& row) const
{
    rows.clear();
    column = row = 0;
    QAbstractItemModel* m = model();
    QVertexItemModel* source = vertexItemModel();
    if (!m || !source)
        return;
    QModelIndex first, last;
    selectionCorners(first, last);
    if (first.isValid()) {
        row = first.row();
        column = first.column();
    }
    const int lines = data.text().count(QLatin1Char('\n')) + 1;
    for (int i = 0; i < lines; ++i) {
        const QModelIndex cell = m->index(row + i, column);
        if (row + i < m->rowCount() && cell.isValid())
            rows.append(source->row(mapItemToSource(cell)));
    }
}

bool QVertexModelTableView::setMimeData(const QMimeData& data)
{
    QVertexItemModel* source = vertexItemModel();
    if (!source || !data.hasText())
        return false;
    QList<int> rows;
    int column = 0, row = 0;
    getMimeDataRowColumnSelection(data, rows, column, row);
    if (!source->setMimeData(data, row, column, rows))
        return false;
    updateView();
    return true;
}

void QVertexModelTableView::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData() && event->mimeData()->hasFormat(QStringLiteral("4drook/dragDrop.list")))
        event->acceptProposedAction();
    else
        event->ignore();
}

void QVertexModelTableView::dragMoveEvent(QDragMoveEvent* event)
{
    QAbstractItemModel* m = model();
    if (!m_cellDragEnabled || !m || !selectionModel() || !event->mimeData()
        || !event->mimeData()->hasFormat(QStringLiteral("4drook/dragDrop.list"))) {
        event->ignore();
        return;
    }
    const QModelIndex current = currentIndex();
    const int row = rowAt(event->pos().y());
    if (current.isValid() && m_dragStartIndex.isValid() && row >= 0) {
        const int top = std::min(row, m_dragStartIndex.row()), bottom = std::max(row, m_dragStartIndex.row());
        const int left = std::min(current.column(), m_dragStartIndex.column());
        const int right = std::max(current.column(), m_dragStartIndex.column());
        selectionModel()->select(QItemSelection(m->index(top, left), m->index(bottom, right)),
                                 QItemSelectionModel::ClearAndSelect);
    }
    const QRect area = viewport()->rect();
    const int margin = autoScrollMargin();
    if (event->pos().y() < area.top() + margin || event->pos().y() > area.bottom() - margin)
        startAutoScroll();
    event->acceptProposedAction();
    viewport()->update();
}

void QVertexModelTableView::dropEvent(QDropEvent* event)
{
    m_cellDragEnabled = false;
    QVertexItemModel* source = vertexItemModel();
    QModelIndex firstCell, lastCell;
    selectionCorners(firstCell, lastCell);
    if (!source || !firstCell.isValid() || !m_cellDropAccepted || !event->mimeData()) {
        event->ignore();
        return;
    }
    // The rows shown, not the stored rows between the corners: the cell model maps each one, so
    // that a sorted or filtered sheet fills what the user sees and nothing it hides.
    if (source->dropMimeData(event->mimeData(), event->proposedAction(), lastCell.row(), lastCell.column(), firstCell))
        event->acceptProposedAction();
    else
        event->ignore();
    viewport()->update();
}

} // namespace rkBase

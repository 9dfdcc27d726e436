#include "QLegendListView.h"

#include "QChartDrawingArea.h"
#include "QLegendListModel.h"

#include <QColorDialog>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>

#include <algorithm>
#include <set>

namespace rkBase {

QLegendListView::QLegendListView(QWidget* parent) : QListView(parent)
{
    setFrameStyle(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(slotLegendsVerticalScrollBarChanged(int)));
}

void QLegendListView::createDefaultPopupMenu()
{
    if (m_popup)
        return;
    m_popup = new QMenu(tr("Default Menu"), this);
    QAction* edit = m_popup->addAction(QIcon(QStringLiteral(":/rkview/Resources/color_swatch.png")),
                                       tr("Edit Legend Color..."), this, SLOT(changeColor()));
    edit->setShortcut(QKeySequence(QStringLiteral("Ctrl+E")));
    QAction* copy = m_popup->addAction(QIcon(QStringLiteral(":/rkview/Resources/page_copy.png")), tr("Copy Legend"),
                                       this, SLOT(copyToClipboard()));
    copy->setShortcut(QKeySequence(QStringLiteral("Ctrl+C")));
}

void QLegendListView::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_popup)
        m_popup->exec(event->globalPos());
}

void QLegendListView::changeColor()
{
    const QColor colour = QColorDialog::getColor(Qt::white, this);
    if (!colour.isValid())
        return;
    auto* legend = qobject_cast<QLegendListModel*>(model());
    if (!legend)
        return;
    for (const QModelIndex& index : selectionModel()->selectedIndexes())
        legend->changeSymbolColor(index, colour);
    reset();
}

void QLegendListView::copyToClipboard() { QChartDrawingArea::copyWidgetToClipboard(this); }

std::vector<int> QLegendListView::getSelectedIDs() const
{
    std::set<int> rows;
    if (selectionModel())
        for (const QModelIndex& index : selectionModel()->selectedIndexes())
            rows.insert(index.row());
    std::vector<int> ids;
    for (int row : rows)
        ids.push_back(model()->index(row, 1).data().toInt());
    return ids;
}

void QLegendListView::slotLegendsVerticalScrollBarChanged(QLegendListModel* model, int value, int minimum,
                                                          int maximum, int pageStep)
{
    if (!model)
        return;
    const int rows = model->rowCount();
    const double span = maximum - minimum + pageStep;
    int first = 0;
    int page = 60;
    if (value != 0 && span > 0.0) {
        first = static_cast<int>((span - value + 0.001) / span + (value - 0.001) / span * rows);
        page = static_cast<int>((span - pageStep + 0.001) / span + (pageStep - 0.001) / span * rows);
    }
    model->setVisibleRows(std::max(first - 15, 0), std::min(rows, first + page + 15));
}

void QLegendListView::slotLegendsVerticalScrollBarChanged(int value)
{
    const QScrollBar* bar = verticalScrollBar();
    slotLegendsVerticalScrollBarChanged(qobject_cast<QLegendListModel*>(model()), value, bar->minimum(),
                                        bar->maximum(), bar->pageStep());
    viewport()->update();
}

} // namespace rkBase

#include "QVertexMinMaxModelTableView.h"

#include "QVertexMinMaxItemModel.h"

#include <QHeaderView>
#include <QScrollBar>

namespace rkBase {

QVertexMinMaxModelTableView::QVertexMinMaxModelTableView(UnitRegistry* registry, QWidget* parent)
    : QTableView(parent), m_registry(registry)
{
    // Same vertical header width as the sheet, so the columns line up.
    verticalHeader()->setFixedWidth(85);
    verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // Three rows share whatever height the frame above the sheet gives them.
    verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicatorShown(true);
    connect(horizontalHeader(), SIGNAL(sectionResized(int, int, int)), this, SIGNAL(sectionResized(int, int, int)));
    connect(horizontalHeader(), SIGNAL(sectionClicked(int)), this, SIGNAL(sectionClicked(int)));
}

void QVertexMinMaxModelTableView::updateView()
{
    if (auto* m = qobject_cast<QVertexMinMaxItemModel*>(model())) {
        m->updateModel(-1, std::vector<int>());
        m->refreshSummaries();
    }
    viewport()->update();
}

void QVertexMinMaxModelTableView::resetEmpty()
{
    viewport()->update();
}

void QVertexMinMaxModelTableView::slotClearSelection()
{
    clearSelection();
}

void QVertexMinMaxModelTableView::slotSliderMoved(int value)
{
    horizontalScrollBar()->setValue(value);
}

} // namespace rkBase

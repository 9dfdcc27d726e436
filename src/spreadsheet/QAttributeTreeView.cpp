#include "QAttributeTreeView.h"

#include "QTreeItemModel.h"

#include <MatrixData.h>

#include <QApplication>
#include <QColorDialog>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>

namespace rkBase {

QAttributeTreeView::QAttributeTreeView(QWidget* parent, bool withFieldData) : QTreeView(parent)
{
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    m_menu = withFieldData ? createPopupMenuForExtendedAnalyser() : createDefaultPopupMenu();
}

QMenu* QAttributeTreeView::createDefaultPopupMenu()
{
    auto* menu = new QMenu(tr("Default Menu"), this);
    QAction* colour = menu->addAction(QIcon(QStringLiteral(":/rkview/Resources/color_swatch.png")),
                                      tr("Edit Attribute Colour..."), this, SLOT(changeColor()));
    colour->setShortcut(QKeySequence(QStringLiteral("Ctrl+E")));
    return menu;
}

QMenu* QAttributeTreeView::createPopupMenuForExtendedAnalyser()
{
    QMenu* menu = createDefaultPopupMenu();
    // The sheet starts with one blank line, so that the user has a row to type into.
    QAction* create = menu->addAction(tr("Create Field Data Columns..."));
    connect(create, &QAction::triggered, this, [this] { emit initializeFieldDataSheet(true); });
    create->setShortcut(QKeySequence(QStringLiteral("Ctrl+E")));
    return menu;
}

void QAttributeTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    m_point = event->globalPos();
    if (m_menu)
        m_menu->popup(m_point);
}

QTreeItemModel* QAttributeTreeView::treeModel() const
{
    return qobject_cast<QTreeItemModel*>(model());
}

void QAttributeTreeView::changeColor()
{
    QTreeItemModel* m = treeModel();
    if (!m)
        return;
    const QColor color = QColorDialog::getColor(Qt::black, this);
    if (!color.isValid())
        return;
    m->changeAttributeColor(selectedIndexes(), color);
    emit treeItemsChanged();
}

void QAttributeTreeView::createDefaultColumns() {}

std::vector<MatrixData*> QAttributeTreeView::allSelected() const
{
    std::vector<MatrixData*> out;
    QTreeItemModel* m = treeModel();
    if (!m || !selectionModel())
        return out;
    for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
        MatrixData* node = m->nodeFromIndex(index);
        if (node && node->parent())
            out.push_back(node);
    }
    return out;
}

MatrixData* QAttributeTreeView::firstSelected() const
{
    QTreeItemModel* m = treeModel();
    if (!m || !selectionModel())
        return nullptr;
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? nullptr : m->nodeFromIndex(selected.first());
}

void QAttributeTreeView::selectItem(MatrixData* node)
{
    QTreeItemModel* m = treeModel();
    if (!m || !selectionModel())
        return;
    if (!(QApplication::keyboardModifiers() & Qt::ControlModifier))
        selectionModel()->clearSelection();
    const QModelIndex index = m->indexFromNode(node);
    if (index.isValid())
        selectionModel()->select(index, QItemSelectionModel::Select);
}

void QAttributeTreeView::deleteSelectedAttributes()
{
    QTreeItemModel* m = treeModel();
    if (!m)
        return;
    const QModelIndexList indexes = selectedIndexes();
    clearSelection();
    m->deleteSelectedRows(indexes);
    reset();
    expandAll();
}

void QAttributeTreeView::expandAll()
{
    if (!model())
        return;
    for (int r = 0; r < model()->rowCount(); ++r)
        expand(model()->index(r, 0));
}

void QAttributeTreeView::updateView()
{
    reset();
    expandAll();
}

QMimeData* QAttributeTreeView::getSelectedData() const
{
    QTreeItemModel* m = treeModel();
    return m && selectionModel() ? m->getHTML_MimeData(selectionModel()->selectedIndexes()) : nullptr;
}

} // namespace rkBase

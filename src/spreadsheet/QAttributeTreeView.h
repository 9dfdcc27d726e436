#pragma once
// The attribute tree on the analyser's left: ticks, renaming, colours and deleting columns.

#include <QPoint>
#include <QTreeView>

#include <vector>

class QMenu;
class QMimeData;

namespace rkBase {

class MatrixData;
class QTreeItemModel;

class QAttributeTreeView : public QTreeView
{
    Q_OBJECT
public:
    QAttributeTreeView(QWidget* parent, bool withFieldData);

    QMenu* createDefaultPopupMenu();
    QMenu* createPopupMenuForExtendedAnalyser();
    QMenu* popupMenu() const { return m_menu; }

    std::vector<MatrixData*> allSelected() const;
    MatrixData* firstSelected() const;
    void selectItem(MatrixData* node);
    void deleteSelectedAttributes();

    // The selected columns as an HTML table, for the host's copy; null without a tree model.
    QMimeData* getSelectedData() const;

public slots:
    void updateView();
    void expandAll();
    void changeColor();
    void createDefaultColumns();

signals:
    void treeItemsChanged();
    void initializeFieldDataSheet(bool createDefaultLine);
    void initializeFieldDataSheet();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QTreeItemModel* treeModel() const;
    QPoint m_point;
    QMenu* m_menu = nullptr;
};

} // namespace rkBase

#pragma once
// The spreadsheet's cell editor: numbers in display units with their unit tag, coded cells
// through the column's own combo box, colour cells through a colour dialog, check boxes for
// Bool cells. Return commits and asks the view to move to the next cell down the column.

#include <QStyledItemDelegate>

namespace rkBase {

class MatrixData;

class QVertexItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit QVertexItemDelegate(QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // The node behind a cell, through any proxy; null for a cell no node holds.
    static MatrixData* nodeOf(const QModelIndex& index);

signals:
    void setNextInColumn(QWidget* editor);

protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace rkBase

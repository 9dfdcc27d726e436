#pragma once
// A cell editor for a unit column: the user picks a unit category, or a unit of the category the
// cell's row names (Qt::UserRole of the cell holds that category's internal name).

#include "QUnitComboBox.h"

#include <QStyledItemDelegate>

namespace rkBase {

class CategoryUnitItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    CategoryUnitItemDelegate(QUnitComboBox::UnitSelector selector, UnitRegistry* registry, QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    // Writes the entry's text as the edit value and its key (category name or unit key) as
    // Qt::UserRole.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    QUnitComboBox::UnitSelector m_selector;
    UnitRegistry* m_registry;
};

} // namespace rkBase

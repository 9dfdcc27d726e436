#pragma once
// A cell editor for the unit category of a property: the registry's categories by their names.

#include <QStyledItemDelegate>

namespace rkBase {

class UnitRegistry;

class PropertyCategoryItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    PropertyCategoryItemDelegate(UnitRegistry* registry, QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    UnitRegistry* m_registry;
};

} // namespace rkBase

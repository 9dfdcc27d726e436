#include "PropertyCategoryItemDelegate.h"

#include "QUnitComboBox.h"

namespace rkBase {

PropertyCategoryItemDelegate::PropertyCategoryItemDelegate(UnitRegistry* registry, QObject* parent)
    : QStyledItemDelegate(parent), m_registry(registry)
{
}

QWidget* PropertyCategoryItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const
{
    return new QUnitComboBox(QUnitComboBox::SelectCategory, m_registry, parent);
}

void PropertyCategoryItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* box = qobject_cast<QUnitComboBox*>(editor);
    if (!box)
        return;
    const int at = box->findText(index.data(Qt::EditRole).toString());
    box->setCurrentIndex(at >= 0 ? at : 0);
}

void PropertyCategoryItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* box = qobject_cast<QUnitComboBox*>(editor))
        model->setData(index, box->currentText(), Qt::EditRole);
}

} // namespace rkBase

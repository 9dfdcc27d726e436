#include "CategoryUnitItemDelegate.h"

namespace rkBase {

CategoryUnitItemDelegate::CategoryUnitItemDelegate(QUnitComboBox::UnitSelector selector, UnitRegistry* registry, QObject* parent)
    : QStyledItemDelegate(parent), m_selector(selector), m_registry(registry)
{
}

QWidget* CategoryUnitItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    auto* box = new QUnitComboBox(m_selector, m_registry, parent);
    if (m_selector == QUnitComboBox::SelectUnit)
        box->setCategory(index.data(Qt::UserRole).toString().toStdString());
    return box;
}

void CategoryUnitItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* box = qobject_cast<QUnitComboBox*>(editor);
    if (!box)
        return;
    const int at = box->findText(index.data(Qt::EditRole).toString());
    if (at >= 0)
        box->setCurrentIndex(at);
}

void CategoryUnitItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    auto* box = qobject_cast<QUnitComboBox*>(editor);
    if (!box || box->currentIndex() < 0)
        return;
    model->setData(index, box->currentText(), Qt::EditRole);
    model->setData(index, box->currentKey(), Qt::UserRole);
}

} // namespace rkBase

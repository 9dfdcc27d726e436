#include "QComboBoxItemDelegate.h"

#include <QComboBox>

namespace rkBase {

QComboBoxItemDelegate::QComboBoxItemDelegate(const QStringList& items, QObject* parent)
    : QStyledItemDelegate(parent), m_items(items)
{
}

QWidget* QComboBoxItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const
{
    auto* box = new QComboBox(parent);
    box->addItems(m_items);
    return box;
}

void QComboBoxItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* box = qobject_cast<QComboBox*>(editor);
    if (!box)
        return;
    const int at = box->findText(index.data(Qt::EditRole).toString());
    box->setCurrentIndex(at >= 0 ? at : 0);
}

void QComboBoxItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* box = qobject_cast<QComboBox*>(editor))
        model->setData(index, box->currentText(), Qt::EditRole);
}

} // namespace rkBase

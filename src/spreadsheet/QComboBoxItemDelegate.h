#pragma once
// A cell editor that offers a fixed list of choices, for columns whose values come from a short
// list (a unit, a category, a method).

#include <QStringList>
#include <QStyledItemDelegate>

namespace rkBase {

class QComboBoxItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    QComboBoxItemDelegate(const QStringList& items, QObject* parent = nullptr);

    void setItems(const QStringList& items) { m_items = items; }
    const QStringList& items() const { return m_items; }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    QStringList m_items;
};

} // namespace rkBase

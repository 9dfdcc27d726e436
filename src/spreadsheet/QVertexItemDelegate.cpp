#include "QVertexItemDelegate.h"

#include "QVertexItemModel.h"
#include "UnitItemUnitDelegateImpl.h"

#include <MatrixData.h>

#include <QAbstractProxyModel>
#include <QColorDialog>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

namespace rkBase {

QVertexItemDelegate::QVertexItemDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

MatrixData* QVertexItemDelegate::nodeOf(const QModelIndex& index)
{
    QModelIndex source = index;
    while (const auto* proxy = qobject_cast<const QAbstractProxyModel*>(source.model()))
        source = proxy->mapToSource(source);
    const auto* model = qobject_cast<const QVertexItemModel*>(source.model());
    return model && source.isValid() ? model->nodeFromIndex(source) : nullptr;
}

static int storedRow(const QModelIndex& index)
{
    QModelIndex source = index;
    while (const auto* proxy = qobject_cast<const QAbstractProxyModel*>(source.model()))
        source = proxy->mapToSource(source);
    const auto* model = qobject_cast<const QVertexItemModel*>(source.model());
    return model ? model->row(source) : -1;
}

QWidget* QVertexItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    MatrixData* node = nodeOf(index);
    if (!node)
        return QStyledItemDelegate::createEditor(parent, option, index);
    const QVariant::Type type = node->cellType();
    if (type == QVariant::Bool || type == QVariant::Color)
        return nullptr; // ticked in place, or chosen in a dialog
    if (QWidget* box = node->comboBoxEditor(parent))
        return box;
    QWidget* editor = nullptr;
    if (type == QVariant::Double) {
        auto* e = new UnitItemUnitDelegateImpl(node->nodeUnitKey() == -1 ? node->displayUnitTag() : node->nodeUnitTag(), parent);
        e->lineEdit()->installEventFilter(const_cast<QVertexItemDelegate*>(this));
        editor = e;
    } else {
        auto* e = new QLineEdit(parent);
        e->setFrame(false);
        e->installEventFilter(const_cast<QVertexItemDelegate*>(this));
        editor = e;
    }
    return editor;
}

void QVertexItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const QString text = index.data(Qt::EditRole).toString();
    if (auto* unit = qobject_cast<UnitItemUnitDelegateImpl*>(editor)) {
        unit->setText(text.isEmpty() ? index.data(Qt::DisplayRole).toString().section(QLatin1Char(' '), 0, 0) : text);
    } else if (auto* box = qobject_cast<QComboBox*>(editor)) {
        MatrixData* node = nodeOf(index);
        const QVariant code = node ? node->value(storedRow(index), 0) : QVariant();
        const int at = code.isValid() ? box->findData(code.toInt()) : -1;
        box->setCurrentIndex(at >= 0 ? at : box->findText(text));
    } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
        line->setText(text);
    } else {
        QStyledItemDelegate::setEditorData(editor, index);
    }
}

void QVertexItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* unit = qobject_cast<UnitItemUnitDelegateImpl*>(editor))
        model->setData(index, unit->text(), Qt::EditRole);
    else if (auto* box = qobject_cast<QComboBox*>(editor))
        model->setData(index, box->currentText(), Qt::EditRole);
    else if (auto* line = qobject_cast<QLineEdit*>(editor))
        model->setData(index, line->text(), Qt::EditRole);
    else
        QStyledItemDelegate::setModelData(editor, model, index);
}

void QVertexItemDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex&) const
{
    editor->setGeometry(option.rect);
}

bool QVertexItemDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                      const QModelIndex& index)
{
    MatrixData* node = nodeOf(index);
    if (node && node->cellType() == QVariant::Color && event->type() == QEvent::MouseButtonDblClick
        && (model->flags(index) & Qt::ItemIsEditable)) {
        const QColor current = node->value(storedRow(index), 0).value<QColor>();
        const QColor chosen = QColorDialog::getColor(current.isValid() ? current : QColor(Qt::white), nullptr,
                                                     tr("Cell Colour"));
        if (chosen.isValid())
            model->setData(index, chosen, Qt::EditRole);
        return true;
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
}

bool QVertexItemDelegate::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            auto* w = qobject_cast<QWidget*>(object);
            // The editor is the unit widget around a line edit, or the line edit itself.
            QWidget* editor = w && qobject_cast<UnitItemUnitDelegateImpl*>(w->parentWidget()) ? w->parentWidget() : w;
            if (editor) {
                emit commitData(editor);
                emit closeEditor(editor, QAbstractItemDelegate::NoHint);
                emit setNextInColumn(editor);
                return true;
            }
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

} // namespace rkBase

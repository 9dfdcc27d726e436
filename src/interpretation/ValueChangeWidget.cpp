#include "ValueChangeWidget.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QValidator>
#include <QVBoxLayout>

namespace rkBase {

ValueChangeWidget::ValueChangeWidget(const QString& title, const QString& label, const QString& value,
                                     QWidget* parent, bool editable, const QValidator* validator)
    : QDialog(parent), m_label(new QLabel(label, this)), m_edit(new QLineEdit(value, this)),
      m_buttons(new QDialogButtonBox(this))
{
    setObjectName(QStringLiteral("ValueChangeWidget"));
    setWindowTitle(title);
    m_label->setObjectName(QStringLiteral("valueLabel"));
    m_label->setBuddy(m_edit);
    m_edit->setObjectName(QStringLiteral("valueLineEdit"));
    m_edit->setReadOnly(!editable);
    m_edit->setValidator(validator);
    m_edit->setMinimumWidth(fontMetrics().averageCharWidth() * 32);
    m_edit->selectAll();
    m_buttons->setObjectName(QStringLiteral("buttonBox"));
    m_buttons->setStandardButtons(editable ? QDialogButtonBox::Ok | QDialogButtonBox::Cancel : QDialogButtonBox::Close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    layout->addWidget(m_edit);
    layout->addWidget(m_buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_edit, &QLineEdit::textChanged, this, &ValueChangeWidget::updateOkButton);
    updateOkButton();
    m_edit->setFocus();
}

QString ValueChangeWidget::value() const { return m_edit->text(); }

bool ValueChangeWidget::valueAcceptable() const
{
    const QValidator* v = m_edit->validator();
    if (!v)
        return true;
    QString text = m_edit->text();
    int pos = 0;
    return v->validate(text, pos) == QValidator::Acceptable;
}

void ValueChangeWidget::updateOkButton()
{
    if (QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok))
        ok->setEnabled(valueAcceptable());
}

QString ValueChangeWidget::getValue(const QString& title, const QString& label, const QString& value,
                                    QWidget* parent, bool editable, bool* cancelled, const QValidator* validator)
{
    ValueChangeWidget dialog(title, label, value, parent, editable, validator);
    const bool accepted = dialog.exec() == QDialog::Accepted && editable && dialog.valueAcceptable();
    if (cancelled)
        *cancelled = !accepted;
    return accepted ? dialog.value() : value;
}

} // namespace rkBase

#include "QValueChangeOnOffWidget.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>

#include <algorithm>
#include <cmath>

namespace rkBase {

QValueChangeOnOffWidget::QValueChangeOnOffWidget(const QString& title, const QString& switchText,
                                                 const QString& label, double value, bool on, double minimum,
                                                 double maximum, int decimals, QWidget* parent)
    : QDialog(parent), m_switch(new QCheckBox(switchText, this)), m_label(new QLabel(label, this)),
      m_spin(new QDoubleSpinBox(this))
{
    setObjectName(QStringLiteral("QValueChangeOnOffWidget"));
    setWindowTitle(title);
    m_switch->setObjectName(QStringLiteral("onOffCheckBox"));
    m_spin->setObjectName(QStringLiteral("valueSpinBox"));
    m_label->setBuddy(m_spin);
    if (minimum > maximum)
        std::swap(minimum, maximum);
    m_spin->setDecimals(std::max(0, decimals));
    m_spin->setRange(minimum, maximum);
    // A value of no number starts at the lower end rather than at an arbitrary clamp.
    m_spin->setValue(std::isfinite(value) ? value : minimum);
    m_switch->setChecked(on);
    m_spin->setEnabled(on);
    m_label->setEnabled(on);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    auto* layout = new QGridLayout(this);
    layout->addWidget(m_switch, 0, 0, 1, 2);
    layout->addWidget(m_label, 1, 0);
    layout->addWidget(m_spin, 1, 1);
    layout->addWidget(buttons, 2, 0, 1, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_switch, &QCheckBox::toggled, m_spin, &QWidget::setEnabled);
    connect(m_switch, &QCheckBox::toggled, m_label, &QWidget::setEnabled);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    (on ? static_cast<QWidget*>(m_spin) : m_switch)->setFocus();
}

double QValueChangeOnOffWidget::value() const { return m_spin->value(); }

bool QValueChangeOnOffWidget::isOn() const { return m_switch->isChecked(); }

bool QValueChangeOnOffWidget::getValue(const QString& title, const QString& switchText, const QString& label,
                                       double& value, bool& on, double minimum, double maximum, int decimals,
                                       QWidget* parent)
{
    QValueChangeOnOffWidget dialog(title, switchText, label, value, on, minimum, maximum, decimals, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    value = dialog.value();
    on = dialog.isOn();
    return true;
}

} // namespace rkBase

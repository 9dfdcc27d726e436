#include "QUnitLineEdit.h"

#include "DisplayUnitManager.h"
#include "UnitManager.h"

#include <QLocale>

#include <cmath>

namespace rkBase {

QUnitLineEdit::QUnitLineEdit(QWidget* parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::editingFinished, this, &QUnitLineEdit::readText);
    showValue();
}

QUnitLineEdit::~QUnitLineEdit() = default;

void QUnitLineEdit::setUnitManager(boost::shared_ptr<UnitManager> manager)
{
    disconnect(m_unitConnection);
    m_unitManager = std::move(manager);
    if (m_unitManager && m_unitManager->displayUnitManager())
        m_unitConnection = connect(m_unitManager->displayUnitManager(), &DisplayUnitManager::displayChanged, this,
                                   &QUnitLineEdit::unitsChanged);
    showValue();
}

void QUnitLineEdit::setModelValue(double value, bool emitSignal)
{
    if (!std::isfinite(value)) {
        showValue();
        return;
    }
    const bool changed = value != m_modelValue;
    m_modelValue = value;
    showValue();
    if (emitSignal && changed)
        emit modelValueChanged(m_modelValue);
}

double QUnitLineEdit::displayValue() const
{
    return m_unitManager ? m_unitManager->convertModelToDisplay(m_modelValue) : m_modelValue;
}

void QUnitLineEdit::showValue()
{
    double shown = displayValue();
    if (shown == 0.0)
        shown = 0.0; // no "-0"
    // Ten digits: a value converted between units shows no tail of binary noise.
    m_shownText = QString::number(shown, 'g', 10);
    setText(m_shownText);
}

void QUnitLineEdit::readText()
{
    QString typed = text().trimmed();
    if (typed == m_shownText)
        return;
    const QString tag = m_unitManager ? m_unitManager->getDisplayUnitTag() : QString();
    if (!tag.isEmpty() && typed.endsWith(tag))
        typed = typed.left(typed.size() - tag.size()).trimmed();
    // The C form first, as the edit shows it; then the user's own decimal comma.
    bool ok = false;
    double display = typed.toDouble(&ok);
    if (!ok)
        display = locale().toDouble(typed, &ok);
    const double model = m_unitManager ? m_unitManager->convertDisplayToModel(display) : display;
    if (!ok || !std::isfinite(display) || !std::isfinite(model)) {
        showValue();
        return;
    }
    const bool changed = model != m_modelValue;
    m_modelValue = model;
    showValue();
    if (changed)
        emit modelValueChanged(m_modelValue);
}

void QUnitLineEdit::unitsChanged(const QString& category)
{
    if (m_unitManager && category == QString::fromStdString(m_unitManager->category()))
        showValue();
}

} // namespace rkBase

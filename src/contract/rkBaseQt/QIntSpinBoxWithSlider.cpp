#include "QIntSpinBoxWithSlider.h"

#include <QSlider>
#include <QSpinBox>

#include <algorithm>
#include <limits>

namespace rkBase {

QIntSpinBoxWithSlider::QIntSpinBoxWithSlider(QWidget* parent)
    : QSpinBoxWithSlider(new QSpinBox, parent), m_spinBox(static_cast<QSpinBox*>(editor()))
{
    connect(m_spinBox, QOverload<int>::of(&QSpinBox::valueChanged), this, [this](int v) {
        syncSlider();
        emit valueChanged(v);
    });
    connect(m_spinBox, &QSpinBox::editingFinished, this, &QIntSpinBoxWithSlider::editingFinished);
    syncSlider();
}

void QIntSpinBoxWithSlider::setRange(int minimum, int maximum)
{
    m_spinBox->setRange(minimum, maximum);
    syncSlider();
}

void QIntSpinBoxWithSlider::setMinimum(int minimum) { setRange(minimum, std::max(minimum, maximum())); }

void QIntSpinBoxWithSlider::setMaximum(int maximum) { setRange(std::min(minimum(), maximum), maximum); }

int QIntSpinBoxWithSlider::minimum() const { return m_spinBox->minimum(); }

int QIntSpinBoxWithSlider::maximum() const { return m_spinBox->maximum(); }

void QIntSpinBoxWithSlider::setSingleStep(int step)
{
    m_spinBox->setSingleStep(step);
    syncSlider();
}

int QIntSpinBoxWithSlider::singleStep() const { return m_spinBox->singleStep(); }

int QIntSpinBoxWithSlider::value() const { return m_spinBox->value(); }

void QIntSpinBoxWithSlider::setValue(int value) { m_spinBox->setValue(value); }

void QIntSpinBoxWithSlider::setSuffix(const QString& suffix) { m_spinBox->setSuffix(suffix); }

QString QIntSpinBoxWithSlider::suffix() const { return m_spinBox->suffix(); }

void QIntSpinBoxWithSlider::configureSlider()
{
    QSlider* s = slider();
    const int step = std::max(1, m_spinBox->singleStep());
    // The span of a full int range does not fit an int.
    const qint64 span = qint64(m_spinBox->maximum()) - m_spinBox->minimum();
    s->setRange(m_spinBox->minimum(), m_spinBox->maximum());
    s->setSingleStep(step);
    s->setPageStep(int(std::clamp<qint64>(span / 10, step, std::numeric_limits<int>::max())));
    s->setValue(m_spinBox->value());
}

void QIntSpinBoxWithSlider::takeSliderPosition(int position) { m_spinBox->setValue(position); }

} // namespace rkBase

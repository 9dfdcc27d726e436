#include "QDoubleSpinBoxWithSlider.h"

#include <QDoubleSpinBox>
#include <QSlider>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {

// (value - from) / (to - from) without overflow for ends near the largest double.
double fraction(double value, double from, double to)
{
    double f = (value - from) / (to - from);
    if (!std::isfinite(f))
        f = (value / 2 - from / 2) / (to / 2 - from / 2);
    return f;
}

} // namespace

QDoubleSpinBoxWithSlider::QDoubleSpinBoxWithSlider(QWidget* parent)
    : QSpinBoxWithSlider(new QDoubleSpinBox, parent), m_spinBox(static_cast<QDoubleSpinBox*>(editor()))
{
    connect(m_spinBox, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this](double v) {
        syncSlider();
        emit valueChanged(v);
    });
    connect(m_spinBox, &QDoubleSpinBox::editingFinished, this, &QDoubleSpinBoxWithSlider::editingFinished);
    syncSlider();
}

void QDoubleSpinBoxWithSlider::setRange(double minimum, double maximum)
{
    if (std::isnan(minimum) || std::isnan(maximum))
        return;
    m_spinBox->setRange(minimum, maximum);
    syncSlider();
}

void QDoubleSpinBoxWithSlider::setMinimum(double minimum)
{
    if (!std::isnan(minimum))
        setRange(minimum, std::max(minimum, maximum()));
}

void QDoubleSpinBoxWithSlider::setMaximum(double maximum)
{
    if (!std::isnan(maximum))
        setRange(std::min(minimum(), maximum), maximum);
}

double QDoubleSpinBoxWithSlider::minimum() const { return m_spinBox->minimum(); }

double QDoubleSpinBoxWithSlider::maximum() const { return m_spinBox->maximum(); }

void QDoubleSpinBoxWithSlider::setSingleStep(double step)
{
    if (!(step > 0.0) || !std::isfinite(step))
        return;
    m_spinBox->setSingleStep(step);
    syncSlider();
}

double QDoubleSpinBoxWithSlider::singleStep() const { return m_spinBox->singleStep(); }

void QDoubleSpinBoxWithSlider::setDecimals(int decimals)
{
    m_spinBox->setDecimals(decimals);
    syncSlider();
}

int QDoubleSpinBoxWithSlider::decimals() const { return m_spinBox->decimals(); }

double QDoubleSpinBoxWithSlider::value() const { return m_spinBox->value(); }

void QDoubleSpinBoxWithSlider::setValue(double value)
{
    if (!std::isnan(value))
        m_spinBox->setValue(value);
}

void QDoubleSpinBoxWithSlider::setSuffix(const QString& suffix) { m_spinBox->setSuffix(suffix); }

QString QDoubleSpinBoxWithSlider::suffix() const { return m_spinBox->suffix(); }

int QDoubleSpinBoxWithSlider::sliderSteps() const
{
    const double lo = minimum(), hi = maximum();
    if (!(hi > lo))
        return 0;
    const double steps = std::ceil(fraction(hi, lo, lo + singleStep()) - 1e-9);
    if (!std::isfinite(steps) || steps > kMaxSliderSteps)
        return kMaxSliderSteps;
    return std::max(1, int(steps));
}

double QDoubleSpinBoxWithSlider::sliderValue(int position) const
{
    const int n = sliderSteps();
    if (n == 0 || position <= 0)
        return minimum();
    if (position >= n)
        return maximum();
    // Each position is worked out from the ends, so that no error builds up along the slider.
    return minimum() + (maximum() / n - minimum() / n) * position;
}

void QDoubleSpinBoxWithSlider::configureSlider()
{
    QSlider* s = slider();
    const int n = sliderSteps();
    s->setRange(0, n);
    s->setSingleStep(1);
    s->setPageStep(std::max(1, n / 10));
    const double f = n > 0 ? fraction(value(), minimum(), maximum()) : 0.0;
    s->setValue(int(std::lround(std::clamp(f, 0.0, 1.0) * n)));
}

void QDoubleSpinBoxWithSlider::takeSliderPosition(int position) { m_spinBox->setValue(sliderValue(position)); }

} // namespace rkBase

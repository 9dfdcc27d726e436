#include "PanelColorRange.h"

#include <MatrixData.h>

#include <QLineEdit>

#include <cmath>
#include <utility>

namespace rkBase {

PanelColorRange::PanelColorRange(QLineEdit* minimum, QLineEdit* maximum, QLineEdit* interval)
    : m_minimum(minimum), m_maximum(maximum), m_interval(interval)
{
}

void PanelColorRange::reset(const MatrixData* column)
{
    double lo = 0.0, hi = 0.0;
    bool any = false;
    if (column) {
        // The summary, unless a chart's colour settings replaced it: the cells themselves.
        const int rows = column->rowCount();
        for (int r = 0; r < rows; ++r) {
            if (!column->isValueValid(r, 0))
                continue;
            bool ok = false;
            const double v = column->value(r, 0).toDouble(&ok);
            if (!ok || !std::isfinite(v))
                continue;
            if (!any || v < lo)
                lo = v;
            if (!any || v > hi)
                hi = v;
            any = true;
        }
    }
    if (!any) {
        for (QLineEdit* e : {m_minimum, m_maximum, m_interval})
            if (e)
                e->setText(QStringLiteral("---"));
        return;
    }
    if (m_minimum)
        m_minimum->setText(QString::number(lo, 'f', 5));
    if (m_maximum)
        m_maximum->setText(QString::number(hi, 'f', 5));
    if (m_interval)
        m_interval->setText(QString::number((hi - lo) / kSteps, 'f', 5));
}

double PanelColorRange::parse(const QLineEdit* edit)
{
    if (!edit)
        return 0.0;
    bool ok = false;
    const double v = edit->text().trimmed().toDouble(&ok);
    return ok && std::isfinite(v) ? v : 0.0;
}

double PanelColorRange::minimum() const { return parse(m_minimum); }
double PanelColorRange::maximum() const { return parse(m_maximum); }
double PanelColorRange::interval() const { return parse(m_interval); }

void PanelColorRange::applyTo(MatrixData* column, bool flip) const
{
    if (!column)
        return;
    double lo = minimum(), hi = maximum();
    if (lo > hi)
        std::swap(lo, hi);
    column->setMinValue(lo);
    column->setMaxValue(hi);
    column->setFlipColorMap(flip);
    // Zero or a negative step means the column's own ten classes.
    const double step = interval();
    column->setColorMapStepSize(step > 0.0 ? step : 0.0);
}

} // namespace rkBase

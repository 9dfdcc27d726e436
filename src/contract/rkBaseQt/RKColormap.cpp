#include "RKColormap.h"

#include <algorithm>
#include <cmath>

namespace {
// A level closer than this fraction of a step to max is max: (max - min) / n rounds either way.
constexpr double kLevelTolerance = 1e-6;
}

RKColormap::RKColormap() = default;

RKColormap* RKColormap::clone() const
{
    return new RKColormap(*this);
}

QColor RKColormap::spectrum(double t)
{
    t = std::clamp(t, 0.0, 1.0);
    // Four equal legs: blue->cyan->green->yellow->red.
    const double s = t * 4.0;
    const int leg = std::min(3, static_cast<int>(s));
    const int f = static_cast<int>(std::lround((s - leg) * 255.0));
    switch (leg) {
    case 0: return QColor(0, f, 255);
    case 1: return QColor(0, 255, 255 - f);
    case 2: return QColor(f, 255, 0);
    default: return QColor(255, 255 - f, 0);
    }
}

void RKColormap::fill_spectrum_color_list(double min, double max, double step, bool flip)
{
    const bool finiteRange = std::isfinite(min) && std::isfinite(max);
    if (!finiteRange) {
        min = 0.0;
        max = 1.0;
    }
    if (min > max)
        std::swap(min, max);
    m_min = min;
    m_max = max;
    m_flip = flip;
    m_colors.clear();
    m_levels.clear();
    const double range = max - min;
    if (!(step > 0.0) || !std::isfinite(step) || !(range > 0.0) || !std::isfinite(range)) {
        m_step = 0.0;
        m_interpolation = INTERPOLATED;
        return;
    }
    // The class count includes a last, shorter class when the step does not divide the range.
    double exactClasses = range / step;
    if (exactClasses > kMaxLevels - 1) {
        step = range / (kMaxLevels - 1);
        exactClasses = kMaxLevels - 1;
    }
    const int classes = std::max(1, static_cast<int>(std::ceil(exactClasses - kLevelTolerance)));
    m_step = step;
    m_interpolation = STEPPED;
    m_colors.reserve(classes);
    for (int i = 0; i < classes; ++i) {
        const double t = classes == 1 ? 0.5 : static_cast<double>(i) / (classes - 1);
        m_colors.append(spectrum(flip ? 1.0 - t : t));
    }
    if (!finiteRange)
        return;
    for (int i = 0; i < classes; ++i) {
        const double level = min + i * step;
        const double top = i + 1 < classes ? min + (i + 1) * step : max;
        m_levels.emplace_hint(m_levels.end(), level, std::make_pair(m_colors.at(i), smoothColor(top)));
    }
    m_levels.emplace_hint(m_levels.end(), max, std::make_pair(m_colors.constLast(), smoothColor(max)));
}

QColor RKColormap::smoothColor(double value) const
{
    const double range = m_max - m_min;
    const double t = range > 0.0 ? std::clamp((value - m_min) / range, 0.0, 1.0) : 0.5;
    return spectrum(m_flip ? 1.0 - t : t);
}

QColor RKColormap::value_to_color(double value) const
{
    if (std::isnan(value))
        return QColor();
    if (m_interpolation == STEPPED && !m_colors.isEmpty() && m_step > 0.0) {
        // Same arithmetic as the levels, so a value exactly on level i is in class i.
        const double q = std::floor((value - m_min) / m_step);
        int i = q < 0.0 ? 0 : q >= m_colors.size() ? m_colors.size() - 1 : static_cast<int>(q);
        // (v - min) / step can round just below an integer for v = min + i * step.
        if (i + 1 < m_colors.size() && value >= m_min + (i + 1) * m_step)
            ++i;
        else if (i > 0 && value < m_min + i * m_step)
            --i;
        return m_colors.at(i);
    }
    return smoothColor(value);
}

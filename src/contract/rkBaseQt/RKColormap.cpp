#include "RKColormap.h"

#include <algorithm>
#include <cmath>

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
    if (!std::isfinite(min) || !std::isfinite(max)) {
        min = 0.0;
        max = 1.0;
    }
    if (min > max)
        std::swap(min, max);
    m_min = min;
    m_max = max;
    m_flip = flip;
    m_colors.clear();
    const double range = max - min;
    if (!(step > 0.0) || !std::isfinite(step) || !(range > 0.0)) {
        m_step = 0.0;
        m_interpolation = INTERPOLATED;
        return;
    }
    m_step = step;
    m_interpolation = STEPPED;
    const int classes = std::clamp(static_cast<int>(std::ceil(range / step - 1e-9)), 1, 4096);
    m_colors.reserve(classes);
    for (int i = 0; i < classes; ++i) {
        const double t = classes == 1 ? 0.5 : static_cast<double>(i) / (classes - 1);
        m_colors.append(spectrum(flip ? 1.0 - t : t));
    }
}

QColor RKColormap::value_to_color(double value) const
{
    if (std::isnan(value))
        return QColor();
    const double range = m_max - m_min;
    if (m_interpolation == STEPPED && !m_colors.isEmpty() && m_step > 0.0) {
        const int i = std::clamp(static_cast<int>(std::floor((value - m_min) / m_step)), 0, m_colors.size() - 1);
        return m_colors.at(i);
    }
    const double t = range > 0.0 ? (value - m_min) / range : 0.5;
    return spectrum(m_flip ? 1.0 - std::clamp(t, 0.0, 1.0) : t);
}

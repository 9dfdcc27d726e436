#pragma once
// The bin of an azimuth among `bins` bins of `interval` degrees, as the frequency table counts
// it: bins past the last fold into it (the last bin reaches to 360), and a value the division
// rounds across a bin edge goes back to the bin whose range holds it. Every count of azimuths
// by bin (the table's, the rose's classes) uses this one rule, so that they add up alike.

#include <cmath>

namespace rkBase {

class AzimuthBinRule
{
public:
    AzimuthBinRule(double interval, int bins) : m_interval(interval), m_inverse(1.0 / interval), m_bins(bins) {}

    // An azimuth brought into [0, 360).
    static double into360(double a)
    {
        a = std::fmod(a, 360.0);
        if (a < 0.0)
            a += 360.0;
        if (a >= 360.0)
            a -= 360.0;
        return a;
    }

    int binOf(double azimuth) const
    {
        const double last = m_bins - 1;
        const double k = azimuth * m_inverse;
        int i = !(k > 0.0) ? 0 : static_cast<int>(k > last ? last : k);
        if (i > 0 && azimuth < i * m_interval)
            --i;
        else if (i < m_bins - 1 && azimuth >= (i + 1) * m_interval)
            ++i;
        return i;
    }

private:
    double m_interval;
    double m_inverse;
    int m_bins;
};

} // namespace rkBase

#pragma once
// The blue-to-red spectrum that colours numeric attributes: blue at the minimum, through cyan,
// green and yellow, to red at the maximum. With a step the range is cut into classes of one
// colour each; without one the colour follows the value smoothly.

#include <QColor>
#include <QVector>

class RKColormap
{
public:
    enum Interpolation { INTERPOLATED, STEPPED };

    RKColormap();
    RKColormap* clone() const;

    void set_interpolation(Interpolation mode) { m_interpolation = mode; }
    Interpolation interpolation() const { return m_interpolation; }

    // Sets the range and, for step > 0, one class colour per step from min to max (the last
    // class may be shorter). A non-finite or non-positive step means a continuous map, and so
    // does an empty range. flip runs the spectrum from red to blue.
    void fill_spectrum_color_list(double min, double max, double step, bool flip);

    // Values below the range take the first colour, above it the last; NaN gives an invalid
    // colour.
    QColor value_to_color(double value) const;

    double minimum() const { return m_min; }
    double maximum() const { return m_max; }
    double step() const { return m_step; }
    bool flipped() const { return m_flip; }
    const QVector<QColor>& colorList() const { return m_colors; }

    // The spectrum at t in [0, 1].
    static QColor spectrum(double t);

private:
    double m_min = 0.0;
    double m_max = 1.0;
    double m_step = 0.0;
    bool m_flip = false;
    Interpolation m_interpolation = INTERPOLATED;
    QVector<QColor> m_colors;
};

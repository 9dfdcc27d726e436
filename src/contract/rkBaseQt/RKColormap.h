#pragma once
// The blue-to-red spectrum that colours numeric attributes: blue at the minimum, through cyan,
// green and yellow, to red at the maximum. With a step the range is cut into classes of one
// colour each; without one the colour follows the value smoothly.
//
// Levels. After fill_spectrum_color_list(min, max, step, flip) with a usable step, colorMap()
// holds the levels min, min + step, min + 2 step, ... and always ends with max itself, so the
// last band may be shorter than a step. A level that lands within a millionth of a step of max
// is max, not an extra level: a step of (max - min) / 19 gives exactly 20 levels and 19 bands.
// Each level maps to (the colour of the band that starts there, the smooth spectrum colour at
// the band's top); the entry of max, which starts no band, holds the last band's colour and the
// colour of max. In STEPPED mode value_to_color(v) for level_i <= v < level_i+1 is exactly the
// band colour of level_i, so a band filled with value_to_color(low) agrees with the legend.
//
// colorMap() is empty when the range is empty or not finite, or the step is not positive and
// finite. No more than kMaxLevels levels are made: a step that would make more is widened to
// (max - min) / (kMaxLevels - 1), and step() reports the widened step.

#include <QColor>
#include <QVector>

#include <map>
#include <utility>

class RKColormap
{
public:
    enum Interpolation { INTERPOLATED = 0, STEPPED = 1 };

    static constexpr int kMaxLevels = 10000;

    RKColormap();
    RKColormap* clone() const;

    void set_interpolation(Interpolation mode) { m_interpolation = mode; }
    Interpolation interpolation() const { return m_interpolation; }

    // Sets the range and, for step > 0, one class colour per step from min to max (the last
    // class may be shorter) and switches to STEPPED. A non-finite or non-positive step means a
    // continuous map (INTERPOLATED), and so does an empty range. flip runs the spectrum from red
    // to blue. Non-finite bounds fall back to the range 0..1 for value_to_color and leave
    // colorMap() empty; min > max are swapped.
    void fill_spectrum_color_list(double min, double max, double step, bool flip);

    // Values below the range take the first colour, above it the last; NaN gives an invalid
    // colour.
    QColor value_to_color(double value) const;

    double minimum() const { return m_min; }
    double maximum() const { return m_max; }
    double step() const { return m_step; }
    bool flipped() const { return m_flip; }
    const QVector<QColor>& colorList() const { return m_colors; }
    // Level -> (band colour, colour at the band's top), sorted by level; see above.
    const std::map<double, std::pair<QColor, QColor>>& colorMap() const { return m_levels; }

    // The spectrum at t in [0, 1].
    static QColor spectrum(double t);

private:
    QColor smoothColor(double value) const;

    double m_min = 0.0;
    double m_max = 1.0;
    double m_step = 0.0;
    bool m_flip = false;
    Interpolation m_interpolation = INTERPOLATED;
    QVector<QColor> m_colors;
    std::map<double, std::pair<QColor, QColor>> m_levels;
};

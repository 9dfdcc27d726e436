#pragma once
// The colour map range of a panel's colour attribute: three line edits (minimum, maximum,
// interval size) that the user may type into, reset to the column's whole range in 19 steps.

class QLineEdit;

namespace rkBase {

class MatrixData;

class PanelColorRange
{
public:
    PanelColorRange(QLineEdit* minimum, QLineEdit* maximum, QLineEdit* interval);

    // Without a column, or one without any finite value, all three show "---". Otherwise
    // minimum and maximum of the values and (max - min) / 19, with 5 decimals.
    void reset(const MatrixData* column);
    // Text that is not a number (or not finite) reads as 0.
    double minimum() const;
    double maximum() const;
    double interval() const;
    static double parse(const QLineEdit* edit);
    // Copies the range onto the column as its colour map: minimum and maximum display values,
    // flip and step. A minimum above the maximum is taken the other way round. The spectrum runs
    // blue (low) to red (high) unflipped, so "Blue-Red" is flip false and "Red-Blue" flip true;
    // chart, legend and table all read the column's map.
    void applyTo(MatrixData* column, bool flip) const;

    static constexpr int kSteps = 19;

private:
    QLineEdit* m_minimum;
    QLineEdit* m_maximum;
    QLineEdit* m_interval;
};

} // namespace rkBase

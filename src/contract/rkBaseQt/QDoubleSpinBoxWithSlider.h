#pragma once
// A spin box of real numbers with a slider (the histogram's interval size, zoom and angle
// settings). The slider cannot hold reals: it runs over whole steps from the minimum, position k
// standing for minimum + k * (maximum - minimum) / n, where n is the number of single steps in
// the range (at most kMaxSliderSteps; 0 when the range is one value). Signals as QDoubleSpinBox's.

#include "QSpinBoxWithSlider.h"

class QDoubleSpinBox;

namespace rkBase {

class QDoubleSpinBoxWithSlider : public QSpinBoxWithSlider
{
    Q_OBJECT
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(double singleStep READ singleStep WRITE setSingleStep)
    Q_PROPERTY(int decimals READ decimals WRITE setDecimals)
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged USER true)
    Q_PROPERTY(QString suffix READ suffix WRITE setSuffix)
public:
    static constexpr int kMaxSliderSteps = 100000;

    explicit QDoubleSpinBoxWithSlider(QWidget* parent = nullptr);

    QDoubleSpinBox* spinBox() const { return m_spinBox; }
    // As QDoubleSpinBox (a maximum below the minimum is raised to it); ends of no number are
    // ignored.
    void setRange(double minimum, double maximum);
    void setMinimum(double minimum);
    void setMaximum(double maximum);
    double minimum() const;
    double maximum() const;
    // A step of no number, or not above 0, leaves the step as it was.
    void setSingleStep(double step);
    double singleStep() const;
    void setDecimals(int decimals);
    int decimals() const;
    double value() const;
    void setSuffix(const QString& suffix);
    QString suffix() const;
    // Slider positions: the number of steps the range is cut into, and the value of a position.
    int sliderSteps() const;
    double sliderValue(int position) const;

public slots:
    // A value of no number is ignored.
    void setValue(double value);

signals:
    void valueChanged(double value);
    void editingFinished();

protected:
    void configureSlider() override;
    void takeSliderPosition(int position) override;

private:
    QDoubleSpinBox* m_spinBox;
};

} // namespace rkBase

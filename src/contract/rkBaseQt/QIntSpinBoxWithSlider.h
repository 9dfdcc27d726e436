#pragma once
// An integer spin box with a slider over the same range and step (the SCAT panel's
// "Transparency", the stereo panel's angles). Signals as QSpinBox's.

#include "QSpinBoxWithSlider.h"

class QSpinBox;

namespace rkBase {

class QIntSpinBoxWithSlider : public QSpinBoxWithSlider
{
    Q_OBJECT
    Q_PROPERTY(int minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(int singleStep READ singleStep WRITE setSingleStep)
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged USER true)
    Q_PROPERTY(QString suffix READ suffix WRITE setSuffix)
public:
    explicit QIntSpinBoxWithSlider(QWidget* parent = nullptr);

    QSpinBox* spinBox() const { return m_spinBox; }
    // As QSpinBox: a maximum below the minimum is raised to it.
    void setRange(int minimum, int maximum);
    void setMinimum(int minimum);
    void setMaximum(int maximum);
    int minimum() const;
    int maximum() const;
    // Steps below 1 count as 1 for the slider.
    void setSingleStep(int step);
    int singleStep() const;
    int value() const;
    void setSuffix(const QString& suffix);
    QString suffix() const;

public slots:
    void setValue(int value);

signals:
    void valueChanged(int value);
    void editingFinished();

protected:
    void configureSlider() override;
    void takeSliderPosition(int position) override;

private:
    QSpinBox* m_spinBox;
};

} // namespace rkBase

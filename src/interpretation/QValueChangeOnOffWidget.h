#pragma once
// A prompt for one number that can also be switched off as a whole (a zoom factor, a sampling
// step, a cut-off): a check box over a spin box, the spin box usable only while the box is
// checked. OK returns both; Cancel leaves the caller's values as they were.

#include <QDialog>
#include <QString>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;

namespace rkBase {

class QValueChangeOnOffWidget : public QDialog
{
    Q_OBJECT
public:
    QValueChangeOnOffWidget(const QString& title, const QString& switchText, const QString& label, double value,
                            bool on, double minimum, double maximum, int decimals = 2, QWidget* parent = nullptr);

    double value() const;
    bool isOn() const;
    QCheckBox* switchBox() const { return m_switch; }
    QDoubleSpinBox* spinBox() const { return m_spin; }

    // true and the new pair when accepted; false with value and on untouched when cancelled.
    static bool getValue(const QString& title, const QString& switchText, const QString& label, double& value,
                         bool& on, double minimum, double maximum, int decimals = 2, QWidget* parent = nullptr);

private:
    QCheckBox* m_switch;
    QLabel* m_label;
    QDoubleSpinBox* m_spin;
};

} // namespace rkBase

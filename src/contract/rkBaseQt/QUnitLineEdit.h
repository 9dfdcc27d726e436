#pragma once
// A line edit for one number that is stored in model units and typed in display units: the
// boundaries of a chart's axes, the T and L directions, a bin size. The panels set the value
// from the model with setModelValue(value, false), so that filling the form does not start an
// update, and listen to modelValueChanged() for what the user typed.
//
// Rules kept here that callers could otherwise guess:
// - The edit always holds a finite number (0 at first). Text that is not one, and a value of no
//   number given to setModelValue(), leave the value as it was, and the edit shows it again.
// - Text is read when editing finishes (Return or leaving the edit). Text that the user did not
//   change is not read again, so showing a value with fewer digits never alters it.
// - Typed text may end with the display unit's tag ("12.5 ft").
// - A change of the category's display unit shows the same model value in the new unit.
// - Without a unit manager, model and display units are the same.

#include <QLineEdit>

#include <boost/shared_ptr.hpp>

namespace rkBase {

class UnitManager;

class QUnitLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit QUnitLineEdit(QWidget* parent = nullptr);
    ~QUnitLineEdit() override;

    void setUnitManager(boost::shared_ptr<UnitManager> manager);
    boost::shared_ptr<UnitManager> unitManager() const { return m_unitManager; }

    // emitSignal: send modelValueChanged() if the value changes.
    void setModelValue(double value, bool emitSignal = true);
    double modelValue() const { return m_modelValue; }
    double displayValue() const;

signals:
    void modelValueChanged(double value);

private:
    void readText();
    void showValue();
    void unitsChanged(const QString& category);

    double m_modelValue = 0.0;
    QString m_shownText;
    boost::shared_ptr<UnitManager> m_unitManager;
    QMetaObject::Connection m_unitConnection;
};

} // namespace rkBase

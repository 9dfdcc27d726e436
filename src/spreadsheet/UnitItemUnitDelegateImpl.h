#pragma once
// The in-cell editor for numbers: a line edit for the value in display units with the unit's
// tag beside it, so the user always sees which unit they type in.

#include <QWidget>

class QLabel;
class QLineEdit;

namespace rkBase {

class UnitItemUnitDelegateImpl : public QWidget
{
    Q_OBJECT
public:
    UnitItemUnitDelegateImpl(const QString& unitTag, QWidget* parent);

    QString text() const;
    void setText(const QString& text);
    QString unitTag() const;
    QLineEdit* lineEdit() const { return m_edit; }

signals:
    void returnPressed();

private:
    QLineEdit* m_edit;
    QLabel* m_tag;
};

} // namespace rkBase

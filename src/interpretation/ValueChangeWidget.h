#pragma once
// The small modal prompt for one value that the structural interpretation and the charts share:
// the new name of a picked top, a value typed for a selection. It shows a label over one line
// edit; a validator, when given, keeps OK disabled until the text is acceptable. A read-only
// prompt only shows the value and offers no way to change it.

#include <QDialog>
#include <QString>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QValidator;

namespace rkBase {

class ValueChangeWidget : public QDialog
{
    Q_OBJECT
public:
    ValueChangeWidget(const QString& title, const QString& label, const QString& value, QWidget* parent = nullptr,
                      bool editable = true, const QValidator* validator = nullptr);

    QString value() const;
    QLineEdit* lineEdit() const { return m_edit; }
    // Whether OK may be pressed: a text the validator takes as it stands (any text without one).
    bool valueAcceptable() const;

    // Asks for the value; returns the new text, or value itself when the prompt is cancelled
    // (*cancelled then true) or not editable.
    static QString getValue(const QString& title, const QString& label, const QString& value,
                            QWidget* parent = nullptr, bool editable = true, bool* cancelled = nullptr,
                            const QValidator* validator = nullptr);

private slots:
    void updateOkButton();

private:
    QLabel* m_label;
    QLineEdit* m_edit;
    QDialogButtonBox* m_buttons;
};

} // namespace rkBase

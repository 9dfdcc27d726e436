#pragma once
// The "Modify Selected Cell(s)" window: shifts, scales, replaces, clears or interpolates the
// cells selected in the sheet. It only collects the request; the table view and its model do
// the work.

#include <QColor>
#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace Ui {
class QModifyCellsDialog;
}

namespace rkBase {

class QModifyCellsDialog : public QDialog
{
    Q_OBJECT
public:
    enum ModifyMethod {
        ShiftByValue = 0,
        MultiplyByValue = 1,
        Sines = 2,
        Cosines = 3,
        DivideByValue = 4,
        Ln = 5,
        Log10 = 6,
        Exp = 7,
        ReplaceByValue = 8,
        ClearCells = 9,
        ReplaceEmptyCells = 10,
        AttributeInterpolation = 11,
        // Only a label: the text form offers it in place of ReplaceByValue and carries that value.
        ReplaceByName = 12
    };

    // The text shown for a method; "" for anything else.
    static QString methodName(ModifyMethod method);

    // numeric: the first selected cell holds numbers (else names). No flags: a dialog with a
    // title bar, a system menu and a close button only.
    QModifyCellsDialog(const QString& title, bool numeric, QWidget* parent = nullptr,
                       Qt::WindowFlags flags = Qt::WindowFlags());
    ~QModifyCellsDialog() override;

    ModifyMethod method() const;
    QVariant value() const;
    int valueIndex() const;
    // -1 when no attribute is chosen; otherwise its column. Text attributes carry negative ids.
    int getAttribute() const;
    bool applyTo3DView() const;
    bool isNumeric() const { return m_numeric; }
    void populateValueComboBox(const QList<QString>& values);
    void showAttributeInterface(bool show);
    void updateDataSetSelectionBox(const QList<QString>& names, const QList<int>& ids, const QList<QColor>& colors,
                                   const QString& current);
    // Refills the methods for numbers or for names, keeping the current one where it exists.
    void showInterfaceForValues(bool numeric);
    // Adds the last typed value to the value list, unless it is there already, and selects it.
    void updateValueComboBox();
    // For hosts and tests that drive the form without a mouse; false when the form lacks it.
    bool setMethod(ModifyMethod method);

public slots:
    void enableValueComboBox(int index);
    void enableAttributeComboBox(int state);
    void valueChanged(const QString& text);
    void slotUpdateInterface();
    void okButtonClicked();

signals:
    void clicked();

private:
    std::unique_ptr<Ui::QModifyCellsDialog> m_pqUi;
    bool m_numeric = true;
    // The typed value: a finite double for numbers, text for names; invalid when unusable.
    QVariant m_value;
    // The value list of the kind not shown, kept for a switch back.
    QStringList m_otherKindValues;
};

} // namespace rkBase

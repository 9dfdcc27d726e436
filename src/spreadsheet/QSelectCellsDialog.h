#pragma once
// The "Select Cell(s)" window: finds cells, rows or columns of the sheet by a condition on the
// values they show, and steps through what it found. It only collects the request; the table
// view selects.

#include <QDialog>
#include <QString>
#include <QVariant>

#include <memory>

namespace Ui {
class QSelectCellsDialog;
}

namespace rkBase {

class QSelectCellsDialog : public QDialog
{
    Q_OBJECT
public:
    enum SelectMethod {
        EqualThan = 0,
        LessThan = 1,
        LessEqualThan = 2,
        GreaterThan = 3,
        GreaterEqualThan = 4,
        Between = 5,
        BetweenEqual = 6
    };

    // nameMode: the sheet column holds names, and the only condition is "Equals".
    QSelectCellsDialog(const QString& title, bool nameMode, QWidget* parent = nullptr,
                       Qt::WindowFlags flags = Qt::WindowFlags());
    ~QSelectCellsDialog() override;

    // The condition on a shown value v with entries a and b; a text that is no number never
    // satisfies any condition.
    static bool isSatisfied(double v, double a, double b, SelectMethod method);

    SelectMethod method() const;
    QVariant value1() const;
    QVariant value2() const;
    bool isColumnSelection() const;
    bool isRowSelection() const;
    bool keepPreviousSelection() const;
    bool showSelectedTableCells() const;
    int columnFrom() const;
    int columnTo() const;
    void setNumberOfSelectedCells(int count);
    void setRowNumberText(const QString& text);
    // For hosts and tests that drive the form without a mouse.
    void setMethod(SelectMethod method);
    void setValues(const QString& value1, const QString& value2);
    void setSelectionKind(bool rows, bool columns);
    void setColumnRange(int from, int to);
    void setKeepPreviousSelection(bool keep);
    void setShowSelectedTableCells(bool show);
    QString numberOfSelectedCellsText() const;
    QString rowNumberText() const;

public slots:
    void enableValue2ComboBox(int method);
    void enableColumnSelection();
    void valueChanged1(const QString& text);
    void valueChanged2(const QString& text);
    void okButtonClicked();
    void slotNextItem();
    void slotPreviousItem();

signals:
    void clicked();
    void clearSelection();
    void clearFilterSelectedRows();
    void nextItem(bool rowMode);
    void previousItem(bool rowMode);

private:
    std::unique_ptr<Ui::QSelectCellsDialog> m_pqUi;
    QString m_value1;
    QString m_value2;
};

} // namespace rkBase

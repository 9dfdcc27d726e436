#include "QSelectCellsDialog.h"

#include "ui_QSelectCellsDialog.h"

#include <QIcon>

#include <cmath>

namespace rkBase {

namespace {
// Shown values are rounded to the column's precision: a match within this counts as equal.
constexpr double kEqualTolerance = 5e-06;

bool nearlyEqual(double v, double a)
{
    return std::fabs(v - a) < kEqualTolerance;
}
} // namespace

QSelectCellsDialog::QSelectCellsDialog(const QString& title, bool nameMode, QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags), m_pqUi(new Ui::QSelectCellsDialog)
{
    m_pqUi->setupUi(this);
    if (!title.isEmpty())
        setWindowTitle(title);
    QComboBox* methods = m_pqUi->m_pqMethodComboBox;
    if (nameMode) {
        methods->addItem(tr("Equals"), EqualThan);
    } else {
        const struct {
            const char* icon;
            const char* text;
            SelectMethod method;
        } entries[] = {
            {":/rkBaseQt/Resources/mathSign_EqualThan.png", QT_TR_NOOP("Equal"), EqualThan},
            {":/rkBaseQt/Resources/mathSign_lessThan.png", QT_TR_NOOP("Less Than"), LessThan},
            {":/rkBaseQt/Resources/mathSign_lessEqualThan.png", QT_TR_NOOP("Less or Equal"), LessEqualThan},
            {":/rkBaseQt/Resources/mathSign_GreaterThan.png", QT_TR_NOOP("Greater Than"), GreaterThan},
            {":/rkBaseQt/Resources/mathSign_GreaterEqualThan.png", QT_TR_NOOP("Greater or Equal"), GreaterEqualThan},
            {":/rkBaseQt/Resources/mathSign_Between.png", QT_TR_NOOP("Between"), Between},
            {":/rkBaseQt/Resources/mathSign_BetweenEqual.png", QT_TR_NOOP("Between or Equal"), BetweenEqual},
        };
        for (const auto& e : entries)
            methods->addItem(QIcon(QString::fromLatin1(e.icon)), tr(e.text), e.method);
    }
    m_pqUi->m_pqValue1ComboBox->addItem(QStringLiteral("0.0"));
    m_value1 = QStringLiteral("0.0");
    enableValue2ComboBox(method());

    connect(methods, SIGNAL(currentIndexChanged(int)), this, SLOT(enableValue2ComboBox(int)));
    connect(m_pqUi->m_pqValue1ComboBox, SIGNAL(editTextChanged(QString)), this, SLOT(valueChanged1(QString)));
    connect(m_pqUi->m_pqValue2ComboBox, SIGNAL(editTextChanged(QString)), this, SLOT(valueChanged2(QString)));
    connect(m_pqUi->m_pqSelectCellsRadioButton, SIGNAL(toggled(bool)), this, SLOT(enableColumnSelection()));
    connect(m_pqUi->m_pqSelectRowsRadioButton, SIGNAL(toggled(bool)), this, SLOT(enableColumnSelection()));
    connect(m_pqUi->m_pqSelectColumnsRadioButton, SIGNAL(toggled(bool)), this, SLOT(enableColumnSelection()));
    connect(m_pqUi->m_pqClearSelectionPushButton, SIGNAL(clicked()), this, SIGNAL(clearSelection()));
    connect(m_pqUi->m_pqClearSelectedRowsFilterPushButton, SIGNAL(clicked()), this, SIGNAL(clearFilterSelectedRows()));
    connect(m_pqUi->m_pqNextItemPushButton, SIGNAL(clicked()), this, SLOT(slotNextItem()));
    connect(m_pqUi->m_pqPreviousItemPushButton, SIGNAL(clicked()), this, SLOT(slotPreviousItem()));
    connect(m_pqUi->m_pqApplyPushButton, SIGNAL(clicked()), this, SLOT(okButtonClicked()));
    connect(m_pqUi->m_pqOkPushButton, SIGNAL(clicked()), this, SLOT(okButtonClicked()));
    connect(m_pqUi->m_pqOkPushButton, SIGNAL(clicked()), this, SLOT(accept()));
    connect(m_pqUi->m_pqCancelPushButton, SIGNAL(clicked()), this, SLOT(reject()));
}

QSelectCellsDialog::~QSelectCellsDialog() = default;

bool QSelectCellsDialog::isSatisfied(double v, double a, double b, SelectMethod method)
{
    switch (method) {
    case EqualThan:
        return nearlyEqual(v, a);
    case LessThan:
        return v < a;
    case LessEqualThan:
        return v < a || nearlyEqual(v, a);
    case GreaterThan:
        return v > a;
    case GreaterEqualThan:
        return v > a || nearlyEqual(v, a);
    case Between:
        return v > a && v < b;
    case BetweenEqual:
        return (v > a && v < b) || nearlyEqual(v, a) || nearlyEqual(v, b);
    }
    return false;
}

QSelectCellsDialog::SelectMethod QSelectCellsDialog::method() const
{
    return static_cast<SelectMethod>(m_pqUi->m_pqMethodComboBox->currentData().toInt());
}

QVariant QSelectCellsDialog::value1() const
{
    return QVariant(m_pqUi->m_pqValue1ComboBox->currentText());
}

QVariant QSelectCellsDialog::value2() const
{
    return QVariant(m_pqUi->m_pqValue2ComboBox->currentText());
}

bool QSelectCellsDialog::isColumnSelection() const
{
    return m_pqUi->m_pqSelectColumnsRadioButton->isChecked();
}

bool QSelectCellsDialog::isRowSelection() const
{
    return m_pqUi->m_pqSelectRowsRadioButton->isChecked();
}

bool QSelectCellsDialog::keepPreviousSelection() const
{
    return m_pqUi->m_pqKeepPreviousSelectionCheckBox->isChecked();
}

bool QSelectCellsDialog::showSelectedTableCells() const
{
    return m_pqUi->m_pqShowSelectedCellsCheckBox->isChecked();
}

int QSelectCellsDialog::columnFrom() const
{
    return m_pqUi->m_pqColumnFromSpinBox->value() - 1;
}

int QSelectCellsDialog::columnTo() const
{
    return m_pqUi->m_pqColumnToSpinBox->value() - 1;
}

void QSelectCellsDialog::setNumberOfSelectedCells(int count)
{
    m_pqUi->m_pqNumberOfSelectedCellsLabel->setText(QString::number(count));
}

void QSelectCellsDialog::setRowNumberText(const QString& text)
{
    m_pqUi->m_pqRowNumberLabel->setText(text);
}

QString QSelectCellsDialog::numberOfSelectedCellsText() const
{
    return m_pqUi->m_pqNumberOfSelectedCellsLabel->text();
}

QString QSelectCellsDialog::rowNumberText() const
{
    return m_pqUi->m_pqRowNumberLabel->text();
}

void QSelectCellsDialog::setMethod(SelectMethod method)
{
    const int i = m_pqUi->m_pqMethodComboBox->findData(method);
    if (i >= 0)
        m_pqUi->m_pqMethodComboBox->setCurrentIndex(i);
}

void QSelectCellsDialog::setValues(const QString& value1, const QString& value2)
{
    m_pqUi->m_pqValue1ComboBox->setEditText(value1);
    m_pqUi->m_pqValue2ComboBox->setEditText(value2);
}

void QSelectCellsDialog::setSelectionKind(bool rows, bool columns)
{
    if (columns)
        m_pqUi->m_pqSelectColumnsRadioButton->setChecked(true);
    else if (rows)
        m_pqUi->m_pqSelectRowsRadioButton->setChecked(true);
    else
        m_pqUi->m_pqSelectCellsRadioButton->setChecked(true);
}

void QSelectCellsDialog::setColumnRange(int from, int to)
{
    m_pqUi->m_pqColumnFromSpinBox->setValue(from + 1);
    m_pqUi->m_pqColumnToSpinBox->setValue(to + 1);
}

void QSelectCellsDialog::setKeepPreviousSelection(bool keep)
{
    m_pqUi->m_pqKeepPreviousSelectionCheckBox->setChecked(keep);
}

void QSelectCellsDialog::setShowSelectedTableCells(bool show)
{
    m_pqUi->m_pqShowSelectedCellsCheckBox->setChecked(show);
}

void QSelectCellsDialog::enableValue2ComboBox(int)
{
    const SelectMethod m = method();
    m_pqUi->m_pqValue2ComboBox->setVisible(m == Between || m == BetweenEqual);
}

void QSelectCellsDialog::enableColumnSelection()
{
    const bool columns = isColumnSelection();
    m_pqUi->m_pqStackedWidget->setCurrentIndex(columns ? 1 : 0);
    QString label = tr("Number of Selected Cells:");
    if (columns)
        label = tr("Number of Selected Columns:");
    else if (isRowSelection())
        label = tr("Number of Selected Rows:");
    m_pqUi->m_pqNumberOfSelectedLabel->setText(label);
}

void QSelectCellsDialog::valueChanged1(const QString& text)
{
    m_value1 = text;
}

void QSelectCellsDialog::valueChanged2(const QString& text)
{
    m_value2 = text;
}

void QSelectCellsDialog::okButtonClicked()
{
    QComboBox* box1 = m_pqUi->m_pqValue1ComboBox;
    QComboBox* box2 = m_pqUi->m_pqValue2ComboBox;
    int index1 = box1->findText(m_value1);
    if (index1 < 0 && !m_value1.isEmpty()) {
        box1->addItem(m_value1);
        index1 = box1->count() - 1;
    }
    // The second value is looked up in the first box, so a value typed into both boxes is
    // remembered in the second box only once it is new to the first.
    int index2 = box1->findText(m_value2);
    if (index2 < 0 && !m_value2.isEmpty()) {
        box2->addItem(m_value2);
        index2 = box2->count() - 1;
    }
    if (index1 >= 0)
        box1->setCurrentIndex(index1);
    // A position found in the first box may name another entry in the second: never let it
    // replace the value the user typed.
    if (index2 >= 0 && index2 < box2->count() && box2->itemText(index2) == m_value2)
        box2->setCurrentIndex(index2);
    emit clicked();
}

void QSelectCellsDialog::slotNextItem()
{
    emit nextItem(isRowSelection());
}

void QSelectCellsDialog::slotPreviousItem()
{
    emit previousItem(isRowSelection());
}

} // namespace rkBase

#include "QModifyCellsDialog.h"

#include "ui_QModifyCellsDialog.h"

#include <QCoreApplication>
#include <QIcon>
#include <QPixmap>

#include <climits>
#include <cmath>
#include <cstdlib>

namespace rkBase {

namespace {
// Title bar, system menu and close button of a dialog, without the help button.
constexpr int kDefaultWindowFlags = 0xA003003;

bool usesValue(int method)
{
    return method == QModifyCellsDialog::ShiftByValue || method == QModifyCellsDialog::MultiplyByValue
        || method == QModifyCellsDialog::DivideByValue || method == QModifyCellsDialog::ReplaceByValue
        || method == QModifyCellsDialog::ReplaceEmptyCells;
}
} // namespace

QString QModifyCellsDialog::methodName(ModifyMethod method)
{
    const char* text = nullptr;
    switch (method) {
    case ShiftByValue: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Shift by Value"); break;
    case MultiplyByValue: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Multiply by Value"); break;
    case Sines: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Sines"); break;
    case Cosines: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Cosines"); break;
    case DivideByValue: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Divide by Value"); break;
    case Ln: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "ln"); break;
    case Log10: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "log10"); break;
    case Exp: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "exp"); break;
    case ReplaceByValue: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Replace by Value"); break;
    case ClearCells: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Clear Cell(s)"); break;
    case ReplaceEmptyCells: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Replace Empty Cell(s)"); break;
    case AttributeInterpolation:
        text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Attribute Interpol. between selected Cells");
        break;
    case ReplaceByName: text = QT_TRANSLATE_NOOP("QModifyCellsDialog", "Replace by Name"); break;
    }
    return text ? QCoreApplication::translate("QModifyCellsDialog", text) : QString();
}

QModifyCellsDialog::QModifyCellsDialog(const QString& title, bool numeric, QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags ? flags : Qt::WindowFlags(kDefaultWindowFlags)), m_pqUi(new Ui::QModifyCellsDialog),
      m_numeric(numeric)
{
    m_pqUi->setupUi(this);
    if (!title.isEmpty())
        setWindowTitle(title);
    m_pqUi->m_pqAttributeCheckBox->hide();
    m_pqUi->m_pqAttributeComboBox->hide();
    m_pqUi->m_pqAttributeComboBox->setEnabled(false);
    showInterfaceForValues(numeric);

    connect(m_pqUi->m_pqMethodComboBox, SIGNAL(currentIndexChanged(int)), this, SLOT(enableValueComboBox(int)));
    connect(m_pqUi->m_pqValueComboBox, SIGNAL(editTextChanged(QString)), this, SLOT(valueChanged(QString)));
    connect(m_pqUi->m_pqAttributeCheckBox, SIGNAL(stateChanged(int)), this, SLOT(enableAttributeComboBox(int)));
    connect(m_pqUi->m_pqAttributeComboBox, SIGNAL(currentIndexChanged(int)), this, SLOT(slotUpdateInterface()));
    connect(m_pqUi->m_pqApplyPushButton, SIGNAL(clicked()), this, SLOT(okButtonClicked()));
    connect(m_pqUi->m_pqApplyClosePushButton, SIGNAL(clicked()), this, SLOT(okButtonClicked()));
    connect(m_pqUi->m_pqApplyClosePushButton, SIGNAL(clicked()), this, SLOT(accept()));
    connect(m_pqUi->m_pqClosePushButton, SIGNAL(clicked()), this, SLOT(reject()));
}

QModifyCellsDialog::~QModifyCellsDialog() = default;

QModifyCellsDialog::ModifyMethod QModifyCellsDialog::method() const
{
    return static_cast<ModifyMethod>(m_pqUi->m_pqMethodComboBox->currentData().toInt());
}

QVariant QModifyCellsDialog::value() const
{
    return QVariant(m_pqUi->m_pqValueComboBox->currentText());
}

int QModifyCellsDialog::valueIndex() const
{
    return m_pqUi->m_pqValueComboBox->currentIndex();
}

int QModifyCellsDialog::getAttribute() const
{
    const QComboBox* box = m_pqUi->m_pqAttributeComboBox;
    if (!m_pqUi->m_pqAttributeCheckBox->isChecked() || box->currentIndex() < 0)
        return -1;
    const int id = box->currentData().toInt();
    return id == INT_MIN ? -1 : std::abs(id);
}

bool QModifyCellsDialog::applyTo3DView() const
{
    return m_pqUi->m_pqApplyTo3DViewRadioButton->isChecked();
}

bool QModifyCellsDialog::setMethod(ModifyMethod method)
{
    // The text form carries ReplaceByValue under the name entry.
    const int i = m_pqUi->m_pqMethodComboBox->findData(method == ReplaceByName ? ReplaceByValue : method);
    if (i < 0)
        return false;
    m_pqUi->m_pqMethodComboBox->setCurrentIndex(i);
    return true;
}

void QModifyCellsDialog::populateValueComboBox(const QList<QString>& values)
{
    QComboBox* box = m_pqUi->m_pqValueComboBox;
    box->clear();
    for (const QString& v : values)
        box->addItem(v);
}

void QModifyCellsDialog::showAttributeInterface(bool show)
{
    m_pqUi->m_pqAttributeCheckBox->setVisible(show);
    m_pqUi->m_pqAttributeComboBox->setVisible(show);
}

void QModifyCellsDialog::updateDataSetSelectionBox(const QList<QString>& names, const QList<int>& ids,
                                                   const QList<QColor>& colors, const QString& current)
{
    QComboBox* box = m_pqUi->m_pqAttributeComboBox;
    const QString kept = current.isEmpty() || current == QLatin1String("None") ? QString() : current;
    {
        const QSignalBlocker blocker(box);
        box->clear();
        for (int i = 0; i < names.size(); ++i) {
            QPixmap swatch(10, 10);
            swatch.fill(i < colors.size() ? colors[i] : QColor(Qt::white));
            box->addItem(QIcon(swatch), names[i], i < ids.size() ? ids[i] : i);
        }
        const int at = kept.isEmpty() ? -1 : box->findText(kept);
        if (at >= 0)
            box->setCurrentIndex(at);
    }
    if (!names.isEmpty())
        m_pqUi->m_pqAttributeCheckBox->setChecked(true);
    slotUpdateInterface();
}

void QModifyCellsDialog::enableValueComboBox(int)
{
    m_pqUi->m_pqValueComboBox->setEnabled(usesValue(method()));
}

void QModifyCellsDialog::enableAttributeComboBox(int state)
{
    m_pqUi->m_pqAttributeComboBox->setEnabled(state == Qt::Checked);
}

void QModifyCellsDialog::valueChanged(const QString& text)
{
    if (!m_numeric) {
        m_value = text;
        return;
    }
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    m_value = ok && std::isfinite(v) ? QVariant(v) : QVariant();
}

void QModifyCellsDialog::slotUpdateInterface()
{
    const QComboBox* box = m_pqUi->m_pqAttributeComboBox;
    bool numeric = m_numeric;
    if (box->currentIndex() >= 0)
        numeric = box->currentData().toInt() >= 0;
    if (numeric != m_numeric) {
        // Numbers and names never share the value list: park the one of the kind left.
        QComboBox* values = m_pqUi->m_pqValueComboBox;
        QStringList shown;
        for (int i = 0; i < values->count(); ++i)
            shown << values->itemText(i);
        m_numeric = numeric;
        populateValueComboBox(m_otherKindValues);
        m_otherKindValues = shown;
    }
    showInterfaceForValues(numeric);
}

void QModifyCellsDialog::showInterfaceForValues(bool numeric)
{
    m_numeric = numeric;
    QComboBox* box = m_pqUi->m_pqMethodComboBox;
    const QString kept = box->currentText();
    {
        const QSignalBlocker blocker(box);
        box->clear();
        if (numeric) {
            for (ModifyMethod m : {MultiplyByValue, DivideByValue, ShiftByValue, ReplaceByValue, AttributeInterpolation,
                                   Sines, Cosines, Ln, Exp, Log10, ReplaceEmptyCells, ClearCells})
                box->addItem(methodName(m), int(m));
        } else {
            box->addItem(methodName(ReplaceByName), int(ReplaceByValue));
            box->addItem(methodName(ReplaceEmptyCells), int(ReplaceEmptyCells));
            box->addItem(methodName(ClearCells), int(ClearCells));
        }
        const int at = box->findText(kept);
        if (at >= 0)
            box->setCurrentIndex(at);
    }
    enableValueComboBox(box->currentIndex());
}

void QModifyCellsDialog::updateValueComboBox()
{
    if (!m_value.isValid())
        return;
    const QString text = m_numeric ? QString::number(m_value.toDouble(), 'g', 6) : m_value.toString();
    if (text.isEmpty())
        return;
    QComboBox* box = m_pqUi->m_pqValueComboBox;
    int at = box->findText(text);
    if (at < 0) {
        box->addItem(text);
        at = box->count() - 1;
    }
    box->setCurrentIndex(at);
}

void QModifyCellsDialog::okButtonClicked()
{
    emit clicked();
}

} // namespace rkBase

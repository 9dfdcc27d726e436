#include "SectionCreationDialog.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

namespace rkBase {

namespace {
double wrapDegrees(double d)
{
    if (!std::isfinite(d))
        return 0.0;
    d = std::fmod(d, 360.0);
    if (d < 0.0)
        d += 360.0;
    // fmod of a tiny negative number leaves 360 after the shift.
    return d >= 360.0 ? 0.0 : d;
}
} // namespace

SectionCreationDialog::SectionCreationDialog(double suggestedAzimuth, QWidget* parent)
    : QDialog(parent), m_suggested(std::isfinite(suggestedAzimuth) && suggestedAzimuth >= 0.0
                                       ? wrapDegrees(suggestedAzimuth) : -1.0),
      m_name(new QLineEdit(tr("Section_1"), this)), m_azimuth(new QDoubleSpinBox(this)),
      m_width(new QDoubleSpinBox(this)), m_suggest(new QPushButton(tr("&Use Suggested"), this))
{
    setObjectName(QStringLiteral("SectionCreationDialog"));
    setWindowTitle(tr("Create Section"));
    m_name->setObjectName(QStringLiteral("sectionNameLineEdit"));
    m_azimuth->setObjectName(QStringLiteral("azimuthSpinBox"));
    m_width->setObjectName(QStringLiteral("halfWidthSpinBox"));
    m_suggest->setObjectName(QStringLiteral("useSuggestedButton"));
    m_azimuth->setRange(0.0, 359.9);
    m_azimuth->setDecimals(1);
    m_azimuth->setWrapping(true);
    m_azimuth->setSuffix(QStringLiteral(" \u00b0"));
    m_width->setRange(1.0, 100000.0);
    m_width->setDecimals(1);
    m_width->setValue(500.0);
    m_suggest->setEnabled(hasSuggestion());
    m_suggest->setAutoDefault(false);
    if (hasSuggestion()) {
        m_suggest->setToolTip(tr("Azimuth %1\u00b0").arg(m_suggested, 0, 'f', 1));
        m_azimuth->setValue(m_suggested);
    }

    auto* form = new QFormLayout;
    form->addRow(tr("&Name"), m_name);
    form->addRow(tr("&Azimuth"), m_azimuth);
    form->addRow(QString(), m_suggest);
    form->addRow(tr("Half &Width"), m_width);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    m_ok = buttons->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_suggest, &QPushButton::clicked, this, &SectionCreationDialog::useSuggestedAzimuth);
    connect(m_name, &QLineEdit::textChanged, this, &SectionCreationDialog::updateOkButton);
    updateOkButton();
    m_name->selectAll();
    m_name->setFocus();
}

QString SectionCreationDialog::sectionName() const { return m_name->text().trimmed(); }
void SectionCreationDialog::setSectionName(const QString& name) { m_name->setText(name); }
double SectionCreationDialog::azimuth() const { return wrapDegrees(m_azimuth->value()); }
// The box holds one decimal: 359.96 rounds up to 360, which is north again.
void SectionCreationDialog::setAzimuth(double degrees)
{
    const double d = wrapDegrees(degrees);
    m_azimuth->setValue(std::round(d * 10.0) / 10.0 >= 360.0 ? 0.0 : d);
}
double SectionCreationDialog::halfWidth() const { return m_width->value(); }
void SectionCreationDialog::setHalfWidth(double width) { m_width->setValue(width); }

void SectionCreationDialog::useSuggestedAzimuth()
{
    if (hasSuggestion())
        setAzimuth(m_suggested);
}

void SectionCreationDialog::updateOkButton()
{
    if (m_ok)
        m_ok->setEnabled(!sectionName().isEmpty());
}

} // namespace rkBase

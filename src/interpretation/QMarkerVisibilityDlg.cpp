#include "QMarkerVisibilityDlg.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace rkBase {

QMarkerVisibilityDlg::QMarkerVisibilityDlg(QWidget* parent)
    : QDialog(parent), m_all(new QCheckBox(tr("&All Markers"), this)), m_scat(new QCheckBox(tr("&SCAT Markers"), this)),
      m_decimated(new QCheckBox(tr("&Decimated Dip/Azimuth Markers"), this)),
      m_top(new QCheckBox(tr("&Tops"), this)), m_fault(new QCheckBox(tr("&Faults"), this)),
      m_show(new QRadioButton(tr("S&how"), this)), m_hide(new QRadioButton(tr("H&ide"), this))
{
    setObjectName(QStringLiteral("QMarkerVisibilityDlg"));
    setWindowTitle(tr("Marker Visibility"));
    m_all->setObjectName(QStringLiteral("allMarkersCheckBox"));
    m_scat->setObjectName(QStringLiteral("scatMarkersCheckBox"));
    m_decimated->setObjectName(QStringLiteral("decimatedMarkersCheckBox"));
    m_top->setObjectName(QStringLiteral("topMarkersCheckBox"));
    m_fault->setObjectName(QStringLiteral("faultMarkersCheckBox"));
    m_show->setObjectName(QStringLiteral("showRadioButton"));
    m_hide->setObjectName(QStringLiteral("hideRadioButton"));
    m_show->setChecked(true);

    auto* kinds = new QGroupBox(tr("Markers"), this);
    auto* kindLayout = new QVBoxLayout(kinds);
    for (QCheckBox* box : {m_all, m_scat, m_decimated, m_top, m_fault}) {
        kindLayout->addWidget(box);
        connect(box, &QCheckBox::toggled, this, &QMarkerVisibilityDlg::updateControls);
    }
    auto* state = new QGroupBox(tr("Visibility"), this);
    auto* stateLayout = new QHBoxLayout(state);
    stateLayout->addWidget(m_show);
    stateLayout->addWidget(m_hide);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    m_ok = buttons->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(kinds);
    layout->addWidget(state);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    updateControls();
}

bool QMarkerVisibilityDlg::allMarkers() const { return m_all->isChecked(); }
// "All" covers every kind: the single kinds are then not asked for on their own.
bool QMarkerVisibilityDlg::scatMarkers() const { return !allMarkers() && m_scat->isChecked(); }
bool QMarkerVisibilityDlg::decimatedMarkers() const { return !allMarkers() && m_decimated->isChecked(); }
bool QMarkerVisibilityDlg::topMarkers() const { return !allMarkers() && m_top->isChecked(); }
bool QMarkerVisibilityDlg::faultMarkers() const { return !allMarkers() && m_fault->isChecked(); }
bool QMarkerVisibilityDlg::visible() const { return m_show->isChecked(); }

bool QMarkerVisibilityDlg::anyKindChosen() const
{
    return allMarkers() || scatMarkers() || decimatedMarkers() || topMarkers() || faultMarkers();
}

void QMarkerVisibilityDlg::updateControls()
{
    for (QCheckBox* box : {m_scat, m_decimated, m_top, m_fault})
        box->setEnabled(!m_all->isChecked());
    if (m_ok)
        m_ok->setEnabled(anyKindChosen());
}

} // namespace rkBase

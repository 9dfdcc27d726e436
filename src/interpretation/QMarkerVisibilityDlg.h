#pragma once
// Which marker kinds the sheet shows on the well: all of them, or any of the SCAT rows, the
// decimated dips, the tops and the faults, each shown or hidden. The answers are the arguments
// of the analyser's setMarkerVisibility(all, scat, decimated, top, fault, visible).

#include <QDialog>

class QCheckBox;
class QRadioButton;

namespace rkBase {

class QMarkerVisibilityDlg : public QDialog
{
    Q_OBJECT
public:
    explicit QMarkerVisibilityDlg(QWidget* parent = nullptr);

    bool allMarkers() const;
    bool scatMarkers() const;
    bool decimatedMarkers() const;
    bool topMarkers() const;
    bool faultMarkers() const;
    bool visible() const;
    // Whether the choice names any kind at all (OK is enabled only then).
    bool anyKindChosen() const;

private slots:
    void updateControls();

private:
    QCheckBox* m_all;
    QCheckBox* m_scat;
    QCheckBox* m_decimated;
    QCheckBox* m_top;
    QCheckBox* m_fault;
    QRadioButton* m_show;
    QRadioButton* m_hide;
    class QPushButton* m_ok = nullptr;
};

} // namespace rkBase

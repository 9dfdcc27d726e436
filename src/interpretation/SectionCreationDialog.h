#pragma once
// Asks for a vertical section through the well: its name, the azimuth it runs along (0 to 360
// degrees, wrapping) and how far it reaches on each side of the well. "Use Suggested" takes the
// azimuth the interpretation proposes (the T direction of the dips, when one is set).

#include <QDialog>
#include <QString>

class QDoubleSpinBox;
class QLineEdit;
class QPushButton;

namespace rkBase {

class SectionCreationDialog : public QDialog
{
    Q_OBJECT
public:
    // suggestedAzimuth below 0 (the "no direction" -1.0) or of no number offers no suggestion.
    explicit SectionCreationDialog(double suggestedAzimuth = -1.0, QWidget* parent = nullptr);

    QString sectionName() const;
    void setSectionName(const QString& name);
    // In [0, 360).
    double azimuth() const;
    void setAzimuth(double degrees);
    double halfWidth() const;
    void setHalfWidth(double width);
    bool hasSuggestion() const { return m_suggested >= 0.0; }

public slots:
    void useSuggestedAzimuth();

private slots:
    void updateOkButton();

private:
    double m_suggested;
    QLineEdit* m_name;
    QDoubleSpinBox* m_azimuth;
    QDoubleSpinBox* m_width;
    QPushButton* m_suggest;
    QPushButton* m_ok = nullptr;
};

} // namespace rkBase

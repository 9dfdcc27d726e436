#pragma once
// The common part of a spin box with a slider beside it (QIntSpinBoxWithSlider,
// QDoubleSpinBoxWithSlider): the panels' settings such as a transparency, a rotation angle or a
// bin size, where the slider gives the quick choice and the spin box the exact one. The two stay
// in step whichever the user moves, and the value is the spin box's: a subclass gives the
// mapping between its value and the slider's integer positions.
//
// Forms place the two subclasses; this base is not a control of its own.

#include <QWidget>

class QAbstractSpinBox;
class QSlider;

namespace rkBase {

class QSpinBoxWithSlider : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool sliderVisible READ isSliderVisible WRITE setSliderVisible)
public:
    ~QSpinBoxWithSlider() override;

    QSlider* slider() const { return m_slider; }
    QAbstractSpinBox* editor() const { return m_editor; }
    void setSliderVisible(bool on);
    bool isSliderVisible() const { return !m_sliderHidden; }

protected:
    // editor is the subclass's spin box; the base lays it out and takes ownership.
    QSpinBoxWithSlider(QAbstractSpinBox* editor, QWidget* parent);
    // Moves the slider to the spin box's value, without echo back into the spin box.
    void syncSlider();
    // The slider's range and position for the spin box's range and value.
    virtual void configureSlider() = 0;
    // The slider moved to position: set the spin box.
    virtual void takeSliderPosition(int position) = 0;

private:
    QAbstractSpinBox* m_editor;
    QSlider* m_slider;
    bool m_sliderHidden = false;
    bool m_syncing = false;
};

} // namespace rkBase

#include "QSpinBoxWithSlider.h"

#include <QAbstractSpinBox>
#include <QHBoxLayout>
#include <QSlider>

namespace rkBase {

QSpinBoxWithSlider::QSpinBoxWithSlider(QAbstractSpinBox* editor, QWidget* parent)
    : QWidget(parent), m_editor(editor), m_slider(new QSlider(Qt::Horizontal, this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_editor->setParent(this);
    layout->addWidget(m_editor);
    layout->addWidget(m_slider, 1);
    setFocusProxy(m_editor);
    connect(m_slider, &QSlider::valueChanged, this, [this](int position) {
        // The spin box answers with its own valueChanged; the slider stays where the user put it.
        if (m_syncing)
            return;
        m_syncing = true;
        takeSliderPosition(position);
        m_syncing = false;
    });
}

QSpinBoxWithSlider::~QSpinBoxWithSlider() = default;

void QSpinBoxWithSlider::setSliderVisible(bool on)
{
    m_sliderHidden = !on;
    m_slider->setVisible(on);
}

void QSpinBoxWithSlider::syncSlider()
{
    if (m_syncing)
        return;
    m_syncing = true;
    configureSlider();
    m_syncing = false;
}

} // namespace rkBase

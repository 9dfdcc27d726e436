#pragma once
// The sixteen colour buttons of the stereo panel, each with the surface colour it sets, its
// settings key and its colour on a fresh panel. One table serves the buttons' start, the copy
// into the surface and the settings, so that the three never disagree.

#include "ui_QStereoChartWidget.h"

#include <QColor>

#include <vector>

class QPushButton;

namespace rkBase {

class QStereoPlotWidget;

struct StereoColorButton {
    QPushButton* Ui::QStereoProjectionWidget::*button;
    void (QStereoPlotWidget::*setter)(const QColor&);
    const char* key;
    const char* defaultColor; // #RRGGBB

    // In the order of the form.
    static const std::vector<StereoColorButton>& all();
};

} // namespace rkBase

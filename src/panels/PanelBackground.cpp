#include "PanelBackground.h"

#include "PanelAxes.h"
#include "QChartDrawingArea.h"

#include <QWidget>

namespace rkBase {

QPalette PanelBackground::palette(bool black, const QPalette& from)
{
    QPalette p(from);
    const QColor paper = black ? Qt::black : Qt::white;
    const QColor ink = black ? Qt::white : Qt::black;
    p.setColor(QPalette::Base, paper);
    p.setColor(QPalette::AlternateBase, paper);
    p.setColor(QPalette::Window, paper);
    p.setColor(QPalette::WindowText, ink);
    p.setColor(QPalette::Text, ink);
    return p;
}

void PanelBackground::apply(bool black, QWidget* frame, QChartDrawingArea* chart, PanelAxes* axes)
{
    if (frame) {
        const QPalette p = palette(black, frame->palette());
        frame->setBackgroundRole(black ? QPalette::AlternateBase : QPalette::Base);
        frame->setAutoFillBackground(true);
        frame->setPalette(p);
        if (axes)
            axes->setPalette(p);
    } else if (axes) {
        axes->setPalette(palette(black, QPalette()));
    }
    if (axes)
        axes->redraw();
    if (chart) {
        chart->setLabelColor(black ? Qt::white : Qt::black);
        if (chart->isVisible())
            chart->updateChart();
    }
}

} // namespace rkBase

#include "PanelZoomScrollBars.h"

#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace rkBase {

PanelZoomScrollBars::PanelZoomScrollBars(QScrollBar* horizontal, QScrollBar* vertical)
    : m_horizontal(horizontal), m_vertical(vertical)
{
}

int PanelZoomScrollBars::pageStep(double zoom)
{
    if (!(zoom > 1.0))
        return 100;
    return std::max(1, static_cast<int>(std::trunc(std::min(100.0, 100.0 / (zoom - 1.0)))));
}

void PanelZoomScrollBars::apply(double zoom, bool verticalOnly)
{
    const bool zoomed = zoom > 1.0;
    const int step = pageStep(zoom);
    if (m_horizontal) {
        m_horizontal->setPageStep(step);
        m_horizontal->setVisible(zoomed && !verticalOnly);
    }
    if (m_vertical) {
        m_vertical->setPageStep(step);
        m_vertical->setVisible(zoomed);
    }
}

} // namespace rkBase

#pragma once
// The two scroll bars beside a zoomable chart (cross plot, depth plot, stereonet, rose,
// histogram): hidden while the chart shows all of itself, and with a page as large as the part
// of the chart in view once it is zoomed, so that dragging a bar from end to end crosses the
// zoomed raster once. Positions run 0 to 100, as the charts' xoffset()/yoffset() take them.

class QScrollBar;

namespace rkBase {

class PanelZoomScrollBars
{
public:
    PanelZoomScrollBars(QScrollBar* horizontal, QScrollBar* vertical);

    // Zoom 1 or less (or no number) hides both bars. Otherwise the page step is
    // truncate(100 / (zoom - 1)) and the bars show; with verticalOnly only the vertical one.
    void apply(double zoom, bool verticalOnly = false);
    // The page step of a zoom above 1, at least 1 so that a bar can always be moved.
    static int pageStep(double zoom);

    QScrollBar* horizontal() const { return m_horizontal; }
    QScrollBar* vertical() const { return m_vertical; }

private:
    QScrollBar* m_horizontal;
    QScrollBar* m_vertical;
};

} // namespace rkBase

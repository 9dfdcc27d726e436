#pragma once
// The black or white background switch of a chart panel: the frame around chart and axes, the
// axes' palette, and the chart's label colour (marks and text drawn in black on white, in white
// on black).

#include <QPalette>

class QWidget;

namespace rkBase {

class PanelAxes;
class QChartDrawingArea;

class PanelBackground
{
public:
    // White: the frame fills with the Base role (white on Base and AlternateBase, black text);
    // black: with AlternateBase and the reverse. The chart is updated only when visible.
    static void apply(bool black, QWidget* frame, QChartDrawingArea* chart, PanelAxes* axes);
    static QPalette palette(bool black, const QPalette& from);
};

} // namespace rkBase

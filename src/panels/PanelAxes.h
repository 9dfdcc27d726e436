#pragma once
// The four axes around a Cartesian chart (top, bottom, left, right), held together because
// every panel does the same things to all of them: follow the chart's zoom and scroll, take a
// font size and the black or white palette, redraw, and paint themselves beside the chart into a
// metafile. Any of the four may be null (a depth track without a right axis).

#include <QCartesianAxisWidget.h>

#include <QList>
#include <QRect>

class QPainter;
class QPalette;

namespace rkBase {

class PanelAxes
{
public:
    PanelAxes(QCartesianAxisWidget* top, QCartesianAxisWidget* bottom, QCartesianAxisWidget* left,
              QCartesianAxisWidget* right);

    QCartesianAxisWidget* top() const { return m_top; }
    QCartesianAxisWidget* bottom() const { return m_bottom; }
    QCartesianAxisWidget* left() const { return m_left; }
    QCartesianAxisWidget* right() const { return m_right; }
    QList<QCartesianAxisWidget*> all() const;

    // verticalOnly: a chart zoomed with zoomY() keeps its horizontal axes at 1.
    void setZoom(double zoom, bool verticalOnly = false);
    void setHorizontalOffset(int percent);
    // percent as the vertical scroll bar gives it, which the chart's yoffset() takes: the axes
    // count from their origin's side, so an axis with the origin at the bottom gets 100 - percent.
    void setVerticalOffset(int percent);
    void setFontPointSize(double points);
    void setPalette(const QPalette& palette);
    void redraw();

    // Each axis painted beside chartRect (the chart's rectangle in the painter's coordinates),
    // at its widget's thickness. A metafile clipped to the chart is opened up to take them.
    void draw(QPainter* painter, const QRect& chartRect) const;
    // The rectangle of chart and axes as draw() lays them out.
    QRect boundingRect(const QRect& chartRect) const;

private:
    int thickness(const QCartesianAxisWidget* axis, bool horizontal) const;

    QCartesianAxisWidget* m_top;
    QCartesianAxisWidget* m_bottom;
    QCartesianAxisWidget* m_left;
    QCartesianAxisWidget* m_right;
};

} // namespace rkBase

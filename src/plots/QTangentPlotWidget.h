#pragma once
// The tangent plot: line orientations placed so that the beds of a cylindrical fold line up on
// a straight line, the fold axis. A line of plunge p lies at a distance proportional to tan(p)
// from the centre, and the rim stands for the cut-off angle maxPlotAngle() (65 degrees), beyond
// which tan grows too fast to show. Everything but the projection and the net is the stereonet's:
// drawing order, picks, the point walkers, the lasso and the result points.
//
// Rules kept here that callers could otherwise guess:
// - tangentPlotPointInPixel() places (x, y) at tangentRadius(x) opposite the bearing y, in raster
//   pixels. Lines (pointKind 1) go there as they are; planes (pointKind 0) go there by their pole
//   (90 - dip, dip azimuth + 180), which lands at the bearing of the dip azimuth.
// - transformInDataPoint() reads a widget pixel as (angle, bearing of the pixel): the angle whose
//   tangent radius the pixel's distance is, and the pixel's own bearing from north. A pixel on
//   the rim (within 5e-5 pixels) reads exactly maxPlotAngle().
// - Angles above the cut-off land beyond the rim, where the clip region keeps them off the
//   chart. Angles past 90 wrap round as tan does: (100, a) is the line (80, a + 180). A line at
//   or near 90, where tan has no useful value, is held kFarOff pixels out, off any raster.
// - The fold axis is a line: it is placed as the lines are, whichever point kind was drawn last.
//   Its trace is the straight line through the axis point at right angles to its azimuth, R long
//   on either side; the dip directions of the planes that contain the axis lie on it. An axis
//   plunging exactly maxPlotAngle() has no direction on the chart and draws nothing.

#include "QStereoPlotWidget.h"

#include <QPointF>
#include <QString>

class QPainter;

namespace rkBase {

class QTangentPlotWidget : public QStereoPlotWidget
{
    Q_OBJECT
public:
    QTangentPlotWidget(QWidget* parent, const QString& title);

    // ---- overridden ----
    QPointF transformInPixelPoint(const QPointF& data) override;
    void drawNet(QPainter* painter) override;
    void drawFoldAxis(QPainter* painter) override;

    // ---- the projection ----
    // Distance from the centre of angle a: tan(a) / tan(maxPlotAngle) x R, so R at the cut-off.
    double tangentRadius(double a) const;
    // Raster pixel of (angle, bearing): tangentRadius(angle) from c, opposite the bearing.
    QPointF tangentPlotPointInPixel(const QPointF& orientation) const;
    // The (angle, bearing) of a widget pixel; see the rules above.
    QPointF transformInDataPoint(const QPointF& pixel) const;
    // transformInPixelPoint over a block of points, bit for bit as it places them one by one.
    void tangentPointsInPixels(const QPointF* data, QPointF* pixels, int count);

    // ---- the net ----
    // Circles at step, 2 step, ... degrees below the cut-off.
    void drawTangentPlotNet(QPainter* painter, int step);

    // How far out a line at or near 90 degrees is held, in pixels: beyond any raster, and still
    // well inside what a painter's integer coordinates hold.
    static constexpr double kFarOff = 1e7;
};

} // namespace rkBase

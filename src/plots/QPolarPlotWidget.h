#pragma once
// The base of every circular chart (rose, stereonet, tangent plot): the circle's centre c and
// radius R in raster pixels, the disc that charts clip to, the annotation ring of ticks with
// angle or direction labels, the title, the top-right information, the north arrow, and the
// drawing tools in polar terms: radial lines, arrow heads, a painter rotation about c and arcs
// through three points (drawSector).
//
// Angles are azimuths in degrees, clockwise from north (up); on the raster an azimuth a points
// along t = a - 90 degrees in screen terms (x right, y down). Every drawing helper works on any
// painter (raster, metafile, recording engine): none reads or writes pixels.
//
// Rules kept here:
// - setCenterAndRadius() reads the raster size: c is the raster's centre, R = 0.4 x the shorter
//   side, truncated. redraw() calls it first, so c and R follow every resize and zoom.
// - The frame's words are "North", "East", "South", "West"; with angles the ring carries every
//   10 degrees, with "0" over "360" at north.

#include "QChartDrawingArea.h"

#include <QPoint>
#include <QRegion>
#include <QString>

namespace rkBase {

class QPolarPlotWidget : public QChartDrawingArea
{
    Q_OBJECT
public:
    QPolarPlotWidget(QWidget* parent, const QString& title);

    void redraw() override;

    void setAnnotationLabelAsAngle(bool on) { m_annotationAsAngle = on; }
    bool annotationLabelAsAngle() const { return m_annotationAsAngle; }
    void setAnnotationLabelAsDirectionOn(bool on) { m_annotationAsDirection = on; }
    bool annotationLabelAsDirection() const { return m_annotationAsDirection; }
    void setEqualAreaScaling(bool on) { m_equalArea = on; }
    bool equalAreaScaling() const { return m_equalArea; }
    void showCircleFrame(bool on) { m_circleFrame = on; }
    bool circleFrame() const { return m_circleFrame; }
    void setTopRightInfo(const QString& text) { m_topRightInfo = text; }
    QString topRightInfo() const { return m_topRightInfo; }
    // Before each frame the top-right text becomes "points = " and the model's point count.
    void setShowPointCount(bool on) { m_showPointCount = on; }
    bool showPointCount() const { return m_showPointCount; }
    void setPickTraceActive(bool on) { m_pickTraceActive = on; }
    bool pickTraceActive() const { return m_pickTraceActive; }

    int radius() const { return m_radius; }
    QPoint centre() const { return m_centre; }
    const QRegion& clipRegion() const { return m_clipRegion; }
    // c, R, gridRect and clipRegion from the current raster size.
    void setCenterAndRadius();

    // ---- the frame ----
    // Annotation ring, title, top-right information, north arrow and circle, with a pen of the
    // given width in labelColor.
    void drawFrame(QPainter* painter, int width);
    void drawTitle(QPainter* painter);
    void drawTopRightInfo(QPainter* painter);
    void drawNorth(QPainter* painter);
    // A tick from R to R + 7 at azimuth a; only while an annotation flag is on.
    void drawAnnotationTick(QPainter* painter, double a);
    // The word at 0, 90, 180, 270 or 360 (the word for north sits at 360, 0 stays empty).
    void drawAnnotationLabel(QPainter* painter, double a);
    // The number a at 0, 90, 180, 270 or 360, gap pixels outside the ring's ticks.
    void drawAngleAnnotationLabel(QPainter* painter, double a, int gap);
    // The number a between the cardinal points: the box is anchored on its corner nearest the
    // circle, so the text stays outside it.
    void drawAngleAnnotationLabelBetween_0to90(QPainter* painter, double a, int gap);
    void drawAngleAnnotationLabelBetween_90to180(QPainter* painter, double a, int gap);
    void drawAngleAnnotationLabelBetween_180to270(QPainter* painter, double a, int gap);
    void drawAngleAnnotationLabelBetween_270to360(QPainter* painter, double a, int gap);

    // ---- polar drawing tools ----
    using QChartDrawingArea::drawCircle;
    // A circle of radius r about c, or about the given centre.
    void drawCircle(QPainter* painter, const int& r);
    void drawCircle(QPainter* painter, const int& r, const QPoint& centre);
    // From c to R + extra along azimuth a, in whole pixels.
    void drawLine(QPainter* painter, double a, int extra);
    // An arrow head at tip pointing away from c: two strokes 10 back and 6 aside.
    void drawArrow(QPainter* painter, const QPointF& tip);
    // Sets the painter's transformation to a rotation by a degrees (clockwise on screen) about c.
    void rotation(QPainter* painter, const double& a);
    // The arc of the circle through from, mid and to, with mid the middle of the arc: as a
    // polyline of 50 chords ending exactly at to, or (fill) the whole circle filled. Points on
    // one line (a swept angle under 5e-9, or coinciding points) give the vertical diameter
    // through c instead: the callers rotate the painter so that it is the right one.
    void drawSector(const QPointF& mid, const QPointF& from, const QPointF& to, QPainter* painter, const bool& fill);

    // The point at azimuth a and distance r from c.
    QPointF polarPoint(double a, double r) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    // The label box of text at p, centred in it; boxes are never clipped to.
    void drawLabelText(QPainter* painter, const QRectF& box, const QString& text);
    // p = c + (R + gap + 2) along azimuth a.
    QPointF labelAnchor(double a, int gap) const;

    bool m_annotationAsAngle = true;
    bool m_annotationAsDirection = false;
    bool m_equalArea = true;
    int m_radius = 0;
    QPoint m_centre{0, 0};
    QRegion m_clipRegion;
    QString m_topRightInfo;
    bool m_showPointCount = false;
    bool m_circleFrame = true;
    bool m_pickTraceActive = false;
};

} // namespace rkBase

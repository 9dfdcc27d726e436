#pragma once
// The stereonet: orientation data on a lower-hemisphere net, equal area (Schmidt) or equal angle
// (Wulff). It plots poles, dip directions, lineations, planes as cyclographic traces, mean
// orientations and cluster centroids over the 10- and 2-degree nets; turns a pixel back into an
// orientation; selects data with a lasso; and carries the stress and shear drawing that a host's
// model subclass feeds through the model's hooks.
//
// Orientations are QPointF (x, y) in degrees: x the dip or plunge, y the dip azimuth or azimuth,
// clockwise from north (up on the net).
//
// Rules kept here that callers could otherwise guess:
// - poleInPixel() answers in raster pixels, dipDirectionInPixel() in widget pixels (the raster
//   less the zoom offset o). generateDipAndDipAzimuth() and transformInAzimuth() take widget
//   pixels, as mouse positions are; the lasso polygon is kept in raster pixels.
// - generateDipAndDipAzimuth() reads a pixel as the pole of a plane and gives that plane; a pixel
//   straight above the centre gives dip azimuth 180, one straight below 360. A pixel outside the
//   rim (more than 5e-5 beyond it) or one that is not a number gives false and (0, 0).
// - pointKind decides what transformInPixelPoint() means (0: the data are planes placed by their
//   poles; 1: the data are lines placed at their dip direction). It changes many times in one
//   paint, so a drawing routine sets it before it draws.
// - Everything drawn goes by raster pixels, at any zoom: drawDipDirection(), the labels of
//   result planes and the lasso's test of the lineation set take the line's raster pixel
//   (dipDirectionInPixel() + o), not dipDirectionInPixel() as it stands. Taken literally, a
//   widget pixel drawn into the raster puts a mark one scroll offset off its trace and makes the
//   lasso take lines outside it while missing those inside.
// - A result's label turns about its point (right, left or centred, stacked by lines) to stay
//   on the net, clear of the ring's numbers and of the other results' labels.
// - A pick outside the net is pulled onto the rim, so every pick has an orientation.
// - The lasso needs three points; with fewer, a release clears the selection even with Control.
// - The stress and shear drawing reads the model's hooks (getStressOverlay, stressValueNode,
//   slipDirection); this library never turns it on: a host's model subclass and panel do.

#include "QPolarPlotWidget.h"
#include "StereoNetGeometry.h"

#include <QColor>
#include <QPointF>
#include <QString>

#include <vector>

class QMouseEvent;

namespace rkBase {

class MatrixDataArray;

class QStereoPlotWidget : public QPolarPlotWidget
{
    Q_OBJECT
public:
    QStereoPlotWidget(QWidget* parent, const QString& title);

    // ---- virtual operations added, in their order ----
    virtual void drawNet(QPainter* painter);
    virtual void drawCursorInformation(QPainter* painter);
    virtual void drawFoldAxis(QPainter* painter);

    // ---- overridden ----
    void copyWEMFToClipboard() override;
    void drawChart(QPainter& painter) override;
    void redraw() override;
    QPointF transformInPixelPoint(const QPointF& data) override;

    // The next redraw may take the data points from the last one: the caller changed only what
    // lies under or over them (a net, labels, annotation, the mean orientations) or which kinds
    // of points show. What the points themselves depend on is still compared before any reuse.
    void reusePointLayersOnce() { m_reusePointLayers = true; }

    // ---- projection ----
    // Raster pixel of the pole of the plane (dip, dip azimuth).
    QPointF poleInPixel(const QPointF& orientation) const;
    // transformInPixelPoint over a block of points: poles have their sines and cosines taken
    // together, exactly as poleInPixel places them; lines go one point at a time. The walkers
    // use it; a chart derived from this one that places points otherwise clears m_pixelBlock.
    void polesInPixels(const QPointF* data, QPointF* pixels, int count);
    // Widget pixel of the line (plunge, azimuth).
    QPointF dipDirectionInPixel(const QPointF& orientation) const;
    // The plane whose pole lies at the widget pixel; see the rules above.
    bool generateDipAndDipAzimuth(const QPointF& pixel, double& dip, double& azimuth) const;
    // Bearing of a widget pixel from the centre, 0 to 360; 0 at the centre itself.
    double transformInAzimuth(const QPointF& pixel) const;
    // The sense ("N", "NE", ...) of a plane's dip, with its strike (right-hand rule) written to strike.
    static QString transformInStrikeDipConvention(double dipAzimuth, double& strike);
    // The compass octant of the dip direction of a plane of that strike; empty for NaN.
    static QString dipDirection(double strike);
    // Radius of a line plunging a degrees on the equal angle net: R at 0, 0 at 90.
    double equalAngleRadius(double a) const;
    // The same on the equal area net.
    double equalAreaRadius(double a) const;
    // Distance from the centre of the pole of a plane dipping a degrees, on the current net.
    double equalAngleCenterPoleDistance(double a) const;

    // ---- density grids ----
    // The net's placement as the model's counting reads it: gridRect, centre, radius, net and
    // zoom offsets as they stand now.
    StereoNetGeometry netGeometry() const;
    // Counts poles (poles) or dip directions into the model's grid, or into the given grid; rows
    // of -1 takes both sizes from the grid. Nothing without a model.
    void countingOutProjections(int rows, int columns, bool poles, bool biasCorrect);
    void countingOutProjections(int rows, int columns, MatrixDataArray* grid, bool poles, bool biasCorrect);
    // Rim nodes share their counts with the opposite node; with a painter only drawn (diagnostic).
    void calculateTheEdgeEffect(QPainter* painter, MatrixDataArray* grid);

    // ---- picking ----
    using QChartDrawingArea::setMousePickingPos;
    // The event's position, pulled onto the rim when it lies outside the net.
    void setMousePickingPos(QMouseEvent* event);
    QPointF pickedPixel() const { return m_pickedPixel; }
    double pickedDip() const { return m_pickedDip; }
    double pickedAzimuth() const { return m_pickedAzimuth; }
    const QPolygonF& selectionPolygon() const { return m_selectionPolygon; }

    // ---- what is shown ----
    void setShowPoles(bool on) { m_showPoles = on; }
    bool showPoles() const { return m_showPoles; }
    void setShowDipDirections(bool on) { m_showDipDirections = on; }
    bool showDipDirections() const { return m_showDipDirections; }
    void setShowLineation(bool on) { m_showLineation = on; }
    bool showLineation() const { return m_showLineation; }
    void setShowTraces(bool on) { m_showTraces = on; }
    bool showTraces() const { return m_showTraces; }
    void setPickPlaneMode(bool on) { m_pickPlaneMode = on; }
    bool pickPlaneMode() const { return m_pickPlaneMode; }
    void setShow10DegreeNet(bool on) { m_show10DegreeNet = on; }
    bool show10DegreeNet() const { return m_show10DegreeNet; }
    void setShow2DegreeNet(bool on) { m_show2DegreeNet = on; }
    bool show2DegreeNet() const { return m_show2DegreeNet; }
    void setSelectionMode(bool on) { m_selectionMode = on; }
    bool selectionMode() const { return m_selectionMode; }
    void setShowMeanResultantPole(bool on) { m_showMeanResultantPole = on; }
    void setShowMeanResultantAzimuth(bool on) { m_showMeanResultantAzimuth = on; }
    void setShowMeanPrincipalPole(bool on) { m_showMeanPrincipalPole = on; }
    void setShowMeanPrincipalAzimuth(bool on) { m_showMeanPrincipalAzimuth = on; }
    void setShowTPole(bool on) { m_showTPole = on; }
    void setShowLPole(bool on) { m_showLPole = on; }
    void setShowTAzimuth(bool on) { m_showTAzimuth = on; }
    void setShowLAzimuth(bool on) { m_showLAzimuth = on; }
    void setShowMeanPrincipalPlane(bool on) { m_showMeanPrincipalPlane = on; }
    void setShowMeanResultantPlane(bool on) { m_showMeanResultantPlane = on; }
    void setShowSuggestedSectionPlane(bool on) { m_showSuggestedSectionPlane = on; }
    void setShowBestFitPlane(bool on) { m_showBestFitPlane = on; }
    void setDipDipAzimuthConvention(bool on) { m_dipDipAzimuthConvention = on; }
    bool dipDipAzimuthConvention() const { return m_dipDipAzimuthConvention; }
    void setShowFoldAxis(bool on) { m_showFoldAxis = on; }
    bool showFoldAxis() const { return m_showFoldAxis; }
    void setFoldAxis(const QPointF& plungeAzimuth) { m_foldAxis = plungeAzimuth; }
    QPointF foldAxis() const { return m_foldAxis; }
    // Principal stresses as (plunge, azimuth).
    void setSigmaStressState(const QPointF& sigma1, const QPointF& sigma2, const QPointF& sigma3);
    QPointF sigma1() const { return m_sigma1; }
    QPointF sigma2() const { return m_sigma2; }
    QPointF sigma3() const { return m_sigma3; }
    // 0 "Lines", 1 "Poles/Planes".
    void setCursorInformationMode(int mode) { m_cursorInformationMode = mode; }
    int cursorInformationMode() const { return m_cursorInformationMode; }

    // ---- pens ----
    void setTraceWidth(int width) { m_traceWidth = width; }
    int traceWidth() const { return m_traceWidth; }
    void setMeanPrincipalPlaneWidth(int width) { m_meanPrincipalPlaneWidth = width; }
    void setMeanResultantPlaneWidth(int width) { m_meanResultantPlaneWidth = width; }
    void setSuggestedSectionPlaneWidth(int width) { m_suggestedSectionPlaneWidth = width; }
    void setBestFitPlaneWidth(int width) { m_bestFitPlaneWidth = width; }
    void setPoleColor(const QColor& c) { m_poleColor = c; }
    QColor poleColor() const { return m_poleColor; }
    void setDipDirectionColor(const QColor& c) { m_dipDirectionColor = c; }
    QColor dipDirectionColor() const { return m_dipDirectionColor; }
    void setLineationColor(const QColor& c) { m_lineationColor = c; }
    QColor lineationColor() const { return m_lineationColor; }
    void setPlaneColor(const QColor& c) { m_planeColor = c; }
    QColor planeColor() const { return m_planeColor; }
    void setMeanPrincipalPlaneColor(const QColor& c) { m_meanPrincipalPlaneColor = c; }
    void setMeanResultantPlaneColor(const QColor& c) { m_meanResultantPlaneColor = c; }
    void setSuggestedSectionPlaneColor(const QColor& c) { m_suggestedSectionPlaneColor = c; }
    void setBestFitPlaneColor(const QColor& c) { m_bestFitPlaneColor = c; }
    void setMeanPrincipalPoleColor(const QColor& c) { m_meanPrincipalPoleColor = c; }
    void setMeanResultantPoleColor(const QColor& c) { m_meanResultantPoleColor = c; }
    void setTPoleColor(const QColor& c) { m_tPoleColor = c; }
    void setLPoleColor(const QColor& c) { m_lPoleColor = c; }
    void setMeanPrincipalAzimuthColor(const QColor& c) { m_meanPrincipalAzimuthColor = c; }
    void setMeanResultantAzimuthColor(const QColor& c) { m_meanResultantAzimuthColor = c; }
    void setTAzimuthColor(const QColor& c) { m_tAzimuthColor = c; }
    void setLAzimuthColor(const QColor& c) { m_lAzimuthColor = c; }

    // ---- data ----
    // 0: the data are planes (poles); 1: lines (dip directions).
    void setPointKind(int kind) { m_pointKind = kind; }
    int pointKind() const { return m_pointKind; }
    // Result points beyond this dip are left out; -1.0 is no limit.
    void setMaxPlotAngle(double angle) { m_maxPlotAngle = angle; }
    double maxPlotAngle() const { return m_maxPlotAngle; }
    // Stored for the panel; nothing here draws from it.
    void setAverageOrientation(double value, bool first, bool second);
    double averageOrientation() const { return m_averageOrientation; }
    // The second point set, drawn as lines; not owned.
    void setLineationModel(QRelationshipItemModel* model) { m_lineationModel = model; }
    QRelationshipItemModel* lineationModel() const { return m_lineationModel; }

    // ---- stress and shear hooks ----
    void setCursorPosFromMohrPlot(const std::vector<double>& dips, const std::vector<double>& azimuths);
    void resetCursorPosFromMohrPlot();
    void setMinMechStabilityOrientation(const std::vector<double>& dips, const std::vector<double>& azimuths);
    bool moveStressField() const { return m_moveStressField; }
    void setMoveStressField(bool on) { m_moveStressField = on; }
    bool showMaxShearTractionField() const { return m_showMaxShearTractionField; }
    void setShowMaxShearTractionField(bool on) { m_showMaxShearTractionField = on; }
    bool showMinShearTractionField() const { return m_showMinShearTractionField; }
    void setShowMinShearTractionField(bool on) { m_showMinShearTractionField = on; }
    bool showMaxShearTractionForData() const { return m_showMaxShearTractionForData; }
    void setShowMaxShearTractionForData(bool on) { m_showMaxShearTractionForData = on; }
    // Samples the model's getStressOverlay over gridRect into the model's stress grid (or the
    // given grid): nx by ny nodes, or the grid's own size when nx is -1. Fewer than two nodes
    // along either side, or an empty gridRect, leave the grid alone.
    void createStressField(int nx, int ny);
    void createStressField(int nx, int ny, MatrixDataArray* grid);

    // ---- single orientations and traces ----
    void drawCyclographicTrace(QPainter* painter, double dip, double azimuth, bool closed);
    void drawEqualAngleCyclographicTrace(QPainter* painter, double dip, double azimuth, bool closed);
    void drawEqualAreaCyclographicTrace(QPainter* painter, double dip, double azimuth, bool closed);
    void drawOneSmallCircle(QPainter* painter, double a, bool fill);
    void drawOneEqualAngleSmallCircle(QPainter* painter, double a, bool fill);
    void drawOneEqualAreaSmallCircle(QPainter* painter, double a, bool side, bool fill);
    void drawGreatCircleFrame(QPainter* painter, int first, int n);
    void drawEqualAngleGreatCircleFrame(QPainter* painter, int first, int n);
    void drawEqualAreaGreatCircleFrame(QPainter* painter, int first, int n);
    void drawSmallCircleFrame(QPainter* painter, int first, int n);
    void drawPole(QPainter* painter, double dip, double azimuth, const QColor& colour);
    void drawDipDirection(QPainter* painter, double dip, double azimuth, const QColor& colour);
    void drawDipDirection(QPainter* painter, double dip, double azimuth, const QColor& colour, int id, bool selected);
    void drawDipDirectionAsBigCircle(QPainter* painter, double dip, double azimuth, const QColor& colour);
    // Sets the painter's transformation to the rotation by a + 270 degrees about the centre.
    void dipAzimuthRotation(QPainter* painter, double a);
    // The half ellipse of width 2R and height 2r about the centre, from -90 to +90 degrees.
    void drawArc(QPainter* painter, const QPointF& centre, double r);

signals:
    void clearSelection();
    void mousePress(const QPointF& pixel);
    void mouseRelease(const QPointF& pixel);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

    void drawCyclographicTraces(QPainter* painter, int width);
    void drawMeanOrientation(QPainter* painter);
    void drawPoleCentroids(QPainter* painter);
    void drawAzimuthCentroids(QPainter* painter);
    void drawMaxShearTractionField(QPainter* painter);
    void drawSlipDirectionsForData(QPainter* painter);
    void drawSlipDirectionConstruction(QPainter* painter, double dip, double azimuth);
    void drawSigmaStressStateOrientation(QPainter* painter);
    // Result labels stay on the net, where they hide neither the ring's numbers nor each other:
    // the box turns about its point to the first side that keeps it inside the primitive circle
    // and clear of the labels already placed in this drawing of the results.
    QRectF placeLabelBox(const QRectF& box, const QPointF& anchor) override;

    // Net radius of a line plunging a degrees on the current net.
    double netRadius(double a) const;
    // Raster pixel of a line (dipDirectionInPixel + o).
    QPointF linePixel(double plunge, double azimuth) const;
    // Traces, poles, dip directions and lineation through the point walkers, as the chart order
    // has them; the stress field's drag leaves the dip directions out.
    void drawDataPoints(QPainter* painter, bool withDipDirections = true);
    // drawDataPoints for the raster, a kind of points at a time through a layer of its own that
    // the next redraw can take again (reusePointLayersOnce).
    void drawDataPointLayers(QPainter* painter);
    quint64 pointLayerKey() const;

    // Label boxes of the results placed since drawMeanOrientation began.
    std::vector<QRectF> m_placedLabels;
    bool m_placingResults = false;

    // The kinds of points of the raster, each on a transparent window of the raster's size, in
    // drawing order (traces, poles, dip directions, lineation); a null image is not drawn yet.
    enum PointLayer { TraceLayer, PoleLayer, DipDirectionLayer, LineationLayer, PointLayerCount };
    QImage m_pointLayers[PointLayerCount];
    quint64 m_pointLayerKey = 0;
    bool m_reusePointLayers = false;

    // ---- fields, in their order ----
    bool m_showPoles = true;
    bool m_showDipDirections = false;
    bool m_showLineation = true;
    bool m_showTraces = false;
    bool m_pickPlaneMode = false;
    bool m_show10DegreeNet = true;
    bool m_show2DegreeNet = false;
    bool m_selectionMode = true;
    bool m_showMeanResultantPole = false;
    bool m_showMeanResultantAzimuth = false;
    bool m_showMeanPrincipalPole = false;
    bool m_showMeanPrincipalAzimuth = false;
    bool m_showTPole = false;
    bool m_showLPole = false;
    bool m_showTAzimuth = false;
    bool m_showLAzimuth = false;
    bool m_showMeanPrincipalPlane = false;
    bool m_showMeanResultantPlane = false;
    bool m_showSuggestedSectionPlane = false;
    bool m_showBestFitPlane = false;
    bool m_dipDipAzimuthConvention = true;
    bool m_showFoldAxis = false;
    QPointF m_foldAxis{0.0, 0.0};
    QPointF m_sigma1{90.0, 0.0};
    QPointF m_sigma2{0.0, 0.0};
    QPointF m_sigma3{0.0, 90.0};
    int m_cursorInformationMode = 0;
    int m_traceWidth = 1;
    int m_meanPrincipalPlaneWidth = 1;
    int m_meanResultantPlaneWidth = 1;
    int m_suggestedSectionPlaneWidth = 1;
    int m_bestFitPlaneWidth = 1;
    QColor m_poleColor{Qt::black};
    QColor m_dipDirectionColor{Qt::blue};
    QColor m_lineationColor{Qt::darkMagenta};
    QColor m_planeColor;
    QColor m_meanPrincipalPlaneColor;
    QColor m_meanResultantPlaneColor;
    QColor m_suggestedSectionPlaneColor;
    QColor m_bestFitPlaneColor;
    QColor m_meanPrincipalPoleColor;
    QColor m_meanResultantPoleColor;
    QColor m_tPoleColor;
    QColor m_lPoleColor;
    QColor m_meanPrincipalAzimuthColor;
    QColor m_meanResultantAzimuthColor;
    QColor m_tAzimuthColor;
    QColor m_lAzimuthColor;
    int m_pointKind = 0;
    double m_maxPlotAngle = -1.0;
    double m_averageOrientation = 0.0;
    bool m_averageOrientationFirst = false;
    bool m_averageOrientationSecond = false;
    std::vector<double> m_mohrCursorDips;
    std::vector<double> m_mohrCursorAzimuths;
    std::vector<double> m_minMechStabilityDips;
    std::vector<double> m_minMechStabilityAzimuths;
    bool m_moveStressField = false;
    bool m_showMaxShearTractionField = false;
    bool m_showMinShearTractionField = false;
    bool m_showMaxShearTractionForData = false;
    QPointF m_pickedPixel{99999.0, 0.0};
    double m_pickedDip = 0.0;
    double m_pickedAzimuth = 0.0;
    QRelationshipItemModel* m_lineationModel = nullptr;
};

} // namespace rkBase

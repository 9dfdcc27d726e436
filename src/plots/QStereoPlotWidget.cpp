#include "QStereoPlotWidget.h"

#include "EMFDevice.h"
#include "FastTrig.h"
#include "MatrixDataArray.h"
#include "UnitManager.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <limits>
#include <cmath>

namespace rkBase {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDeg = kPi / 180.0;
constexpr double kSqrt2 = 1.41421356237309504880;
constexpr double kNoValue = 99999.0;
// Below this a dip counts as 0 (horizontal plane) or as 90 (vertical plane).
constexpr double kFlat = 0.005;
const QColor kSelectedColour(255, 255, 0, 255);

inline bool finite(const QPointF& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }

QPen netPen(const QColor& colour, double width)
{
    return QPen(QBrush(colour), width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
}

// A direction on the raster: screen angle t in degrees (0 east, 90 south).
QPointF screenDirection(double t)
{
    double s, c;
    FastTrig::sinCos(t * kDeg, s, c);
    return QPointF(c, s);
}

} // namespace

QStereoPlotWidget::QStereoPlotWidget(QWidget* parent, const QString& title) : QPolarPlotWidget(parent, title)
{
    setMouseTracking(true);
    m_mouseZoomEnabled = true;
    m_showModifyAction = true;
    m_showPointCount = true;
    m_pixelBlock = [this](const QPointF* data, QPointF* pixels, int count) { polesInPixels(data, pixels, count); };
}

// ---- projection ----

double QStereoPlotWidget::equalAngleRadius(double a) const { return std::tan(kPi / 4.0 - a * kDeg / 2.0) * m_radius; }

double QStereoPlotWidget::equalAreaRadius(double a) const
{
    return std::sin(kPi / 4.0 - a * kDeg / 2.0) * kSqrt2 * m_radius;
}

double QStereoPlotWidget::equalAngleCenterPoleDistance(double a) const
{
    if (m_equalArea) {
        double s, c;
        FastTrig::sinCos(a * kDeg / 2.0, s, c);
        return s * kSqrt2 * m_radius;
    }
    return std::tan(a * kDeg / 2.0) * m_radius;
}

double QStereoPlotWidget::netRadius(double a) const { return m_equalArea ? equalAreaRadius(a) : equalAngleRadius(a); }

// Both placements are the rotation by azimuth + 270 degrees about c of a point on the east-west
// line through c, written out: the pole starts west of c, the line east of it.
QPointF QStereoPlotWidget::poleInPixel(const QPointF& orientation) const
{
    const double d = equalAngleCenterPoleDistance(orientation.x());
    double s, c;
    FastTrig::sinCos(orientation.y() * kDeg, s, c);
    return QPointF(m_centre.x() - d * s, m_centre.y() + d * c);
}

void QStereoPlotWidget::polesInPixels(const QPointF* data, QPointF* pixels, int count)
{
    if (m_pointKind != 0) {
        for (int i = 0; i < count; ++i)
            pixels[i] = transformInPixelPoint(data[i]);
        return;
    }
    // The expressions of poleInPixel and equalAngleCenterPoleDistance, so that each pixel comes
    // out as poleInPixel gives it, bit for bit.
    constexpr int kChunk = 256;
    double half[kChunk], halfSin[kChunk], halfCos[kChunk];
    double azimuth[kChunk], azimuthSin[kChunk], azimuthCos[kChunk];
    const double cx = m_centre.x();
    const double cy = m_centre.y();
    for (int first = 0; first < count; first += kChunk) {
        const int n = std::min(kChunk, count - first);
        const QPointF* in = data + first;
        for (int j = 0; j < n; ++j) {
            half[j] = in[j].x() * kDeg / 2.0;
            azimuth[j] = in[j].y() * kDeg;
        }
        FastTrig::sinCosArray(azimuth, azimuthSin, azimuthCos, n);
        if (m_equalArea) {
            FastTrig::sinCosArray(half, halfSin, halfCos, n);
            for (int j = 0; j < n; ++j)
                half[j] = halfSin[j] * kSqrt2 * m_radius;
        } else {
            for (int j = 0; j < n; ++j)
                half[j] = std::tan(half[j]) * m_radius;
        }
        for (int j = 0; j < n; ++j)
            pixels[first + j] = QPointF(cx - half[j] * azimuthSin[j], cy + half[j] * azimuthCos[j]);
    }
}

QPointF QStereoPlotWidget::dipDirectionInPixel(const QPointF& orientation) const
{
    return linePixel(orientation.x(), orientation.y()) - QPointF(m_xOffsetPixels, m_yOffsetPixels);
}

QPointF QStereoPlotWidget::linePixel(double plunge, double azimuth) const
{
    const double r = netRadius(plunge);
    double s, c;
    FastTrig::sinCos(azimuth * kDeg, s, c);
    return QPointF(m_centre.x() + r * s, m_centre.y() - r * c);
}

QPointF QStereoPlotWidget::transformInPixelPoint(const QPointF& data)
{
    if (m_pointKind == 0)
        return poleInPixel(data);
    if (m_pointKind == 1)
        return linePixel(data.x(), data.y());
    return QPointF(0.0, 0.0);
}

bool QStereoPlotWidget::generateDipAndDipAzimuth(const QPointF& pixel, double& dip, double& azimuth) const
{
    dip = 0.0;
    azimuth = 0.0;
    if (m_radius <= 0 || !finite(pixel))
        return false;
    const double R = m_radius;
    const QPointF q = pixel + QPointF(m_xOffsetPixels, m_yOffsetPixels);
    const QPointF v = QPointF(m_centre) - q;
    const double length = std::hypot(v.x(), v.y());
    double s = length;
    if (std::abs(s - R) < 5e-05)
        s = R;
    if (s > R)
        return false;
    const double angle = m_equalArea ? 2.0 * std::asin(std::min(1.0, s / (kSqrt2 * R))) : 2.0 * std::atan(s / R);
    dip = angle / kDeg;
    if (dip < 5e-09) {
        dip = 0.0;
        return true;
    }
    // The ray from the pick to the centre turned a quarter turn, against north (up): the angle
    // between them is the dip azimuth less 90.
    const double ax = v.y() * R / length;
    const double ay = -v.x() * R / length;
    const double nx = R * std::cos(-kPi / 2.0);
    const double ny = R * std::sin(-kPi / 2.0);
    const double cosine = (ax * nx + ay * ny) / (std::hypot(ax, ay) * std::hypot(nx, ny));
    azimuth = std::acos(std::clamp(cosine, -1.0, 1.0)) / kDeg;
    if (ax < nx)
        azimuth = 360.0 - azimuth;
    azimuth += 90.0;
    if (azimuth > 360.0)
        azimuth -= 360.0;
    return true;
}

double QStereoPlotWidget::transformInAzimuth(const QPointF& pixel) const
{
    const QPointF v = pixel + QPointF(m_xOffsetPixels, m_yOffsetPixels) - QPointF(m_centre);
    const double length = std::hypot(v.x(), v.y());
    if (!(length >= 5e-09))
        return 0.0;
    // Angle between the rim point along v and the top of the rim.
    const double a = std::acos(std::clamp(-v.y() / length, -1.0, 1.0)) / kDeg;
    return v.x() < 0.0 ? 360.0 - a : a;
}

QString QStereoPlotWidget::dipDirection(double strike)
{
    double a = strike + 90.0;
    if (a > 360.0)
        a -= 360.0;
    if (a >= 337.5 || a <= 22.5)
        return tr("N");
    if (a <= 67.5)
        return tr("NE");
    if (a <= 112.5)
        return tr("E");
    if (a <= 157.5)
        return tr("SE");
    if (a <= 202.5)
        return tr("S");
    if (a <= 247.5)
        return tr("SW");
    if (a <= 292.5)
        return tr("W");
    if (a <= 337.5)
        return tr("NW");
    return QString();
}

QString QStereoPlotWidget::transformInStrikeDipConvention(double dipAzimuth, double& strike)
{
    const double t = 90.0 - dipAzimuth;
    strike = t < 0.0 ? -t : 360.0 - t;
    return dipDirection(strike);
}

void QStereoPlotWidget::setMousePickingPos(QMouseEvent* event)
{
    m_mousePickingPos = event->localPos();
    const QPointF offset(m_xOffsetPixels, m_yOffsetPixels);
    const QPointF v = m_mousePickingPos + offset - QPointF(m_centre);
    const double length = std::hypot(v.x(), v.y());
    if (length > m_radius)
        m_mousePickingPos = v / length * m_radius + QPointF(m_centre) - offset;
}

// ---- density grids ----

StereoNetGeometry QStereoPlotWidget::netGeometry() const
{
    StereoNetGeometry net;
    net.gridRect = m_gridRect;
    net.centre = QPointF(m_centre);
    net.radius = m_radius;
    net.equalArea = m_equalArea;
    net.offset = QPointF(m_xOffsetPixels, m_yOffsetPixels);
    return net;
}

void QStereoPlotWidget::countingOutProjections(int rows, int columns, bool poles, bool biasCorrect)
{
    if (m_model)
        countingOutProjections(rows, columns, poles ? m_model->contourGridPoles() : m_model->contourGridDipDir(), poles,
                               biasCorrect);
}

void QStereoPlotWidget::countingOutProjections(int rows, int columns, MatrixDataArray* grid, bool poles,
                                               bool biasCorrect)
{
    if (!m_model || !grid)
        return;
    // Bias weights belong to the grid count; the Kamb methods count every point once.
    if (m_densityMethod == DensityMethod::FourCorner)
        m_model->countingOutProjections(rows, columns, grid, poles, biasCorrect, netGeometry());
    else
        m_model->densityOnSphere(rows, columns, grid, poles, m_densityMethod, netGeometry());
}

void QStereoPlotWidget::calculateTheEdgeEffect(QPainter* painter, MatrixDataArray* grid)
{
    if (m_model && grid)
        m_model->calculateTheEdgeEffect(painter, grid, netGeometry());
}

// ---- settings ----

void QStereoPlotWidget::setSigmaStressState(const QPointF& sigma1, const QPointF& sigma2, const QPointF& sigma3)
{
    m_sigma1 = sigma1;
    m_sigma2 = sigma2;
    m_sigma3 = sigma3;
}

void QStereoPlotWidget::setAverageOrientation(double value, bool first, bool second)
{
    m_averageOrientation = value;
    m_averageOrientationFirst = first;
    m_averageOrientationSecond = second;
}

void QStereoPlotWidget::setCursorPosFromMohrPlot(const std::vector<double>& dips, const std::vector<double>& azimuths)
{
    m_mohrCursorDips = dips;
    m_mohrCursorAzimuths = azimuths;
}

void QStereoPlotWidget::resetCursorPosFromMohrPlot()
{
    m_mohrCursorDips.clear();
    m_mohrCursorAzimuths.clear();
}

void QStereoPlotWidget::setMinMechStabilityOrientation(const std::vector<double>& dips,
                                                       const std::vector<double>& azimuths)
{
    m_minMechStabilityDips = dips;
    m_minMechStabilityAzimuths = azimuths;
}

// ---- traces and circles ----

void QStereoPlotWidget::dipAzimuthRotation(QPainter* painter, double a) { rotation(painter, a + 270.0); }

void QStereoPlotWidget::drawArc(QPainter* painter, const QPointF& centre, double r)
{
    painter->drawArc(QRectF(centre.x() - m_radius, centre.y() - r, 2.0 * m_radius, 2.0 * r), -90 * 16, 180 * 16);
}

void QStereoPlotWidget::drawCyclographicTrace(QPainter* painter, double dip, double azimuth, bool closed)
{
    if (m_equalArea)
        drawEqualAreaCyclographicTrace(painter, dip, azimuth, closed);
    else
        drawEqualAngleCyclographicTrace(painter, dip, azimuth, closed);
}

void QStereoPlotWidget::drawEqualAngleCyclographicTrace(QPainter* painter, double dip, double azimuth, bool closed)
{
    if (!std::isfinite(dip) || !std::isfinite(azimuth))
        return;
    if (std::abs(dip) < kFlat) {
        painter->setBrush(Qt::NoBrush);
        drawCircle(painter, m_radius - 1);
        return;
    }
    const QPointF c(m_centre);
    const QPointF p1 = c + m_radius * screenDirection(azimuth - 180.0);
    const QPointF p2 = c + m_radius * screenDirection(azimuth);
    if (std::abs(90.0 - dip) < kFlat) {
        painter->drawLine(QLineF(p1, p2));
    } else {
        const QPointF mid = c + equalAngleRadius(dip) * screenDirection(azimuth - 90.0);
        drawSector(mid, p1, p2, painter, false);
    }
    if (closed) {
        painter->setPen(QPen(QBrush(m_labelColor), 1.0));
        painter->drawLine(QLineF(c, QPointF(c.x(), c.y() - m_radius)));
        painter->drawLine(QLineF(c, QPointF(c.x(), c.y() + m_radius)));
    }
}

void QStereoPlotWidget::drawEqualAreaCyclographicTrace(QPainter* painter, double dip, double azimuth, bool)
{
    if (!std::isfinite(dip) || !std::isfinite(azimuth))
        return;
    if (std::abs(dip) < kFlat) {
        painter->setBrush(Qt::NoBrush);
        drawCircle(painter, m_radius - 1);
        return;
    }
    if (std::abs(90.0 - dip) < kFlat) {
        const QPointF c(m_centre);
        painter->drawLine(QLineF(c + m_radius * screenDirection(azimuth - 180.0), c + m_radius * screenDirection(azimuth)));
        return;
    }
    // The lines of the plane at every 5 degrees of pitch, from one strike end to the other. Each
    // step adds both of its ends.
    QPolygonF trace;
    trace.reserve(72);
    double plunge, lineAzimuth;
    MatrixData::plungeAndAzimuth(plunge, lineAzimuth, dip, azimuth, 0.0);
    QPointF previous = linePixel(plunge, lineAzimuth);
    for (int pitch = 5; pitch <= 180; pitch += 5) {
        MatrixData::plungeAndAzimuth(plunge, lineAzimuth, dip, azimuth, pitch);
        const QPointF next = linePixel(plunge, lineAzimuth);
        trace << previous << next;
        previous = next;
    }
    painter->drawPolyline(trace);
}

void QStereoPlotWidget::drawOneSmallCircle(QPainter* painter, double a, bool fill)
{
    if (m_equalArea) {
        drawOneEqualAreaSmallCircle(painter, a, true, fill);
        drawOneEqualAreaSmallCircle(painter, a, false, fill);
    } else {
        drawOneEqualAngleSmallCircle(painter, a, fill);
    }
}

void QStereoPlotWidget::drawOneEqualAngleSmallCircle(QPainter* painter, double a, bool fill)
{
    if (!std::isfinite(a))
        return;
    // The circle about the east-west axis, turned onto the north and the south pole in turn.
    const QPointF c(m_centre);
    const QPointF mid(c.x() + equalAngleRadius(a), c.y());
    const QPointF b = c + m_radius * screenDirection(a);
    const QPointF e = c + m_radius * screenDirection(-a);
    const QTransform keep = painter->transform();
    for (const double turn : {90.0, -90.0}) {
        rotation(painter, turn);
        painter->setTransform(painter->transform() * keep);
        drawSector(mid, b, e, painter, fill);
    }
    painter->setTransform(keep);
}

void QStereoPlotWidget::drawOneEqualAreaSmallCircle(QPainter* painter, double a, bool side, bool fill)
{
    if (!std::isfinite(a))
        return;
    // The lines at a degrees from the pole lie in every plane through the north-south axis: walk
    // the planes dipping east and then those dipping west.
    const double pitch = side ? a : 180.0 - a;
    QPolygonF circle;
    circle.reserve(20);
    double plunge, azimuth;
    for (int dip = 0; dip <= 90; dip += 10) {
        MatrixData::plungeAndAzimuth(plunge, azimuth, dip, 90.0, pitch);
        circle << linePixel(plunge, azimuth);
    }
    for (int dip = 90; dip >= 0; dip -= 10) {
        MatrixData::plungeAndAzimuth(plunge, azimuth, dip, 270.0, 180.0 - pitch);
        circle << linePixel(plunge, azimuth);
    }
    if (!fill) {
        painter->drawPolyline(circle);
        return;
    }
    painter->drawPolygon(circle, Qt::OddEvenFill);
    // The polygon closes along the chord between its rim ends; its mirror image over that chord
    // covers the sliver between the chord and the rim.
    const QPointF m = (circle.first() + circle.last()) / 2.0;
    QTransform mirror;
    mirror.translate(m.x(), m.y());
    mirror.rotate(180.0);
    mirror.translate(-m.x(), -m.y());
    painter->drawPolygon(mirror.map(circle), Qt::OddEvenFill);
}

void QStereoPlotWidget::drawGreatCircleFrame(QPainter* painter, int first, int n)
{
    if (m_equalArea)
        drawEqualAreaGreatCircleFrame(painter, first, n);
    else
        drawEqualAngleGreatCircleFrame(painter, first, n);
}

void QStereoPlotWidget::drawEqualAngleGreatCircleFrame(QPainter* painter, int first, int n)
{
    const QPointF c(m_centre);
    const QPointF north(c.x(), c.y() - m_radius);
    const QPointF south(c.x(), c.y() + m_radius);
    for (int i = first; i < n; ++i) {
        const int r = static_cast<int>(std::tan(kPi / 4.0 - i * (90.0 / n) * kDeg / 2.0) * m_radius);
        drawSector(QPointF(c.x() - r, c.y()), north, south, painter, false);
        drawSector(QPointF(c.x() + r, c.y()), north, south, painter, false);
    }
}

void QStereoPlotWidget::drawEqualAreaGreatCircleFrame(QPainter* painter, int first, int n)
{
    for (int i = first; i < n; ++i) {
        const double dip = i * 90.0 / n;
        drawEqualAreaCyclographicTrace(painter, dip, 90.0, false);
        drawEqualAreaCyclographicTrace(painter, dip, 270.0, false);
    }
}

void QStereoPlotWidget::drawSmallCircleFrame(QPainter* painter, int first, int n)
{
    for (int i = first; i < n; ++i)
        drawOneSmallCircle(painter, i * 90.0 / n, false);
}

void QStereoPlotWidget::drawNet(QPainter* painter)
{
    painter->setBrush(Qt::NoBrush);
    const QPen gridPen = netPen(m_gridColor, 1.5);
    if (m_show2DegreeNet) {
        painter->setPen(gridPen);
        painter->setOpacity(0.3);
        drawGreatCircleFrame(painter, 1, 45);
        // The great circles crowd together near the poles: blank the caps there.
        painter->setBrush(m_backgroundColor);
        painter->setPen(QPen(m_backgroundColor));
        painter->setOpacity(1.0);
        drawOneSmallCircle(painter, m_equalArea ? 20.0 : 10.0, true);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(gridPen);
        painter->setOpacity(0.3);
        drawSmallCircleFrame(painter, 1, 45);
    }
    const QPen tenPen = netPen(m_show2DegreeNet ? m_labelColor : m_gridColor, 1.5);
    if (m_show10DegreeNet) {
        painter->setPen(tenPen);
        painter->setOpacity(0.3);
        drawGreatCircleFrame(painter, 1, 9);
        drawSmallCircleFrame(painter, 1, 9);
        painter->setBrush(m_backgroundColor);
        painter->setPen(QPen(m_backgroundColor));
        painter->setOpacity(1.0);
        drawOneSmallCircle(painter, 2.0, true);
        painter->setPen(QPen(QBrush(m_labelColor), 0.0));
        drawOneSmallCircle(painter, 2.0, false);
        painter->setBrush(Qt::NoBrush);
    }
    if (m_show10DegreeNet || m_show2DegreeNet) {
        // The diameters take the 10-degree pen even when only the 2-degree net is on.
        painter->setPen(tenPen);
        painter->setOpacity(0.3);
        const QPointF c(m_centre);
        painter->drawLine(QLineF(c.x() - m_radius, c.y(), c.x() + m_radius, c.y()));
        painter->drawLine(QLineF(c.x(), c.y() - m_radius, c.x(), c.y() + m_radius));
    }
    painter->setPen(netPen(Qt::darkGreen, 3.0));
    painter->setOpacity(1.0);
    drawCross(QPointF(m_centre), 4, painter);
}

// ---- the chart ----

void QStereoPlotWidget::redraw()
{
    if (m_chartPixmap.isNull() && width() == 0)
        return;
    QPolarPlotWidget::redraw();
    if (palette().color(QPalette::Window) != m_backgroundColor) {
        QPalette p = palette();
        p.setColor(QPalette::Window, m_backgroundColor);
        setPalette(p);
    }
    QPainter painter;
    beginRasterPainter(painter, m_chartPixmap);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    drawFrame(&painter, 1);
    painter.setClipRegion(m_clipRegion);
    if (m_model && m_model->filledStressFieldIsOn() && m_model->showStressState())
        drawContour(&painter, m_model->contourGridStressForStereoPlot(), m_model->minStressOverlayValue(),
                    m_model->maxStressOverlayValue(), false, 2.0);
    drawNet(&painter);
    drawContour(&painter);
    painter.setPen(QPen(QBrush(m_labelColor), 0.0));
    painter.setBrush(Qt::NoBrush);
    drawCircle(&painter, m_radius);
    drawContourLabels(&painter);
    // With a plot limit the clip stays on, so that nothing shows beyond the ring.
    if (m_maxPlotAngle == -1.0)
        painter.setClipping(false);
    if (m_model) {
        drawDataPointLayers(&painter);
        if (m_showMaxShearTractionForData)
            drawSlipDirectionsForData(&painter);
    }
    painter.setClipping(false);
    if (m_model) {
        drawMeanOrientation(&painter);
        if (m_clusterPoleCentroidsOn)
            drawPoleCentroids(&painter);
        if (m_clusterAzimuthCentroidsOn)
            drawAzimuthCentroids(&painter);
    }
    if (m_showFoldAxis)
        drawFoldAxis(&painter);
    if (m_model) {
        if (m_showMaxShearTractionField || m_showMinShearTractionField)
            drawMaxShearTractionField(&painter);
        if (m_model->showStressState())
            drawSigmaStressStateOrientation(&painter);
    }
}

void QStereoPlotWidget::drawDataPoints(QPainter* painter, bool withDipDirections)
{
    if (m_showTraces)
        drawCyclographicTraces(painter, m_traceWidth);
    if (m_showPoles) {
        m_pointKind = 0;
        m_pointFillColor = m_poleColor;
        setPointPen(painter);
        drawPoints(painter);
    }
    if (m_showDipDirections && withDipDirections) {
        m_pointKind = 1;
        m_pointFillColor = m_dipDirectionColor;
        setPointPen(painter);
        drawPoints(painter);
    }
    if (m_showLineation && m_lineationModel) {
        m_pointKind = 1;
        m_pointFillColor = m_lineationColor;
        QRelationshipItemModel* const keep = m_model;
        m_model = m_lineationModel;
        setPointPen(painter);
        drawPoints(painter);
        m_model = keep;
    }
}

void QStereoPlotWidget::drawChart(QPainter& painter)
{
    const int keepKind = m_pointKind;
    const QColor keepFill = m_pointFillColor;
    QRelationshipItemModel* const keepModel = m_model;
    QPainterPath disc;
    disc.addEllipse(QPointF(m_centre), m_radius + 2.0, m_radius + 2.0);
    painter.save();
    // The blanked polar caps reach past the rim; keep them off the ticks.
    if (!painter.hasClipping())
        painter.setClipPath(disc);
    drawNet(&painter);
    painter.restore();
    painter.save();
    painter.setClipPath(disc, painter.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    drawContour(&painter);
    if (m_model)
        drawDataPoints(&painter);
    painter.restore();
    m_model = keepModel;
    drawContourLabels(&painter);
    if (m_model) {
        drawMeanOrientation(&painter);
        if (m_clusterPoleCentroidsOn)
            drawPoleCentroids(&painter);
        if (m_clusterAzimuthCentroidsOn)
            drawAzimuthCentroids(&painter);
    }
    if (m_showFoldAxis)
        drawFoldAxis(&painter);
    if (m_model && m_model->showStressState())
        drawSigmaStressStateOrientation(&painter);
    m_pointKind = keepKind;
    m_pointFillColor = keepFill;
    m_model = keepModel;
}

void QStereoPlotWidget::copyWEMFToClipboard()
{
    const bool wasPainting = m_paintingToWEMF;
    m_paintingToWEMF = true;
    QByteArray bytes;
    {
        EMFDevice device{QString()};
        device.observeTransform(true);
        QPainter painter(&device);
        painter.setRenderHint(QPainter::HighQualityAntialiasing);
        // The engine starts with a white brush the painter does not know about.
        painter.setBrush(Qt::white);
        painter.setBrush(Qt::NoBrush);
        painter.save();
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_backgroundColor);
        painter.drawRect(pixmapRect());
        painter.restore();
        drawFrame(&painter, 1);
        painter.save();
        QPainterPath disc;
        disc.addEllipse(QPointF(m_centre), m_radius - 3, m_radius - 3);
        painter.setClipPath(disc);
        if (m_model && m_model->filledStressFieldIsOn() && m_model->showStressState())
            drawContour(&painter, m_model->contourGridStressForStereoPlot(), m_model->minStressOverlayValue(),
                        m_model->maxStressOverlayValue(), true, 2.0);
        painter.restore();
        drawChart(painter);
        painter.end();
        bytes = device.bytes();
    }
    m_paintingToWEMF = wasPainting;
    setMetafileOnClipboard(bytes, visibleChartImage());
}

void QStereoPlotWidget::drawCyclographicTraces(QPainter* painter, int width)
{
    if (!m_model)
        return;
    QPen pen = netPen(m_planeColor, width);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    const auto type = m_model->displayType();
    const int rows = m_model->rowCount();
    auto trace = [&](int row) {
        const QVariant v = m_model->data(m_model->index(row, 0));
        if (!v.isValid())
            return;
        const QPointF p = v.toPointF();
        drawCyclographicTrace(painter, p.x(), p.y(), false);
    };
    if (type != QRelationshipItemModel::ShowSelectedOnly)
        for (int row = 0; row < rows; ++row)
            if (type == QRelationshipItemModel::ShowAll || !m_model->isSelected(row))
                trace(row);
    if (type != QRelationshipItemModel::ShowAll && m_model->partSelection()) {
        if (type == QRelationshipItemModel::HighlightSelected) {
            pen.setColor(Qt::yellow);
            painter->setPen(pen);
        }
        for (int row = 0; row < rows; ++row)
            if (m_model->isSelected(row))
                trace(row);
    }
}

QRectF QStereoPlotWidget::placeLabelBox(const QRectF& box, const QPointF& anchor)
{
    // Candidates: the box as drawn, mirrored to the left of its point and centred over it, each
    // also moved up or down by whole lines, first towards the centre, so that labels of one point
    // stack.
    const QPointF c(m_centre);
    const double r = m_radius;
    const QRectF left(2.0 * anchor.x() - box.right(), box.top(), box.width(), box.height());
    const QRectF centred(anchor.x() - box.width() / 2.0, box.top(), box.width(), box.height());
    const double towardsCentre = anchor.y() > c.y() ? -1.0 : 1.0;
    std::vector<QRectF> candidates;
    for (int k = 0; k <= 3; ++k) {
        for (const double sense : {towardsCentre, -towardsCentre}) {
            const double dy = sense * k * box.height();
            candidates.push_back(box.translated(0.0, dy));
            candidates.push_back(left.translated(0.0, dy));
            candidates.push_back(centred.translated(0.0, dy));
            if (k == 0)
                break;
        }
    }
    auto beyondRim = [&](const QRectF& b) {
        double worst = 0.0;
        for (const QPointF& p : {b.topLeft(), b.topRight(), b.bottomLeft(), b.bottomRight()})
            worst = std::max(worst, std::hypot(p.x() - c.x(), p.y() - c.y()) - r);
        return worst;
    };
    auto overlaps = [&](const QRectF& b) {
        // Boxes that only touch (up to rounding) do not hide each other.
        int n = 0;
        for (const QRectF& placed : m_placedLabels)
            n += placed.adjusted(0.5, 0.5, -0.5, -0.5).intersects(b);
        return n;
    };
    // Off the ring first (a corner a pixel or two past the rim hides no number: they stand beyond
    // the ticks), then clear of other labels, then as near its point and as little beyond the
    // rim as can be.
    std::size_t best = 0;
    double bestScore = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const double beyond = beyondRim(candidates[i]);
        const double score = (beyond > 2.0 ? 1e6 + beyond : 0.0) + 1e3 * overlaps(candidates[i]);
        if (score < bestScore) {
            bestScore = score;
            best = i;
        }
    }
    if (m_placingResults)
        m_placedLabels.push_back(candidates[best]);
    return candidates[best];
}

void QStereoPlotWidget::drawMeanOrientation(QPainter* painter)
{
    if (!m_model)
        return;
    m_placedLabels.clear();
    m_placingResults = true;
    m_pointKind = 0;
    const double limit = m_maxPlotAngle;
    if (m_showMeanResultantPole)
        drawResultPoint(painter, m_model->meanResultantPole(), m_meanResultantPoleColor, tr("Mean Resultant Pole"),
                        limit, true);
    if (m_showMeanPrincipalPole)
        drawResultPoint(painter, m_model->meanPrincipalPlane(), m_meanPrincipalPoleColor, tr("Mean Principal Pole"),
                        limit, true);
    if (m_showTPole)
        drawResultPoint(painter, m_model->TdirectionPlane(), m_tPoleColor, tr("T Pole"), limit, true);
    if (m_showLPole)
        drawResultPoint(painter, m_model->LdirectionPlane(), m_lPoleColor, tr("L Pole"), limit, true);

    auto plane = [&](const QPointF& orientation, const QColor& colour, int width, const QString& label) {
        painter->setPen(netPen(colour, width));
        painter->setBrush(Qt::NoBrush);
        drawCyclographicTrace(painter, orientation.x(), orientation.y(), false);
        // Raster pixel, as the trace: dipDirectionInPixel() is a widget pixel, one scroll offset
        // away on a zoomed chart.
        if (m_showLabels && finite(orientation))
            drawLabel2(painter, linePixel(orientation.x(), orientation.y()), label, colour);
    };
    if (m_showMeanPrincipalPlane)
        plane(m_model->meanPrincipalPlane(), m_meanPrincipalPlaneColor, m_meanPrincipalPlaneWidth,
              tr("Mean Principal Plane"));
    if (m_showMeanResultantPlane)
        plane(m_model->meanResultantPole(), m_meanResultantPlaneColor, m_meanResultantPlaneWidth,
              tr("Mean Resultant Plane"));
    if (m_showSuggestedSectionPlane)
        plane(m_model->suggestedSectionPlane(), m_suggestedSectionPlaneColor, m_suggestedSectionPlaneWidth,
              tr("Suggested Section Plane"));
    if (m_showBestFitPlane)
        plane(m_model->LdirectionPlane(), m_bestFitPlaneColor, m_bestFitPlaneWidth, tr("Best Fit Plane"));

    m_pointKind = 1;
    if (m_showMeanResultantAzimuth)
        drawResultPoint(painter, m_model->meanResultantDipDirection(), m_meanResultantAzimuthColor,
                        tr("Mean Resultant Azimuth"), limit, false);
    if (m_showMeanPrincipalAzimuth)
        drawResultPoint(painter, m_model->meanPrincipalDipDirection(), m_meanPrincipalAzimuthColor,
                        tr("Mean Principal Azimuth"), limit, false);
    if (m_showTAzimuth)
        drawResultPoint(painter, m_model->TdirectionDipDirection(), m_tAzimuthColor, tr("T Azimuth"), limit, false);
    if (m_showLAzimuth)
        drawResultPoint(painter, m_model->LdirectionDipDirection(), m_lAzimuthColor, tr("L Azimuth"), limit, false);
    m_placingResults = false;
}

void QStereoPlotWidget::drawPole(QPainter* painter, double dip, double azimuth, const QColor& colour)
{
    if (!std::isfinite(dip) || !std::isfinite(azimuth))
        return;
    painter->setBrush(colour);
    const QPointF pixel = poleInPixel(QPointF(dip, azimuth));
    if (m_model)
        drawPoint(pixel, painter);
    else
        drawCircle(pixel, 3, painter);
}

void QStereoPlotWidget::drawDipDirection(QPainter* painter, double dip, double azimuth, const QColor& colour)
{
    if (!(std::abs(dip) >= kFlat) || !std::isfinite(dip) || !std::isfinite(azimuth))
        return;
    painter->setBrush(colour);
    const QPointF pixel = linePixel(dip, azimuth);
    if (m_model)
        drawPoint(pixel, painter);
    else
        drawCircle(pixel, 3, painter);
}

void QStereoPlotWidget::drawDipDirection(QPainter* painter, double dip, double azimuth, const QColor& colour, int id,
                                         bool selected)
{
    if (!(std::abs(dip) >= kFlat) || !std::isfinite(dip) || !std::isfinite(azimuth))
        return;
    drawSymbols(linePixel(dip, azimuth), id, colour, selected, kSelectedColour, 1, painter);
}

void QStereoPlotWidget::drawDipDirectionAsBigCircle(QPainter* painter, double dip, double azimuth,
                                                    const QColor& colour)
{
    if (!std::isfinite(dip) || !std::isfinite(azimuth))
        return;
    const QPointF pixel = linePixel(dip, azimuth);
    painter->setPen(netPen(colour, 1.0));
    painter->setBrush(Qt::NoBrush);
    drawCircle(pixel, 5, painter);
    painter->drawPoint(pixel);
}

void QStereoPlotWidget::drawPoleCentroids(QPainter* painter)
{
    const MatrixDataArray* centres = m_model ? m_model->clusterCentroids() : nullptr;
    if (!centres)
        return;
    std::vector<QPointF> pixels;
    for (int r = 0; r < centres->rowCount(); ++r) {
        const QPointF p = centres->value(r, 0).toPointF();
        if (finite(p))
            pixels.push_back(poleInPixel(p));
    }
    drawCentroids(painter, pixels, Qt::darkGreen);
}

void QStereoPlotWidget::drawAzimuthCentroids(QPainter* painter)
{
    const MatrixDataArray* centres = m_model ? m_model->clusterCentroids() : nullptr;
    if (!centres)
        return;
    std::vector<QPointF> pixels;
    for (int r = 0; r < centres->rowCount(); ++r) {
        const QPointF p = centres->value(r, 0).toPointF();
        if (!finite(p))
            continue;
        // The dip direction of the centre's plane, placed as a pole.
        const QPointF direction(90.0 - p.x(), p.y() < 180.0 ? p.y() + 180.0 : p.y() - 180.0);
        pixels.push_back(poleInPixel(direction));
    }
    drawCentroids(painter, pixels, Qt::green);
}

void QStereoPlotWidget::drawFoldAxis(QPainter*) {}

// ---- stress and shear ----

void QStereoPlotWidget::createStressField(int nx, int ny)
{
    if (m_model)
        createStressField(nx, ny, m_model->contourGridStressForStereoPlot());
}

void QStereoPlotWidget::createStressField(int nx, int ny, MatrixDataArray* grid)
{
    if (!m_model || !grid)
        return;
    if (nx == -1) {
        nx = grid->rowCount();
        ny = grid->columnCount();
    }
    if (nx < 2 || ny < 2)
        return;
    const double dx = m_gridRect.width() / (nx - 1);
    const double dy = m_gridRect.height() / (ny - 1);
    if (dx == 0.0 || dy == 0.0 || !std::isfinite(dx) || !std::isfinite(dy))
        return;
    grid->reserve(nx, ny);
    grid->clearData();
    const int keepX = m_xOffsetPixels;
    const int keepY = m_yOffsetPixels;
    m_xOffsetPixels = m_yOffsetPixels = 0;
    const QPointF c(m_centre);
    for (int i = 0; i < nx; ++i) {
        for (int j = 0; j < ny; ++j) {
            QPointF pixel(m_gridRect.x() + i * dx, m_gridRect.y() + j * dy);
            double dip, azimuth;
            if (!generateDipAndDipAzimuth(pixel, dip, azimuth)) {
                // Outside the net: the rim along the same ray, a vertical plane.
                const QPointF v = pixel - c;
                pixel = c + v / std::hypot(v.x(), v.y()) * m_radius;
                generateDipAndDipAzimuth(pixel, dip, azimuth);
                dip = 90.0;
            }
            double s1, s2, s3;
            grid->setValue(i, j, m_model->getStressOverlay(dip, azimuth, s1, s2, s3));
        }
    }
    m_xOffsetPixels = keepX;
    m_yOffsetPixels = keepY;
}

void QStereoPlotWidget::drawMaxShearTractionField(QPainter* painter)
{
    if (!m_model)
        return;
    m_pointKind = 0;
    double dip = 0.0;
    for (int round = 0; round < 17; ++round) {
        double azimuth = 0.0;
        for (int k = 0; k < 70; ++k) {
            double dip1, azimuth1, dip2, azimuth2;
            QColor colour;
            m_model->slipDirection(dip, azimuth, dip1, azimuth1, dip2, azimuth2, colour, true);
            if (m_showMaxShearTractionField)
                drawPoint(painter, QPointF(dip1, azimuth1), colour, Qt::black, 2, m_maxPlotAngle, true);
            if (m_showMinShearTractionField)
                drawPoint(painter, QPointF(dip2, azimuth2), Qt::blue, Qt::black, 2, m_maxPlotAngle, true);
            dip += 90.0 / 1190.0;
            azimuth += 360.0 / 70.0;
        }
    }
}

void QStereoPlotWidget::drawSlipDirectionsForData(QPainter* painter)
{
    if (!m_model)
        return;
    const int keep = m_pointKind;
    m_pointKind = 1;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QVariant v = m_model->data(m_model->index(row, 0));
        if (!v.isValid())
            continue;
        const QPointF p = v.toPointF();
        double dip1, azimuth1, dip2, azimuth2;
        QColor colour;
        m_model->slipDirection(p.x(), p.y(), dip1, azimuth1, dip2, azimuth2, colour, true);
        const QColor outline = m_model->isSelected(row) ? QColor(Qt::yellow) : QColor(Qt::black);
        drawPoint(painter, QPointF(dip1, azimuth1), colour, outline, m_maxPlotAngle, false);
    }
    m_pointKind = keep;
}

void QStereoPlotWidget::drawSlipDirectionConstruction(QPainter* painter, double dip, double azimuth)
{
    if (!m_model)
        return;
    const int keep = m_pointKind;
    m_pointKind = 1;
    double dip1, azimuth1, dip2, azimuth2;
    QColor colour;
    m_model->slipDirection(dip, azimuth, dip1, azimuth1, dip2, azimuth2, colour, true);
    drawPointWithLabel(painter, QPointF(dip1, azimuth1), colour, QStringLiteral("s"), m_maxPlotAngle, false);
    drawPointWithLabel(painter, QPointF(dip2, azimuth2), Qt::blue, QStringLiteral("b"), m_maxPlotAngle, false);
    m_pointKind = keep;
}

void QStereoPlotWidget::drawSigmaStressStateOrientation(QPainter* painter)
{
    if (!m_model)
        return;
    const QFont keepFont = painter->font();
    // In the Symbol face "s" reads as sigma.
    painter->setFont(QFont(QStringLiteral("Symbol"), 8));
    m_pointKind = 1;
    const bool zNegative = m_model->zNegative();
    auto sigma = [&](const QPointF& s, const QColor& colour, const QString& label) {
        double turn = s.x() > 0.0 ? 180.0 : 0.0;
        if (zNegative)
            turn = 180.0 - turn;
        drawResultPoint(painter, QPointF(s.x(), s.y() + turn), colour, label, m_maxPlotAngle, false);
    };
    sigma(m_sigma1, Qt::red, QStringLiteral("s1"));
    sigma(m_sigma2, Qt::green, QStringLiteral("s2"));
    sigma(m_sigma3, Qt::blue, QStringLiteral("s3"));
    painter->setFont(keepFont);
}

// ---- the overlay ----

void QStereoPlotWidget::drawCursorInformation(QPainter* painter)
{
    const int w = width();
    const bool narrow = w < 500;
    if (narrow)
        painter->fillRect(QRect(m_xOffsetPixels + 3, m_yOffsetPixels + 3, 142, 37), m_backgroundColor);
    const QPointF origin(rect().left() + m_xOffsetPixels + 5, rect().top() + m_yOffsetPixels + 5);
    const double valueColumn = narrow ? 70.0 : 120.0;
    const QFont keepFont = painter->font();
    painter->setFont(QFont(QStringLiteral("Helvetica"), 8));
    painter->setPen(QPen(QBrush(m_labelColor), 0.0));
    double dip, azimuth, plunge, plungeAzimuth;
    generateDipAndDipAzimuth(m_mousePickingPos, dip, azimuth);
    generateDipAndDipAzimuth(dipDirectionInPixel(QPointF(dip, azimuth)), plunge, plungeAzimuth);
    int row = 0;
    auto line = [&](const QString& label, const QString& value) {
        const QPointF base = origin + QPointF(0.0, 10.0 * (row + 1));
        painter->drawText(base, label);
        painter->drawText(base + QPointF(valueColumn, 0.0), value);
        ++row;
    };
    auto pair = [](double a, double b) {
        return QString::number(a, 'f', 2) + QStringLiteral("/ ") + QString::number(b, 'f', 2);
    };
    line(narrow ? tr("Pole:") : tr("Pole (plunge/plunge az.):"), pair(plunge, plungeAzimuth));
    line(narrow ? tr("Plane:") : tr("Plane (dip/dip az.):"), pair(dip, azimuth));
    if (m_model && m_model->showStressState()) {
        double s1, s2, s3;
        const double value = m_model->getStressOverlay(dip, azimuth, s1, s2, s3);
        const MatrixData* node = m_model->stressValueNode();
        if (!node) {
            line(tr("Slip Tendency:"), QString::number(value, 'f', 2));
        } else {
            QString name = node->name();
            if (name.contains(QStringLiteral("and")))
                name = tr("Slip+Dilation Tendency");
            if (narrow && name.size() > 13)
                name = name.left(10);
            QString text = QString::number(value, 'f', 2);
            if (const auto units = node->unitManager())
                text = QString::number(units->convertModelToDisplay(value), 'f', 2) + QLatin1Char(' ') +
                       units->getDisplayUnitTag();
            line(name + QLatin1Char(':'), text);
        }
    }
    painter->setFont(keepFont);
}

void QStereoPlotWidget::paintEvent(QPaintEvent* event)
{
    if (m_redrawNeeded) {
        redraw();
        m_redrawNeeded = false;
    }
    if (m_chartPixmap.isNull()) {
        QChartDrawingArea::paintEvent(event);
        return;
    }
    QImage& overlay = beginOverlay();
    {
        QPainter painter;
        beginRasterPainter(painter, overlay);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        const int keepKind = m_pointKind;
        if (!m_moveStressField) {
            if (m_pickedPixel.x() != kNoValue && !m_selectionMode) {
                double dip = m_pickedDip;
                double azimuth = m_pickedAzimuth;
                if (m_pickPlaneMode)
                    generateDipAndDipAzimuth(dipDirectionInPixel(QPointF(dip, azimuth)), dip, azimuth);
                if (m_cursorInformationMode == 0) {
                    painter.setPen(netPen(Qt::blue, 1.0));
                    m_pickTraceActive = true;
                    drawCyclographicTrace(&painter, dip, azimuth, true);
                    m_pickTraceActive = false;
                    painter.setPen(netPen(m_labelColor, 2.0));
                    drawPole(&painter, dip, azimuth, m_labelColor);
                    if (m_model && m_model->showStressState())
                        drawSlipDirectionConstruction(&painter, dip, azimuth);
                } else {
                    painter.setPen(netPen(m_labelColor, 2.0));
                    drawPole(&painter, dip, azimuth, m_labelColor);
                    if (std::abs(dip) >= kFlat) {
                        const QPointF pixel = linePixel(dip, azimuth);
                        painter.setBrush(Qt::NoBrush);
                        drawCircle(pixel, 5, &painter);
                        painter.drawPoint(pixel);
                    }
                }
            }
            if (!m_selectionMode && m_model && m_model->showStressState()) {
                painter.setPen(netPen(m_labelColor, 2.0));
                const std::size_t n = std::min(m_mohrCursorDips.size(), m_mohrCursorAzimuths.size());
                for (std::size_t i = 0; i < n; ++i)
                    drawPole(&painter, m_mohrCursorDips[i], m_mohrCursorAzimuths[i], m_labelColor);
            }
            const std::size_t n = std::min(m_minMechStabilityDips.size(), m_minMechStabilityAzimuths.size());
            for (std::size_t i = 0; i < n; ++i) {
                painter.setPen(netPen(Qt::darkBlue, 2.0));
                drawPole(&painter, m_minMechStabilityDips[i], m_minMechStabilityAzimuths[i], Qt::darkBlue);
                painter.setPen(netPen(Qt::darkBlue, 1.0));
                painter.setBrush(Qt::NoBrush);
                drawCyclographicTrace(&painter, m_minMechStabilityDips[i], m_minMechStabilityAzimuths[i], true);
            }
            if (m_gridIsOn)
                drawGrid(&painter);
            if (m_selectionMode) {
                painter.setPen(QPen(QBrush(m_labelColor), 1.0));
                painter.setBrush(Qt::NoBrush);
                painter.drawPolygon(m_selectionPolygon);
            }
        } else {
            // Dragging the stress field: the stress picture is repainted over the overlay. Data
            // are left out above a few thousand rows, so that the drag stays responsive.
            painter.setClipRegion(m_clipRegion);
            if (m_model && m_model->showStressState()) {
                if (m_model->filledStressFieldIsOn())
                    drawContour(&painter, m_model->contourGridStressForStereoPlot(), m_model->minStressOverlayValue(),
                                m_model->maxStressOverlayValue(), false, 2.0);
                drawNet(&painter);
                if (m_showMaxShearTractionField || m_showMinShearTractionField)
                    drawMaxShearTractionField(&painter);
                if (m_showMaxShearTractionForData)
                    drawSlipDirectionsForData(&painter);
                // The drag repaints traces, poles and lineation, not the dip directions.
                if (m_model->rowCount() < 3000)
                    drawDataPoints(&painter, false);
                drawSigmaStressStateOrientation(&painter);
            }
        }
        if (m_model && m_model->showStressState())
            drawCursorInformation(&painter);
        m_pointKind = keepKind;
    }
    QChartDrawingArea::paintEvent(event);
}

// ---- the mouse ----

void QStereoPlotWidget::mousePressEvent(QMouseEvent* event)
{
    setMousePickingPos(event);
    const QPointF offset(m_xOffsetPixels, m_yOffsetPixels);
    if (event->button() != Qt::RightButton) {
        if (event->modifiers() != Qt::ControlModifier) {
            if (m_model)
                m_model->clearSelection();
            if (m_lineationModel)
                m_lineationModel->clearSelection();
            emit clearSelection();
        }
        if (m_selectionMode) {
            m_selectionPolygon.clear();
            m_selectionPolygon << m_mousePickingPos + offset;
        }
        if (event->button() == Qt::LeftButton) {
            m_pickedPixel = m_mousePickingPos;
            generateDipAndDipAzimuth(m_mousePickingPos, m_pickedDip, m_pickedAzimuth);
            resetCursorPosFromMohrPlot();
            emit cursorPos(m_mousePickingPos, true);
            emit mousePress(m_mousePickingPos);
        }
    }
    update();
}

void QStereoPlotWidget::mouseMoveEvent(QMouseEvent* event)
{
    setMousePickingPos(event);
    const bool picked = m_mousePickingPos.x() != kNoValue;
    if (!m_moveStressField && picked && !m_selectionPolygon.isEmpty() && m_selectionMode)
        m_selectionPolygon << m_mousePickingPos + QPointF(m_xOffsetPixels, m_yOffsetPixels);
    const bool leftHeld = event->buttons() == Qt::LeftButton;
    if (leftHeld) {
        m_pickedPixel = m_mousePickingPos;
        generateDipAndDipAzimuth(m_mousePickingPos, m_pickedDip, m_pickedAzimuth);
        resetCursorPosFromMohrPlot();
    }
    if (picked)
        emit cursorPos(m_mousePickingPos, leftHeld);
    update();
}

void QStereoPlotWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        return;
    auto clearBoth = [this] {
        if (m_model)
            m_model->clearSelection();
        if (m_lineationModel)
            m_lineationModel->clearSelection();
    };
    if (m_selectionPolygon.size() < 3) {
        clearBoth();
    } else {
        if (event->modifiers() != Qt::ControlModifier)
            clearBoth();
        MatrixData lasso(QStringLiteral("lasso"), m_selectionPolygon.size(), 1, QVariant::PointF);
        for (int i = 0; i < m_selectionPolygon.size(); ++i)
            lasso.setValue(i, 0, m_selectionPolygon.at(i));
        const int keepKind = m_pointKind;
        if (m_model) {
            for (int row = 0; row < m_model->rowCount(); ++row) {
                const QVariant v = m_model->data(m_model->index(row, 0));
                if (!v.isValid())
                    continue;
                const QPointF p = v.toPointF();
                // Rim points are pulled in a little, so that a lasso along the rim takes them.
                if (m_showPoles) {
                    m_pointKind = 0;
                    const double dip = std::abs(p.x() - 90.0) < kFlat ? 89.0 : p.x();
                    if (lasso.pointInOrOut(transformInPixelPoint(QPointF(dip, p.y()))))
                        m_model->setSelected(row, true);
                }
                if (m_showDipDirections) {
                    m_pointKind = 1;
                    const double dip = std::abs(p.x()) < kFlat ? 1.0 : p.x();
                    if (lasso.pointInOrOut(transformInPixelPoint(QPointF(dip, p.y()))))
                        m_model->setSelected(row, true);
                }
            }
        }
        m_pointKind = keepKind;
        if (m_lineationModel) {
            for (int row = 0; row < m_lineationModel->rowCount(); ++row) {
                const QVariant v = m_lineationModel->data(m_lineationModel->index(row, 0));
                if (!v.isValid())
                    continue;
                const QPointF p = v.toPointF();
                // Raster pixels on both sides, so that the lasso takes what is drawn inside it.
                if (lasso.pointInOrOut(linePixel(p.x(), p.y()))) {
                    m_lineationModel->setSelected(row, true);
                    if (m_model)
                        m_model->setSelected2(m_lineationModel->tableRow(row), true);
                }
            }
        }
    }
    m_selectionPolygon.clear();
    emit dataPointsSelection(m_model ? m_model->selection() : boost::dynamic_bitset<>());
    if (!m_model || !m_model->partSelection())
        emit mouseRelease(m_mousePickingPos);
    update();
}

} // namespace rkBase

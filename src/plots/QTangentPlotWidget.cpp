#include "QTangentPlotWidget.h"

#include "FastTrig.h"

#include <QLineF>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <limits>

namespace rkBase {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDeg = kPi / 180.0;
// A pick this close to the rim is on it, as on the stereonet.
constexpr double kRimTolerance = 5e-05;

QPen netPen(const QColor& colour, double width)
{
    return QPen(QBrush(colour), width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
}

// tan near 90 degrees runs to 1e16 and past it changes sign: a distance that no painter holds.
inline double heldOnChart(double r)
{
    if (std::isnan(r))
        return r;
    return std::clamp(r, -QTangentPlotWidget::kFarOff, QTangentPlotWidget::kFarOff);
}

} // namespace

QTangentPlotWidget::QTangentPlotWidget(QWidget* parent, const QString& title) : QStereoPlotWidget(parent, title)
{
    m_maxPlotAngle = 65.0;
    // The stereonet's block placement puts poles on its own net; this one has its own.
    m_pixelBlock = [this](const QPointF* data, QPointF* pixels, int count) {
        tangentPointsInPixels(data, pixels, count);
    };
}

// ---- the projection ----

double QTangentPlotWidget::tangentRadius(double a) const
{
    return std::tan(a * kDeg) / std::tan(m_maxPlotAngle * kDeg) * m_radius;
}

// The rotation by bearing + 270 degrees about c of the point tangentRadius west of c, written
// out as the stereonet writes its pole placement.
QPointF QTangentPlotWidget::tangentPlotPointInPixel(const QPointF& orientation) const
{
    const double r = heldOnChart(tangentRadius(orientation.x()));
    double s, c;
    FastTrig::sinCos(orientation.y() * kDeg, s, c);
    return QPointF(m_centre.x() - r * s, m_centre.y() + r * c);
}

QPointF QTangentPlotWidget::transformInPixelPoint(const QPointF& data)
{
    if (m_pointKind == 0)
        return tangentPlotPointInPixel(QPointF(90.0 - data.x(), data.y() + 180.0));
    if (m_pointKind == 1)
        return tangentPlotPointInPixel(data);
    return QPointF(0.0, 0.0);
}

void QTangentPlotWidget::tangentPointsInPixels(const QPointF* data, QPointF* pixels, int count)
{
    if (m_pointKind != 0 && m_pointKind != 1) {
        std::fill(pixels, pixels + std::max(count, 0), QPointF(0.0, 0.0));
        return;
    }
    // The bearings' sines and cosines taken together (the same values bit for bit as one at a
    // time), the angles' tangents one by one: the expressions of tangentPlotPointInPixel.
    constexpr int kChunk = 256;
    double angle[kChunk], bearing[kChunk], bearingSin[kChunk], bearingCos[kChunk];
    const bool poles = m_pointKind == 0;
    const double cx = m_centre.x();
    const double cy = m_centre.y();
    for (int first = 0; first < count; first += kChunk) {
        const int n = std::min(kChunk, count - first);
        const QPointF* in = data + first;
        for (int j = 0; j < n; ++j) {
            angle[j] = poles ? 90.0 - in[j].x() : in[j].x();
            bearing[j] = (poles ? in[j].y() + 180.0 : in[j].y()) * kDeg;
        }
        FastTrig::sinCosArray(bearing, bearingSin, bearingCos, n);
        for (int j = 0; j < n; ++j) {
            const double r = heldOnChart(tangentRadius(angle[j]));
            pixels[first + j] = QPointF(cx - r * bearingSin[j], cy + r * bearingCos[j]);
        }
    }
}

QPointF QTangentPlotWidget::transformInDataPoint(const QPointF& pixel) const
{
    if (m_radius <= 0 || !std::isfinite(pixel.x()) || !std::isfinite(pixel.y()))
        return QPointF(0.0, 0.0);
    const QPointF v = pixel + QPointF(m_xOffsetPixels, m_yOffsetPixels) - QPointF(m_centre);
    const double s = std::hypot(v.x(), v.y());
    // On the rim, the cut-off itself rather than atan(tan(cut-off)), which misses it by an ulp.
    const double angle = std::abs(s - m_radius) < kRimTolerance
                             ? m_maxPlotAngle
                             : std::atan(std::tan(m_maxPlotAngle * kDeg) * s / m_radius) / kDeg;
    return QPointF(angle, transformInAzimuth(pixel));
}

// ---- the net ----

void QTangentPlotWidget::drawTangentPlotNet(QPainter* painter, int step)
{
    if (step <= 0)
        return;
    for (double a = step; a < m_maxPlotAngle; a += step) {
        const double r = tangentRadius(a);
        // A cut-off at or past 90 would ask for circles no painter holds.
        if (!(r >= 0.0 && r <= kFarOff))
            break;
        drawCircle(painter, static_cast<int>(r));
    }
}

void QTangentPlotWidget::drawNet(QPainter* painter)
{
    painter->setBrush(Qt::NoBrush);
    const QPen gridPen = netPen(m_gridColor, 1.5);
    if (m_show2DegreeNet) {
        painter->setPen(gridPen);
        painter->setOpacity(0.3);
        drawTangentPlotNet(painter, 2);
        for (int a = 0; a < 360; a += 2)
            drawLine(painter, a, 0);
    }
    if (m_show10DegreeNet) {
        painter->setPen(netPen(m_show2DegreeNet ? m_labelColor : m_gridColor, 1.5));
        painter->setOpacity(0.3);
        drawTangentPlotNet(painter, 10);
        for (int a = 0; a < 360; a += 10)
            drawLine(painter, a, 6);
    }
    if (m_show10DegreeNet || m_show2DegreeNet) {
        // Near the centre the circles and spokes crowd together: blank discs there in the net's
        // pen, so that their rims stand as reference rings, and draw fewer spokes over each.
        auto disc = [&](double a) {
            const double r = tangentRadius(a);
            if (r >= 0.0 && r <= kFarOff)
                drawCircle(painter, static_cast<int>(r));
        };
        painter->setBrush(m_backgroundColor);
        painter->setOpacity(1.0);
        if (m_show2DegreeNet) {
            disc(20.0);
            for (int a = 0; a < 360; a += 10)
                drawLine(painter, a, 6);
        }
        disc(10.0);
        disc(5.0);
        for (int a = 0; a < 360; a += 30)
            drawLine(painter, a, 6);
        painter->setBrush(Qt::NoBrush);
        painter->setOpacity(1.0);
    }
}

void QTangentPlotWidget::drawFoldAxis(QPainter* painter)
{
    if (m_foldAxis.x() == m_maxPlotAngle)
        return;
    const int keepKind = m_pointKind;
    m_pointKind = 1;
    const QPointF a = transformInPixelPoint(m_foldAxis);
    const QPointF b = transformInPixelPoint(QPointF(m_maxPlotAngle, m_foldAxis.y()));
    m_pointKind = keepKind;
    const QPointF v = b - a;
    const double length = std::hypot(v.x(), v.y());
    if (!(length > 0.0) || !std::isfinite(length) || !std::isfinite(a.x()) || !std::isfinite(a.y()))
        return;
    const QPointF n = QPointF(v.y(), -v.x()) * (m_radius / length);
    painter->setPen(netPen(Qt::red, 2.0));
    painter->drawLine(QLineF(a, a + n));
    painter->drawLine(QLineF(a, a - n));
}

} // namespace rkBase

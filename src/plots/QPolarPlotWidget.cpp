#include "QPolarPlotWidget.h"

#include <QPainter>
#include <QPaintEvent>
#include <QPolygon>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kDegToRad = kPi / 180.0;

inline int trunc(double v) { return static_cast<int>(v); }

QPen framePen(const QColor& colour, double width)
{
    return QPen(QBrush(colour), width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}
} // namespace

QPolarPlotWidget::QPolarPlotWidget(QWidget* parent, const QString& title) : QChartDrawingArea(parent, title)
{
    m_mouseZoomEnabled = false;
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::white);
    setPalette(p);
}

void QPolarPlotWidget::setCenterAndRadius()
{
    const QRect raster = rasterRect();
    const QPoint centre = raster.center();
    const int r = trunc(0.4 * std::min(raster.width(), raster.height()));
    // A zoomed chart's clip is a region of one band per pixel row of a ring thousands of pixels
    // high: build it only when the ring moves, not on every scroll step's redraw.
    const bool moved = centre != m_centre || r != m_radius || m_clipRegion.isEmpty();
    m_centre = centre;
    m_radius = r;
    m_gridRect = QRectF(m_centre.x() - r, m_centre.y() - r, 2 * r, 2 * r);
    const int half = trunc(1.2 * r);
    if (moved)
        m_clipRegion = QRegion(m_centre.x() - half, m_centre.y() - half, 2 * half, 2 * half) &
                       QRegion(m_centre.x() - r, m_centre.y() - r, 2 * r, 2 * r, QRegion::Ellipse);
    resizeOpenGLScene(m_gridRect.size().toSize());
}

void QPolarPlotWidget::redraw()
{
    if (m_chartPixmap.isNull())
        resizeRaster(false);
    setCenterAndRadius();
    QChartDrawingArea::redraw();
}

void QPolarPlotWidget::paintEvent(QPaintEvent*)
{
    if (m_redrawNeeded) {
        redraw();
        m_redrawNeeded = false;
    }
    if (m_gridIsOn) {
        QPainter grid;
        beginRasterPainter(grid, m_overlayPixmap.isNull() ? m_chartPixmap : m_overlayPixmap);
        drawGrid(&grid);
    }
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(backgroundRole()));
    const QImage& shown = m_overlayPixmap.isNull() ? m_chartPixmap : m_overlayPixmap;
    painter.drawImage(QPointF(0, 0), shown);
}

// ---- the frame ----

void QPolarPlotWidget::drawFrame(QPainter* painter, int width)
{
    painter->setPen(framePen(m_labelColor, width));
    if (!m_annotationAsAngle) {
        for (int a = 0; a < 360; a += 90)
            drawAnnotationTick(painter, a);
        for (int a = 0; a <= 360; a += 90)
            drawAnnotationLabel(painter, a);
    } else {
        for (int a = 0; a <= 360; a += 90)
            drawAngleAnnotationLabel(painter, a, 5);
        for (int a = 10; a <= 80; a += 10)
            drawAngleAnnotationLabelBetween_0to90(painter, a, 5);
        for (int a = 100; a <= 170; a += 10)
            drawAngleAnnotationLabelBetween_90to180(painter, a, 5);
        for (int a = 190; a <= 260; a += 10)
            drawAngleAnnotationLabelBetween_180to270(painter, a, 5);
        for (int a = 280; a <= 350; a += 10)
            drawAngleAnnotationLabelBetween_270to360(painter, a, 5);
        for (int a = 0; a < 360; a += 10)
            drawAnnotationTick(painter, a);
    }
    drawTitle(painter);
    if (m_showPointCount)
        m_topRightInfo = tr("points = ") + QString::number(m_model ? m_model->numberOfSelectedPoints() : 0);
    drawTopRightInfo(painter);
    drawNorth(painter);
    if (m_circleFrame) {
        painter->setPen(framePen(QColor::fromRgb(m_backgroundColor.rgb() ^ 0xffffff), 1.0));
        painter->setBrush(Qt::NoBrush);
        painter->drawEllipse(QRect(m_centre.x() - m_radius, m_centre.y() - m_radius, 2 * m_radius, 2 * m_radius));
    }
}

void QPolarPlotWidget::drawAnnotationTick(QPainter* painter, double a)
{
    if (!m_annotationAsAngle && !m_annotationAsDirection)
        return;
    const double t = (a - 90.0) * kDegToRad;
    const double cx = m_centre.x(), cy = m_centre.y();
    painter->drawLine(QLine(trunc(cx + m_radius * std::cos(t)), trunc(cy + m_radius * std::sin(t)),
                            trunc(cx + (m_radius + 7) * std::cos(t)), trunc(cy + (m_radius + 7) * std::sin(t))));
}

QPointF QPolarPlotWidget::labelAnchor(double a, int gap) const { return polarPoint(a, m_radius + gap + 2); }

void QPolarPlotWidget::drawLabelText(QPainter* painter, const QRectF& box, const QString& text)
{
    // 132: centred both ways. Boxes are as tall as the font, so nothing is cut. A chart short and
    // wide for its ring has no room above and below it for the labels of north and south: such
    // a label is moved back onto the raster rather than lost beyond its edge. (Sideways the text
    // runs on past the edge, and moving it would put it over the ticks.)
    const QRectF raster(rasterRect());
    QRectF inside = box;
    if (inside.top() < raster.top())
        inside.moveTop(raster.top());
    if (inside.bottom() > raster.bottom() + 1)
        inside.moveBottom(raster.bottom() + 1);
    painter->drawText(inside, Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextDontClip, text);
}

void QPolarPlotWidget::drawAnnotationLabel(QPainter* painter, double a)
{
    if (!m_annotationAsDirection)
        return;
    QString text;
    const int angle = static_cast<int>(a);
    switch (angle) {
    case 90: text = tr("East"); break;
    case 180: text = tr("South"); break;
    case 270: text = tr("West"); break;
    case 360: text = tr("North"); break;
    default: break;
    }
    const QFontMetricsF fm = painter->fontMetrics();
    const double w = fm.horizontalAdvance(text), h = fm.height();
    const QPointF p = labelAnchor(a, 8);
    QRectF box;
    switch (angle) {
    case 0: box = QRectF(QPointF(p.x() - w, p.y() - 2 * h - 2), QPointF(p.x() + w, p.y() - h - 2)); break;
    case 90: box = QRectF(p.x(), p.y() - h / 2, w + 5, h); break;
    case 180: box = QRectF(QPointF(p.x() - w, p.y()), QPointF(p.x() + w, p.y() + h)); break;
    case 270: box = QRectF(QPointF(p.x() - w - 6, p.y() - h / 2), QPointF(p.x(), p.y() + h / 2)); break;
    case 360: box = QRectF(QPointF(p.x() - w, p.y() - h - 2), QPointF(p.x() + w, p.y() - 2)); break;
    default: return;
    }
    if (!text.isEmpty())
        drawLabelText(painter, box, text);
}

void QPolarPlotWidget::drawAngleAnnotationLabel(QPainter* painter, double a, int gap)
{
    const QString text = QString::number(a, 'g', 6);
    const QFontMetricsF fm = painter->fontMetrics();
    const double w = fm.horizontalAdvance(text), h = fm.height();
    const QPointF p = labelAnchor(a, gap);
    QRectF box;
    if (a == 0.0 && p.y() - 2 * h - 2 < rasterRect().top()) {
        // No room to stack "0" over "360": it goes on the same line, left of the "360".
        const double right = p.x() - fm.horizontalAdvance(QStringLiteral("360")) / 2 - 4;
        box = QRectF(QPointF(right - w, p.y() - h - 2), QPointF(right, p.y() - 2));
    } else if (a == 0.0)
        box = QRectF(QPointF(p.x() - w, p.y() - 2 * h - 2), QPointF(p.x() + w, p.y() - h - 2));
    else if (a == 360.0)
        box = QRectF(QPointF(p.x() - w, p.y() - h - 2), QPointF(p.x() + w, p.y() - 2));
    else if (a == 90.0)
        box = QRectF(p.x(), p.y() - h / 2, w, h);
    else if (a == 180.0)
        box = QRectF(p.x() - w / 2, p.y(), w, h);
    else if (a == 270.0)
        box = QRectF(p.x() - w, p.y() - h / 2, w, h);
    else
        return;
    drawLabelText(painter, box, text);
}

void QPolarPlotWidget::drawAngleAnnotationLabelBetween_0to90(QPainter* painter, double a, int gap)
{
    const QString text = QString::number(a, 'g', 6);
    const QFontMetricsF fm = painter->fontMetrics();
    const double w = fm.horizontalAdvance(text), h = fm.height();
    const QPointF p = labelAnchor(a, gap);
    drawLabelText(painter, QRectF(p.x(), p.y() - h, w, h), text);
}

void QPolarPlotWidget::drawAngleAnnotationLabelBetween_90to180(QPainter* painter, double a, int gap)
{
    const QString text = QString::number(a, 'g', 6);
    const QFontMetricsF fm = painter->fontMetrics();
    const double w = fm.horizontalAdvance(text), h = fm.height();
    const QPointF p = labelAnchor(a, gap);
    drawLabelText(painter, QRectF(p.x(), p.y(), w, h), text);
}

void QPolarPlotWidget::drawAngleAnnotationLabelBetween_180to270(QPainter* painter, double a, int gap)
{
    const QString text = QString::number(a, 'g', 6);
    const QFontMetricsF fm = painter->fontMetrics();
    const double w = fm.horizontalAdvance(text), h = fm.height();
    const QPointF p = labelAnchor(a, gap);
    drawLabelText(painter, QRectF(p.x() - w, p.y(), w, h), text);
}

void QPolarPlotWidget::drawAngleAnnotationLabelBetween_270to360(QPainter* painter, double a, int gap)
{
    const QString text = QString::number(a, 'g', 6);
    const QFontMetricsF fm = painter->fontMetrics();
    const double w = fm.horizontalAdvance(text), h = fm.height();
    const QPointF p = labelAnchor(a, gap);
    drawLabelText(painter, QRectF(p.x() - w, p.y() - h, w, h), text);
}

void QPolarPlotWidget::drawTitle(QPainter* painter)
{
    if (m_headerTitle.isEmpty())
        return;
    const QFontMetrics fm = painter->fontMetrics();
    // At least the font's height, so that a larger font is not cut.
    const QRect box(rect().left() + m_xOffsetPixels + 10, rect().top() + m_yOffsetPixels + 5,
                    fm.horizontalAdvance(m_headerTitle) + 5, std::max(15, fm.height()));
    if (!paintingToWEMF())
        painter->fillRect(box, palette().window());
    painter->drawText(box, Qt::AlignCenter, m_headerTitle);
}

void QPolarPlotWidget::drawTopRightInfo(QPainter* painter)
{
    if (m_topRightInfo.isEmpty())
        return;
    painter->setPen(framePen(m_labelColor, 1.0));
    const QFontMetrics fm = painter->fontMetrics();
    // The box is as wide as a stand-in text, so that it keeps its place while the count changes;
    // a longer text widens it rather than being cut.
    const int w = std::max(fm.horizontalAdvance(QStringLiteral("drawTopRightInfo")),
                           fm.horizontalAdvance(m_topRightInfo));
    const QRect box(rect().right() + m_xOffsetPixels - w - 8, rect().top() + m_yOffsetPixels + 5, w,
                    fm.height() + 30);
    if (!paintingToWEMF())
        painter->fillRect(box, palette().window());
    painter->drawText(box, Qt::AlignLeft | Qt::AlignTop, m_topRightInfo);
}

void QPolarPlotWidget::drawNorth(QPainter* painter)
{
    if (!m_annotationAsAngle && !m_annotationAsDirection)
        return;
    const QPoint a(rect().right() + m_xOffsetPixels - 20, rect().bottom() + m_yOffsetPixels - 30);
    const QPoint tip = a - QPoint(0, 16);
    const QPoint right = a + QPoint(7, 8);
    const QPoint left = a + QPoint(-7, 8);
    painter->setPen(framePen(m_labelColor, 1.0));
    painter->setBrush(m_labelColor);
    const QPoint rightHalf[3] = {tip, right, a};
    painter->drawPolygon(rightHalf, 3);
    painter->setBrush(m_backgroundColor);
    const QPoint leftHalf[3] = {tip, left, a};
    painter->drawPolygon(leftHalf, 3);
    painter->setBrush(Qt::NoBrush);
    painter->drawText(QRectF(QPointF(tip + QPoint(-20, -12)), QPointF(tip + QPoint(20, -2))),
                      Qt::AlignCenter | Qt::TextDontClip, tr("N"));
}

// ---- polar drawing tools ----

QPointF QPolarPlotWidget::polarPoint(double a, double r) const
{
    const double t = (a - 90.0) * kDegToRad;
    return QPointF(m_centre.x() + r * std::cos(t), m_centre.y() + r * std::sin(t));
}

void QPolarPlotWidget::drawCircle(QPainter* painter, const int& r) { drawCircle(painter, r, m_centre); }

void QPolarPlotWidget::drawCircle(QPainter* painter, const int& r, const QPoint& centre)
{
    painter->drawEllipse(QRect(centre.x() - r, centre.y() - r, 2 * r, 2 * r));
}

void QPolarPlotWidget::drawLine(QPainter* painter, double a, int extra)
{
    const QPointF end = polarPoint(a, m_radius + extra);
    painter->drawLine(QLine(m_centre, QPoint(trunc(end.x()), trunc(end.y()))));
}

void QPolarPlotWidget::drawArrow(QPainter* painter, const QPointF& tip)
{
    const QPointF u = tip - QPointF(m_centre);
    const double length = std::hypot(u.x(), u.y());
    if (!(length > 0.0))
        return;
    const QPointF along = u / length;
    const QPointF across(-along.y(), along.x());
    const QPointF base = tip - 10.0 * along;
    const QLineF strokes[2] = {QLineF(base + 6.0 * across, tip), QLineF(base - 6.0 * across, tip)};
    painter->drawLines(strokes, 2);
}

void QPolarPlotWidget::rotation(QPainter* painter, const double& a)
{
    QTransform t;
    t.translate(m_centre.x(), m_centre.y());
    t.rotate(a);
    t.translate(-m_centre.x(), -m_centre.y());
    painter->setTransform(t);
}

void QPolarPlotWidget::drawSector(const QPointF& mid, const QPointF& from, const QPointF& to, QPainter* painter,
                                  const bool& fill)
{
    const QPointF u = mid - from;
    const QPointF v = from - to;
    const double lu = std::hypot(u.x(), u.y());
    const double lv = std::hypot(v.x(), v.y());
    const double g = std::acos(std::clamp((u.x() * v.x() + u.y() * v.y()) / (lu * lv), -1.0, 1.0));
    const double sweep = 4.0 * std::atan(2.0 * std::sin(g) * lu / lv);
    // Collinear or coinciding points (NaN) have no circle: the diameter stands in.
    if (!(std::abs(sweep) >= 5e-9)) {
        painter->drawLine(QLineF(m_centre.x(), m_centre.y() + m_radius, m_centre.x(), m_centre.y() - m_radius));
        return;
    }
    const double rho = (lv / 2.0) / std::sin(sweep / 2.0);
    // The centre lies on the chord's normal, on the far side from mid. The normal (v.y, -v.x)
    // points there when from and to run clockwise about it; otherwise it is turned round and the
    // arc is walked the other way.
    QPointF normal(v.y() / lv, -v.x() / lv);
    const QPointF chordMiddle = (from + to) / 2.0;
    const bool reversed = (mid - chordMiddle).x() * normal.x() + (mid - chordMiddle).y() * normal.y() > 0.0;
    if (reversed)
        normal = -normal;
    const QPointF o = mid + normal * rho;
    if (fill) {
        const double sweepDegrees = sweep / kDegToRad;
        const int start = to.x() > from.x() ? trunc((180.0 - sweepDegrees / 2.0) * 16.0) : trunc(-sweepDegrees / 2.0 * 16.0);
        painter->drawChord(QRectF(o.x() - rho, o.y() - rho, 2.0 * rho, 2.0 * rho), start, 5760);
        return;
    }
    double a = std::acos(std::clamp((from.x() - o.x()) / rho, -1.0, 1.0));
    if (from.y() < o.y())
        a = 2.0 * kPi - a;
    const double step = (reversed ? -sweep : sweep) / 50.0;
    QPolygonF arc;
    arc.reserve(51);
    for (int i = 0; i < 50; ++i, a += step)
        arc << QPointF(o.x() + rho * std::cos(a), o.y() + rho * std::sin(a));
    arc << to;
    painter->drawPolyline(arc);
}

} // namespace rkBase

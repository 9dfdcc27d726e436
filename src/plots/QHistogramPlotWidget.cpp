#include "QHistogramPlotWidget.h"

#include "QHistogramItemModel.h"

#include <MatrixData.h>

#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

#include <cmath>

namespace rkBase {

namespace {
constexpr double kNoValue = 99999.0;

bool usable(double a, double b)
{
    return std::isfinite(a) && std::isfinite(b) && std::abs(b - a) > 0.0;
}

bool finitePoint(const QPointF& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

QString percentileText(const char* name, double v)
{
    return QString::fromLatin1(name) + QString::number(v, 'f', std::abs(v) >= 10.0 ? 0 : 2);
}
} // namespace

QHistogramPlotWidget::QHistogramPlotWidget(QWidget* parent, const QString& unit, QHistogramChartWidget* owner)
    : QChartDrawingArea(parent, tr("Histogram")), m_unit(unit), m_ownerPanel(owner)
{
    setMouseTracking(true);
    m_gridIsOn = true;
}

void QHistogramPlotWidget::setBoundaries(const QPointF& min, const QPointF& max)
{
    m_minPoint = min;
    m_maxPoint = max;
    // A flat range would divide by zero: it is opened around its value.
    if (!usable(min.x(), max.x())) {
        const double x = std::isfinite(max.x()) ? max.x() : 0.0;
        const double half = std::abs(x) > 0.0 ? std::abs(x) * 0.5 : 1.0;
        m_minPoint.setX(x - half);
        m_maxPoint.setX(x + half);
    }
    if (!usable(min.y(), max.y())) {
        m_minPoint.setY(0.0);
        m_maxPoint.setY(1.0);
    }
    m_redrawNeeded = true;
}

void QHistogramPlotWidget::setStatisticPoints(double p10, double p50, double p90, const QColor& colour)
{
    m_p10 = p10;
    m_p50 = p50;
    m_p90 = p90;
    m_statisticColor = colour;
    m_redrawNeeded = true;
}

void QHistogramPlotWidget::setKolmogorovSmirnovStatistics(double x, double v1, double v2, double critical)
{
    m_ksX = x;
    m_ksValue1 = v1;
    m_ksValue2 = v2;
    m_ksCriticalDifference = critical;
    m_redrawNeeded = true;
}

QPointF QHistogramPlotWidget::transformInPixelPoint(const QPointF& data)
{
    const QRect raster = rasterRect();
    const double l = raster.left(), r = raster.right();
    const double a = raster.bottom(), b = raster.top(); // y upwards
    const double minX = m_minPoint.x(), maxX = m_maxPoint.x();
    const double minY = m_minPoint.y(), maxY = m_maxPoint.y();
    const bool xs = r > l && usable(minX, maxX);
    const bool ys = a > b && usable(minY, maxY);
    return QPointF(xs ? (data.x() - maxX) / (minX - maxX) * l + (data.x() - minX) / (maxX - minX) * r : 0.0,
                   ys ? (data.y() - maxY) / (minY - maxY) * a + (data.y() - minY) / (maxY - minY) * b : 0.0);
}

QPointF QHistogramPlotWidget::transformInDataPoint(const QPointF& widgetPixel) const
{
    const QPointF p = widgetPixel + QPointF(m_xOffsetPixels, m_yOffsetPixels);
    const QRect raster = rasterRect();
    const double l = raster.left(), r = raster.right();
    const double a = raster.bottom(), b = raster.top();
    QPointF out(0.0, 0.0);
    if (r > l)
        out.setX((p.x() - r) / (l - r) * m_minPoint.x() + (p.x() - l) / (r - l) * m_maxPoint.x());
    if (a > b)
        out.setY((p.y() - b) / (a - b) * m_minPoint.y() + (p.y() - a) / (b - a) * m_maxPoint.y());
    return out;
}

// ---- the layers ----

void QHistogramPlotWidget::redraw()
{
    QChartDrawingArea::redraw();
    QPainter painter;
    beginRasterPainter(painter, m_chartPixmap);
    if (m_gridIsOn) {
        m_gridRect = QRectF(rasterRect());
        drawGrid(&painter);
    }
    drawLayers(&painter);
    m_redrawNeeded = false;
}

void QHistogramPlotWidget::drawChart(QPainter& painter)
{
    if (m_gridIsOn) {
        m_gridRect = QRectF(rasterRect());
        drawGrid(&painter);
    }
    drawLayers(&painter);
    drawAxis(painter, pixmapRect());
}

void QHistogramPlotWidget::drawAxis(QPainter& painter, QRect rect)
{
    if (m_axisPainter)
        m_axisPainter(painter, rect);
}

bool QHistogramPlotWidget::zoneApplies() const
{
    return m_histogramModelCompare && m_histogramModelCompare->data() && m_confidenceLineID > -1;
}

void QHistogramPlotWidget::drawLayers(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing, true);
    QHistogramItemModel* zoneModel = m_confidenceLineID == 0 ? m_histogramModel : m_histogramModelCompare;
    if (m_showHistogramBars) {
        if (zoneApplies())
            drawConfidenceZone(painter, zoneModel);
        drawHistogram(painter, m_histogramModel);
        drawHistogram(painter, m_histogramModelCompare);
    }
    if (m_showHistogramLine) {
        if (zoneApplies() && !m_showHistogramBars)
            drawConfidenceZone(painter, zoneModel);
        drawHistogramLine(painter, m_histogramModel);
        drawHistogramLine(painter, m_histogramModelCompare);
        drawKSmaxDifference(painter);
    }
    drawStatisticMeasures(painter);
    drawStatisticText(painter);
    drawTandLdirection(painter);
}

void QHistogramPlotWidget::drawGrid(QPainter* painter)
{
    if (m_verticalGridLines.isEmpty() && m_horizontalGridLines.isEmpty())
        return;
    painter->save();
    painter->setPen(QPen(m_gridColor, 0.0, Qt::DotLine));
    painter->setOpacity(0.6);
    for (int v : m_verticalGridLines) {
        const double x = v + m_xOffsetPixels;
        painter->drawLine(QLineF(x, m_gridRect.top(), x, m_gridRect.bottom()));
    }
    // The axes count their lines from the bottom.
    for (int v : m_horizontalGridLines) {
        const double y = m_yOffsetPixels - v + height();
        painter->drawLine(QLineF(m_gridRect.left(), y, m_gridRect.right(), y));
    }
    painter->restore();
}

void QHistogramPlotWidget::drawHistogram(QPainter* painter, const QHistogramItemModel* model)
{
    const MatrixData* t = model ? model->data() : nullptr;
    if (!t)
        return;
    painter->setPen(QPen(m_labelColor, 1.0));
    painter->setBrush(t->color());
    for (int r = 0; r < t->rowCount(); ++r) {
        const double v = t->toDouble(r, 0);
        if (v == 0.0 || !std::isfinite(v))
            continue;
        QPointF a = transformInPixelPoint(QPointF(t->toDouble(r, 2), v));
        QPointF b = transformInPixelPoint(QPointF(t->toDouble(r, 1), 0.0));
        a.rx() -= 1.0;
        b.rx() += 1.0;
        const QRectF bar = QRectF(a, b).normalized();
        if (finitePoint(a) && finitePoint(b) && bar.isValid())
            painter->drawRect(bar);
    }
}

void QHistogramPlotWidget::drawHistogramLine(QPainter* painter, const QHistogramItemModel* model)
{
    const MatrixData* t = model ? model->data() : nullptr;
    if (!t)
        return;
    painter->setPen(QPen(m_showHistogramBars ? m_labelColor : t->color(), m_histogramLineWidth));
    painter->setBrush(Qt::NoBrush);
    QPolygonF line;
    for (int r = 0; r < t->rowCount(); ++r) {
        const double v = t->toDouble(r, 0);
        if (v == 0.0 || !std::isfinite(v))
            continue;
        const QPointF p = transformInPixelPoint(QPointF(t->toDouble(r, 1), v));
        if (finitePoint(p))
            line << p;
    }
    if (line.size() > 1)
        painter->drawPolyline(line);
}

void QHistogramPlotWidget::drawConfidenceZone(QPainter* painter, const QHistogramItemModel* model)
{
    const MatrixData* t = model ? model->data() : nullptr;
    if (!t || m_ksCriticalDifference == -1.0 || !std::isfinite(m_ksCriticalDifference))
        return;
    QPolygonF lower, upper;
    for (int r = 0; r < t->rowCount(); ++r) {
        const double v = t->toDouble(r, 0);
        if (v == 0.0 || !std::isfinite(v))
            continue;
        const double x = t->toDouble(r, 1);
        lower << transformInPixelPoint(QPointF(x, v - m_ksCriticalDifference));
        upper << transformInPixelPoint(QPointF(x, v + m_ksCriticalDifference));
    }
    QPolygonF zone = lower;
    for (int i = upper.size() - 2; i >= 0; --i)
        zone << upper[i];
    if (zone.size() < 3)
        return;
    painter->save();
    painter->setPen(QPen(m_gridColor, 1.0));
    painter->setBrush(Qt::lightGray);
    painter->setOpacity(0.2);
    painter->drawPolygon(zone);
    painter->restore();
}

void QHistogramPlotWidget::drawKSmaxDifference(QPainter* painter)
{
    if (!zoneApplies())
        return;
    const QPointF a = transformInPixelPoint(QPointF(m_ksX, m_ksValue1));
    const QPointF b = transformInPixelPoint(QPointF(m_ksX, m_ksValue2));
    if (!finitePoint(a) || !finitePoint(b))
        return;
    painter->setPen(QPen(m_labelColor, 2.0));
    painter->drawLine(a, b);
}

void QHistogramPlotWidget::drawStatisticMeasures(QPainter* painter)
{
    const QRect raster = rasterRect();
    painter->setPen(QPen(Qt::blue, raster.width() < 300 ? 1.0 : 2.0));
    const std::pair<bool, double> marks[] = {{m_showP10, m_p10}, {m_showP50, m_p50}, {m_showP90, m_p90}};
    for (const auto& m : marks) {
        if (!m.first || !std::isfinite(m.second) || m.second == kNoValue)
            continue;
        const double x = transformInPixelPoint(QPointF(m.second, 0.0)).x();
        painter->drawLine(QLineF(x, raster.top(), x, raster.bottom()));
    }
}

void QHistogramPlotWidget::drawStatisticText(QPainter* painter)
{
    const QRect raster = rasterRect();
    painter->setPen(QPen(Qt::blue, 1.0));
    const double h = raster.height() / 20.0, w = raster.width() / 4.0;
    double top = raster.top() + 3.0;
    const struct {
        bool on;
        const char* name;
        double value;
    } texts[] = {{m_showP10Text, "P10: ", m_p10}, {m_showP50Text, "P50: ", m_p50}, {m_showP90Text, "P90: ", m_p90}};
    for (const auto& t : texts) {
        if (!t.on || !std::isfinite(t.value) || t.value == kNoValue)
            continue;
        const QString text = percentileText(t.name, t.value);
        // Blue on blue bars would not read: the text stands on the background's colour.
        const QRectF box(raster.left() + 3.0, top, std::min(w, painter->fontMetrics().horizontalAdvance(text) + 6.0), h);
        painter->save();
        painter->setOpacity(0.8);
        painter->fillRect(box, m_backgroundColor);
        painter->restore();
        painter->drawText(box.adjusted(2.0, 0.0, 0.0, 0.0), Qt::AlignLeft | Qt::AlignVCenter, text);
        top += h + 1.0;
    }
}

void QHistogramPlotWidget::drawTandLdirection(QPainter* painter)
{
    // Azimuth histograms mark the T and L directions as vertical lines.
    const QRect raster = rasterRect();
    painter->setPen(QPen(m_labelColor, 1.0, Qt::DashLine));
    for (double d : {m_tDirection, m_lDirection}) {
        if (d < 0.0 || !std::isfinite(d))
            continue;
        const double x = transformInPixelPoint(QPointF(d, 0.0)).x();
        painter->drawLine(QLineF(x, raster.top(), x, raster.bottom()));
    }
}

// ---- the widget ----

void QHistogramPlotWidget::paintEvent(QPaintEvent* event)
{
    QChartDrawingArea::paintEvent(event);
    QPainter painter(this);
    const QRgb inverted = (m_backgroundColor.rgb() ^ 0xFFFFFFu) | 0xFF000000u;
    painter.setPen(QPen(QColor::fromRgb(inverted), 2.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect());
    if (m_mousePickingPos.x() != kNoValue && m_mousePickingPos.x() != 0.0) {
        painter.setPen(QPen(m_labelColor, 1.0));
        const QPointF p = m_mousePickingPos;
        painter.drawLine(QLineF(p.x(), 0.0, p.x(), height()));
        painter.drawLine(QLineF(0.0, p.y(), width(), p.y()));
    }
}

void QHistogramPlotWidget::mouseMoveEvent(QMouseEvent* event)
{
    m_mousePickingPos = event->localPos();
    emit cursorPos(transformInDataPoint(m_mousePickingPos), true);
    update();
}

void QHistogramPlotWidget::leaveEvent(QEvent*)
{
    m_mousePickingPos = QPointF(kNoValue, 0.0);
    emit cursorPos(QPointF(), false);
    update();
}

} // namespace rkBase

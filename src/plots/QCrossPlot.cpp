#include "QCrossPlot.h"

#include "DepthLineField.h"
#include "EMFDevice.h"
#include "MatrixData.h"
#include "MatrixDataArray.h"
#include "ValueChangeWidget.h"

#include <QAction>
#include <QApplication>
#include <QBitmap>
#include <QColorDialog>
#include <QFontMetricsF>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace rkBase {

namespace {

constexpr double kEqualEps = 5e-07;
constexpr double kSpanGuard = 0.0005;

bool nearlyEqual(double a, double b) { return std::abs(a - b) < kEqualEps; }

bool usableSpan(double min, double max) { return std::isfinite(max - min) && max != min; }

bool finite(const QPointF& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }

QPen makePen(const QColor& colour, double width, Qt::PenStyle style = Qt::SolidLine)
{
    QPen pen(QBrush(colour), width, style);
    return pen;
}

// Line types by their stored numbers: 0 to 2 planes, 3 horizon, 4 fault, 5 bin boundary, 6 top.
int typeAt(const DepthLineField& field, std::size_t i)
{
    return i < field.lineTypes().size() ? int(field.lineTypes()[i]) : 3;
}
bool isPlane(int type) { return type >= 0 && type <= 2; }
bool isHorizonOrTop(int type) { return type == 3 || type == 6; }
QColor colourAt(const DepthLineField& field, std::size_t i)
{
    return i < field.lineColors().size() ? field.lineColors()[i] : QColor(Qt::black);
}

} // namespace

QCrossPlot::QCrossPlot(QWidget* parent, QWidget* owner)
    : QChartDrawingArea(parent, QStringLiteral("Cross Plot")), m_ownerPanel(owner)
{
    m_showModifyAction = true;
    m_labelColor = Qt::black;
    setMouseTracking(true);
    m_pixelBlock = [this](const QPointF* data, QPointF* pixels, int count) { pointsInPixels(data, pixels, count); };
    m_pixelBlockIsAxisAffine = true;
}

QCursor* QCrossPlot::crossCursor()
{
    // Made on first use: a plot that never picks needs no bitmaps on the display.
    if (!m_crossCursor) {
        const QBitmap cursor(QStringLiteral(":/rkBaseQt/Resources/CrossCursor.bmp"));
        const QBitmap mask(QStringLiteral(":/rkBaseQt/Resources/CrossCursorMask.bmp"));
        if (!cursor.isNull() && !mask.isNull() && cursor.size() == mask.size())
            m_crossCursor = std::make_unique<QCursor>(cursor, mask, 16, 16);
        else
            m_crossCursor = std::make_unique<QCursor>(Qt::CrossCursor);
    }
    return m_crossCursor.get();
}

QCrossPlot::~QCrossPlot()
{
    if (m_cursorOverridden)
        QApplication::restoreOverrideCursor();
}

// ---- boundaries and transforms ----

void QCrossPlot::setBoundaries(const QPointF& min, const QPointF& max)
{
    m_minPoint = min;
    m_maxPoint = max;
    const bool xEqual = nearlyEqual(min.x(), max.x());
    const bool yEqual = nearlyEqual(min.y(), max.y());
    if (xEqual && yEqual) {
        const double x = float(max.x());
        const double y = float(max.y());
        m_minPoint = QPointF(x - 10.0, y - 10.0);
        m_maxPoint = QPointF(x + 10.0, y + 10.0);
    } else if (xEqual) {
        const double x = max.x();
        m_minPoint.setX(x - max.y() * 0.5);
        m_maxPoint.setX(x + max.y() * 0.5);
    } else if (yEqual) {
        const double y = max.y();
        m_minPoint.setY(y - max.x() * 0.5);
        m_maxPoint.setY(y + max.x() * 0.5);
    }
    m_redrawNeeded = true;
}

void QCrossPlot::setXBoundary(double min, double max)
{
    if (nearlyEqual(min, max)) {
        min = max - 10.0;
        max += 10.0;
    }
    m_minPoint.setX(min);
    m_maxPoint.setX(max);
    m_redrawNeeded = true;
}

void QCrossPlot::setYBoundary(double min, double max)
{
    if (nearlyEqual(min, max)) {
        min = max - 10.0;
        max += 10.0;
    }
    m_minPoint.setY(min);
    m_maxPoint.setY(max);
    m_redrawNeeded = true;
}

std::pair<QPointF, QPointF> QCrossPlot::calculateDataBoundaries() { return {m_minPoint, m_maxPoint}; }

QPointF QCrossPlot::transformInPixelPoint(const QPointF& data)
{
    QPointF out;
    pointsInPixels(&data, &out, 1);
    return out;
}

void QCrossPlot::pointsInPixels(const QPointF* data, QPointF* pixels, int count) const
{
    const QRect raster = rasterRect();
    const double l = raster.left();
    const double r = raster.right();
    const double a = m_originPosition == OriginBottomLeft ? raster.bottom() : raster.top();
    const double b = m_originPosition == OriginBottomLeft ? raster.top() : raster.bottom();
    const double minX = m_minPoint.x(), maxX = m_maxPoint.x();
    const double minY = m_minPoint.y(), maxY = m_maxPoint.y();
    // A data span of zero or of no number would divide by zero or spread NaN over every point;
    // the raster span guard covers an empty raster.
    const bool xs = std::abs(r - l) > kSpanGuard && usableSpan(minX, maxX);
    const bool ys = std::abs(b - a) > kSpanGuard && usableSpan(minY, maxY);
    for (int i = 0; i < count; ++i) {
        const QPointF& d = data[i];
        pixels[i] = QPointF(xs ? (d.x() - maxX) / (minX - maxX) * l + (d.x() - minX) / (maxX - minX) * r : 0.0,
                            ys ? (d.y() - maxY) / (minY - maxY) * a + (d.y() - minY) / (maxY - minY) * b : 0.0);
    }
}

QPointF QCrossPlot::transformInDataPoint(const QPointF& widgetPixel) const
{
    const QPointF p = widgetPixel + QPointF(m_xOffsetPixels, m_yOffsetPixels);
    const QRect raster = rasterRect();
    const double l = raster.left();
    const double r = raster.right();
    const double a = m_originPosition == OriginBottomLeft ? raster.bottom() : raster.top();
    const double b = m_originPosition == OriginBottomLeft ? raster.top() : raster.bottom();
    // Only the raster span divides here: a flat data axis maps every pixel onto its one value,
    // which the cursor read-out and the picks need. Boundaries of no number give 0.
    auto unlessNotFinite = [](double v) { return std::isfinite(v) ? v : 0.0; };
    QPointF out(0.0, 0.0);
    if (std::abs(r - l) > kSpanGuard)
        out.setX(unlessNotFinite((p.x() - r) / (l - r) * m_minPoint.x() + (p.x() - l) / (r - l) * m_maxPoint.x()));
    if (std::abs(b - a) > kSpanGuard)
        out.setY(unlessNotFinite((p.y() - b) / (a - b) * m_minPoint.y() + (p.y() - a) / (b - a) * m_maxPoint.y()));
    return out;
}

double QCrossPlot::pickingEpsX() const
{
    const QRect raster = rasterRect();
    const double span = std::abs(double(raster.right()) - raster.left());
    return span > 0.0 ? std::abs(m_maxPoint.x() - m_minPoint.x()) / span * 3.0 : 0.0;
}

double QCrossPlot::pickingEpsY() const
{
    const QRect raster = rasterRect();
    const double span = std::abs(double(raster.bottom()) - raster.top());
    return span > 0.0 ? std::abs(m_maxPoint.y() - m_minPoint.y()) / span * 3.0 : 0.0;
}

void QCrossPlot::setLimitYPickingToInPlots(const QPointF& limits)
{
    if (limits.x() <= limits.y())
        m_limitYPicking = limits;
}

// ---- settings ----

void QCrossPlot::setTrendLine(double slope, double intercept, double coefficient)
{
    m_regressionSlope = slope;
    m_regressionIntercept = intercept;
    m_regressionCoefficient = coefficient;
    m_redrawNeeded = true;
}

void QCrossPlot::setTandLdirection(double t, double l)
{
    m_tDirection = t;
    m_lDirection = l;
    m_redrawNeeded = true;
}

void QCrossPlot::setOriginPosition(OriginPosition position)
{
    m_originPosition = position;
    m_redrawNeeded = true;
}

void QCrossPlot::setDataCreationType(DataCreationType type)
{
    m_dataCreationType = type;
    m_modifyOrientation = false;
}

void QCrossPlot::setShow90PercentRange(bool on) { m_show90PercentRange = on; m_redrawNeeded = true; }
void QCrossPlot::setShowBisectingLine(bool on) { m_showBisectingLine = on; m_redrawNeeded = true; }
void QCrossPlot::setShowRegressionLine(bool on) { m_showRegressionLine = on; m_redrawNeeded = true; }
void QCrossPlot::setShowRegressionEquation(bool on) { m_showRegressionEquation = on; update(); }
void QCrossPlot::setPointConnectionLine(bool on) { m_pointConnectionLine = on; m_redrawNeeded = true; }
void QCrossPlot::setShowPoints(bool on) { m_showPoints = on; m_redrawNeeded = true; }
void QCrossPlot::setIntervalBoundaries(bool on) { m_intervalBoundaries = on; m_redrawNeeded = true; }
void QCrossPlot::setBinAverages(bool on) { m_binAverages = on; m_redrawNeeded = true; }
void QCrossPlot::setNumbOfDataPerBin(bool on) { m_numbOfDataPerBin = on; m_redrawNeeded = true; }
void QCrossPlot::setActivePlotWindow(bool on) { m_activeWindow = on; update(); }
void QCrossPlot::showActivePlotWindow(bool on) { m_showActivePlotWindow = on; update(); }
void QCrossPlot::setModifyOrientation(bool on) { m_modifyOrientation = on; update(); }

bool QCrossPlot::symbolAttributeIsOn() { return m_model && m_model->symbolAttributeIsOn(); }

bool QCrossPlot::colorAttributeIsOn() { return m_model && m_model->colorAttributeIsOn(); }

void QCrossPlot::verticalGridLinesChanged(const QList<int>& lines)
{
    if (lines == m_verticalGridLines)
        return;
    m_verticalGridLines = lines;
    m_redrawNeeded = true;
    update();
}

void QCrossPlot::horizontalGridLinesChanged(const QList<int>& lines)
{
    if (lines == m_horizontalGridLines)
        return;
    m_horizontalGridLines = lines;
    m_redrawNeeded = true;
    update();
}

void QCrossPlot::slotDeleteSelected() { emit sendDeleteSelectedUpdate(); }

DepthLineField* QCrossPlot::structuralTops() { return m_model ? m_model->structuralTops() : nullptr; }

bool QCrossPlot::takeIntervalBoundary()
{
    if (!m_model)
        return false;
    // The model erases what lies within the tolerance; a boundary was taken if the filter shrank.
    const DepthLineField* filter = m_model->intervalFilter();
    const std::size_t before = filter ? filter->lineDepths().size() : 0;
    m_model->eraseIntervalBoundary(mouseDataPoint(), pickingEpsY());
    filter = m_model->intervalFilter();
    return filter && filter->lineDepths().size() < before;
}

// ---- the chart ----

void QCrossPlot::redraw()
{
    QChartDrawingArea::redraw();
    QPainter painter;
    beginRasterPainter(painter, m_chartPixmap);
    if (m_gridIsOn) {
        m_gridRect = QRectF(rasterRect());
        drawGrid(&painter);
    }
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    drawLayers(&painter, false);
    m_redrawNeeded = false;
}

// A name drawn above its line at the very top of the chart would be cut off at the frame: the
// first top of a well sits there whenever the depth range starts at it. It goes below the line.
QRectF QCrossPlot::placeLabelBox(const QRectF& box, const QPointF&)
{
    const QRect raster = rasterRect();
    QRectF placed = box;
    if (!raster.isEmpty() && placed.top() < raster.top())
        placed.moveTop(raster.top() + 2.0);
    return placed;
}

void QCrossPlot::drawChart(QPainter& painter)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setBrush(QBrush(Qt::white, Qt::SolidPattern));
    drawGrid(&painter);
    drawLayers(&painter, true);
    // Only a panel draws axes: any other owner (the axis widget of a depth plot) counts as none.
    if (m_ownerPanel && m_ownerPanel->metaObject()->indexOfMethod("drawAxes(QPainter*,QRect)") >= 0)
        QMetaObject::invokeMethod(m_ownerPanel.data(), "drawAxes", Qt::DirectConnection, Q_ARG(QPainter*, &painter),
                                  Q_ARG(QRect, pixmapRect()));
}

void QCrossPlot::drawLayers(QPainter* painter, bool metafile)
{
    DepthLineField* tops = structuralTops();
    drawDomains(tops, m_structuralTopsHeld, painter);
    drawStructuralTops(tops, m_structuralTopsHeld, painter);
    if (m_showBisectingLine)
        drawBisectingLine(painter);
    if (m_pointConnectionLine)
        drawPointConnectionLine(painter);
    setPointPen(painter);
    if (m_showPoints)
        drawPoints(painter);
    drawTandLdirection(painter);
    if (m_binAverages)
        drawDecimationData(painter);
    if (m_numbOfDataPerBin)
        drawDecimationCount(painter);
    // A metafile leaves the boundaries out: they are an editing aid, not part of the picture.
    if (m_intervalBoundaries && !metafile)
        drawIntervalBoundaries(painter);
    if (m_showRegressionLine)
        drawRegressionLine(painter);
    if (m_show90PercentRange)
        draw90PercentRange(painter);
    if (m_clusterPoleCentroidsOn)
        drawCentroids(painter);
}

void QCrossPlot::copyWEMFToClipboard() { emit signalCopyWEMFToClipboard(); }

void QCrossPlot::drawGrid(QPainter* painter)
{
    if (m_verticalGridLines.isEmpty() && m_horizontalGridLines.isEmpty())
        return;
    painter->save();
    QPen pen = makePen(m_gridColor, 0.0);
    pen.setStyle(Qt::PenStyle(m_gridPenStyle));
    painter->setPen(pen);
    painter->setOpacity(0.3);
    for (int v : m_verticalGridLines) {
        const double x = v + m_xOffsetPixels;
        painter->drawLine(QLineF(x, 0.0, x, m_gridRect.height()));
    }
    for (int v : m_horizontalGridLines) {
        const double y = m_yOffsetPixels - v + height();
        painter->drawLine(QLineF(0.0, y, m_gridRect.width(), y));
    }
    if (auto* emf = dynamic_cast<EMFDevice*>(painter->device())) {
        const QRect clip = emf->clipRect();
        if (!clip.isNull()) {
            painter->setPen(makePen(Qt::blue, 0.0));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(clip);
        }
    }
    painter->setOpacity(1.0);
    painter->restore();
}

bool QCrossPlot::pixelLine(const QPointF& a, const QPointF& b, QLineF& out)
{
    const QPointF pa = transformInPixelPoint(a);
    const QPointF pb = transformInPixelPoint(b);
    if (!finite(pa) || !finite(pb))
        return false;
    out = QLineF(pa, pb);
    return true;
}

void QCrossPlot::drawBisectingLine(QPainter* painter)
{
    const QPointF a = transformInPixelPoint(m_minPoint);
    const QPointF b = transformInPixelPoint(m_maxPoint);
    if (!finite(a) || !finite(b))
        return;
    painter->setPen(makePen(Qt::darkGray, 1.0));
    painter->drawLine(QLine(int(a.x()), int(a.y()), int(b.x()), int(b.y())));
}

void QCrossPlot::drawRegressionLine(QPainter* painter)
{
    if (m_regressionIntercept == kNoValue || !m_model)
        return;
    const QPointF min = m_model->minValue();
    const QPointF max = m_model->maxValue();
    const double x0 = float(min.x());
    const double x1 = float(max.x());
    const bool function = m_regressionSlope != kNoValue;
    const double y0 = function ? float(x0) * m_regressionSlope + m_regressionIntercept : min.y();
    const double y1 = function ? float(x1) * m_regressionSlope + m_regressionIntercept : max.y();
    QLineF line;
    if (!pixelLine(QPointF(x0, y0), QPointF(x1, y1), line))
        return;
    painter->setPen(makePen(Qt::green, 2.0));
    painter->drawLine(line);
}

void QCrossPlot::draw90PercentRange(QPainter* painter)
{
    if (m_regressionIntercept == kNoValue || !m_model)
        return;
    const QPointF min = m_model->minValue();
    const QPointF max = m_model->maxValue();
    const double dx = (max.x() - min.x()) / 10.0;
    const double dy = (max.y() - min.y()) / 10.0;
    auto f = [this](double x) { return double(float(x)) * m_regressionSlope + m_regressionIntercept; };
    auto fl = [](double v) { return double(float(v)); };
    QPointF upperFrom, upperTo, lowerFrom, lowerTo;
    if (m_regressionSlope != kNoValue) {
        upperFrom = QPointF(fl(min.x() - dx), fl(f(min.x() - dx) + dy));
        upperTo = QPointF(fl(max.x()), fl(f(max.x()) + dy));
        lowerFrom = QPointF(fl(min.x()), fl(f(min.x()) - dy));
        lowerTo = QPointF(fl(max.x() + dx), fl(f(max.x() + dx) - dy));
    } else {
        // The last end takes dx where dy would be expected; kept as users know it.
        upperFrom = QPointF(fl(min.x() - dx), fl(min.y() + dy));
        upperTo = QPointF(fl(max.x()), fl(max.y() + dy));
        lowerFrom = QPointF(fl(min.x()), fl(min.y() - dy));
        lowerTo = QPointF(fl(max.x() + dx), fl(max.y() + dx));
    }
    painter->setPen(makePen(Qt::red, 2.0, Qt::DashLine));
    QLineF line;
    if (pixelLine(upperFrom, upperTo, line))
        painter->drawLine(line);
    if (pixelLine(lowerFrom, lowerTo, line))
        painter->drawLine(line);
}

void QCrossPlot::drawRegressionEquation(QPainter* painter)
{
    painter->setPen(makePen(Qt::black, 1.0));
    painter->setBrush(Qt::white);
    QString text;
    if (m_regressionSlope == kNoValue) {
        text = tr("The regression is not a function");
    } else {
        text = QStringLiteral(" y= ") + QString::number(m_regressionSlope, 'f', 4);
        if (m_regressionIntercept < 0.0)
            text += QStringLiteral("x -") + QString::number(-m_regressionIntercept, 'f', 4) + QStringLiteral(" ");
        else
            text += QStringLiteral("x +") + QString::number(m_regressionIntercept, 'f', 4) + QStringLiteral(" ");
        text += QStringLiteral("\n R= ") + QString::number(m_regressionCoefficient, 'f', 4);
    }
    QRectF box = painter->boundingRect(QRectF(rect()), Qt::AlignLeft, text);
    // The factors are crossed on purpose: the box sits 8 % of the height in, 2 % of the width down.
    box.moveTo(box.top() + std::trunc(0.08 * height()), box.left() + std::trunc(0.02 * width()));
    painter->drawRect(box);
    painter->drawText(box, Qt::AlignLeft, text);
}

void QCrossPlot::drawPointConnectionLine(QPainter* painter)
{
    if (!m_model)
        return;
    const int rows = m_model->rowCount();
    QPolygonF line;
    line.reserve(rows);
    for (int row = 0; row < rows; ++row) {
        const QVariant v = m_model->data(m_model->index(row, 0));
        if (!v.isValid())
            continue;
        const QPointF pixel = transformInPixelPoint(v.toPointF());
        if (finite(pixel))
            line << pixel;
    }
    if (line.size() < 2)
        return;
    painter->setPen(makePen(m_lineColor, m_linePixelSize));
    painter->setBrush(Qt::NoBrush);
    painter->drawPolyline(line);
}

void QCrossPlot::drawDecimationData(QPainter* painter)
{
    const MatrixData* data = m_model ? m_model->decimationData() : nullptr;
    if (!data)
        return;
    painter->setPen(makePen(m_labelColor, 2.0));
    painter->setBrush(m_highlightFillColor);
    const auto& angles = m_model->decimationAngle();
    const bool tadpoles = m_model->tadpoleAttributeIsOn() || !angles.empty();
    for (int row = 0; row < data->rowCount(); ++row) {
        const QVariant v = data->value(row, 0);
        if (!v.isValid())
            continue;
        const QPointF pixel = transformInPixelPoint(v.toPointF());
        if (!finite(pixel))
            continue;
        // A mean without an orientation still shows, as a circle.
        if (tadpoles && std::size_t(row) < angles.size() && std::isfinite(angles[std::size_t(row)])
            && angles[std::size_t(row)] != kNoValue)
            drawTadPole(pixel, angles[std::size_t(row)], m_highlightFillColor, 4, painter);
        else
            drawCircle(pixel, 4, painter);
    }
}

void QCrossPlot::drawDecimationCount(QPainter* painter)
{
    const MatrixData* counts = m_model ? m_model->decimationCount() : nullptr;
    if (!counts)
        return;
    painter->setPen(makePen(Qt::black, 0.0));
    painter->setBrush(Qt::white);
    for (int row = 0; row < counts->rowCount(); ++row) {
        const QVariant v = counts->value(row, 0);
        if (!v.isValid())
            continue;
        const QPointF countAndDepth = v.toPointF();
        const QPointF anchor = transformInPixelPoint(QPointF(m_minPoint.x(), countAndDepth.y())) + QPointF(2.0, 0.0);
        if (!finite(anchor) || !std::isfinite(countAndDepth.x()))
            continue;
        const QString text = QStringLiteral(" ") + QString::number(countAndDepth.x(), 'g', 6) + QStringLiteral(" ");
        QRectF box = painter->boundingRect(QRectF(rect()), Qt::AlignLeft, text);
        box.moveTo(anchor.x(), anchor.y() - box.height() / 2.0);
        painter->drawRect(box);
        painter->drawText(box, Qt::AlignCenter, text);
    }
}

void QCrossPlot::drawIntervalBoundaries(QPainter* painter)
{
    const DepthLineField* filter = m_model ? m_model->intervalFilter() : nullptr;
    if (!filter)
        return;
    painter->setPen(makePen(Qt::red, 2.0));
    if (m_intervalBoundaryHeld && m_mousePickingPos.x() != kNoValue) {
        const double y = m_mousePickingPos.y() + m_yOffsetPixels;
        painter->drawLine(QLineF(0.0, y, m_rasterSize.width(), y));
    }
    for (double depth : filter->lineDepths()) {
        QLineF line;
        if (pixelLine(QPointF(m_minPoint.x(), depth), QPointF(m_maxPoint.x(), depth), line))
            painter->drawLine(line);
    }
}

void QCrossPlot::drawCentroids(QPainter* painter)
{
    const MatrixDataArray* centres = m_model ? m_model->clusterCentroids() : nullptr;
    if (!centres)
        return;
    std::vector<QPointF> pixels;
    for (int row = 0; row < centres->rowCount(); ++row) {
        const QPointF pixel = transformInPixelPoint(centres->value(row, 0).toPointF());
        if (finite(pixel))
            pixels.push_back(pixel);
    }
    QChartDrawingArea::drawCentroids(painter, pixels, Qt::darkGreen);
}

void QCrossPlot::drawTandLdirection(QPainter* painter)
{
    if (m_tDirection == -1.0 || m_lDirection == -1.0)
        return;
    painter->setPen(makePen(Qt::red, 3.0));
    const double bottom = m_rasterSize.height();
    for (double direction : {m_tDirection, m_lDirection}) {
        const QPointF pixel = transformInPixelPoint(QPointF(direction, 0.0));
        if (std::isfinite(pixel.x()))
            painter->drawLine(QLineF(pixel.x(), 0.0, pixel.x(), bottom));
    }
    drawLabel(painter, QPointF(m_tDirection, 0.0), QStringLiteral("T"));
    drawLabel(painter, QPointF(m_lDirection, 0.0), QStringLiteral("L"));
}

void QCrossPlot::drawDomains(DepthLineField* field, bool, QPainter* painter)
{
    if (!field || field->lineDepths().empty() || int(field->domainType()) == 2)
        return;
    const auto& depths = field->lineDepths();
    const int alpha = std::clamp(field->domainTransparency(), 0, 255);
    painter->setPen(Qt::NoPen);
    auto band = [&](std::size_t upper, std::size_t lower) {
        QColor fill = colourAt(*field, upper);
        fill.setAlpha(alpha);
        const QPointF a = transformInPixelPoint(QPointF(m_minPoint.x(), depths[upper]));
        const QPointF b = transformInPixelPoint(QPointF(m_maxPoint.x(), depths[lower]));
        if (!finite(a) || !finite(b))
            return;
        painter->setBrush(fill);
        painter->drawRect(QRectF(a, b).normalized());
    };
    if (int(field->domainType()) == 0) {
        std::size_t upper = depths.size();
        for (std::size_t i = 0; i < depths.size(); ++i) {
            if (!isHorizonOrTop(typeAt(*field, i)))
                continue;
            if (upper != depths.size())
                band(upper, i);
            upper = i;
        }
    } else if (depths.size() != 1) {
        for (std::size_t i = 1; i < depths.size(); ++i)
            band(i - 1, i);
    }
}

void QCrossPlot::drawStructuralTops(DepthLineField* field, bool, QPainter* painter)
{
    if (!field || field->lineDepths().empty())
        return;
    const auto& depths = field->lineDepths();
    const auto& names = field->lineNames();
    const auto& xs = field->linesX();
    const int domain = int(field->domainType());
    // Names closer together than a line of text would be written over one another: a dense
    // scenario (one seeded from the well holds a top for every dip) names those that have room,
    // the picked ones first, and every line is still drawn.
    const auto labelled = [&](std::size_t i) {
        const int type = typeAt(*field, i);
        return (field->showHorizonLabels() && isHorizonOrTop(type)) || (field->showFaultLabels() && type == 4);
    };
    std::vector<char> named(depths.size(), 0);
    {
        // Where drawLabel puts a name's box: centred 8 pixels above its line, or below the line at
        // the top of the chart.
        const double room = QFontMetricsF(painter->font()).height() + 1.0;
        const double rasterTop = rasterRect().top();
        std::vector<double> taken;
        for (int pass = 0; pass < 2; ++pass)
            for (std::size_t i = 0; i < depths.size(); ++i) {
                if (!labelled(i) || field->isSelected(int(i)) != (pass == 0))
                    continue;
                double y = transformInPixelPoint(QPointF(m_minPoint.x(), depths[i])).y() - 8.0 - room / 2.0;
                if (y < rasterTop)
                    y = rasterTop + 2.0;
                const bool free = !std::isfinite(y) || std::none_of(taken.begin(), taken.end(), [&](double t) {
                    return std::abs(t - y) < room;
                });
                if (pass == 0 || free) {
                    named[i] = 1;
                    if (std::isfinite(y))
                        taken.push_back(y);
                }
            }
    }
    for (std::size_t i = 0; i < depths.size(); ++i) {
        const int type = typeAt(*field, i);
        const bool selected = field->isSelected(int(i));
        const QColor colour = colourAt(*field, i);
        const bool plane = isPlane(type);
        const bool drawn = (field->showHorizons() && isHorizonOrTop(type)) || (field->showFaults() && type == 4)
                           || (field->showStructuralPlanes() && domain == 1 && plane);
        if (drawn) {
            QColor pen = colour;
            if (selected)
                pen = Qt::yellow;
            else if (domain == 2 || field->domainTransparency() > 199)
                pen = Qt::black;
            painter->setPen(makePen(pen, m_linePixelSize));
            QLineF line;
            if (pixelLine(QPointF(m_minPoint.x(), depths[i]), QPointF(m_maxPoint.x(), depths[i]), line))
                painter->drawLine(line);
        }
        const QString name = i < names.size() ? names[i] : QString();
        if (named[i])
            drawLabel(painter, QPointF(m_minPoint.x(), depths[i]), name);
        const double x = i < xs.size() ? xs[i] : m_minPoint.x();
        if (field->showStructuralPlanes() && plane) {
            const QPointF pixel = transformInPixelPoint(QPointF(x, depths[i]));
            if (finite(pixel)) {
                painter->setPen(selected ? makePen(Qt::yellow, 2.0) : makePen(Qt::black, 1.0));
                painter->setBrush(colour);
                drawCircle(pixel, 4, painter);
            }
        }
        if (field->showStructuralPlaneLabels() && plane)
            drawLabel(painter, QPointF(x, depths[i]), name);
    }
    drawStructuralOrientation(field, painter);
}

void QCrossPlot::drawStructuralOrientation(DepthLineField* field, QPainter* painter)
{
    if (!field)
        return;
    const auto& depths = field->lineDepths();
    const auto& orientations = field->lineOrientations();
    const std::size_t n = std::min(depths.size(), orientations.size());
    const double right = rasterRect().right();
    for (std::size_t i = 0; i < n; ++i) {
        const QPointF o = orientations[i];
        if (o.x() == -1.0)
            continue;
        const QPointF anchor(right, transformInPixelPoint(QPointF(m_maxPoint.x(), depths[i])).y());
        if (!finite(anchor))
            continue;
        if (field->showAverageOrientations()) {
            painter->setPen(makePen(m_labelColor, 2.0));
            drawTadPole(anchor, o.x(), Qt::lightGray, 5, painter);
        }
        if (field->showAverageOrientationLabels()) {
            const QString text = QStringLiteral("(") + QString::number(o.x(), 'f', 2) + QStringLiteral(",")
                                 + QString::number(o.y(), 'f', 2) + QStringLiteral(")");
            drawLabel(painter, transformInDataPoint(anchor - QPointF(m_xOffsetPixels, m_yOffsetPixels)), text);
        }
    }
}

// ---- painting ----

void QCrossPlot::paintEvent(QPaintEvent* event)
{
    // Everything transient is drawn on the widget over the raster, so the raster needs no copy.
    QChartDrawingArea::paintEvent(event);
    QPainter painter(this);
    painter.setPen(makePen(m_labelColor, 1.0));
    painter.setBrush(Qt::NoBrush);
    if (!m_selectionPolygon.isEmpty())
        painter.drawPolygon(m_selectionPolygon.translated(-m_xOffsetPixels, -m_yOffsetPixels), Qt::OddEvenFill);
    if (m_showActivePlotWindow && m_activeWindow) {
        painter.setPen(makePen(Qt::green, 5.0));
    } else {
        const QRgb inverted = (m_backgroundColor.rgb() ^ 0xFFFFFFu) | 0xFF000000u;
        painter.setPen(makePen(QColor::fromRgb(inverted), 2.0));
    }
    painter.drawRect(rect());
    if (m_showRegressionEquation)
        drawRegressionEquation(&painter);
    if (m_mousePickingPos.x() != kNoValue) {
        painter.setPen(makePen(m_labelColor, 1.0));
        const QPointF p = m_mousePickingPos;
        if (p.x() != 0.0)
            painter.drawLine(QLineF(p.x(), m_gridRect.top(), p.x(), m_gridRect.bottom()));
        painter.drawLine(QLineF(m_gridRect.left(), p.y(), m_gridRect.right(), p.y()));
    }
    // The overlay lines are drawn on the widget, whose origin is the raster's scroll offset.
    painter.translate(-m_xOffsetPixels, -m_yOffsetPixels);
    if (m_intervalBoundaries)
        drawIntervalBoundaries(&painter);
    if (m_structuralTopsHeld)
        drawStructuralTops(structuralTops(), true, &painter);
    painter.resetTransform();
    if (m_modifyOrientation && m_mousePickingPos.x() != kNoValue)
        drawLabel(&painter, mouseDataPoint(), tr("Select an Area"));
}

// ---- the mouse ----

void QCrossPlot::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        return;
    if (event->modifiers() != Qt::ControlModifier && m_dataCreationType == SelectDataPoints && m_model)
        m_model->clearSelection();
    m_mousePickingPos = event->localPos();
    if (m_dataCreationType == CreateIntervalBoundary) {
        m_intervalBoundaryHeld = takeIntervalBoundary();
        if (m_intervalBoundaryHeld)
            m_redrawNeeded = true;
    } else if (m_dataCreationType == CreateStructuralTops) {
        pickStructuralTops();
    } else {
        m_selectionPolygon.clear();
        m_selectionPolygon << m_mousePickingPos + QPointF(m_xOffsetPixels, m_yOffsetPixels);
    }
    if (m_showActivePlotWindow) {
        if (event->button() == Qt::MiddleButton && m_dataCreationType == SelectDataPoints) {
            m_activeWindow = !m_activeWindow;
            m_selectionPolygon.clear();
        } else {
            m_activeWindow = true;
        }
    }
    update();
}

void QCrossPlot::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF previous = m_mousePickingPos;
    m_mousePickingPos = event->localPos();
    if (m_mousePickingPos.x() != kNoValue) {
        if (!m_selectionPolygon.isEmpty())
            m_selectionPolygon << m_mousePickingPos + QPointF(m_xOffsetPixels, m_yOffsetPixels);
        emit cursorPos(mouseDataPoint(), false);
    }
    if (m_structuralTopsHeld && m_dataCreationType == CreateStructuralTops && previous.x() != kNoValue)
        emit sendMoveSelectedUpdate(mouseDataPoint() - transformInDataPoint(previous));
    update();
}

void QCrossPlot::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (m_dataCreationType == CreateIntervalBoundary) {
        if (m_model)
            m_model->insertIntervalBoundary(mouseDataPoint().y(), pickingEpsY());
        m_intervalBoundaryHeld = false;
        m_redrawNeeded = true;
        update();
        return;
    }
    if (m_structuralTopsHeld)
        emit sendMoveSelectedUpdateStop();
    m_structuralTopsHeld = false;
    if (m_model) {
        if (m_selectionPolygon.size() < 3) {
            m_model->clearSelection();
        } else {
            if (event->modifiers() != Qt::ControlModifier)
                m_model->clearSelection();
            MatrixData lasso(QStringLiteral("lasso"), m_selectionPolygon.size(), 1, QVariant::PointF);
            for (int i = 0; i < m_selectionPolygon.size(); ++i)
                lasso.setValue(i, 0, m_selectionPolygon.at(i));
            const int rows = m_model->rowCount();
            const std::uint8_t* valid = nullptr;
            int stored = 0;
            if (const QPointF* cells = modelPointCells(valid, stored)) {
                // The cells straight, a block at a time through the pixel transform.
                constexpr int kBlock = 512;
                QPointF points[kBlock], pixels[kBlock];
                int blockRows[kBlock];
                int n = 0;
                const auto flush = [&] {
                    transformInPixelPoints(points, pixels, n);
                    for (int j = 0; j < n; ++j)
                        if (finite(pixels[j]) && lasso.pointInOrOut(pixels[j]))
                            m_model->setSelected(blockRows[j], true);
                    n = 0;
                };
                for (int row = 0; row < std::min(rows, stored); ++row) {
                    if (!valid[row])
                        continue;
                    points[n] = cells[row];
                    blockRows[n] = row;
                    if (++n == kBlock)
                        flush();
                }
                flush();
            } else {
                for (int row = 0; row < rows; ++row) {
                    const QVariant v = m_model->data(m_model->index(row, 0));
                    if (!v.isValid())
                        continue;
                    const QPointF pixel = transformInPixelPoint(v.toPointF());
                    if (finite(pixel) && lasso.pointInOrOut(pixel))
                        m_model->setSelected(row, true);
                }
            }
        }
        m_redrawNeeded = true;
    }
    m_selectionPolygon.clear();
    if (m_dataCreationType == SelectDataPoints || m_dataCreationType == SelectForOrientation)
        emit dataPointsSelection(m_model ? m_model->selection() : boost::dynamic_bitset<>());
    if (!isHidden())
        update();
}

void QCrossPlot::enterEvent(QEvent* event)
{
    QChartDrawingArea::enterEvent(event);
    if (m_dataCreationType != SelectDataPoints) {
        if (!m_cursorOverridden)
            QApplication::setOverrideCursor(*crossCursor());
        m_cursorOverridden = true;
    } else if (m_cursorOverridden) {
        QApplication::restoreOverrideCursor();
        m_cursorOverridden = false;
    }
}

void QCrossPlot::leaveEvent(QEvent* event)
{
    QChartDrawingArea::leaveEvent(event);
    if (m_cursorOverridden) {
        QApplication::restoreOverrideCursor();
        m_cursorOverridden = false;
    }
    emit cursorPos(m_mousePickingPos, false);
    m_mousePickingPos.setX(kNoValue);
    emit crossPlotLeaveEvent(event);
    update();
}

// ---- structural tops ----

void QCrossPlot::pickStructuralTops()
{
    const QPointF d = mouseDataPoint();
    if (m_limitYPicking.x() != kLowestFloat && d.y() < m_limitYPicking.x())
        return;
    if (m_limitYPicking.y() != kHighestFloat && d.y() > m_limitYPicking.y())
        return;
    DepthLineField* field = structuralTops();
    if (!field)
        return;
    const std::vector<int> picked = field->pickHorizontalLines(d, pickingEpsY());
    m_structuralTopsHeld = !picked.empty();
    if (!field->isSomethingSelected() && picked.empty())
        emit sendInsertScatUpdate(d);
    else
        emit sendScatPickPos(picked);
}

void QCrossPlot::setScatContextMenu()
{
    auto text = [](const char* s) { return QCoreApplication::translate("QCrossPlotWidget", s); };
    if (!m_renameAction) {
        m_renameAction = new QAction(text("Rename..."), this);
        connect(m_renameAction, &QAction::triggered, this, &QCrossPlot::selectedObjectNameRequired);
        m_modifyColourAction = new QAction(text("Modify Colour..."), this);
        connect(m_modifyColourAction, &QAction::triggered, this, &QCrossPlot::selectedObjectColourRequired);
        m_modifyOrientationAction = new QAction(text("Modify Orientation"), this);
        m_modifyOrientationAction->setCheckable(true);
        m_modifyOrientationAction->setChecked(false);
        connect(m_modifyOrientationAction, &QAction::triggered, this, &QCrossPlot::sendModifySelectedOrientation);
        m_deleteAction = new QAction(text("Delete"), this);
        connect(m_deleteAction, &QAction::triggered, this, &QCrossPlot::slotDeleteSelected);
    }
}

void QCrossPlot::addToContextMenuEvent(QMenu* menu)
{
    if (!menu || !m_renameAction || m_dataCreationType == SelectDataPoints)
        return;
    DepthLineField* field = structuralTops();
    if (!field || !field->isSomethingSelected())
        return;
    menu->addSeparator();
    menu->addAction(m_renameAction);
    menu->addAction(m_modifyColourAction);
    menu->addAction(m_modifyOrientationAction);
    menu->addAction(m_deleteAction);
}

void QCrossPlot::renameSelected(const QString& current)
{
    bool cancelled = true;
    const QString name = ValueChangeWidget::getValue(tr("Rename"), tr("New Name"), current, this, true, &cancelled);
    if (!cancelled)
        emit sendScatUpdate(name);
}

void QCrossPlot::modifySelectedColor(const QColor& current)
{
    const QColor colour = QColorDialog::getColor(current, this);
    if (colour.isValid())
        emit sendScatUpdate(colour);
}

void QCrossPlot::insertScatStructure(bool& flag)
{
    flag = false;
    emit sendInsertScatUpdate(mouseDataPoint());
}

void QCrossPlot::moveStructuralTops(const QPointF& previousPixel)
{
    emit sendMoveSelectedUpdate(mouseDataPoint() - transformInDataPoint(previousPixel));
}

void QCrossPlot::removeIntervalBoundary()
{
    m_intervalBoundaryHeld = takeIntervalBoundary();
}

} // namespace rkBase

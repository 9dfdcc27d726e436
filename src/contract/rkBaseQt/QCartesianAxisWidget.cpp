#include "QCartesianAxisWidget.h"

#include "UnitManager.h"

#include <QPainter>

#include <cmath>

// First cut: the interface compiles and the axis keeps its settings; the layout follows.

struct QCartesianAxisWidget::Tick {
};
struct QCartesianAxisWidget::Layout {
};

QCartesianAxisWidget::QCartesianAxisWidget(QWidget* parent) : QWidget(parent) {}
QCartesianAxisWidget::QCartesianAxisWidget(AxisPosition position, QWidget* parent) : QWidget(parent), m_position(position) {}
QCartesianAxisWidget::~QCartesianAxisWidget() = default;
void QCartesianAxisWidget::setAxisPosition(AxisPosition position) { m_position = position; }
void QCartesianAxisWidget::setOriginPosition(OriginPosition origin) { m_origin = origin; }
void QCartesianAxisWidget::setRange(double minimum, double maximum) { m_minimum = minimum; m_maximum = maximum; }
void QCartesianAxisWidget::fitNiceRange() {}
QCartesianAxisWidget::NiceRange QCartesianAxisWidget::niceRange(double minimum, double maximum) { return {minimum, maximum, 0.0}; }
void QCartesianAxisWidget::setZoom(double factor) { m_zoom = factor; }
void QCartesianAxisWidget::setOffset(int percent) { m_offsetPercent = percent; }
void QCartesianAxisWidget::followChart(const QSize& rasterSize, int xOffsetPixels, int yOffsetPixels)
{
    m_followsChart = true;
    m_chartRaster = rasterSize;
    m_chartXOffset = xOffsetPixels;
    m_chartYOffset = yOffsetPixels;
}
void QCartesianAxisWidget::setTitle(const QString& title) { m_title = title; }
void QCartesianAxisWidget::setTitleVisible(bool on) { m_titleVisible = on; }
void QCartesianAxisWidget::setUnitLabelVisible(bool on) { m_unitLabelVisible = on; }
QString QCartesianAxisWidget::titleText() const { return m_title; }
void QCartesianAxisWidget::setUnitManager(boost::shared_ptr<rkBase::UnitManager> manager) { m_unitManager = manager; }
void QCartesianAxisWidget::setFontPointSize(double) {}
double QCartesianAxisWidget::fontPointSize() const { return font().pointSizeF(); }
QVector<double> QCartesianAxisWidget::tickValues() const { return {}; }
QList<int> QCartesianAxisWidget::tickPixels() const { return {}; }
QStringList QCartesianAxisWidget::tickLabels() const { return {}; }
QList<int> QCartesianAxisWidget::gridLines() const { return {}; }
double QCartesianAxisWidget::tickStep() const { return 0.0; }
double QCartesianAxisWidget::valueToPixel(double) const { return NAN; }
double QCartesianAxisWidget::pixelToValue(double) const { return NAN; }
void QCartesianAxisWidget::draw(QPainter*, const QRect&) const {}
QSize QCartesianAxisWidget::sizeHint() const { return QSize(55, 55); }
QSize QCartesianAxisWidget::minimumSizeHint() const { return QSize(20, 20); }
void QCartesianAxisWidget::redraw() { emit gridLinesChanged({}); }
void QCartesianAxisWidget::paintEvent(QPaintEvent*) {}
void QCartesianAxisWidget::resizeEvent(QResizeEvent*) {}
void QCartesianAxisWidget::changeEvent(QEvent* event) { QWidget::changeEvent(event); }
QCartesianAxisWidget::Layout QCartesianAxisWidget::layoutFor(const QSize&) const { return {}; }
void QCartesianAxisWidget::paintLayout(QPainter&, const Layout&, const QRect&) const {}
void QCartesianAxisWidget::relayout(bool) {}
double QCartesianAxisWidget::toDisplay(double v) const { return v; }
double QCartesianAxisWidget::toModel(double v) const { return v; }
void QCartesianAxisWidget::unitsChanged(const QString&) {}

#include "QWoodcockHelpWidget.h"

namespace rkBase {

QWoodcockHelpWidget::QWoodcockHelpWidget(QWidget* parent) : QChartDrawingArea(parent, QStringLiteral("Woodcock Parameter"))
{
    setMouseTracking(true);
}

QWoodcockHelpWidget::~QWoodcockHelpWidget() = default;

void QWoodcockHelpWidget::addPoint(const double&, const double&, const int&, const QColor&) {}
void QWoodcockHelpWidget::setPoint(double x, double y)
{
    m_currentX = x;
    m_currentY = y;
    update();
}
void QWoodcockHelpWidget::resetPoints() {}
QPointF QWoodcockHelpWidget::point(const QPointF& small, const QPointF&) { return small; }
QPointF QWoodcockHelpWidget::ratioPixel(double, double) { return {}; }
void QWoodcockHelpWidget::paintEvent(QPaintEvent* event) { QChartDrawingArea::paintEvent(event); }
void QWoodcockHelpWidget::rescalePixmap() {}

} // namespace rkBase

#include "QWoodcockHelpWidget.h"

#include <QCoreApplication>
#include <QPainter>

#include <cmath>

namespace rkBase {

namespace {
// The picture's axes were measured with the picture scaled to these two sizes.
constexpr double kSmallSize = 383.0;
constexpr double kLargeSize = 634.0;
// Both axes run from 0 at the origin to this value at their measured ends.
constexpr double kAxisEnd = 5.0;
// Points farther off the widget than this are not drawn: they could not be seen, and the
// rasteriser has no use for coordinates near the limits of a double.
constexpr double kFarOff = 1e4;

const QPointF kOriginSmall(60, 338), kOriginLarge(100, 561);
const QPointF kXEndSmall(330, 338), kXEndLarge(546, 561);
const QPointF kYEndSmall(60, 68), kYEndLarge(100, 113);
} // namespace

QWoodcockHelpWidget::QWoodcockHelpWidget(QWidget* parent)
    : QChartDrawingArea(parent, QCoreApplication::translate("QWoodcockHelpWidget", "Woodcock Parameter")),
      m_diagramPixmap(QStringLiteral(":/rkBaseQt/Resources/Woodcock.png"))
{
    setMouseTracking(true);
}

QWoodcockHelpWidget::~QWoodcockHelpWidget() = default;

void QWoodcockHelpWidget::addPoint(const double& x, const double& y, const int& id, const QColor& colour)
{
    m_points.emplace_back(x, y);
    m_symbolIds.push_back(id);
    m_colours.push_back(colour);
}

void QWoodcockHelpWidget::setPoint(double x, double y)
{
    m_currentX = x;
    m_currentY = y;
    update();
}

void QWoodcockHelpWidget::resetPoints()
{
    m_points.clear();
    m_symbolIds.clear();
    m_colours.clear();
}

QPointF QWoodcockHelpWidget::point(const QPointF& small, const QPointF& large)
{
    const double w = m_scaledPixmap.width();
    const double h = m_scaledPixmap.height();
    return {small.x() + (w - kSmallSize) * (large.x() - small.x()) / (kLargeSize - kSmallSize),
            small.y() + (h - kSmallSize) * (large.y() - small.y()) / (kLargeSize - kSmallSize)};
}

QPointF QWoodcockHelpWidget::ratioPixel(double x, double y)
{
    const QPointF a = point(kOriginSmall, kOriginLarge);
    const QPointF b = point(kXEndSmall, kXEndLarge);
    const QPointF c = point(kYEndSmall, kYEndLarge);
    return {b.x() * x / kAxisEnd - a.x() * (x - kAxisEnd) / kAxisEnd,
            c.y() * y / kAxisEnd - a.y() * (y - kAxisEnd) / kAxisEnd};
}

void QWoodcockHelpWidget::rescalePixmap()
{
    // Scaling smoothly costs far more than painting the result: only a new size scales again.
    const QSize target = size();
    const QSize expected = m_diagramPixmap.size().scaled(target, Qt::KeepAspectRatio);
    if (!m_scaledPixmap.isNull() && m_scaledPixmap.size() == expected)
        return;
    m_scaledPixmap = m_diagramPixmap.isNull() || target.isEmpty()
                         ? QPixmap()
                         : m_diagramPixmap.scaled(target, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

bool QWoodcockHelpWidget::drawable(const QPointF& pixel) const
{
    return std::isfinite(pixel.x()) && std::isfinite(pixel.y()) && std::abs(pixel.x()) < width() + kFarOff
           && std::abs(pixel.y()) < height() + kFarOff;
}

void QWoodcockHelpWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // The picture keeps its aspect; the strip beside it takes the picture's white.
    painter.fillRect(rect(), Qt::white);
    rescalePixmap();
    painter.drawPixmap(0, 0, m_scaledPixmap);

    if (QRelationshipItemModel* m = model())
        m->setPointPixelSize(5);

    m_currentPointShown = false;
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        const QPointF& p = m_points[i];
        const QPointF pixel = ratioPixel(p.x(), p.y());
        const bool visible = drawable(pixel);
        // Exact equality: the current point is one of the classes only when it was computed
        // from the same rows; QPointF's own comparison is fuzzy.
        if (p.x() == m_currentX && p.y() == m_currentY) {
            if (visible)
                drawSymbols(pixel, m_symbolIds[i], m_colours[i], true, QColor(255, 255, 0, 255), 0, &painter);
            m_currentPointShown = true;
        } else if (visible) {
            drawSymbols(pixel, m_symbolIds[i], m_colours[i], false, QColor(Qt::black), 0, &painter);
        }
    }
    if (!m_currentPointShown) {
        const int style = model() ? int(model()->pointStyle()) : int(QRelationshipItemModel::Circle);
        const QPointF pixel = ratioPixel(m_currentX, m_currentY);
        if (drawable(pixel))
            drawSymbols(pixel, style, QColor(Qt::red), false, QColor(Qt::black), 0, &painter);
    }
}

} // namespace rkBase

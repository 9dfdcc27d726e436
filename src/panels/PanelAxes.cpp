#include "PanelAxes.h"

#include "EMFDevice.h"

#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace rkBase {

PanelAxes::PanelAxes(QCartesianAxisWidget* top, QCartesianAxisWidget* bottom, QCartesianAxisWidget* left,
                     QCartesianAxisWidget* right)
    : m_top(top), m_bottom(bottom), m_left(left), m_right(right)
{
}

QList<QCartesianAxisWidget*> PanelAxes::all() const
{
    QList<QCartesianAxisWidget*> out;
    for (QCartesianAxisWidget* a : {m_top, m_bottom, m_left, m_right})
        if (a)
            out.append(a);
    return out;
}

void PanelAxes::setZoom(double zoom, bool verticalOnly)
{
    for (QCartesianAxisWidget* a : {m_top, m_bottom})
        if (a)
            a->setZoom(verticalOnly ? 1.0 : zoom);
    for (QCartesianAxisWidget* a : {m_left, m_right})
        if (a)
            a->setZoom(zoom);
}

void PanelAxes::setHorizontalOffset(int percent)
{
    for (QCartesianAxisWidget* a : {m_top, m_bottom})
        if (a)
            a->setOffset(percent);
}

void PanelAxes::setVerticalOffset(int percent)
{
    for (QCartesianAxisWidget* a : {m_left, m_right})
        if (a)
            a->setOffset(a->originPosition() == QCartesianAxisWidget::OriginBottomLeft ? 100 - percent : percent);
}

void PanelAxes::setFontPointSize(double points)
{
    for (QCartesianAxisWidget* a : all())
        a->setFontPointSize(points);
}

void PanelAxes::setPalette(const QPalette& palette)
{
    for (QCartesianAxisWidget* a : all())
        a->setPalette(palette);
}

void PanelAxes::redraw()
{
    for (QCartesianAxisWidget* a : all())
        a->redraw();
}

int PanelAxes::thickness(const QCartesianAxisWidget* axis, bool horizontal) const
{
    if (!axis || axis->isHidden())
        return 0;
    const int shown = horizontal ? axis->height() : axis->width();
    // An axis never laid out (a panel not yet shown) still has its hinted thickness.
    if (shown > 1)
        return shown;
    return horizontal ? axis->sizeHint().height() : axis->sizeHint().width();
}

QRect PanelAxes::boundingRect(const QRect& chartRect) const
{
    return chartRect.adjusted(-thickness(m_left, false), -thickness(m_top, true), thickness(m_right, false),
                              thickness(m_bottom, true));
}

void PanelAxes::draw(QPainter* painter, const QRect& chartRect) const
{
    if (!painter || !painter->isActive())
        return;
    if (auto* device = dynamic_cast<EMFDevice*>(painter->device()))
        if (!device->clipRect().isNull())
            device->setClipRect(boundingRect(chartRect));
    painter->save();
    const int top = thickness(m_top, true), bottom = thickness(m_bottom, true);
    const int left = thickness(m_left, false), right = thickness(m_right, false);
    if (top > 0)
        m_top->draw(painter, QRect(chartRect.left(), chartRect.top() - top, chartRect.width(), top));
    if (bottom > 0)
        m_bottom->draw(painter, QRect(chartRect.left(), chartRect.bottom() + 1, chartRect.width(), bottom));
    if (left > 0)
        m_left->draw(painter, QRect(chartRect.left() - left, chartRect.top(), left, chartRect.height()));
    if (right > 0)
        m_right->draw(painter, QRect(chartRect.right() + 1, chartRect.top(), right, chartRect.height()));
    painter->restore();
}

} // namespace rkBase

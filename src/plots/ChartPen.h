#pragma once
// The solid pen the drawing area and its contouring build for every mark: a colour and a width,
// square caps and bevel joins unless a shape asks otherwise.

#include <QBrush>
#include <QColor>
#include <QPen>

namespace rkBase {

inline QPen makePen(const QColor& colour, double width, Qt::PenCapStyle cap = Qt::SquareCap,
                    Qt::PenJoinStyle join = Qt::BevelJoin)
{
    return QPen(QBrush(colour), width, Qt::SolidLine, cap, join);
}

} // namespace rkBase

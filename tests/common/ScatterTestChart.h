#pragma once
// The smallest chart: a relationship model's points at their own coordinates as pixels, over an
// optional contour grid. It exercises the drawing area before the real charts exist, and makes
// its protected drawing family reachable from tests.

#include "QChartDrawingArea.h"

#include <QPainter>

class ScatterTestChart : public rkBase::QChartDrawingArea
{
public:
    explicit ScatterTestChart(QWidget* parent = nullptr) : QChartDrawingArea(parent, QStringLiteral("Scatter")) {}

    QPointF transformInPixelPoint(const QPointF& data) override { return data; }
    void redraw() override
    {
        QChartDrawingArea::redraw();
        QPainter painter;
        beginRasterPainter(painter, m_chartPixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        drawChart(painter);
        ++redraws;
    }
    void drawChart(QPainter& painter) override
    {
        if (m_gridIsOn)
            drawGrid(&painter);
        drawContour(&painter);
        setPointPen(&painter);
        drawPoints(&painter);
    }

    using QChartDrawingArea::drawCentroids;
    using QChartDrawingArea::drawContourLabels;
    using QChartDrawingArea::drawLabel2;
    using QChartDrawingArea::drawLabel3;
    using QChartDrawingArea::drawPoints;
    using QChartDrawingArea::drawResultPoint;
    using QChartDrawingArea::drawTadPole;
    using QChartDrawingArea::paintingToWEMF;
    using QChartDrawingArea::setPointPen;
    int redraws = 0;
};

#pragma once
// The scatter test chart with an axis: a frame, a filled marker square, a title and a cursor
// readout against the left edge, so that a metafile of it has lines, fills, symbols and text at
// known places. It also notes whether paintingToWEMF() was on each time it drew.

#include "ScatterTestChart.h"

#include <MatrixData.h>

#include <QPainter>

#include <memory>

class FramedScatterChart : public ScatterTestChart
{
public:
    static QRect frame() { return QRect(40, 30, 320, 220); }
    static QRectF marker() { return QRectF(300, 50, 40, 30); }
    static QPointF titleAt() { return QPointF(60, 290); }
    static QString title() { return QStringLiteral("Porosity"); }
    // Two pixels from the left edge, above the frame.
    static QPointF readoutAt() { return QPointF(2, 18); }
    static QString readout() { return QStringLiteral("Pole: 30.00/ 120.00"); }

    // Crosses of size 4 on a grid inside the frame: columns at 80, 140, ..., rows at 70, 130, 190.
    static QVector<QPointF> gridPoints()
    {
        QVector<QPointF> out;
        for (int y = 70; y <= 190; y += 60)
            for (int x = 80; x <= 260; x += 60)
                out << QPointF(x, y);
        return out;
    }

    explicit FramedScatterChart(QWidget* parent = nullptr) : ScatterTestChart(parent) { resize(400, 320); }

    // Loads gridPoints() as plain dark blue crosses.
    void loadGrid()
    {
        const QVector<QPointF> points = gridPoints();
        m_x = std::make_unique<rkBase::MatrixData>(QStringLiteral("x"), points.size(), 1, QVariant::Double, true);
        m_y = std::make_unique<rkBase::MatrixData>(QStringLiteral("y"), points.size(), 1, QVariant::Double, true);
        for (int r = 0; r < points.size(); ++r) {
            m_x->setValue(r, 0, points[r].x());
            m_y->setValue(r, 0, points[r].y());
        }
        m_model.takeNewDataSet(1, rkBase::QRelationshipItemModel::ShowAll, m_x.get(), m_y.get(), {});
        m_model.setPointStyle(rkBase::QRelationshipItemModel::Cross);
        m_model.setPointPixelSize(4);
        setModel(&m_model);
    }

    void drawChart(QPainter& painter) override
    {
        paintFlags << paintingToWEMF();
        ScatterTestChart::drawChart(painter);
    }
    void drawAxis(QPainter& painter, QRect) override
    {
        painter.setPen(QPen(Qt::black, 2.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(frame());
        painter.setPen(QPen(QColor(200, 30, 30), 1.0));
        painter.setBrush(QColor(200, 30, 30));
        painter.drawRect(marker());
        painter.setPen(Qt::black);
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPointSize(14);
        painter.setFont(font);
        painter.drawText(titleAt(), title());
        font.setPointSize(10);
        painter.setFont(font);
        painter.drawText(readoutAt(), readout());
    }

    // paintingToWEMF() at each drawChart() call.
    QVector<bool> paintFlags;

private:
    std::unique_ptr<rkBase::MatrixData> m_x, m_y;
    rkBase::QRelationshipItemModel m_model;
};

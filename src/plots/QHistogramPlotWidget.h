#pragma once
// The histogram chart: one or two frequency tables (the data set and, for the two-sample test,
// the comparison) drawn as bars or lines, with the P10, P50 and P90 marks and their values, and
// for the test the confidence zone around one curve and the line of the largest difference.
// The numbers of the test come from the panel; the chart only draws them.
//
// Rules kept here that callers could otherwise guess:
// - x runs along the bins' positions, y upwards from 0 in the table's values.
// - Bins of value 0 draw no bar and give the line no vertex.
// - The confidence zone and the difference line need the comparison and a confidence line id
//   other than -1 (0: the zone around the data set's curve, 1: around the comparison's); no
//   zone is drawn while the critical difference is -1.

#include "QChartDrawingArea.h"

#include <QList>
#include <QRect>
#include <QPointF>

#include <functional>

namespace rkBase {

class QHistogramChartWidget;
class QHistogramItemModel;

class QHistogramPlotWidget : public QChartDrawingArea
{
    Q_OBJECT
public:
    QHistogramPlotWidget(QWidget* parent, const QString& unit, QHistogramChartWidget* owner);

    void setHistogramItemModel(QHistogramItemModel* model) { m_histogramModel = model; m_redrawNeeded = true; }
    void setHistogramItemModelCompare(QHistogramItemModel* model) { m_histogramModelCompare = model; m_redrawNeeded = true; }
    QHistogramItemModel* histogramItemModel() const { return m_histogramModel; }
    QHistogramItemModel* histogramItemModelCompare() const { return m_histogramModelCompare; }
    void setBoundaries(const QPointF& min, const QPointF& max);
    QPointF minPoint() const { return m_minPoint; }
    QPointF maxPoint() const { return m_maxPoint; }
    void setStatisticPoints(double p10, double p50, double p90, const QColor& colour);
    void setKolmogorovSmirnovStatistics(double x, double v1, double v2, double critical);
    void setConfidenceIntervalLineID(int id) { m_confidenceLineID = id; m_redrawNeeded = true; }
    int confidenceIntervalLineID() const { return m_confidenceLineID; }
    double ksCriticalDifference() const { return m_ksCriticalDifference; }
    void setShowP10(bool on) { m_showP10 = on; m_redrawNeeded = true; }
    void setShowP50(bool on) { m_showP50 = on; m_redrawNeeded = true; }
    void setShowP90(bool on) { m_showP90 = on; m_redrawNeeded = true; }
    void setShowP10Text(bool on) { m_showP10Text = on; m_redrawNeeded = true; }
    void setShowP50Text(bool on) { m_showP50Text = on; m_redrawNeeded = true; }
    void setShowP90Text(bool on) { m_showP90Text = on; m_redrawNeeded = true; }
    void setShowHistogramBars(bool on) { m_showHistogramBars = on; m_redrawNeeded = true; }
    void setShowHistogramLine(bool on) { m_showHistogramLine = on; m_redrawNeeded = true; }
    bool showHistogramBars() const { return m_showHistogramBars; }
    bool showHistogramLine() const { return m_showHistogramLine; }
    void setHistogramLineWidth(int width) { m_histogramLineWidth = width; m_redrawNeeded = true; }
    void setTandLdirection(double t, double l) { m_tDirection = t; m_lDirection = l; m_redrawNeeded = true; }
    double p10() const { return m_p10; }
    double p50() const { return m_p50; }
    double p90() const { return m_p90; }
    // Grid lines in widget pixels, as the axes give them.
    void setVerticalGridLines(const QList<int>& lines) { m_verticalGridLines = lines; m_redrawNeeded = true; }
    void setHorizontalGridLines(const QList<int>& lines) { m_horizontalGridLines = lines; m_redrawNeeded = true; }

    // What paints the axes beside the chart in a metafile (the panel's axes); none by default.
    void setAxisPainter(std::function<void(QPainter&, const QRect&)> painter) { m_axisPainter = std::move(painter); }
    void drawAxis(QPainter& painter, QRect rect) override;

    QPointF transformInDataPoint(const QPointF& widgetPixel) const;
    QPointF transformInPixelPoint(const QPointF& data) override;
    void redraw() override;
    void drawChart(QPainter& painter) override;
    void drawGrid(QPainter* painter) override;

public slots:
    void verticalGridLinesChanged(const QList<int>& lines) { setVerticalGridLines(lines); update(); }
    void horizontalGridLinesChanged(const QList<int>& lines) { setHorizontalGridLines(lines); update(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void drawLayers(QPainter* painter);
    void drawHistogram(QPainter* painter, const QHistogramItemModel* model);
    void drawHistogramLine(QPainter* painter, const QHistogramItemModel* model);
    void drawConfidenceZone(QPainter* painter, const QHistogramItemModel* model);
    void drawKSmaxDifference(QPainter* painter);
    void drawStatisticMeasures(QPainter* painter);
    void drawStatisticText(QPainter* painter);
    void drawTandLdirection(QPainter* painter);
    // x of a bin row for the line: its start.
    bool zoneApplies() const;

    QString m_unit;
    QHistogramItemModel* m_histogramModel = nullptr;
    QHistogramItemModel* m_histogramModelCompare = nullptr;
    QHistogramChartWidget* m_ownerPanel = nullptr;
    QPointF m_minPoint{10.0, 10.0};
    QPointF m_maxPoint{10.0, 10.0};
    int m_originPosition = 1;
    QList<int> m_verticalGridLines;
    QList<int> m_horizontalGridLines;
    double m_p10 = 0.0, m_p50 = 0.0, m_p90 = 0.0;
    bool m_showP10 = false, m_showP50 = false, m_showP90 = false;
    bool m_showP10Text = false, m_showP50Text = false, m_showP90Text = false;
    bool m_showHistogramBars = true;
    bool m_showHistogramLine = false;
    int m_histogramLineWidth = 2;
    double m_ksX = 0.0, m_ksValue1 = 0.0, m_ksValue2 = 0.0;
    double m_ksCriticalDifference = -1.0;
    int m_confidenceLineID = -1;
    double m_tDirection = -1.0, m_lDirection = -1.0;
    QColor m_statisticColor{Qt::black};
    std::function<void(QPainter&, const QRect&)> m_axisPainter;
};

} // namespace rkBase

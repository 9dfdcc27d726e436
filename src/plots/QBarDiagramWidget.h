#pragma once
// The bar chart surface: numeric columns reduced over rows (BarDiagramData) as normal bars side
// by side, stacked bars, or stacked bars scaled to the percent of each category's total, with a
// value axis, category labels, a legend and a title. It draws through drawChart() on any
// painter, so a metafile gets the same chart as the raster.
//
// Rules kept here that callers could otherwise guess:
// - Positive values stack upwards from 0 and negative values downwards, in series order, so a
//   stack never hides a part of itself. Percent bars divide by the sum of the absolute values
//   of a category; a category whose values are all 0 or missing draws nothing.
// - The value axis always holds 0, and its ticks are 1, 2 or 5 times a power of ten apart.
// - Category labels never overlap and are never cut: the layout measures them, turns text
//   labels upright when they do not fit side by side, shortens labels longer than
//   kMaxLabelPixels with an ellipsis, and labels only every k-th category (k of the 1, 2, 5
//   series) when even that does not fit. Number labels (row numbers) are thinned out rather
//   than turned. The margins are made from what was measured.

#include "BarDiagramData.h"
#include "QChartDrawingArea.h"

#include <QFont>
#include <QRectF>
#include <QSize>
#include <QString>

#include <vector>

namespace rkBase {

class QBarDiagramWidget : public QChartDrawingArea
{
    Q_OBJECT
public:
    enum BarMode { NormalBars = 0, StackedBars = 1, PercentBars = 2 };

    static constexpr double kMaxLabelPixels = 160.0;

    // One drawn bar, or one part of a stack, in value units.
    struct Segment {
        int series;
        int category;
        double base;
        double top;
    };

    // Where everything goes on a device of a given size.
    struct Layout {
        QRectF title;
        QRectF legend;
        std::vector<QRectF> legendSwatches;
        std::vector<QRectF> legendTexts;
        std::vector<QString> legendLabels;
        QRectF plot;
        double valueMin = 0.0;
        double valueMax = 1.0;
        double tickStep = 1.0;
        std::vector<double> ticks;
        // The tick labels shown: all of them, unless the plot is lower than they are tall.
        std::vector<QRectF> tickLabelBoxes;
        std::vector<QString> tickLabels;
        double pitch = 0.0; // pixels per category
        bool labelsUpright = false;
        int labelEvery = 1;
        std::vector<int> labelCategories;
        std::vector<QString> labelTexts; // shortened where needed
        std::vector<QRectF> labelBoxes;  // on the device, whatever the turn
        QRectF categoryTitle;
        QRectF valueTitle; // before its turn: the box the upright text occupies
    };

    explicit QBarDiagramWidget(QWidget* parent = nullptr);

    void setData(const BarDiagramData& data);
    const BarDiagramData& data() const { return m_data; }
    // The colour a series is drawn in: its column's, unless an earlier series has that colour
    // already or it has none; then one of a fixed cycle of distinct colours.
    QColor seriesColour(int s) const;
    void setBarMode(BarMode mode) { m_barMode = mode; }
    BarMode barMode() const { return m_barMode; }
    void setShowLegend(bool on) { m_showLegend = on; }
    bool showLegend() const { return m_showLegend; }

    // The bars of a mode, in series order within each category; missing values give none. A
    // stack that would pass the largest double ends at it.
    static std::vector<Segment> segments(const BarDiagramData& data, BarMode mode);
    // Ticks from min to max (both widened to whole steps), at most about maxTicks of them,
    // 1, 2 or 5 times a power of ten apart; step gets the distance. Empty for non-finite input.
    // An end tick that would pass the largest double is the largest double.
    static std::vector<double> niceTicks(double min, double max, int maxTicks, double& step);
    // The text of a tick value at a given step: as many decimals as the step needs.
    static QString tickText(double value, double step);

    // Text is measured as it comes out on the device (its resolution), or on the screen.
    Layout layout(const QSize& size, const QFont& font, QPaintDevice* device = nullptr) const;
    // The category under a pixel of the chart's raster, or -1.
    int categoryAt(const QPointF& pixel) const;

    void drawChart(QPainter& painter) override;
    void drawAxis(QPainter& painter, QRect rect) override;
    void redraw() override;
    void drawGrid(QPainter* painter) override;
    // x: the category (its centre), y: the value.
    QPointF transformInPixelPoint(const QPointF& data) override;

protected:
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    // The size a painter lays the chart out on.
    QSize deviceSize(QPainter& painter) const;
    Layout layoutOf(QPainter& painter) const;
    void drawGridWith(QPainter& painter, const Layout& l) const;
    void drawAxisWith(QPainter& painter, const Layout& l) const;
    void drawBars(QPainter& painter, const Layout& l) const;
    void drawLegend(QPainter& painter, const Layout& l) const;
    QString headerText() const;
    double valueToY(const Layout& l, double v) const;

    BarDiagramData m_data;
    std::vector<QColor> m_colours;
    BarMode m_barMode = NormalBars;
    bool m_showLegend = true;
    // The layout of the raster as last drawn: what the mouse and transformInPixelPoint go by.
    Layout m_layout;
};

} // namespace rkBase

// The drawing area every chart stands on, at the sizes users work at: a raster rebuilt with
// 100,000 crosses, filled contours with lines of a 101 x 101 grid at 20 levels, a repaint when
// only the overlay changed, and a legend of 100,000 classes read one page at a time.
#include "ScatterTestChart.h"

#include <MatrixDataArray.h>
#include <QLegendListModel.h>
#include <QLegendListView.h>
#include <QRelationshipItemModel.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>
#include <QRandomGenerator>

#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kPoints = 100000;
const QSize kRaster(1000, 800);

struct Scatter : bench::PointSet {
    Scatter()
        : PointSet(QStringLiteral("x"), QStringLiteral("y"), kPoints, [](QRandomGenerator& rng) {
              const double x = 50.0 + rng.bounded(900.0);
              return QPointF(x, 50.0 + rng.bounded(700.0));
          })
    {
    }
};

// A chart whose overlay carries a lasso, as the stereonet's does while the mouse moves.
class LassoChart : public ScatterTestChart
{
public:
    QPolygonF lasso;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (m_redrawNeeded) {
            redraw();
            m_redrawNeeded = false;
        }
        QImage& overlay = beginOverlay();
        QPainter painter(&overlay);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::red, 1.0));
        painter.drawPolyline(lasso);
        painter.end();
        ScatterTestChart::paintEvent(event);
    }
};

void BM_RedrawCrosses(benchmark::State& state)
{
    Scatter data;
    ScatterTestChart chart;
    chart.setModel(&data.model);
    chart.setSymbolStamping(state.range(0) != 0);
    chart.resize(kRaster);
    chart.updateChart();
    for (auto _ : state) {
        chart.updateChart();
        benchmark::DoNotOptimize(chart.chartImage().constBits());
    }
    state.SetLabel(state.range(0) ? "stamped" : "real shapes");
    state.counters["points/s"] = benchmark::Counter(double(kPoints), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_RedrawCrosses)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->MinTime(1.0);

void BM_FilledContoursWithLines(benchmark::State& state)
{
    const int n = 101;
    MatrixDataArray grid(QStringLiteral("grid"), n, n, QVariant::Double);
    double lo = 1e27, hi = -1e27;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const double x = -1.0 + 2.0 * i / (n - 1), y = -1.0 + 2.0 * j / (n - 1);
            const double z = std::exp(-((x - 0.3) * (x - 0.3) + (y + 0.2) * (y + 0.2)) * 6) +
                             0.6 * std::exp(-((x + 0.4) * (x + 0.4) + (y - 0.4) * (y - 0.4)) * 10) +
                             0.05 * std::sin(7 * x) * std::cos(5 * y);
            grid.setValue(i, j, z);
            lo = std::min(lo, z);
            hi = std::max(hi, z);
        }
    ScatterTestChart chart;
    chart.setGridRect(QRectF(100, 0, 800, 800));
    chart.setContourPolesOn(true);
    chart.setContourLinesOn(true);
    QImage image(kRaster, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        chart.drawContour(&painter, &grid, lo, hi, false, 1.0);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_FilledContoursWithLines)->Unit(benchmark::kMillisecond)->MinTime(1.0);

void BM_OverlayRepaint(benchmark::State& state)
{
    Scatter data;
    LassoChart chart;
    chart.setModel(&data.model);
    chart.resize(kRaster);
    for (int i = 0; i < 200; ++i)
        chart.lasso << QPointF(500 + 300 * std::cos(i * 0.05), 400 + 300 * std::sin(i * 0.05));
    QImage target(kRaster, QImage::Format_ARGB32_Premultiplied);
    chart.render(&target); // builds the raster once
    for (auto _ : state) {
        chart.lasso << QPointF(500, 400);
        chart.render(&target);
        benchmark::DoNotOptimize(target.constBits());
    }
}
BENCHMARK(BM_OverlayRepaint)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// A page of a legend of 100,000 classes at the top, middle and bottom: the same cost anywhere.
void BM_LegendPage(benchmark::State& state)
{
    static Scatter data;
    ScatterTestChart chart;
    chart.setModel(&data.model);
    QLegendListModel legend(nullptr, &chart, QLegendListModel::SymbolLegend);
    QMap<int, QVariant> values;
    QMap<int, QColor> colours;
    for (int id = 0; id <= 100000; ++id) {
        values.insert(id, id);
        colours.insert(id, QColor::fromHsv(id % 360, 200, 200));
    }
    legend.setClasses(values, colours);
    const int total = legend.rowCount();
    const int value = int(state.range(0) / 100.0 * (total - 30));
    for (auto _ : state) {
        QLegendListView::slotLegendsVerticalScrollBarChanged(&legend, value, 0, total - 30, 30);
        int shown = 0;
        for (int row = legend.firstVisibleRow(); row < legend.lastVisibleRow(); ++row)
            shown += !legend.data(legend.index(row, 0), Qt::DecorationRole).isNull();
        benchmark::DoNotOptimize(shown);
    }
    state.SetLabel(QStringLiteral("scroll at %1 %").arg(state.range(0)).toStdString());
}
BENCHMARK(BM_LegendPage)->Arg(0)->Arg(50)->Arg(99)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

// The stereonet at the size users work at: the raster rebuilt with 100,000 poles as crosses on
// the equal area net with its 10-degree grid, 1000 x 800; the same with the symbols drawn as real
// shapes instead of stamped; the net and frame alone; a scroll step at zoom 20; and an overlay
// repaint while a lasso grows.
#include <QRelationshipItemModel.h>
#include <QStereoPlotWidget.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QRandomGenerator>

#include <memory>

using namespace rkBase;

namespace {

constexpr int kPoles = 100000;
const QSize kRaster(1000, 800);

// Planes of uniformly random dip and dip direction, as the anchor draws them.
struct Planes : bench::PointSet {
    Planes()
        : PointSet(QStringLiteral("dip"), QStringLiteral("azimuth"), kPoles, [](QRandomGenerator& rng) {
              const double dip = rng.bounded(90.0);
              return QPointF(dip, rng.bounded(360.0));
          })
    {
    }
};

Planes& planes()
{
    static Planes p;
    return p;
}

class Stereonet : public QStereoPlotWidget
{
public:
    Stereonet() : QStereoPlotWidget(nullptr, QStringLiteral("Stereonet")) { resize(kRaster); }
    using QStereoPlotWidget::mouseMoveEvent;
    using QStereoPlotWidget::mousePressEvent;
};

void redrawPoles(benchmark::State& state, bool stamping)
{
    Stereonet net;
    net.setModel(&planes().model);
    net.setSymbolStamping(stamping);
    net.redraw();
    for (auto _ : state) {
        net.redraw();
        benchmark::DoNotOptimize(net.chartImage().constBits());
    }
    state.counters["poles/s"] = benchmark::Counter(double(kPoles), benchmark::Counter::kIsIterationInvariantRate);
}

void BM_RedrawStereonet100kPoles(benchmark::State& state) { redrawPoles(state, true); }
BENCHMARK(BM_RedrawStereonet100kPoles)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_RedrawStereonet100kPolesRealShapes(benchmark::State& state) { redrawPoles(state, false); }
BENCHMARK(BM_RedrawStereonet100kPolesRealShapes)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_RedrawNetOnly(benchmark::State& state)
{
    Stereonet net;
    net.redraw();
    for (auto _ : state) {
        net.redraw();
        benchmark::DoNotOptimize(net.chartImage().constBits());
    }
}
BENCHMARK(BM_RedrawNetOnly)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// A scroll step on a chart zoomed 20 times: the window the widget shows is redrawn through the
// new offsets (the zoomed raster itself is never held). The counters report the bytes the chart
// holds for its raster at zoom 1 and at zoom 20.
void BM_ScrollStepZoom20(benchmark::State& state)
{
    Stereonet net;
    net.setModel(&planes().model);
    net.updateChart();
    const double atOne = double(net.rasterMemoryBytes());
    net.zoom(20.0);
    net.updateChart();
    int step = 0;
    for (auto _ : state) {
        net.xoffset(50 + (step++ & 1));
        net.updateChart();
        benchmark::DoNotOptimize(net.chartImage().constBits());
    }
    state.counters["raster MB zoom 1"] = atOne / 1e6;
    state.counters["raster MB zoom 20"] = double(net.rasterMemoryBytes()) / 1e6;
}
BENCHMARK(BM_ScrollStepZoom20)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// A mouse move while a lasso is drawn: the raster is not rebuilt, only copied and overdrawn.
void BM_LassoOverlayRepaint(benchmark::State& state)
{
    Stereonet net;
    net.setModel(&planes().model);
    net.redraw();
    bench::growLasso(state, net, QPointF(net.centre()), 100.0);
}
BENCHMARK(BM_LassoOverlayRepaint)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

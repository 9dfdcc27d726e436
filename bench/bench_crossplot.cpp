// The cross plot at the size users work at: the raster rebuilt with 100,000 points as crosses,
// the regression line and its 90 % range and a grid, 1000 x 800 (the picture the matplotlib
// anchor draws); the same with the symbols drawn as real shapes instead of stamped; and a mouse
// move while a lasso grows, which repaints only the overlay.
#include <QCrossPlot.h>
#include <QRelationshipItemModel.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QRandomGenerator>

#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kPoints = 100000;
const QSize kRaster(1000, 800);

// Porosity falling with depth plus noise, as the anchor draws it.
struct Well {
    std::unique_ptr<MatrixData> depth, porosity;
    QRelationshipItemModel model;
    double slope = 0.0, intercept = 0.0, coefficient = 0.0;
    Well()
    {
        depth = std::make_unique<MatrixData>(QStringLiteral("depth"), kPoints, 1, QVariant::Double, true);
        porosity = std::make_unique<MatrixData>(QStringLiteral("porosity"), kPoints, 1, QVariant::Double, true);
        QRandomGenerator rng(11);
        for (int r = 0; r < kPoints; ++r) {
            const double d = 1000.0 + rng.bounded(1500.0);
            // A sum of uniforms is near enough a normal for noise.
            double noise = 0.0;
            for (int k = 0; k < 4; ++k)
                noise += rng.bounded(1.0) - 0.5;
            depth->setValue(r, 0, d);
            porosity->setValue(r, 0, 0.3 - 1e-4 * (d - 1000.0) + 0.03 * noise);
        }
        model.takeNewDataSet(depth.get(), porosity.get(), QRelationshipItemModel::ShowAll);
        model.setPointStyle(QRelationshipItemModel::Cross);
        model.setPointPixelSize(4);
        model.calculateRegressionLine(slope, intercept, coefficient);
    }
};

Well& well()
{
    static Well w;
    return w;
}

class Plot : public QCrossPlot
{
public:
    Plot() : QCrossPlot(nullptr, nullptr)
    {
        resize(kRaster);
        Well& w = well();
        setModel(&w.model);
        setBoundaries(w.model.minValue(), w.model.maxValue());
        setTrendLine(w.slope, w.intercept, w.coefficient);
        setShowRegressionLine(true);
        setShow90PercentRange(true);
        setGridIsOn(true);
        QList<int> vertical, horizontal;
        for (int i = 1; i < 10; ++i)
            vertical << i * 100;
        for (int i = 1; i < 8; ++i)
            horizontal << i * 100;
        verticalGridLinesChanged(vertical);
        horizontalGridLinesChanged(horizontal);
    }
    using QCrossPlot::mouseMoveEvent;
    using QCrossPlot::mousePressEvent;
};

void redrawPoints(benchmark::State& state, bool stamping)
{
    Plot plot;
    plot.setSymbolStamping(stamping);
    plot.redraw();
    for (auto _ : state) {
        plot.redraw();
        benchmark::DoNotOptimize(plot.chartImage().constBits());
    }
    state.counters["points/s"] = benchmark::Counter(double(kPoints), benchmark::Counter::kIsIterationInvariantRate);
}

void BM_RedrawCrossPlot100kPoints(benchmark::State& state) { redrawPoints(state, true); }
BENCHMARK(BM_RedrawCrossPlot100kPoints)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_RedrawCrossPlot100kPointsRealShapes(benchmark::State& state) { redrawPoints(state, false); }
BENCHMARK(BM_RedrawCrossPlot100kPointsRealShapes)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// A mouse move while a lasso is drawn: no redraw, only the raster shown and the overlay drawn.
void BM_LassoOverlayRepaint(benchmark::State& state)
{
    Plot plot;
    plot.redraw();
    bench::growLasso(state, plot, QPointF(500, 400), 200.0);
}
BENCHMARK(BM_LassoOverlayRepaint)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

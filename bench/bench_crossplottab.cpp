// The cross plot tab of the analyser window on a sheet of 1,000,000 rows with 500,000 of them
// selected, the chart at 1000 x 800: opening the tab (the rows handed over, takeNewDataSet, the
// boundaries, the statistics page and the first paint); a lasso over half the points, through the
// table's selection and back into the highlighted chart; and a mouse move while a lasso is drawn,
// which must stay a copy of the raster. bench/anchor_crossplottab.py draws the same picture with
// matplotlib.
#include <QCrossPlot.h>
#include <QCrossPlotWidget.h>
#include <QDataAnalyserDialog.h>
#include <QVertexModelTableView.h>
#include <TabWidgetWithFloatingTabs.h>
#include <UnitRegistry.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kRows = 1000000;
const QSize kChart(1000, 800);

struct Window {
    UnitRegistry registry;
    QDataAnalyserDialog dialog;
    QCrossPlot* plot = nullptr;

    Window()
    {
        dialog.dataRoot()->setRegistry(&registry);
        auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
        dialog.dataRoot()->appendChild(well, true);
        auto* depth = new MatrixData(QStringLiteral("Measured Depth"), kRows, 1, QVariant::Double, true);
        auto* porosity = new MatrixData(QStringLiteral("Porosity"), kRows, 1, QVariant::Double, true);
        well->appendChild(depth, false);
        well->appendChild(porosity, false);
        QRandomGenerator rng(5);
        for (int r = 0; r < kRows; ++r) {
            depth->setValue(r, 0, 1000.0 + rng.bounded(1500.0));
            porosity->setValue(r, 0, rng.bounded(0.3));
        }
        dialog.initialize(QStringLiteral("bench"), nullptr, &registry, Qt::Horizontal, false, false, false, false, false,
                          true, 1, false, false);
        QCrossPlotWidget* panel = dialog.crossPlotChart();
        panel->setCurrentHorizontalSelectedDataSet(QStringLiteral("Measured Depth"));
        panel->setCurrentVerticalSelectedDataSet(QStringLiteral("Porosity"));
        plot = panel->drawingArea();
        dialog.resize(1500, 1100);
        dialog.show();
        show(QStringLiteral("CROSSPLOT"));
        // Size the window so that the chart itself is 1000 x 800.
        for (int pass = 0; pass < 3; ++pass) {
            dialog.resize(dialog.size() + kChart - plot->size());
            QApplication::processEvents();
        }
        boost::dynamic_bitset<> half(kRows);
        for (int r = 0; r < kRows; r += 2)
            half.set(std::size_t(r));
        dialog.setNewRowSelectionFromGraphicalSelection(half);
        show(QStringLiteral("TABLE"));
    }

    void show(const QString& key)
    {
        TabWidgetWithFloatingTabs* tabs = dialog.tabWidget();
        tabs->setCurrentWidget(tabs->findPage(key));
    }

    void mouse(QEvent::Type type, const QPointF& at, Qt::MouseButtons buttons)
    {
        QMouseEvent e(type, at, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(plot, &e);
    }
};

// Made on first use and taken down in main() before the QApplication goes.
std::unique_ptr<Window> g_window;

Window& window()
{
    if (!g_window)
        g_window = std::make_unique<Window>();
    return *g_window;
}

void BM_OpenCrossPlotTab(benchmark::State& state)
{
    Window& w = window();
    w.show(QStringLiteral("TABLE"));
    // Each time another half of the rows is selected in the table, so that the tab has a new
    // selection to load (the same rows again would leave the chart as it is).
    boost::dynamic_bitset<> halves[2] = {boost::dynamic_bitset<>(kRows), boost::dynamic_bitset<>(kRows)};
    for (int r = 0; r < kRows; ++r)
        halves[r % 2].set(std::size_t(r));
    int turn = 0;
    for (auto _ : state) {
        state.PauseTiming();
        w.dialog.setNewRowSelectionFromGraphicalSelection(halves[++turn % 2]);
        state.ResumeTiming();
        w.show(QStringLiteral("CROSSPLOT"));
        benchmark::DoNotOptimize(w.dialog.crossPlotChart()->grab());
        state.PauseTiming();
        w.show(QStringLiteral("TABLE"));
        state.ResumeTiming();
    }
    state.counters["points"] = w.dialog.crossPlotChart()->model()->pointCount();
    state.counters["selected"] = w.dialog.crossPlotChart()->model()->numberOfSelectedPoints();
    state.counters["chart_w"] = w.plot->width();
    state.counters["chart_h"] = w.plot->height();
}
BENCHMARK(BM_OpenCrossPlotTab)->Unit(benchmark::kMillisecond)->MinTime(3.0);

// A lasso round the left half of the chart (half the depth range, so half the points): released,
// it selects the rows in the table, and the chart, stale from that selection, is handed them back
// from the table (the very rows it selected, so nothing is re-read) and paints them highlighted.
void BM_LassoThroughTheTable(benchmark::State& state)
{
    Window& w = window();
    w.show(QStringLiteral("CROSSPLOT"));
    w.dialog.crossPlotChart()->grab();
    const double wide = w.plot->width(), high = w.plot->height();
    const QVector<QPointF> lasso{{-2, -2}, {wide / 2, -2}, {wide / 2, high + 2}, {-2, high + 2}};
    // Where the time goes: the release (chart, panel, table), the reload from the table, the paint.
    double release = 0.0, reload = 0.0, paint = 0.0;
    QElapsedTimer clock;
    for (auto _ : state) {
        w.mouse(QEvent::MouseButtonPress, lasso[0], Qt::LeftButton);
        for (int i = 1; i <= lasso.size(); ++i)
            w.mouse(QEvent::MouseMove, lasso[i % lasso.size()], Qt::LeftButton);
        clock.start();
        w.mouse(QEvent::MouseButtonRelease, lasso[0], Qt::NoButton);
        release += clock.nsecsElapsed() * 1e-6;
        clock.start();
        w.dialog.slotTabWidgetChanged();
        reload += clock.nsecsElapsed() * 1e-6;
        clock.start();
        benchmark::DoNotOptimize(w.plot->grab());
        paint += clock.nsecsElapsed() * 1e-6;
    }
    const double n = double(std::max<benchmark::IterationCount>(state.iterations(), 1));
    state.counters["release_ms"] = release / n;
    state.counters["reload_ms"] = reload / n;
    state.counters["paint_ms"] = paint / n;
    state.counters["selected"] = w.dialog.crossPlotChart()->model()->numberOfSelectedPoints();
    state.counters["table_rows"] = double(w.dialog.vertexTable()->selectedRows(0).size());
}
BENCHMARK(BM_LassoThroughTheTable)->Unit(benchmark::kMillisecond)->MinTime(3.0);

// The chart alone redrawn with its 1,000,000 points, half of them highlighted.
void BM_RedrawHighlighted(benchmark::State& state)
{
    Window& w = window();
    w.show(QStringLiteral("CROSSPLOT"));
    w.plot->grab();
    for (auto _ : state)
        w.plot->updateChart();
}
BENCHMARK(BM_RedrawHighlighted)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// One mouse move while a lasso grows over the loaded tab: the raster is copied, the outline drawn.
void BM_MouseMoveOverTheTab(benchmark::State& state)
{
    Window& w = window();
    w.show(QStringLiteral("CROSSPLOT"));
    w.plot->grab();
    const QPointF centre(w.plot->width() / 2.0, w.plot->height() / 2.0);
    w.mouse(QEvent::MouseButtonPress, centre, Qt::LeftButton);
    int step = 0;
    for (auto _ : state) {
        const QPointF p = centre + QPointF(300.0 * std::cos(step * 0.05), 300.0 * std::sin(step * 0.05));
        w.mouse(QEvent::MouseMove, p, Qt::LeftButton);
        benchmark::DoNotOptimize(w.plot->grab());
        ++step;
    }
    // Let go outside the points' way: a short lasso would only clear the selection.
    w.mouse(QEvent::MouseButtonRelease, centre, Qt::NoButton);
}
BENCHMARK(BM_MouseMoveOverTheTab)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QPA_OFFSCREEN_NO_GLX", "1");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    g_window.reset();
    return 0;
}

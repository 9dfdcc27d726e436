// The stereo tab of the analyser window on 1,000,000 planes (two clusters and a fifth of noise,
// as bench/anchor_orientations.py makes them), the chart at 1000 x 800: opening the tab (the rows
// handed over, takeNewDataSet, the statistics with both density grids at 20 cells and the
// report, the first paint); a display check box, which repaints without statistics or grids; and
// the Fisher fit of the three probability plots. bench/anchor_stereotab.py and
// bench/anchor_fisherfit.py do the same work with numpy and matplotlib.
#include <QDataAnalyserDialog.h>
#include <QStereoChartWidget.h>
#include <QStereoPlotWidget.h>
#include <TabWidgetWithFloatingTabs.h>
#include <UnitRegistry.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QRandomGenerator>
#include <QTabWidget>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kRows = 1000000;
const QSize kChart(1000, 800);

double normal(QRandomGenerator& rng, double mean, double sd)
{
    // Box-Muller: enough for a benchmark's clusters.
    const double u = std::max(rng.generateDouble(), 1e-300), v = rng.generateDouble();
    return mean + sd * std::sqrt(-2.0 * std::log(u)) * std::cos(6.283185307179586 * v);
}

struct Window {
    UnitRegistry registry;
    QDataAnalyserDialog dialog;
    QStereoChartWidget* panel = nullptr;

    Window()
    {
        dialog.dataRoot()->setRegistry(&registry);
        auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
        dialog.dataRoot()->appendChild(well, true);
        auto* dip = new MatrixData(QStringLiteral("dip"), kRows, 1, QVariant::Double, true);
        auto* azimuth = new MatrixData(QStringLiteral("azimuth"), kRows, 1, QVariant::Double, true);
        well->appendChild(dip, false);
        well->appendChild(azimuth, false);
        for (MatrixData* c : {dip, azimuth})
            c->setUnitManager(UnitRegistry::CATEGORY_ORIENTATION);
        QRandomGenerator rng(11);
        for (int r = 0; r < kRows; ++r) {
            const double pick = rng.generateDouble();
            double d, a;
            if (pick < 0.45) {
                d = std::abs(normal(rng, 30.0, 7.0));
                a = normal(rng, 120.0, 12.0);
            } else if (pick < 0.80) {
                d = std::abs(normal(rng, 65.0, 9.0));
                a = normal(rng, 290.0, 15.0);
            } else {
                d = std::acos(rng.generateDouble()) * 57.29577951308232;
                a = rng.bounded(360.0);
            }
            dip->setValue(r, 0, std::min(d, 90.0));
            azimuth->setValue(r, 0, std::fmod(a + 720.0, 360.0));
        }
        dialog.initialize(QStringLiteral("bench"), nullptr, &registry, Qt::Horizontal, false, true, false, false, false,
                          false, 1, false, false);
        panel = dialog.stereoChart();
        panel->setCurrentDipSelectedDataSet(QStringLiteral("dip"));
        panel->setCurrentAzimuthSelectedDataSet(QStringLiteral("azimuth"));
        dialog.resize(1700, 1100);
        dialog.show();
        show(QStringLiteral("STEREOPLOT"));
        for (int pass = 0; pass < 3; ++pass) {
            dialog.resize(dialog.size() + kChart - panel->drawingArea()->size());
            QApplication::processEvents();
        }
        show(QStringLiteral("TABLE"));
    }

    void show(const QString& key)
    {
        TabWidgetWithFloatingTabs* tabs = dialog.tabWidget();
        tabs->setCurrentWidget(tabs->findPage(key));
    }
};

std::unique_ptr<Window> g_window;

Window& window()
{
    if (!g_window)
        g_window = std::make_unique<Window>();
    return *g_window;
}

void BM_OpenStereoTab(benchmark::State& state)
{
    Window& w = window();
    w.show(QStringLiteral("TABLE"));
    for (auto _ : state) {
        w.dialog.resetChartsUpdateNeeded();
        // A selection of other rows each time would do the same: nothing of the chart is kept.
        state.PauseTiming();
        w.panel->model()->touchData();
        state.ResumeTiming();
        w.show(QStringLiteral("STEREOPLOT"));
        benchmark::DoNotOptimize(w.panel->drawingArea()->grab());
        state.PauseTiming();
        w.show(QStringLiteral("TABLE"));
        state.ResumeTiming();
    }
    state.counters["points"] = w.panel->model()->pointCount();
    state.counters["chart_w"] = w.panel->drawingArea()->width();
    state.counters["chart_h"] = w.panel->drawingArea()->height();
}
BENCHMARK(BM_OpenStereoTab)->Unit(benchmark::kMillisecond)->MinTime(3.0);

// The 2 degree net switched on and off: a repaint of the chart, no statistics, no grids.
void BM_NetCheckBox(benchmark::State& state)
{
    Window& w = window();
    w.show(QStringLiteral("STEREOPLOT"));
    w.panel->drawingArea()->grab();
    auto* net = w.panel->findChild<QCheckBox*>(QStringLiteral("m_pqShow2DegreeNet"));
    for (auto _ : state) {
        net->toggle();
        benchmark::DoNotOptimize(w.panel->drawingArea()->grab());
    }
}
BENCHMARK(BM_NetCheckBox)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// The three probability plots of the Fisher fit on the 1,000,000 points, as the user gets them on
// the fit's page: the fit, then the plot in front painted (the two behind it draw when shown).
void BM_FitOfFisherDistribution(benchmark::State& state)
{
    Window& w = window();
    w.show(QStringLiteral("STEREOPLOT"));
    auto* pages = w.panel->findChild<QTabWidget*>(QStringLiteral("m_pqTabWidget"));
    pages->setCurrentWidget(pages->findChild<QWidget*>(QStringLiteral("GOODNESS_OF_FIT")));
    QApplication::processEvents();
    QWidget* front = w.panel->fitTabWidget()->currentWidget();
    for (auto _ : state) {
        state.PauseTiming();
        // The statistics mark the fit as stale; only then does it run.
        w.panel->updateObservationStatistics();
        state.ResumeTiming();
        w.panel->updateFitOfFisherDistribution();
        benchmark::DoNotOptimize(front->grab());
    }
    state.counters["front_w"] = front->width();
    pages->setCurrentIndex(0);
}
BENCHMARK(BM_FitOfFisherDistribution)->Unit(benchmark::kMillisecond)->MinTime(3.0);

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

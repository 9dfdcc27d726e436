// The SCAT window on a well of 1,000,000 dip rows, its four tracks 1400 x 900 together: handing
// it the columns (two apparent-dip columns computed, four models loaded, the first paint of the
// four tracks); a new T direction (the transverse column recomputed, its track reloaded and
// repainted); and, zoomed in four times, a scroll step and a zoom step repainting all four.
// bench/anchor_scat.py does the same work with numpy and matplotlib.
#include <QCrossPlot.h>
#include <QScatDepthPlotWidget.h>
#include <UnitRegistry.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QRandomGenerator>

#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kRows = 1000000;

struct Well {
    UnitRegistry registry;
    std::unique_ptr<MatrixData> root{new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true)};
    MatrixData* dip;
    MatrixData* azimuth;
    MatrixData* depth;
    std::unique_ptr<QScatDepthPlotWidget> window;

    Well()
    {
        root->setRegistry(&registry);
        auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
        root->appendChild(well, true);
        dip = new MatrixData(QStringLiteral("dip"), kRows, 1, QVariant::Double, true);
        azimuth = new MatrixData(QStringLiteral("azimuth"), kRows, 1, QVariant::Double, true);
        depth = new MatrixData(QStringLiteral("Measured Depth"), kRows, 1, QVariant::Double, true);
        for (MatrixData* c : {dip, azimuth, depth})
            well->appendChild(c, false);
        dip->setUnitManager(UnitRegistry::CATEGORY_ORIENTATION);
        azimuth->setUnitManager(UnitRegistry::CATEGORY_ORIENTATION);
        depth->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
        // A folded sequence: dips and azimuths swing with depth, with scatter (seed 11).
        QRandomGenerator rng(11);
        for (int r = 0; r < kRows; ++r) {
            const double z = 1000.0 + 1500.0 * r / kRows;
            const double phase = (z - 1000.0) / 300.0 * 2.0 * M_PI;
            dip->setValue(r, 0, std::clamp(30.0 + 20.0 * std::sin(phase) + rng.bounded(8.0) - 4.0, 0.0, 90.0));
            azimuth->setValue(r, 0, std::fmod(90.0 + 45.0 * std::cos(phase) + rng.bounded(20.0) + 350.0, 360.0));
            depth->setValue(r, 0, z);
        }
        window = std::make_unique<QScatDepthPlotWidget>(nullptr, root.get());
        window->resize(1700, 1000);
        window->show();
        window->updateTandLdirection(135.0, 45.0);
        QApplication::processEvents();
    }

    void load() { window->setDataSet(dip, azimuth, depth, nullptr, nullptr, {}); }
    QImage paint() { return window->renderTracks(); }
};

std::unique_ptr<Well> g_well;

Well& well()
{
    if (!g_well)
        g_well = std::make_unique<Well>();
    return *g_well;
}

void BM_ScatSetDataSet(benchmark::State& state)
{
    Well& w = well();
    for (auto _ : state) {
        w.load();
        benchmark::DoNotOptimize(w.paint());
    }
    const QCrossPlot* p = w.window->plot(QScatDepthPlotWidget::DipTrack);
    state.counters["points_per_track"] = w.window->dipItemModel()->pointCount();
    state.counters["track_w"] = p->width();
    state.counters["track_h"] = p->height();
}
BENCHMARK(BM_ScatSetDataSet)->Unit(benchmark::kMillisecond)->MinTime(3.0);

void BM_ScatNewTDirection(benchmark::State& state)
{
    Well& w = well();
    w.load();
    w.paint();
    QCrossPlot* track = w.window->plot(QScatDepthPlotWidget::TransverseDipTrack);
    int turn = 0;
    for (auto _ : state) {
        w.window->slotRotateInTDirection(++turn % 2 ? 120.0 : 135.0);
        benchmark::DoNotOptimize(track->grab());
    }
}
BENCHMARK(BM_ScatNewTDirection)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void zoomIn(Well& w)
{
    w.load();
    w.window->findChild<QCheckBox*>(QStringLiteral("m_pqZoomCheckBox"))->setChecked(true);
    w.window->findChild<QDoubleSpinBox*>(QStringLiteral("m_pqZoomFactorSpinBox"))->setValue(4.0);
    w.paint();
}

void BM_ScatScrollStep(benchmark::State& state)
{
    Well& w = well();
    zoomIn(w);
    int value = 0;
    for (auto _ : state) {
        value = (value + 5) % 100;
        w.window->slotVerticalSliderChanged(value);
        benchmark::DoNotOptimize(w.paint());
    }
}
BENCHMARK(BM_ScatScrollStep)->Unit(benchmark::kMillisecond)->MinTime(1.0);

void BM_ScatZoomStep(benchmark::State& state)
{
    Well& w = well();
    zoomIn(w);
    int turn = 0;
    for (auto _ : state) {
        w.window->slotZoomFactorChanged(++turn % 2 ? 4.1 : 4.0);
        benchmark::DoNotOptimize(w.paint());
    }
}
BENCHMARK(BM_ScatZoomStep)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QPA_OFFSCREEN_NO_GLX", "1");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    g_well.reset();
    return 0;
}

// Derived attributes on a sheet of 1,000,000 rows: each create... call of the analyser window with
// the window's refresh that ends it, and the undo of that call. "new" calls make their group and
// columns (the previous call was undone); "reused" calls overwrite the columns of an earlier one.
#include <MatrixData.h>
#include <QDataAnalyserDialog.h>
#include <QRelationshipItemModel.h>
#include <QStereoChartWidget.h>
#include <UnitRegistry.h>

#include "BenchSupport.h"

#include <QRandomGenerator>

#include <functional>
#include <memory>

using rkBase::MatrixData;
using rkBase::QDataAnalyserDialog;
using rkBase::QRelationshipItemModel;

namespace {
constexpr int kRows = 1000000;

MatrixData* column(MatrixData* well, const char* name, QVariant::Type type)
{
    auto* c = new MatrixData(QString::fromLatin1(name), kRows, 1, type, true);
    well->appendChild(c, false);
    return c;
}

// One window over a well of a million dips, azimuths and depths with its "$V" column; the stereo
// panel's model and a depth model (clusters, 200 decimation intervals) loaded as the panels would.
struct Window {
    rkBase::UnitRegistry registry;
    QDataAnalyserDialog dialog;
    QRelationshipItemModel depthModel;
    MatrixData* dip = nullptr;

    Window()
    {
        MatrixData* root = dialog.dataRoot();
        root->setRegistry(&registry);
        auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
        root->appendChild(well, true);
        dip = column(well, "dip", QVariant::Double);
        MatrixData* azimuth = column(well, "azimuth", QVariant::Double);
        MatrixData* depth = column(well, "depth", QVariant::Double);
        MatrixData* visible = column(well, "$V", QVariant::Bool);
        QRandomGenerator rng(11);
        for (int r = 0; r < kRows; ++r) {
            dip->setDoubleValue(r, 0, rng.bounded(90.0));
            azimuth->setDoubleValue(r, 0, rng.bounded(360.0));
            depth->setDoubleValue(r, 0, 1000.0 + r * 0.01);
            visible->setValue(r, 0, true);
        }
        dialog.initialize(QStringLiteral("bench"), nullptr, &registry, Qt::Horizontal, false, true, false, false, false,
                          false, 1, false, false);
        QRelationshipItemModel* stereo = dialog.stereoChart()->model();
        stereo->takeNewDataSet(dip, azimuth, QRelationshipItemModel::ShowAll);
        stereo->setScanline(10.0, 90.0, 5.0);
        depthModel.setDataRoot(root);
        depthModel.takeNewDataSet(dip, depth, QRelationshipItemModel::ShowAll);
        depthModel.buildClusters_KML(QStringLiteral("k3"), 3);
        depthModel.generateNumberOfIntervalFilter(200, 1000.0, 1000.0 + kRows * 0.01);
        depthModel.generateDataDecimation();
    }
};

// Built on first use and left to the process's end: widgets may not outlive the application
// object that the benchmark's main destroys first.
Window& window()
{
    static Window* w = new Window;
    return *w;
}

using Call = std::function<void(Window&)>;

// Times the call (its undo runs outside the clock, so every call starts from the same tree), or
// the undo of the call: the root's part and the window's refresh as the host runs them, or the
// root's part alone.
enum class Timed { Call, Undo, UndoWithoutRefresh };

void measure(benchmark::State& state, const Call& call, Timed timed)
{
    Window& w = window();
    MatrixData* root = w.dialog.dataRoot();
    const bool reused = state.range(0) != 0;
    if (reused)
        call(w);
    const bool timeUndo = timed != Timed::Call;
    for (auto _ : state) {
        if (timeUndo)
            state.PauseTiming();
        call(w);
        if (timeUndo)
            state.ResumeTiming();
        else
            state.PauseTiming();
        root->undoLastAction();
        if (timed == Timed::Undo)
            w.dialog.updateAllViews(false, true);
        else if (timed == Timed::Call)
            state.ResumeTiming();
    }
    if (timed == Timed::UndoWithoutRefresh)
        w.dialog.updateAllViews(false, false);
    if (reused)
        root->undoLastAction();
    root->clearUndoActions();
}

const Call kRotated = [](Window& w) { w.dialog.createRotatedAttributes(); };
const Call kRandom = [](Window& w) { w.dialog.createRandomOrientationAttributes(); };
const Call kCluster = [](Window& w) { w.dialog.createClusterAttribute(QStringLiteral("k3"), &w.depthModel); };
const Call kBias = [](Window& w) {
    w.dialog.createBiasWeightAttribute(QStringLiteral("Bias Weights"), w.dialog.stereoChart()->model());
};
const Call kDecimation = [](Window& w) {
    w.dialog.createDataDecimationAttribute(&w.depthModel, true, false, true, w.dip);
};

void BM_CreateRotated(benchmark::State& s) { measure(s, kRotated, Timed::Call); }
void BM_CreateRandomOrientations(benchmark::State& s) { measure(s, kRandom, Timed::Call); }
void BM_CreateCluster(benchmark::State& s) { measure(s, kCluster, Timed::Call); }
void BM_CreateBiasWeight(benchmark::State& s) { measure(s, kBias, Timed::Call); }
void BM_CreateDecimation(benchmark::State& s) { measure(s, kDecimation, Timed::Call); }
void BM_UndoRotated(benchmark::State& s) { measure(s, kRotated, Timed::Undo); }
void BM_UndoRandomOrientations(benchmark::State& s) { measure(s, kRandom, Timed::Undo); }
void BM_UndoCluster(benchmark::State& s) { measure(s, kCluster, Timed::Undo); }
void BM_UndoBiasWeight(benchmark::State& s) { measure(s, kBias, Timed::Undo); }
void BM_UndoDecimation(benchmark::State& s) { measure(s, kDecimation, Timed::Undo); }
void BM_UndoRotatedWithoutRefresh(benchmark::State& s) { measure(s, kRotated, Timed::UndoWithoutRefresh); }
void BM_UndoDecimationWithoutRefresh(benchmark::State& s) { measure(s, kDecimation, Timed::UndoWithoutRefresh); }

// The window's refresh alone, which every call ends with and the host runs after an undo.
void BM_WindowRefresh(benchmark::State& state)
{
    Window& w = window();
    for (auto _ : state)
        w.dialog.updateAllViews(false, false);
}
BENCHMARK(BM_WindowRefresh)->Unit(benchmark::kMillisecond)->Iterations(10);

#define DERIVED_BENCH(f) BENCHMARK(f)->ArgName("reused")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(10)
DERIVED_BENCH(BM_CreateRotated);
DERIVED_BENCH(BM_CreateRandomOrientations);
DERIVED_BENCH(BM_CreateCluster);
DERIVED_BENCH(BM_CreateBiasWeight);
DERIVED_BENCH(BM_CreateDecimation);
DERIVED_BENCH(BM_UndoRotated);
DERIVED_BENCH(BM_UndoRandomOrientations);
DERIVED_BENCH(BM_UndoCluster);
DERIVED_BENCH(BM_UndoBiasWeight);
DERIVED_BENCH(BM_UndoDecimation);
DERIVED_BENCH(BM_UndoRotatedWithoutRefresh);
DERIVED_BENCH(BM_UndoDecimationWithoutRefresh);
} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

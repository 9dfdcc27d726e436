// Orientation statistics and rotation on a million orientations loaded from two Double columns:
// the four statistics passes a stereonet refresh runs (mean of poles, mean of lines, Fisher,
// suggested section), with the per-point cache cold (first refresh after a load or an edit) and
// warm (a second refresh), and the in-place rotation of the whole list.
#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

using rkBase::MatrixData;
using rkBase::QRelationshipItemModel;

namespace {
constexpr int kPoints = 1000000;

struct Orientations {
    std::unique_ptr<MatrixData> dip;
    std::unique_ptr<MatrixData> azimuth;
    std::unique_ptr<QRelationshipItemModel> model;

    Orientations()
    {
        dip.reset(new MatrixData(QStringLiteral("dip"), kPoints, 1, QVariant::Double, true));
        azimuth.reset(new MatrixData(QStringLiteral("azimuth"), kPoints, 1, QVariant::Double, true));
        std::mt19937 rng(42);
        std::normal_distribution<double> spread(0.0, 15.0);
        std::uniform_real_distribution<double> any(0.0, 360.0);
        for (int r = 0; r < kPoints; ++r) {
            // Two sets of planes and some scatter, so the matrix is not degenerate.
            const bool second = r % 3 == 0;
            double d = (second ? 70.0 : 35.0) + spread(rng);
            d = d < 0 ? -d : (d > 90 ? 180 - d : d);
            double a = second ? 300.0 + spread(rng) : (r % 50 == 0 ? any(rng) : 120.0 + spread(rng));
            a = a < 0 ? a + 360 : (a >= 360 ? a - 360 : a);
            dip->setValue(r, 0, d);
            azimuth->setValue(r, 0, a);
        }
        model.reset(new QRelationshipItemModel);
        model->takeNewDataSet(dip.get(), azimuth.get(), QRelationshipItemModel::ShowAll);
    }
};

Orientations& data()
{
    static Orientations o;
    return o;
}

void statisticsRefresh(QRelationshipItemModel& m)
{
    m.calculateMeanDirection(true, false, nullptr, -1);
    m.calculateMeanDirection(false, false, nullptr, -1);
    double len, var, kappa, e1, e2, e3, norm, K, C, a, b, radius;
    bool unimodal;
    QString text;
    m.calculateFisherStatistics(len, var, kappa, e1, e2, e3, norm, K, C, a, b, radius, unimodal, text, true, false);
    m.calculateSuggestedSectionOrientation(false, nullptr);
    benchmark::DoNotOptimize(kappa);
    benchmark::DoNotOptimize(m.meanPrincipalPlane());
}

void BM_StatisticsCold(benchmark::State& state)
{
    QRelationshipItemModel& m = *data().model;
    for (auto _ : state) {
        m.touchData(); // as after a load or an edit: the per-point cache is rebuilt
        statisticsRefresh(m);
    }
    state.counters["points"] = m.rowCount();
}
BENCHMARK(BM_StatisticsCold)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_StatisticsWarm(benchmark::State& state)
{
    QRelationshipItemModel& m = *data().model;
    statisticsRefresh(m);
    for (auto _ : state)
        statisticsRefresh(m);
}
BENCHMARK(BM_StatisticsWarm)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_FisherWithBiasWeights(benchmark::State& state)
{
    QRelationshipItemModel& m = *data().model;
    m.setScanline(10.0, 45.0, 15.0);
    for (auto _ : state) {
        double len, var, kappa, e1, e2, e3, norm, K, C, a, b, radius;
        bool unimodal;
        QString text;
        m.calculateFisherStatistics(len, var, kappa, e1, e2, e3, norm, K, C, a, b, radius, unimodal, text, true,
                                    true);
        benchmark::DoNotOptimize(kappa);
    }
}
BENCHMARK(BM_FisherWithBiasWeights)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_RotateColumn(benchmark::State& state)
{
    QRelationshipItemModel& m = *data().model;
    for (auto _ : state)
        m.rotateDataAboutRotationAxis(nullptr, QPointF(20.0, 75.0), 10.0, true);
}
BENCHMARK(BM_RotateColumn)->Unit(benchmark::kMillisecond)->Iterations(10);

// The stereo panel's usual order: statistics first (the cache is current), then the turn.
void BM_RotateColumnAfterStatistics(benchmark::State& state)
{
    QRelationshipItemModel& m = *data().model;
    for (auto _ : state) {
        state.PauseTiming();
        statisticsRefresh(m);
        state.ResumeTiming();
        m.rotateDataAboutRotationAxis(nullptr, QPointF(20.0, 75.0), 10.0, true);
    }
}
BENCHMARK(BM_RotateColumnAfterStatistics)->Unit(benchmark::kMillisecond)->Iterations(10);
} // namespace

BENCHMARK_MAIN();

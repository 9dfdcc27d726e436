// The regression line of a million points, and the decimation of a million points into 100
// depth intervals: plain averages (porosity against depth) and orientation means per interval
// (dip against depth, with the dip azimuths in the data root). The numpy anchor is np.polyfit
// of degree 1 and per-bin sums through np.bincount on the same sizes (bench/anchor_regression.py).
#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

using rkBase::MatrixData;
using rkBase::QRelationshipItemModel;

namespace {
constexpr int kPoints = 1000000;

struct Well {
    std::unique_ptr<MatrixData> root;
    std::unique_ptr<QRelationshipItemModel> model;

    explicit Well(const QString& xName)
    {
        root.reset(new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true));
        auto* x = new MatrixData(xName, kPoints, 1, QVariant::Double, true);
        auto* depth = new MatrixData(QStringLiteral("depth"), kPoints, 1, QVariant::Double, true);
        auto* azimuth = new MatrixData(QStringLiteral("azimuth"), kPoints, 1, QVariant::Double, true);
        root->appendChild(x, false);
        root->appendChild(depth, false);
        root->appendChild(azimuth, false);
        std::mt19937 rng(7);
        std::normal_distribution<double> noise(0.0, 5.0);
        std::uniform_real_distribution<double> turn(-20.0, 20.0);
        for (int r = 0; r < kPoints; ++r) {
            const double d = 1000.0 + r * 0.002;
            const double v = 30.0 + 0.01 * (d - 1000.0) + noise(rng);
            x->setValue(r, 0, v < 0 ? -v : (v > 90 ? 180 - v : v));
            depth->setValue(r, 0, d);
            azimuth->setValue(r, 0, 120.0 + turn(rng));
        }
        model.reset(new QRelationshipItemModel);
        model->takeNewDataSet(x, depth, QRelationshipItemModel::ShowAll);
        model->setDataRoot(root.get());
        model->generateNumberOfIntervalFilter(100, 1000.0, 1000.0 + kPoints * 0.002);
    }
};

Well& porosity()
{
    static Well w(QStringLiteral("porosity"));
    return w;
}

Well& dips()
{
    static Well w(QStringLiteral("dip"));
    return w;
}

void BM_Regression(benchmark::State& state)
{
    QRelationshipItemModel& m = *porosity().model;
    double slope = 0, intercept = 0, coefficient = 0;
    for (auto _ : state) {
        m.calculateRegressionLine(slope, intercept, coefficient);
        benchmark::DoNotOptimize(slope);
    }
    state.counters["points"] = m.rowCount();
}
BENCHMARK(BM_Regression)->Unit(benchmark::kMillisecond);

void BM_DecimationAverages(benchmark::State& state)
{
    QRelationshipItemModel& m = *porosity().model;
    for (auto _ : state)
        m.generateDataDecimation();
    state.counters["rows"] = m.decimationData()->validValueRowCount();
}
BENCHMARK(BM_DecimationAverages)->Unit(benchmark::kMillisecond);

void BM_DecimationOrientationMeans(benchmark::State& state)
{
    QRelationshipItemModel& m = *dips().model;
    for (auto _ : state)
        m.generateDataDecimation();
    state.counters["rows"] = m.decimationData()->validValueRowCount();
}
BENCHMARK(BM_DecimationOrientationMeans)->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();

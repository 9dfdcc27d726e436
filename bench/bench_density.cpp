// Density counting of a million orientations (eight Fisher sets folded to the lower
// hemisphere) into a 101 x 101 grid over a net of radius 400: poles and dip directions with
// the per-point sines and cosines already cached (as after the statistics of a refresh), and
// poles with the cache cold (the first count after a load or an edit).
#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QRelationshipItemModel.h>
#include <StereoNetGeometry.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>

using rkBase::MatrixData;
using rkBase::MatrixDataArray;
using rkBase::QRelationshipItemModel;
using rkBase::StereoNetGeometry;

namespace {
constexpr int kPoints = 1000000;

struct Poles {
    std::unique_ptr<MatrixData> dip;
    std::unique_ptr<MatrixData> azimuth;
    std::unique_ptr<QRelationshipItemModel> model;
    StereoNetGeometry net;

    Poles()
    {
        dip.reset(new MatrixData(QStringLiteral("dip"), kPoints, 1, QVariant::Double, true));
        azimuth.reset(new MatrixData(QStringLiteral("azimuth"), kPoints, 1, QVariant::Double, true));
        std::mt19937_64 rng(20240611u);
        std::uniform_real_distribution<double> uniform;
        std::normal_distribution<double> normal;
        double centres[8][3];
        for (auto& c : centres) {
            double l = 0;
            for (double& x : c) {
                x = normal(rng);
                l += x * x;
            }
            for (double& x : c)
                x /= std::sqrt(l);
        }
        const double kappa = 20.0;
        for (int r = 0; r < kPoints; ++r) {
            const double* c = centres[r % 8];
            const double u = uniform(rng);
            const double w = 1.0 + std::log(u + (1.0 - u) * std::exp(-2.0 * kappa)) / kappa;
            const double phi = 2.0 * M_PI * uniform(rng);
            const double s = std::sqrt(std::max(0.0, 1.0 - w * w));
            const double a[3] = {std::abs(c[0]) < 0.9 ? 1.0 : 0.0, std::abs(c[0]) < 0.9 ? 0.0 : 1.0, 0.0};
            double e1[3] = {c[1] * a[2] - c[2] * a[1], c[2] * a[0] - c[0] * a[2], c[0] * a[1] - c[1] * a[0]};
            const double l1 = std::sqrt(e1[0] * e1[0] + e1[1] * e1[1] + e1[2] * e1[2]);
            for (double& x : e1)
                x /= l1;
            const double e2[3] = {c[1] * e1[2] - c[2] * e1[1], c[2] * e1[0] - c[0] * e1[2], c[0] * e1[1] - c[1] * e1[0]};
            double v[3];
            for (int d = 0; d < 3; ++d)
                v[d] = s * std::cos(phi) * e1[d] + s * std::sin(phi) * e2[d] + w * c[d];
            if (v[2] < 0)
                for (double& x : v)
                    x = -x;
            // The vector as a pole: dip from its tilt, dip direction opposite its bearing.
            const double dipDeg = std::acos(std::min(1.0, v[2])) * 180.0 / M_PI;
            double az = std::atan2(-v[1], -v[0]) * 180.0 / M_PI;
            if (az < 0)
                az += 360.0;
            dip->setValue(r, 0, dipDeg);
            azimuth->setValue(r, 0, az);
        }
        model.reset(new QRelationshipItemModel);
        model->takeNewDataSet(dip.get(), azimuth.get(), QRelationshipItemModel::ShowAll);
        net.gridRect = QRectF(100, 0, 800, 800);
        net.centre = QPointF(500, 400);
        net.radius = 400;
        net.equalArea = true;
    }
};

Poles& poles()
{
    static Poles p;
    return p;
}

void BM_CountWarm(benchmark::State& state)
{
    Poles& p = poles();
    const bool asPoles = state.range(0) == 1;
    p.model->countingOutProjections(101, 101, asPoles, false, p.net); // fills the cache
    for (auto _ : state)
        p.model->countingOutProjections(101, 101, asPoles, false, p.net);
    MatrixDataArray* grid = asPoles ? p.model->contourGridPoles() : p.model->contourGridDipDir();
    double sum = 0;
    for (int i = 0; i < 101; ++i)
        for (int j = 0; j < 101; ++j)
            sum += grid->toDouble(i, j);
    state.counters["grid_sum"] = sum;
}
BENCHMARK(BM_CountWarm)->ArgName("poles")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

void BM_CountCold(benchmark::State& state)
{
    Poles& p = poles();
    for (auto _ : state) {
        p.model->touchData(); // as after an edit: the sines and cosines are recomputed
        p.model->countingOutProjections(101, 101, true, false, p.net);
    }
}
BENCHMARK(BM_CountCold)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

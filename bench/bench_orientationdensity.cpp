// Kamb and exponential Kamb densities of 100,000 poles at the 101 x 101 nodes of a grid over the
// equal-area net (nodes off the net taken to its rim), as the stereonet's contours need them.
// The poles and nodes are those of anchor_orientation_density.py, which times numpy's
// vectorised sums on the same grid; grid_sum lets the two runs be checked against each other.
// CPU time is the whole process's: the grid splits its nodes over up to four threads.
#include <OrientationDensity.h>
#include <StereoNetGeometry.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

using rkBase::DensityMethod;

namespace {
constexpr int kPoles = 100000;
constexpr int kNodes = 101;
constexpr double kPi = 3.14159265358979323846;

double frac(double x)
{
    return x - std::floor(x);
}

// Two clusters (40 % and 20 %, 15 and 25 degrees wide) over 40 % uniform noise, from the R2
// low-discrepancy sequence, so that numpy builds the same set without sharing a generator.
std::vector<gdfVertex> poles()
{
    const gdfVertex centres[2] = {gdfVertex(0.3, 0.4, 0.866).normalize(), gdfVertex(-0.7, 0.7, 0.1).normalize()};
    const double width[2] = {15.0, 25.0};
    std::vector<gdfVertex> out;
    out.reserve(kPoles);
    for (int k = 0; k < kPoles; ++k) {
        const double u = frac(k * 0.7548776662466927), v = frac(k * 0.5698402909980532);
        const int kind = k % 5;
        if (kind >= 3) {
            const double z = 2.0 * u - 1.0, s = std::sqrt(1.0 - z * z);
            out.emplace_back(s * std::cos(2.0 * kPi * v), s * std::sin(2.0 * kPi * v), z);
            continue;
        }
        const gdfVertex& c = centres[kind == 2 ? 1 : 0];
        const gdfVertex e1 = (c ^ gdfVertex(0, 0, 1)).normalize();
        const gdfVertex e2 = c ^ e1;
        const double d = width[kind == 2 ? 1 : 0] * kPi / 180.0 * std::sqrt(u);
        const double phi = 2.0 * kPi * v;
        out.push_back(c * std::cos(d) + e1 * (std::sin(d) * std::cos(phi)) + e2 * (std::sin(d) * std::sin(phi)));
    }
    return out;
}

std::vector<gdfVertex> nodes()
{
    rkBase::StereoNetGeometry net;
    net.gridRect = QRectF(-1.0, -1.0, 2.0, 2.0);
    net.radius = 1.0;
    std::vector<gdfVertex> out;
    for (int i = 0; i < kNodes; ++i)
        for (int j = 0; j < kNodes; ++j)
            out.push_back(net.axisAt(QPointF(-1.0 + 2.0 * i / (kNodes - 1), -1.0 + 2.0 * j / (kNodes - 1)), true));
    return out;
}

void BM_DensityGrid(benchmark::State& state)
{
    static const std::vector<gdfVertex> p = poles();
    static const std::vector<gdfVertex> n = nodes();
    const DensityMethod method = state.range(0) == 1 ? DensityMethod::Kamb : DensityMethod::ExponentialKamb;
    std::vector<double> grid;
    for (auto _ : state) {
        grid = rkBase::orientationDensityGrid(p, n, method);
        benchmark::DoNotOptimize(grid.data());
    }
    double sum = 0.0, peak = 0.0;
    for (double v : grid) {
        sum += v;
        peak = std::max(peak, v);
    }
    state.counters["grid_sum"] = sum;
    state.counters["peak_sigma"] = peak;
}
BENCHMARK(BM_DensityGrid)
        ->ArgName("kamb")
        ->Arg(1)
        ->Arg(0)
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();

} // namespace

BENCHMARK_MAIN();

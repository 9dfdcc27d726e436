// A lasso of 2,000 vertices over 1,000,000 points, as a chart's mouse release runs it: the
// outline copied into a temporary one-column point node, then pointInOrOut for every point's
// pixel. The points are the R2 low-discrepancy sequence over a 1000 x 800 raster and the lasso
// a wobbly loop round its centre, both as bench/anchor_lasso.py builds them.
#include "LassoOutline.h"

#include <MatrixData.h>

#include <benchmark/benchmark.h>

#include <QPointF>

#include <cmath>
#include <vector>

using rkBase::MatrixData;

namespace {

std::vector<QPointF> rasterPoints(int n)
{
    // R2: fractional parts of i times the inverses of the plastic number and its square.
    const double a1 = 0.7548776662466927, a2 = 0.5698402909980532;
    std::vector<QPointF> points;
    points.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const double u = 0.5 + a1 * i, v = 0.5 + a2 * i;
        points.emplace_back(1000.0 * (u - std::floor(u)), 800.0 * (v - std::floor(v)));
    }
    return points;
}

void BM_LassoMillionPoints(benchmark::State& state)
{
    const std::vector<QPointF> outline = lassoOutline(static_cast<int>(state.range(0)));
    const std::vector<QPointF> points = rasterPoints(1000000);
    long inside = 0;
    for (auto _ : state) {
        MatrixData lasso(QStringLiteral("lasso"), static_cast<int>(outline.size()), 1, QVariant::PointF, true);
        for (int r = 0; r < static_cast<int>(outline.size()); ++r)
            lasso.setPointValue(r, outline[static_cast<std::size_t>(r)]);
        inside = 0;
        for (const QPointF& p : points)
            inside += lasso.pointInOrOut(p);
        benchmark::DoNotOptimize(inside);
    }
    state.counters["inside"] = static_cast<double>(inside);
}
BENCHMARK(BM_LassoMillionPoints)->Arg(2000)->Arg(20)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

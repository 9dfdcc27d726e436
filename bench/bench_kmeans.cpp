// k-means with k = 8 on a million three-dimensional unit vectors drawn from eight Fisher
// clusters (kappa 20) folded to the lower hemisphere: the whole search with the library's run
// rules (tree, stages, assignments), the tree alone, and one Lloyd stage by the filtering search
// against one by a plain nearest-centre scan, both from random data points and from the final
// centres.
//
// RK_KMEANS_POINTS=<file> reads the points instead: raw little-endian doubles, three per point,
// so that the search runs on exactly the points another program clustered.
#include <KMdata.h>
#include <KMfilterCenters.h>
#include <KMlocalLloyds.h>
#include <KMrandom.h>
#include <KMterm.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace {
constexpr int kPoints = 1000000;
constexpr int kCentres = 8;
const KMterm kTerm(100.0, 0, 0, 0, 0.10, 0.10, 3, 0.50, 10, 0.95);

std::vector<double> fisherMixture(int n, unsigned seed)
{
    std::mt19937_64 rng(seed);
    std::normal_distribution<double> normal;
    std::uniform_real_distribution<double> uniform;
    const double kappa = 20.0;
    double centres[kCentres][3];
    for (auto& c : centres) {
        double l = 0.0;
        for (double& x : c) {
            x = normal(rng);
            l += x * x;
        }
        for (double& x : c)
            x /= std::sqrt(l);
    }
    std::vector<double> out(3 * static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const double* c = centres[i % kCentres];
        const double u = uniform(rng);
        const double w = 1.0 + std::log(u + (1.0 - u) * std::exp(-2.0 * kappa)) / kappa;
        const double phi = 2.0 * M_PI * uniform(rng);
        const double s = std::sqrt(std::max(0.0, 1.0 - w * w));
        // An orthonormal frame about the centre.
        const double a[3] = {std::abs(c[0]) < 0.9 ? 1.0 : 0.0, std::abs(c[0]) < 0.9 ? 0.0 : 1.0, 0.0};
        double e1[3] = {c[1] * a[2] - c[2] * a[1], c[2] * a[0] - c[0] * a[2], c[0] * a[1] - c[1] * a[0]};
        const double l1 = std::sqrt(e1[0] * e1[0] + e1[1] * e1[1] + e1[2] * e1[2]);
        for (double& x : e1)
            x /= l1;
        const double e2[3] = {c[1] * e1[2] - c[2] * e1[1], c[2] * e1[0] - c[0] * e1[2], c[0] * e1[1] - c[1] * e1[0]};
        double* p = &out[3 * static_cast<std::size_t>(i)];
        for (int d = 0; d < 3; ++d)
            p[d] = s * std::cos(phi) * e1[d] + s * std::sin(phi) * e2[d] + w * c[d];
        if (p[2] < 0.0)
            for (int d = 0; d < 3; ++d)
                p[d] = -p[d];
    }
    return out;
}

const std::vector<double>& points()
{
    static const std::vector<double> pts = [] {
        if (const char* file = std::getenv("RK_KMEANS_POINTS")) {
            std::vector<double> v;
            if (FILE* f = std::fopen(file, "rb")) {
                double buf[3];
                while (std::fread(buf, sizeof(double), 3, f) == 3)
                    v.insert(v.end(), buf, buf + 3);
                std::fclose(f);
            }
            if (!v.empty())
                return v;
            std::fprintf(stderr, "cannot read %s; using generated points\n", file);
        }
        return fisherMixture(kPoints, 20240611u);
    }();
    return pts;
}

std::unique_ptr<KMdata> makeData()
{
    const std::vector<double>& pts = points();
    const int n = static_cast<int>(pts.size() / 3);
    auto data = std::make_unique<KMdata>(3, n);
    for (int i = 0; i < n; ++i)
        std::copy_n(&pts[3 * static_cast<std::size_t>(i)], 3, (*data)[i]);
    return data;
}

// One nearest-centre scan over every point: the sums and distortion a Lloyd stage needs.
double bruteForceStage(const KMdata& data, const KMfilterCenters& centres, std::vector<double>& sums,
                       std::vector<int>& counts)
{
    const int n = data.getNPts();
    const int k = centres.getK();
    sums.assign(3 * static_cast<std::size_t>(k), 0.0);
    counts.assign(static_cast<std::size_t>(k), 0);
    double total = 0.0;
    for (int i = 0; i < n; ++i) {
        const double* p = data[i];
        int best = 0;
        double bestD = std::numeric_limits<double>::infinity();
        for (int c = 0; c < k; ++c) {
            const double* z = centres[c];
            const double d2 = (p[0] - z[0]) * (p[0] - z[0]) + (p[1] - z[1]) * (p[1] - z[1]) + (p[2] - z[2]) * (p[2] - z[2]);
            if (d2 < bestD) {
                bestD = d2;
                best = c;
            }
        }
        sums[3 * static_cast<std::size_t>(best)] += p[0];
        sums[3 * static_cast<std::size_t>(best) + 1] += p[1];
        sums[3 * static_cast<std::size_t>(best) + 2] += p[2];
        ++counts[static_cast<std::size_t>(best)];
        total += bestD;
    }
    return total;
}

void BM_KMeansSearch(benchmark::State& state)
{
    std::unique_ptr<KMdata> data = makeData();
    KMrandom::seed(static_cast<std::uint64_t>(state.range(0)));
    double dist = 0.0;
    int stages = 0;
    int runs = 0;
    std::vector<int> assignment;
    for (auto _ : state) {
        state.PauseTiming();
        data = makeData(); // no tree: the search builds it, as a clustering request does
        state.ResumeTiming();
        data->buildKcTree();
        KMfilterCenters centres(kCentres, *data, 1.0);
        KMlocalLloyds search(centres, kTerm);
        centres = search.execute();
        centres.getAssignments(assignment);
        dist = centres.getDist();
        stages = search.getTotalStages();
        runs = search.getRuns();
        benchmark::DoNotOptimize(assignment.data());
    }
    state.counters["distortion"] = dist;
    state.counters["stages"] = stages;
    state.counters["runs"] = runs;
}
BENCHMARK(BM_KMeansSearch)->DenseRange(1, 12)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_BuildKcTree(benchmark::State& state)
{
    std::unique_ptr<KMdata> data = makeData();
    for (auto _ : state) {
        data->buildKcTree();
        benchmark::DoNotOptimize(data->getKcTree());
    }
    state.counters["nodes"] = data->getKcTree()->nodeCount();
    state.counters["depth"] = data->getKcTree()->depth();
}
BENCHMARK(BM_BuildKcTree)->Unit(benchmark::kMillisecond);

// Centres for a stage: 0 random data points (early in a run), 1 the final centres of a search.
KMfilterCenters stageCentres(KMdata& data, int which)
{
    KMrandom::seed(7);
    KMfilterCenters centres(kCentres, data, 1.0);
    if (which == 1) {
        KMlocalLloyds search(centres, kTerm);
        centres = search.execute();
    }
    return centres;
}

void BM_LloydStageFiltering(benchmark::State& state)
{
    std::unique_ptr<KMdata> data = makeData();
    data->buildKcTree();
    KMfilterCenters centres = stageCentres(*data, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        centres.computeDistortion();
        benchmark::DoNotOptimize(centres.getDist());
    }
    state.counters["distortion"] = centres.getDist();
}
BENCHMARK(BM_LloydStageFiltering)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_LloydStageBruteForce(benchmark::State& state)
{
    std::unique_ptr<KMdata> data = makeData();
    data->buildKcTree();
    KMfilterCenters centres = stageCentres(*data, static_cast<int>(state.range(0)));
    std::vector<double> sums;
    std::vector<int> counts;
    double dist = 0.0;
    for (auto _ : state) {
        dist = bruteForceStage(*data, centres, sums, counts);
        benchmark::DoNotOptimize(dist);
    }
    state.counters["distortion"] = dist;
}
BENCHMARK(BM_LloydStageBruteForce)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

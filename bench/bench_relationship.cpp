// Loading the point set of a chart from two 1,000,000-row Double columns: all rows, with a
// selection list of half the rows, and thinned to every third row.
#include <QRelationshipItemModel.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using rkBase::MatrixData;
using rkBase::QRelationshipItemModel;

namespace {
constexpr int kRows = 1000000;

struct Columns
{
    std::unique_ptr<MatrixData> x;
    std::unique_ptr<MatrixData> y;
};

Columns& columns()
{
    static Columns c;
    if (!c.x) {
        c.x = std::make_unique<MatrixData>(QStringLiteral("x"), kRows, 1, QVariant::Double, true);
        c.y = std::make_unique<MatrixData>(QStringLiteral("y"), kRows, 1, QVariant::Double, true);
        for (int r = 0; r < kRows; ++r) {
            c.x->setValue(r, 0, QVariant(r * 0.25));
            // Every hundredth row is blank, as real sheets have gaps.
            if (r % 100 != 7)
                c.y->setValue(r, 0, QVariant(1000.0 - r * 0.5));
        }
    }
    return c;
}

void BM_TakeNewDataSet(benchmark::State& state)
{
    Columns& c = columns();
    const int step = static_cast<int>(state.range(0));
    std::vector<int> selected;
    if (state.range(1) != 0)
        for (int r = 0; r < kRows; r += 2)
            selected.push_back(r);
    QRelationshipItemModel model;
    for (auto _ : state) {
        model.takeNewDataSet(step, QRelationshipItemModel::HighlightSelected, c.x.get(), c.y.get(), selected);
        benchmark::DoNotOptimize(model.pointCount());
    }
    state.counters["points"] = model.pointCount();
}
BENCHMARK(BM_TakeNewDataSet)
    ->ArgNames({"step", "selection"})
    ->Args({1, 0})
    ->Args({1, 1})
    ->Args({3, 0})
    ->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();

// The bar chart at the size users work at: twelve columns of a million rows reduced to bars and
// drawn into a 1000 x 700 raster, as the tab does on every update. The rows are either all
// rows (contiguous) or a scattered selection of half of them; the modes differ only in drawing.
#include <BarDiagramData.h>
#include <MatrixData.h>
#include <QBarDiagramWidget.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QRandomGenerator>

#include <memory>

using namespace rkBase;

namespace {

constexpr int kRows = 1000000;
constexpr int kColumns = 12;

struct Sheet {
    std::unique_ptr<MatrixData> group;
    QList<MatrixData*> columns;
    std::vector<int> everyOtherRow;
    Sheet()
    {
        group = std::make_unique<MatrixData>(QStringLiteral("Sheet"), -1, -1, QVariant::String, true);
        QRandomGenerator rng(5);
        for (int c = 0; c < kColumns; ++c) {
            auto* column = new MatrixData(QStringLiteral("Column %1").arg(c + 1), kRows, 1, QVariant::Double, true);
            for (int r = 0; r < kRows; ++r)
                column->setValue(r, 0, 10.0 * (c + 1) + rng.bounded(5.0));
            group->appendChild(column, false);
            columns.append(column);
        }
        for (int r = 0; r < kRows; r += 2)
            everyOtherRow.push_back(r);
    }
};

Sheet& sheet()
{
    static Sheet s;
    return s;
}

// Arg 0: rows (0 all, 1 every other row); arg 1: bar mode.
void BM_BarChartRedraw(benchmark::State& state)
{
    Sheet& s = sheet();
    const std::vector<int> none;
    const std::vector<int>& rows = state.range(0) == 0 ? none : s.everyOtherRow;
    QBarDiagramWidget chart;
    chart.resize(1000, 700);
    chart.setBarMode(static_cast<QBarDiagramWidget::BarMode>(state.range(1)));
    const int step = s.group->defaultFilterStepSize(static_cast<int>(rows.empty() ? kRows : rows.size()));
    for (auto _ : state) {
        chart.setData(BarDiagramData::reduce(s.columns, rows, step));
        chart.updateChart();
        benchmark::DoNotOptimize(chart.chartImage().constBits());
    }
    state.counters["bars"] = chart.data().categoryCount();
}
BENCHMARK(BM_BarChartRedraw)
    ->Args({0, QBarDiagramWidget::NormalBars})
    ->Args({0, QBarDiagramWidget::StackedBars})
    ->Args({0, QBarDiagramWidget::PercentBars})
    ->Args({1, QBarDiagramWidget::NormalBars})
    ->Unit(benchmark::kMillisecond)
    ->MinTime(1.0);

// The reduction alone: what a million rows cost before any drawing.
void BM_BarChartReduce(benchmark::State& state)
{
    Sheet& s = sheet();
    for (auto _ : state) {
        const BarDiagramData data = BarDiagramData::reduce(s.columns, {}, 10000);
        benchmark::DoNotOptimize(data.value(0, 0));
    }
}
BENCHMARK(BM_BarChartReduce)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// Many bars: the reduction capped at its most categories, each drawn, with labels thinned out.
void BM_BarChartManyBars(benchmark::State& state)
{
    Sheet& s = sheet();
    QBarDiagramWidget chart;
    chart.resize(1000, 700);
    chart.setBarMode(QBarDiagramWidget::StackedBars);
    for (auto _ : state) {
        chart.setData(BarDiagramData::reduce(s.columns, {}, 1));
        chart.updateChart();
        benchmark::DoNotOptimize(chart.chartImage().constBits());
    }
    state.counters["bars"] = chart.data().categoryCount();
}
BENCHMARK(BM_BarChartManyBars)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

// The histogram tab at the sizes users reach: a million values handed to the panel until its
// chart is painted (copy, automatic interval, bins, cumulative curve, P10/P50/P90, the raster),
// and the two-sample test of a million values against a million: the verdict read from the two
// cumulative curves, and the statistic of the samples themselves. bench/anchor_histogram.py
// times numpy, matplotlib and SciPy on the same work.
#include <KolmogorovSmirnovTest.h>
#include <MatrixData.h>
#include <QHistogramChartWidget.h>
#include <QHistogramItemModel.h>
#include <QHistogramPlotWidget.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QRandomGenerator>

#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kRows = 1000000;

// Porosity around 0.2, and a second sample around 0.21 with a wider spread.
struct Samples {
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    MatrixData* group = nullptr;
    MatrixData* first = nullptr;
    MatrixData* second = nullptr;
    Samples()
    {
        group = new MatrixData(QStringLiteral("well"), -1, -1, QVariant::String, true);
        root.appendChild(group, true);
        first = new MatrixData(QStringLiteral("porosity"), kRows, 1, QVariant::Double, true);
        second = new MatrixData(QStringLiteral("porosity 2"), kRows, 1, QVariant::Double, true);
        group->appendChild(first, false);
        group->appendChild(second, false);
        QRandomGenerator rng(5);
        auto normal = [&rng] {
            const double u = rng.generateDouble() * 0.999999 + 1e-6, v = rng.generateDouble();
            return std::sqrt(-2 * std::log(u)) * std::cos(6.283185307 * v);
        };
        for (int r = 0; r < kRows; ++r) {
            first->setValue(r, 0, 0.2 + 0.05 * normal());
            second->setValue(r, 0, 0.21 + 0.06 * normal());
        }
        group->checkValidRowCount();
    }
};

Samples& samples()
{
    static Samples s;
    return s;
}

void BM_HistogramTabFirstPaint(benchmark::State& state)
{
    Samples& s = samples();
    QHistogramChartWidget panel(QStringLiteral("Histogram"), nullptr, nullptr);
    panel.resize(1000, 700);
    panel.setDataRoot(&s.root);
    for (const char* box : {"m_pqP10CheckBox", "m_pqP50CheckBox", "m_pqP90CheckBox"})
        panel.findChild<QCheckBox*>(QString::fromLatin1(box))->setChecked(true);
    for (auto _ : state) {
        panel.setDataSet(s.first, {}, -1);
        benchmark::DoNotOptimize(panel.histogramPlot()->chartImage().constBits());
    }
    if (panel.histogramModel()->sampleSize() != kRows || !(panel.histogramPlot()->p50() > 0.19))
        state.SkipWithError("no histogram");
}
BENCHMARK(BM_HistogramTabFirstPaint)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// The two tables of the test as the panel builds them, with the automatic interval.
struct TestTables {
    QHistogramItemModel a, b;
    TestTables()
    {
        Samples& s = samples();
        a.setIntervalSize(99999.0);
        a.takeNewDataSet(s.first, MatrixData::CumulativeRelativeFrequency, {}, true);
        b.setIntervalSize(a.intervalSize());
        b.takeNewDataSet(s.second, MatrixData::CumulativeRelativeFrequency, {}, true);
    }
    KolmogorovSmirnovTest::Curve curve(const QHistogramItemModel& m) const
    {
        return {m.data(), m.min(), (m.data()->rowCount() + 1) * m.intervalSize() + m.min(), m.sampleSize()};
    }
};

// The verdict from the curves: the walk at steps of the interval and the critical difference.
void BM_BinnedTest(benchmark::State& state)
{
    TestTables t;
    const double lo = std::min(t.a.min(), t.b.min());
    const double hi = std::max(t.curve(t.a).hi, t.curve(t.b).hi);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            KolmogorovSmirnovTest::binned(t.curve(t.a), t.curve(t.b), lo, hi, t.a.intervalSize(), 1.36));
    state.SetLabel(std::to_string(t.a.rowCount()) + " and " + std::to_string(t.b.rowCount()) + " bins");
}
BENCHMARK(BM_BinnedTest)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// The whole of it from the two columns: both tables, then the verdict.
void BM_BinnedTestFromColumns(benchmark::State& state)
{
    for (auto _ : state) {
        TestTables t;
        const double lo = std::min(t.a.min(), t.b.min());
        const double hi = std::max(t.curve(t.a).hi, t.curve(t.b).hi);
        benchmark::DoNotOptimize(
            KolmogorovSmirnovTest::binned(t.curve(t.a), t.curve(t.b), lo, hi, t.a.intervalSize(), 1.36));
    }
}
BENCHMARK(BM_BinnedTestFromColumns)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// The statistic of the samples from the columns: both read, sorted and walked.
void BM_SampleStatistic(benchmark::State& state)
{
    TestTables t;
    for (auto _ : state) {
        const auto r = KolmogorovSmirnovTest::sample(t.a.sampleValues(), t.b.sampleValues());
        if (!r.valid)
            state.SkipWithError("no samples");
        benchmark::DoNotOptimize(r.pValue);
    }
}
BENCHMARK(BM_SampleStatistic)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

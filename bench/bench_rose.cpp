// Frequency tables and the rose at the sizes users reach: a histogram of a million values into
// 100 bins (given interval, and the automatic one), rose bins of a million azimuths classified by
// a colour attribute (bins, per-bin class values and the classes the plot stacks, or the classes
// read from typed cells as the panel reads them), the rose tab from hand-over to first paint, and
// a rose redraw at 800 x 800. bench/anchor_rose.py times numpy and matplotlib on the same work.
#include <MatrixData.h>
#include <QLegendListModel.h>
#include <QRoseChartWidget.h>
#include <QRosePlotWidget.h>
#include <RoseClassCounts.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QRandomGenerator>

#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kRows = 1000000;

// A sheet of a million rows: normal values, azimuths of two opposed sets, a colour per row.
struct Sheet {
    MatrixData group{QStringLiteral("well"), -1, -1, QVariant::String, true};
    MatrixData* values = nullptr;
    MatrixData* azimuth = nullptr;
    MatrixData* colour = nullptr;
    Sheet()
    {
        values = new MatrixData(QStringLiteral("porosity"), kRows, 1, QVariant::Double, true);
        azimuth = new MatrixData(QStringLiteral("azimuth"), kRows, 1, QVariant::Double, true);
        colour = new MatrixData(QStringLiteral("colour"), kRows, 1, QVariant::Color, true);
        group.appendChild(values, false);
        group.appendChild(azimuth, false);
        group.appendChild(colour, false);
        QRandomGenerator rng(11);
        const QColor palette[3] = {QColor(40, 160, 60), QColor(200, 30, 30), QColor(30, 30, 200)};
        for (int r = 0; r < kRows; ++r) {
            // Box-Muller: normal porosity around 0.2.
            const double u = rng.generateDouble() * 0.999999 + 1e-6, v = rng.generateDouble();
            values->setValue(r, 0, 0.2 + 0.05 * std::sqrt(-2 * std::log(u)) * std::cos(6.283185307 * v));
            const bool second = rng.bounded(3) == 0;
            azimuth->setValue(r, 0, std::fmod((second ? 130.0 : 330.0) + 25.0 * (rng.generateDouble() - 0.5) * 2 + 360.0, 360.0));
            colour->setValue(r, 0, palette[second ? 1 + rng.bounded(2) : 0]);
        }
        group.checkValidRowCount();
    }
};

Sheet& sheet()
{
    static Sheet s;
    return s;
}

void BM_Histogram100Bins(benchmark::State& state)
{
    Sheet& s = sheet();
    double mn = 0, mx = 0, mean = 0;
    s.values->getMinMax(mn, mx, mean, boost::dynamic_bitset<>());
    std::vector<int> rows;
    if (state.range(0))
        for (int r = 0; r < kRows; ++r)
            rows.push_back(r);
    for (auto _ : state) {
        double interval = (mx - mn) / 99.5; // 100 bins over the range
        std::unique_ptr<MatrixData> table(
            s.values->newFrequencyData(interval, MatrixData::Frequency, rows, true, nullptr, true));
        if (table->rowCount() != 100)
            state.SkipWithError("not 100 bins");
        benchmark::DoNotOptimize(table.get());
    }
    state.SetLabel(state.range(0) ? "row list" : "all rows");
}
BENCHMARK(BM_Histogram100Bins)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(1.0);

void BM_HistogramAutomaticInterval(benchmark::State& state)
{
    Sheet& s = sheet();
    for (auto _ : state) {
        double interval = 99999.0;
        std::unique_ptr<MatrixData> table(
            s.values->newFrequencyData(interval, MatrixData::CumulativeRelativeFrequency, {}, true, nullptr, true));
        benchmark::DoNotOptimize(table.get());
    }
}
BENCHMARK(BM_HistogramAutomaticInterval)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// What the rose panel does when the data set or the interval changes: bins with their class
// values and the plot's stacked classes (the resultant is timed on its own below).
void BM_RoseBinsColourClasses(benchmark::State& state)
{
    Sheet& s = sheet();
    QRosePlotWidget plot(nullptr, QStringLiteral("Rose Chart"));
    QLegendListModel legend(nullptr, &plot, QLegendListModel::ColorLegend);
    legend.setSymbolNode(s.colour);
    double length = 0;
    const double direction = s.azimuth->resultantMeanDirection(length, {});
    for (auto _ : state) {
        std::vector<std::vector<QVariant>> values;
        MatrixData* table =
            MatrixData::newFrequencyData(10.0, 36, 0, MatrixData::Frequency, {}, s.azimuth, s.colour, values, true);
        plot.setRoseData(table, std::move(values), &legend, 10, direction, length, false);
        if (plot.classification().empty() || legend.rowCount() != 3)
            state.SkipWithError("no classes");
    }
}
BENCHMARK(BM_RoseBinsColourClasses)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// The same bins with their classes read from the typed cells, as the rose panel reads them.
void BM_RoseBinsTypedColourClasses(benchmark::State& state)
{
    Sheet& s = sheet();
    QRosePlotWidget plot(nullptr, QStringLiteral("Rose Chart"));
    QLegendListModel legend(nullptr, &plot, QLegendListModel::ColorLegend);
    legend.setSymbolNode(s.colour);
    RoseClassCounts counts;
    for (auto _ : state) {
        std::vector<std::vector<QVariant>> none;
        MatrixData* table =
            MatrixData::newFrequencyData(10.0, 36, 0, MatrixData::Frequency, {}, s.azimuth, nullptr, none, true);
        plot.setRoseData(table, std::move(none), &legend, 10, 99999.0, 0.0, false);
        counts.count(s.azimuth, s.colour, 10.0, table->rowCount(), {}, true, 19);
        plot.setClassification(counts.counts(), counts.legendValues(), counts.legendColours());
        if (plot.classification().empty() || legend.rowCount() != 3)
            state.SkipWithError("no classes");
    }
}
BENCHMARK(BM_RoseBinsTypedColourClasses)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// The rose tab from the hand-over to the painted raster: bins, classes, resultant, legend and
// the first paint of the chart at the panel's size.
void BM_RoseTabFirstPaint(benchmark::State& state)
{
    Sheet& s = sheet();
    QRoseChartWidget panel(QStringLiteral("Rose Chart"), nullptr);
    panel.resize(1000, 700);
    for (auto _ : state) {
        panel.setDataSet(s.azimuth, s.colour);
        benchmark::DoNotOptimize(panel.drawingArea()->chartImage().constBits());
    }
    if (panel.colorLegend()->rowCount() != 3)
        state.SkipWithError("no classes");
}
BENCHMARK(BM_RoseTabFirstPaint)->Unit(benchmark::kMillisecond)->MinTime(1.0);

void BM_ResultantMeanDirection(benchmark::State& state)
{
    Sheet& s = sheet();
    for (auto _ : state) {
        double length = 0;
        benchmark::DoNotOptimize(s.azimuth->resultantMeanDirection(length, {}));
    }
}
BENCHMARK(BM_ResultantMeanDirection)->Unit(benchmark::kMillisecond)->MinTime(1.0);

void BM_RoseRedraw800(benchmark::State& state)
{
    Sheet& s = sheet();
    QRosePlotWidget plot(nullptr, QStringLiteral("Rose Chart"));
    QLegendListModel legend(nullptr, &plot, QLegendListModel::ColorLegend);
    legend.setSymbolNode(s.colour);
    std::vector<std::vector<QVariant>> values;
    MatrixData* table =
        MatrixData::newFrequencyData(10.0, 36, 0, MatrixData::Frequency, {}, s.azimuth, s.colour, values, true);
    double length = 0;
    const double direction = s.azimuth->resultantMeanDirection(length, {});
    plot.setDirectionData(s.azimuth, {});
    plot.setRoseData(table, std::move(values), &legend, 10, direction, length, false);
    plot.changeHeaderTitle(QStringLiteral("azimuth"));
    plot.showDirectionAsRosePlot(state.range(0) == 0);
    plot.resize(800, 800);
    plot.updateChart();
    for (auto _ : state) {
        plot.updateChart();
        benchmark::DoNotOptimize(plot.chartImage().constBits());
    }
    state.SetLabel(state.range(0) ? "unit vectors of 1,000,000 rows" : "classified petals");
}
BENCHMARK(BM_RoseRedraw800)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

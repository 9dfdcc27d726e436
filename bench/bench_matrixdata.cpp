// Cell storage of the data tree on big sheets: memory per cell, building a 1,000,000 x 12 sheet,
// and the cost of one read or write.
#include <MatrixData.h>

#include <benchmark/benchmark.h>

#include <QDataStream>

#include <memory>
#include <random>

using rkBase::MatrixData;

namespace {
constexpr int kRows = 1000000;
constexpr int kColumns = 12;

std::unique_ptr<MatrixData> buildSheet(int rows, int columns)
{
    auto root = std::make_unique<MatrixData>(QStringLiteral("root"), -1, -1, QVariant::String, true);
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    root->appendChild(well, true);
    for (int c = 0; c < columns; ++c) {
        auto* col = new MatrixData(QStringLiteral("c%1").arg(c), rows, 1, QVariant::Double, true);
        for (int r = 0; r < rows; ++r)
            col->setValue(r, 0, QVariant(r * 0.5 + c));
        well->appendChild(col, false);
    }
    return root;
}

void BM_BuildSheet(benchmark::State& state)
{
    const int rows = static_cast<int>(state.range(0));
    std::size_t bytes = 0;
    for (auto _ : state) {
        auto root = buildSheet(rows, kColumns);
        state.PauseTiming();
        bytes = 0;
        for (MatrixData* leaf : root->leafs())
            bytes += leaf->cellMemoryBytes();
        root.reset();
        state.ResumeTiming();
    }
    state.counters["bytes_per_cell"] = static_cast<double>(bytes) / (static_cast<double>(rows) * kColumns);
    state.counters["cells"] = static_cast<double>(rows) * kColumns;
}
BENCHMARK(BM_BuildSheet)->Arg(kRows)->Unit(benchmark::kMillisecond)->Iterations(3);

class Sheet : public benchmark::Fixture
{
public:
    void SetUp(const benchmark::State&) override
    {
        if (!root) {
            root = buildSheet(kRows, kColumns);
            column = root->getNode(5);
        }
    }
    static std::unique_ptr<MatrixData> root;
    static MatrixData* column;
};
std::unique_ptr<MatrixData> Sheet::root;
MatrixData* Sheet::column = nullptr;

BENCHMARK_F(Sheet, ValueRandomRow)(benchmark::State& state)
{
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> row(0, kRows - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(column->value(row(rng), 0));
}

BENCHMARK_F(Sheet, ToDoubleRandomRow)(benchmark::State& state)
{
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> row(0, kRows - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(column->toDouble(row(rng), 0));
}

BENCHMARK_F(Sheet, SetValueRandomRow)(benchmark::State& state)
{
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> row(0, kRows - 1);
    const QVariant v(3.25);
    for (auto _ : state)
        benchmark::DoNotOptimize(column->setValue(row(rng), 0, v));
}

BENCHMARK_F(Sheet, MinMaxWholeColumn)(benchmark::State& state)
{
    for (auto _ : state)
        column->setMinMax(0, boost::dynamic_bitset<>());
    state.SetItemsProcessed(state.iterations() * kRows);
}

BENCHMARK_F(Sheet, StreamColumnRoundTrip)(benchmark::State& state)
{
    for (auto _ : state) {
        QByteArray bytes;
        {
            QDataStream out(&bytes, QIODevice::WriteOnly);
            column->putDataOnStream(out, false);
        }
        MatrixData copy(QStringLiteral("copy"), 0, 1, QVariant::Double, true);
        QDataStream in(bytes);
        benchmark::DoNotOptimize(copy.getDataFromStream(in));
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
} // namespace

BENCHMARK_MAIN();

// The spreadsheet on a 1,000,000 x 12 sheet: building model, proxy and view and painting them
// the first time, sorting by one column, and the memory the three add per row.
#include <MatrixData.h>
#include <QDataAnalyserDialog.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexModelTableView.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QPixmap>

#include <memory>
#include <random>
#include <unistd.h>

using namespace rkBase;

namespace {
constexpr int kRows = 1000000;
constexpr int kColumns = 12;

std::unique_ptr<MatrixData> buildSheet()
{
    auto root = std::make_unique<MatrixData>(QStringLiteral("root"), -1, -1, QVariant::String, true);
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    root->appendChild(well, true);
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> value(0.0, 1000.0);
    for (int c = 0; c < kColumns; ++c) {
        auto* col = new MatrixData(QStringLiteral("c%1").arg(c), kRows, 1, QVariant::Double, true);
        for (int r = 0; r < kRows; ++r)
            col->setValue(r, 0, value(rng));
        well->appendChild(col, false);
    }
    return root;
}

MatrixData* sheet()
{
    static std::unique_ptr<MatrixData> root = buildSheet();
    return root.get();
}

long residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toLong() * sysconf(_SC_PAGESIZE) : 0;
}

struct Table {
    std::unique_ptr<QVertexItemModel> model;
    std::unique_ptr<QSortFilterProxyVertexItemModel> proxy;
    std::unique_ptr<QVertexModelTableView> view;

    void build()
    {
        model = std::make_unique<QVertexItemModel>(nullptr, sheet(), -1, false, nullptr);
        proxy = std::make_unique<QSortFilterProxyVertexItemModel>();
        proxy->setSourceModel(model.get());
        view = std::make_unique<QVertexModelTableView>(nullptr, nullptr, false, false, false);
        view->setModel(proxy.get());
        view->resize(1200, 800);
        benchmark::DoNotOptimize(view->grab()); // the first paint
    }
};

// Measured first, before other runs leave freed memory in the allocator.
void BM_MemoryPerRow(benchmark::State& state)
{
    sheet();
    double perRow = 0;
    for (auto _ : state) {
        const long before = residentBytes();
        Table t;
        t.build();
        t.proxy->sort(3);
        perRow = double(residentBytes() - before) / kRows;
        benchmark::DoNotOptimize(t.view.get());
    }
    state.counters["bytes_per_row"] = perRow;
}
BENCHMARK(BM_MemoryPerRow)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_ModelProxyViewFirstPaint(benchmark::State& state)
{
    for (auto _ : state) {
        Table t;
        t.build();
        state.PauseTiming();
        t = Table();
        state.ResumeTiming();
    }
    state.counters["rows"] = kRows;
}
BENCHMARK(BM_ModelProxyViewFirstPaint)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_SortByOneColumn(benchmark::State& state)
{
    Table t;
    t.build();
    int column = 0;
    for (auto _ : state) {
        t.proxy->sort(column % kColumns, column % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
        ++column;
    }
    state.counters["rows"] = kRows;
}
BENCHMARK(BM_SortByOneColumn)->Unit(benchmark::kMillisecond)->Iterations(3);

// The same sort without a view attached: what the proxy alone costs.
void BM_SortProxyOnly(benchmark::State& state)
{
    QVertexItemModel model(nullptr, sheet(), -1, false, nullptr);
    QSortFilterProxyVertexItemModel proxy;
    proxy.setSourceModel(&model);
    int column = 0;
    for (auto _ : state) {
        proxy.sort(column % kColumns, column % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
        ++column;
    }
}
BENCHMARK(BM_SortProxyOnly)->Unit(benchmark::kMillisecond)->Iterations(3);

// Every other row: 500,000 scattered rows, the worst case for merging into ranges.
boost::dynamic_bitset<> everyOtherRow()
{
    boost::dynamic_bitset<> bits(kRows);
    for (int r = 0; r < kRows; r += 2)
        bits.set(static_cast<std::size_t>(r));
    return bits;
}

void BM_SetRowSelectionScattered(benchmark::State& state)
{
    Table t;
    t.build();
    const boost::dynamic_bitset<> bits = everyOtherRow();
    for (auto _ : state)
        t.view->setNewRowSelection(bits);
}
BENCHMARK(BM_SetRowSelectionScattered)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_SelectedRowsOfHalfTheSheet(benchmark::State& state)
{
    Table t;
    t.build();
    t.view->setNewRowSelection(everyOtherRow());
    for (auto _ : state)
        benchmark::DoNotOptimize(t.view->selectedRows(0));
}
BENCHMARK(BM_SelectedRowsOfHalfTheSheet)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_SelectInverse(benchmark::State& state)
{
    Table t;
    t.build();
    t.view->setNewRowSelection(everyOtherRow());
    for (auto _ : state)
        t.view->selectInverse();
}
BENCHMARK(BM_SelectInverse)->Unit(benchmark::kMillisecond)->Iterations(3);
// What a user waits for after such a selection: Qt's painting asks the selection model about
// every visible cell.
void BM_PaintAfterScatteredSelection(benchmark::State& state)
{
    Table t;
    t.build();
    t.view->setNewRowSelection(everyOtherRow());
    t.view->scrollTo(t.proxy->index(kRows / 2, 0));
    for (auto _ : state)
        benchmark::DoNotOptimize(t.view->grab());
}
BENCHMARK(BM_PaintAfterScatteredSelection)->Unit(benchmark::kMillisecond)->Iterations(3);

// A chart's selection coming back to the window: the host's signal, the table's selection and
// the stale flags, end to end.
void BM_DialogGraphicalSelection(benchmark::State& state)
{
    QDataAnalyserDialog dialog;
    MatrixData* well = sheet()->child(0);
    auto* copy = new MatrixData(*well, true);
    dialog.dataRoot()->appendChild(copy, true);
    dialog.initialize(QStringLiteral("bench"), nullptr, nullptr, Qt::Horizontal, false, true, true, true, true, true,
                      1, false, false);
    const boost::dynamic_bitset<> bits = everyOtherRow();
    for (auto _ : state)
        dialog.setNewRowSelectionFromGraphicalSelection(bits);
    state.counters["selected"] = static_cast<double>(dialog.vertexTable()->selectedRows(0).size());
}
BENCHMARK(BM_DialogGraphicalSelection)->Unit(benchmark::kMillisecond)->Iterations(3);
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// Filled contours and iso-lines of a 101 x 101 grid at 20 levels, walked as the chart walks
// them: each cell cut into four triangles around its centre value, and for every triangle one
// band polygon and one iso-line per pair of adjacent levels. Once for the geometry alone, once
// painted into a 1000 x 800 raster.
#include <MatrixDataArray.h>
#include <RKColormap.h>

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygonF>

#include <cmath>
#include <vector>

using rkBase::MatrixData;
using rkBase::MatrixDataArray;

namespace {
constexpr int kN = 101;

// The same surface as the reference plot: two bumps and a ripple on [-1, 1]^2.
MatrixDataArray makeGrid()
{
    MatrixDataArray grid(QStringLiteral("grid"), kN, kN, QVariant::Double);
    for (int i = 0; i < kN; ++i) {
        for (int j = 0; j < kN; ++j) {
            const double x = -1.0 + 2.0 * i / (kN - 1);
            const double y = -1.0 + 2.0 * j / (kN - 1);
            const double z = std::exp(-((x - 0.3) * (x - 0.3) + (y + 0.2) * (y + 0.2)) * 6)
                             + 0.6 * std::exp(-((x + 0.4) * (x + 0.4) + (y - 0.4) * (y - 0.4)) * 10)
                             + 0.05 * std::sin(7 * x) * std::cos(5 * y);
            grid.setValue(i, j, QVariant(z));
        }
    }
    return grid;
}

struct Sink
{
    virtual ~Sink() = default;
    virtual void polygon(const double*, const double*, int, double) {}
    virtual void line(const double*, const double*, double) {}
};

// One full contour pass; returns the number of polygons and lines produced.
long contour(const MatrixDataArray& grid, double width, Sink& sink)
{
    double mn = 1e27, mx = -1e27;
    for (int i = 0; i < kN; ++i)
        for (int j = 0; j < kN; ++j) {
            mn = std::min(mn, grid.toDouble(i, j));
            mx = std::max(mx, grid.toDouble(i, j));
        }
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(mn, mx, (mx - mn) / 19, false);
    std::vector<double> levels;
    for (const auto& level : map.colorMap())
        levels.push_back(level.first);
    const double d = width / (kN - 1);
    long produced = 0;
    double px[8], py[8], lx[8], ly[8];
    for (int i = 0; i + 1 < kN; ++i) {
        for (int j = 0; j + 1 < kN; ++j) {
            const double cx[4] = {i * d, (i + 1) * d, (i + 1) * d, i * d};
            const double cy[4] = {j * d, j * d, (j + 1) * d, (j + 1) * d};
            const double cv[4] = {grid.toDouble(i, j), grid.toDouble(i + 1, j), grid.toDouble(i + 1, j + 1),
                                  grid.toDouble(i, j + 1)};
            const double centre = 0.25 * (cv[0] + cv[1] + cv[2] + cv[3]);
            for (int t = 0; t < 4; ++t) {
                const int u = (t + 1) % 4;
                const double xs[3] = {cx[t], cx[u], (i + 0.5) * d};
                const double ys[3] = {cy[t], cy[u], (j + 0.5) * d};
                const double vs[3] = {cv[t], cv[u], centre};
                for (std::size_t b = 0; b + 1 < levels.size(); ++b) {
                    int pn = 0, ln = 0;
                    MatrixData::calculatePolygon(xs, ys, vs, levels[b], levels[b + 1], px, py, pn);
                    MatrixData::calculateIsoline(xs, ys, vs, levels[b], lx, ly, ln);
                    if (pn >= 2) {
                        sink.polygon(px, py, pn, levels[b]);
                        ++produced;
                    }
                    if (ln >= 2) {
                        sink.line(lx, ly, levels[b]);
                        ++produced;
                    }
                }
            }
        }
    }
    return produced;
}

void BM_ContourGeometry(benchmark::State& state)
{
    const MatrixDataArray grid = makeGrid();
    Sink sink;
    long produced = 0;
    for (auto _ : state) {
        produced = contour(grid, 1000.0, sink);
        benchmark::DoNotOptimize(produced);
    }
    state.counters["primitives"] = static_cast<double>(produced);
}
BENCHMARK(BM_ContourGeometry)->Unit(benchmark::kMillisecond);

struct PainterSink : Sink
{
    QPainter* painter = nullptr;
    const RKColormap* map = nullptr;
    void polygon(const double* x, const double* y, int n, double low) override
    {
        QPointF points[8];
        for (int i = 0; i < n; ++i)
            points[i] = QPointF(x[i], y[i]);
        const QColor c = map->value_to_color(low);
        painter->setPen(QPen(c, 0));
        painter->setBrush(c);
        painter->drawPolygon(points, n, Qt::OddEvenFill);
    }
    void line(const double* x, const double* y, double) override
    {
        painter->setPen(QPen(Qt::black, 0));
        painter->drawLine(QPointF(x[0], y[0]), QPointF(x[1], y[1]));
    }
};

void BM_ContourPainted(benchmark::State& state)
{
    const MatrixDataArray grid = makeGrid();
    QImage image(1000, 800, QImage::Format_ARGB32_Premultiplied);
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    double mn = 1e27, mx = -1e27;
    for (int i = 0; i < kN; ++i)
        for (int j = 0; j < kN; ++j) {
            mn = std::min(mn, grid.toDouble(i, j));
            mx = std::max(mx, grid.toDouble(i, j));
        }
    map.fill_spectrum_color_list(mn, mx, (mx - mn) / 19, false);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        // The grid is square; the raster is not, as in the reference: stretch y.
        painter.scale(1.0, 0.8);
        PainterSink sink;
        sink.painter = &painter;
        sink.map = &map;
        benchmark::DoNotOptimize(contour(grid, 1000.0, sink));
    }
}
BENCHMARK(BM_ContourPainted)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

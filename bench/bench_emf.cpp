// A chart leaving as an enhanced metafile: 10,000 points as plain crosses over a 10-degree
// equal-area net, painted through EMFDevice into memory, as copyWEMFToClipboard does. Reports the
// metafile's size and its bytes per point beside the time.
#include "ScatterTestChart.h"

#include <EMFDevice.h>
#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>
#include <QRandomGenerator>

#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr int kPoints = 10000;
constexpr double kRadius = 380.0;
const QPointF kCentre(500, 400);

// Poles on an equal-area net: the net's circles as polylines, the points as crosses.
class NetChart : public ScatterTestChart
{
public:
    NetChart()
    {
        resize(1000, 800);
        const double pi = std::acos(-1.0);
        QPolygonF rim;
        for (int i = 0; i <= 360; ++i)
            rim << kCentre + kRadius * QPointF(std::cos(i * pi / 180), std::sin(i * pi / 180));
        m_net.push_back(rim);
        for (int d = 10; d < 90; d += 10) {
            const double a = d * pi / 180;
            for (int side : {1, -1}) {
                QPolygonF great, small;
                for (int p = 0; p <= 180; p += 5) {
                    const double pitch = p * pi / 180;
                    const double plunge = std::asin(std::sin(a) * std::sin(pitch));
                    const double trend = std::atan2(std::cos(pitch), side * std::cos(a) * std::sin(pitch));
                    const double r = kRadius * std::sqrt(2.0) * std::sin((pi / 2 - plunge) / 2);
                    great << kCentre + QPointF(r * std::cos(trend), r * std::sin(trend));
                    // the small circle at d about the north (side 1) or south end of the axis
                    const double north = side * std::cos(a), east = std::sin(a) * std::cos(pitch);
                    const double down = std::sin(a) * std::sin(pitch);
                    const double rs = kRadius * std::sqrt(2.0) * std::sin(std::acos(down) / 2);
                    const double h = std::hypot(north, east);
                    small << kCentre + QPointF(rs * east / h, -rs * north / h);
                }
                m_net.push_back(great);
                m_net.push_back(small);
            }
        }
    }
    void drawChart(QPainter& painter) override
    {
        painter.setPen(QPen(Qt::lightGray, 1.0));
        painter.setBrush(Qt::NoBrush);
        for (const QPolygonF& line : m_net)
            painter.drawPolyline(line);
        ScatterTestChart::drawChart(painter);
    }
    int netPoints() const
    {
        int n = 0;
        for (const QPolygonF& line : m_net)
            n += line.size();
        return n;
    }

private:
    std::vector<QPolygonF> m_net;
};

struct Poles {
    std::unique_ptr<MatrixData> x, y;
    QRelationshipItemModel model;
    Poles()
    {
        x = std::make_unique<MatrixData>(QStringLiteral("x"), kPoints, 1, QVariant::Double, true);
        y = std::make_unique<MatrixData>(QStringLiteral("y"), kPoints, 1, QVariant::Double, true);
        QRandomGenerator rng(7);
        const double pi = std::acos(-1.0);
        for (int r = 0; r < kPoints; ++r) {
            const double dip = rng.bounded(90.0), dd = rng.bounded(360.0);
            const double plunge = (90 - dip) * pi / 180, trend = std::fmod(dd + 180, 360) * pi / 180;
            const double rr = kRadius * std::sqrt(2.0) * std::sin((pi / 2 - plunge) / 2);
            x->setValue(r, 0, kCentre.x() + rr * std::sin(trend));
            y->setValue(r, 0, kCentre.y() - rr * std::cos(trend));
        }
        model.takeNewDataSet(x.get(), y.get(), QRelationshipItemModel::ShowAll);
        model.setPointStyle(QRelationshipItemModel::Cross);
        model.setPointPixelSize(2);
    }
};

void BM_ChartMetafile(benchmark::State& state)
{
    Poles poles;
    NetChart chart;
    chart.setModel(&poles.model);
    QByteArray bytes;
    for (auto _ : state) {
        bytes = chart.toEnhancedMetafile();
        benchmark::DoNotOptimize(bytes.data());
    }
    state.counters["bytes"] = double(bytes.size());
    state.counters["bytes_per_point"] = double(bytes.size()) / kPoints;
    state.SetLabel(QStringLiteral("%1 crosses, net of %2 vertices").arg(kPoints).arg(chart.netPoints()).toStdString());
}
BENCHMARK(BM_ChartMetafile)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    return bench::runOffscreen(argc, argv);
}

#pragma once
// What the chart benchmarks share: a point set loaded into a relationship model as a host would,
// a lasso that grows around a centre while the overlay repaints, and a main that runs off screen.

#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QRandomGenerator>

#include <cmath>
#include <functional>
#include <memory>

namespace bench {

// Two Double columns of `rows` cells from point(rng) (seed 7), loaded as crosses of size 2.
struct PointSet {
    std::unique_ptr<rkBase::MatrixData> x, y;
    rkBase::QRelationshipItemModel model;
    PointSet(const QString& xName, const QString& yName, int rows, const std::function<QPointF(QRandomGenerator&)>& point)
    {
        using rkBase::MatrixData;
        x = std::make_unique<MatrixData>(xName, rows, 1, QVariant::Double, true);
        y = std::make_unique<MatrixData>(yName, rows, 1, QVariant::Double, true);
        QRandomGenerator rng(7);
        for (int r = 0; r < rows; ++r) {
            const QPointF p = point(rng);
            x->setValue(r, 0, p.x());
            y->setValue(r, 0, p.y());
        }
        model.takeNewDataSet(x.get(), y.get(), rkBase::QRelationshipItemModel::ShowAll);
        model.setPointStyle(rkBase::QRelationshipItemModel::Cross);
        model.setPointPixelSize(2);
    }
};

// Presses at the centre, then each iteration moves the lasso round a circle and grabs the widget.
template <class Chart>
void growLasso(benchmark::State& state, Chart& chart, const QPointF& centre, double radius)
{
    QMouseEvent press(QEvent::MouseButtonPress, centre, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    chart.mousePressEvent(&press);
    int step = 0;
    for (auto _ : state) {
        const QPointF p = centre + QPointF(radius * std::cos(step * 0.05), radius * std::sin(step * 0.05));
        QMouseEvent move(QEvent::MouseMove, p, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        chart.mouseMoveEvent(&move);
        benchmark::DoNotOptimize(chart.grab());
        ++step;
    }
}

// Off screen, without borrowing the display's OpenGL.
inline int runOffscreen(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QPA_OFFSCREEN_NO_GLX", "1");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace bench

// The axes of a cross plot panel and the plot between them put every value on the same pixel,
// zoomed and scrolled, with either origin; and the grid that the axes send is drawn by the plot
// under their ticks. The axes are driven as the panel drives them: the zoom and the scroll bar
// values, the vertical one turned round for an origin at the bottom.
#include "PaintRecorder.h"

#include <QCartesianAxisWidget.h>
#include <QCrossPlot.h>

#include <QPainter>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>
#include <functional>

using namespace rkBase;

namespace {

class Plot : public QCrossPlot
{
public:
    Plot() : QCrossPlot(nullptr, nullptr) {}
    // The grid as the plot draws it, in raster pixels: x of its vertical lines, y of its horizontal.
    std::pair<QList<double>, QList<double>> drawnGrid()
    {
        setGridRect(QRectF(rasterRect()));
        PaintRecorder device(rasterSize());
        {
            QPainter painter(&device);
            drawGrid(&painter);
        }
        QList<double> xs, ys;
        const QRegularExpression line(QStringLiteral("^lines (\\S+),(\\S+)-(\\S+),(\\S+) "));
        for (const QString& call : device.calls(QStringLiteral("lines "))) {
            const QRegularExpressionMatch m = line.match(call);
            if (m.captured(1) == m.captured(3))
                xs << m.captured(1).toDouble();
            else
                ys << m.captured(2).toDouble();
        }
        return {xs, ys};
    }
};

// Every tick of the axis against where the plot puts its value (a widget pixel) and against the
// line the plot draws for it.
void compareTicks(const QCartesianAxisWidget& axis, const std::function<double(double)>& plotPixel,
                  const QList<double>& drawn, int scroll)
{
    const QVector<double> values = axis.tickValues();
    const QList<int> pixels = axis.tickPixels();
    QVERIFY(values.size() >= 3);
    QCOMPARE(drawn.size(), values.size());
    for (int i = 0; i < values.size(); ++i) {
        const double expected = plotPixel(values[i]);
        const QString what = QStringLiteral("tick %1: axis %2, plot %3").arg(values[i]).arg(pixels[i]).arg(expected);
        QVERIFY2(std::abs(axis.valueToPixel(values[i]) - expected) < 1e-6, qPrintable(what));
        QVERIFY2(std::abs(pixels[i] - expected) <= 0.5, qPrintable(what));
        QVERIFY2(std::abs(drawn[i] - scroll - expected) <= 0.5, qPrintable(what));
    }
}

} // namespace

class TestAxisAlignment : public QObject
{
    Q_OBJECT
private slots:
    void ticksOnThePlotsPixels_data();
    void ticksOnThePlotsPixels();
    void followsAVerticalOnlyZoom();
};

void TestAxisAlignment::ticksOnThePlotsPixels_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("scroll");
    QTest::addColumn<int>("origin");
    QTest::newRow("plain, origin bottom") << QSize(400, 300) << 1.0 << 50 << 1;
    QTest::newRow("zoomed, at the start") << QSize(333, 257) << 3.0 << 0 << 1;
    QTest::newRow("zoomed, middle, origin top") << QSize(333, 257) << 2.5 << 50 << 0;
    QTest::newRow("zoomed far, at the end") << QSize(401, 299) << 12.7 << 100 << 1;
    QTest::newRow("odd zoom, a third in, origin top") << QSize(517, 263) << 1.3 << 33 << 0;
}

void TestAxisAlignment::ticksOnThePlotsPixels()
{
    QFETCH(QSize, size);
    QFETCH(double, zoom);
    QFETCH(int, scroll);
    QFETCH(int, origin);
    const auto originPosition = QCrossPlot::OriginPosition(origin);
    Plot plot;
    plot.resize(size);
    plot.setBoundaries(QPointF(-35.0, 1200.0), QPointF(140.0, 2950.0));
    plot.setOriginPosition(originPosition);
    plot.zoom(zoom);
    plot.xoffset(scroll);
    plot.yoffset(scroll);

    QCartesianAxisWidget top(QCartesianAxisWidget::AxisTop);
    QCartesianAxisWidget left(QCartesianAxisWidget::AxisLeft);
    top.resize(size.width(), 40);
    left.resize(60, size.height());
    connect(&top, &QCartesianAxisWidget::gridLinesChanged, &plot, &QCrossPlot::verticalGridLinesChanged);
    connect(&left, &QCartesianAxisWidget::gridLinesChanged, &plot, &QCrossPlot::horizontalGridLinesChanged);
    left.setOriginPosition(QCartesianAxisWidget::OriginPosition(origin));
    top.setRange(-35.0, 140.0);
    left.setRange(1200.0, 2950.0);
    top.setZoom(zoom);
    left.setZoom(zoom);
    top.setOffset(scroll);
    left.setOffset(originPosition == QCrossPlot::OriginBottomLeft ? 100 - scroll : scroll);

    const auto [xs, ys] = plot.drawnGrid();
    compareTicks(top, [&](double v) { return plot.transformInPixelPoint(QPointF(v, 1200.0)).x() - plot.xOffsetPixels(); },
                 xs, plot.xOffsetPixels());
    compareTicks(left, [&](double v) { return plot.transformInPixelPoint(QPointF(0.0, v)).y() - plot.yOffsetPixels(); },
                 ys, plot.yOffsetPixels());
    // And back: the plot reads a tick's pixel as the tick's value, to within a pixel's worth.
    const double xPerPixel = 175.0 / (plot.rasterSize().width() - 1);
    for (double v : top.tickValues())
        QVERIFY(std::abs(plot.transformInDataPoint(QPointF(top.valueToPixel(v), 0.0)).x() - v) < xPerPixel * 1e-6);
}

// A depth plot zoomed only in height truncates its raster where zoom() rounds it: the axis
// takes the raster as it is.
void TestAxisAlignment::followsAVerticalOnlyZoom()
{
    Plot plot;
    plot.resize(200, 301);
    plot.setBoundaries(QPointF(0.0, 1500.0), QPointF(90.0, 2750.0));
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.yoffset(70);
    plot.zoomY(1.75); // 526.75 pixels: 526 here, 527 under zoom()
    QCartesianAxisWidget depth(QCartesianAxisWidget::AxisLeftDepth);
    depth.resize(60, 301);
    depth.setRange(1500.0, 2750.0);
    connect(&depth, &QCartesianAxisWidget::gridLinesChanged, &plot, &QCrossPlot::horizontalGridLinesChanged);
    depth.followChart(plot.rasterSize(), plot.xOffsetPixels(), plot.yOffsetPixels());
    compareTicks(depth, [&](double v) { return plot.transformInPixelPoint(QPointF(0.0, v)).y() - plot.yOffsetPixels(); },
                 plot.drawnGrid().second, plot.yOffsetPixels());
}

QTEST_MAIN(TestAxisAlignment)
#include "tst_axis_alignment.moc"

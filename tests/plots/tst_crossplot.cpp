// The cross plot surface without a display: the data/pixel transforms and their inverse,
// zoomed and scrolled; the widening of degenerate boundaries; the picking tolerance; the order
// and the ends of what the chart draws (recorded, not rasterised); the regression equation; the
// domain bands; and the mouse rules that need no real input (right press, short lassos, limits).
#include "DepthLineField.h"
#include "PaintRecorder.h"

#include <QCrossPlot.h>
#include <QRelationshipItemModel.h>

#include <QPainter>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QPicture>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>
#include <random>

using namespace rkBase;

namespace {

// x/y pairs as a model over two sheet columns; a NaN coordinate leaves that cell empty.
class Points : public QRelationshipItemModel
{
public:
    explicit Points(const QVector<QPointF>& rows = {})
    {
        x = std::make_unique<MatrixData>(QStringLiteral("x"), rows.size(), 1, QVariant::Double, true);
        y = std::make_unique<MatrixData>(QStringLiteral("y"), rows.size(), 1, QVariant::Double, true);
        for (int r = 0; r < rows.size(); ++r) {
            if (!std::isnan(rows[r].x()))
                x->setValue(r, 0, rows[r].x());
            if (!std::isnan(rows[r].y()))
                y->setValue(r, 0, rows[r].y());
        }
        if (!rows.isEmpty())
            takeNewDataSet(x.get(), y.get(), HighlightSelected);
    }
    std::unique_ptr<MatrixData> x, y;
};

// A scenario as the picking tools leave it: lines in depth order, one colour and type each.
class Scenario : public DepthLineField
{
public:
    Scenario() : DepthLineField(QStringLiteral("test")) {}
    void add(double depth, DataType type, const QColor& colour, double x = 0.0)
    {
        insertHorizontalLine(x, depth, QStringLiteral("L%1").arg(lineDepths().size() + 1), colour, type, 1e-6,
                             QPointF(-1.0, -1.0), -1);
    }
    void setDomain(DomainType type, int transparency)
    {
        setDomainType(type);
        setDomainTransparency(transparency);
    }
};

// The surface with its draw steps reachable, on a raster 201 x 101 (pixels 0..200, 0..100).
class Plot : public QCrossPlot
{
public:
    Plot() : QCrossPlot(nullptr, nullptr)
    {
        resize(201, 101);
        updateChart();
    }
    using QCrossPlot::drawDomains;
    using QCrossPlot::drawRegressionEquation;
    using QCrossPlot::drawStructuralTops;
    using QCrossPlot::mousePressEvent;
    using QCrossPlot::mouseReleaseEvent;
    using QCrossPlot::drawPoints;
    using QCrossPlot::setPointPen;
    QStringList record(void (Plot::*step)(QPainter*) = nullptr)
    {
        PaintRecorder device(QSize(201, 101));
        {
            QPainter painter(&device);
            if (step)
                (this->*step)(&painter);
            else
                drawChart(painter);
        }
        return device.calls();
    }
    void drawEquation(QPainter* painter) { drawRegressionEquation(painter); }
    void drawIntervalBoundariesOn(QPainter* painter) { drawIntervalBoundaries(painter); }
};

// A panel as the plot sees it: something with an invokable drawAxes.
class AxesPanel : public QWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE void drawAxes(QPainter*, QRect rect) { drawn << rect; }
    QList<QRect> drawn;
};

QStringList g_warnings;
void keepWarnings(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        g_warnings << text;
}

// What a recorded call drew, by its pen: the chart's layers have their own colours.
QString layerOf(const QString& call)
{
    if (call.contains(QLatin1String("| pen #ff808080 1")))
        return QStringLiteral("bisecting");
    if (call.contains(QLatin1String("| pen #ff000080")))
        return QStringLiteral("points");
    if (call.contains(QLatin1String("| pen #ff00ff00 2")))
        return QStringLiteral("regression");
    if (call.contains(QLatin1String("| pen #ffff0000 2")))
        return QStringLiteral("range");
    return QStringLiteral("other");
}

QStringList layers(const QStringList& calls)
{
    QStringList out;
    for (const QString& c : calls) {
        const QString layer = layerOf(c);
        if (layer != QLatin1String("other") && (out.isEmpty() || out.last() != layer))
            out << layer;
    }
    return out;
}

QStringList linesIn(const QStringList& calls, const QString& layer)
{
    QStringList out;
    for (const QString& c : calls)
        if (layerOf(c) == layer && c.startsWith(QLatin1String("lines ")))
            out << c.section(QLatin1String(" | "), 0, 0);
    return out;
}

// Mouse events sent straight to a widget that is not shown.
void send(QWidget* w, QEvent::Type type, Qt::MouseButton button, Qt::KeyboardModifiers mods, const QPoint& at)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, QPointF(at), w->mapToGlobal(at), button, held, mods);
    QCoreApplication::sendEvent(w, &event);
}
void press(QWidget* w, Qt::MouseButton b, Qt::KeyboardModifiers m, const QPoint& at)
{
    send(w, QEvent::MouseButtonPress, b, m, at);
}
void release(QWidget* w, Qt::MouseButton b, Qt::KeyboardModifiers m, const QPoint& at)
{
    send(w, QEvent::MouseButtonRelease, b, m, at);
}
void move(QWidget* w, const QPoint& at) { send(w, QEvent::MouseMove, Qt::NoButton, Qt::NoModifier, at); }

const QVector<QPointF> kLine{{0.0, 0.0}, {50.0, 25.0}, {100.0, 50.0}};

} // namespace

class TestCrossPlot : public QObject
{
    Q_OBJECT
private slots:
    void transforms_data();
    void transforms();
    void inverseUnderZoomAndScroll_data();
    void topNamesKeepApart_data();
    void topNamesKeepApart();
    void zoomedWalkDrawsWhatTheViewShows_data();
    void zoomedWalkDrawsWhatTheViewShows();
    void inverseUnderZoomAndScroll();
    void transformGuards();
    void flatAxisInverse_data();
    void flatAxisInverse();
    void boundaries_data();
    void boundaries();
    void singleAxisBoundaries();
    void pickingEps();
    void drawOrder_data();
    void drawOrder();
    void regressionAndRangeEnds_data();
    void regressionAndRangeEnds();
    void equation_data();
    void equation();
    void badDataDrawsNothingNonFinite_data();
    void badDataDrawsNothingNonFinite();
    void domains_data();
    void domains();
    void topsPens_data();
    void topsPens();
    void rightPressTouchesNothing();
    void shortLassoClears_data();
    void shortLassoClears();
    void pickingLimits();
    void pointAtTheOriginIsDrawnAndLassoed();
    void topsFollowTheMouse();
    void intervalBoundaries();
    void stateRules();
    void metafileAxesOnlyFromAPanel_data();
    void metafileAxesOnlyFromAPanel();
};

void TestCrossPlot::transforms_data()
{
    QTest::addColumn<int>("origin");
    QTest::addColumn<QPointF>("data");
    QTest::addColumn<QPointF>("pixel");
    const int up = QCrossPlot::OriginBottomLeft, down = QCrossPlot::OriginTopLeft;
    QTest::newRow("up min") << up << QPointF(0, 0) << QPointF(0, 100);
    QTest::newRow("up max") << up << QPointF(100, 50) << QPointF(200, 0);
    QTest::newRow("up centre") << up << QPointF(50, 25) << QPointF(100, 50);
    QTest::newRow("up outside") << up << QPointF(-50, 75) << QPointF(-100, -50);
    QTest::newRow("down min") << down << QPointF(0, 0) << QPointF(0, 0);
    QTest::newRow("down max") << down << QPointF(100, 50) << QPointF(200, 100);
    QTest::newRow("down quarter") << down << QPointF(25, 12.5) << QPointF(50, 25);
}

void TestCrossPlot::transforms()
{
    QFETCH(int, origin);
    QFETCH(QPointF, data);
    QFETCH(QPointF, pixel);
    Plot plot;
    plot.setOriginPosition(QCrossPlot::OriginPosition(origin));
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    const QPointF got = plot.transformInPixelPoint(data);
    QCOMPARE(got.x(), pixel.x());
    QCOMPARE(got.y(), pixel.y());
    const QPointF back = plot.transformInDataPoint(got);
    QVERIFY(std::abs(back.x() - data.x()) < 1e-9);
    QVERIFY(std::abs(back.y() - data.y()) < 1e-9);
}

void TestCrossPlot::inverseUnderZoomAndScroll_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("percent");
    QTest::newRow("plain") << 1.0 << 50;
    QTest::newRow("x2 middle") << 2.0 << 50;
    QTest::newRow("x3 end") << 3.0 << 100;
}

void TestCrossPlot::inverseUnderZoomAndScroll()
{
    QFETCH(double, zoom);
    QFETCH(int, percent);
    Plot plot;
    plot.setBoundaries(QPointF(-5, 1000), QPointF(5, 3000));
    plot.zoom(zoom);
    plot.xoffset(percent);
    plot.yoffset(percent);
    QCOMPARE(plot.xOffsetPixels() > 0, zoom > 1.0);
    // The widget shows the raster from the offsets on: a widget pixel is a raster pixel less them.
    for (const QPointF data : {QPointF(-5, 1000), QPointF(0, 2000), QPointF(2.5, 2900)}) {
        const QPointF widget = plot.transformInPixelPoint(data) - QPointF(plot.xOffsetPixels(), plot.yOffsetPixels());
        const QPointF back = plot.transformInDataPoint(widget);
        QVERIFY2(std::abs(back.x() - data.x()) < 1e-9 && std::abs(back.y() - data.y()) < 1e-9,
                 qPrintable(QStringLiteral("%1,%2").arg(back.x()).arg(back.y())));
    }
}

void TestCrossPlot::topNamesKeepApart_data()
{
    QTest::addColumn<double>("spacing"); // in depth, two pixels each
    QTest::addColumn<int>("picked");
    QTest::addColumn<bool>("allNamed");
    QTest::newRow("sparse, every name") << 10.0 << -1 << true;
    QTest::newRow("dense, the picked one named") << 1.0 << 7 << false;
    QTest::newRow("dense, nothing picked") << 1.0 << -1 << false;
}

// Tops closer than a line of text keep their lines but not all their names, and a picked top is
// always named.
void TestCrossPlot::topNamesKeepApart()
{
    QFETCH(double, spacing);
    QFETCH(int, picked);
    QFETCH(bool, allNamed);
    Scenario field;
    const int count = spacing > 5.0 ? 4 : 15;
    for (int i = 0; i < count; ++i)
        field.add(15.0 + spacing * i, DepthLineField::Top, Qt::blue);
    if (picked >= 0)
        field.setSelected({picked});
    Plot plot;
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    PaintRecorder device(QSize(201, 101));
    device.setRecordTextPositions(true);
    {
        QPainter painter(&device);
        plot.drawStructuralTops(&field, false, &painter);
    }
    const QRegularExpression text(QStringLiteral("^text ' (L\\d+) ' at (-?\\d+),(-?\\d+) "));
    QStringList names;
    QList<int> rows;
    for (const QString& call : device.calls(QStringLiteral("text "))) {
        const QRegularExpressionMatch m = text.match(call);
        QVERIFY2(m.hasMatch(), qPrintable(call));
        names << m.captured(1);
        rows << m.captured(3).toInt();
    }
    QCOMPARE(device.calls(QStringLiteral("lines ")).filter(QStringLiteral("-200,")).size(), count);
    QCOMPARE(names.size() == count, allNamed);
    QVERIFY(!names.isEmpty());
    if (picked >= 0)
        QVERIFY(names.contains(QStringLiteral("L%1").arg(picked + 1)));
    const int height = qCeil(QFontMetricsF(QFont(QFont(), &device)).height());
    for (int a = 0; a < rows.size(); ++a)
        for (int b = a + 1; b < rows.size(); ++b)
            QVERIFY2(std::abs(rows[a] - rows[b]) >= height, qPrintable(names[a] + QLatin1Char(' ') + names[b]));
}

void TestCrossPlot::zoomedWalkDrawsWhatTheViewShows_data()
{
    QTest::addColumn<bool>("depthOrder");
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("size");
    for (bool depthOrder : {true, false})
        for (int percent : {0, 37, 100})
            QTest::addRow("%s, scrolled %d%%, style %d", depthOrder ? "depth order" : "shuffled", percent,
                          percent == 37 ? 0 : 1)
                << depthOrder << percent << (percent == 37 ? 0 : 1) << (percent == 37 ? 4 : 2);
}

// Zoomed in, a raster walk leaves out whole blocks of rows and single points that cannot reach
// the view, and stamps runs of points. A recording device gets every point as a real shape:
// replayed, it must leave the same picture, symbols cut by the view's edges included.
void TestCrossPlot::zoomedWalkDrawsWhatTheViewShows()
{
    QFETCH(bool, depthOrder);
    QFETCH(int, percent);
    QFETCH(int, style);
    QFETCH(int, size);
    QVector<QPointF> rows;
    QRandomGenerator rng(uint(percent * 7 + style));
    for (int i = 0; i < 20000; ++i) {
        const double depth = 1000.0 + 2000.0 * i / 20000.0;
        // Now and then a blank cell, and a point far off the axes' range.
        if (i % 997 == 0)
            rows << QPointF(std::nan(""), depth);
        else if (i % 1999 == 0)
            rows << QPointF(1e300, depth);
        else
            rows << QPointF(rng.bounded(10.0) - 5.0, depth);
    }
    if (!depthOrder)
        std::shuffle(rows.begin(), rows.end(), std::mt19937(5));
    // The plain model, as the panels hold it: its walk reads the stored cells.
    Points columns(rows);
    QRelationshipItemModel points;
    points.takeNewDataSet(columns.x.get(), columns.y.get(), QRelationshipItemModel::ShowAll);
    points.setPointStyle(QRelationshipItemModel::PointStyle(style));
    points.setPointPixelSize(size);
    Plot plot;
    plot.setModel(&points);
    plot.setBoundaries(QPointF(-5, 1000), QPointF(5, 3000));
    plot.zoom(4.0);
    plot.xoffset(percent);
    plot.yoffset(percent);
    auto paint = [&](QPaintDevice* device) {
        QPainter painter(device);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-plot.xOffsetPixels(), -plot.yOffsetPixels());
        plot.setPointPen(&painter);
        plot.drawPoints(&painter);
    };
    QImage walked(201, 101, QImage::Format_ARGB32_Premultiplied);
    walked.fill(Qt::white);
    paint(&walked);
    QPicture recorded;
    paint(&recorded);
    QImage replayed(walked.size(), walked.format());
    replayed.fill(Qt::white);
    {
        QPainter painter(&replayed);
        painter.setClipRect(replayed.rect());
        painter.drawPicture(0, 0, recorded);
    }
    int worst = 0, ink = 0;
    for (int y = 0; y < walked.height(); ++y)
        for (int x = 0; x < walked.width(); ++x) {
            const QRgb a = walked.pixel(x, y), b = replayed.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                              std::abs(qBlue(a) - qBlue(b))});
            ink += a != qRgb(255, 255, 255);
        }
    QVERIFY(ink > walked.width() * walked.height() / 10);
    QVERIFY2(worst <= 2, qPrintable(QStringLiteral("max difference %1").arg(worst)));
}

void TestCrossPlot::transformGuards()
{
    // A fresh plot has (10, 10) at both corners: no span, no division by zero.
    QCrossPlot fresh(nullptr, nullptr);
    fresh.resize(100, 100);
    fresh.updateChart();
    QCOMPARE(fresh.transformInPixelPoint(QPointF(3, 4)), QPointF(0, 0));
    // A raster of one pixel has no span either way.
    QCrossPlot tiny(nullptr, nullptr);
    tiny.resize(1, 1);
    tiny.updateChart();
    tiny.setBoundaries(QPointF(0, 0), QPointF(1, 1));
    QCOMPARE(tiny.transformInPixelPoint(QPointF(0.5, 0.5)), QPointF(0, 0));
    QCOMPARE(tiny.transformInDataPoint(QPointF(0.5, 0.5)), QPointF(0, 0));
    QCOMPARE(tiny.pickingEpsX(), 0.0);
}

void TestCrossPlot::flatAxisInverse_data()
{
    QTest::addColumn<QPointF>("min");
    QTest::addColumn<QPointF>("max");
    QTest::addColumn<QPointF>("data");
    // The corners of a fresh plot, and a flat x whose half-width (the y maximum) is 0.
    QTest::newRow("fresh") << QPointF(10, 10) << QPointF(10, 10) << QPointF(10, 10);
    QTest::newRow("flat x, y up to 0") << QPointF(4, -50) << QPointF(4, 0) << QPointF(4, -25);
}

void TestCrossPlot::flatAxisInverse()
{
    QFETCH(QPointF, min);
    QFETCH(QPointF, max);
    QFETCH(QPointF, data);
    Plot plot;
    if (min != max)
        plot.setBoundaries(min, max);
    QCOMPARE(plot.minPoint().x(), plot.maxPoint().x());
    // Every pixel of a flat axis is that axis's one value, in the read-out as in the inverse.
    QSignalSpy cursor(&plot, &QChartDrawingArea::cursorPos);
    move(&plot, QPoint(100, 50));
    QCOMPARE(plot.transformInDataPoint(QPointF(100, 50)), data);
    QCOMPARE(cursor.count(), 1);
    QCOMPARE(cursor.first().first().toPointF(), data);
}

void TestCrossPlot::boundaries_data()
{
    QTest::addColumn<QPointF>("min");
    QTest::addColumn<QPointF>("max");
    QTest::addColumn<QPointF>("wantMin");
    QTest::addColumn<QPointF>("wantMax");
    QTest::newRow("both equal") << QPointF(3, 7) << QPointF(3, 7) << QPointF(-7, -3) << QPointF(13, 17);
    // Widened around the maximum in single precision: 3 + 4e-7 rounds to 3 + 2^-21 (two steps of
    // 2^-22 above 3), 7 - 4e-7 to 7 - 2^-21 (one step below 7).
    QTest::newRow("both nearly equal") << QPointF(3, 7) << QPointF(3 + 4e-7, 7 - 4e-7)
                                       << QPointF(-6.999999523162841796875, -3.000000476837158203125)
                                       << QPointF(13.000000476837158203125, 16.999999523162841796875);
    // The half-width of a flat axis comes from the other axis's maximum.
    QTest::newRow("x equal") << QPointF(4, 0) << QPointF(4, 30) << QPointF(-11, 0) << QPointF(19, 30);
    QTest::newRow("y equal") << QPointF(0, 2) << QPointF(8, 2) << QPointF(0, -2) << QPointF(8, 6);
    QTest::newRow("x just apart") << QPointF(4, 0) << QPointF(4 + 6e-7, 30) << QPointF(4, 0)
                                  << QPointF(4 + 6e-7, 30);
    QTest::newRow("ordinary") << QPointF(-1, -2) << QPointF(1, 2) << QPointF(-1, -2) << QPointF(1, 2);
}

void TestCrossPlot::boundaries()
{
    QFETCH(QPointF, min);
    QFETCH(QPointF, max);
    QFETCH(QPointF, wantMin);
    QFETCH(QPointF, wantMax);
    Plot plot;
    plot.setBoundaries(min, max);
    QCOMPARE(plot.minPoint(), wantMin);
    QCOMPARE(plot.maxPoint(), wantMax);
    QCOMPARE(plot.calculateDataBoundaries(), std::make_pair(wantMin, wantMax));
}

void TestCrossPlot::singleAxisBoundaries()
{
    Plot plot;
    plot.setBoundaries(QPointF(0, 0), QPointF(10, 10));
    plot.setXBoundary(5, 5);
    QCOMPARE(plot.minPoint(), QPointF(-5, 0));
    QCOMPARE(plot.maxPoint(), QPointF(15, 10));
    plot.setYBoundary(100, 300);
    QCOMPARE(plot.minPoint(), QPointF(-5, 100));
    QCOMPARE(plot.maxPoint(), QPointF(15, 300));
    plot.setYBoundary(2, 2);
    QCOMPARE(plot.minPoint().y(), -8.0);
    QCOMPARE(plot.maxPoint().y(), 12.0);
}

void TestCrossPlot::pickingEps()
{
    Plot plot;
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    // Three raster pixels: 200 pixels span 100 in x, 100 pixels span 50 in y.
    QCOMPARE(plot.pickingEpsX(), 1.5);
    QCOMPARE(plot.pickingEpsY(), 1.5);
    plot.setBoundaries(QPointF(100, 50), QPointF(0, 0));
    QCOMPARE(plot.pickingEpsX(), 1.5);
}

void TestCrossPlot::drawOrder_data()
{
    QTest::addColumn<bool>("bisecting");
    QTest::addColumn<bool>("points");
    QTest::addColumn<bool>("regression");
    QTest::addColumn<bool>("range");
    QTest::addColumn<QStringList>("order");
    QTest::newRow("all") << true << true << true << true
                         << QStringList{"bisecting", "points", "regression", "range"};
    QTest::newRow("no points") << true << false << true << true << QStringList{"bisecting", "regression", "range"};
    QTest::newRow("points and range") << false << true << false << true << QStringList{"points", "range"};
    QTest::newRow("nothing") << false << false << false << false << QStringList{};
}

void TestCrossPlot::drawOrder()
{
    QFETCH(bool, bisecting);
    QFETCH(bool, points);
    QFETCH(bool, regression);
    QFETCH(bool, range);
    QFETCH(QStringList, order);
    Points model(kLine);
    Plot plot;
    plot.setModel(&model);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    plot.setTrendLine(0.5, 0.0, 1.0);
    plot.setShowBisectingLine(bisecting);
    plot.setShowPoints(points);
    plot.setShowRegressionLine(regression);
    plot.setShow90PercentRange(range);
    QCOMPARE(layers(plot.record()), order);
    // The raster takes the same layers; the regression, drawn after the points, is on top.
    plot.updateChart();
    const QRgb centre = plot.chartImage().pixel(100, 50);
    if (regression)
        QCOMPARE(qGreen(centre) > 200 && qRed(centre) < 60 && qBlue(centre) < 60, true);
    else if (points)
        QCOMPARE(qBlue(centre) > qGreen(centre), true);
}

void TestCrossPlot::regressionAndRangeEnds_data()
{
    QTest::addColumn<double>("slope");
    QTest::addColumn<QStringList>("regression");
    QTest::addColumn<QStringList>("range");
    // Points from (0, 0) to (100, 50); dx = 10, dy = 5; a data unit is two pixels.
    QTest::newRow("function") << 0.5 << QStringList{"lines 0,100-200,0"}
                              << QStringList{"lines -20,100-200,-10", "lines 0,110-220,0"};
    // No function: the model's corners, and the lower end takes dx upwards.
    QTest::newRow("not a function") << 99999.0 << QStringList{"lines 0,100-200,0"}
                                    << QStringList{"lines -20,90-200,-10", "lines 0,110-220,-20"};
}

void TestCrossPlot::regressionAndRangeEnds()
{
    QFETCH(double, slope);
    QFETCH(QStringList, regression);
    QFETCH(QStringList, range);
    Points model(kLine);
    Plot plot;
    plot.setModel(&model);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    plot.setShowRegressionLine(true);
    plot.setShowPoints(false);
    plot.setTrendLine(slope, 0.0, 0.9);
    const QStringList calls = plot.record();
    QCOMPARE(linesIn(calls, QStringLiteral("regression")), regression);
    QCOMPARE(linesIn(calls, QStringLiteral("range")), range);
    // Without an intercept neither line is drawn.
    plot.setTrendLine(slope, 99999.0, 0.9);
    QCOMPARE(layers(plot.record()), QStringList());
}

void TestCrossPlot::equation_data()
{
    QTest::addColumn<double>("slope");
    QTest::addColumn<double>("intercept");
    QTest::addColumn<double>("coefficient");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("positive") << 0.5 << 0.0 << 0.9 << QStringList{"text ' y= 0.5000x +0.0000 '", "text ' R= 0.9000'"};
    QTest::newRow("negative intercept") << -1.25 << -3.5 << 0.12345
                                        << QStringList{"text ' y= -1.2500x -3.5000 '", "text ' R= 0.1235'"};
    QTest::newRow("no function") << 99999.0 << 2.0 << 0.5 << QStringList{"text 'The regression is not a function'"};
    QTest::newRow("nothing at all") << 99999.0 << 99999.0 << 99999.0
                                    << QStringList{"text 'The regression is not a function'"};
}

void TestCrossPlot::equation()
{
    QFETCH(double, slope);
    QFETCH(double, intercept);
    QFETCH(double, coefficient);
    QFETCH(QStringList, texts);
    Plot plot;
    plot.setTrendLine(slope, intercept, coefficient);
    const QStringList calls = plot.record(&Plot::drawEquation);
    QStringList got;
    for (const QString& c : calls)
        if (c.startsWith(QLatin1String("text ")))
            got << c.section(QLatin1String(" | "), 0, 0);
    QCOMPARE(got, texts);
    // The box comes first, white on black, 8 % of the height in and 2 % of the width down.
    QVERIFY(calls.first().startsWith(QLatin1String("rect 8,4 ")));
    QVERIFY(calls.first().endsWith(QLatin1String("| pen #ff000000 1 | brush #ffffffff")));
}

void TestCrossPlot::badDataDrawsNothingNonFinite_data()
{
    QTest::addColumn<QVector<QPointF>>("rows");
    QTest::addColumn<QPointF>("min");
    QTest::addColumn<QPointF>("max");
    // What the finite rest must still draw: the bisecting line corner to corner, and a cross of
    // half-width 2 at each usable point, x = 200 (x - minX) / (maxX - minX) and y = 100 - 100
    // (y - minY) / (maxY - minY) on the 201 x 101 raster. "unchecked" where nothing can be placed.
    QTest::addColumn<QStringList>("bisecting");
    QTest::addColumn<QStringList>("points");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const QStringList corners{"lines 0,100-200,0"};
    QTest::newRow("no model rows") << QVector<QPointF>{} << QPointF(0, 0) << QPointF(1, 1) << corners << QStringList{};
    // (3, 3) of 0..5 at (120, 40).
    QTest::newRow("empty cells") << QVector<QPointF>{{nan, 1}, {2, nan}, {3, 3}} << QPointF(0, 0) << QPointF(5, 5)
                                 << corners << QStringList{"lines 118,40-122,40 120,38-120,42"};
    // A single point widens both axes to 3 - 10 .. 3 + 10: it sits in the middle.
    QTest::newRow("one point") << QVector<QPointF>{{3, 3}} << QPointF(3, 3) << QPointF(3, 3) << corners
                               << QStringList{"lines 98,50-102,50 100,48-100,52"};
    // (1, 2) and (2, 3) of 0..5 at (40, 60) and (80, 40).
    QTest::newRow("infinite cell") << QVector<QPointF>{{inf, 1}, {1, 2}, {2, 3}} << QPointF(0, 0) << QPointF(5, 5)
                                   << corners
                                   << QStringList{"lines 38,60-42,60 40,58-40,62", "lines 78,40-82,40 80,38-80,42"};
    QTest::newRow("nan boundaries") << QVector<QPointF>{{1, 1}, {2, 2}} << QPointF(nan, 0) << QPointF(5, nan)
                                    << QStringList{"unchecked"} << QStringList{"unchecked"};
}

void TestCrossPlot::badDataDrawsNothingNonFinite()
{
    QFETCH(QVector<QPointF>, rows);
    QFETCH(QPointF, min);
    QFETCH(QPointF, max);
    Points model(rows);
    Plot plot;
    plot.setModel(&model);
    plot.setBoundaries(min, max);
    plot.setTrendLine(std::numeric_limits<double>::quiet_NaN(), 0.0, 1.0);
    plot.setShowBisectingLine(true);
    plot.setShowRegressionLine(true);
    plot.setPointConnectionLine(true);
    plot.setBinAverages(true);
    plot.setNumbOfDataPerBin(true);
    plot.setIntervalBoundaries(true);
    plot.setTandLdirection(1.0, 2.0);
    plot.updateChart();
    QFETCH(QStringList, bisecting);
    QFETCH(QStringList, points);
    const QStringList calls = plot.record();
    if (bisecting != QStringList{"unchecked"})
        QCOMPARE(linesIn(calls, QStringLiteral("bisecting")), bisecting);
    if (points != QStringList{"unchecked"})
        QCOMPARE(linesIn(calls, QStringLiteral("points")), points);
    for (const QString& c : calls) {
        const QString what = c.section(QLatin1String(" | "), 0, 0);
        QVERIFY2(!what.contains(QLatin1String("nan"), Qt::CaseInsensitive)
                     && !what.contains(QLatin1String("inf"), Qt::CaseInsensitive),
                 qPrintable(c));
    }
}

void TestCrossPlot::domains_data()
{
    using T = DepthLineField::DataType;
    QTest::addColumn<int>("domain");
    QTest::addColumn<QVector<int>>("types");
    QTest::addColumn<QStringList>("bands");
    QTest::newRow("stratigraphy one horizon") << 0 << QVector<int>{T::Horizon} << QStringList{};
    QTest::newRow("stratigraphy skips a fault")
        << 0 << QVector<int>{T::Horizon, T::Fault, T::Top, T::Horizon}
        << QStringList{"rect 0,20 200x40 | brush #50ff0000", "rect 0,60 200x20 | brush #500000ff"};
    QTest::newRow("structural one line") << 1 << QVector<int>{T::Fault} << QStringList{};
    QTest::newRow("structural every pair")
        << 1 << QVector<int>{T::Horizon, T::Fault, T::Top}
        << QStringList{"rect 0,20 200x20 | brush #50ff0000", "rect 0,40 200x20 | brush #5000ff00"};
    QTest::newRow("none") << 2 << QVector<int>{T::Horizon, T::Horizon} << QStringList{};
}

void TestCrossPlot::domains()
{
    QFETCH(int, domain);
    QFETCH(QVector<int>, types);
    QFETCH(QStringList, bands);
    const QColor colours[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow};
    Scenario field;
    field.setDomain(DepthLineField::DomainType(domain), 0x50);
    for (int i = 0; i < types.size(); ++i)
        field.add(10.0 + 10.0 * i, DepthLineField::DataType(types[i]), colours[i]);
    Plot plot;
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    PaintRecorder device(QSize(201, 101));
    {
        QPainter painter(&device);
        plot.drawDomains(&field, false, &painter);
    }
    QStringList got;
    for (const QString& c : device.calls())
        got << c.section(QLatin1String(" | "), 0, 0) + QStringLiteral(" | ") + c.section(QLatin1String(" | "), 2, 2);
    QCOMPARE(got, bands);
    for (const QString& c : device.calls())
        QVERIFY(c.contains(QLatin1String("| pen none ")));
}

void TestCrossPlot::topsPens_data()
{
    using T = DepthLineField::DataType;
    QTest::addColumn<int>("domain");
    QTest::addColumn<int>("transparency");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("hideFaults");
    QTest::addColumn<QStringList>("lines");
    const QStringList blue{"lines 0,20-200,20 | pen #ff0000ff 2"}, black{"lines 0,20-200,20 | pen #ff000000 2"};
    QTest::newRow("horizon in its colour") << 0 << 180 << int(T::Horizon) << false << false << blue;
    QTest::newRow("selected is yellow") << 2 << 180 << int(T::Horizon) << true << false
                                        << QStringList{"lines 0,20-200,20 | pen #ffffff00 2"};
    QTest::newRow("opaque domains draw black") << 0 << 200 << int(T::Top) << false << false << black;
    QTest::newRow("no domains draw black") << 2 << 0 << int(T::Fault) << false << false << black;
    QTest::newRow("hidden fault") << 0 << 180 << int(T::Fault) << false << true << QStringList{};
    QTest::newRow("hidden faults leave tops") << 0 << 180 << int(T::Top) << false << true << blue;
    // A plane is a line only among structural domains; elsewhere only its mark shows.
    QTest::newRow("plane among domains") << 1 << 180 << int(T::AxialPlane) << false << false << blue;
    QTest::newRow("plane in stratigraphy") << 0 << 180 << int(T::AxialPlane) << false << false << QStringList{};
    QTest::newRow("bin boundary") << 0 << 180 << int(T::IntervalBoundary) << false << false << QStringList{};
}

void TestCrossPlot::topsPens()
{
    QFETCH(int, domain);
    QFETCH(int, transparency);
    QFETCH(int, type);
    QFETCH(bool, selected);
    QFETCH(bool, hideFaults);
    QFETCH(QStringList, lines);
    Scenario field;
    field.setDomain(DepthLineField::DomainType(domain), transparency);
    field.add(10.0, DepthLineField::DataType(type), Qt::blue, 50.0);
    if (selected)
        field.setSelected({0});
    field.setShowFaults(!hideFaults);
    Plot plot;
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    PaintRecorder device(QSize(201, 101));
    {
        QPainter painter(&device);
        plot.drawStructuralTops(&field, false, &painter);
    }
    QStringList got;
    for (const QString& c : device.calls("lines "))
        got << c.section(QLatin1String(" | "), 0, 1);
    // The label box's cross is drawn in lines too: keep the horizontal line across the plot.
    got = got.filter(QStringLiteral("0,20-200,20"));
    QCOMPARE(got, lines);
    const bool plane = type < 3;
    QCOMPARE(!device.calls("ellipse 96,16 9x9").isEmpty(), plane);
}

void TestCrossPlot::rightPressTouchesNothing()
{
    Points model(kLine);
    Plot plot;
    plot.setModel(&model);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    model.setSelected(1, true);
    press(&plot, Qt::LeftButton, Qt::ControlModifier, QPoint(10, 10));
    const QPointF pos = plot.mousePickingPos();
    const QPolygonF polygon = plot.selectionPolygon();
    press(&plot, Qt::RightButton, Qt::NoModifier, QPoint(50, 60));
    QCOMPARE(plot.mousePickingPos(), pos);
    QCOMPARE(plot.selectionPolygon(), polygon);
    QVERIFY(model.isSelected(1));
}

void TestCrossPlot::shortLassoClears_data()
{
    QTest::addColumn<int>("moves");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("kept");
    QTest::newRow("click") << 0 << int(Qt::NoModifier) << false;
    QTest::newRow("click with control") << 0 << int(Qt::ControlModifier) << false;
    QTest::newRow("two points with control") << 1 << int(Qt::ControlModifier) << false;
    QTest::newRow("three points with control") << 2 << int(Qt::ControlModifier) << true;
    QTest::newRow("three points") << 2 << int(Qt::NoModifier) << false;
}

void TestCrossPlot::shortLassoClears()
{
    QFETCH(int, moves);
    QFETCH(int, modifiers);
    QFETCH(bool, kept);
    Points model(kLine);
    Plot plot;
    plot.setModel(&model);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    model.setSelected(2, true);
    QSignalSpy selection(&plot, &QChartDrawingArea::dataPointsSelection);
    const auto mods = Qt::KeyboardModifiers(modifiers);
    press(&plot, Qt::LeftButton, mods, QPoint(5, 5));
    for (int i = 1; i <= moves; ++i)
        move(&plot, QPoint(5 + 10 * i, 5 + 3 * i * i));
    release(&plot, Qt::LeftButton, mods, QPoint(5 + 10 * moves, 5 + 3 * moves * moves));
    QCOMPARE(model.isSelected(2), kept);
    QCOMPARE(selection.count(), 1);
    QVERIFY(plot.selectionPolygon().isEmpty());
}

void TestCrossPlot::pointAtTheOriginIsDrawnAndLassoed()
{
    // A reading of (0, 0) is a point like any other: drawn, and taken by a lasso around it.
    Points model({{-50.0, -25.0}, {0.0, 0.0}, {50.0, 25.0}});
    Plot plot;
    plot.setModel(&model);
    plot.setBoundaries(QPointF(-100, -50), QPointF(100, 50));
    QCOMPARE(plot.transformInPixelPoint(QPointF(0, 0)), QPointF(100, 50));
    QStringList points;
    for (const QString& c : plot.record())
        if (layerOf(c) == QLatin1String("points"))
            points << c.section(QLatin1String(" | "), 0, 0);
    QCOMPARE(points.size(), 3);
    // A cross of size 2 about pixel (100, 50).
    QVERIFY2(points.filter(QStringLiteral("98,50-102,50 100,48-100,52")).size() == 1, qPrintable(points.join(QLatin1Char(10))));
    press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(90, 40));
    for (const QPoint& at : {QPoint(110, 40), QPoint(110, 60), QPoint(90, 60)})
        move(&plot, at);
    release(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(90, 55));
    QVERIFY(!model.isSelected(0));
    QVERIFY(model.isSelected(1));
    QVERIFY(!model.isSelected(2));
}

void TestCrossPlot::pickingLimits()
{
    Points model(kLine);
    Plot plot;
    plot.setModel(&model);
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    plot.setDataCreationType(QCrossPlot::CreateStructuralTops);
    plot.setLimitYPickingToInPlots(QPointF(20, 10));
    QCOMPARE(plot.limitYPicking(), QPointF(QCrossPlot::kLowestFloat, QCrossPlot::kHighestFloat));
    plot.setLimitYPickingToInPlots(QPointF(10, 40));
    QSignalSpy insert(&plot, &QCrossPlot::sendInsertScatUpdate);
    QSignalSpy pick(&plot, &QCrossPlot::sendScatPickPos);
    // Depth 5 (pixel 10) is above the limit and depth 45 (pixel 90) below it.
    for (const int y : {10, 90}) {
        press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(50, y));
        release(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(50, y));
    }
    QCOMPARE(insert.count() + pick.count(), 0);
    QVERIFY(!plot.structuralTopsHeld());
    // Inside the limits an empty spot asks for a new top there.
    press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(50, 40));
    release(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(50, 40));
    QCOMPARE(pick.count(), 0);
    QCOMPARE(insert.count(), 1);
    QCOMPARE(insert.first().first().toPointF(), QPointF(25, 20));
}

void TestCrossPlot::topsFollowTheMouse()
{
    Points model(kLine);
    Plot plot;
    plot.setModel(&model);
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    plot.setDataCreationType(QCrossPlot::CreateStructuralTops);
    DepthLineField* tops = model.structuralTops();
    qRegisterMetaType<std::vector<int>>();
    tops->insertHorizontalLine(0.0, 20.0, QStringLiteral("A"), Qt::red, DepthLineField::Top, 1e-6, QPointF(-1, -1), -1);
    tops->insertHorizontalLine(0.0, 30.0, QStringLiteral("B"), Qt::red, DepthLineField::Top, 1e-6, QPointF(-1, -1), -1);
    QSignalSpy insert(&plot, &QCrossPlot::sendInsertScatUpdate);
    QSignalSpy pick(&plot, &QCrossPlot::sendScatPickPos);
    QSignalSpy moved(&plot, &QCrossPlot::sendMoveSelectedUpdate);
    QSignalSpy stopped(&plot, &QCrossPlot::sendMoveSelectedUpdateStop);
    // Depth 30 is pixel 60; one pixel off is within the three-pixel tolerance.
    press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(70, 61));
    QCOMPARE(pick.count(), 1);
    QCOMPARE(pick.first().first().value<std::vector<int>>(), std::vector<int>{1});
    QVERIFY(plot.structuralTopsHeld());
    send(&plot, QEvent::MouseMove, Qt::LeftButton, Qt::NoModifier, QPoint(70, 71));
    QCOMPARE(moved.count(), 1);
    QCOMPARE(moved.first().first().toPointF(), QPointF(0, 5));
    release(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(70, 71));
    QCOMPARE(stopped.count(), 1);
    QVERIFY(!plot.structuralTopsHeld());
    // With a line selected, a click on an empty spot reports the (empty) pick, not an insert.
    press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(70, 90));
    QCOMPARE(insert.count(), 0);
    QCOMPARE(pick.count(), 2);
    QVERIFY(pick.last().first().value<std::vector<int>>().empty());
}

void TestCrossPlot::intervalBoundaries()
{
    Points model(kLine);
    Plot plot;
    plot.setModel(&model);
    plot.setOriginPosition(QCrossPlot::OriginTopLeft);
    plot.setBoundaries(QPointF(0, 0), QPointF(100, 50));
    plot.setDataCreationType(QCrossPlot::CreateIntervalBoundary);
    auto depths = [&] {
        return model.intervalFilter() ? model.intervalFilter()->lineDepths() : std::vector<double>();
    };
    // A click puts a boundary down; a second one elsewhere adds another.
    press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(30, 20));
    QVERIFY(!plot.intervalBoundaryHeld());
    release(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(30, 20));
    press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(30, 80));
    release(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(30, 80));
    QCOMPARE(depths(), (std::vector<double>{10.0, 40.0}));
    // A press on a boundary takes it; it goes down where the button comes up.
    press(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(30, 21));
    QVERIFY(plot.intervalBoundaryHeld());
    QCOMPARE(depths(), std::vector<double>{40.0});
    send(&plot, QEvent::MouseMove, Qt::LeftButton, Qt::NoModifier, QPoint(30, 50));
    release(&plot, Qt::LeftButton, Qt::NoModifier, QPoint(30, 50));
    QVERIFY(!plot.intervalBoundaryHeld());
    QCOMPARE(depths(), (std::vector<double>{25.0, 40.0}));
    // The boundaries show as red lines across the plot, the metafile leaves them out.
    plot.setIntervalBoundaries(true);
    PaintRecorder device(QSize(201, 101));
    {
        QPainter painter(&device);
        plot.drawIntervalBoundariesOn(&painter);
    }
    QCOMPARE(device.calls(), (QStringList{"lines 0,50-200,50 | pen #ffff0000 2 | brush none",
                                          "lines 0,80-200,80 | pen #ffff0000 2 | brush none"}));
    QVERIFY(plot.record().filter(QStringLiteral("0,50-200,50")).isEmpty());
}

void TestCrossPlot::stateRules()
{
    Plot plot;
    plot.setModifyOrientation(true);
    plot.setDataCreationType(QCrossPlot::SelectForOrientation);
    QVERIFY(!plot.modifyOrientation());
    // Leaving forgets the mouse: no hairs are drawn until it comes back.
    move(&plot, QPoint(20, 20));
    QCOMPARE(plot.mousePickingPos(), QPointF(20, 20));
    QEvent leave(QEvent::Leave);
    QSignalSpy left(&plot, &QCrossPlot::crossPlotLeaveEvent);
    QApplication::sendEvent(&plot, &leave);
    QCOMPARE(plot.mousePickingPos().x(), 99999.0);
    QCOMPARE(left.count(), 1);
    // Grid lists: stored when they differ.
    plot.updateChart();
    plot.verticalGridLinesChanged({10, 20});
    QCOMPARE(plot.verticalGridLines(), (QList<int>{10, 20}));
    // The context actions come once, in their texts, and only in a picking mode with a selection.
    plot.setScatContextMenu();
    QAction* rename = plot.renameAction();
    plot.setScatContextMenu();
    QCOMPARE(plot.renameAction(), rename);
    QCOMPARE(rename->text(), QStringLiteral("Rename..."));
    QVERIFY(plot.modifyOrientationAction()->isCheckable());
    QSignalSpy deleted(&plot, &QCrossPlot::sendDeleteSelectedUpdate);
    plot.deleteAction()->trigger();
    QCOMPARE(deleted.count(), 1);
    QSignalSpy copy(&plot, &QCrossPlot::signalCopyWEMFToClipboard);
    plot.copyWEMFToClipboard();
    QCOMPARE(copy.count(), 1);
}

void TestCrossPlot::metafileAxesOnlyFromAPanel_data()
{
    QTest::addColumn<int>("owner");
    QTest::addColumn<int>("axes");
    QTest::newRow("panel") << 0 << 1;
    QTest::newRow("axis widget of a depth plot") << 1 << 0;
    QTest::newRow("none") << 2 << 0;
}

void TestCrossPlot::metafileAxesOnlyFromAPanel()
{
    QFETCH(int, owner);
    QFETCH(int, axes);
    AxesPanel panel;
    QWidget axisWidget;
    QWidget* owners[] = {&panel, &axisWidget, nullptr};
    QCrossPlot plot(nullptr, owners[owner]);
    plot.resize(201, 101);
    g_warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepWarnings);
    {
        PaintRecorder device(QSize(201, 101));
        QPainter painter(&device);
        plot.drawChart(painter);
    }
    qInstallMessageHandler(previous);
    QCOMPARE(panel.drawn.size(), axes);
    if (axes)
        QCOMPARE(panel.drawn.first(), plot.pixmapRect());
    QCOMPARE(g_warnings, QStringList());
}

QTEST_MAIN(TestCrossPlot)
#include "tst_crossplot.moc"

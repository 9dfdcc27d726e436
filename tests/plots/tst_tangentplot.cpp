// The tangent plot: the pixel of a line or plane read back, the rim at exactly the cut-off, the
// block placement the walkers use, angles past the cut-off clipped off the chart, the fold axis
// as a red line through its point (worked out here from tan and the bearing), the net's circles
// and its blanked centre, picks anywhere, and the lasso.
#include "PaintRecorder.h"

#include <MatrixData.h>
#include <QRelationshipItemModel.h>
#include <QTangentPlotWidget.h>

#include <QMouseEvent>
#include <QPainter>
#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

using namespace rkBase;

namespace {

constexpr double kDeg = 3.14159265358979323846 / 180.0;
const double kNaN = std::numeric_limits<double>::quiet_NaN();

class Tangent : public QTangentPlotWidget
{
public:
    explicit Tangent(QSize size = QSize(400, 400)) : QTangentPlotWidget(nullptr, QStringLiteral("Tangent"))
    {
        resize(size);
        redraw();
    }
    QStringList record(const std::function<void(QPainter*)>& draw)
    {
        PaintRecorder device(size());
        QPainter painter(&device);
        draw(&painter);
        painter.end();
        return device.calls();
    }
    QPointF offset() const { return QPointF(xOffsetPixels(), yOffsetPixels()); }
    // The centre as the widget shows it.
    QPointF widgetCentre() const { return QPointF(centre()) - offset(); }
    using QChartDrawingArea::transformInPixelPoints;
    using QStereoPlotWidget::mouseMoveEvent;
    using QStereoPlotWidget::mousePressEvent;
    using QStereoPlotWidget::mouseReleaseEvent;
};

// A model of orientations (dip or plunge, azimuth).
class Orientations : public QRelationshipItemModel
{
public:
    explicit Orientations(const QVector<QPointF>& rows)
    {
        dip = std::make_unique<MatrixData>(QStringLiteral("dip"), rows.size(), 1, QVariant::Double, true);
        azimuth = std::make_unique<MatrixData>(QStringLiteral("azimuth"), rows.size(), 1, QVariant::Double, true);
        for (int r = 0; r < rows.size(); ++r) {
            dip->setValue(r, 0, rows[r].x());
            azimuth->setValue(r, 0, rows[r].y());
        }
        takeNewDataSet(dip.get(), azimuth.get(), ShowAll);
        setPointStyle(Circle);
        setPointPixelSize(4);
    }
    std::unique_ptr<MatrixData> dip, azimuth;
};

double angleDistance(double a, double b)
{
    const double d = std::fmod(std::abs(a - b), 360.0);
    return std::min(d, 360.0 - d);
}

// A unit step along bearing b on the raster (north up, east right).
QPointF along(double bearing) { return QPointF(std::sin(bearing * kDeg), -std::cos(bearing * kDeg)); }

// The raster pixel of a line (plunge, trend): tan(plunge) / tan(cut-off) x R from the centre,
// opposite the trend.
QPointF expectedLinePixel(const Tangent& t, double plunge, double trend)
{
    const double r = std::tan(plunge * kDeg) / std::tan(t.maxPlotAngle() * kDeg) * t.radius();
    return QPointF(t.centre()) + r * along(trend + 180.0);
}

bool isRed(const QColor& c) { return c.red() > 200 && c.green() < 110 && c.blue() < 110; }

std::vector<QPoint> redPixels(const QImage& image)
{
    std::vector<QPoint> out;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (isRed(image.pixelColor(x, y)))
                out.emplace_back(x, y);
    return out;
}

// Presses at the first vertex, drags through the others with the left button held, releases.
void lasso(Tangent& t, const QVector<QPointF>& vertices)
{
    QMouseEvent press(QEvent::MouseButtonPress, vertices.first(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    t.mousePressEvent(&press);
    for (int i = 1; i < vertices.size(); ++i) {
        QMouseEvent move(QEvent::MouseMove, vertices[i], Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        t.mouseMoveEvent(&move);
    }
    QMouseEvent release(QEvent::MouseButtonRelease, vertices.last(), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    t.mouseReleaseEvent(&release);
}

} // namespace

class TestTangentPlot : public QObject
{
    Q_OBJECT
private slots:
    void rimReadsTheCutOff_data();
    void rimReadsTheCutOff();
    void dataPointReadsThePlacementBack_data();
    void dataPointReadsThePlacementBack();
    void blockPlacementIsTheSinglePlacement_data();
    void blockPlacementIsTheSinglePlacement();
    void anglesPastTheCutOffAreClippedOff_data();
    void anglesPastTheCutOffAreClippedOff();
    void foldAxisIsARedLineAcrossItsAzimuth_data();
    void foldAxisIsARedLineAcrossItsAzimuth();
    void netCirclesStopBelowTheCutOff_data();
    void netCirclesStopBelowTheCutOff();
    void netBlanksTheCrowdedCentre_data();
    void netBlanksTheCrowdedCentre();
    void picksAnywhere_data();
    void picksAnywhere();
    void lassoSelectsThePointsInside_data();
    void lassoSelectsThePointsInside();
};

void TestTangentPlot::rimReadsTheCutOff_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<double>("cutOff");
    QTest::addColumn<double>("bearing");
    QTest::addColumn<double>("beyond"); // pixels outside the rim
    for (const double zoom : {1.0, 2.5})
        for (const double bearing : {0.0, 37.0, 90.0, 180.0, 251.5, 359.0})
            QTest::addRow("x%.1f %g", zoom, bearing) << zoom << 65.0 << bearing << 0.0;
    QTest::newRow("4e-5 outside") << 1.0 << 65.0 << 123.0 << 4e-5;
    QTest::newRow("4e-5 inside") << 1.0 << 65.0 << 300.0 << -4e-5;
    QTest::newRow("cut-off 50") << 1.0 << 50.0 << 45.0 << 0.0;
    QTest::newRow("cut-off 80 zoomed") << 3.0 << 80.0 << 222.0 << 0.0;
}

void TestTangentPlot::rimReadsTheCutOff()
{
    QFETCH(double, zoom);
    QFETCH(double, cutOff);
    QFETCH(double, bearing);
    QFETCH(double, beyond);
    Tangent t;
    t.setMaxPlotAngle(cutOff);
    t.zoom(zoom);
    t.redraw();
    const QPointF pixel = t.widgetCentre() + (t.radius() + beyond) * along(bearing);
    const QPointF data = t.transformInDataPoint(pixel);
    QVERIFY2(data.x() == cutOff, qPrintable(QString::number(data.x(), 'g', 17)));
    QVERIFY(angleDistance(data.y(), bearing) < 1e-9);
    // A pixel clearly inside the rim reads less, one outside more.
    QVERIFY(t.transformInDataPoint(t.widgetCentre() + (t.radius() - 0.01) * along(bearing)).x() < cutOff);
    QVERIFY(t.transformInDataPoint(t.widgetCentre() + (t.radius() + 0.01) * along(bearing)).x() > cutOff);
}

void TestTangentPlot::dataPointReadsThePlacementBack_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("orientation");
    // What the pixel reads: (tangent angle, bearing on the chart).
    QTest::addColumn<QPointF>("reading");
    const double azimuths[] = {0.0, 45.0, 135.0, 180.0, 270.0, 359.0};
    for (const double zoom : {1.0, 2.5}) {
        // A line reads as its plunge, at the bearing opposite its trend.
        for (const double plunge : {1.0, 10.0, 30.0, 45.0, 64.5, 65.0, 75.0})
            for (const double a : azimuths)
                QTest::addRow("line x%.1f %g/%g", zoom, plunge, a)
                    << 1 << zoom << QPointF(plunge, a) << QPointF(plunge, std::fmod(a + 180.0, 360.0));
        // A plane reads as 90 - dip, at its dip azimuth.
        for (const double dip : {89.0, 80.0, 60.0, 45.0, 25.5, 25.0, 15.0})
            for (const double a : azimuths)
                QTest::addRow("plane x%.1f %g/%g", zoom, dip, a) << 0 << zoom << QPointF(dip, a) << QPointF(90.0 - dip, a);
        // Past 90 and below 0 are the same lines the other way round.
        QTest::addRow("line x%.1f 100/0", zoom) << 1 << zoom << QPointF(100, 0) << QPointF(80, 0);
        QTest::addRow("line x%.1f -10/90", zoom) << 1 << zoom << QPointF(-10, 90) << QPointF(10, 90);
    }
}

void TestTangentPlot::dataPointReadsThePlacementBack()
{
    QFETCH(int, kind);
    QFETCH(double, zoom);
    QFETCH(QPointF, orientation);
    QFETCH(QPointF, reading);
    Tangent t;
    t.zoom(zoom);
    t.redraw();
    QCOMPARE(t.xOffsetPixels() != 0, zoom != 1.0);
    t.setPointKind(kind);
    // transformInPixelPoint answers in raster pixels, transformInDataPoint reads widget pixels.
    const QPointF got = t.transformInDataPoint(t.transformInPixelPoint(orientation) - t.offset());
    QVERIFY2(std::abs(got.x() - reading.x()) < 1e-9, qPrintable(QString::number(got.x(), 'g', 17)));
    QVERIFY2(angleDistance(got.y(), reading.y()) < 1e-6, qPrintable(QString::number(got.y(), 'g', 17)));
    QVERIFY(got.y() >= 0.0 && got.y() <= 360.0);
}

void TestTangentPlot::blockPlacementIsTheSinglePlacement_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("planes") << 0;
    QTest::newRow("lines") << 1;
    QTest::newRow("no kind") << 3;
}

void TestTangentPlot::blockPlacementIsTheSinglePlacement()
{
    // The walkers place points a block at a time: the same pixels, bit for bit, as one at a time,
    // and not the stereonet's pole placement this chart derives from.
    QFETCH(int, kind);
    Tangent t;
    t.setPointKind(kind);
    std::mt19937 random(11);
    std::uniform_real_distribution<double> dip(-5.0, 95.0), azimuth(-10.0, 370.0);
    std::vector<QPointF> data;
    for (int i = 0; i < 700; ++i) // more than one chunk, and not a whole number of them
        data.emplace_back(dip(random), azimuth(random));
    for (const QPointF& odd : {QPointF(90, 10), QPointF(0, 10), QPointF(kNaN, 10), QPointF(10, kNaN), QPointF(1e300, 5),
                               QPointF(120, 400)})
        data.push_back(odd);
    std::vector<QPointF> pixels(data.size());
    t.transformInPixelPoints(data.data(), pixels.data(), int(data.size()));
    for (std::size_t i = 0; i < data.size(); ++i) {
        const QPointF one = t.transformInPixelPoint(data[i]);
        QVERIFY2(std::memcmp(&one, &pixels[i], sizeof one) == 0,
                 qPrintable(QStringLiteral("%1/%2").arg(data[i].x()).arg(data[i].y())));
    }
    t.transformInPixelPoints(data.data(), pixels.data(), 0);
    if (kind != 0 && kind != 1)
        QCOMPARE(pixels.front(), QPointF(0, 0));
    // Lines at and next to the vertical, where tan runs away, are held far off the chart.
    t.setPointKind(1);
    for (const double plunge : {90.0, 89.9999999, 90.0000001}) {
        const QPointF p = t.transformInPixelPoint(QPointF(plunge, 30.0)) - QPointF(t.centre());
        const double d = std::hypot(p.x(), p.y());
        QVERIFY2(d > 1e6 && d <= QTangentPlotWidget::kFarOff + 1.0, qPrintable(QString::number(d)));
    }
}

void TestTangentPlot::anglesPastTheCutOffAreClippedOff_data()
{
    QTest::addColumn<int>("kind");
    // Inside the rim, then past it (at a bearing where the raster still has room), then rows
    // where tan has no use or no value.
    QTest::addColumn<QPointF>("inside");
    QTest::addColumn<QPointF>("beyond");
    QTest::newRow("lines") << 1 << QPointF(40, 225) << QPointF(70, 225);
    QTest::newRow("planes") << 0 << QPointF(50, 45) << QPointF(20, 45);
}

void TestTangentPlot::anglesPastTheCutOffAreClippedOff()
{
    QFETCH(int, kind);
    QFETCH(QPointF, inside);
    QFETCH(QPointF, beyond);
    Orientations model({inside, beyond, {89.99, 10}, {90, 20}, {0, 30}, {kNaN, 40}, {30, kNaN}, {150, 300}});
    Tangent bare;
    Tangent t;
    for (Tangent* chart : {&bare, &t}) {
        chart->setShowPoles(kind == 0);
        chart->setShowDipDirections(kind == 1);
        chart->setShow10DegreeNet(false);
        chart->setDipDirectionColor(Qt::red);
        chart->setPoleColor(Qt::red);
        chart->setShowPointCount(false);
    }
    t.setModel(&model);
    t.updateChart();
    bare.updateChart();
    t.setPointKind(kind);
    const QPointF in = t.transformInPixelPoint(inside);
    const QPointF out = t.transformInPixelPoint(beyond);
    const QPointF c(t.centre());
    const double R = t.radius();
    QVERIFY(std::hypot(in.x() - c.x(), in.y() - c.y()) < R - 10);
    QVERIFY(std::hypot(out.x() - c.x(), out.y() - c.y()) > R + 10);
    QVERIFY(t.rasterRect().adjusted(10, 10, -10, -10).contains(out.toPoint()));
    QVERIFY(isRed(t.chartImage().pixelColor(in.toPoint())));
    // Nothing of the data shows beyond the rim: there the chart is the bare chart.
    const QImage& with = t.chartImage();
    const QImage& without = bare.chartImage();
    QCOMPARE(with.size(), without.size());
    int differ = 0;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x)
            if (std::hypot(x - c.x(), y - c.y()) > R + 1.5 && with.pixel(x, y) != without.pixel(x, y))
                ++differ;
    QCOMPARE(differ, 0);
    QVERIFY(!isRed(with.pixelColor(out.toPoint())));
    // The metafile path draws the same data without trouble.
    QVERIFY(!t.record([&](QPainter* p) { t.drawChart(*p); }).isEmpty());
}

void TestTangentPlot::foldAxisIsARedLineAcrossItsAzimuth_data()
{
    QTest::addColumn<QPointF>("axis");
    QTest::addColumn<bool>("withModel");
    QTest::addColumn<bool>("drawn");
    const QVector<QPointF> axes = {{0, 0}, {20, 45}, {40, 200}, {60, 300}, {64, 123.4}, {10, 333}};
    for (const bool withModel : {false, true})
        for (const QPointF& a : axes)
            QTest::addRow("%g/%g%s", a.x(), a.y(), withModel ? " with data" : "") << a << withModel << true;
    // An axis at the cut-off has no direction on the chart; one without numbers has no place.
    QTest::newRow("65/0") << QPointF(65, 0) << false << false;
    QTest::newRow("65/123.4 with data") << QPointF(65, 123.4) << true << false;
    QTest::newRow("no plunge") << QPointF(kNaN, 10) << false << false;
    QTest::newRow("no azimuth") << QPointF(30, kNaN) << true << false;
}

void TestTangentPlot::foldAxisIsARedLineAcrossItsAzimuth()
{
    QFETCH(QPointF, axis);
    QFETCH(bool, withModel);
    QFETCH(bool, drawn);
    // Without data the chart last placed nothing; with data it last placed poles or lines: the
    // axis is a line either way.
    Orientations model({{70, 10}, {80, 100}});
    Tangent t(QSize(600, 600));
    if (withModel) {
        t.setModel(&model);
        t.setPoleColor(Qt::black);
    }
    t.setShowFoldAxis(true);
    t.setFoldAxis(axis);
    t.updateChart();
    const std::vector<QPoint> red = redPixels(t.chartImage());
    if (!drawn) {
        QVERIFY(red.empty());
        QVERIFY(t.record([&](QPainter* p) { t.drawFoldAxis(p); }).isEmpty());
        return;
    }
    QVERIFY(!red.empty());
    // Through the axis point (the line's own place), at right angles to the azimuth, and R
    // either side of it, less where the raster ends.
    const QPointF a = expectedLinePixel(t, axis.x(), axis.y());
    const QPointF across = along(axis.y() + 90.0);
    double lowest = 1e27, highest = -1e27, nearest = 1e27;
    for (const QPoint& p : red) {
        const QPointF d = QPointF(p) + QPointF(0.5, 0.5) - a;
        const double off = std::abs(d.x() * across.y() - d.y() * across.x());
        QVERIFY2(off < 1.5, qPrintable(QStringLiteral("%1,%2").arg(p.x()).arg(p.y())));
        const double s = d.x() * across.x() + d.y() * across.y();
        lowest = std::min(lowest, s);
        highest = std::max(highest, s);
        nearest = std::min(nearest, std::hypot(d.x(), d.y()));
    }
    QVERIFY(nearest < 1.5);
    QVERIFY2(highest - lowest > 1.5 * t.radius(), qPrintable(QString::number(highest - lowest)));
}

void TestTangentPlot::netCirclesStopBelowTheCutOff_data()
{
    QTest::addColumn<double>("cutOff");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("circles");
    QTest::newRow("10") << 65.0 << 10 << 6;
    QTest::newRow("2") << 65.0 << 2 << 32;
    QTest::newRow("5") << 65.0 << 5 << 12;
    QTest::newRow("a step on the cut-off") << 60.0 << 10 << 5;
    QTest::newRow("cut-off 80") << 80.0 << 10 << 7;
    QTest::newRow("no step") << 65.0 << 0 << 0;
    QTest::newRow("negative step") << 65.0 << -10 << 0;
    // Past 90 tan has no circle to give: the net stops there.
    QTest::newRow("cut-off 120") << 120.0 << 10 << 0;
}

void TestTangentPlot::netCirclesStopBelowTheCutOff()
{
    QFETCH(double, cutOff);
    QFETCH(int, step);
    QFETCH(int, circles);
    Tangent t;
    t.setMaxPlotAngle(cutOff);
    const QStringList calls = t.record([&](QPainter* p) { t.drawTangentPlotNet(p, step); });
    QCOMPARE(calls.size(), circles);
    const QPoint c = t.centre();
    for (int i = 0; i < circles; ++i) {
        const double a = (i + 1) * step;
        const int r = int(std::tan(a * kDeg) / std::tan(cutOff * kDeg) * t.radius());
        QVERIFY2(calls[i].startsWith(QStringLiteral("ellipse %1,%2 %3x%3").arg(c.x() - r).arg(c.y() - r).arg(2 * r)),
                 qPrintable(calls[i]));
    }
}

void TestTangentPlot::netBlanksTheCrowdedCentre_data()
{
    QTest::addColumn<bool>("two");
    QTest::addColumn<bool>("ten");
    QTest::newRow("2 degree net") << true << false;
    QTest::newRow("10 degree net") << false << true;
    QTest::newRow("both") << true << true;
}

void TestTangentPlot::netBlanksTheCrowdedCentre()
{
    QFETCH(bool, two);
    QFETCH(bool, ten);
    Tangent t(QSize(1600, 1600));
    t.setShow2DegreeNet(two);
    t.setShow10DegreeNet(ten);
    t.setAnnotationLabelAsAngle(false);
    t.updateChart();
    const QImage& image = t.chartImage();
    const QRgb white = QColor(Qt::white).rgb();
    // Whether anything is drawn at the point at that bearing and distance from the centre, or
    // (near) within a pixel of it.
    auto inked = [&](double bearing, double radius, bool near) {
        const QPointF p = QPointF(t.centre()) + radius * along(bearing);
        const int spread = near ? 1 : 0;
        for (int dx = -spread; dx <= spread; ++dx)
            for (int dy = -spread; dy <= spread; ++dy)
                if (image.pixel(int(std::floor(p.x())) + dx, int(std::floor(p.y())) + dy) != white)
                    return true;
        return false;
    };
    auto blank = [&](double bearing, double radius) { return !inked(bearing, radius, false); };
    const double r5 = t.tangentRadius(5), r10 = t.tangentRadius(10), r20 = t.tangentRadius(20);
    // Spokes every 30 degrees reach the centre; the others stop at the blanked rings.
    QVERIFY(inked(30.0, r5 * 0.6, true));
    QVERIFY(blank(15.0, r5 * 0.6) && blank(40.0, r5 * 0.6));
    if (ten) {
        QVERIFY(inked(40.0, r10 * 2.0, true));
        QVERIFY(blank(40.0, (r5 + r10) / 2.0));
    }
    if (two) {
        // 2-degree spokes stop at the ring of 20, 10-degree ones at the ring of 10.
        QVERIFY(inked(16.0, r20 * 1.6, true));
        QVERIFY(blank(16.0, (r10 + r20) / 2.0 + 2.0));
        QVERIFY(inked(40.0, (r10 + r20) / 2.0, true));
        QVERIFY(blank(40.0, (r5 + r10) / 2.0));
    }
    // The blanked discs keep a rim in the net's pen.
    QVERIFY(inked(75.0, r5, true) && inked(75.0, r10, true));
    // No net, nothing blanked and no spokes.
    Tangent none(QSize(800, 800));
    none.setShow10DegreeNet(false);
    none.setShow2DegreeNet(false);
    QVERIFY(none.record([&](QPainter* p) { none.drawNet(p); }).isEmpty());
}

void TestTangentPlot::picksAnywhere_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("fromCentre"); // in units of R
    QTest::addColumn<double>("angle");       // what the pick reads, -1 for anything
    for (const double zoom : {1.0, 2.0}) {
        QTest::addRow("x%g centre", zoom) << zoom << QPointF(0, 0) << 0.0;
        QTest::addRow("x%g rim north", zoom) << zoom << QPointF(0, -1) << 65.0;
        QTest::addRow("x%g rim south-west", zoom) << zoom << QPointF(-std::sqrt(0.5), std::sqrt(0.5)) << 65.0;
        QTest::addRow("x%g outside east", zoom) << zoom << QPointF(1.7, 0.01) << 65.0;
        QTest::addRow("x%g inside", zoom) << zoom << QPointF(0.3, 0.2) << -1.0;
    }
}

void TestTangentPlot::picksAnywhere()
{
    QFETCH(double, zoom);
    QFETCH(QPointF, fromCentre);
    QFETCH(double, angle);
    Orientations model({{30, 40}, {60, 200}, {10, 300}});
    for (const bool selecting : {true, false}) {
        for (const int information : {0, 1}) {
            Tangent t;
            t.setModel(&model);
            t.setSelectionMode(selecting);
            t.setCursorInformationMode(information);
            t.setPickPlaneMode(information == 1);
            t.setShowFoldAxis(true);
            t.setFoldAxis(QPointF(30, 40));
            t.zoom(zoom);
            t.redraw();
            const QPointF at = t.widgetCentre() + fromCentre * t.radius();
            QMouseEvent press(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            t.mousePressEvent(&press);
            QMouseEvent move(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            t.mouseMoveEvent(&move);
            QMouseEvent release(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
            t.mouseReleaseEvent(&release);
            QVERIFY(!t.grab().isNull()); // the pick's overlay
            const QPointF read = t.transformInDataPoint(t.mousePickingPos());
            QVERIFY(std::isfinite(read.x()) && std::isfinite(read.y()));
            if (angle >= 0.0)
                QVERIFY2(read.x() == angle, qPrintable(QString::number(read.x(), 'g', 17)));
            else
                QVERIFY(read.x() > 0.0 && read.x() < 65.0);
            if (fromCentre == QPointF(0, 0))
                QCOMPARE(read.y(), 0.0);
        }
    }
    // Pixels that are not numbers read as the centre; so does a chart too small for a net.
    Tangent t;
    QCOMPARE(t.transformInDataPoint(QPointF(kNaN, 10)), QPointF(0, 0));
    QCOMPARE(t.transformInDataPoint(QPointF(10, std::numeric_limits<double>::infinity())), QPointF(0, 0));
    Tangent tiny(QSize(2, 2));
    QCOMPARE(tiny.transformInDataPoint(QPointF(1, 1)), QPointF(0, 0));
}

void TestTangentPlot::lassoSelectsThePointsInside_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QString>("shape");
    for (const int kind : {0, 1})
        for (const double zoom : {1.0, 2.0})
            for (const char* shape : {"east half", "inside 30"})
                QTest::addRow("%s x%g %s", kind ? "lines" : "planes", zoom, shape)
                    << kind << zoom << QString::fromLatin1(shape);
}

void TestTangentPlot::lassoSelectsThePointsInside()
{
    QFETCH(int, kind);
    QFETCH(double, zoom);
    QFETCH(QString, shape);
    // Lines by plunge, or planes by dip; both at the same tangent angles.
    QVector<QPointF> rows;
    for (const double angle : {20.0, 40.0, 55.0})
        for (int azimuth = 0; azimuth < 360; azimuth += 45)
            rows << QPointF(kind == 1 ? angle : 90.0 - angle, azimuth);
    Orientations model(rows);
    Tangent t;
    t.setModel(&model);
    t.setShowPoles(kind == 0);
    t.setShowDipDirections(kind == 1);
    t.zoom(zoom);
    t.redraw();
    boost::dynamic_bitset<> emitted;
    connect(&t, &QChartDrawingArea::dataPointsSelection, this,
            [&](const boost::dynamic_bitset<>& bits) { emitted = bits; });

    const QPointF c = t.widgetCentre();
    const double R = t.radius();
    QVector<QPointF> outline;
    if (shape == QLatin1String("east half")) {
        for (int b = 5; b <= 175; b += 5)
            outline << c + 0.95 * R * along(b);
    } else {
        for (int b = 0; b < 360; b += 5)
            outline << c + t.tangentRadius(30.0) * along(b);
    }
    lasso(t, outline);

    for (int row = 0; row < rows.size(); ++row) {
        const double angle = kind == 1 ? rows[row].x() : 90.0 - rows[row].x();
        // Lines show opposite their trend, planes at their dip azimuth.
        const double bearing = std::fmod(rows[row].y() + (kind == 1 ? 180.0 : 0.0), 360.0);
        const bool inside = shape == QLatin1String("east half") ? bearing > 0.0 && bearing < 180.0 : angle < 30.0;
        QVERIFY2(model.isSelected(row) == inside, qPrintable(QStringLiteral("row %1: %2/%3")
                                                                 .arg(row)
                                                                 .arg(rows[row].x())
                                                                 .arg(rows[row].y())));
        QCOMPARE(emitted.size() > std::size_t(row) && emitted.test(std::size_t(row)), inside);
    }
}

QTEST_MAIN(TestTangentPlot)
#include "tst_tangentplot.moc"

// The stereonet: both projections and their inverses, picks at the centre, on the rim and
// outside, bearings and the strike convention; the traces, small circles and frames as the
// painter is asked to draw them (PaintRecorder); the chart order with poles, dip directions,
// results and the selection pass; a chart without a model; the stress grid from the model's hook.
#include "PaintRecorder.h"

#include <MatrixDataArray.h>
#include <QRelationshipItemModel.h>
#include <QStereoPlotWidget.h>

#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
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

class Stereo : public QStereoPlotWidget
{
public:
    explicit Stereo(bool equalArea = true, QSize size = QSize(400, 400))
        : QStereoPlotWidget(nullptr, QStringLiteral("Stereo"))
    {
        setEqualAreaScaling(equalArea);
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
    using QStereoPlotWidget::drawCyclographicTraces;
    using QStereoPlotWidget::drawDataPoints;
    using QStereoPlotWidget::drawMeanOrientation;
    using QStereoPlotWidget::mousePressEvent;
    using QStereoPlotWidget::mouseReleaseEvent;
    using QStereoPlotWidget::netRadius;
    const QImage& overlay() const { return m_overlayPixmap; }
};

// Points of a recorded polyline or polygon.
QVector<QPointF> points(const QString& call)
{
    QVector<QPointF> out;
    const QString body = call.section(QLatin1Char('|'), 0, 0);
    for (const QString& pair : body.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList xy = pair.split(QLatin1Char(','));
        if (xy.size() == 2)
            out << QPointF(xy[0].toDouble(), xy[1].toDouble());
    }
    return out;
}

QStringList matching(const QStringList& calls, const QString& pattern)
{
    return calls.filter(QRegularExpression(pattern));
}

double angleDistance(double a, double b)
{
    const double d = std::fmod(std::abs(a - b), 360.0);
    return std::min(d, 360.0 - d);
}

// The line (plunge, azimuth) drawn at a raster pixel, through the inverse of the pole placement.
QPointF lineAt(const Stereo& net, QPointF rasterPixel)
{
    // The recorder's six digits can put a rim point a hair outside.
    const QPointF v = rasterPixel - QPointF(net.centre());
    const double length = std::hypot(v.x(), v.y());
    if (length > net.radius())
        rasterPixel = QPointF(net.centre()) + v / length * net.radius();
    double dip, azimuth;
    net.generateDipAndDipAzimuth(rasterPixel - QPointF(net.xOffsetPixels(), net.yOffsetPixels()), dip, azimuth);
    return QPointF(90.0 - dip, azimuth + 180.0);
}

// North, east, down unit vector of a line.
std::array<double, 3> lineVector(const QPointF& line)
{
    const double p = line.x() * kDeg, a = line.y() * kDeg;
    return {std::cos(a) * std::cos(p), std::sin(a) * std::cos(p), std::sin(p)};
}

// A model of orientations (dip, dip azimuth), with hand-set results.
class Orientations : public QRelationshipItemModel
{
public:
    explicit Orientations(const QVector<QPointF>& rows = {},
                          DisplayType type = HighlightSelected)
    {
        dip = std::make_unique<MatrixData>(QStringLiteral("dip"), rows.size(), 1, QVariant::Double, true);
        azimuth = std::make_unique<MatrixData>(QStringLiteral("azimuth"), rows.size(), 1, QVariant::Double, true);
        for (int r = 0; r < rows.size(); ++r) {
            dip->setValue(r, 0, rows[r].x());
            azimuth->setValue(r, 0, rows[r].y());
        }
        if (!rows.isEmpty())
            takeNewDataSet(dip.get(), azimuth.get(), type);
    }
    void setResults(const QPointF& resultant, const QPointF& principal, const QPointF& t, const QPointF& l)
    {
        m_meanResultantPole = resultant;
        m_meanPrincipalPlane = principal;
        m_TdirectionPlane = t;
        m_LdirectionPlane = l;
    }
    double getStressOverlay(double d, double, double& a, double& b, double& c) override
    {
        a = b = c = 0.0;
        return d;
    }
    std::unique_ptr<MatrixData> dip, azimuth;
};

} // namespace

class TestStereoPlot : public QObject
{
    Q_OBJECT
private slots:
    void radii_data();
    void radii();
    void roundTrips_data();
    void roundTrips();
    void placementOnTheNet_data();
    void placementOnTheNet();
    void picks_data();
    void picks();
    void bearings_data();
    void bearings();
    void strikeAndSense_data();
    void strikeAndSense();
    void pickOutsideIsPulledOntoTheRim_data();
    void pickOutsideIsPulledOntoTheRim();
    void flatAndVerticalTraces_data();
    void flatAndVerticalTraces();
    void inclinedTraceLiesInItsPlane_data();
    void inclinedTraceLiesInItsPlane();
    void equalAreaSmallCirclesKeepTheirAngle();
    void equalAngleSmallCirclesAreTurnedOntoThePoles();
    void netFrames_data();
    void netFrames();
    void pointKindDecidesThePlacement();
    void zoomedMarksSitOnTheirLines_data();
    void zoomedMarksSitOnTheirLines();
    void flatBedsAreTheCentrePole_data();
    void flatBedsAreTheCentrePole();
    void zoomTwentyKeepsOnlyTheVisibleWindow();
    void resultLabelsStayOnTheNet_data();
    void resultLabelsStayOnTheNet();
    void blockPlacementIsPoleInPixel_data();
    void blockPlacementIsPoleInPixel();
    void tracesWithTheSelectionPass_data();
    void tracesWithTheSelectionPass();
    void resultsComeFromTheirFields();
    void plotLimitKeepsTheClip();
    void chartWithoutModel();
    void stressFieldSamplesTheHook();
    void stressDragLeavesTheDipDirections_data();
    void stressDragLeavesTheDipDirections();
    void densityCountsWhereTheChartDraws_data();
    void densityCountsWhereTheChartDraws();
};

void TestStereoPlot::radii_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("area");
    QTest::addColumn<double>("poleAngle");
    QTest::addColumn<double>("poleArea");
    const double R = 160.0;
    QTest::newRow("0") << 0.0 << R << R << 0.0 << 0.0;
    QTest::newRow("90") << 90.0 << 0.0 << 0.0 << R << R;
    QTest::newRow("30") << 30.0 << std::tan(30 * kDeg) * R << std::sqrt(2.0) * std::sin(30 * kDeg) * R
                        << std::tan(15 * kDeg) * R << std::sqrt(2.0) * std::sin(15 * kDeg) * R;
    QTest::newRow("60") << 60.0 << std::tan(15 * kDeg) * R << std::sqrt(2.0) * std::sin(15 * kDeg) * R
                        << std::tan(30 * kDeg) * R << std::sqrt(2.0) * std::sin(30 * kDeg) * R;
}

void TestStereoPlot::radii()
{
    QFETCH(double, a);
    QFETCH(double, angle);
    QFETCH(double, area);
    QFETCH(double, poleAngle);
    QFETCH(double, poleArea);
    Stereo schmidt(true), wulff(false);
    QCOMPARE(schmidt.radius(), 160);
    QVERIFY(std::abs(schmidt.equalAngleRadius(a) - angle) < 1e-9);
    QVERIFY(std::abs(schmidt.equalAreaRadius(a) - area) < 1e-9);
    // One name, both nets: the pole distance follows the net.
    QVERIFY(std::abs(wulff.equalAngleCenterPoleDistance(a) - poleAngle) < 1e-9);
    QVERIFY(std::abs(schmidt.equalAngleCenterPoleDistance(a) - poleArea) < 1e-9);
}

void TestStereoPlot::roundTrips_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<double>("dip");
    QTest::addColumn<double>("azimuth");
    const QVector<QPointF> orientations = {{0.5, 0.0},  {10.0, 45.0},  {45.0, 90.0},   {60.0, 180.0}, {30.0, 270.0},
                                           {75.0, 359.0}, {89.9, 123.4}, {90.0, 200.0}, {1e-3, 17.0}};
    for (const bool equalArea : {true, false})
        for (const double zoom : {1.0, 2.5})
            for (const QPointF& o : orientations)
                QTest::addRow("%s x%.1f %g/%g", equalArea ? "area" : "angle", zoom, o.x(), o.y())
                    << equalArea << zoom << o.x() << o.y();
}

void TestStereoPlot::roundTrips()
{
    QFETCH(bool, equalArea);
    QFETCH(double, zoom);
    QFETCH(double, dip);
    QFETCH(double, azimuth);
    Stereo net(equalArea);
    net.zoom(zoom);
    net.redraw();
    QCOMPARE(net.xOffsetPixels() != 0, zoom != 1.0);
    const QPointF o(net.xOffsetPixels(), net.yOffsetPixels());
    // A pole back to its plane; the pixel handed back is a widget pixel.
    double d, a;
    QVERIFY(net.generateDipAndDipAzimuth(net.poleInPixel(QPointF(dip, azimuth)) - o, d, a));
    QVERIFY2(std::abs(d - dip) < 1e-6, qPrintable(QString::number(d)));
    if (dip > 1e-2)
        QVERIFY2(angleDistance(a, azimuth) < 1e-6, qPrintable(QString::number(a)));
    QVERIFY(a >= 0.0 && a <= 360.0);
    // A line's pixel reads as the pole of the plane normal to it.
    QVERIFY(net.generateDipAndDipAzimuth(net.dipDirectionInPixel(QPointF(dip, azimuth)), d, a));
    QVERIFY(std::abs(d - (90.0 - dip)) < 1e-6);
    if (dip < 90.0 - 1e-2)
        QVERIFY(angleDistance(a, azimuth + 180.0) < 1e-6);
    // The chart's placement is the pole's in the raster (kind 0) and the line's (kind 1).
    net.setPointKind(0);
    QCOMPARE(net.transformInPixelPoint(QPointF(dip, azimuth)), net.poleInPixel(QPointF(dip, azimuth)));
    net.setPointKind(1);
    QCOMPARE(net.transformInPixelPoint(QPointF(dip, azimuth)), net.dipDirectionInPixel(QPointF(dip, azimuth)) + o);
    net.setPointKind(2);
    QCOMPARE(net.transformInPixelPoint(QPointF(dip, azimuth)), QPointF(0, 0));
}

void TestStereoPlot::placementOnTheNet_data()
{
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<QPointF>("lineDirection");
    QTest::newRow("north") << 0.0 << QPointF(0, -1);
    QTest::newRow("east") << 90.0 << QPointF(1, 0);
    QTest::newRow("south") << 180.0 << QPointF(0, 1);
    QTest::newRow("west") << 270.0 << QPointF(-1, 0);
}

void TestStereoPlot::placementOnTheNet()
{
    QFETCH(double, azimuth);
    QFETCH(QPointF, lineDirection);
    for (const bool equalArea : {true, false}) {
        Stereo net(equalArea);
        const QPointF c(net.centre());
        // A dip direction lies towards its azimuth, the pole of the plane away from it.
        const QPointF line = net.dipDirectionInPixel(QPointF(30.0, azimuth)) - c;
        const QPointF pole = net.poleInPixel(QPointF(30.0, azimuth)) - c;
        const double r = net.netRadius(30.0);
        const double d = net.equalAngleCenterPoleDistance(30.0);
        QVERIFY(std::hypot(line.x() - r * lineDirection.x(), line.y() - r * lineDirection.y()) < 1e-9);
        QVERIFY(std::hypot(pole.x() + d * lineDirection.x(), pole.y() + d * lineDirection.y()) < 1e-9);
    }
}

void TestStereoPlot::picks_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<QPointF>("fromCentre");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<double>("dip");
    QTest::addColumn<double>("azimuth");
    const double nan = std::nan("");
    for (const bool area : {true, false}) {
        const char* n = area ? "area" : "angle";
        QTest::addRow("%s centre", n) << area << QPointF(0, 0) << true << 0.0 << 0.0;
        QTest::addRow("%s above", n) << area << QPointF(0, -80) << true << -1.0 << 180.0;
        QTest::addRow("%s below", n) << area << QPointF(0, 80) << true << -1.0 << 360.0;
        QTest::addRow("%s east", n) << area << QPointF(80, 0) << true << -1.0 << 270.0;
        QTest::addRow("%s west", n) << area << QPointF(-80, 0) << true << -1.0 << 90.0;
        QTest::addRow("%s on the rim", n) << area << QPointF(160, 0) << true << 90.0 << 270.0;
        QTest::addRow("%s 4e-5 outside", n) << area << QPointF(0, -160.00004) << true << 90.0 << 180.0;
        QTest::addRow("%s 1e-3 outside", n) << area << QPointF(0, -160.001) << false << 0.0 << 0.0;
        QTest::addRow("%s far outside", n) << area << QPointF(500, 500) << false << 0.0 << 0.0;
        QTest::addRow("%s NaN", n) << area << QPointF(nan, 3) << false << 0.0 << 0.0;
    }
}

void TestStereoPlot::picks()
{
    QFETCH(bool, equalArea);
    QFETCH(QPointF, fromCentre);
    QFETCH(bool, ok);
    QFETCH(double, dip);
    QFETCH(double, azimuth);
    Stereo net(equalArea);
    double d = -7.0, a = -7.0;
    QCOMPARE(net.generateDipAndDipAzimuth(QPointF(net.centre()) + fromCentre, d, a), ok);
    // -1: the dip of the pole 80 pixels out on this net.
    const double expected = dip >= 0.0 ? dip
                                       : (equalArea ? 2.0 * std::asin(0.5 / std::sqrt(2.0)) : 2.0 * std::atan(0.5)) / kDeg;
    QVERIFY2(std::abs(d - expected) < 1e-9, qPrintable(QString::number(d)));
    QVERIFY2(std::abs(a - azimuth) < 1e-9, qPrintable(QString::number(a)));
}

void TestStereoPlot::bearings_data()
{
    QTest::addColumn<QPointF>("fromCentre");
    QTest::addColumn<double>("bearing");
    QTest::newRow("centre") << QPointF(0, 0) << 0.0;
    QTest::newRow("north") << QPointF(0, -50) << 0.0;
    QTest::newRow("north-east") << QPointF(50, -50) << 45.0;
    QTest::newRow("south") << QPointF(0, 20) << 180.0;
    QTest::newRow("west") << QPointF(-10, 0) << 270.0;
    QTest::newRow("north-west, outside") << QPointF(-300, -300) << 315.0;
}

void TestStereoPlot::bearings()
{
    QFETCH(QPointF, fromCentre);
    QFETCH(double, bearing);
    Stereo net;
    QVERIFY(std::abs(net.transformInAzimuth(QPointF(net.centre()) + fromCentre) - bearing) < 1e-9);
}

void TestStereoPlot::strikeAndSense_data()
{
    QTest::addColumn<double>("dipAzimuth");
    QTest::addColumn<double>("strike");
    QTest::addColumn<QString>("sense");
    QTest::newRow("east") << 90.0 << 360.0 << "E";
    QTest::newRow("south") << 180.0 << 90.0 << "S";
    QTest::newRow("north") << 0.0 << 270.0 << "N";
    QTest::newRow("west") << 270.0 << 180.0 << "W";
    QTest::newRow("north-east") << 45.0 << 315.0 << "NE";
    QTest::newRow("south-west") << 225.0 << 135.0 << "SW";
    QTest::newRow("22.5 is north") << 22.5 << 292.5 << "N";
    QTest::newRow("67.5 is north-east") << 67.5 << 337.5 << "NE";
    QTest::newRow("337.5 is north") << 337.5 << 247.5 << "N";
    QTest::newRow("292.5 is west") << 292.5 << 202.5 << "W";
}

void TestStereoPlot::strikeAndSense()
{
    QFETCH(double, dipAzimuth);
    QFETCH(double, strike);
    QFETCH(QString, sense);
    double s = 0.0;
    QCOMPARE(QStereoPlotWidget::transformInStrikeDipConvention(dipAzimuth, s), sense);
    QCOMPARE(s, strike);
    QVERIFY(QStereoPlotWidget::dipDirection(std::nan("")).isEmpty());
}

void TestStereoPlot::pickOutsideIsPulledOntoTheRim_data()
{
    QTest::addColumn<QPointF>("fromCentre");
    QTest::addColumn<QPointF>("picked");
    QTest::newRow("inside") << QPointF(30, -40) << QPointF(30, -40);
    QTest::newRow("outside east") << QPointF(400, 0) << QPointF(160, 0);
    QTest::newRow("outside south-west") << QPointF(-300, 400) << QPointF(-96, 128);
}

void TestStereoPlot::pickOutsideIsPulledOntoTheRim()
{
    QFETCH(QPointF, fromCentre);
    QFETCH(QPointF, picked);
    for (const double zoom : {1.0, 2.0}) {
        Stereo net;
        net.zoom(zoom);
        net.redraw();
        const QPointF o(net.xOffsetPixels(), net.yOffsetPixels());
        const QPointF c = QPointF(net.centre()) - o;
        const QPointF expected = fromCentre == picked ? picked : picked * (net.radius() / 160.0);
        QMouseEvent press(QEvent::MouseButtonPress, c + fromCentre, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        net.mousePressEvent(&press);
        const QPointF got = net.mousePickingPos() - c;
        QVERIFY(std::hypot(got.x() - expected.x(), got.y() - expected.y()) < 1e-9);
        // Every pick has an orientation; the lasso starts in raster pixels.
        double dip, azimuth;
        QVERIFY(net.generateDipAndDipAzimuth(net.mousePickingPos(), dip, azimuth));
        QCOMPARE(net.pickedDip(), dip);
        QCOMPARE(net.selectionPolygon().size(), 1);
        QCOMPARE(net.selectionPolygon().first(), net.mousePickingPos() + o);
    }
}

void TestStereoPlot::flatAndVerticalTraces_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<double>("dip");
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<QString>("call");
    // R = 160 about (199, 199).
    for (const bool area : {true, false}) {
        const char* n = area ? "area" : "angle";
        QTest::addRow("%s dip 0", n) << area << 0.0 << 120.0 << "ellipse 40,40 318x318";
        QTest::addRow("%s dip 0.004", n) << area << 0.004 << 0.0 << "ellipse 40,40 318x318";
        QTest::addRow("%s dip -0.004", n) << area << -0.004 << 0.0 << "ellipse 40,40 318x318";
        QTest::addRow("%s dip 90 east", n) << area << 90.0 << 90.0 << "lines 199,39-199,359";
        QTest::addRow("%s dip 89.996 north", n) << area << 89.996 << 0.0 << "lines 39,199-359,199";
    }
}

void TestStereoPlot::flatAndVerticalTraces()
{
    QFETCH(bool, equalArea);
    QFETCH(double, dip);
    QFETCH(double, azimuth);
    QFETCH(QString, call);
    Stereo net(equalArea);
    const QStringList calls = net.record([&](QPainter* p) { net.drawCyclographicTrace(p, dip, azimuth, false); });
    QCOMPARE(calls.size(), 1);
    // Whole pixels within the recorder's six digits.
    QCOMPARE(calls.first().section(QLatin1Char('|'), 0, 0).trimmed(), call);
    if (call.startsWith(QLatin1String("ellipse")))
        QVERIFY(calls.first().endsWith(QLatin1String("brush none")));
    // NaN orientations draw nothing.
    QVERIFY(net.record([&](QPainter* p) { net.drawCyclographicTrace(p, std::nan(""), azimuth, true); }).isEmpty());
}

void TestStereoPlot::inclinedTraceLiesInItsPlane_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<double>("dip");
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<int>("count");
    for (const QPointF& o : {QPointF(30, 0), QPointF(60, 135), QPointF(10, 250), QPointF(85, 300)}) {
        QTest::addRow("area %g/%g", o.x(), o.y()) << true << o.x() << o.y() << 72;
        QTest::addRow("angle %g/%g", o.x(), o.y()) << false << o.x() << o.y() << 51;
    }
}

void TestStereoPlot::inclinedTraceLiesInItsPlane()
{
    QFETCH(bool, equalArea);
    QFETCH(double, dip);
    QFETCH(double, azimuth);
    QFETCH(int, count);
    Stereo net(equalArea);
    const QStringList calls = net.record([&](QPainter* p) { net.drawCyclographicTrace(p, dip, azimuth, false); });
    QCOMPARE(calls.size(), 1);
    QVERIFY(calls.first().startsWith(QLatin1String("polyline ")));
    const QVector<QPointF> trace = points(calls.first().mid(9));
    QCOMPARE(trace.size(), count);
    // Every point is a line of the plane: normal to its pole.
    const auto pole = lineVector(QPointF(90.0 - dip, azimuth + 180.0));
    for (const QPointF& pixel : trace) {
        const auto l = lineVector(lineAt(net, pixel));
        QVERIFY2(std::abs(l[0] * pole[0] + l[1] * pole[1] + l[2] * pole[2]) < 2e-3, qPrintable(QString::number(pixel.x())));
    }
    // It runs from strike end to strike end, through the dip line.
    const QPointF c(net.centre());
    QVERIFY(std::abs(std::hypot(trace.first().x() - c.x(), trace.first().y() - c.y()) - 160.0) < 1e-3);
    QVERIFY(std::abs(std::hypot(trace.last().x() - c.x(), trace.last().y() - c.y()) - 160.0) < 1e-3);
    const QPointF mid = net.dipDirectionInPixel(QPointF(dip, azimuth));
    double nearest = 1e9;
    for (const QPointF& pixel : trace)
        nearest = std::min(nearest, std::hypot(pixel.x() - mid.x(), pixel.y() - mid.y()));
    QVERIFY(nearest < 3.0);
}

void TestStereoPlot::equalAreaSmallCirclesKeepTheirAngle()
{
    Stereo net(true);
    const QStringList calls = net.record([&](QPainter* p) { net.drawOneSmallCircle(p, 30.0, false); });
    QCOMPARE(calls.size(), 2);
    // First about the north end of the axis, then about the south end.
    for (int k = 0; k < 2; ++k) {
        const QVector<QPointF> circle = points(calls[k].mid(9));
        QCOMPARE(circle.size(), 20);
        for (const QPointF& pixel : circle) {
            const auto l = lineVector(lineAt(net, pixel));
            QVERIFY2(std::abs((k == 0 ? l[0] : -l[0]) - std::cos(30.0 * kDeg)) < 2e-3,
                     qPrintable(QString::number(l[0])));
        }
    }
    // Filled: each half twice, the second time mirrored over the chord between its rim ends.
    const QStringList filled = net.record([&](QPainter* p) { net.drawOneSmallCircle(p, 30.0, true); });
    QCOMPARE(matching(filled, "^polygon odd").size(), 4);
}

void TestStereoPlot::equalAngleSmallCirclesAreTurnedOntoThePoles()
{
    Stereo net(false);
    QImage image(400, 400, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::black, 2.0));
    net.drawOneSmallCircle(&painter, 30.0, false);
    painter.end();
    const QPoint c = net.centre();
    const int r = int(std::lround(net.equalAngleRadius(30.0)));
    auto darkNear = [&](QPoint p) {
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                if (qGray(image.pixel(p + QPoint(dx, dy))) < 128)
                    return true;
        return false;
    };
    // The plunge-30 lines towards north and south and the rim points 30 degrees off the axis.
    QVERIFY(darkNear(c + QPoint(0, -r)));
    QVERIFY(darkNear(c + QPoint(0, r)));
    const QPointF rim(160.0 * std::sin(30.0 * kDeg), 160.0 * std::cos(30.0 * kDeg));
    QVERIFY(darkNear(c + QPointF(rim.x(), -rim.y()).toPoint()));
    QVERIFY(darkNear(c + QPointF(-rim.x(), rim.y()).toPoint()));
    // Not about the east-west axis, and the painter is left as it was.
    QVERIFY(!darkNear(c + QPoint(r, 0)));
    QVERIFY(!darkNear(c + QPoint(-r, 0)));
}

void TestStereoPlot::netFrames_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<bool>("ten");
    QTest::addColumn<bool>("two");
    QTest::addColumn<int>("greatCircles");
    QTest::addColumn<int>("smallCircles");
    QTest::addColumn<int>("blanks");
    // Equal area: traces of 72 points, small circles of 20 in two halves, blanks as polygons
    // (two halves, each mirrored). Equal angle: every arc is 51 points, a blank a whole circle.
    QTest::newRow("area 10") << true << true << false << 16 << 18 << 4;
    QTest::newRow("area 2") << true << false << true << 88 << 88 << 4;
    QTest::newRow("area both") << true << true << true << 104 << 106 << 8;
    QTest::newRow("area none") << true << false << false << 0 << 0 << 0;
    QTest::newRow("angle 10") << false << true << false << 34 << 0 << 2;
    QTest::newRow("angle 2") << false << false << true << 176 << 0 << 2;
}

void TestStereoPlot::netFrames()
{
    QFETCH(bool, equalArea);
    QFETCH(bool, ten);
    QFETCH(bool, two);
    QFETCH(int, greatCircles);
    QFETCH(int, smallCircles);
    QFETCH(int, blanks);
    Stereo net(equalArea);
    net.setShow10DegreeNet(ten);
    net.setShow2DegreeNet(two);
    const QStringList calls = net.record([&](QPainter* p) { net.drawNet(p); });
    auto polylines = [&](int n) {
        int k = 0;
        for (const QString& c : matching(calls, "^polyline "))
            k += points(c.mid(9)).size() == n;
        return k;
    };
    if (equalArea) {
        QCOMPARE(polylines(72), greatCircles);
        QCOMPARE(polylines(20), smallCircles);
        QCOMPARE(matching(calls, "^polygon odd").size(), blanks);
    } else {
        QCOMPARE(polylines(51), greatCircles);
        QCOMPARE(matching(calls, "^path ").size(), blanks);
    }
    // The diameters with a net, and always the green centre cross last.
    const QStringList diameters = matching(calls, "^lines 39,199-359,199");
    QCOMPARE(diameters.size(), ten || two ? 1 : 0);
    // They take the 10-degree net's pen, label coloured once the 2-degree net is on.
    if (!diameters.isEmpty()) {
        const QColor pen = two ? net.labelColor() : net.gridColor();
        QVERIFY2(diameters.first().contains(QStringLiteral("pen ") + pen.name(QColor::HexArgb)),
                 qPrintable(diameters.first()));
    }
    QVERIFY(calls.last().startsWith(QLatin1String("lines 195,199-203,199 199,195-199,203 | pen #ff008000 3")));
}

void TestStereoPlot::pointKindDecidesThePlacement()
{
    Orientations model({{30.0, 40.0}, {70.0, 300.0}}, QRelationshipItemModel::ShowAll);
    model.setPointStyle(QRelationshipItemModel::Cross);
    model.setPointPixelSize(3);
    Stereo net;
    net.setModel(&model);
    net.setShow10DegreeNet(false);
    net.setShowDipDirections(true);
    net.setPoleColor(Qt::red);
    net.setDipDirectionColor(Qt::blue);
    const QStringList calls = net.record([&](QPainter* p) { net.drawChart(*p); });
    auto crossAt = [](const QPointF& p, const QString& colour) {
        const int x = int(p.x()), y = int(p.y());
        return QStringLiteral("lines %1,%2-%3,%4 %5,%6-%7,%8 | pen %9 2")
            .arg(int(p.x() - 3)).arg(y).arg(int(p.x() + 3)).arg(y).arg(x).arg(int(p.y() - 3)).arg(x).arg(int(p.y() + 3))
            .arg(colour);
    };
    const QStringList crosses = matching(calls, "^lines .*pen #ff(ff0000|0000ff) 2 ");
    QCOMPARE(crosses.size(), 4);
    QVERIFY(crosses[0].startsWith(crossAt(net.poleInPixel({30, 40}), "#ffff0000")));
    QVERIFY(crosses[1].startsWith(crossAt(net.poleInPixel({70, 300}), "#ffff0000")));
    QVERIFY(crosses[2].startsWith(crossAt(net.dipDirectionInPixel({30, 40}), "#ff0000ff")));
    QVERIFY(crosses[3].startsWith(crossAt(net.dipDirectionInPixel({70, 300}), "#ff0000ff")));
    // The chart's own state is as it was.
    QCOMPARE(net.pointKind(), 0);
    QCOMPARE(net.model(), &model);
}

void TestStereoPlot::zoomedMarksSitOnTheirLines_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<int>("mark");
    for (const bool area : {true, false}) {
        const char* n = area ? "area" : "angle";
        QTest::addRow("%s dip direction", n) << area << 0;
        QTest::addRow("%s dip direction symbol", n) << area << 1;
        QTest::addRow("%s plane label", n) << area << 2;
    }
}

void TestStereoPlot::zoomedMarksSitOnTheirLines()
{
    // On a zoomed, scrolled chart the single dip direction marks and the labels of result planes
    // sit where the line is drawn: its raster pixel, the widget pixel plus the scroll offsets.
    QFETCH(bool, equalArea);
    QFETCH(int, mark);
    const QPointF line(35.0, 120.0);
    Orientations model({{10.0, 0.0}});
    model.setPointStyle(QRelationshipItemModel::Cross);
    model.setPointPixelSize(3);
    model.setResults({0.0, 0.0}, line, {0.0, 0.0}, {0.0, 0.0});
    Stereo net(equalArea);
    net.setModel(&model);
    net.zoom(1.5);
    net.redraw();
    QCOMPARE(net.xOffsetPixels(), 100);
    QCOMPARE(net.yOffsetPixels(), 100);
    net.setShowMeanPrincipalPlane(true);
    const QStringList calls = net.record([&](QPainter* p) {
        if (mark == 0)
            net.drawDipDirection(p, line.x(), line.y(), Qt::blue);
        else if (mark == 1)
            net.drawDipDirection(p, line.x(), line.y(), Qt::blue, 1, false);
        else
            net.drawMeanOrientation(p);
    });
    const QPointF at = net.dipDirectionInPixel(line) + QPointF(100, 100);
    const int size = mark == 2 ? 4 : 3;
    const QString cross = QStringLiteral("lines %1,%2-%3,%2 %4,%5-%4,%6 ")
                              .arg(int(at.x() - size))
                              .arg(int(at.y()))
                              .arg(int(at.x() + size))
                              .arg(int(at.x()))
                              .arg(int(at.y() - size))
                              .arg(int(at.y() + size));
    QVERIFY2(!matching(calls, "^" + QRegularExpression::escape(cross)).isEmpty(), qPrintable(calls.join("\n")));
}

void TestStereoPlot::flatBedsAreTheCentrePole_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::newRow("Schmidt") << true;
    QTest::newRow("Wulff") << false;
}

void TestStereoPlot::flatBedsAreTheCentrePole()
{
    // A bed at dip 0 / azimuth 0, as field books record a flat bed, is a pole at the centre of
    // the net: drawn like any other.
    QFETCH(bool, equalArea);
    Orientations model({{30.0, 90.0}, {0.0, 0.0}, {0.0, 0.0}});
    model.setPointStyle(QRelationshipItemModel::Circle);
    model.setPointPixelSize(3);
    Stereo net(equalArea);
    net.setModel(&model);
    net.setShowTraces(false);
    const QStringList calls = net.record([&](QPainter* p) { net.drawDataPoints(p); });
    const QPoint c = net.centre();
    const QString atCentre = QStringLiteral("ellipse %1,%2 7x7").arg(c.x() - 3).arg(c.y() - 3);
    QCOMPARE(calls.filter(QRegularExpression("^" + QRegularExpression::escape(atCentre))).size(), 2);
    QCOMPARE(calls.filter(QRegularExpression("^ellipse ")).size(), 3);
}

void TestStereoPlot::zoomTwentyKeepsOnlyTheVisibleWindow()
{
    // At zoom 20 a 2000 x 1500 chart is laid out on a 40000 x 30000 raster, past what an image
    // may hold: only the window the widget shows is kept, and it shows the chart's middle.
    Orientations model({{0.0, 0.0}});
    model.setPointStyle(QRelationshipItemModel::Square);
    model.setPointPixelSize(6);
    Stereo net(true, QSize(2000, 1500));
    net.setModel(&model);
    net.setPoleColor(QColor(255, 0, 0));
    net.updateChart();
    const std::size_t atOne = net.rasterMemoryBytes();
    net.zoom(20.0);
    QCOMPARE(net.rasterSize(), QSize(40000, 30000));
    QCOMPARE(net.xOffsetPixels(), 19000); // half of 40000 - 2000
    QCOMPARE(net.yOffsetPixels(), 14250);
    const QImage shown = net.grab().toImage();
    QCOMPARE(net.chartImage().size(), QSize(2000, 1500));
    QVERIFY2(net.rasterMemoryBytes() <= 3 * atOne,
             qPrintable(QStringLiteral("%1 bytes against %2").arg(net.rasterMemoryBytes()).arg(atOne)));
    // The flat bed's pole sits at the raster's centre, the widget's centre here.
    QCOMPARE(QColor(shown.pixel(1000, 750)), QColor(255, 0, 0));
    // Scrolled to the top left corner the pole is out of sight and the window is redrawn.
    net.xoffset(0);
    net.yoffset(0);
    QCOMPARE(QPoint(net.xOffsetPixels(), net.yOffsetPixels()), QPoint(0, 0));
    const QImage corner = net.grab().toImage();
    QVERIFY(QColor(corner.pixel(1000, 750)) != QColor(255, 0, 0));
}

void TestStereoPlot::resultLabelsStayOnTheNet_data()
{
    QTest::addColumn<QPointF>("plane");
    // Gentle planes, whose dip direction lies near the rim, in every quarter; and a steep one.
    QTest::newRow("north east") << QPointF(5.0, 60.0);
    QTest::newRow("south east") << QPointF(2.0, 120.0);
    QTest::newRow("south west") << QPointF(4.0, 230.0);
    QTest::newRow("north west") << QPointF(3.0, 320.0);
    QTest::newRow("east, on the rim") << QPointF(0.5, 90.0);
    QTest::newRow("steep") << QPointF(70.0, 200.0);
}

void TestStereoPlot::resultLabelsStayOnTheNet()
{
    // A result's label must not cover the ring's numbers: its box stays inside the primitive
    // circle, and the labels of two results do not cover each other.
    QFETCH(QPointF, plane);
    Orientations model({{10.0, 0.0}});
    model.setResults({0.0, 0.0}, plane, {0.0, 0.0}, plane);
    Stereo net(true);
    net.setModel(&model);
    net.setShowMeanPrincipalPlane(true);
    net.setShowBestFitPlane(true);
    PaintRecorder device(net.size());
    device.setRecordTextPositions(true);
    QPainter painter(&device);
    const QFontMetricsF fm = painter.fontMetrics();
    net.drawMeanOrientation(&painter);
    painter.end();
    const QStringList texts = device.calls().filter(QRegularExpression("^text ' (Mean Principal|Best Fit) Plane '"));
    QCOMPARE(texts.size(), 2);
    QVector<QRectF> boxes;
    for (const QString& t : texts) {
        const QRegularExpressionMatch m = QRegularExpression("^text '(.*)' at (-?\\d+),(-?\\d+)").match(t);
        QVERIFY2(m.hasMatch(), qPrintable(t));
        // The text's baseline start; its box reaches an ascent above and a descent below.
        const QPointF at(m.captured(2).toDouble(), m.captured(3).toDouble());
        const QRectF box(at.x(), at.y() - fm.ascent(), fm.horizontalAdvance(m.captured(1)), fm.height());
        const QPointF c(net.centre());
        for (const QPointF& corner : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()})
            QVERIFY2(std::hypot(corner.x() - c.x(), corner.y() - c.y()) <= net.radius() + 3.0,
                     qPrintable(t));
        boxes << box;
    }
    QVERIFY2(!boxes[0].adjusted(1, 1, -1, -1).intersects(boxes[1]),
             qPrintable(texts.join(QLatin1Char(10))));
}

void TestStereoPlot::blockPlacementIsPoleInPixel_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<int>("pointKind");
    QTest::newRow("Schmidt, poles") << true << 0;
    QTest::newRow("Wulff, poles") << false << 0;
    QTest::newRow("Schmidt, lines") << true << 1;
    QTest::newRow("Wulff, lines") << false << 1;
}

void TestStereoPlot::blockPlacementIsPoleInPixel()
{
    // The walkers place a block of points at once: every pixel must be the one the single-point
    // transform gives, bit for bit, for wild values too and across the block's chunks.
    QFETCH(bool, equalArea);
    QFETCH(int, pointKind);
    Stereo net(equalArea);
    net.setPointKind(pointKind);
    std::mt19937 rng(5);
    std::uniform_real_distribution<double> dip(-100.0, 190.0), azimuth(-400.0, 800.0);
    std::vector<QPointF> in;
    for (int i = 0; i < 700; ++i)
        in.emplace_back(dip(rng), azimuth(rng));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    in.insert(in.begin() + 300, {{0.0, 0.0}, {90.0, 360.0}, {nan, 10.0}, {10.0, nan}, {inf, 5.0}, {30.0, 1e9}, {-0.0, -0.0}});
    std::vector<QPointF> out(in.size());
    net.polesInPixels(in.data(), out.data(), int(in.size()));
    for (std::size_t i = 0; i < in.size(); ++i) {
        const QPointF one = net.transformInPixelPoint(in[i]);
        QVERIFY2(std::memcmp(&one, &out[i], sizeof one) == 0,
                 qPrintable(QStringLiteral("(%1, %2): %3,%4 against %5,%6").arg(in[i].x()).arg(in[i].y())
                                .arg(out[i].x(), 0, 'g', 17).arg(out[i].y(), 0, 'g', 17)
                                .arg(one.x(), 0, 'g', 17).arg(one.y(), 0, 'g', 17)));
    }
}

void TestStereoPlot::tracesWithTheSelectionPass_data()
{
    QTest::addColumn<int>("displayType");
    QTest::addColumn<QStringList>("pens");
    const QString plane = "#ff00ff00", yellow = "#ffffff00";
    QTest::newRow("all") << 0 << QStringList{plane, plane, plane};
    QTest::newRow("selected only") << 1 << QStringList{plane};
    QTest::newRow("highlight") << 2 << QStringList{plane, plane, yellow};
}

void TestStereoPlot::tracesWithTheSelectionPass()
{
    QFETCH(int, displayType);
    QFETCH(QStringList, pens);
    Orientations model({{10.0, 0.0}, {20.0, 90.0}, {30.0, 180.0}},
                       QRelationshipItemModel::DisplayType(displayType));
    model.setSelected(2, true);
    Stereo net;
    net.setModel(&model);
    net.setPlaneColor(Qt::green);
    const QStringList calls = net.record([&](QPainter* p) { net.drawCyclographicTraces(p, 3); });
    QStringList got;
    for (const QString& c : calls) {
        QVERIFY(c.contains(QLatin1String(" 3 | brush none")));
        got << c.section(QLatin1String("pen "), 1).section(QLatin1Char(' '), 0, 0);
    }
    QCOMPARE(got, pens);
    // The selected plane comes last, at dip 30 towards the south.
    const QVector<QPointF> last = points(calls.last().mid(9));
    const QPointF mid = net.dipDirectionInPixel({30.0, 180.0});
    QVERIFY(std::any_of(last.begin(), last.end(),
                        [&](const QPointF& p) { return std::hypot(p.x() - mid.x(), p.y() - mid.y()) < 2e-3; }));
}

void TestStereoPlot::resultsComeFromTheirFields()
{
    Orientations model({{10.0, 0.0}});
    model.setResults({20.0, 10.0}, {40.0, 100.0}, {60.0, 200.0}, {80.0, 300.0});
    Stereo net;
    net.setModel(&model);
    net.setShowMeanResultantPole(true);
    net.setShowMeanPrincipalPole(true);
    net.setShowTPole(true);
    net.setShowLPole(true);
    net.setShowBestFitPlane(true);
    const QStringList calls = net.record([&](QPainter* p) { net.drawMeanOrientation(p); });
    QStringList texts;
    for (const QString& c : matching(calls, "^text "))
        texts << c.section(QLatin1Char('\''), 1, 1).trimmed();
    QCOMPARE(texts, (QStringList{"Mean Resultant Pole", "Mean Principal Pole", "T Pole", "L Pole", "Best Fit Plane"}));
    // Each disc sits on the pole of its own field.
    const QStringList discs = matching(calls, "^ellipse .*brush #");
    QCOMPARE(discs.size(), 4);
    const QPointF fields[4] = {{20.0, 10.0}, {40.0, 100.0}, {60.0, 200.0}, {80.0, 300.0}};
    for (int i = 0; i < 4; ++i) {
        const QStringList r = discs[i].section(QLatin1Char(' '), 1, 2).split(QRegularExpression("[ ,x]"));
        const QPointF centre(r[0].toDouble() + r[2].toDouble() / 2.0, r[1].toDouble() + r[3].toDouble() / 2.0);
        const QPointF pole = net.poleInPixel(fields[i]);
        QVERIFY2(std::hypot(centre.x() - pole.x(), centre.y() - pole.y()) < 1.5, qPrintable(discs[i]));
    }
    // The best fit plane is the trace of the L field.
    QCOMPARE(matching(calls, "^polyline ").size(), 1);
}

void TestStereoPlot::plotLimitKeepsTheClip()
{
    // A dip beyond 90 puts its pole outside the ring (no annotation ring there to hide it).
    Orientations model({{110.0, 45.0}}, QRelationshipItemModel::ShowAll);
    model.setPointStyle(QRelationshipItemModel::Square);
    model.setPointPixelSize(3);
    Stereo net;
    net.setModel(&model);
    net.setShow10DegreeNet(false);
    net.setAnnotationLabelAsAngle(false);
    net.setPoleColor(Qt::red);
    const QPoint pole = net.poleInPixel({110.0, 45.0}).toPoint();
    QVERIFY(std::hypot(pole.x() - net.centre().x(), pole.y() - net.centre().y()) > 165);
    net.redraw();
    QCOMPARE(net.chartImage().pixelColor(pole), QColor(Qt::red));
    net.setMaxPlotAngle(65.0);
    net.redraw();
    QCOMPARE(net.chartImage().pixelColor(pole), QColor(Qt::white));
}

void TestStereoPlot::chartWithoutModel()
{
    Stereo net;
    QVERIFY(!net.chartImage().isNull());
    QCOMPARE(net.chartImage().pixelColor(net.centre()), QColor(Qt::darkGreen));
    // Frame and net only: the metafile form draws exactly the net.
    const QStringList chart = net.record([&](QPainter* p) { net.drawChart(*p); });
    const QStringList netOnly = net.record([&](QPainter* p) { net.drawNet(p); });
    QCOMPARE(chart, netOnly);
    // The mouse and the overlay work without data; a release reports no rows.
    int emitted = 0;
    std::size_t bits = 99;
    connect(&net, &QChartDrawingArea::dataPointsSelection, this, [&](const boost::dynamic_bitset<>& rows) {
        ++emitted;
        bits = rows.size();
    });
    for (const QPointF& p : {QPointF(net.centre()), QPointF(50, 50), QPointF(300, 60)}) {
        QMouseEvent press(QEvent::MouseButtonPress, p, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        net.mousePressEvent(&press);
    }
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(300, 60), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    net.mouseReleaseEvent(&release);
    QCOMPARE(emitted, 1);
    QCOMPARE(bits, std::size_t(0));
    net.setSelectionMode(false);
    net.setShowTraces(true);
    QVERIFY(!net.grab().isNull());
    // A raster too small for a net has no orientations.
    Stereo tiny(true, QSize(2, 2));
    double dip, azimuth;
    QVERIFY(!tiny.generateDipAndDipAzimuth(QPointF(0, 0), dip, azimuth));
}

void TestStereoPlot::stressFieldSamplesTheHook()
{
    Orientations model;
    Stereo net;
    net.setModel(&model);
    MatrixDataArray grid(QStringLiteral("stress"), 0, 0, QVariant::Double);
    net.createStressField(5, 5, &grid);
    QCOMPARE(grid.rowCount(), 5);
    QCOMPARE(grid.columnCount(), 5);
    // The hook here returns the dip: 0 at the centre, 90 on the rim and in the corners outside.
    QCOMPARE(grid.toDouble(2, 2), 0.0);
    QVERIFY(std::abs(grid.toDouble(0, 2) - 90.0) < 1e-9);
    QCOMPARE(grid.toDouble(0, 0), 90.0);
    QVERIFY(std::abs(grid.toDouble(1, 2) - 2.0 * std::asin(0.5 / std::sqrt(2.0)) / kDeg) < 1e-9);
    // Fewer than two nodes along a side leave the grid alone.
    net.createStressField(1, 5, &grid);
    QCOMPARE(grid.rowCount(), 5);
}

void TestStereoPlot::stressDragLeavesTheDipDirections_data()
{
    QTest::addColumn<bool>("poles");
    QTest::addColumn<bool>("repainted");
    QTest::newRow("poles") << true << true;
    QTest::newRow("dip directions") << false << false;
}

void TestStereoPlot::stressDragLeavesTheDipDirections()
{
    // Dragging the stress field repaints traces, poles and lineation over the raster's copy, but
    // not the dip directions: the raster's own marks stay as they are.
    QFETCH(bool, poles);
    QFETCH(bool, repainted);
    const QPointF orientation(40.0, 135.0);
    Orientations model({orientation}, QRelationshipItemModel::ShowAll);
    model.setPointStyle(QRelationshipItemModel::Circle);
    model.setPointPixelSize(3);
    model.setShowStressState(true);
    Stereo net;
    net.setModel(&model);
    net.setShow10DegreeNet(false);
    net.setShowPoles(poles);
    net.setShowDipDirections(!poles);
    net.redraw();
    net.setMoveStressField(true);
    QVERIFY(!net.grab().isNull());
    const QPoint at = (poles ? net.poleInPixel(orientation) : net.dipDirectionInPixel(orientation)).toPoint();
    const QRect around(at - QPoint(8, 8), QSize(17, 17));
    QVERIFY(net.chartImage().pixelColor(at) != QColor(Qt::white));
    QCOMPARE(net.overlay().copy(around) != net.chartImage().copy(around), repainted);
}

void TestStereoPlot::densityCountsWhereTheChartDraws_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<bool>("poles");
    for (const bool area : {true, false})
        for (const bool poles : {true, false})
            QTest::addRow("%s %s", area ? "area" : "angle", poles ? "poles" : "dip directions") << area << poles;
}

void TestStereoPlot::densityCountsWhereTheChartDraws()
{
    QFETCH(bool, equalArea);
    QFETCH(bool, poles);
    Orientations model({{30.0, 40.0}}, QRelationshipItemModel::ShowAll);
    Stereo net(equalArea);
    net.setModel(&model);
    net.countingOutProjections(11, 11, poles, false);
    MatrixDataArray* grid = poles ? model.contourGridPoles() : model.contourGridDipDir();
    QCOMPARE(grid->rowCount(), 11);
    // The four corners of the cell under the drawn point hold one count each.
    const QPointF pixel = poles ? net.poleInPixel({30.0, 40.0}) : net.dipDirectionInPixel({30.0, 40.0});
    const double d = net.gridRect().width() / 10.0;
    const int i = int((pixel.x() - net.gridRect().x()) / d), j = int((pixel.y() - net.gridRect().y()) / d);
    double total = 0.0;
    for (int r = 0; r < 11; ++r)
        for (int c = 0; c < 11; ++c)
            total += grid->toDouble(r, c);
    QCOMPARE(total, 4.0);
    for (const QPoint& corner : {QPoint(i, j), QPoint(i + 1, j), QPoint(i + 1, j + 1), QPoint(i, j + 1)})
        QCOMPARE(grid->toDouble(corner.x(), corner.y()), 1.0);
    // Without a model, or without a grid, nothing happens.
    Stereo bare(equalArea);
    bare.countingOutProjections(11, 11, poles, false);
    bare.calculateTheEdgeEffect(nullptr, nullptr);
}

QTEST_MAIN(TestStereoPlot)
#include "tst_stereoplot.moc"

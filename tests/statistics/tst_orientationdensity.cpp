// Kamb and exponential Kamb densities: values worked by hand on sets of one to four poles, the
// uniform sample reading sigma, the binned and threaded grid against the plain sum, the grid
// count against the chart's own count, bad input, and the stereonet grid placing a pole's peak
// where the chart draws the pole, on both nets.
#include "LoadedOrientations.h"

#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <OrientationDensity.h>
#include <QRelationshipItemModel.h>
#include <StereoNetGeometry.h>

#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>
#include <random>

using namespace rkBase;

Q_DECLARE_METATYPE(rkBase::DensityMethod)
Q_DECLARE_METATYPE(gdfVertex)
Q_DECLARE_METATYPE(std::vector<gdfVertex>)

namespace {
constexpr double kPi = 3.14159265358979323846;
const double kNaN = std::numeric_limits<double>::quiet_NaN();

gdfVertex fromDegrees(double plunge, double azimuth)
{
    const double p = plunge * kPi / 180.0, a = azimuth * kPi / 180.0;
    return {std::cos(a) * std::cos(p), std::sin(a) * std::cos(p), std::sin(p)};
}

// Poles of planes as the model turns (dip, dip direction) into vectors.
gdfVertex poleOf(QPointF const& plane)
{
    return fromDegrees(90.0 - plane.x(), plane.y() + 180.0);
}

std::vector<gdfVertex> clustered(int n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::normal_distribution<double> g;
    std::vector<gdfVertex> out;
    const gdfVertex centres[] = {fromDegrees(60, 30), fromDegrees(2, 300), gdfVertex(g(rng), g(rng), g(rng))};
    for (int k = 0; k < n; ++k) {
        const gdfVertex& c = centres[k % 3];
        out.push_back(k % 5 == 4 ? gdfVertex(g(rng), g(rng), g(rng))
                                 : (c.normalize() + gdfVertex(g(rng), g(rng), g(rng)) * 0.15).normalize());
    }
    return out;
}

using testorientations::Loaded;
using testorientations::load;
using testorientations::net;
} // namespace

class TestOrientationDensity : public QObject
{
    Q_OBJECT
private slots:
    void handWorked_data();
    void handWorked();
    void badInput_data();
    void badInput();
    void uniformReadsSigma_data();
    void uniformReadsSigma();
    void gridMatchesPointForm_data();
    void gridMatchesPointForm();
    void fourCornerIsTheChartsCount();
    void peakWherePoleIsDrawn_data();
    void peakWherePoleIsDrawn();
};

void TestOrientationDensity::handWorked_data()
{
    QTest::addColumn<std::vector<gdfVertex>>("poles");
    QTest::addColumn<gdfVertex>("at");
    QTest::addColumn<DensityMethod>("method");
    QTest::addColumn<double>("sigma");
    QTest::addColumn<double>("expected");

    const gdfVertex z(0, 0, 1), x(1, 0, 0);
    // n = 1, sigma 3: p = 9/10, cos(theta) = 0.1, sd = sqrt(0.09) = 0.3, so one pole reads 1/0.3.
    QTest::newRow("kamb one pole, at it") << std::vector<gdfVertex>{z} << z << DensityMethod::Kamb << 3.0 << 1.0 / 0.3;
    QTest::newRow("kamb one pole, 84 degrees off") << std::vector<gdfVertex>{z} << fromDegrees(6.0, 0.0)
                                                   << DensityMethod::Kamb << 3.0 << 1.0 / 0.3;
    QTest::newRow("kamb one pole, 85 degrees off") << std::vector<gdfVertex>{z} << fromDegrees(5.0, 0.0)
                                                   << DensityMethod::Kamb << 3.0 << 0.0;
    QTest::newRow("kamb lengths do not matter") << std::vector<gdfVertex>{gdfVertex(0, 0, 5)} << gdfVertex(0, 0, -0.2)
                                                << DensityMethod::Kamb << 3.0 << 1.0 / 0.3;
    // n = 4, sigma 2: p = 4/8, a 60 degree cone, sd = sqrt(4 * 0.25) = 1. Axial: -z counts as z.
    const std::vector<gdfVertex> four{z, -z, x, fromDegrees(90.0 - 60.5, 0.0)};
    QTest::newRow("kamb four, at z") << four << z << DensityMethod::Kamb << 2.0 << 2.0;
    QTest::newRow("kamb four, at x") << four << x << DensityMethod::Kamb << 2.0 << 2.0;
    QTest::newRow("kamb four, between") << four << gdfVertex(1, 0, 1) << DensityMethod::Kamb << 2.0 << 4.0;
    QTest::newRow("kamb four, at y") << four << gdfVertex(0, 1, 0) << DensityMethod::Kamb << 2.0 << 0.0;
    // n = 1, sigma 3: f = 20/9, sd = sqrt(1/9) / f = 0.15.
    QTest::newRow("exponential one pole, at it")
            << std::vector<gdfVertex>{z} << z << DensityMethod::ExponentialKamb << 3.0 << 1.0 / 0.15;
    QTest::newRow("exponential one pole, at right angles")
            << std::vector<gdfVertex>{z} << x << DensityMethod::ExponentialKamb << 3.0 << std::exp(-20.0 / 9.0) / 0.15;
    // n = 2, sigma 1: f = 6, sd = sqrt(2 * 2) / 6 = 1/3.
    QTest::newRow("exponential two poles") << std::vector<gdfVertex>{z, x} << -z << DensityMethod::ExponentialKamb
                                           << 1.0 << 3.0 * (1.0 + std::exp(-6.0));
    // The chart's 20 x 20 cell net: a vertical pole sits on the centre node; a horizontal one on
    // the rim, shared with the node opposite; each reads in percent of the two.
    const std::vector<gdfVertex> two{z, x};
    QTest::newRow("grid count, centre") << two << z << DensityMethod::FourCorner << 3.0 << 50.0;
    QTest::newRow("grid count, rim") << two << x << DensityMethod::FourCorner << 3.0 << 50.0;
    QTest::newRow("grid count, opposite rim") << two << -x << DensityMethod::FourCorner << 3.0 << 50.0;
    QTest::newRow("grid count, empty node") << two << gdfVertex(0, 1, 0) << DensityMethod::FourCorner << 3.0 << 0.0;
}

void TestOrientationDensity::handWorked()
{
    QFETCH(std::vector<gdfVertex>, poles);
    QFETCH(gdfVertex, at);
    QFETCH(DensityMethod, method);
    QFETCH(double, sigma);
    QFETCH(double, expected);
    QCOMPARE(orientationDensity(poles, at, method, sigma) + 1.0, expected + 1.0);
    QCOMPARE(orientationDensityGrid(poles, {at}, method, sigma).at(0) + 1.0, expected + 1.0);
}

void TestOrientationDensity::badInput_data()
{
    QTest::addColumn<std::vector<gdfVertex>>("poles");
    QTest::addColumn<gdfVertex>("at");
    QTest::addColumn<double>("sigma");
    QTest::addColumn<double>("expected");
    const gdfVertex z(0, 0, 1);
    QTest::newRow("no poles") << std::vector<gdfVertex>{} << z << 3.0 << 0.0;
    QTest::newRow("only bad poles") << std::vector<gdfVertex>{gdfVertex(), gdfVertex(kNaN, 0, 1)} << z << 3.0 << 0.0;
    QTest::newRow("bad poles not counted")
            << std::vector<gdfVertex>{z, gdfVertex(0, 0, kNaN), gdfVertex(), gdfVertex(0, INFINITY, 1)} << z << 3.0
            << 1.0 / 0.3;
    QTest::newRow("NaN node") << std::vector<gdfVertex>{z} << gdfVertex(kNaN, 0, 0) << 3.0 << 0.0;
    QTest::newRow("zero node") << std::vector<gdfVertex>{z} << gdfVertex() << 3.0 << 0.0;
    QTest::newRow("sigma 0") << std::vector<gdfVertex>{z} << z << 0.0 << 0.0;
    QTest::newRow("sigma NaN") << std::vector<gdfVertex>{z} << z << kNaN << 0.0;
    QTest::newRow("sigma squared is 0") << std::vector<gdfVertex>{z} << z << 1e-200 << 0.0;
    QTest::newRow("sigma squared overflows") << std::vector<gdfVertex>{z} << z << 1e200 << 0.0;
}

void TestOrientationDensity::badInput()
{
    QFETCH(std::vector<gdfVertex>, poles);
    QFETCH(gdfVertex, at);
    QFETCH(double, sigma);
    QFETCH(double, expected);
    for (DensityMethod m : {DensityMethod::Kamb, DensityMethod::ExponentialKamb, DensityMethod::FourCorner}) {
        const double v = orientationDensity(poles, at, m, sigma);
        QVERIFY(std::isfinite(v));
        QCOMPARE(orientationDensityGrid(poles, {at, at}, m, sigma), std::vector<double>(2, v));
        if (m == DensityMethod::Kamb)
            QCOMPARE(v + 1.0, expected + 1.0);
    }
}

void TestOrientationDensity::uniformReadsSigma_data()
{
    QTest::addColumn<DensityMethod>("method");
    QTest::addColumn<double>("sigma");
    QTest::newRow("kamb 3") << DensityMethod::Kamb << 3.0;
    QTest::newRow("kamb 2") << DensityMethod::Kamb << 2.0;
    QTest::newRow("exponential 3") << DensityMethod::ExponentialKamb << 3.0;
    QTest::newRow("exponential 2") << DensityMethod::ExponentialKamb << 2.0;
}

// Both methods are scaled so that random data average sigma: a wrong cone or standard
// deviation moves the mean far more than sampling does.
void TestOrientationDensity::uniformReadsSigma()
{
    QFETCH(DensityMethod, method);
    QFETCH(double, sigma);
    std::mt19937 rng(7);
    std::normal_distribution<double> g;
    std::vector<gdfVertex> poles(4000), nodes(400);
    for (auto& p : poles)
        p = gdfVertex(g(rng), g(rng), g(rng));
    for (auto& p : nodes)
        p = gdfVertex(g(rng), g(rng), g(rng));
    const std::vector<double> d = orientationDensityGrid(poles, nodes, method, sigma);
    double mean = 0.0;
    for (double v : d)
        mean += v / double(d.size());
    QVERIFY2(std::abs(mean - sigma) < 0.1 * sigma, qPrintable(QString::number(mean)));
}

void TestOrientationDensity::gridMatchesPointForm_data()
{
    QTest::addColumn<DensityMethod>("method");
    QTest::addColumn<int>("poleCount");
    QTest::addColumn<double>("sigma");
    // Large sets take the binned path (and threads); small ones and a wide sigma the plain sum.
    QTest::newRow("kamb binned") << DensityMethod::Kamb << 3000 << 3.0;
    QTest::newRow("kamb plain") << DensityMethod::Kamb << 40 << 3.0;
    QTest::newRow("kamb wide sigma") << DensityMethod::Kamb << 3000 << 30.0;
    QTest::newRow("exponential binned") << DensityMethod::ExponentialKamb << 3000 << 3.0;
    QTest::newRow("exponential plain") << DensityMethod::ExponentialKamb << 200 << 3.0;
}

void TestOrientationDensity::gridMatchesPointForm()
{
    QFETCH(DensityMethod, method);
    QFETCH(int, poleCount);
    QFETCH(double, sigma);
    const std::vector<gdfVertex> poles = clustered(poleCount, 11);
    // Nodes over the whole sphere, many on or near the horizontal where the antipode counts too,
    // and every pole itself.
    std::vector<gdfVertex> nodes;
    for (int k = 0; k < 300; ++k)
        nodes.push_back(fromDegrees(k % 3 == 0 ? 0.0 : (k % 3 == 1 ? 0.3 * (k % 7) - 1.0 : k % 90), k * 7.3));
    for (int k = 0; k < poleCount; k += poleCount / 40)
        nodes.push_back(poles[std::size_t(k)]);
    const std::vector<double> grid = orientationDensityGrid(poles, nodes, method, sigma);
    double peak = 0.0;
    for (std::size_t k = 0; k < nodes.size(); ++k) {
        const double one = orientationDensity(poles, nodes[k], method, sigma);
        peak = std::max(peak, one);
        if (method == DensityMethod::Kamb)
            QCOMPARE(grid[k], one);
        else
            QVERIFY2(std::abs(grid[k] - one) <= 1e-12 * (1.0 + one), qPrintable(QString::number(k)));
    }
    QVERIFY(peak > 2.0 * sigma);
}

// The point form's grid count must be the chart's: the same poles counted by the model on a net
// of 20 x 20 cells, in percent, node by node, wherever a node shows an orientation.
void TestOrientationDensity::fourCornerIsTheChartsCount()
{
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> dip(0.0, 90.0), azimuth(0.0, 360.0);
    QList<QPointF> planes;
    std::vector<gdfVertex> poles;
    for (int k = 0; k < 300; ++k) {
        planes << QPointF(k % 4 ? dip(rng) : 70.0 + dip(rng) / 4.5, azimuth(rng));
        poles.push_back(poleOf(planes.back()));
    }
    Loaded l = load(planes);
    MatrixDataArray grid(QString(), 0, 1, QVariant::Double);
    const StereoNetGeometry g = net(true);
    l.model->countingOutProjections(21, 21, &grid, true, false, g);
    int compared = 0;
    for (int i = 0; i < 21; ++i)
        for (int j = 0; j < 21; ++j) {
            if (std::hypot(i * 10.0 - 100.0, j * 10.0 - 100.0) > 100.0)
                continue;
            const gdfVertex at = g.axisAt(QPointF(i * 10.0, j * 10.0), true);
            QCOMPARE(orientationDensity(poles, at, DensityMethod::FourCorner), grid.toDouble(i, j) * 100.0 / 300.0);
            ++compared;
        }
    QVERIFY(compared > 300);
}

void TestOrientationDensity::peakWherePoleIsDrawn_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<bool>("poles");
    QTest::addColumn<QPointF>("plane");
    QTest::newRow("equal area pole") << true << true << QPointF(50, 70);
    QTest::newRow("equal angle pole") << false << true << QPointF(40, 200);
    QTest::newRow("equal area dip direction") << true << false << QPointF(30, 315);
    QTest::newRow("equal angle dip direction") << false << false << QPointF(60, 100);
}

// One plane's density peaks at the node nearest where the chart draws its pole (or dip
// direction, which moves with the zoom offsets): a node projected back the wrong way round or
// on the other net's scale peaks elsewhere.
void TestOrientationDensity::peakWherePoleIsDrawn()
{
    QFETCH(bool, equalArea);
    QFETCH(bool, poles);
    QFETCH(QPointF, plane);
    Loaded l = load({plane});
    const StereoNetGeometry g = net(equalArea, poles ? QPointF() : QPointF(10, -20));
    const QPointF drawn = poles ? g.poleInPixel(plane) : g.dipDirectionInPixel(plane);
    MatrixDataArray grid(QString(), 0, 1, QVariant::Double);
    l.model->densityOnSphere(41, 41, &grid, poles, DensityMethod::ExponentialKamb, g);
    QCOMPARE(grid.rowCount(), 41);
    QCOMPARE(grid.columnCount(), 41);
    int bi = 0, bj = 0;
    for (int i = 0; i < 41; ++i)
        for (int j = 0; j < 41; ++j)
            if (grid.toDouble(i, j) > grid.toDouble(bi, bj))
                std::tie(bi, bj) = std::make_tuple(i, j);
    QVERIFY2(std::hypot(bi * 5.0 - drawn.x(), bj * 5.0 - drawn.y()) <= 5.0 * std::sqrt(0.5) + 1e-9,
             qPrintable(QStringLiteral("%1 %2 vs %3 %4").arg(bi).arg(bj).arg(drawn.x()).arg(drawn.y())));
    // One pole with sigma 3 reads 1 / 0.3 within 84.3 degrees of it, here the node it lies on.
    l.model->densityOnSphere(41, 41, &grid, poles, DensityMethod::Kamb, g);
    QCOMPARE(grid.toDouble(bi, bj), 1.0 / 0.3);
}

QTEST_GUILESS_MAIN(TestOrientationDensity)
#include "tst_orientationdensity.moc"

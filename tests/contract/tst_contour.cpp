// The contour kernels on one triangle, the colour map's levels they walk, and the lasso test.
#include <MatrixData.h>
#include <RKColormap.h>

#include <QPolygonF>
#include <QtTest>

#include <array>
#include <cmath>
#include <limits>
#include <random>

using rkBase::MatrixData;

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

struct Triangle
{
    std::array<double, 3> x, y, v;
};

double polygonArea(const double* x, const double* y, int n)
{
    double a = 0.0;
    for (int i = 0, j = n - 1; i < n; j = i++)
        a += x[j] * y[i] - x[i] * y[j];
    return 0.5 * a;
}

// Linear value of the triangle at (px, py), from barycentric coordinates.
double valueAt(const Triangle& t, double px, double py)
{
    const double d = (t.y[1] - t.y[2]) * (t.x[0] - t.x[2]) + (t.x[2] - t.x[1]) * (t.y[0] - t.y[2]);
    const double l0 = ((t.y[1] - t.y[2]) * (px - t.x[2]) + (t.x[2] - t.x[1]) * (py - t.y[2])) / d;
    const double l1 = ((t.y[2] - t.y[0]) * (px - t.x[2]) + (t.x[0] - t.x[2]) * (py - t.y[2])) / d;
    return l0 * t.v[0] + l1 * t.v[1] + (1.0 - l0 - l1) * t.v[2];
}

double distanceToSegment(double px, double py, double ax, double ay, double bx, double by)
{
    const double dx = bx - ax, dy = by - ay;
    const double len2 = dx * dx + dy * dy;
    const double t = len2 > 0.0 ? std::clamp(((px - ax) * dx + (py - ay) * dy) / len2, 0.0, 1.0) : 0.0;
    return std::hypot(px - (ax + t * dx), py - (ay + t * dy));
}

double distanceToOutline(double px, double py, const double* x, const double* y, int n)
{
    double best = kInf;
    for (int i = 0, j = n - 1; i < n; j = i++)
        best = std::min(best, distanceToSegment(px, py, x[j], y[j], x[i], y[i]));
    return best;
}

QPolygonF poly(std::initializer_list<QPointF> points)
{
    return QPolygonF(QVector<QPointF>(points));
}

Triangle unitTriangle(double v0, double v1, double v2)
{
    return Triangle{{0.0, 4.0, 0.0}, {0.0, 0.0, 4.0}, {v0, v1, v2}};
}
} // namespace

Q_DECLARE_METATYPE(Triangle)

class TestContour : public QObject
{
    Q_OBJECT
private slots:
    void levels_data();
    void levels();
    void steppedColoursMatchBands_data();
    void steppedColoursMatchBands();
    void polygon_data();
    void polygon();
    void bandsTileTriangles();
    void isoline_data();
    void isoline();
    void neighboursShareCrossings();
    void pointInOrOut_data();
    void pointInOrOut();
    void pointInOrOutNeedsPoints();
};

void TestContour::levels_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("lastBelowMax"); // the level before max, NaN when not checked
    QTest::newRow("quarters") << 0.0 << 1.0 << 0.25 << 5 << 0.75;
    QTest::newRow("twentieths of 0.1..7.3") << 0.1 << 7.3 << (7.3 - 0.1) / 19 << 20 << kNaN;
    QTest::newRow("twentieths of -3.7..12.9") << -3.7 << 12.9 << (12.9 + 3.7) / 19 << 20 << kNaN;
    QTest::newRow("twentieths of 1e-3..2e-3") << 1e-3 << 2e-3 << (2e-3 - 1e-3) / 19 << 20 << kNaN;
    QTest::newRow("step plus a hair still 20") << 0.0 << 0.7 << 0.7 / 19 + 5e-09 << 20 << kNaN;
    QTest::newRow("uneven step ends on max") << 0.0 << 1.0 << 0.3 << 5 << 0.9;
    QTest::newRow("step wider than range") << 2.0 << 3.0 << 5.0 << 2 << 2.0;
    QTest::newRow("swapped bounds") << 1.0 << 0.0 << 0.5 << 3 << 0.5;
    QTest::newRow("empty range") << 5.0 << 5.0 << 1.0 << 0 << kNaN;
    QTest::newRow("nan min") << kNaN << 1.0 << 0.1 << 0 << kNaN;
    QTest::newRow("infinite max") << 0.0 << kInf << 0.1 << 0 << kNaN;
    QTest::newRow("zero step") << 0.0 << 1.0 << 0.0 << 0 << kNaN;
    QTest::newRow("nan step") << 0.0 << 1.0 << kNaN << 0 << kNaN;
    QTest::newRow("tiny step is capped") << 0.0 << 1.0 << 1e-12 << RKColormap::kMaxLevels << kNaN;
    QTest::newRow("huge range") << -1e300 << 1e300 << 1e299 << 21 << kNaN;
}

void TestContour::levels()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);
    QFETCH(int, count);
    QFETCH(double, lastBelowMax);
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(min, max, step, false);
    const auto& levels = map.colorMap();
    QCOMPARE(static_cast<int>(levels.size()), count);
    if (count == 0)
        return;
    QCOMPARE(levels.begin()->first, std::min(min, max));
    QCOMPARE(levels.rbegin()->first, std::max(min, max));
    if (!std::isnan(lastBelowMax))
        QVERIFY(qFuzzyCompare(std::next(levels.rbegin())->first, lastBelowMax));
    // Evenly spaced by the step in force, apart from a shorter last band.
    double previous = -kInf;
    int i = 0;
    for (const auto& level : levels) {
        QVERIFY(level.first > previous);
        if (i + 1 < count)
            QVERIFY(std::abs(level.first - (map.minimum() + i * map.step())) <= 1e-12 * std::abs(map.maximum() - map.minimum()));
        QVERIFY(level.second.first.isValid() && level.second.second.isValid());
        previous = level.first;
        ++i;
    }
}

void TestContour::steppedColoursMatchBands_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("flip");
    QTest::newRow("quarters") << 0.0 << 1.0 << 0.25 << false;
    QTest::newRow("quarters flipped") << 0.0 << 1.0 << 0.25 << true;
    QTest::newRow("nineteen bands") << 0.1 << 7.3 << (7.3 - 0.1) / 19 << false;
    QTest::newRow("awkward decimals") << 0.3 << 2.9 << 0.1 << false;
    QTest::newRow("gl scene step") << -2.5 << 4.0 << 6.5 / 256 << true;
    QTest::newRow("uneven last band") << 0.0 << 1.0 << 0.3 << false;
}

void TestContour::steppedColoursMatchBands()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);
    QFETCH(bool, flip);
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(min, max, step, flip);
    const auto& levels = map.colorMap();
    QVERIFY(levels.size() >= 2);
    QCOMPARE(levels.begin()->second.first, flip ? QColor(255, 0, 0) : QColor(0, 0, 255));
    QCOMPARE(std::prev(levels.end())->second.first, flip ? QColor(0, 0, 255) : QColor(255, 0, 0));
    for (auto it = levels.begin(); std::next(it) != levels.end(); ++it) {
        const double low = it->first;
        const double high = std::next(it)->first;
        const QColor band = it->second.first;
        QCOMPARE(map.value_to_color(low), band);
        QCOMPARE(map.value_to_color(0.5 * (low + high)), band);
        QCOMPARE(map.value_to_color(std::nextafter(high, low)), band);
        // The top of a band is the smooth colour there.
        const double t = (high - min) / (max - min);
        QCOMPARE(it->second.second, RKColormap::spectrum(flip ? 1.0 - t : t));
    }
    // Max starts no band and keeps the last band's colour.
    QCOMPARE(map.value_to_color(max), std::prev(levels.end())->second.first);
}

void TestContour::polygon_data()
{
    QTest::addColumn<Triangle>("triangle");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("area"); // of the unit triangle of area 8
    QTest::newRow("wholly inside") << unitTriangle(1, 2, 3) << 0.0 << 5.0 << 3 << 8.0;
    QTest::newRow("wholly below") << unitTriangle(1, 2, 3) << 4.0 << 5.0 << 0 << 0.0;
    QTest::newRow("low above high") << unitTriangle(1, 2, 3) << 5.0 << 0.0 << 0 << 0.0;
    QTest::newRow("zero-width band") << unitTriangle(1, 2, 3) << 2.0 << 2.0 << 0 << 0.0;
    QTest::newRow("cut one corner") << unitTriangle(0, 0, 1) << 0.5 << 2.0 << 3 << 2.0;
    QTest::newRow("strip through middle") << unitTriangle(0, 1, 2) << 0.5 << 1.5 << 5 << 6.0;
    QTest::newRow("edge on low, band above") << unitTriangle(0, 0, 1) << 0.0 << 0.5 << 4 << 6.0;
    QTest::newRow("edge on high, band below") << unitTriangle(0, 0, 1) << -1.0 << 0.0 << 0 << 0.0;
    QTest::newRow("vertex on high, band below") << unitTriangle(0, 1, 1) << -1.0 << 0.0 << 0 << 0.0;
    QTest::newRow("vertex on level, split") << unitTriangle(-1, 0, 1) << -1.0 << 0.0 << 3 << 4.0;
    QTest::newRow("flat inside") << unitTriangle(2, 2, 2) << 1.0 << 3.0 << 3 << 8.0;
    QTest::newRow("flat on low") << unitTriangle(2, 2, 2) << 2.0 << 3.0 << 3 << 8.0;
    QTest::newRow("flat on high") << unitTriangle(2, 2, 2) << 1.0 << 2.0 << 0 << 0.0;
    QTest::newRow("flat at top, open band") << unitTriangle(2, 2, 2) << 1.0 << kInf << 3 << 8.0;
    QTest::newRow("infinite low") << unitTriangle(0, 0, 1) << -kInf << 0.5 << 4 << 6.0;
    QTest::newRow("nan value") << unitTriangle(0, kNaN, 1) << 0.0 << 1.0 << 0 << 0.0;
    QTest::newRow("nan level") << unitTriangle(0, 1, 2) << kNaN << 1.0 << 0 << 0.0;
    QTest::newRow("nan coordinate") << Triangle{{0, kNaN, 0}, {0, 0, 4}, {0, 1, 2}} << 0.0 << 3.0 << 0 << 0.0;
    QTest::newRow("clockwise keeps winding") << Triangle{{0, 0, 4}, {0, 4, 0}, {0, 1, 2}} << 0.5 << 1.5 << 5 << -6.0;
}

void TestContour::polygon()
{
    QFETCH(Triangle, triangle);
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(int, count);
    QFETCH(double, area);
    double ox[8], oy[8];
    int n = -1;
    MatrixData::calculatePolygon(triangle.x.data(), triangle.y.data(), triangle.v.data(), low, high, ox, oy, n);
    QCOMPARE(n, count);
    if (n == 0)
        return;
    QVERIFY(std::abs(polygonArea(ox, oy, n) - area) < 1e-12);
    if (count == 3 && std::abs(area) == 8.0) { // the whole triangle, vertices in order
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(ox[i], triangle.x[i]);
            QCOMPARE(oy[i], triangle.y[i]);
        }
    }
    for (int i = 0; i < n; ++i) {
        const double v = valueAt(triangle, ox[i], oy[i]);
        QVERIFY2(v >= low - 1e-12 && v <= high + 1e-12, qPrintable(QString::number(v)));
        for (int j = 0; j < i; ++j)
            QVERIFY(ox[i] != ox[j] || oy[i] != oy[j]);
    }
}

// Random triangles with values often snapped onto levels and often flat: the bands of the
// contour walk cover each triangle exactly once, and each level's iso-line runs along the
// outline of the band that starts there.
void TestContour::bandsTileTriangles()
{
    std::mt19937 rng(20240611);
    std::uniform_real_distribution<double> coord(-10.0, 10.0);
    std::uniform_real_distribution<double> value(0.0, 0.999);
    std::uniform_int_distribution<int> level(0, 9);
    std::uniform_int_distribution<int> kind(0, 5);
    const auto snapped = [&] { return level(rng) * 0.1; };
    for (int trial = 0; trial < 20000; ++trial) {
        Triangle t;
        for (int i = 0; i < 3; ++i) {
            t.x[i] = coord(rng);
            t.y[i] = coord(rng);
        }
        const int k = kind(rng);
        for (int i = 0; i < 3; ++i)
            t.v[i] = k == 0 ? value(rng) : k == 1 ? snapped() : (k == 2 && i > 0) ? t.v[0] : (i % 2 ? snapped() : value(rng));
        if (k == 3)
            t.v = {snapped(), snapped(), snapped()};
        if (k == 4)
            t.v[2] = t.v[1] = t.v[0] = snapped();
        const double area = polygonArea(t.x.data(), t.y.data(), 3);
        double sum = 0.0;
        for (int b = 0; b < 10; ++b) {
            const double low = b * 0.1;
            const double high = (b + 1) * 0.1;
            double px[8], py[8], lx[8], ly[8];
            int pn = -1, ln = -1;
            MatrixData::calculatePolygon(t.x.data(), t.y.data(), t.v.data(), low, high, px, py, pn);
            MatrixData::calculateIsoline(t.x.data(), t.y.data(), t.v.data(), low, lx, ly, ln);
            QVERIFY(pn == 0 || (pn >= 3 && pn <= 5));
            QVERIFY(ln == 0 || ln == 2);
            if (pn > 0) {
                const double a = polygonArea(px, py, pn);
                QVERIFY2(a * area >= 0.0, "a band keeps the triangle's winding");
                sum += a;
                for (int i = 0; i < ln; ++i)
                    QVERIFY2(distanceToOutline(lx[i], ly[i], px, py, pn) < 1e-9,
                             qPrintable(QStringLiteral("trial %1 band %2").arg(trial).arg(b)));
            }
            if (ln == 2)
                QVERIFY2(lx[0] != lx[1] || ly[0] != ly[1], "an iso-line is never a point");
        }
        QVERIFY2(std::abs(sum - area) <= 1e-9 * std::max(1.0, std::abs(area)),
                 qPrintable(QStringLiteral("trial %1: %2 vs %3").arg(trial).arg(sum).arg(area)));
    }
}

void TestContour::isoline_data()
{
    QTest::addColumn<Triangle>("triangle");
    QTest::addColumn<double>("level");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("length"); // of the segment on the unit triangle
    QTest::newRow("crosses two edges") << unitTriangle(0, 0, 1) << 0.5 << 2 << 2.0;
    QTest::newRow("through a vertex") << unitTriangle(-1, 0, 1) << 0.0 << 2 << std::hypot(4.0, 2.0);
    QTest::newRow("touches a vertex only") << unitTriangle(0, 1, 2) << 0.0 << 0 << 0.0;
    QTest::newRow("edge on level, third above") << unitTriangle(0, 0, 1) << 0.0 << 2 << 4.0;
    QTest::newRow("edge on level, third below") << unitTriangle(0, 0, -1) << 0.0 << 0 << 0.0;
    QTest::newRow("flat on level") << unitTriangle(3, 3, 3) << 3.0 << 0 << 0.0;
    QTest::newRow("flat off level") << unitTriangle(3, 3, 3) << 2.0 << 0 << 0.0;
    QTest::newRow("level below") << unitTriangle(0, 1, 2) << -1.0 << 0 << 0.0;
    QTest::newRow("nan value") << unitTriangle(kNaN, 1, 2) << 1.5 << 0 << 0.0;
    QTest::newRow("nan level") << unitTriangle(0, 1, 2) << kNaN << 0 << 0.0;
}

void TestContour::isoline()
{
    QFETCH(Triangle, triangle);
    QFETCH(double, level);
    QFETCH(int, count);
    QFETCH(double, length);
    double ox[8], oy[8];
    int n = -1;
    MatrixData::calculateIsoline(triangle.x.data(), triangle.y.data(), triangle.v.data(), level, ox, oy, n);
    QCOMPARE(n, count);
    if (n == 0)
        return;
    QVERIFY(std::abs(std::hypot(ox[1] - ox[0], oy[1] - oy[0]) - length) < 1e-12);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(std::abs(valueAt(triangle, ox[i], oy[i]) - level) < 1e-12);
        QVERIFY(distanceToOutline(ox[i], oy[i], triangle.x.data(), triangle.y.data(), 3) < 1e-12);
    }
}

// Two triangles on either side of an edge, walked in opposite directions: the contour and the
// band outline meet the edge at bit-identical points, so no hairline gap opens between them.
void TestContour::neighboursShareCrossings()
{
    const Triangle left{{0.0, 1.0, -0.7}, {0.0, 1.3, 0.9}, {0.13, 0.71, 0.37}};
    const Triangle right{{1.0, 0.0, 1.9}, {1.3, 0.0, 0.2}, {0.71, 0.13, 0.52}};
    for (double level : {0.2, 0.3, 0.45, 0.6}) {
        double lx[8], ly[8], rx[8], ry[8];
        int ln = 0, rn = 0;
        MatrixData::calculateIsoline(left.x.data(), left.y.data(), left.v.data(), level, lx, ly, ln);
        MatrixData::calculateIsoline(right.x.data(), right.y.data(), right.v.data(), level, rx, ry, rn);
        QCOMPARE(ln, 2);
        QCOMPARE(rn, 2);
        int shared = 0;
        for (int i = 0; i < 2; ++i)
            for (int j = 0; j < 2; ++j)
                shared += lx[i] == rx[j] && ly[i] == ry[j];
        QCOMPARE(shared, 1);
        double px[8], py[8];
        int pn = 0;
        MatrixData::calculatePolygon(right.x.data(), right.y.data(), right.v.data(), level, 1.0, px, py, pn);
        int onPolygon = 0;
        for (int i = 0; i < 2; ++i)
            for (int j = 0; j < pn; ++j)
                onPolygon += lx[i] == px[j] && ly[i] == py[j];
        QCOMPARE(onPolygon, 1);
    }
}

void TestContour::pointInOrOut_data()
{
    QTest::addColumn<QPolygonF>("polygon"); // a NaN vertex stands for a blank row
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("inside");
    const QPolygonF square({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    // A U open at the top: the notch between the arms is outside.
    const QPolygonF u({{0, 0}, {9, 0}, {9, 9}, {6, 9}, {6, 3}, {3, 3}, {3, 9}, {0, 9}});
    const QPolygonF slanted({{0, 0}, {0.3, 0}, {0.3, 0.3}});
    QTest::newRow("centre") << square << QPointF(5, 5) << true;
    QTest::newRow("outside") << square << QPointF(15, 5) << false;
    QTest::newRow("on an edge") << square << QPointF(5, 0) << true;
    QTest::newRow("on the closing edge") << square << QPointF(0, 5) << true;
    QTest::newRow("on a vertex") << square << QPointF(10, 10) << true;
    QTest::newRow("just outside an edge") << square << QPointF(10.000001, 5) << false;
    QTest::newRow("ray along an edge") << square << QPointF(-1, 10) << false;
    QTest::newRow("ray through a vertex") << poly({{0, 0}, {5, 5}, {10, 0}, {10, 10}, {0, 10}}) << QPointF(-1, 5)
                                          << false;
    QTest::newRow("inside, ray through a vertex") << poly({{0, 0}, {5, 5}, {10, 0}, {10, 10}, {0, 10}})
                                                  << QPointF(2, 5) << true;
    QTest::newRow("in the notch") << u << QPointF(4.5, 6) << false;
    QTest::newRow("in an arm at a vertex's height") << u << QPointF(1, 3) << true;
    QTest::newRow("notch floor") << u << QPointF(4.5, 3) << true;
    QTest::newRow("on a slanted edge") << slanted << QPointF(0.1, 0.1) << true;
    QTest::newRow("beside a slanted edge") << slanted << QPointF(0.1, 0.1000001) << false;
    QTest::newRow("blank rows skipped") << poly({{0, 0}, {10, 0}, {qQNaN(), qQNaN()}, {10, 10}, {0, 10}})
                                        << QPointF(9, 9) << true;
    QTest::newRow("self-crossing bow tie, a lobe") << poly({{0, 0}, {10, 10}, {10, 0}, {0, 10}}) << QPointF(9, 5)
                                                  << true;
    QTest::newRow("bow tie, above the waist") << poly({{0, 0}, {10, 10}, {10, 0}, {0, 10}}) << QPointF(5, 8)
                                             << false;
    QTest::newRow("two points only") << poly({{0, 0}, {10, 10}}) << QPointF(5, 5) << false;
    QTest::newRow("three, one blank") << poly({{0, 0}, {qQNaN(), qQNaN()}, {10, 10}}) << QPointF(5, 5) << false;
    QTest::newRow("nan point") << square << QPointF(qQNaN(), 5) << false;
}

void TestContour::pointInOrOut()
{
    QFETCH(QPolygonF, polygon);
    QFETCH(QPointF, point);
    QFETCH(bool, inside);
    MatrixData lasso(QStringLiteral("lasso"), polygon.size(), 1, QVariant::PointF, true);
    for (int r = 0; r < polygon.size(); ++r) {
        const QPointF p = polygon.at(r);
        QVERIFY(lasso.setValue(r, 0, std::isnan(p.x()) ? QVariant() : QVariant(p)));
    }
    QCOMPARE(lasso.pointInOrOut(point), inside);
}

void TestContour::pointInOrOutNeedsPoints()
{
    MatrixData numbers(QStringLiteral("numbers"), 4, 1, QVariant::Double, true);
    for (int r = 0; r < 4; ++r)
        numbers.setValue(r, 0, QVariant(double(r)));
    QVERIFY(!numbers.pointInOrOut(QPointF(1, 1)));
    MatrixData group(QStringLiteral("group"), -1, -1, QVariant::String, true);
    QVERIFY(!group.pointInOrOut(QPointF(0, 0)));
    MatrixData empty(QStringLiteral("empty"), 0, 1, QVariant::PointF, true);
    QVERIFY(!empty.pointInOrOut(QPointF(0, 0)));
}

QTEST_GUILESS_MAIN(TestContour)
#include "tst_contour.moc"

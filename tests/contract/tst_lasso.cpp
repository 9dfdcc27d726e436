// The lasso test on many points: MatrixData::pointInOrOut answers from an outline prepared once
// (edges sorted into height bands), and must pick exactly the points that testing every edge of
// the polygon picks. The reference below is that plain walk over all edges; random outlines of
// every awkward kind are compared against it point by point. Then the prepared outline's life:
// rebuilt whenever the column changes, and small enough per point to be worth having.
#include "LassoOutline.h"

#include <CellColumn.h>
#include <LassoEdgeTable.h>
#include <MatrixData.h>

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using rkBase::LassoEdgeTable;
using rkBase::MatrixData;

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// The whole polygon walked for one point, as the lasso was tested before it was prepared:
// vertices are the finite rows (NaN stands for a blank row), the tolerance a billionth of the
// extent, a point on an edge is inside, otherwise even-odd crossings of a ray towards +x with
// the half-open rule on y.
bool referenceInside(const std::vector<QPointF>& rows, const QPointF& point)
{
    if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
        return false;
    std::vector<QPointF> polygon;
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
    for (const QPointF& p : rows) {
        if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
            continue;
        if (polygon.empty()) {
            minX = maxX = p.x();
            minY = maxY = p.y();
        } else {
            minX = std::min(minX, p.x());
            maxX = std::max(maxX, p.x());
            minY = std::min(minY, p.y());
            maxY = std::max(maxY, p.y());
        }
        polygon.push_back(p);
    }
    if (polygon.size() < 3)
        return false;
    const double px = point.x();
    const double py = point.y();
    const double tolerance = 1e-9 * std::max(maxX - minX, maxY - minY);
    if (px < minX - tolerance || px > maxX + tolerance || py < minY - tolerance || py > maxY + tolerance)
        return false;
    bool inside = false;
    const std::size_t n = polygon.size();
    for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
        const double xi = polygon[i].x(), yi = polygon[i].y();
        const double xj = polygon[j].x(), yj = polygon[j].y();
        const double dx = xi - xj, dy = yi - yj;
        const double length = std::hypot(dx, dy);
        if (length <= tolerance) {
            if (std::hypot(px - xi, py - yi) <= tolerance)
                return true;
        } else {
            const double distance = std::abs(dx * (py - yj) - dy * (px - xj)) / length;
            const double along = (dx * (px - xj) + dy * (py - yj)) / length;
            if (distance <= tolerance && along >= -tolerance && along <= length + tolerance)
                return true;
        }
        if ((yi > py) != (yj > py)) {
            const double xCross = xj + (py - yj) * dx / dy;
            if (px < xCross)
                inside = !inside;
        }
    }
    return inside;
}

// A one-column point node over the rows; NaN rows are left blank, other non-finite rows stored.
std::unique_ptr<MatrixData> lassoNode(const std::vector<QPointF>& rows)
{
    auto node = std::make_unique<MatrixData>(QStringLiteral("lasso"), int(rows.size()), 1, QVariant::PointF, true);
    for (int r = 0; r < int(rows.size()); ++r) {
        const QPointF& p = rows[std::size_t(r)];
        if (std::isnan(p.x()) || std::isnan(p.y()))
            node->setValue(r, 0, QVariant());
        else
            node->setPointValue(r, p);
    }
    return node;
}

enum Family {
    HandDrawn,       // a wobbly loop of many short edges, as a mouse draws it
    Scribble,        // vertices anywhere: edges cross each other
    IntegerGrid,     // small integers: collinear runs, edges along the ray, points on vertices
    RepeatedVertices,// zero-length and back-tracking edges
    BlankAndInfinite,// rows to skip between the vertices
    FarFromOrigin,   // a lasso of extent 1 at 1e7: differences lose the high digits
    Tiny,            // an extent of 1e-200: the tolerance is near the subnormals
    Huge,            // an extent of 1e200: products of differences overflow
    Overflowing,     // vertices at +-1.7e308: the extent itself is infinite
    Flat,            // every vertex on one line
    Spikes,          // long edges that all span the height
};

struct Case {
    std::vector<QPointF> rows;
    std::vector<QPointF> points;
};

double uniform(std::mt19937_64& rng, double lo, double hi)
{
    return std::uniform_real_distribution<double>(lo, hi)(rng);
}

std::vector<QPointF> outline(Family family, std::mt19937_64& rng)
{
    std::vector<QPointF> rows;
    const int n = std::uniform_int_distribution<int>(3, family == HandDrawn || family == Spikes ? 400 : 40)(rng);
    switch (family) {
    case HandDrawn: {
        const double cx = uniform(rng, 0, 1000), cy = uniform(rng, 0, 800), r = uniform(rng, 10, 400);
        for (int i = 0; i < n; ++i) {
            const double a = 2 * M_PI * i / n;
            const double k = r * (1.0 + 0.3 * std::sin(5 * a + uniform(rng, 0, 0.3)) + uniform(rng, -0.05, 0.05));
            rows.emplace_back(cx + k * std::cos(a), cy + k * std::sin(a));
        }
        break;
    }
    case Scribble:
        for (int i = 0; i < n; ++i)
            rows.emplace_back(uniform(rng, -50, 50), uniform(rng, -50, 50));
        break;
    case IntegerGrid:
        for (int i = 0; i < n; ++i)
            rows.emplace_back(std::uniform_int_distribution<int>(0, 6)(rng), std::uniform_int_distribution<int>(0, 6)(rng));
        break;
    case RepeatedVertices:
        for (int i = 0; i < n; ++i) {
            const QPointF p(std::uniform_int_distribution<int>(0, 20)(rng) * 0.5, uniform(rng, 0, 10));
            rows.push_back(p);
            if (i % 3 == 0)
                rows.push_back(p);
            if (i % 5 == 0 && rows.size() > 2)
                rows.push_back(rows[rows.size() - 3]);
        }
        break;
    case BlankAndInfinite:
        for (int i = 0; i < n; ++i) {
            switch (std::uniform_int_distribution<int>(0, 5)(rng)) {
            case 0: rows.emplace_back(kNaN, kNaN); break;
            case 1: rows.emplace_back(kInf, 3.0); break;
            case 2: rows.emplace_back(2.0, -kInf); break;
            default: rows.emplace_back(uniform(rng, 0, 10), uniform(rng, 0, 10));
            }
        }
        break;
    case FarFromOrigin:
        for (int i = 0; i < n; ++i)
            rows.emplace_back(1e7 + uniform(rng, 0, 1), -3e7 + uniform(rng, 0, 1));
        break;
    case Tiny:
        for (int i = 0; i < n; ++i)
            rows.emplace_back(uniform(rng, 0, 1e-200), uniform(rng, 0, 1e-200));
        break;
    case Huge:
        for (int i = 0; i < n; ++i)
            rows.emplace_back(uniform(rng, -1e200, 1e200), uniform(rng, -1e200, 1e200));
        break;
    case Overflowing:
        for (int i = 0; i < n; ++i)
            rows.emplace_back(1.7e308 * uniform(rng, -1, 1), 1.7e308 * uniform(rng, -1, 1));
        break;
    case Flat: {
        const bool horizontal = rng() % 2;
        for (int i = 0; i < n; ++i) {
            const double t = uniform(rng, 0, 10);
            rows.push_back(horizontal ? QPointF(t, 4.0) : QPointF(t, 2 * t + 1));
        }
        break;
    }
    case Spikes:
        for (int i = 0; i < n; ++i)
            rows.emplace_back(i, i % 2 ? 1000.0 : uniform(rng, 0, 10));
        break;
    }
    return rows;
}

// Points that probe the awkward places: each vertex, each edge's middle, the heights of the
// vertices (rays through them), both sides of every edge around the tolerance and past its
// ends, and plain random points over the box with a margin.
std::vector<QPointF> probes(const std::vector<QPointF>& rows, std::mt19937_64& rng)
{
    std::vector<QPointF> v;
    for (const QPointF& p : rows)
        if (std::isfinite(p.x()) && std::isfinite(p.y()))
            v.push_back(p);
    std::vector<QPointF> points{{kNaN, 0.0}, {0.0, kInf}, {-kInf, kNaN}};
    if (v.empty())
        return points;
    double minX = v[0].x(), maxX = minX, minY = v[0].y(), maxY = minY;
    for (const QPointF& p : v) {
        minX = std::min(minX, p.x());
        maxX = std::max(maxX, p.x());
        minY = std::min(minY, p.y());
        maxY = std::max(maxY, p.y());
    }
    const double w = maxX - minX, h = maxY - minY;
    // Infinite for an overflowing extent: the probes near the edges then sit on them.
    const double tolerance = std::isfinite(std::max(w, h)) ? 1e-9 * std::max(w, h) : 0.0;
    // Written so that an extent beyond the largest double still gives finite points.
    auto lerp = [](double a, double b, double t) { return a * (1 - t) + b * t; };
    auto anywhere = [&] {
        return QPointF(lerp(minX, maxX, uniform(rng, -0.05, 1.05)), lerp(minY, maxY, uniform(rng, -0.05, 1.05)));
    };
    const double offsets[] = {0.0, 0.5, 1.0 - 1e-6, 1.0, 1.0 + 1e-6, 1.2, 1.4142, 1.5, 1.9, 2.0, 2.1, 3.0};
    for (std::size_t i = 0; i < v.size(); ++i) {
        const QPointF a = v[i], b = v[(i + 1) % v.size()];
        points.push_back(a);
        points.push_back((a + b) / 2);
        points.emplace_back(lerp(minX, maxX, uniform(rng, -0.05, 1.05)), a.y());
        const double dx = b.x() - a.x(), dy = b.y() - a.y();
        const double length = std::hypot(dx, dy);
        for (int k = 0; k < 4; ++k) {
            const double d = offsets[rng() % std::size(offsets)] * tolerance * (rng() % 2 ? 1 : -1);
            const double t = k == 0 ? uniform(rng, 0, 1) : k == 1 ? 1.0 : k == 2 ? 0.0 : uniform(rng, -0.001, 1.001);
            if (std::isfinite(length) && length > 0) {
                const double ux = dx / length, uy = dy / length;
                const double beyond = (k == 1 ? 1 : k == 2 ? -1 : 0) * std::abs(d);
                points.emplace_back(a.x() + t * dx - uy * d + ux * beyond, a.y() + t * dy + ux * d + uy * beyond);
            } else {
                points.emplace_back(lerp(a.x(), b.x(), t) + d, lerp(a.y(), b.y(), t) - d);
            }
        }
    }
    for (int k = 0; k < 200; ++k)
        points.push_back(anywhere());
    return points;
}

QString describe(const std::vector<QPointF>& rows, const QPointF& point)
{
    QStringList parts;
    for (const QPointF& p : rows)
        parts << QString::number(p.x(), 'g', 17) + QLatin1Char(',') + QString::number(p.y(), 'g', 17);
    return QStringLiteral("point %1,%2 against %3")
        .arg(point.x(), 0, 'g', 17)
        .arg(point.y(), 0, 'g', 17)
        .arg(parts.join(QLatin1Char(' ')));
}

} // namespace

class TestLasso : public QObject
{
    Q_OBJECT
private slots:
    void sameRowsAsEveryEdge_data();
    void sameRowsAsEveryEdge();
    void followsTheColumn_data();
    void followsTheColumn();
    void copiesHaveTheirOwnOutline();
    void drawnLassoMeetsFewEdges();
};

void TestLasso::sameRowsAsEveryEdge_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("outlines");
    QTest::newRow("hand-drawn") << int(HandDrawn) << 60;
    QTest::newRow("self-crossing scribble") << int(Scribble) << 150;
    QTest::newRow("integer grid") << int(IntegerGrid) << 300;
    QTest::newRow("repeated vertices") << int(RepeatedVertices) << 150;
    QTest::newRow("blank and infinite rows") << int(BlankAndInfinite) << 150;
    QTest::newRow("far from the origin") << int(FarFromOrigin) << 100;
    QTest::newRow("tiny extent") << int(Tiny) << 60;
    QTest::newRow("huge extent") << int(Huge) << 60;
    QTest::newRow("overflowing extent") << int(Overflowing) << 60;
    QTest::newRow("flat") << int(Flat) << 100;
    QTest::newRow("spikes across the height") << int(Spikes) << 20;
}

void TestLasso::sameRowsAsEveryEdge()
{
    QFETCH(int, family);
    QFETCH(int, outlines);
    std::mt19937_64 rng(1000 + family);
    long long inside = 0, tested = 0;
    for (int o = 0; o < outlines; ++o) {
        const std::vector<QPointF> rows = outline(Family(family), rng);
        const auto node = lassoNode(rows);
        for (const QPointF& point : probes(rows, rng)) {
            const bool want = referenceInside(rows, point);
            if (node->pointInOrOut(point) != want)
                QFAIL(qPrintable(QStringLiteral("expected %1 for ").arg(want) + describe(rows, point)));
            inside += want;
            ++tested;
        }
    }
    // Both answers come up often enough for the comparison to mean something.
    QVERIFY2(inside > tested / 50 && inside < tested - tested / 50,
             qPrintable(QStringLiteral("%1 of %2 inside").arg(inside).arg(tested)));
}

enum Edit { MoveVertex, AppendVertex, BlankVertex, RemoveRow, InsertRow, AssignOtherNode, Retype };

void TestLasso::followsTheColumn_data()
{
    QTest::addColumn<int>("edit");
    QTest::addColumn<QPointF>("probe");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");
    // The square (0,0) (10,0) (10,10) (0,10), asked once before each edit.
    QTest::newRow("a vertex moved out") << int(MoveVertex) << QPointF(15, 5) << false << true;
    QTest::newRow("a vertex appended") << int(AppendVertex) << QPointF(-3, 5) << false << true;
    QTest::newRow("a vertex blanked") << int(BlankVertex) << QPointF(9, 9) << true << false;
    QTest::newRow("a row removed") << int(RemoveRow) << QPointF(9, 9) << true << false;
    QTest::newRow("a row inserted") << int(InsertRow) << QPointF(5, 12) << false << true;
    QTest::newRow("another node assigned") << int(AssignOtherNode) << QPointF(25, 25) << false << true;
    QTest::newRow("retyped to numbers") << int(Retype) << QPointF(5, 5) << true << false;
}

void TestLasso::followsTheColumn()
{
    QFETCH(int, edit);
    QFETCH(QPointF, probe);
    QFETCH(bool, before);
    QFETCH(bool, after);
    const auto node = lassoNode({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    QCOMPARE(node->pointInOrOut(probe), before);
    QCOMPARE(node->pointInOrOut(QPointF(1, 1)), true); // asked again: the prepared outline
    switch (Edit(edit)) {
    case MoveVertex: QVERIFY(node->setValue(1, 0, QPointF(20, 0))); break;
    case AppendVertex: QVERIFY(node->setValue(4, 0, QPointF(-5, 5))); break;
    case BlankVertex: QVERIFY(node->setValue(2, 0, QVariant())); break;
    case RemoveRow: QVERIFY(node->removeRowFromEachColumn(2)); break;
    case InsertRow:
        QVERIFY(node->insertRowAtPos(3) == 3);
        QVERIFY(node->setValue(3, 0, QPointF(5, 15)));
        break;
    case AssignOtherNode: *node = *lassoNode({{0, 0}, {30, 0}, {30, 30}, {0, 30}}); break;
    case Retype: node->setCellType(QVariant::Double); break;
    }
    QCOMPARE(node->pointInOrOut(probe), after);
}

void TestLasso::copiesHaveTheirOwnOutline()
{
    const auto small = lassoNode({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    QVERIFY(!small->pointInOrOut(QPointF(15, 5)));
    MatrixData copy(*small);
    QVERIFY(!copy.pointInOrOut(QPointF(15, 5)));
    QVERIFY(copy.setValue(1, 0, QPointF(20, 0)));
    QVERIFY(copy.pointInOrOut(QPointF(15, 5)));
    QVERIFY(!small->pointInOrOut(QPointF(15, 5)));

    // A column copied or moved takes a new identity; the source of a move counts as changed.
    rkBase::CellColumn a(QVariant::PointF, 3);
    const rkBase::CellColumn b(a);
    QVERIFY(b.identity() != a.identity());
    const auto revision = a.revision();
    rkBase::CellColumn c(std::move(a));
    QVERIFY(c.identity() != b.identity());
    QVERIFY(a.revision() != revision);
}

void TestLasso::drawnLassoMeetsFewEdges()
{
    // The point of preparing the outline: a point of a drawn lasso's box meets a handful of its
    // 2000 edges, not all of them, while a zigzag whose edges all span the height keeps a small
    // table.
    const auto rows = lassoOutline(2000);
    const auto node = lassoNode(rows);
    const LassoEdgeTable table(*node->cellColumn(0));
    QCOMPARE(table.vertexCount(), 2000);
    int most = 0;
    for (double y = 0; y <= 800; y += 0.25)
        most = std::max(most, table.edgesNear(y));
    QVERIFY2(most <= 24, qPrintable(QString::number(most)));

    std::vector<QPointF> zigzag;
    for (int i = 0; i < 5000; ++i)
        zigzag.emplace_back(i, i % 2 ? 1000.0 : 0.0);
    const auto spiky = lassoNode(zigzag);
    const LassoEdgeTable spikes(*spiky->cellColumn(0));
    QVERIFY(spikes.edgesNear(500) <= 5000);
    QVERIFY(qint64(spikes.bandCount()) * 5000 <= 16LL * 5000 + 4096);
    for (const QPointF& p : {QPointF(1, 1), QPointF(1.5, 999), QPointF(2500.25, 500), QPointF(4998, 2)})
        QCOMPARE(spikes.contains(p.x(), p.y()), referenceInside(zigzag, p));
}

QTEST_GUILESS_MAIN(TestLasso)
#include "tst_lasso.moc"

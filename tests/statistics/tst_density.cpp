// Density grids: the four-corner count of projected poles and dip directions against a plain
// recount through the chart's own rotation (a QTransform), placements worked by hand, the rim
// wrap and its painter diagnostic, the row filter, bias weights and grids that cannot count.
#include "LoadedOrientations.h"
#include "PaintRecorder.h"

#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QRelationshipItemModel.h>
#include <StereoNetGeometry.h>

#include <QPainter>
#include <QTransform>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>
#include <random>

using namespace rkBase;
using Model = QRelationshipItemModel;
using Grid = std::vector<std::vector<double>>;

namespace {
constexpr double kPi = 3.14159265358979323846;

using testorientations::Loaded;
using testorientations::load;
using testorientations::net;

Grid read(const MatrixDataArray& a)
{
    Grid g(static_cast<std::size_t>(a.rowCount()), std::vector<double>(static_cast<std::size_t>(a.columnCount())));
    for (int i = 0; i < a.rowCount(); ++i)
        for (int j = 0; j < a.columnCount(); ++j)
            g[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = a.toDouble(i, j);
    return g;
}

double total(const Grid& g)
{
    double s = 0.0;
    for (const auto& row : g)
        for (double v : row)
            s += v;
    return s;
}

// The count written out plainly: the chart's rotation about the centre, the scan for the first
// cell, four corners, then the rim pass with its scratch grid.
Grid recount(const QList<QPointF>& points, int rows, int columns, bool poles, const StereoNetGeometry& g,
             const std::vector<double>& weights = {})
{
    Grid grid(static_cast<std::size_t>(rows), std::vector<double>(static_cast<std::size_t>(columns), 0.0));
    const QRectF r = g.gridRect;
    std::vector<double> xs, ys;
    for (int i = 0; i < rows; ++i)
        xs.push_back(r.x() + i * r.width() / (rows - 1));
    for (int j = 0; j < columns; ++j)
        ys.push_back(r.y() + j * r.height() / (columns - 1));
    const QPointF c = g.centre;
    for (int n = 0; n < points.size(); ++n) {
        const QPointF& p = points[n];
        const double w = weights.empty() ? 1.0 : weights[static_cast<std::size_t>(n)];
        QTransform m;
        m.translate(c.x(), c.y());
        m.rotate(p.y() + 270.0);
        m.translate(-c.x(), -c.y());
        const double h = p.x() * kPi / 180.0 / 2.0;
        QPointF pixel;
        if (poles) {
            const double rr = g.equalArea ? std::sin(h) * std::sqrt(2.0) * g.radius : std::tan(h) * g.radius;
            pixel = m.map(QPointF(c.x() - rr, c.y()));
        } else {
            const double q = kPi / 4.0 - h;
            const double rr = g.equalArea ? std::sin(q) * std::sqrt(2.0) * g.radius : std::tan(q) * g.radius;
            pixel = m.map(QPointF(c.x() + rr, c.y())) - g.offset;
        }
        int ci = -1, cj = -1;
        for (int i = 0; i + 1 < rows && ci < 0; ++i)
            if (xs[i] <= pixel.x() && pixel.x() <= xs[i + 1])
                ci = i;
        for (int j = 0; j + 1 < columns && cj < 0; ++j)
            if (ys[j] <= pixel.y() && pixel.y() <= ys[j + 1])
                cj = j;
        if (ci < 0 || cj < 0)
            continue;
        grid[ci][cj] += w;
        grid[ci + 1][cj] += w;
        grid[ci + 1][cj + 1] += w;
        grid[ci][cj + 1] += w;
    }
    const double dx = r.width() / (rows - 1), dy = r.height() / (columns - 1);
    const double d = std::sqrt(dx * dx + dy * dy);
    Grid scratch(grid.size(), std::vector<double>(grid[0].size(), 0.0));
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) {
            const double dist = QLineF(c, QPointF(r.x() + i * dx, r.y() + j * dy)).length();
            if (dist < g.radius - 0.4 * d || dist > g.radius + 0.4 * d)
                continue;
            const double a = grid[i][j], b = grid[rows - 1 - i][columns - 1 - j];
            if ((a == 0 && b == 0) || scratch[i][j] != 0)
                continue;
            scratch[i][j] = scratch[rows - 1 - i][columns - 1 - j] = a + b;
        }
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j)
            if (scratch[i][j] != 0)
                grid[i][j] = scratch[i][j];
    return grid;
}

// The grid's nodes that are not zero, as "i,j=v".
QStringList nonZero(const Grid& g)
{
    QStringList out;
    for (std::size_t i = 0; i < g.size(); ++i)
        for (std::size_t j = 0; j < g[i].size(); ++j)
            if (g[i][j] != 0.0)
                out << QStringLiteral("%1,%2=%3").arg(i).arg(j).arg(g[i][j]);
    return out;
}

} // namespace

class TestDensity : public QObject
{
    Q_OBJECT
private slots:
    void matchesRecount_data();
    void matchesRecount();
    void placements_data();
    void placements();
    void rimWrap_data();
    void rimWrap();
    void rimDiagnostic();
    void rowFilter_data();
    void rowFilter();
    void biasWeights();
    void gridsThatCannotCount_data();
    void gridsThatCannotCount();
};

void TestDensity::matchesRecount_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<bool>("poles");
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<bool>("selectAll"); // a selection of every row takes the row-by-row path
    QTest::newRow("poles, equal area, 101") << 101 << 101 << true << true << QPointF() << false;
    QTest::newRow("poles, equal angle, 21") << 21 << 21 << true << false << QPointF() << false;
    QTest::newRow("dip directions, equal area") << 51 << 51 << false << true << QPointF() << false;
    QTest::newRow("dip directions, equal angle, zoomed") << 41 << 41 << false << false << QPointF(13.5, -7.25) << false;
    QTest::newRow("poles, 31 x 17") << 31 << 17 << true << true << QPointF() << false;
    QTest::newRow("dip directions, 2 x 2") << 2 << 2 << false << true << QPointF(5, 5) << false;
    QTest::newRow("row by row: poles, equal angle") << 61 << 61 << true << false << QPointF() << true;
    QTest::newRow("row by row: dip directions, equal area") << 61 << 61 << false << true << QPointF(3, 4) << true;
    QTest::newRow("row by row: dip directions, equal angle") << 61 << 61 << false << false << QPointF() << true;
}

// Random orientations, among them dips beyond 90 and below -90 that the closed forms must not
// take and azimuths beyond a turn, count exactly as the plain recount does.
void TestDensity::matchesRecount()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(bool, poles);
    QFETCH(bool, equalArea);
    QFETCH(QPointF, offset);
    QFETCH(bool, selectAll);
    std::mt19937 rng(17);
    std::uniform_real_distribution<double> dip(0.0, 90.0), azimuth(0.0, 360.0), wild(-400.0, 400.0);
    QList<QPointF> points;
    for (int i = 0; i < 3000; ++i)
        points << QPointF(i % 10 == 0 ? wild(rng) : dip(rng), i % 7 == 0 ? wild(rng) : azimuth(rng));
    // Points exactly on a node line or on the rectangle's edge are left to placements(): there
    // the chart's matrix and the closed forms may round to either side.
    // The model's load folds negative dips; the recount must see the same points.
    std::vector<int> all;
    for (int r = 0; selectAll && r < points.size(); ++r)
        all.push_back(r);
    Loaded l = load(points, selectAll ? Model::HighlightSelected : Model::ShowAll, all);
    QList<QPointF> loaded;
    for (int r = 0; r < l.model->rowCount(); ++r)
        loaded << l.model->data()->value(r, 0).toPointF();
    const StereoNetGeometry g = net(equalArea, offset);
    MatrixDataArray grid(QStringLiteral("g"), 0, 1, QVariant::Double);
    l.model->countingOutProjections(rows, columns, &grid, poles, false, g);
    QCOMPARE(grid.rowCount(), rows);
    QCOMPARE(grid.columnCount(), columns);
    const Grid expected = recount(loaded, rows, columns, poles, g);
    QCOMPARE(nonZero(read(grid)), nonZero(expected));
}

void TestDensity::placements_data()
{
    QTest::addColumn<QPointF>("orientation");
    QTest::addColumn<bool>("poles");
    QTest::addColumn<QStringList>("cells");
    // 21 x 21 nodes 10 pixels apart over a net of radius 100 about (100, 100).
    QTest::newRow("horizontal plane: pole on the centre node, lower cell")
        << QPointF(0, 0) << true << QStringList{"9,9=1", "9,10=1", "10,9=1", "10,10=1"};
    // sqrt(2) 100 sin 15 = 36.6 at 45 degrees: (74.1, 125.9).
    QTest::newRow("pole of 30/045") << QPointF(30, 45) << true << QStringList{"7,12=1", "7,13=1", "8,12=1", "8,13=1"};
    // Pole of 30/090 at (63.4, 100): on the centre row, so the upper row of cells is not taken.
    QTest::newRow("pole of 30/090 on a node line")
        << QPointF(30, 90) << true << QStringList{"6,9=1", "6,10=1", "7,9=1", "7,10=1"};
    // Dip direction of 0/000 at the top of the rim (100, 0): the rim nodes (10,0) and (9,0)
    // share with (10,20) and (11,20); (9,1) lies inside the rim band and keeps its count.
    QTest::newRow("dip direction on the rim") << QPointF(0, 0) << false
                                              << QStringList{"9,0=1", "9,1=1", "10,0=1", "10,1=1", "10,20=1", "11,20=1"};
}

void TestDensity::placements()
{
    QFETCH(QPointF, orientation);
    QFETCH(bool, poles);
    QFETCH(QStringList, cells);
    Loaded l = load({orientation});
    l.model->countingOutProjections(21, 21, poles, false, net());
    MatrixDataArray* grid = poles ? l.model->contourGridPoles() : l.model->contourGridDipDir();
    QCOMPARE(nonZero(read(*grid)), cells);
    // The other grid is left alone.
    QCOMPARE(total(read(*(poles ? l.model->contourGridDipDir() : l.model->contourGridPoles()))), 0.0);
}

void TestDensity::rimWrap_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("pair sums once") << QStringList{"10,0=3", "10,20=2"} << QStringList{"10,0=5", "10,20=5"};
    QTest::newRow("one side empty") << QStringList{"0,10=4"} << QStringList{"0,10=4", "20,10=4"};
    QTest::newRow("inside the rim stays") << QStringList{"10,10=7", "5,5=2"} << QStringList{"5,5=2", "10,10=7"};
    QTest::newRow("corners are off the rim") << QStringList{"0,0=1"} << QStringList{"0,0=1"};
    QTest::newRow("two pairs from the counts before the pass")
        << QStringList{"10,0=1", "10,20=2", "0,10=3", "20,10=4"}
        << QStringList{"0,10=7", "10,0=3", "10,20=3", "20,10=7"};
}

void TestDensity::rimWrap()
{
    QFETCH(QStringList, given);
    QFETCH(QStringList, expected);
    Model model;
    MatrixDataArray grid(QStringLiteral("g"), 21, 21, QVariant::Double);
    for (const QString& cell : given) {
        const QStringList parts = cell.split(QRegularExpression("[,=]"));
        grid.setValue(parts[0].toInt(), parts[1].toInt(), parts[2].toDouble());
    }
    model.calculateTheEdgeEffect(nullptr, &grid, net());
    QCOMPARE(nonZero(read(grid)), expected);
}

// With a painter the pass draws every rim node and its opposite, and changes no count.
void TestDensity::rimDiagnostic()
{
    Model model;
    MatrixDataArray grid(QStringLiteral("g"), 21, 21, QVariant::Double);
    grid.setValue(10, 0, 3.0);
    PaintRecorder device(QSize(200, 200));
    QPainter painter(&device);
    model.calculateTheEdgeEffect(&painter, &grid, net());
    painter.end();
    QCOMPARE(nonZero(read(grid)), QStringList{"10,0=3"});

    const QStringList calls = device.calls(QStringLiteral("point"));
    QVERIFY(!calls.isEmpty());
    QSet<QString> drawn;
    for (const QString& c : calls) {
        QVERIFY2(c.contains(QStringLiteral("pen #ff000080")), qPrintable(c)); // Qt::darkBlue
        drawn.insert(c.section(' ', 1, 1));
    }
    // The rim band of a net of radius 100 on nodes 10 apart: 100 +- 0.4 * 14.14.
    QSet<QString> rim;
    for (int i = 0; i <= 20; ++i)
        for (int j = 0; j <= 20; ++j) {
            const double d = std::hypot(i * 10.0 - 100.0, j * 10.0 - 100.0);
            if (d >= 100 - 0.4 * std::sqrt(200.0) && d <= 100 + 0.4 * std::sqrt(200.0))
                rim.insert(QStringLiteral("%1,%2").arg(i * 10).arg(j * 10));
        }
    QCOMPARE(drawn, rim);
    QCOMPARE(calls.size(), 2 * rim.size());
}

void TestDensity::rowFilter_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<std::vector<int>>("selected");
    QTest::addColumn<double>("counted");
    const std::vector<int> some{1, 3, 4};
    QTest::newRow("show all with a selection") << int(Model::ShowAll) << some << 6.0;
    QTest::newRow("selected only") << int(Model::ShowSelectedOnly) << some << 3.0;
    QTest::newRow("highlighted") << int(Model::HighlightSelected) << some << 3.0;
    QTest::newRow("no selection") << int(Model::HighlightSelected) << std::vector<int>{} << 6.0;
}

// With a part selection only selected points count unless everything is shown; the statistics
// would take all points under "selected only".
void TestDensity::rowFilter()
{
    QFETCH(int, type);
    QFETCH(std::vector<int>, selected);
    QFETCH(double, counted);
    const QList<QPointF> points{{10, 10}, {20, 50}, {30, 100}, {40, 150}, {50, 200}, {60, 250}};
    Loaded l = load(points, Model::DisplayType(type), selected);
    l.model->countingOutProjections(21, 21, true, false, net());
    QCOMPARE(total(read(*l.model->contourGridPoles())), 4 * counted);
}

// Each point weighs its normalised Terzaghi weight at all four corners.
void TestDensity::biasWeights()
{
    std::mt19937 rng(5);
    std::uniform_real_distribution<double> dip(0.0, 60.0), azimuth(0.0, 360.0);
    QList<QPointF> points;
    for (int i = 0; i < 400; ++i)
        points << QPointF(dip(rng), azimuth(rng));
    Loaded l = load(points);
    l.model->setScanline(10.0, 40.0, 20.0);
    double biasTotal = 0.0;
    const int count = l.model->totalBiasWeight(biasTotal);
    QVERIFY(count > 0 && count < points.size()); // some points cannot be corrected
    double expected = 0.0;
    for (int r = 0; r < l.model->rowCount(); ++r)
        expected += l.model->biasCorrection(r, count, biasTotal);
    l.model->countingOutProjections(21, 21, true, true, net());
    const double counted = total(read(*l.model->contourGridPoles()));
    QVERIFY2(std::abs(counted - 4 * expected) < 1e-9 * counted, qPrintable(QString("%1 against %2").arg(counted).arg(4 * expected)));
    // The weights keep the total (the correctable points share their count) but move it about.
    Grid weighted = read(*l.model->contourGridPoles());
    l.model->countingOutProjections(21, 21, true, false, net());
    const Grid plain = read(*l.model->contourGridPoles());
    double moved = 0.0;
    for (std::size_t i = 0; i < plain.size(); ++i)
        for (std::size_t j = 0; j < plain[i].size(); ++j)
            moved = std::max(moved, std::abs(plain[i][j] - weighted[i][j]));
    QVERIFY(moved > 0.5);

    // Node by node, to the last bit: each node sums its points' weights in row order, as four
    // additions per point would.
    std::vector<double> weights;
    QList<QPointF> loaded;
    for (int r = 0; r < l.model->rowCount(); ++r) {
        weights.push_back(l.model->biasCorrection(r, count, biasTotal));
        loaded << l.model->data()->value(r, 0).toPointF();
    }
    l.model->countingOutProjections(21, 21, true, true, net());
    weighted = read(*l.model->contourGridPoles());
    const Grid expectedGrid = recount(loaded, 21, 21, true, net(), weights);
    int differing = 0;
    for (std::size_t i = 0; i < weighted.size(); ++i)
        for (std::size_t j = 0; j < weighted[i].size(); ++j)
            differing += weighted[i][j] != expectedGrid[i][j];
    QCOMPARE(differing, 0);
}

void TestDensity::gridsThatCannotCount_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("wantRows");
    QTest::addColumn<double>("sum");
    QTest::newRow("one node (a size of 0 in the panel)") << 1 << 1 << 10 << 1 << 0.0;
    QTest::newRow("no nodes") << 0 << 0 << 10 << 0 << 0.0;
    QTest::newRow("negative") << -3 << 5 << 10 << 0 << 0.0;
    QTest::newRow("sizes from the grid") << -1 << -1 << 10 << 11 << 40.0;
    QTest::newRow("no points") << 21 << 21 << 0 << 21 << 0.0;
}

// Degenerate grids end with a sized, zero grid; -1 takes the grid's own size; and counting twice
// counts once (the grid keeps cells across a resize).
void TestDensity::gridsThatCannotCount()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(int, points);
    QFETCH(int, wantRows);
    QFETCH(double, sum);
    QList<QPointF> list;
    for (int i = 0; i < points; ++i)
        list << QPointF(5.0 * i, 36.0 * i);
    Loaded l = load(list);
    MatrixDataArray grid(QStringLiteral("g"), 11, 11, QVariant::Double);
    grid.setValue(3, 3, 99.0);
    for (int pass = 0; pass < 2; ++pass) {
        l.model->countingOutProjections(rows, columns, &grid, true, false, net());
        QCOMPARE(grid.rowCount(), wantRows);
        QCOMPARE(total(read(grid)), sum);
    }
    l.model->countingOutProjections(21, 21, nullptr, true, false, net()); // no grid: nothing
}

QTEST_MAIN(TestDensity)
#include "tst_density.moc"

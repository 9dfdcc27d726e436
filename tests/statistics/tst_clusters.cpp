// k-means clusters of the relationship model: plane runs with and without a third dimension,
// stereo runs on orientations, the guards of each, the row filter in both walks, and the
// centres tables.
#include <KMrandom.h>
#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <set>

using namespace rkBase;
using Model = QRelationshipItemModel;

namespace {
const double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Loaded {
    std::unique_ptr<MatrixData> root;
    std::unique_ptr<Model> model;
    MatrixData* third = nullptr;
};

// Rows of (x, y[, third]); a NaN third leaves that cell blank.
Loaded load(const QList<QVector3D>& rows, const QString& xName, const QString& yName, bool withThird,
            Model::DisplayType type = Model::ShowAll, const std::vector<int>& selected = {})
{
    Loaded l;
    l.root.reset(new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true));
    auto* group = new MatrixData(QStringLiteral("Sheet"), -1, -1, QVariant::String, true);
    auto* x = new MatrixData(xName, rows.size(), 1, QVariant::Double, true);
    auto* y = new MatrixData(yName, rows.size(), 1, QVariant::Double, true);
    l.third = new MatrixData(QStringLiteral("depth"), rows.size(), 1, QVariant::Double, true);
    l.root->appendChild(group, true);
    group->appendChild(x, false);
    group->appendChild(y, false);
    group->appendChild(l.third, false);
    for (int r = 0; r < rows.size(); ++r) {
        x->setValue(r, 0, double(rows[r].x()));
        y->setValue(r, 0, double(rows[r].y()));
        if (!std::isnan(rows[r].z()))
            l.third->setValue(r, 0, double(rows[r].z()));
    }
    l.model.reset(new Model);
    l.model->takeNewDataSet(1, type, x, y, selected);
    if (withThird)
        l.model->setThirdDimAttribute(l.third);
    return l;
}

// Three separated groups of 40 rows, interleaved: row r belongs to group r % 3.
QList<QVector3D> groups(double thirdSpread = 0.0)
{
    std::mt19937 rng(9);
    std::normal_distribution<double> noise(0.0, 0.5);
    const QVector3D centre[3] = {{0, 0, 0}, {100, 0, 10}, {0, 100, 20}};
    QList<QVector3D> rows;
    for (int r = 0; r < 120; ++r) {
        const QVector3D& c = centre[r % 3];
        rows << QVector3D(c.x() + float(noise(rng)), c.y() + float(noise(rng)), c.z() + float(thirdSpread * noise(rng)));
    }
    return rows;
}

// Three groups of 40 interleaved rows: the plane groups above as x and y, or, for a stereo run,
// three orientations as dip and azimuth.
Loaded loadGroups(bool stereo, Model::DisplayType type = Model::ShowAll, const std::vector<int>& selected = {})
{
    QList<QVector3D> rows;
    if (stereo) {
        for (int r = 0; r < 120; ++r)
            rows << (r % 3 == 0 ? QVector3D(10, 10, 0) : r % 3 == 1 ? QVector3D(60, 100, 0) : QVector3D(45, 250, 0));
    } else {
        rows = groups();
    }
    return load(rows, stereo ? QStringLiteral("dip") : QStringLiteral("x"),
                stereo ? QStringLiteral("azimuth") : QStringLiteral("y"), false, type, selected);
}

std::vector<int> ids(const Model& m)
{
    std::vector<int> out;
    for (int r = 0; r < m.clusterIDCount(); ++r)
        out.push_back(m.clusterID(r));
    return out;
}

// Rows with the same group share an ID, different groups differ; rows in `out` have -1.
bool groupsFound(const std::vector<int>& id, int groupsCount, const std::set<int>& out = {})
{
    std::vector<int> label(static_cast<std::size_t>(groupsCount), -2);
    std::set<int> used;
    for (int r = 0; r < static_cast<int>(id.size()); ++r) {
        const int v = id[static_cast<std::size_t>(r)];
        if (out.count(r)) {
            if (v != -1)
                return false;
            continue;
        }
        int& l = label[static_cast<std::size_t>(r % groupsCount)];
        if (l == -2) {
            l = v;
            used.insert(v);
        }
        if (v != l || v < 0)
            return false;
    }
    return static_cast<int>(used.size()) == groupsCount;
}
} // namespace

class TestClusters : public QObject
{
    Q_OBJECT
private slots:
    void init() { KMrandom::seed(31); }
    void planeRun_data();
    void planeRun();
    void planeGuards_data();
    void planeGuards();
    void stereoRun();
    void stereoGuards_data();
    void stereoGuards();
    void filteredRowsKeepMinusOne_data();
    void filteredRowsKeepMinusOne();
    void repeatedNameStandsTwice();
    void reloadForgetsClusters_data();
    void reloadForgetsClusters();
};

void TestClusters::planeRun_data()
{
    QTest::addColumn<bool>("third");
    QTest::addColumn<int>("blankRow");
    QTest::newRow("plane") << false << -1;
    QTest::newRow("with a third dimension") << true << -1;
    QTest::newRow("a blank third cell") << true << 58;
}

// The groups come out as the clusters; the table holds their means, their distortions and,
// with a third dimension, the third mean; a row without its third cell gets -1 and the rows
// after it still get their own group's ID.
void TestClusters::planeRun()
{
    QFETCH(bool, third);
    QFETCH(int, blankRow);
    QList<QVector3D> rows = groups(1.0);
    if (blankRow >= 0)
        rows[blankRow].setZ(float(kNaN));
    Loaded l = load(rows, QStringLiteral("porosity"), QStringLiteral("density"), third);
    QVERIFY(l.model->buildClusters_KML(QStringLiteral("Porosity clusters"), 3));
    const std::vector<int> id = ids(*l.model);
    QCOMPARE(static_cast<int>(id.size()), 120);
    std::set<int> out;
    if (blankRow >= 0)
        out.insert(blankRow);
    QVERIFY(groupsFound(id, 3, out));

    QCOMPARE(static_cast<int>(l.model->clusterCentroidSets().size()), 1);
    MatrixDataArray* table = l.model->clusterCentroidSets().front();
    QCOMPARE(table->name(), QStringLiteral("Porosity clusters"));
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(table->columnCount(), third ? 3 : 2);
    for (int g = 0; g < 3; ++g) {
        const int c = id[static_cast<std::size_t>(g)];
        double mx = 0, my = 0, mz = 0, n = 0;
        for (int r = g; r < 120; r += 3)
            if (!out.count(r)) {
                mx += rows[r].x();
                my += rows[r].y();
                mz += third ? rows[r].z() : 0.0;
                ++n;
            }
        mx /= n, my /= n, mz /= n;
        double dist = 0;
        for (int r = g; r < 120; r += 3)
            if (!out.count(r))
                dist += std::pow(rows[r].x() - mx, 2) + std::pow(rows[r].y() - my, 2)
                    + (third ? std::pow(rows[r].z() - mz, 2) : 0.0);
        const QPointF centre = table->value(c, 0).toPointF();
        QVERIFY(std::abs(centre.x() - mx) < 1e-4 && std::abs(centre.y() - my) < 1e-4);
        const QPointF d = table->value(c, 1).toPointF();
        QVERIFY2(std::abs(d.x() - dist) < 1e-6 * dist, qPrintable(QString("%1 against %2").arg(d.x()).arg(dist)));
        QCOMPARE(d.y(), 0.0);
        if (third)
            QVERIFY(std::abs(table->value(c, 2).toPointF().x() - mz) < 1e-4);
    }
}

void TestClusters::planeGuards_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("k");
    QTest::addColumn<bool>("runs");
    QTest::newRow("k of 1") << 10 << 1 << false;
    QTest::newRow("k of 0") << 10 << 0 << false;
    QTest::newRow("negative k") << 10 << -5 << false;
    QTest::newRow("k above the rows") << 10 << 11 << false;
    QTest::newRow("one row") << 1 << 1 << false;
    QTest::newRow("k equal to the rows") << 10 << 10 << true;
    QTest::newRow("k of 2") << 10 << 2 << true;
}

// A refused run keeps the clusters of the last run; one that goes ahead replaces them.
void TestClusters::planeGuards()
{
    QFETCH(int, rows);
    QFETCH(int, k);
    QFETCH(bool, runs);
    QList<QVector3D> list;
    for (int r = 0; r < rows; ++r)
        list << QVector3D(float(r * r), float(3 * r), 0);
    Loaded l = load(list, QStringLiteral("x"), QStringLiteral("y"), false);
    // An earlier run on other data leaves its IDs and its table.
    int* before = nullptr;
    if (rows > 1) {
        QVERIFY(l.model->buildClusters_KML(QStringLiteral("first"), 2));
        before = l.model->clusterIDs();
    }
    const std::vector<int> old = ids(*l.model);
    const std::size_t tables = l.model->clusterCentroidSets().size();
    QCOMPARE(l.model->buildClusters_KML(QStringLiteral("second"), k), runs);
    QCOMPARE(l.model->clusterCentroidSets().size(), tables + (runs ? 1 : 0));
    if (!runs) {
        QCOMPARE(l.model->clusterIDs(), before);
        QCOMPARE(ids(*l.model), old);
        return;
    }
    const std::vector<int> now = ids(*l.model);
    QCOMPARE(static_cast<int>(now.size()), rows);
    QCOMPARE(static_cast<int>(std::set<int>(now.begin(), now.end()).size()), k); // distinct points: every centre used
    if (k == rows) {
        QCOMPARE(l.model->clusterCentroidSets().back()->rowCount(), k);
        for (int c = 0; c < k; ++c)
            QCOMPARE(l.model->clusterCentroidSets().back()->value(c, 1).toPointF().x(), 0.0);
    }
}

// Two sets of planes: the centres come back as the planes' own orientations (dip, dip
// direction), each row with the ID of its set.
void TestClusters::stereoRun()
{
    std::mt19937 rng(12);
    std::normal_distribution<double> spread(0.0, 3.0);
    QList<QVector3D> rows;
    for (int r = 0; r < 200; ++r)
        rows << (r % 2 ? QVector3D(float(30 + spread(rng)), float(120 + spread(rng)), 0)
                       : QVector3D(float(70 + spread(rng)), float(300 + spread(rng)), 0));
    Loaded l = load(rows, QStringLiteral("dip"), QStringLiteral("azimuth"), false);
    QVERIFY(l.model->buildClusters_KML_ForStereoProjection(QStringLiteral("Sets"), 2));
    const std::vector<int> id = ids(*l.model);
    QVERIFY(groupsFound(id, 2));
    MatrixDataArray* table = l.model->findClusterCentroids(QStringLiteral("Sets"));
    QCOMPARE(table->columnCount(), 2);
    const QPointF odd = table->value(id[1], 0).toPointF();
    const QPointF even = table->value(id[0], 0).toPointF();
    QVERIFY2(std::abs(odd.x() - 30) < 1.5 && std::abs(odd.y() - 120) < 1.5, qPrintable(QString("%1/%2").arg(odd.x()).arg(odd.y())));
    QVERIFY2(std::abs(even.x() - 70) < 1.5 && std::abs(even.y() - 300) < 1.5, qPrintable(QString("%1/%2").arg(even.x()).arg(even.y())));
    // Distortion: squared chord lengths of unit vectors about the centroid; small, positive.
    for (int c = 0; c < 2; ++c) {
        const double d = table->value(c, 1).toPointF().x();
        QVERIFY(d > 0.0 && d < 100 * 2 * std::pow(6.0 * M_PI / 180.0, 2));
    }
}

void TestClusters::stereoGuards_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("k");
    QTest::addColumn<bool>("identical");
    QTest::addColumn<bool>("runs");
    QTest::addColumn<bool>("idsAfter"); // whether the model has IDs afterwards
    QTest::newRow("k of 1 runs") << 12 << 1 << false << true << true;
    QTest::newRow("k one below the count") << 12 << 11 << false << true << true;
    QTest::newRow("k equal to the count stops, IDs gone") << 12 << 12 << false << false << false;
    QTest::newRow("k above the count") << 12 << 40 << false << false << false;
    // Only k below the count is tested: no centres at all still makes a run, with an empty
    // table and every row unassigned.
    QTest::newRow("k of 0 runs without centres") << 12 << 0 << false << true << true;
    QTest::newRow("negative k runs without centres") << 12 << -1 << false << true << true;
    QTest::newRow("identical orientations") << 5000 << 4 << true << true << true;
}

void TestClusters::stereoGuards()
{
    QFETCH(int, rows);
    QFETCH(int, k);
    QFETCH(bool, identical);
    QFETCH(bool, runs);
    QFETCH(bool, idsAfter);
    QList<QVector3D> list;
    for (int r = 0; r < rows; ++r)
        list << (identical ? QVector3D(40, 200, 0) : QVector3D(float(5 + 7 * r), float(29 * r % 360), 0));
    Loaded l = load(list, QStringLiteral("dip"), QStringLiteral("azimuth"), false);
    Model* model = l.model.get();
    QVERIFY(model->buildClusters_KML(QStringLiteral("first"), 2)); // IDs for a refused run to lose
    QCOMPARE(model->buildClusters_KML_ForStereoProjection(QStringLiteral("Stereo"), k), runs);
    QCOMPARE(model->hasClusterIDs(), idsAfter);
    if (runs) {
        const std::vector<int> id = ids(*model);
        QCOMPARE(static_cast<int>(id.size()), rows);
        for (int v : id)
            QVERIFY(k < 1 ? v == -1 : v >= 0 && v < k);
        const MatrixDataArray* table = model->clusterCentroidSets().back();
        QCOMPARE(table->name(), QStringLiteral("Stereo"));
        QCOMPARE(table->rowCount(), std::max(k, 0));
        if (identical) {
            QCOMPARE(std::set<int>(id.begin(), id.end()), std::set<int>{0}); // lowest of equal centres
            QCOMPARE(model->clusterCentroidSets().back()->value(0, 1).toPointF().x(), 0.0);
            const QPointF c = model->clusterCentroidSets().back()->value(0, 0).toPointF();
            QVERIFY(std::abs(c.x() - 40) < 1e-9 && std::abs(c.y() - 200) < 1e-9);
        }
    }
}

void TestClusters::filteredRowsKeepMinusOne_data()
{
    QTest::addColumn<bool>("stereo");
    QTest::newRow("plane") << false;
    QTest::newRow("stereo") << true;
}

// Under HighlightSelected with a selection, rows left out keep -1 and the others get the IDs of
// their groups: both walks skip the same rows. A NaN written into the list is left out too.
void TestClusters::filteredRowsKeepMinusOne()
{
    QFETCH(bool, stereo);
    std::vector<int> selected;
    std::set<int> out;
    for (int r = 0; r < 120; ++r)
        if (r % 5 == 2)
            out.insert(r);
        else
            selected.push_back(r);
    Loaded l = loadGroups(stereo, Model::HighlightSelected, selected);
    QVERIFY(l.model->partSelection());
    l.model->data()->setValue(7, 0, QPointF(kNaN, 3.0));
    l.model->touchData();
    out.insert(7);
    QVERIFY(stereo ? l.model->buildClusters_KML_ForStereoProjection(QStringLiteral("s"), 3)
                   : l.model->buildClusters_KML(QStringLiteral("p"), 3));
    QVERIFY(groupsFound(ids(*l.model), 3, out));
}

// A name clustered twice puts the same table in the list twice (and the model deletes it once).
void TestClusters::repeatedNameStandsTwice()
{
    Loaded l = load(groups(), QStringLiteral("x"), QStringLiteral("y"), false);
    QVERIFY(l.model->buildClusters_KML(QStringLiteral("Run"), 3));
    QVERIFY(l.model->buildClusters_KML(QStringLiteral("Run"), 3));
    QVERIFY(l.model->buildClusters_KML(QStringLiteral("Other"), 2));
    const auto& sets = l.model->clusterCentroidSets();
    QCOMPARE(static_cast<int>(sets.size()), 3);
    QCOMPARE(sets[0], sets[1]);
    QVERIFY(sets[2] != sets[0]);
    QCOMPARE(sets[2]->rowCount(), 2);
    l.model->setClusterAttributeName(QStringLiteral("Oth"));
    QCOMPARE(l.model->clusterCentroids(), sets[2]);
}

void TestClusters::reloadForgetsClusters_data()
{
    QTest::addColumn<bool>("stereo");
    QTest::addColumn<int>("reload"); // 0 another data set, 1 the same columns, 2 rows only, 3 nothing
    QTest::addColumn<bool>("kept");
    for (bool stereo : {false, true}) {
        const char* run = stereo ? "stereo" : "plane";
        QTest::addRow("%s run, then another data set", run) << stereo << 0 << false;
        QTest::addRow("%s run, then the same columns again", run) << stereo << 1 << false;
        QTest::addRow("%s run, then rows without points", run) << stereo << 2 << false;
        // A load without columns is refused and keeps the points, which keep their clusters.
        QTest::addRow("%s run, then a refused load", run) << stereo << 3 << true;
    }
}

// Cluster numbers describe the points they were computed for: after a reload every point of the
// new set has none until a new run, however many rows the old and new sets have.
void TestClusters::reloadForgetsClusters()
{
    QFETCH(bool, stereo);
    QFETCH(int, reload);
    QFETCH(bool, kept);
    Loaded l = loadGroups(stereo);
    QVERIFY(stereo ? l.model->buildClusters_KML_ForStereoProjection(QStringLiteral("s"), 3)
                   : l.model->buildClusters_KML(QStringLiteral("p"), 3));
    QCOMPARE(l.model->clusterIDCount(), 120);
    const std::vector<int> before = ids(*l.model);

    MatrixData* group = l.root->child(0);
    auto* x = new MatrixData(stereo ? QStringLiteral("dip 2") : QStringLiteral("x2"), 200, 1, QVariant::Double, true);
    auto* y = new MatrixData(stereo ? QStringLiteral("azimuth 2") : QStringLiteral("y2"), 200, 1, QVariant::Double, true);
    group->appendChild(x, false);
    group->appendChild(y, false);
    for (int r = 0; r < 200; ++r) {
        x->setValue(r, 0, double(10 + r % 70));
        y->setValue(r, 0, double((r * 7) % 360));
    }
    switch (reload) {
    case 0: l.model->takeNewDataSet(1, Model::ShowAll, x, y, {}); break;
    case 1: l.model->takeNewDataSet(1, Model::ShowAll, l.model->nodeX(), l.model->nodeY(), {}); break;
    case 2: l.model->initSelection(x, {}); break;
    case 3: l.model->takeNewDataSet(1, Model::ShowAll, nullptr, nullptr, {}); break;
    }
    QCOMPARE(l.model->hasClusterIDs(), kept);
    if (kept) {
        QCOMPARE(ids(*l.model), before);
        return;
    }
    QCOMPARE(l.model->clusterIDCount(), 0);
    QVERIFY(l.model->clusterIDs() == nullptr);
    for (int r = 0; r < 200; ++r)
        QCOMPARE(l.model->clusterID(r), -1);
}

QTEST_MAIN(TestClusters)
#include "tst_clusters.moc"

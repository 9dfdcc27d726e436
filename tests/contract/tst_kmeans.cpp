// The k-means family: the kd tree's node summaries, the filtering pass against a plain
// nearest-centre scan, the search on separated blobs, the stage budget and degenerate sets.
#include <KMdata.h>
#include <KMfilterCenters.h>
#include <KMkcTree.h>
#include <KMlocalLloyds.h>
#include <KMrandom.h>
#include <KMterm.h>

#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace {

const KMterm kTerm(100.0, 0, 0, 0, 0.10, 0.10, 3, 0.50, 10, 0.95);

enum Layout { Uniform, Blobs, Grid, Spread };

// n points of dim coordinates. Blobs: five tight groups; Grid: small integers, so many points
// coincide and centres tie; Spread: coordinates 2^-i apart, which a midpoint split peels one at
// a time.
std::unique_ptr<KMdata> makeData(int dim, int n, Layout layout, unsigned seed)
{
    auto data = std::make_unique<KMdata>(dim, n);
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::normal_distribution<double> noise(0.0, 0.05);
    std::uniform_int_distribution<int> cell(0, 3);
    for (int i = 0; i < n; ++i) {
        double* p = (*data)[i];
        for (int d = 0; d < dim; ++d) {
            switch (layout) {
            case Uniform:
                p[d] = unit(rng);
                break;
            case Blobs:
                p[d] = 10.0 * ((i % 5) == d % 5 ? 1.0 : 0.0) + noise(rng);
                break;
            case Grid:
                p[d] = cell(rng);
                break;
            case Spread:
                p[d] = d == 0 ? std::ldexp(1.0, -(i % 1000)) : 0.0;
                break;
            }
        }
    }
    return data;
}

double squaredDistance(const double* a, const double* b, int dim)
{
    double s = 0.0;
    for (int d = 0; d < dim; ++d)
        s += (a[d] - b[d]) * (a[d] - b[d]);
    return s;
}

// Nearest centre of every point by a plain scan, the lower index winning ties.
struct BruteForce {
    std::vector<int> closest;
    std::vector<double> sqDist;
    std::vector<double> dists;
    double total = 0.0;

    BruteForce(const KMdata& data, const KMfilterCenters& centres)
    {
        const int n = data.getNPts();
        closest.assign(static_cast<std::size_t>(n), -1);
        sqDist.assign(static_cast<std::size_t>(n), 0.0);
        dists.assign(static_cast<std::size_t>(centres.getK()), 0.0);
        for (int i = 0; i < n; ++i) {
            double best = std::numeric_limits<double>::infinity();
            for (int c = 0; c < centres.getK(); ++c) {
                const double d2 = squaredDistance(data[i], centres[c], data.getDim());
                if (d2 < best) {
                    best = d2;
                    closest[static_cast<std::size_t>(i)] = c;
                }
            }
            if (centres.getK() > 0) {
                sqDist[static_cast<std::size_t>(i)] = best;
                dists[static_cast<std::size_t>(closest[static_cast<std::size_t>(i)])] += best;
                total += best;
            }
        }
    }
};

bool close(double a, double b, double relative = 1e-9)
{
    return std::abs(a - b) <= relative * std::max({1.0, std::abs(a), std::abs(b)});
}

} // namespace

Q_DECLARE_METATYPE(Layout)

class TestKMeans : public QObject
{
    Q_OBJECT
private slots:
    void treeSummaries_data();
    void treeSummaries();
    void filteringMatchesBruteForce_data();
    void filteringMatchesBruteForce();
    void searchFindsBlobs_data();
    void searchFindsBlobs();
    void stageBudget_data();
    void stageBudget();
    void degenerateSets_data();
    void degenerateSets();
    void seededSearchRepeats();
};

void TestKMeans::treeSummaries_data()
{
    QTest::addColumn<int>("dim");
    QTest::addColumn<int>("n");
    QTest::addColumn<Layout>("layout");
    QTest::newRow("uniform 3d") << 3 << 5000 << Uniform;
    QTest::newRow("blobs 2d") << 2 << 3000 << Blobs;
    QTest::newRow("coinciding grid 4d") << 4 << 2000 << Grid;
    QTest::newRow("halving spread") << 2 << 3000 << Spread;
    QTest::newRow("one point") << 3 << 1 << Uniform;
}

// Every node covers exactly its children, its box holds its points, and its centroid and
// scatter are those of its points: a whole-node assignment relies on all four.
void TestKMeans::treeSummaries()
{
    QFETCH(int, dim);
    QFETCH(int, n);
    QFETCH(Layout, layout);
    std::unique_ptr<KMdata> data = makeData(dim, n, layout, 11);
    data->buildKcTree();
    const KMkcTree* tree = data->getKcTree();
    QVERIFY(tree);
    QCOMPARE(tree->size(), n);
    QVERIFY2(tree->depth() <= 100, qPrintable(QString::number(tree->depth())));
    std::vector<int> seen(static_cast<std::size_t>(n), 0);
    for (int pos = 0; pos < n; ++pos) {
        const int row = tree->index(pos);
        ++seen[static_cast<std::size_t>(row)];
        for (int d = 0; d < dim; ++d)
            QCOMPARE(tree->point(pos)[d], static_cast<const KMdata&>(*data)[row][d]);
    }
    QVERIFY(std::all_of(seen.begin(), seen.end(), [](int s) { return s == 1; }));
    for (int i = 0; i < tree->nodeCount(); ++i) {
        const KMkcTree::Node& nd = tree->node(i);
        QVERIFY(nd.count > 0);
        if (nd.left >= 0) {
            QCOMPARE(tree->node(nd.left).first, nd.first);
            QCOMPARE(tree->node(nd.right).first, nd.first + tree->node(nd.left).count);
            QCOMPARE(tree->node(nd.left).count + tree->node(nd.right).count, nd.count);
        }
        std::vector<double> mean(static_cast<std::size_t>(dim), 0.0);
        for (int pos = nd.first; pos < nd.first + nd.count; ++pos)
            for (int d = 0; d < dim; ++d) {
                const double v = tree->point(pos)[d];
                QVERIFY(tree->lo(i)[d] <= v && v <= tree->hi(i)[d]);
                mean[static_cast<std::size_t>(d)] += v / nd.count;
            }
        double scatter = 0.0;
        for (int pos = nd.first; pos < nd.first + nd.count; ++pos)
            scatter += squaredDistance(tree->point(pos), mean.data(), dim);
        for (int d = 0; d < dim; ++d)
            QVERIFY(close(tree->centroid(i)[d], mean[static_cast<std::size_t>(d)], 1e-9));
        QVERIFY2(std::abs(tree->scatter(i) - scatter) <= 1e-9 * std::max(1.0, scatter),
                 qPrintable(QString("node %1: %2 against %3").arg(i).arg(tree->scatter(i)).arg(scatter)));
    }
}

void TestKMeans::filteringMatchesBruteForce_data()
{
    QTest::addColumn<int>("dim");
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("k");
    QTest::addColumn<Layout>("layout");
    QTest::addColumn<bool>("ties"); // coinciding points: compare distances, not labels
    QTest::newRow("3d uniform, k 8") << 3 << 20000 << 8 << Uniform << false;
    QTest::newRow("2d uniform, k 3") << 2 << 5000 << 3 << Uniform << false;
    QTest::newRow("5d uniform, k 20") << 5 << 4000 << 20 << Uniform << false;
    QTest::newRow("3d blobs, k 5") << 3 << 10000 << 5 << Blobs << false;
    QTest::newRow("3d blobs, k 12") << 3 << 10000 << 12 << Blobs << false;
    QTest::newRow("k 1") << 3 << 1000 << 1 << Uniform << false;
    QTest::newRow("k equals n") << 2 << 40 << 40 << Uniform << false;
    QTest::newRow("grid with ties") << 3 << 3000 << 6 << Grid << true;
}

// From random data points and after each of a few Lloyd stages, the filtering pass gives the
// plain scan's assignment, squared distances and per-centre distortions.
void TestKMeans::filteringMatchesBruteForce()
{
    QFETCH(int, dim);
    QFETCH(int, n);
    QFETCH(int, k);
    QFETCH(Layout, layout);
    QFETCH(bool, ties);
    std::unique_ptr<KMdata> data = makeData(dim, n, layout, 5);
    data->buildKcTree();
    KMrandom::seed(99);
    KMfilterCenters centres(k, *data, 1.0);
    for (int stage = 0; stage < 4; ++stage) {
        centres.computeDistortion();
        QVERIFY(centres.isValid());
        const BruteForce expected(*data, centres);
        std::vector<int> closest;
        std::vector<double> sqDist;
        centres.getAssignments(closest, &sqDist);
        QCOMPARE(static_cast<int>(closest.size()), n);
        int mismatches = 0;
        for (int i = 0; i < n; ++i) {
            const std::size_t s = static_cast<std::size_t>(i);
            if (!ties && closest[s] != expected.closest[s])
                ++mismatches;
            if (!close(sqDist[s], expected.sqDist[s], 1e-12))
                ++mismatches;
        }
        QCOMPARE(mismatches, 0);
        QVERIFY2(close(centres.getDist(), expected.total),
                 qPrintable(QString("%1 against %2").arg(centres.getDist()).arg(expected.total)));
        if (!ties)
            for (int c = 0; c < k; ++c)
                QVERIFY(close(centres.getDists()[static_cast<std::size_t>(c)], expected.dists[static_cast<std::size_t>(c)]));
        centres.lloyd1Stage();
        QVERIFY(!centres.isValid());
    }
}

void TestKMeans::searchFindsBlobs_data()
{
    QTest::addColumn<int>("dim");
    QTest::addColumn<int>("blobs");
    QTest::addColumn<int>("perBlob");
    QTest::newRow("2 blobs in 2d") << 2 << 2 << 500;
    QTest::newRow("4 blobs in 3d") << 3 << 4 << 2000;
    QTest::newRow("8 blobs in 3d") << 3 << 8 << 5000;
    QTest::newRow("6 blobs in 4d, uneven") << 4 << 6 << 300;
}

// Well-separated blobs come out as the clusters: one label per blob, one blob per label, the
// centres at the blob means and the distortion that of the blobs about their means.
void TestKMeans::searchFindsBlobs()
{
    QFETCH(int, dim);
    QFETCH(int, blobs);
    QFETCH(int, perBlob);
    std::mt19937 rng(3);
    std::normal_distribution<double> noise(0.0, 0.3);
    std::uniform_real_distribution<double> where(-100.0, 100.0);
    std::vector<std::vector<double>> centre(static_cast<std::size_t>(blobs), std::vector<double>(static_cast<std::size_t>(dim)));
    for (auto& c : centre)
        for (double& x : c)
            x = where(rng);
    // Uneven sizes in the last row: blob b has perBlob * (b + 1) points there.
    const bool uneven = blobs == 6;
    std::vector<int> blobOf;
    for (int b = 0; b < blobs; ++b)
        blobOf.insert(blobOf.end(), static_cast<std::size_t>(uneven ? perBlob * (b + 1) : perBlob), b);
    std::shuffle(blobOf.begin(), blobOf.end(), rng);
    const int n = static_cast<int>(blobOf.size());
    KMdata data(dim, n);
    std::vector<std::vector<double>> mean(static_cast<std::size_t>(blobs), std::vector<double>(static_cast<std::size_t>(dim), 0.0));
    std::vector<int> size(static_cast<std::size_t>(blobs), 0);
    for (int i = 0; i < n; ++i) {
        const std::size_t b = static_cast<std::size_t>(blobOf[static_cast<std::size_t>(i)]);
        for (int d = 0; d < dim; ++d) {
            data[i][d] = centre[b][static_cast<std::size_t>(d)] + noise(rng);
            mean[b][static_cast<std::size_t>(d)] += data[i][d];
        }
        ++size[b];
    }
    double scatter = 0.0;
    for (int b = 0; b < blobs; ++b)
        for (double& x : mean[static_cast<std::size_t>(b)])
            x /= size[static_cast<std::size_t>(b)];
    for (int i = 0; i < n; ++i)
        scatter += squaredDistance(data[i], mean[static_cast<std::size_t>(blobOf[static_cast<std::size_t>(i)])].data(), dim);

    data.buildKcTree();
    KMrandom::seed(2024);
    KMfilterCenters centres(blobs, data, 1.0);
    KMlocalLloyds search(centres, kTerm);
    centres = search.execute();
    QVERIFY(centres.isValid());
    QVERIFY(search.getTotalStages() <= 100);
    std::vector<int> closest;
    centres.getAssignments(closest);
    std::vector<int> labelOfBlob(static_cast<std::size_t>(blobs), -1);
    for (int i = 0; i < n; ++i) {
        int& label = labelOfBlob[static_cast<std::size_t>(blobOf[static_cast<std::size_t>(i)])];
        if (label < 0)
            label = closest[static_cast<std::size_t>(i)];
        QCOMPARE(closest[static_cast<std::size_t>(i)], label);
    }
    QCOMPARE(static_cast<int>(std::set<int>(labelOfBlob.begin(), labelOfBlob.end()).size()), blobs);
    for (int b = 0; b < blobs; ++b) {
        const double* z = centres[labelOfBlob[static_cast<std::size_t>(b)]];
        QVERIFY(squaredDistance(z, mean[static_cast<std::size_t>(b)].data(), dim) < 1e-18 * 1e4);
    }
    QVERIFY(close(centres.getDist(), scatter, 1e-9));
}

void TestKMeans::stageBudget_data()
{
    QTest::addColumn<QVector<double>>("abcd");
    QTest::addColumn<int>("k");
    QTest::addColumn<int>("stages");
    QTest::newRow("the library's terms") << QVector<double>{100, 0, 0, 0} << 8 << 100;
    QTest::newRow("per centre") << QVector<double>{10, 2, 0, 0} << 5 << 20;
    QTest::newRow("power of k") << QVector<double>{0, 0, 1, 2} << 4 << 16;
    QTest::newRow("fractional rounds up") << QVector<double>{2.5, 0, 0, 0} << 3 << 3;
    QTest::newRow("nothing still runs once") << QVector<double>{0, 0, 0, 0} << 3 << 1;
    QTest::newRow("negative") << QVector<double>{-5, 0, 0, 0} << 3 << 1;
    QTest::newRow("NaN") << QVector<double>{std::nan(""), 0, 0, 0} << 3 << 1;
}

// The search stops at the budget, and the uniform data below never settles before it.
void TestKMeans::stageBudget()
{
    QFETCH(QVector<double>, abcd);
    QFETCH(int, k);
    QFETCH(int, stages);
    const KMterm term(abcd[0], abcd[1], abcd[2], abcd[3], 0.10, 0.10, 3, 0.5, 10, 0.95);
    QCOMPARE(term.getMaxTotStage(k), stages);
    std::unique_ptr<KMdata> data = makeData(2, 3000, Uniform, 8);
    KMrandom::seed(1);
    KMfilterCenters centres(k, *data);
    KMlocalLloyds search(centres, term);
    const KMfilterCenters best = search.execute();
    QCOMPARE(search.getTotalStages(), stages);
    QVERIFY(best.isValid());
    QVERIFY(close(best.getDist(), BruteForce(*data, best).total));
}

void TestKMeans::degenerateSets_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("k");
    QTest::addColumn<bool>("identical");
    QTest::addColumn<double>("distortion");
    QTest::addColumn<int>("firstLabel");
    QTest::newRow("no points") << 0 << 3 << false << 0.0 << -2;
    QTest::newRow("k of 0") << 50 << 0 << false << 0.0 << -1;
    QTest::newRow("negative k") << 50 << -4 << false << 0.0 << -1;
    QTest::newRow("k above n") << 5 << 9 << false << 0.0 << -3;
    QTest::newRow("k equals n") << 6 << 6 << false << 0.0 << -3;
    QTest::newRow("identical points") << 100000 << 4 << true << 0.0 << 0;
    QTest::newRow("identical points, k 1") << 1000 << 1 << true << 0.0 << 0;
}

// Each ends, with every point on a centre where there are centres (distortion 0); labels: -1
// without centres, 0 for coinciding points (the lowest of equal centres), -3 for "any valid
// label", -2 for "no points at all".
void TestKMeans::degenerateSets()
{
    QFETCH(int, n);
    QFETCH(int, k);
    QFETCH(bool, identical);
    QFETCH(double, distortion);
    QFETCH(int, firstLabel);
    KMdata data(3, n);
    for (int i = 0; i < n; ++i)
        for (int d = 0; d < 3; ++d)
            data[i][d] = identical ? 1.5 : i * 10.0 + d;
    data.buildKcTree();
    KMrandom::seed(4);
    KMfilterCenters centres(k, data);
    QCOMPARE(centres.getK(), std::max(k, 0));
    KMlocalLloyds search(centres, kTerm);
    centres = search.execute();
    QVERIFY(search.getTotalStages() <= 100);
    QVERIFY(centres.isValid());
    QCOMPARE(centres.getDist(), distortion);
    std::vector<int> closest;
    centres.getAssignments(closest);
    QCOMPARE(static_cast<int>(closest.size()), n);
    for (int label : closest) {
        if (firstLabel == -3)
            QVERIFY(label >= 0 && label < k);
        else
            QCOMPARE(label, firstLabel);
    }
}

// The library never seeds; a caller that does gets the same search twice.
void TestKMeans::seededSearchRepeats()
{
    std::unique_ptr<KMdata> data = makeData(3, 5000, Uniform, 21);
    std::vector<double> first;
    for (int round = 0; round < 2; ++round) {
        KMrandom::seed(77);
        KMfilterCenters centres(6, *data);
        KMlocalLloyds search(centres, kTerm);
        centres = search.execute();
        std::vector<double> flat;
        for (int c = 0; c < 6; ++c)
            flat.insert(flat.end(), centres[c], centres[c] + 3);
        if (round == 0)
            first = flat;
        else
            QCOMPARE(flat, first);
    }
}

QTEST_APPLESS_MAIN(TestKMeans)
#include "tst_kmeans.moc"

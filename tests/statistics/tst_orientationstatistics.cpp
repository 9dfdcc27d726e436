// Orientation statistics and Terzaghi weights. References: a published worked example (Fisher
// mean, R, k, alpha95 and the tensor axes of four directions) and an independent recomputation
// (plain sums, cyclic Jacobi eigenvalues, kappa = (N - 1) / (N - R)). Then the eigen solver's
// contract, the kept accumulation rules, the undefined results, Woodcock and Mardia, and weights.
#include <MatrixData.h>
#include <QRelationshipItemModel.h>
#include <SymmetricEigenSolver.h>
#include <TerzaghiScanline.h>

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

using namespace rkBase;
using Model = QRelationshipItemModel;

namespace {
constexpr double kDeg = 3.14159265358979323846 / 180.0;
const double kNaN = std::numeric_limits<double>::quiet_NaN();

bool close(double a, double b, double tol)
{
    return std::abs(a - b) <= tol;
}

bool sameAzimuth(double a, double b, double tol)
{
    const double d = std::fmod(std::abs(a - b), 360.0);
    return d <= tol || 360.0 - d <= tol;
}

class Probe : public Model // the protected figures
{
public:
    using Model::canBeBiasCorrected;
    using Model::mardiaClassification;
};

struct Loaded {
    std::unique_ptr<MatrixData> root;
    std::unique_ptr<Probe> model;
};

// (x, y) pairs as two Double columns of one sheet under a root, loaded into a model.
Loaded load(const QList<QPointF>& points, const QString& xName = QStringLiteral("dip"),
            const QString& yName = QStringLiteral("azimuth"))
{
    Loaded l;
    l.root.reset(new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true));
    auto* group = new MatrixData(QStringLiteral("Sheet"), -1, -1, QVariant::String, true);
    auto* x = new MatrixData(xName, points.size(), 1, QVariant::Double, true);
    auto* y = new MatrixData(yName, points.size(), 1, QVariant::Double, true);
    l.root->appendChild(group, true);
    group->appendChild(x, false);
    group->appendChild(y, false);
    for (int r = 0; r < points.size(); ++r) {
        x->setValue(r, 0, points[r].x());
        y->setValue(r, 0, points[r].y());
    }
    l.model.reset(new Probe);
    l.model->takeNewDataSet(x, y, Model::ShowAll);
    return l;
}

struct Fisher {
    double length, variance, kappa, e[3], normalized, K, C, lnE3E2, lnE2E1, radius;
    bool unimodal;
    QString text;
};

Fisher fisher(Model& m, bool isPole, bool bias = false)
{
    Fisher f{};
    m.calculateFisherStatistics(f.length, f.variance, f.kappa, f.e[0], f.e[1], f.e[2], f.normalized, f.K, f.C,
                                f.lnE3E2, f.lnE2E1, f.radius, f.unimodal, f.text, isPole, bias);
    return f;
}

struct Sums {
    double s[3], m[3][3], weightSum;
    int count;
};

Sums accumulate(Model& m, bool isPole, bool bias = false, int* subsetIds = nullptr, int subsetId = -1)
{
    Sums r{};
    double** t = m.initialiseCharacteristicMatrix(nullptr, isPole, r.s[0], r.s[1], r.s[2], r.count, r.weightSum,
                                                  bias, subsetIds, subsetId);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r.m[i][j] = t[i][j];
    Model::freeCharacteristicMatrix(t);
    return r;
}

// Cyclic Jacobi rotations: the independent eigenvalues, ascending.
void jacobi(const double in[3][3], double out[3])
{
    double a[3][3];
    std::copy(&in[0][0], &in[0][0] + 9, &a[0][0]);
    for (int sweep = 0; sweep < 100 && a[0][1] * a[0][1] + a[0][2] * a[0][2] + a[1][2] * a[1][2] > 1e-30; ++sweep) {
        for (int p = 0; p < 2; ++p) {
            for (int q = p + 1; q < 3; ++q) {
                if (a[p][q] == 0.0)
                    continue;
                const double th = (a[q][q] - a[p][p]) / (2.0 * a[p][q]);
                const double t = (th >= 0 ? 1.0 : -1.0) / (std::abs(th) + std::sqrt(th * th + 1.0));
                const double c = 1.0 / std::sqrt(t * t + 1.0), s = t * c;
                for (int k = 0; k < 3; ++k) {
                    const double kp = a[k][p], kq = a[k][q];
                    a[k][p] = c * kp - s * kq;
                    a[k][q] = s * kp + c * kq;
                }
                for (int k = 0; k < 3; ++k) {
                    const double pk = a[p][k], qk = a[q][k];
                    a[p][k] = c * pk - s * qk;
                    a[q][k] = s * pk + c * qk;
                }
            }
        }
    }
    for (int i = 0; i < 3; ++i)
        out[i] = a[i][i];
    std::sort(out, out + 3);
}
} // namespace

class TestOrientationStatistics : public QObject
{
    Q_OBJECT
private slots:
    void eigenSolver();
    void eigenSolverEdges();
    void publishedExample_data();
    void publishedExample();
    void independentRecomputation();
    void emptyAndSinglePoint();
    void mardia_data();
    void mardia();
    void accumulationRules();
    void suggestedSectionAndTdirection();
    void badCellsAndEdits();
    void biasWeight_data();
    void biasWeight();
    void normalisedBiasWeights();
    void weightsInOneWalk_data();
    void weightsInOneWalk();
};

void TestOrientationStatistics::eigenSolver()
{
    std::mt19937 rng(20261123);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (int trial = 0; trial < 500; ++trial) {
        // Mostly orientation matrices (sums of outer products of unit vectors), some general.
        double m[3][3] = {};
        const int n = trial % 5 == 0 ? 0 : 3 + trial % 40;
        for (int i = 0; i < 3 && n == 0; ++i)
            for (int j = i; j < 3; ++j)
                m[i][j] = m[j][i] = 100.0 * u(rng);
        for (int k = 0; k < n; ++k) {
            const double v[3] = {u(rng), u(rng), 0.2 * u(rng) + (trial % 2 ? 0.9 : 0.0)};
            const double l2 = v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j)
                    m[i][j] += v[i] * v[j] / l2;
        }
        double e[3], q[3][3], ref[3];
        QVERIFY(SymmetricEigenSolver::solve(m, e, q));
        jacobi(m, ref);
        const double tol = 1e-12 * std::max(1.0, std::abs(ref[0]) + std::abs(ref[2]));
        for (int i = 0; i < 3; ++i) {
            QVERIFY(close(e[i], ref[i], tol));
            for (int r = 0; r < 3; ++r) { // M v = e v, columns orthonormal
                const double mv = m[r][0] * q[0][i] + m[r][1] * q[1][i] + m[r][2] * q[2][i];
                QVERIFY(close(mv, e[i] * q[r][i], 10 * tol));
                const double dot = q[0][i] * q[0][r] + q[1][i] * q[1][r] + q[2][i] * q[2][r];
                QVERIFY(close(dot, i == r ? 1.0 : 0.0, 1e-12));
            }
        }
        const double det = q[0][0] * (q[1][1] * q[2][2] - q[1][2] * q[2][1])
            - q[0][1] * (q[1][0] * q[2][2] - q[1][2] * q[2][0]) + q[0][2] * (q[1][0] * q[2][1] - q[1][1] * q[2][0]);
        QVERIFY(close(det, 1.0, 1e-12));
    }
}

void TestOrientationStatistics::eigenSolverEdges()
{
    // Everything along north: the block of two zeros has a rotation of length 0, so its two
    // vectors are NaN while the eigenvalues stay right.
    const double axis[3][3] = {{7, 0, 0}, {0, 0, 0}, {0, 0, 0}};
    double e[3], q[3][3];
    QVERIFY(SymmetricEigenSolver::solve(axis, e, q));
    QVERIFY(e[0] == 0 && e[1] == 0 && e[2] == 7);
    QVERIFY(std::isnan(q[1][0]) || std::isnan(q[1][1]));
    // No convergence: the caller's eigenvalues stay.
    const double poisoned[3][3] = {{1, 0.5, 0.2}, {0.5, kNaN, 0.3}, {0.2, 0.3, 2}};
    double kept[3] = {-7, -8, -9};
    QVERIFY(!SymmetricEigenSolver::solve(poisoned, kept, q));
    QVERIFY(kept[0] == -7 && kept[1] == -8 && kept[2] == -9);
}

// Published: the worked example in the documentation of a paleomagnetic statistics package
// (declinations 140, 127, 142, 136; inclinations 21, 23, 19, 22) gives the Fisher mean, R, k,
// alpha95 and the three axes of the orientation tensor to 15 or more digits. Declination and
// inclination are our azimuth and plunge.
void TestOrientationStatistics::publishedExample_data()
{
    QTest::addColumn<bool>("asPoles");
    QTest::newRow("lineations") << false;
    QTest::newRow("planes whose poles they are") << true;
}

void TestOrientationStatistics::publishedExample()
{
    QFETCH(bool, asPoles);
    const double dec[4] = {140, 127, 142, 136}, inc[4] = {21, 23, 19, 22};
    QList<QPointF> pts;
    for (int i = 0; i < 4; ++i)
        pts << (asPoles ? QPointF(90 - inc[i], dec[i] + 180) : QPointF(inc[i], dec[i]));
    Loaded l = load(pts, asPoles ? "dip" : "plunge", asPoles ? "azimuth" : "trend");
    Model& m = *l.model;
    m.calculateMeanDirection(asPoles, false, nullptr, -1);
    const Fisher f = fisher(m, asPoles);
    QVERIFY(close(f.normalized * 4, 3.9812138971889026, 1e-12));
    QVERIFY(close(f.kappa, 159.69251473636305, 1e-9));
    QVERIFY(close(f.radius / kDeg, 7.292891411309177, 1e-9));
    QVERIFY(close(f.variance, 1 - 3.9812138971889026 / 4, 1e-12));
    QCOMPARE(f.length, f.normalized);
    QVERIFY(close(f.e[0] + f.e[1] + f.e[2], 4.0, 1e-12)); // raw sums, not divided by N
    QCOMPARE(f.text, QStringLiteral("1. clustered unimodal\n"));

    auto line = [&](QPointF pole, QPointF plane) { return asPoles ? QPointF(90 - plane.x(), plane.y() + 180) : pole; };
    const QList<std::pair<QPointF, QPointF>> axes = {
        {line(m.meanResultantDipDirection(), m.meanResultantPole()), {21.34778402689999, 136.30838974272072}},
        {line(m.meanPrincipalDipDirection(), m.meanPrincipalPlane()), {21.345186780731787, 136.32637167111312}},
        // given pointing upward in the source: (-13.7458, 220.8408)
        {line(m.TdirectionDipDirection(), m.TdirectionPlane()), {13.745780972597775, 40.84075754194578}},
        {line(m.LdirectionDipDirection(), m.LdirectionPlane()), {64.23509410796224, 280.38894136954474}}};
    for (const auto& a : axes)
        QVERIFY2(close(a.first.x(), a.second.x(), 1e-9) && sameAzimuth(a.first.y(), a.second.y(), 1e-9),
                 qPrintable(QString("%1/%2").arg(a.first.x(), 0, 'g', 15).arg(a.first.y(), 0, 'g', 15)));
}

void TestOrientationStatistics::independentRecomputation()
{
    std::mt19937 rng(1987);
    std::normal_distribution<double> spread(0.0, 12.0);
    for (int set = 0; set < 20; ++set) {
        QList<QPointF> pts;
        const int n = 5 + set * 7;
        for (int i = 0; i < n; ++i)
            pts << QPointF(std::clamp(40 + spread(rng), 0.0, 90.0), std::fmod(560 + 3 * spread(rng), 360.0));
        Loaded l = load(pts);
        for (bool isPole : {false, true}) {
            const Fisher f = fisher(*l.model, isPole);
            double s[3] = {0, 0, 0}, t[3][3] = {};
            for (const QPointF& p : pts) {
                const double a = p.x() * kDeg, b = p.y() * kDeg;
                const double v[3] = {isPole ? -std::cos(b) * std::sin(a) : std::cos(b) * std::cos(a),
                                     isPole ? -std::sin(b) * std::sin(a) : std::sin(b) * std::cos(a),
                                     isPole ? std::cos(a) : std::sin(a)};
                for (int i = 0; i < 3; ++i) {
                    s[i] += v[i];
                    for (int j = 0; j < 3; ++j)
                        t[i][j] += v[i] * v[j];
                }
            }
            const double R = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
            double e[3];
            jacobi(t, e);
            QVERIFY(close(f.kappa, (n - 1) / (n - R), 1e-9 * f.kappa));
            QVERIFY(close(f.normalized, R / n, 1e-12));
            QVERIFY(close(f.radius, std::acos(1 - (std::pow(20.0, 1.0 / (n - 1)) - 1) * (n - R) / R), 1e-12));
            for (int i = 0; i < 3; ++i)
                QVERIFY(close(f.e[i], e[i], 1e-10));
            QVERIFY(close(f.lnE3E2, std::log(e[2] / e[1]), 1e-8));
            QVERIFY(close(f.lnE2E1, std::log(e[1] / e[0]), 1e-8));
            QVERIFY(close(f.C, std::log(e[2] / e[0]), 1e-8));
            double a, b;
            l.model->calculateWoodcockParameterForOneSubSet(isPole, false, a, b);
            QVERIFY(close(a, f.lnE3E2, 1e-12) && close(b, f.lnE2E1, 1e-12));
        }
    }
}

void TestOrientationStatistics::emptyAndSinglePoint()
{
    Loaded l = load({QPointF(30, 40)});
    Model& m = *l.model;
    const Fisher one = fisher(m, true);
    QVERIFY(one.kappa == 99999.0 && one.normalized == 1.0 && std::isnan(one.radius));
    m.calculateMeanDirection(true, false, nullptr, -1);
    m.calculateSuggestedSectionOrientation(false, nullptr);
    const QPointF mean = m.meanResultantPole(), section = m.suggestedSectionPlane();

    // No points: the mean members stay, Fisher runs on with N = R = 0.
    m.data()->setValue(0, 0, QVariant());
    m.touchData();
    m.calculateMeanDirection(true, false, nullptr, -1);
    m.calculateSuggestedSectionOrientation(false, nullptr);
    QVERIFY(m.meanResultantPole() == mean && m.suggestedSectionPlane() == section);
    const Fisher none = fisher(m, true);
    QVERIFY(none.kappa == 99999.0 && std::isnan(none.normalized) && std::isnan(none.radius));
    QVERIFY(none.e[2] == 0.0 && none.K == 0.0 && none.C == 0.0);
    double a = 1, b = 1;
    m.calculateWoodcockParameterForOneSubSet(true, false, a, b);
    QVERIFY(a == 0.0 && b == 0.0);

    Model bare; // no list at all
    bare.clearData();
    bare.calculateMeanDirection(false, true, nullptr, -1);
    QCOMPARE(fisher(bare, false, true).kappa, 99999.0);

    // Identical points away from the axes: e1 = e2 = 0 fail the tolerance, all figures 0.
    Loaded same = load({{35, 125}, {35, 125}, {35, 125}});
    const Fisher f = fisher(*same.model, false);
    QVERIFY(f.kappa == 99999.0 && f.K == 0.0 && f.C == 0.0 && f.lnE3E2 == 0.0 && f.lnE2E1 == 0.0);
    QVERIFY(f.unimodal);
}

void TestOrientationStatistics::mardia_data()
{
    QTest::addColumn<double>("e1");
    QTest::addColumn<double>("e2");
    QTest::addColumn<double>("e3");
    QTest::addColumn<double>("resultant");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("unimodal");
    QTest::newRow("uniform") << 3.3 << 3.4 << 3.45 << 0.1 << "is uniform distributed" << false;
    QTest::newRow("e1 of 0.005 is not uniform") << 0.005 << 0.00501 << 0.00502 << 0.1
                                                << "Orientation classification indeterminate" << false;
    QTest::newRow("unimodal") << 0.5 << 0.6 << 8.9 << 0.95 << "1. clustered unimodal\n" << true;
    QTest::newRow("bipolar") << 1.5 << 1.5 << 7.0 << 0.5 << "1. clustered bipolar\n" << false;
    QTest::newRow("bimodal") << 1.0 << 1.8 << 7.2 << 0.5 << "1. clustered bimodal\n" << false;
    QTest::newRow("girdle") << 0.5 << 3.5 << 6.0 << 0.5 << "1. clustered multi modal\n2. girdle pattern" << false;
    QTest::newRow("girdle, R 0.95") << 0.5 << 3.5 << 6.0 << 0.95 << "1. clustered unimodal\n2. girdle pattern" << true;
    QTest::newRow("symmetrical girdle keeps unimodal") << 0.5 << 4.73 << 4.77 << 0.95
                                                       << "2. symmetrical girdle patter" << true;
    QTest::newRow("indeterminate") << 2.0 << 3.0 << 5.0 << 0.5 << "Orientation classification indeterminate" << false;
}

void TestOrientationStatistics::mardia()
{
    QFETCH(double, e1);
    QFETCH(double, e2);
    QFETCH(double, e3);
    QFETCH(double, resultant);
    QFETCH(bool, unimodal);
    bool got = !unimodal;
    QTEST(Probe().mardiaClassification(e1, e2, e3, resultant, got), "text");
    QCOMPARE(got, unimodal);
}

void TestOrientationStatistics::accumulationRules()
{
    Loaded l = load({{10, 0}, {20, 90}, {30, 180}, {30, 0}});
    Model& m = *l.model;
    // Triangle areas: a weight scales the vector, so it counts squared in the matrix and once
    // in N; blank and NaN areas count as 1.
    MatrixData area(QStringLiteral("area"), 4, 1, QVariant::Double, true);
    area.setValue(0, 0, 2.0);
    area.setValue(2, 0, kNaN);
    area.setValue(3, 0, 1.0);
    m.setTriangleAreaData(&area);
    Sums s = accumulate(m, false);
    const double z[4] = {std::sin(10 * kDeg), std::sin(20 * kDeg), std::sin(30 * kDeg), std::sin(30 * kDeg)};
    QVERIFY(s.count == 4 && s.weightSum == 5.0);
    QVERIFY(close(s.s[2], 2 * z[0] + z[1] + z[2] + z[3], 1e-14));
    QVERIFY(close(s.m[2][2], 4 * z[0] * z[0] + z[1] * z[1] + z[2] * z[2] + z[3] * z[3], 1e-14));
    m.setTriangleAreaData(nullptr);

    // Row filter: only HighlightSelected with a part selection narrows the walk.
    m.setSelected(1, true);
    for (auto type : {Model::ShowAll, Model::ShowSelectedOnly, Model::HighlightSelected}) {
        m.setDisplayType(type);
        QCOMPARE(accumulate(m, true).count, type == Model::HighlightSelected ? 1 : 4);
    }
    // Subsets: the selection plays no part, the azimuth comes from the tree's "azimuth" column
    // at the table row, and rows without one drop out.
    auto* azimuth = new MatrixData(QStringLiteral("azimuth"), 4, 1, QVariant::Double, true);
    l.root->child(0)->child(1)->setName(QStringLiteral("dipdir"));
    azimuth->setValue(0, 0, 90.0);
    azimuth->setValue(2, 0, 90.0);
    azimuth->setValue(3, 0, 270.0);
    l.root->child(0)->appendChild(azimuth, false);
    m.setDataRoot(l.root.get());
    int ids[4] = {1, 1, 1, 2};
    s = accumulate(m, false, false, ids, 1);
    QVERIFY(s.count == 2 && close(s.s[1], std::cos(10 * kDeg) + std::cos(30 * kDeg), 1e-14));
    m.calculateMeanDirection(false, false, ids, 2);
    QVERIFY(close(m.meanResultantDipDirection().x(), 30, 1e-9) && close(m.meanResultantDipDirection().y(), 270, 1e-9));

    // Bias weights change the sums but never N.
    m.setDisplayType(Model::ShowAll);
    m.setScanline(0, 0, 5);
    const Sums plain = accumulate(m, true), biased = accumulate(m, true, true);
    QVERIFY(biased.weightSum == 4.0 && biased.s[0] != plain.s[0]);
}

void TestOrientationStatistics::suggestedSectionAndTdirection()
{
    // Planes of a fold about an axis trending 30: the section strikes along it, as a vertical
    // plane; the form for lineations is never written.
    Loaded l = load({{20, 120}, {40, 120}, {30, 300}, {60, 300}, {10, 120}});
    Model& m = *l.model;
    m.calculateSuggestedSectionOrientation(false, nullptr);
    const QPointF s = m.suggestedSectionPlane();
    QVERIFY(s.x() == 90.0 && s.y() > 0.0 && s.y() <= 360.0);
    QVERIFY2(sameAzimuth(std::fmod(s.y(), 180.0), 30.0, 1e-6), qPrintable(QString::number(s.y())));
    QCOMPARE(m.suggestedSectionDipDirection(), QPointF(0, 0));
    MatrixDataArray copy(*m.data()); // the panel passes a copy
    m.calculateSuggestedSectionOrientation(false, &copy);
    QCOMPARE(m.suggestedSectionPlane(), s);
    // A horizontal line of the plane: the strike end at (direction + 180) - 90.
    m.calculateMeanDirection(true, false, nullptr, -1);
    QVERIFY(close(m.calculateNewTdirection(30.0), 120.0, 1e-9));
    QVERIFY(close(m.calculateNewTdirection(300.0), 30.0, 1e-9));
}

void TestOrientationStatistics::badCellsAndEdits()
{
    Loaded l = load({{10, 10}, {10, 20}, {10, 30}, {10, 40}, {10, 50}}, "plunge", "trend");
    Model& m = *l.model;
    m.calculateMeanDirection(false, false, nullptr, -1);
    QVERIFY(close(m.meanResultantDipDirection().y(), 30, 1e-6));
    // Edits through the model reach the cached per-point vectors.
    m.setData(m.index(0, 0), QPointF(10, 80));
    m.setData(m.index(1, 0), QPointF(10, 90));
    m.setData(m.index(2, 0), QPointF(10, 100));
    m.data()->setValue(3, 0, QPointF(kNaN, 20));
    m.data()->setValue(4, 0, QVariant());
    m.touchData();
    m.calculateMeanDirection(false, false, nullptr, -1);
    QVERIFY(close(m.meanResultantDipDirection().y(), 90, 1e-6));
    QCOMPARE(accumulate(m, true).count, 3);
    m.rotateDataAboutRotationAxis(nullptr, QPointF(90, 0), 90, false);
    m.calculateMeanDirection(false, false, nullptr, -1);
    QVERIFY(close(m.meanResultantDipDirection().y(), 180, 1e-6));
    // Out of range but finite: used as it stands.
    m.data()->setValue(4, 0, QPointF(400, -720));
    m.touchData();
    QCOMPARE(accumulate(m, false).count, 4);
    QVERIFY(std::isfinite(fisher(m, true, true).kappa));
}

void TestOrientationStatistics::biasWeight_data()
{
    QTest::addColumn<QPointF>("scanline"); // plunge, azimuth
    QTest::addColumn<double>("minimumAngle");
    QTest::addColumn<QPointF>("plane"); // 90/180 has its pole horizontal along north
    QTest::addColumn<bool>("correctable");
    QTest::addColumn<double>("weight");
    QTest::newRow("pole along the scanline") << QPointF(0, 0) << 10.0 << QPointF(90, 180) << true << 1.0;
    QTest::newRow("30 degrees off") << QPointF(0, 0) << 10.0 << QPointF(90, 210) << true << 1 / std::cos(30 * kDeg);
    QTest::newRow("inside the minimum") << QPointF(0, 0) << 29.999 << QPointF(90, 240) << true << 2.0;
    QTest::newRow("past the minimum") << QPointF(0, 0) << 30.001 << QPointF(90, 240) << false << 1.0;
    QTest::newRow("minimum 90, parallel") << QPointF(0, 0) << 90.0 << QPointF(90, 180) << true << 1.0;
    QTest::newRow("pole normal to it") << QPointF(0, 0) << 1.0 << QPointF(90, 90) << false << 1.0;
    QTest::newRow("normal, minimum 0: passes, stays 1") << QPointF(0, 0) << 0.0 << QPointF(90, 90) << true << 1.0;
    QTest::newRow("NaN scanline") << QPointF(kNaN, 0) << 0.0 << QPointF(90, 180) << false << 1.0;
}

void TestOrientationStatistics::biasWeight()
{
    QFETCH(QPointF, scanline);
    QFETCH(double, minimumAngle);
    QFETCH(QPointF, plane);
    QFETCH(bool, correctable);
    QFETCH(double, weight);
    Loaded l = load({plane});
    l.model->setScanline(scanline.x(), scanline.y(), minimumAngle);
    QCOMPARE(l.model->canBeBiasCorrected(0), correctable);
    QVERIFY(close(l.model->biasCorrection(0), weight, 1e-9));
}

void TestOrientationStatistics::normalisedBiasWeights()
{
    QList<QPointF> planes;
    for (int dip = 5; dip <= 85; dip += 20)
        for (int dd = 0; dd < 360; dd += 40)
            planes << QPointF(dip, dd);
    Loaded l = load(planes);
    Probe& m = *l.model;
    for (const QPointF s : {QPointF(0, 55), QPointF(35, 55), QPointF(90, 0)}) {
        m.setScanline(s.x(), s.y(), 10.0);
        double total = -1;
        const int count = m.totalBiasWeight(total);
        // The normalised weights of correctable points sum to their number; the rest stay 1.
        // For a horizontal scanline they are the plain weights times one constant.
        double sum = 0.0, ratio = 0.0;
        bool proportional = true;
        int correctable = 0;
        for (int r = 0; r < m.rowCount(); ++r) {
            const double w = m.biasCorrection(r, count, total);
            if (!m.canBeBiasCorrected(r)) {
                QCOMPARE(w, 1.0);
                continue;
            }
            ++correctable;
            sum += w;
            ratio = ratio == 0.0 ? w / m.biasCorrection(r) : ratio;
            proportional = proportional && close(w / m.biasCorrection(r) / ratio, 1.0, 1e-9);
        }
        QVERIFY(count > 0 && correctable == count && close(sum, count, 1e-9 * count));
        QCOMPARE(proportional, s.x() == 0.0);
    }
    // Under the row filter only the selected point counts; with none correctable all are 1.
    m.setScanline(0, 0, 10);
    m.setDisplayType(Model::HighlightSelected);
    m.setSelected(36, true); // 85/0: its pole lies 5 degrees off the scanline
    double total;
    QCOMPARE(m.totalBiasWeight(total), 1);
    QVERIFY(close(m.biasCorrection(36, 1, total), 1.0, 1e-12));
    m.setScanline(90, 0, 89);
    QVERIFY(m.totalBiasWeight(total) == 0 && total == 0.0 && m.biasCorrection(1, 0, total) == 1.0);
}

void TestOrientationStatistics::weightsInOneWalk_data()
{
    QTest::addColumn<int>("rows"); // from 200,000 the walk is split between threads
    QTest::addColumn<QPointF>("scanline");
    QTest::addColumn<double>("minimumAngle");
    QTest::addColumn<bool>("filtered");
    QTest::newRow("horizontal") << 60 << QPointF(0, 55) << 10.0 << false;
    QTest::newRow("plunging") << 60 << QPointF(35, 55) << 10.0 << false;
    QTest::newRow("vertical, blanks") << 60 << QPointF(90, 0) << 10.0 << false;
    // The last planes lie 60 degrees off a north scanline: exactly at a 30 degree minimum.
    QTest::newRow("at the minimum") << 60 << QPointF(0, 0) << 30.0 << false;
    QTest::newRow("minimum 0") << 60 << QPointF(0, 0) << 0.0 << false;
    QTest::newRow("minimum past 90") << 60 << QPointF(0, 0) << 120.0 << false;
    QTest::newRow("row filter") << 60 << QPointF(35, 55) << 10.0 << true;
    QTest::newRow("nothing correctable") << 60 << QPointF(kNaN, 0) << 10.0 << false;
    QTest::newRow("threads") << 200000 << QPointF(35, 55) << 10.0 << true;
}

// One walk gives every row the weight that the total and the per-row call give, bit for bit:
// stored weight columns must not change when the same data are weighted again.
void TestOrientationStatistics::weightsInOneWalk()
{
    QFETCH(int, rows);
    QFETCH(QPointF, scanline);
    QFETCH(double, minimumAngle);
    QFETCH(bool, filtered);
    QList<QPointF> planes;
    for (int r = 0; r < rows; ++r)
        planes << (r % 7 == 3 ? QPointF(kNaN, 0) : QPointF(5 + (r * 37) % 85, (r * 53) % 360 + 0.25 * (r % 4)));
    planes << QPointF(90, 240) << QPointF(90, 120) << QPointF(90, 300) << QPointF(90, 60);
    Loaded l = load(planes);
    Probe& m = *l.model;
    m.setScanline(scanline.x(), scanline.y(), minimumAngle);
    if (filtered) {
        m.setDisplayType(Model::HighlightSelected);
        for (int r = 0; r < m.rowCount(); r += 3)
            m.setSelected(r, true);
    }
    double total = 0.0;
    const int count = m.totalBiasWeight(total);
    const std::vector<double> weights = TerzaghiScanline::weights(m);
    QCOMPARE(int(weights.size()), m.rowCount());
    int differ = 0;
    for (int r = 0; r < m.rowCount(); ++r)
        if (weights[std::size_t(r)] != m.biasCorrection(r, count, total))
            ++differ;
    QCOMPARE(differ, 0);
}

QTEST_GUILESS_MAIN(TestOrientationStatistics)
#include "tst_orientationstatistics.moc"

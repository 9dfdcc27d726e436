// Orientation geometry: the three inverse conversions and their kept edge results, the
// pole/plane read-back, rotations of points and columns, the mean-pole and Q-Q rotations, lines
// in planes by pitch, and the fast sine and cosine of the per-point walks.
#include <FastTrig.h>
#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>

using namespace rkBase;
using Model = QRelationshipItemModel;

namespace {
constexpr double kDeg = 3.14159265358979323846 / 180.0;

bool close(double a, double b, double tol = 1e-9)
{
    return std::abs(a - b) <= tol;
}

bool sameAzimuth(double a, double b, double tol = 1e-9)
{
    const double d = std::fmod(std::abs(a - b), 360.0);
    return d <= tol || 360.0 - d <= tol;
}

struct Loaded {
    std::unique_ptr<MatrixData> x, y;
    std::unique_ptr<Model> model;
    QPointF at(int row) const { return model->data()->value(row, 0).toPointF(); }
};

Loaded load(const QList<QPointF>& points, const QString& xName = QStringLiteral("dip"),
            const QString& yName = QStringLiteral("azimuth"))
{
    Loaded l;
    l.x.reset(new MatrixData(xName, points.size(), 1, QVariant::Double, true));
    l.y.reset(new MatrixData(yName, points.size(), 1, QVariant::Double, true));
    for (int r = 0; r < points.size(); ++r) {
        l.x->setValue(r, 0, points[r].x());
        l.y->setValue(r, 0, points[r].y());
    }
    l.model.reset(new Model);
    l.model->takeNewDataSet(l.x.get(), l.y.get(), Model::ShowAll);
    return l;
}
} // namespace

class TestOrientationGeometry : public QObject
{
    Q_OBJECT
private slots:
    void inverseConversions_data();
    void inverseConversions();
    void poleRoundTrip();
    void poleToPlane_data();
    void poleToPlane();
    void rotatePointMatchesRotationMatrix();
    void rotateColumn();
    void meanPoleRotations();
    void plungeAndAzimuth_data();
    void plungeAndAzimuth();
    void pitchLinesLieInTheirPlane();
    void fastTrigMatchesTheLibrary();
};

void TestOrientationGeometry::inverseConversions_data()
{
    QTest::addColumn<int>("form"); // 1, 2, 3: cartesianCoordInPolar, ...2, ...3
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("z");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    const double h = std::sqrt(0.5);
    const double d = std::atan2(0.6, 0.8) / kDeg;
    QTest::newRow("1 down") << 1 << 0.0 << 0.0 << 1.0 << 0.0 << 0.0;
    QTest::newRow("1 north") << 1 << 1.0 << 0.0 << 0.0 << 90.0 << 0.0;
    QTest::newRow("1 south") << 1 << -1.0 << 0.0 << 0.0 << 90.0 << 180.0;
    QTest::newRow("1 north-ish") << 1 << 0.6 << 0.0 << 0.8 << d << 0.0;
    QTest::newRow("1 upward takes the lower end") << 1 << 0.6 << 0.0 << -0.8 << d << 180.0;
    QTest::newRow("1 zero vector") << 1 << 0.0 << 0.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("2 antipole folds") << 2 << 0.0 << 0.0 << -1.0 << 0.0 << 0.0;
    QTest::newRow("2 axes stay 0") << 2 << -1.0 << 0.0 << 0.0 << 90.0 << 0.0;
    QTest::newRow("2 ++") << 2 << h << h << 0.0 << 90.0 << 135.0;
    QTest::newRow("2 upper half") << 2 << 0.5 << 0.5 << -h << 45.0 << 315.0;
    QTest::newRow("3 z above 1") << 3 << 0.0 << 0.0 << 1.0000001 << 90.0 << 0.0;
    QTest::newRow("3 x 0, y positive gives 0") << 3 << 0.0 << 1.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("3 x 0, y negative gives 360") << 3 << 0.0 << -1.0 << 0.0 << 0.0 << 360.0;
    QTest::newRow("3 upward folds down") << 3 << 0.5 << 0.5 << -h << 45.0 << 225.0;
}

void TestOrientationGeometry::inverseConversions()
{
    QFETCH(int, form);
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, z);
    double a = -1, b = -1;
    if (form == 1)
        Model::cartesianCoordInPolar(x, y, z, a, b);
    else if (form == 2)
        Model::cartesianCoordInPolar2(x, y, z, a, b);
    else
        Model().cartesianCoordInPolar3(x, y, z, a, b);
    QFETCH(double, first);
    QFETCH(double, second);
    QVERIFY2(close(a, first) && close(b, second), qPrintable(QString("%1 %2").arg(a).arg(b)));
}

void TestOrientationGeometry::poleRoundTrip()
{
    // The pole leans away from the dip direction; read back as a pole it gives the plane's dip
    // and the pole's own azimuth.
    for (double dip = 10; dip <= 90; dip += 20) {
        for (double dd = 0; dd < 360; dd += 30) {
            double x, y, z, d, a;
            Model::poleInCartesianCoord(dip, dd, x, y, z);
            QVERIFY(close(z, std::cos(dip * kDeg)) && close(x * x + y * y + z * z, 1.0));
            Model::cartesianCoordInPolar(x, y, z, d, a);
            QVERIFY(close(d, dip) && sameAzimuth(a, dd + 180.0));
        }
    }
    QCOMPARE(Model::tilt(0, 0, 0), 0.0);
    QCOMPARE(Model::rotation(0, 0), 3.14159265358979323846 / 2);
    QCOMPARE(Model::rotation(0, -1), -3.14159265358979323846 / 2);
    QCOMPARE(Model::rotation(-1, 0), 3.14159265358979323846);
    QVERIFY(close(Model::tilt(1, 1, 1), std::atan2(std::sqrt(2.0), 1.0)));
}

void TestOrientationGeometry::poleToPlane_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPointF>("expected");
    QTest::newRow("vertical, 0 stays 0") << QPointF(90, 0) << QPointF(0, 0);
    QTest::newRow("vertical, 200") << QPointF(90, 200) << QPointF(0, 20);
    QTest::newRow("vertical, 100") << QPointF(90, 100) << QPointF(0, 280);
    QTest::newRow("30/120") << QPointF(30, 120) << QPointF(60, 300);
    QTest::newRow("60/30") << QPointF(60, 30) << QPointF(30, 210);
    QTest::newRow("45/0") << QPointF(45, 0) << QPointF(45, 180);
}

void TestOrientationGeometry::poleToPlane()
{
    QFETCH(QPointF, point);
    QFETCH(QPointF, expected);
    for (bool equalArea : {true, false}) {
        const QPointF p = Model::poleToPlane(point, equalArea);
        QVERIFY2(close(p.x(), expected.x(), 1e-7) && sameAzimuth(p.y(), expected.y(), 1e-7),
                 qPrintable(QString("%1 %2").arg(p.x()).arg(p.y())));
    }
}

void TestOrientationGeometry::rotatePointMatchesRotationMatrix()
{
    // Right-handed rotation by the angle about the axis: clockwise seen from above for a
    // downward axis.
    Model m;
    QVERIFY(close(m.rotateDataAboutRotationAxis(QPointF(0, 0), QPointF(90, 0), 45.0, false).y(), 45.0));
    QCOMPARE(m.rotateDataAboutRotationAxis(QPointF(40, 250), QPointF(0, 0), 360.0, true), QPointF(40, 250));
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> plunge(1.0, 89.0), azimuth(0.0, 360.0);
    for (int i = 0; i < 200; ++i) {
        const QPointF line(plunge(rng), azimuth(rng)), axis(plunge(rng), azimuth(rng));
        const double a = azimuth(rng) * kDeg;
        const double u[3] = {std::cos(axis.y() * kDeg) * std::cos(axis.x() * kDeg),
                             std::sin(axis.y() * kDeg) * std::cos(axis.x() * kDeg), std::sin(axis.x() * kDeg)};
        const double v[3] = {std::cos(line.y() * kDeg) * std::cos(line.x() * kDeg),
                             std::sin(line.y() * kDeg) * std::cos(line.x() * kDeg), std::sin(line.x() * kDeg)};
        const double uv = u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
        const double uxv[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
        double w[3];
        for (int k = 0; k < 3; ++k)
            w[k] = v[k] * std::cos(a) + uxv[k] * std::sin(a) + u[k] * uv * (1 - std::cos(a));
        const double s = w[2] < 0 ? -1.0 : 1.0;
        const QPointF got = m.rotateDataAboutRotationAxis(line, axis, a / kDeg, false);
        QVERIFY(close(got.x(), std::asin(s * w[2]) / kDeg, 1e-8));
        QVERIFY(sameAzimuth(got.y(), std::atan2(s * w[1], s * w[0]) / kDeg, 1e-7));
    }
}

void TestOrientationGeometry::rotateColumn()
{
    const QList<QPointF> pts = {{10, 20}, {35, 100}, {80, 200}, {30, 0}};
    for (bool isPole : {false, true}) {
        Loaded l = load(pts);
        const quint64 before = l.model->dataRevision();
        l.model->rotateDataAboutRotationAxis(nullptr, QPointF(20, 60), 37.0, isPole);
        QVERIFY(l.model->dataRevision() != before);
        for (int r = 0; r < pts.size(); ++r) {
            const QPointF single = l.model->rotateDataAboutRotationAxis(pts[r], QPointF(20, 60), 37.0, isPole);
            QVERIFY(close(single.x(), l.at(r).x()) && sameAzimuth(single.y(), l.at(r).y()));
        }
    }
    // Azimuth 180 after the turn: 0 in the point form, 360 in the column form.
    Loaded l = load(pts);
    Model& m = *l.model;
    QCOMPARE(m.rotateDataAboutRotationAxis(QPointF(30, 0), QPointF(0, 0), 360.0, true), QPointF(30, 0));
    m.rotateDataAboutRotationAxis(m.data(), QPointF(0, 0), 360.0, true);
    QCOMPARE(l.at(3), QPointF(30, 360));

    // The row filter and bad cells: unselected, blank and NaN rows keep their values.
    m.data()->setValue(1, 0, QVariant());
    m.data()->setValue(3, 0, QPointF(std::numeric_limits<double>::quiet_NaN(), 5));
    m.setDisplayType(Model::HighlightSelected);
    m.setSelected(2, true);
    m.setSelected(3, true);
    m.touchData();
    const QPointF first = l.at(0), third = l.at(2);
    m.rotateDataAboutRotationAxis(nullptr, QPointF(90, 0), 90.0, false);
    QCOMPARE(l.at(0), first);
    QVERIFY(!m.data()->value(1, 0).isValid());
    QVERIFY(std::isnan(l.at(3).x()));
    QVERIFY(close(l.at(2).x(), third.x()) && sameAzimuth(l.at(2).y(), third.y() + 90));

    Model empty;
    empty.clearData();
    empty.rotateDataAboutRotationAxis(nullptr, QPointF(0, 0), 10.0, true);
    empty.rotateDataToMeanPole2(QPointF(30, 40));
    empty.rotateDataToForNormalQQPlot(QPointF(30, 40));
    QVERIFY(!empty.rotatedData(0).isValid());
}

void TestOrientationGeometry::meanPoleRotations()
{
    const QList<QPointF> pts = {{38, 115}, {42, 125}, {40, 118}, {45, 122}, {36, 121}};
    Loaded l = load(pts);
    Model& m = *l.model;
    // Without the rotated copy the Q-Q pass has nothing to write into.
    m.rotateDataToForNormalQQPlot(QPointF(40, 120));
    QVERIFY(!m.rotatedData(0).isValid());

    // rotateDataToMeanPole2: each point lands at its angular distance from the mean.
    const QPointF mean = pts[0];
    m.rotateDataToMeanPole2(mean);
    QCOMPARE(m.rotatedData()->rowCount(), m.data()->rowCount());
    double b[3];
    Model::poleInCartesianCoord(mean.x(), mean.y(), b[0], b[1], b[2]);
    for (int r = 0; r < pts.size(); ++r) {
        double a[3];
        Model::poleInCartesianCoord(pts[r].x(), pts[r].y(), a[0], a[1], a[2]);
        const double angle = std::acos(std::min(1.0, a[0] * b[0] + a[1] * b[1] + a[2] * b[2])) / kDeg;
        QVERIFY(close(m.rotatedData(r).toPointF().x(), angle, 1e-6));
    }
    // The Q-Q pass writes its range on the point list, whose points stay as they are.
    m.rotateDataToForNormalQQPlot(mean);
    double lo = 1e27, hi = -1e27;
    for (int r = 0; r < pts.size(); ++r) {
        lo = std::min(lo, m.rotatedData(r).toPointF().y());
        hi = std::max(hi, m.rotatedData(r).toPointF().y());
    }
    QCOMPARE(m.minValue().y(), lo);
    QCOMPARE(m.maxValue().y(), hi);
    QCOMPARE(l.at(1), pts[1]);

    // rotateDataToMeanPole stands the resultant pole upright.
    m.calculateMeanDirection(true, false, nullptr, -1);
    m.rotateDataToMeanPole(m.meanResultantPole(), true, nullptr);
    m.calculateMeanDirection(true, false, nullptr, -1);
    QVERIFY(m.meanResultantPole().x() < 1e-6);
}

void TestOrientationGeometry::plungeAndAzimuth_data()
{
    QTest::addColumn<double>("dip");
    QTest::addColumn<double>("dipDirection");
    QTest::addColumn<double>("pitch");
    QTest::addColumn<QString>("direction"); // null: the form without a direction
    QTest::addColumn<double>("plunge");
    QTest::addColumn<double>("azimuth");
    const QString none;
    QTest::newRow("pitch 0: strike end at dd - 90") << 30.0 << 90.0 << 0.0 << none << 0.0 << 0.0;
    QTest::newRow("pitch 90: dip line") << 30.0 << 90.0 << 90.0 << none << 30.0 << 90.0;
    QTest::newRow("pitch 180: other end") << 30.0 << 90.0 << 180.0 << none << 0.0 << 180.0;
    QTest::newRow("vertical plane") << 90.0 << 90.0 << 30.0 << none << 30.0 << 0.0;
    QTest::newRow("vertical line keeps dd") << 90.0 << 250.0 << 90.0 << none << 90.0 << 250.0;
    QTest::newRow("pitch past 180 folds down") << 30.0 << 90.0 << 270.0 << none << 30.0 << 90.0;
    QTest::newRow("named default end") << 90.0 << 90.0 << 30.0 << "N" << 30.0 << 0.0;
    QTest::newRow("named other end") << 90.0 << 90.0 << 30.0 << " south " << 30.0 << 180.0;
    QTest::newRow("intercardinal") << 90.0 << 135.0 << 30.0 << "SW" << 30.0 << 225.0;
    QTest::newRow("numeric") << 90.0 << 135.0 << 30.0 << "230" << 30.0 << 225.0;
    QTest::newRow("dip direction is undecided") << 90.0 << 90.0 << 30.0 << "E" << 30.0 << 0.0;
    QTest::newRow("unknown text") << 90.0 << 90.0 << 30.0 << "up" << 30.0 << 0.0;
}

void TestOrientationGeometry::plungeAndAzimuth()
{
    QFETCH(double, dip);
    QFETCH(double, dipDirection);
    QFETCH(double, pitch);
    QFETCH(QString, direction);
    QFETCH(double, plunge);
    QFETCH(double, azimuth);
    double p, a;
    if (direction.isNull())
        MatrixData::plungeAndAzimuth(p, a, dip, dipDirection, pitch);
    else
        MatrixData::plungeAndAzimuth(p, a, dip, dipDirection, pitch, direction);
    QVERIFY2(close(p, plunge) && sameAzimuth(a, azimuth), qPrintable(QString("%1 %2").arg(p).arg(a)));
    QVERIFY(a >= 0.0 && a < 360.0);
}

void TestOrientationGeometry::pitchLinesLieInTheirPlane()
{
    // Great circles: every pitch gives a line normal to the pole. Small circles about the
    // north-south axis: pitch a in a plane dipping east, or 180 - a dipping west, is a degrees
    // from north at any dip.
    for (double dip = 5; dip <= 85; dip += 20) {
        for (double dd = 0; dd < 360; dd += 50) {
            double px, py, pz, p, a;
            Model::poleInCartesianCoord(dip, dd, px, py, pz);
            for (double pitch = 0; pitch <= 180; pitch += 5) {
                MatrixData::plungeAndAzimuth(p, a, dip, dd, pitch);
                QVERIFY(std::abs(std::cos(a * kDeg) * std::cos(p * kDeg) * px
                                 + std::sin(a * kDeg) * std::cos(p * kDeg) * py + std::sin(p * kDeg) * pz)
                        < 1e-12);
            }
        }
        for (double pitch = 10; pitch < 90; pitch += 20) {
            double p, a;
            MatrixData::plungeAndAzimuth(p, a, dip, 90.0, pitch);
            QVERIFY(close(std::acos(std::cos(a * kDeg) * std::cos(p * kDeg)) / kDeg, pitch));
            MatrixData::plungeAndAzimuth(p, a, dip, 270.0, 180.0 - pitch);
            QVERIFY(close(std::acos(std::cos(a * kDeg) * std::cos(p * kDeg)) / kDeg, pitch));
        }
    }
    double p, a;
    MatrixData::plungeAndAzimuth(p, a, std::nan(""), 10.0, 20.0, QStringLiteral("N"));
    QVERIFY(std::isnan(p));
}

void TestOrientationGeometry::fastTrigMatchesTheLibrary()
{
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> degrees(-1000.0, 1000.0);
    QList<double> xs = {0.0, -0.0, 90 * kDeg, 180 * kDeg, 270 * kDeg, -45 * kDeg, 1e5, 1e5 + 1, 1e300};
    for (int i = 0; i < 100000; ++i)
        xs << degrees(rng) * kDeg;
    for (double x : xs) {
        double s, c;
        FastTrig::sinCos(x, s, c);
        QVERIFY2(std::abs(s - std::sin(x)) <= 2.3e-16 && std::abs(c - std::cos(x)) <= 2.3e-16,
                 qPrintable(QString::number(x, 'g', 17)));
    }
    // The array form gives the scalar form's bits, also for the arguments the library takes
    // over (here in the middle of a vectorised run) and at lengths that leave a remainder.
    xs << std::numeric_limits<double>::quiet_NaN() << -std::numeric_limits<double>::infinity() << -3e7;
    std::vector<double> in(xs.begin(), xs.end());
    std::swap(in[5], in[in.size() - 1]);
    for (const int n : {int(in.size()), 1, 7, 0}) {
        std::vector<double> sines(in.size(), -2.0), cosines(in.size(), -2.0);
        FastTrig::sinCosArray(in.data(), sines.data(), cosines.data(), n);
        for (int i = 0; i < int(in.size()); ++i) {
            double s = -2.0, c = -2.0;
            if (i < n)
                FastTrig::sinCos(in[std::size_t(i)], s, c);
            QVERIFY2(std::memcmp(&s, &sines[std::size_t(i)], sizeof s) == 0
                         && std::memcmp(&c, &cosines[std::size_t(i)], sizeof c) == 0,
                     qPrintable(QStringLiteral("n %1, x %2").arg(n).arg(in[std::size_t(i)], 0, 'g', 17)));
        }
    }
    double s, c;
    FastTrig::sinCos(0.0, s, c);
    QVERIFY(s == 0.0 && c == 1.0);
    FastTrig::sinCos(std::numeric_limits<double>::infinity(), s, c);
    QVERIFY(std::isnan(s) && std::isnan(c));
}

QTEST_GUILESS_MAIN(TestOrientationGeometry)
#include "tst_orientationgeometry.moc"

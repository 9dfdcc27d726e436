// Interval filters of the relationship model and the decimation into one average per
// interval: against a plain per-interval average, the boundary and empty-interval rules, the
// third value, orientation means, and the nearest table row.
#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <cmath>
#include <memory>
#include <random>

using namespace rkBase;
using Model = QRelationshipItemModel;

Q_DECLARE_METATYPE(QVector<QPointF>)
Q_DECLARE_METATYPE(std::vector<double>)

namespace {
struct Loaded {
    std::unique_ptr<MatrixData> root;
    std::unique_ptr<Model> model;
    MatrixData* third = nullptr;
};

Loaded load(const QVector<QPointF>& rows, const QString& xName = QStringLiteral("porosity"),
            const std::vector<double>& third = {})
{
    Loaded l;
    l.root.reset(new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true));
    auto* x = new MatrixData(xName, rows.size(), 1, QVariant::Double, true);
    auto* y = new MatrixData(QStringLiteral("depth"), rows.size(), 1, QVariant::Double, true);
    l.third = new MatrixData(QStringLiteral("azimuth"), rows.size(), 1, QVariant::Double, true);
    l.root->appendChild(x, false);
    l.root->appendChild(y, false);
    l.root->appendChild(l.third, false);
    for (int r = 0; r < rows.size(); ++r) {
        x->setValue(r, 0, rows[r].x());
        y->setValue(r, 0, rows[r].y());
        if (std::size_t(r) < third.size() && !std::isnan(third[std::size_t(r)]))
            l.third->setValue(r, 0, third[std::size_t(r)]);
    }
    l.model.reset(new Model);
    l.model->takeNewDataSet(x, y, Model::ShowAll);
    l.model->setDataRoot(l.root.get());
    return l;
}

QVector<QPointF> points(const MatrixData* m)
{
    QVector<QPointF> out;
    for (int r = 0; m && r < m->validValueRowCount(); ++r)
        out << m->value(r, 0).toPointF();
    return out;
}

// The plain reading: every point goes to the first interval whose closed range holds it.
struct Plain {
    QVector<QPointF> means;
    QVector<QPointF> counts;
};
Plain plainAverages(const QVector<QPointF>& rows, const std::vector<double>& b)
{
    Plain p;
    for (std::size_t i = 0; i + 1 < b.size(); ++i) {
        double sx = 0, sy = 0;
        int n = 0;
        for (const QPointF& q : rows) {
            bool earlier = false;
            for (std::size_t k = 0; k < i; ++k)
                earlier = earlier || (q.y() >= b[k] && q.y() <= b[k + 1]);
            if (!earlier && q.y() >= b[i] && q.y() <= b[i + 1]) {
                sx += q.x();
                sy += q.y();
                ++n;
            }
        }
        if (n) {
            p.means << QPointF(sx / n, sy / n);
            p.counts << QPointF(n, (b[i] + b[i + 1]) / 2);
        }
    }
    return p;
}

bool near(const QVector<QPointF>& a, const QVector<QPointF>& b, double eps = 1e-9)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i)
        if (std::fabs(a[i].x() - b[i].x()) > eps || std::fabs(a[i].y() - b[i].y()) > eps)
            return false;
    return true;
}

QVector<QPointF> cloud(int n, double y0, double y1, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(y0, y1);
    std::normal_distribution<double> e(10, 3);
    QVector<QPointF> rows;
    for (int i = 0; i < n; ++i)
        rows << QPointF(e(rng), u(rng));
    return rows;
}
} // namespace

class TestDecimation : public QObject
{
    Q_OBJECT
private slots:
    void filters_data();
    void filters();
    void againstPlainAverage_data();
    void againstPlainAverage();
    void thirdValueOverWholeCount();
    void orientationMeans();
    void orientationWithoutAzimuth_data();
    void orientationWithoutAzimuth();
    void nearestTableRow();
    void unusualBoundariesAndDepths_data();
    void unusualBoundariesAndDepths();
};

void TestDecimation::filters_data()
{
    QTest::addColumn<int>("kind"); // 0 equal size, 1 equal number
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<std::vector<double>>("expected");
    QTest::newRow("size divides") << 0 << 25.0 << 100.0 << 200.0 << std::vector<double>{100, 125, 150, 175, 200};
    QTest::newRow("size overshoots") << 0 << 30.0 << 100.0 << 200.0 << std::vector<double>{100, 130, 160, 190, 220};
    QTest::newRow("size wider than range") << 0 << 500.0 << 100.0 << 200.0 << std::vector<double>{100, 600};
    QTest::newRow("empty range") << 0 << 10.0 << 5.0 << 5.0 << std::vector<double>{5};
    QTest::newRow("size 0 does not hang") << 0 << 0.0 << 0.0 << 10.0 << std::vector<double>{0};
    QTest::newRow("negative size does not hang") << 0 << -1.0 << 0.0 << 10.0 << std::vector<double>{0};
    std::vector<double> million(1000001);
    for (std::size_t i = 0; i < million.size(); ++i)
        million[i] = double(i);
    QTest::newRow("a million steps") << 0 << 1.0 << 0.0 << 1e6 << million;
    QTest::newRow("size far too small does not hang") << 0 << 1e-9 << 0.0 << 1e4 << std::vector<double>{0};
    QTest::newRow("four intervals") << 1 << 4.0 << 0.0 << 100.0 << std::vector<double>{0, 25, 50, 75, 100};
    QTest::newRow("one interval") << 1 << 1.0 << 10.0 << 20.0 << std::vector<double>{10, 20};
    QTest::newRow("count 0: the line at min") << 1 << 0.0 << 10.0 << 20.0 << std::vector<double>{10};
    QTest::newRow("negative count: the line at min") << 1 << -3.0 << 10.0 << 20.0 << std::vector<double>{10};
}

void TestDecimation::filters()
{
    QFETCH(int, kind);
    QFETCH(double, value);
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(std::vector<double>, expected);
    Model model;
    model.insertIntervalBoundary(1e6, 1.0); // replaced by the generated lines
    if (kind == 0)
        model.generateAquidistantIntervalFilter(value, min, max);
    else
        model.generateNumberOfIntervalFilter(int(value), min, max);
    const DepthLineField* f = model.intervalFilter();
    QVERIFY(f);
    QCOMPARE(f->lineDepths().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        QVERIFY(std::fabs(f->lineDepths()[i] - expected[i]) < 1e-9);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        QCOMPARE(f->lineTypes()[i], DepthLineField::IntervalBoundary);
        QCOMPARE(f->lineNames()[i], QStringLiteral("Name"));
        QCOMPARE(f->originalRowPos()[i], -1);
    }
}

void TestDecimation::againstPlainAverage_data()
{
    QTest::addColumn<QVector<QPointF>>("rows");
    QTest::addColumn<std::vector<double>>("boundaries");
    QTest::newRow("ten even intervals") << cloud(2000, 0, 1000, 1)
                                        << std::vector<double>{0, 100, 200, 300, 400, 500, 600, 700, 800, 900, 1000};
    QTest::newRow("uneven, data beyond both ends") << cloud(500, -100, 1100, 2)
                                                   << std::vector<double>{0, 10, 400, 401, 999};
    QTest::newRow("empty intervals leave no row") << cloud(300, 0, 100, 3)
                                                  << std::vector<double>{0, 50, 200, 300, 350, 400};
    QTest::newRow("on a boundary: lower interval")
        << QVector<QPointF>{{1, 10}, {2, 20}, {3, 20}, {4, 30}, {8, 0}} << std::vector<double>{0, 20, 30};
    QTest::newRow("one line: no interval") << cloud(100, 0, 100, 4) << std::vector<double>{50};
    QTest::newRow("repeated boundary") << QVector<QPointF>{{1, 10}, {2, 20}, {3, 25}}
                                       << std::vector<double>{10, 20, 20, 30};
    // Boundaries summed step by step drift off k * step: points on either value must still find
    // the interval a first-match walk gives them.
    std::vector<double> summed;
    QVector<QPointF> onThem;
    double d = 0.0;
    for (int k = 0; k <= 60; ++k, d += 0.1) {
        summed.push_back(d);
        onThem << QPointF(k, d) << QPointF(k + 0.5, k * 0.1) << QPointF(k + 0.25, std::nextafter(d, 1e9));
    }
    QTest::newRow("drifting even boundaries, points on them") << onThem << summed;
    QTest::newRow("boundaries a denormal apart") << QVector<QPointF>{{1, 0}, {2, 5e-324}, {3, 1e-323}}
                                                 << std::vector<double>{0, 5e-324, 1e-323};
}

void TestDecimation::againstPlainAverage()
{
    QFETCH(QVector<QPointF>, rows);
    QFETCH(std::vector<double>, boundaries);
    Loaded l = load(rows);
    for (double b : boundaries)
        l.model->insertIntervalBoundary(b, -1.0); // eps below 0 refuses nothing
    QCOMPARE(l.model->intervalFilter()->lineDepths(), boundaries);
    l.model->generateDataDecimation();
    QVERIFY(l.model->decimationData() && l.model->decimationCount());
    const Plain plain = plainAverages(rows, boundaries);
    QVERIFY(near(points(l.model->decimationData()), plain.means));
    QVERIFY(near(points(l.model->decimationCount()), plain.counts));
    QCOMPARE(l.model->decimationTableRows().size(), std::size_t(plain.means.size()));
    QVERIFY(l.model->decimationAngle().empty()); // no third value, not orientations

    l.model->deleteIntervalBoundaries();
    QVERIFY(!l.model->decimationData());
    l.model->generateDataDecimation();
    QVERIFY(!l.model->decimationData() && !l.model->decimationCount());
}

void TestDecimation::thirdValueOverWholeCount()
{
    // Three rows in one interval, one without a third value: its sum is divided by three.
    Loaded l = load({{1, 1}, {2, 2}, {3, 3}, {4, 15}}, QStringLiteral("porosity"), {30, qQNaN(), 60, 90});
    l.model->setTadPoleAzimuthDataNode(l.third);
    l.model->generateNumberOfIntervalFilter(2, 0, 20);
    l.model->generateDataDecimation();
    QCOMPARE(l.model->decimationAngle(), (std::vector<double>{30.0, 90.0}));
}

void TestDecimation::orientationMeans()
{
    // Dips against depth, the dip azimuths in the "azimuth" column: each interval's x is its
    // mean plane's dip and its angle the mean plane's azimuth.
    QVector<QPointF> rows;
    std::vector<double> azimuths;
    for (int i = 0; i < 20; ++i) {
        rows << QPointF(i % 2 ? 20.0 : 40.0, 5.0 + i);    // interval 0: dips 20 and 40
        azimuths.push_back(120.0);
        rows << QPointF(60.0, 105.0 + i);                 // interval 1: all 60
        azimuths.push_back(300.0);
    }
    Loaded l = load(rows, QStringLiteral("Dip of bedding"), azimuths);
    l.model->generateNumberOfIntervalFilter(2, 0, 200);
    l.model->generateDataDecimation();
    const QVector<QPointF> out = points(l.model->decimationData());
    QCOMPARE(out.size(), 2);
    QVERIFY2(std::fabs(out[0].x() - 30.0) < 0.5, qPrintable(QString::number(out[0].x())));
    QVERIFY2(std::fabs(out[1].x() - 60.0) < 1e-6, qPrintable(QString::number(out[1].x())));
    QCOMPARE(out[0].y(), 14.5);
    QCOMPARE(out[1].y(), 114.5);
    QCOMPARE(l.model->decimationAngle().size(), std::size_t(2));
    QVERIFY(std::fabs(l.model->decimationAngle()[0] - 120.0) < 1e-6);
    QVERIFY(std::fabs(l.model->decimationAngle()[1] - 300.0) < 1e-6);
}

void TestDecimation::orientationWithoutAzimuth_data()
{
    QTest::addColumn<bool>("root");
    QTest::addColumn<std::vector<double>>("azimuths");
    QTest::addColumn<std::vector<double>>("dips");
    const double blank = qQNaN();
    // Intervals hold dips 30, 50 and 70 (two rows each). The mean planes read their azimuths from
    // the root's "azimuth" column; an interval none of whose rows has one keeps the mean of the
    // interval before it, and with no such column every interval keeps the model's last mean.
    QTest::newRow("all azimuths") << true << std::vector<double>{90, 90, 90, 90, 90, 90}
                                  << std::vector<double>{30, 50, 70};
    QTest::newRow("middle interval without") << true << std::vector<double>{90, 90, blank, blank, 90, 90}
                                             << std::vector<double>{30, 30, 70};
    QTest::newRow("first interval without") << true << std::vector<double>{blank, blank, 90, 90, 90, 90}
                                            << std::vector<double>{-1, 50, 70}; // -1: the model's last mean
    QTest::newRow("one row of an interval without") << true << std::vector<double>{90, blank, 90, 90, 90, 90}
                                                    << std::vector<double>{30, 50, 70};
    QTest::newRow("no data root") << false << std::vector<double>{90, 90, 90, 90, 90, 90}
                                  << std::vector<double>{-1, -1, -1};
}

void TestDecimation::orientationWithoutAzimuth()
{
    QFETCH(bool, root);
    QFETCH(std::vector<double>, azimuths);
    QFETCH(std::vector<double>, dips);
    Loaded l = load({{30, 1}, {30, 2}, {50, 11}, {50, 12}, {70, 21}, {70, 22}}, QStringLiteral("dip"), azimuths);
    if (!root)
        l.model->setDataRoot(nullptr);
    l.model->calculateMeanDirection(true, false, nullptr, -1);
    const double before = l.model->meanPrincipalPlane().x();
    QVERIFY(before > 1.0);
    l.model->generateNumberOfIntervalFilter(3, 0, 30);
    l.model->generateDataDecimation();
    const QVector<QPointF> out = points(l.model->decimationData());
    QCOMPARE(out.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const double dip = dips[std::size_t(i)] < 0 ? before : dips[std::size_t(i)];
        QVERIFY2(std::fabs(out[i].x() - dip) < 1e-6,
                 qPrintable(QStringLiteral("interval %1: %2").arg(i).arg(out[i].x())));
        QCOMPARE(out[i].y(), 1.5 + 10 * i); // y stays the plain mean
    }
}

void TestDecimation::nearestTableRow()
{
    // Rows 0..3 in interval 0 (mean y 12.5); rows 1 and 2 are equally near: the first stays.
    // Row 4 alone in interval 1. Row 5 lies outside every interval.
    Loaded l = load({{0, 0}, {0, 10}, {0, 15}, {0, 25}, {0, 60}, {0, 500}});
    l.model->generateNumberOfIntervalFilter(2, 0, 100);
    l.model->generateDataDecimation();
    QCOMPARE(l.model->decimationTableRows(), (std::vector<int>{1, 4}));
}

void TestDecimation::unusualBoundariesAndDepths_data()
{
    QTest::addColumn<QVector<QPointF>>("rows"); // a NaN y is written into the point list directly
    QTest::addColumn<std::vector<double>>("boundaries");
    QTest::addColumn<std::vector<double>>("counts");
    const double nan = qQNaN();
    // y lies in interval i unless y < b[i] or y > b[i + 1]: both tests fail against NaN.
    QTest::newRow("not-a-number boundary catches all")
        << QVector<QPointF>{{1, 2}, {2, 7}, {3, 12}} << std::vector<double>{0, nan, 10} << std::vector<double>{3};
    QTest::newRow("infinite ends") << QVector<QPointF>{{1, -5}, {2, 5}, {3, 0}, {4, -1e308}, {5, 1e308}}
                                   << std::vector<double>{-qInf(), 0, qInf()} << std::vector<double>{3, 2};
    QTest::newRow("ends too far apart for a span") << QVector<QPointF>{{1, -1e308}, {2, 1e308}, {3, 0}}
                                                   << std::vector<double>{-1.5e308, 0, 1.5e308}
                                                   << std::vector<double>{2, 1};
    QTest::newRow("point without a depth: first interval")
        << QVector<QPointF>{{1, 5}, {2, 15}, {3, nan}} << std::vector<double>{0, 10, 20}
        << std::vector<double>{2, 1};
    QTest::newRow("point without a depth, unordered boundaries")
        << QVector<QPointF>{{1, 5}, {3, nan}} << std::vector<double>{10, 0, 20} << std::vector<double>{1, 1};
}

void TestDecimation::unusualBoundariesAndDepths()
{
    QFETCH(QVector<QPointF>, rows);
    QFETCH(std::vector<double>, boundaries);
    QFETCH(std::vector<double>, counts);
    QVector<QPointF> finite = rows;
    for (QPointF& p : finite)
        if (std::isnan(p.y()))
            p.setY(0.0);
    Loaded l = load(finite);
    for (int r = 0; r < rows.size(); ++r)
        l.model->data()->setValue(r, 0, QVariant(rows[r]));
    l.model->touchData();
    // Placeholders in order, then the boundaries as given: the filter takes them as they stand.
    for (std::size_t i = 0; i < boundaries.size(); ++i)
        l.model->insertIntervalBoundary(double(i), 0.5);
    for (std::size_t i = 0; i < boundaries.size(); ++i)
        l.model->intervalFilter()->updatePickedHorizon(int(i), boundaries[i]);
    l.model->generateDataDecimation();
    const QVector<QPointF> out = points(l.model->decimationCount());
    std::vector<double> got;
    for (const QPointF& p : out)
        got.push_back(p.x());
    QCOMPARE(got, counts);
}

QTEST_GUILESS_MAIN(TestDecimation)
#include "tst_decimation.moc"

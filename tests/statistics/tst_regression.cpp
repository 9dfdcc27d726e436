// The regression line of the relationship model against an independent least-squares fit, its
// no-value and snapping rules, and the row filter.
#include <CellColumn.h>
#include <MatrixData.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <cmath>
#include <memory>
#include <random>

using namespace rkBase;
using Model = QRelationshipItemModel;

Q_DECLARE_METATYPE(QVector<QPointF>)

namespace {
struct Loaded {
    std::unique_ptr<MatrixData> root;
    std::unique_ptr<Model> model;
};

// Rows of (x, y); a NaN coordinate leaves that cell blank.
Loaded load(const QVector<QPointF>& rows, Model::DisplayType type = Model::ShowAll,
            const std::vector<int>& selected = {})
{
    Loaded l;
    l.root.reset(new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true));
    auto* x = new MatrixData(QStringLiteral("porosity"), rows.size(), 1, QVariant::Double, true);
    auto* y = new MatrixData(QStringLiteral("depth"), rows.size(), 1, QVariant::Double, true);
    l.root->appendChild(x, false);
    l.root->appendChild(y, false);
    for (int r = 0; r < rows.size(); ++r) {
        if (!std::isnan(rows[r].x()))
            x->setValue(r, 0, rows[r].x());
        if (!std::isnan(rows[r].y()))
            y->setValue(r, 0, rows[r].y());
    }
    l.model.reset(new Model);
    l.model->takeNewDataSet(1, type, x, y, selected);
    return l;
}

// Least squares from the raw sums, in long double: a different route to the same line.
void reference(const QVector<QPointF>& rows, double& slope, double& intercept, double& r)
{
    long double n = 0, sx = 0, sy = 0, sxx = 0, sxy = 0, syy = 0;
    for (const QPointF& p : rows) {
        if (std::isnan(p.x()) || std::isnan(p.y()))
            continue;
        n += 1;
        sx += p.x();
        sy += p.y();
        sxx += (long double)p.x() * p.x();
        sxy += (long double)p.x() * p.y();
        syy += (long double)p.y() * p.y();
    }
    const long double dxx = n * sxx - sx * sx;
    const long double dxy = n * sxy - sx * sy;
    const long double dyy = n * syy - sy * sy;
    slope = double(dxy / dxx);
    intercept = double((sy - (dxy / dxx) * sx) / n);
    r = double(dxy / std::sqrt(dxx * dyy));
}

QVector<QPointF> line(int n, double a, double b, double noise, double x0, double x1, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(x0, x1);
    std::normal_distribution<double> e(0.0, noise);
    QVector<QPointF> rows;
    for (int i = 0; i < n; ++i) {
        const double x = u(rng);
        rows << QPointF(x, a * x + b + (noise > 0 ? e(rng) : 0.0));
    }
    return rows;
}
} // namespace

class TestRegression : public QObject
{
    Q_OBJECT
private slots:
    void againstLeastSquares_data();
    void againstLeastSquares();
    void special_data();
    void special();
    void rowFilter();
    void pointsReadAsValues();
};

void TestRegression::againstLeastSquares_data()
{
    QTest::addColumn<QVector<QPointF>>("rows");
    QTest::newRow("steep, noisy") << line(500, 3.5, -20.0, 4.0, -10, 10, 1);
    QTest::newRow("negative slope") << line(200, -0.75, 1000.0, 1.0, 0, 100, 2);
    QTest::newRow("far from the origin") << line(300, 2.0, 5.0, 0.5, 2000, 2010, 3);
    QTest::newRow("exact") << line(50, 1.25, 7.0, 0.0, 1, 5, 4);
    QVector<QPointF> withGaps = line(100, 0.5, 2.0, 0.1, 0, 10, 5);
    withGaps[3].setX(qQNaN());
    withGaps[40].setY(qQNaN());
    withGaps[41] = QPointF(qInf(), 1.0);
    QTest::newRow("blank and infinite cells skipped") << withGaps;
    QTest::newRow("two points") << QVector<QPointF>{{1, 1}, {3, 7}};
}

void TestRegression::againstLeastSquares()
{
    QFETCH(QVector<QPointF>, rows);
    Loaded l = load(rows);
    QVector<QPointF> finite;
    for (const QPointF& p : rows)
        if (std::isfinite(p.x()) && std::isfinite(p.y()))
            finite << p;
    double slope = -1, intercept = -1, coefficient = -1;
    l.model->calculateRegressionLine(slope, intercept, coefficient);
    double a, b, r;
    reference(finite, a, b, r);
    QVERIFY2(std::fabs(slope - a) <= 1e-9 * std::max(1.0, std::fabs(a)), qPrintable(QString::number(slope - a)));
    QVERIFY2(std::fabs(intercept - b) <= 1e-7 * std::max(1.0, std::fabs(b)),
             qPrintable(QString::number(intercept - b)));
    QVERIFY2(std::fabs(coefficient - r) <= 1e-9, qPrintable(QString::number(coefficient - r)));
}

void TestRegression::special_data()
{
    QTest::addColumn<QVector<QPointF>>("rows");
    QTest::addColumn<double>("slope");
    QTest::addColumn<double>("intercept");
    QTest::addColumn<double>("coefficient"); // NaN: not a number expected
    QTest::newRow("no rows") << QVector<QPointF>{} << 0.0 << 0.0 << 0.0;
    QTest::newRow("only blank cells") << QVector<QPointF>{{qQNaN(), 1}, {2, qQNaN()}} << 0.0 << 0.0 << 0.0;
    QTest::newRow("one point at x 0: no value") << QVector<QPointF>{{0, 12}} << 99999.0 << 12.0 << 0.0;
    QTest::newRow("vertical at x 0: no value") << QVector<QPointF>{{0, 1}, {4e-7, 2}, {-4e-7, 6}} << 99999.0 << 3.0
                                                << 0.0;
    QTest::newRow("one point elsewhere") << QVector<QPointF>{{5, 12}} << 0.0 << 12.0 << 0.0;
    QTest::newRow("vertical elsewhere: flat") << QVector<QPointF>{{5, 1}, {5, 2}, {5, 6}} << 0.0 << 3.0 << 0.0;
    QTest::newRow("horizontal: 0/0") << QVector<QPointF>{{1, 4}, {2, 4}, {3, 4}} << 0.0 << 4.0 << qQNaN();
    QTest::newRow("tiny slope snaps") << QVector<QPointF>{{0, 10}, {1, 10.000001}, {2, 10.000002}} << 0.0 << 10.0
                                      << 1.0;
    QTest::newRow("tiny intercept snaps") << QVector<QPointF>{{1, 2.000001}, {2, 4.000001}} << 2.0 << 0.0 << 1.0;
    QTest::newRow("through the origin") << QVector<QPointF>{{1, -2}, {2, -4}, {3, -6}} << -2.0 << 0.0 << -1.0;
}

void TestRegression::special()
{
    QFETCH(QVector<QPointF>, rows);
    QFETCH(double, slope);
    QFETCH(double, intercept);
    QFETCH(double, coefficient);
    Loaded l = load(rows);
    double s = -1, i = -1, c = -1;
    l.model->calculateRegressionLine(s, i, c);
    QCOMPARE(s, slope);
    QVERIFY2(std::fabs(i - intercept) < 1e-9, qPrintable(QString::number(i, 'g', 17)));
    if (std::isnan(coefficient))
        QVERIFY(std::isnan(c));
    else
        QVERIFY2(std::fabs(c - coefficient) < 1e-9, qPrintable(QString::number(c, 'g', 17)));
}

void TestRegression::rowFilter()
{
    // Selected rows on one line, the others on another: highlighting fits the selected only.
    QVector<QPointF> rows;
    std::vector<int> selected;
    for (int i = 0; i < 40; ++i) {
        const bool on = i % 2 == 0;
        rows << QPointF(i, on ? 2.0 * i + 1.0 : -i + 50.0);
        if (on)
            selected.push_back(i);
    }
    Loaded l = load(rows, Model::HighlightSelected, selected);
    l.model->setPartSelection(true);
    double s, i, c;
    l.model->calculateRegressionLine(s, i, c);
    QCOMPARE(s, 2.0);
    QCOMPARE(i, 1.0);
    QVERIFY(std::fabs(c - 1.0) < 1e-12);
    // Showing all, every row counts.
    l.model->setDisplayType(Model::ShowAll);
    l.model->calculateRegressionLine(s, i, c);
    double a, b, r;
    reference(rows, a, b, r);
    QVERIFY(std::fabs(s - a) < 1e-9 && std::fabs(i - b) < 1e-9);
}

void TestRegression::pointsReadAsValues()
{
    // A list that keeps its points as plain values is read through value(): a point at the
    // origin is a valid cell there too and counts.
    const QVector<QPointF> rows{{0, 0}, {1, 1}, {2, 5}};
    Loaded l = load(rows);
    double s0, i0, c0;
    l.model->calculateRegressionLine(s0, i0, c0);
    l.model->data()->setCellType(QVariant::SizeF);
    QVERIFY(!l.model->data()->cellColumn(0)->pointData());
    QCOMPARE(l.model->data()->value(0, 0).toPointF(), QPointF(0, 0));
    l.model->touchData();
    double s, i, c;
    l.model->calculateRegressionLine(s, i, c);
    QCOMPARE(s, 2.5);
    QCOMPARE(s, s0);
    QVERIFY(std::fabs(i - i0) < 1e-12 && std::fabs(c - c0) < 1e-12);
}

QTEST_GUILESS_MAIN(TestRegression)
#include "tst_regression.moc"

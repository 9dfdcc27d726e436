// The two-sample test: the statistic of the samples against SciPy's ks_2samp on fixed pairs
// (data/ks_2samp_reference.csv, written by data/ks_2samp_reference.py), and the binned verdict
// read from two cumulative curves.
#include <KolmogorovSmirnovTest.h>
#include <MatrixDataArray.h>

#include <QFile>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace rkBase;

using Points = std::vector<std::pair<double, double>>;
Q_DECLARE_METATYPE(Points)

class TestKolmogorovSmirnov : public QObject
{
    Q_OBJECT
private slots:
    void againstSciPy_data();
    void againstSciPy();
    void sampleEdges_data();
    void sampleEdges();
    void kolmogorovSurvival_data();
    void kolmogorovSurvival();
    void binned_data();
    void binned();
};

namespace {
std::vector<double> numbers(const QString& text)
{
    std::vector<double> out;
    for (const QString& t : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        out.push_back(t.toDouble());
    return out;
}

// A cumulative curve as the histogram's tables give it after reduceToAveraged: column 0 the
// percent, column 1 the position.
std::unique_ptr<MatrixData> curve(const Points& points)
{
    auto c = std::make_unique<MatrixDataArray>(QStringLiteral("curve"), int(points.size()), 2, QVariant::Double);
    for (int i = 0; i < int(points.size()); ++i) {
        c->setValue(i, 0, points[std::size_t(i)].second);
        c->setValue(i, 1, points[std::size_t(i)].first);
    }
    c->setValidValueRowCount(int(points.size()));
    return c;
}
} // namespace

void TestKolmogorovSmirnov::againstSciPy_data()
{
    QTest::addColumn<QVector<double>>("first");
    QTest::addColumn<QVector<double>>("second");
    QTest::addColumn<double>("statistic");
    QTest::addColumn<int>("n1");
    QTest::addColumn<int>("n2");
    QTest::addColumn<double>("pLimit");
    QTest::addColumn<double>("pSciPy");
    QFile file(QFINDTESTDATA("data/ks_2samp_reference.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    int rows = 0;
    while (!file.atEnd()) {
        const QStringList f = QString::fromUtf8(file.readLine()).trimmed().split(QLatin1Char(';'));
        QCOMPARE(f.size(), 8);
        const std::vector<double> a = numbers(f[1]), b = numbers(f[2]);
        QTest::newRow(qPrintable(f[0])) << QVector<double>(a.begin(), a.end()) << QVector<double>(b.begin(), b.end())
                                        << f[3].toDouble() << f[4].toInt() << f[5].toInt() << f[6].toDouble()
                                        << (f[7] == QLatin1String("nan") ? std::nan("") : f[7].toDouble());
        ++rows;
    }
    QVERIFY(rows >= 5);
}

void TestKolmogorovSmirnov::againstSciPy()
{
    QFETCH(QVector<double>, first);
    QFETCH(QVector<double>, second);
    QFETCH(double, statistic);
    QFETCH(int, n1);
    QFETCH(int, n2);
    QFETCH(double, pLimit);
    QFETCH(double, pSciPy);
    // The samples go in unsorted and come out counted as they are.
    const auto r = KolmogorovSmirnovTest::sample(std::vector<double>(first.rbegin(), first.rend()),
                                                 std::vector<double>(second.begin(), second.end()));
    QVERIFY(r.valid);
    QCOMPARE(r.n1, n1);
    QCOMPARE(r.n2, n2);
    QVERIFY2(std::abs(r.statistic - statistic) < 1e-12, qPrintable(QString::number(r.statistic, 'g', 17)));
    QVERIFY2(std::abs(r.pValue - pLimit) <= 1e-9 * pLimit + 1e-15, qPrintable(QString::number(r.pValue, 'g', 17)));
    // SciPy's 'asymp' reads the finite-n distribution: the two agree on the verdict at 5%.
    if (std::isfinite(pSciPy))
        QCOMPARE(r.pValue < 0.05, pSciPy < 0.05);
}

void TestKolmogorovSmirnov::sampleEdges_data()
{
    QTest::addColumn<QVector<double>>("first");
    QTest::addColumn<QVector<double>>("second");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<int>("n1");
    QTest::addColumn<double>("statistic");
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    QTest::newRow("empty first") << QVector<double>{} << QVector<double>{1, 2} << false << 0 << 0.0;
    QTest::newRow("only NaN and inf") << QVector<double>{nan, inf, -inf} << QVector<double>{1, 2} << false << 0 << 0.0;
    QTest::newRow("NaN left out") << QVector<double>{1, nan, 2} << QVector<double>{1, 2} << true << 2 << 0.0;
    QTest::newRow("all equal, same value") << QVector<double>{5, 5, 5} << QVector<double>{5, 5} << true << 3 << 0.0;
    QTest::newRow("all equal, apart") << QVector<double>{5, 5, 5} << QVector<double>{6, 6} << true << 3 << 1.0;
    // Ties across the samples move both functions at once: after 1 both stand at 1/2.
    QTest::newRow("shared tie") << QVector<double>{1, 2} << QVector<double>{1, 3} << true << 2 << 0.5;
}

void TestKolmogorovSmirnov::sampleEdges()
{
    QFETCH(QVector<double>, first);
    QFETCH(QVector<double>, second);
    QFETCH(bool, valid);
    QFETCH(int, n1);
    QFETCH(double, statistic);
    const auto r = KolmogorovSmirnovTest::sample(std::vector<double>(first.begin(), first.end()),
                                                 std::vector<double>(second.begin(), second.end()));
    QCOMPARE(r.valid, valid);
    QCOMPARE(r.n1, n1);
    QCOMPARE(r.statistic, statistic);
    QVERIFY(r.pValue >= 0.0 && r.pValue <= 1.0);
}

void TestKolmogorovSmirnov::kolmogorovSurvival_data()
{
    QTest::addColumn<double>("lambda");
    QTest::addColumn<double>("expected"); // scipy.special.kolmogorov
    QTest::newRow("0") << 0.0 << 1.0;
    QTest::newRow("0.3") << 0.3 << 0.9999906941986655;
    QTest::newRow("1.0") << 1.0 << 0.26999967167735456;
    QTest::newRow("1.17, small branch") << 1.17 << 0.12939004218561884;
    QTest::newRow("1.19, large branch") << 1.19 << 0.11774229287977166;
    QTest::newRow("1.36, 5%") << 1.36 << 0.049485876755377876;
    QTest::newRow("3.0") << 3.0 << 3.045995948942526e-08;
    QTest::newRow("inf") << std::numeric_limits<double>::infinity() << 0.0;
}

void TestKolmogorovSmirnov::kolmogorovSurvival()
{
    QFETCH(double, lambda);
    QFETCH(double, expected);
    const double p = KolmogorovSmirnovTest::kolmogorovSurvival(lambda);
    QVERIFY2(std::abs(p - expected) <= 1e-12 + 1e-10 * expected, qPrintable(QString::number(p, 'g', 17)));
}

void TestKolmogorovSmirnov::binned_data()
{
    QTest::addColumn<Points>("first");
    QTest::addColumn<Points>("second");
    QTest::addColumn<QVector<double>>("spans"); // lo1, hi1, lo2, hi2, lo, hi, step
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("k");
    QTest::addColumn<double>("maxDifference");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("critical");
    QTest::addColumn<bool>("passed");
    const Points rising{{0, 0}, {10, 50}, {20, 100}};
    const Points later{{5, 0}, {15, 50}, {25, 100}};
    QTest::newRow("identical: 0.00%, passed") << rising << rising << QVector<double>{0, 30, 0, 30, 0, 30, 1} << 100
                                              << 1.36 << 0.0 << 0.0 << 19.23 << true;
    // 99%: 1.63 * sqrt(200 / 10000) * 100 = 23.05.
    QTest::newRow("shifted by 5, 99%") << rising << later << QVector<double>{0, 30, 5, 35, 0, 35, 1} << 100 << 1.63
                                       << 25.0 << 5.0 << 23.05 << false;
    // Every x between 5 and 20 gives 25: the tie keeps the first.
    QTest::newRow("tie keeps the earlier x") << rising << later << QVector<double>{0, 30, 5, 35, 0, 35, 0.5} << 100
                                             << 1.07 << 25.0 << 5.0 << 15.13 << false;
    QTest::newRow("disjoint spans: 0, passed") << rising << later << QVector<double>{0, 20, 25, 45, 0, 45, 1} << 100
                                               << 1.36 << 0.0 << 0.0 << 19.23 << true;
    QTest::newRow("step 0 counts as 1") << rising << later << QVector<double>{0, 30, 5, 35, 0.5, 35, 0} << 100
                                        << 1.36 << 25.0 << 5.5 << 19.23 << false;
    // Widened to a millionth of the range (3.5e-5): the first position on that grid past 5.
    QTest::newRow("a step of millions of positions") << rising << later << QVector<double>{0, 30, 5, 35, 0, 35, 1e-12}
                                                     << 100 << 1.36 << 25.0 << 142858 * 3.5e-5 << 19.23 << false;
}

void TestKolmogorovSmirnov::binned()
{
    QFETCH(Points, first);
    QFETCH(Points, second);
    QFETCH(QVector<double>, spans);
    QFETCH(int, n);
    QFETCH(double, k);
    QFETCH(double, maxDifference);
    QFETCH(double, x);
    QFETCH(double, critical);
    QFETCH(bool, passed);
    const auto a = curve(first), b = curve(second);
    const auto r = KolmogorovSmirnovTest::binned({a.get(), spans[0], spans[1], n}, {b.get(), spans[2], spans[3], n},
                                                 spans[4], spans[5], spans[6], k);
    QCOMPARE(QString::number(r.maxDifference, 'f', 2), QString::number(maxDifference, 'f', 2));
    QVERIFY2(std::abs(r.x - x) < 1e-6, qPrintable(QString::number(r.x)));
    QCOMPARE(QString::number(r.critical, 'f', 2), QString::number(critical, 'f', 2));
    QCOMPARE(r.passed, passed);
    // The line of the difference joins the two curves where it was read.
    QVERIFY(std::abs(std::abs(r.v1 - r.v2) - r.maxDifference) < 1e-9);
}


QTEST_GUILESS_MAIN(TestKolmogorovSmirnov)
#include "tst_kolmogorovsmirnov.moc"

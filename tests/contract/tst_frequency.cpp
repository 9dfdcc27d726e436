// Frequency tables: histogram and rose bins checked against a count made here from the edges,
// the three table types, the automatic interval, the cumulative curve read both ways, the mean
// direction, and input that has nothing sensible to count.
#include <MatrixData.h>
#include <MatrixDataArray.h>

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

using namespace rkBase;

Q_DECLARE_METATYPE(std::vector<int>)
Q_DECLARE_METATYPE(std::vector<double>)

namespace {
using Table = std::unique_ptr<MatrixData>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

std::unique_ptr<MatrixData> columnOf(const std::vector<double>& values)
{
    auto c = std::make_unique<MatrixData>(QStringLiteral("v"), int(values.size()), 1, QVariant::Double, true);
    for (int r = 0; r < int(values.size()); ++r)
        c->setValue(r, 0, values[r]);
    c->setValidValueRowCount(int(values.size()));
    return c;
}

std::vector<double> sample(const QString& kind, int n)
{
    std::mt19937 rng(12345);
    std::vector<double> v;
    if (kind == "normal") {
        std::normal_distribution<double> d(20.0, 4.0);
        for (int i = 0; i < n; ++i)
            v.push_back(d(rng));
    } else if (kind == "integers") {
        // Every value sits on a bin edge when the interval is 1 or 5.
        std::uniform_int_distribution<int> d(-10, 30);
        for (int i = 0; i < n; ++i)
            v.push_back(d(rng));
    } else if (kind == "tenths") {
        // Values that are not exact in binary, on edges of a 0.1 interval.
        for (int i = 0; i < n; ++i)
            v.push_back((i % 37) * 0.1);
    } else if (kind == "skewed") {
        std::exponential_distribution<double> d(0.5);
        for (int i = 0; i < n; ++i)
            v.push_back(d(rng) * 1000.0);
    }
    return v;
}

// The count of values in each row's [start, end), from the table's own edge columns; the
// largest value belongs to the last bin.
std::vector<int> countByEdges(const MatrixData* table, const std::vector<double>& values)
{
    const int bins = table->rowCount();
    std::vector<int> counts(bins, 0);
    double top = -kInf;
    for (double v : values)
        if (std::isfinite(v))
            top = std::max(top, v);
    for (double v : values) {
        if (!std::isfinite(v))
            continue;
        for (int b = 0; b < bins; ++b) {
            const double s = table->toDouble(b, 1), e = table->toDouble(b, 2);
            if ((v >= s && v < e) || (b == bins - 1 && v == top)) {
                ++counts[b];
                break;
            }
        }
    }
    return counts;
}
} // namespace

class TestFrequency : public QObject
{
    Q_OBJECT
private slots:
    void binsMatchAnIndependentCount_data();
    void binsMatchAnIndependentCount();
    void typesOfTheValueColumn();
    void rowLists_data();
    void rowLists();
    void smallValues();
    void niceIntervals_data();
    void niceIntervals();
    void automaticInterval_data();
    void automaticInterval();
    void badHistogramInput_data();
    void badHistogramInput();
    void cumulativeCurveInvertsToPercentiles();
    void curveMergesEmptyBins();
    void interpolation_data();
    void interpolation();
    void roseBins_data();
    void roseBins();
    void roseBinGeometry_data();
    void roseBinGeometry();
    void roseClassValuesFollowTheirRows();
    void resultant_data();
    void resultant();
};

void TestFrequency::binsMatchAnIndependentCount_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("interval");
    QTest::newRow("normal, 1") << "normal" << 5000 << 1.0;
    QTest::newRow("normal, 0.37") << "normal" << 5000 << 0.37;
    QTest::newRow("integers on edges, 1") << "integers" << 3000 << 1.0;
    QTest::newRow("integers on edges, 5") << "integers" << 3000 << 5.0;
    QTest::newRow("tenths on edges, 0.1") << "tenths" << 2000 << 0.1;
    QTest::newRow("tenths, 0.3") << "tenths" << 2000 << 0.3;
    QTest::newRow("skewed, automatic") << "skewed" << 4000 << 99999.0;
}

void TestFrequency::binsMatchAnIndependentCount()
{
    QFETCH(QString, kind);
    QFETCH(int, n);
    QFETCH(double, interval);
    const std::vector<double> values = sample(kind, n);
    auto node = columnOf(values);
    double chosen = interval;
    Table table(node->newFrequencyData(chosen, MatrixData::Frequency, {}, true, nullptr, true));
    QVERIFY(chosen > 0.0 && chosen != 99999.0);
    const double lo = *std::min_element(values.begin(), values.end());
    const double hi = *std::max_element(values.begin(), values.end());
    QCOMPARE(table->rowCount(), int(std::floor((hi - lo) / chosen)) + 1);
    QCOMPARE(table->toDouble(0, 1), lo);
    QVERIFY(table->toDouble(table->rowCount() - 1, 2) > hi);
    QCOMPARE(table->validValueRowCount(), n);
    const std::vector<int> expected = countByEdges(table.get(), values);
    int total = 0;
    for (int b = 0; b < table->rowCount(); ++b) {
        QCOMPARE(table->toDouble(b, 0), double(expected[b]));
        total += int(table->toDouble(b, 0));
    }
    QCOMPARE(total, n);
}

void TestFrequency::typesOfTheValueColumn()
{
    const std::vector<double> values = sample("normal", 997);
    auto node = columnOf(values);
    double interval = 2.0;
    Table counts(node->newFrequencyData(interval, MatrixData::Frequency, {}, true, nullptr, true));
    Table percent(node->newFrequencyData(interval, MatrixData::RelativeFrequency, {}, true, nullptr, true));
    Table cumulative(node->newFrequencyData(interval, MatrixData::CumulativeRelativeFrequency, {}, true, nullptr, true));
    QCOMPARE(percent->rowCount(), counts->rowCount());
    double running = 0.0;
    for (int b = 0; b < counts->rowCount(); ++b) {
        running += counts->toDouble(b, 0);
        QVERIFY(qFuzzyCompare(1.0 + percent->toDouble(b, 0), 1.0 + 100.0 * counts->toDouble(b, 0) / 997.0));
        QVERIFY(qFuzzyCompare(1.0 + cumulative->toDouble(b, 0), 1.0 + 100.0 * running / 997.0));
        QCOMPARE(cumulative->toDouble(b, 1), counts->toDouble(b, 1));
    }
    QCOMPARE(cumulative->toDouble(cumulative->rowCount() - 1, 0), 100.0);
}

void TestFrequency::rowLists_data()
{
    QTest::addColumn<std::vector<int>>("rows");
    QTest::addColumn<bool>("emptyMeansAll");
    QTest::addColumn<int>("counted");
    QTest::addColumn<int>("bins");
    // Values are 0..9.
    QTest::newRow("all rows") << std::vector<int>{} << true << 10 << 10;
    QTest::newRow("empty list means nothing") << std::vector<int>{} << false << 0 << 0;
    QTest::newRow("subset") << std::vector<int>{2, 3, 7} << true << 3 << 6;
    QTest::newRow("rows out of range ignored") << std::vector<int>{-1, 4, 99, 5} << true << 2 << 2;
    QTest::newRow("repeated row counts twice") << std::vector<int>{1, 1, 2} << false << 3 << 2;
    QTest::newRow("only bad rows") << std::vector<int>{-5, 10} << true << 0 << 0;
}

void TestFrequency::rowLists()
{
    QFETCH(std::vector<int>, rows);
    QFETCH(bool, emptyMeansAll);
    QFETCH(int, counted);
    QFETCH(int, bins);
    auto node = columnOf({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    double interval = 1.0;
    Table table(node->newFrequencyData(interval, MatrixData::Frequency, rows, emptyMeansAll, nullptr, true));
    QCOMPARE(table->validValueRowCount(), counted);
    QCOMPARE(table->rowCount(), bins);
}

void TestFrequency::smallValues()
{
    auto node = columnOf({0.0, 0.0, 1e-9, 0.2, 0.25, 0.3, -0.31, 0.0});
    double interval = 0.1;
    Table all(node->newFrequencyData(interval, MatrixData::Frequency, {}, true, nullptr, true));
    Table large(node->newFrequencyData(interval, MatrixData::Frequency, {}, true, nullptr, false));
    QCOMPARE(all->validValueRowCount(), 8);
    QCOMPARE(large->validValueRowCount(), 4);
    QCOMPARE(large->toDouble(0, 1), -0.31);
}

void TestFrequency::niceIntervals_data()
{
    QTest::addColumn<double>("h");
    QTest::addColumn<double>("nice");
    QTest::newRow("1.3 -> 1") << 1.3 << 1.0;
    QTest::newRow("1.5 -> 2") << 1.5 << 2.0;
    QTest::newRow("3.1 -> 2") << 3.1 << 2.0;
    QTest::newRow("3.2 -> 5") << 3.2 << 5.0;
    QTest::newRow("7.0 -> 5") << 7.0 << 5.0;
    QTest::newRow("7.2 -> 10") << 7.2 << 10.0;
    QTest::newRow("0.00042 -> 0.0005") << 0.00042 << 0.0005;
    QTest::newRow("2600 -> 2000") << 2600.0 << 2000.0;
}

void TestFrequency::niceIntervals()
{
    QFETCH(double, h);
    QFETCH(double, nice);
    QVERIFY(qFuzzyCompare(MatrixData::niceInterval(h), nice));
    QVERIFY(std::isnan(MatrixData::niceInterval(0.0)));
    QVERIFY(std::isnan(MatrixData::niceInterval(-2.0)));
    QVERIFY(std::isnan(MatrixData::niceInterval(kInf)));
}

void TestFrequency::automaticInterval_data()
{
    QTest::addColumn<std::vector<double>>("values");
    QTest::addColumn<double>("interval");
    std::vector<double> ramp;
    for (int i = 1; i <= 1000; ++i)
        ramp.push_back(i);
    // IQR 499.5, n^(1/3) = 10: 99.9, rounded to 100.
    QTest::newRow("1..1000") << ramp << 100.0;
    std::vector<double> spike(100, 0.0);
    spike.push_back(10.0);
    // IQR 0: Sturges, 10 / (ceil(log2 101) + 1) = 1.25 -> 1.
    QTest::newRow("zero IQR falls back to Sturges") << spike << 1.0;
    QTest::newRow("all equal, 5 -> 0.5") << std::vector<double>(20, 5.0) << 0.5;
    QTest::newRow("all zero -> 1") << std::vector<double>(3, 0.0) << 1.0;
    QTest::newRow("one value") << std::vector<double>{-250.0} << 20.0;
    // n under 4: Sturges, 3 / 2 -> 2.
    QTest::newRow("two values") << std::vector<double>{0.0, 3.0} << 2.0;
}

void TestFrequency::automaticInterval()
{
    QFETCH(std::vector<double>, values);
    QFETCH(double, interval);
    auto node = columnOf(values);
    for (double asked : {99999.0, 0.0, -3.0, kNaN}) {
        double chosen = asked;
        Table table(node->newFrequencyData(chosen, MatrixData::Frequency, {}, true, nullptr, true));
        QVERIFY2(qFuzzyCompare(chosen, interval), qPrintable(QString::number(chosen)));
        QVERIFY(table->rowCount() >= 1);
        QCOMPARE(table->validValueRowCount(), int(values.size()));
    }
}

void TestFrequency::badHistogramInput_data()
{
    QTest::addColumn<std::vector<double>>("values");
    QTest::addColumn<double>("interval");
    QTest::addColumn<int>("bins");
    QTest::addColumn<int>("counted");
    QTest::addColumn<double>("intervalAfter");
    QTest::newRow("no values") << std::vector<double>{} << 1.0 << 0 << 0 << 1.0;
    QTest::newRow("only NaN and infinities") << std::vector<double>{kNaN, kInf, -kInf} << 1.0 << 0 << 0 << 1.0;
    QTest::newRow("NaN and infinities skipped") << std::vector<double>{kNaN, 1.0, kInf, 2.5, -kInf} << 1.0 << 2 << 2 << 1.0;
    QTest::newRow("one value, one bin") << std::vector<double>{7.0} << 1.0 << 1 << 1 << 1.0;
    QTest::newRow("all equal, one bin") << std::vector<double>(50, 3.0) << 0.25 << 1 << 50 << 0.25;
    QTest::newRow("100,000 bins asked, capped")
        << std::vector<double>{0.0, 1.0} << 1e-9 << MatrixData::kMaxFrequencyBins << 2
        << 1.0 / (MatrixData::kMaxFrequencyBins - 1);
    QTest::newRow("huge range")
        << std::vector<double>{-1e308, 1e308} << 1.0 << MatrixData::kMaxFrequencyBins << 2
        << std::numeric_limits<double>::max() / MatrixData::kMaxFrequencyBins;
}

void TestFrequency::badHistogramInput()
{
    QFETCH(std::vector<double>, values);
    QFETCH(double, interval);
    QFETCH(int, bins);
    QFETCH(int, counted);
    QFETCH(double, intervalAfter);
    auto node = columnOf(values);
    Table table(node->newFrequencyData(interval, MatrixData::CumulativeRelativeFrequency, {}, true, nullptr, true));
    QVERIFY(table);
    QCOMPARE(table->rowCount(), bins);
    QCOMPARE(table->validValueRowCount(), counted);
    QVERIFY(qFuzzyCompare(interval, intervalAfter));
    if (bins > 0)
        QCOMPARE(table->toDouble(bins - 1, 0), 100.0);
    Table curve(table->reduceToAveraged(0, 1));
    QCOMPARE(curve->rowCount() == 0, bins == 0);
}

void TestFrequency::cumulativeCurveInvertsToPercentiles()
{
    std::vector<double> values = sample("normal", 20000);
    auto node = columnOf(values);
    double interval = 0.25;
    Table cumulative(node->newFrequencyData(interval, MatrixData::CumulativeRelativeFrequency, {}, true, nullptr, true));
    Table curve(cumulative->reduceToAveraged(0, 1));
    std::sort(values.begin(), values.end());
    for (double p : {1.0, 10.0, 50.0, 90.0, 99.0}) {
        const double exact = values[std::size_t(p / 100.0 * (values.size() - 1))];
        const double read = curve->getInterpolationValue(p, 0, 1);
        QVERIFY2(std::abs(read - exact) <= interval, qPrintable(QStringLiteral("P%1: %2 against %3").arg(p).arg(read).arg(exact)));
        // And back: the percent at that position.
        QVERIFY(std::abs(curve->getInterpolationValue(read, 1, 0) - p) < 1e-9);
    }
    QCOMPARE(curve->getInterpolationValue(0.0, 0, 1), values.front());
    QCOMPARE(curve->getInterpolationValue(100.0, 0, 1), cumulative->toDouble(cumulative->rowCount() - 1, 2));
}

void TestFrequency::curveMergesEmptyBins()
{
    // Bins [0,1): 2, [1,2) .. [4,5): 0, [5,6): 1.
    auto node = columnOf({0.0, 0.5, 5.5});
    double interval = 1.0;
    Table cumulative(node->newFrequencyData(interval, MatrixData::CumulativeRelativeFrequency, {}, true, nullptr, true));
    QCOMPARE(cumulative->rowCount(), 6);
    Table curve(cumulative->reduceToAveraged(0, 1));
    QCOMPARE(curve->rowCount(), 3);
    QCOMPARE(curve->toDouble(0, 0), 0.0);
    QCOMPARE(curve->toDouble(0, 1), 0.0);
    QVERIFY(qFuzzyCompare(curve->toDouble(1, 0), 200.0 / 3.0));
    QCOMPARE(curve->toDouble(1, 1), 3.0); // ends 1, 2, 3, 4, 5 averaged
    QCOMPARE(curve->toDouble(2, 0), 100.0);
    QCOMPARE(curve->toDouble(2, 1), 6.0);
    QCOMPARE(curve->getInterpolationValue(50.0, 0, 1), 2.25);
    // Columns that are not there give an empty curve.
    Table none(cumulative->reduceToAveraged(0, 2));
    QCOMPARE(none->rowCount(), 0);
    QCOMPARE(none->getInterpolationValue(50.0, 0, 1), 99999.0);
}

void TestFrequency::interpolation_data()
{
    QTest::addColumn<std::vector<double>>("xs");
    QTest::addColumn<std::vector<double>>("ys");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    const std::vector<double> up{0, 10, 20, 40}, upY{5, 6, 8, 0};
    QTest::newRow("inside") << up << upY << 15.0 << 7.0;
    QTest::newRow("on a row") << up << upY << 20.0 << 8.0;
    QTest::newRow("last segment") << up << upY << 30.0 << 4.0;
    QTest::newRow("first row") << up << upY << 0.0 << 5.0;
    QTest::newRow("below the span") << up << upY << -3.0 << 5.0;
    QTest::newRow("above the span") << up << upY << 41.0 << 0.0;
    QTest::newRow("descending x") << std::vector<double>{40, 20, 0} << std::vector<double>{0, 2, 4} << 30.0 << 1.0;
    QTest::newRow("one row") << std::vector<double>{3} << std::vector<double>{9} << 100.0 << 9.0;
    QTest::newRow("empty") << std::vector<double>{} << std::vector<double>{} << 1.0 << 99999.0;
    QTest::newRow("NaN x") << up << upY << kNaN << 99999.0;
    QTest::newRow("NaN row skipped") << std::vector<double>{0, kNaN, 10} << std::vector<double>{0, 100, 10} << 5.0 << 5.0;
    QTest::newRow("vertical step") << std::vector<double>{0, 5, 5, 10} << std::vector<double>{0, 1, 3, 4} << 5.0 << 1.0;
}

void TestFrequency::interpolation()
{
    QFETCH(std::vector<double>, xs);
    QFETCH(std::vector<double>, ys);
    QFETCH(double, x);
    QFETCH(double, y);
    MatrixDataArray table(QStringLiteral("t"), int(xs.size()), 2, QVariant::Double);
    for (int r = 0; r < int(xs.size()); ++r) {
        table.setValue(r, 0, xs[r]);
        table.setValue(r, 1, ys[r]);
    }
    QCOMPARE(table.getInterpolationValue(x, 0, 1), y);
    QCOMPARE(table.getInterpolationValue(x, 0, 5), 99999.0);
}

void TestFrequency::roseBins_data()
{
    QTest::addColumn<std::vector<double>>("azimuths");
    QTest::addColumn<double>("interval");
    QTest::addColumn<bool>("unidirectional");
    std::vector<double> spread;
    std::mt19937 rng(99);
    std::uniform_real_distribution<double> d(-400.0, 800.0);
    for (int i = 0; i < 3000; ++i)
        spread.push_back(i % 10 == 0 ? std::round(d(rng) / 10.0) * 10.0 : d(rng));
    QTest::newRow("spread, 10, unidirectional") << spread << 10.0 << true;
    QTest::newRow("spread, 10, bidirectional") << spread << 10.0 << false;
    QTest::newRow("spread, 7 (gap folds into the last)") << spread << 7.0 << true;
    QTest::newRow("spread, 45, bidirectional") << spread << 45.0 << false;
    QTest::newRow("edges and blanks") << std::vector<double>{0, 360, -360, 720, 359.999, 20, 99999.0, kNaN, -kInf, 180}
                                      << 20.0 << true;
}

void TestFrequency::roseBins()
{
    QFETCH(std::vector<double>, azimuths);
    QFETCH(double, interval);
    QFETCH(bool, unidirectional);
    auto node = columnOf(azimuths);
    const int n = int(360.0 / interval);
    std::vector<std::vector<QVariant>> values;
    Table table(MatrixData::newFrequencyData(interval, n, 0, MatrixData::Frequency, {}, node.get(), nullptr, values,
                                             unidirectional));
    QCOMPARE(table->rowCount(), n);
    QVERIFY(values.empty());
    QCOMPARE(table->toDouble(n - 1, 2), 360.0);
    std::vector<int> expected(n, 0);
    int counted = 0;
    for (double a : azimuths) {
        if (!std::isfinite(a) || a == 99999.0)
            continue;
        ++counted;
        double folded = a;
        while (folded < 0)
            folded += 360.0;
        while (folded >= 360.0)
            folded -= 360.0;
        for (double b : unidirectional ? std::vector<double>{folded} : std::vector<double>{folded, std::fmod(folded + 180.0, 360.0)})
            for (int i = 0; i < n; ++i)
                if (b >= table->toDouble(i, 1) && b < table->toDouble(i, 2)) {
                    ++expected[i];
                    break;
                }
    }
    QCOMPARE(table->validValueRowCount(), counted);
    int total = 0;
    for (int i = 0; i < n; ++i) {
        QCOMPARE(table->toDouble(i, 0), double(expected[i]));
        total += expected[i];
    }
    QCOMPARE(total, unidirectional ? counted : 2 * counted);
    if (!unidirectional && 180 % int(interval) == 0)
        for (int i = 0; i < n / 2; ++i)
            QCOMPARE(table->toDouble(i, 0), table->toDouble(i + n / 2, 0));
}

void TestFrequency::roseBinGeometry_data()
{
    QTest::addColumn<double>("interval");
    QTest::addColumn<int>("binCount");
    QTest::addColumn<int>("bins");
    QTest::newRow("10 degrees") << 10.0 << 36 << 36;
    QTest::newRow("too many bins asked") << 10.0 << 100000 << 36;
    QTest::newRow("fewer bins asked: last to 360") << 30.0 << 4 << 4;
    QTest::newRow("wider than the circle") << 400.0 << 1 << 1;
    QTest::newRow("0.0036 degrees") << 0.0036 << 100000 << 100000;
    QTest::newRow("finer still, capped") << 0.0001 << 3600000 << MatrixData::kMaxFrequencyBins;
    QTest::newRow("interval 0") << 0.0 << 36 << 0;
    QTest::newRow("negative interval") << -10.0 << 36 << 0;
    QTest::newRow("NaN interval") << kNaN << 36 << 0;
    QTest::newRow("no bins asked") << 10.0 << 0 << 0;
}

void TestFrequency::roseBinGeometry()
{
    QFETCH(double, interval);
    QFETCH(int, binCount);
    QFETCH(int, bins);
    auto node = columnOf({5.0, 95.0, 185.0, 275.0, 359.0});
    std::vector<std::vector<QVariant>> values;
    Table table(MatrixData::newFrequencyData(interval, binCount, 0, MatrixData::RelativeFrequency, {}, node.get(),
                                             node.get(), values, true));
    QCOMPARE(table->rowCount(), bins);
    QCOMPARE(int(values.size()), bins);
    if (bins == 0)
        return;
    QCOMPARE(table->toDouble(0, 1), 0.0);
    QCOMPARE(table->toDouble(bins - 1, 2), 360.0);
    double percent = 0;
    for (int i = 0; i < bins; ++i)
        percent += table->toDouble(i, 0);
    QVERIFY(qFuzzyCompare(percent, 100.0));
}

void TestFrequency::roseClassValuesFollowTheirRows()
{
    MatrixData group(QStringLiteral("g"), -1, -1, QVariant::String, true);
    auto* azimuth = new MatrixData(QStringLiteral("azimuth"), 6, 1, QVariant::Double, true);
    auto* colour = new MatrixData(QStringLiteral("colour"), 6, 1, QVariant::Color, true);
    auto* text = new MatrixData(QStringLiteral("type"), 6, 1, QVariant::String, true);
    group.appendChild(azimuth, false);
    group.appendChild(colour, false);
    group.appendChild(text, false);
    const double az[6] = {10, 15, 100, 190, 350, 12};
    const QColor colours[6] = {Qt::red, Qt::blue, Qt::red, Qt::green, Qt::blue, QColor()};
    const char* texts[6] = {"a", "b", "a", "c", "b", "a"};
    for (int r = 0; r < 6; ++r) {
        azimuth->setValue(r, 0, az[r]);
        if (colours[r].isValid())
            colour->setValue(r, 0, colours[r]);
        text->setValue(r, 0, QString::fromLatin1(texts[r]));
    }
    group.checkValidRowCount();
    std::vector<std::vector<QVariant>> values;
    Table table(MatrixData::newFrequencyData(20.0, 18, 0, MatrixData::Frequency, {0, 1, 2, 3, 5}, azimuth, colour,
                                             values, false));
    QCOMPARE(int(values.size()), 18);
    // Rows 0, 1, 5 fall into bin 0 and their mirrors into bin 9; row 2 into 5 and 14; row 3 into 9 and 0.
    QCOMPARE(int(values[0].size()), 4);
    QCOMPARE(values[0][0].toUInt(), QColor(Qt::red).rgba());
    QCOMPARE(values[0][1].toUInt(), QColor(Qt::blue).rgba());
    QCOMPARE(values[0][2].toUInt(), QColor(Qt::green).rgba());
    QVERIFY(!values[0][3].isValid()); // row 5 has a blank colour
    QCOMPARE(int(values[9].size()), 4);
    QCOMPARE(int(values[5].size()), 1);
    for (int i = 0; i < 18; ++i)
        QCOMPARE(int(values[i].size()), int(table->toDouble(i, 0)));
    Table byText(MatrixData::newFrequencyData(20.0, 18, 0, MatrixData::Frequency, {4}, azimuth, text, values, true));
    QCOMPARE(int(values[17].size()), 1);
    QCOMPARE(values[17][0].toString(), QStringLiteral("b"));
}

void TestFrequency::resultant_data()
{
    QTest::addColumn<std::vector<double>>("azimuths");
    QTest::addColumn<double>("direction");
    QTest::addColumn<double>("length");
    const double d2r = M_PI / 180.0;
    QTest::newRow("10, 20, 30") << std::vector<double>{10, 20, 30} << 20.0 << (1 + 2 * std::cos(10 * d2r)) / 3;
    QTest::newRow("across north") << std::vector<double>{350, 10} << 0.0 << std::cos(10 * d2r);
    QTest::newRow("folded values") << std::vector<double>{-10, 370} << 0.0 << std::cos(10 * d2r);
    QTest::newRow("west") << std::vector<double>{270, 270, 99999.0, kNaN} << 270.0 << 1.0;
    QTest::newRow("opposed cancel") << std::vector<double>{0, 180} << 99999.0 << 0.0;
    QTest::newRow("none") << std::vector<double>{} << 99999.0 << 0.0;
}

void TestFrequency::resultant()
{
    QFETCH(std::vector<double>, azimuths);
    QFETCH(double, direction);
    QFETCH(double, length);
    auto node = columnOf(azimuths);
    double r = -1;
    const double mean = node->resultantMeanDirection(r, {});
    QVERIFY2(std::abs(mean - direction) < 1e-9 || std::abs(mean - direction - 360.0) < 1e-9, qPrintable(QString::number(mean)));
    QVERIFY(std::abs(r - length) < 1e-12);
}

QTEST_GUILESS_MAIN(TestFrequency)
#include "tst_frequency.moc"

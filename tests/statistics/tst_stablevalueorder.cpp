// The order of values behind the quantile plots, against a stable comparison sort: ties keep
// their positions, -0.0 ties 0.0, and values that agree in their upper bits (where the radix
// passes stop looking) still come out by their whole value.
#include <StableValueOrder.h>

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <random>

using namespace rkBase;

namespace {
std::vector<std::uint32_t> byStableSort(const std::vector<double>& v)
{
    std::vector<std::uint32_t> order(v.size());
    std::iota(order.begin(), order.end(), 0u);
    // NaN after everything, as the radix keys put it.
    std::stable_sort(order.begin(), order.end(), [&v](std::uint32_t a, std::uint32_t b) {
        if (std::isnan(v[a]) || std::isnan(v[b]))
            return !std::isnan(v[a]) && std::isnan(v[b]);
        return v[a] < v[b];
    });
    return order;
}

double nextUp(double v, int steps)
{
    for (int i = 0; i < steps; ++i)
        v = std::nextafter(v, std::numeric_limits<double>::infinity());
    return v;
}
} // namespace

Q_DECLARE_METATYPE(std::vector<double>)
Q_DECLARE_METATYPE(std::vector<std::int32_t>)

class TestStableValueOrder : public QObject
{
    Q_OBJECT
private slots:
    void matchesStableSort_data()
    {
        QTest::addColumn<std::vector<double>>("values");
        std::mt19937_64 rng(7);
        std::normal_distribution<double> normal(0.0, 1.0);
        auto make = [&rng](int n, auto draw) {
            std::vector<double> v(static_cast<std::size_t>(n));
            for (double& x : v)
                x = draw(rng);
            return v;
        };
        QTest::newRow("empty") << std::vector<double>{};
        QTest::newRow("one") << std::vector<double>{3.5};
        QTest::newRow("signed zeros tie") << std::vector<double>{0.0, -0.0, 1.0, -0.0, 0.0, -1.0};
        QTest::newRow("infinities and NaN")
            << std::vector<double>{1.0, std::numeric_limits<double>::infinity(), -2.0, std::nan(""),
                                   -std::numeric_limits<double>::infinity(), 0.5, std::nan(""), -0.25};
        QTest::newRow("all equal") << std::vector<double>(5000, 0.125);
        QTest::newRow("normal") << make(100000, [&normal](std::mt19937_64& g) { return normal(g); });
        QTest::newRow("few distinct") << make(50000, [](std::mt19937_64& g) { return double(g() % 361) / 360.0; });
        QTest::newRow("one sign, narrow") << make(50000, [](std::mt19937_64& g) { return 1.0 + double(g() % 1000) * 1e-3; });
        // Upper 32 bits shared, order decided in the low bits only: short runs (insertion) and
        // one long run (merge), each given in descending order.
        std::vector<double> shortRuns, longRun;
        for (int r = 0; r < 200; ++r)
            for (int k = 20; k >= 0; --k)
                shortRuns.push_back(nextUp(1.0 + r, k * 3));
        for (int k = 999; k >= 0; --k)
            longRun.push_back(nextUp(2.0, k % 400));
        QTest::newRow("shared upper bits, short runs") << shortRuns;
        QTest::newRow("shared upper bits, long run") << longRun;
        QTest::newRow("descending") << make(20000, [](std::mt19937_64&) {
            static double x = 1e6;
            return x -= 0.5;
        });
    }
    void matchesStableSort()
    {
        QFETCH(std::vector<double>, values);
        std::vector<std::uint32_t> order;
        StableValueOrder::compute(values.data(), values.size(), order);
        QVERIFY(order == byStableSort(values));
    }

    void wholeNumbers_data()
    {
        QTest::addColumn<std::vector<std::int32_t>>("values");
        std::mt19937 rng(3);
        std::vector<std::int32_t> degrees(30000), wide(2000);
        for (auto& d : degrees)
            d = int(rng() % 721) - 360;
        // A span beyond a counting pass goes the way of the doubles.
        for (auto& w : wide)
            w = int(rng() % 2) ? std::numeric_limits<std::int32_t>::max() - int(rng() % 5)
                               : std::numeric_limits<std::int32_t>::min() + int(rng() % 5);
        QTest::newRow("degrees") << degrees;
        QTest::newRow("full range") << wide;
        QTest::newRow("empty") << std::vector<std::int32_t>{};
    }
    void wholeNumbers()
    {
        QFETCH(std::vector<std::int32_t>, values);
        std::vector<std::uint32_t> order;
        StableValueOrder::compute(values.data(), values.size(), order);
        const std::vector<double> asDoubles(values.begin(), values.end());
        QVERIFY(order == byStableSort(asDoubles));
    }
};

QTEST_APPLESS_MAIN(TestStableValueOrder)
#include "tst_stablevalueorder.moc"

#include "KolmogorovSmirnovTest.h"

#include <MatrixData.h>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
constexpr double kPi = 3.14159265358979323846;

// A curve read once into arrays and walked forwards: positions rise along it, so the pair that
// brackets a rising x is found by moving on, not by a search from the start at every step. Gives
// what MatrixData::getInterpolationValue(x, 1, 0) gives.
class RisingCurve
{
public:
    explicit RisingCurve(const MatrixData* curve)
    {
        const int rows = curve ? curve->rowCount() : 0;
        for (int r = 0; r < rows; ++r) {
            const double x = curve->toDouble(r, 1), y = curve->toDouble(r, 0);
            if (std::isfinite(x) && std::isfinite(y)) {
                m_x.push_back(x);
                m_y.push_back(y);
            }
        }
    }
    bool empty() const { return m_x.empty(); }
    double at(double x)
    {
        if (x <= m_x.front())
            return m_y.front();
        if (x >= m_x.back())
            return m_y.back();
        while (m_at + 1 < m_x.size() && m_x[m_at + 1] < x)
            ++m_at;
        const std::size_t a = m_at, b = m_at + 1;
        if (m_x[b] == m_x[a])
            return m_y[a];
        return m_y[a] + (x - m_x[a]) / (m_x[b] - m_x[a]) * (m_y[b] - m_y[a]);
    }

private:
    std::vector<double> m_x, m_y;
    std::size_t m_at = 0;
};
} // namespace

KolmogorovSmirnovTest::Binned KolmogorovSmirnovTest::binned(const Curve& first, const Curve& second, double lo,
                                                            double hi, double step, double k)
{
    Binned out;
    double s = std::abs(step);
    if (!(s > 0.0) || !std::isfinite(s))
        s = 1.0;
    if (std::isfinite(hi - lo) && (hi - lo) / s > kMaxSteps)
        s = (hi - lo) / kMaxSteps;
    RisingCurve a(first.curve), b(second.curve);
    if (!a.empty() && !b.empty() && std::isfinite(lo) && std::isfinite(hi)) {
        const double from = std::max(first.lo, second.lo), to = std::min(first.hi, second.hi);
        for (long long i = 0;; ++i) {
            const double x = lo + double(i) * s;
            if (!(x < hi))
                break;
            if (x < from || x > to)
                continue;
            const double v1 = a.at(x), v2 = b.at(x);
            const double d = std::abs(v1 - v2);
            // Gaps equal but for rounding (a billionth of a percent) are a tie, and a tie keeps
            // the earlier position.
            if (d > out.maxDifference + 1e-9) {
                out.maxDifference = d;
                out.x = x;
                out.v1 = v1;
                out.v2 = v2;
            }
        }
    }
    const double n1 = first.n, n2 = second.n;
    out.critical = std::sqrt((n1 + n2) / (n1 * n2)) * k * 100.0;
    out.passed = out.maxDifference <= out.critical;
    return out;
}

KolmogorovSmirnovTest::Sample KolmogorovSmirnovTest::sample(std::vector<double> first, std::vector<double> second)
{
    auto notFinite = [](double v) { return !std::isfinite(v); };
    first.erase(std::remove_if(first.begin(), first.end(), notFinite), first.end());
    second.erase(std::remove_if(second.begin(), second.end(), notFinite), second.end());
    Sample out;
    out.n1 = static_cast<int>(first.size());
    out.n2 = static_cast<int>(second.size());
    if (first.empty() || second.empty())
        return out;
    std::sort(first.begin(), first.end());
    std::sort(second.begin(), second.end());
    const double n1 = out.n1, n2 = out.n2;
    std::size_t i = 0, j = 0;
    // Both distribution functions are read after every copy of a value has been counted: a
    // value shared by both samples moves both functions at once.
    while (i < first.size() && j < second.size()) {
        const double v = std::min(first[i], second[j]);
        while (i < first.size() && first[i] == v)
            ++i;
        while (j < second.size() && second[j] == v)
            ++j;
        const double d = std::abs(double(i) / n1 - double(j) / n2);
        if (d > out.statistic) {
            out.statistic = d;
            out.location = v;
        }
    }
    out.valid = true;
    const double en = n1 * n2 / (n1 + n2);
    out.pValue = kolmogorovSurvival(std::sqrt(en) * out.statistic);
    return out;
}

double KolmogorovSmirnovTest::kolmogorovSurvival(double lambda)
{
    if (!(lambda > 0.0))
        return 1.0;
    if (!std::isfinite(lambda))
        return 0.0;
    if (lambda < 1.18) {
        // The theta-function form converges fast for small lambda:
        // P(K <= l) = sqrt(2 pi) / l * sum exp(-(2k - 1)^2 pi^2 / (8 l^2)).
        const double w = kPi * kPi / (8.0 * lambda * lambda);
        double sum = 0.0;
        for (int k = 1; k <= 20; ++k) {
            const double term = std::exp(-double((2 * k - 1) * (2 * k - 1)) * w);
            sum += term;
            if (term < 1e-17 * sum)
                break;
        }
        return std::clamp(1.0 - std::sqrt(2.0 * kPi) / lambda * sum, 0.0, 1.0);
    }
    // P(K > l) = 2 sum (-1)^(k-1) exp(-2 k^2 l^2).
    double sum = 0.0;
    for (int k = 1; k <= 100; ++k) {
        const double term = std::exp(-2.0 * k * k * lambda * lambda);
        sum += (k % 2 ? 1.0 : -1.0) * term;
        if (term < 1e-17)
            break;
    }
    return std::clamp(2.0 * sum, 0.0, 1.0);
}

} // namespace rkBase

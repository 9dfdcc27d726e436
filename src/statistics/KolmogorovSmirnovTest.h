#pragma once
// The Kolmogorov-Smirnov two-sample test, in the two forms the histogram tab shows.
//
// The binned form reads the largest gap between two cumulative curves (percent over position,
// as QHistogramItemModel's tables give them after reduceToAveraged) at steps of the interval,
// only where both curves are defined, and compares it with the critical difference
// sqrt((n1 + n2) / (n1 n2)) * k * 100 of the chosen confidence level. A tie keeps the earlier
// position; with no position in both spans the gap stays 0 and the test passes.
//
// The sample form is the statistic on the samples themselves: the largest gap of the two
// empirical distribution functions over all values, with the asymptotic p-value of the
// Kolmogorov distribution at sqrt(n1 n2 / (n1 + n2)) * D.

#include <vector>

namespace rkBase {

class MatrixData;

class KolmogorovSmirnovTest
{
public:
    // One cumulative curve: column 0 the percent, column 1 the position (rising), with the span
    // [lo, hi] it covers and the sample size n behind it.
    struct Curve {
        const MatrixData* curve = nullptr;
        double lo = 0.0;
        double hi = 0.0;
        int n = 0;
    };
    struct Binned {
        double maxDifference = 0.0; // percent
        double x = 0.0;             // where it was found
        double v1 = 0.0, v2 = 0.0;  // the two curves there
        double critical = 0.0;      // percent
        bool passed = true;
    };
    // Steps from lo while below hi by step (a step that is 0 or not a number counts as 1; a step
    // that would take more than kMaxSteps is widened to (hi - lo) / kMaxSteps).
    static Binned binned(const Curve& first, const Curve& second, double lo, double hi, double step, double k);
    static constexpr double kMaxSteps = 1e6;

    struct Sample {
        double statistic = 0.0; // 0..1
        double location = 0.0;  // the value at which the gap is largest
        int n1 = 0, n2 = 0;
        double pValue = 1.0;
        bool valid = false; // false when either sample is empty
    };
    // Non-finite values are left out.
    static Sample sample(std::vector<double> first, std::vector<double> second);
    // P(K > lambda) of the Kolmogorov distribution.
    static double kolmogorovSurvival(double lambda);
};

} // namespace rkBase

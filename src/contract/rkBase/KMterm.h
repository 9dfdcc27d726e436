#pragma once
// The run rules of the local k-means search, in the order the constructor takes them:
// - a, b, c, d: the stage budget, a + b k + c k^d stages for k centres (at least one);
// - minConsecRDL: a run ends once a stage lowers the distortion by less than this fraction of
//   the stage before;
// - minAccumRDL, maxRunStage, initProbAccept, tempRunLength, tempReducFact: the acceptance and
//   annealing schedule of swap-based searches; Lloyd's search keeps them and does not use them.

#include <algorithm>
#include <cmath>

class KMterm
{
public:
    KMterm() = default;
    KMterm(double a, double b, double c, double d, double minConsecRDL, double minAccumRDL, int maxRunStage,
           double initProbAccept, int tempRunLength, double tempReducFact)
        : m_a(a), m_b(b), m_c(c), m_d(d), m_minConsecRDL(minConsecRDL), m_minAccumRDL(minAccumRDL),
          m_maxRunStage(maxRunStage), m_initProbAccept(initProbAccept), m_tempRunLength(tempRunLength),
          m_tempReducFact(tempReducFact)
    {
    }

    // Never below 1, and a NaN or negative budget counts as 1: every search ends.
    int getMaxTotStage(int k) const
    {
        const double kk = std::max(k, 1);
        const double stages = m_a + m_b * kk + m_c * std::pow(kk, m_d);
        if (!(stages >= 1.0))
            return 1;
        return stages >= 1e9 ? 1000000000 : static_cast<int>(std::ceil(stages));
    }
    double getMinConsecRDL() const { return m_minConsecRDL; }
    double getMinAccumRDL() const { return m_minAccumRDL; }
    int getMaxRunStage() const { return m_maxRunStage; }
    double getInitProbAccept() const { return m_initProbAccept; }
    int getTempRunLength() const { return m_tempRunLength; }
    double getTempReducFact() const { return m_tempReducFact; }

private:
    double m_a = 100.0, m_b = 0.0, m_c = 0.0, m_d = 0.0;
    double m_minConsecRDL = 0.10;
    double m_minAccumRDL = 0.10;
    int m_maxRunStage = 3;
    double m_initProbAccept = 0.50;
    int m_tempRunLength = 10;
    double m_tempReducFact = 0.95;
};

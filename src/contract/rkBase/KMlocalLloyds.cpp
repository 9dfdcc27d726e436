#include "KMlocalLloyds.h"

namespace {
// A leading run stops once a stage gains less than this share of the distortion: by then it
// has reached the bottom of its basin for any practical purpose, and the stages left are worth
// more as fresh starts.
constexpr double kSettledRDL = 1e-5;
} // namespace

bool KMlocalLloyds::isRunDone(double before, double now, int) const
{
    // Relative distortion loss of this stage. A distortion that did not fall at all ends any
    // run: a converged run only repeats itself.
    const double loss = before > 0.0 ? (before - now) / before : 0.0;
    if (!(loss > 0.0))
        return true;
    if (loss >= m_term.getMinConsecRDL())
        return false;
    const bool leading = isLaterRun() && now < bestOfEarlierRuns();
    return !(leading && loss >= kSettledRDL);
}

void KMlocalLloyds::beginRun(KMfilterCenters& current, const KMfilterCenters&)
{
    current.genRandomSpread();
}

void KMlocalLloyds::step(KMfilterCenters& current)
{
    current.moveToCentroids();
}

#include "KMlocal.h"

#include <limits>

KMlocal::KMlocal(const KMfilterCenters& start, const KMterm& term) : m_start(start), m_term(term) {}

KMfilterCenters KMlocal::execute()
{
    KMfilterCenters current = m_start;
    KMfilterCenters best = m_start;
    double bestDist = std::numeric_limits<double>::infinity();
    m_bestBeforeRun = bestDist;
    m_stage = 0;
    m_runs = current.getK() > 0 ? 1 : 0;
    if (current.getK() < 1 || current.getData().getNPts() < 1) {
        best.computeDistortion();
        return best;
    }

    const int budget = m_term.getMaxTotStage(current.getK());
    double before = 0.0;
    int stagesInRun = 0;
    while (m_stage < budget) {
        current.computeDistortion();
        ++m_stage;
        ++stagesInRun;
        const double now = current.getDist();
        if (now < bestDist || !best.isValid()) {
            best = current;
            bestDist = now;
        }
        if (!(bestDist > 0.0))
            break;
        if (stagesInRun > 1 && isRunDone(before, now, stagesInRun)) {
            m_bestBeforeRun = bestDist;
            beginRun(current, best);
            ++m_runs;
            stagesInRun = 0;
            continue;
        }
        before = now;
        step(current);
    }
    return best;
}

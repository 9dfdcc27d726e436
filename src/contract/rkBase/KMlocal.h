#pragma once
// A local search for good k-means centres: a sequence of stages, grouped into runs, under the
// budget and rules of a KMterm, that keeps the best centres it has seen. A subclass says what a
// stage does and when a run ends.
//
// Every stage measures the distortion of the current centres with one filtering pass; the best
// centres are those of the lowest distortion measured, so execute() always returns centres whose
// distortions are valid. The search ends at the stage budget, or at once when the best
// distortion is 0, which no search can improve (all points on their centres).

#include "KMfilterCenters.h"
#include "KMterm.h"

class KMlocal
{
public:
    KMlocal(const KMfilterCenters& start, const KMterm& term);
    virtual ~KMlocal() = default;

    // Runs the search from the start centres and returns the best centres found.
    KMfilterCenters execute();

    int getTotalStages() const { return m_stage; }
    int getRuns() const { return m_runs; }

protected:
    // Whether the run that has just measured distortion `now` (after `before` at its previous
    // stage; `stagesInRun` counts the measured stages including this one) is over.
    virtual bool isRunDone(double before, double now, int stagesInRun) const = 0;
    // Sets the centres of a new run; best holds the best centres so far.
    virtual void beginRun(KMfilterCenters& current, const KMfilterCenters& best) = 0;
    // Moves the current centres after a stage that does not end the run.
    virtual void step(KMfilterCenters& current) = 0;

    // The best distortion of all runs before the current one (infinity in the first run).
    double bestOfEarlierRuns() const { return m_bestBeforeRun; }
    // Whether an earlier run exists to compare with.
    bool isLaterRun() const { return m_runs > 1; }

    KMfilterCenters m_start;
    KMterm m_term;

private:
    int m_stage = 0;
    int m_runs = 0;
    double m_bestBeforeRun = 0.0;
};

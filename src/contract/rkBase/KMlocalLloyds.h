#pragma once
// Lloyd's algorithm with restarts. A run starts at k random data points (the first at the
// start centres, the later ones spread out by KMfilterCenters::genRandomSpread) and moves every centre to the centroid of its points, stage after stage, until
// a stage lowers the distortion by less than minConsecRDL of the stage before; then the next
// run starts afresh. A run that has got below every earlier run is not cut off there: it goes
// on until it has settled (a stage gains less than 1e-5 of the distortion), so the best basin
// found is followed to its bottom rather than left at the first slow stage. The best centres
// over all stages are kept.

#include "KMlocal.h"

class KMlocalLloyds : public KMlocal
{
public:
    KMlocalLloyds(const KMfilterCenters& start, const KMterm& term) : KMlocal(start, term) {}

protected:
    bool isRunDone(double before, double now, int stagesInRun) const override;
    void beginRun(KMfilterCenters& current, const KMfilterCenters& best) override;
    void step(KMfilterCenters& current) override;
};

#pragma once
// k centres over a KMdata set, with the distortion of each: the sum of squared distances from
// the centre to the points closest to it (a centre with no points has distortion 0).
//
// Distortions and the Lloyd step come from one pass of the filtering search over the data's kd
// tree: a node keeps only the candidate centres that can be closest to some point of its box,
// and a node left with one candidate goes to it whole, by its centroid, count and scatter. So a
// pass over well-clustered data costs far less than n x k distances. Ties between equidistant
// centres go to the lower index, as a plain nearest-centre scan does.
//
// k below 1 gives a set without centres: every pass is empty and every point is unassigned.

#include "KMdata.h"

#include <vector>

class KMfilterCenters
{
public:
    // Starts at k random data points (distinct rows while k <= n). damp scales each Lloyd
    // move: 1 moves a centre to its centroid, less moves it part of the way.
    KMfilterCenters(int k, KMdata& data, double damp = 1.0);

    int getK() const { return m_k; }
    int getDim() const { return m_dim; }
    KMdata& getData() const { return *m_data; }
    // Centre i, getDim() coordinates. Writing through the non-const form invalidates the
    // distortions.
    double* operator[](int i);
    const double* operator[](int i) const { return &m_centres[static_cast<std::size_t>(i) * m_dim]; }

    // New random data points as centres, each row equally likely.
    void genRandom();
    // New random data points as centres, spread out: from a random sample of the rows (64 per
    // centre), the first is drawn uniformly and each next one with a chance in proportion to
    // its squared distance from the nearest centre drawn so far. Separated groups then rarely
    // start with two centres in one group and none in another, which Lloyd's steps cannot mend.
    void genRandomSpread();
    // Whether the distortions describe the centres as they are now.
    bool isValid() const { return m_valid; }
    // One filtering pass: the distortions of the current centres (and the sums a Lloyd move
    // needs). Builds the data's tree when it has none.
    void computeDistortion();
    // Total and per-centre distortion of the last pass; stale unless isValid().
    double getDist() const { return m_totalDist; }
    const std::vector<double>& getDists() const { return m_dists; }
    // Number of points closest to each centre in the last pass.
    const std::vector<int>& getWeights() const { return m_counts; }
    // One Lloyd stage: a pass when the distortions are stale, then every centre with points
    // moves towards their centroid. Afterwards the distortions are stale.
    void lloyd1Stage();
    // moveToCentroids() alone, after a pass of computeDistortion().
    void moveToCentroids();

    // For each of the getNPts() points, the index of its closest centre (-1 without centres),
    // and optionally the squared distance to it.
    void getAssignments(std::vector<int>& closest, std::vector<double>* sqDist = nullptr) const;

private:
    template <int D, class Sink> void walk(int node, const int* cand, int nc, int level, Sink& sink,
                                           std::vector<int>& buffer) const;
    template <int D, class Sink> void filter(Sink& sink) const;
    template <class Sink> void dispatch(Sink& sink) const;

    KMdata* m_data;
    int m_k;
    int m_dim;
    double m_damp;
    std::vector<double> m_centres;
    bool m_valid = false;
    double m_totalDist = 0.0;
    std::vector<double> m_dists;
    std::vector<int> m_counts;
    std::vector<double> m_sums; // k x dim sums of the points closest to each centre
};

#pragma once
// The points of a k-means search: up to maxPts rows of dim coordinates, of which the first
// getNPts() count, and the kd tree the filtering search walks. Points are written through
// operator[] and then buildKcTree() is called. Writable access or a new number of points marks
// the tree stale (it stays allocated until the next build, so a pointer to it stays safe), and
// a search on a set without a current tree builds it first.

#include "KMkcTree.h"

#include <memory>
#include <vector>

class KMdata
{
public:
    // dim below 1 counts as 1, maxPts below 0 as 0.
    KMdata(int dim, int maxPts);
    KMdata(const KMdata&) = delete;
    KMdata& operator=(const KMdata&) = delete;

    int getDim() const { return m_dim; }
    int getNPts() const { return m_nPts; }
    int getMaxPts() const { return m_maxPts; }
    // Clamped to [0, getMaxPts()].
    void setNPts(int n);
    // Row i, dim coordinates; i must lie below getMaxPts(). The non-const form marks the tree
    // stale.
    double* operator[](int i);
    const double* operator[](int i) const { return &m_points[static_cast<std::size_t>(i) * m_dim]; }

    void buildKcTree();
    // Null until buildKcTree() and while stale.
    const KMkcTree* getKcTree() const { return m_stale ? nullptr : m_tree.get(); }

private:
    int m_dim;
    int m_maxPts;
    int m_nPts;
    std::vector<double> m_points;
    std::unique_ptr<KMkcTree> m_tree;
    bool m_stale = true;
};

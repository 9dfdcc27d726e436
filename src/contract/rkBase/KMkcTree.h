#pragma once
// The kd tree of a k-means data set, as the filtering search walks it. Each node covers a run
// of the points in tree order and keeps what a whole-node assignment needs: the tight bounding
// box of its points, their centroid, their count and their scatter (the sum of squared
// distances to the centroid), so that the distortion of the node about any centre c is
// scatter + count * |centroid - c|^2 without touching a point.
//
// Cells split at the midpoint of their longest side, slid to the nearest point when one side
// would be empty; below depth 64 they split at the median, so no input makes the tree deeper
// than about 100. A node whose points all coincide is a leaf whatever its size. The boxes kept
// are the tight boxes of the points (leaves measure theirs, parents join their children's),
// which prune better than the cells the splits made.

#include <vector>

class KMkcTree
{
public:
    struct Node {
        int first;  // first position in tree order
        int count;  // number of points
        int left;   // child nodes; -1 for a leaf
        int right;
    };

    // points: n rows of dim coordinates. The tree keeps its own copy in tree order.
    KMkcTree(const double* points, int n, int dim, int bucketSize = 16);

    int dim() const { return m_dim; }
    int size() const { return m_n; }
    int depth() const { return m_depth; }
    int nodeCount() const { return static_cast<int>(m_nodes.size()); }
    // Node 0 is the root; there is none for an empty set.
    const Node& node(int i) const { return m_nodes[static_cast<std::size_t>(i)]; }
    const double* lo(int i) const { return &m_box[static_cast<std::size_t>(i) * 2 * m_dim]; }
    const double* hi(int i) const { return &m_box[static_cast<std::size_t>(i) * 2 * m_dim + m_dim]; }
    const double* centroid(int i) const { return &m_centroid[static_cast<std::size_t>(i) * m_dim]; }
    double scatter(int i) const { return m_scatter[static_cast<std::size_t>(i)]; }
    // The point at a tree position, and the data row it came from.
    const double* point(int position) const { return &m_points[static_cast<std::size_t>(position) * m_dim]; }
    int index(int position) const { return m_index[static_cast<std::size_t>(position)]; }

private:
    template <int D> int build(int first, int count, int depth, double* cell);
    template <int D> void makeLeaf(int self);
    template <int D> void swapPoints(int a, int b);
    void splitAtMedian(int first, int count, int d);

    int m_dim = 0;
    int m_n = 0;
    int m_bucket = 16;
    int m_depth = 0;
    std::vector<double> m_points;
    std::vector<int> m_index;
    std::vector<Node> m_nodes;
    std::vector<double> m_box;
    std::vector<double> m_centroid;
    std::vector<double> m_scatter;
    // Partition space, only while building.
    std::vector<double> m_scratch;
    std::vector<int> m_scratchIndex;
};

#include "KMkcTree.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace {
constexpr int kMidpointDepth = 64;
}

KMkcTree::KMkcTree(const double* points, int n, int dim, int bucketSize)
    : m_dim(std::max(dim, 1)), m_n(std::max(n, 0)), m_bucket(std::max(bucketSize, 1))
{
    if (m_n == 0 || !points)
        return;
    m_points.assign(points, points + static_cast<std::size_t>(m_n) * m_dim);
    m_index.resize(static_cast<std::size_t>(m_n));
    std::iota(m_index.begin(), m_index.end(), 0);
    // A tree of half-full buckets needs about 4 n / bucket nodes.
    const std::size_t guess = 4 * static_cast<std::size_t>(m_n / m_bucket + 1);
    m_nodes.reserve(guess);
    m_box.reserve(guess * 2 * m_dim);
    m_centroid.reserve(guess * m_dim);
    m_scatter.reserve(guess);

    // The root cell is the box of all points; NaN coordinates are left out of it.
    std::vector<double> cell(2 * static_cast<std::size_t>(m_dim));
    for (int d = 0; d < m_dim; ++d) {
        cell[static_cast<std::size_t>(d)] = points[d];
        cell[static_cast<std::size_t>(m_dim + d)] = points[d];
    }
    for (int i = 0; i < m_n; ++i)
        for (int d = 0; d < m_dim; ++d) {
            const double v = points[static_cast<std::size_t>(i) * m_dim + d];
            cell[static_cast<std::size_t>(d)] = std::min(cell[static_cast<std::size_t>(d)], v);
            cell[static_cast<std::size_t>(m_dim + d)] = std::max(cell[static_cast<std::size_t>(m_dim + d)], v);
        }
    m_scratch.resize(m_points.size());
    m_scratchIndex.resize(m_index.size());
    switch (m_dim) {
    case 2:
        build<2>(0, m_n, 0, cell.data());
        break;
    case 3:
        build<3>(0, m_n, 0, cell.data());
        break;
    default:
        build<0>(0, m_n, 0, cell.data());
        break;
    }
    m_scratch = std::vector<double>();
    m_scratchIndex = std::vector<int>();
}

template <int D> void KMkcTree::swapPoints(int a, int b)
{
    const int dim = D > 0 ? D : m_dim;
    double* pa = &m_points[static_cast<std::size_t>(a) * dim];
    double* pb = &m_points[static_cast<std::size_t>(b) * dim];
    for (int d = 0; d < dim; ++d)
        std::swap(pa[d], pb[d]);
    std::swap(m_index[static_cast<std::size_t>(a)], m_index[static_cast<std::size_t>(b)]);
}

void KMkcTree::splitAtMedian(int first, int count, int d)
{
    // Rare path (very deep trees only): sort positions by the coordinate and permute.
    std::vector<std::pair<double, int>> order(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        order[static_cast<std::size_t>(i)] = {point(first + i)[d], first + i};
    std::sort(order.begin(), order.end(),
              [](const auto& a, const auto& b) { return a.first < b.first || (a.first == b.first && a.second < b.second); });
    std::vector<double> pts(static_cast<std::size_t>(count) * m_dim);
    std::vector<int> idx(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const int from = order[static_cast<std::size_t>(i)].second;
        std::copy_n(point(from), m_dim, &pts[static_cast<std::size_t>(i) * m_dim]);
        idx[static_cast<std::size_t>(i)] = m_index[static_cast<std::size_t>(from)];
    }
    std::copy(pts.begin(), pts.end(), m_points.begin() + static_cast<std::ptrdiff_t>(first) * m_dim);
    std::copy(idx.begin(), idx.end(), m_index.begin() + first);
}

template <int D> void KMkcTree::makeLeaf(int self)
{
    const int dim = D > 0 ? D : m_dim;
    const Node nd = m_nodes[static_cast<std::size_t>(self)];
    double* lo = &m_box[static_cast<std::size_t>(self) * 2 * dim];
    double* hi = lo + dim;
    double* c = &m_centroid[static_cast<std::size_t>(self) * dim];
    const double* p0 = point(nd.first);
    for (int d = 0; d < dim; ++d) {
        lo[d] = hi[d] = p0[d];
        c[d] = 0.0;
    }
    for (int i = nd.first; i < nd.first + nd.count; ++i) {
        const double* p = point(i);
        for (int d = 0; d < dim; ++d) {
            lo[d] = std::min(lo[d], p[d]);
            hi[d] = std::max(hi[d], p[d]);
            c[d] += p[d];
        }
    }
    for (int d = 0; d < dim; ++d)
        c[d] /= nd.count;
    double scatter = 0.0;
    for (int i = nd.first; i < nd.first + nd.count; ++i) {
        const double* p = point(i);
        for (int d = 0; d < dim; ++d)
            scatter += (p[d] - c[d]) * (p[d] - c[d]);
    }
    m_scatter[static_cast<std::size_t>(self)] = scatter;
}

// cell: the low corner then the high corner of the region the node covers; it may be larger
// than the box of its points, and the split shrinks it where it finds that out.
template <int D> int KMkcTree::build(int first, int count, int depth, double* cell)
{
    const int dim = D > 0 ? D : m_dim;
    m_depth = std::max(m_depth, depth);
    const int self = static_cast<int>(m_nodes.size());
    m_nodes.push_back({first, count, -1, -1});
    m_box.resize(m_box.size() + 2 * static_cast<std::size_t>(dim));
    m_centroid.resize(m_centroid.size() + static_cast<std::size_t>(dim));
    m_scatter.push_back(0.0);

    int split = -1;
    int nLeft = 0;
    double cut = 0.0;
    while (count > m_bucket) {
        split = -1;
        double widest = 0.0;
        for (int d = 0; d < dim; ++d)
            if (cell[dim + d] - cell[d] > widest) {
                widest = cell[dim + d] - cell[d];
                split = d;
            }
        if (split < 0)
            break; // all points coincide
        if (depth >= kMidpointDepth) {
            splitAtMedian(first, count, split);
            nLeft = count / 2;
            cut = point(first + nLeft)[split];
            break;
        }
        cut = 0.5 * (cell[split] + cell[dim + split]);
        // Partition about the cut through the scratch rows, without a branch on the side (on
        // scattered data that branch is a coin toss), noting the coordinate's range on the way.
        double low = point(first)[split];
        double high = low;
        int l = 0;
        int r = count - 1;
        for (int k = first; k < first + count; ++k) {
            const double* p = point(k);
            const double v = p[split];
            low = std::min(low, v);
            high = std::max(high, v);
            const bool goesLeft = v < cut;
            const int to = goesLeft ? l : r;
            double* q = &m_scratch[static_cast<std::size_t>(to) * dim];
            for (int d = 0; d < dim; ++d)
                q[d] = p[d];
            m_scratchIndex[static_cast<std::size_t>(to)] = m_index[static_cast<std::size_t>(k)];
            l += goesLeft;
            r -= !goesLeft;
        }
        std::copy_n(m_scratch.data(), static_cast<std::size_t>(count) * dim,
                    m_points.begin() + static_cast<std::ptrdiff_t>(first) * dim);
        std::copy_n(m_scratchIndex.data(), count, m_index.begin() + first);
        nLeft = l;
        if (nLeft > 0 && nLeft < count)
            break;
        // One side empty: the cell was looser than the points. Shrink it to their range, and
        // when they have one, slide the cut to the nearest point.
        cell[split] = low;
        cell[dim + split] = high;
        if (!(low < high))
            continue; // flat along this side: try the next widest
        const bool leftEmpty = nLeft == 0;
        cut = leftEmpty ? low : high;
        int i = first;
        for (int k = first; k < first + count; ++k) {
            const double v = point(k)[split];
            if (leftEmpty ? v <= cut : v < cut)
                swapPoints<D>(k, i++);
        }
        nLeft = i - first;
        if (leftEmpty) // the low points alone on the left: the boundary sits just above them
            cut = std::nextafter(cut, high);
        break;
    }
    if (split < 0 || count <= m_bucket) {
        makeLeaf<D>(self);
        return self;
    }

    double fixedCell[2 * (D > 0 ? D : 1)];
    std::vector<double> dynamicCell(D > 0 ? 0 : 2 * static_cast<std::size_t>(dim));
    double* childCell = D > 0 ? fixedCell : dynamicCell.data();
    std::copy(cell, cell + 2 * dim, childCell);
    childCell[dim + split] = cut;
    const int left = build<D>(first, nLeft, depth + 1, childCell);
    std::copy(cell, cell + 2 * dim, childCell);
    childCell[split] = cut;
    const int right = build<D>(first + nLeft, count - nLeft, depth + 1, childCell);
    m_nodes[static_cast<std::size_t>(self)].left = left;
    m_nodes[static_cast<std::size_t>(self)].right = right;

    // Tight box, centroid and scatter from the children: S = S_l + S_r + sum n_i |c_i - c|^2.
    const int nl = m_nodes[static_cast<std::size_t>(left)].count;
    const int nr = m_nodes[static_cast<std::size_t>(right)].count;
    double* lo = &m_box[static_cast<std::size_t>(self) * 2 * dim];
    double* hi = lo + dim;
    double* c = &m_centroid[static_cast<std::size_t>(self) * dim];
    const double* cl = centroid(left);
    const double* cr = centroid(right);
    double dl = 0.0;
    double dr = 0.0;
    for (int d = 0; d < dim; ++d) {
        lo[d] = std::min(this->lo(left)[d], this->lo(right)[d]);
        hi[d] = std::max(this->hi(left)[d], this->hi(right)[d]);
        c[d] = (nl * cl[d] + nr * cr[d]) / count;
        dl += (cl[d] - c[d]) * (cl[d] - c[d]);
        dr += (cr[d] - c[d]) * (cr[d] - c[d]);
    }
    m_scatter[static_cast<std::size_t>(self)] =
        m_scatter[static_cast<std::size_t>(left)] + m_scatter[static_cast<std::size_t>(right)] + nl * dl + nr * dr;
    return self;
}

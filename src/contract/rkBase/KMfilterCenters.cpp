#include "KMfilterCenters.h"

#include "KMrandom.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

KMfilterCenters::KMfilterCenters(int k, KMdata& data, double damp)
    : m_data(&data), m_k(std::max(k, 0)), m_dim(data.getDim()), m_damp(damp),
      m_centres(static_cast<std::size_t>(m_k) * m_dim, 0.0), m_dists(static_cast<std::size_t>(m_k), 0.0),
      m_counts(static_cast<std::size_t>(m_k), 0), m_sums(static_cast<std::size_t>(m_k) * m_dim, 0.0)
{
    genRandom();
}

double* KMfilterCenters::operator[](int i)
{
    m_valid = false;
    return &m_centres[static_cast<std::size_t>(i) * m_dim];
}

void KMfilterCenters::genRandom()
{
    m_valid = false;
    const int n = m_data->getNPts();
    if (n < 1 || m_k < 1)
        return;
    std::vector<int> rows;
    rows.reserve(static_cast<std::size_t>(m_k));
    const int distinct = std::min(m_k, n);
    if (distinct * 4 <= n) {
        // Few centres among many points: draw and reject repeats.
        std::unordered_set<int> taken;
        while (static_cast<int>(rows.size()) < distinct) {
            const int r = KMrandom::uniformIndex(n);
            if (taken.insert(r).second)
                rows.push_back(r);
        }
    } else {
        // Partial shuffle of all rows.
        std::vector<int> all(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i)
            all[static_cast<std::size_t>(i)] = i;
        for (int i = 0; i < distinct; ++i) {
            const int j = i + KMrandom::uniformIndex(n - i);
            std::swap(all[static_cast<std::size_t>(i)], all[static_cast<std::size_t>(j)]);
            rows.push_back(all[static_cast<std::size_t>(i)]);
        }
    }
    // More centres than points: the rest repeat random points and stay empty.
    while (static_cast<int>(rows.size()) < m_k)
        rows.push_back(KMrandom::uniformIndex(n));
    const KMdata& data = *m_data;
    for (int i = 0; i < m_k; ++i)
        std::copy_n(data[rows[static_cast<std::size_t>(i)]], m_dim, &m_centres[static_cast<std::size_t>(i) * m_dim]);
}

void KMfilterCenters::genRandomSpread()
{
    m_valid = false;
    const int n = m_data->getNPts();
    if (n < 1 || m_k < 1)
        return;
    const KMdata& data = *m_data;
    const int poolSize = std::min(n, 64 * m_k);
    std::vector<int> pool;
    pool.reserve(static_cast<std::size_t>(poolSize));
    if (poolSize == n) {
        for (int i = 0; i < n; ++i)
            pool.push_back(i);
    } else {
        std::unordered_set<int> taken;
        while (static_cast<int>(pool.size()) < poolSize) {
            const int r = KMrandom::uniformIndex(n);
            if (taken.insert(r).second)
                pool.push_back(r);
        }
    }
    std::vector<double> nearest(pool.size(), std::numeric_limits<double>::infinity());
    int chosen = pool[static_cast<std::size_t>(KMrandom::uniformIndex(poolSize))];
    for (int c = 0; c < m_k; ++c) {
        double* z = &m_centres[static_cast<std::size_t>(c) * m_dim];
        std::copy_n(data[chosen], m_dim, z);
        double total = 0.0;
        for (std::size_t i = 0; i < pool.size(); ++i) {
            const double* p = data[pool[i]];
            double d2 = 0.0;
            for (int d = 0; d < m_dim; ++d)
                d2 += (p[d] - z[d]) * (p[d] - z[d]);
            nearest[i] = std::min(nearest[i], d2);
            total += nearest[i];
        }
        // Draw the next in proportion to the squared distance; uniformly once every sampled
        // row sits on a centre (or the sums stop being finite).
        if (!(total > 0.0) || !std::isfinite(total)) {
            chosen = pool[static_cast<std::size_t>(KMrandom::uniformIndex(poolSize))];
            continue;
        }
        const double target = total * (KMrandom::uniformIndex(1 << 30) + 0.5) / double(1 << 30);
        double running = 0.0;
        chosen = pool.back();
        for (std::size_t i = 0; i < pool.size(); ++i) {
            running += nearest[i];
            if (running >= target && nearest[i] > 0.0) {
                chosen = pool[i];
                break;
            }
        }
    }
}

// ---- the filtering walk --------------------------------------------------------------------

namespace {

// Sums, counts and distortions per centre.
struct StatsSink {
    const KMkcTree& tree;
    const double* centres;
    int dim;
    double* sums;
    int* counts;
    double* dists;

    void whole(int node, int c)
    {
        const KMkcTree::Node& nd = tree.node(node);
        const double* m = tree.centroid(node);
        const double* z = centres + static_cast<std::size_t>(c) * dim;
        double* s = sums + static_cast<std::size_t>(c) * dim;
        double d2 = 0.0;
        for (int d = 0; d < dim; ++d) {
            s[d] += nd.count * m[d];
            d2 += (m[d] - z[d]) * (m[d] - z[d]);
        }
        counts[c] += nd.count;
        dists[c] += tree.scatter(node) + nd.count * d2;
    }
    void point(int position, int c, double d2)
    {
        const double* p = tree.point(position);
        double* s = sums + static_cast<std::size_t>(c) * dim;
        for (int d = 0; d < dim; ++d)
            s[d] += p[d];
        counts[c] += 1;
        dists[c] += d2;
    }
};

// The closest centre of every point, by data row.
struct AssignSink {
    const KMkcTree& tree;
    const double* centres;
    int dim;
    int* closest;
    double* sqDist;

    void whole(int node, int c)
    {
        const KMkcTree::Node& nd = tree.node(node);
        const double* z = centres + static_cast<std::size_t>(c) * dim;
        for (int pos = nd.first; pos < nd.first + nd.count; ++pos) {
            closest[tree.index(pos)] = c;
            if (sqDist) {
                const double* p = tree.point(pos);
                double d2 = 0.0;
                for (int d = 0; d < dim; ++d)
                    d2 += (p[d] - z[d]) * (p[d] - z[d]);
                sqDist[tree.index(pos)] = d2;
            }
        }
    }
    void point(int position, int c, double d2)
    {
        closest[tree.index(position)] = c;
        if (sqDist)
            sqDist[tree.index(position)] = d2;
    }
};

} // namespace

template <int D, class Sink>
void KMfilterCenters::walk(int node, const int* cand, int nc, int level, Sink& sink, std::vector<int>& buffer) const
{
    const int dim = D > 0 ? D : m_dim;
    if (nc == 1) {
        sink.whole(node, cand[0]);
        return;
    }
    const KMkcTree& tree = *m_data->getKcTree();
    const double* lo = tree.lo(node);
    const double* hi = tree.hi(node);
    const double* ctr = m_centres.data();

    // The candidate closest to the middle of the box (lowest index on ties: cand ascends).
    int best = cand[0];
    double bestD = std::numeric_limits<double>::infinity();
    for (int i = 0; i < nc; ++i) {
        const double* z = ctr + static_cast<std::size_t>(cand[i]) * dim;
        double d2 = 0.0;
        for (int d = 0; d < dim; ++d) {
            const double t = 0.5 * (lo[d] + hi[d]) - z[d];
            d2 += t * t;
        }
        if (d2 < bestD) {
            bestD = d2;
            best = cand[i];
        }
    }
    // Drop every candidate that is no closer than the best at the box corner that favours it
    // most: it is then no closer anywhere in the box.
    int* next = &buffer[static_cast<std::size_t>(level + 1) * m_k];
    int nn = 0;
    const double* zs = ctr + static_cast<std::size_t>(best) * dim;
    for (int i = 0; i < nc; ++i) {
        const int c = cand[i];
        if (c != best) {
            const double* z = ctr + static_cast<std::size_t>(c) * dim;
            double s = 0.0;
            for (int d = 0; d < dim; ++d) {
                const double u = z[d] - zs[d];
                const double v = u > 0.0 ? hi[d] : lo[d];
                s += u * (z[d] + zs[d] - 2.0 * v);
            }
            if (s >= 0.0)
                continue;
        }
        next[nn++] = c;
    }
    if (nn == 1) {
        sink.whole(node, best);
        return;
    }
    const KMkcTree::Node& nd = tree.node(node);
    if (nd.left < 0) {
        for (int pos = nd.first; pos < nd.first + nd.count; ++pos) {
            const double* p = tree.point(pos);
            int closest = next[0];
            double closestD = std::numeric_limits<double>::infinity();
            for (int i = 0; i < nn; ++i) {
                const double* z = ctr + static_cast<std::size_t>(next[i]) * dim;
                double d2 = 0.0;
                for (int d = 0; d < dim; ++d)
                    d2 += (p[d] - z[d]) * (p[d] - z[d]);
                if (d2 < closestD) {
                    closestD = d2;
                    closest = next[i];
                }
            }
            sink.point(pos, closest, closestD);
        }
        return;
    }
    walk<D>(nd.left, next, nn, level + 1, sink, buffer);
    walk<D>(nd.right, next, nn, level + 1, sink, buffer);
}

template <int D, class Sink> void KMfilterCenters::filter(Sink& sink) const
{
    const KMkcTree& tree = *m_data->getKcTree();
    std::vector<int> buffer(static_cast<std::size_t>(tree.depth() + 2) * m_k);
    for (int i = 0; i < m_k; ++i)
        buffer[static_cast<std::size_t>(i)] = i;
    walk<D>(0, buffer.data(), m_k, 0, sink, buffer);
}

template <class Sink> void KMfilterCenters::dispatch(Sink& sink) const
{
    switch (m_dim) {
    case 2:
        filter<2>(sink);
        break;
    case 3:
        filter<3>(sink);
        break;
    default:
        filter<0>(sink);
        break;
    }
}

void KMfilterCenters::computeDistortion()
{
    std::fill(m_sums.begin(), m_sums.end(), 0.0);
    std::fill(m_counts.begin(), m_counts.end(), 0);
    std::fill(m_dists.begin(), m_dists.end(), 0.0);
    m_totalDist = 0.0;
    m_valid = true;
    if (m_k < 1 || m_data->getNPts() < 1)
        return;
    if (!m_data->getKcTree())
        m_data->buildKcTree();
    StatsSink sink{*m_data->getKcTree(), m_centres.data(), m_dim, m_sums.data(), m_counts.data(), m_dists.data()};
    dispatch(sink);
    for (double d : m_dists)
        m_totalDist += d;
}

void KMfilterCenters::moveToCentroids()
{
    for (int c = 0; c < m_k; ++c) {
        const int n = m_counts[static_cast<std::size_t>(c)];
        if (n == 0)
            continue;
        double* z = &m_centres[static_cast<std::size_t>(c) * m_dim];
        const double* s = &m_sums[static_cast<std::size_t>(c) * m_dim];
        for (int d = 0; d < m_dim; ++d)
            z[d] += m_damp * (s[d] / n - z[d]);
    }
    m_valid = false;
}

void KMfilterCenters::lloyd1Stage()
{
    if (!m_valid)
        computeDistortion();
    moveToCentroids();
}

void KMfilterCenters::getAssignments(std::vector<int>& closest, std::vector<double>* sqDist) const
{
    const int n = m_data->getNPts();
    closest.assign(static_cast<std::size_t>(n), -1);
    if (sqDist)
        sqDist->assign(static_cast<std::size_t>(n), 0.0);
    if (m_k < 1 || n < 1)
        return;
    if (!m_data->getKcTree())
        m_data->buildKcTree();
    AssignSink sink{*m_data->getKcTree(), m_centres.data(), m_dim, closest.data(), sqDist ? sqDist->data() : nullptr};
    dispatch(sink);
}

#include "LassoEdgeTable.h"

#include "CellColumn.h"

#include <QPointF>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {

// One band per edge is plenty for a drawn lasso, whose edges are short; more would only cost
// memory.
constexpr int kMaxBands = 1 << 16;

// The widened extents hold every point the on-edge test can accept only while rounding stays
// far below the tolerance (a billionth of the extent): products of coordinate differences must
// neither underflow into subnormals nor overflow. Outside this range of extents the table does
// without bands, and each point meets every edge.
constexpr double kSmallestBandedExtent = 1e-140;
constexpr double kLargestBandedExtent = 1e150;

bool onEdge(double xi, double yi, double xj, double yj, double dx, double dy, double length, double px, double py,
            double tolerance)
{
    if (length <= tolerance)
        return std::hypot(px - xi, py - yi) <= tolerance;
    const double distance = std::abs(dx * (py - yj) - dy * (px - xj)) / length;
    const double along = (dx * (px - xj) + dy * (py - yj)) / length;
    return distance <= tolerance && along >= -tolerance && along <= length + tolerance;
}

} // namespace

LassoEdgeTable::LassoEdgeTable(const CellColumn& column) : m_identity(column.identity()), m_revision(column.revision())
{
    std::vector<QPointF> vertices;
    vertices.reserve(static_cast<std::size_t>(column.size()));
    QPointF p;
    for (int r = 0; r < column.size(); ++r) {
        if (!column.point(r, p) || !std::isfinite(p.x()) || !std::isfinite(p.y()))
            continue;
        if (vertices.empty()) {
            m_minX = m_maxX = p.x();
            m_minY = m_maxY = p.y();
        } else {
            m_minX = std::min(m_minX, p.x());
            m_maxX = std::max(m_maxX, p.x());
            m_minY = std::min(m_minY, p.y());
            m_maxY = std::max(m_maxY, p.y());
        }
        vertices.push_back(p);
    }
    m_vertexCount = static_cast<int>(vertices.size());
    if (m_vertexCount < 3) {
        m_bandStart.assign(2, 0);
        return;
    }
    const double extent = std::max(m_maxX - m_minX, m_maxY - m_minY);
    m_tolerance = 1e-9 * extent;
    const double pad = 2.0 * m_tolerance;

    const int n = m_vertexCount;
    std::vector<Edge> edges(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const QPointF& a = vertices[static_cast<std::size_t>(i)];
        const QPointF& b = vertices[static_cast<std::size_t>(i == 0 ? n - 1 : i - 1)];
        Edge& e = edges[static_cast<std::size_t>(i)];
        e.xi = a.x();
        e.yi = a.y();
        e.xj = b.x();
        e.yj = b.y();
        e.dx = e.xi - e.xj;
        e.dy = e.yi - e.yj;
        e.length = std::hypot(e.dx, e.dy);
        e.loX = std::min(e.xi, e.xj) - pad;
        e.hiX = std::max(e.xi, e.xj) + pad;
        e.loY = std::min(e.yi, e.yj) - pad;
        e.hiY = std::max(e.yi, e.yj) + pad;
    }

    m_banded = extent >= kSmallestBandedExtent && extent <= kLargestBandedExtent;
    int bands = m_banded ? std::min(n, kMaxBands) : 1;
    std::vector<int> lo(static_cast<std::size_t>(n), 0), hi(static_cast<std::size_t>(n), 0);
    // An outline of long edges that all span the height (a zigzag) would stand in every band:
    // halve the bands until the table is at most a few times the edges.
    const long long budget = 16LL * n + 4096;
    for (;;) {
        m_bandStart.assign(static_cast<std::size_t>(bands) + 1, 0);
        if (m_banded) {
            m_bandOrigin = m_minY - m_tolerance;
            m_bandScale = bands / ((m_maxY + m_tolerance) - m_bandOrigin);
        }
        long long entries = 0;
        for (int i = 0; i < n; ++i) {
            const Edge& e = edges[static_cast<std::size_t>(i)];
            lo[static_cast<std::size_t>(i)] = m_banded ? bandOf(e.loY) : 0;
            hi[static_cast<std::size_t>(i)] = m_banded ? bandOf(e.hiY) : 0;
            entries += hi[static_cast<std::size_t>(i)] - lo[static_cast<std::size_t>(i)] + 1;
        }
        if (entries <= budget || bands == 1)
            break;
        bands = std::max(1, bands / 2);
    }
    for (int i = 0; i < n; ++i)
        for (int b = lo[static_cast<std::size_t>(i)]; b <= hi[static_cast<std::size_t>(i)]; ++b)
            ++m_bandStart[static_cast<std::size_t>(b) + 1];
    for (int b = 0; b < bands; ++b)
        m_bandStart[static_cast<std::size_t>(b) + 1] += m_bandStart[static_cast<std::size_t>(b)];
    m_edges.resize(static_cast<std::size_t>(m_bandStart.back()));
    std::vector<int> next(m_bandStart.begin(), m_bandStart.end() - 1);
    for (int i = 0; i < n; ++i)
        for (int b = lo[static_cast<std::size_t>(i)]; b <= hi[static_cast<std::size_t>(i)]; ++b)
            m_edges[static_cast<std::size_t>(next[static_cast<std::size_t>(b)]++)] = edges[static_cast<std::size_t>(i)];
}

bool LassoEdgeTable::isCurrent(const CellColumn& column) const
{
    return column.identity() == m_identity && column.revision() == m_revision;
}

// Monotonic in y, so an edge whose widened extent holds y is in the band of y.
int LassoEdgeTable::bandOf(double y) const
{
    const double t = (y - m_bandOrigin) * m_bandScale;
    const int last = bandCount() - 1;
    if (!(t >= 1.0))
        return 0;
    if (t >= last)
        return last;
    return static_cast<int>(t);
}

int LassoEdgeTable::edgesNear(double y) const
{
    const std::size_t band = static_cast<std::size_t>(m_banded ? bandOf(y) : 0);
    return m_bandStart[band + 1] - m_bandStart[band];
}

bool LassoEdgeTable::contains(double px, double py) const
{
    if (m_vertexCount < 3)
        return false;
    const double tolerance = m_tolerance;
    if (px < m_minX - tolerance || px > m_maxX + tolerance || py < m_minY - tolerance || py > m_maxY + tolerance)
        return false;
    const int band = m_banded ? bandOf(py) : 0;
    const Edge* e = m_edges.data() + m_bandStart[static_cast<std::size_t>(band)];
    const Edge* const end = m_edges.data() + m_bandStart[static_cast<std::size_t>(band) + 1];
    bool inside = false;
    for (; e != end; ++e) {
        // Even-odd crossing count on a ray towards +x; the half-open test on y counts a vertex
        // on the ray once.
        if ((e->yi > py) != (e->yj > py)) {
            const double xCross = e->xj + (py - e->yj) * e->dx / e->dy;
            if (px < xCross)
                inside = !inside;
        }
        if (m_banded && (px < e->loX || px > e->hiX || py < e->loY || py > e->hiY))
            continue;
        if (onEdge(e->xi, e->yi, e->xj, e->yj, e->dx, e->dy, e->length, px, py, tolerance))
            return true;
    }
    return inside;
}

} // namespace rkBase

#pragma once
// The polygon of a lasso column prepared for testing many points: its usable vertices turned
// into edges once, and the edges sorted into horizontal bands so that a point is tested only
// against the edges near its height. MatrixData::pointInOrOut keeps one and asks it; the answers
// are those of testing every edge of the polygon (see contains()).

#include <cstdint>
#include <vector>

namespace rkBase {

class CellColumn;

class LassoEdgeTable
{
public:
    // The valid rows of a point column whose point is finite, in row order, closed back to the
    // first. A column of another kind gives an empty table.
    explicit LassoEdgeTable(const CellColumn& column);

    // True while the column holds what the table was built from.
    bool isCurrent(const CellColumn& column) const;

    // For a finite point: on an edge or a vertex within a billionth of the polygon's extent, or
    // inside by the even-odd rule on a ray towards +x (a vertex on the ray counts once: an edge
    // takes the points with y in [lower end, upper end)). False with fewer than three vertices.
    bool contains(double px, double py) const;

    int vertexCount() const { return m_vertexCount; }
    int bandCount() const { return static_cast<int>(m_bandStart.size()) - 1; }
    // The edges a point at this height is tested against.
    int edgesNear(double y) const;

private:
    struct Edge {
        double xi, yi, xj, yj; // from vertex j (the one before) to vertex i
        double dx, dy, length; // xi - xj, yi - yj and their hypot, as the on-edge test uses them
        // The edge's extent widened by twice the tolerance: no point outside it can be on the edge.
        double loX, hiX, loY, hiY;
    };

    int bandOf(double y) const;

    std::uint64_t m_identity = 0;
    std::uint64_t m_revision = 0;
    int m_vertexCount = 0;
    double m_minX = 0.0, m_maxX = 0.0, m_minY = 0.0, m_maxY = 0.0;
    double m_tolerance = 0.0;
    // False when the extent is so small or so large that rounding could reach past the widened
    // extents: then every point meets every edge, exactly as without the table.
    bool m_banded = false;
    double m_bandOrigin = 0.0;
    double m_bandScale = 0.0;
    // Band b holds m_edges[m_bandStart[b] .. m_bandStart[b + 1]); an edge stands in every band
    // its widened y extent reaches.
    std::vector<int> m_bandStart;
    std::vector<Edge> m_edges;
};

} // namespace rkBase

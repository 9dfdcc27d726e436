// Contouring on triangles and the lasso test: the filled band and the iso-line of one triangle
// of a grid cell, and whether a point lies inside a polygon column.
#include "CellColumn.h"
#include "LassoEdgeTable.h"
#include "MatrixData.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace rkBase {

namespace {

bool finiteTriangle(const double* x, const double* y, const double* v)
{
    for (int i = 0; i < 3; ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i]) || !std::isfinite(v[i]))
            return false;
    }
    return true;
}

// True when the level lies strictly between the values of the edge's ends.
bool crossesInside(double va, double vb, double level)
{
    return va < vb ? (va < level && level < vb) : (vb < level && level < va);
}

// The point of edge a-b at the level, always interpolated from the lower-valued end: every
// band and every neighbouring triangle that shares the edge then gets the same bits.
void crossing(double xa, double ya, double va, double xb, double yb, double vb, double level, double& outX,
              double& outY)
{
    if (va > vb) {
        std::swap(xa, xb);
        std::swap(ya, yb);
        std::swap(va, vb);
    }
    const double t = (level - va) / (vb - va);
    outX = xa + t * (xb - xa);
    outY = ya + t * (yb - ya);
}

} // namespace

void MatrixData::calculatePolygon(const double* x, const double* y, const double* values, double low, double high,
                                  double* outX, double* outY, int& count)
{
    count = 0;
    if (!x || !y || !values || !outX || !outY || !finiteTriangle(x, y, values))
        return;
    if (std::isnan(low) || std::isnan(high) || !(low < high))
        return;
    const double* v = values;
    // Most bands miss most triangles of a grid: reject them before walking the edges.
    const double vMin = std::min({v[0], v[1], v[2]});
    const double vMax = std::max({v[0], v[1], v[2]});
    if (vMax < low || vMin > high)
        return;
    if (vMin == vMax) {
        // Half-open band: a flat triangle on a level belongs to the band above it only.
        if (low <= v[0] && v[0] < high) {
            std::copy(x, x + 3, outX);
            std::copy(y, y + 3, outY);
            count = 3;
        }
        return;
    }
    // Walk the boundary: each vertex inside the closed band, then the level crossings strictly
    // inside the following edge in the order met. The band is convex, so this is its outline.
    int n = 0;
    for (int i = 0; i < 3; ++i) {
        const int j = (i + 1) % 3;
        if (low <= v[i] && v[i] <= high) {
            outX[n] = x[i];
            outY[n] = y[i];
            ++n;
        }
        const bool lowCut = crossesInside(v[i], v[j], low);
        const bool highCut = crossesInside(v[i], v[j], high);
        const bool rising = v[i] < v[j];
        // Rising edges meet low first, falling edges high first.
        const double first = rising ? low : high;
        const double second = rising ? high : low;
        const bool firstCut = rising ? lowCut : highCut;
        const bool secondCut = rising ? highCut : lowCut;
        if (firstCut) {
            crossing(x[i], y[i], v[i], x[j], y[j], v[j], first, outX[n], outY[n]);
            ++n;
        }
        if (secondCut) {
            crossing(x[i], y[i], v[i], x[j], y[j], v[j], second, outX[n], outY[n]);
            ++n;
        }
    }
    // Fewer than three points: the band only touches the triangle along a level line or at a
    // vertex, which has no area (a non-flat triangle cannot give three collinear points here).
    count = n >= 3 ? n : 0;
}

void MatrixData::calculateIsoline(const double* x, const double* y, const double* values, double level,
                                  double* outX, double* outY, int& count)
{
    count = 0;
    if (!x || !y || !values || !outX || !outY || !finiteTriangle(x, y, values) || !std::isfinite(level))
        return;
    const double* v = values;
    if (level < std::min({v[0], v[1], v[2]}) || level > std::max({v[0], v[1], v[2]}))
        return;
    const int onLevel = (v[0] == level) + (v[1] == level) + (v[2] == level);
    if (onLevel == 3)
        return;
    if (onLevel == 2) {
        const int third = v[0] != level ? 0 : v[1] != level ? 1 : 2;
        if (v[third] < level)
            return;
        // The two vertices on the level, in winding order.
        int n = 0;
        for (int i = 0; i < 3; ++i) {
            if (i != third) {
                outX[n] = x[i];
                outY[n] = y[i];
                ++n;
            }
        }
        count = 2;
        return;
    }
    int n = 0;
    for (int i = 0; i < 3 && n < 2; ++i) {
        const int j = (i + 1) % 3;
        if (v[i] == level) {
            outX[n] = x[i];
            outY[n] = y[i];
            ++n;
        } else if (crossesInside(v[i], v[j], level)) {
            crossing(x[i], y[i], v[i], x[j], y[j], v[j], level, outX[n], outY[n]);
            ++n;
        }
    }
    count = n == 2 ? 2 : 0;
}

bool MatrixData::pointInOrOut(const QPointF& point) const
{
    if (m_cellType != QVariant::PointF || !std::isfinite(point.x()) || !std::isfinite(point.y()))
        return false;
    const CellColumn* column = cells(0);
    if (!column || column->type() != QVariant::PointF)
        return false;
    // A lasso is tested against every pixel of a chart's points: prepare it once.
    if (!m_lassoEdges || !m_lassoEdges->isCurrent(*column))
        m_lassoEdges = std::make_unique<LassoEdgeTable>(*column);
    return m_lassoEdges->contains(point.x(), point.y());
}

} // namespace rkBase

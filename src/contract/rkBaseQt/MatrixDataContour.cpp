// Contouring on triangles and the lasso test: the filled band and the iso-line of one triangle
// of a grid cell, and whether a point lies inside a polygon column.
#include "CellColumn.h"
#include "MatrixData.h"

#include <algorithm>
#include <cmath>
#include <vector>

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
    std::vector<QPointF> polygon;
    polygon.reserve(static_cast<std::size_t>(column->size()));
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
    QPointF p;
    for (int r = 0; r < column->size(); ++r) {
        if (!column->point(r, p) || !std::isfinite(p.x()) || !std::isfinite(p.y()))
            continue;
        if (polygon.empty()) {
            minX = maxX = p.x();
            minY = maxY = p.y();
        } else {
            minX = std::min(minX, p.x());
            maxX = std::max(maxX, p.x());
            minY = std::min(minY, p.y());
            maxY = std::max(maxY, p.y());
        }
        polygon.push_back(p);
    }
    if (polygon.size() < 3)
        return false;
    const double px = point.x();
    const double py = point.y();
    const double tolerance = 1e-9 * std::max(maxX - minX, maxY - minY);
    if (px < minX - tolerance || px > maxX + tolerance || py < minY - tolerance || py > maxY + tolerance)
        return false;

    bool inside = false;
    const std::size_t n = polygon.size();
    for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
        const double xi = polygon[i].x(), yi = polygon[i].y();
        const double xj = polygon[j].x(), yj = polygon[j].y();
        // On the edge j-i: close to its line and within its extent.
        const double dx = xi - xj, dy = yi - yj;
        const double length = std::hypot(dx, dy);
        if (length <= tolerance) {
            if (std::hypot(px - xi, py - yi) <= tolerance)
                return true;
        } else {
            const double distance = std::abs(dx * (py - yj) - dy * (px - xj)) / length;
            const double along = (dx * (px - xj) + dy * (py - yj)) / length;
            if (distance <= tolerance && along >= -tolerance && along <= length + tolerance)
                return true;
        }
        // Even-odd crossing count on a ray towards +x; the half-open test on y counts a vertex
        // on the ray once.
        if ((yi > py) != (yj > py)) {
            const double xCross = xj + (py - yj) * dx / dy;
            if (px < xCross)
                inside = !inside;
        }
    }
    return inside;
}

} // namespace rkBase

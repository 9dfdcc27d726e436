// Density grids of the relationship model: points projected on a stereonet, counted into the
// four nodes of their grid cell, and the rim wrapped so that antipodal rim nodes share counts.
//
// The count runs on the per-point sines and cosines of the statistics cache: for a dip x within
// [-90, 90] the projected radius has closed forms in them (sqrt(2) sin(x/2) = +-sqrt(1 - cos x)
// with the sign of sin x, tan(x/2) = sin x / (1 + cos x); for the complement sqrt(1 - sin x)
// and cos x / (1 + sin x)), so a point costs a square root or a division and a few products
// instead of three trig calls. Other dips go through StereoNetGeometry as they are.
#include "QRelationshipItemModel.h"
#include "OrientationDensity.h"

#include <QPainter>
#include <QPen>

#include <cmath>
#include <vector>

namespace rkBase {

namespace {

// The first cell [nodes[i], nodes[i + 1]] holding p, as a scan from the low end finds it (so a
// point on a node line goes to the lower cell); false outside the nodes. inverse is 1 / the
// node spacing, origin the first node: the guess it gives is corrected against the nodes
// themselves, so the answer is the scan's exactly.
inline bool locateCell(double p, const std::vector<double>& nodes, double inverse, int& cell)
{
    const int last = static_cast<int>(nodes.size()) - 1;
    if (!(p >= nodes[0] && p <= nodes[static_cast<std::size_t>(last)]))
        return false;
    int i = static_cast<int>((p - nodes[0]) * inverse);
    i = i < 0 ? 0 : (i > last - 1 ? last - 1 : i);
    while (i > 0 && p <= nodes[static_cast<std::size_t>(i)])
        --i;
    while (p > nodes[static_cast<std::size_t>(i + 1)])
        ++i;
    cell = i;
    return true;
}

// The plain scan, for grids whose spacing is zero or not finite.
inline bool scanCell(double p, const std::vector<double>& nodes, int& cell)
{
    for (std::size_t i = 0; i + 1 < nodes.size(); ++i)
        if (nodes[i] <= p && p <= nodes[i + 1]) {
            cell = static_cast<int>(i);
            return true;
        }
    return false;
}

// What the unweighted walk over the cache needs of the grid and the net.
struct CountFrame {
    const std::vector<double>& xs;
    const std::vector<double>& ys;
    double inverseX, inverseY;
    double cx, cy, radius, ox, oy;
    std::size_t stride; // cells along y
    std::size_t cells;  // cells in one copy
    double* weight;     // four interleaved copies
};

// Counts the rows whose dip allows the closed forms, straight from the cache; the others go to
// `others` for the general path. Unweighted, so the order of the rows does not matter.
template <bool Poles, bool EqualArea>
void countCached(const double* trig, const unsigned char* flags, int rows, const CountFrame& f, std::vector<int>& others)
{
    for (int row = 0; row < rows; ++row) {
        const unsigned char flag = flags[row];
        if (flag != 2) {
            if (flag != 0)
                others.push_back(row);
            continue;
        }
        const double* t = trig + 4 * static_cast<std::size_t>(row);
        if (!Poles && !EqualArea && !(1.0 + t[0] > 1e-3)) {
            others.push_back(row);
            continue;
        }
        double sa = t[2];
        double ca = t[3];
        StereoNetGeometry::snapQuadrant(sa, ca);
        double px;
        double py;
        if (Poles) {
            const double rr = EqualArea ? f.radius * std::copysign(std::sqrt(1.0 - t[1]), t[0])
                                        : f.radius * t[0] / (1.0 + t[1]);
            px = f.cx - rr * sa;
            py = f.cy + rr * ca;
        } else {
            const double rr = EqualArea ? f.radius * std::sqrt(1.0 - t[0]) : f.radius * t[1] / (1.0 + t[0]);
            px = f.cx + rr * sa - f.ox;
            py = f.cy - rr * ca - f.oy;
        }
        int i;
        int j;
        if (!(locateCell(px, f.xs, f.inverseX, i) && locateCell(py, f.ys, f.inverseY, j)))
            continue;
        f.weight[(static_cast<std::size_t>(row) & 3) * f.cells + static_cast<std::size_t>(i) * f.stride
                 + static_cast<std::size_t>(j)] += 1.0;
    }
}

// Sizes the grid (rows of -1: as it is) and empties it, as every count starts; false when it has
// fewer than two nodes either way, so that no cell lies between them.
bool startGrid(MatrixDataArray* grid, int& rows, int& columns)
{
    if (rows == -1) {
        rows = grid->rowCount();
        columns = grid->columnCount();
    }
    // reserve keeps the cells that fit; a count starts from zero.
    grid->reserve(rows, columns);
    grid->clearData();
    return rows >= 2 && columns >= 2;
}

} // namespace

void QRelationshipItemModel::countingOutProjections(int rows, int columns, bool poles, bool biasCorrect,
                                                    StereoNetGeometry const& net)
{
    countingOutProjections(rows, columns, poles ? m_contourGridPoles : m_contourGridDipDir, poles, biasCorrect, net);
}

void QRelationshipItemModel::countingOutProjections(int rows, int columns, MatrixDataArray* grid, bool poles,
                                                    bool biasCorrect, StereoNetGeometry const& net)
{
    if (!grid || !startGrid(grid, rows, columns))
        return;

    const QRectF r = net.gridRect;
    std::vector<double> xs(static_cast<std::size_t>(rows));
    std::vector<double> ys(static_cast<std::size_t>(columns));
    for (int i = 0; i < rows; ++i)
        xs[static_cast<std::size_t>(i)] = r.x() + i * r.width() / (rows - 1);
    for (int j = 0; j < columns; ++j)
        ys[static_cast<std::size_t>(j)] = r.y() + j * r.height() / (columns - 1);
    const double dx = r.width() / (rows - 1);
    const double dy = r.height() / (columns - 1);
    const bool direct = dx > 0.0 && dy > 0.0 && std::isfinite(dx) && std::isfinite(dy);
    const double inverseX = direct ? 1.0 / dx : 0.0;
    const double inverseY = direct ? 1.0 / dy : 0.0;

    int biasCount = 0;
    double biasTotal = 0.0;
    if (biasCorrect)
        biasCount = totalBiasWeight(biasTotal);

    const int n = m_data ? m_data->validValueRowCount() : 0;
    const double* trig = nullptr;
    const unsigned char* flags = nullptr;
    int cached = 0;
    if (n > 0 && !orientationCacheArrays(trig, flags, cached))
        cached = 0;

    const bool filtered = m_partSelection && m_displayType != ShowAll;
    const double cx = net.centre.x();
    const double cy = net.centre.y();
    const double radius = net.radius;
    const double ox = poles ? 0.0 : net.offset.x();
    const double oy = poles ? 0.0 : net.offset.y();
    const bool equalArea = net.equalArea;

    // Weight per cell first, in four interleaved copies: on clustered data consecutive points
    // land in the same cell, and one running sum per cell would make every point wait for the
    // last. The corners are spread from the cells afterwards.
    const std::size_t cells = static_cast<std::size_t>(rows - 1) * static_cast<std::size_t>(columns - 1);
    std::vector<double> cellWeight(biasCorrect ? 0 : 4 * cells, 0.0);
    std::vector<double> nodeWeight(biasCorrect ? static_cast<std::size_t>(rows) * columns : 0, 0.0);
    auto countRow = [&](int row) {
        if (filtered && !isSelected(row))
            return;
        double px;
        double py;
        const unsigned char flag = row < cached ? flags[row] : 1;
        if (flag == 0)
            return; // a blank cell
        const double* t = row < cached ? trig + 4 * static_cast<std::size_t>(row) : nullptr;
        if (flag == 2 && (poles || equalArea || 1.0 + t[0] > 1e-3)) {
            double sa = t[2];
            double ca = t[3];
            StereoNetGeometry::snapQuadrant(sa, ca);
            if (poles) {
                const double rr = equalArea ? radius * std::copysign(std::sqrt(1.0 - t[1]), t[0])
                                            : radius * t[0] / (1.0 + t[1]);
                px = cx - rr * sa;
                py = cy + rr * ca;
            } else {
                const double rr = equalArea ? radius * std::sqrt(1.0 - t[0]) : radius * t[1] / (1.0 + t[0]);
                px = cx + rr * sa - ox;
                py = cy - rr * ca - oy;
            }
        } else {
            QPointF point;
            if (!readOrientation(m_data, row, point))
                return;
            const QPointF pixel = poles ? net.poleInPixel(point) : net.dipDirectionInPixel(point);
            px = pixel.x();
            py = pixel.y();
        }
        int i;
        int j;
        if (direct ? !(locateCell(px, xs, inverseX, i) && locateCell(py, ys, inverseY, j))
                   : !(scanCell(px, xs, i) && scanCell(py, ys, j)))
            return;
        if (biasCorrect) {
            // Weights are not whole numbers, so the order of the additions shows in the last
            // bits: each node sums its points in row order, corner by corner.
            const double w = biasCorrection(row, biasCount, biasTotal);
            double* node = nodeWeight.data() + static_cast<std::size_t>(i) * columns + j;
            node[0] += w;
            node[columns] += w;
            node[columns + 1] += w;
            node[1] += w;
            return;
        }
        cellWeight[(static_cast<std::size_t>(row) & 3) * cells + static_cast<std::size_t>(i) * (columns - 1) + j] += 1.0;
    };
    if (direct && !filtered && !biasCorrect && cached > 0) {
        const CountFrame frame{xs, ys, inverseX, inverseY, cx, cy, radius, ox, oy,
                               static_cast<std::size_t>(columns - 1), cells, cellWeight.data()};
        std::vector<int> others;
        if (poles)
            equalArea ? countCached<true, true>(trig, flags, cached, frame, others)
                      : countCached<true, false>(trig, flags, cached, frame, others);
        else
            equalArea ? countCached<false, true>(trig, flags, cached, frame, others)
                      : countCached<false, false>(trig, flags, cached, frame, others);
        for (int row : others)
            countRow(row);
        for (int row = cached; row < n; ++row)
            countRow(row);
    } else {
        for (int row = 0; row < n; ++row)
            countRow(row);
    }
    if (biasCorrect) {
        for (int i = 0; i < rows; ++i)
            for (int j = 0; j < columns; ++j) {
                const double v = nodeWeight[static_cast<std::size_t>(i) * columns + j];
                if (v != 0.0)
                    grid->addValue(i, j, v);
            }
        calculateTheEdgeEffect(nullptr, grid, net);
        return;
    }
    // Each node takes the count of the (up to) four cells it is a corner of.
    auto cell = [&](int i, int j) {
        if (i < 0 || j < 0 || i >= rows - 1 || j >= columns - 1)
            return 0.0;
        const std::size_t at = static_cast<std::size_t>(i) * (columns - 1) + j;
        return ((cellWeight[at] + cellWeight[cells + at]) + cellWeight[2 * cells + at]) + cellWeight[3 * cells + at];
    };
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) {
            const double v = ((cell(i, j) + cell(i - 1, j)) + cell(i - 1, j - 1)) + cell(i, j - 1);
            if (v != 0.0)
                grid->addValue(i, j, v);
        }
    calculateTheEdgeEffect(nullptr, grid, net);
}

void QRelationshipItemModel::calculateTheEdgeEffect(QPainter* painter, MatrixDataArray* grid,
                                                    StereoNetGeometry const& net) const
{
    if (!grid)
        return;
    const int rows = grid->rowCount();
    const int columns = grid->columnCount();
    if (rows < 2 || columns < 2)
        return;
    const QRectF r = net.gridRect;
    const double dx = r.width() / (rows - 1);
    const double dy = r.height() / (columns - 1);
    const double diagonal = std::sqrt(dx * dx + dy * dy);
    const double inner = net.radius - 0.4 * diagonal;
    const double outer = net.radius + 0.4 * diagonal;

    std::vector<double> scratch(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns), 0.0);
    auto at = [columns](int i, int j) { return static_cast<std::size_t>(i) * columns + j; };
    if (painter) {
        QPen pen(Qt::darkBlue);
        painter->setPen(pen);
    }
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) {
            const int oi = rows - 1 - i;
            const int oj = columns - 1 - j;
            const QPointF position(r.x() + i * dx, r.y() + j * dy);
            const double d = std::hypot(position.x() - net.centre.x(), position.y() - net.centre.y());
            if (!(d >= inner && d <= outer))
                continue;
            const double a = grid->toDouble(i, j);
            const double b = grid->toDouble(oi, oj);
            if (!painter && a == 0.0 && b == 0.0)
                continue;
            if (scratch[at(i, j)] != 0.0)
                continue;
            if (painter) {
                painter->drawPoint(position);
                painter->drawPoint(QPointF(r.x() + oi * dx, r.y() + oj * dy));
            } else {
                scratch[at(i, j)] = a + b;
                scratch[at(oi, oj)] = a + b;
            }
        }
    if (painter)
        return;
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j)
            if (scratch[at(i, j)] != 0.0)
                grid->setValue(i, j, scratch[at(i, j)]);
}

std::vector<gdfVertex> QRelationshipItemModel::densityVectors(bool poles) const
{
    std::vector<gdfVertex> out;
    const int n = m_data ? m_data->validValueRowCount() : 0;
    const bool filtered = m_partSelection && m_displayType != ShowAll;
    constexpr double kRad = 3.14159265358979323846 / 180.0;
    out.reserve(static_cast<std::size_t>(n));
    for (int row = 0; row < n; ++row) {
        QPointF point;
        if ((filtered && !isSelected(row)) || !readOrientation(m_data, row, point))
            continue;
        const double sd = std::sin(point.x() * kRad), cd = std::cos(point.x() * kRad);
        const double sa = std::sin(point.y() * kRad), ca = std::cos(point.y() * kRad);
        if (poles)
            out.emplace_back(-ca * sd, -sa * sd, cd);
        else
            out.emplace_back(ca * cd, sa * cd, sd);
    }
    return out;
}

void QRelationshipItemModel::densityOnSphere(int rows, int columns, MatrixDataArray* grid, bool poles,
                                             DensityMethod method, StereoNetGeometry const& net)
{
    if (!grid)
        return;
    if (method == DensityMethod::FourCorner) {
        countingOutProjections(rows, columns, grid, poles, false, net);
        return;
    }
    if (!startGrid(grid, rows, columns) || !(net.radius > 0.0))
        return;
    const QRectF r = net.gridRect;
    std::vector<gdfVertex> nodes;
    nodes.reserve(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j)
            nodes.push_back(net.axisAt(QPointF(r.x() + i * r.width() / (rows - 1), r.y() + j * r.height() / (columns - 1)),
                                       poles));
    const std::vector<double> values = orientationDensityGrid(densityVectors(poles), nodes, method);
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) {
            const double v = values[static_cast<std::size_t>(i) * columns + j];
            if (v != 0.0)
                grid->setValue(i, j, v);
        }
}

} // namespace rkBase

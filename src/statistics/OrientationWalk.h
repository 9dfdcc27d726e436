#pragma once
// Reading the orientations of a relationship list, and the vector of a line: the model's own
// walks use these, and so do callers that compute a result per point from the model's list.

#include "OrientationConstants.h"

#include <CellColumn.h>
#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <gdfVertex.h>

#include <QPointF>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <thread>
#include <typeinfo>
#include <vector>

namespace rkBase {

// The north-east-down unit vector of a lineation of that plunge and azimuth (degrees).
inline gdfVertex lineUnitVector(double plunge, double azimuth)
{
    const double p = plunge * orientation::kDegToRad;
    const double a = azimuth * orientation::kDegToRad;
    return gdfVertex(std::cos(a) * std::cos(p), std::sin(a) * std::cos(p), std::sin(p));
}

// Column 0 of a row as an orientation; false for a blank, foreign or non-finite cell.
inline bool readOrientationCell(const MatrixData* data, int row, QPointF& point)
{
    // Stored point cells are read as they are; nodes that compute their cells (or a host's
    // derived node) go through value().
    const CellColumn* cells = data->cellColumn(0);
    if (cells && cells->type() == QVariant::PointF
        && (typeid(*data) == typeid(MatrixData) || typeid(*data) == typeid(MatrixDataArray)))
        return cells->point(row, point) && std::isfinite(point.x()) && std::isfinite(point.y());
    const QVariant v = data->value(row, 0);
    // isNull() is no test here: a QPointF at the origin is null and still a real orientation.
    if (!v.isValid() || !v.canConvert<QPointF>())
        return false;
    point = v.toPointF();
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

constexpr int kMaxOrientationWalkers = 4;

// Calls visit(row, point, walker) for every row below rows whose orientation readOrientationCell
// accepts. Stored point cells are read in place, and a million of them are split between up to
// kMaxOrientationWalkers threads (walker numbers them, for sums kept apart): visit must then
// touch nothing but its own row and its walker's state. Other nodes go through read, one row
// after another on this thread, as their value() may not be safe to share.
template <typename Read, typename Visit>
void forEachOrientation(const MatrixData* data, int rows, Read read, Visit visit)
{
    const CellColumn* cells = data->cellColumn(0);
    const QPointF* points = cells && cells->type() == QVariant::PointF
            && (typeid(*data) == typeid(MatrixData) || typeid(*data) == typeid(MatrixDataArray))
        ? cells->pointData()
        : nullptr;
    if (!points) {
        for (int row = 0; row < rows; ++row) {
            QPointF p;
            if (read(data, row, p))
                visit(row, p, 0);
        }
        return;
    }
    const std::uint8_t* valid = cells->validData();
    rows = std::min(rows, cells->size());
    auto walk = [points, valid, &visit](int first, int last, int walker) {
        for (int row = first; row < last; ++row) {
            const QPointF& p = points[row];
            if (valid[row] && std::isfinite(p.x()) && std::isfinite(p.y()))
                visit(row, p, walker);
        }
    };
    const int cores = int(std::thread::hardware_concurrency());
    const int walkers = rows >= 200000 ? std::clamp(cores, 1, kMaxOrientationWalkers) : 1;
    const int share = (rows + walkers - 1) / walkers;
    std::vector<std::thread> helpers;
    for (int w = 1; w < walkers; ++w)
        helpers.emplace_back(walk, std::min(rows, w * share), std::min(rows, (w + 1) * share), w);
    walk(0, std::min(rows, share), 0);
    for (std::thread& t : helpers)
        t.join();
}

} // namespace rkBase

#include "PointBlockBounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace rkBase {

const std::vector<PointBlockBounds::Box>& PointBlockBounds::boxes(const QPointF* cells, const std::uint8_t* valid,
                                                                   int stored, quint64 revision)
{
    if (cells == m_cells && stored == m_stored && revision == m_revision)
        return m_boxes;
    m_cells = cells;
    m_stored = stored;
    m_revision = revision;
    const int blocks = stored > 0 ? (stored + kBlockRows - 1) / kBlockRows : 0;
    constexpr double inf = std::numeric_limits<double>::infinity();
    m_boxes.assign(std::size_t(blocks), Box{inf, inf, -inf, -inf});
    for (int b = 0; b < blocks; ++b) {
        Box& box = m_boxes[std::size_t(b)];
        const int end = std::min(stored, (b + 1) * kBlockRows);
        for (int row = b * kBlockRows; row < end; ++row) {
            const double x = cells[row].x();
            const double y = cells[row].y();
            // A NaN fails every comparison of the walk's view test, an infinity lies outside
            // every finite view: neither is ever drawn, so neither widens the box.
            if (!valid[row] || !std::isfinite(x) || !std::isfinite(y))
                continue;
            box.left = std::min(box.left, x);
            box.right = std::max(box.right, x);
            box.top = std::min(box.top, y);
            box.bottom = std::max(box.bottom, y);
        }
    }
    return m_boxes;
}

void PointBlockBounds::clear()
{
    m_cells = nullptr;
    m_stored = -1;
    m_revision = 0;
    m_boxes.clear();
}

} // namespace rkBase

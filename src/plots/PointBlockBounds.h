#pragma once
// The bounding box of the stored points of each block of rows, so that a walk over a zoomed
// chart can pass over whole blocks none of whose points can reach the view without reading
// them. Well data lies in depth order, so in a depth track zoomed four times three blocks in
// four are passed over. The boxes are kept until the points change: the key is the model's data
// revision, the cell array and its length, and the owner clears them whenever it is given
// another model (a new model counts its revisions from zero again).

#include <QPointF>
#include <QtGlobal>

#include <cstdint>
#include <vector>

namespace rkBase {

class PointBlockBounds
{
public:
    static constexpr int kBlockRows = 2048;

    struct Box {
        double left;
        double top;
        double right;
        double bottom;
        // A block without a finite valid point has an empty box that meets nothing.
        bool meets(double l, double t, double r, double b) const
        {
            return right >= l && left <= r && bottom >= t && top <= b;
        }
    };

    // The boxes of rows [0, stored), one per kBlockRows; invalid and non-finite points are left
    // out, as a walk never draws them.
    const std::vector<Box>& boxes(const QPointF* cells, const std::uint8_t* valid, int stored, quint64 revision);
    void clear();

private:
    const QPointF* m_cells = nullptr;
    int m_stored = -1;
    quint64 m_revision = 0;
    std::vector<Box> m_boxes;
};

} // namespace rkBase

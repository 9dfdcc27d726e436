#pragma once
// Writes points into column 0 of a node, in place where the node stores points, otherwise
// through setPointValue: for walks that fill a point list of a million rows, where a call per
// cell costs more than the point.

#include <CellColumn.h>
#include <MatrixData.h>

#include <QPointF>

#include <cstdint>

namespace rkBase {

class PointColumnWriter
{
public:
    explicit PointColumnWriter(MatrixData* data) : m_data(data)
    {
        CellColumn* cells = data ? data->writableCellColumn(0) : nullptr;
        m_points = cells ? cells->writablePointData() : nullptr;
        if (m_points) {
            m_valid = cells->writableValidData();
            m_rows = cells->size();
        }
    }

    void set(int row, QPointF const& p)
    {
        if (row >= 0 && row < m_rows) {
            m_points[row] = p;
            m_valid[row] = 1;
        } else if (m_data) {
            m_data->setPointValue(row, p);
        }
    }

private:
    MatrixData* m_data;
    QPointF* m_points = nullptr;
    std::uint8_t* m_valid = nullptr;
    int m_rows = 0;
};

} // namespace rkBase

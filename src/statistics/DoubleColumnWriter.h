#pragma once
// Writes numbers into column 0 of a node, in place where the node is a plain column of doubles,
// otherwise through setDoubleValue (which converts for columns of other types): for walks that
// fill a column of a million rows, where a call per cell costs more than the number.

#include <CellColumn.h>
#include <MatrixData.h>
#include <MatrixDataArray.h>

#include <cmath>
#include <cstdint>
#include <typeinfo>

namespace rkBase {

class DoubleColumnWriter
{
public:
    explicit DoubleColumnWriter(MatrixData* data) : m_data(data)
    {
        if (!data || data->isGroup())
            return;
        // A column a host derives may keep more than its cells: it gets every value through its
        // own setter.
        const std::type_info& t = typeid(*data);
        if (t != typeid(MatrixData) && t != typeid(MatrixDataArray))
            return;
        CellColumn* cells = data->writableCellColumn(0);
        m_values = cells ? cells->writableDoubleData() : nullptr;
        if (m_values) {
            m_valid = cells->writableValidData();
            m_rows = cells->size();
        }
    }

    void set(int row, double value)
    {
        if (row >= 0 && row < m_rows && std::isfinite(value)) {
            m_values[row] = value;
            m_valid[row] = 1;
        } else if (m_data && row >= 0) {
            m_data->setDoubleValue(row, 0, value);
        }
    }

private:
    MatrixData* m_data;
    double* m_values = nullptr;
    std::uint8_t* m_valid = nullptr;
    int m_rows = 0;
};

} // namespace rkBase

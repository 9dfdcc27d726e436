#pragma once
// Reads column 0 of a source node as finite doubles. Plain Double/Int columns are read from their
// typed storage, a million rows without one QVariant each; computed nodes (proxies, strike
// columns, anything a host derives) go through their virtual value().

#include <CellColumn.h>
#include <MatrixData.h>
#include <MatrixDataArray.h>

#include <cmath>
#include <typeinfo>

namespace rkBase {

class ColumnReader
{
public:
    explicit ColumnReader(const MatrixData* node) : m_node(node)
    {
        if (!node)
            return;
        const std::type_info& t = typeid(*node);
        const CellColumn* c = node->cellColumn(0);
        if ((t == typeid(MatrixData) || t == typeid(MatrixDataArray)) && !node->isGroup() && c
            && CellColumn::isNumericType(c->type())) {
            m_cells = c;
            m_doubles = c->doubleData();
            m_valid = c->validData();
            m_size = c->size();
        }
    }

    bool isNull() const { return !m_node; }

    // False for a blank, null, non-numeric or non-finite cell, or a row outside the column.
    bool read(int row, double& out) const
    {
        if (m_doubles) {
            if (row < 0 || row >= m_size || !m_valid[row])
                return false;
            out = m_doubles[row];
            return std::isfinite(out);
        }
        if (m_cells) {
            if (!m_cells->isValid(row))
                return false;
            out = m_cells->toDouble(row);
            return std::isfinite(out);
        }
        if (!m_node)
            return false;
        const QVariant v = m_node->value(row, 0);
        if (!v.isValid() || v.isNull())
            return false;
        bool ok = false;
        out = v.toDouble(&ok);
        return ok && std::isfinite(out);
    }

private:
    const MatrixData* m_node = nullptr;
    const CellColumn* m_cells = nullptr;
    const double* m_doubles = nullptr;
    const std::uint8_t* m_valid = nullptr;
    int m_size = 0;
};

} // namespace rkBase

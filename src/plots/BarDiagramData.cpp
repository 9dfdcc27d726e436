#include "BarDiagramData.h"

#include <CellColumn.h>
#include <MatrixData.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace rkBase {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();

// Finite cells whose sum passes the largest double are summed again scaled by this power of
// two, which loses no digits (only cells far too small to matter beside the sum underflow): a
// bar of two cells of 1.7e308 is a bar of 1.7e308, not an infinity that draws nothing.
constexpr double kDownScale = 0x1p-64;
constexpr double kUpScale = 0x1p64;

struct Accumulator {
    double sum = 0.0;
    int count = 0;
    double scale = 1.0;
    void add(double v)
    {
        // v - v is 0 only for finite v: NaN and infinities drop out without a branch on each.
        if (v - v == 0.0) {
            sum += v * scale;
            ++count;
        }
    }
};

// One column over one category: entries [begin, end) of the row list, or rows begin..end-1
// when there is no list. Each finite cell is multiplied by scale before it is added.
Accumulator accumulate(const CellColumn& cells, const std::vector<int>& rows, int begin, int end, double scale)
{
    Accumulator acc;
    acc.scale = scale;
    const int size = cells.size();
    const std::uint8_t* valid = cells.validData();
    const double* doubles = cells.doubleData();
    if (rows.empty()) {
        end = std::min(end, size);
        if (doubles) {
            // The hot loop of a million-row chart: no branch per cell, and four running sums so
            // that each addition need not wait for the one before.
            double sum[4] = {0.0, 0.0, 0.0, 0.0};
            int count[4] = {0, 0, 0, 0};
            int r = begin;
            for (; r + 4 <= end; r += 4)
                for (int k = 0; k < 4; ++k) {
                    const double v = doubles[r + k];
                    const bool take = valid[r + k] != 0 && v - v == 0.0;
                    sum[k] += take ? v * scale : 0.0;
                    count[k] += take;
                }
            for (; r < end; ++r)
                if (valid[r])
                    acc.add(doubles[r]);
            acc.sum += (sum[0] + sum[1]) + (sum[2] + sum[3]);
            acc.count += count[0] + count[1] + count[2] + count[3];
        } else {
            for (int r = begin; r < end; ++r)
                if (valid[r])
                    acc.add(cells.toDouble(r));
        }
        return acc;
    }
    for (int i = begin; i < end; ++i) {
        const int r = rows[static_cast<std::size_t>(i)];
        if (r < 0 || r >= size || !valid[r])
            continue;
        acc.add(doubles ? doubles[r] : cells.toDouble(r));
    }
    return acc;
}

QString labelText(const MatrixData* column, int row, bool storedUnits)
{
    if (!column->isValueValid(row, 0))
        return QString();
    if (column->cellType() == QVariant::Double) {
        const double d = column->toDouble(row, 0);
        if (!storedUnits && column->nodeUnitKey() == -1)
            return column->printValue(d);
        return QString::number(d, 'f', column->unitPrecision());
    }
    return column->value(row, 0).toString();
}

} // namespace

BarDiagramData BarDiagramData::reduce(const QList<MatrixData*>& columns, const std::vector<int>& rows, int step,
                                      const MatrixData* labelColumn, bool storedUnits)
{
    BarDiagramData out;
    std::vector<const MatrixData*> used;
    for (const MatrixData* c : columns)
        if (c && c->cellColumn(0) && CellColumn::isNumericType(c->cellType()))
            used.push_back(c);

    int n = static_cast<int>(rows.size());
    if (rows.empty())
        for (const MatrixData* c : used)
            n = std::max(n, std::min(c->validValueRowCount(), c->cellColumn(0)->size()));
    out.m_rowCount = n;
    out.m_step = std::max(1, step);
    if (n > 0 && (n + static_cast<long long>(out.m_step) - 1) / out.m_step > kMaxCategories)
        out.m_step = (n + kMaxCategories - 1) / kMaxCategories;
    out.m_categories = used.empty() || n == 0 ? 0 : static_cast<int>((n + static_cast<long long>(out.m_step) - 1) / out.m_step);

    const int categories = out.m_categories;
    out.m_values.assign(used.size() * static_cast<std::size_t>(categories), kNaN);
    out.m_counts.assign(used.size() * static_cast<std::size_t>(categories), 0);
    for (std::size_t s = 0; s < used.size(); ++s) {
        const MatrixData* column = used[s];
        Series series;
        series.name = column->name();
        series.unit = column->displayUnitTag();
        series.colour = column->color();
        out.m_series.push_back(series);
        const bool convert = !storedUnits && column->nodeUnitKey() == -1;
        const CellColumn& cells = *column->cellColumn(0);
        for (int c = 0; c < categories; ++c) {
            const int begin = c * out.m_step;
            const int end = static_cast<int>(std::min<long long>(n, static_cast<long long>(begin) + out.m_step));
            const Accumulator acc = accumulate(cells, rows, begin, end, 1.0);
            if (acc.count == 0)
                continue;
            double mean = acc.sum / acc.count;
            if (!std::isfinite(mean)) {
                const Accumulator scaled = accumulate(cells, rows, begin, end, kDownScale);
                // The mean lies between the cells; rounding must not carry it past the largest double.
                mean = std::clamp(scaled.sum / scaled.count * kUpScale, -kLargest, kLargest);
            }
            const std::size_t at = s * categories + c;
            out.m_values[at] = convert ? column->convertModelToDisplay(mean) : mean;
            out.m_counts[at] = acc.count;
        }
    }

    out.m_numericLabels = !labelColumn || CellColumn::isNumericType(labelColumn->cellType());
    out.m_labelTitle = labelColumn ? labelColumn->name() : QString();
    out.m_labels.reserve(categories);
    out.m_firstRows.reserve(categories);
    out.m_lastRows.reserve(categories);
    for (int c = 0; c < categories; ++c) {
        const int begin = c * out.m_step;
        const int last = static_cast<int>(std::min<long long>(n, static_cast<long long>(begin) + out.m_step)) - 1;
        const int first = rows.empty() ? begin : rows[static_cast<std::size_t>(begin)];
        out.m_firstRows.push_back(first);
        out.m_lastRows.push_back(rows.empty() ? last : rows[static_cast<std::size_t>(last)]);
        if (first < 0)
            out.m_labels.push_back(QString());
        else
            out.m_labels.push_back(labelColumn ? labelText(labelColumn, first, storedUnits) : QString::number(first + 1));
    }
    return out;
}

double BarDiagramData::value(int s, int category) const
{
    if (s < 0 || s >= seriesCount() || category < 0 || category >= m_categories)
        return kNaN;
    return m_values[static_cast<std::size_t>(s) * m_categories + category];
}

int BarDiagramData::cellCount(int s, int category) const
{
    if (s < 0 || s >= seriesCount() || category < 0 || category >= m_categories)
        return 0;
    return m_counts[static_cast<std::size_t>(s) * m_categories + category];
}

QString BarDiagramData::categoryLabel(int category) const
{
    return category >= 0 && category < m_categories ? m_labels[static_cast<std::size_t>(category)] : QString();
}

int BarDiagramData::firstRow(int category) const
{
    return category >= 0 && category < m_categories ? m_firstRows[static_cast<std::size_t>(category)] : -1;
}

int BarDiagramData::lastRow(int category) const
{
    return category >= 0 && category < m_categories ? m_lastRows[static_cast<std::size_t>(category)] : -1;
}

} // namespace rkBase

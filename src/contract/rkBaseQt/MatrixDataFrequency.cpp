// Frequency tables behind the histogram and the rose, the cumulative curve read back from them,
// and the mean direction of an azimuth column.
#include "MatrixData.h"

#include "AzimuthBinRule.h"
#include "CellColumn.h"
#include "MatrixDataArray.h"
#include "UnitRegistry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <tuple>

namespace rkBase {

namespace {

constexpr double kNoValue = 99999.0;
constexpr double kPi = 3.14159265358979323846;

// Rows to read: the listed ones inside the valid rows, or all valid rows for an empty list when
// allowed. f(row) is called in list order; duplicates in a list count twice, as the caller
// asked.
template <typename F> void forEachRow(int validRows, const std::vector<int>& rows, bool emptyMeansAll, F&& f)
{
    if (rows.empty()) {
        if (emptyMeansAll)
            for (int r = 0; r < validRows; ++r)
                f(r);
        return;
    }
    for (int r : rows)
        if (r >= 0 && r < validRows)
            f(r);
}

MatrixDataArray* newTable(const QString& name, int bins)
{
    auto* table = new MatrixDataArray(name, bins, 3, QVariant::Double);
    return table;
}

// Quantile q (0..1) of values by linear interpolation between order statistics; reorders values.
double quantile(std::vector<double>& values, double q)
{
    const double pos = q * static_cast<double>(values.size() - 1);
    const std::size_t lo = static_cast<std::size_t>(std::floor(pos));
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(lo), values.end());
    const double a = values[lo];
    if (lo + 1 >= values.size())
        return a;
    // The next order statistic is the smallest of the upper part.
    const double b = *std::min_element(values.begin() + static_cast<std::ptrdiff_t>(lo) + 1, values.end());
    return a + (pos - static_cast<double>(lo)) * (b - a);
}

// Smallest and largest of n > 0 finite values, kept in registers in four lanes.
std::pair<double, double> extent(const double* v, std::size_t n)
{
    double lo[4] = {v[0], v[0], v[0], v[0]}, hi[4] = {v[0], v[0], v[0], v[0]};
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4)
        for (int k = 0; k < 4; ++k) {
            lo[k] = v[i + k] < lo[k] ? v[i + k] : lo[k];
            hi[k] = v[i + k] > hi[k] ? v[i + k] : hi[k];
        }
    for (; i < n; ++i) {
        lo[0] = v[i] < lo[0] ? v[i] : lo[0];
        hi[0] = v[i] > hi[0] ? v[i] : hi[0];
    }
    return {std::min(std::min(lo[0], lo[1]), std::min(lo[2], lo[3])), std::max(std::max(hi[0], hi[1]), std::max(hi[2], hi[3]))};
}

// Copies the finite values of the valid cells at the rows (the list, or all below size when
// allowed) into out, and their extent into lo and hi; returns how many.
struct Gathered {
    std::size_t n;
    double lo, hi;
};
// The common case, a Double column, read straight from its cells. A function of its own, so that
// the running extent stays in registers.
__attribute__((noinline)) Gathered gatherDoubles(const double* d, const std::uint8_t* valid, int size, const std::vector<int>& rows,
                       bool emptyMeansAll, double* out)
{
    double l = std::numeric_limits<double>::infinity(), h = -l;
    std::size_t n = 0;
    // Written without branches on the data: blanks and NaN only leave n where it was.
    auto step = [&](int r) {
        const double v = d[r];
        const bool take = valid[r] && std::isfinite(v);
        out[n] = v;
        n += take;
        const double forMin = take ? v : l, forMax = take ? v : h;
        l = std::min(l, forMin);
        h = std::max(h, forMax);
    };
    if (rows.empty()) {
        const int last = emptyMeansAll ? size : 0;
        for (int r = 0; r < last; ++r)
            step(r);
    } else {
        for (const int r : rows)
            if (r >= 0 && r < size)
                step(r);
    }
    return {n, l, h};
}

Gathered gather(const CellColumn* c, int size, const std::vector<int>& rows, bool emptyMeansAll, double* out)
{
    if (const double* d = c->doubleData())
        return gatherDoubles(d, c->validData(), size, rows, emptyMeansAll, out);
    double l = std::numeric_limits<double>::infinity(), h = -l;
    std::size_t n = 0;
    forEachRow(size, rows, emptyMeansAll, [&](int r) {
        if (!c->isValid(r))
            return;
        const double v = c->toDouble(r);
        out[n++] = v;
        l = std::min(l, v);
        h = std::max(h, v);
    });
    return {n, l, h};
}

// Turns counts into the type's values and writes the table.
void fillValues(MatrixDataArray* table, const std::vector<double>& counts, double total, MatrixData::HistogramType type)
{
    double running = 0.0;
    const int bins = static_cast<int>(counts.size());
    for (int i = 0; i < bins; ++i) {
        double v = counts[static_cast<std::size_t>(i)];
        if (type == MatrixData::RelativeFrequency)
            v = total > 0.0 ? 100.0 * v / total : 0.0;
        else if (type == MatrixData::CumulativeRelativeFrequency) {
            running += v;
            v = total > 0.0 ? 100.0 * running / total : 0.0;
        }
        table->setValue(i, 0, v);
    }
}

} // namespace

// ---------------------------------------------------------------------------------------------

double MatrixData::niceInterval(double h)
{
    if (!(h > 0.0) || !std::isfinite(h))
        return std::numeric_limits<double>::quiet_NaN();
    const double decade = std::pow(10.0, std::floor(std::log10(h)));
    const double m = h / decade; // 1 <= m < 10
    // Nearest on a log scale: the borders are the geometric means of neighbours.
    double nice = 10.0;
    if (m < std::sqrt(2.0))
        nice = 1.0;
    else if (m < std::sqrt(10.0))
        nice = 2.0;
    else if (m < std::sqrt(50.0))
        nice = 5.0;
    return nice * decade;
}

double MatrixData::automaticFrequencyInterval(std::vector<double>& values)
{
    const std::size_t n = values.size();
    if (n == 0)
        return std::numeric_limits<double>::quiet_NaN();
    const auto mm = std::minmax_element(values.begin(), values.end());
    const double lo = *mm.first, hi = *mm.second;
    const double range = hi - lo;
    if (!(range > 0.0)) {
        const double h = niceInterval(std::abs(lo) / 10.0);
        return std::isfinite(h) ? h : 1.0;
    }
    double h = 0.0;
    if (n >= 4) {
        const double q1 = quantile(values, 0.25);
        const double q3 = quantile(values, 0.75);
        h = 2.0 * (q3 - q1) / std::cbrt(static_cast<double>(n));
    }
    if (!(h > 0.0))
        h = range / (std::ceil(std::log2(static_cast<double>(n))) + 1.0);
    const double nice = niceInterval(h);
    return std::isfinite(nice) ? nice : range;
}

MatrixData* MatrixData::newFrequencyData(double& interval, HistogramType type, const std::vector<int>& rows,
                                         bool emptyMeansAllRows, const MatrixData* dataRoot,
                                         bool useSmallValues) const
{
    const CellColumn* c = cells(0);
    // The values counted, gathered once (no zero fill: a million doubles are written anyway).
    std::size_t n = 0;
    std::unique_ptr<double[]> values;
    double lo = 0.0, hi = 0.0;
    if (c && CellColumn::isNumericType(c->type())) {
        const int size = std::min(c->size(), m_validRows);
        values.reset(new double[std::max<std::size_t>(rows.empty() ? static_cast<std::size_t>(std::max(size, 0)) : rows.size(), 1)]);
        const Gathered g = gather(c, size, rows, emptyMeansAllRows, values.get());
        n = g.n;
        lo = g.lo;
        hi = g.hi;
    }
    if (!useSmallValues && n > 0) {
        const double small = std::max(std::abs(lo), std::abs(hi)) * 1e-6;
        n = static_cast<std::size_t>(std::remove_if(values.get(), values.get() + n, [small](double v) { return std::abs(v) < small; }) -
                                     values.get());
        if (n > 0)
            std::tie(lo, hi) = extent(values.get(), n);
    }

    const bool automatic = !(interval > 0.0) || !std::isfinite(interval) || interval == kNoValue;
    int bins = 0;
    if (n > 0) {
        if (automatic) {
            std::vector<double> work(values.get(), values.get() + n);
            interval = automaticFrequencyInterval(work);
        }
        const double range = hi - lo;
        if (!std::isfinite(range)) {
            // Ranges near the largest double overflow: such data get the widest bins that fit.
            interval = std::numeric_limits<double>::max() / kMaxFrequencyBins;
            bins = kMaxFrequencyBins;
        } else if (range / interval >= kMaxFrequencyBins - 1) {
            interval = range / (kMaxFrequencyBins - 1);
            bins = kMaxFrequencyBins;
        } else {
            bins = static_cast<int>(std::floor(range / interval)) + 1;
            // The division may round down onto an edge: the last bin must end past the maximum.
            while (bins < kMaxFrequencyBins && lo + bins * interval <= hi)
                ++bins;
        }
    }

    MatrixDataArray* table = newTable(m_name, bins);
    table->setColor(m_color);
    if (dataRoot && dataRoot->registry()) {
        table->setRegistry(dataRoot->registry());
        table->setUnitManager(m_unitManager);
    }
    table->m_validRows = static_cast<int>(n);
    if (bins == 0)
        return table;

    // Four interleaved tallies, so that runs of one bin do not wait on each other's stores. The
    // bin from the reciprocal can be one off next to an edge; the edges themselves settle it.
    std::vector<std::uint32_t> tally(4 * static_cast<std::size_t>(bins), 0);
    std::vector<double> edges(static_cast<std::size_t>(bins) + 1);
    for (int k = 0; k <= bins; ++k)
        edges[static_cast<std::size_t>(k)] = lo + k * interval;
    const double inverse = 1.0 / interval;
    const double* v = values.get();
    const double* e = edges.data();
    const double top = bins - 1;
    auto binOfValue = [&](double x) {
        const double k = (x - lo) * inverse; // x >= lo
        int i = k < top ? static_cast<int>(k) : bins - 1;
        // Only a value within rounding of an edge can be one off; the edges settle those.
        const double f = k - i;
        if (f < 1e-9 || f > 1.0 - 1e-9) {
            i -= (i > 0) & (x < e[i]);
            i += (i < bins - 1) & (x >= e[i + 1]);
        }
        return static_cast<std::size_t>(i);
    };
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        ++tally[4 * binOfValue(v[i])];
        ++tally[4 * binOfValue(v[i + 1]) + 1];
        ++tally[4 * binOfValue(v[i + 2]) + 2];
        ++tally[4 * binOfValue(v[i + 3]) + 3];
    }
    for (; i < n; ++i)
        ++tally[4 * binOfValue(v[i])];
    std::vector<double> counts(static_cast<std::size_t>(bins), 0.0);
    for (std::size_t b = 0; b < counts.size(); ++b)
        counts[b] = double(tally[4 * b]) + tally[4 * b + 1] + tally[4 * b + 2] + tally[4 * b + 3];
    fillValues(table, counts, static_cast<double>(n), type);
    for (int b = 0; b < bins; ++b) {
        table->setValue(b, 1, edges[static_cast<std::size_t>(b)]);
        table->setValue(b, 2, edges[static_cast<std::size_t>(b) + 1]);
    }
    table->m_minValue = lo;
    table->m_maxValue = lo + bins * interval;
    return table;
}

MatrixData* MatrixData::newFrequencyData(double interval, int binCount, int column, HistogramType type,
                                         const std::vector<int>& rows, const MatrixData* direction,
                                         const MatrixData* classNode, std::vector<std::vector<QVariant>>& values,
                                         bool unidirectional)
{
    values.clear();
    const CellColumn* c = direction ? direction->cells(column) : nullptr;
    int bins = 0;
    if (c && interval > 0.0 && std::isfinite(interval) && binCount > 0) {
        const double fit = std::floor(360.0 / interval);
        bins = static_cast<int>(std::clamp(std::min(fit, static_cast<double>(binCount)), 1.0,
                                           static_cast<double>(kMaxFrequencyBins)));
    }
    MatrixDataArray* table = newTable(direction ? direction->name() : QString(), bins);
    if (direction)
        table->setColor(direction->color());
    if (bins == 0)
        return table;

    const CellColumn* classes = classNode ? classNode->cells(0) : nullptr;
    const QVariant::Type classType = classes ? classes->type() : QVariant::Invalid;
    if (classNode)
        values.resize(static_cast<std::size_t>(bins));
    auto classValue = [&](int r) -> QVariant {
        if (!classes->isValid(r))
            return QVariant();
        switch (classType) {
        case QVariant::Color: return QVariant(static_cast<uint>(classes->toInt(r)));
        case QVariant::Double:
        case QVariant::Int: return QVariant(classes->toDouble(r));
        default: return classes->get(r);
        }
    };

    const bool numeric = CellColumn::isNumericType(c->type());
    const AzimuthBinRule rule(interval, bins);
    auto binOfAzimuth = [&rule](double a) { return rule.binOf(a); };
    // First the bins of every row counted, so that each bin's list of class values is allocated
    // once; then the values.
    const int validRows = std::min(direction->validValueRowCount(), c->size());
    std::vector<int> rowOf, binOfRow, mirrorOfRow;
    if (classes) {
        const std::size_t expected = rows.empty() ? static_cast<std::size_t>(std::max(validRows, 0)) : rows.size();
        rowOf.reserve(expected);
        binOfRow.reserve(expected);
        if (!unidirectional)
            mirrorOfRow.reserve(expected);
    }
    std::vector<double> counts(static_cast<std::size_t>(bins), 0.0);
    int counted = 0;
    if (numeric) {
        const double* d = c->doubleData();
        const std::uint8_t* valid = c->validData();
        forEachRow(validRows, rows, true, [&](int r) {
            if (!valid[r])
                return;
            const double raw = d ? d[r] : c->toDouble(r);
            if (!std::isfinite(raw) || raw == kNoValue)
                return;
            const double a = raw >= 0.0 && raw < 360.0 ? raw : AzimuthBinRule::into360(raw);
            const int i = binOfAzimuth(a);
            counts[static_cast<std::size_t>(i)] += 1.0;
            int j = -1;
            if (!unidirectional) {
                j = binOfAzimuth(AzimuthBinRule::into360(a + 180.0));
                counts[static_cast<std::size_t>(j)] += 1.0;
            }
            if (classes) {
                rowOf.push_back(r);
                binOfRow.push_back(i);
                if (j >= 0)
                    mirrorOfRow.push_back(j);
            }
            ++counted;
        });
    }
    if (classes) {
        for (int i = 0; i < bins; ++i)
            values[static_cast<std::size_t>(i)].reserve(static_cast<std::size_t>(counts[static_cast<std::size_t>(i)]));
        const bool colours = classType == QVariant::Color;
        const std::uint8_t* valid = classes->validData();
        const QRgb* rgbas = classes->colorData();
        const int classRows = classes->size();
        for (std::size_t k = 0; k < rowOf.size(); ++k) {
            const int r = rowOf[k];
            std::vector<QVariant>& bin = values[static_cast<std::size_t>(binOfRow[k])];
            if (colours) {
                // Colours as their number: a QVariant of a QColor would cost an allocation each.
                if (r < classRows && valid[r])
                    bin.emplace_back(static_cast<uint>(rgbas[r]));
                else
                    bin.emplace_back();
            } else {
                bin.push_back(classValue(r));
            }
            if (!mirrorOfRow.empty())
                values[static_cast<std::size_t>(mirrorOfRow[k])].push_back(bin.back());
        }
    }
    fillValues(table, counts, unidirectional ? counted : 2.0 * counted, type);
    for (int i = 0; i < bins; ++i) {
        table->setValue(i, 1, i * interval);
        table->setValue(i, 2, i == bins - 1 ? 360.0 : (i + 1) * interval);
    }
    table->m_validRows = counted;
    table->m_minValue = 0.0;
    table->m_maxValue = 360.0;
    return table;
}

MatrixData* MatrixData::reduceToAveraged(int valueColumn, int intervalColumn) const
{
    const CellColumn* value = cells(valueColumn);
    const CellColumn* start = cells(intervalColumn);
    const CellColumn* end = intervalColumn >= 0 ? cells(intervalColumn + 1) : nullptr;
    std::vector<double> x, y; // x: value, y: position
    auto add = [&](double v, double position, int& runLength) {
        if (!x.empty() && x.back() == v) {
            // Mean of the run's positions, kept as a running mean.
            ++runLength;
            y.back() += (position - y.back()) / runLength;
            return;
        }
        x.push_back(v);
        y.push_back(position);
        runLength = 1;
    };
    if (value && start && end) {
        const int rows = rowCount();
        int run = 0;
        bool first = true;
        for (int r = 0; r < rows; ++r) {
            if (!value->isValid(r) || !start->isValid(r) || !end->isValid(r))
                continue;
            const double v = value->toDouble(r), s = start->toDouble(r), e = end->toDouble(r);
            if (!std::isfinite(v) || !std::isfinite(s) || !std::isfinite(e))
                continue;
            if (first) {
                add(0.0, s, run);
                first = false;
            }
            add(v, e, run);
        }
    }
    auto* curve = new MatrixDataArray(m_name, static_cast<int>(x.size()), 2, QVariant::Double);
    for (std::size_t i = 0; i < x.size(); ++i) {
        curve->setValue(static_cast<int>(i), 0, x[i]);
        curve->setValue(static_cast<int>(i), 1, y[i]);
    }
    curve->setColor(m_color);
    curve->m_validRows = static_cast<int>(x.size());
    return curve;
}

double MatrixData::getInterpolationValue(double x, int xColumn, int yColumn) const
{
    const CellColumn* xs = cells(xColumn);
    const CellColumn* ys = cells(yColumn);
    if (!xs || !ys || std::isnan(x))
        return kNoValue;
    const int rows = rowCount();
    bool have = false;
    double firstX = 0, firstY = 0, prevX = 0, prevY = 0;
    for (int r = 0; r < rows; ++r) {
        if (!xs->isValid(r) || !ys->isValid(r))
            continue;
        const double cx = xs->toDouble(r), cy = ys->toDouble(r);
        if (!std::isfinite(cx) || !std::isfinite(cy))
            continue;
        if (!have) {
            have = true;
            firstX = prevX = cx;
            firstY = prevY = cy;
            if (cx == x)
                return cy;
            continue;
        }
        if ((prevX <= x && x <= cx) || (cx <= x && x <= prevX)) {
            if (cx == prevX)
                return prevY;
            return prevY + (x - prevX) / (cx - prevX) * (cy - prevY);
        }
        prevX = cx;
        prevY = cy;
    }
    if (!have)
        return kNoValue;
    // Outside the span: the nearer end.
    return std::abs(x - firstX) <= std::abs(x - prevX) ? firstY : prevY;
}

double MatrixData::resultantMeanDirection(double& resultant, const std::vector<int>& rows) const
{
    resultant = 0.0;
    const CellColumn* c = cells(0);
    if (!c || !CellColumn::isNumericType(c->type()))
        return kNoValue;
    double sx = 0.0, sy = 0.0;
    int n = 0;
    constexpr double d2r = kPi / 180.0;
    forEachRow(m_validRows, rows, true, [&](int r) {
        if (!c->isValid(r))
            return;
        const double a = c->toDouble(r);
        if (!std::isfinite(a) || a == kNoValue)
            return;
        sx += std::cos(a * d2r);
        sy += std::sin(a * d2r);
        ++n;
    });
    if (n == 0)
        return kNoValue;
    const double length = std::hypot(sx, sy);
    if (length < 1e-6 * n)
        return kNoValue;
    resultant = std::min(1.0, length / n);
    return AzimuthBinRule::into360(std::atan2(sy, sx) / d2r);
}

} // namespace rkBase

// The regression line of the point list, and its reduction to one average per interval of y.
#include "CellColumn.h"
#include "QRelationshipItemModel.h"
#include "UnitRegistry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace rkBase {

namespace {
const double kNoValue = 99999.0;

// The points of the list, read straight from their cells where the list is a typed point
// column: the walks here touch a million points two or three times.
class PointCells
{
public:
    explicit PointCells(const MatrixData* data) : m_data(data)
    {
        const CellColumn* c = data ? data->cellColumn(0) : nullptr;
        if (c && c->type() == QVariant::PointF && c->pointData()) {
            m_cells = c->pointData();
            m_valid = c->validData();
            m_size = c->size();
        }
    }

    // The raw cells and their validity bytes; null where the list is no typed point column.
    const QPointF* cells() const { return m_cells; }
    const std::uint8_t* valid() const { return m_valid; }
    int size() const { return m_size; }

    bool read(int row, QPointF& p) const
    {
        if (m_cells) {
            if (row < 0 || row >= m_size || !m_valid[row])
                return false;
            p = m_cells[row];
            return true;
        }
        return readValue(row, p);
    }

private:
    // Out of line, so that the walks keep their sums in registers around it.
    [[gnu::noinline]] bool readValue(int row, QPointF& p) const
    {
        // isNull() is no test here: a point at the origin is null and still a valid cell.
        const QVariant v = m_data->value(row, 0);
        if (!v.isValid() || !v.canConvert<QPointF>())
            return false;
        p = v.toPointF();
        return true;
    }

    const MatrixData* m_data;
    const QPointF* m_cells = nullptr;
    const std::uint8_t* m_valid = nullptr;
    int m_size = 0;
};
} // namespace

void QRelationshipItemModel::calculateRegressionLine(double& slope, double& intercept, double& coefficient)
{
    slope = intercept = coefficient = 0.0;
    if (!m_data || rowCount() == 0)
        return;
    // The list's minimum is a point; as a number it reads 0, so the test for a vertical line
    // compares x with 0 and equal x elsewhere go on to the spread test below.
    const double reference = m_data->minValue().toDouble();
    const int rows = m_data->validValueRowCount();
    const bool filtered = m_partSelection && m_displayType == HighlightSelected;
    // The raw cells inline: the two walks over a million points are bound by this read.
    const PointCells points(m_data);
    const QPointF* cells = points.cells();
    const std::uint8_t* valid = points.valid();
    const int stored = cells ? std::min(rows, points.size()) : rows;
    const auto take = [&](int row, QPointF& p) {
        if (filtered && !isSelected(row))
            return false;
        if (cells) {
            if (!valid[row])
                return false;
            p = cells[row];
            return true;
        }
        return points.read(row, p);
    };

    double sumX = 0.0;
    double sumY = 0.0;
    long long n = 0;
    bool vertical = true;
    QPointF p;
    for (int row = 0; row < stored; ++row) {
        if (!take(row, p))
            continue;
        sumX += p.x();
        sumY += p.y();
        ++n;
        if (vertical && std::fabs(p.x() - reference) > 5e-07)
            vertical = false;
    }
    if (n == 0)
        return;
    const double mx = sumX / double(n);
    const double my = sumY / double(n);
    if (vertical) {
        slope = kNoValue;
        intercept = my;
        return;
    }

    double sxy = 0.0;
    double sxx = 0.0;
    double syy = 0.0;
    for (int row = 0; row < stored; ++row) {
        if (!take(row, p))
            continue;
        const double dx = p.x() - mx;
        const double dy = p.y() - my;
        sxy += dx * dy;
        sxx += dx * dx;
        syy += dy * dy;
    }
    // One point leaves a divisor of 0: the spread is then not a number and fails the test below.
    const double divisor = double(n - 1);
    const double cov = sxy / divisor;
    const double varX = sxx / divisor;
    const double varY = syy / divisor;
    const double sx = std::sqrt(varX);
    if (sx >= 5e-06) {
        slope = cov / (sx * sx);
        coefficient = cov / (std::sqrt(varY) * sx);
    }
    intercept = my - mx * slope;
    if (std::fabs(slope) < 5e-06)
        slope = 0.0;
    if (std::fabs(intercept) < 5e-06)
        intercept = 0.0;
}

void QRelationshipItemModel::generateDataDecimation()
{
    delete m_decimationData;
    m_decimationData = nullptr;
    delete m_decimationCount;
    m_decimationCount = nullptr;
    if (!m_intervalFilter || m_intervalFilter->lineDepths().empty())
        return;

    const std::vector<double>& b = m_intervalFilter->lineDepths();
    const int m = static_cast<int>(b.size());
    const int intervals = m - 1;
    std::vector<long long> count(std::size_t(std::max(intervals, 0)), 0);
    std::vector<double> sumX(count.size(), 0.0);
    std::vector<double> sumY(count.size(), 0.0);
    std::vector<double> sumThird(count.size(), 0.0);
    const int rows = m_data ? m_data->validValueRowCount() : 0;
    std::vector<int> rowIntervals(std::size_t(std::max(rows, 0)), -1);

    // Ascending boundaries let a point find its interval from a guess on the evenly spaced
    // scale (exact for the equal-size and equal-number filters, a few steps off for manual
    // ones); any other order keeps the first-match walk.
    // Boundaries that are not finite (a not-a-number one compares false either way) keep the walk.
    bool ascending = std::isfinite(b.front());
    for (std::size_t k = 1; ascending && k < b.size(); ++k)
        ascending = std::isfinite(b[k]) && b[k - 1] <= b[k];
    const double first = b.front();
    const double last = b.back();
    // A span too small to divide by leaves the guess at the first interval.
    const double scale = ascending && last > first ? intervals / (last - first) : 0.0;
    const double perUnit = std::isfinite(scale) ? scale : 0.0;
    const PointCells cells(m_data);
    const bool filtered = m_partSelection && m_displayType == HighlightSelected;
    QPointF p;
    for (int row = 0; row < rows && intervals > 0; ++row) {
        if (filtered && !isSelected(row))
            continue;
        const double third = m_tadpoleAzimuthNode ? azimuthTadPole(row) : kNoValue;
        if (!cells.read(row, p))
            continue;
        const double y = p.y();
        int i = -1;
        if (std::isnan(y)) {
            // Not below and not above any boundary: the first interval takes it.
            i = 0;
        } else if (ascending) {
            if (y >= first && y <= last) {
                // The interval below the first boundary not below y, or the first interval:
                // i + 1 boundaries lie below y, or none does. The guess is bounded before it
                // becomes an index: y - first may overflow where the span did not.
                const double guess = (y - first) * perUnit;
                i = guess >= 0.0 ? int(std::min(guess, double(intervals - 1))) : 0;
                while (i > 0 && b[std::size_t(i)] >= y)
                    --i;
                while (i + 1 < intervals && b[std::size_t(i) + 1] < y)
                    ++i;
            }
        } else {
            for (int k = 0; k < intervals; ++k) {
                if (!(y < b[std::size_t(k)] || y > b[std::size_t(k) + 1])) {
                    i = k;
                    break;
                }
            }
        }
        if (i < 0)
            continue;
        const std::size_t s = std::size_t(i);
        ++count[s];
        sumX[s] += p.x();
        sumY[s] += y;
        if (third != kNoValue)
            sumThird[s] += third;
        rowIntervals[std::size_t(row)] = i;
    }

    const QString name = m_data ? m_data->name() : QString();
    const QString interfaceName = m_data ? m_data->interfaceName() : QString();
    m_decimationData = new MatrixData(name, 0, 1, QVariant::PointF, true);
    m_decimationData->setRegistry(m_nodeX ? m_nodeX->registry() : nullptr);
    m_decimationData->setUnitManager(m_unitCategory);
    m_decimationData->setInterfaceName(interfaceName);
    m_decimationCount = new MatrixData(name, 0, 1, QVariant::PointF, true);
    m_decimationCount->setRegistry(m_data ? m_data->registry() : nullptr);
    m_decimationCount->setUnitManager(UnitRegistry::CATEGORY_DIMENSIONLESS);
    m_decimationCount->setInterfaceName(interfaceName);
    m_decimationAngle.clear();

    const QString xName = m_nodeX ? m_nodeX->name() : QString();
    const bool orientation = xName.contains(QLatin1String("dip"), Qt::CaseInsensitive)
                             || xName.contains(QLatin1String("azimuth"), Qt::CaseInsensitive);
    std::vector<int> outputRow(count.size(), -1);
    std::vector<QPointF> planes;
    if (orientation)
        calculateMeanDirectionsBySubset(true, rowIntervals.data(), intervals, planes);
    std::vector<double> meanY;
    int k = 0;
    for (int i = 0; i < intervals; ++i) {
        const std::size_t s = std::size_t(i);
        if (count[s] == 0)
            continue;
        const double c = double(count[s]);
        const double my = sumY[s] / c;
        QPointF average(sumX[s] / c, my);
        if (orientation) {
            average.setX(planes[s].x());
            m_decimationAngle.push_back(planes[s].y());
        } else if (m_tadpoleAttributeIsOn) {
            m_decimationAngle.push_back(sumThird[s] / c);
        }
        m_decimationData->setValue(k, 0, QVariant(average));
        m_decimationCount->setValue(k, 0, QVariant(QPointF(c, (b[s] + b[s + 1]) * 0.5)));
        outputRow[s] = k;
        meanY.push_back(my);
        ++k;
    }
    m_decimationData->resetRowCount(false);
    m_decimationCount->resetRowCount(false);

    m_decimationTableRows.assign(std::size_t(k), -1);
    std::vector<double> best(std::size_t(k), 1e27);
    for (int row = 0; row < rows; ++row) {
        const int i = rowIntervals[std::size_t(row)];
        if (i < 0)
            continue;
        if (!cells.read(row, p))
            continue;
        const std::size_t out = std::size_t(outputRow[std::size_t(i)]);
        const double d = std::fabs(meanY[out] - p.y());
        if (d < best[out]) {
            best[out] = d;
            m_decimationTableRows[out] = tableRow(row);
        }
    }
}

} // namespace rkBase

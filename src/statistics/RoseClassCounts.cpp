#include "RoseClassCounts.h"

#include <AzimuthBinRule.h>
#include <CellColumn.h>
#include <MatrixData.h>
#include <MatrixDataArray.h>

#include <algorithm>
#include <cmath>
#include <typeinfo>

namespace rkBase {

namespace {
constexpr double kNoValue = 99999.0;

bool plainColumn(const MatrixData* node)
{
    const std::type_info& t = typeid(*node);
    return (t == typeid(MatrixData) || t == typeid(MatrixDataArray)) && !node->isGroup() && node->cellColumn(0);
}
} // namespace

bool RoseClassCounts::canCount(const MatrixData* classNode)
{
    if (!classNode || !plainColumn(classNode))
        return false;
    const CellColumn* c = classNode->cellColumn(0);
    const QVariant::Type nominal = classNode->cellType();
    if (nominal == QVariant::Color)
        return c->type() == QVariant::Color && c->colorData();
    return (nominal == QVariant::Double || nominal == QVariant::Int) && CellColumn::isNumericType(c->type());
}

void RoseClassCounts::binRows(const MatrixData* direction, double interval, int bins, const std::vector<int>& rows,
                              bool unidirectional)
{
    m_rowOf.clear();
    m_binOf.clear();
    m_mirrorOf.clear();
    const CellColumn* c = direction->cellColumn(0);
    if (!c || !CellColumn::isNumericType(c->type()))
        return;
    const int validRows = std::min(direction->validValueRowCount(), c->size());
    // The table's own rule, so that the classes of a bin add up to its count.
    const AzimuthBinRule rule(interval, bins);
    auto binOf = [&rule](double a) { return rule.binOf(a); };
    const double* d = c->doubleData();
    const std::uint8_t* valid = c->validData();
    const std::size_t expected = rows.empty() ? static_cast<std::size_t>(std::max(validRows, 0)) : rows.size();
    m_rowOf.reserve(expected);
    m_binOf.reserve(expected);
    if (!unidirectional)
        m_mirrorOf.reserve(expected);
    auto visit = [&](int r) {
        if (r < 0 || r >= validRows || !valid[r])
            return;
        const double raw = d ? d[r] : c->toDouble(r);
        if (!std::isfinite(raw) || raw == kNoValue)
            return;
        const double a = raw >= 0.0 && raw < 360.0 ? raw : AzimuthBinRule::into360(raw);
        m_rowOf.push_back(r);
        m_binOf.push_back(binOf(a));
        if (!unidirectional)
            m_mirrorOf.push_back(binOf(AzimuthBinRule::into360(a + 180.0)));
    };
    if (rows.empty())
        for (int r = 0; r < validRows; ++r)
            visit(r);
    else
        for (int r : rows)
            visit(r);
}

int RoseClassCounts::tally(const std::vector<int>& classOfRow, int classes)
{
    const std::size_t bins = m_counts.size();
    m_counts.assign(bins, std::vector<int>(static_cast<std::size_t>(classes), 0));
    if (classes == 0)
        return 0;
    // One flat array while counting: a vector per bin would cost a pointer chase per azimuth.
    std::vector<int> flat(bins * static_cast<std::size_t>(classes), 0);
    for (std::size_t k = 0; k < m_rowOf.size(); ++k) {
        const int cls = classOfRow[k];
        if (cls < 0)
            continue;
        ++flat[static_cast<std::size_t>(m_binOf[k]) * classes + cls];
        if (!m_mirrorOf.empty())
            ++flat[static_cast<std::size_t>(m_mirrorOf[k]) * classes + cls];
    }
    int busiest = 0;
    for (std::size_t b = 0; b < bins; ++b) {
        std::copy_n(flat.begin() + static_cast<std::ptrdiff_t>(b * classes), classes, m_counts[b].begin());
        busiest = std::max(busiest, static_cast<int>(std::count_if(m_counts[b].begin(), m_counts[b].end(),
                                                                   [](int n) { return n > 0; })));
    }
    return busiest;
}

bool RoseClassCounts::count(const MatrixData* direction, const MatrixData* classNode, double interval, int binCount,
                            const std::vector<int>& rows, bool unidirectional, int classCount)
{
    m_counts.clear();
    m_legendValues.clear();
    m_legendColours.clear();
    if (!direction || !canCount(classNode) || !(interval > 0.0) || !std::isfinite(interval) || binCount < 1)
        return false;
    const int bins = static_cast<int>(std::clamp(std::min(std::floor(360.0 / interval), double(binCount)), 1.0,
                                                 double(MatrixData::kMaxFrequencyBins)));
    binRows(direction, interval, bins, rows, unidirectional);
    m_counts.resize(static_cast<std::size_t>(bins));

    const CellColumn* classes = classNode->cellColumn(0);
    const std::uint8_t* valid = classes->validData();
    const int classRows = classes->size();
    std::vector<int> classOfRow(m_rowOf.size(), -1);
    QMap<int, QString> names;
    QMap<int, QColor> colours;

    if (classNode->cellType() == QVariant::Color) {
        classNode->createSymbolIDs(names, colours);
        // Class k is the k-th colour in id order; a handful of colours is found by a look along.
        std::vector<QRgb> keys;
        for (auto it = names.cbegin(); it != names.cend(); ++it)
            keys.push_back(QColor(it.value()).rgb() & 0xffffff);
        const QRgb* rgbas = classes->colorData();
        for (std::size_t k = 0; k < m_rowOf.size(); ++k) {
            const int r = m_rowOf[k];
            if (r >= classRows || !valid[r])
                continue;
            const QRgb key = rgbas[r] & 0xffffff;
            const auto at = std::find(keys.begin(), keys.end(), key);
            if (at != keys.end())
                classOfRow[k] = static_cast<int>(at - keys.begin());
        }
        tally(classOfRow, names.size());
        int k = 0;
        for (auto it = names.cbegin(); it != names.cend(); ++it, ++k) {
            m_legendValues.insert(k + 1, it.value());
            m_legendColours.insert(k + 1, colours.value(it.key()));
        }
        if (!names.isEmpty())
            m_legendValues.insert(0, names.first());
        return true;
    }

    // Numbers: the colour map's classes.
    const double* d = classes->doubleData();
    std::vector<double> valueOfRow(m_rowOf.size(), std::nan(""));
    for (std::size_t k = 0; k < m_rowOf.size(); ++k) {
        const int r = m_rowOf[k];
        if (r < classRows && valid[r])
            valueOfRow[k] = d ? d[r] : classes->toDouble(r);
    }
    auto classify = [&]() {
        names.clear();
        colours.clear();
        classNode->createColorMapSymbolIDs(names, colours);
        const int n = names.isEmpty() ? 0 : names.lastKey() + 1;
        for (std::size_t k = 0; k < valueOfRow.size(); ++k) {
            const int id = classNode->colorMapSymbolIDOfValue(valueOfRow[k]);
            classOfRow[k] = id >= 0 && id < n ? id : -1;
        }
        return tally(classOfRow, n);
    };
    const int busiest = classify();
    if (classCount != -1 && busiest >= 1 && busiest < classCount) {
        double mn = 0, mx = 0, mean = 0;
        if (classNode->getMinMax(mn, mx, mean, boost::dynamic_bitset<>()) && mx > mn) {
            // The step is the node's own setting: it is lent for the count and given back.
            auto* node = const_cast<MatrixData*>(classNode);
            const double ownStep = node->colorMapStepSize();
            node->setColorMapStepSize((mx - mn) / busiest * (1.0 + 1e-12));
            classify();
            node->setColorMapStepSize(ownStep);
        }
    }
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        m_legendValues.insert(it.key() + 1, it.value());
        m_legendColours.insert(it.key() + 1, colours.value(it.key()));
    }
    if (!names.isEmpty())
        m_legendValues.insert(0, names.first());
    return true;
}

} // namespace rkBase

// Column summaries, legend classes and the lists that chart combo boxes show.
#include "MatrixData.h"

#include "CellColumn.h"
#include "RKColormap.h"
#include "UnitRegistry.h"

#include <QPointF>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <typeinfo>

namespace rkBase {

namespace {
constexpr double kSearchStart = 1e27;
constexpr double kNoValue = 99999.0;

struct Summary {
    double min = kSearchStart;
    double max = -kSearchStart;
    double sum = 0.0;
    int count = 0;
    void add(double v)
    {
        if (!std::isfinite(v))
            return;
        min = std::min(min, v);
        max = std::max(max, v);
        sum += v;
        ++count;
    }
};

// Rows taken: all in-use rows when the set is empty, else the set bits below the in-use count.
template <typename F> void forRows(int validRows, const boost::dynamic_bitset<>& rows, F&& f)
{
    if (rows.empty()) {
        for (int r = 0; r < validRows; ++r)
            f(r);
        return;
    }
    for (auto r = rows.find_first(); r != boost::dynamic_bitset<>::npos && r < static_cast<std::size_t>(validRows);
         r = rows.find_next(r))
        f(static_cast<int>(r));
}

boost::dynamic_bitset<> toBitset(const std::vector<int>& rows)
{
    boost::dynamic_bitset<> bits;
    if (rows.empty())
        return bits;
    const int top = *std::max_element(rows.begin(), rows.end());
    if (top < 0)
        return bits;
    bits.resize(static_cast<std::size_t>(top) + 1);
    for (int r : rows)
        if (r >= 0)
            bits.set(static_cast<std::size_t>(r));
    return bits;
}
} // namespace

QVariant MatrixData::minValue() const { return m_minValue; }
QVariant MatrixData::maxValue() const { return m_maxValue; }
QVariant MatrixData::meanValue() const { return m_meanValue; }
void MatrixData::setMinValue(const QVariant& value) { m_minValue = value; }
void MatrixData::setMeanValue(const QVariant& value) { m_meanValue = value; }
void MatrixData::setMaxValue(const QVariant& value) { m_maxValue = value; }

void MatrixData::setMinMax(const int& column, const boost::dynamic_bitset<>& rows)
{
    const CellColumn* c = cells(column);
    if (!c) {
        m_minValue = m_maxValue = m_meanValue = QVariant();
        return;
    }
    if (c->type() == QVariant::PointF) {
        Summary x, y;
        forRows(m_validRows, rows, [&](int r) {
            if (c->isValid(r)) {
                const QPointF p = c->get(r).toPointF();
                x.add(p.x());
                y.add(p.y());
            }
        });
        if (x.count == 0 || y.count == 0) {
            m_minValue = m_maxValue = m_meanValue = QVariant();
            return;
        }
        m_minValue = QPointF(x.min, y.min);
        m_maxValue = QPointF(x.max, y.max);
        m_meanValue = QPointF(x.sum / x.count, y.sum / y.count);
        return;
    }
    double mn = 0, mx = 0, mean = 0;
    int count = 0;
    if (!getMinMaxForColumn(column, mn, mx, mean, count, rows)) {
        m_minValue = m_maxValue = m_meanValue = QVariant();
        return;
    }
    m_minValue = mn;
    m_maxValue = mx;
    m_meanValue = mean;
}

void MatrixData::setMinMax(const int& column, const std::vector<int>& rows)
{
    setMinMax(column, toBitset(rows));
}

bool MatrixData::getMinMaxForColumn(const int& column, double& min, double& max, double& mean, int& count,
                                    const boost::dynamic_bitset<>& rows) const
{
    min = kSearchStart;
    max = -kSearchStart;
    mean = 0.0;
    count = 0;
    const CellColumn* c = cells(column);
    if (!c || !CellColumn::isNumericType(c->type()))
        return false;
    Summary s;
    const double* values = c->doubleData();
    if (values && rows.empty()) {
        // The summary of a whole million-row column, as every refresh of the min/max table asks.
        const std::uint8_t* valid = c->validData();
        const int n = std::min(m_validRows, c->size());
        for (int r = 0; r < n; ++r)
            if (valid[r])
                s.add(values[r]);
    } else {
        forRows(m_validRows, rows, [&](int r) {
            if (c->isValid(r))
                s.add(c->toDouble(r));
        });
    }
    if (s.count == 0)
        return false;
    min = s.min;
    max = s.max;
    mean = s.sum / s.count;
    count = s.count;
    return true;
}

bool MatrixData::getMinMax(double& min, double& max, double& mean, const boost::dynamic_bitset<>& rows) const
{
    Summary s;
    const QList<MatrixData*> columns = isGroup() ? leafs() : QList<MatrixData*>{const_cast<MatrixData*>(this)};
    for (const MatrixData* node : columns) {
        for (int col = 0; col < static_cast<int>(node->m_columns.size()); ++col) {
            const CellColumn* c = node->cells(col);
            if (!CellColumn::isNumericType(c->type()))
                continue;
            forRows(node->m_validRows, rows, [&](int r) {
                if (c->isValid(r))
                    s.add(c->toDouble(r));
            });
        }
    }
    min = s.count ? s.min : kSearchStart;
    max = s.count ? s.max : -kSearchStart;
    mean = s.count ? s.sum / s.count : 0.0;
    return s.count > 0;
}

double MatrixData::standardDeviation() const
{
    const CellColumn* c = cells(0);
    if (!c || !CellColumn::isNumericType(c->type()))
        return 0.0;
    // Two-pass for accuracy on depth-like columns with a large offset.
    Summary s;
    for (int r = 0; r < m_validRows; ++r)
        if (c->isValid(r))
            s.add(c->toDouble(r));
    if (s.count < 2)
        return 0.0;
    const double mean = s.sum / s.count;
    double sq = 0.0;
    for (int r = 0; r < m_validRows; ++r) {
        if (!c->isValid(r))
            continue;
        const double v = c->toDouble(r);
        if (std::isfinite(v))
            sq += (v - mean) * (v - mean);
    }
    return std::sqrt(sq / (s.count - 1));
}

// ---------------------------------------------------------------------------------------------
// Legend classes

void MatrixData::createSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors) const
{
    createSymbolIDs(names, colors, std::vector<int>());
}

void MatrixData::createSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors, const std::vector<int>& rows) const
{
    m_symbolIndex.clear();
    const CellColumn* typed = cells(0);
    if (m_cellType == QVariant::Color && typed && typed->type() == QVariant::Color && typeid(*this) == typeid(MatrixData)) {
        // A million colour cells hold a handful of colours: each colour is named once, not each
        // cell (a QColor in a QVariant and its name cost two allocations a cell).
        QSet<QRgb> seen;
        std::vector<QRgb> recent;
        QRgb last = 0;
        bool haveLast = false;
        const QRgb* rgbas = typed->colorData();
        const std::uint8_t* valid = typed->validData();
        const int size = std::min(typed->size(), m_validRows);
        auto name = [&](QRgb rgba) {
            seen.insert(rgba);
            if (recent.size() < 16)
                recent.push_back(rgba);
            const QColor colour = QColor::fromRgba(rgba);
            const QString text = colour.name();
            if (m_symbolIndex.contains(text))
                return;
            const int id = m_symbolIndex.size();
            m_symbolIndex.insert(text, id);
            names.insert(id, text);
            colors.insert(id, colour);
        };
        auto visitColour = [&](int r) {
            if (r < 0 || r >= size || !valid[r])
                return;
            const QRgb rgba = rgbas[r];
            if (haveLast && rgba == last)
                return;
            last = rgba;
            haveLast = true;
            // The first few colours by a look along them, the rest by hash.
            if (std::find(recent.begin(), recent.end(), rgba) != recent.end() || seen.contains(rgba))
                return;
            name(rgba);
        };
        if (rows.empty()) {
            for (int r = 0; r < size; ++r)
                visitColour(r);
        } else {
            for (int r : rows)
                visitColour(r);
        }
        return;
    }
    auto visit = [&](int r) {
        const QVariant v = value(r, 0);
        if (!v.isValid())
            return;
        switch (m_cellType) {
        case QVariant::Icon:
        case QVariant::KeySequence:
        case QVariant::Int:
        case QVariant::Bool: {
            bool ok = false;
            const int id = v.toInt(&ok);
            if (ok) {
                if (!names.contains(id)) {
                    const QVariant label = lookupTableContains(id) ? lookupTableValue(id) : v;
                    names.insert(id, label.type() == QVariant::Color ? label.value<QColor>().name() : label.toString());
                    colors.insert(id, cellColor(r));
                }
                return;
            }
            [[fallthrough]];
        }
        default: {
            const QString text = m_cellType == QVariant::Color ? v.value<QColor>().name() : v.toString();
            auto it = m_symbolIndex.find(text);
            if (it == m_symbolIndex.end()) {
                const int id = m_symbolIndex.size();
                m_symbolIndex.insert(text, id);
                names.insert(id, text);
                colors.insert(id, m_cellType == QVariant::Color ? v.value<QColor>() : color(text));
            }
        }
        }
    };
    if (rows.empty()) {
        for (int r = 0; r < m_validRows; ++r)
            visit(r);
    } else {
        for (int r : rows)
            if (r >= 0 && r < m_validRows)
                visit(r);
    }
}

int MatrixData::symbolID(int row) const
{
    const QVariant v = value(row, 0);
    if (!v.isValid())
        return -1;
    if (m_cellType == QVariant::Color)
        return m_symbolIndex.value(v.value<QColor>().name(), -1);
    bool ok = false;
    const int id = v.toInt(&ok);
    if (ok && m_cellType != QVariant::String && m_cellType != QVariant::Double)
        return id;
    return m_symbolIndex.value(v.toString(), -1);
}

void MatrixData::createColorMapSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors) const
{
    createColorMapSymbolIDs(names, colors, std::vector<int>());
}

bool MatrixData::colorMapRange(double& min, double& max, const boost::dynamic_bitset<>& rows) const
{
    // The summary is the range the user sees and edits; blank or not a number, the data decide.
    bool okMin = false, okMax = false;
    const double lo = m_minValue.isValid() && !m_minValue.isNull() ? m_minValue.toDouble(&okMin) : 0.0;
    const double hi = m_maxValue.isValid() && !m_maxValue.isNull() ? m_maxValue.toDouble(&okMax) : 0.0;
    if (okMin && okMax && std::isfinite(lo) && std::isfinite(hi) && lo <= hi && lo != kNoValue && hi != kNoValue) {
        min = lo;
        max = hi;
        return true;
    }
    double mean = 0.0;
    return getMinMax(min, max, mean, rows);
}

double MatrixData::colorMapClassStep(double min, double max) const
{
    const double range = max - min;
    if (!(range > 0.0) || !std::isfinite(range))
        return 0.0;
    const double own = m_colorMapStep;
    double step = own > 0.0 && std::isfinite(own) && own != kNoValue ? own : range / 10.0;
    if (range / step > kMaxColorMapClasses)
        step = range / kMaxColorMapClasses;
    return step;
}

void MatrixData::createColorMapSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors,
                                         const std::vector<int>& rows) const
{
    double mn = 0, mx = 0;
    m_classCount = 0;
    if (!colorMapRange(mn, mx, toBitset(rows)))
        return;
    // The classes are the colour map's own bands, so that a class, its legend entry and a
    // contour band of the same values share one colour and one edge.
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(mn, mx, colorMapClassStep(mn, mx), m_flipColorMap);
    const QVector<QColor>& bands = map.colorList();
    m_classMin = mn;
    if (bands.isEmpty()) {
        // No range: one class holding everything.
        m_classStep = 1.0;
        m_classCount = 1;
        names.insert(0, QString::number(mn, 'g', 6) + QLatin1String(" - ") + QString::number(mx, 'g', 6));
        colors.insert(0, map.value_to_color(mn));
        return;
    }
    m_classStep = map.step();
    m_classCount = bands.size();
    for (int i = 0; i < m_classCount; ++i) {
        const double lo = mn + i * m_classStep;
        const double hi = i + 1 < m_classCount ? mn + (i + 1) * m_classStep : mx;
        names.insert(i, QString::number(lo, 'g', 6) + QLatin1String(" - ") + QString::number(hi, 'g', 6));
        colors.insert(i, bands.at(i));
    }
}

int MatrixData::colorMapSymbolID(int row) const
{
    if (m_classCount == 0 || !isValueValid(row, 0))
        return -1;
    return colorMapSymbolIDOfValue(toDouble(row, 0));
}

int MatrixData::colorMapSymbolIDOfValue(double v) const
{
    if (m_classCount == 0 || !std::isfinite(v))
        return -1;
    // The colour map's arithmetic: a value on a level belongs to the band that starts there.
    const double q = std::floor((v - m_classMin) / m_classStep);
    int i = !(q > 0.0) ? 0 : q >= m_classCount ? m_classCount - 1 : static_cast<int>(q);
    if (i + 1 < m_classCount && v >= m_classMin + (i + 1) * m_classStep)
        ++i;
    else if (i > 0 && v < m_classMin + i * m_classStep)
        --i;
    return i;
}

// ---------------------------------------------------------------------------------------------
// Combo-box lists

namespace {
bool inCollection(const MatrixData* node, MatrixData::AttributeCollection collection)
{
    const QVariant::Type t = node->cellType();
    const bool discrete = t == QVariant::Int || t == QVariant::Icon || t == QVariant::KeySequence || t == QVariant::String;
    switch (collection) {
    case MatrixData::AllAttributes: return true;
    case MatrixData::NumericAttributes: return t == QVariant::Double || t == QVariant::Int;
    case MatrixData::ColorAttributes: return discrete || t == QVariant::Color || t == QVariant::Double;
    case MatrixData::SymbolAttributes: return discrete || t == QVariant::Bool;
    case MatrixData::OrientationAttributes: return node->isOrientationColumn();
    case MatrixData::PitchAndGroupAttributes: return node->isOrientationColumn() || discrete;
    }
    return false;
}
} // namespace

void MatrixData::getDataSetSelectionBoxItems(QList<QString>& names, QList<int>& ids, QList<QColor>& colors,
                                             AttributeCollection collection, bool withEmpty) const
{
    names.clear();
    ids.clear();
    colors.clear();
    int position = 0;
    for (MatrixData* leaf : shownLeafs()) {
        const int id = position++;
        if (!withEmpty && leaf->validValueRowCount() == 0)
            continue;
        if (!inCollection(leaf, collection))
            continue;
        names.append(leaf->name());
        ids.append(id);
        colors.append(leaf->color());
    }
}

// ---------------------------------------------------------------------------------------------

int MatrixData::createMeasuredDepth()
{
    int created = 0;
    if (!isGroup())
        return 0;
    QList<MatrixData*> vertex;
    bool hasDepth = false;
    for (MatrixData* c : m_children) {
        if (c->isGroup()) {
            created += c->createMeasuredDepth();
            continue;
        }
        if (c->isVertex() && CellColumn::isNumericType(c->cellType()))
            vertex.append(c);
        if (c->name() == QLatin1String("Measured Depth"))
            hasDepth = true;
    }
    if (vertex.size() < 3 || hasDepth)
        return created;
    int rows = 0;
    for (int i = 0; i < 3; ++i)
        rows = std::max(rows, vertex[i]->validValueRowCount());
    auto* md = new MatrixData(QStringLiteral("Measured Depth"), rows, 1, QVariant::Double, true);
    md->setNodeComputed(true);
    md->setColor(getDefaultColor(false));
    if (registry())
        md->setRegistry(nullptr), appendChild(md, false), md->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
    else
        appendChild(md, false);
    bool started = false;
    double px = 0, py = 0, pz = 0, depth = 0;
    for (int r = 0; r < rows; ++r) {
        if (!vertex[0]->isValueValid(r, 0) || !vertex[1]->isValueValid(r, 0) || !vertex[2]->isValueValid(r, 0))
            continue;
        const double x = vertex[0]->toDouble(r, 0), y = vertex[1]->toDouble(r, 0), z = vertex[2]->toDouble(r, 0);
        if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
            continue;
        if (started)
            depth += std::sqrt((x - px) * (x - px) + (y - py) * (y - py) + (z - pz) * (z - pz));
        started = true;
        px = x, py = y, pz = z;
        md->setValue(r, 0, depth);
    }
    md->setMinMax(0, boost::dynamic_bitset<>());
    return created + 1;
}

} // namespace rkBase

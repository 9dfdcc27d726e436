#include "CellColumn.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

namespace rkBase {

CellColumn::Store CellColumn::storeFor(QVariant::Type type)
{
    switch (type) {
    case QVariant::Double: return Store::Double;
    case QVariant::Int:
    case QVariant::Bool:
    case QVariant::Icon: return Store::Int;
    case QVariant::Color: return Store::Color;
    case QVariant::PointF: return Store::Point;
    default: return Store::Variant;
    }
}

std::uint64_t CellColumn::freshIdentity()
{
    static std::atomic<std::uint64_t> next{1};
    return next.fetch_add(1, std::memory_order_relaxed);
}

bool CellColumn::isNumericType(QVariant::Type type)
{
    return type == QVariant::Double || type == QVariant::Int;
}

CellColumn::CellColumn(QVariant::Type type, int rows)
    : m_type(type), m_store(storeFor(type))
{
    resize(std::max(rows, 0));
}

template <typename F> void CellColumn::forEachVector(F f)
{
    f(m_valid);
    switch (m_store) {
    case Store::Double: f(m_double); break;
    case Store::Int: f(m_int); break;
    case Store::Color: f(m_color); break;
    case Store::Point: f(m_point); break;
    case Store::Variant: f(m_variant); break;
    }
}

void CellColumn::resize(int rows)
{
    m_stamp.touch();
    const std::size_t n = static_cast<std::size_t>(std::max(rows, 0));
    forEachVector([n](auto& v) { v.resize(n); });
    // Grown cells must read blank whatever the vector default was.
}

void CellColumn::reserve(int rows)
{
    m_stamp.touch();
    const std::size_t n = static_cast<std::size_t>(std::max(rows, 0));
    forEachVector([n](auto& v) { v.reserve(n); });
}

void CellColumn::clear()
{
    m_stamp.touch();
    forEachVector([](auto& v) {
        using V = std::decay_t<decltype(v)>;
        V().swap(v);
    });
}

void CellColumn::setType(QVariant::Type type)
{
    m_stamp.touch();
    if (type == m_type)
        return;
    const int n = size();
    std::vector<QVariant> old(static_cast<std::size_t>(n));
    for (int r = 0; r < n; ++r)
        old[r] = get(r);
    clear();
    m_type = type;
    m_store = storeFor(type);
    resize(n);
    for (int r = 0; r < n; ++r)
        if (old[r].isValid() && !set(r, old[r]))
            blank(r);
}

QVariant CellColumn::get(int row) const
{
    if (!isValid(row))
        return QVariant();
    switch (m_store) {
    case Store::Double: return QVariant(m_double[row]);
    case Store::Int:
        if (m_type == QVariant::Bool)
            return QVariant(m_int[row] != 0);
        return QVariant(static_cast<int>(m_int[row]));
    case Store::Color: return QVariant(QColor::fromRgba(m_color[row]));
    case Store::Point: return QVariant(m_point[row]);
    case Store::Variant: return m_variant[row];
    }
    return QVariant();
}

static bool toDoubleStrict(const QVariant& value, double& out)
{
    bool ok = false;
    if (value.type() == QVariant::String) {
        // Accept both decimal separators users paste; the C locale alone rejects "1,5".
        QString text = value.toString().trimmed();
        out = text.toDouble(&ok);
        if (!ok) {
            text.replace(QLatin1Char(','), QLatin1Char('.'));
            out = text.toDouble(&ok);
        }
        return ok;
    }
    out = value.toDouble(&ok);
    return ok;
}

bool CellColumn::set(int row, const QVariant& value)
{
    m_stamp.touch();
    if (row < 0 || row >= size())
        return false;
    // Invalid blanks, and so does text that holds nothing. QVariant::isNull() is not used: it
    // is true for a QPointF at the origin, which is a real point.
    const bool noText = value.type() == QVariant::String
        && (value.toString().isNull() || (m_type != QVariant::String && value.toString().trimmed().isEmpty()));
    if (!value.isValid() || noText) {
        blank(row);
        return true;
    }
    switch (m_store) {
    case Store::Double: {
        double d = 0.0;
        if (!toDoubleStrict(value, d))
            return false;
        m_double[row] = d;
        break;
    }
    case Store::Int: {
        if (m_type == QVariant::Bool) {
            if (value.type() == QVariant::String) {
                const QString t = value.toString().trimmed().toLower();
                if (t == QLatin1String("true") || t == QLatin1String("1") || t == QLatin1String("yes"))
                    m_int[row] = 1;
                else if (t == QLatin1String("false") || t == QLatin1String("0") || t == QLatin1String("no") || t.isEmpty())
                    m_int[row] = 0;
                else
                    return false;
            } else {
                if (!value.canConvert<bool>())
                    return false;
                m_int[row] = value.toBool() ? 1 : 0;
            }
            break;
        }
        double d = 0.0;
        if (!toDoubleStrict(value, d) || !std::isfinite(d) || d > std::numeric_limits<std::int32_t>::max()
            || d < std::numeric_limits<std::int32_t>::min())
            return false;
        m_int[row] = static_cast<std::int32_t>(std::lround(d));
        break;
    }
    case Store::Color: {
        QColor c;
        if (value.type() == QVariant::Color)
            c = value.value<QColor>();
        else if (value.type() == QVariant::String)
            c = QColor(value.toString().trimmed());
        else if (value.canConvert<QColor>())
            c = value.value<QColor>();
        if (!c.isValid())
            return false;
        m_color[row] = c.rgba();
        break;
    }
    case Store::Point: {
        if (value.type() == QVariant::PointF || value.type() == QVariant::Point)
            m_point[row] = value.toPointF();
        else
            return false;
        break;
    }
    case Store::Variant:
        if (m_type == QVariant::String) {
            if (!value.canConvert<QString>())
                return false;
            m_variant[row] = QVariant(value.toString());
        } else {
            m_variant[row] = value;
        }
        break;
    }
    m_valid[row] = 1;
    return true;
}

void CellColumn::blank(int row)
{
    m_stamp.touch();
    if (row < 0 || row >= size())
        return;
    m_valid[row] = 0;
    if (m_store == Store::Variant)
        m_variant[row] = QVariant();
}

double CellColumn::toDouble(int row) const
{
    if (!isValid(row))
        return 0.0;
    switch (m_store) {
    case Store::Double: return m_double[row];
    case Store::Int: return m_int[row];
    case Store::Color: return static_cast<double>(m_color[row]);
    case Store::Point: return m_point[row].x();
    case Store::Variant: return m_variant[row].toDouble();
    }
    return 0.0;
}

int CellColumn::toInt(int row) const
{
    if (!isValid(row))
        return 0;
    switch (m_store) {
    case Store::Double: {
        const double d = m_double[row];
        if (!std::isfinite(d) || d > std::numeric_limits<int>::max() || d < std::numeric_limits<int>::min())
            return 0;
        return static_cast<int>(d);
    }
    case Store::Int: return m_int[row];
    case Store::Color: return static_cast<int>(m_color[row]);
    case Store::Point: return static_cast<int>(m_point[row].x());
    case Store::Variant: return m_variant[row].toInt();
    }
    return 0;
}

void CellColumn::setDouble(int row, double value)
{
    m_stamp.touch();
    if (row < 0 || row >= size())
        return;
    if (m_store == Store::Double) {
        m_double[row] = value;
        m_valid[row] = 1;
    } else {
        set(row, QVariant(value));
    }
}

bool CellColumn::point(int row, QPointF& out) const
{
    if (m_store != Store::Point || !isValid(row))
        return false;
    out = m_point[static_cast<std::size_t>(row)];
    return true;
}

void CellColumn::fill(const QVariant& value)
{
    m_stamp.touch();
    if (size() == 0)
        return;
    // Row 0 takes the value (or blanks) the ordinary way and the rest copy it; a value the
    // column refuses leaves every row as it was, as it leaves row 0.
    if (!set(0, value))
        return;
    forEachVector([](auto& v) { std::fill(v.begin() + 1, v.end(), v.front()); });
}

bool CellColumn::setPoint(int row, const QPointF& value)
{
    m_stamp.touch();
    if (m_store != Store::Point || row < 0 || row >= size())
        return false;
    m_point[static_cast<std::size_t>(row)] = value;
    m_valid[static_cast<std::size_t>(row)] = 1;
    return true;
}

void CellColumn::insertBlank(int row, int count)
{
    m_stamp.touch();
    if (count <= 0)
        return;
    row = std::clamp(row, 0, size());
    const auto n = static_cast<std::size_t>(count);
    forEachVector([row, n](auto& v) {
        using T = typename std::decay_t<decltype(v)>::value_type;
        v.insert(v.begin() + row, n, T());
    });
}

void CellColumn::erase(int row, int count)
{
    m_stamp.touch();
    if (row < 0 || row >= size() || count <= 0)
        return;
    count = std::min(count, size() - row);
    forEachVector([row, count](auto& v) { v.erase(v.begin() + row, v.begin() + row + count); });
}

void CellColumn::eraseRows(const std::vector<int>& rows)
{
    m_stamp.touch();
    if (rows.empty())
        return;
    forEachVector([&rows](auto& v) {
        std::size_t out = rows.front();
        std::size_t next = 0;
        for (std::size_t in = rows.front(); in < v.size(); ++in) {
            if (next < rows.size() && static_cast<std::size_t>(rows[next]) == in) {
                ++next;
                continue;
            }
            v[out++] = std::move(v[in]);
        }
        v.resize(out);
    });
}

void CellColumn::insertBlankRows(const std::vector<int>& positions)
{
    m_stamp.touch();
    if (positions.empty())
        return;
    const std::size_t oldSize = static_cast<std::size_t>(size());
    const std::size_t newSize = oldSize + positions.size();
    forEachVector([&](auto& v) {
        using T = typename std::decay_t<decltype(v)>::value_type;
        v.resize(newSize);
        // Walk from the back so that every value moves once.
        std::size_t src = oldSize;
        std::size_t k = positions.size();
        for (std::size_t dst = newSize; dst-- > 0;) {
            if (k > 0 && static_cast<std::size_t>(positions[k - 1]) == dst) {
                v[dst] = T();
                --k;
            } else if (src > 0) {
                v[dst] = std::move(v[--src]);
            } else {
                v[dst] = T();
            }
        }
    });
}

int CellColumn::lastValidRowPlusOne() const
{
    for (int r = size() - 1; r >= 0; --r)
        if (m_valid[r])
            return r + 1;
    return 0;
}

std::size_t CellColumn::memoryBytes() const
{
    return m_valid.capacity() + m_double.capacity() * sizeof(double) + m_int.capacity() * sizeof(std::int32_t)
        + m_color.capacity() * sizeof(QRgb) + m_point.capacity() * sizeof(QPointF)
        + m_variant.capacity() * sizeof(QVariant);
}

} // namespace rkBase

#pragma once
// Typed storage for the cells of one data-tree column: one contiguous vector of the column's
// native type plus one validity byte per cell, so that a million-row Double column costs nine
// bytes a cell and every read or write is O(1). Types without a compact native form (text,
// coded text) keep their values as QVariant.

#include <QColor>
#include <QPointF>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <vector>

namespace rkBase {

class CellColumn
{
public:
    explicit CellColumn(QVariant::Type type = QVariant::Double, int rows = 0);

    QVariant::Type type() const { return m_type; }
    // Converts every valid cell; cells that do not convert become blank.
    void setType(QVariant::Type type);

    int size() const { return static_cast<int>(m_valid.size()); }
    void resize(int rows);
    void reserve(int rows);
    void clear();

    bool isValid(int row) const { return row >= 0 && row < size() && m_valid[row] != 0; }
    // Blank or out of range gives an invalid QVariant.
    QVariant get(int row) const;
    // An invalid value blanks the cell. Returns false when the value does not convert to the
    // column's type (the cell is then left as it was) or the row is out of range.
    bool set(int row, const QVariant& value);
    // Every row as set(row, value) would leave it, at the cost of one conversion.
    void fill(const QVariant& value);
    void blank(int row);

    // Fast typed paths used by statistics; blank cells read 0.
    double toDouble(int row) const;
    int toInt(int row) const;
    void setDouble(int row, double value);
    // The contiguous cells of a Double column and one validity byte per row (0: blank), for
    // reductions over millions of rows; null for columns of other types. Both stay valid until
    // the column is resized or retyped.
    const double* doubleData() const { return m_store == Store::Double ? m_double.data() : nullptr; }
    const std::uint8_t* validData() const { return m_valid.data(); }
    // Typed paths for point cells: a blank cell, a row out of range or a column of another kind
    // reads false.
    bool point(int row, QPointF& out) const;
    // False for a row out of range or a column that does not hold points.
    bool setPoint(int row, const QPointF& value);
    // The contiguous cells of a point column (read with validData()), for walks over millions
    // of points; null for columns of other kinds. Valid until the column is resized or retyped.
    const QPointF* pointData() const { return m_store == Store::Point ? m_point.data() : nullptr; }
    // The same storage for walks that fill millions of cells in place: a cell counts only where
    // its validity byte is set to 1. Handing them out counts as a change of the column. Null for
    // columns of other kinds.
    double* writableDoubleData()
    {
        m_stamp.touch();
        return m_store == Store::Double ? m_double.data() : nullptr;
    }
    QPointF* writablePointData()
    {
        m_stamp.touch();
        return m_store == Store::Point ? m_point.data() : nullptr;
    }
    std::uint8_t* writableValidData()
    {
        m_stamp.touch();
        return m_valid.data();
    }

    void insertBlank(int row, int count = 1);
    void erase(int row, int count = 1);
    // Removes the given rows (ascending, unique, in range) in one compacting pass.
    void eraseRows(const std::vector<int>& rows);
    // Inserts blank rows so that they end up at the given positions (ascending, unique).
    void insertBlankRows(const std::vector<int>& positions);

    // The raw colours of a Color column, for walks over millions of rows; null for another
    // store. Valid until the column is resized.
    const QRgb* colorData() const { return m_store == Store::Color ? m_color.data() : nullptr; }
    // The colour of a Color cell without a QVariant; 0 for a blank cell or another store.
    QRgb rgba(int row) const { return m_store == Store::Color && isValid(row) ? m_color[row] : 0u; }

    // Index of the last valid cell plus one.
    int lastValidRowPlusOne() const;

    std::size_t memoryBytes() const;

    // Together these say whether the cells are still what a reader saw: the identity is new for
    // every column built and every copy made (so two columns never share one, even at the same
    // address), and the revision moves on with every call that may change a cell. Something
    // derived from the cells stays good while both are unchanged.
    std::uint64_t identity() const { return m_stamp.identity(); }
    std::uint64_t revision() const { return m_stamp.revision(); }

    static bool isNumericType(QVariant::Type type);

private:
    // Copies and moves take a new identity instead of the source's, and a move marks the source
    // changed, so the column's implicit copy and move keep the rule above without being written
    // out by hand.
    class Stamp
    {
    public:
        Stamp() : m_identity(freshIdentity()) {}
        Stamp(const Stamp&) : m_identity(freshIdentity()) {}
        Stamp(Stamp&& other) noexcept : m_identity(freshIdentity()) { other.touch(); }
        Stamp& operator=(const Stamp&)
        {
            m_identity = freshIdentity();
            return *this;
        }
        Stamp& operator=(Stamp&& other) noexcept
        {
            m_identity = freshIdentity();
            other.touch();
            return *this;
        }
        void touch() { ++m_revision; }
        std::uint64_t identity() const { return m_identity; }
        std::uint64_t revision() const { return m_revision; }

    private:
        std::uint64_t m_identity;
        std::uint64_t m_revision = 0;
    };
    static std::uint64_t freshIdentity();

    QVariant::Type m_type;
    std::vector<std::uint8_t> m_valid;
    std::vector<double> m_double;      // Double
    std::vector<std::int32_t> m_int;   // Int, Bool, Icon (lookup key)
    std::vector<QRgb> m_color;         // Color
    std::vector<QPointF> m_point;      // PointF
    std::vector<QVariant> m_variant;   // String, KeySequence and anything else

    enum class Store { Double, Int, Color, Point, Variant };
    Store m_store;
    Stamp m_stamp;
    static Store storeFor(QVariant::Type type);
    template <typename F> void forEachVector(F f);
};

} // namespace rkBase

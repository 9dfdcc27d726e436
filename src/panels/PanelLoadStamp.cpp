#include "PanelLoadStamp.h"

#include <CellColumn.h>
#include <MatrixData.h>

#include <cstring>

namespace rkBase {

void PanelLoadStamp::clear()
{
    m_words.clear();
    m_texts.clear();
}

PanelLoadStamp& PanelLoadStamp::addColumn(const MatrixData* column)
{
    // A marker word first, so that a missing column never reads as a run of zero settings.
    add(std::uint64_t(0xC01u));
    add(std::uint64_t(reinterpret_cast<std::uintptr_t>(column)));
    if (!column)
        return *this;
    const int rows = column->rowCount();
    const int columns = column->columnCount();
    add(std::uint64_t(std::uint32_t(rows)) << 32 | std::uint32_t(columns));
    add(column->name());
    add(column->unitCategory());
    for (int c = 0; c < columns; ++c) {
        const CellColumn* cells = column->cellColumn(c);
        add(cells ? cells->identity() : std::uint64_t(0));
        add(cells ? cells->revision() : std::uint64_t(0));
    }
    return *this;
}

PanelLoadStamp& PanelLoadStamp::add(std::uint64_t value)
{
    m_words.push_back(value);
    return *this;
}

PanelLoadStamp& PanelLoadStamp::add(double value)
{
    // Bit for bit: a NaN setting equals itself, and -0 differs from 0 as typed text would.
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return add(bits);
}

PanelLoadStamp& PanelLoadStamp::add(const QString& text)
{
    add(std::uint64_t(m_texts.size()));
    m_texts.push_back(text);
    return *this;
}

bool PanelLoadStamp::operator==(const PanelLoadStamp& other) const
{
    return !m_words.empty() && m_words == other.m_words && m_texts == other.m_texts;
}

bool PanelLoadStamp::selectionIsExactly(const boost::dynamic_bitset<>& selection, const std::vector<int>& rows)
{
    std::size_t inRange = 0;
    for (int r : rows) {
        if (r < 0 || std::size_t(r) >= selection.size())
            continue;
        if (!selection.test(std::size_t(r)))
            return false;
        ++inRange;
    }
    return selection.count() == inRange;
}

} // namespace rkBase

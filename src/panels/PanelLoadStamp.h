#pragma once
// What a chart's last load read, so that a panel asked to load the very same thing again can
// leave its chart as it is. A tab that comes back to the front after a lasso on its own chart is
// handed the rows the lasso itself selected; on a million rows the full reload and redraw would
// cost more than the lasso did, and would show the same picture.
//
// A stamp is a list of words: each column read counts with its address, shape, name, unit
// category and the identity and revision of every cell column (any cell edit moves a revision
// on), and each setting that steers the load counts by its value. Two stamps are equal only when
// every word is.

#include <QString>

#include <boost/dynamic_bitset.hpp>

#include <cstdint>
#include <vector>

namespace rkBase {

class MatrixData;

class PanelLoadStamp
{
public:
    // An empty stamp stands for "nothing loaded" and equals no built one.
    bool isEmpty() const { return m_words.empty(); }
    void clear();

    PanelLoadStamp& addColumn(const MatrixData* column);
    PanelLoadStamp& add(std::uint64_t value);
    PanelLoadStamp& add(double value);
    PanelLoadStamp& add(int value) { return add(std::uint64_t(std::uint32_t(value))); }
    PanelLoadStamp& add(bool value) { return add(std::uint64_t(value ? 1 : 0)); }
    PanelLoadStamp& add(const QString& text);

    bool operator==(const PanelLoadStamp& other) const;

    // Whether a model's selection bits are exactly these rows (those within its table): what a
    // load of the rows would leave, when none of them is refused. A refused row has its bit
    // cleared, and that case answers false, so that the caller loads.
    static bool selectionIsExactly(const boost::dynamic_bitset<>& selection, const std::vector<int>& rows);
    bool operator!=(const PanelLoadStamp& other) const { return !(*this == other); }

private:
    std::vector<std::uint64_t> m_words;
    std::vector<QString> m_texts;
};

} // namespace rkBase

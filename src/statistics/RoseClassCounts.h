#pragma once
// The classes inside the petals of a rose diagram: per azimuth bin, how many azimuths fall in
// each class of the classifying attribute. Colour attributes class by their distinct colours,
// numbers by the attribute's colour map. The cells are read from the columns' typed storage:
// a million azimuths cost a pass over two arrays, not a million QVariants.
//
// The bins are the rose table's own (newFrequencyData with the same interval, bin count and
// direction), so the class counts of a bin never exceed its count. Class k is legend id k + 1;
// id 0 holds a sample value, as the rose plot's legend expects.

#include <QColor>
#include <QMap>
#include <QVariant>

#include <vector>

namespace rkBase {

class MatrixData;

class RoseClassCounts
{
public:
    // Whether count() can read this attribute: a plain colour or numeric column. Text and
    // computed columns go the general way (per-bin values, classified by the plot).
    static bool canCount(const MatrixData* classNode);

    // The counts of the bins of width interval (binCount of them, as the table has) over the
    // rows (empty: all valid rows) of column 0 of direction; with unidirectional false each
    // azimuth counts in its bin and in the opposite one. classCount -1 keeps the attribute's own
    // colour map step; otherwise a numeric attribute gets as many classes over its range as the
    // busiest bin uses (at most classCount), so that the bins use every colour. False, and empty
    // results, when the attribute cannot be read this way or there is nothing to count.
    bool count(const MatrixData* direction, const MatrixData* classNode, double interval, int binCount,
               const std::vector<int>& rows, bool unidirectional, int classCount);

    const std::vector<std::vector<int>>& counts() const { return m_counts; }
    const QMap<int, QVariant>& legendValues() const { return m_legendValues; }
    const QMap<int, QColor>& legendColours() const { return m_legendColours; }

private:
    // Bin of every counted azimuth, and of its opposite (-1 when unidirectional), in row order.
    void binRows(const MatrixData* direction, double interval, int bins, const std::vector<int>& rows,
                 bool unidirectional);
    int tally(const std::vector<int>& classOfRow, int classes);

    std::vector<int> m_rowOf, m_binOf, m_mirrorOf;
    std::vector<std::vector<int>> m_counts;
    QMap<int, QVariant> m_legendValues;
    QMap<int, QColor> m_legendColours;
};

} // namespace rkBase

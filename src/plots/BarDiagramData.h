#pragma once
// The numbers behind a bar chart: numeric columns of the data tree reduced over a list of rows.
// Each category (a place along the category axis) stands for `step` consecutive entries of the
// row list, and holds one value per column: the mean of that column's finite cells in those
// rows. With a step of 1 a category is one row and its value the cell itself.
//
// Rules kept here that callers could otherwise guess:
// - An empty row list means every row, 0 to the longest valid-row count of the columns.
// - Blank, NaN and infinite cells and rows out of a column's range are left out of the mean; a
//   category where a column has none of its cells left holds NaN for it (no bar is drawn).
// - The step is raised so that there are never more than kMaxCategories categories, whatever
//   was asked: a million rows never become a million bars. A step below 1 counts as 1.
// - Values are in display units unless storedUnits is set (field data keeps what was typed).
//   Unit conversions are scale factors, so converting a mean equals the mean of the converted
//   cells and only the means are converted.
// - A category's label is its first row: the row number counted from 1, or the text of
//   labelColumn in that row (blank when that cell is blank, or the row is negative).

#include <QColor>
#include <QList>
#include <QString>

#include <vector>

namespace rkBase {

class MatrixData;

class BarDiagramData
{
public:
    static constexpr int kMaxCategories = 2000;

    struct Series {
        QString name;
        QString unit; // the display unit tag, or empty
        QColor colour;
    };

    BarDiagramData() = default;

    static BarDiagramData reduce(const QList<MatrixData*>& columns, const std::vector<int>& rows, int step,
                                 const MatrixData* labelColumn = nullptr, bool storedUnits = false);

    int seriesCount() const { return static_cast<int>(m_series.size()); }
    int categoryCount() const { return m_categories; }
    const Series& series(int s) const { return m_series[static_cast<std::size_t>(s)]; }
    // NaN where the column has no finite cell in the category, or out of range.
    double value(int s, int category) const;
    // The finite cells behind value(s, category).
    int cellCount(int s, int category) const;
    QString categoryLabel(int category) const;
    // First and last row (0-based, as stored) that a category stands for; -1 out of range.
    int firstRow(int category) const;
    int lastRow(int category) const;
    // Rows reduced (the row list's length, or the rows walked when it was empty).
    int rowCount() const { return m_rowCount; }
    // The step used, after the cap on categories.
    int step() const { return m_step; }
    // The labels are numbers (row numbers, or a numeric label column): readable when thinned out.
    bool numericLabels() const { return m_numericLabels; }
    QString labelTitle() const { return m_labelTitle; }
    bool isEmpty() const { return m_series.empty() || m_categories == 0; }

private:
    std::vector<Series> m_series;
    std::vector<double> m_values; // series-major: m_values[s * categories + c]
    std::vector<int> m_counts;
    std::vector<QString> m_labels;
    std::vector<int> m_firstRows;
    std::vector<int> m_lastRows;
    int m_categories = 0;
    int m_rowCount = 0;
    int m_step = 1;
    bool m_numericLabels = true;
    QString m_labelTitle;
};

} // namespace rkBase

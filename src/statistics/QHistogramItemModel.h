#pragma once
// The frequency data of one column for the histogram tab: the bins of the column's values over
// the chosen rows (count, percent or cumulative percent per bin), as a table model of one row
// per bin with the value, the bin's start and its end. The histogram plot draws it, and the
// two-sample test reads two of them.
//
// Rules kept here that callers could otherwise guess:
// - The column is not owned; the frequency table is. An interval size below 1e-08 (0, negative)
//   asks for the automatic interval, and the interval the table was built with is read back
//   into intervalSize().
// - A group text that matches nothing gives a "Sub Group" of no valid rows: a table without bins.
// - sampleValues() gives the values the table counted, for statistics on the sample itself.

#include <MatrixData.h>

#include <QAbstractItemModel>

#include <memory>
#include <vector>

namespace rkBase {

class QHistogramItemModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    explicit QHistogramItemModel(QObject* parent = nullptr);
    ~QHistogramItemModel() override;

    // The bins of column 0 of node over rows (empty: all valid rows); null node: no table.
    void takeNewDataSet(MatrixData* node, MatrixData::HistogramType type, const std::vector<int>& rows,
                        bool useSmallValues);
    // The same over the rows of node whose cell in attribute holds exactly group.
    void takeNewDataSetFromSubGroup(MatrixData* node, MatrixData::HistogramType type, const std::vector<int>& rows,
                                    bool useSmallValues, MatrixData* attribute, const QString& group);
    void clearDataNode();

    MatrixData* data() const { return m_frequencyData; }
    MatrixData* dataRoot() const { return m_dataRoot; }
    void setDataRoot(MatrixData* root) { m_dataRoot = root; }
    double intervalSize() const { return m_intervalSize; }
    void setIntervalSize(double size) { m_intervalSize = size; }
    double min() const { return m_min; }
    MatrixData::HistogramType histogramType() const { return m_histogramType; }
    // Number of values counted (0 without a table).
    int sampleSize() const;
    // The finite values the table counted, unsorted.
    std::vector<double> sampleValues() const;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;

private:
    void build(MatrixData* source, MatrixData::HistogramType type, const std::vector<int>& rows, bool useSmallValues);

    MatrixData* m_frequencyData = nullptr;
    MatrixData* m_dataRoot = nullptr;
    double m_intervalSize = 0.0;
    double m_min = 0.0;
    MatrixData::HistogramType m_histogramType = MatrixData::Frequency;
    // What the table was built from, for sampleValues().
    MatrixData* m_source = nullptr;
    std::unique_ptr<MatrixData> m_subGroup;
    std::vector<int> m_rows;
    bool m_useSmallValues = true;
};

} // namespace rkBase

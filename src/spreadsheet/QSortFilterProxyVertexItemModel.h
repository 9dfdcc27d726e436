#pragma once
// The proxy between the spreadsheet model and its view: sorting, the "valid cells only" filter
// on one column, and the row mask with which the select-cells dialog shows only its hits.

#include <QSortFilterProxyModelWithColor.h>

#include <QList>

#include <QtGlobal>

#include <vector>

namespace rkBase {

class QSortFilterProxyVertexItemModel : public QSortFilterProxyModelWithColor
{
    Q_OBJECT
public:
    explicit QSortFilterProxyVertexItemModel(QObject* parent = nullptr);

    void setFilterEmptyCells(bool on);
    bool filterEmptyCells() const { return m_filterEmptyCells; }
    // One entry per source row; an empty mask shows every row.
    void setFilterRows(const QList<bool>& rows);
    const QList<bool>& filterRows() const { return m_filterRows; }
    void clearFilterRows();
    // True while view rows are source rows: nothing sorted, nothing filtered. Row selections
    // of big sheets then skip the per-row mapping.
    bool isIdentity() const;

    // Numeric columns are sorted on keys read once from the tree, not on formatted cell data.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    void setSourceModel(QAbstractItemModel* source) override;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private slots:
    void dropSortKeys();

private:
    // By source row: its place in the sorted column. Qt's merge sort then compares two small
    // integers instead of reading cells.
    std::vector<quint32> m_sortRank;
    int m_sortKeysColumn = -1;

    QList<bool> m_filterRows;
    bool m_filterEmptyCells = false;
};

} // namespace rkBase

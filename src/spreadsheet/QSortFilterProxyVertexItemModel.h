#pragma once
// The proxy between the spreadsheet model and its view: sorting, the "valid cells only" filter
// on one column, and the row mask with which the select-cells dialog shows only its hits.

#include <QSortFilterProxyModelWithColor.h>

#include <QList>

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

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    QList<bool> m_filterRows;
    bool m_filterEmptyCells = false;
};

} // namespace rkBase

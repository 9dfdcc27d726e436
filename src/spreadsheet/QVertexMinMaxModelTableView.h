#pragma once
// The view of the min/max table. It shows the column headers for the sheet below it, keeps its
// columns as wide as the sheet's and scrolls with it.

#include <QTableView>

namespace rkBase {

class QSortFilterProxyVertexItemModel;
class UnitRegistry;

class QVertexMinMaxModelTableView : public QTableView
{
    Q_OBJECT
public:
    QVertexMinMaxModelTableView(UnitRegistry* registry, QWidget* parent);

    void setProxyModel(QSortFilterProxyVertexItemModel* proxy) { m_proxy = proxy; }
    QSortFilterProxyVertexItemModel* proxyModel() const { return m_proxy; }
    UnitRegistry* registry() const { return m_registry; }

public slots:
    void updateView();
    void resetEmpty();
    void slotClearSelection();
    void slotSliderMoved(int value);

signals:
    void convertNodeUnits(const QModelIndex& column);
    void sectionResized(int logicalIndex, int oldSize, int newSize);
    void sectionClicked(int logicalIndex);

private:
    UnitRegistry* m_registry;
    QSortFilterProxyVertexItemModel* m_proxy = nullptr;
};

} // namespace rkBase

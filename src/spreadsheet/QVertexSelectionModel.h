#pragma once
// The table's selection model. It behaves as Qt's own and only announces, before it happens,
// every change that clears the selection, so that the table view can drop the row selection it
// keeps beside the ranges (see QVertexModelTableView).

#include <QItemSelectionModel>

namespace rkBase {

class QVertexSelectionModel : public QItemSelectionModel
{
    Q_OBJECT
public:
    explicit QVertexSelectionModel(QAbstractItemModel* model, QObject* parent = nullptr);

    void select(const QModelIndex& index, QItemSelectionModel::SelectionFlags command) override;
    void select(const QItemSelection& selection, QItemSelectionModel::SelectionFlags command) override;

public slots:
    void clear() override;
    void reset() override;

signals:
    void aboutToClear();
};

} // namespace rkBase

#include "QVertexSelectionModel.h"

namespace rkBase {

QVertexSelectionModel::QVertexSelectionModel(QAbstractItemModel* model, QObject* parent)
    : QItemSelectionModel(model, parent)
{
}

void QVertexSelectionModel::select(const QModelIndex& index, QItemSelectionModel::SelectionFlags command)
{
    select(QItemSelection(index, index), command);
}

void QVertexSelectionModel::select(const QItemSelection& selection, QItemSelectionModel::SelectionFlags command)
{
    if (command & Clear)
        emit aboutToClear();
    QItemSelectionModel::select(selection, command);
}

void QVertexSelectionModel::clear()
{
    emit aboutToClear();
    QItemSelectionModel::clear();
}

void QVertexSelectionModel::reset()
{
    // Also reached on a model reset, which Qt carries out without a selection signal.
    emit aboutToClear();
    QItemSelectionModel::reset();
}

} // namespace rkBase

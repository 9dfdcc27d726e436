#pragma once
// The small table above the spreadsheet: minimum, maximum and mean of every shown column, in
// display units, column for column with the sheet. In field-data mode the user may type them.

#include "QVertexItemModel.h"

namespace rkBase {

class QVertexMinMaxItemModel : public QVertexItemModel
{
    Q_OBJECT
public:
    QVertexMinMaxItemModel(QObject* parent, MatrixData* root, int minMaxMode, bool withFieldData);

    int minMaxMode() const { return m_minMaxMode; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    int row(const QModelIndex& index) const override;

    // Recomputes every column's summary over all its rows.
    void refreshSummaries();
    // Puts a column under another unit category (by its display name); false when unknown.
    bool setColumnUnitCategory(int column, const QString& categoryDisplayName);

signals:
    void unitCategoryChanged();

private:
    QVariant summary(MatrixData* node, int which) const;
    int m_minMaxMode;
};

} // namespace rkBase

#pragma once
// The attribute tree's model: groups and columns of the data tree, with the tick that decides
// whether a column shows in the table and the charts, renaming, and colour.

#include <QAbstractItemModel>
#include <QColor>
#include <QList>
#include <QStringList>

class QDataStream;
class QMimeData;

namespace rkBase {

class MatrixData;

class QTreeItemModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    QTreeItemModel(QObject* parent, MatrixData* root);

    void setDataRoot(MatrixData* root);
    MatrixData* dataRoot() const { return m_dataRoot; }
    void updateModel();

    MatrixData* nodeFromIndex(const QModelIndex& index) const;
    QModelIndex indexFromNode(const MatrixData* node) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override;

    bool insertNewRows(int position, int count, const QModelIndex& parent);
    void changeAttributeColor(const QList<QModelIndex>& indexes, const QColor& color);
    // Vertex columns are kept; a strike column goes with its azimuth or dip column. Deleted
    // columns live on in their undo record, so undo brings them back.
    void deleteSelectedRows(const QList<QModelIndex>& indexes);

    bool modified() const { return m_modified; }
    void setModified(bool modified) { m_modified = modified; }

    // Dragging attributes: whole columns travel as their binary form, a count first.
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& items) const override;
    // On a group: the attributes become new columns at `row`, with unique names. On a column:
    // they overwrite it and the columns after it, each only when the user agrees. A stream that
    // does not read back whole is refused before anything changes.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;
    // Reads one attribute into node; with newName the name read is made unique and given to
    // both labels, otherwise the node keeps its names. False, node untouched, for a bad stream.
    bool dropDataFromStream(MatrixData* node, QDataStream& stream, bool newName);
    // HTML table of the selected columns (a group stands for its columns), for the host's copy.
    QMimeData* getHTML_MimeData(const QModelIndexList& items) const;

signals:
    void treeItemSelected(const QModelIndex& index);
    void treeItemNameChanged(rkBase::MatrixData* node);
    void dataModified(bool modified);
    void updateView();

private:
    MatrixData* m_dataRoot;
    bool m_modified = false;
};

} // namespace rkBase

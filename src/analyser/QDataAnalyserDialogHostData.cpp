// Rows that the host adds to the sheet: vertices, well markers and well curve samples. The host
// asks for room and then fills the rows itself, so these calls only place blank rows in the
// tree, mark what kind of record they are, and make that one undo action.
#include "QDataAnalyserDialog.h"

#include "DerivedColumnWriter.h"

#include <MatrixData.h>
#include <MatrixDataRestore.h>
#include <QVertexItemModel.h>

#include <algorithm>

namespace rkBase {

namespace {
const QString kSymbolStyle = QStringLiteral("Dip Data Symbol Style");
const QString kDataType = QStringLiteral("Data_Type");

// The ticked columns under the root and its groups. The symbol style column is unticked by every
// refresh, yet a row that holds only a symbol belongs to a record and is not free.
QList<MatrixData*> hostColumns(const MatrixData* root)
{
    QList<MatrixData*> columns;
    auto take = [&columns](MatrixData* node) {
        if (!node->isGroup() && (node->isSelected() || node->name() == kSymbolStyle))
            columns.append(node);
    };
    for (MatrixData* child : root->children()) {
        take(child);
        if (child->isGroup())
            for (MatrixData* column : child->children())
                take(column);
    }
    return columns;
}

// "Type" is a classification the sheet offers by default, not a sign of a record.
bool rowIsEmpty(const QList<MatrixData*>& columns, int row)
{
    for (const MatrixData* c : columns)
        if (c->name() != QLatin1String("Type") && row < c->rowCount() && !c->value(row, 0).toString().isEmpty())
            return false;
    return true;
}

int treeRowCount(const MatrixData* root)
{
    int rows = 0;
    for (const MatrixData* leaf : root->leafs())
        rows = std::max(rows, leaf->rowCount());
    return rows;
}
} // namespace

int QDataAnalyserDialog::addNewHostRows(HostRowKind kind, int row, int count)
{
    m_firstNewHostRow = -1;
    if (!m_dataRoot || count <= 0)
        return -1;
    const QList<MatrixData*> columns = hostColumns(m_dataRoot);
    if (columns.isEmpty())
        return -1;
    const int rows = treeRowCount(m_dataRoot);

    // A negative row reuses the first free rows and inserts only what is missing after them.
    int start = 0, reused = 0;
    if (row < 0) {
        start = rows;
        for (int r = 0; r < rows; ++r) {
            if (rowIsEmpty(columns, r)) {
                start = r;
                break;
            }
        }
        while (reused < count && start + reused < rows && rowIsEmpty(columns, start + reused))
            ++reused;
    } else {
        start = std::min(row, rows);
    }

    DerivedColumnWriter writer(m_dataRoot, tr("Add Host Data"), {});
    if (reused < count) {
        // Every column of the tree takes the rows, ticked or not, so that each record stays on
        // one row across all columns.
        QList<int> inserted;
        for (int r = start + reused; r < start + count; ++r)
            inserted.append(r);
        auto* restore = new MatrixDataRestore(m_dataRoot, tr("Add Host Data"), true);
        m_dataRoot->reInsertRowAtPos(inserted, true);
        restore->recordInsertedRows(inserted);
        writer.record(restore);
    }
    for (MatrixData* c : columns) {
        if (c->name() != kDataType)
            continue;
        static const char* const kinds[] = {"Vertex", "Marker", "Well Curve"};
        writer.keep(c);
        const QVariant value(QString::fromLatin1(kinds[int(kind)]));
        for (int r = start; r < start + count; ++r)
            c->setValue(r, 0, value);
    }
    writer.commit();

    m_firstNewHostRow = start;
    if (m_vertexItemModel) {
        m_vertexItemModel->updateModel(-1, std::vector<int>());
        m_vertexItemModel->setModified(true);
    }
    // Marker rows have no coordinates of their own: the marker refresh hides "X(East)",
    // "Y(North)" and "Z".
    updateAllViews(kind == HostRowKind::Marker, true);
    return start;
}

void QDataAnalyserDialog::addNewVertexData(int row, int count)
{
    addNewHostRows(HostRowKind::Vertex, row, count);
}

void QDataAnalyserDialog::addNewMarkerData(int row, int count)
{
    addNewHostRows(HostRowKind::Marker, row, count);
}

void QDataAnalyserDialog::addNewWellCurveData(int row, int count)
{
    addNewHostRows(HostRowKind::WellCurve, row, count);
}

} // namespace rkBase

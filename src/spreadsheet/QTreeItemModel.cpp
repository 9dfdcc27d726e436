#include "QTreeItemModel.h"

#include <MatrixData.h>
#include <MatrixDataRestore.h>
#include <MatrixDataStrike.h>
#include <UnitManager.h>

#include <QDataStream>
#include <QIcon>
#include <QMessageBox>
#include <QMimeData>
#include <QPixmap>

#include <algorithm>
#include <vector>

namespace rkBase {

QTreeItemModel::QTreeItemModel(QObject* parent, MatrixData* root) : QAbstractItemModel(parent), m_dataRoot(root) {}

void QTreeItemModel::setDataRoot(MatrixData* root)
{
    beginResetModel();
    m_dataRoot = root;
    endResetModel();
}

void QTreeItemModel::updateModel()
{
    beginResetModel();
    endResetModel();
}

MatrixData* QTreeItemModel::nodeFromIndex(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<MatrixData*>(index.internalPointer()) : m_dataRoot;
}

QModelIndex QTreeItemModel::indexFromNode(const MatrixData* node) const
{
    if (!node || node == m_dataRoot || !node->parent())
        return QModelIndex();
    const int row = node->parent()->indexOfChild(node);
    return row < 0 ? QModelIndex() : createIndex(row, 0, const_cast<MatrixData*>(node));
}

QModelIndex QTreeItemModel::index(int row, int column, const QModelIndex& parent) const
{
    MatrixData* p = nodeFromIndex(parent);
    if (!p || column != 0)
        return QModelIndex();
    MatrixData* child = p->child(row);
    return child ? createIndex(row, column, child) : QModelIndex();
}

QModelIndex QTreeItemModel::parent(const QModelIndex& index) const
{
    MatrixData* node = nodeFromIndex(index);
    if (!index.isValid() || !node)
        return QModelIndex();
    MatrixData* p = node->parent();
    if (!p || p == m_dataRoot || !p->parent())
        return QModelIndex();
    const int row = p->parent()->indexOfChild(p);
    return row < 0 ? QModelIndex() : createIndex(row, 0, p);
}

int QTreeItemModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    MatrixData* p = nodeFromIndex(parent);
    if (!p)
        return 0;
    int visible = 0;
    for (MatrixData* c : p->children())
        if (c->visibleToUser())
            ++visible;
    return visible;
}

int QTreeItemModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant QTreeItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("Tree View");
    return QVariant();
}

QVariant QTreeItemModel::data(const QModelIndex& index, int role) const
{
    MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
    if (!node)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        if (node->isGroup())
            return QStringLiteral("%1 (%2)").arg(node->name()).arg(node->childCount());
        if (node->validValueRowCount() > 0)
            return QStringLiteral("%1 (%2)").arg(node->name()).arg(node->validValueRowCount());
        return node->name();
    case Qt::DecorationRole: {
        if (!node->parent())
            return QVariant();
        QPixmap swatch(10, 10);
        swatch.fill(node->color().isValid() ? node->color() : QColor(Qt::white));
        return QIcon(swatch);
    }
    case Qt::ToolTipRole: {
        const QString unit = node->unitManager() ? node->unitManager()->getDisplayUnitName() : QString();
        return unit.isEmpty() ? node->interfaceName() : QStringLiteral("%1 - %2").arg(node->interfaceName(), unit);
    }
    case Qt::EditRole:
        return node->name();
    case Qt::CheckStateRole: {
        MatrixData* p = node->parent();
        if (!node->isGroup() && p && p != m_dataRoot && !p->isSelected())
            return 0;
        if (node->childCount() > 0) {
            const bool first = node->child(0)->isSelected();
            for (MatrixData* c : node->children())
                if (c->isSelected() != first)
                    return 1;
            return first ? 2 : 0;
        }
        // Nothing to show or hide: no box to tick.
        if (node->rowCount() == 0)
            return QVariant();
        return node->isSelected() ? 2 : 0;
    }
    default:
        return QVariant();
    }
}

bool QTreeItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
    if (!node)
        return false;
    if (role == Qt::CheckStateRole) {
        bool ok = false;
        const int state = value.toInt(&ok);
        if (!ok)
            return false;
        const bool ticked = state == 2 || state == 1;
        node->setSelected(ticked, false);
        for (MatrixData* c : node->children())
            c->setSelected(ticked, false);
        emit dataChanged(index, this->index(node->childCount(), index.column(), index.parent()).isValid()
                                    ? this->index(node->childCount(), index.column(), index.parent())
                                    : index);
        if (node->childCount() > 0)
            emit dataChanged(this->index(0, 0, index), this->index(node->childCount() - 1, 0, index));
        emit treeItemSelected(index);
        return true;
    }
    if (role == Qt::EditRole) {
        if (!value.canConvert<QString>())
            return false;
        QString name = value.toString();
        if (name.isEmpty() || name == node->name() || !node->isNodeRenamable())
            return false;
        if (m_dataRoot)
            m_dataRoot->createUniqueName(name);
        if (m_dataRoot) {
            auto* restore = new MatrixDataRestore(node, QStringLiteral("Change Attribute Name"), false);
            restore->setOldName(node->name());
            m_dataRoot->appendUndoAction(restore, true);
        }
        node->setName(name);
        node->setInterfaceName(name);
        emit dataChanged(index, index);
        emit treeItemNameChanged(node);
        m_modified = true;
        emit dataModified(true);
        return true;
    }
    return false;
}

Qt::ItemFlags QTreeItemModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractItemModel::flags(index) | Qt::ItemIsDropEnabled | Qt::ItemIsUserCheckable;
    MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
    if (node) {
        f |= Qt::ItemIsDragEnabled;
        if (node->isNodeRenamable())
            f |= Qt::ItemIsEditable;
    }
    return f;
}

Qt::DropActions QTreeItemModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

bool QTreeItemModel::insertNewRows(int position, int count, const QModelIndex& parent)
{
    MatrixData* group = parent.isValid() ? nodeFromIndex(parent) : nullptr;
    if (!group || !group->parent() || group->parent() != m_dataRoot)
        return false;
    const int rows = group->maxNumbOfSelectedRows(1, 0);
    beginResetModel();
    for (int i = 0; i < count; ++i) {
        QString name = QStringLiteral("New Inserted Item");
        auto* column = new MatrixData(name, rows, 1, QVariant::Double, true);
        column->setColor(MatrixData::getDefaultColor(false));
        group->insertChild(position + i, column);
    }
    endResetModel();
    return true;
}

void QTreeItemModel::changeAttributeColor(const QList<QModelIndex>& indexes, const QColor& color)
{
    for (const QModelIndex& index : indexes) {
        MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
        if (!node)
            continue;
        if (m_dataRoot) {
            auto* restore = new MatrixDataRestore(node, QStringLiteral("Change Attribute Color: ") + node->name(), false);
            restore->setColor(node->color());
            m_dataRoot->appendUndoAction(restore, false);
        }
        node->setColor(color);
        emit dataChanged(index, index);
    }
    m_modified = true;
    emit dataModified(true);
}

void QTreeItemModel::deleteSelectedRows(const QList<QModelIndex>& indexes)
{
    std::vector<MatrixData*> doomed;
    auto add = [&doomed](MatrixData* n) {
        if (std::find(doomed.begin(), doomed.end(), n) == doomed.end())
            doomed.push_back(n);
    };
    for (const QModelIndex& index : indexes) {
        MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
        if (!node || !node->parent() || node->isVertex())
            continue;
        const bool azimuth = node->name() == QLatin1String("azimuth");
        const bool dip = node->name() == QLatin1String("dip");
        if ((azimuth || dip) && m_dataRoot) {
            for (MatrixData* leaf : m_dataRoot->leafs()) {
                if (auto* strike = dynamic_cast<MatrixDataStrike*>(leaf)) {
                    if ((azimuth && strike->azimuthNode() == node) || (dip && strike->dipNode() == node))
                        add(strike);
                    break;
                }
            }
        }
        add(node);
    }
    beginResetModel();
    for (MatrixData* node : doomed) {
        // A node already inside a deleted group went with it.
        if (!node->parent())
            continue;
        if (!node->isNodeComputed() && m_dataRoot) {
            auto* restore = new MatrixDataRestore(node->parent(), QStringLiteral("Delete Attribute: ") + node->name(), true);
            restore->recordRemovedAttribute(node);
            node->parent()->removeChild(node);
            m_dataRoot->appendUndoAction(restore, true);
        } else {
            node->parent()->removeChild(node);
            delete node;
        }
    }
    endResetModel();
}

// ---------------------------------------------------------------------------------------------
// Dragging attributes

namespace {
const QString kAttributeFormat = QStringLiteral("4drkview/attribute.text.list");
// More attributes than any tree holds: a count beyond it is a damaged stream.
constexpr int kMaxDroppedAttributes = 100000;
} // namespace

QStringList QTreeItemModel::mimeTypes() const
{
    return QStringList{kAttributeFormat};
}

QMimeData* QTreeItemModel::mimeData(const QModelIndexList& items) const
{
    std::vector<MatrixData*> nodes;
    for (const QModelIndex& item : items) {
        MatrixData* node = item.isValid() ? nodeFromIndex(item) : nullptr;
        if (node && node->parent())
            nodes.push_back(node);
    }
    if (nodes.empty())
        return nullptr;
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << int(nodes.size());
        for (MatrixData* node : nodes)
            node->putDataOnStream(out, false);
    }
    auto* data = new QMimeData;
    data->setData(kAttributeFormat, bytes);
    return data;
}

bool QTreeItemModel::dropDataFromStream(MatrixData* node, QDataStream& stream, bool newName)
{
    if (!node)
        return false;
    const QString name = node->name();
    const QString interfaceName = node->interfaceName();
    if (!node->getDataFromStream(stream))
        return false;
    node->setSelected(true, false);
    node->setNodeRenamable(true);
    if (newName) {
        QString unique = node->name();
        // The node already bears the name it brought: it must not count as the one in the way.
        node->setName(QString());
        if (m_dataRoot)
            m_dataRoot->createUniqueName(unique);
        node->setName(unique);
        node->setInterfaceName(unique);
    } else {
        node->setName(name);
        node->setInterfaceName(interfaceName);
    }
    return true;
}

bool QTreeItemModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                                  const QModelIndex& parent)
{
    if (action == Qt::IgnoreAction)
        return true;
    if (!data || !data->hasFormat(kAttributeFormat) || column >= 2 || !parent.isValid())
        return false;
    MatrixData* target = nodeFromIndex(parent);
    if (!target || !m_dataRoot)
        return false;
    if (row == -1)
        row = target->childCount();

    // Every attribute must read back whole before the tree changes: a damaged stream is refused
    // as it stands, never half dropped.
    const QByteArray bytes = data->data(kAttributeFormat);
    std::vector<QByteArray> attributes;
    {
        QDataStream in(bytes);
        int attributeCount = 0;
        in >> attributeCount;
        if (in.status() != QDataStream::Ok || attributeCount <= 0 || attributeCount > kMaxDroppedAttributes)
            return false;
        for (int i = 0; i < attributeCount; ++i) {
            const qint64 begin = in.device()->pos();
            MatrixData scratch(QString(), 0, 1, QVariant::Double, true);
            if (!scratch.getDataFromStream(in))
                return false;
            attributes.push_back(bytes.mid(static_cast<int>(begin), static_cast<int>(in.device()->pos() - begin)));
        }
        if (!in.atEnd())
            return false;
    }
    const int attributeCount = static_cast<int>(attributes.size());
    // Only a group directly under the root takes new columns; the columns then stand at row on.
    const bool onGroup = !parent.parent().isValid();
    row = std::clamp(row, 0, target->childCount());
    if (onGroup && !insertNewRows(row, attributeCount, parent))
        return false;

    bool written = false;
    std::size_t next = 0; // a declined attribute's bytes go to the next column asked
    QModelIndex running = parent;
    QWidget* window = qobject_cast<QWidget*>(QObject::parent());
    for (int i = 0; i < attributeCount && running.isValid() && next < attributes.size(); ++i) {
        QDataStream in(attributes[next]);
        if (onGroup) {
            MatrixData* node = target->child(row);
            if (!node || !dropDataFromStream(node, in, true))
                break;
            ++next;
            auto* restore = new MatrixDataRestore(node, QStringLiteral("Create Attribute (drag/drop): ") + node->name(), true);
            restore->recordInsertedAttribute(node);
            m_dataRoot->appendUndoAction(restore, true);
            written = true;
            ++row;
        } else {
            MatrixData* node = nodeFromIndex(running);
            const QModelIndex sibling = index(running.row() + 1, 0, running.parent());
            running = sibling;
            if (!node)
                continue;
            const QMessageBox::StandardButton answer = QMessageBox::question(
                window, tr("Drag/Drop Attribute(s)"),
                tr("Do you really want to overwrite the existing attribute cell data: ") + node->name() + QStringLiteral(" ?"),
                QMessageBox::Yes | QMessageBox::No);
            if (answer != QMessageBox::Yes)
                continue;
            auto* restore = new MatrixDataRestore(node, QStringLiteral("Drop Data on Attribute: ") + node->name(), true);
            restore->recordNodeSnapshot();
            if (!dropDataFromStream(node, in, false)) {
                delete restore;
                break;
            }
            ++next;
            m_dataRoot->appendUndoAction(restore, true);
            written = true;
        }
    }
    emit updateView();
    emit treeItemSelected(parent);
    m_modified = written;
    emit dataModified(written);
    return true;
}

QMimeData* QTreeItemModel::getHTML_MimeData(const QModelIndexList& items) const
{
    std::vector<MatrixData*> columns;
    auto add = [&columns](MatrixData* node) {
        if (node && !node->isGroup() && std::find(columns.begin(), columns.end(), node) == columns.end())
            columns.push_back(node);
    };
    for (const QModelIndex& item : items) {
        MatrixData* node = item.isValid() ? nodeFromIndex(item) : nullptr;
        if (!node || !node->parent())
            continue;
        if (node->isGroup()) {
            for (MatrixData* leaf : node->leafs())
                add(leaf);
        } else {
            add(node);
        }
    }
    auto* data = new QMimeData;
    MatrixData::setHTML_MimeData(data, columns, std::vector<int>());
    return data;
}

} // namespace rkBase

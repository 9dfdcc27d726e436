#include "QVertexItemModel.h"

#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <MatrixDataRestore.h>
#include <MatrixDataRestoreProxy.h>
#include <UnitManager.h>
#include <UnitRegistry.h>

#include <QAbstractProxyModel>
#include <QColor>
#include <QDataStream>
#include <QHash>
#include <QMimeData>
#include <QSettings>
#include <QSortFilterProxyModel>

#include <algorithm>
#include <cmath>
#include <memory>

namespace rkBase {

QVertexItemModel::QVertexItemModel(QObject* parent, MatrixData* root, int filterStepSize, bool withFieldData,
                                   DisplayUnitManager* displayUnitManager)
    : QAbstractItemModel(parent), m_withFieldData(withFieldData), m_dataRoot(root), m_filterStepSize(filterStepSize),
      m_displayUnitManager(displayUnitManager)
{
    if (!m_displayUnitManager && root) {
        if (root->unitManager())
            m_displayUnitManager = root->unitManager()->displayUnitManager();
        else if (root->registry())
            m_displayUnitManager = root->registry()->displayUnitManager();
    }
    connectUnits();
    resetFirstRowInternalPointer(std::vector<int>());
}

void QVertexItemModel::connectUnits()
{
    if (m_displayUnitManager)
        connect(m_displayUnitManager, SIGNAL(displayChanged(QString)), this, SLOT(onUnitManagerUpdated(QString)),
                Qt::UniqueConnection);
    if (m_dataRoot && m_dataRoot->registry())
        connect(m_dataRoot->registry(), SIGNAL(property_changed(std::string, int)), this,
                SLOT(onUnitRegistryUpdated(std::string, int)), Qt::UniqueConnection);
}

void QVertexItemModel::setDataRoot(MatrixData* root)
{
    beginResetModel();
    m_dataRoot = root;
    connectUnits();
    resetFirstRowInternalPointer(m_selectedRows);
    endResetModel();
}

void QVertexItemModel::resetFirstRowInternalPointer(const std::vector<int>& rows)
{
    if (!m_dataRoot)
        return;
    m_columns.clear();
    m_columnNames.clear();
    m_unitCategories.clear();
    m_columns.reserve(static_cast<std::size_t>(m_columnCount));
    m_rowCount = m_dataRoot->maxNumbOfSelectedRows(m_filterStepSize, static_cast<int>(rows.size()));
    m_columnCount = m_dataRoot->numberOfSelectedItems();
    for (int c = 0; c < m_columnCount; ++c) {
        MatrixData* node = m_dataRoot->getNode(c);
        m_columns.push_back(node);
        if (node) {
            if (node->unitManager())
                m_unitCategories.push_back(node->unitManager()->category());
            m_columnNames.push_back(node->name());
        }
    }
    m_selectedRows = rows;
}

void QVertexItemModel::updateModel(int filterStepSize, const std::vector<int>& rows)
{
    m_filterStepSize = filterStepSize;
    resetFirstRowInternalPointer(rows);
    beginResetModel();
    endResetModel();
}

int QVertexItemModel::rowCount(const QModelIndex&) const
{
    return m_rowCount;
}

int QVertexItemModel::columnCount(const QModelIndex&) const
{
    return m_columnCount;
}

QModelIndex QVertexItemModel::index(int row, int column, const QModelIndex&) const
{
    if (!m_dataRoot || row < 0 || column < 0)
        return QModelIndex();
    return createIndex(row, column, getNode(column));
}

QModelIndex QVertexItemModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int QVertexItemModel::row(const QModelIndex& index) const
{
    const int r = index.row();
    const int n = m_filterStepSize;
    if (m_selectedRows.empty()) {
        if (n == -1 || n == 1)
            return r;
        return r == 0 ? 0 : r * n - 1;
    }
    const std::size_t size = m_selectedRows.size();
    const std::size_t at = static_cast<std::size_t>(r) * static_cast<std::size_t>(n == -1 || n == 1 ? 1 : n);
    return at < size ? m_selectedRows[at] : m_selectedRows.back();
}

MatrixData* QVertexItemModel::nodeFromIndex(const QModelIndex& index) const
{
    if (!index.isValid())
        return m_dataRoot;
    return static_cast<MatrixData*>(index.internalPointer());
}

MatrixData* QVertexItemModel::nodeFromProxyIndex(const QModelIndex& index) const
{
    if (const auto* proxy = qobject_cast<const QSortFilterProxyModel*>(index.model())) {
        const QModelIndex source = proxy->mapToSource(index);
        if (const auto* model = qobject_cast<const QVertexItemModel*>(source.model()))
            return model->nodeFromIndex(source);
        return nodeFromIndex(source);
    }
    return nodeFromIndex(index);
}

MatrixData* QVertexItemModel::getNode(int column) const
{
    return column >= 0 && column < static_cast<int>(m_columns.size()) ? m_columns[static_cast<std::size_t>(column)] : nullptr;
}

int QVertexItemModel::getColumn(MatrixData* node) const
{
    const auto it = std::find(m_columns.begin(), m_columns.end(), node);
    return it == m_columns.end() ? -1 : static_cast<int>(it - m_columns.begin());
}

void QVertexItemModel::changeColumnHeaderName(MatrixData* node)
{
    const int c = getColumn(node);
    if (c >= 0)
        emit headerDataChanged(Qt::Horizontal, c, c);
}

void QVertexItemModel::extendRows()
{
    if (m_dataRoot)
        m_dataRoot->appendOneRowForEachColumn();
}

void QVertexItemModel::showUnitTagInCells(bool on)
{
    m_showUnitTagInCells = on;
}

void QVertexItemModel::setModified(bool modified)
{
    m_modified = modified;
    emit dataModified(modified);
}

// ---------------------------------------------------------------------------------------------

QString QVertexItemModel::convertInStringValue(MatrixData* node, const QVariant& value, int role) const
{
    if (!node)
        return QString();
    switch (node->cellType()) {
    case QVariant::Double: {
        const double stored = value.toDouble();
        // A column with a unit of its own shows what it stores.
        const double display = node->nodeUnitKey() == -1 ? node->convertModelToDisplay(stored) : stored;
        if (role != Qt::EditRole) {
            QString text = QString::number(display, 'f', node->unitPrecision());
            if (m_showUnitTagInCells && !node->displayUnitTag().isEmpty())
                text += QLatin1Char(' ') + node->displayUnitTag();
            return text;
        }
        UnitRegistry* registry = node->registry();
        if (registry && registry->find_property(node->name().toStdString()) != registry->properties_end())
            return registry->printNumber(display, node->name());
        if (node->unitManager()) {
            QString text;
            node->unitManager()->printNumber(text, stored);
            return node->nodeUnitKey() == -1 ? text : QString::number(display, 'f', node->unitPrecision());
        }
        return QString();
    }
    case QVariant::Int: {
        bool ok = false;
        const int i = value.toInt(&ok);
        return ok ? QString::number(i) : QString();
    }
    case QVariant::String:
        return value.canConvert<QString>() ? value.toString() : QString();
    case QVariant::KeySequence: {
        bool ok = false;
        const int key = value.toInt(&ok);
        if (ok && value.type() != QVariant::String && node->lookupTableContains(key))
            return node->lookupTableValue(key).toString();
        return value.toString();
    }
    case QVariant::Icon:
        return QString();
    default:
        return value.canConvert<QString>() ? value.toString() : QString();
    }
}

QVariant QVertexItemModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    MatrixData* node = nodeFromIndex(index);
    if (!node || role > Qt::UserRole)
        return QVariant();
    const int r = row(index);
    const QVariant::Type type = node->cellType();
    switch (role) {
    case Qt::UserRole: {
        if (type == QVariant::Icon)
            return QVariant();
        const QVariant v = node->value(r, 0);
        if (!v.isValid())
            return QVariant();
        if (type == QVariant::Bool)
            return v.toBool() ? QVariant(QStringLiteral("true")) : QVariant();
        if (convertInStringValue(node, v, Qt::UserRole).isEmpty())
            return QVariant();
        switch (type) {
        case QVariant::Double: return v.toDouble();
        case QVariant::Int: return v.toInt();
        case QVariant::Color: return v.value<QColor>().name();
        case QVariant::String:
        case QVariant::KeySequence: return v.toString();
        default: return v;
        }
    }
    case Qt::DisplayRole: {
        if (type == QVariant::Color || type == QVariant::Bool || type == QVariant::Icon)
            return QVariant();
        const QVariant v = node->value(r, 0);
        if (!v.isValid())
            return QVariant();
        const QString text = convertInStringValue(node, v, Qt::DisplayRole);
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
    case Qt::DecorationRole: {
        if (type != QVariant::Icon)
            return QVariant();
        const QVariant v = node->value(r, 0);
        if (!node->isLookupTableEmpty())
            return v.isValid() ? node->lookupTableValue(v.toInt()) : QVariant();
        return v;
    }
    case Qt::EditRole: {
        if (type == QVariant::Color || type == QVariant::Bool)
            return QVariant();
        const QVariant v = node->value(r, 0);
        if (!v.isValid())
            return QVariant();
        const QString text = convertInStringValue(node, v, Qt::EditRole);
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
    case Qt::TextAlignmentRole:
        return 130; // Qt::AlignRight | Qt::AlignVCenter
    case Qt::BackgroundRole: {
        if (type == QVariant::Color)
            return node->cellColor(r);
        const bool editable = node->isValueEditable(r, 0);
        if (node->isNodeComputed() && editable)
            return QColor(190, 220, 250);
        if (!editable)
            return QColor(240, 240, 240);
        return QColor(255, 255, 255);
    }
    case Qt::ForegroundRole:
        return node->isValueValid(r, 0) ? QColor(0, 0, 0) : QColor(230, 0, 0, 255);
    case Qt::CheckStateRole:
        if (type == QVariant::Bool)
            return node->value(r, 0).toBool() ? 2 : 0;
        if (node->checkStateActive())
            return node->value(r, 1).toBool() ? 2 : 0;
        return QVariant();
    default:
        return QVariant();
    }
}

Qt::ItemFlags QVertexItemModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractItemModel::flags(index);
    MatrixData* node = index.isValid() ? nodeFromIndex(index) : nullptr;
    const bool editable = node ? node->isValueEditable(row(index), index.column()) : true;
    if (!editable) {
        f |= Qt::ItemIsSelectable;
    } else if (node && node->cellType() == QVariant::Bool) {
        f |= Qt::ItemIsUserCheckable;
    } else {
        f |= Qt::ItemIsEditable;
    }
    if (node && node->checkStateActive())
        f |= Qt::ItemIsUserCheckable;
    if (index.isValid())
        f |= Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    else
        f |= Qt::ItemIsDropEnabled;
    return f;
}

QVariant QVertexItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::ToolTipRole && orientation == Qt::Horizontal) {
        MatrixData* node = getNode(section);
        return node ? QVariant(node->interfaceName()) : QVariant();
    }
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Vertical) {
        const int n = m_filterStepSize;
        if (n == -1)
            return QString::number(section + 1);
        if (m_selectedRows.empty())
            return section == 0 ? QStringLiteral("1") : QString::number(section * n);
        const std::size_t size = m_selectedRows.size();
        const std::size_t at = static_cast<std::size_t>(section) * static_cast<std::size_t>(std::max(n, 1));
        if (at < size)
            return QString::number(m_selectedRows[at] + 1);
        // Past the end of the list: one step on from the entry before.
        const std::size_t before = section > 0 ? std::min(size - 1, static_cast<std::size_t>(section - 1) * std::max(n, 1)) : 0;
        return QString::number(m_selectedRows[before] + n + 1);
    }
    MatrixData* node = getNode(section);
    if (!node)
        return QVariant();
    QString text;
    if (!m_showUnitTagInCells)
        text = QString::number(section + 1) + QLatin1String(": ");
    const QString name = node->name();
    if (name == QLatin1String("Dip Data Map Style") || name == QLatin1String("Dip Data Section Style")
        || name == QLatin1String("Dip Data 3D Style"))
        text += node->interfaceName();
    else
        text += name;
    return text;
}

bool QVertexItemModel::isCellConditionSatisfied(const QModelIndex& cell, const QVariant& value1, const QVariant& value2,
                                                QSelectCellsDialog::SelectMethod method) const
{
    if (!cell.isValid())
        return false;
    const QString shown = data(cell, Qt::DisplayRole).toString();
    if (shown.isEmpty())
        return false;
    bool ok = false;
    const double v = shown.toDouble(&ok);
    if (!ok)
        return false;
    return QSelectCellsDialog::isSatisfied(v, value1.toDouble(), value2.toDouble(), method);
}

QModelIndex QVertexItemModel::isCellConditionSatisfied(int row, int column, const QVariant& value1,
                                                       const QVariant& value2, QSelectCellsDialog::SelectMethod method) const
{
    const QModelIndex cell = index(row, column);
    return isCellConditionSatisfied(cell, value1, value2, method) ? cell : QModelIndex();
}

bool QVertexItemModel::clearData(const QModelIndexList& cells, const QVariant& value)
{
    if (cells.isEmpty())
        return false;
    auto proxy = std::make_unique<MatrixDataRestoreProxy>(QStringLiteral("Clear Cells"));
    const bool blanking = !value.isValid() || value.toString().isEmpty();
    bool changed = false;
    for (const QModelIndex& cell : cells) {
        // Only cells of this model: a proxy's index carries no node of ours.
        MatrixData* node = cell.isValid() && cell.model() == this ? nodeFromIndex(cell) : nullptr;
        if (!node || !node->isNodeEditable())
            continue;
        if (!proxy->parent())
            proxy->setParent(node->parent());
        if (blanking && !node->nodeCanBeBlank())
            continue;
        const int r = row(cell);
        const QString oldText = data(cell, Qt::DisplayRole).toString();
        if (blanking && oldText.isEmpty())
            continue;
        if (m_withUndoRedo) {
            auto* restore = new MatrixDataRestore(node, QStringLiteral("Clear Cell: value=") + oldText
                                                            + QStringLiteral(", row=") + QString::number(cell.row() + 1)
                                                            + QStringLiteral(", column=") + node->name(),
                                                  false);
            restore->dataStore(r, node->value(r, 0));
            proxy->addToList(restore, node);
        }
        node->setValue(r, 0, value);
        node->setMinMax(0, boost::dynamic_bitset<>());
        changed = true;
    }
    if (!changed)
        return false;
    if (m_withUndoRedo && m_dataRoot && proxy->size() > 0) {
        if (proxy->size() == 1)
            m_dataRoot->appendUndoAction(proxy->firstNode(), true);
        else
            m_dataRoot->appendUndoAction(proxy.release(), true);
    }
    emit dataChanged(cells.first(), cells.first());
    setModified(true);
    emit dataModified(true);
    return true;
}

MatrixDataRestore* QVertexItemModel::pushUndo(MatrixData* node, const QString& text, int row, const QVariant& old,
                                              int column)
{
    if (!m_withUndoRedo || !m_dataRoot)
        return nullptr;
    auto* restore = new MatrixDataRestore(node, text, false);
    restore->dataStore(row, column, old);
    m_dataRoot->appendUndoAction(restore, true);
    return restore;
}

bool QVertexItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid())
        return false;
    MatrixData* node = nodeFromIndex(index);
    if (!node || (role != Qt::EditRole && role != Qt::CheckStateRole))
        return false;
    const int r = row(index);
    const bool editable = node->isValueEditable(r, index.column());
    if (!editable && !(role == Qt::CheckStateRole && node->name() == QLatin1String("Name")))
        return false;
    const QString R = QString::number(index.row() + 1);
    const QString N = node->name();
    const QVariant::Type type = node->cellType();
    const QVariant old = node->value(r, 0);

    if (role == Qt::EditRole) {
        const bool empty = !value.isValid() || value.toString().isEmpty();
        if (!node->nodeCanBeBlank() && empty)
            return false;
        if (!node->isValueAllowed(value))
            return false;
        if (empty) {
            const QString oldText = old.isValid() ? convertInStringValue(node, old, Qt::DisplayRole) : QString();
            if (oldText.isEmpty())
                return false;
            pushUndo(node, QStringLiteral("Clear Cell: value=") + oldText + QStringLiteral(", row=") + R
                               + QStringLiteral(", column=") + N,
                     r, old);
            node->setValue(r, 0, QVariant());
            emit dataChanged(index, index);
            setModified(true);
            return true;
        }
        // No change: the same value, or for coded cells the text of the code already stored.
        bool codeOk = false;
        const int code = old.toInt(&codeOk);
        if (old.isValid() && codeOk && old.type() != QVariant::String && node->lookupTableContains(code)) {
            if (value.toString() == node->lookupTableValue(code).toString() || value == old)
                return false;
        } else if (old.isValid() && value == old) {
            return false;
        }
        if (type == QVariant::Color) {
            pushUndo(node, QStringLiteral("Edit Color Cell: row=") + R + QStringLiteral(", column=") + N, r, old);
            node->setValue(r, 0, value);
            emit dataChanged(index, index);
            setModified(true);
            return true;
        }
        if (type == QVariant::Double || type == QVariant::Int) {
            bool ok = false;
            value.toDouble(&ok);
            // Two letters are a typing mistake; a single one reads as zero, as it always has.
            if (!ok && value.type() == QVariant::String && value.toString().size() >= 2)
                return false;
        }
        if (type == QVariant::Double && old.isValid()) {
            const int precision = node->unitPrecision();
            const double oldShown = node->nodeUnitKey() == -1 ? node->convertModelToDisplay(old.toDouble()) : old.toDouble();
            if (QStringLiteral("%1").arg(oldShown, 0, 'f', precision)
                == QStringLiteral("%1").arg(value.toDouble(), 0, 'f', precision))
                return false;
        }
        if (m_withUndoRedo) {
            const bool coded = type == QVariant::Icon || type == QVariant::KeySequence;
            const QVariant oldStored = coded ? node->rawValue(r)
                                             : QVariant(old.isValid() ? convertInStringValue(node, old, Qt::DisplayRole) : QString());
            pushUndo(node, QStringLiteral("Edit Cell: value=") + oldStored.toString() + QStringLiteral(", row=") + R
                               + QStringLiteral(", column=") + N,
                     r, oldStored);
        }
        QVariant stored = value;
        if (type == QVariant::Double && !m_withFieldData)
            stored = node->convertDisplayToModel(value.toDouble());
        node->setValue(r, 0, stored);
        node->setMinMax(0, std::vector<int>());
        if (m_withMinMaxValues) {
            for (int mm = 0; mm < 3; ++mm)
                emit dataChanged(this->index(mm, index.column()), this->index(mm, index.column()));
        }
        emit dataChanged(index, index);
        setModified(true);
        return true;
    }

    // Qt::CheckStateRole
    if (type != QVariant::Bool && !node->checkStateActive())
        return false;
    const bool checked = value.toInt() == Qt::Checked;
    if (node->checkStateActive()) {
        pushUndo(node, QStringLiteral("Check State Changed: row=") + R + QStringLiteral(", column=") + N, r, node->value(r, 1),
                 1);
        node->setValue(r, 1, checked);
    } else {
        if (node->checkStateRoleExclusive()) {
            if (old.toBool())
                return false;
            MatrixDataRestore* restore =
                pushUndo(node, QStringLiteral("Check State Changed: row=") + R + QStringLiteral(", column=") + N, r, old);
            // Every other row is reset too; the undo must give back the tick it takes away.
            for (int other = 0; restore && other < node->rowCount(); ++other)
                if (other != r && node->value(other, 0) != QVariant(false))
                    restore->dataStore(other, node->value(other, 0));
            node->setDefaultValue1(QVariant(false));
            emit dataChanged(this->index(0, index.column()), this->index(std::max(0, m_rowCount - 1), index.column()));
        } else {
            pushUndo(node, QStringLiteral("Check State Changed: row=") + R + QStringLiteral(", column=") + N, r, old);
        }
        node->setValue(r, 0, checked);
    }
    emit dataChanged(index, index);
    setModified(true);
    return true;
}

// ---------------------------------------------------------------------------------------------

void QVertexItemModel::onUnitManagerUpdated(const QString& category)
{
    const std::string c = category.toStdString();
    if (category.isEmpty() || std::find(m_unitCategories.begin(), m_unitCategories.end(), c) != m_unitCategories.end()) {
        beginResetModel();
        endResetModel();
    }
}

void QVertexItemModel::onUnitRegistryUpdated(const std::string& property, int)
{
    const QString name = QString::fromStdString(property);
    if (std::find(m_columnNames.begin(), m_columnNames.end(), name) != m_columnNames.end() || !name.isEmpty()) {
        beginResetModel();
        endResetModel();
    }
}

void QVertexItemModel::convertNodeUnit(const QModelIndex& columnIndex)
{
    MatrixData* node = getNode(columnIndex.column());
    if (!node || node->cellType() != QVariant::Double)
        return;
    for (int r = 0; r < node->validValueRowCount(); ++r) {
        if (!node->isValueValid(r, 0))
            continue;
        node->setValue(r, node->convertNodeUnit(node->toDouble(r, 0)));
        if (r < m_rowCount) {
            const QModelIndex cell = index(r, columnIndex.column());
            emit dataChanged(cell, cell);
        }
    }
    // The stored values are now in model units, so the column follows the display unit again.
    node->setNodeUnitKey(-1);
    node->setMinMax(0, std::vector<int>());
}

void QVertexItemModel::getMinMaxRange(double& min, double& max)
{
    min = 1e+27;
    max = -1e+27;
    for (MatrixData* node : m_columns) {
        if (!node)
            continue;
        node->setMinMax(0, m_selectedRows);
        const QVariant mn = node->minValue(), mx = node->maxValue();
        if (mn.isValid() && mn.toDouble() != 99999.0)
            min = std::min(min, mn.toDouble());
        if (mx.isValid() && mx.toDouble() != 99999.0)
            max = std::max(max, mx.toDouble());
    }
}

void QVertexItemModel::getStackedMinMaxRange(double& min, double& max)
{
    min = 0.0;
    max = 0.0;
    double negative = 0.0;
    for (MatrixData* node : m_columns) {
        if (!node || !node->isSelected())
            continue;
        node->setMinMax(0, m_selectedRows);
        const QVariant mn = node->minValue(), mx = node->maxValue();
        if (mn.isValid() && mn.toDouble() != 99999.0) {
            if (mn.toDouble() <= 0.0)
                negative += mn.toDouble();
            else
                min += mn.toDouble();
        }
        if (mx.isValid() && mx.toDouble() > 0.0 && mx.toDouble() != 99999.0)
            max += mx.toDouble();
    }
    if (negative != 0.0)
        min = negative;
}

void QVertexItemModel::writeSettings(const QString& group, QSettings* settings) const
{
    if (!settings)
        return;
    settings->remove(group);
    settings->beginGroup(group);
    settings->beginWriteArray(QStringLiteral("table"));
    int i = 0;
    for (MatrixData* node : m_columns) {
        if (!node)
            continue;
        settings->setArrayIndex(i++);
        settings->setValue(QStringLiteral("row"), node->name());
        settings->setValue(QStringLiteral("cell_type"), int(node->cellType()));
        settings->setValue(QStringLiteral("check_state_role"), node->checkStateRoleExclusive());
        settings->beginWriteArray(node->name());
        for (int r = 0; r < node->validValueRowCount(); ++r) {
            settings->setArrayIndex(r);
            settings->setValue(QStringLiteral("row"), node->value(r, 0));
        }
        settings->endArray();
    }
    settings->endArray();
    settings->endGroup();
}

MatrixData* QVertexItemModel::readSettings(const QString& group, QSettings* settings)
{
    if (!settings)
        return nullptr;
    settings->beginGroup(group);
    const int columns = settings->beginReadArray(QStringLiteral("table"));
    if (columns <= 0) {
        settings->endArray();
        settings->endGroup();
        return nullptr;
    }
    auto root = std::make_unique<MatrixData>(QStringLiteral("Data Root"), -1, -1, QVariant::String, true);
    auto* sheet = new MatrixData(QStringLiteral("DataRoot"), 0, 1, QVariant::Double, true);
    root->appendChild(sheet, true);
    for (int c = 0; c < columns; ++c) {
        settings->setArrayIndex(c);
        const QString name = settings->value(QStringLiteral("row")).toString();
        auto type = static_cast<QVariant::Type>(settings->value(QStringLiteral("cell_type"), int(QVariant::Double)).toInt());
        if (MatrixData::systemTypeName(type).isEmpty())
            type = QVariant::String; // a type this sheet cannot hold: keep the text
        const bool exclusive = settings->value(QStringLiteral("check_state_role"), false).toBool();
        const int cells = settings->beginReadArray(name);
        auto* column = new MatrixData(name, std::max(cells, 0), 1, type, true);
        column->setCheckStateRoleExclusive(exclusive);
        for (int r = 0; r < cells; ++r) {
            settings->setArrayIndex(r);
            column->setValue(r, 0, settings->value(QStringLiteral("row")));
        }
        settings->endArray();
        sheet->appendChild(column, false);
    }
    settings->endArray();
    settings->endGroup();
    return root.release();
}


// ---------------------------------------------------------------------------------------------
// Modification of many cells

namespace {
bool needsNumber(QModifyCellsDialog::ModifyMethod method)
{
    return method == QModifyCellsDialog::ShiftByValue || method == QModifyCellsDialog::MultiplyByValue
        || method == QModifyCellsDialog::DivideByValue || method == QModifyCellsDialog::ReplaceByValue
        || method == QModifyCellsDialog::ReplaceEmptyCells;
}
} // namespace

void QVertexItemModel::modifySelectedCells(const QModelIndexList& cells, const QVariant& value,
                                           QModifyCellsDialog::ModifyMethod method, int attributeColumn)
{
    using Dialog = QModifyCellsDialog;
    if (cells.isEmpty())
        return;
    const QString methodText = Dialog::methodName(method);
    // The name entry of the text form is a replacement under another label.
    if (method == Dialog::ReplaceByName)
        method = Dialog::ReplaceByValue;
    // Interpolation pairs cells and runs through interpolate().
    if (method < Dialog::ShiftByValue || method > Dialog::ReplaceEmptyCells)
        return;
    bool isNumber = false;
    const double a = value.toString().trimmed().toDouble(&isNumber);
    if (method == Dialog::DivideByValue && a == 0.0)
        return;
    // Only cells of this model: a stale or foreign index must not reach a node.
    auto nodeOf = [this](const QModelIndex& cell) {
        return cell.isValid() && cell.model() == this ? getNode(cell.column()) : nullptr;
    };
    MatrixData* firstNode = nodeOf(cells.first());
    const QVariant::Type firstType = firstNode ? firstNode->cellType() : QVariant::Invalid;
    const bool firstIsText = firstType == QVariant::String || firstType == QVariant::Color;
    // Text typed for a number would scale or replace every cell by zero.
    if (!firstIsText && needsNumber(method) && !(isNumber && std::isfinite(a)))
        return;

    // One undo action per column, created when the column is first met.
    std::vector<std::pair<MatrixData*, MatrixDataRestore*>> actions;
    for (const QModelIndex& cell : cells) {
        if (attributeColumn != -1 && cell.column() != attributeColumn)
            continue;
        MatrixData* node = nodeOf(cell);
        if (!node || !node->isNodeEditable())
            continue;
        const int r = row(cell);
        const QVariant old = node->value(r, 0);
        if (m_withUndoRedo && m_dataRoot) {
            auto it = std::find_if(actions.begin(), actions.end(),
                                   [node](const std::pair<MatrixData*, MatrixDataRestore*>& p) { return p.first == node; });
            if (it == actions.end()) {
                auto* restore = new MatrixDataRestore(
                    node, QStringLiteral("Modify Cell(s):") + methodText + QStringLiteral(": column=") + node->name(), false);
                m_dataRoot->appendUndoAction(restore, true);
                actions.emplace_back(node, restore);
                it = actions.end() - 1;
            }
            it->second->dataStore(r, old);
        }
        const QVariant::Type type = node->cellType();
        if (type == QVariant::Color) {
            if (firstType == QVariant::Color) {
                node->setValue(r, 0, value);
                emit dataChanged(cell, cell);
            }
            continue;
        }
        // A change never crosses from text to numbers.
        if ((firstType == QVariant::Color || firstType == QVariant::String) && type != firstType)
            continue;
        const bool oldEmpty = !old.isValid() || convertInStringValue(node, old, Qt::DisplayRole).isEmpty();
        if (!oldEmpty && method == Dialog::ReplaceEmptyCells)
            continue;
        if (type != QVariant::Bool && oldEmpty && method != Dialog::ReplaceEmptyCells)
            continue;
        const bool blanking = method == Dialog::ClearCells;
        if (blanking && !node->nodeCanBeBlank()) {
            emit dataChanged(cell, cell);
            continue;
        }
        if (type == QVariant::String) {
            node->setValue(r, 0, blanking ? QVariant() : value);
            emit dataChanged(cell, cell);
            continue;
        }
        const double v = old.toDouble();
        QVariant result;
        switch (method) {
        case Dialog::ShiftByValue: result = v + node->convertDisplayToModel(a); break;
        case Dialog::MultiplyByValue: result = a * v; break;
        // Stored values, whatever unit the column shows.
        case Dialog::Sines: result = std::sin(v); break;
        case Dialog::Cosines: result = std::cos(v); break;
        case Dialog::DivideByValue: result = v / a; break;
        // Logarithms leave cells at or below zero as they are.
        case Dialog::Ln:
            if (v > 0.0)
                result = std::log(v);
            break;
        case Dialog::Log10:
            if (v > 0.0)
                result = std::log10(v);
            break;
        case Dialog::Exp: result = std::exp(v); break;
        case Dialog::ReplaceByValue:
        case Dialog::ReplaceEmptyCells: result = node->convertDisplayToModel(a); break;
        default: break;
        }
        if (result.isValid() || blanking)
            node->setValue(r, 0, result);
        emit dataChanged(cell, cell);
    }
    if (m_withMinMaxValues && m_rowCount > 0) {
        const int last = std::min(2, m_rowCount - 1);
        for (int c = 0; c < m_columnCount; ++c) {
            MatrixData* node = getNode(c);
            if (!node)
                continue;
            node->setMinMax(0, std::vector<int>());
            emit dataChanged(index(0, c), index(last, c));
        }
    }
    setModified(true);
}

void QVertexItemModel::interpolate(const QModelIndexList& cells, const std::vector<int>& viewRows)
{
    if (cells.isEmpty())
        return;
    const int rows = m_rowCount;
    // Model row -> view row, the inverse of viewRows; identity when none is given.
    std::vector<int> viewOfModel;
    if (!viewRows.empty()) {
        viewOfModel.assign(static_cast<std::size_t>(std::max(rows, 0)), -1);
        for (std::size_t v = 0; v < viewRows.size(); ++v)
            if (viewRows[v] >= 0 && viewRows[v] < rows)
                viewOfModel[static_cast<std::size_t>(viewRows[v])] = static_cast<int>(v);
    }
    auto viewRowOf = [&](int modelRow) {
        if (viewRows.empty())
            return modelRow;
        return modelRow >= 0 && modelRow < rows ? viewOfModel[static_cast<std::size_t>(modelRow)] : -1;
    };
    auto modelRowOf = [&](int viewRow) {
        if (viewRows.empty())
            return viewRow;
        return viewRow >= 0 && static_cast<std::size_t>(viewRow) < viewRows.size() ? viewRows[static_cast<std::size_t>(viewRow)] : -1;
    };
    auto nodeOf = [this](const QModelIndex& cell) {
        return cell.isValid() && cell.model() == this ? getNode(cell.column()) : nullptr;
    };
    // The stored value of a cell that holds a finite number.
    auto numberAt = [this](MatrixData* node, const QModelIndex& cell, double& v) {
        bool ok = false;
        const QVariant stored = node->value(row(cell), 0);
        v = stored.isValid() ? stored.toDouble(&ok) : 0.0;
        return ok && std::isfinite(v);
    };

    QModelIndex previous;
    std::unique_ptr<MatrixDataRestore> restore;
    MatrixData* changedNode = nullptr;
    for (const QModelIndex& cell : cells) {
        MatrixData* node = nodeOf(cell);
        if (!node || !node->isNodeEditable()
            || (node->cellType() != QVariant::Double && node->cellType() != QVariant::Int))
            continue;
        double v2 = 0.0;
        if (!numberAt(node, cell, v2))
            continue;
        if (!previous.isValid()) {
            previous = cell;
            continue;
        }
        if (cell.column() != previous.column())
            continue;
        if (m_withUndoRedo && !restore)
            restore = std::make_unique<MatrixDataRestore>(
                node,
                QStringLiteral("Modify Cell(s): ") + QModifyCellsDialog::methodName(QModifyCellsDialog::AttributeInterpolation)
                    + QStringLiteral(": column=") + node->name(),
                false);
        QModelIndex from = previous, to = cell;
        int r1 = viewRowOf(from.row()), r2 = viewRowOf(to.row());
        if (r1 > r2) {
            std::swap(r1, r2);
            std::swap(from, to);
        }
        double v1 = 0.0;
        numberAt(node, from, v1);
        numberAt(node, to, v2);
        // A cell the view does not show, or the same row twice: nothing lies between.
        if (r1 >= 0 && r2 - r1 >= 2) {
            const double step = (v2 - v1) / (r2 - r1);
            int top = std::min(from.row(), to.row()), bottom = std::max(from.row(), to.row());
            for (int r = r1 + 1; r < r2; ++r) {
                const int m = modelRowOf(r);
                if (m < 0 || m >= rows)
                    continue;
                const int stored = row(index(m, cell.column()));
                if (restore)
                    restore->dataStore(stored, node->value(stored, 0));
                // From the first value each time, so that no rounding piles up along a long run.
                node->setValue(stored, 0, v1 + step * (r - r1));
                top = std::min(top, m);
                bottom = std::max(bottom, m);
            }
            changedNode = node;
            emit dataChanged(index(top, cell.column()), index(bottom, cell.column()));
        }
        previous = cell;
    }
    if (restore && restore->dataStoreSize() > 0 && m_dataRoot)
        m_dataRoot->appendUndoAction(restore.release(), true);
    if (changedNode) {
        changedNode->setMinMax(0, std::vector<int>());
        const int c = getColumn(changedNode);
        if (m_withMinMaxValues && c >= 0 && m_rowCount > 0)
            emit dataChanged(index(0, c), index(std::min(2, m_rowCount - 1), c));
    }
    setModified(true);
}

// ---------------------------------------------------------------------------------------------
// Copy, paste and the fill drag

namespace {
const QString kDragFormat = QStringLiteral("4drook/dragDrop.list");

// The model and row of a view index, through a sorting proxy when it comes from one.
const QAbstractItemModel* sourceOf(const QModelIndex& index, QModelIndex& source)
{
    source = index;
    while (const auto* proxy = qobject_cast<const QAbstractProxyModel*>(source.model()))
        source = proxy->mapToSource(source);
    return source.model();
}

// Coded cells hold a lookup key but read as the user's text: what goes back into them is the
// key, so that a fill or an undo keeps the code and an icon cell (which takes no text) is written.
QVariant storableCell(const MatrixData* node, const QVariant& cell)
{
    const QVariant::Type type = node->cellType();
    if ((type != QVariant::Icon && type != QVariant::KeySequence) || !cell.isValid())
        return cell;
    const QVariant key = node->rawValue(cell);
    return key.isValid() ? key : cell;
}
} // namespace

QStringList QVertexItemModel::mimeTypes() const
{
    return QStringList{kDragFormat};
}

Qt::DropActions QVertexItemModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

QMimeData* QVertexItemModel::mimeData(const QModelIndexList& cells) const
{
    if (cells.isEmpty())
        return nullptr;
    int first = cells.first().column(), last = first;
    for (const QModelIndex& cell : cells) {
        first = std::min(first, cell.column());
        last = std::max(last, cell.column());
    }
    m_dragStartIndex = cells.first();
    const QModelIndex lastCell = cells.last();
    const int sourceRow = row(lastCell);
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << int(last - first + 1);
        for (int c = first; c <= last; ++c)
            if (MatrixData* node = getNode(c))
                node->putDataOnStream(sourceRow, out, m_withFieldData);
    }
    auto* data = new QMimeData;
    data->setData(kDragFormat, bytes);
    return data;
}

QMimeData* QVertexItemModel::mimeDataForCopy(const QModelIndexList& cells) const
{
    if (cells.isEmpty() || !cells.first().isValid() || !cells.last().isValid())
        return nullptr;
    const QModelIndex& anchor = cells.first();
    const QAbstractItemModel* view = anchor.model();
    const int r0 = std::min(anchor.row(), cells.last().row());
    const int r1 = std::max(anchor.row(), cells.last().row());
    const int c0 = std::min(anchor.column(), cells.last().column());
    const int c1 = std::max(anchor.column(), cells.last().column());
    QString header, body;
    for (int r = r0; r <= r1; ++r) {
        for (int c = c0; c <= c1; ++c) {
            QModelIndex source;
            const QAbstractItemModel* model = sourceOf(view->index(r, c), source);
            const auto* owner = qobject_cast<const QVertexItemModel*>(model);
            MatrixData* node = owner && source.isValid() ? owner->nodeFromIndex(source) : nullptr;
            const bool lastColumn = c == c1;
            if (r == r0) {
                QString name = node ? node->name() : QString();
                name.replace(QLatin1Char('\n'), QLatin1Char(' '));
                header += QStringLiteral("<b>") + name + QStringLiteral("</b>");
                header += lastColumn ? QLatin1Char('\n') : QLatin1Char('\t');
            }
            QString text;
            if (node) {
                const int stored = owner->row(source);
                const QVariant value = node->value(stored, 0);
                if (value.isValid() && node->isValueValid(stored, 0)) {
                    switch (node->cellType()) {
                    case QVariant::Icon: text = QString::number(node->toInt(stored, 0)); break;
                    case QVariant::KeySequence:
                    case QVariant::String:
                    case QVariant::Color: text = value.toString(); break;
                    default:
                        // Display units at 15 digits: what the user reads, and enough to paste
                        // back the same double.
                        text = m_withFieldData ? QString::number(value.toDouble(), 'g', 6)
                                               : QString::number(node->convertModelToDisplay(value.toDouble()), 'g', 15);
                    }
                }
            }
            body += text.isEmpty() ? QStringLiteral(" ") : text;
            if (!lastColumn)
                body += QLatin1Char('\t');
            else if (r != r1)
                body += QLatin1Char('\n');
        }
    }
    auto* data = new QMimeData;
    data->setText(body);
    data->setHtml(toHTML(header + body));
    return data;
}

QMimeData* QVertexItemModel::getHTML_MimeData(const std::vector<int>& rows) const
{
    auto* data = new QMimeData;
    MatrixData::setHTML_MimeData(data, m_columns, rows);
    return data;
}

QString QVertexItemModel::toHTML(const QString& text)
{
    QString html = text;
    html.replace(QLatin1Char('\t'), QLatin1String("<td>"));
    html.replace(QLatin1Char('\n'), QLatin1String("<tr><td>"));
    return QStringLiteral("<table><tr><td>") + html + QStringLiteral("</table>");
}

bool QVertexItemModel::setMimeData(const QMimeData& data, int row, int column, const QList<int>& rows)
{
    if (!m_dataRoot || column < 0 || !data.hasText())
        return false;
    const QString text = data.text();
    if (text.isEmpty())
        return false;
    const QStringList lines = text.split(QLatin1Char('\n'));
    QList<int> targets = rows;
    // Field data grows as it is typed in: lines past the selection go on below it.
    if (m_withFieldData && lines.size() > targets.size()) {
        int next = targets.isEmpty() ? std::max(row, 0) : targets.last() + 1;
        while (targets.size() < lines.size())
            targets.append(next++);
    }
    const QString A = QString::number(row + 1);
    const int lineCount = lines.size();
    auto proxy = std::make_unique<MatrixDataRestoreProxy>();
    // One sub-action per column, in order of first write, handed to the proxy at the end. The
    // recount after a paste that adds rows lengthens every column of the tree: the first record,
    // taken before the first write and undone last, shortens them again. So a one-column paste
    // stays one record, with the one name.
    std::vector<std::unique_ptr<MatrixDataRestore>> records;
    QHash<MatrixData*, MatrixDataRestore*> recordOf;
    bool extended = false;
    int running = 0;
    for (int i = 0; i < lineCount && running < targets.size(); ++i) {
        const int sourceRow = targets.at(running);
        if (sourceRow < 0) {
            ++running;
            continue;
        }
        const QStringList cells = lines.at(i).split(QLatin1Char('\t'));
        if (cells.size() > 1)
            proxy->setActionName((lineCount == 1 ? QStringLiteral("Paste: row=") + A
                                                  : QStringLiteral("Paste: rows=") + A + QLatin1Char('-')
                                                        + QString::number(row + lineCount))
                                 + QStringLiteral(", columns=") + QString::number(column + 1) + QLatin1Char('-')
                                 + QString::number(column + cells.size()));
        bool written = false;
        for (int k = 0; k < cells.size(); ++k) {
            QString cell = cells.at(k);
            cell.remove(QLatin1Char('\r'));
            const int c = column + k;
            if (c >= m_columnCount)
                break;
            MatrixData* node = getNode(c);
            if (!node || !node->isValueEditable(sourceRow, c))
                return false; // the proxy and its records go; what was pasted stays
            if (cells.size() == 1)
                proxy->setActionName(QStringLiteral("Paste: rows=") + A + QLatin1Char('-') + QString::number(row + lineCount)
                                     + QStringLiteral(", column=") + node->name());
            if (!proxy->parent())
                proxy->setParent(node->parent());
            if (m_withUndoRedo) {
                MatrixDataRestore* record = recordOf.value(node, nullptr);
                if (!record) {
                    records.push_back(std::make_unique<MatrixDataRestore>(
                        node,
                        QStringLiteral("Paste: rows=") + A + QLatin1Char('-') + QString::number(row + lineCount - 1)
                            + QStringLiteral(", column=") + node->name(),
                        false));
                    record = records.back().get();
                    recordOf.insert(node, record);
                    if (m_rowsCanBeExtended && records.size() == 1)
                        record->recordRowCounts(m_dataRoot);
                }
                record->dataStore(sourceRow, storableCell(node, node->rawValue(sourceRow)));
            }
            if (cell.isEmpty())
                continue;
            bool parsed = false;
            const double number = cell.toDouble(&parsed);
            if (m_withFieldData)
                node->setStartRowCount(sourceRow);
            if (node->validValueRowCount() <= sourceRow) {
                if (!m_rowsCanBeExtended)
                    continue;
                extended = true;
            }
            const QVariant::Type type = node->cellType();
            QVariant value;
            if (parsed && (type == QVariant::Double || type == QVariant::Int)) {
                value = m_withFieldData ? number : node->convertDisplayToModel(number);
            } else if (cell == QLatin1String(" ")) {
                if (!node->nodeCanBeBlank())
                    continue;
                value = QVariant();
            } else if (type == QVariant::KeySequence) {
                const QVariant code = node->rawValue(QVariant(cell));
                value = code.isValid() ? code : QVariant(cell);
            } else {
                if (m_withFieldData && type != QVariant::String)
                    node->setCellType(QVariant::String);
                value = storableCell(node, QVariant(cell));
            }
            // A value the column cannot hold (text in a number column) leaves the cell as it was.
            node->setValue(sourceRow, 0, value);
            written = true;
        }
        if (written)
            ++running;
    }
    for (auto& record : records)
        proxy->addToList(record.release(), nullptr);
    if (m_withUndoRedo && proxy->size() > 0) {
        if (proxy->size() == 1) {
            m_dataRoot->appendUndoAction(proxy->firstNode(), true);
        } else {
            m_dataRoot->appendUndoAction(proxy.release(), true);
        }
    }
    if (m_rowsCanBeExtended)
        m_dataRoot->checkValidRowCount();
    for (MatrixData* node : m_columns)
        if (node)
            node->setMinMax(0, boost::dynamic_bitset<>());
    beginResetModel();
    endResetModel();
    setModified(true);
    emit dataModified(true);
    return extended;
}

bool QVertexItemModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                                    const QModelIndex& parent)
{
    if (action == Qt::IgnoreAction)
        return true;
    if (!data || !data->hasFormat(kDragFormat) || !parent.isValid())
        return false;
    // Rows and columns are those of the view that took the drop. Through a sorting or filtering
    // proxy each view row maps to its own source row, so that the fill reaches exactly the rows
    // the user sees.
    const auto* proxy = qobject_cast<const QAbstractProxyModel*>(parent.model());
    if (parent.model() != this && (!proxy || proxy->sourceModel() != this))
        return false;
    int columnCount = 0;
    {
        QDataStream in(data->data(kDragFormat));
        in >> columnCount;
        if (in.status() != QDataStream::Ok || columnCount <= 0 || columnCount > m_columnCount)
            return false;
    }
    if (!m_dragStartIndex.isValid() || row < parent.row())
        return false;
    const int numberOfRows = row - parent.row() + 1;
    const int startRow = parent.row();
    const int startColumn = column - columnCount + 1;
    // Mapped before the first write: a write may re-sort or re-filter the proxy.
    std::vector<int> modelRows, modelColumns;
    modelRows.reserve(static_cast<std::size_t>(numberOfRows));
    for (int r = startRow; r <= row; ++r) {
        const QModelIndex cell = proxy ? proxy->mapToSource(proxy->index(r, column)) : index(r, column);
        modelRows.push_back(cell.isValid() ? cell.row() : -1);
    }
    for (int c = startColumn; c <= column; ++c)
        modelColumns.push_back(proxy ? proxy->mapToSource(proxy->index(startRow, c)).column() : c);
    const QString A = QString::number(startRow + 1);
    const QString B = QString::number(startRow + numberOfRows);
    for (int c : modelColumns) {
        MatrixData* node = getNode(c);
        if (!node || node->checkStateRoleExclusive())
            continue;
        // Coded cells and the data type column compare by the text the user reads; what is
        // written back is the code (storableCell).
        const QVariant::Type type = node->cellType();
        const bool raw = type == QVariant::Icon || type == QVariant::KeySequence
            || node->name() == QLatin1String("Data_Type");
        auto read = [&](int stored) { return raw ? node->rawValue(stored) : node->value(stored, 0); };
        const QVariant fill = read(this->row(index(m_dragStartIndex.row(), c)));
        std::unique_ptr<MatrixDataRestore> restore;
        if (m_withUndoRedo)
            restore = std::make_unique<MatrixDataRestore>(
                node, QStringLiteral("Drag/Drop: rows=") + A + QLatin1Char('-') + B + QStringLiteral(", column=") + node->name(),
                false);
        int top = m_rowCount, bottom = -1;
        for (int m : modelRows) {
            if (m < 0)
                continue;
            const int stored = this->row(index(m, c));
            const QVariant old = read(stored);
            if (old == fill || !node->isValueEditable(stored, c))
                continue;
            if (restore)
                restore->dataStore(stored, storableCell(node, old));
            node->setValue(stored, 0, storableCell(node, fill));
            top = std::min(top, m);
            bottom = std::max(bottom, m);
        }
        node->setMinMax(0, boost::dynamic_bitset<>());
        if (restore && m_dataRoot)
            m_dataRoot->appendUndoAction(restore.release(), true);
        if (bottom >= 0)
            emit dataChanged(index(top, c), index(bottom, c));
    }
    setModified(true);
    emit dataModified(true);
    emit dropColumnData(startRow, numberOfRows, startColumn, columnCount);
    m_dragStartIndex = QModelIndex();
    return true;
}

} // namespace rkBase

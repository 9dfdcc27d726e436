#include "MatrixData.h"

#include "AbstractMatrixDataID.h"
#include "CellColumn.h"
#include "LassoEdgeTable.h"
#include "MatrixDataRestore.h"
#include "RKColormap.h"
#include "UnitManager.h"
#include "UnitRegistry.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QIcon>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
int g_nodeIdCounter = 0;
int g_defaultColorIndex = 0;

// Orientation columns are recognised by unit category first; names cover sheets loaded from
// text where no unit was attached.
bool hasOrientationName(const QString& name)
{
    const QString n = name.toLower();
    return n.contains(QLatin1String("dip")) || n.contains(QLatin1String("azimuth"))
        || n.contains(QLatin1String("strike")) || n.contains(QLatin1String("plunge"));
}
} // namespace

MatrixData::MatrixData(const QString& name, int rows, int columns, QVariant::Type type, bool growOnWrite)
    : m_name(name), m_interfaceName(name), m_cellType(type), m_group(rows < 0 && columns < 0),
      m_growOnWrite(growOnWrite), m_nodeId(++g_nodeIdCounter)
{
    m_minName = QCoreApplication::translate("MatrixData", "Minimum");
    m_maxName = QCoreApplication::translate("MatrixData", "Maximum");
    m_meanName = QCoreApplication::translate("MatrixData", "Mean");
    if (!m_group)
        initialize(rows, columns);
}

MatrixData::MatrixData(const MatrixData& other, bool withChildren)
    : m_cellType(other.m_cellType), m_nodeId(++g_nodeIdCounter)
{
    copySettingsFrom(other);
    if (withChildren) {
        for (MatrixData* c : other.m_children) {
            auto* copy = new MatrixData(*c, true);
            copy->m_parent = this;
            m_children.append(copy);
        }
    }
}

MatrixData& MatrixData::operator=(const MatrixData& other)
{
    if (this == &other)
        return *this;
    qDeleteAll(m_children);
    m_children.clear();
    copySettingsFrom(other);
    for (MatrixData* c : other.m_children) {
        auto* copy = new MatrixData(*c, true);
        copy->m_parent = this;
        m_children.append(copy);
    }
    return *this;
}

void MatrixData::copySettingsFrom(const MatrixData& o)
{
    m_name = o.m_name;
    m_interfaceName = o.m_interfaceName;
    m_cellType = o.m_cellType;
    m_group = o.m_group;
    m_growOnWrite = o.m_growOnWrite;
    m_columns.clear();
    for (const auto& c : o.m_columns)
        m_columns.push_back(std::make_unique<CellColumn>(*c));
    m_lassoEdges.reset();
    m_validRows = o.m_validRows;
    m_startRows = o.m_startRows;
    m_color = o.m_color;
    m_unitManager = o.m_unitManager;
    m_nodeUnitKey = o.m_nodeUnitKey;
    m_registry = o.m_registry;
    m_selected = o.m_selected;
    m_computed = o.m_computed;
    m_editable = o.m_editable;
    m_renamable = o.m_renamable;
    m_canBeBlank = o.m_canBeBlank;
    m_visibleToUser = o.m_visibleToUser;
    m_vertex = o.m_vertex;
    m_checkStateActive = o.m_checkStateActive;
    m_checkStateExclusive = o.m_checkStateExclusive;
    m_default1 = o.m_default1;
    m_default2 = o.m_default2;
    m_minValue = o.m_minValue;
    m_maxValue = o.m_maxValue;
    m_meanValue = o.m_meanValue;
    m_minName = o.m_minName;
    m_maxName = o.m_maxName;
    m_meanName = o.m_meanName;
    m_hasRange = o.m_hasRange;
    m_rangeMin = o.m_rangeMin;
    m_rangeMax = o.m_rangeMax;
    m_lookup = o.m_lookup;
    m_colorMapStep = o.m_colorMapStep;
    m_flipColorMap = o.m_flipColorMap;
    m_defaultFilterStep = o.m_defaultFilterStep;
    m_matrixDataID.reset(o.m_matrixDataID ? o.m_matrixDataID->clone() : nullptr);
}

MatrixData::~MatrixData()
{
    clearUndoActions();
    qDeleteAll(m_children);
}

void MatrixData::initialize(int rows, int columns)
{
    m_columns.clear();
    rows = std::max(rows, 0);
    columns = std::max(columns, 1);
    for (int c = 0; c < columns; ++c)
        m_columns.push_back(std::make_unique<CellColumn>(c == 1 && m_checkStateActive ? QVariant::Bool : m_cellType, rows));
    m_validRows = rows;
}

int MatrixData::rowCount() const
{
    if (isGroup())
        return groupRowCount();
    return m_columns.empty() ? 0 : m_columns.front()->size();
}

int MatrixData::columnCount() const
{
    return isGroup() ? numberOfSelectedItems() : static_cast<int>(m_columns.size());
}

int MatrixData::groupRowCount() const
{
    int rows = 0;
    for (MatrixData* c : m_children)
        rows = std::max(rows, c->rowCount());
    return rows;
}

CellColumn* MatrixData::cells(int column) const
{
    if (column < 0 || column >= static_cast<int>(m_columns.size()))
        return nullptr;
    return m_columns[static_cast<std::size_t>(column)].get();
}

bool MatrixData::setPointValue(int row, const QPointF& value)
{
    CellColumn* c = cells(0);
    if (c && c->setPoint(row, value))
        return true;
    return setValue(row, 0, QVariant(value));
}

bool MatrixData::setDoubleValue(int row, int column, double value)
{
    CellColumn* c = cells(column);
    if (c && c->doubleData() && std::isfinite(value) && row >= 0 && row < c->size()) {
        c->setDouble(row, value);
        return true;
    }
    return setValue(row, column, QVariant(value));
}

QVariant::Type MatrixData::systemType(const QString& typeName)
{
    const QString t = typeName.trimmed().toLower();
    if (t == QLatin1String("bool")) return QVariant::Bool;
    if (t == QLatin1String("int") || t == QLatin1String("integer")) return QVariant::Int;
    if (t == QLatin1String("double") || t == QLatin1String("float") || t == QLatin1String("real")) return QVariant::Double;
    if (t == QLatin1String("string") || t == QLatin1String("qstring") || t == QLatin1String("text")) return QVariant::String;
    if (t == QLatin1String("pointf") || t == QLatin1String("qpointf")) return QVariant::PointF;
    if (t == QLatin1String("color") || t == QLatin1String("qcolor") || t == QLatin1String("colour")) return QVariant::Color;
    if (t == QLatin1String("icon") || t == QLatin1String("qicon")) return QVariant::Icon;
    if (t == QLatin1String("keysequence") || t == QLatin1String("qkeysequence")) return QVariant::KeySequence;
    return QVariant::Invalid;
}

QString MatrixData::systemTypeName(QVariant::Type type)
{
    switch (type) {
    case QVariant::Bool: return QStringLiteral("Bool");
    case QVariant::Int: return QStringLiteral("Int");
    case QVariant::Double: return QStringLiteral("Double");
    case QVariant::String: return QStringLiteral("String");
    case QVariant::PointF: return QStringLiteral("PointF");
    case QVariant::Color: return QStringLiteral("Color");
    case QVariant::Icon: return QStringLiteral("Icon");
    case QVariant::KeySequence: return QStringLiteral("KeySequence");
    default: return QString();
    }
}

// ---------------------------------------------------------------------------------------------
// Tree

MatrixData* MatrixData::child(int i) const
{
    return i >= 0 && i < m_children.size() ? m_children.at(i) : nullptr;
}

MatrixData* MatrixData::root() const
{
    const MatrixData* n = this;
    while (n->m_parent)
        n = n->m_parent;
    return const_cast<MatrixData*>(n);
}

void MatrixData::appendChild(MatrixData* node, bool /*isGroup*/)
{
    if (!node || node == this)
        return;
    if (node->m_parent)
        node->m_parent->removeChild(node);
    node->m_parent = this;
    m_children.append(node);
}

void MatrixData::insertChild(int position, MatrixData* node)
{
    if (!node || node == this)
        return;
    if (node->m_parent)
        node->m_parent->removeChild(node);
    node->m_parent = this;
    m_children.insert(std::clamp(position, 0, static_cast<int>(m_children.size())), node);
}

bool MatrixData::removeChild(MatrixData* node)
{
    if (!m_children.removeOne(node))
        return false;
    node->m_parent = nullptr;
    return true;
}

namespace {
template <typename F> bool walkLeafs(const MatrixData* node, F&& f)
{
    if (!node->isGroup())
        return f(const_cast<MatrixData*>(node));
    for (MatrixData* c : node->children())
        if (walkLeafs(c, f))
            return true;
    return false;
}

// Leaves that a table shows: ticked, visible, and not under an unticked group below `top`.
template <typename F> bool walkShownLeafs(const MatrixData* node, const MatrixData* top, F&& f)
{
    if (node != top && (!node->isSelected() || !node->visibleToUser()))
        return false;
    if (!node->isGroup())
        return f(const_cast<MatrixData*>(node));
    for (MatrixData* c : node->children())
        if (walkShownLeafs(c, top, f))
            return true;
    return false;
}
} // namespace

QList<MatrixData*> MatrixData::shownLeafs() const
{
    QList<MatrixData*> out;
    walkShownLeafs(this, this, [&out](MatrixData* n) { out.append(n); return false; });
    return out;
}

QList<MatrixData*> MatrixData::leafs() const
{
    QList<MatrixData*> out;
    walkLeafs(this, [&out](MatrixData* n) { out.append(n); return false; });
    return out;
}

MatrixData* MatrixData::getNode(int n) const
{
    if (n < 0)
        return nullptr;
    MatrixData* found = nullptr;
    int i = 0;
    walkShownLeafs(this, this, [&](MatrixData* leaf) {
        if (i++ == n) {
            found = leaf;
            return true;
        }
        return false;
    });
    return found;
}

int MatrixData::numberOfSelectedItems() const
{
    int count = 0;
    walkShownLeafs(this, this, [&count](MatrixData*) {
        ++count;
        return false;
    });
    return count;
}

MatrixData* MatrixData::getNodeFromName(const QString& name) const
{
    for (MatrixData* c : m_children) {
        if (c->name() == name)
            return c;
        if (MatrixData* found = c->getNodeFromName(name))
            return found;
    }
    return nullptr;
}

MatrixData* MatrixData::getFirstChildWithData() const
{
    MatrixData* found = nullptr;
    walkLeafs(this, [&found](MatrixData* leaf) {
        for (int r = 0; r < leaf->validValueRowCount(); ++r)
            if (leaf->isValueValid(r, 0)) {
                found = leaf;
                return true;
            }
        return false;
    });
    return found;
}

void MatrixData::createUniqueName(QString& name) const
{
    auto taken = [this](const QString& n) { return m_name == n || getNodeFromName(n) != nullptr; };
    if (!taken(name))
        return;
    const QString base = name;
    for (int i = 1;; ++i) {
        const QString candidate = base + QLatin1Char('_') + QString::number(i);
        if (!taken(candidate)) {
            name = candidate;
            return;
        }
    }
}

void MatrixData::setSelected(bool selected, bool recursive)
{
    m_selected = selected;
    if (recursive)
        for (MatrixData* c : m_children)
            c->setSelected(selected, true);
}

bool MatrixData::isOrientationColumn() const
{
    if (isGroup() || m_cellType != QVariant::Double)
        return false;
    if (m_unitManager && m_unitManager->category() == UnitRegistry::CATEGORY_ORIENTATION)
        return true;
    return hasOrientationName(m_name);
}

bool MatrixData::hasOrientationData() const
{
    return walkLeafs(this, [](MatrixData* leaf) { return leaf->isOrientationColumn(); });
}

int MatrixData::maxNumbOfSelectedRows(int stepSize, int listSize) const
{
    const int step = stepSize > 1 ? stepSize : 1;
    if (listSize > 0)
        return (listSize + step - 1) / step;
    int rows = 0;
    walkShownLeafs(this, this, [&rows](MatrixData* leaf) {
        rows = std::max(rows, leaf->validValueRowCount());
        return false;
    });
    if (step == 1 || rows == 0)
        return rows;
    // A stepped table shows row 0 and then every step-th row ending a step (n*step - 1).
    return rows / step + 1;
}

void MatrixData::resetGlobalIDCounter()
{
    g_nodeIdCounter = 0;
}

void MatrixData::setMatrixDataID(AbstractMatrixDataID* id)
{
    m_matrixDataID.reset(id);
}

// ---------------------------------------------------------------------------------------------
// Flags and cells

bool MatrixData::isNodeEditable() const
{
    return m_editable;
}

void MatrixData::setNodeEditable(bool editable)
{
    m_editable = editable;
}

bool MatrixData::isValueEditable(int row, int column) const
{
    // The column argument is the caller's view column; a node's rights do not depend on it.
    return m_editable && !isGroup() && row >= 0 && column >= 0;
}

bool MatrixData::isValueValid(int row, int column) const
{
    const CellColumn* c = cells(column);
    return c && c->isValid(row);
}

QVariant MatrixData::value(const QModelIndex& index) const
{
    return index.isValid() ? value(index.row(), 0) : QVariant();
}

QVariant MatrixData::value(int row, int column) const
{
    const CellColumn* c = cells(column);
    return c ? c->get(row) : QVariant();
}

double MatrixData::toDouble(int row, int column) const
{
    const CellColumn* c = cells(column);
    return c ? c->toDouble(row) : 0.0;
}

int MatrixData::toInt(int row, int column) const
{
    const CellColumn* c = cells(column);
    return c ? c->toInt(row) : 0;
}

double MatrixData::toDisplayDouble(const QVariant& value) const
{
    bool ok = false;
    const double d = value.toDouble(&ok);
    if (!ok)
        return 0.0;
    return m_nodeUnitKey == -1 ? convertModelToDisplay(d) : d;
}

bool MatrixData::setValue(int row, const QVariant& value)
{
    return setValue(row, 0, value);
}

bool MatrixData::setValue(const QModelIndex& index, const QVariant& value)
{
    return index.isValid() && setValue(index.row(), 0, value);
}

bool MatrixData::setValue(int row, int column, const QVariant& value)
{
    CellColumn* c = cells(column);
    if (!c || row < 0)
        return false;
    if (row >= c->size()) {
        if (!m_growOnWrite)
            return false;
        // Grow every column of this node together so that they stay row-aligned.
        for (auto& col : m_columns)
            col->resize(row + 1);
    }
    return c->set(row, value);
}

void MatrixData::setInt(int row, int column, const int& value)
{
    setValue(row, column, QVariant(value));
}

void MatrixData::clearWriteContainer(int)
{
    // Computed columns here write straight into their cells; there is no pending buffer.
}

bool MatrixData::hasWriteValues() const
{
    return false;
}

void MatrixData::computeRowIndices() const
{
    // Cells are stored densely per column, so there is no separate row index to rebuild.
}

void MatrixData::setCellType(QVariant::Type type)
{
    if (type == m_cellType)
        return;
    m_cellType = type;
    if (!m_columns.empty())
        m_columns.front()->setType(type);
}

void MatrixData::setAllowedRange(double min, double max)
{
    m_hasRange = min <= max;
    m_rangeMin = min;
    m_rangeMax = max;
}

bool MatrixData::isValueAllowed(const QVariant& value) const
{
    if (!value.isValid() || (value.type() == QVariant::String && value.toString().isEmpty()))
        return m_canBeBlank;
    if (m_cellType == QVariant::Icon || m_cellType == QVariant::KeySequence) {
        if (m_lookup.isEmpty())
            return true;
        return rawValue(value).isValid() || m_cellType == QVariant::KeySequence;
    }
    if (m_hasRange && CellColumn::isNumericType(m_cellType)) {
        bool ok = false;
        const double d = value.toDouble(&ok);
        return ok && d >= m_rangeMin && d <= m_rangeMax;
    }
    return true;
}

void MatrixData::setCheckStateActive(bool active)
{
    m_checkStateActive = active;
    if (isGroup())
        return;
    if (active && m_columns.size() < 2)
        m_columns.push_back(std::make_unique<CellColumn>(QVariant::Bool, rowCount()));
}

void MatrixData::setDefaultValue1(const QVariant& value)
{
    m_default1 = value;
    if (isGroup()) {
        for (MatrixData* c : m_children)
            c->setDefaultValue1(value);
        return;
    }
    // One conversion for the whole column: blanking or resetting a million rows is a fill.
    if (CellColumn* c = cells(0))
        c->fill(value);
}

void MatrixData::insertValue(int row, const QVariant& value)
{
    if (isGroup() || m_columns.empty())
        return;
    row = std::clamp(row, 0, rowCount());
    for (auto& c : m_columns)
        c->insertBlank(row);
    m_columns.front()->set(row, value);
    ++m_validRows;
}

// ---------------------------------------------------------------------------------------------
// Lookup and raw values

void MatrixData::addLookupValue(int key, const QVariant& value)
{
    m_lookup.insert(QString::number(key), value);
}

bool MatrixData::lookupTableContains(int key) const
{
    return m_lookup.contains(QString::number(key));
}

QVariant MatrixData::lookupTableValue(int key) const
{
    return m_lookup.value(QString::number(key));
}

QVariant MatrixData::rawValue(const QVariant& userText) const
{
    if (!userText.isValid())
        return QVariant();
    const QString text = userText.toString();
    for (auto it = m_lookup.cbegin(); it != m_lookup.cend(); ++it) {
        const QVariant& v = it.value();
        const bool textMatches = v.type() == QVariant::Color ? v.value<QColor>().name() == text.toLower()
                                                               : v.toString() == text;
        if (textMatches || it.key() == text) {
            bool ok = false;
            const int key = it.key().toInt(&ok);
            if (ok)
                return QVariant(key);
        }
    }
    return QVariant();
}

QVariant MatrixData::rawValue(int row) const
{
    const QVariant v = value(row, 0);
    if (!v.isValid())
        return QVariant();
    if (m_cellType == QVariant::KeySequence || m_cellType == QVariant::Icon) {
        bool ok = false;
        const int key = v.toInt(&ok);
        if (ok && lookupTableContains(key)) {
            const QVariant text = lookupTableValue(key);
            return text.type() == QVariant::Color ? QVariant(text.value<QColor>().name()) : QVariant(text.toString());
        }
        return QVariant(v.toString());
    }
    return v;
}

QVariant MatrixData::rawValue(const QModelIndex& index) const
{
    return index.isValid() ? rawValue(index.row()) : QVariant();
}

QWidget* MatrixData::comboBoxEditor(QWidget* parent) const
{
    if (m_lookup.isEmpty() || (m_cellType != QVariant::Icon && m_cellType != QVariant::KeySequence))
        return nullptr;
    auto* box = new QComboBox(parent);
    for (auto it = m_lookup.cbegin(); it != m_lookup.cend(); ++it) {
        const QVariant& v = it.value();
        if (v.type() == QVariant::Color) {
            QPixmap swatch(12, 12);
            swatch.fill(v.value<QColor>());
            box->addItem(QIcon(swatch), v.value<QColor>().name(), it.key().toInt());
        } else if (v.type() == QVariant::Icon) {
            box->addItem(v.value<QIcon>(), it.key(), it.key().toInt());
        } else {
            box->addItem(v.toString(), it.key().toInt());
        }
    }
    return box;
}

QWidget* MatrixData::comboBoxEditor(QWidget* parent, const QModelIndex& index) const
{
    auto* box = static_cast<QComboBox*>(comboBoxEditor(parent));
    if (box && index.isValid()) {
        const int at = box->findData(value(index.row(), 0));
        if (at >= 0)
            box->setCurrentIndex(at);
    }
    return box;
}

// ---------------------------------------------------------------------------------------------
// Units

UnitRegistry* MatrixData::registry() const
{
    for (const MatrixData* n = this; n; n = n->m_parent)
        if (n->m_registry)
            return n->m_registry;
    return nullptr;
}

void MatrixData::setUnitManager(const std::string& category)
{
    UnitRegistry* reg = registry();
    m_unitManager = reg ? reg->getCategory(category) : boost::shared_ptr<UnitManager>();
}

void MatrixData::setUnitManager(const QString& category)
{
    setUnitManager(category.toStdString());
}

QString MatrixData::unitCategory() const
{
    return m_unitManager ? QString::fromStdString(m_unitManager->category()) : QString();
}

int MatrixData::unitPrecision() const
{
    return m_unitManager ? m_unitManager->precision() : 3;
}

QString MatrixData::displayUnitTag() const
{
    if (!m_unitManager)
        return QString();
    return m_nodeUnitKey == -1 ? m_unitManager->getDisplayUnitTag() : m_unitManager->getUnitTag(m_nodeUnitKey);
}

QString MatrixData::nodeUnitTag() const
{
    if (!m_unitManager)
        return QString();
    return m_nodeUnitKey == -1 ? m_unitManager->getDisplayUnitTag() : m_unitManager->getUnitTag(m_nodeUnitKey);
}

double MatrixData::convertModelToDisplay(const double& value) const
{
    return m_unitManager ? m_unitManager->convertModelToDisplay(value) : value;
}

double MatrixData::convertDisplayToModel(const double& value) const
{
    return m_unitManager ? m_unitManager->convertDisplayToModel(value) : value;
}

double MatrixData::convertNodeUnit(double value) const
{
    if (!m_unitManager || m_nodeUnitKey == -1)
        return value;
    return m_unitManager->convertToModel(value, m_nodeUnitKey);
}

QString MatrixData::printValue(double value) const
{
    if (m_unitManager) {
        QString text;
        m_unitManager->printNumber(text, value);
        return text;
    }
    return QString::number(value, 'f', unitPrecision());
}

// ---------------------------------------------------------------------------------------------
// Colour

QColor MatrixData::getDefaultColor(bool reset)
{
    // Distinct, print-safe hues; the cycle repeats after the last one.
    static const QRgb cycle[] = {0x1f77b4, 0xd62728, 0x2ca02c, 0xff7f0e, 0x9467bd, 0x8c564b,
                                 0xe377c2, 0x17becf, 0xbcbd22, 0x7f7f7f, 0x393b79, 0xad494a};
    constexpr int n = sizeof(cycle) / sizeof(cycle[0]);
    if (reset)
        g_defaultColorIndex = 0;
    const QColor c(cycle[g_defaultColorIndex % n]);
    g_defaultColorIndex = (g_defaultColorIndex + 1) % n;
    return c;
}

QString MatrixData::colorHexaString() const
{
    return m_color.name(QColor::HexRgb).toUpper();
}

QColor MatrixData::colorFromHexaString(QString text)
{
    text = text.trimmed();
    if (!text.startsWith(QLatin1Char('#')))
        text.prepend(QLatin1Char('#'));
    if (text.size() != 7)
        return QColor();
    return QColor(text);
}

QColor MatrixData::cellColor(int row) const
{
    const QVariant v = value(row, 0);
    if (!v.isValid())
        return QColor();
    switch (m_cellType) {
    case QVariant::Color: return v.value<QColor>();
    case QVariant::Icon:
    case QVariant::KeySequence: {
        bool ok = false;
        const int key = v.toInt(&ok);
        if (ok && lookupTableContains(key)) {
            const QVariant l = lookupTableValue(key);
            if (l.type() == QVariant::Color)
                return l.value<QColor>();
        }
        return color(v.toString());
    }
    case QVariant::Double:
    case QVariant::Int: return colorMapColor(v.toDouble());
    default: return color(v.toString());
    }
}

QColor MatrixData::colorMapColor(double value) const
{
    double mn = 0, mx = 0;
    if (!colorMapRange(mn, mx, boost::dynamic_bitset<>()))
        return QColor();
    // The classes of createColorMapSymbolIDs: a cell looks as its point does in a chart.
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(mn, mx, colorMapClassStep(mn, mx), m_flipColorMap);
    return map.value_to_color(value);
}

QColor MatrixData::color(const QModelIndex& index) const
{
    return index.isValid() ? cellColor(index.row()) : QColor();
}

QColor MatrixData::color(const QString& valueText) const
{
    bool ok = false;
    const int key = valueText.toInt(&ok);
    if (ok && lookupTableContains(key)) {
        const QVariant l = lookupTableValue(key);
        if (l.type() == QVariant::Color)
            return l.value<QColor>();
    }
    if (m_cellType == QVariant::Double || m_cellType == QVariant::Int) {
        // A number of a numeric column is coloured by the column's colour map, as its cell is.
        const double d = valueText.trimmed().toDouble(&ok);
        if (ok && std::isfinite(d))
            return colorMapColor(d);
    }
    const QColor named(valueText.trimmed());
    if (named.isValid())
        return named;
    // Any other text keeps one stable colour, so that a class looks the same in every chart.
    const uint h = qHash(valueText);
    return QColor::fromHsv(static_cast<int>(h % 360), 160 + static_cast<int>((h >> 9) % 80), 200);
}

QColor MatrixData::minMaxMeanColor(const QModelIndex& index) const
{
    if (!index.isValid())
        return QColor();
    // Rows of the min/max table: minimum, maximum, mean.
    const QVariant v = index.row() == 0 ? m_minValue : index.row() == 1 ? m_maxValue : m_meanValue;
    if (m_cellType == QVariant::Color)
        return v.value<QColor>();
    if (!CellColumn::isNumericType(m_cellType) || !v.isValid())
        return QColor(240, 240, 240);
    double mn = 0, mx = 0;
    if (!colorMapRange(mn, mx, boost::dynamic_bitset<>()))
        return QColor(240, 240, 240);
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(mn, mx, colorMapClassStep(mn, mx), m_flipColorMap);
    return map.value_to_color(v.toDouble());
}

std::size_t MatrixData::cellMemoryBytes() const
{
    std::size_t bytes = 0;
    for (const auto& c : m_columns)
        bytes += c->memoryBytes();
    return bytes;
}

} // namespace rkBase

#include "QRelationshipItemModel.h"

#include "ColumnReader.h"
#include "OrientationConstants.h"
#include "PointColumnWriter.h"

#include "CellColumn.h"
#include "UnitRegistry.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>

namespace rkBase {

using namespace orientation;

namespace {

// A "SCAT" flag cell: valid, non-null and true.
bool flagSet(const MatrixData* node, int row)
{
    const CellColumn* c = node->cellColumn(0);
    if (c && typeid(*node) == typeid(MatrixData) && c->type() == QVariant::Bool)
        return c->isValid(row) && c->toInt(row) != 0;
    const QVariant v = node->value(row, 0);
    return v.isValid() && !v.isNull() && v.toBool();
}

// A class array: blank cells (not the zeros a grid starts with), so that an unwritten label
// reads as no label. Its cells hold text (the id, the label, the colour's name) whatever the
// attribute is, but it reports the attribute's cell type: that is how a chart knows that the
// classes are colours of their own and not a colour map.
MatrixDataArray* newClassArray(const MatrixData* nodeX, const MatrixData* attribute, int rows)
{
    auto* a = new MatrixDataArray(nodeX ? nodeX->name() : QString(), 0, 3, QVariant::String);
    if (attribute)
        a->setNominalCellType(attribute->cellType());
    if (nodeX)
        a->setInterfaceName(nodeX->interfaceName());
    a->setAllocatedRowCount(std::max(rows, 0));
    return a;
}

MatrixDataArray* newPointArray(const QString& name, int rows)
{
    auto* a = new MatrixDataArray(name, 0, 1, QVariant::PointF);
    if (rows > 0)
        a->setAllocatedRowCount(rows);
    return a;
}

int classId(const MatrixDataArray* classes, int row)
{
    if (!classes)
        return -1;
    bool ok = false;
    const int id = classes->value(row, 0).toString().toInt(&ok);
    return ok ? id : -1;
}

QColor classColour(const MatrixData* data, const MatrixDataArray* classes, int row)
{
    const QString text = classes ? classes->value(row, 2).toString() : QString();
    return data ? data->color(text) : QColor(text);
}

// The legend text of a discrete class, as the legend names it.
QString classLabel(const MatrixData* node, int row, int id)
{
    const QVariant v = node->value(row, 0);
    if (node->cellType() == QVariant::Color)
        return v.value<QColor>().name();
    if (node->lookupTableContains(id)) {
        const QVariant l = node->lookupTableValue(id);
        return l.type() == QVariant::Color ? l.value<QColor>().name() : l.toString();
    }
    return v.toString();
}

bool undefinedId(const QVariant* ids, int index)
{
    return !ids || !ids[index].isValid() || ids[index].isNull();
}

// Per-row class ids and colours of one attribute, one entry per row of rows (at least the
// attribute's own rows); an invalid id marks a row without a class.
void createRowIds(const MatrixData* node, int rows, QMap<int, QVariant>& names, QMap<int, QColor>& colours,
                  QVariant*& ids, QColor*& rowColours)
{
    QMap<int, QString> labels;
    const QVariant::Type type = node->cellType();
    // Numbers are coloured by a colour map; colours and discrete values are classes of their own.
    const bool colourMap = type == QVariant::Double || type == QVariant::Int;
    if (colourMap)
        node->createColorMapSymbolIDs(labels, colours);
    else
        node->createSymbolIDs(labels, colours);
    for (auto it = labels.cbegin(); it != labels.cend(); ++it)
        names.insert(it.key(), it.value());

    const int n = std::max(rows, node->rowCount());
    ids = new QVariant[static_cast<std::size_t>(std::max(n, 1))];
    rowColours = new QColor[static_cast<std::size_t>(std::max(n, 1))];
    const int nodeRows = node->rowCount();
    for (int r = 0; r < nodeRows; ++r) {
        const int id = colourMap ? node->colorMapSymbolID(r) : node->symbolID(r);
        if (id < 0)
            continue;
        ids[r] = id;
        // A colour attribute keeps the colour of the cell; every other class takes the legend's.
        rowColours[r] = type == QVariant::Color ? node->value(r, 0).value<QColor>() : colours.value(id);
    }
}

} // namespace

QRelationshipItemModel::QRelationshipItemModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_contourGridStressForStereoPlot(new MatrixDataArray(QString(), 0, 1, QVariant::Double))
    , m_data(newPointArray(QString(), 0))
    , m_rotatedData(newPointArray(QString(), 0))
    , m_unitCategory(QString::fromStdString(UnitRegistry::CATEGORY_DIMENSIONLESS))
    , m_contourGridPoles(new MatrixDataArray(QString(), 0, 1, QVariant::Double))
    , m_contourGridDipDir(new MatrixDataArray(QString(), 0, 1, QVariant::Double))
{
}

QRelationshipItemModel::~QRelationshipItemModel()
{
    QRelationshipItemModel::clearData();
    delete m_contourGridStressForStereoPlot;
    delete m_contourGridPoles;
    delete m_contourGridDipDir;
    delete m_decimationData;
    delete m_decimationCount;
    delete m_intervalFilter;
    qDeleteAll(m_structuralTopsScenarios);
    // A name clustered twice stands in the list twice: delete each table once.
    std::sort(m_clusterCentroidSets.begin(), m_clusterCentroidSets.end());
    m_clusterCentroidSets.erase(std::unique(m_clusterCentroidSets.begin(), m_clusterCentroidSets.end()),
                                m_clusterCentroidSets.end());
    qDeleteAll(m_clusterCentroidSets);
    delete[] m_clusterIDs;
}

double QRelationshipItemModel::getStressOverlay(double, double, double& sigma1, double& sigma2, double& sigma3)
{
    sigma1 = sigma2 = sigma3 = 0.0;
    return 0.0;
}

MatrixData* QRelationshipItemModel::stressValueNode() const
{
    return nullptr;
}

void QRelationshipItemModel::slipDirection(double, double, double& slipDip, double& slipAzimuth, double& shear,
                                           double& normal, QColor& colour, bool)
{
    slipDip = slipAzimuth = shear = normal = 0.0;
    colour = QColor();
}

void QRelationshipItemModel::clearData()
{
    m_selection.clear();
    delete[] m_tableRow;
    m_tableRow = nullptr;
    m_numberOfTableRows = 0;
    delete m_data;
    m_data = nullptr;
    delete m_rotatedData;
    m_rotatedData = nullptr;
    delete m_colorClasses;
    m_colorClasses = nullptr;
    delete m_symbolClasses;
    m_symbolClasses = nullptr;
    delete m_classScratch;
    m_classScratch = nullptr;
    // Nothing may walk points that are gone.
    m_pointCount = 0;
    m_stressOverlayState = 0;
    touchData();
}

// ---------------------------------------------------------------------------------------------
// Load

void QRelationshipItemModel::takeNewDataSet(int step, DisplayType displayType, MatrixData* x, MatrixData* y,
                                            MatrixData* color, MatrixData* symbol, bool keepUndefined,
                                            std::vector<int> const& selectedRows, QMap<int, QVariant>& colorNames,
                                            QMap<int, QColor>& colorColors, QMap<int, QVariant>& symbolNames,
                                            QMap<int, QColor>& symbolColors)
{
    // The reset brackets the change, so that attached views never read half-built arrays.
    beginResetModel();
    m_displayType = displayType;
    newRelationshipData(step, x, y, color, symbol, keepUndefined, selectedRows, colorNames, colorColors,
                        symbolNames, symbolColors);
    if (m_data)
        m_data->checkValidRowCount();
    endResetModel();
}

void QRelationshipItemModel::takeNewDataSet(int step, DisplayType displayType, MatrixData* x, MatrixData* y,
                                            std::vector<int> const& selectedRows)
{
    QMap<int, QVariant> colorNames, symbolNames;
    QMap<int, QColor> colorColors, symbolColors;
    takeNewDataSet(step, displayType, x, y, nullptr, nullptr, false, selectedRows, colorNames, colorColors,
                   symbolNames, symbolColors);
}

void QRelationshipItemModel::takeNewDataSet(MatrixData* x, MatrixData* y, DisplayType displayType)
{
    takeNewDataSet(1, displayType, x, y, std::vector<int>());
}

void QRelationshipItemModel::newRelationshipData(int step, MatrixData* x, MatrixData* y, MatrixData* color,
                                                 MatrixData* symbol, bool keepUndefined,
                                                 std::vector<int> const& selectedRows,
                                                 QMap<int, QVariant>& colorNames, QMap<int, QColor>& colorColors,
                                                 QMap<int, QVariant>& symbolNames, QMap<int, QColor>& symbolColors)
{
    m_nodeX = x;
    m_nodeY = y;
    if (!x || !y || x->rowCount() <= 0 || y->rowCount() <= 0)
        return;
    step = std::max(step, 1);

    const QString nameX = x->name();
    const QString nameY = y->name();
    MatrixData* scat = nullptr;
    if (m_dataRoot
        && (nameX.contains(QLatin1String("dip"), Qt::CaseInsensitive)
            || nameX.contains(QLatin1String("azimuth"), Qt::CaseInsensitive)))
        scat = m_dataRoot->getNodeFromName(QStringLiteral("SCAT"));
    if (m_scatDataTaken)
        scat = nullptr;

    m_symbolAttributeIsOn = symbol != nullptr;
    m_colorAttributeIsOn = color != nullptr;
    m_unitCategory = x->unitCategory();
    if (m_unitCategory.isEmpty())
        m_unitCategory = QString::fromStdString(UnitRegistry::CATEGORY_DIMENSIONLESS);
    clearData();
    clearClusterIDs();

    // A shorter y reads as blank cells, and those rows are rejected below.
    const int rowsX = x->rowCount();
    const int rows = std::max(rowsX, y->rowCount());
    m_numberOfTableRows = rows;
    m_selection.resize(static_cast<std::size_t>(rows));
    m_tableRow = new int[static_cast<std::size_t>(rows)];
    std::fill(m_tableRow, m_tableRow + rows, -1);

    m_partSelection = false;
    std::vector<char> mask;
    if (selectedRows.empty()) {
        if (step > 1) {
            mask.assign(static_cast<std::size_t>(rows), 0);
            for (int r = 0; r < rows; r += step)
                mask[static_cast<std::size_t>(r)] = 1;
        }
    } else {
        // A row list is thinned in the selection only; every row is still loaded.
        m_partSelection = true;
        for (std::size_t i = 0; i < selectedRows.size(); i += static_cast<std::size_t>(step)) {
            const int r = selectedRows[i];
            if (r >= 0 && r < rows)
                m_selection.set(static_cast<std::size_t>(r));
        }
    }

    QVariant* colorIds = nullptr;
    QColor* colorColours = nullptr;
    QVariant* symbolIds = nullptr;
    QColor* symbolColours = nullptr;
    initLegenedEntries(colorIds, colorColours, symbolIds, symbolColours, color, symbol, colorNames, colorColors,
                       symbolNames, symbolColors);

    m_data = newPointArray(nameX, rowsX);
    m_data->setInterfaceName(x->interfaceName());
    m_horizontalDipDataSelected = nameX == QLatin1String("dip");
    m_pointCount = 0;

    // Negative dips are folded onto the other side (dip, azimuth + 180) as they are written; the
    // range tracked below stays that of the values as read.
    const bool fold = nameX.contains(QLatin1String("dip"), Qt::CaseInsensitive)
        && nameY.contains(QLatin1String("azimuth"), Qt::CaseInsensitive);

    const ColumnReader readX(x);
    const ColumnReader readY(y);
    PointColumnWriter points(m_data);
    double minX = kSearchStart, minY = kSearchStart, maxX = -kSearchStart, maxY = -kSearchStart;
    int k = 0;
    for (int r = 0; r < rowsX; ++r) {
        if (!mask.empty() && !mask[static_cast<std::size_t>(r)])
            continue;
        double vx = 0.0, vy = 0.0;
        if (!readX.read(r, vx) || !readY.read(r, vy) || (scat && flagSet(scat, r))) {
            m_selection.reset(static_cast<std::size_t>(r));
            continue;
        }
        if ((color || symbol)
            && !setValueForLegends(k, r, color, symbol, symbolIds, symbolColours, colorIds, colorColours,
                                   keepUndefined))
            continue;
        minX = std::min(minX, vx);
        maxX = std::max(maxX, vx);
        minY = std::min(minY, vy);
        maxY = std::max(maxY, vy);
        if (fold && vx < 0.0) {
            vx = -vx;
            vy += 180.0;
            if (vy >= 360.0)
                vy -= 360.0;
        }
        points.set(k, QPointF(vx, vy));
        m_tableRow[k] = r;
        ++k;
        ++m_pointCount;
    }

    if (minX == kSearchStart)
        minX = 0.0;
    if (minY == kSearchStart)
        minY = 0.0;
    if (maxX == -kSearchStart)
        maxX = 0.0;
    if (maxY == -kSearchStart)
        maxY = 0.0;
    setMinMaxRanges(minX, minY, maxX, maxY);
    m_data->setValidValueRowCount(k);

    delete[] colorIds;
    delete[] colorColours;
    delete[] symbolIds;
    delete[] symbolColours;
    touchData();
}

void QRelationshipItemModel::initSelection(MatrixData* node, std::vector<int> const& rows)
{
    clearData();
    clearClusterIDs();
    const int n = node ? std::max(node->rowCount(), 0) : 0;
    m_numberOfTableRows = n;
    m_selection.resize(static_cast<std::size_t>(n));
    m_tableRow = new int[static_cast<std::size_t>(std::max(n, 1))];
    std::fill(m_tableRow, m_tableRow + n, -1);
    for (int r : rows)
        if (r >= 0 && r < n)
            m_selection.set(static_cast<std::size_t>(r));
    if (!rows.empty())
        m_partSelection = true;
}

void QRelationshipItemModel::initLegenedEntries(QVariant*& colorIds, QColor*& colorColours, QVariant*& symbolIds,
                                                QColor*& symbolColours, MatrixData* color, MatrixData* symbol,
                                                QMap<int, QVariant>& colorNames, QMap<int, QColor>& colorColors,
                                                QMap<int, QVariant>& symbolNames, QMap<int, QColor>& symbolColors)
{
    colorNames.clear();
    colorColors.clear();
    symbolNames.clear();
    symbolColors.clear();
    colorIds = nullptr;
    colorColours = nullptr;
    symbolIds = nullptr;
    symbolColours = nullptr;
    const int rowsX = m_nodeX ? m_nodeX->rowCount() : 0;
    if (symbol) {
        createRowIds(symbol, rowsX, symbolNames, symbolColors, symbolIds, symbolColours);
        delete m_symbolClasses;
        m_symbolClasses = newClassArray(m_nodeX, symbol, rowsX);
    }
    if (color) {
        createRowIds(color, rowsX, colorNames, colorColors, colorIds, colorColours);
        delete m_colorClasses;
        m_colorClasses = newClassArray(m_nodeX, color, rowsX);
    }
}

void QRelationshipItemModel::initColorAndSymbolAttributeData(MatrixData* symbol, MatrixData* color, int rows)
{
    if (symbol) {
        delete m_symbolClasses;
        m_symbolClasses = newClassArray(m_nodeX, symbol, rows);
    }
    if (color) {
        delete m_colorClasses;
        m_colorClasses = newClassArray(m_nodeX, color, rows);
    }
}

bool QRelationshipItemModel::setValueForLegends(int row, int index, MatrixData* color, MatrixData* symbol,
                                                QVariant* symbolIds, QColor* symbolColours, QVariant* colorIds,
                                                QColor* colorColours, bool keepUndefined)
{
    // Decide before writing, so that a rejected row leaves nothing behind in either array.
    const bool colourUndefined = color && undefinedId(colorIds, index);
    const bool symbolUndefined = symbol && undefinedId(symbolIds, index);
    if (!keepUndefined && (colourUndefined || symbolUndefined))
        return false;

    if (color && m_colorClasses) {
        const int id = colourUndefined ? -1 : colorIds[index].toInt();
        m_colorClasses->setValue(row, 0, QString::number(id, 10));
        // The label of a class is the legend's text for it; colour-mapped numbers have none.
        QVariant label;
        if (!colourUndefined && color->cellType() != QVariant::Double && color->cellType() != QVariant::Int)
            label = classLabel(color, index, id);
        m_colorClasses->setValue(row, 1, label);
        const QColor c = colourUndefined || !colorColours ? QColor() : colorColours[index];
        m_colorClasses->setValue(row, 2, c.isValid() ? QVariant(c) : QVariant());
    }
    // An undefined symbol that is kept writes nothing, and a symbol class never has a label.
    if (symbol && m_symbolClasses && !symbolUndefined) {
        m_symbolClasses->setValue(row, 0, QString::number(symbolIds[index].toInt(), 10));
        m_symbolClasses->setValue(row, 1, QVariant());
        const QColor c = symbolColours ? symbolColours[index] : QColor();
        m_symbolClasses->setValue(row, 2, c.isValid() ? QVariant(c) : QVariant());
    }
    return true;
}

// ---------------------------------------------------------------------------------------------
// Selection

bool QRelationshipItemModel::isSelected(int row) const
{
    if (row < 0 || !m_tableRow || row >= m_numberOfTableRows)
        return false;
    const int t = m_tableRow[row];
    return t >= 0 && static_cast<std::size_t>(t) < m_selection.size() && m_selection.test(static_cast<std::size_t>(t));
}

void QRelationshipItemModel::setSelected(int row, bool on)
{
    if (row < 0 || !m_tableRow || row >= m_numberOfTableRows)
        return;
    const int t = m_tableRow[row];
    if (t < 0 || static_cast<std::size_t>(t) >= m_selection.size())
        return;
    m_selection.set(static_cast<std::size_t>(t), on);
    // Clearing the last bit keeps the part selection: an empty selection then shows nothing.
    if (on)
        m_partSelection = true;
}

void QRelationshipItemModel::setSelected2(int tableRow, bool on)
{
    if (tableRow >= 0 && static_cast<std::size_t>(tableRow) < m_selection.size())
        m_selection.set(static_cast<std::size_t>(tableRow), on);
}

void QRelationshipItemModel::clearSelection()
{
    m_selection.reset();
    m_partSelection = false;
}

int QRelationshipItemModel::numberOfSelectedPoints() const
{
    if (m_displayType == ShowAll || !m_partSelection)
        return m_pointCount;
    return static_cast<int>(m_selection.count());
}

void QRelationshipItemModel::setTableRowID(int row, int tableRow)
{
    if (m_tableRow && row >= 0 && row < m_numberOfTableRows)
        m_tableRow[row] = tableRow;
}

bool QRelationshipItemModel::passesRowFilter(int modelRow) const
{
    return !m_partSelection || m_displayType != HighlightSelected || isSelected(modelRow);
}

bool QRelationshipItemModel::passesDensityFilter(int modelRow) const
{
    return !m_partSelection || m_displayType == ShowAll || isSelected(modelRow);
}

// ---------------------------------------------------------------------------------------------
// Classes

int QRelationshipItemModel::getColor(int const& row, QColor& out) const
{
    const int id = classId(m_symbolAttributeIsOn ? m_symbolClasses : m_colorClasses, row);
    out = classColour(m_data, m_colorAttributeIsOn ? m_colorClasses : m_symbolClasses, row);
    return id;
}

int QRelationshipItemModel::getColorAndSymbolInfo(int const& row, QColor& out, int& colorClass) const
{
    colorClass = -1;
    colorClass = classId(m_colorClasses, row);
    out = classColour(m_data, m_colorClasses, row);
    return classId(m_symbolClasses, row);
}

int QRelationshipItemModel::getSymbolColor(int const& row, QColor& out) const
{
    out = classColour(m_data, m_symbolClasses, row);
    return classId(m_symbolClasses, row);
}

QVariant QRelationshipItemModel::getColorName(int row) const
{
    return m_colorClasses ? m_colorClasses->value(row, 1) : QVariant();
}

void QRelationshipItemModel::changeColorClass(int id, QColor const& colour)
{
    if (!m_colorClasses)
        return;
    for (int r = 0; r < m_colorClasses->rowCount(); ++r)
        if (classId(m_colorClasses, r) == id && m_colorClasses->isValueValid(r, 0))
            m_colorClasses->setValue(r, 2, QVariant(colour));
}

void QRelationshipItemModel::changeSymbolColor(int id, QColor const& colour)
{
    if (!m_symbolClasses)
        return;
    for (int r = 0; r < m_symbolClasses->rowCount(); ++r)
        if (classId(m_symbolClasses, r) == id && m_symbolClasses->isValueValid(r, 0))
            m_symbolClasses->setValue(r, 2, QVariant(colour));
}

void QRelationshipItemModel::setSelectedColorClass(int id, bool on)
{
    if (!m_colorClasses)
        return;
    for (int r = 0; r < m_colorClasses->rowCount(); ++r)
        if (m_colorClasses->isValueValid(r, 0) && classId(m_colorClasses, r) == id)
            setSelected(r, on);
}

int QRelationshipItemModel::setSelectedSymbol(int id, bool on)
{
    if (!m_symbolClasses)
        return -1;
    int last = -1;
    for (int r = 0; r < m_symbolClasses->rowCount(); ++r) {
        if (m_symbolClasses->isValueValid(r, 0) && classId(m_symbolClasses, r) == id) {
            setSelected(r, on);
            last = r;
        }
    }
    return last;
}

// ---------------------------------------------------------------------------------------------
// Attribute values

double QRelationshipItemModel::azimuth(int row, MatrixData* node) const
{
    if (!node)
        return kNoValue;
    const QVariant v = node->value(tableRow(row), 0);
    if (!v.isValid() || v.isNull())
        return kNoValue;
    bool ok = false;
    const double d = v.toDouble(&ok);
    return ok && std::isfinite(d) ? d : kNoValue;
}

double QRelationshipItemModel::azimuthTadPole(int row) const
{
    return azimuth(row, m_tadpoleAzimuthNode);
}

bool QRelationshipItemModel::getThirdDimAttributeValue(int row, double& out) const
{
    out = 0.0;
    if (!m_thirdDimAttribute)
        return false;
    const QVariant v = m_thirdDimAttribute->value(tableRow(row), 0);
    if (!v.isValid() || v.isNull())
        return false;
    out = v.toDouble();
    return true;
}

bool QRelationshipItemModel::isThirdDimAttributeCellDefined(int row) const
{
    if (!m_thirdDimAttribute)
        return false;
    const QVariant v = m_thirdDimAttribute->value(tableRow(row), 0);
    return v.isValid() && !v.isNull();
}

bool QRelationshipItemModel::getTriangleAreaValue(int row, double& out) const
{
    if (!m_triangleAreaData)
        return false;
    out = 0.0;
    const QVariant v = m_triangleAreaData->value(tableRow(row), 0);
    if (!v.isValid() || v.isNull())
        return false;
    out = v.toDouble();
    return true;
}

QString QRelationshipItemModel::tadpoleAttributeName() const
{
    return m_tadpoleAzimuthNode ? m_tadpoleAzimuthNode->name() : QStringLiteral("None");
}

void QRelationshipItemModel::setTadPoleAzimuthDataNode(MatrixData* node)
{
    m_tadpoleAzimuthNode = node;
    m_tadpoleAttributeIsOn = node != nullptr;
}

void QRelationshipItemModel::setMinMaxRanges(double minX, double minY, double maxX, double maxY)
{
    if (!m_data)
        return;
    m_data->setMinValue(QVariant(QPointF(minX, minY)));
    m_data->setMaxValue(QVariant(QPointF(maxX, maxY)));
}

QPointF QRelationshipItemModel::minValue() const
{
    return m_data ? m_data->minValue().toPointF() : QPointF();
}

QPointF QRelationshipItemModel::maxValue() const
{
    return m_data ? m_data->maxValue().toPointF() : QPointF();
}

// ---------------------------------------------------------------------------------------------
// Item model

int QRelationshipItemModel::columnCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    int count = m_data ? m_data->columnCount() : 0;
    if (m_colorClasses)
        count += m_colorClasses->columnCount();
    if (m_symbolClasses)
        count += m_symbolClasses->columnCount();
    return count;
}

int QRelationshipItemModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() || !m_data)
        return 0;
    return m_data->validValueRowCount();
}

QVariant QRelationshipItemModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return QVariant();
    const int row = index.row();
    const int column = index.column();
    if (column == 0)
        return m_data ? m_data->value(row, 0) : QVariant();
    const MatrixDataArray* classes = nullptr;
    if (column == 2)
        classes = m_symbolAttributeIsOn ? m_symbolClasses : (m_colorAttributeIsOn ? m_colorClasses : nullptr);
    else if (column == 3)
        classes = m_colorAttributeIsOn ? m_colorClasses : (m_symbolAttributeIsOn ? m_symbolClasses : nullptr);
    return classes ? classes->value(row, column - 1) : QVariant();
}

bool QRelationshipItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    const int row = index.row();
    const int column = index.column();
    if (column == 0) {
        if (m_data)
            m_data->setValue(row, 0, value);
        touchData();
    } else {
        if (m_symbolAttributeIsOn && m_symbolClasses)
            m_symbolClasses->setValue(row, column - 1, value);
        if (m_colorAttributeIsOn && m_colorClasses)
            m_colorClasses->setValue(row, column - 1, value);
    }
    emit dataChanged(index, index);
    return true;
}

QVariant QRelationshipItemModel::headerData(int, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    return orientation == Qt::Vertical ? QStringLiteral("Ve") : QStringLiteral("Ho");
}

Qt::ItemFlags QRelationshipItemModel::flags(const QModelIndex& index) const
{
    return QAbstractItemModel::flags(index) | Qt::ItemIsEditable;
}

QModelIndex QRelationshipItemModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column);
}

QModelIndex QRelationshipItemModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

// ---------------------------------------------------------------------------------------------
// Symbols and clusters

void QRelationshipItemModel::setPointStyle(PointStyle style)
{
    m_pointStyle = style;
    m_outLinePointStyle = style == Cross || (style >= Square1 && style <= BigCross4);
}

MatrixDataArray* QRelationshipItemModel::findClusterCentroids(QString const& name) const
{
    for (MatrixDataArray* set : m_clusterCentroidSets)
        if (set && set->name().contains(name, Qt::CaseSensitive))
            return set;
    return newPointArray(name, 0);
}

MatrixDataArray* QRelationshipItemModel::clusterCentroids() const
{
    for (MatrixDataArray* set : m_clusterCentroidSets)
        if (set && set->name().contains(m_clusterAttributeName, Qt::CaseSensitive))
            return set;
    return nullptr;
}

} // namespace rkBase

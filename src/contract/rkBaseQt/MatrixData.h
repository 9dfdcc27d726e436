#pragma once
// A node of the data tree that the analyser shows: the root, a group (a well, a marker set, a
// sheet) or a column (an attribute) holding one value per row. All views read and write cells
// through this class; none keeps a private copy.
//
// Rules this tree keeps where callers could otherwise guess:
// - A group is a node built with rows -1 and columns -1, or any node that holds children; a
//   column is built with a row count.
//   A column whose checkStateActive() is set has a second, Bool column (column 1) for ticks.
// - A write at or past the allocated rows grows the column with blank cells; a write with a
//   negative row, or a value that does not convert to the cell type, is refused (false).
// - checkValidRowCount() sets each column's valid-row count to one past its last valid cell and
//   then aligns all columns of a group to the longest one, so that a record keeps its row even
//   when its last cells are blank.
// - NaN and infinite doubles are stored and shown, but never counted in minimum, maximum, mean
//   or standard deviation.
// - hasOrientationData(): some column below holds Double cells in the orientation unit category,
//   or is named like an orientation ("dip", "azimuth", "strike", "plunge", "dip direction",
//   case-insensitive).
// - A column shows (getNode, numberOfSelectedItems, the combo-box lists, CSV export) when it
//   is ticked, visible to the user, and no group between it and the node asked is unticked.
// - getDataSetSelectionBoxItems() lists the shown columns; the id of an entry is its
//   position in getNode() order. Collections: AllAttributes (0) every column; NumericAttributes (1)
//   Double and Int columns; ColorAttributes (2) Color, Icon, KeySequence, Int, Double and String
//   columns (anything a colour map or a colour table can colour); SymbolAttributes (3) Int, Icon,
//   KeySequence, String and Bool columns (discrete classes); OrientationAttributes (4) columns
//   that count as orientation data (see above); PitchAndGroupAttributes (5) orientation columns
//   plus Int, Icon, KeySequence and String columns that can group orientation rows.
// - isVertex() is a flag set by whoever builds the coordinate columns (setVertex).

#include <QColor>
#include <QHash>
#include <QList>
#include <QMap>
#include <QModelIndex>
#include <QPointF>
#include <QString>
#include <QVariant>

#include <boost/dynamic_bitset.hpp>
#include <boost/shared_ptr.hpp>

#include <memory>
#include <string>
#include <vector>

class QDataStream;
class QMimeData;
class QWidget;

namespace rkBase {

class AbstractMatrixDataID;
class CellColumn;
class LassoEdgeTable;
class MatrixDataRestore;
class UnitManager;
class UnitRegistry;

class MatrixData
{
public:
    enum AttributeCollection {
        AllAttributes = 0,
        NumericAttributes = 1,
        ColorAttributes = 2,
        SymbolAttributes = 3,
        OrientationAttributes = 4,
        PitchAndGroupAttributes = 5
    };

    // What the value column of a frequency table holds (see newFrequencyData).
    enum HistogramType {
        Frequency = 0,                  // values per bin
        RelativeFrequency = 1,          // percent of the values counted
        CumulativeRelativeFrequency = 2 // percent of the values up to the bin's end
    };

    // The last argument allows a column to grow when written past its end; it is true in every
    // use and kept for the callers that pass it.
    MatrixData(const QString& name, int rows, int columns, QVariant::Type type, bool growOnWrite = true);
    // Deep copy of values and settings; children too when withChildren. The copy has no parent
    // and no undo list.
    MatrixData(const MatrixData& other, bool withChildren = true);
    MatrixData& operator=(const MatrixData& other);

    // ---- virtual operations; the order is part of the binary interface, keep it ----
    virtual ~MatrixData();
    virtual void initialize(int rows, int columns);
    virtual int rowCount() const;
    virtual int columnCount() const;
    // Row -1 appends. Returns the row inserted, or -1.
    virtual int insertRowAtPos(int row);
    // Inserts one blank row before (before = true) or after each listed row, processed so
    // that earlier insertions do not shift later ones. Returns the first new row, or -1.
    // markerMode is accepted for callers that insert marker rows; rows are blank either way.
    virtual int insertRowsAtPos(const QList<int>& rows, bool before, bool markerMode);
    // Undo half of an insertion: rows are the rows the insertion produced.
    virtual void unInsertRowAtPos(const QList<int>& rows, bool recursive);
    virtual void reInsertRowAtPos(const QList<int>& rows, bool recursive);
    virtual void incrementRows(int count);
    virtual void decrementRows(int count);
    virtual bool removeRowFromEachColumn(int row);
    virtual void removeRowsFromEachColumn();
    // Rows may come in any order; duplicates and rows out of range are ignored.
    virtual bool removeRowsFromEachColumn(const QList<int>& rows, bool recursive);
    // values: one value per column under this node, in leafs() order.
    virtual void unRemoveRowFromEachColumn(int row, const QList<QVariant>& values);
    // values: for each column in leafs() order, one value per row in ascending row order.
    virtual void unRemoveRowsFromEachColumn(const QList<int>& rows, const QList<QVariant>& values, bool recursive);
    virtual void reRemoveRowFromEachColumn(int row, bool recursive);
    virtual void reRemoveRowsFromEachColumn(const QList<int>& rows, bool recursive);
    virtual void computeRowIndices() const;
    virtual bool isNodeEditable() const;
    virtual void setNodeEditable(bool editable);
    virtual bool isValueEditable(int row, int column) const;
    virtual bool isValueValid(int row, int column) const;
    // A combo box listing the lookup table, or null when the column has none.
    virtual QWidget* comboBoxEditor(QWidget* parent) const;
    virtual QWidget* comboBoxEditor(QWidget* parent, const QModelIndex& index) const;
    virtual QVariant value(const QModelIndex& index) const;
    virtual QVariant value(int row, int column) const;
    virtual QVariant rawValue(const QVariant& userText) const;
    virtual QVariant rawValue(int row) const;
    virtual QVariant rawValue(const QModelIndex& index) const;
    virtual double toDouble(int row, int column) const;
    virtual int toInt(int row, int column) const;
    virtual double toDisplayDouble(const QVariant& value) const;
    virtual bool setValue(int row, const QVariant& value);
    virtual bool setValue(const QModelIndex& index, const QVariant& value);
    virtual bool setValue(int row, int column, const QVariant& value);
    virtual void clearWriteContainer(int row);
    virtual void removeRowIndices(int row);
    virtual void setInt(int row, int column, const int& value);
    virtual QVariant minValue() const;
    virtual QVariant maxValue() const;
    virtual QVariant meanValue() const;
    virtual void setMinValue(const QVariant& value);
    virtual void setMeanValue(const QVariant& value);
    virtual void setMaxValue(const QVariant& value);
    virtual void setMinMax(const int& column, const boost::dynamic_bitset<>& rows);
    virtual bool getMinMaxForColumn(const int& column, double& min, double& max, double& mean, int& count,
                                    const boost::dynamic_bitset<>& rows) const;
    virtual void setMatrixDataID(AbstractMatrixDataID* id);
    virtual bool hasWriteValues() const;
    virtual void appendColumns(int count);
    virtual void appendRows(int count);
    // ---- end of the ordered virtual operations ----

    static QVariant::Type systemType(const QString& typeName);
    static QString systemTypeName(QVariant::Type type);
    // Plunge and azimuth (degrees, lower hemisphere) of the line that lies in the plane of the
    // given dip and dip direction at the given pitch. Pitch is measured in the plane from the
    // strike end at dip direction - 90 towards the dip line, so 0 and 180 are the two strike
    // ends and 90 is the dip line.
    static void plungeAndAzimuth(double& plunge, double& azimuth, const double& dip, const double& dipDirection,
                                 const double& pitch);
    // The same, with the pitch measured from the strike end that pitchDirection names: a compass
    // point ("N", "NE", "SSW", "north", ...) or an azimuth in degrees. The strike end nearer to it
    // is taken; an empty, unknown or undecided direction (one at right angles to the strike)
    // measures from dip direction - 90 as above.
    static void plungeAndAzimuth(double& plunge, double& azimuth, const double& dip, const double& dipDirection,
                                 const double& pitch, const QString& pitchDirection);

    // Contouring kernels on one triangle of a grid (x, y, values: its three vertices; values
    // vary linearly inside). outX and outY must hold at least 8 entries. A NaN or infinite
    // coordinate or value gives count 0.
    //
    // calculatePolygon: the part of the triangle where low <= v <= high, as a convex polygon in
    // the triangle's winding order (count 0, or 3 to 5). A band that touches the triangle only
    // along a level line gives 0, never a sliver of two points. A flat triangle (all three
    // values equal) belongs to the band with low <= v < high, so of two adjacent bands exactly
    // one claims it; a triangle flat at the very top level is claimed by no band unless the
    // caller passes a higher (or infinite) high for the last band. The bands of one triangle
    // tile it; low and high may be infinite, low >= high gives 0. Crossing points are computed
    // from the lower-valued end of each edge, so neighbouring triangles and bands share them
    // exactly.
    static void calculatePolygon(const double* x, const double* y, const double* values, double low, double high,
                                 double* outX, double* outY, int& count);
    // calculateIsoline: the segment where v == level (count 2), or count 0. A level through a
    // vertex gives that vertex once; a level touching only a vertex gives 0; a flat triangle on
    // the level gives 0. An edge lying on the level is given only by the triangle whose third
    // vertex is above it, so a contour along a shared edge is drawn once.
    static void calculateIsoline(const double* x, const double* y, const double* values, double level,
                                 double* outX, double* outY, int& count);

    // ---- tree ----
    QString name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString interfaceName() const { return m_interfaceName; }
    void setInterfaceName(const QString& name) { m_interfaceName = name; }
    // Changes the proposed name so that no node under this one bears it ("name", "name_1", ...).
    void createUniqueName(QString& name) const;

    MatrixData* parent() const { return m_parent; }
    void setParent(MatrixData* parent) { m_parent = parent; }
    MatrixData* child(int i) const;
    int childCount() const { return static_cast<int>(m_children.size()); }
    const QList<MatrixData*>& children() const { return m_children; }
    int indexOfChild(const MatrixData* node) const { return m_children.indexOf(const_cast<MatrixData*>(node)); }
    MatrixData* root() const;
    // Built as a group, or holding children: either way its rows are its columns' rows.
    bool isGroup() const { return m_group || !m_children.isEmpty(); }

    void appendChild(MatrixData* node, bool isGroup);
    void insertChild(int position, MatrixData* node);
    // Detaches without deleting; the caller owns the node afterwards.
    bool removeChild(MatrixData* node);

    MatrixData* getNode(int n) const;
    MatrixData* getNodeFromName(const QString& name) const;
    MatrixData* getFirstChildWithData() const;
    QList<MatrixData*> leafs() const;
    // The columns a table shows, in getNode() order: ticked, visible to the user, and not under
    // an unticked group.
    QList<MatrixData*> shownLeafs() const;

    bool visibleToUser() const { return m_visibleToUser; }
    void setVisibleToUser(bool visible) { m_visibleToUser = visible; }
    bool isVertex() const { return m_vertex; }
    void setVertex(bool vertex) { m_vertex = vertex; }
    bool hasOrientationData() const;
    bool isOrientationColumn() const;

    bool isSelected() const { return m_selected; }
    // recursive: also tick or untick every node below.
    void setSelected(bool selected, bool recursive);
    int numberOfSelectedItems() const;
    // Rows a table shows for the ticked columns: with a row list of listSize entries, that many
    // (stepped); otherwise the longest valid-row count, stepped as the table steps through it.
    int maxNumbOfSelectedRows(int stepSize, int listSize) const;

    bool isNodeComputed() const { return m_computed; }
    void setNodeComputed(bool computed) { m_computed = computed; }
    bool isNodeRenamable() const { return m_renamable; }
    void setNodeRenamable(bool renamable) { m_renamable = renamable; }
    bool nodeCanBeBlank() const { return m_canBeBlank; }
    void setNodeCanBeBlank(bool canBeBlank) { m_canBeBlank = canBeBlank; }

    int nodeId() const { return m_nodeId; }
    static void resetGlobalIDCounter();
    AbstractMatrixDataID* matrixDataID() const { return m_matrixDataID.get(); }

    // ---- cells and rows ----
    QVariant::Type cellType() const { return m_cellType; }
    void setCellType(QVariant::Type type);
    // The cell type the node reports, its cells left as they are stored: for a table whose
    // cells describe cells of another type (a chart's class per point keeps an attribute's
    // colour classes as text).
    void setNominalCellType(QVariant::Type type) { m_cellType = type; }
    bool isValueAllowed(const QVariant& value) const;
    void setAllowedRange(double min, double max);
    void insertValue(int row, const QVariant& value);
    void appendOneRowForEachColumn();

    int validValueRowCount() const { return m_validRows; }
    void setValidValueRowCount(int count);
    void checkValidRowCount();
    int startRowCount() const { return m_startRows; }
    void setStartRowCount(int row);
    // Sets the valid-row count to the allocated rows (onlyGrow: never lower it).
    void resetRowCount(bool onlyGrow);

    bool checkStateActive() const { return m_checkStateActive; }
    void setCheckStateActive(bool active);
    bool checkStateRoleExclusive() const { return m_checkStateExclusive; }
    void setCheckStateRoleExclusive(bool exclusive) { m_checkStateExclusive = exclusive; }

    QVariant defaultValue1() const { return m_default1; }
    void setDefaultValue1(const QVariant& value);
    double defaultValue2() const { return m_default2; }
    void setDefaultValue2(double value) { m_default2 = value; }

    // ---- units ----
    UnitRegistry* registry() const;
    void setRegistry(UnitRegistry* registry) { m_registry = registry; }
    boost::shared_ptr<UnitManager> unitManager() const { return m_unitManager; }
    void setUnitManager(const std::string& category);
    void setUnitManager(const QString& category);
    void setUnitManager(boost::shared_ptr<UnitManager> manager) { m_unitManager = manager; }
    QString unitCategory() const;
    int unitPrecision() const;
    QString displayUnitTag() const;
    QString nodeUnitTag() const;
    int nodeUnitKey() const { return m_nodeUnitKey; }
    void setNodeUnitKey(int key) { m_nodeUnitKey = key; }
    double convertModelToDisplay(const double& value) const;
    double convertDisplayToModel(const double& value) const;
    double convertNodeUnit(double value) const;
    QString printValue(double value) const;

    // ---- colour and lookup ----
    QColor color() const { return m_color; }
    void setColor(const QColor& color) { m_color = color; }
    // The next colour of a fixed cycle of distinct colours; reset restarts the cycle.
    static QColor getDefaultColor(bool reset);
    QString colorHexaString() const;
    static QColor colorFromHexaString(QString text);
    QColor color(const QModelIndex& index) const;
    // A lookup colour, a colour name, the colour map's colour for a number of a numeric
    // column, or else one stable colour per text.
    QColor color(const QString& valueText) const;
    QColor cellColor(int row) const;
    QColor minMaxMeanColor(const QModelIndex& index) const;
    double colorMapStepSize() const { return m_colorMapStep; }
    void setColorMapStepSize(double step) { m_colorMapStep = step; }
    bool flipColorMap() const { return m_flipColorMap; }
    void setFlipColorMap(bool flip) { m_flipColorMap = flip; }

    bool isLookupTableEmpty() const { return m_lookup.isEmpty(); }
    QMap<QString, QVariant> lookupTable() const { return m_lookup; }
    void setLookupTable(const QMap<QString, QVariant>& table) { m_lookup = table; }
    void addLookupValue(int key, const QVariant& value);
    bool lookupTableContains(int key) const;
    QVariant lookupTableValue(int key) const;

    // Class id -> label and class id -> colour, for legends. Ids are the distinct values of a
    // discrete column (lookup keys, integers, or the order of first appearance of a text).
    void createSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors) const;
    void createSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors, const std::vector<int>& rows) const;
    // For continuous columns: one class per colour-map step over the colour range, coloured as
    // the stepped colour map colours that band. The range is the column's minValue() and
    // maxValue() (the summary, or what a chart's colour settings put there), or the values'
    // extent over the rows while those are not set. A step of 0 or 99999.0 means none of its own:
    // ten classes. At most kMaxColorMapClasses classes; a finer step is widened.
    static constexpr int kMaxColorMapClasses = 1000;
    void createColorMapSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors) const;
    void createColorMapSymbolIDs(QMap<int, QString>& names, QMap<int, QColor>& colors, const std::vector<int>& rows) const;
    // Class id of one row under the maps built above, or -1.
    int symbolID(int row) const;
    int colorMapSymbolID(int row) const;
    // The same for a value: its class under the last createColorMapSymbolIDs, or -1.
    int colorMapSymbolIDOfValue(double value) const;

    void getDataSetSelectionBoxItems(QList<QString>& names, QList<int>& ids, QList<QColor>& colors,
                                     AttributeCollection collection, bool withHidden) const;

    // ---- statistics ----
    QString minName() const { return m_minName; }
    QString maxName() const { return m_maxName; }
    QString meanName() const { return m_meanName; }
    void setMinName(const QString& name) { m_minName = name; }
    void setMaxName(const QString& name) { m_maxName = name; }
    void setMeanName(const QString& name) { m_meanName = name; }
    void setMinMax(const int& column, const std::vector<int>& rows);
    // Over this column (or, on a group, over all its numeric columns). Empty rows: all rows.
    bool getMinMax(double& min, double& max, double& mean, const boost::dynamic_bitset<>& rows) const;
    double standardDeviation() const;
    // Mean direction of column 0 taken as azimuths (degrees) over the rows (empty: all valid
    // rows), the direction of the sum of unit vectors. resultant is that sum's length divided by
    // the number of values, 0 to 1. Blank, non-finite and 99999.0 cells are skipped. With no
    // value, or a sum shorter than a millionth of the count (opposed directions cancelling out),
    // the direction is 99999.0 and resultant 0.
    double resultantMeanDirection(double& resultant, const std::vector<int>& rows) const;

    // ---- frequency tables ----
    // A frequency table is a MatrixDataArray of Double with one row per bin and three columns:
    //   0 the value (HistogramType: count, percent, or cumulative percent at the bin's end),
    //   1 the bin's start, 2 the bin's end.
    // Its validValueRowCount() is the number of values counted (the sample size n), which
    // can exceed the bins: walk the bins with rowCount(). The caller owns the table; it is never
    // null, and a table without bins (rowCount() 0) is the answer to input that has nothing to
    // count. minValue() and maxValue() are the first bin's start and the last bin's end.
    //
    // Histogram of column 0 of this node (Double or Int cells) over rows; an empty list means
    // every valid row when emptyMeansAllRows, and nothing otherwise. Blank, NaN and infinite
    // cells are not counted. Bins start at the smallest value: bin k is
    // [min + k * interval, min + (k + 1) * interval), and the last bin also holds the maximum.
    // interval is read and written back: 99999.0, 0, a negative or a non-finite interval asks
    // for the automatic one (below); an interval that would make more than kMaxFrequencyBins
    // bins is widened to range / (kMaxFrequencyBins - 1). All values equal give one bin.
    // Automatic interval (Freedman-Diaconis): h = 2 * IQR / cbrt(n), with IQR the distance
    // between the quartiles (linear interpolation between order statistics); when the IQR is 0,
    // h = range / (ceil(log2 n) + 1) (Sturges); then h is rounded to the nearest 1, 2 or 5 times
    // a power of ten (on a log scale). With a range of 0 the interval is |value| / 10 rounded the
    // same way, or 1 for zero.
    // useSmallValues false leaves out values whose magnitude is below a millionth of the largest
    // magnitude among them (zeros among them): the placeholder zeros some logs carry for blanks.
    // dataRoot, when it has a unit registry, gives the table that registry and this node's unit
    // manager, so the interval columns print in the node's units.
    static constexpr int kMaxFrequencyBins = 100000;
    MatrixData* newFrequencyData(double& interval, HistogramType type, const std::vector<int>& rows,
                                 bool emptyMeansAllRows, const MatrixData* dataRoot, bool useSmallValues) const;
    // Rose bins of the azimuths in the given column of direction over rows (empty: all valid
    // rows). Bin i is [i * interval, (i + 1) * interval) degrees clockwise from north, for
    // binCount bins at most floor(360 / interval) (at least 1, at most kMaxFrequencyBins); the
    // last bin reaches to 360 and its end column says so. Azimuths are folded into 0..360
    // (-10 counts as 350, 370 as 10); blank, non-finite and 99999.0 cells are skipped. With
    // unidirectional false every azimuth is counted in its own bin and in the opposite one
    // (a + 180): percentages are then of the 2n contributions.
    // values gets, per bin, the classNode cell of each contribution (one entry per count,
    // an invalid QVariant for a blank cell): colours as their QRgb (uint), numbers as double,
    // anything else as the stored value. Without a classNode values is left empty.
    // An interval that is not a positive finite number, a binCount below 1 or a null direction
    // give a table without bins.
    static MatrixData* newFrequencyData(double interval, int binCount, int column, HistogramType type,
                                        const std::vector<int>& rows, const MatrixData* direction,
                                        const MatrixData* classNode, std::vector<std::vector<QVariant>>& values,
                                        bool unidirectional);
    // The curve of a cumulative table: a two-column table, column 0 the value and column 1 the
    // position, starting at (0, start of the first bin) and then (value, end) for each bin;
    // consecutive points of equal value (empty bins) are merged into one at their mean position,
    // so both columns rise strictly and the curve can be read either way. valueColumn is the
    // value column, intervalColumn the column of bin starts, followed by the column of bin ends
    // (newFrequencyData's layout: reduceToAveraged(0, 1)). Rows with a non-finite cell are
    // skipped; missing columns give an empty curve. The caller owns the curve.
    MatrixData* reduceToAveraged(int valueColumn, int intervalColumn) const;
    // Linear interpolation of yColumn at x along xColumn, rows taken in order: the first pair of
    // consecutive rows whose x values bracket x gives the answer; x outside the span gives the y
    // of the nearer end. On a curve from reduceToAveraged, getInterpolationValue(50.0, 0, 1) is
    // the median and getInterpolationValue(x, 1, 0) the cumulative percent at x. An empty
    // table, a missing column or a NaN x gives 99999.0.
    double getInterpolationValue(double x, int xColumn, int yColumn) const;
    // The automatic interval of newFrequencyData for these values (sorted or not; they are
    // reordered). NaN for no values.
    static double automaticFrequencyInterval(std::vector<double>& values);
    // h rounded to the nearest 1, 2 or 5 times a power of ten; NaN for h <= 0 or not finite.
    static double niceInterval(double h);

    // The bar chart's filter: how many consecutive rows one bar stands for. A step fixed on this
    // node by setDefaultFilterStepSize (kept with the node in streams) wins; otherwise it is the
    // smallest of 1, 2, 5, 10, 20, 50, ... that leaves at most kDefaultFilterBars bars for the
    // given rows (rows <= 0: this node's valid rows). Always at least 1.
    static constexpr int kDefaultFilterBars = 100;
    int defaultFilterStepSize(int rows) const;
    // A step below 1 is refused (false) and leaves the rule above in force.
    bool setDefaultFilterStepSize(int step);
    // Back to the rule: forgets a fixed step.
    void resetDefaultFilterStepSize();
    // Adds "Measured Depth" to every group below that has vertex columns and lacks one: the
    // running 3D distance along the rows. Returns the number of columns created.
    int createMeasuredDepth();
    // On a one-column PointF node: true when the point lies inside the polygon through its
    // valid rows, taken in row order and closed back to the first. A point on an edge or a
    // vertex (within a billionth of the polygon's extent) is inside; a self-crossing outline
    // counts by the even-odd rule, as the lasso is filled. False for fewer than three usable
    // vertices (blank or non-finite points are skipped), a non-finite point, or a node that
    // does not hold points.
    // The first call prepares the outline (its edges sorted by height) and later calls reuse it
    // until the column changes, so testing a million points costs about as much as drawing them.
    // Like the other caches of a node, that preparation is not guarded against two threads
    // asking the same node at once.
    bool pointInOrOut(const QPointF& point) const;

    // ---- undo ----
    // Takes ownership. Drops any actions that were undone and not redone. changesData is false
    // for cosmetic actions (an attribute colour) so that a host need not recompute after them.
    void appendUndoAction(MatrixDataRestore* action, bool changesData);
    int sizeUndoActions() const { return static_cast<int>(m_undoActions.size()); }
    MatrixDataRestore* undoAction(int i) const;
    // The count of actions currently applied; undoLastAction/redoNextAction move it.
    int undoPosition() const { return m_undoPosition; }
    bool undoLastAction();
    bool redoNextAction();
    void clearUndoActions();

    // ---- streams and text ----
    void putDataOnStream(QDataStream& stream, bool withChildren) const;
    void putDataOnStream(int row, QDataStream& stream, bool withChildren) const;
    // False, with this node untouched, for anything not written by putDataOnStream.
    bool getDataFromStream(QDataStream& stream);
    static void setHTML_MimeData(QMimeData* data, const std::vector<MatrixData*>& columns, const std::vector<int>& rows);
    // Writes the ticked columns under this node. rowMask: null for all rows, else one bool per
    // row. withFieldData writes the stored values as they are; otherwise Double cells are
    // written in display units. withUnitTags adds the unit tag to the column names; onlyTicked
    // limits the output to ticked columns; withHeader writes the header row.
    bool writeCSV(const QString& fileName, bool* rowMask, bool withFieldData, bool withUnitTags, bool allColumns,
                  bool withHeader, QWidget* parent) const;

    // Allocated rows of every cell column of a column node; the valid-row count is capped to it.
    void setAllocatedRowCount(int rows);
    // Read-only typed storage of one cell column, for numeric walks over millions of rows that
    // cannot afford a QVariant per cell. Null for a column that does not exist.
    const CellColumn* cellColumn(int column) const { return cells(column); }
    // The same storage for walks that fill millions of cells of a node they built themselves
    // (a rotated copy, a plot's columns); anything a node derives from its cells is theirs to
    // keep in step. Null for a column that does not exist.
    CellColumn* writableCellColumn(int column) { return cells(column); }
    // Writes a point into column 0 without a QVariant, for walks that write millions of points;
    // anything the typed store cannot take goes through setValue().
    bool setPointValue(int row, const QPointF& value);
    // The same for a finite number into a Double column; anything else goes through setValue().
    bool setDoubleValue(int row, int column, double value);
    // Memory held by the cells of this node (not its children).
    std::size_t cellMemoryBytes() const;

protected:
    friend class MatrixDataRestore;
    CellColumn* cells(int column) const;
    void copySettingsFrom(const MatrixData& other);
    void writeNode(QDataStream& stream, bool withChildren, int onlyRow) const;
    bool readNode(QDataStream& stream, int depth);
    int groupRowCount() const;
    // The colour range and the class step that the colour-map functions share.
    bool colorMapRange(double& min, double& max, const boost::dynamic_bitset<>& rows) const;
    double colorMapClassStep(double min, double max) const;
    QColor colorMapColor(double value) const;
    QList<MatrixData*> columnsForRows() const;

    QString m_name;
    QString m_interfaceName;
    MatrixData* m_parent = nullptr;
    QList<MatrixData*> m_children;
    QVariant::Type m_cellType;
    bool m_group = false;
    bool m_growOnWrite = true;
    std::vector<std::unique_ptr<CellColumn>> m_columns;
    int m_validRows = 0;
    int m_startRows = 0;

    QColor m_color;
    boost::shared_ptr<UnitManager> m_unitManager;
    int m_nodeUnitKey = -1;
    UnitRegistry* m_registry = nullptr;
    bool m_selected = true;
    bool m_computed = false;
    bool m_editable = true;
    bool m_renamable = true;
    bool m_canBeBlank = true;
    bool m_visibleToUser = true;
    bool m_vertex = false;
    bool m_checkStateActive = false;
    bool m_checkStateExclusive = false;
    QVariant m_default1;
    double m_default2 = 0.0;
    QVariant m_minValue;
    QVariant m_maxValue;
    QVariant m_meanValue;
    QString m_minName;
    QString m_maxName;
    QString m_meanName;
    bool m_hasRange = false;
    double m_rangeMin = 0.0;
    double m_rangeMax = 0.0;
    QMap<QString, QVariant> m_lookup;
    double m_colorMapStep = 0.0;
    bool m_flipColorMap = false;
    int m_defaultFilterStep = -1;
    int m_nodeId = 0;
    std::unique_ptr<AbstractMatrixDataID> m_matrixDataID;

    // Text or colour of a discrete class -> class id, filled by createSymbolIDs.
    mutable QHash<QString, int> m_symbolIndex;
    mutable double m_classMin = 0.0;
    mutable double m_classStep = 0.0;
    mutable int m_classCount = 0;
    // pointInOrOut's prepared outline of column 0; it knows whether the column has changed since.
    mutable std::unique_ptr<LassoEdgeTable> m_lassoEdges;

    std::vector<MatrixDataRestore*> m_undoActions;
    int m_undoPosition = 0;
};

} // namespace rkBase

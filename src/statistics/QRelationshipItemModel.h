#pragma once
// The point set behind every chart: two columns of the data tree paired row by row into one
// list of points, with the mapping back to the table rows, the row selection, the colour and
// symbol class of each point, and the orientation results computed on that list.
//
// Rules kept here that callers could otherwise guess:
// - A model row is an index into data(); tableRow(r) is the table row it came from. Selection
//   bits are indexed by table row, never by model row.
// - A load skips a row whose x or y cell is blank, not a number, NaN or infinite (its selection
//   bit is cleared), so no non-finite point ever enters data().
// - No function checks a model row against the list; callers pass valid rows.
// - Orientations are QPointF in degrees: x the dip or plunge, y the dip direction or azimuth.

#include "DepthLineField.h"
#include "MatrixDataArray.h"
#include "OrientationDensity.h"
#include "StereoNetGeometry.h"
#include "gdfVertex.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QMap>
#include <QPointF>
#include <QString>
#include <QVariant>

#include <boost/dynamic_bitset.hpp>

#include <vector>

class QPainter;

namespace rkBase {

class QRelationshipItemModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum DisplayType { ShowAll = 0, ShowSelectedOnly = 1, HighlightSelected = 2 };

    // Symbols of the charts. Styles 1 and 8 to 15 are drawn as outlines.
    enum PointStyle {
        Circle = 0,
        Cross = 1,
        Square = 2,
        Triangle1 = 3,
        Triangle2 = 4,
        Diamond = 5,
        BigCross1 = 6,
        BigCross2 = 7,
        Square1 = 8,
        Triangle3 = 9,
        Triangle4 = 10,
        Diamond1 = 11,
        Ring = 12,
        Dot = 13,
        BigCross3 = 14,
        BigCross4 = 15
    };

    explicit QRelationshipItemModel(QObject* parent = nullptr);
    ~QRelationshipItemModel() override;

    // ---- hooks for a model that a host derives; the order is part of the binary interface ----
    virtual double getStressOverlay(double dip, double azimuth, double& sigma1, double& sigma2, double& sigma3);
    virtual MatrixData* stressValueNode() const;
    // Sets the outputs to a harmless value (zeros, invalid colour) in this class.
    virtual void slipDirection(double dip, double azimuth, double& slipDip, double& slipAzimuth, double& shear,
                               double& normal, QColor& colour, bool isPole);
    virtual void clearData();
    // ---- end of the ordered virtual operations ----

    // ---- load ----
    // colorNames, colorColors, symbolNames and symbolColors are outputs: the legend entries.
    void takeNewDataSet(int step, DisplayType displayType, MatrixData* x, MatrixData* y, MatrixData* color,
                        MatrixData* symbol, bool keepUndefined, std::vector<int> const& selectedRows,
                        QMap<int, QVariant>& colorNames, QMap<int, QColor>& colorColors,
                        QMap<int, QVariant>& symbolNames, QMap<int, QColor>& symbolColors);
    void takeNewDataSet(int step, DisplayType displayType, MatrixData* x, MatrixData* y,
                        std::vector<int> const& selectedRows);
    void takeNewDataSet(MatrixData* x, MatrixData* y, DisplayType displayType);

    // For callers that fill the arrays themselves (setTableRowID, setValueForLegends).
    void initSelection(MatrixData* node, std::vector<int> const& rows);
    // The id arrays are allocated with new[] (one entry per row of the attribute node, or null
    // without that attribute); the caller frees them with delete[].
    void initLegenedEntries(QVariant*& colorIds, QColor*& colorColours, QVariant*& symbolIds, QColor*& symbolColours,
                            MatrixData* color, MatrixData* symbol, QMap<int, QVariant>& colorNames,
                            QMap<int, QColor>& colorColors, QMap<int, QVariant>& symbolNames,
                            QMap<int, QColor>& symbolColors);
    void initColorAndSymbolAttributeData(MatrixData* symbol, MatrixData* color, int rows);
    // Returns false when the row was rejected (undefined colour class and !keepUndefined).
    bool setValueForLegends(int row, int index, MatrixData* color, MatrixData* symbol, QVariant* symbolIds,
                            QColor* symbolColours, QVariant* colorIds, QColor* colorColours, bool keepUndefined);

    // Flagged "SCAT" rows of dip and azimuth data stay out of a load unless taken.
    void takeSCATData(bool take) { m_scatDataTaken = take; }
    bool scatDataTaken() const { return m_scatDataTaken; }

    // Bumped whenever the points in data() change, so that per-point caches can be checked.
    quint64 dataRevision() const { return m_dataRevision; }
    void touchData() { ++m_dataRevision; }

    // ---- selection ----
    bool isSelected(int row) const;
    void setSelected(int row, bool on);
    void setSelected2(int tableRow, bool on);
    void clearSelection();
    int numberOfSelectedPoints() const;
    boost::dynamic_bitset<unsigned long> const& selection() const { return m_selection; }
    bool partSelection() const { return m_partSelection; }
    void setPartSelection(bool on) { m_partSelection = on; }
    int tableRow(int row) const { return m_tableRow && row >= 0 && row < m_numberOfTableRows ? m_tableRow[row] : -1; }
    void setTableRowID(int row, int tableRow);
    int numberOfTableRows() const { return m_numberOfTableRows; }
    // Whether statistics take this point: no part selection, or selected, or not highlighting.
    bool passesRowFilter(int modelRow) const;
    // Whether density counting takes this point: no part selection, or selected, or ShowAll.
    bool passesDensityFilter(int modelRow) const;

    // ---- classes ----
    int getColor(int const& row, QColor& out) const;
    int getColorAndSymbolInfo(int const& row, QColor& out, int& colorClass) const;
    int getSymbolColor(int const& row, QColor& out) const;
    QVariant getColorName(int row) const;
    void changeColorClass(int id, QColor const& colour);
    void changeSymbolColor(int id, QColor const& colour);
    void setSelectedColorClass(int id, bool on);
    int setSelectedSymbol(int id, bool on);

    // ---- attribute values, by model row; 99999.0 means no value ----
    double azimuth(int row, MatrixData* node) const;
    double azimuthTadPole(int row) const;
    // Does not guard against a null thirdDimAttribute(); callers test it first.
    bool getThirdDimAttributeValue(int row, double& out) const;
    bool isThirdDimAttributeCellDefined(int row) const;
    bool getTriangleAreaValue(int row, double& out) const;
    QString tadpoleAttributeName() const;
    void setMinMaxRanges(double minX, double minY, double maxX, double maxY);
    QPointF minValue() const;
    QPointF maxValue() const;

    // ---- item model ----
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& index) const override;

    // ---- symbols ----
    void setPointStyle(PointStyle style);
    PointStyle pointStyle() const { return m_pointStyle; }
    bool outLinePointStyle() const { return m_outLinePointStyle; }
    bool drawSymbols() const { return m_symbolAttributeIsOn || m_colorAttributeIsOn; }
    int pointPixelSize() const { return m_pointPixelSize; }
    void setPointPixelSize(int size) { m_pointPixelSize = size; }
    bool symbolColorOnly() const { return m_symbolColorOnly; }
    void setSymbolColorOnly(bool on) { m_symbolColorOnly = on; }

    // ---- clusters ----
    // The first set whose name contains name; otherwise a new empty array the caller owns.
    MatrixDataArray* findClusterCentroids(QString const& name) const;
    // The first set whose name contains clusterAttributeName(), or null.
    MatrixDataArray* clusterCentroids() const;
    // k-means over the points that pass the statistics row filter; the centres table (named by
    // the run, taken from findClusterCentroids) is appended to clusterCentroidSets() on every
    // run, so a repeated name stands in the list more than once. Returns whether a run happened.
    // - Plane run: (x, y, third) in three dimensions, the third 0 without thirdDimAttribute();
    //   rows whose third cell is blank, invalid or not finite stay out. Stops, keeping the old
    //   clusters, unless k > 1, the model has more than one row and k <= its rows. Table
    //   columns: 0 the centre (x, y), 1 (distortion, 0), 2 (third, 0) with a third dimension.
    bool buildClusters_KML(const QString& name, int k);
    // - Stereo run: each orientation (dip, dip direction) as its pole's unit vector. Frees the
    //   old cluster IDs first, then stops unless 0 < k < the number of orientations (k = 1
    //   runs). Table columns: 0 the centre as (dip, azimuth), 1 (distortion, 0).
    // Distortion: the sum of squared distances from the centre to its points. IDs: one per
    // model row, -1 for a row the run left out, given in row order to the rows the run took.
    bool buildClusters_KML_ForStereoProjection(const QString& name, int k);
    bool hasClusterIDs() const { return m_clusterIDs != nullptr; }
    int clusterIDCount() const { return m_clusterIDs ? m_clusterIDCount : 0; }
    int clusterID(int row) const
    {
        return m_clusterIDs && row >= 0 && row < m_clusterIDCount ? m_clusterIDs[row] : -1;
    }
    std::vector<MatrixDataArray*> const& clusterCentroidSets() const { return m_clusterCentroidSets; }
    int* clusterIDs() const { return m_clusterIDs; }
    QString clusterAttributeName() const { return m_clusterAttributeName; }
    void setClusterAttributeName(QString const& name) { m_clusterAttributeName = name; }

    // ---- plain members ----
    bool foldToLowerHemisphere() const { return m_foldToLowerHemisphere; }
    MatrixDataArray* contourGridStressForStereoPlot() const { return m_contourGridStressForStereoPlot; }
    bool filledStressFieldIsOn() const { return m_filledStressFieldIsOn; }
    void setFilledStressFieldIsOn(bool on) { m_filledStressFieldIsOn = on; }
    int stressOverlayState() const { return m_stressOverlayState; }
    void setStressOverlayState(int state) { m_stressOverlayState = state; }
    double minStressOverlayValue() const { return m_minStressOverlayValue; }
    void setMinStressOverlayValue(double value) { m_minStressOverlayValue = value; }
    double maxStressOverlayValue() const { return m_maxStressOverlayValue; }
    void setMaxStressOverlayValue(double value) { m_maxStressOverlayValue = value; }
    bool showStressState() const { return m_showStressState; }
    void setShowStressState(bool on) { m_showStressState = on; }
    bool zNegative() const { return m_zNegative; }
    void setZNegative(bool on) { m_zNegative = on; }
    // The point list. Whoever writes points into it directly calls touchData() afterwards: the
    // statistics keep per-point sines and cosines and the sums of the whole list until then.
    MatrixDataArray* data() const { return m_data; }
    int pointCount() const { return m_pointCount; }
    MatrixDataArray* rotatedData() const { return m_rotatedData; }
    MatrixData* nodeX() const { return m_nodeX; }
    MatrixData* nodeY() const { return m_nodeY; }
    MatrixData* dataRoot() const { return m_dataRoot; }
    void setDataRoot(MatrixData* root) { m_dataRoot = root; }
    MatrixData* colorAttributeNode() const { return m_colorAttributeNode; }
    void setColorAttributeNode(MatrixData* node) { m_colorAttributeNode = node; }
    MatrixData* triangleAreaData() const { return m_triangleAreaData; }
    void setTriangleAreaData(MatrixData* node) { m_triangleAreaData = node; }
    QString unitCategory() const { return m_unitCategory; }
    MatrixData* decimationData() const { return m_decimationData; }
    MatrixData* decimationCount() const { return m_decimationCount; }
    std::vector<double> const& decimationAngle() const { return m_decimationAngle; }
    std::vector<int> const& decimationTableRows() const { return m_decimationTableRows; }
    // A class per point: column 0 the class id as text, 1 its label, 2 its colour's name. The
    // cells are text whatever the attribute is, but the array reports the attribute node's cell
    // type: a table that held the id in a colour cell would lose it, and one that reported text
    // would hide from the chart that the classes are colours of their own.
    MatrixDataArray* colorClasses() const { return m_colorClasses; }
    MatrixDataArray* symbolClasses() const { return m_symbolClasses; }
    MatrixDataArray* classScratch() const { return m_classScratch; }
    MatrixData* thirdDimAttribute() const { return m_thirdDimAttribute; }
    void setThirdDimAttribute(MatrixData* node) { m_thirdDimAttribute = node; }
    MatrixData* tadpoleAzimuthNode() const { return m_tadpoleAzimuthNode; }
    void setTadPoleAzimuthDataNode(MatrixData* node);
    MatrixDataArray* contourGridPoles() const { return m_contourGridPoles; }
    MatrixDataArray* contourGridDipDir() const { return m_contourGridDipDir; }
    DisplayType displayType() const { return m_displayType; }
    void setDisplayType(DisplayType type) { m_displayType = type; }
    bool colorAttributeIsOn() const { return m_colorAttributeIsOn; }
    bool symbolAttributeIsOn() const { return m_symbolAttributeIsOn; }
    bool tadpoleAttributeIsOn() const { return m_tadpoleAttributeIsOn; }
    bool horizontalDipDataSelected() const { return m_horizontalDipDataSelected; }
    DepthLineField* intervalFilter() const { return m_intervalFilter; }
    std::vector<DepthLineField*> const& structuralTopsScenarios() const { return m_structuralTopsScenarios; }
    int activeScenario() const { return m_activeScenario; }

    // ---- structural tops scenarios (the model owns them; "Senario" is the interface's spelling) ----
    // The active scenario, creating "Scenario_<n>" entries until the active index exists.
    DepthLineField* structuralTops();
    // Appends a new scenario and makes it active; name uniqueness is the caller's matter.
    void addStructuralTopsSenario(const QString& name);
    // The first scenario of that name becomes active; a new one is appended when none has it.
    void activateStructuralTopsSenario(const QString& name);
    // Takes the active scenario out of the list (the caller owns it from then on) and
    // activates the first. Returns the scenario taken, or null.
    DepthLineField* eraseActiveStructuralTopsSenario();
    bool hasStructuralTopsScenarios() const { return !m_structuralTopsScenarios.empty(); }
    void setActiveScenario(int index) { m_activeScenario = index; }
    std::vector<DepthLineField*> const& structuralTopsSenarios() const { return m_structuralTopsScenarios; }

    // ---- regression ----
    // Least-squares line y = slope * x + intercept and the correlation coefficient over the
    // points that pass the statistics row filter. Zeros without points. A list whose x all lie
    // within 5e-07 of 0 gives the no-value slope 99999.0 with intercept the mean y; equal x
    // elsewhere give slope 0 and intercept the mean y. Slope and intercept below 5e-06 in size
    // snap to 0. A horizontal line leaves a coefficient of 0/0.
    void calculateRegressionLine(double& slope, double& intercept, double& coefficient);

    // ---- interval filters and decimation ----
    // The filter is created on first use, named "Interval Filter".
    void generateAquidistantIntervalFilter(const double& size, const double& min, const double& max);
    void generateNumberOfIntervalFilter(const int& count, const double& min, const double& max);
    void insertIntervalBoundary(const double& depth, const double& eps);
    void eraseIntervalBoundary(const QPointF& point, const double& eps);
    // Clears the filter's lines and destroys both decimation results (they become null).
    void deleteIntervalBoundaries();
    // One average point per interval of y that holds points (both ends of an interval count,
    // the first interval wins), its count and middle, its third value or mean orientation, and
    // the table row nearest to its mean y.
    void generateDataDecimation();

signals:
    void manuellBinInserted(bool hasLines);

public:

    QPointF meanResultantPole() const { return m_meanResultantPole; }
    QPointF meanResultantDipDirection() const { return m_meanResultantDipDirection; }
    QPointF meanPrincipalPlane() const { return m_meanPrincipalPlane; }
    QPointF meanPrincipalDipDirection() const { return m_meanPrincipalDipDirection; }
    QPointF TdirectionPlane() const { return m_TdirectionPlane; }
    QPointF TdirectionDipDirection() const { return m_TdirectionDipDirection; }
    QPointF LdirectionPlane() const { return m_LdirectionPlane; }
    QPointF LdirectionDipDirection() const { return m_LdirectionDipDirection; }
    QPointF suggestedSectionPlane() const { return m_suggestedSectionPlane; }
    QPointF suggestedSectionDipDirection() const { return m_suggestedSectionDipDirection; }

    // ---- orientation geometry ----
    static void poleInCartesianCoord(double dip, double dipDirection, double& x, double& y, double& z);
    static void cartesianCoordInPolar(double x, double y, double z, double& dip, double& azimuth);
    static void cartesianCoordInPolar2(double x, double y, double z, double& colatitude, double& longitude);
    void cartesianCoordInPolar3(double x, double y, double z, double& plunge, double& azimuth) const;
    static double tilt(double x, double y, double z);
    static double rotation(double x, double y);
    static QPointF poleToPlane(QPointF const& point, bool equalArea);
    QPointF rotateDataAboutRotationAxis(QPointF const& point, QPointF const& axis, double const& angle, bool isPole) const;
    QPointF rotateDataAboutRotationAxis(QPointF const& point, gdfVertex const& axis, double const& angle, bool isPole) const;
    void rotateDataAboutRotationAxis(MatrixData* data, QPointF const& axis, double const& angle, bool isPole);
    void rotateDataToMeanPole(QPointF const& mean, bool isPole, MatrixData* data);
    void rotateDataToMeanPole2(QPointF const& mean);
    void rotateDataToForNormalQQPlot(QPointF const& mean);
    QVariant rotatedData(int row) const;

    // ---- Terzaghi bias weights ----
    void setScanline(double plunge, double azimuth, double minimumBiasAngle);
    double scanlinePlunge() const;
    double scanlineAzimuth() const;
    double scanlineMinimumBiasAngle() const;
    void setBiasAttributeName(const QString& name);
    QString biasAttributeName() const;
    double biasCorrection(int row) const;
    double biasCorrection(int const& row, int const& count, double const& total) const;
    int totalBiasWeight(double& total) const;

    // ---- density grids ----
    // Counts the points, projected on the net as poles (poles) or as dip directions, into the
    // grid of rows x columns nodes laid over net.gridRect: each point adds its weight (1, or
    // its normalised Terzaghi weight with biasCorrect) to the four nodes of the cell it falls
    // in, a point on a node line counting in the lower cell. Points outside the rectangle, or
    // whose cell is blank, are left out; with a part selection, only selected points count
    // unless the display type is ShowAll. Then the rim is wrapped (calculateTheEdgeEffect).
    // The grid's first index runs along x and its second along y (see StereoNetGeometry).
    // rows of -1 takes both sizes from the grid. A grid of fewer than two nodes either way
    // cannot hold a cell: it is sized and left at zero.
    // The short form counts poles into contourGridPoles() and dip directions into
    // contourGridDipDir().
    void countingOutProjections(int rows, int columns, bool poles, bool biasCorrect, StereoNetGeometry const& net);
    void countingOutProjections(int rows, int columns, MatrixDataArray* grid, bool poles, bool biasCorrect,
                                StereoNetGeometry const& net);
    // Rim nodes (within 0.4 of a cell diagonal of the net's circle) share their counts with the
    // node opposite them through the grid's centre: both end with the sum of the two as they
    // stood before the pass. With a painter nothing changes; every rim node and its opposite
    // are drawn as points in dark blue instead.
    void calculateTheEdgeEffect(QPainter* painter, MatrixDataArray* grid, StereoNetGeometry const& net) const;
    // The density of the same points as countingOutProjections takes them (unweighted), on the
    // sphere: each node of the rows x columns grid over net.gridRect is projected back to the
    // orientation it shows (a node off the net to the rim along its ray), and gets
    // orientationDensity there in multiples of sigma. No rim wrap is needed, and the grid reads
    // the same orientations on either net. FourCorner is countingOutProjections itself.
    void densityOnSphere(int rows, int columns, MatrixDataArray* grid, bool poles, DensityMethod method,
                         StereoNetGeometry const& net);
    // Unit vectors (x north, y east, z down) of the points densityOnSphere counts: the normals of
    // the planes with poles, their dip directions otherwise.
    std::vector<gdfVertex> densityVectors(bool poles) const;

    // ---- orientation statistics ----
    // Three rows of three doubles; the caller frees the rows, then the array
    // (freeCharacteristicMatrix does both).
    double** initialiseCharacteristicMatrix(MatrixData* data, bool isPole, double& sumX, double& sumY,
                                            double& sumZ, int& count, double& weightSum, bool biasCorrect,
                                            int* subsetIds, int subsetId);
    static void freeCharacteristicMatrix(double** matrix);
    void calculateMeanDirection(bool isPole, bool biasCorrect, int* subsetIds, int subsetId);
    // calculateMeanDirection(isPole, false, subsetIds, i) for every i below subsets in one walk;
    // meanPrincipalPlanes[i] is the mean principal plane after subset i, and the result fields
    // are left as the last of those calls leaves them.
    void calculateMeanDirectionsBySubset(bool isPole, const int* subsetIds, int subsets,
                                         std::vector<QPointF>& meanPrincipalPlanes);
    void calculateFisherStatistics(double& meanResultantLength, double& variance, double& kappa, double& e1,
                                   double& e2, double& e3, double& normalizedResultant, double& K, double& C,
                                   double& lnE3E2, double& lnE2E1, double& confidenceRadius, bool& unimodal,
                                   QString& classification, bool isPole, bool biasCorrect);
    void calculateWoodcockParameterForOneSubSet(bool isPole, bool biasCorrect, double& lnE3E2, double& lnE2E1);
    void calculateSuggestedSectionOrientation(bool biasCorrect, MatrixData* data);
    double calculateNewTdirection(double direction);
    // result accessors (inline, written by the relationship-model engineer):
    // meanResultantPole(), meanResultantDipDirection(), meanPrincipalPlane(), meanPrincipalDipDirection(),
    // TdirectionPlane(), TdirectionDipDirection(), LdirectionPlane(), LdirectionDipDirection(),
    // suggestedSectionPlane(), suggestedSectionDipDirection()  -- each returns QPointF

protected:
    // The ordered insert and the erase of a DepthLineField on a bare depth vector.
    void insertHorizontalLine(std::vector<double>& depths, const double& depth, const double& eps);
    void eraseHorizontalLines(std::vector<double>& depths, const QPointF& point, const double& eps);
    DepthLineField* ensureIntervalFilter();

    bool canBeBiasCorrected(int row) const;
    void woodcockParameters(double const& e1, double const& e2, double e3, double& K, double& C,
                            double& lnE3E2, double& lnE2E1) const;
    QString mardiaClassification(double const& e1, double const& e2, double const& e3,
                                 double const& normalizedResultant, bool& unimodal) const;
    // ---- numeric helpers (geometry, bias, statistics) ----
    // The north-east-down unit vector of a lineation.
    static gdfVertex lineVector(double plunge, double azimuth);
    // The pole (isPole) or the line of an orientation from the sines and cosines of its dip or
    // plunge and of its azimuth: the one expression every walk and the per-point cache use.
    static gdfVertex orientationVector(double sinDip, double cosDip, double sinAzimuth, double cosAzimuth, bool isPole)
    {
        return isPole ? gdfVertex(-(cosAzimuth * sinDip), -(sinAzimuth * sinDip), cosDip)
                      : gdfVertex(cosAzimuth * cosDip, sinAzimuth * cosDip, sinDip);
    }
    // v turned about the unit axis by the angle of the given cosine and sine.
    static gdfVertex rotateVector(gdfVertex const& v, gdfVertex const& axis, double cosTheta, double sinTheta);
    // Column 0 of a row as an orientation; false for a blank, foreign or non-finite cell.
    static bool readOrientation(const MatrixData* data, int row, QPointF& point);
    // Per-point sines and cosines of dip and azimuth of data(), so that the statistics passes
    // and rotations share one trigonometric walk. Keyed by dataRevision(), the list and its
    // valid-row count; refreshOrientationCache() rebuilds it when stale and returns false when
    // there is no list.
    struct OrientationCache;
    std::shared_ptr<OrientationCache> m_orientationCache;
    bool refreshOrientationCache();
    bool orientationCacheIsFresh() const;
    // The cache as arrays, for walks outside the statistics (refreshed first): four values per
    // row (sin and cos of dip, sin and cos of azimuth) and one flag per row, 0 for a skipped
    // row, 2 for a dip within [-90, 90] and 1 for any other. False without a list.
    bool orientationCacheArrays(const double*& trig, const unsigned char*& flags, int& rows);
    // The pole or lineation vector of a model row from the cache; false for a skipped row.
    bool cachedOrientationVector(int row, bool isPole, gdfVertex& v) const;
    // Angle test of the Terzaghi weights: false for a point that cannot be corrected, else the
    // acute angle (degrees) between its pole and the scanline.
    bool biasAngle(QPointF const& point, double& alpha) const;
    // The cosine term of the normalised Terzaghi weight.
    double terzaghiCosine(QPointF const& point) const;
    // Accumulation over one node; the public initialiseCharacteristicMatrix wraps it.
    void storeMeanDirection(bool isPole, double m[3][3], const double s[3]);
    void accumulateOrientationMatrix(MatrixData* data, bool isPole, double matrix[3][3], double sums[3], int& count,
                                     double& weightSum, bool biasCorrect, int* subsetIds, int subsetId);
    // ---- end of numeric helpers ----

protected:
    void newRelationshipData(int step, MatrixData* x, MatrixData* y, MatrixData* color, MatrixData* symbol,
                             bool keepUndefined, std::vector<int> const& selectedRows,
                             QMap<int, QVariant>& colorNames, QMap<int, QColor>& colorColors,
                             QMap<int, QVariant>& symbolNames, QMap<int, QColor>& symbolColors);

    bool m_foldToLowerHemisphere = true;
    MatrixDataArray* m_contourGridStressForStereoPlot = nullptr;
    bool m_filledStressFieldIsOn = false;
    int m_stressOverlayState = 0;
    double m_minStressOverlayValue = 0.0;
    double m_maxStressOverlayValue = 0.0;
    bool m_showStressState = false;
    bool m_zNegative = true;
    MatrixDataArray* m_data = nullptr;
    int m_pointCount = 0;
    MatrixDataArray* m_rotatedData = nullptr;
    MatrixData* m_nodeX = nullptr;
    MatrixData* m_nodeY = nullptr;
    MatrixData* m_dataRoot = nullptr;
    MatrixData* m_colorAttributeNode = nullptr;
    MatrixData* m_triangleAreaData = nullptr;
    bool m_scatDataTaken = false;
    QString m_unitCategory;
    MatrixData* m_decimationData = nullptr;
    MatrixData* m_decimationCount = nullptr;
    std::vector<double> m_decimationAngle;
    std::vector<int> m_decimationTableRows;
    MatrixDataArray* m_colorClasses = nullptr;
    MatrixDataArray* m_symbolClasses = nullptr;
    MatrixDataArray* m_classScratch = nullptr;
    std::vector<MatrixDataArray*> m_clusterCentroidSets;
    int* m_clusterIDs = nullptr; // new[]; one entry per model row
    int m_clusterIDCount = 0;
    QString m_clusterAttributeName;
    MatrixData* m_thirdDimAttribute = nullptr;
    MatrixData* m_tadpoleAzimuthNode = nullptr;
    MatrixDataArray* m_contourGridPoles = nullptr;
    MatrixDataArray* m_contourGridDipDir = nullptr;
    boost::dynamic_bitset<unsigned long> m_selection;
    int* m_tableRow = nullptr; // new[]; numberOfTableRows entries, -1 where no row is mapped
    int m_numberOfTableRows = 0;
    bool m_partSelection = false;
    double m_scanline[3] = {0.0, 0.0, 0.0}; // plunge, azimuth, minimum bias angle (degrees)
    QString m_biasAttributeName;
    DisplayType m_displayType = HighlightSelected;
    bool m_symbolColorOnly = false;
    bool m_colorAttributeIsOn = false;
    bool m_symbolAttributeIsOn = false;
    bool m_tadpoleAttributeIsOn = false;
    bool m_horizontalDipDataSelected = false;
    int m_pointPixelSize = 2;
    PointStyle m_pointStyle = Cross;
    bool m_outLinePointStyle = true;
    QPointF m_meanPrincipalPlane;
    QPointF m_TdirectionPlane;
    QPointF m_LdirectionPlane;
    QPointF m_suggestedSectionPlane;
    QPointF m_meanPrincipalDipDirection;
    QPointF m_TdirectionDipDirection;
    QPointF m_LdirectionDipDirection;
    QPointF m_suggestedSectionDipDirection;
    QPointF m_meanResultantPole;
    QPointF m_meanResultantDipDirection;
    DepthLineField* m_intervalFilter = nullptr;
    std::vector<DepthLineField*> m_structuralTopsScenarios;
    int m_activeScenario = 0;

private:
    // Frees clusterIDs: the numbers of one point set mean nothing for another.
    void clearClusterIDs();

    quint64 m_dataRevision = 0;
};

} // namespace rkBase

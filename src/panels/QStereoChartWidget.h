#pragma once
// The stereonet tab: a QStereoPlotWidget with its two legends, a Woodcock diagram tab, the
// statistics report and the Fisher fit tabs, and a tool box of settings pages (display,
// projection and graphical action, symbol and colour attributes, density contours, Terzaghi bias
// correction, lineation, clusters, rotation, data statistics, annotation). It owns two
// relationship models: the data (planes, as dip and dip azimuth) and the lineation (lines, as
// plunge and azimuth); the owner hands it the columns (setDataSet) and re-reads its boxes when it
// asks for new data (dataSetSelected).
//
// The generated form is a base of the panel, so that a panel derived from it (the tangent plot)
// reaches every control by its m_pq... name.
//
// Rules kept here that callers could otherwise guess:
// - The columns are not owned. Rows whose dip or azimuth is blank, text or not finite are left
//   out of the points; with fewer than two points every statistic that needs them reads "-----".
// - "Display Data" between "All" and "All + Highlight Selection" redraws; a change to or from
//   "Selected Data Only" asks the owner for a reload (dataSetSelected), since the rows change.
// - "Blue-Red" shows low values blue and high values red, on the chart, in the colour legend and
//   in the table (the column's colour map is the one all three read); "Red-Blue" the reverse.
//   The same holds for the density contours.
// - Legend rows are the classes as the model numbers them: the swatch of a row is the symbol and
//   colour the chart gives the points of that class.
// - An interval of 0 (or text that is not a number) in the contour range resets the range from
//   the counted grid; "---" in the minimum does the same at the next count.
// - A load handed the same columns and exactly the rows the chart's own lasso selected leaves
//   the chart as it is (see loadWouldChangeNothing).
// - A derived panel passes createChart false, builds its own surface in its createChartArea()
//   (installing it with installChartArea()) and then calls initializeChart(), since a base
//   constructor cannot reach the derived override. Pages leave the tool box by object name
//   (hideTab) and come back with showTab.
// - Settings: groups prefix + "display", "point_style", ...; see readSettings().

#include "PanelLoadStamp.h"
#include "QRelationshipItemModel.h"
#include "ui_QStereoChartWidget.h"

#include <QColor>
#include <QList>
#include <QMap>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <boost/dynamic_bitset.hpp>

#include <memory>
#include <vector>

class QPushButton;
class QTabWidget;

namespace Ui {
class QBestFitOfFisherWidget;
}

namespace rkBase {

class DisplayUnitManager;
class MatrixData;
class PanelColorRange;
class PanelZoomScrollBars;
class QDataStatisticSummary;
class QLegendListModel;
class QProbabilityPlot;
class QStereoPlotWidget;
class QWoodcockHelpWidget;

class QStereoChartWidget : public QWidget, protected Ui::QStereoProjectionWidget
{
    Q_OBJECT
public:
    using DisplayType = QRelationshipItemModel::DisplayType;

    // extended1 and extended2 both true: the full panel, with the tool box, the data selection
    // boxes above it, the Woodcock tab and the statistics tabs. Either false: the chart and its
    // legends only. createChart false: see the class comment. settingsName is the prefix that
    // writeSettings() uses until readSettings() names another.
    QStereoChartWidget(const QString& title, QWidget* parent, DisplayUnitManager* unitManager, bool extended1 = true,
                       bool extended2 = true, Qt::WindowFlags flags = Qt::WindowFlags(), bool createChart = true,
                       const QString& settingsName = QString());
    ~QStereoChartWidget() override;

    // ---- data ----
    void setDataRoot(MatrixData* root);
    MatrixData* dataRoot() const { return m_dataRoot; }
    // dip and azimuth: the planes; colour and symbol: the attributes (null for none);
    // lineationPlunge and lineationAzimuth: the lineation columns the owner read from the
    // lineation boxes (null: the panel finds them in the data root by the boxes' names).
    // An empty row list means every row.
    void setDataSet(MatrixData* dip, MatrixData* azimuth, MatrixData* colour, MatrixData* symbol,
                    MatrixData* lineationPlunge, MatrixData* lineationAzimuth, const std::vector<int>& selectedRows);
    QStereoPlotWidget* drawingArea() const { return m_drawingArea; }
    QRelationshipItemModel* model() const { return m_model; }
    QRelationshipItemModel* lineationModel() const { return m_lineationModel; }
    const std::vector<int>& selectedRows() const { return m_selectedRows; }
    MatrixData* dipDataSet() const { return m_dipData; }
    MatrixData* azimuthDataSet() const { return m_azimuthData; }
    // The lineation columns the panel owns (copies, or computed from plane and pitch); null
    // without lineation.
    MatrixData* lineationPlungeData() const { return m_lineationPlungeData; }
    MatrixData* lineationAzimuthData() const { return m_lineationAzimuthData; }
    void setDisplayDataType(DisplayType type);
    DisplayType displayDataType() const;
    // Weights of the statistics per row (a triangle's area), kept for every later load.
    void setTriangleAreaNode(MatrixData* node);
    // The name the statistics report gives the data.
    void setObservationDataName(const QString& name) { m_observationDataName = name; }

    // ---- selection boxes ----
    int currentDipSelectedDataSet() const;
    int currentAzimuthSelectedDataSet() const;
    int currentColorSelectedDataSet() const;
    int currentSymbolSelectedDataSet() const;
    int currentLineationPlungeDataSet() const;
    int currentLineationPlungeAzimuthDataSet() const;
    QString currentDipSelectedDataSetName() const;
    QString currentAzimuthSelectedDataSetName() const;
    QString currentColorSelectedDataSetName() const;
    QString currentSymbolSelectedDataSetName() const;
    QString currentLineationPlungeDataSetName() const;
    QString currentLineationPlungeAzimuthDataSetName() const;
    // A host's choice of columns by name; a name the box does not hold leaves it as it is.
    // Nothing loads until the owner hands the data over.
    void setCurrentDipSelectedDataSet(const QString& name);
    void setCurrentAzimuthSelectedDataSet(const QString& name);
    // Both orientation boxes from the same names.
    void updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids);
    // One box: refilled with "None" at the top, the previous name kept if it is still offered,
    // otherwise index.
    void updateDataSetSelectionBox(QComboBox* box, const QString& name, const QStringList& names, const QList<int>& ids,
                                   int index);
    void updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids, int index = 0);
    void updateSymbolAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids, int index = 0);
    // The lineation boxes that hold numbers: plunge, azimuth, plane dip and azimuth, pitch.
    void updateLineationDataSetSelectionBox(const QStringList& names, const QList<int>& ids);
    // The pitch direction box (compass texts or azimuths).
    void updatePitchDirectionDataSetSelectionBox(const QStringList& names, const QList<int>& ids);

    // ---- configuration ----
    void showToolBox(bool on);
    // A tool box page back at index (or at the end), under the title it had.
    void showTab(const QString& pageName, int index = -1);
    // A tool box page out of the box; its controls stay reachable by name.
    void hideTab(const QString& pageName);
    void setLightMode();
    void showModifyAction(bool on);
    void copyToClipboard();

    // ---- results of the last statistics ----
    // The mean principal plane (dip, dip azimuth) of the data.
    QPointF getMeanOrientation() const;
    // Dip azimuths of the planes normal to the L and T directions.
    double getLdirection() const;
    double getTdirection() const;
    // The model's suggested section plane over a copy of the points, with the bias weights when
    // bias correction is on.
    void calculateSuggestedSectionOrientation();

    // ---- settings ----
    void readSettings(const QString& prefix);
    void writeSettings();
    QString settingsPrefix() const { return m_settingsPrefix; }

    // ---- parts, for owners and tests ----
    QLegendListModel* symbolLegend() const { return m_symbolLegendModel; }
    QLegendListModel* colorLegend() const { return m_colorLegendModel; }
    QWoodcockHelpWidget* woodcockWidget() const { return m_woodcockWidget; }
    QDataStatisticSummary* statisticSummary() const { return m_statisticSummary; }
    QTabWidget* fitTabWidget() const { return m_fitTabWidget; }

public slots:
    void slotDataPointsSelection(const boost::dynamic_bitset<>& rows);
    void blackWhiteSwitch();
    void conventionSwitch();
    void updateStereoPlot();
    void updateStereoPlot(int displayIndex);
    void updateStereoPlotSettings();
    void updateStereoPlotSettings(bool update);
    void updateStereoPlotContours();
    void updateStereoPlotContours(bool update);
    void updateDensityGridMap();
    void slotUpdateDensityGridMap();
    void resetContourRanges();
    void slotResetContourRanges();
    void resetDisplayColorAttribute();
    void slotResetDisplayColorAttribute();
    void updateColorMapAttributeSettings();
    // The orientation under a widget pixel of the chart, as "Cursor Information" asks for it.
    virtual void updateCursorPosLabel(const QPointF& pixel);
    void updateCursorPosLabel();
    void updateGraphicalSelection();
    void updateSymbolPointStyle();
    void updateObservationStatistics();
    void updateAverageOrientation(double resultantX, double resultantY, double principalX, double principalY);
    void updateFitOfFisherDistribution();
    void updateClusterMeansTable();
    void calculateWoodcockParameterForClusters();
    void updateSymbolLegend();
    void updateColorLegend();
    void updateSymbolLegendItemSelection(const QModelIndex& index);
    void updateColorLegendItemSelection(const QModelIndex& index);
    void slotClearLegendSelection();
    void slotSymbolLegendsVerticalScrollBarChanged(int value);
    void slotColorLegendsVerticalScrollBarChanged(int value);
    void slotSymbolAttributeSelected();
    void slotSelectLineation();
    void slotPlungeAzimuthGroupBoxToggled(bool on);
    void slotPlanePitchGroupBoxToggled(bool on);
    void enableLineation(bool on);
    void slotEnableBiasCorrection(int state);
    void slotApplyCreateBiasWeightAttribute();
    void slotApplyClusterGeneration();
    void rotateDataAboutRotationAxis();
    void rotateDataToCenterPole();
    void slotDataSourceSelected();
    void slotTabWidgetChanged(int index);
    void slotZoomFactorChanged(double zoom);
    void slotZoomFactorReset(bool on);
    void chartZoomChanged(double zoom);
    void slotHorizontalSliderChanged(int value);
    void slotVerticalSliderChanged(int value);
    void changePlaneColor();
    void changeMeanPrincipalPlaneColor();
    void changeMeanResultantPlaneColor();
    void changeSuggestedSectionPlaneColor();
    void changeBestFitPlaneColor();
    void changePoleColor();
    void changeMeanPrincipalPoleColor();
    void changeMeanResultantPoleColor();
    void changeTPoleColor();
    void changeLPoleColor();
    void changeAzimuthColor();
    void changeMeanPrincipalAzimuthColor();
    void changeMeanResultantAzimuthColor();
    void changeTazimuthColor();
    void changeLazimuthColor();
    void changeLineationColor();

signals:
    void dataSetSelected();
    void dataPointsSelection(const boost::dynamic_bitset<>& rows);
    void createBiasWeightAttribute(const QString& name, QRelationshipItemModel* model);
    void createClusterAttribute(const QString& name, QRelationshipItemModel* model);
    void createFisherGoodnessFit();
    void createRotatedAttributes();
    void signalCreateMeanPrincipalPointCloud();
    void signalModifyCellValues();

protected slots:
    // A Q-Q plot's selection: passed on, and the chart reloads when its tab comes back.
    void slotProbabilityPlotSelection(const boost::dynamic_bitset<>& rows, const QString& type);

protected:
    // Builds the surface (a QStereoPlotWidget here) and installs it.
    virtual void createChartArea(const QString& title);
    // Places the surface in the plot frame, connects it, creates both models and hands them to it.
    void installChartArea(QStereoPlotWidget* plot);
    // Everything that needs the surface: the point style boxes, the legends, the first copy of
    // the form into the surface.
    void initializeChart();
    void createSymbolLegendView();
    void createColorLegendView();
    void createStatisticTabs();
    // The lineation columns from the lineation boxes (or the owner's columns), owned.
    void setLineationData(MatrixData* plunge, MatrixData* azimuth);
    void deleteLineationData();
    // Drops the columns that are no longer in the data root's tree; whether dip and azimuth are
    // still there.
    bool dropLostColumns();
    // The axis of the rotation that takes the pole of (dip, azimuth) onto vector: their cross
    // product.
    static void getRotationParameter(const gdfVertex& vector, double dip, double azimuth, double& x, double& y,
                                     double& z);
    // The density grid the contour range follows: the poles' with "for Poles", else the dip
    // directions'.
    // The density method chosen under "Counting Method".
    DensityMethod countingMethod() const;
    MatrixDataArray* activeContourGrid() const;
    void resetContourRanges(MatrixDataArray* grid);
    void applyContourSettings();
    void applyZoom(double zoom);
    // A colour dialog from the button's colour; a colour chosen shows on the button and reaches
    // the surface, a cancel keeps the old one.
    void changeColorBtn(QPushButton* button);
    // The colours of the sixteen buttons into the surface.
    void applyColors();
    void setPageRemoved(const QString& pageName);
    MatrixData* findColumn(const QString& name) const;
    // Whether the statistics treat the data as planes (poles); "Calculation for" decides.
    bool statisticsForPoles() const;
    QString orientationText(const QPointF& orientation) const;
    // What the points of the chart are read from and how, as the next load would read them.
    PanelLoadStamp currentLoadStamp() const;
    // Whether a load of these rows would give the chart the points and selection it has now:
    // the same stamp as the last load, a display that keeps every point, and a selection that
    // is exactly these rows (as after a lasso on this chart whose rows come back from the table).
    bool loadWouldChangeNothing(const std::vector<int>& rows) const;
    // The legend entries of the last load, as the legends show them.
    void fillLegend(QLegendListModel* legend, const QMap<int, QVariant>& names, const QMap<int, QColor>& colours);

    std::unique_ptr<Ui::QBestFitOfFisherWidget> m_fitUi;
    std::unique_ptr<PanelZoomScrollBars> m_scrollBars;
    std::unique_ptr<PanelColorRange> m_colorRange;
    std::unique_ptr<PanelColorRange> m_contourRange;
    DisplayUnitManager* m_unitManager = nullptr;
    QStereoPlotWidget* m_drawingArea = nullptr;
    QRelationshipItemModel* m_model = nullptr;
    QRelationshipItemModel* m_lineationModel = nullptr;
    QWoodcockHelpWidget* m_woodcockWidget = nullptr;
    QLegendListModel* m_symbolLegendModel = nullptr;
    QLegendListModel* m_colorLegendModel = nullptr;
    QTabWidget* m_fitTabWidget = nullptr;
    QWidget* m_fitPage = nullptr;
    QDataStatisticSummary* m_statisticSummary = nullptr;
    QProbabilityPlot* m_colatitudePlot = nullptr;
    QProbabilityPlot* m_longitudePlot = nullptr;
    QProbabilityPlot* m_twoVariablePlot = nullptr;
    MatrixData* m_dipData = nullptr;
    MatrixData* m_azimuthData = nullptr;
    MatrixData* m_lineationPlungeData = nullptr;  // owned
    MatrixData* m_lineationAzimuthData = nullptr; // owned
    MatrixData* m_dataRoot = nullptr;
    MatrixData* m_colorData = nullptr;
    MatrixData* m_symbolData = nullptr;
    MatrixData* m_triangleAreaData = nullptr;
    // The columns the lineation was built from, as the last setLineationData found them: plunge
    // and azimuth, or plane dip, plane azimuth, pitch and pitch direction.
    MatrixData* m_lineationSources[4] = {nullptr, nullptr, nullptr, nullptr};
    PanelLoadStamp m_lineationStamp; // of those columns when the lineation was built from them
    double m_kappa = 99999.0; // of the last statistics
    QMap<int, QVariant> m_colorNames;
    QMap<int, QColor> m_colorColors;
    QMap<int, QVariant> m_symbolNames;
    QMap<int, QColor> m_symbolColors;
    std::vector<int> m_selectedRows;
    QString m_lastColorName;
    bool m_colorDataUnchanged = false;
    bool m_colorResetPending = false;
    bool m_fitNeedsUpdate = false;
    bool m_reloadPending = false;
    bool m_extended = true;
    QString m_title;
    QString m_settingsPrefix;
    QString m_observationDataName;
    QMap<QString, QString> m_removedPageTitles;
    PanelLoadStamp m_loadStamp; // of the last load; empty when the chart shows no load
};

} // namespace rkBase

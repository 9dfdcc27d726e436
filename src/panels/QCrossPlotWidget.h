#pragma once
// The cross plot tab: one QCrossPlot with its four axes, the two axis boxes below it, the
// colour and symbol legends and a tool box of settings pages (display, symbol and colour
// attributes, clusters, data decimation, annotation, statistics). It owns the relationship
// model the chart shows; the owner hands it the columns (setDataSet) and re-reads its boxes
// when it asks for new data (signalUpdateChartData).
//
// Rules kept here that callers could otherwise guess:
// - The columns are not owned. setDataRoot() tells the panel the tree they live in: a column
//   that is no longer in that tree is dropped before anything reads it, and the chart goes
//   blank until the owner hands new columns.
// - With automatic update off, the boxes and edits change nothing until "Update Cross Plot
//   Chart" is pressed; the check boxes of the display page still redraw at once.
// - Columns with no finite value (text, colours, blank) load no points: the chart is empty, the
//   statistics show "-----" and the axes run 0 to 1.
// - Axis boundaries typed with the minimum above the maximum are taken the other way round.
// - A bin size that is not above 0, or that would cut the range into more than
//   kMaxBinCount bins, makes no bins.
// - Settings: groups prefix + "display", "point_style", ...; see readSettings().
// - QDepthPlotWidget derives from this panel as a well log track.

#include "PanelAxes.h"
#include "PanelColorRange.h"
#include "PanelLoadStamp.h"
#include "PanelZoomScrollBars.h"
#include "QRelationshipItemModel.h"

#include <QColor>
#include <QMap>
#include <QMessageBox>
#include <QVariant>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <boost/dynamic_bitset.hpp>

#include <functional>
#include <memory>
#include <vector>

class QPainter;

namespace Ui {
class QCrossPlotWidget;
}

namespace rkBase {

class DisplayUnitManager;
class MatrixData;
class QCrossPlot;
class QLegendListModel;
class QLegendListView;

class QCrossPlotWidget : public QWidget
{
    Q_OBJECT
public:
    using DisplayType = QRelationshipItemModel::DisplayType;
    // Asks a yes/no question; the default shows a QMessageBox. Tests answer it themselves.
    using Question = std::function<QMessageBox::StandardButton(QWidget* parent, const QString& title,
                                                               const QString& text)>;
    static constexpr int kMaxBinCount = 100000;

    QCrossPlotWidget(QWidget* parent, DisplayUnitManager* manager, bool fullPanel = true, bool showBottomPanel = true,
                     bool showDataDecimation = true, Qt::WindowFlags flags = Qt::WindowFlags());
    ~QCrossPlotWidget() override;

    // ---- data ----
    void setDataRoot(MatrixData* root);
    MatrixData* getDataRoot() const { return dataRoot; }
    void setDataSet(MatrixData* x, MatrixData* y, MatrixData* symbols, MatrixData* colours);
    void setDataSet(MatrixData* x, MatrixData* y, MatrixData* symbols, MatrixData* colours,
                    const std::vector<int>& rows);
    MatrixData* horizontalDataSet() const { return horizontalData; }
    MatrixData* verticalDataSet() const { return verticalData; }
    const std::vector<int>& selectedDataRows() const { return selectedRows; }

    // ---- selection boxes ----
    void updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids);
    virtual void updateDataSetSelectionBoxHorizontal(const QStringList& names, const QList<int>& ids);
    virtual void updateDataSetSelectionBoxVertical(const QStringList& names, const QList<int>& ids);
    void updateSymbolAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids, int index = 0);
    void updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids, int index = 0);
    void updateTadPoleAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids);
    void updateThirdDimAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids);
    int currentHorizontalSelectedDataSet() const;
    int currentVerticalSelectedDataSet() const;
    int currentSymbolSelectedDataSet() const;
    int currentColorSelectedDataSet() const;
    int currentTadpoleSelectedDataSet() const;
    QString currentHorizontalSelectedDataSetName() const;
    QString currentVerticalSelectedDataSetName() const;
    QString currentSymbolSelectedDataSetName() const;
    QString currentColorSelectedDataSetName() const;
    QString currentTadpoleSelectedDataSetName() const;
    void setCurrentHorizontalSelectedDataSet(const QString& name);
    void setCurrentVerticalSelectedDataSet(const QString& name);
    void setCurrentSymbolSelectedDataSet(const QString& name);
    void setCurrentColorSelectedDataSet(const QString& name);
    void setCurrentTadpoleSelectedDataSet(const QString& name);
    // true: a box with no old choice falls to its first entry instead of its last.
    void defaultComboBoxSelectionFromTopEntries(bool top) { selectBottomEntries = !top; }

    // ---- configuration ----
    void setMercatorScaling(bool on) { mercatorScaling = on; }
    void setAzimuthScaling(bool on) { azimuthScaling = on; }
    void setFixedAxisWidth(int left, int right);
    void setBottomPanelVisible(bool on);
    void setSidePanelVisible(bool on);
    bool getBottomPanelVisible() const;
    bool getSidePanelVisible() const;
    void setChartFrameEnabled(bool on);
    void setDisplayDataType(DisplayType type);
    DisplayType displayDataType() const;
    void setDefaultLinePlot();
    void setLightMode();
    void setWellAnalyserMode();
    void hideTab(const QString& name);
    void hideColourLegend();
    void removeSymbolandColorAttributeTooBoxItems();
    void showBisectionLine(bool on);
    void showRegression(bool on);
    void showRegressionEquation(bool on);
    void showRegressionLineOnly();
    void showModifyAction(bool on);
    void setPointConnectionLine(bool on);
    void setCalculateRegressionAlways(bool on) { calculateRegressionAlways = on; }
    double getRegressionSlope() const { return trendLineSlope; }
    QCrossPlot* drawingArea() const { return crossPlot; }
    QRelationshipItemModel* model() const { return relationshipModel; }
    const PanelAxes& axes() const { return *m_axes; }
    QLegendListModel* colorLegend() const { return colorLegendModel; }
    QLegendListModel* symbolLegend() const { return symbolLegendModel; }
    void setQuestion(Question question) { m_question = std::move(question); }

    // ---- settings ----
    void readSettings(const QString& prefix);
    void writeSettings();
    QString getSettingsPrefix() const { return settingsPrefix; }

    // The four axes beside the chart's rectangle, for the metafile the chart copies.
    Q_INVOKABLE void drawAxes(QPainter* painter, QRect rect);

public slots:
    void updateRelationshipDiagram();
    void updateRelationshipDiagram(int comboIndex);
    void updateRelationshipDiagramSettings(bool redraw);
    void updateRelationshipDiagramSettings();
    void updateDataBoundaries();
    void slotUpdateChartBoundaries(bool redraw = true);
    void slotEnableCrossPlotUpdateBtn(bool on);
    void slotSymbolAttributeSelected(const QString& text);
    void slotTadpoleAttributeSelected(const QString& text);
    void resetDisplayColorAttribute();
    void slotResetDisplayColorAttribute();
    void slotApplyClusterGeneration();
    void slotUpdateClusterMeansTable();
    void updateClusterMeansTable();
    void slotGenerateIntervalsToggled();
    void slotCreateIntervalsBySize();
    void slotCreateIntervalsByNumber();
    void slotDeleteIntervals();
    void slotEnableDecimationGroupBoxes(bool on);
    void slotGenerateDataDecimation();
    void slotUpdateDecimationSettings();
    void slotCreateAttributeFromBinAverage();
    void slotCreateAttributeFromNumbOfDataPerBin();
    void slotZoomFactorChanged(double zoom);
    void slotZoomFactorReset(bool on);
    void chartZoomChanged(double zoom);
    void slotHorizontalSliderChanged(int value);
    void slotVerticalSliderChanged(int value);
    void updateCursorPosLabel(const QPointF& p);
    void slotDataPointsSelection(const boost::dynamic_bitset<>& rows);
    void blackWhiteSwitch();
    void fontSizeChanged(double points);
    void slotResetAnnotationSettings();
    void changeLineColor();
    void changePointColor();
    void displayUnitsChanged(const QString& category);
    void updateColorLegend();
    void updateSymbolLegend();
    // The chart with its axes as a metafile on the clipboard, the picture beside it.
    void slotCopyWEMFToClipboard();

private slots:
    void slotUpdateButtonPressed();
    void slotSymbolStyleChanged();

signals:
    void signalUpdateChartData();
    void dataPointsSelection(const boost::dynamic_bitset<>& rows);
    void signalModifyCellValues();
    void createClusterAttribute(const QString& name, QRelationshipItemModel* model);
    void createDataDecimationAttribute(QRelationshipItemModel* model, bool binAverages, bool replaceOriginal,
                                       bool replaceDecimated, MatrixData* horizontal);

protected:
    virtual void createChartArea();
    void createColorLegendView();
    void createSymbolLegendView();
    // Nothing here; the depth track turns its vertical axes to depth.
    virtual void invertDepthAxis();
    void initializeDataSet(MatrixData* x, MatrixData* y, MatrixData* symbols, MatrixData* colours);
    void setShowStratigraphy();
    QString createClusterGeneratedName();
    // Drops the columns that are no longer in the data root's tree (see the class comment);
    // whether the two axis columns are still there.
    bool dropLostColumns();
    void setPageRemoved(const QString& pageName);
    // The two "new attribute" buttons of the bins page: averages of the bins or their counts.
    void createDecimationAttribute(bool binAverages);
    void applyZoom(double zoom);
    void connectAutomaticUpdate(bool on);
    MatrixData* findColumn(const QString& name) const;
    std::pair<double, double> verticalDataRange() const;
    void finishBinCreation();
    // What the points of the chart are read from and how, as the next load would read them.
    PanelLoadStamp currentLoadStamp() const;
    // Whether a load of these rows would give the chart the points and selection it has now:
    // the same stamp as the last load, a display that keeps every point, and a selection that
    // is exactly these rows (as after a lasso on this chart whose rows come back from the table).
    bool loadWouldChangeNothing(const std::vector<int>& rows) const;

    std::unique_ptr<Ui::QCrossPlotWidget> m_pqUi;
    std::unique_ptr<PanelAxes> m_axes;
    std::unique_ptr<PanelZoomScrollBars> m_scrollBars;
    std::unique_ptr<PanelColorRange> m_colorRange;
    DisplayUnitManager* m_manager;
    QCrossPlot* crossPlot = nullptr;
    QRelationshipItemModel* relationshipModel = nullptr;
    MatrixData* horizontalData = nullptr;
    MatrixData* verticalData = nullptr;
    MatrixData* symbolData = nullptr;
    MatrixData* colourData = nullptr;
    MatrixData* dataRoot = nullptr;
    int vertexFilter = 1;
    std::vector<int> selectedRows;
    bool fullPanel;
    bool calculateRegressionAlways = false;
    QString settingsPrefix;
    bool selectBottomEntries = true;
    bool horizontalDataUnchanged = false;
    bool verticalDataUnchanged = false;
    bool colourDataUnchanged = false;
    bool mercatorScaling = false;
    bool azimuthScaling = false;
    QPair<int, int> fixedAxisWidth{55, 55};
    bool cursorWithUnits = true;
    double trendLineSlope = 99999.0;
    bool verticalZoomOnly = false;
    QString lastHorizontalName;
    QString lastVerticalName;
    QString lastSymbolName;
    QString lastColourName;
    QLegendListModel* colorLegendModel = nullptr;
    QLegendListModel* symbolLegendModel = nullptr;
    // The legend classes of the last load, as the model hands them out.
    QMap<int, QVariant> m_colorNames;
    QMap<int, QColor> m_colorColors;
    QMap<int, QVariant> m_symbolNames;
    QMap<int, QColor> m_symbolColors;
    bool m_automaticConnected = false;
    PanelLoadStamp m_loadStamp; // of the last load; empty when the chart shows no load
    Question m_question;
};

} // namespace rkBase

#pragma once
// The one window a host embeds: the attribute tree on the left, and on the right a tab widget
// with the spreadsheet and one tab per chart. It owns the data root and keeps the views in step.
// Chart panels are optional; every use of one tests it for null, so the window also works with
// the table alone.

#include <MatrixData.h>

#include <QList>
#include <QModelIndex>
#include <QString>
#include <QWidget>

#include <boost/dynamic_bitset.hpp>

#include <vector>

class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QMenu;
class QSplitter;

namespace rkBase {

class DisplayUnitManager;
class QAttributeTreeView;
class QCrossPlotWidget;
class QDepthPlotWidget;
class QStereoChartWidget;
class QTangentChartWidget;
class QRKEBarChartWidget;
class QRelationshipItemModel;
class QSelectCellsDialog;
class QSortFilterProxyVertexItemModel;
class QTreeItemModel;
class QVertexItemModel;
class QVertexMinMaxItemModel;
class QHistogramChartWidget;
class QRoseChartWidget;
class QVertexMinMaxModelTableView;
class QVertexModelTableView;
class TabWidgetWithFloatingTabs;
class UnitRegistry;

class QDataAnalyserDialog : public QWidget
{
    Q_OBJECT
public:
    explicit QDataAnalyserDialog(QWidget* parent = nullptr);
    ~QDataAnalyserDialog() override;

    virtual MatrixData* createMatrixData(const QString& name, const QString& typeName, int rows, bool unused);
    virtual void initialize(const QString& chartSettingsKey, QMenu* tableMenu, UnitRegistry* registry,
                            Qt::Orientation splitterOrientation, bool crossPlotDefaultsToFirstEntry,
                            bool withOrientationCharts, bool withDepthPlot, bool withBarChart, bool withHistogram,
                            bool withCrossPlot, int minMaxMode, bool withFieldData, bool hideCoordinateColumns);
    virtual void changeDataRoot(MatrixData* root);
    virtual void readSettings(const QString& mainGroup);
    virtual void saveSettings();
    virtual bool createFaultTDEToolTab(const QString& chartSettingsKey);
    virtual bool createMohrDiagramChart(const QString& chartSettingsKey);
    virtual void resetSplitterRatios();

    void changeDataRootOnly(MatrixData* root) { m_dataRoot = root; }
    void createTableWidget(QMenu* menu, int minMaxMode, bool withFieldData);
    void createTreeWidget();
    // The "BARCHART" page with its panel; chartSettingsKey goes to the panel.
    void createBarDiagram(const QString& chartSettingsKey);
    // The "CROSSPLOT" page with its cross plot panel, and the "WELLLOGPLOT" page with its depth
    // track. The panels keep their settings under the window's group (see readSettings).
    void createRelationshipChart(const QString& chartSettingsKey);
    void createDepthPlot(const QString& chartSettingsKey);
    // The "STEREOPLOT" and "TANGENTPLOT" pages, made when the window shows orientation charts.
    void createStereoChart(const QString& chartSettingsKey);
    void createTangentChart(const QString& chartSettingsKey);
    // The "HISTOGRAM" page with its panel.
    void createHistogram(const QString& chartSettingsKey);
    // The "ROSEPLOT" page, made with the orientation charts.
    void createRoseChart(const QString& chartSettingsKey);
    QMenu* createDefaultPopupMenu();

    void showTab(const QString& key, const QString& title);
    void hideTab(const QString& key);
    void setLightMode();
    void setUltraLightMode();
    void concealTreeWidget();
    QList<unsigned long long> getTableIdOrder() const;
    void setDynamicSorting(bool on);
    void resetProxyModel();
    void setShowEmptyAttributes(bool on);
    bool showEmptyAttributes() const;
    UnitRegistry* registry() const;
    void setRegistry(UnitRegistry* registry);
    void setSettingsGroup(const QString& group) { m_settingsGroup = group; }
    void setSettingsMainGroup(const QString& group) { m_settingsMainGroup = group; }
    QString settingsGroup() const { return m_settingsGroup; }
    QString settingsMainGroup() const { return m_settingsMainGroup; }
    void setCurrentSymbolItem(int item) { m_currentSymbolItem = item; }
    void setCurrentColorItem(int item) { m_currentColorItem = item; }
    bool chartUpdateNeeded(int chart) const { return chart >= 0 && chart < 7 && m_chartsUpdateNeeded[chart]; }

    // Test and start-up data.
    void initializeBlankData(int columns, int rows);
    void initializeDummyData();
    void initializeTestData();
    void initializeRockPropertyTestData();
    void initializeStratigraphyTestData();

    MatrixData* dataRoot() const { return m_dataRoot; }
    // The first row that the last addNew... call made room for; -1 when it added none.
    int firstNewHostRow() const { return m_firstNewHostRow; }
    TabWidgetWithFloatingTabs* tabWidget() const { return m_tabWidget; }
    QAttributeTreeView* treeView() const { return m_treeView; }
    QTreeItemModel* treeItemModel() const { return m_treeItemModel; }
    QWidget* treeFrame() const { return m_treeFrame; }
    QSplitter* treeSplitter() const { return m_treeSplitter; }
    QVertexModelTableView* vertexTable() const { return m_vertexTable; }
    QVertexItemModel* vertexItemModel() const { return m_vertexItemModel; }
    QSortFilterProxyVertexItemModel* proxyModel() const { return m_proxyModel; }
    QVertexMinMaxModelTableView* minMaxVertexTable() const { return m_minMaxVertexTable; }
    QVertexMinMaxItemModel* minMaxVertexItemModel() const { return m_minMaxVertexItemModel; }
    QGroupBox* validCellsOnlyGroupBox() const { return m_validCellsOnlyGroupBox; }
    QRKEBarChartWidget* barChart() const { return m_barChart; }
    QCrossPlotWidget* crossPlotChart() const { return m_crossPlotChart; }
    QDepthPlotWidget* depthPlotChart() const { return m_depthPlot; }
    QStereoChartWidget* stereoChart() const { return m_stereoChart; }
    QTangentChartWidget* tangentChart() const { return m_tangentChart; }
    QRoseChartWidget* roseChart() const { return m_roseChart; }
    QHistogramChartWidget* histogramChart() const { return m_histogramChart; }
    QComboBox* filterComboBox() const { return m_filterComboBox; }
    QAction* pasteAction() const { return m_pasteAction; }
    QString fileName() const { return m_fileName; }
    QString absolutePath() const { return m_absolutePath; }
    void setFileName(const QString& name) { m_fileName = name; }
    void setAbsolutPath(const QString& path) { m_absolutePath = path; }
    // The rows a Save As would write: every row without a selection, else the selected ones.
    std::vector<char> saveMask() const;
    bool saveCSV(const QString& fileName);

    // The rows a chart is handed: the table's selected rows; with none selected, all rows (an
    // empty list), or under "Show Valid Cells only" the rows that filter shows.
    std::vector<int> chartDataRows() const;
    // Source-model cells of the table's selection, and the first cell of each selected row.
    QList<QModelIndex> selectedModelCells() const;
    QList<QModelIndex> selectedModelIndices() const;
    // Returns the first row inserted, or -1 without a table.
    int insertAfterSelectedRow(bool wellMarkerMode, bool dipMode);
    void removeSelectedRows(bool wellMarkerMode, bool dipMode);
    void removeAllRows();
    bool hideSelectValueCellsDlg();
    QSelectCellsDialog* selectCellsDialog() const { return m_selectCellsDialog; }
    // Shows or hides rows of the "$V" visibility column by the kinds of marker they hold.
    void setMarkerVisibility(bool all, bool scat, bool decimated, bool top, bool fault, bool visible);

public slots:
    virtual void updateChartDataSetSelectionBox(MatrixData::AttributeCollection collection);
    virtual void hide();
    virtual void slotTabWidgetChanged();
    virtual void resetChartsUpdateNeeded();
    virtual void createDataDecimationAttribute(QRelationshipItemModel* model, bool binAverage, bool replaceOriginal,
                                               bool replaceDecimated, MatrixData* original);
    // Derived attributes: each writes its columns into the groups "Orientation Data",
    // "Cluster Distributions" or "Data Decimation" (made on first use, columns reused by name)
    // and pushes one undo action on the root that takes the call back exactly. Rows pass as the
    // model's statistics row filter says and land at the model's table rows; nothing happens
    // while the tree holds no data.
    void createRotatedAttributes();
    void createClusterAttribute(const QString& name, QRelationshipItemModel* model);
    void createBiasWeightAttribute(const QString& name, QRelationshipItemModel* model);
    void createRandomOrientationAttributes();
    void createMeasuredDepth();
    void hideShowOrientationWindows();
    void updateChartDataSetSelectionBoxes();
    void updateFilterComboBox();
    void setFilterKeyColumn();
    void updateAllViews(bool wellMarkerMode = false, bool emitSignalDataModified = false);
    void updateTableViews();
    void updateCellView();
    void initializeFieldDataSheet(bool createDefaultLine);
    // Room for count host rows at row, each one undo action: a negative row takes the first
    // free rows of the ticked columns (a row whose cells have no text, "Type" aside) and adds
    // what is missing after them, or appends. New rows are blank but for "Data_Type", which
    // tells vertex, marker and well curve records apart. firstNewHostRow() gives the first
    // row to fill.
    void addNewVertexData(int row, int count);
    void addNewMarkerData(int row, int count);
    void addNewWellCurveData(int row, int count);
    void checkResetChartsUpdateNeeded();
    void setNewRowSelectionFromGraphicalSelection(const boost::dynamic_bitset<>& rows);
    void setNewRowSelectionFromGraphicalStressAnalysisSelection(const boost::dynamic_bitset<>& rows);
    void updateRelationshipData();
    void updateDepthPlotData();
    void updateHistogramData();
    void updateRoseChartData();
    void updateStereoChartData();
    void updateTangentChartData();
    void updateBarChart();
    void slotDataModified(bool modified);
    void onDataModifiedTableMinMax(bool modified);
    void sortingPerformed();
    void enablePasteAction();
    void copyToClipboard();
    void pasteFromClipboard();
    bool slotSaveAs();
    void showSelectValueCellsDlg();
    void accept_SelectValueCellsDlg();
    void slotScrollToNextSelectedItem(bool rowMode);
    void slotScrollToPreviousSelectedItem(bool rowMode);
    void selectInverse();
    void accept_ClearSelection();
    void setCurrentHistogramDataSet();
    void clearAllSelections();

signals:
    void dataModified(bool modified);
    void signalEnablePasteAction();
    void applyStressTo3DView(QString name, double a, double b, double c, bool on);
    void updateStressColourMapSettings(QString name, double a, double b, double c, bool on);
    void showEmptyAttributesChanged();
    void signalCreateMeanPrincipalPointCloud();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void markAllChartsForUpdate();

private:
    enum class HostRowKind { Vertex, Marker, WellCurve };
    int addNewHostRows(HostRowKind kind, int row, int count);
    QWidget* chartPage(const QString& key) const;
    QString settingsPath() const { return m_settingsMainGroup + QLatin1Char('/') + m_settingsGroup; }
    void untickHiddenColumns(bool hideCoordinates);
    // The min/max table shows the sheet's headers: give its columns the sheet's widths.
    void syncColumnWidths();
    bool isCurrentTab(const char* key) const;
    void runChartUpdate(int flag);
    void handOverPanelData(QCrossPlotWidget* panel);
    // The dip, azimuth, colour, symbol and (with lineation) lineation columns a stereo or
    // tangent panel names, with the table's rows.
    void handOverOrientationData(QStereoChartWidget* panel, bool withLineation);
    // The column of a panel's box id, when it is still in the tree.
    MatrixData* chartNode(int id, const QList<MatrixData*>& leafs) const;
    void refillChartSelectionBoxes();
    // A chart page with the key as objectName, its icon and title, and the vertical splitter
    // that holds its panel above an empty frame.
    QSplitter* addChartPage(const char* key, const QString& iconFile, const QString& title);
    void setAllScatMarkersVisibility(bool visible);
    void setAllDecimatedDipAzimuthMarkersVisibility(bool visible);
    void setAllTopMarkersVisibility(bool visible);
    void setAllTypeMarkersVisibility(const QString& type, bool visible);

    bool m_resetSplittersOnResize = true;
    bool m_splitterResetPending = true;
    QDepthPlotWidget* m_depthPlot = nullptr;
    DisplayUnitManager* m_displayUnitManager = nullptr;
    bool m_withFieldData = false;
    QString m_absolutePath;
    QString m_fileName;
    MatrixData* m_dataRoot;
    int m_firstNewHostRow = -1;
    TabWidgetWithFloatingTabs* m_tabWidget = nullptr;
    QWidget* m_treeFrame = nullptr;
    QAttributeTreeView* m_treeView = nullptr;
    QTreeItemModel* m_treeItemModel = nullptr;
    QVertexModelTableView* m_vertexTable = nullptr;
    QVertexMinMaxModelTableView* m_minMaxVertexTable = nullptr;
    QGroupBox* m_validCellsOnlyGroupBox = nullptr;
    QComboBox* m_filterComboBox = nullptr;
    QCheckBox* m_showEmptyAttributesCheckBox = nullptr;
    QVertexItemModel* m_vertexItemModel = nullptr;
    QSortFilterProxyVertexItemModel* m_proxyModel = nullptr;
    QVertexMinMaxItemModel* m_minMaxVertexItemModel = nullptr;
    QSplitter* m_treeSplitter = nullptr;
    QRKEBarChartWidget* m_barChart = nullptr;
    QCrossPlotWidget* m_crossPlotChart = nullptr;
    QSplitter* m_barSplitter = nullptr;
    QSplitter* m_crossPlotSplitter = nullptr;
    QSplitter* m_depthSplitter = nullptr;
    QStereoChartWidget* m_stereoChart = nullptr;
    QTangentChartWidget* m_tangentChart = nullptr;
    QSplitter* m_stereoSplitter = nullptr;
    QSplitter* m_tangentSplitter = nullptr;
    QRoseChartWidget* m_roseChart = nullptr;
    QHistogramChartWidget* m_histogramChart = nullptr;
    QSplitter* m_histogramSplitter = nullptr;
    QSplitter* m_roseSplitter = nullptr;
    int m_currentSymbolItem = 0;
    int m_currentColorItem = 0;
    QAction* m_pasteAction = nullptr;
    bool m_chartsUpdateNeeded[7];
    QString m_settingsGroup;
    QString m_settingsMainGroup;
    QMenu* m_tableMenu = nullptr;
    QSelectCellsDialog* m_selectCellsDialog = nullptr;
};

} // namespace rkBase

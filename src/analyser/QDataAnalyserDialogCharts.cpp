// The chart tabs of the analyser window: how each page is built and wired, the stale flags, and
// the routes by which data and row selections reach the charts and come back to the table.
#include "QDataAnalyserDialog.h"

#include "TabWidgetWithFloatingTabs.h"
#include "WaitCursor.h"

#include <MatrixData.h>
#include <QAttributeTreeView.h>
#include <QCrossPlotWidget.h>
#include <QDepthPlotWidget.h>
#include <QRKEBarChartWidget.h>
#include <QHistogramChartWidget.h>
#include <QRelationshipItemModel.h>
#include <QRoseChartWidget.h>
#include <QStereoChartWidget.h>
#include <QTangentChartWidget.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexMinMaxModelTableView.h>
#include <QVertexModelTableView.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QMimeData>
#include <QSplitter>

#include <algorithm>

namespace rkBase {

namespace {
// Keys of the chart tabs, in the order slotTabWidgetChanged compares them, with the index of
// their stale flag (cross plot, bar chart, histogram, rose, stereo, tangent, depth).
struct ChartKey {
    const char* key;
    int flag;
};
const ChartKey kChartKeys[] = {{"BARCHART", 1},   {"HISTOGRAM", 2},   {"CROSSPLOT", 0},  {"ROSEPLOT", 3},
                               {"STEREOPLOT", 4}, {"TANGENTPLOT", 5}, {"WELLLOGPLOT", 6}};
constexpr int kDepthFlag = 6;

// The order in which the chart combo boxes are refilled.
const MatrixData::AttributeCollection kChartCollections[] = {MatrixData::SymbolAttributes, MatrixData::NumericAttributes,
                                                             MatrixData::OrientationAttributes, MatrixData::ColorAttributes,
                                                             MatrixData::PitchAndGroupAttributes};
} // namespace

// ---------------------------------------------------------------------------------------------
// Pages

QSplitter* QDataAnalyserDialog::addChartPage(const char* key, const QString& iconFile, const QString& title)
{
    auto* page = new QWidget;
    page->setObjectName(QLatin1String(key));
    const QIcon icon(iconFile);
    page->setWindowIcon(icon);
    m_tabWidget->addTab(page, icon, title);
    auto* layout = new QGridLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new QSplitter(Qt::Vertical, page);
    layout->addWidget(splitter, 0, 0);
    return splitter;
}

void QDataAnalyserDialog::createBarDiagram(const QString& chartSettingsKey)
{
    m_barSplitter = addChartPage("BARCHART", QStringLiteral(":/rkBaseQt/Resources/chart_bar.png"),
                                 QCoreApplication::translate("AttributeBrowser", "Bar Chart"));
    m_barChart = new QRKEBarChartWidget(m_dataRoot, chartSettingsKey, m_barSplitter, 0, m_withFieldData);
    m_barSplitter->addWidget(m_barChart);
    m_barSplitter->addWidget(new QFrame(m_barSplitter));
    m_barSplitter->parentWidget()->setBackgroundRole(QPalette::ColorRole(9));
    m_barChart->resetAxesColor();
}

void QDataAnalyserDialog::createRelationshipChart(const QString&)
{
    m_crossPlotSplitter = addChartPage("CROSSPLOT", QStringLiteral(":/rkBaseQt/Resources/cross_plot.png"), tr("Cross Plot"));
    m_crossPlotChart = new QCrossPlotWidget(m_crossPlotSplitter, m_displayUnitManager, true, true, false);
    m_crossPlotSplitter->addWidget(m_crossPlotChart);
    m_crossPlotSplitter->addWidget(new QFrame(m_crossPlotSplitter));
    connect(m_crossPlotChart, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this,
            SLOT(setNewRowSelectionFromGraphicalSelection(boost::dynamic_bitset<>)));
    connect(m_crossPlotChart, SIGNAL(signalUpdateChartData()), this, SLOT(updateRelationshipData()));
    connect(m_crossPlotChart, SIGNAL(createClusterAttribute(QString, QRelationshipItemModel*)), this,
            SLOT(createClusterAttribute(QString, QRelationshipItemModel*)));
    m_crossPlotChart->setDataRoot(m_dataRoot);
}

void QDataAnalyserDialog::createDepthPlot(const QString&)
{
    m_depthSplitter = addChartPage("WELLLOGPLOT", QStringLiteral(":/rkBaseQt/Resources/well_log_plot.png"), tr("Depth Plot"));
    m_depthPlot = new QDepthPlotWidget(m_depthSplitter, m_displayUnitManager, true, true, true, true);
    m_depthSplitter->addWidget(m_depthPlot);
    m_depthSplitter->addWidget(new QFrame(m_depthSplitter));
    connect(m_depthPlot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this,
            SLOT(setNewRowSelectionFromGraphicalSelection(boost::dynamic_bitset<>)));
    connect(m_depthPlot, SIGNAL(createDataDecimationAttribute(QRelationshipItemModel*, bool, bool, bool, MatrixData*)), this,
            SLOT(createDataDecimationAttribute(QRelationshipItemModel*, bool, bool, bool, MatrixData*)));
    connect(m_depthPlot, SIGNAL(signalUpdateChartData()), this, SLOT(updateDepthPlotData()));
    m_depthPlot->setDataRoot(m_dataRoot);
}

void QDataAnalyserDialog::createStereoChart(const QString& chartSettingsKey)
{
    m_stereoSplitter = addChartPage("STEREOPLOT", QStringLiteral(":/rkBaseQt/Resources/stereo_plot.png"), tr("Stereo Plot"));
    m_stereoChart = new QStereoChartWidget(tr("Stereo Projection"), m_stereoSplitter, m_displayUnitManager, true, true,
                                           Qt::WindowFlags(), true, chartSettingsKey);
    m_stereoSplitter->addWidget(m_stereoChart);
    m_stereoSplitter->addWidget(new QFrame(m_stereoSplitter));
    connect(m_stereoChart, SIGNAL(dataSetSelected()), this, SLOT(updateStereoChartData()));
    connect(m_stereoChart, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this,
            SLOT(setNewRowSelectionFromGraphicalSelection(boost::dynamic_bitset<>)));
    connect(m_stereoChart, SIGNAL(signalCreateMeanPrincipalPointCloud()), this, SIGNAL(signalCreateMeanPrincipalPointCloud()));
    connect(m_stereoChart, SIGNAL(createRotatedAttributes()), this, SLOT(createRotatedAttributes()));
    connect(m_stereoChart, SIGNAL(createClusterAttribute(QString, QRelationshipItemModel*)), this,
            SLOT(createClusterAttribute(QString, QRelationshipItemModel*)));
    connect(m_stereoChart, SIGNAL(createBiasWeightAttribute(QString, QRelationshipItemModel*)), this,
            SLOT(createBiasWeightAttribute(QString, QRelationshipItemModel*)));
    m_stereoChart->setDataRoot(m_dataRoot);
}

void QDataAnalyserDialog::createHistogram(const QString&)
{
    m_histogramSplitter = addChartPage("HISTOGRAM", QStringLiteral(":/rkBaseQt/Resources/histogram.png"),
                                       tr("Histogram Chart"));
    m_histogramChart = new QHistogramChartWidget(tr("Histogram"), m_histogramSplitter, m_displayUnitManager, true,
                                                 false, false);
    m_histogramChart->setStyleSheet(QStringLiteral("QWidget#sidePanelSplitter { background-color: white }"));
    m_histogramSplitter->addWidget(m_histogramChart);
    m_histogramSplitter->addWidget(new QFrame(m_histogramSplitter));
    connect(m_histogramChart, SIGNAL(dataSetSelected()), this, SLOT(updateHistogramData()));
    connect(m_histogramChart, SIGNAL(createRandomOrientation()), this, SLOT(createRandomOrientationAttributes()));
    m_histogramChart->setDataRoot(m_dataRoot);
}

void QDataAnalyserDialog::createRoseChart(const QString&)
{
    m_roseSplitter = addChartPage("ROSEPLOT", QStringLiteral(":/rkBaseQt/Resources/rose_plot.png"), tr("Rose Plot"));
    m_roseChart = new QRoseChartWidget(tr("Rose Chart"), m_roseSplitter, true, true, Qt::WindowFlags());
    m_roseSplitter->addWidget(m_roseChart);
    m_roseSplitter->addWidget(new QFrame(m_roseSplitter));
    connect(m_roseChart, SIGNAL(dataSetSelected()), this, SLOT(updateRoseChartData()));
}

void QDataAnalyserDialog::createTangentChart(const QString&)
{
    m_tangentSplitter = addChartPage("TANGENTPLOT", QStringLiteral(":/rkBaseQt/Resources/tangent_plot.png"), tr("Tangent Plot"));
    m_tangentChart = new QTangentChartWidget(tr("Tangent Plot"), m_tangentSplitter, m_displayUnitManager, true, true,
                                             Qt::WindowFlags());
    m_tangentSplitter->addWidget(m_tangentChart);
    m_tangentSplitter->addWidget(new QFrame(m_tangentSplitter));
    connect(m_tangentChart, SIGNAL(dataSetSelected()), this, SLOT(updateTangentChartData()));
    connect(m_tangentChart, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this,
            SLOT(setNewRowSelectionFromGraphicalSelection(boost::dynamic_bitset<>)));
    m_tangentChart->setDataRoot(m_dataRoot);
}

void QDataAnalyserDialog::setLightMode()
{
    if (m_stereoChart)
        m_stereoChart->setLightMode();
    if (m_tangentChart)
        m_tangentChart->setLightMode();
    // The depth panel is told twice: hosts have always called it so, and it does no harm.
    if (m_depthPlot)
        m_depthPlot->setLightMode();
    if (m_roseChart)
        m_roseChart->setLightMode();
    if (m_crossPlotChart)
        m_crossPlotChart->setLightMode();
    if (m_depthPlot)
        m_depthPlot->setLightMode();
}

void QDataAnalyserDialog::resetSplitterRatios()
{
    // A window without a bar chart never resets its splitters.
    if (!m_splitterResetPending || !m_barSplitter)
        return;
    const QList<int> sizes{m_tabWidget ? m_tabWidget->height() : 0, 0};
    for (QSplitter* splitter : {m_barSplitter, m_histogramSplitter, m_crossPlotSplitter, m_depthSplitter, m_roseSplitter,
                                 m_stereoSplitter, m_tangentSplitter})
        if (splitter)
            splitter->setSizes(sizes);
    m_splitterResetPending = false;
}

void QDataAnalyserDialog::copyToClipboard()
{
    if (m_barChart && isCurrentTab("BARCHART")) {
        m_barChart->copyToClipboard();
        if (m_pasteAction)
            m_pasteAction->setEnabled(false);
        return;
    }
    if (m_histogramChart && isCurrentTab("HISTOGRAM")) {
        m_histogramChart->copyToClipboard();
        if (m_pasteAction)
            m_pasteAction->setEnabled(false);
        return;
    }
    if (m_roseChart && isCurrentTab("ROSEPLOT")) {
        m_roseChart->copyEWMFToClipboard();
        if (m_pasteAction)
            m_pasteAction->setEnabled(false);
        return;
    }
    QStereoChartWidget* orientation = isCurrentTab("STEREOPLOT")    ? m_stereoChart
                                      : isCurrentTab("TANGENTPLOT") ? static_cast<QStereoChartWidget*>(m_tangentChart)
                                                                    : nullptr;
    if (orientation) {
        orientation->copyToClipboard();
        if (m_pasteAction)
            m_pasteAction->setEnabled(false);
        return;
    }
    QCrossPlotWidget* panel = isCurrentTab("CROSSPLOT") ? m_crossPlotChart
                              : isCurrentTab("WELLLOGPLOT") ? static_cast<QCrossPlotWidget*>(m_depthPlot)
                                                            : nullptr;
    if (panel) {
        panel->slotCopyWEMFToClipboard();
        if (m_pasteAction)
            m_pasteAction->setEnabled(false);
        return;
    }
    if (!m_vertexTable || !isCurrentTab("TABLE"))
        return;
    QMimeData* mime = m_vertexTable->getSelectedData();
    if (!mime)
        return;
    QApplication::clipboard()->setMimeData(mime);
    if (m_pasteAction)
        m_pasteAction->setEnabled(true);
}

// ---------------------------------------------------------------------------------------------
// Stale flags

void QDataAnalyserDialog::resetChartsUpdateNeeded()
{
    std::fill(std::begin(m_chartsUpdateNeeded), std::end(m_chartsUpdateNeeded), true);
}

void QDataAnalyserDialog::markAllChartsForUpdate()
{
    resetChartsUpdateNeeded();
}

bool QDataAnalyserDialog::isCurrentTab(const char* key) const
{
    QWidget* page = m_tabWidget ? m_tabWidget->currentWidget() : nullptr;
    return page && page->objectName() == QLatin1String(key);
}

void QDataAnalyserDialog::runChartUpdate(int flag)
{
    switch (flag) {
    case 0:
        updateRelationshipData();
        break;
    case 1:
        updateBarChart();
        break;
    case 2:
        updateHistogramData();
        break;
    case 3:
        updateRoseChartData();
        break;
    case 4:
        updateStereoChartData();
        break;
    case 5:
        updateTangentChartData();
        break;
    case 6:
        updateDepthPlotData();
        break;
    default:
        break;
    }
}

void QDataAnalyserDialog::slotTabWidgetChanged()
{
    if (!m_tabWidget)
        return;
    QWidget* page = m_tabWidget->currentWidget();
    resetSplitterRatios();
    if (!page)
        return;
    const QString key = page->objectName();
    for (const ChartKey& k : kChartKeys) {
        if (key != QLatin1String(k.key))
            continue;
        // Only the chart in front catches up; the others stay stale until their tabs are shown.
        // The depth track is filled with its redraws held back, so that it paints once.
        const bool depth = k.flag == kDepthFlag && m_depthPlot;
        const bool wasHeld = depth && !m_depthPlot->updatesEnabled();
        if (depth)
            m_depthPlot->setUpdatesEnabled(false);
        if (m_chartsUpdateNeeded[k.flag])
            runChartUpdate(k.flag);
        m_chartsUpdateNeeded[k.flag] = false;
        if (depth && !wasHeld)
            m_depthPlot->setUpdatesEnabled(true);
        return;
    }
}

void QDataAnalyserDialog::checkResetChartsUpdateNeeded()
{
    if (!m_vertexTable)
        return;
    // Lengths only: a new selection of the same size leaves the charts as they are.
    const std::vector<int> table = m_vertexTable->selectedRows(0);
    const std::vector<int> crossPlot = m_crossPlotChart ? m_crossPlotChart->selectedDataRows() : std::vector<int>();
    if (table.size() != crossPlot.size())
        resetChartsUpdateNeeded();
}

// ---------------------------------------------------------------------------------------------
// Data and rows into the charts

std::vector<int> QDataAnalyserDialog::chartDataRows() const
{
    if (!m_vertexTable)
        return std::vector<int>();
    std::vector<int> rows = m_vertexTable->selectedRows(0);
    if (rows.empty() && m_validCellsOnlyGroupBox && m_validCellsOnlyGroupBox->isChecked())
        rows = m_vertexTable->validCellRows();
    return rows;
}

// Each chart's update: a guard, the wait cursor, the columns the panel's boxes name and the
// rows the table selects, handed to the panel. Bar chart, histogram and rose guard on their tab
// even when called directly, so that a selection never rebuilds a chart nobody sees.

// The columns a panel's boxes name, as the sheet numbers them; a box on "None" or on a column
// the sheet no longer shows gives null, and the panel draws nothing for it. The sheet's model
// may still number a column that the host has taken out of the tree and not yet told the window
// about: only columns still in the tree are handed over.
MatrixData* QDataAnalyserDialog::chartNode(int id, const QList<MatrixData*>& leafs) const
{
    MatrixData* n = m_vertexItemModel ? m_vertexItemModel->getNode(id) : nullptr;
    return n && leafs.contains(n) ? n : nullptr;
}

void QDataAnalyserDialog::handOverPanelData(QCrossPlotWidget* panel)
{
    WaitCursor wait;
    const QList<MatrixData*> leafs = m_dataRoot ? m_dataRoot->leafs() : QList<MatrixData*>();
    auto node = [this, &leafs](int id) { return chartNode(id, leafs); };
    MatrixData* horizontal = node(panel->currentHorizontalSelectedDataSet());
    MatrixData* vertical = node(panel->currentVerticalSelectedDataSet());
    MatrixData* colour = node(panel->currentColorSelectedDataSet());
    MatrixData* symbol = node(panel->currentSymbolSelectedDataSet());
    MatrixData* tadpole = node(panel->currentTadpoleSelectedDataSet());
    panel->model()->setTadPoleAzimuthDataNode(tadpole);
    panel->setDataSet(horizontal, vertical, symbol, colour, chartDataRows());
}

void QDataAnalyserDialog::updateRelationshipData()
{
    if (m_crossPlotChart)
        handOverPanelData(m_crossPlotChart);
}

void QDataAnalyserDialog::updateDepthPlotData()
{
    if (m_depthPlot)
        handOverPanelData(m_depthPlot);
}

void QDataAnalyserDialog::updateHistogramData()
{
    if (!m_histogramChart || !isCurrentTab("HISTOGRAM"))
        return;
    WaitCursor wait;
    const QList<MatrixData*> leafs = m_dataRoot ? m_dataRoot->leafs() : QList<MatrixData*>();
    MatrixData* node = chartNode(m_histogramChart->currentSelectedDataSet(), leafs);
    if (!node)
        return;
    m_histogramChart->setDataSet(node, chartDataRows(), -1);
}

void QDataAnalyserDialog::updateRoseChartData()
{
    if (!m_roseChart || !isCurrentTab("ROSEPLOT"))
        return;
    WaitCursor wait;
    const QList<MatrixData*> leafs = m_dataRoot ? m_dataRoot->leafs() : QList<MatrixData*>();
    m_roseChart->setDataSet(chartNode(m_roseChart->currentSelectedDataSet(), leafs),
                            chartNode(m_roseChart->currentColorSelectedDataSet(), leafs), chartDataRows());
}

void QDataAnalyserDialog::handOverOrientationData(QStereoChartWidget* panel, bool withLineation)
{
    WaitCursor wait;
    const QList<MatrixData*> leafs = m_dataRoot ? m_dataRoot->leafs() : QList<MatrixData*>();
    auto node = [this, &leafs](int id) { return chartNode(id, leafs); };
    MatrixData* plunge = withLineation ? node(panel->currentLineationPlungeDataSet()) : nullptr;
    MatrixData* plungeAzimuth = withLineation ? node(panel->currentLineationPlungeAzimuthDataSet()) : nullptr;
    panel->setDataSet(node(panel->currentDipSelectedDataSet()), node(panel->currentAzimuthSelectedDataSet()),
                      node(panel->currentColorSelectedDataSet()), node(panel->currentSymbolSelectedDataSet()), plunge,
                      plungeAzimuth, chartDataRows());
}

void QDataAnalyserDialog::updateStereoChartData()
{
    if (m_stereoChart)
        handOverOrientationData(m_stereoChart, true);
}

void QDataAnalyserDialog::updateTangentChartData()
{
    if (m_tangentChart)
        handOverOrientationData(m_tangentChart, false);
}

void QDataAnalyserDialog::updateBarChart()
{
    if (!m_barChart || !isCurrentTab("BARCHART"))
        return;
    WaitCursor wait;
    m_barChart->updateView(chartDataRows(), true);
}

// ---------------------------------------------------------------------------------------------
// Selection boxes

void QDataAnalyserDialog::refillChartSelectionBoxes()
{
    for (MatrixData::AttributeCollection collection : kChartCollections)
        updateChartDataSetSelectionBox(collection);
    updateFilterComboBox();
}

void QDataAnalyserDialog::updateChartDataSetSelectionBoxes()
{
    if (m_dataRoot && m_dataRoot->numberOfSelectedItems() == 0) {
        if (m_vertexTable)
            m_vertexTable->resetEmpty();
        if (m_minMaxVertexTable)
            m_minMaxVertexTable->resetEmpty();
    }
    refillChartSelectionBoxes();
    slotTabWidgetChanged();
}

void QDataAnalyserDialog::updateChartDataSetSelectionBox(MatrixData::AttributeCollection collection)
{
    if (!m_dataRoot)
        return;
    QList<QString> nameList;
    QList<int> ids;
    QList<QColor> colors;
    m_dataRoot->getDataSetSelectionBoxItems(nameList, ids, colors, collection, false);
    const QStringList names(nameList);
    QCrossPlotWidget* const panels[] = {m_crossPlotChart, m_depthPlot};
    for (QCrossPlotWidget* panel : panels) {
        if (!panel)
            continue;
        switch (collection) {
        case MatrixData::NumericAttributes:
            panel->updateDataSetSelectionBox(names, ids);
            if (panel == m_crossPlotChart)
                panel->updateThirdDimAttributeDataSetSelectionBox(names, ids);
            break;
        case MatrixData::ColorAttributes:
            panel->updateColorAttributeDataSetSelectionBox(names, ids, m_currentColorItem);
            break;
        case MatrixData::OrientationAttributes:
            panel->updateTadPoleAttributeDataSetSelectionBox(names, ids);
            break;
        case MatrixData::PitchAndGroupAttributes:
            break;
        default:
            panel->updateSymbolAttributeDataSetSelectionBox(names, ids, m_currentSymbolItem);
            break;
        }
    }
    QStereoChartWidget* const orientationPanels[] = {m_stereoChart, m_tangentChart};
    for (QStereoChartWidget* panel : orientationPanels) {
        if (!panel)
            continue;
        switch (collection) {
        case MatrixData::NumericAttributes:
            break;
        case MatrixData::ColorAttributes:
            // The symbol item on purpose: these panels have always been given it.
            panel->updateColorAttributeDataSetSelectionBox(names, ids, m_currentSymbolItem);
            break;
        case MatrixData::OrientationAttributes:
            panel->updateDataSetSelectionBox(names, ids);
            if (panel == m_stereoChart)
                panel->updateLineationDataSetSelectionBox(names, ids);
            break;
        case MatrixData::PitchAndGroupAttributes:
            if (panel == m_stereoChart)
                panel->updatePitchDirectionDataSetSelectionBox(names, ids);
            break;
        default:
            panel->updateSymbolAttributeDataSetSelectionBox(names, ids, m_currentSymbolItem);
            break;
        }
    }
    if (m_histogramChart) {
        if (collection == MatrixData::NumericAttributes) {
            m_histogramChart->updateDataSetSelectionBox(names, ids, colors);
            if (MatrixData* first = m_treeView ? m_treeView->firstSelected() : nullptr)
                m_histogramChart->setCurrentDataSet(first->name());
        } else if (collection == MatrixData::PitchAndGroupAttributes) {
            m_histogramChart->updateDataSetSelectionBoxForDataGroup(names, ids, colors);
        }
    }
    if (m_roseChart) {
        if (collection == MatrixData::OrientationAttributes)
            m_roseChart->updateDataSetSelectionBox(names, ids, colors);
        else if (collection == MatrixData::SymbolAttributes)
            m_roseChart->updateColorAttributeDataSetSelectionBox(names, ids, QString());
    }
    resetChartsUpdateNeeded();
}

void QDataAnalyserDialog::setFilterKeyColumn()
{
    if (!m_proxyModel)
        return;
    WaitCursor wait;
    const bool validOnly = m_validCellsOnlyGroupBox->isChecked();
    m_proxyModel->setFilterEmptyCells(validOnly);
    m_proxyModel->setFilterKeyColumn(std::abs(m_filterComboBox->currentData().toInt()));
    // Under the filter the charts show only the rows it lets through; without it, all rows with
    // the selection highlighted.
    const auto type = validOnly ? QRelationshipItemModel::ShowSelectedOnly : QRelationshipItemModel::HighlightSelected;
    if (m_crossPlotChart)
        m_crossPlotChart->setDisplayDataType(type);
    if (m_depthPlot)
        m_depthPlot->setDisplayDataType(type);
    for (QStereoChartWidget* panel : {m_stereoChart, static_cast<QStereoChartWidget*>(m_tangentChart)})
        if (panel)
            panel->setDisplayDataType(type);
    resetChartsUpdateNeeded();
    slotTabWidgetChanged();
}

// ---------------------------------------------------------------------------------------------
// Selections from the charts

void QDataAnalyserDialog::setNewRowSelectionFromGraphicalSelection(const boost::dynamic_bitset<>& rows)
{
    if (m_vertexTable) {
        m_vertexTable->slotRowsSelected(rows);
        m_vertexTable->setNewRowSelection(rows);
        resetChartsUpdateNeeded();
    }
}

void QDataAnalyserDialog::setNewRowSelectionFromGraphicalStressAnalysisSelection(const boost::dynamic_bitset<>& rows)
{
    if (m_vertexTable) {
        m_vertexTable->slotRowsSelected(rows);
        m_vertexTable->setNewRowSelection(rows);
    }
    resetChartsUpdateNeeded();
}

} // namespace rkBase

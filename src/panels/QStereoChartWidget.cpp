// Set-up, data entry, the selection boxes and the central update of the stereo panel.
#include "QStereoChartWidget.h"

#include "ui_QBestFitOfFisherWidget.h"

#include "PanelBackground.h"
#include "PanelColorButton.h"
#include "PanelColorRange.h"
#include "PanelComboBoxes.h"
#include "PanelZoomScrollBars.h"
#include "QDataStatisticSummary.h"
#include "QLegendListModel.h"
#include "QLegendListView.h"
#include "QProbabilityPlot.h"
#include "StereoColorButton.h"
#include "QStereoPlotWidget.h"
#include "QWoodcockHelpWidget.h"

#include <MatrixData.h>

#include <QGuiApplication>
#include <QScrollBar>
#include <QSignalBlocker>

#include <cmath>

namespace rkBase {

namespace {
QString panelText(const char* text)
{
    return QCoreApplication::translate("QStereoChartWidget", text);
}

const char* const kPlotFoldAxisPage = "PlotFoldAxis";
} // namespace

QStereoChartWidget::QStereoChartWidget(const QString& title, QWidget* parent, DisplayUnitManager* unitManager,
                                       bool extended1, bool extended2, Qt::WindowFlags flags, bool createChart,
                                       const QString& settingsName)
    : QWidget(parent, flags), m_fitUi(std::make_unique<Ui::QBestFitOfFisherWidget>()), m_unitManager(unitManager),
      m_extended(extended1 && extended2), m_title(title), m_settingsPrefix(settingsName)
{
    setupUi(this);
    m_scrollBars = std::make_unique<PanelZoomScrollBars>(m_pqHorizontalScrollBar, m_pqVerticalScrollBar);
    m_colorRange = std::make_unique<PanelColorRange>(m_pqColorMinRange, m_pqColorMaxRange, m_pqColorIntervalSize);
    m_contourRange = std::make_unique<PanelColorRange>(m_pqContourMinRange, m_pqContourMaxRange,
                                                       m_pqContourIntervalSize);

    m_pqDisplayDataComboBox->addItem(panelText("All + Highlight Selection"),
                                     int(QRelationshipItemModel::HighlightSelected));
    m_pqDisplayDataComboBox->addItem(panelText("All"), int(QRelationshipItemModel::ShowAll));
    m_pqDisplayDataComboBox->addItem(panelText("Selected Data Only"), int(QRelationshipItemModel::ShowSelectedOnly));

    // The fold axis belongs to the tangent plot, which puts the page back.
    setPageRemoved(QString::fromLatin1(kPlotFoldAxisPage));
    if (!m_extended) {
        m_pqStereoToolBox->hide();
        m_pqDataSetFrame->hide();
        m_pqTabWidget->removeTab(1);
    }
    m_pqSidePanelSplitter->setSizes({400, 230});
    m_pqLegendSplitter->setSizes({500, 100});
    m_pqStereoToolBox->layout()->setSpacing(0);
    m_pqStereoToolBox->setAutoFillBackground(true);
    for (const StereoColorButton& c : StereoColorButton::all())
        PanelColorButton::setColor(this->*c.button, QColor(QString::fromLatin1(c.defaultColor)));
    m_pqHorizontalScrollBar->hide();
    m_pqVerticalScrollBar->hide();

    if (createChart) {
        createChartArea(title);
        initializeChart();
    }
}

QStereoChartWidget::~QStereoChartWidget()
{
    // The charts read the models while they go: take them down first.
    delete m_drawingArea;
    m_drawingArea = nullptr;
    delete m_woodcockWidget;
    m_woodcockWidget = nullptr;
    deleteLineationData();
}

void QStereoChartWidget::createChartArea(const QString& title)
{
    installChartArea(new QStereoPlotWidget(m_pqStereoPlotFrame, title));
}

void QStereoChartWidget::installChartArea(QStereoPlotWidget* plot)
{
    m_drawingArea = plot;
    plot->setObjectName(QStringLiteral("stereoPlot"));
    m_pqStereoPlotLayout->addWidget(plot, 0, 0);
    connect(plot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this,
            SLOT(slotDataPointsSelection(boost::dynamic_bitset<>)));
    connect(plot, SIGNAL(cursorPos(QPointF, bool)), this, SLOT(updateCursorPosLabel(QPointF)));
    connect(plot, SIGNAL(clearSelection()), this, SLOT(slotClearLegendSelection()));
    connect(plot, SIGNAL(zoomChanged(double)), this, SLOT(chartZoomChanged(double)));
    connect(plot, SIGNAL(signalBasicModifyCellValues()), this, SIGNAL(signalModifyCellValues()));
    plot->allowCopyToWMF(true);
    m_model = new QRelationshipItemModel(this);
    m_model->setObjectName(QStringLiteral("stereoModel"));
    m_lineationModel = new QRelationshipItemModel(this);
    m_lineationModel->setObjectName(QStringLiteral("lineationModel"));
    plot->setModel(m_model);
    plot->setLineationModel(m_lineationModel);
}

void QStereoChartWidget::initializeChart()
{
    m_drawingArea->initializePointSytleComboBox(m_pqPointTypeComboBox, true);
    m_drawingArea->initializePointSytleComboBox(m_pqLineationPointStyleComboBox, true);
    createSymbolLegendView();
    createColorLegendView();
    if (m_extended) {
        m_woodcockWidget = new QWoodcockHelpWidget(WOODCOCK);
        m_woodcockWidget->setObjectName(QStringLiteral("woodcockWidget"));
        // The diagram sizes its symbols on the model it is given: not the chart's.
        m_woodcockWidget->setModel(new QRelationshipItemModel(m_woodcockWidget));
        m_pqWoodcockLayout->addWidget(m_woodcockWidget);
        createStatisticTabs();
    }

    // The sixteen colour buttons.
    connect(m_pqPlaneColorButton, SIGNAL(pressed()), this, SLOT(changePlaneColor()));
    connect(m_pqMeanPrincipalPlaneColorButton, SIGNAL(pressed()), this, SLOT(changeMeanPrincipalPlaneColor()));
    connect(m_pqMeanResultantPlaneColorButton, SIGNAL(pressed()), this, SLOT(changeMeanResultantPlaneColor()));
    connect(m_pqSuggestedSectionPlaneColorButton, SIGNAL(pressed()), this, SLOT(changeSuggestedSectionPlaneColor()));
    connect(m_pqBestFitPlaneColorButton, SIGNAL(pressed()), this, SLOT(changeBestFitPlaneColor()));
    connect(m_pqPoleColorButton, SIGNAL(pressed()), this, SLOT(changePoleColor()));
    connect(m_pqMeanPrincipalPoleColorButton, SIGNAL(pressed()), this, SLOT(changeMeanPrincipalPoleColor()));
    connect(m_pqMeanResultantPoleColorButton, SIGNAL(pressed()), this, SLOT(changeMeanResultantPoleColor()));
    connect(m_pqTPoleColorButton, SIGNAL(pressed()), this, SLOT(changeTPoleColor()));
    connect(m_pqLPoleColorButton, SIGNAL(pressed()), this, SLOT(changeLPoleColor()));
    connect(m_pqAzimuthColorButton, SIGNAL(pressed()), this, SLOT(changeAzimuthColor()));
    connect(m_pqMeanPrincipalAzimuthColorButton, SIGNAL(pressed()), this, SLOT(changeMeanPrincipalAzimuthColor()));
    connect(m_pqMeanResultantAzimuthColorButton, SIGNAL(pressed()), this, SLOT(changeMeanResultantAzimuthColor()));
    connect(m_pqTAzimuthColorButton, SIGNAL(pressed()), this, SLOT(changeTazimuthColor()));
    connect(m_pqLAzimuthColorButton, SIGNAL(pressed()), this, SLOT(changeLazimuthColor()));
    connect(m_pqLineationColorButton, SIGNAL(pressed()), this, SLOT(changeLineationColor()));

    connect(m_pqBiasCorrectionCheckBox, SIGNAL(stateChanged(int)), this, SLOT(slotEnableBiasCorrection(int)));
    connect(m_pqTabWidget, SIGNAL(currentChanged(int)), this, SLOT(slotTabWidgetChanged(int)));
    connect(m_pqDisplayDataComboBox, SIGNAL(activated(int)), this, SLOT(updateStereoPlot(int)));
    connect(m_pqCursorInformationComboBox, SIGNAL(activated(int)), this, SLOT(updateCursorPosLabel()));
    connect(m_pqDipComboBox, SIGNAL(activated(int)), this, SIGNAL(dataSetSelected()));
    connect(m_pqAzimuthComboBox, SIGNAL(activated(int)), this, SIGNAL(dataSetSelected()));
    connect(m_pqSymbolsComboBox, SIGNAL(activated(int)), this, SLOT(slotSymbolAttributeSelected()));
    connect(m_pqColourMapComboBox, SIGNAL(activated(int)), this, SLOT(slotSymbolAttributeSelected()));
    for (QComboBox* box : {m_pqPitchPlaneDipComboBox, m_pqPitchPlaneAzimuthComboBox, m_pqPitchComboBox,
                           m_pqPitchDirectionComboBox, m_pqLineationPlungeComboBox, m_pqLineationAzimuthComboBox})
        connect(box, SIGNAL(activated(int)), this, SLOT(slotSelectLineation()));
    connect(m_pqPlungeAzimuthGroupBox, SIGNAL(toggled(bool)), this, SLOT(slotPlungeAzimuthGroupBoxToggled(bool)));
    connect(m_pqPlanePitchGroupBox, SIGNAL(toggled(bool)), this, SLOT(slotPlanePitchGroupBoxToggled(bool)));
    connect(m_pqDipDipAzimuthRadioButton, SIGNAL(toggled(bool)), this, SLOT(conventionSwitch()));
    connect(m_pqWhiteBackgroundRadioButton, SIGNAL(toggled(bool)), this, SLOT(blackWhiteSwitch()));

    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{
             m_pqWulffRadioButton, m_pqAnnotationAnglesRadioButton, m_pqAnnotationDirectionsRadioButton,
             m_pqAnnotationOffRadioButton, m_pqShow10DegreeNet, m_pqShow2DegreeNet, m_pqShowPlanes,
             m_pqShowMeanPrincipalPlane, m_pqShowMeanResultantPlane, m_pqShowSuggestedSectionPlane,
             m_pqShowBestFitPlane, m_pqShowPoles, m_pqShowMeanPrincipalPole, m_pqShowMeanResultantPole, m_pqShowTPole,
             m_pqShowLPole, m_pqShowAzimuths, m_pqShowMeanPrincipalAzimuth, m_pqShowMeanResultantAzimuth,
             m_pqShowTAzimuth, m_pqShowLAzimuth, m_pqShowLineation, m_pqShowLabels})
        connect(b, SIGNAL(toggled(bool)), this, SLOT(updateStereoPlotSettings()));
    for (QSpinBox* s : {m_pqPlaneWidthSpinBox, m_pqMeanPrincipalPlaneWidthSpinBox, m_pqMeanResultantPlaneWidthSpinBox,
                        m_pqSuggestedSectionPlaneWidthSpinBox, m_pqBestFitPlaneWidthSpinBox})
        connect(s, SIGNAL(valueChanged(int)), this, SLOT(updateStereoPlotSettings()));
    for (QRadioButton* r : {m_pqSelectionRadioButton, m_pqProjectedPlaneRadioButton, m_pqPoleRadioButton}) {
        connect(r, SIGNAL(toggled(bool)), this, SLOT(updateGraphicalSelection()));
        connect(r, SIGNAL(toggled(bool)), this, SLOT(updateStereoPlotSettings()));
    }
    connect(m_pqCalculationForComboBox, SIGNAL(activated(int)), this, SLOT(slotDataSourceSelected()));
    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{
             m_pqContoursForPoles, m_pqContoursForDipDirections, m_pqWithContoursRadioButton, m_pqShowContourLabels,
             m_pqShowDensityGrid, m_pqContourBlueRedRadioButton})
        connect(b, SIGNAL(toggled(bool)), this, SLOT(updateStereoPlotContours()));
    connect(m_pqDiscreteDensityGroupBox, SIGNAL(toggled(bool)), this, SLOT(updateStereoPlotContours()));
    connect(m_pqGridCellsSpinBox, SIGNAL(editingFinished()), this, SLOT(slotUpdateDensityGridMap()));
    connect(m_pqCountingMethodComboBox, SIGNAL(activated(int)), this, SLOT(slotUpdateDensityGridMap()));
    for (QLineEdit* e : {m_pqContourMinRange, m_pqContourMaxRange, m_pqContourIntervalSize})
        connect(e, SIGNAL(editingFinished()), this, SLOT(updateStereoPlotContours()));
    connect(m_pqClusterMeanPoles, SIGNAL(clicked()), this, SLOT(updateStereoPlotSettings()));
    connect(m_pqClusterMeanAzimuths, SIGNAL(clicked()), this, SLOT(updateStereoPlotSettings()));
    connect(m_pqClusterMeansComboBox, SIGNAL(activated(int)), this, SLOT(updateClusterMeansTable()));
    connect(m_pqPointSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateStereoPlotSettings()));
    connect(m_pqPointSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateSymbolLegend()));
    connect(m_pqPointSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateColorLegend()));
    connect(m_pqPointTypeComboBox, SIGNAL(activated(int)), this, SLOT(updateStereoPlotSettings()));
    connect(m_pqLineationPointSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateStereoPlotSettings()));
    connect(m_pqLineationPointStyleComboBox, SIGNAL(activated(int)), this, SLOT(updateStereoPlotSettings()));
    connect(m_pqApplyRotationButton, SIGNAL(pressed()), this, SLOT(rotateDataAboutRotationAxis()));
    connect(m_pqCentraliseMeanButton, SIGNAL(pressed()), this, SLOT(rotateDataToCenterPole()));
    connect(m_pqGenerateBiasCorrectionButton, SIGNAL(pressed()), this, SLOT(slotApplyCreateBiasWeightAttribute()));
    connect(m_pqCreateNewAttributesButton, SIGNAL(pressed()), this, SIGNAL(createRotatedAttributes()));
    connect(m_pqResetContourRangeButton, SIGNAL(clicked()), this, SLOT(slotResetContourRanges()));
    connect(m_pqApplyClusterGenerationButton, SIGNAL(clicked()), this, SLOT(slotApplyClusterGeneration()));
    connect(m_pqCreateMeanPrincipalPointCloudButton, SIGNAL(clicked()), this,
            SIGNAL(signalCreateMeanPrincipalPointCloud()));
    connect(m_pqSingleSymbolRadioButton, SIGNAL(clicked()), this, SLOT(updateSymbolPointStyle()));
    connect(m_pqMultipleSymbolRadioButton, SIGNAL(clicked()), this, SLOT(updateSymbolPointStyle()));
    connect(m_pqResetColorRangeButton, SIGNAL(clicked()), this, SLOT(slotResetDisplayColorAttribute()));
    connect(m_pqBlueRedRadioButton, SIGNAL(toggled(bool)), this, SLOT(updateColorMapAttributeSettings()));
    for (QLineEdit* e : {m_pqColorMinRange, m_pqColorMaxRange, m_pqColorIntervalSize})
        connect(e, SIGNAL(editingFinished()), this, SLOT(updateColorMapAttributeSettings()));
    connect(m_pqVerticalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotVerticalSliderChanged(int)));
    connect(m_pqHorizontalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotHorizontalSliderChanged(int)));
    connect(m_pqZoomSpinBox, SIGNAL(valueChanged(double)), this, SLOT(slotZoomFactorChanged(double)));
    connect(m_pqZoomFactorCheckBox, SIGNAL(toggled(bool)), this, SLOT(slotZoomFactorReset(bool)));
    connect(m_pqSymbolLegendView, SIGNAL(clicked(QModelIndex)), this, SLOT(updateSymbolLegendItemSelection(QModelIndex)));
    connect(m_pqColorLegendView, SIGNAL(clicked(QModelIndex)), this, SLOT(updateColorLegendItemSelection(QModelIndex)));
    connect(m_pqSymbolLegendView->verticalScrollBar(), SIGNAL(valueChanged(int)), this,
            SLOT(slotSymbolLegendsVerticalScrollBarChanged(int)));
    connect(m_pqColorLegendView->verticalScrollBar(), SIGNAL(valueChanged(int)), this,
            SLOT(slotColorLegendsVerticalScrollBarChanged(int)));
    connect(m_symbolLegendModel, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), this,
            SLOT(updateClusterMeansTable()));

    m_drawingArea->enableMouseZoom(false);
    updateGraphicalSelection();
    updateStereoPlotSettings(false);
    applyContourSettings();
    blackWhiteSwitch();
    slotZoomFactorReset(m_pqZoomFactorCheckBox->isChecked());
    slotEnableBiasCorrection(m_pqBiasCorrectionCheckBox->checkState());
    enableLineation(false);
    for (QWidget* w : {static_cast<QWidget*>(SymbolAttributeSettings), static_cast<QWidget*>(ColourAttributeSettings)})
        w->setEnabled(false);
    m_pqSymbolLegendFrame->hide();
    m_pqColorLegendFrame->hide();
    updateObservationStatistics();
}

void QStereoChartWidget::createSymbolLegendView()
{
    m_symbolLegendModel = new QLegendListModel(this, m_drawingArea, QLegendListModel::SymbolLegend);
    m_symbolLegendModel->setSampleUnderIdZero(false);
    m_symbolLegendModel->setLineationModel(m_lineationModel);
    m_pqSymbolLegendTitle->setText(panelText("Symbols"));
    m_pqSymbolLegendView->setModel(m_symbolLegendModel);
    m_pqSymbolLegendView->createDefaultPopupMenu();
}

void QStereoChartWidget::createColorLegendView()
{
    m_colorLegendModel = new QLegendListModel(this, m_drawingArea, QLegendListModel::ColorLegend);
    m_colorLegendModel->setSampleUnderIdZero(false);
    m_colorLegendModel->setLineationModel(m_lineationModel);
    m_pqColorLegendView->setModel(m_colorLegendModel);
    m_pqColorLegendView->createDefaultPopupMenu();
}

void QStereoChartWidget::createStatisticTabs()
{
    m_statisticSummary = new QDataStatisticSummary(m_pqTabWidget);
    m_statisticSummary->setObjectName(QStringLiteral("STATISTIC_SUMMARY"));
    m_pqTabWidget->addTab(m_statisticSummary, panelText("Statistic Summary"));

    m_fitPage = new QWidget(m_pqTabWidget);
    m_fitUi->setupUi(m_fitPage);
    m_fitPage->setObjectName(QStringLiteral("GOODNESS_OF_FIT"));
    m_pqTabWidget->addTab(m_fitPage, panelText("Fit of Fisher Distribution"));
    m_fitTabWidget = m_fitUi->m_pqFitTabWidget;

    struct Tab {
        QProbabilityPlot** plot;
        QVBoxLayout* layout;
        const char* type;
    };
    const Tab tabs[] = {{&m_colatitudePlot, m_fitUi->exponentialLayout, "EXPONENTIAL"},
                        {&m_longitudePlot, m_fitUi->uniformLayout, "UNIFORM"},
                        {&m_twoVariablePlot, m_fitUi->normalLayout, "NORMAL"}};
    for (const Tab& t : tabs) {
        auto* plot = new QProbabilityPlot(m_fitPage, m_unitManager, QString::fromLatin1(t.type));
        plot->setObjectName(QString::fromLatin1(t.type).toLower() + QStringLiteral("Plot"));
        t.layout->addWidget(plot);
        connect(plot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>, QString)), this,
                SLOT(slotProbabilityPlotSelection(boost::dynamic_bitset<>, QString)));
        *t.plot = plot;
    }
}

void QStereoChartWidget::setPageRemoved(const QString& pageName)
{
    QWidget* page = m_pqStereoToolBox->findChild<QWidget*>(pageName);
    const int at = page ? m_pqStereoToolBox->indexOf(page) : -1;
    if (at < 0)
        return;
    m_removedPageTitles.insert(pageName, m_pqStereoToolBox->itemText(at));
    m_pqStereoToolBox->removeItem(at);
    // Out of the box, the page is no one's child; the panel keeps it so that its controls stay
    // reachable by name (settings still read and write them) and are deleted with the panel.
    page->hide();
    page->setParent(this);
    page->hide();
}

void QStereoChartWidget::hideTab(const QString& pageName)
{
    setPageRemoved(pageName);
}

void QStereoChartWidget::showTab(const QString& pageName, int index)
{
    if (!m_removedPageTitles.contains(pageName))
        return;
    QWidget* page = findChild<QWidget*>(pageName, Qt::FindDirectChildrenOnly);
    if (!page)
        return;
    m_pqStereoToolBox->insertItem(index, page, m_removedPageTitles.take(pageName));
    page->show();
}

void QStereoChartWidget::showToolBox(bool on)
{
    m_pqSidePanelSplitter->setSizes({400, 230});
    m_pqStereoToolBox->setVisible(on);
}

void QStereoChartWidget::setLightMode()
{
    if (m_pqTabWidget->count() > 1)
        m_pqTabWidget->removeTab(1);
    if (m_fitTabWidget && m_fitTabWidget->count() > 1) {
        // Without its colatitude page the fit is not worked out at all.
        m_fitTabWidget->removeTab(1);
        delete m_colatitudePlot;
        m_colatitudePlot = nullptr;
    }
    setPageRemoved(QStringLiteral("ClusterGeneration"));
    setPageRemoved(QStringLiteral("Rotation"));
}

void QStereoChartWidget::showModifyAction(bool on)
{
    m_drawingArea->showModifyAction(on);
}

void QStereoChartWidget::copyToClipboard()
{
    m_drawingArea->copyToClipboard();
}

// ---- data ----

void QStereoChartWidget::setDataRoot(MatrixData* root)
{
    m_dataRoot = root;
    m_model->setDataRoot(root);
    m_lineationModel->setDataRoot(root);
    dropLostColumns();
}

MatrixData* QStereoChartWidget::findColumn(const QString& name) const
{
    if (!m_dataRoot || name.isEmpty() || name == PanelComboBoxes::noneText())
        return nullptr;
    for (MatrixData* leaf : m_dataRoot->leafs())
        if (leaf->name() == name)
            return leaf;
    return nullptr;
}

bool QStereoChartWidget::dropLostColumns()
{
    if (!m_dataRoot)
        return m_dipData && m_azimuthData;
    const QList<MatrixData*> leafs = m_dataRoot->leafs();
    bool lost = false;
    for (MatrixData** node : {&m_dipData, &m_azimuthData, &m_colorData, &m_symbolData, &m_triangleAreaData}) {
        if (*node && !leafs.contains(*node)) {
            *node = nullptr;
            lost = true;
        }
    }
    for (MatrixData*& source : m_lineationSources)
        if (source && !leafs.contains(source)) {
            source = nullptr;
            lost = true;
        }
    if (lost) {
        // Nothing may read a column that is gone: the points go and the chart shows none.
        m_loadStamp.clear();
        m_model->clearData();
        m_lineationModel->clearData();
        m_model->setTriangleAreaData(m_triangleAreaData);
        m_colorLegendModel->setSymbolNode(m_colorData);
        m_symbolLegendModel->setSymbolNode(m_symbolData);
        if (!m_dipData || !m_azimuthData) {
            m_dipData = m_azimuthData = nullptr;
            m_drawingArea->updateChart();
        }
    }
    return m_dipData && m_azimuthData;
}

void QStereoChartWidget::setTriangleAreaNode(MatrixData* node)
{
    m_triangleAreaData = node;
    m_model->setTriangleAreaData(node);
}

void QStereoChartWidget::setDataSet(MatrixData* dip, MatrixData* azimuth, MatrixData* colour, MatrixData* symbol,
                                    MatrixData* lineationPlunge, MatrixData* lineationAzimuth,
                                    const std::vector<int>& selectedRows)
{
    m_dipData = dip;
    m_azimuthData = azimuth;
    m_colorData = colour;
    m_symbolData = symbol;
    setLineationData(lineationPlunge, lineationAzimuth);
    m_selectedRows = selectedRows;
    if (selectedRows.empty())
        m_pqDisplayDataComboBox->setCurrentIndex(0);

    m_colorLegendModel->setSymbolNode(colour);
    m_symbolLegendModel->setSymbolNode(symbol);
    m_pqColorLegendFrame->setVisible(colour != nullptr);
    ColourAttributeSettings->setEnabled(colour != nullptr);
    m_pqSymbolLegendFrame->setVisible(symbol != nullptr);
    SymbolAttributeSettings->setEnabled(symbol != nullptr);
    m_pqPointTypeComboBox->setEnabled(!m_pqMultipleSymbolRadioButton->isChecked() || !symbol);
    // The range typed for a colour attribute stays while that attribute is loaded again.
    m_colorDataUnchanged = colour && colour->name() == m_lastColorName;

    if (!dip || !azimuth)
        return;
    if (loadWouldChangeNothing(selectedRows))
        return;
    updateStereoPlot();
}

void QStereoChartWidget::setDisplayDataType(DisplayType type)
{
    const int at = m_pqDisplayDataComboBox->findData(int(type));
    if (at >= 0)
        m_pqDisplayDataComboBox->setCurrentIndex(at);
}

QStereoChartWidget::DisplayType QStereoChartWidget::displayDataType() const
{
    bool ok = false;
    const int type = m_pqDisplayDataComboBox->currentData().toInt(&ok);
    return ok ? DisplayType(type) : QRelationshipItemModel::HighlightSelected;
}

// ---- the central update ----

PanelLoadStamp QStereoChartWidget::currentLoadStamp() const
{
    PanelLoadStamp stamp;
    stamp.addColumn(m_dipData).addColumn(m_azimuthData).addColumn(m_colorData).addColumn(m_symbolData);
    stamp.addColumn(m_triangleAreaData);
    for (MatrixData* source : m_lineationSources)
        stamp.addColumn(source);
    stamp.add(m_pqPlungeAzimuthGroupBox->isChecked()).add(m_pqPlanePitchGroupBox->isChecked());
    // Flagged rows stay out of a dip or azimuth load: their column counts as read.
    stamp.addColumn(m_dataRoot ? m_dataRoot->getNodeFromName(QStringLiteral("SCAT")) : nullptr);
    stamp.add(int(displayDataType()));
    stamp.add(m_pqColourMapComboBox->currentText());
    stamp.add(m_colorRange->minimum()).add(m_colorRange->maximum()).add(m_colorRange->interval());
    stamp.add(m_pqBlueRedRadioButton->isChecked());
    stamp.add(m_colorResetPending);
    // Rotations of the points since the load, and clusters a load would clear.
    stamp.add(std::uint64_t(m_model->dataRevision())).add(std::uint64_t(m_lineationModel->dataRevision()));
    stamp.add(m_model->hasClusterIDs());
    return stamp;
}

bool QStereoChartWidget::loadWouldChangeNothing(const std::vector<int>& rows) const
{
    if (m_loadStamp.isEmpty() || displayDataType() == QRelationshipItemModel::ShowSelectedOnly)
        return false;
    if (m_model->partSelection() != !rows.empty())
        return false;
    return PanelLoadStamp::selectionIsExactly(m_model->selection(), rows) && currentLoadStamp() == m_loadStamp;
}

void QStereoChartWidget::updateStereoPlot()
{
    m_loadStamp.clear();
    if (!dropLostColumns())
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    updateStereoPlotSettings(false);
    const DisplayType type = displayDataType();
    if (!(m_colorDataUnchanged && !m_colorResetPending && m_colorData))
        resetDisplayColorAttribute();
    if (m_colorData)
        m_colorRange->applyTo(m_colorData, m_pqRedBlueRadioButton->isChecked());
    m_lastColorName = m_colorData ? m_colorData->name() : QString();
    m_colorDataUnchanged = m_colorData != nullptr;

    m_colorNames.clear();
    m_colorColors.clear();
    m_symbolNames.clear();
    m_symbolColors.clear();
    m_model->setTriangleAreaData(m_triangleAreaData);
    // Points without a class stay on the net, drawn as undefined.
    m_model->takeNewDataSet(1, type, m_dipData, m_azimuthData, m_colorData, m_symbolData, true, m_selectedRows,
                            m_colorNames, m_colorColors, m_symbolNames, m_symbolColors);
    if (m_lineationPlungeData && m_lineationAzimuthData) {
        QMap<int, QVariant> names, symbolNames;
        QMap<int, QColor> colours, symbolColours;
        m_lineationModel->takeNewDataSet(1, type, m_lineationPlungeData, m_lineationAzimuthData, m_colorData,
                                         m_symbolData, true, m_selectedRows, names, colours, symbolNames,
                                         symbolColours);
    } else {
        m_lineationModel->clearData();
    }
    // The legends first: the Woodcock diagram of the statistics takes its classes from them.
    updateSymbolLegend();
    updateColorLegend();
    updateObservationStatistics();
    updateClusterMeansTable();
    slotZoomFactorReset(m_pqZoomFactorCheckBox->isChecked());
    m_drawingArea->updateChart();
    m_loadStamp = currentLoadStamp();
    QGuiApplication::restoreOverrideCursor();
}

void QStereoChartWidget::updateStereoPlot(int)
{
    const DisplayType now = displayDataType();
    const DisplayType before = m_model->displayType();
    if (now == before)
        return;
    const bool sameRows = (now == QRelationshipItemModel::ShowAll && before == QRelationshipItemModel::HighlightSelected)
                          || (now == QRelationshipItemModel::HighlightSelected && before == QRelationshipItemModel::ShowAll);
    if (sameRows) {
        m_model->setDisplayType(now);
        m_lineationModel->setDisplayType(now);
        updateObservationStatistics();
        m_drawingArea->updateChart();
        m_loadStamp = currentLoadStamp();
        return;
    }
    emit dataSetSelected();
}

void QStereoChartWidget::updateStereoPlotSettings()
{
    if (signalsBlocked())
        return;
    // These draw under or over the data points, or choose which kinds of them show: the chart
    // may keep the points it drew last time instead of walking a million of them again.
    const QObject* from = sender();
    for (const QObject* control : std::initializer_list<const QObject*>{
             m_pqShow10DegreeNet, m_pqShow2DegreeNet, m_pqShowLabels, m_pqAnnotationAnglesRadioButton,
             m_pqAnnotationDirectionsRadioButton, m_pqAnnotationOffRadioButton, m_pqShowPlanes, m_pqShowPoles,
             m_pqShowAzimuths, m_pqShowLineation, m_pqShowMeanPrincipalPlane, m_pqShowMeanResultantPlane,
             m_pqShowSuggestedSectionPlane, m_pqShowBestFitPlane, m_pqShowMeanPrincipalPole,
             m_pqShowMeanResultantPole, m_pqShowTPole, m_pqShowLPole, m_pqShowMeanPrincipalAzimuth,
             m_pqShowMeanResultantAzimuth, m_pqShowTAzimuth, m_pqShowLAzimuth})
        if (from && from == control)
            m_drawingArea->reusePointLayersOnce();
    updateStereoPlotSettings(true);
}

void QStereoChartWidget::updateStereoPlotSettings(bool update)
{
    QStereoPlotWidget* plot = m_drawingArea;
    plot->setEqualAreaScaling(!m_pqWulffRadioButton->isChecked());
    plot->setSelectionMode(m_pqSelectionRadioButton->isChecked());
    plot->setPickPlaneMode(m_pqProjectedPlaneRadioButton->isChecked());
    plot->setShow10DegreeNet(m_pqShow10DegreeNet->isChecked());
    plot->setShow2DegreeNet(m_pqShow2DegreeNet->isChecked());
    plot->setShowLabels(m_pqShowLabels->isChecked());
    plot->setShowTraces(m_pqShowPlanes->isChecked());
    plot->setShowPoles(m_pqShowPoles->isChecked());
    plot->setShowMeanPrincipalPole(m_pqShowMeanPrincipalPole->isChecked());
    plot->setShowMeanResultantPole(m_pqShowMeanResultantPole->isChecked());
    plot->setShowTPole(m_pqShowTPole->isChecked());
    plot->setShowLPole(m_pqShowLPole->isChecked());
    plot->setShowDipDirections(m_pqShowAzimuths->isChecked());
    plot->setShowMeanPrincipalAzimuth(m_pqShowMeanPrincipalAzimuth->isChecked());
    plot->setShowMeanResultantAzimuth(m_pqShowMeanResultantAzimuth->isChecked());
    plot->setShowTAzimuth(m_pqShowTAzimuth->isChecked());
    plot->setShowLAzimuth(m_pqShowLAzimuth->isChecked());
    plot->setShowMeanPrincipalPlane(m_pqShowMeanPrincipalPlane->isChecked());
    plot->setShowMeanResultantPlane(m_pqShowMeanResultantPlane->isChecked());
    plot->setShowSuggestedSectionPlane(m_pqShowSuggestedSectionPlane->isChecked());
    plot->setShowBestFitPlane(m_pqShowBestFitPlane->isChecked());
    plot->setTraceWidth(m_pqPlaneWidthSpinBox->value());
    plot->setMeanPrincipalPlaneWidth(m_pqMeanPrincipalPlaneWidthSpinBox->value());
    plot->setMeanResultantPlaneWidth(m_pqMeanResultantPlaneWidthSpinBox->value());
    plot->setSuggestedSectionPlaneWidth(m_pqSuggestedSectionPlaneWidthSpinBox->value());
    plot->setBestFitPlaneWidth(m_pqBestFitPlaneWidthSpinBox->value());
    plot->setShowLineation(m_pqShowLineation->isChecked());
    plot->setClusterPoleCentroidsOn(m_pqClusterMeanPoles->isChecked());
    plot->setClusterAzimuthCentroidsOn(m_pqClusterMeanAzimuths->isChecked());
    plot->setContourRange(PanelColorRange::parse(m_pqContourMinRange), PanelColorRange::parse(m_pqContourMaxRange));
    const double step = m_contourRange->interval() + 5e-09;
    const bool flip = m_pqContourRedBlueRadioButton->isChecked();
    if (m_pqContoursForPoles->isChecked()) {
        m_model->contourGridPoles()->setColorMapStepSize(step);
        m_model->contourGridPoles()->setFlipColorMap(flip);
    }
    if (m_pqContoursForDipDirections->isChecked()) {
        m_model->contourGridDipDir()->setColorMapStepSize(step);
        m_model->contourGridDipDir()->setFlipColorMap(flip);
    }
    plot->setAnnotationLabelAsAngle(m_pqAnnotationAnglesRadioButton->isChecked());
    plot->setAnnotationLabelAsDirectionOn(m_pqAnnotationDirectionsRadioButton->isChecked());
    plot->setDipDipAzimuthConvention(m_pqDipDipAzimuthRadioButton->isChecked());
    m_model->setPointPixelSize(m_pqPointSizeSpinBox->value());
    m_lineationModel->setPointPixelSize(m_pqLineationPointSizeSpinBox->value());
    bool ok = false;
    int style = m_pqPointTypeComboBox->currentData().toInt(&ok);
    if (ok && style >= QRelationshipItemModel::Circle && style <= QRelationshipItemModel::BigCross4)
        m_model->setPointStyle(QRelationshipItemModel::PointStyle(style));
    style = m_pqLineationPointStyleComboBox->currentData().toInt(&ok);
    if (ok && style >= QRelationshipItemModel::Circle && style <= QRelationshipItemModel::BigCross4)
        m_lineationModel->setPointStyle(QRelationshipItemModel::PointStyle(style));
    applyColors();
    if (update)
        plot->updateChart();
}

// ---- selection boxes ----

void QStereoChartWidget::updateDataSetSelectionBox(QComboBox* box, const QString& name, const QStringList& names,
                                                   const QList<int>& ids, int index)
{
    PanelComboBoxes::refillWithNone(box, names, ids, index, name);
}

void QStereoChartWidget::updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    // Without an earlier choice the boxes fall on the first two columns offered (below "None").
    updateDataSetSelectionBox(m_pqDipComboBox, QString(), names, ids, 1);
    updateDataSetSelectionBox(m_pqAzimuthComboBox, QString(), names, ids, 2);
}

void QStereoChartWidget::updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                                 int index)
{
    PanelComboBoxes::refillWithNone(m_pqColourMapComboBox, names, ids, index);
}

void QStereoChartWidget::updateSymbolAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                                  int index)
{
    PanelComboBoxes::refillWithNone(m_pqSymbolsComboBox, names, ids, index);
}

void QStereoChartWidget::updateLineationDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    for (QComboBox* box : {m_pqLineationPlungeComboBox, m_pqLineationAzimuthComboBox, m_pqPitchPlaneDipComboBox,
                           m_pqPitchPlaneAzimuthComboBox, m_pqPitchComboBox})
        PanelComboBoxes::refillWithNone(box, names, ids, -1);
}

void QStereoChartWidget::updatePitchDirectionDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    PanelComboBoxes::refillWithNone(m_pqPitchDirectionComboBox, names, ids, -1);
}

int QStereoChartWidget::currentDipSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqDipComboBox); }
int QStereoChartWidget::currentAzimuthSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqAzimuthComboBox); }
int QStereoChartWidget::currentColorSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqColourMapComboBox); }
int QStereoChartWidget::currentSymbolSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqSymbolsComboBox); }
int QStereoChartWidget::currentLineationPlungeDataSet() const { return PanelComboBoxes::currentId(m_pqLineationPlungeComboBox); }
int QStereoChartWidget::currentLineationPlungeAzimuthDataSet() const { return PanelComboBoxes::currentId(m_pqLineationAzimuthComboBox); }
QString QStereoChartWidget::currentDipSelectedDataSetName() const { return m_pqDipComboBox->currentText(); }
QString QStereoChartWidget::currentAzimuthSelectedDataSetName() const { return m_pqAzimuthComboBox->currentText(); }
QString QStereoChartWidget::currentColorSelectedDataSetName() const { return m_pqColourMapComboBox->currentText(); }
QString QStereoChartWidget::currentSymbolSelectedDataSetName() const { return m_pqSymbolsComboBox->currentText(); }
QString QStereoChartWidget::currentLineationPlungeDataSetName() const { return m_pqLineationPlungeComboBox->currentText(); }
QString QStereoChartWidget::currentLineationPlungeAzimuthDataSetName() const { return m_pqLineationAzimuthComboBox->currentText(); }
void QStereoChartWidget::setCurrentDipSelectedDataSet(const QString& name) { PanelComboBoxes::selectText(m_pqDipComboBox, name); }
void QStereoChartWidget::setCurrentAzimuthSelectedDataSet(const QString& name) { PanelComboBoxes::selectText(m_pqAzimuthComboBox, name); }

void QStereoChartWidget::slotSymbolAttributeSelected()
{
    const QString none = PanelComboBoxes::noneText();
    SymbolAttributeSettings->setEnabled(m_pqSymbolsComboBox->currentText() != none);
    ColourAttributeSettings->setEnabled(m_pqColourMapComboBox->currentText() != none);
    emit dataSetSelected();
}

void QStereoChartWidget::slotDataSourceSelected()
{
    updateObservationStatistics();
    m_drawingArea->updateChart();
}

} // namespace rkBase

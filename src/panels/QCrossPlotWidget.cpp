// Set-up, data entry, the selection boxes and the central update of the cross plot panel.
#include "QCrossPlotWidget.h"

#include "ui_QCrossPlotWidget.h"

#include "PanelBackground.h"
#include "PanelColorButton.h"
#include "PanelComboBoxes.h"
#include "QCrossPlot.h"
#include "QLegendListModel.h"
#include "QLegendListView.h"

#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <UnitManager.h>

#include <QGuiApplication>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
QString panelText(const char* text)
{
    return QCoreApplication::translate("QCrossPlotWidget", text);
}

const char* const kDipSymbolStyle = "Dip Data Symbol Style";
} // namespace

QCrossPlotWidget::QCrossPlotWidget(QWidget* parent, DisplayUnitManager* manager, bool fullPanel_,
                                   bool showBottomPanel, bool showDataDecimation, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_pqUi(std::make_unique<Ui::QCrossPlotWidget>()), m_manager(manager),
      fullPanel(fullPanel_)
{
    m_pqUi->setupUi(this);
    m_axes = std::make_unique<PanelAxes>(m_pqUi->m_pqTopAxis, m_pqUi->m_pqBottomAxis, m_pqUi->m_pqLeftAxis,
                                         m_pqUi->m_pqRightAxis);
    m_scrollBars = std::make_unique<PanelZoomScrollBars>(m_pqUi->horizontalScrollBar, m_pqUi->verticalScrollBar);
    m_colorRange = std::make_unique<PanelColorRange>(m_pqUi->m_pqMinRange, m_pqUi->m_pqMaxRange,
                                                     m_pqUi->m_pqIntervallSize);
    m_question = [](QWidget* p, const QString& title, const QString& text) {
        return QMessageBox::question(p, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    };

    QComboBox* display = m_pqUi->displayDataTypeComboBox;
    display->addItem(panelText("All + Highlight Selection"), int(QRelationshipItemModel::HighlightSelected));
    display->addItem(panelText("All"), int(QRelationshipItemModel::ShowAll));
    display->addItem(panelText("Selected Data Only"), int(QRelationshipItemModel::ShowSelectedOnly));

    if (!showDataDecimation)
        setPageRemoved(QStringLiteral("DataDecimation"));
    if (!fullPanel) {
        m_pqUi->m_pqToolBox->hide();
        m_pqUi->symbolAttributeGroupBox->hide();
    }
    m_pqUi->m_pqBottomPanel->setVisible(showBottomPanel);
    m_pqUi->m_pqShowPointConnectionLine->hide();
    m_pqUi->m_pqShowStratigraphy->hide();
    m_pqUi->m_pqShowStratigraphyLabels->hide();
    m_pqUi->m_pqShowPoints->hide();
    m_pqUi->lineStyleGroupBox->hide();
    m_pqUi->sidePanelSplitter->setSizes({500, 150});
    m_pqUi->legendSplitter->setSizes({0, 500});
    m_pqUi->m_pqToolBox->layout()->setSpacing(0);
    m_pqUi->m_pqToolBox->setAutoFillBackground(true);
    m_pqUi->m_pqFontSizeSpinBox->setValue(font().pointSizeF());
    m_pqUi->intervalSizeUnitLineEdit->setModelValue(100.0, false);
    m_pqUi->m_pqMinRange->setText(QStringLiteral("---"));
    m_pqUi->m_pqMaxRange->setText(QStringLiteral("---"));
    m_pqUi->m_pqIntervallSize->setText(QStringLiteral("---"));
    for (QCartesianAxisWidget* a : m_axes->all())
        a->setFixedWidth(a->isHorizontal() ? QWIDGETSIZE_MAX : 55);
    m_pqUi->m_pqTopAxis->setMinimumWidth(0);
    m_pqUi->m_pqBottomAxis->setMinimumWidth(0);
    m_pqUi->m_pqTopAxis->setFixedHeight(55);
    m_pqUi->m_pqBottomAxis->setFixedHeight(55);
    PanelColorButton::setColor(m_pqUi->pointColorButton, QColor(0, 0, 255));
    PanelColorButton::setColor(m_pqUi->lineColorButton, QColor(0, 0, 255));

    createChartArea();
    createColorLegendView();
    createSymbolLegendView();
    slotEnableCrossPlotUpdateBtn(true);
    if (m_manager)
        connect(m_manager, SIGNAL(displayChanged(QString)), this, SLOT(displayUnitsChanged(QString)));

    connect(m_pqUi->automaticCrossPlotUpdate, SIGNAL(toggled(bool)), this, SLOT(slotEnableCrossPlotUpdateBtn(bool)));
    connect(m_pqUi->updateCrossPlot, SIGNAL(clicked()), this, SLOT(slotUpdateButtonPressed()));
    for (QCheckBox* box : {m_pqUi->m_pqShowGrid, m_pqUi->m_pqShowBisectingLine, m_pqUi->m_pqShowRegressionLine,
                           m_pqUi->m_pqShow90PercentRange, m_pqUi->m_pqShowRegressionEquation,
                           m_pqUi->m_pqShowPointConnectionLine, m_pqUi->m_pqShowPoints, m_pqUi->showCentroidsCheckBox,
                           m_pqUi->m_pqShowStratigraphy, m_pqUi->m_pqShowStratigraphyLabels})
        connect(box, SIGNAL(toggled(bool)), this, SLOT(updateRelationshipDiagramSettings()));
    connect(m_pqUi->m_pqPointStyleComboBox, SIGNAL(activated(int)), this, SLOT(updateRelationshipDiagramSettings()));
    connect(m_pqUi->m_pqPixelSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateRelationshipDiagramSettings()));
    connect(m_pqUi->m_pqLinePixelSizeSpinBox, SIGNAL(valueChanged(int)), this,
            SLOT(updateRelationshipDiagramSettings()));
    connect(m_pqUi->m_pqShowDefinedSymbolsOnly, SIGNAL(toggled(bool)), this, SLOT(updateRelationshipDiagram()));
    connect(m_pqUi->m_pqSingleSymbol, SIGNAL(toggled(bool)), this, SLOT(slotSymbolStyleChanged()));
    connect(m_pqUi->m_pqBlueRedRadioBtn, SIGNAL(toggled(bool)), this, SLOT(updateRelationshipDiagram()));
    connect(display, SIGNAL(activated(int)), this, SLOT(updateRelationshipDiagram(int)));
    connect(m_pqUi->pointColorButton, SIGNAL(clicked()), this, SLOT(changePointColor()));
    connect(m_pqUi->lineColorButton, SIGNAL(clicked()), this, SLOT(changeLineColor()));
    connect(m_pqUi->resetColorAttributeDisplay, SIGNAL(clicked()), this, SLOT(slotResetDisplayColorAttribute()));
    connect(m_pqUi->applyClusterGenerationPushButton, SIGNAL(clicked()), this, SLOT(slotApplyClusterGeneration()));
    connect(m_pqUi->intervalSizeRadioBtn, SIGNAL(toggled(bool)), this, SLOT(slotGenerateIntervalsToggled()));
    connect(m_pqUi->numbOfIntervalsRadioBtn, SIGNAL(toggled(bool)), this, SLOT(slotGenerateIntervalsToggled()));
    connect(m_pqUi->graphicalActionRadioBtn, SIGNAL(toggled(bool)), this, SLOT(slotGenerateIntervalsToggled()));
    connect(m_pqUi->createsByIntervalSizePushButton, SIGNAL(clicked()), this, SLOT(slotCreateIntervalsBySize()));
    connect(m_pqUi->createByNumbofIntervalsPushButton, SIGNAL(clicked()), this, SLOT(slotCreateIntervalsByNumber()));
    connect(m_pqUi->deleteIntervalsPushButton, SIGNAL(clicked()), this, SLOT(slotDeleteIntervals()));
    connect(m_pqUi->calculatePushButton, SIGNAL(clicked()), this, SLOT(slotGenerateDataDecimation()));
    for (QCheckBox* box : {m_pqUi->showIntervalAverages, m_pqUi->showCountDataPerInterval, m_pqUi->showBinBoundaries})
        connect(box, SIGNAL(toggled(bool)), this, SLOT(slotUpdateDecimationSettings()));
    connect(m_pqUi->newAttributeFromBinAveragePushButton, SIGNAL(clicked()), this,
            SLOT(slotCreateAttributeFromBinAverage()));
    connect(m_pqUi->newAttributeFromNumbOfDataPerBinPushButton, SIGNAL(clicked()), this,
            SLOT(slotCreateAttributeFromNumbOfDataPerBin()));
    connect(m_pqUi->m_pqZoomCheckBox, SIGNAL(toggled(bool)), this, SLOT(slotZoomFactorReset(bool)));
    connect(m_pqUi->m_pqZoomFactorSpinBox, SIGNAL(valueChanged(double)), this, SLOT(slotZoomFactorChanged(double)));
    connect(m_pqUi->horizontalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotHorizontalSliderChanged(int)));
    connect(m_pqUi->verticalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotVerticalSliderChanged(int)));
    connect(m_pqUi->m_pqWhiteBackgroundBtn, SIGNAL(toggled(bool)), this, SLOT(blackWhiteSwitch()));
    connect(m_pqUi->m_pqFontSizeSpinBox, SIGNAL(valueChanged(double)), this, SLOT(fontSizeChanged(double)));
    connect(m_pqUi->resetAnnotationBtn, SIGNAL(clicked()), this, SLOT(slotResetAnnotationSettings()));

    m_pqUi->dataDecimationGroupBox->setEnabled(false);
    m_pqUi->createNewAttributeGroupBox->setEnabled(false);
    m_pqUi->applyClusterGenerationPushButton->setEnabled(false);
    slotGenerateIntervalsToggled();
}

QCrossPlotWidget::~QCrossPlotWidget()
{
    // The chart reads the model while it goes: take it down first.
    delete crossPlot;
    crossPlot = nullptr;
}

void QCrossPlotWidget::createChartArea()
{
    crossPlot = new QCrossPlot(m_pqUi->m_pqRelationshipPlot, this);
    crossPlot->setObjectName(QStringLiteral("crossPlot"));
    m_pqUi->m_pqRelationshipLayout->addWidget(crossPlot, 0, 0);
    crossPlot->allowCopyToWMF(true);
    relationshipModel = new QRelationshipItemModel(this);
    relationshipModel->setObjectName(QStringLiteral("relationshipModel"));
    crossPlot->setModel(relationshipModel);
    crossPlot->initializePointSytleComboBox(m_pqUi->m_pqPointStyleComboBox, true);
    connect(m_pqUi->m_pqLeftAxis, SIGNAL(gridLinesChanged(QList<int>)), crossPlot,
            SLOT(horizontalGridLinesChanged(QList<int>)));
    connect(m_pqUi->m_pqTopAxis, SIGNAL(gridLinesChanged(QList<int>)), crossPlot,
            SLOT(verticalGridLinesChanged(QList<int>)));
    connect(crossPlot, SIGNAL(zoomChanged(double)), this, SLOT(chartZoomChanged(double)));
    connect(crossPlot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this,
            SLOT(slotDataPointsSelection(boost::dynamic_bitset<>)));
    connect(crossPlot, SIGNAL(cursorPos(QPointF, bool)), this, SLOT(updateCursorPosLabel(QPointF)));
    connect(crossPlot, SIGNAL(signalBasicModifyCellValues()), this, SIGNAL(signalModifyCellValues()));
    connect(crossPlot, SIGNAL(signalCopyWEMFToClipboard()), this, SLOT(slotCopyWEMFToClipboard()));
    connect(relationshipModel, SIGNAL(manuellBinInserted(bool)), this, SLOT(slotEnableDecimationGroupBoxes(bool)));
    m_pqUi->horizontalScrollBar->hide();
    m_pqUi->verticalScrollBar->hide();
    slotZoomFactorChanged(1.0);
    crossPlot->enableMouseZoom(false);
}

void QCrossPlotWidget::createColorLegendView()
{
    colorLegendModel = new QLegendListModel(this, crossPlot, QLegendListModel::ColorLegend);
    m_pqUi->colorLegendView->setModel(colorLegendModel);
    m_pqUi->colorLegendView->createDefaultPopupMenu();
    m_pqUi->colorLegendFrame->hide();
}

void QCrossPlotWidget::createSymbolLegendView()
{
    symbolLegendModel = new QLegendListModel(this, crossPlot, QLegendListModel::SymbolLegend);
    m_pqUi->symbolLegendView->setModel(symbolLegendModel);
    m_pqUi->symbolLegendView->createDefaultPopupMenu();
    m_pqUi->symbolLegendFrame->hide();
}

void QCrossPlotWidget::invertDepthAxis() {}

void QCrossPlotWidget::setPageRemoved(const QString& pageName)
{
    QWidget* page = m_pqUi->m_pqToolBox->findChild<QWidget*>(pageName);
    const int at = page ? m_pqUi->m_pqToolBox->indexOf(page) : -1;
    if (at < 0)
        return;
    m_pqUi->m_pqToolBox->removeItem(at);
    // Out of the box, the page is no one's child; the panel keeps it so that its controls stay
    // reachable by name (settings still read and write them) and are deleted with the panel.
    page->hide();
    page->setParent(this);
    page->hide();
}

// ---- data ----

void QCrossPlotWidget::setDataRoot(MatrixData* root)
{
    dataRoot = root;
    relationshipModel->setDataRoot(root);
    dropLostColumns();
    relationshipModel->setThirdDimAttribute(findColumn(m_pqUi->thirdDimComboBox->currentText()));
    blackWhiteSwitch();
}

MatrixData* QCrossPlotWidget::findColumn(const QString& name) const
{
    return PanelComboBoxes::findColumn(dataRoot, name);
}

bool QCrossPlotWidget::dropLostColumns()
{
    if (!dataRoot)
        return horizontalData && verticalData;
    const QList<MatrixData*> leafs = dataRoot->leafs();
    bool lost = false;
    for (MatrixData** node : {&horizontalData, &verticalData, &symbolData, &colourData}) {
        if (*node && !leafs.contains(*node)) {
            *node = nullptr;
            lost = true;
        }
    }
    if (relationshipModel->thirdDimAttribute() && !leafs.contains(relationshipModel->thirdDimAttribute()))
        relationshipModel->setThirdDimAttribute(nullptr);
    if (relationshipModel->tadpoleAzimuthNode() && !leafs.contains(relationshipModel->tadpoleAzimuthNode()))
        relationshipModel->setTadPoleAzimuthDataNode(nullptr);
    if (lost) {
        // Nothing may read a column that is gone: the points go and the chart shows none.
        relationshipModel->clearData();
        colorLegendModel->setSymbolNode(colourData);
        symbolLegendModel->setSymbolNode(symbolData);
        if (!horizontalData || !verticalData) {
            horizontalData = verticalData = nullptr;
            m_pqUi->m_pqNumberOfPoints->setText(QString::number(0));
            crossPlot->updateChart();
        }
    }
    return horizontalData && verticalData;
}

void QCrossPlotWidget::initializeDataSet(MatrixData* x, MatrixData* y, MatrixData* symbols, MatrixData* colours)
{
    horizontalData = nullptr;
    verticalData = nullptr;
    if (!x || !y)
        return;
    horizontalDataUnchanged = x->name() == lastHorizontalName;
    verticalDataUnchanged = y->name() == lastVerticalName;
    colourDataUnchanged = (colours ? colours->name() : QString()) == lastColourName;
    horizontalData = x;
    verticalData = y;
    symbolData = symbols;
    colourData = colours;
    colorLegendModel->setSymbolNode(colours);
    symbolLegendModel->setSymbolNode(symbols);

    for (QUnitLineEdit* e : {m_pqUi->m_pqHoriMinAxis, m_pqUi->m_pqHoriMaxAxis})
        e->setUnitManager(x->unitManager());
    m_pqUi->m_pqTopAxis->setUnitManager(x->unitManager());
    m_pqUi->m_pqBottomAxis->setUnitManager(x->unitManager());
    for (QUnitLineEdit* e : {m_pqUi->m_pqVertiMinAxis, m_pqUi->m_pqVertiMaxAxis, m_pqUi->intervalSizeUnitLineEdit})
        e->setUnitManager(y->unitManager());
    m_pqUi->m_pqLeftAxis->setUnitManager(y->unitManager());
    m_pqUi->m_pqRightAxis->setUnitManager(y->unitManager());
    m_pqUi->cursorPosLabel->setText(QStringLiteral("(%1, %2): ").arg(x->name(), 0, QLatin1Char(' ')).arg(y->name(), 0, QLatin1Char(' ')));

    lastHorizontalName = x->name();
    lastVerticalName = y->name();
    lastSymbolName = symbols ? symbols->name() : QString();
    lastColourName = colours ? colours->name() : QString();
    if (!colourDataUnchanged)
        resetDisplayColorAttribute();

    m_pqUi->m_pqShowDefinedSymbolsOnly->setVisible(symbols || colours);
    m_pqUi->symbolLegendFrame->setVisible(symbols != nullptr);
    m_pqUi->symbolLegendFrame->setFrameShape(QFrame::Box);
    m_pqUi->symbolLegendTitle->setVisible(symbols != nullptr);
    m_pqUi->m_pqShowSymbolGroup->setEnabled(symbols != nullptr);
    if (!symbols)
        m_pqUi->m_pqMultiSymbol->setChecked(true);
    m_pqUi->colorLegendFrame->setVisible(colours != nullptr);
    m_pqUi->colorLegendTitle->setVisible(colours != nullptr);
    m_pqUi->colorMapRangeGroupBox->setEnabled(colours != nullptr);
    m_pqUi->colorMapDirectionGroupBox->setEnabled(colours != nullptr);

    if (symbols || colours)
        m_pqUi->legendSplitter->setSizes({130, 500});
    QSplitter* sub = m_pqUi->subLegendSplitter;
    const int h = std::max(1, sub->height());
    sub->setVisible(symbols || colours);
    if (symbols && colours)
        sub->setSizes({h / 2, h / 2});
    else if (symbols)
        sub->setSizes({0, h});
    else if (colours)
        sub->setSizes({h, 0});

    const bool dip = x->name() == QLatin1String("dip") || x->name() == QLatin1String("azimuth");
    m_pqUi->dipDataDecimate_groupBox->setEnabled(dip);
    if (!dip)
        m_pqUi->m_paMergeToDecimated->setChecked(true);
}

void QCrossPlotWidget::setDataSet(MatrixData* x, MatrixData* y, MatrixData* symbols, MatrixData* colours,
                                  const std::vector<int>& rows)
{
    initializeDataSet(x, y, symbols, colours);
    selectedRows = rows;
    if (!rows.empty()) {
        vertexFilter = 1;
        const QSignalBlocker blocker(m_pqUi->m_pqVertexFilterSpinBox);
        m_pqUi->m_pqVertexFilterSpinBox->setValue(1);
    } else {
        m_pqUi->displayDataTypeComboBox->setCurrentIndex(0);
    }
    if (loadWouldChangeNothing(rows))
        return;
    updateRelationshipDiagram();
    if (relationshipModel->data()) {
        const int n = relationshipModel->data()->validValueRowCount();
        m_pqUi->applyClusterGenerationPushButton->setEnabled(n >= 2);
        m_pqUi->numberOfClustersSpinBox->setMaximum(std::max(2, n));
    } else {
        m_pqUi->applyClusterGenerationPushButton->setEnabled(false);
    }
}

void QCrossPlotWidget::setDataSet(MatrixData* x, MatrixData* y, MatrixData* symbols, MatrixData* colours)
{
    initializeDataSet(x, y, symbols, colours);
    selectedRows.clear();
    updateRelationshipDiagram();
    const int n = relationshipModel->data() ? relationshipModel->data()->validValueRowCount() : 0;
    m_pqUi->applyClusterGenerationPushButton->setEnabled(n >= 2);
    if (n >= 2)
        m_pqUi->numberOfClustersSpinBox->setMaximum(n);
}

// ---- the central update ----

PanelLoadStamp QCrossPlotWidget::currentLoadStamp() const
{
    PanelLoadStamp stamp;
    stamp.addColumn(horizontalData).addColumn(verticalData).addColumn(colourData).addColumn(symbolData);
    stamp.addColumn(relationshipModel->tadpoleAzimuthNode());
    // Flagged rows stay out of a dip or azimuth load: their column counts as read.
    stamp.addColumn(dataRoot ? dataRoot->getNodeFromName(QStringLiteral("SCAT")) : nullptr);
    stamp.add(relationshipModel->scatDataTaken());
    stamp.add(m_pqUi->m_pqVertexFilterSpinBox->text());
    stamp.add(m_pqUi->m_pqShowDefinedSymbolsOnly->isChecked());
    stamp.add(int(displayDataType()));
    stamp.add(m_pqUi->m_pqColorAttributeComboBox->currentText());
    stamp.add(m_colorRange->minimum()).add(m_colorRange->maximum()).add(m_colorRange->interval());
    stamp.add(m_pqUi->m_pqBlueRedRadioBtn->isChecked());
    stamp.add(azimuthScaling).add(mercatorScaling);
    stamp.add(m_pqUi->automaticCrossPlotUpdate->isChecked());
    // Rotations and edits of the points since the load, and clusters a load would clear.
    stamp.add(std::uint64_t(relationshipModel->dataRevision()));
    stamp.add(relationshipModel->hasClusterIDs());
    return stamp;
}

bool QCrossPlotWidget::loadWouldChangeNothing(const std::vector<int>& rows) const
{
    if (m_loadStamp.isEmpty() || displayDataType() == QRelationshipItemModel::ShowSelectedOnly)
        return false;
    if (relationshipModel->partSelection() != !rows.empty())
        return false;
    return PanelLoadStamp::selectionIsExactly(relationshipModel->selection(), rows) && currentLoadStamp() == m_loadStamp;
}

void QCrossPlotWidget::updateRelationshipDiagram()
{
    m_loadStamp.clear();
    if (!dropLostColumns())
        return;
    if (horizontalData->rowCount() < 1 || verticalData->rowCount() < 1)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const bool definedOnly = m_pqUi->m_pqShowDefinedSymbolsOnly->isChecked();
    bool ok = false;
    const int sampling = m_pqUi->m_pqVertexFilterSpinBox->text().toInt(&ok);
    vertexFilter = ok && sampling >= 1 ? sampling : 1;
    const DisplayType type = displayDataType();
    if (colourData && m_pqUi->m_pqColorAttributeComboBox->currentText() != PanelComboBoxes::noneText())
        m_colorRange->applyTo(colourData, m_pqUi->m_pqRedBlueRadioBtn->isChecked());

    m_colorNames.clear();
    m_colorColors.clear();
    m_symbolNames.clear();
    m_symbolColors.clear();
    relationshipModel->takeNewDataSet(vertexFilter, type, horizontalData, verticalData, colourData, symbolData,
                                      !definedOnly, selectedRows, m_colorNames, m_colorColors, m_symbolNames,
                                      m_symbolColors);
    if (azimuthScaling) {
        if (mercatorScaling)
            relationshipModel->setMinMaxRanges(-180.0, 180.0, 0.0, 90.0);
        else
            relationshipModel->setMinMaxRanges(0.0, 360.0, 0.0, 90.0);
    }
    m_pqUi->m_pqNumberOfPoints->setText(QString::number(relationshipModel->numberOfSelectedPoints()));
    const bool automatic = m_pqUi->automaticCrossPlotUpdate->isChecked();
    if (!(horizontalDataUnchanged && verticalDataUnchanged) || automatic)
        updateDataBoundaries();
    updateRelationshipDiagramSettings(false);
    if (!automatic)
        slotUpdateChartBoundaries(false);

    m_pqUi->m_pqLeftAxis->setTitle(verticalData->name());
    m_pqUi->m_pqRightAxis->setUnitLabelVisible(false);
    m_pqUi->m_pqBottomAxis->setTitle(horizontalData->name());
    m_pqUi->m_pqTopAxis->setTitle(horizontalData->name());
    m_pqUi->m_pqTopAxis->setUnitLabelVisible(false);
    invertDepthAxis();
    slotZoomFactorReset(m_pqUi->m_pqZoomCheckBox->isChecked());
    updateColorLegend();
    updateSymbolLegend();
    updateClusterMeansTable();
    m_axes->redraw();
    crossPlot->updateChart();
    m_loadStamp = currentLoadStamp();
    QGuiApplication::restoreOverrideCursor();
}

void QCrossPlotWidget::updateRelationshipDiagram(int)
{
    const DisplayType now = displayDataType();
    const DisplayType before = relationshipModel->displayType();
    if (now == before)
        return;
    const bool noNewData = (now == QRelationshipItemModel::ShowAll && before == QRelationshipItemModel::HighlightSelected)
                           || (now == QRelationshipItemModel::HighlightSelected && before == QRelationshipItemModel::ShowAll);
    if (noNewData) {
        relationshipModel->setDisplayType(now);
        crossPlot->updateChart();
        return;
    }
    emit signalUpdateChartData();
}

void QCrossPlotWidget::updateRelationshipDiagramSettings()
{
    updateRelationshipDiagramSettings(true);
}

void QCrossPlotWidget::updateRelationshipDiagramSettings(bool redraw)
{
    const bool regression = fullPanel ? m_pqUi->m_pqShowRegressionLine->isChecked() : true;
    const bool range = fullPanel ? m_pqUi->m_pqShow90PercentRange->isChecked() : true;
    const bool equation = m_pqUi->m_pqShowRegressionEquation->isChecked();
    crossPlot->setShow90PercentRange(range);
    crossPlot->setShowRegressionLine(regression);
    crossPlot->setShowBisectingLine(m_pqUi->m_pqShowBisectingLine->isChecked());
    crossPlot->setShowRegressionEquation(equation);
    crossPlot->setGridIsOn(m_pqUi->m_pqShowGrid->isChecked());
    crossPlot->setPointConnectionLine(m_pqUi->m_pqShowPointConnectionLine->isChecked());
    crossPlot->setShowPoints(m_pqUi->m_pqShowPoints->isChecked());
    crossPlot->setClusterPoleCentroidsOn(m_pqUi->showCentroidsCheckBox->isChecked());
    relationshipModel->setPointPixelSize(m_pqUi->m_pqPixelSizeSpinBox->value());
    crossPlot->setLinePixelSize(m_pqUi->m_pqLinePixelSizeSpinBox->value());

    double slope = 99999.0, intercept = 99999.0, coefficient = 99999.0;
    m_pqUi->m_pqNumberOfPoints->setText(QString::number(relationshipModel->numberOfSelectedPoints()));
    if (!regression && !equation && !range && !calculateRegressionAlways) {
        m_pqUi->m_pqRegressionEquation->setText(QStringLiteral("-----"));
        m_pqUi->m_pqCorrelationCoefficient->setText(QStringLiteral("-----"));
    } else {
        if (relationshipModel->data() && relationshipModel->pointCount() > 0)
            relationshipModel->calculateRegressionLine(slope, intercept, coefficient);
        QString text = QStringLiteral("-------");
        if (slope != 99999.0 && std::isfinite(slope) && std::isfinite(intercept)) {
            text = QStringLiteral("y= ") + QString::number(slope, 'f', 4);
            text += intercept >= 0.0 ? QStringLiteral("x +") + QString::number(intercept, 'f', 4)
                                     : QStringLiteral("x -") + QString::number(std::abs(intercept), 'f', 4);
        }
        m_pqUi->m_pqRegressionEquation->setText(text);
        m_pqUi->m_pqCorrelationCoefficient->setText(
            coefficient == 99999.0 || !std::isfinite(coefficient) ? QStringLiteral("-----")
                                                                  : QString::number(coefficient, 'f', 4));
    }
    trendLineSlope = slope;
    crossPlot->setTrendLine(slope, intercept, coefficient);
    bool ok = false;
    const int style = m_pqUi->m_pqPointStyleComboBox->currentData().toInt(&ok);
    if (ok && style >= QRelationshipItemModel::Circle && style <= QRelationshipItemModel::BigCross4)
        relationshipModel->setPointStyle(static_cast<QRelationshipItemModel::PointStyle>(style));
    setShowStratigraphy();
    if (redraw)
        crossPlot->updateChart();
}

void QCrossPlotWidget::setShowStratigraphy()
{
    if (!relationshipModel->hasStructuralTopsScenarios())
        return;
    DepthLineField* field = relationshipModel->structuralTops();
    if (!field)
        return;
    const bool on = m_pqUi->m_pqShowStratigraphy->isChecked();
    const bool labels = m_pqUi->m_pqShowStratigraphyLabels->isChecked();
    field->setShowHorizons(on);
    field->setShowFaults(on);
    field->setShowAverageOrientations(on);
    field->setShowStructuralPlanes(on);
    field->setDomainType(on ? DepthLineField::Stratigraphy : DepthLineField::NoDomain);
    field->setShowHorizonLables(labels);
    field->setShowFaultLabels(labels);
    field->setShowAverageOrientationLabels(labels);
    field->setShowStructuralPlaneLabels(labels);
}

namespace {
// A range that every later step can take: no points, or ends of no number, run 0 to 1.
void usableRange(double& lo, double& hi)
{
    if (!std::isfinite(lo) || !std::isfinite(hi) || lo > hi) {
        lo = 0.0;
        hi = 1.0;
    }
}

QString valueWithUnit(const MatrixData* node, double value)
{
    const boost::shared_ptr<UnitManager> unit = node ? node->unitManager() : boost::shared_ptr<UnitManager>();
    if (!unit)
        return QString::number(value, 'g', 6);
    return QString::number(unit->convertModelToDisplay(value), 'g', 6) + QLatin1Char(' ') + unit->getDisplayUnitTag();
}
} // namespace

void QCrossPlotWidget::updateDataBoundaries()
{
    const bool points = relationshipModel->data() && relationshipModel->pointCount() > 0;
    const QPointF lo = points ? relationshipModel->minValue() : QPointF(0.0, 0.0);
    const QPointF hi = points ? relationshipModel->maxValue() : QPointF(1.0, 1.0);
    double x0 = lo.x(), x1 = hi.x(), y0 = lo.y(), y1 = hi.y();
    usableRange(x0, x1);
    usableRange(y0, y1);
    QCartesianAxisWidget* top = m_pqUi->m_pqTopAxis;
    QCartesianAxisWidget* left = m_pqUi->m_pqLeftAxis;
    top->setRange(x0, x1);
    left->setRange(y0, y1);
    if (!azimuthScaling) {
        top->fitNiceRange();
        left->fitNiceRange();
    }
    x0 = top->minimum();
    x1 = top->maximum();
    y0 = left->minimum();
    y1 = left->maximum();
    usableRange(x0, x1);
    usableRange(y0, y1);
    m_pqUi->m_pqBottomAxis->setRange(x0, x1);
    m_pqUi->m_pqRightAxis->setRange(y0, y1);
    m_pqUi->m_pqHoriMinAxis->setModelValue(x0, false);
    m_pqUi->m_pqHoriMaxAxis->setModelValue(x1, false);
    m_pqUi->m_pqVertiMinAxis->setModelValue(y0, false);
    m_pqUi->m_pqVertiMaxAxis->setModelValue(y1, false);
    crossPlot->setBoundaries(QPointF(x0, y0), QPointF(x1, y1));
    m_pqUi->m_pqHoriMinLabel->setText(valueWithUnit(horizontalData, lo.x()));
    m_pqUi->m_pqHoriMaxLabel->setText(valueWithUnit(horizontalData, hi.x()));
    m_pqUi->m_pqVertiMinLabel->setText(valueWithUnit(verticalData, lo.y()));
    m_pqUi->m_pqVertiMaxLabel->setText(valueWithUnit(verticalData, hi.y()));
    if (!points)
        for (QLabel* l : {m_pqUi->m_pqHoriMinLabel, m_pqUi->m_pqHoriMaxLabel, m_pqUi->m_pqVertiMinLabel,
                          m_pqUi->m_pqVertiMaxLabel})
            l->setText(QStringLiteral("-----"));
}

void QCrossPlotWidget::slotUpdateChartBoundaries(bool redraw)
{
    // The chart works in floats where it draws; the boundaries are cut to them here so that the
    // edges the axes show are the edges drawn.
    auto cut = [](double v) { return static_cast<double>(static_cast<float>(v)); };
    double x0 = cut(m_pqUi->m_pqHoriMinAxis->modelValue()), x1 = cut(m_pqUi->m_pqHoriMaxAxis->modelValue());
    double y0 = cut(m_pqUi->m_pqVertiMinAxis->modelValue()), y1 = cut(m_pqUi->m_pqVertiMaxAxis->modelValue());
    if (x0 > x1)
        std::swap(x0, x1);
    if (y0 > y1)
        std::swap(y0, y1);
    if (!std::isfinite(x0) || !std::isfinite(x1))
        x0 = 0.0, x1 = 1.0;
    if (!std::isfinite(y0) || !std::isfinite(y1))
        y0 = 0.0, y1 = 1.0;
    crossPlot->setBoundaries(QPointF(x0, y0), QPointF(x1, y1));
    m_pqUi->m_pqTopAxis->setRange(x0, x1);
    m_pqUi->m_pqBottomAxis->setRange(x0, x1);
    m_pqUi->m_pqLeftAxis->setRange(y0, y1);
    m_pqUi->m_pqRightAxis->setRange(y0, y1);
    if (redraw) {
        m_axes->redraw();
        crossPlot->updateChart();
    }
}

// ---- automatic update ----

void QCrossPlotWidget::connectAutomaticUpdate(bool on)
{
    if (on == m_automaticConnected)
        return;
    m_automaticConnected = on;
    QComboBox* h = m_pqUi->m_pqHorizontalComboBox;
    QComboBox* v = m_pqUi->m_pqVerticalComboBox;
    QComboBox* c = m_pqUi->m_pqColorAttributeComboBox;
    QComboBox* s = m_pqUi->m_pqSymbolAttributeComboBox;
    QComboBox* t = m_pqUi->tadpoleAttributeComboBox;
    const QList<QUnitLineEdit*> bounds = {m_pqUi->m_pqHoriMinAxis, m_pqUi->m_pqHoriMaxAxis, m_pqUi->m_pqVertiMinAxis,
                                          m_pqUi->m_pqVertiMaxAxis};
    const QList<QLineEdit*> colourEdits = {m_pqUi->m_pqMinRange, m_pqUi->m_pqMaxRange, m_pqUi->m_pqIntervallSize};
    if (on) {
        for (QComboBox* box : {h, v, c})
            connect(box, SIGNAL(activated(int)), this, SIGNAL(signalUpdateChartData()));
        connect(s, SIGNAL(activated(QString)), this, SLOT(slotSymbolAttributeSelected(QString)));
        connect(t, SIGNAL(activated(QString)), this, SLOT(slotTadpoleAttributeSelected(QString)));
        connect(m_pqUi->m_pqVertexFilterSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateRelationshipDiagram()));
        for (QUnitLineEdit* e : bounds)
            connect(e, SIGNAL(modelValueChanged(double)), this, SLOT(slotUpdateChartBoundaries()));
        for (QLineEdit* e : colourEdits)
            connect(e, SIGNAL(editingFinished()), this, SLOT(updateRelationshipDiagram()));
    } else {
        for (QComboBox* box : {h, v, c, s, t})
            disconnect(box, SIGNAL(activated(int)), this, SIGNAL(signalUpdateChartData()));
        disconnect(s, SIGNAL(activated(QString)), this, SLOT(slotSymbolAttributeSelected(QString)));
        disconnect(t, SIGNAL(activated(QString)), this, SLOT(slotTadpoleAttributeSelected(QString)));
        disconnect(m_pqUi->m_pqVertexFilterSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateRelationshipDiagram()));
        for (QUnitLineEdit* e : bounds)
            disconnect(e, SIGNAL(modelValueChanged(double)), this, SLOT(slotUpdateChartBoundaries()));
        for (QLineEdit* e : colourEdits)
            disconnect(e, SIGNAL(editingFinished()), this, SLOT(updateRelationshipDiagram()));
    }
}

void QCrossPlotWidget::slotEnableCrossPlotUpdateBtn(bool on)
{
    m_pqUi->updateCrossPlot->setEnabled(!on);
    connectAutomaticUpdate(on);
}

void QCrossPlotWidget::slotUpdateButtonPressed()
{
    // The boundaries typed while the update was off count from now on.
    emit signalUpdateChartData();
}

void QCrossPlotWidget::slotSymbolAttributeSelected(const QString& text)
{
    m_pqUi->tadpoleAttributeComboBox->setEnabled(text == PanelComboBoxes::noneText());
    emit signalUpdateChartData();
}

void QCrossPlotWidget::slotTadpoleAttributeSelected(const QString& text)
{
    const bool none = text == PanelComboBoxes::noneText();
    m_pqUi->m_pqSymbolAttributeComboBox->setEnabled(none);
    m_pqUi->m_pqPointStyleComboBox->setEnabled(none);
    relationshipModel->setTadPoleAzimuthDataNode(none ? nullptr : findColumn(text));
    emit signalUpdateChartData();
}

void QCrossPlotWidget::slotSymbolStyleChanged()
{
    const bool single = m_pqUi->m_pqSingleSymbol->isChecked();
    relationshipModel->setSymbolColorOnly(single);
    crossPlot->setSymbolColorOnly(single);
    crossPlot->updateChart();
}

// ---- selection boxes ----

void QCrossPlotWidget::updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    updateDataSetSelectionBoxHorizontal(names, ids);
    updateDataSetSelectionBoxVertical(names, ids);
}

void QCrossPlotWidget::updateDataSetSelectionBoxHorizontal(const QStringList& names, const QList<int>& ids)
{
    QComboBox* box = m_pqUi->m_pqHorizontalComboBox;
    const QString old = PanelComboBoxes::refill(box, names, ids, {QString::fromLatin1(kDipSymbolStyle)});
    const QSignalBlocker blocker(box);
    if (old.isEmpty() || !PanelComboBoxes::selectText(box, old))
        box->setCurrentIndex(box->count() == 0 ? -1 : selectBottomEntries ? box->count() - 1 : 0);
}

void QCrossPlotWidget::updateDataSetSelectionBoxVertical(const QStringList& names, const QList<int>& ids)
{
    QComboBox* box = m_pqUi->m_pqVerticalComboBox;
    const QString old = PanelComboBoxes::refill(box, names, ids);
    const QSignalBlocker blocker(box);
    if (!old.isEmpty() && PanelComboBoxes::selectText(box, old))
        return;
    if (box->count() >= 2)
        box->setCurrentIndex(selectBottomEntries ? box->count() - 1 : 1);
    else
        box->setCurrentIndex(box->count() - 1);
}

void QCrossPlotWidget::updateSymbolAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                                int index)
{
    const QString preferred = relationshipModel->symbolAttributeIsOn() && symbolData ? symbolData->name() : QString();
    PanelComboBoxes::refillWithNone(m_pqUi->m_pqSymbolAttributeComboBox, names, ids, index, preferred);
    m_pqUi->symbolLegendFrame->setFrameShape(QFrame::Box);
    m_pqUi->symbolLegendTitle->hide();
    m_pqUi->m_pqShowDefinedSymbolsOnly->hide();
    if (fullPanel)
        m_pqUi->symbolAttributeGroupBox->show();
    m_pqUi->m_pqMultiSymbol->setChecked(true);
}

void QCrossPlotWidget::updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                               int index)
{
    PanelComboBoxes::refillWithNone(m_pqUi->m_pqColorAttributeComboBox, names, ids, index);
    m_pqUi->colorLegendFrame->hide();
    m_pqUi->colorLegendTitle->hide();
}

void QCrossPlotWidget::updateTadPoleAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    PanelComboBoxes::refillWithNone(m_pqUi->tadpoleAttributeComboBox, names, ids,
                                    m_pqUi->tadpoleAttributeComboBox->currentIndex());
}

void QCrossPlotWidget::updateThirdDimAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    PanelComboBoxes::refillWithNone(m_pqUi->thirdDimComboBox, names, ids, 0);
}

int QCrossPlotWidget::currentHorizontalSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqUi->m_pqHorizontalComboBox); }
int QCrossPlotWidget::currentVerticalSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqUi->m_pqVerticalComboBox); }
int QCrossPlotWidget::currentSymbolSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqUi->m_pqSymbolAttributeComboBox); }
int QCrossPlotWidget::currentColorSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqUi->m_pqColorAttributeComboBox); }
int QCrossPlotWidget::currentTadpoleSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqUi->tadpoleAttributeComboBox); }
QString QCrossPlotWidget::currentHorizontalSelectedDataSetName() const { return m_pqUi->m_pqHorizontalComboBox->currentText(); }
QString QCrossPlotWidget::currentVerticalSelectedDataSetName() const { return m_pqUi->m_pqVerticalComboBox->currentText(); }
QString QCrossPlotWidget::currentSymbolSelectedDataSetName() const { return m_pqUi->m_pqSymbolAttributeComboBox->currentText(); }
QString QCrossPlotWidget::currentColorSelectedDataSetName() const { return m_pqUi->m_pqColorAttributeComboBox->currentText(); }
QString QCrossPlotWidget::currentTadpoleSelectedDataSetName() const { return m_pqUi->tadpoleAttributeComboBox->currentText(); }
void QCrossPlotWidget::setCurrentHorizontalSelectedDataSet(const QString& name) { PanelComboBoxes::selectText(m_pqUi->m_pqHorizontalComboBox, name); }
void QCrossPlotWidget::setCurrentVerticalSelectedDataSet(const QString& name) { PanelComboBoxes::selectText(m_pqUi->m_pqVerticalComboBox, name); }
void QCrossPlotWidget::setCurrentSymbolSelectedDataSet(const QString& name) { PanelComboBoxes::selectText(m_pqUi->m_pqSymbolAttributeComboBox, name); }
void QCrossPlotWidget::setCurrentColorSelectedDataSet(const QString& name) { PanelComboBoxes::selectText(m_pqUi->m_pqColorAttributeComboBox, name); }
void QCrossPlotWidget::setCurrentTadpoleSelectedDataSet(const QString& name) { PanelComboBoxes::selectText(m_pqUi->tadpoleAttributeComboBox, name); }

// ---- legends ----

void QCrossPlotWidget::updateColorLegend()
{
    colorLegendModel->setClasses(m_colorNames, m_colorColors);
}

void QCrossPlotWidget::updateSymbolLegend()
{
    symbolLegendModel->setClasses(m_symbolNames, m_symbolColors);
}

} // namespace rkBase

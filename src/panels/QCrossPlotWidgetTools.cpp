// The cross plot panel's tool pages: clusters, bins and decimation, zoom, annotation, colours,
// and the modes its owners put it in.
#include "QCrossPlotWidget.h"

#include "ui_QCrossPlotWidget.h"

#include "PanelBackground.h"
#include "PanelColorButton.h"
#include "PanelComboBoxes.h"
#include "QCrossPlot.h"
#include "QLegendListModel.h"

#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <UnitManager.h>

#include <QGuiApplication>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {
QString panelText(const char* text)
{
    return QCoreApplication::translate("QCrossPlotWidget", text);
}
} // namespace

// ---- clusters ----

QString QCrossPlotWidget::createClusterGeneratedName()
{
    MatrixData* third = findColumn(m_pqUi->thirdDimComboBox->currentText());
    relationshipModel->setThirdDimAttribute(third);
    if (!horizontalData || !verticalData)
        return QString();
    QString name = QStringLiteral("CrossPlot_") + horizontalData->name() + QLatin1Char('_') + verticalData->name();
    name += third ? QLatin1Char('_') + third->name() : QStringLiteral("_None");
    relationshipModel->setClusterAttributeName(name);
    return name;
}

void QCrossPlotWidget::slotApplyClusterGeneration()
{
    if (!dropLostColumns())
        return;
    const int k = m_pqUi->numberOfClustersSpinBox->value();
    const QString name = createClusterGeneratedName();
    if (name.isEmpty())
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ran = relationshipModel->buildClusters_KML(relationshipModel->clusterAttributeName(), k);
    QGuiApplication::restoreOverrideCursor();
    // A run the model refused (k above the points) leaves the old clusters and makes no column.
    if (ran)
        emit createClusterAttribute(name, relationshipModel);
}

void QCrossPlotWidget::slotUpdateClusterMeansTable()
{
    createClusterGeneratedName();
    MatrixDataArray* centroids = relationshipModel->clusterCentroids();
    if (!centroids) {
        m_pqUi->clusterMeansTableWidget->clear();
        m_pqUi->clusterMeansTableWidget->setRowCount(0);
        m_pqUi->clusterMeansTableWidget->setColumnCount(0);
        return;
    }
    {
        const QSignalBlocker blocker(m_pqUi->numberOfClustersSpinBox);
        m_pqUi->numberOfClustersSpinBox->setValue(centroids->rowCount());
    }
    updateClusterMeansTable();
    if (MatrixData* third = relationshipModel->thirdDimAttribute())
        PanelComboBoxes::selectText(m_pqUi->thirdDimComboBox, third->name());
    m_pqUi->showCentroidsCheckBox->setEnabled(m_pqUi->thirdDimComboBox->currentText() != PanelComboBoxes::noneText());
    emit signalUpdateChartData();
}

void QCrossPlotWidget::updateClusterMeansTable()
{
    QTableWidget* table = m_pqUi->clusterMeansTableWidget;
    MatrixDataArray* centroids = relationshipModel->clusterCentroids();
    if (!centroids || !horizontalData || !verticalData) {
        table->clear();
        table->setRowCount(0);
        table->setColumnCount(0);
        return;
    }
    MatrixData* third = relationshipModel->thirdDimAttribute();
    QStringList headers = {QStringLiteral("S"), horizontalData->name(), verticalData->name()};
    if (third)
        headers << third->name();
    headers << panelText("Distortion");
    table->clear();
    table->setColumnCount(headers.size());
    table->setHorizontalHeaderLabels(headers);
    table->setColumnWidth(0, 25);
    for (int c = 1; c < headers.size(); ++c)
        table->setColumnWidth(c, 60);
    const int rows = centroids->rowCount();
    table->setRowCount(rows);
    const QMap<int, QVariant>& classes = symbolLegendModel->classValues();
    for (int i = 0; i < rows; ++i) {
        const QPointF centre = centroids->value(i, 0).toPointF();
        const QVariant classValue = classes.value(i + 1);
        bool ok = false;
        const int at = classValue.toInt(&ok);
        if (ok && at >= 0 && at < rows)
            table->setItem(at, 0, new QTableWidgetItem(symbolLegendModel->symbol(i + 1).value<QIcon>(), QString()));
        table->setItem(i, 1, new QTableWidgetItem(QString::number(centre.x(), 'f', 2)));
        table->setItem(i, 2, new QTableWidgetItem(QString::number(centre.y(), 'f', 2)));
        int column = 3;
        if (third && centroids->columnCount() > 2)
            table->setItem(i, column++, new QTableWidgetItem(QString::number(centroids->value(i, 2).toPointF().x(), 'f', 2)));
        else if (third)
            ++column;
        if (centroids->columnCount() > 1)
            table->setItem(i, column, new QTableWidgetItem(QString::number(centroids->value(i, 1).toPointF().x(), 'f', 2)));
    }
    table->resizeRowsToContents();
}

// ---- bins ----

void QCrossPlotWidget::slotGenerateIntervalsToggled()
{
    const bool bySize = m_pqUi->intervalSizeRadioBtn->isChecked();
    const bool byNumber = m_pqUi->numbOfIntervalsRadioBtn->isChecked();
    m_pqUi->intervalSizeUnitLineEdit->setEnabled(bySize);
    m_pqUi->createsByIntervalSizePushButton->setEnabled(bySize);
    m_pqUi->numbOfIntervalsSpinBox->setEnabled(byNumber);
    m_pqUi->createByNumbofIntervalsPushButton->setEnabled(byNumber);
    crossPlot->setDataCreationType(m_pqUi->graphicalActionRadioBtn->isChecked() ? QCrossPlot::CreateIntervalBoundary
                                                                               : QCrossPlot::SelectDataPoints);
    crossPlot->setModifyOrientation(false);
}

std::pair<double, double> QCrossPlotWidget::verticalDataRange() const
{
    // The y of the points loaded are verticalData's finite values, over the rows in hand.
    if (!verticalData || !relationshipModel->data() || relationshipModel->pointCount() < 1)
        return {0.0, 0.0};
    const double lo = relationshipModel->minValue().y();
    const double hi = relationshipModel->maxValue().y();
    if (!std::isfinite(lo) || !std::isfinite(hi) || lo > hi)
        return {0.0, 0.0};
    return {lo, hi};
}

void QCrossPlotWidget::finishBinCreation()
{
    DepthLineField* filter = relationshipModel->intervalFilter();
    const bool made = filter && !filter->lineDepths().empty();
    crossPlot->setIntervalBoundaries(m_pqUi->showBinBoundaries->isChecked());
    m_pqUi->dataDecimationGroupBox->setEnabled(made);
    m_pqUi->createNewAttributeGroupBox->setEnabled(made);
    if (made)
        m_pqUi->showBinBoundaries->setChecked(true);
    crossPlot->setIntervalBoundaries(made && m_pqUi->showBinBoundaries->isChecked());
    crossPlot->updateChart();
}

void QCrossPlotWidget::slotCreateIntervalsBySize()
{
    if (!dropLostColumns())
        return;
    const double size = m_pqUi->intervalSizeUnitLineEdit->modelValue();
    const auto range = verticalDataRange();
    // No bins from a size that is not a positive number, nor more than the chart can show.
    if (!(size > 0.0) || !std::isfinite(size) || range.second <= range.first
        || (range.second - range.first) / size > kMaxBinCount)
        return;
    relationshipModel->generateAquidistantIntervalFilter(size, range.first, range.second);
    finishBinCreation();
}

void QCrossPlotWidget::slotCreateIntervalsByNumber()
{
    if (!dropLostColumns())
        return;
    const int count = m_pqUi->numbOfIntervalsSpinBox->value();
    const auto range = verticalDataRange();
    if (count < 1 || range.second <= range.first)
        return;
    relationshipModel->generateNumberOfIntervalFilter(count, range.first, range.second);
    finishBinCreation();
}

void QCrossPlotWidget::slotDeleteIntervals()
{
    relationshipModel->deleteIntervalBoundaries();
    m_pqUi->dataDecimationGroupBox->setEnabled(false);
    m_pqUi->createNewAttributeGroupBox->setEnabled(false);
    crossPlot->updateChart();
}

void QCrossPlotWidget::slotEnableDecimationGroupBoxes(bool on)
{
    crossPlot->setIntervalBoundaries(m_pqUi->showBinBoundaries->isChecked());
    m_pqUi->dataDecimationGroupBox->setEnabled(on);
    m_pqUi->createNewAttributeGroupBox->setEnabled(on);
    if (on)
        m_pqUi->showBinBoundaries->setChecked(true);
}

void QCrossPlotWidget::slotGenerateDataDecimation()
{
    if (!dropLostColumns())
        return;
    relationshipModel->generateDataDecimation();
    slotUpdateDecimationSettings();
}

void QCrossPlotWidget::slotUpdateDecimationSettings()
{
    crossPlot->setBinAverages(m_pqUi->showIntervalAverages->isChecked());
    crossPlot->setNumbOfDataPerBin(m_pqUi->showCountDataPerInterval->isChecked());
    crossPlot->setIntervalBoundaries(m_pqUi->showBinBoundaries->isChecked());
    crossPlot->updateChart();
}

void QCrossPlotWidget::slotCreateAttributeFromBinAverage() { createDecimationAttribute(true); }

void QCrossPlotWidget::slotCreateAttributeFromNumbOfDataPerBin() { createDecimationAttribute(false); }

void QCrossPlotWidget::createDecimationAttribute(bool binAverages)
{
    if (!dropLostColumns())
        return;
    if (!relationshipModel->decimationData())
        relationshipModel->generateDataDecimation();
    const bool replaceOriginal =
        m_pqUi->dipDataDecimate_groupBox->isEnabled() && m_pqUi->m_paReplaceOriginal->isChecked();
    // Only bin averages can take the place of the measured dips and azimuths: ask first.
    if (binAverages && replaceOriginal
        && m_question(this, panelText("Create New Attributes"),
                      panelText("Do you really want to replace your original dip/azimuth data?"))
               != QMessageBox::Yes)
        return;
    emit createDataDecimationAttribute(relationshipModel, binAverages, replaceOriginal,
                                       m_pqUi->m_paReplaceDecimated->isChecked(), horizontalData);
}

// ---- zoom ----

void QCrossPlotWidget::applyZoom(double zoom)
{
    if (!std::isfinite(zoom) || zoom < 1.0)
        zoom = 1.0;
    m_scrollBars->apply(zoom, verticalZoomOnly);
    m_axes->setZoom(zoom, verticalZoomOnly);
    if (verticalZoomOnly)
        crossPlot->zoomY(zoom);
    else
        crossPlot->zoom(zoom);
    m_axes->redraw();
}

void QCrossPlotWidget::slotZoomFactorChanged(double zoom)
{
    applyZoom(zoom);
}

void QCrossPlotWidget::slotZoomFactorReset(bool on)
{
    m_pqUi->m_pqZoomFactorSpinBox->setEnabled(on);
    crossPlot->enableMouseZoom(on);
    applyZoom(on ? m_pqUi->m_pqZoomFactorSpinBox->value() : 1.0);
}

void QCrossPlotWidget::chartZoomChanged(double zoom)
{
    {
        const QSignalBlocker blocker(m_pqUi->m_pqZoomFactorSpinBox);
        m_pqUi->m_pqZoomFactorSpinBox->setValue(zoom);
    }
    applyZoom(zoom);
}

void QCrossPlotWidget::slotHorizontalSliderChanged(int value)
{
    crossPlot->xoffset(value);
    m_axes->setHorizontalOffset(value);
}

void QCrossPlotWidget::slotVerticalSliderChanged(int value)
{
    crossPlot->yoffset(value);
    m_axes->setVerticalOffset(value);
}

// ---- cursor and selection ----

void QCrossPlotWidget::updateCursorPosLabel(const QPointF& p)
{
    if (!dropLostColumns())
        return;
    const boost::shared_ptr<UnitManager> ux = horizontalData->unitManager();
    const boost::shared_ptr<UnitManager> uy = verticalData->unitManager();
    if (!ux || !uy)
        return;
    double x = ux->convertModelToDisplay(p.x());
    const double y = uy->convertModelToDisplay(p.y());
    if (mercatorScaling && x < 0.0)
        x += 360.0;
    const QString xs = QString::number(x, 'f', std::max(0, horizontalData->unitPrecision()));
    const QString ys = QString::number(y, 'f', std::max(0, verticalData->unitPrecision()));
    QString text;
    if (cursorWithUnits)
        text = QStringLiteral("(") + xs + QLatin1Char(' ') + ux->getDisplayUnitTag() + QStringLiteral(", ") + ys
               + QLatin1Char(' ') + uy->getDisplayUnitTag() + QStringLiteral(")");
    else
        text = QStringLiteral("(") + xs + QStringLiteral(", ") + ys + QStringLiteral(")");
    m_pqUi->cursorPos->setText(text);
}

void QCrossPlotWidget::slotDataPointsSelection(const boost::dynamic_bitset<>& rows)
{
    if (displayDataType() != QRelationshipItemModel::ShowSelectedOnly) {
        selectedRows.clear();
        for (auto r = rows.find_first(); r != boost::dynamic_bitset<>::npos; r = rows.find_next(r))
            selectedRows.push_back(static_cast<int>(r));
        updateRelationshipDiagramSettings(false);
        crossPlot->scheduleRedraw();
        emit dataPointsSelection(rows);
        return;
    }
    emit dataPointsSelection(rows);
    emit signalUpdateChartData();
}

// ---- annotation ----

void QCrossPlotWidget::blackWhiteSwitch()
{
    PanelBackground::apply(m_pqUi->m_pqBlackBackgroundBtn->isChecked(), m_pqUi->m_pqPlotFrame, crossPlot,
                           m_axes.get());
}

void QCrossPlotWidget::fontSizeChanged(double points)
{
    m_axes->setFontPointSize(points);
    m_axes->redraw();
}

void QCrossPlotWidget::slotResetAnnotationSettings()
{
    updateDataBoundaries();
    m_pqUi->m_pqFontSizeSpinBox->setValue(font().pointSizeF());
    crossPlot->updateChart();
}

void QCrossPlotWidget::changeLineColor()
{
    const QColor colour = PanelColorButton::pick(m_pqUi->lineColorButton, Qt::green);
    if (!colour.isValid())
        return;
    crossPlot->setLineColor(colour);
    crossPlot->updateChart();
}

void QCrossPlotWidget::changePointColor()
{
    const QColor colour = PanelColorButton::pick(m_pqUi->pointColorButton, crossPlot->pointFillColor());
    if (!colour.isValid())
        return;
    crossPlot->setPointFillColor(colour);
    crossPlot->updateChart();
}

void QCrossPlotWidget::resetDisplayColorAttribute()
{
    m_colorRange->reset(colourData);
    m_pqUi->m_pqBlueRedRadioBtn->setChecked(true);
}

void QCrossPlotWidget::slotResetDisplayColorAttribute()
{
    dropLostColumns();
    {
        const QSignalBlocker blocker(m_pqUi->m_pqBlueRedRadioBtn);
        resetDisplayColorAttribute();
    }
    if (m_pqUi->automaticCrossPlotUpdate->isChecked())
        updateRelationshipDiagram();
}

void QCrossPlotWidget::displayUnitsChanged(const QString& category)
{
    if (!dropLostColumns())
        return;
    auto has = [&category](const MatrixData* node) {
        return node && node->unitManager() && QString::fromStdString(node->unitManager()->category()) == category;
    };
    if (category.isEmpty() || has(horizontalData) || has(verticalData))
        updateRelationshipDiagram();
}

void QCrossPlotWidget::drawAxes(QPainter* painter, QRect rect)
{
    m_axes->draw(painter, rect);
}

void QCrossPlotWidget::slotCopyWEMFToClipboard()
{
    const QByteArray metafile = crossPlot->toEnhancedMetafile();
    if (!metafile.isEmpty())
        QChartDrawingArea::setMetafileOnClipboard(metafile, crossPlot->visibleChartImage());
}

// ---- configuration ----

void QCrossPlotWidget::setFixedAxisWidth(int left, int right)
{
    fixedAxisWidth = qMakePair(std::max(0, left), std::max(0, right));
    m_pqUi->m_pqLeftAxis->setFixedWidth(fixedAxisWidth.first);
    m_pqUi->m_pqRightAxis->setFixedWidth(fixedAxisWidth.second);
    m_pqUi->m_pqLeftAxis->setVisible(fixedAxisWidth.first > 0);
    m_pqUi->m_pqRightAxis->setVisible(fixedAxisWidth.second > 0);
}

void QCrossPlotWidget::setBottomPanelVisible(bool on) { m_pqUi->m_pqBottomPanel->setVisible(on); }
void QCrossPlotWidget::setSidePanelVisible(bool on) { m_pqUi->legendSplitter->setVisible(on); }
bool QCrossPlotWidget::getBottomPanelVisible() const { return !m_pqUi->m_pqBottomPanel->isHidden(); }
bool QCrossPlotWidget::getSidePanelVisible() const { return !m_pqUi->legendSplitter->isHidden(); }
void QCrossPlotWidget::setChartFrameEnabled(bool on) { m_pqUi->m_pqPlotFrame->setEnabled(on); }

void QCrossPlotWidget::setDisplayDataType(DisplayType type)
{
    const int at = m_pqUi->displayDataTypeComboBox->findData(int(type));
    if (at >= 0)
        m_pqUi->displayDataTypeComboBox->setCurrentIndex(at);
}

QCrossPlotWidget::DisplayType QCrossPlotWidget::displayDataType() const
{
    bool ok = false;
    const int v = m_pqUi->displayDataTypeComboBox->currentData().toInt(&ok);
    if (!ok || v < QRelationshipItemModel::ShowAll || v > QRelationshipItemModel::HighlightSelected)
        return QRelationshipItemModel::HighlightSelected;
    return static_cast<DisplayType>(v);
}

void QCrossPlotWidget::setDefaultLinePlot()
{
    m_pqUi->m_pqShowPointConnectionLine->setChecked(true);
    m_pqUi->m_pqShowPoints->setChecked(false);
    m_pqUi->symbolLegendFrame->hide();
    m_pqUi->m_pqShowDefinedSymbolsOnly->setText(panelText("Show All Points"));
    m_pqUi->m_pqVertexFilterLabel->setText(panelText("Point Sampling"));
}

void QCrossPlotWidget::setWellAnalyserMode()
{
    m_pqUi->createNewAttributeGroupBox->setTitle(panelText("Create New Decimated Log"));
    m_pqUi->dipDataDecimate_groupBox->hide();
    m_pqUi->m_pqShowStratigraphy->show();
    m_pqUi->m_pqShowStratigraphyLabels->show();
    verticalZoomOnly = true;
}

void QCrossPlotWidget::setLightMode()
{
    removeSymbolandColorAttributeTooBoxItems();
    blackWhiteSwitch();
}

void QCrossPlotWidget::removeSymbolandColorAttributeTooBoxItems()
{
    setPageRemoved(QStringLiteral("ClusterGeneration"));
    setPageRemoved(QStringLiteral("ColourAttributeSettings"));
    setPageRemoved(QStringLiteral("SymbolAttributeSettings"));
}

void QCrossPlotWidget::hideTab(const QString& name)
{
    setPageRemoved(name);
}

void QCrossPlotWidget::hideColourLegend()
{
    m_pqUi->colorLegendFrame->hide();
}

void QCrossPlotWidget::showBisectionLine(bool on) { m_pqUi->m_pqShowBisectingLine->setChecked(on); }

void QCrossPlotWidget::showRegression(bool on)
{
    m_pqUi->m_pqShowRegressionLine->setChecked(on);
    m_pqUi->m_pqShow90PercentRange->setChecked(on);
}

void QCrossPlotWidget::showRegressionEquation(bool on) { m_pqUi->m_pqShowRegressionEquation->setChecked(on); }

void QCrossPlotWidget::showRegressionLineOnly()
{
    m_pqUi->m_pqShowRegressionLine->setChecked(true);
    m_pqUi->m_pqShow90PercentRange->setChecked(false);
}

void QCrossPlotWidget::showModifyAction(bool on) { crossPlot->showModifyAction(on); }
void QCrossPlotWidget::setPointConnectionLine(bool on) { m_pqUi->m_pqShowPointConnectionLine->setChecked(on); }

} // namespace rkBase

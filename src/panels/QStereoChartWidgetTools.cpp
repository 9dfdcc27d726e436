// The stereo panel's tool pages: density contours, colour range, bias correction, lineation,
// clusters, rotation, zoom, the cursor label, legends, colours and the black/white and
// convention switches.
#include "QStereoChartWidget.h"

#include "PanelBackground.h"
#include "PanelColorButton.h"
#include "PanelColorRange.h"
#include "PanelComboBoxes.h"
#include "PanelZoomScrollBars.h"
#include "QLegendListModel.h"
#include "QLegendListView.h"
#include "QStereoPlotWidget.h"
#include "StereoColorButton.h"

#include <MatrixData.h>
#include <MatrixDataArray.h>

#include <QGuiApplication>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace rkBase {

namespace {
QString panelText(const char* text)
{
    return QCoreApplication::translate("QStereoChartWidget", text);
}

const QString kNoValueText = QStringLiteral("---");
// Kamb contours step by two sigma, from two sigma up.
constexpr double kSigmaStep = 2.0;

// A number for a label; what is not a number shows as no value, never as "nan".
QString shown(double value, int decimals)
{
    return std::isfinite(value) ? QString::number(value, 'f', decimals) : QStringLiteral("-----");
}

// The blue-to-red spectrum runs from low to high unflipped: "Blue-Red" is the unflipped map.
bool flipFor(const QRadioButton* redBlue)
{
    return redBlue->isChecked();
}
} // namespace

// ---- density contours ----

DensityMethod QStereoChartWidget::countingMethod() const
{
    switch (m_pqCountingMethodComboBox->currentIndex()) {
    case 1:
        return DensityMethod::Kamb;
    case 2:
        return DensityMethod::ExponentialKamb;
    default:
        return DensityMethod::FourCorner;
    }
}

MatrixDataArray* QStereoChartWidget::activeContourGrid() const
{
    return m_pqContoursForPoles->isChecked() ? m_model->contourGridPoles() : m_model->contourGridDipDir();
}

void QStereoChartWidget::resetContourRanges(MatrixDataArray* grid)
{
    auto noRange = [this] {
        for (QLineEdit* e : {m_pqContourMinRange, m_pqContourMaxRange, m_pqContourIntervalSize})
            e->setText(kNoValueText);
        const QSignalBlocker blocker(m_pqContourBlueRedRadioButton);
        m_pqContourBlueRedRadioButton->setChecked(true);
    };
    if (!grid || grid->rowCount() == 0) {
        noRange();
        return;
    }
    double lo = 0.0, hi = 0.0, mean = 0.0;
    const int n = m_model->numberOfSelectedPoints();
    // Without points the counts cannot be turned into percentages: no range reaches the chart.
    if (!grid->getMinMax(lo, hi, mean, boost::dynamic_bitset<>()) || n <= 0 || !std::isfinite(lo)
        || !std::isfinite(hi)) {
        noRange();
        return;
    }
    if (countingMethod() != DensityMethod::FourCorner) {
        // Multiples of sigma: contours at 2, 4, 6 ... up to the peak, as such nets are read.
        lo = kSigmaStep;
        hi = std::max(kSigmaStep, kSigmaStep * std::ceil(hi / kSigmaStep));
        m_pqContourMinRange->setText(QString::number(lo, 'f', 5));
        m_pqContourMaxRange->setText(QString::number(hi, 'f', 5));
        m_pqContourIntervalSize->setText(QString::number(kSigmaStep, 'f', 5));
    } else {
        m_pqContourMinRange->setText(QString::number(lo, 'f', 5));
        m_pqContourMaxRange->setText(QString::number(hi, 'f', 5));
        m_pqContourIntervalSize->setText(QString::number((hi - lo) * (100.0 / n) / 19.0, 'f', 5));
    }
    {
        const QSignalBlocker blocker(m_pqContourBlueRedRadioButton);
        m_pqContourBlueRedRadioButton->setChecked(true);
    }
    m_drawingArea->setContourRange(lo, hi);
}

void QStereoChartWidget::resetContourRanges()
{
    resetContourRanges(activeContourGrid());
}

void QStereoChartWidget::slotResetContourRanges()
{
    resetContourRanges();
    updateStereoPlotContours(true);
}

void QStereoChartWidget::applyContourSettings()
{
    QStereoPlotWidget* plot = m_drawingArea;
    plot->setGridIsOn(m_pqShowDensityGrid->isChecked());
    const double step = m_contourRange->interval() + 5e-09;
    const bool flip = flipFor(m_pqContourRedBlueRadioButton);
    for (MatrixDataArray* grid : {m_model->contourGridPoles(), m_model->contourGridDipDir()}) {
        grid->setColorMapStepSize(step);
        grid->setFlipColorMap(flip);
    }
    plot->setContourFillOn(m_pqDiscreteDensityGroupBox->isChecked());
    plot->setContourLinesOn(m_pqWithContoursRadioButton->isChecked());
    plot->setContourPolesOn(m_pqContoursForPoles->isChecked());
    plot->setContourDipDirOn(m_pqContoursForDipDirections->isChecked());
    plot->setContourLabelsOn(m_pqShowContourLabels->isChecked());
    plot->setContourRange(PanelColorRange::parse(m_pqContourMinRange), PanelColorRange::parse(m_pqContourMaxRange));
}

void QStereoChartWidget::updateStereoPlotContours(bool update)
{
    // An interval of no size (or no number) cannot cut the counts into bands: start again from the grid.
    if (m_contourRange->interval() == 0.0)
        resetContourRanges();
    applyContourSettings();
    if (update)
        m_drawingArea->updateChart();
}

void QStereoChartWidget::updateStereoPlotContours()
{
    if (signalsBlocked())
        return;
    updateDensityGridMap();
    if (m_pqContourMinRange->text().trimmed() == kNoValueText)
        resetContourRanges();
    updateStereoPlotContours(true);
}

void QStereoChartWidget::updateDensityGridMap()
{
    const int n = m_pqGridCellsSpinBox->value();
    const bool weighted = m_pqBiasCorrectionCheckBox->isChecked();
    m_drawingArea->setDensityMethod(countingMethod());
    // The grid lies over the net as it is placed now, which follows the chart's size.
    m_drawingArea->setCenterAndRadius();
    m_drawingArea->countingOutProjections(n + 1, n + 1, true, weighted);
    m_drawingArea->countingOutProjections(n + 1, n + 1, false, weighted);
    if (m_pqContourMinRange->text().trimmed() == kNoValueText)
        resetContourRanges();
    updateStereoPlotContours(false);
}

void QStereoChartWidget::slotUpdateDensityGridMap()
{
    if (signalsBlocked())
        return;
    m_pqContourMinRange->setText(kNoValueText);
    updateDensityGridMap();
    m_drawingArea->updateChart();
}

// ---- colour attribute ----

void QStereoChartWidget::resetDisplayColorAttribute()
{
    m_colorResetPending = false;
    m_colorRange->reset(m_colorData);
    const QSignalBlocker blocker(m_pqBlueRedRadioButton);
    m_pqBlueRedRadioButton->setChecked(true);
}

void QStereoChartWidget::slotResetDisplayColorAttribute()
{
    dropLostColumns();
    resetDisplayColorAttribute();
    updateStereoPlot();
}

void QStereoChartWidget::updateColorMapAttributeSettings()
{
    if (signalsBlocked())
        return;
    // The classes of the points come from the colour map: they are read again.
    updateStereoPlot();
}

// ---- cursor ----

void QStereoChartWidget::updateCursorPosLabel(const QPointF& pixel)
{
    QStereoPlotWidget* plot = m_drawingArea;
    const int mode = m_pqCursorInformationComboBox->currentIndex();
    plot->setCursorInformationMode(mode);
    const bool selection = m_pqSelectionRadioButton->isChecked();
    double firstDip = 0.0, firstAzimuth = 0.0, secondDip = 0.0, secondAzimuth = 0.0;
    if (!plot->generateDipAndDipAzimuth(pixel, firstDip, firstAzimuth))
        return;
    const QPointF second = plot->dipDirectionInPixel(QPointF(firstDip, firstAzimuth));
    plot->generateDipAndDipAzimuth(second, secondDip, secondAzimuth);
    QPointF pole(firstDip, firstAzimuth), plane(secondDip, secondAzimuth);
    const bool pickedPlane = m_pqProjectedPlaneRadioButton->isChecked() || (selection && mode == 1);
    if (!pickedPlane)
        std::swap(pole, plane);
    const int decimals = m_dipData ? std::max(0, m_dipData->unitPrecision()) : 2;
    auto pair = [decimals](const QPointF& p) {
        return QStringLiteral("(") + shown(p.x(), decimals) + QLatin1Char('/') + shown(p.y(), decimals)
               + QStringLiteral(")");
    };
    if (mode == 0) {
        m_pqPoleCursorLabel->show();
        m_pqPoleCursorPos->show();
        m_pqPoleCursorLabel->setText(panelText("Pole(plunge/plunge az.):"));
        m_pqPoleCursorPos->setText(pair(pole));
        if (m_pqStrikeDipSenseRadioButton->isChecked()) {
            double strike = 0.0;
            const QString sense = QStereoPlotWidget::transformInStrikeDipConvention(plane.y(), strike);
            m_pqPlaneCursorLabel->setText(panelText("Plane(strike/dip/sense):"));
            m_pqPlaneCursorPos->setText(QStringLiteral("(") + shown(strike, decimals) + QLatin1Char('/')
                                        + shown(plane.x(), decimals) + QLatin1Char(' ') + sense + QStringLiteral(")"));
        } else {
            m_pqPlaneCursorLabel->setText(panelText("Plane(dip/dip az.):"));
            m_pqPlaneCursorPos->setText(pair(plane));
        }
    } else {
        m_pqPoleCursorLabel->hide();
        m_pqPoleCursorPos->hide();
        m_pqPlaneCursorLabel->setText(panelText("Line(plunge/plunge az.):"));
        m_pqPlaneCursorPos->setText(pair(plane));
    }
}

void QStereoChartWidget::updateCursorPosLabel()
{
    updateCursorPosLabel(m_drawingArea->mousePickingPos());
}

void QStereoChartWidget::updateGraphicalSelection()
{
    m_drawingArea->setSelectionMode(m_pqSelectionRadioButton->isChecked());
    m_drawingArea->setPickPlaneMode(m_pqProjectedPlaneRadioButton->isChecked());
}

// ---- rotation ----

void QStereoChartWidget::getRotationParameter(const gdfVertex& vector, double dip, double azimuth, double& x,
                                              double& y, double& z)
{
    double px = 0.0, py = 0.0, pz = 0.0;
    QRelationshipItemModel::poleInCartesianCoord(dip, azimuth, px, py, pz);
    const gdfVertex axis = gdfVertex(px, py, pz) ^ vector;
    x = axis.x();
    y = axis.y();
    z = axis.z();
}

void QStereoChartWidget::rotateDataAboutRotationAxis()
{
    if (!m_model->data() || m_model->pointCount() == 0)
        return;
    const QPointF axis(m_pqRotationPlungeSpinBox->value(), m_pqRotationAzimuthSpinBox->value());
    const double angle = m_pqRotationAngleSpinBox->value();
    m_model->rotateDataAboutRotationAxis(nullptr, axis, angle, true);
    if (m_lineationModel->data() && m_lineationModel->pointCount() > 0)
        m_lineationModel->rotateDataAboutRotationAxis(nullptr, axis, angle, false);
    updateObservationStatistics();
    m_drawingArea->updateChart();
}

void QStereoChartWidget::rotateDataToCenterPole()
{
    if (!m_model->data() || m_model->pointCount() == 0)
        return;
    const QPointF mean = m_model->meanPrincipalPlane();
    if (!std::isfinite(mean.x()) || !std::isfinite(mean.y()))
        return;
    m_model->rotateDataToMeanPole(mean, true, nullptr);
    if (m_lineationModel->data() && m_lineationModel->pointCount() > 0)
        m_lineationModel->rotateDataToMeanPole(mean, false, nullptr);
    updateObservationStatistics();
    m_drawingArea->updateChart();
}

// ---- lineation ----

void QStereoChartWidget::deleteLineationData()
{
    // The lineation model must not keep reading columns that go.
    if (m_lineationModel && m_lineationPlungeData && m_lineationModel->nodeX() == m_lineationPlungeData)
        m_lineationModel->clearData();
    delete m_lineationPlungeData;
    m_lineationPlungeData = nullptr;
    delete m_lineationAzimuthData;
    m_lineationAzimuthData = nullptr;
    m_lineationStamp.clear();
}

void QStereoChartWidget::setLineationData(MatrixData* plunge, MatrixData* azimuth)
{
    const bool byPlungeAzimuth = m_pqPlungeAzimuthGroupBox->isChecked();
    const bool byPitch = m_pqPlanePitchGroupBox->isChecked();
    MatrixData* sources[4] = {nullptr, nullptr, nullptr, nullptr};
    if (m_dataRoot && byPlungeAzimuth) {
        sources[0] = plunge ? plunge : findColumn(m_pqLineationPlungeComboBox->currentText());
        sources[1] = azimuth ? azimuth : findColumn(m_pqLineationAzimuthComboBox->currentText());
        if (!sources[0] || !sources[1])
            sources[0] = sources[1] = nullptr;
    } else if (m_dataRoot && byPitch) {
        sources[0] = findColumn(m_pqPitchPlaneDipComboBox->currentText());
        sources[1] = findColumn(m_pqPitchPlaneAzimuthComboBox->currentText());
        sources[2] = findColumn(m_pqPitchComboBox->currentText());
        sources[3] = findColumn(m_pqPitchDirectionComboBox->currentText());
        if (!sources[0] || !sources[1] || !sources[2])
            sources[0] = sources[1] = sources[2] = sources[3] = nullptr;
    }
    // The same columns with the same cells give the same lines: the built ones stay, and so does
    // the lineation model that reads them.
    PanelLoadStamp stamp;
    for (MatrixData* source : sources)
        stamp.addColumn(source);
    stamp.add(byPlungeAzimuth).add(byPitch);
    if (stamp == m_lineationStamp)
        return;
    deleteLineationData();
    std::copy(std::begin(sources), std::end(sources), std::begin(m_lineationSources));
    m_lineationStamp = stamp;
    if (!sources[0])
        return;

    auto newColumn = [](const QString& name, int rows, const MatrixData* like) {
        auto* column = new MatrixData(name, rows, 1, QVariant::Double, true);
        column->setRegistry(like->registry());
        column->setUnitManager(like->unitManager());
        return column;
    };
    auto finite = [](const MatrixData* column, int row, double& out) {
        if (!column || row >= column->rowCount() || !column->isValueValid(row, 0))
            return false;
        bool ok = false;
        out = column->value(row, 0).toDouble(&ok);
        return ok && std::isfinite(out);
    };
    if (!sources[2]) {
        MatrixData* p = sources[0];
        MatrixData* a = sources[1];
        const int rows = std::max(p->rowCount(), a->rowCount());
        m_lineationPlungeData = newColumn(panelText("Lineation Plunge"), rows, p);
        m_lineationAzimuthData = newColumn(panelText("Lineation Azimuth"), rows, a);
        for (int r = 0; r < rows; ++r) {
            double pv = 0.0, av = 0.0;
            if (finite(p, r, pv) && finite(a, r, av)) {
                m_lineationPlungeData->setValue(r, 0, pv);
                m_lineationAzimuthData->setValue(r, 0, av);
            }
        }
        return;
    }
    MatrixData* dip = sources[0];
    MatrixData* dipAzimuth = sources[1];
    MatrixData* pitch = sources[2];
    MatrixData* direction = sources[3];
    const int rows = dip->rowCount();
    m_lineationPlungeData = newColumn(panelText("Lineation Plunge"), rows, dip);
    m_lineationAzimuthData = newColumn(panelText("Lineation Azimuth"), rows, dipAzimuth);
    for (int r = 0; r < rows; ++r) {
        double d = 0.0, a = 0.0, p = 0.0;
        if (!finite(dip, r, d) || !finite(dipAzimuth, r, a) || !finite(pitch, r, p))
            continue;
        const QString sense = direction && r < direction->rowCount() && direction->isValueValid(r, 0)
                                  ? direction->value(r, 0).toString()
                                  : QString();
        double plunge = 0.0, trend = 0.0;
        MatrixData::plungeAndAzimuth(plunge, trend, d, a, p, sense);
        if (std::isfinite(plunge) && std::isfinite(trend)) {
            m_lineationPlungeData->setValue(r, 0, plunge);
            m_lineationAzimuthData->setValue(r, 0, trend);
        }
    }
}

void QStereoChartWidget::slotSelectLineation()
{
    const QString none = PanelComboBoxes::noneText();
    auto chosen = [&none](const QComboBox* box) { return box->count() > 0 && box->currentText() != none; };
    int mask = 0;
    int needed = 0;
    if (m_pqPlanePitchGroupBox->isChecked()) {
        needed = 1 | 2 | 4 | 8;
        mask |= chosen(m_pqPitchPlaneDipComboBox) ? 1 : 0;
        mask |= chosen(m_pqPitchPlaneAzimuthComboBox) ? 2 : 0;
        mask |= chosen(m_pqPitchComboBox) ? 4 : 0;
        mask |= chosen(m_pqPitchDirectionComboBox) ? 8 : 0;
    }
    if (m_pqPlungeAzimuthGroupBox->isChecked()) {
        needed = 16 | 32;
        mask |= chosen(m_pqLineationPlungeComboBox) ? 16 : 0;
        mask |= chosen(m_pqLineationAzimuthComboBox) ? 32 : 0;
    }
    const bool complete = needed != 0 && (mask & needed) == needed;
    enableLineation(complete);
    if (complete) {
        setLineationData(nullptr, nullptr);
        emit dataSetSelected();
    } else if (m_lineationPlungeData) {
        // Lines the boxes no longer name leave the chart.
        deleteLineationData();
        m_drawingArea->updateChart();
    }
}

void QStereoChartWidget::slotPlungeAzimuthGroupBoxToggled(bool on)
{
    // One way of reading the lineation at a time.
    if (on) {
        const QSignalBlocker blocker(m_pqPlanePitchGroupBox);
        m_pqPlanePitchGroupBox->setChecked(false);
    }
    slotSelectLineation();
}

void QStereoChartWidget::slotPlanePitchGroupBoxToggled(bool on)
{
    if (on) {
        const QSignalBlocker blocker(m_pqPlungeAzimuthGroupBox);
        m_pqPlungeAzimuthGroupBox->setChecked(false);
    }
    slotSelectLineation();
}

void QStereoChartWidget::enableLineation(bool on)
{
    const QSignalBlocker blocker(m_pqShowLineation);
    m_drawingArea->setShowLineation(on);
    m_pqShowLineation->setEnabled(on);
    m_pqShowLineation->setChecked(on);
}

// ---- bias correction ----

void QStereoChartWidget::slotEnableBiasCorrection(int state)
{
    const bool on = state == Qt::Checked;
    m_pqScanlineGroupBox->setEnabled(on);
    m_pqMinimumBiasAngleGroupBox->setEnabled(on);
    m_pqGenerateBiasCorrectionButton->setEnabled(on);
    if (!m_model)
        return;
    m_model->setScanline(m_pqScanlinePlungeSpinBox->value(), m_pqScanlineAzimuthSpinBox->value(),
                         m_pqMinimumBiasAngleSpinBox->value());
    m_pqContourMinRange->setText(kNoValueText);
    updateObservationStatistics();
    updateStereoPlotContours(true);
    updateColorLegend();
}

void QStereoChartWidget::slotApplyCreateBiasWeightAttribute()
{
    m_model->setScanline(m_pqScanlinePlungeSpinBox->value(), m_pqScanlineAzimuthSpinBox->value(),
                         m_pqMinimumBiasAngleSpinBox->value());
    m_model->setBiasAttributeName(panelText("Bias Weights"));
    m_pqContourMinRange->setText(kNoValueText);
    m_colorResetPending = true;
    emit createBiasWeightAttribute(m_model->biasAttributeName(), m_model);
}

// ---- clusters ----

void QStereoChartWidget::slotApplyClusterGeneration()
{
    if (!dropLostColumns())
        return;
    const int k = m_pqNumberOfClustersSpinBox->value();
    const QString name = QStringLiteral("StereoPlot_") + m_dipData->name() + QLatin1Char('_') + m_azimuthData->name();
    m_model->setClusterAttributeName(name);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ran = m_model->buildClusters_KML_ForStereoProjection(name, k);
    QGuiApplication::restoreOverrideCursor();
    updateClusterMeansTable();
    m_drawingArea->updateChart();
    // A run the model refused (no fewer points than clusters) makes no column.
    if (ran)
        emit createClusterAttribute(name, m_model);
}

void QStereoChartWidget::updateClusterMeansTable()
{
    QTableWidget* table = m_pqClusterMeansTableWidget;
    const MatrixDataArray* centroids = m_model ? m_model->clusterCentroids() : nullptr;
    table->clear();
    if (!centroids || centroids->rowCount() == 0) {
        table->setRowCount(0);
        table->setColumnCount(0);
        return;
    }
    const bool poles = m_pqClusterMeansComboBox->currentIndex() == 0;
    table->setColumnCount(4);
    table->setHorizontalHeaderLabels({QString(), poles ? panelText("Plunge") : panelText("Dip"), panelText("Azimuth"),
                                      panelText("Distortion")});
    table->setColumnWidth(0, 25);
    const int rows = centroids->rowCount();
    table->setRowCount(rows);
    for (int i = 0; i < rows; ++i) {
        QPointF centre = centroids->value(i, 0).toPointF();
        if (poles)
            centre = QPointF(90.0 - centre.x(), centre.y() <= 180.0 ? centre.y() + 180.0 : centre.y() - 180.0);
        // The swatch is the colour the points of the cluster are drawn in.
        QColor colour = m_drawingArea->poleColor();
        const int points = m_model->clusterIDCount();
        for (int row = 0; row < points; ++row) {
            if (m_model->clusterID(row) != i)
                continue;
            if (m_model->drawSymbols()) {
                QColor c;
                m_model->getColor(row, c);
                if (c.isValid())
                    colour = c;
            }
            break;
        }
        QPixmap swatch(10, 10);
        swatch.fill(colour);
        table->setItem(i, 0, new QTableWidgetItem(QIcon(swatch), QString()));
        table->setItem(i, 1, new QTableWidgetItem(shown(centre.x(), 2)));
        table->setItem(i, 2, new QTableWidgetItem(shown(centre.y(), 2)));
        const double distortion = centroids->columnCount() > 1 ? centroids->value(i, 1).toPointF().x() : 0.0;
        table->setItem(i, 3, new QTableWidgetItem(shown(distortion, 2)));
    }
    table->resizeRowsToContents();
}

// ---- zoom ----

void QStereoChartWidget::applyZoom(double zoom)
{
    if (!std::isfinite(zoom) || zoom < 1.0)
        zoom = 1.0;
    m_scrollBars->apply(zoom);
    m_drawingArea->zoom(zoom);
}

void QStereoChartWidget::chartZoomChanged(double zoom)
{
    {
        const QSignalBlocker blocker(m_pqZoomSpinBox);
        m_pqZoomSpinBox->setValue(zoom);
    }
    slotZoomFactorChanged(zoom);
}

void QStereoChartWidget::slotZoomFactorChanged(double zoom)
{
    applyZoom(zoom);
}

void QStereoChartWidget::slotZoomFactorReset(bool on)
{
    m_pqZoomSpinBox->setEnabled(on);
    m_drawingArea->enableMouseZoom(on);
    slotZoomFactorChanged(on ? m_pqZoomSpinBox->value() : 1.0);
}

void QStereoChartWidget::slotHorizontalSliderChanged(int value)
{
    m_drawingArea->xoffset(value);
}

void QStereoChartWidget::slotVerticalSliderChanged(int value)
{
    m_drawingArea->yoffset(value);
}

// ---- selection and legends ----

void QStereoChartWidget::slotDataPointsSelection(const boost::dynamic_bitset<>& rows)
{
    if (m_model->displayType() != QRelationshipItemModel::ShowSelectedOnly) {
        m_selectedRows.clear();
        for (auto r = rows.find_first(); r != boost::dynamic_bitset<>::npos; r = rows.find_next(r))
            m_selectedRows.push_back(static_cast<int>(r));
        updateObservationStatistics();
        m_drawingArea->updateChart();
        emit dataPointsSelection(rows);
        return;
    }
    emit dataPointsSelection(rows);
    emit dataSetSelected();
}

void QStereoChartWidget::fillLegend(QLegendListModel* legend, const QMap<int, QVariant>& names,
                                    const QMap<int, QColor>& colours)
{
    legend->setClasses(names, colours);
}

void QStereoChartWidget::updateSymbolLegend()
{
    fillLegend(m_symbolLegendModel, m_symbolNames, m_symbolColors);
}

void QStereoChartWidget::updateColorLegend()
{
    fillLegend(m_colorLegendModel, m_colorNames, m_colorColors);
}

void QStereoChartWidget::updateSymbolLegendItemSelection(const QModelIndex&)
{
    const std::vector<int> ids = m_pqSymbolLegendView->getSelectedIDs();
    m_model->clearSelection();
    for (int id : ids)
        m_model->setSelectedSymbol(id, true);
    slotDataPointsSelection(m_model->selection());
}

void QStereoChartWidget::updateColorLegendItemSelection(const QModelIndex&)
{
    const std::vector<int> ids = m_pqColorLegendView->getSelectedIDs();
    m_model->clearSelection();
    for (int id : ids)
        m_model->setSelectedColorClass(id, true);
    slotDataPointsSelection(m_model->selection());
}

void QStereoChartWidget::slotClearLegendSelection()
{
    m_pqSymbolLegendView->clearSelection();
    m_pqColorLegendView->clearSelection();
}

void QStereoChartWidget::slotSymbolLegendsVerticalScrollBarChanged(int value)
{
    m_pqSymbolLegendView->slotLegendsVerticalScrollBarChanged(value);
}

void QStereoChartWidget::slotColorLegendsVerticalScrollBarChanged(int value)
{
    m_pqColorLegendView->slotLegendsVerticalScrollBarChanged(value);
}

void QStereoChartWidget::updateSymbolPointStyle()
{
    // "Single": every class in the one shape of "Type", told apart by colour only.
    const bool multiple = m_pqMultipleSymbolRadioButton->isChecked();
    m_model->setSymbolColorOnly(!multiple);
    m_drawingArea->setSymbolColorOnly(!multiple);
    // The shape of "Type" is drawn unless each class has a shape of its own.
    m_pqPointTypeComboBox->setEnabled(!multiple || !m_symbolData);
    updateSymbolLegend();
    m_drawingArea->updateChart();
}

// ---- colours ----

void QStereoChartWidget::applyColors()
{
    for (const StereoColorButton& c : StereoColorButton::all())
        (m_drawingArea->*c.setter)(PanelColorButton::color(this->*c.button, QColor(QString::fromLatin1(c.defaultColor))));
}

void QStereoChartWidget::changeColorBtn(QPushButton* button)
{
    for (const StereoColorButton& c : StereoColorButton::all()) {
        if (this->*c.button != button)
            continue;
        const QColor chosen = PanelColorButton::pick(button, QColor(QString::fromLatin1(c.defaultColor)));
        if (!chosen.isValid())
            return;
        (m_drawingArea->*c.setter)(chosen);
        m_drawingArea->updateChart();
        return;
    }
}

void QStereoChartWidget::changePlaneColor() { changeColorBtn(m_pqPlaneColorButton); }
void QStereoChartWidget::changeMeanPrincipalPlaneColor() { changeColorBtn(m_pqMeanPrincipalPlaneColorButton); }
void QStereoChartWidget::changeMeanResultantPlaneColor() { changeColorBtn(m_pqMeanResultantPlaneColorButton); }
void QStereoChartWidget::changeSuggestedSectionPlaneColor() { changeColorBtn(m_pqSuggestedSectionPlaneColorButton); }
void QStereoChartWidget::changeBestFitPlaneColor() { changeColorBtn(m_pqBestFitPlaneColorButton); }
void QStereoChartWidget::changePoleColor() { changeColorBtn(m_pqPoleColorButton); }
void QStereoChartWidget::changeMeanPrincipalPoleColor() { changeColorBtn(m_pqMeanPrincipalPoleColorButton); }
void QStereoChartWidget::changeMeanResultantPoleColor() { changeColorBtn(m_pqMeanResultantPoleColorButton); }
void QStereoChartWidget::changeTPoleColor() { changeColorBtn(m_pqTPoleColorButton); }
void QStereoChartWidget::changeLPoleColor() { changeColorBtn(m_pqLPoleColorButton); }
void QStereoChartWidget::changeAzimuthColor() { changeColorBtn(m_pqAzimuthColorButton); }
void QStereoChartWidget::changeMeanPrincipalAzimuthColor() { changeColorBtn(m_pqMeanPrincipalAzimuthColorButton); }
void QStereoChartWidget::changeMeanResultantAzimuthColor() { changeColorBtn(m_pqMeanResultantAzimuthColorButton); }
void QStereoChartWidget::changeTazimuthColor() { changeColorBtn(m_pqTAzimuthColorButton); }
void QStereoChartWidget::changeLazimuthColor() { changeColorBtn(m_pqLAzimuthColorButton); }
void QStereoChartWidget::changeLineationColor() { changeColorBtn(m_pqLineationColorButton); }

// ---- switches ----

void QStereoChartWidget::blackWhiteSwitch()
{
    const bool black = !m_pqWhiteBackgroundRadioButton->isChecked();
    m_drawingArea->setPalette(PanelBackground::palette(black, m_drawingArea->palette()));
    PanelBackground::apply(black, m_pqChartFrame, m_drawingArea, nullptr);
}

void QStereoChartWidget::conventionSwitch()
{
    m_drawingArea->setDipDipAzimuthConvention(m_pqDipDipAzimuthRadioButton->isChecked());
    const bool lines = m_pqCalculationForComboBox->currentIndex() == 1;
    const QPointF resultant = lines ? m_model->meanResultantDipDirection() : m_model->meanResultantPole();
    const QPointF principal = lines ? m_model->meanPrincipalDipDirection() : m_model->meanPrincipalPlane();
    updateAverageOrientation(resultant.x(), resultant.y(), principal.x(), principal.y());
    m_drawingArea->updateChart();
}

} // namespace rkBase

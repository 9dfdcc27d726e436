// The stereo panel's statistics: the "Data Statistics" labels, the report, the mean orientation
// captions, the Woodcock diagram and the fit of a Fisher distribution.
#include "QStereoChartWidget.h"

#include "ui_QBestFitOfFisherWidget.h"

#include "QDataStatisticSummary.h"
#include "QLegendListModel.h"
#include "QProbabilityPlot.h"
#include "QStereoPlotWidget.h"
#include "QWoodcockHelpWidget.h"

#include <MatrixData.h>
#include <UnitManager.h>
#include <UnitRegistry.h>

#include <QGuiApplication>

#include <cmath>

namespace rkBase {

namespace {
QString panelText(const char* text)
{
    return QCoreApplication::translate("QStereoChartWidget", text);
}

const QString kUndefined = QStringLiteral("-----");
constexpr double kNoValue = 99999.0;
constexpr double kDegrees = 180.0 / 3.141592653589793;

// A number for a label or the report; what is not a number shows as no value, never as "nan".
QString shown(double value, int decimals = 2)
{
    return std::isfinite(value) ? QString::number(value, 'f', decimals) : kUndefined;
}

QString inBrackets(const QString& text)
{
    return QStringLiteral("(") + text + QStringLiteral(")");
}
} // namespace

bool QStereoChartWidget::statisticsForPoles() const
{
    return m_pqCalculationForComboBox->currentIndex() != 1;
}

QPointF QStereoChartWidget::getMeanOrientation() const
{
    return m_model->meanPrincipalPlane();
}

double QStereoChartWidget::getLdirection() const
{
    return m_model->LdirectionPlane().y();
}

double QStereoChartWidget::getTdirection() const
{
    return m_model->TdirectionPlane().y();
}

void QStereoChartWidget::calculateSuggestedSectionOrientation()
{
    // The model reads the points and writes only its result: its own list serves as the copy.
    m_model->calculateSuggestedSectionOrientation(m_pqBiasCorrectionCheckBox->isChecked(), nullptr);
}

void QStereoChartWidget::updateObservationStatistics()
{
    if (!m_drawingArea)
        return;
    m_fitNeedsUpdate = true;
    updateDensityGridMap();
    const int index = m_pqCalculationForComboBox->currentIndex();
    const bool isPole = index != 1;
    const bool bias = m_pqBiasCorrectionCheckBox->isChecked();
    QRelationshipItemModel* model = m_model;
    const bool points = model->data() && model->pointCount() > 0;

    double meanResultantLength = std::nan(""), variance = std::nan(""), kappa = kNoValue, e1 = std::nan(""),
           e2 = std::nan(""), e3 = std::nan(""), normalizedResultant = std::nan(""), K = std::nan(""),
           C = std::nan(""), lnE3E2 = 0.0, lnE2E1 = 0.0, confidenceRadius = std::nan("");
    bool unimodal = false;
    QString classification;
    if (points) {
        model->calculateMeanDirection(true, bias, nullptr, -1);
        model->calculateMeanDirection(false, bias, nullptr, -1);
        calculateSuggestedSectionOrientation();
        model->calculateFisherStatistics(meanResultantLength, variance, kappa, e1, e2, e3, normalizedResultant, K, C,
                                         lnE3E2, lnE2E1, confidenceRadius, unimodal, classification, isPole, bias);
    }
    m_kappa = kappa;
    const bool kappaDefined = kappa != kNoValue && std::isfinite(kappa);
    const double confidenceDegrees = confidenceRadius * kDegrees;
    m_drawingArea->setAverageOrientation(std::isfinite(confidenceDegrees) ? confidenceDegrees : 0.0, unimodal,
                                         unimodal);
    if (isPole)
        updateAverageOrientation(model->meanResultantPole().x(), model->meanResultantPole().y(),
                                 model->meanPrincipalPlane().x(), model->meanPrincipalPlane().y());
    else
        updateAverageOrientation(model->meanResultantDipDirection().x(), model->meanResultantDipDirection().y(),
                                 model->meanPrincipalDipDirection().x(), model->meanPrincipalDipDirection().y());
    if (!points) {
        // Results of an earlier data set are not this one's.
        m_pqMeanPrincipalValue->setText(kUndefined);
        m_pqMeanResultantValue->setText(kUndefined);
    }

    m_pqStandardDeviation->setText(shown(meanResultantLength));
    m_pqStandardDeviationDegree->setText(inBrackets(shown(meanResultantLength * kDegrees)));
    m_pqVariance->setText(shown(variance));
    m_pqKappa->setText(kappaDefined ? shown(kappa) : kUndefined);
    m_pqConfidenceRadius->setText(kappaDefined ? shown(confidenceRadius) : kUndefined);
    m_pqConfidenceRadiusDegree->setText(kappaDefined ? inBrackets(shown(confidenceDegrees)) : kUndefined);
    m_pqResultantLength->setText(shown(normalizedResultant));
    const double sum = e1 + e2 + e3;
    const double eigen[3] = {e1, e2, e3};
    QLabel* values[3] = {m_pqEigenvalue1, m_pqEigenvalue2, m_pqEigenvalue3};
    QLabel* ratios[3] = {m_pqEigenvalue1Ratio, m_pqEigenvalue2Ratio, m_pqEigenvalue3Ratio};
    for (int i = 0; i < 3; ++i) {
        values[i]->setText(shown(eigen[i]));
        ratios[i]->setText(inBrackets(sum != 0.0 ? shown(eigen[i] / sum, 3) : kUndefined));
    }
    m_pqWoodcockK->setText(shown(K));
    m_pqWoodcockC->setText(shown(C));
    const bool e1Small = !(std::abs(e1) > 5e-07), e2Small = !(std::abs(e2) > 5e-07);
    m_pqLnE2E1->setText(e1Small || e2Small ? kUndefined : shown(std::log(e2 / e1)));
    m_pqLnE3E2->setText(e2Small ? kUndefined : shown(std::log(e3 / e2)));
    m_pqClassification->setText(points ? classification.trimmed() : kUndefined);
    for (QWidget* w : {static_cast<QWidget*>(m_pqKappaCaption), static_cast<QWidget*>(m_pqKappa),
                       static_cast<QWidget*>(m_pqConfidenceRadiusCaption), static_cast<QWidget*>(m_pqConfidenceRadius),
                       static_cast<QWidget*>(m_pqConfidenceRadiusDegree)})
        w->setVisible(index == 0);
    if (m_woodcockWidget) {
        m_woodcockWidget->setPoint(std::isfinite(lnE2E1) ? lnE2E1 : 0.0, std::isfinite(lnE3E2) ? lnE3E2 : 0.0);
        m_woodcockWidget->resetPoints();
        calculateWoodcockParameterForClusters();
        m_woodcockWidget->update();
    }

    // ---- the report ----
    if (!m_statisticSummary)
        return;
    QDataStatisticSummary* report = m_statisticSummary;
    QString dataName = m_observationDataName;
    if (dataName.isEmpty() && m_dipData && m_azimuthData)
        dataName = m_dipData->name() + QLatin1Char('/') + m_azimuthData->name();
    report->newDocument(dataName);
    QString tag = QStringLiteral("deg");
    boost::shared_ptr<UnitManager> unit;
    if (m_dipData && m_dipData->registry())
        unit = m_dipData->registry()->getOrientationUnitManager();
    if (!unit) {
        report->updateDocument();
        return;
    }
    const int decimals = std::max(0, unit->precision());
    tag = unit->getDisplayUnitTag();
    auto orientation = [&](const QPointF& p) {
        return shown(unit->convertModelToDisplay(p.x()), decimals) + QLatin1Char(' ') + tag + QLatin1Char('/')
               + shown(unit->convertModelToDisplay(p.y()), decimals) + QLatin1Char(' ') + tag;
    };
    auto poleAndPlane = [&](const QPointF& plane) {
        report->appendRow(panelText("Pole(plunge,plunge azimuth)"),
                          orientation(QRelationshipItemModel::poleToPlane(plane, true)));
        report->appendRow(panelText("Plane(dip,dip azimuth)"), orientation(plane));
    };
    auto radiansAndDegrees = [&](double v) {
        return shown(v, decimals) + QStringLiteral(" rad") + QStringLiteral("  (") + shown(v * kDegrees, decimals)
               + QStringLiteral(" deg") + QStringLiteral(")");
    };
    report->newTable(panelText("General Statistics"));
    report->appendRow(panelText("Number of Points"), QString::number(model->numberOfSelectedPoints()));
    report->appendRow(panelText("Standard Deviation"), radiansAndDegrees(meanResultantLength));
    if (index == 0) {
        report->newTable(panelText("Fisher Distribution"));
        report->appendRow(panelText("Dispersion (k value)"), kappaDefined ? shown(kappa) : kUndefined);
        report->appendRow(panelText("Confidence Radius"),
                          kappaDefined ? shown(confidenceRadius, decimals) + QStringLiteral(" rad") + QStringLiteral("  (")
                                             + shown(confidenceDegrees) + QStringLiteral(" deg") + QStringLiteral(")")
                                       : kUndefined);
        report->newTable(panelText("Mean Principal Orientation"));
        poleAndPlane(model->meanPrincipalPlane());
        report->newTable(panelText("Mean Resultant Orientation"));
        poleAndPlane(model->meanResultantPole());
    } else {
        // Both lines carry the resultant direction of the lines.
        report->newTable(panelText("Mean Principal Direction"));
        report->appendRow(panelText("Line(plunge,plunge azimuth)"), orientation(model->meanResultantDipDirection()));
        report->newTable(panelText("Mean Resultant Direction"));
        report->appendRow(panelText("Line(plunge,plunge azimuth)"), orientation(model->meanResultantDipDirection()));
    }
    report->appendRow(panelText("Resultant Length (normalized)"), shown(normalizedResultant));
    report->appendRow(panelText("Variance"), shown(variance));
    report->newTable(panelText("Transverse (T) Orientation"));
    poleAndPlane(model->TdirectionPlane());
    report->newTable(panelText("Longitudinal (L) Orientation/ Best-Fit Orientation"));
    poleAndPlane(model->LdirectionPlane());
    report->newTable(panelText("Suggested Section Orientation"));
    poleAndPlane(model->suggestedSectionPlane());
    report->updateDocument();
}

void QStereoChartWidget::updateAverageOrientation(double resultantX, double resultantY, double principalX,
                                                  double principalY)
{
    m_pqNumberOfSelectedPoints->setText(QString::number(m_model ? m_model->numberOfSelectedPoints() : 0));
    auto pair = [](double x, double y) { return inBrackets(shown(x) + QLatin1Char('/') + shown(y)); };
    if (!statisticsForPoles()) {
        m_pqMeanPrincipalCaption->setText(panelText("(Plunge,Plunge Az.):"));
        m_pqMeanResultantCaption->setText(panelText("(Plunge,Plunge Az.):"));
        m_pqMeanPrincipalValue->setText(pair(principalX, principalY));
        m_pqMeanResultantValue->setText(pair(resultantX, resultantY));
    } else if (m_pqDipDipAzimuthRadioButton->isChecked()) {
        m_pqMeanPrincipalCaption->setText(panelText("(Dip,Dip Az.):"));
        m_pqMeanResultantCaption->setText(panelText("(Dip,Dip Az.):"));
        m_pqMeanPrincipalValue->setText(pair(principalX, principalY));
        m_pqMeanResultantValue->setText(pair(resultantX, resultantY));
    } else {
        m_pqMeanPrincipalCaption->setText(panelText("(Strike,Dip,Sense):"));
        m_pqMeanResultantCaption->setText(panelText("(Strike,Dip,Sense):"));
        // The dip of both lines is the resultant's.
        auto strikeDip = [resultantX](double azimuth) {
            double strike = 0.0;
            const QString sense = QStereoPlotWidget::transformInStrikeDipConvention(azimuth, strike);
            return inBrackets(shown(strike) + QLatin1Char('/') + shown(resultantX) + QLatin1Char(' ') + sense);
        };
        m_pqMeanPrincipalValue->setText(strikeDip(principalY));
        m_pqMeanResultantValue->setText(strikeDip(resultantY));
    }
}

void QStereoChartWidget::calculateWoodcockParameterForClusters()
{
    if (!m_woodcockWidget || !m_symbolLegendModel || m_symbolLegendModel->rowCount() == 0
        || !m_model->symbolAttributeIsOn() || m_model->partSelection() || !m_model->data())
        return;
    const bool bias = m_pqBiasCorrectionCheckBox->isChecked();
    // The classes are taken one at a time as a selection, which only a highlighting display
    // restricts the statistics to.
    const DisplayType display = m_model->displayType();
    m_model->setDisplayType(QRelationshipItemModel::HighlightSelected);
    const int rows = m_symbolLegendModel->rowCount();
    for (int row = 0; row < rows; ++row) {
        const int id = m_symbolLegendModel->idOfRow(row);
        m_model->clearSelection();
        if (m_model->setSelectedSymbol(id, true) < 0)
            continue;
        double lnE3E2 = 0.0, lnE2E1 = 0.0;
        m_model->calculateWoodcockParameterForOneSubSet(true, bias, lnE3E2, lnE2E1);
        if (std::isfinite(lnE2E1) && std::isfinite(lnE3E2))
            m_woodcockWidget->addPoint(lnE2E1, lnE3E2, id, m_symbolLegendModel->classColors().value(id));
    }
    m_model->clearSelection();
    m_model->setDisplayType(display);
}

void QStereoChartWidget::updateFitOfFisherDistribution()
{
    if (!m_dipData || !m_azimuthData || !m_fitNeedsUpdate || !m_colatitudePlot)
        return;
    if (!m_model->data() || m_model->pointCount() == 0)
        return;
    const QPointF mean = m_model->meanPrincipalPlane();
    m_model->rotateDataToMeanPole2(mean);
    const double a = m_colatitudePlot->updateProbabilityPlot(m_model);
    const double b = m_longitudePlot->updateProbabilityPlot(m_model);
    m_model->rotateDataToForNormalQQPlot(mean);
    const double c = m_twoVariablePlot->updateProbabilityPlot(m_model);
    auto slope = [](double v) { return v != kNoValue && std::isfinite(v); };
    QString first = kUndefined;
    if (slope(a))
        first = shown(a > 0.0 ? 1.0 / a : 0.0);
    m_fitUi->m_pqColatitudeKappa->setText(first);
    m_fitUi->m_pqLongitudeSlope->setText(slope(b) ? shown(b) : kUndefined);
    // A slope that gives no estimate leaves the colatitude's in its place.
    m_fitUi->m_pqTwoVariableKappa->setText(slope(c) && c > 0.0 ? shown(1.0 / (c * c)) : first);
    m_fitUi->m_pqMeanResultantKappa->setText(m_kappa != kNoValue && std::isfinite(m_kappa) ? shown(m_kappa)
                                                                                           : kUndefined);
    m_fitNeedsUpdate = false;
}

void QStereoChartWidget::slotTabWidgetChanged(int)
{
    if (!m_fitTabWidget)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_fitTabWidget->setCurrentIndex(0);
    QWidget* page = m_pqTabWidget->currentWidget();
    if (page && page->objectName() == QLatin1String("GOODNESS_OF_FIT")) {
        updateFitOfFisherDistribution();
    } else if (m_reloadPending) {
        m_reloadPending = false;
        emit dataSetSelected();
    }
    QGuiApplication::restoreOverrideCursor();
}

void QStereoChartWidget::slotProbabilityPlotSelection(const boost::dynamic_bitset<>& rows, const QString&)
{
    // The rows change under the chart while another tab is shown: it reloads on its way back.
    m_reloadPending = true;
    emit dataPointsSelection(rows);
}

} // namespace rkBase

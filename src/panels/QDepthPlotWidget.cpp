#include "QDepthPlotWidget.h"

#include "ui_QCrossPlotWidget.h"

#include "PanelColorButton.h"
#include "PanelComboBoxes.h"
#include "QCrossPlot.h"

#include <MatrixData.h>

#include <QSignalBlocker>

namespace rkBase {

namespace {
QStringList depthNames()
{
    return {QStringLiteral("Z"), QStringLiteral("Measured Depth"), QStringLiteral("Depth"), QStringLiteral("Time")};
}
} // namespace

QDepthPlotWidget::QDepthPlotWidget(QWidget* parent, DisplayUnitManager* manager, bool a, bool b, bool showLeftAxis,
                                   bool showRightAxis)
    : QCrossPlotWidget(parent, manager, a, b, true)
{
    Ui::QCrossPlotWidget& ui = *m_pqUi;
    ui.m_pqLeftAxis->setTitleVisible(a || b);
    ui.m_pqBottomAxis->setTitleVisible(false);
    ui.m_pqTopAxis->setTitleVisible(true);
    cursorWithUnits = a || b;
    const int width = (a || b) ? 130 : 0;
    setFixedAxisWidth(showLeftAxis ? (width > 0 ? width : 55) : 0, showRightAxis ? (width > 0 ? width : 55) : 0);
    ui.m_pqVerticalLabel->setText(QCoreApplication::translate("QCrossPlotWidget", "Depth Axis"));
    ui.updateCrossPlot->hide();
    ui.m_pqShowPointConnectionLine->show();
    ui.lineStyleGroupBox->show();
    ui.m_pqShowPoints->show();
    ui.m_pqShowBisectingLine->hide();
    ui.m_pqShowRegressionLine->hide();
    ui.m_pqShow90PercentRange->hide();
    ui.m_pqShowRegressionEquation->hide();
    ui.automaticCrossPlotUpdate->hide();
    setPageRemoved(QStringLiteral("page2"));
    setPageRemoved(QStringLiteral("ClusterGeneration"));
    crossPlot->setLineColor(Qt::darkBlue);
    PanelColorButton::setColor(ui.lineColorButton, Qt::darkBlue);
    // The automatic update connects the vertical box to the owner directly; a depth column change
    // first drops the bins of the old one.
    disconnect(ui.m_pqVerticalComboBox, SIGNAL(activated(int)), this, SIGNAL(signalUpdateChartData()));
    connect(ui.m_pqVerticalComboBox, SIGNAL(activated(int)), this, SLOT(slotUpdateChartData()));
}

void QDepthPlotWidget::updateDataSetSelectionBoxVertical(const QStringList& names, const QList<int>& ids)
{
    QStringList depth;
    QList<int> depthIds;
    for (int i = 0; i < names.size(); ++i)
        if (depthNames().contains(names[i])) {
            depth << names[i];
            depthIds << (i < ids.size() ? ids[i] : -1);
        }
    QComboBox* box = m_pqUi->m_pqVerticalComboBox;
    const QString old = PanelComboBoxes::refill(box, depth, depthIds);
    const QSignalBlocker blocker(box);
    if (!old.isEmpty() && PanelComboBoxes::selectText(box, old))
        return;
    if (!PanelComboBoxes::selectText(box, QStringLiteral("Measured Depth")))
        box->setCurrentIndex(box->count() > 0 ? 0 : -1);
}

void QDepthPlotWidget::slotUpdateChartData()
{
    relationshipModel->deleteIntervalBoundaries();
    m_pqUi->dataDecimationGroupBox->setEnabled(false);
    m_pqUi->createNewAttributeGroupBox->setEnabled(false);
    crossPlot->updateChart();
    emit signalUpdateChartData();
}

void QDepthPlotWidget::invertDepthAxis()
{
    if (!verticalData)
        return;
    bool a = false, b = false;
    const double lo = verticalData->minValue().toDouble(&a);
    const double hi = verticalData->maxValue().toDouble(&b);
    const bool elevation = (a && lo < 0.0) || (b && hi < 0.0);
    Ui::QCrossPlotWidget& ui = *m_pqUi;
    if (elevation) {
        ui.m_pqLeftAxis->setAxisPosition(QCartesianAxisWidget::AxisLeftElevation);
        ui.m_pqRightAxis->setAxisPosition(QCartesianAxisWidget::AxisRightElevation);
        ui.m_pqLeftAxis->setOriginPosition(QCartesianAxisWidget::OriginBottomLeft);
        ui.m_pqRightAxis->setOriginPosition(QCartesianAxisWidget::OriginBottomLeft);
        crossPlot->setOriginPosition(QCrossPlot::OriginBottomLeft);
    } else {
        ui.m_pqLeftAxis->setAxisPosition(QCartesianAxisWidget::AxisLeftDepth);
        ui.m_pqRightAxis->setAxisPosition(QCartesianAxisWidget::AxisRightDepth);
        ui.m_pqLeftAxis->setOriginPosition(QCartesianAxisWidget::OriginTopLeft);
        ui.m_pqRightAxis->setOriginPosition(QCartesianAxisWidget::OriginTopLeft);
        crossPlot->setOriginPosition(QCrossPlot::OriginTopLeft);
    }
}

} // namespace rkBase

#include "QTangentChartWidget.h"

#include "QDoubleSpinBoxWithSlider.h"
#include "QTangentPlotWidget.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace rkBase {

namespace {
// The pages a tangent plot has no use for, by object name.
const char* const kRemovedPages[] = {"Lineation", "ProjectionType", "Contours", "ClusterGeneration", "BiasCorrection",
                                     "Rotation"};
} // namespace

QTangentChartWidget::QTangentChartWidget(const QString& title, QWidget* parent, DisplayUnitManager* unitManager,
                                         bool extended1, bool extended2, Qt::WindowFlags flags)
    : QStereoChartWidget(title, parent, unitManager, extended1, extended2, flags, false, QString())
{
    // The base cannot call this class's createChartArea from its constructor: it is done here.
    createChartArea(tr("Tangent Plot"));
    initializeChart();

    m_pqProjectedPlanesGroupBox->hide();
    m_pqShowLineation->hide();
    m_pqLineationColorButton->hide();
    m_pqConventionGroupBox->hide();
    for (const char* page : kRemovedPages)
        setPageRemoved(QString::fromLatin1(page));
    showTab(QStringLiteral("PlotFoldAxis"), m_pqStereoToolBox->count());
    m_pqStereoToolBox->setItemText(m_pqStereoToolBox->count() - 1, tr("Plot Fold Axis"));

    m_pqFoldAxisPlungeSpinBox->setRange(0.0, 60.0);
    m_pqFoldAxisPlungeSpinBox->setSingleStep(1.0);
    m_pqFoldAxisAzimuthSpinBox->setRange(0.0, 360.0);
    m_pqFoldAxisAzimuthSpinBox->setSingleStep(1.0);
    connect(m_pqShowFoldAxisGroupBox, SIGNAL(toggled(bool)), this, SLOT(slotShowFoldAxisToggled(bool)));
    connect(m_pqFoldAxisPlungeSpinBox, SIGNAL(valueChanged(double)), this, SLOT(updateFoldAxisPlunge(double)));
    connect(m_pqFoldAxisAzimuthSpinBox, SIGNAL(valueChanged(double)), this, SLOT(updateFoldAxisAzimuth(double)));
    QTangentPlotWidget* plot = tangentPlot();
    plot->setShowFoldAxis(m_pqShowFoldAxisGroupBox->isChecked());
    plot->setFoldAxis(QPointF(m_pqFoldAxisPlungeSpinBox->value(), m_pqFoldAxisAzimuthSpinBox->value()));
}

void QTangentChartWidget::createChartArea(const QString& title)
{
    installChartArea(new QTangentPlotWidget(m_pqStereoPlotFrame, title));
}

QTangentPlotWidget* QTangentChartWidget::tangentPlot() const
{
    return static_cast<QTangentPlotWidget*>(m_drawingArea);
}

void QTangentChartWidget::setFoldAxisAzimuth(double azimuth)
{
    {
        const QSignalBlocker blocker(m_pqFoldAxisAzimuthSpinBox);
        m_pqFoldAxisAzimuthSpinBox->setValue(azimuth);
    }
    updateFoldAxisAzimuth(azimuth);
}

void QTangentChartWidget::slotShowFoldAxisToggled(bool on)
{
    tangentPlot()->setShowFoldAxis(on);
    tangentPlot()->updateChart();
}

void QTangentChartWidget::updateFoldAxisPlunge(double plunge)
{
    QPointF axis = tangentPlot()->foldAxis();
    axis.setX(plunge);
    tangentPlot()->setFoldAxis(axis);
    tangentPlot()->updateChart();
}

void QTangentChartWidget::updateFoldAxisAzimuth(double azimuth)
{
    QPointF axis = tangentPlot()->foldAxis();
    axis.setY(azimuth);
    tangentPlot()->setFoldAxis(axis);
    tangentPlot()->updateChart();
}

void QTangentChartWidget::updateCursorPosLabel(const QPointF& pixel)
{
    const QPointF line = tangentPlot()->transformInDataPoint(pixel);
    m_pqPoleCursorLabel->hide();
    m_pqPoleCursorPos->hide();
    m_pqPlaneCursorLabel->setText(tr("(plunge/plunge az.):"));
    m_pqPlaneCursorPos->setText(QStringLiteral("(") + QString::number(line.x(), 'f', 2) + QLatin1Char('/')
                                + QString::number(line.y(), 'f', 2) + QStringLiteral(")"));
}

} // namespace rkBase

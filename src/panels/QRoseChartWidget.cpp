// Set-up, data entry, the selection boxes and the updates of the rose panel.
#include "QRoseChartWidget.h"

#include "PanelBackground.h"
#include "PanelColorButton.h"
#include "PanelColorRange.h"
#include "PanelComboBoxes.h"
#include "QLegendListModel.h"
#include "QLegendListView.h"
#include "QRosePlotWidget.h"

#include <MatrixData.h>

#include <QGuiApplication>
#include <QScrollBar>
#include <QSignalBlocker>

#include <cmath>

namespace rkBase {

namespace {
const QColor kPetalOutlineDefault(0x82, 0x82, 0x82);
constexpr int kMaxClasses = 19;

QString panelText(const char* text)
{
    return QCoreApplication::translate("QRoseChartWidget", text);
}
} // namespace

QRoseChartWidget::QRoseChartWidget(const QString& title, QWidget* parent, bool extended1, bool extended2,
                                   Qt::WindowFlags flags, const QString& settingsName)
    : QWidget(parent, flags), m_settingsPrefix(settingsName)
{
    setupUi(this);
    m_colorRange = std::make_unique<PanelColorRange>(m_pqColorMinRange, m_pqColorMaxRange, m_pqColorIntervalSize);
    m_interval = m_pqIntervalSizeSpinBox->value();
    m_pqZeroCircleSizeSlider->setRange(0, 50);
    m_pqZeroCircleSizeSlider->setValue(0);
    PanelColorButton::setColor(m_pqPetalOutlineColorButton, kPetalOutlineDefault);
    m_pqSidePanelSplitter->setSizes({400, 230});
    m_pqLegendSplitter->setSizes({500, 120});
    m_pqRoseToolBox->layout()->setSpacing(0);
    if (!(extended1 && extended2))
        showToolBox(false, false);

    m_roseChart = new QRosePlotWidget(m_pqRosePlotFrame, title.isEmpty() ? panelText("Rose Chart") : title);
    m_roseChart->setObjectName(QStringLiteral("rosePlot"));
    m_roseChart->allowCopyToWMF(true);
    m_pqRosePlotFrameLayout->addWidget(m_roseChart, 0, 0);
    m_pqRosePlotFrameLayout->setContentsMargins(0, 0, 0, 0);
    m_legendModel = new QLegendListModel(this, m_roseChart, QLegendListModel::ColorLegend);
    m_pqColorLegendTitle->setText(panelText("Colours"));
    m_pqColorLegendView->setModel(m_legendModel);
    m_pqColorLegendView->createDefaultPopupMenu();
    m_pqColorLegendFrame->hide();
    ColourAttributeSettings->setEnabled(false);

    connect(m_pqRoseDataSetComboBox, SIGNAL(activated(int)), this, SIGNAL(dataSetSelected()));
    connect(m_pqColourMapComboBox, SIGNAL(activated(int)), this, SIGNAL(dataSetSelected()));
    connect(m_pqWhiteBackgroundRadioButton, SIGNAL(toggled(bool)), this, SLOT(blackWhiteSwitch()));
    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{
             m_pqAreaRadioButton, m_pqMeanDirectionCheckBox, m_pqNormalizedLengthCheckBox, m_pqRosePlotRadioButton,
             m_pqAnglesRadioButton, m_pqDirectionsRadioButton, m_pqAnnotationOffRadioButton, m_pqCirclesRadioButton,
             m_pqTickMarksRadioButton, m_pqScalingOffRadioButton, m_pqCircleFrameCheckBox})
        connect(b, SIGNAL(toggled(bool)), this, SLOT(updateRoseChart()));
    connect(m_pqFrequencyScaleSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateRoseChart()));
    connect(m_pqPetalOutlineWidthSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateRoseChart()));
    connect(m_pqZeroCircleSizeSlider, SIGNAL(valueChanged(int)), this, SLOT(updateRoseChart()));
    connect(m_pqUnidirectionalRadioButton, SIGNAL(toggled(bool)), this, SLOT(initializeNewRoseChartData()));
    for (QLineEdit* edit : {m_pqColorMinRange, m_pqColorMaxRange, m_pqColorIntervalSize})
        connect(edit, SIGNAL(editingFinished()), this, SLOT(updateRoseChartClassification()));
    connect(m_pqBlueRedRadioButton, SIGNAL(toggled(bool)), this, SLOT(updateRoseChartClassification()));
    connect(m_pqResetColorRangeButton, SIGNAL(clicked()), this, SLOT(slotResetDisplayColorAttribute()));
    connect(m_pqPetalOutlineColorButton, SIGNAL(clicked()), this, SLOT(changePetalOutlineColor()));
    connect(m_pqIntervalSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateRoseChartIntervals(int)));
    connect(m_pqColorLegendView->verticalScrollBar(), SIGNAL(valueChanged(int)), this,
            SLOT(slotColorLegendsVerticalScrollBarChanged(int)));
    // A colour changed in the legend shows on the petals.
    connect(m_legendModel, &QAbstractItemModel::dataChanged, m_roseChart, [this]() { m_roseChart->updateChart(); });
    blackWhiteSwitch();
}

QRoseChartWidget::~QRoseChartWidget()
{
    // The chart reads the legend while it goes.
    delete m_roseChart;
    m_roseChart = nullptr;
}

// ---- data ----

void QRoseChartWidget::setDataSet(MatrixData* direction, MatrixData* colourNode, const std::vector<int>& rows)
{
    m_directionData = direction;
    m_colorData = colourNode;
    m_selectedRows = rows;
    m_legendModel->setSymbolNode(colourNode);
    m_pqColorLegendFrame->setVisible(colourNode != nullptr);
    ColourAttributeSettings->setEnabled(colourNode != nullptr);
    m_colorDataUnchanged = colourNode && colourNode->name() == m_lastColorName;
    m_lastColorName = colourNode ? colourNode->name() : QString();
    m_roseChart->setDirectionData(direction, rows);
    m_roseChart->changeHeaderTitle(m_pqRoseDataSetComboBox->currentText());
    if (!direction) {
        // Nothing to count: an empty rose, not the last one.
        std::vector<std::vector<QVariant>> none;
        m_roseChart->setRoseData(nullptr, std::move(none), m_legendModel, m_interval, 99999.0, 0.0, false);
        m_pqNumbOfPointsLabel->setText(QStringLiteral("-----"));
        m_pqMeanDirectionLabel->setText(QStringLiteral("-----"));
        m_pqNormalizedLengthLabel->setText(QStringLiteral("-----"));
        resetDisplayColorAttribute();
        m_roseChart->updateChart();
        return;
    }
    initializeNewRoseChartData();
}

void QRoseChartWidget::initializeNewRoseChartData()
{
    if (!m_directionData || !m_legendModel)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const bool unidirectional = m_pqUnidirectionalRadioButton->isChecked();
    const int bins = 360 / std::max(m_interval, 1);
    const bool typed = RoseClassCounts::canCount(m_colorData);
    std::vector<std::vector<QVariant>> values;
    MatrixData* frequency =
        MatrixData::newFrequencyData(m_interval, bins, 0, MatrixData::Frequency, m_selectedRows, m_directionData,
                                     typed ? nullptr : m_colorData, values, unidirectional);
    double length = 0.0;
    const double direction = m_directionData->resultantMeanDirection(length, m_selectedRows);
    m_pqNumbOfPointsLabel->setText(QString::number(frequency->validValueRowCount()));
    const bool haveDirection = direction != 99999.0;
    m_pqMeanDirectionLabel->setText(haveDirection ? QString::number(direction, 'f', 2) : QStringLiteral("-----"));
    m_pqNormalizedLengthLabel->setText(haveDirection ? QString::number(length, 'f', 2) : QStringLiteral("-----"));

    const bool retained = m_colorData && m_colorDataUnchanged;
    if (retained)
        applyColorRange();
    m_roseChart->setRoseData(frequency, std::move(values), m_legendModel, m_interval, direction, length, retained);
    if (typed)
        classifyBins(retained);
    if (!retained) {
        const QSignalBlocker blocker(isVisible() ? nullptr : m_pqFrequencyScaleSpinBox);
        m_pqFrequencyScaleSpinBox->setValue(std::max(1, m_roseChart->getGridCircleDistance()));
        resetDisplayColorAttribute();
        m_colorDataUnchanged = m_colorData != nullptr;
    }
    updateColorLegend();
    updateRoseChart();
    QGuiApplication::restoreOverrideCursor();
}

void QRoseChartWidget::classifyBins(bool keepOwnStep)
{
    const int bins = m_roseChart->frequencyNode() ? m_roseChart->frequencyNode()->rowCount() : 0;
    if (m_classCounts.count(m_directionData, m_colorData, m_interval, bins, m_selectedRows,
                            m_pqUnidirectionalRadioButton->isChecked(), keepOwnStep ? -1 : kMaxClasses))
        m_roseChart->setClassification(m_classCounts.counts(), m_classCounts.legendValues(),
                                       m_classCounts.legendColours());
}

void QRoseChartWidget::applyColorRange()
{
    if (m_colorData)
        m_colorRange->applyTo(m_colorData, m_pqRedBlueRadioButton->isChecked());
}

void QRoseChartWidget::updateRoseChart()
{
    if (!m_directionData)
        return;
    QRosePlotWidget* p = m_roseChart;
    p->showDirectionAsRosePlot(m_pqRosePlotRadioButton->isChecked());
    p->showResultantMeanDirection(m_pqMeanDirectionCheckBox->isChecked());
    p->showResultantMeanLength(m_pqNormalizedLengthCheckBox->isChecked());
    p->setEqualAreaScaling(m_pqAreaRadioButton->isChecked());
    p->setUnidirectional(m_pqUnidirectionalRadioButton->isChecked());
    p->setGridCircleDistance(m_pqFrequencyScaleSpinBox->value());
    const bool scaleOff = m_pqScalingOffRadioButton->isChecked();
    p->showGridCircles(m_pqCirclesRadioButton->isChecked() && !scaleOff);
    p->showTickMarks(m_pqTickMarksRadioButton->isChecked() && !scaleOff);
    p->setAnnotationLabelAsAngle(m_pqAnglesRadioButton->isChecked());
    p->setAnnotationLabelAsDirectionOn(m_pqDirectionsRadioButton->isChecked());
    p->setPetalOutlineWidth(m_pqPetalOutlineWidthSpinBox->value());
    p->setPetalOutlineColor(PanelColorButton::color(m_pqPetalOutlineColorButton, kPetalOutlineDefault));
    p->showCircleFrame(m_pqCircleFrameCheckBox->isChecked());
    p->setZeroCircleSize(m_pqZeroCircleSizeSlider->value());
    if (isVisible()) {
        p->redraw();
        p->update();
    } else {
        p->updateChart();
    }
}

void QRoseChartWidget::updateRoseChartClassification()
{
    if (!m_colorData || !m_directionData)
        return;
    applyColorRange();
    if (RoseClassCounts::canCount(m_colorData))
        classifyBins(true);
    else
        m_roseChart->createClassification(-1);
    updateColorLegend();
    updateRoseChart();
}

void QRoseChartWidget::updateRoseChartIntervals(int interval)
{
    if (interval < 1)
        return;
    m_interval = interval;
    initializeNewRoseChartData();
}

// ---- colour attribute ----

void QRoseChartWidget::resetDisplayColorAttribute()
{
    m_colorRange->reset(m_colorData);
    const QSignalBlocker blocker(m_pqBlueRedRadioButton);
    m_pqBlueRedRadioButton->setChecked(true);
}

void QRoseChartWidget::slotResetDisplayColorAttribute()
{
    resetDisplayColorAttribute();
    updateRoseChartClassification();
}

void QRoseChartWidget::updateColorLegend()
{
    // The plot gave the legend its classes; the view follows the model.
    m_pqColorLegendView->viewport()->update();
}

void QRoseChartWidget::slotColorLegendsVerticalScrollBarChanged(int value)
{
    m_pqColorLegendView->slotLegendsVerticalScrollBarChanged(value);
}

void QRoseChartWidget::changePetalOutlineColor()
{
    const QColor chosen = PanelColorButton::pick(m_pqPetalOutlineColorButton, Qt::green);
    if (!chosen.isValid())
        return;
    m_roseChart->setPetalOutlineColor(chosen);
    m_roseChart->updateChart();
}

void QRoseChartWidget::blackWhiteSwitch()
{
    const bool black = !m_pqWhiteBackgroundRadioButton->isChecked();
    m_roseChart->setPalette(PanelBackground::palette(black, m_roseChart->palette()));
    PanelBackground::apply(black, m_pqChartFrame, m_roseChart, nullptr);
}

// ---- boxes ----

int QRoseChartWidget::currentSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqRoseDataSetComboBox); }
QString QRoseChartWidget::currentSelectedDataSetName() const { return m_pqRoseDataSetComboBox->currentText(); }
int QRoseChartWidget::currentColorSelectedDataSet() const { return PanelComboBoxes::currentId(m_pqColourMapComboBox); }
QString QRoseChartWidget::currentColorSelectedDataSetName() const { return m_pqColourMapComboBox->currentText(); }

void QRoseChartWidget::updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids)
{
    // With no earlier choice the box falls on the first azimuth offered: orientation columns come
    // as dip and azimuth pairs, so that is the second name (the stereo panel's azimuth default).
    const bool first = m_pqRoseDataSetComboBox->count() <= 1;
    PanelComboBoxes::refillWithNone(m_pqRoseDataSetComboBox, names, ids);
    if (first && !names.isEmpty()) {
        const QSignalBlocker blocker(m_pqRoseDataSetComboBox);
        m_pqRoseDataSetComboBox->setCurrentIndex(names.size() >= 2 ? 2 : 1);
    }
}

void QRoseChartWidget::updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids, const QList<QColor>&)
{
    updateDataSetSelectionBox(names, ids);
}

void QRoseChartWidget::updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                               const QString& keepText)
{
    PanelComboBoxes::refillWithNone(m_pqColourMapComboBox, names, ids, 0, keepText);
}

// ---- configuration ----

void QRoseChartWidget::showToolBox(bool on, bool dataSetBoxes)
{
    m_pqRoseToolBox->setVisible(on);
    m_pqDataSetFrame->setVisible(dataSetBoxes);
    m_pqSidePanel->setVisible(on || dataSetBoxes);
}

void QRoseChartWidget::copyToClipboard() { m_roseChart->copyToClipboard(); }

void QRoseChartWidget::copyEWMFToClipboard() { m_roseChart->copyWEMFToClipboard(); }

} // namespace rkBase

// Set-up, data entry, the interval controls, the chart's update and the two-sample test of the
// histogram panel.
#include "QHistogramChartWidget.h"

#include "PanelAxes.h"
#include "PanelBackground.h"
#include "PanelComboBoxes.h"
#include "PanelSettings.h"
#include "PanelZoomScrollBars.h"
#include "QHistogramItemModel.h"
#include "QHistogramPlotWidget.h"

#include <DisplayUnitManager.h>
#include <MatrixDataArray.h>
#include <UnitRegistry.h>

#include <QGuiApplication>
#include <QSet>
#include <QSignalBlocker>

#include <cmath>

namespace rkBase {

namespace {
const QString kNoResult = QStringLiteral("---");
const QString kNoStatistic = QStringLiteral("-----");
constexpr double kAutomaticInterval = 99999.0;
constexpr int kMaxIntervals = 256;

QString panelText(const char* text)
{
    return QCoreApplication::translate("QHistogramChartWidget", text);
}

// The cumulative percent of a frequency table of any type, in the table's own layout.
MatrixData* cumulativeTable(const MatrixData* table)
{
    const int bins = table->rowCount();
    auto* out = new MatrixDataArray(table->name(), bins, 3, QVariant::Double);
    double total = 0.0;
    for (int r = 0; r < bins; ++r)
        total += std::max(0.0, table->toDouble(r, 0));
    double running = 0.0;
    for (int r = 0; r < bins; ++r) {
        running += std::max(0.0, table->toDouble(r, 0));
        out->setValue(r, 0, total > 0.0 ? 100.0 * running / total : 0.0);
        out->setValue(r, 1, table->toDouble(r, 1));
        out->setValue(r, 2, table->toDouble(r, 2));
    }
    out->setValidValueRowCount(bins);
    return out;
}
} // namespace

QHistogramChartWidget::QHistogramChartWidget(const QString& title, QWidget* parent, DisplayUnitManager* manager,
                                             bool extended, bool, bool, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_unitManager(manager)
{
    setupUi(this);
    m_histogramPlot = new QHistogramPlotWidget(m_pqHistogramPlotFrame, QString(), this);
    m_histogramPlot->setObjectName(QStringLiteral("histogramPlot"));
    if (!title.isEmpty())
        m_histogramPlot->changeHeaderTitle(title);
    m_histogramPlot->allowCopyToWMF(true);
    m_pqHistogramPlotFrameLayout->addWidget(m_histogramPlot, 0, 0);
    m_pqHistogramPlotFrameLayout->setContentsMargins(0, 0, 0, 0);
    m_histogramModel = new QHistogramItemModel(this);
    m_histogramModel->setObjectName(QStringLiteral("histogramModel"));
    m_compareModel = new QHistogramItemModel(this);
    m_compareModel->setObjectName(QStringLiteral("compareModel"));
    m_histogramPlot->setHistogramItemModel(m_histogramModel);
    m_histogramPlot->setHistogramItemModelCompare(m_compareModel);
    m_axes = std::make_unique<PanelAxes>(m_pqTopAxis, m_pqBottomAxis, m_pqLeftAxis, m_pqRightAxis);
    m_scrollBars = std::make_unique<PanelZoomScrollBars>(m_pqHorizontalScrollBar, m_pqVerticalScrollBar);
    m_histogramPlot->setAxisPainter([this](QPainter& painter, const QRect& rect) { drawAxes(painter, rect); });
    for (QCartesianAxisWidget* a : m_axes->all())
        a->setOriginPosition(QCartesianAxisWidget::OriginBottomLeft);
    m_pqTopAxis->setUnitLabelVisible(false);
    m_pqRightAxis->setUnitLabelVisible(false);
    m_pqTopAxis->setTitleVisible(false);
    m_pqRightAxis->setTitleVisible(false);

    m_pqHistogramTypeComboBox->addItem(panelText("Frequency"));
    m_pqHistogramTypeComboBox->addItem(panelText("Relative Frequency"));
    m_pqHistogramTypeComboBox->addItem(panelText("Cumulative Relative Frequency"));
    m_pqIntervalsSlider->setRange(1, kMaxIntervals);
    m_pqIntervalsSlider->setValue(20);
    m_pqIntervalSizeSlider->setRange(0.0, 1.0);
    m_pqIntervalSizeSlider->setSingleStep(0.03);
    m_pqIntervalSizeSlider->setDecimals(6);
    m_pqHorizontalScrollBar->hide();
    m_pqVerticalScrollBar->hide();
    // The chart takes the room; axes and interval controls keep their own size.
    m_pqChartSideLayout->setStretch(0, 1);
    m_pqChartFrameLayout->setRowStretch(1, 1);
    m_pqChartFrameLayout->setColumnStretch(1, 1);
    m_pqChartFrameLayout->setSpacing(0);
    sidePanelSplitter->setSizes({480, 300});
    m_pqHistogramToolBox->layout()->setSpacing(0);
    if (!extended)
        widget2->hide();

    connect(m_pqHistogramDataSetComboBox, SIGNAL(activated(int)), this, SIGNAL(dataSetSelected()));
    connect(m_pqHistogramDataSetCompareComboBox, SIGNAL(activated(int)), this, SIGNAL(dataSetSelected()));
    connect(m_pqHistogramTypeComboBox, SIGNAL(currentIndexChanged(int)), this, SLOT(updateHistogram()));
    connect(useSmallValues, SIGNAL(toggled(bool)), this, SLOT(updateHistogramWithDefaultIntervals()));
    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{confidenceInterval99, confidenceInterval95,
                                                                      confidenceInterval90, confidenceInterval85,
                                                                      confidenceInterval80, showConfidenceZoneSet1,
                                                                      showConfidenceZoneSet2})
        connect(b, SIGNAL(toggled(bool)), this, SLOT(updateHistogram()));
    connect(confidenceZoneGroupBox, SIGNAL(toggled(bool)), this, SLOT(updateHistogram()));
    connect(useDataGroupBox, SIGNAL(toggled(bool)), this, SLOT(updateHistogram()));
    connect(twoSampleTestGroupBox, SIGNAL(clicked(bool)), this, SLOT(slotTwoSampleTestGroupClicked()));
    connect(dataGroupAttributeComboBox, SIGNAL(activated(int)), this, SLOT(slotUpdateDataGroupComboBoxFromAttribute()));
    connect(dataGroupComboBox, SIGNAL(activated(int)), this, SLOT(updateHistogram()));
    connect(Ui::QHistogramChartWidget::createRandomOrientation, SIGNAL(clicked()), this, SIGNAL(createRandomOrientation()));
    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{m_pqShowGrid, m_pqShowBars, m_pqShowLine,
                                                                      m_pqP10CheckBox, m_pqP50CheckBox, m_pqP90CheckBox})
        connect(b, SIGNAL(toggled(bool)), this, SLOT(updateDiagramSettings()));
    connect(lineWidthSpinBox, SIGNAL(valueChanged(int)), this, SLOT(updateDiagramSettings()));
    connect(m_pqIntervalsSlider, SIGNAL(valueChanged(int)), this, SLOT(updateHistogramIntervals(int)));
    connect(m_pqIntervalSizeSlider, SIGNAL(valueChanged(double)), this, SLOT(slotIntervalSizeEdited(double)));
    connect(m_pqZoomCheckBox, SIGNAL(toggled(bool)), this, SLOT(slotZoomFactorReset(bool)));
    connect(m_pqZoomFactorSpinBox, SIGNAL(valueChanged(double)), this, SLOT(slotZoomFactorChanged(double)));
    connect(m_pqHorizontalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotHorizontalSliderChanged(int)));
    connect(m_pqVerticalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotVerticalSliderChanged(int)));
    connect(m_pqFontSizeSpinBox, SIGNAL(valueChanged(double)), this, SLOT(slotFontSizeChanged(double)));
    connect(m_pqWhiteBackgroundBtn, SIGNAL(toggled(bool)), this, SLOT(blackWhiteSwitch()));
    connect(m_histogramPlot, SIGNAL(cursorPos(QPointF, bool)), this, SLOT(updateCursorPosLabel(QPointF, bool)));
    connect(m_pqLeftAxis, SIGNAL(gridLinesChanged(QList<int>)), m_histogramPlot,
            SLOT(horizontalGridLinesChanged(QList<int>)));
    connect(m_pqBottomAxis, SIGNAL(gridLinesChanged(QList<int>)), m_histogramPlot,
            SLOT(verticalGridLinesChanged(QList<int>)));
    if (m_unitManager)
        connect(m_unitManager, SIGNAL(displayChanged(QString)), this, SLOT(displayUnitsChanged()));
    updateDiagramSettings(false);
    blackWhiteSwitch();
}

QHistogramChartWidget::~QHistogramChartWidget()
{
    // The chart reads the models while it goes.
    delete m_histogramPlot;
    m_histogramPlot = nullptr;
}

// ---- data ----

void QHistogramChartWidget::setDataRoot(MatrixData* root)
{
    m_dataRoot = root;
    m_histogramModel->setDataRoot(root);
    m_compareModel->setDataRoot(root);
}

void QHistogramChartWidget::setDataSet(MatrixData* node)
{
    m_histogramData.reset(node ? new MatrixData(*node, false)
                               : new MatrixData(QString(), 0, 1, QVariant::Double));
    m_selectedRows.clear();
    updateHistogramWithDefaultIntervals();
}

void QHistogramChartWidget::setDataSet(MatrixData* node, const std::vector<int>& rows, int intervals)
{
    m_histogramData.reset(node ? new MatrixData(*node, false)
                               : new MatrixData(QString(), 0, 1, QVariant::Double));
    setAxisUnitManagers(MatrixData::HistogramType(m_pqHistogramTypeComboBox->currentIndex()));
    m_compareData.reset();
    if (m_dataRoot) {
        const MatrixData* compare = m_dataRoot->getNodeFromName(m_pqHistogramDataSetCompareComboBox->currentText());
        if (compare && !compare->isGroup())
            m_compareData.reset(new MatrixData(*compare, false));
    }
    m_selectedRows = rows;
    if (intervals == -1) {
        updateHistogramWithDefaultIntervals();
        return;
    }
    const int before = m_pqIntervalsSlider->value();
    m_pqIntervalsSlider->setValue(intervals);
    // The same count fires nothing: the chart is rebuilt all the same.
    if (m_pqIntervalsSlider->value() == before)
        updateHistogramIntervals(before);
}

void QHistogramChartWidget::setAxisUnitManagers(MatrixData::HistogramType type)
{
    const MatrixData* node = m_histogramData.get();
    UnitRegistry* registry = node && node->registry() ? node->registry() : (m_dataRoot ? m_dataRoot->registry() : nullptr);
    if (registry) {
        const auto values = type != MatrixData::Frequency ? registry->getPercentUnitManager()
                                                          : registry->getFractionUnitManager();
        m_pqLeftAxis->setUnitManager(values);
        m_pqRightAxis->setUnitManager(values);
    }
    if (node && node->unitManager()) {
        m_pqTopAxis->setUnitManager(node->unitManager());
        m_pqBottomAxis->setUnitManager(node->unitManager());
    }
}

bool QHistogramChartWidget::dataRange(double& lo, double& hi) const
{
    lo = hi = 0.0;
    if (!m_histogramData)
        return false;
    boost::dynamic_bitset<> rows;
    if (!m_selectedRows.empty()) {
        rows.resize(static_cast<std::size_t>(std::max(m_histogramData->rowCount(), 0)));
        for (int r : m_selectedRows)
            if (r >= 0 && r < int(rows.size()))
                rows.set(static_cast<std::size_t>(r));
    }
    double mean = 0.0;
    return m_histogramData->getMinMax(lo, hi, mean, rows) && std::isfinite(lo) && std::isfinite(hi) && hi >= lo;
}

// ---- intervals ----

void QHistogramChartWidget::updateHistogramWithDefaultIntervals()
{
    if (!m_histogramData)
        return;
    m_histogramModel->setIntervalSize(kAutomaticInterval);
    m_compareModel->setIntervalSize(kAutomaticInterval);
    updateHistogram();
    m_updateGuard = true;
    double lo = 0.0, hi = 0.0;
    dataRange(lo, hi);
    const double r = hi - lo;
    if (r > 1.0) {
        m_pqIntervalSizeSlider->setRange(r / 1000.0, r / 3.0);
        m_pqIntervalSizeSlider->setSingleStep((r / 3.0 - r / 1000.0) / 30.0);
    } else {
        m_pqIntervalSizeSlider->setRange(0.0, 1.0);
        m_pqIntervalSizeSlider->setSingleStep(0.03);
    }
    const double chosen = m_histogramModel->intervalSize();
    m_pqIntervalSizeSlider->setValue(chosen);
    if (r > 0.0 && chosen > 0.0)
        m_pqIntervalsSlider->setValue(int(std::lround(std::clamp(r / chosen, 1.0, double(kMaxIntervals)))));
    m_updateGuard = false;
}

void QHistogramChartWidget::updateHistogramIntervals(int count)
{
    if (m_updateGuard || count < 1)
        return;
    // 256 reads as 255: the slider's end stands for the most the chart shows apart.
    count = std::min(count, kMaxIntervals - 1);
    double lo = 0.0, hi = 0.0;
    if (!dataRange(lo, hi))
        return;
    const double size = (hi - lo) / count;
    {
        const bool was = m_updateGuard;
        m_updateGuard = true;
        m_pqIntervalSizeSlider->setValue(size);
        m_updateGuard = was;
    }
    updateHistogramIntervals(size);
}

void QHistogramChartWidget::updateHistogramIntervals(double size)
{
    if (size == 0.0 || !std::isfinite(size))
        return;
    m_histogramModel->setIntervalSize(size);
    m_compareModel->setIntervalSize(size);
    updateHistogram();
}

void QHistogramChartWidget::slotIntervalSizeEdited(double size)
{
    if (m_updateGuard || !(size > 0.0))
        return;
    double lo = 0.0, hi = 0.0;
    if (dataRange(lo, hi) && hi > lo) {
        m_updateGuard = true;
        m_pqIntervalsSlider->setValue(int(std::lround(std::clamp((hi - lo) / size, 1.0, double(kMaxIntervals)))));
        m_updateGuard = false;
    }
    updateHistogramIntervals(size);
}

void QHistogramChartWidget::setHistogramInitialInterval(double size)
{
    m_histogramModel->setIntervalSize(size);
    m_compareModel->setIntervalSize(size);
}

// ---- the chart ----

MatrixData* QHistogramChartWidget::dataGroupAttribute() const
{
    if (!m_dataRoot || !useDataGroupBox->isChecked())
        return nullptr;
    MatrixData* node = m_dataRoot->getNodeFromName(dataGroupAttributeComboBox->currentText());
    return node && !node->isGroup() ? node : nullptr;
}

bool QHistogramChartWidget::testActive() const
{
    return twoSampleTestGroupBox->isChecked() && m_compareModel->data();
}

void QHistogramChartWidget::updateHistogram()
{
    if (m_updateGuard || !m_histogramData)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto type = MatrixData::HistogramType(std::clamp(m_pqHistogramTypeComboBox->currentIndex(), 0, 2));
    setAxisUnitManagers(type);
    MatrixData* attribute = dataGroupAttribute();
    const QString group = dataGroupComboBox->currentText();
    const bool useSmall = useSmallValues->isChecked();
    const bool test = twoSampleTestGroupBox->isChecked();
    m_histogramModel->clearDataNode();
    m_compareModel->clearDataNode();
    if (attribute && !test) {
        m_histogramModel->takeNewDataSetFromSubGroup(m_histogramData.get(), type, m_selectedRows, useSmall, attribute,
                                                     group);
    } else {
        m_histogramModel->takeNewDataSet(m_histogramData.get(), type, m_selectedRows, useSmall);
        if (test) {
            m_compareModel->setIntervalSize(m_histogramModel->intervalSize());
            if (attribute)
                m_compareModel->takeNewDataSetFromSubGroup(m_histogramData.get(), type, m_selectedRows, useSmall,
                                                           attribute, group);
            else if (m_compareData)
                m_compareModel->takeNewDataSet(m_compareData.get(), type, m_selectedRows, useSmall);
            // A group of the column, or a column of the same colour, would draw over the data
            // set in its colour: the comparison takes one that stands apart.
            MatrixData* compared = m_compareModel->data();
            if (compared && compared->color() == m_histogramData->color())
                compared->setColor(m_histogramData->color().value() > 128 && m_histogramData->color().red() < 128
                                       ? QColor(230, 120, 20)
                                       : QColor(30, 90, 200));
        }
    }

    m_pqLeftAxis->setTitle(m_pqHistogramTypeComboBox->currentText());
    m_pqBottomAxis->setTitle(m_histogramData->name());
    m_pqStandDeviationLabel->setText(m_histogramData->printValue(m_histogramData->standardDeviation()));
    m_histogramPlot->changeHeaderTitle(m_histogramData->name());
    MatrixData* table = m_histogramModel->data();
    if (table) {
        m_pqNumbOfPointsLabel->setText(QString::number(table->validValueRowCount()));
        if (table->validValueRowCount() == 0 || table->rowCount() == 0) {
            for (QLabel* l : {m_pqP10Label, m_pqP50Label, m_pqP90Label})
                l->setText(kNoStatistic);
            m_histogramPlot->setStatisticPoints(99999.0, 99999.0, 99999.0, Qt::black);
            updateDataBoundaries();
            m_histogramPlot->updateChart();
        } else {
            initializeNewHistogramChart(type);
            updateDiagramSettings(false);
            slotZoomFactorReset(m_pqZoomCheckBox->isChecked());
            m_histogramPlot->updateChart();
        }
    }
    QGuiApplication::restoreOverrideCursor();
}

void QHistogramChartWidget::initializeNewHistogramChart(MatrixData::HistogramType type)
{
    const MatrixData* table = m_histogramModel->data();
    std::unique_ptr<MatrixData> cumulative;
    if (type != MatrixData::CumulativeRelativeFrequency)
        cumulative.reset(cumulativeTable(table));
    std::unique_ptr<MatrixData> curve((cumulative ? cumulative.get() : table)->reduceToAveraged(0, 1));
    updateDataBoundaries();
    const double p10 = curve->getInterpolationValue(10.0, 0, 1);
    const double p50 = curve->getInterpolationValue(50.0, 0, 1);
    const double p90 = curve->getInterpolationValue(90.0, 0, 1);
    m_pqP10Label->setText(m_histogramData->printValue(p10));
    m_pqP50Label->setText(m_histogramData->printValue(p50));
    m_pqP90Label->setText(m_histogramData->printValue(p90));
    m_histogramPlot->setStatisticPoints(p10, p50, p90, m_pqWhiteBackgroundBtn->isChecked() ? Qt::black : Qt::white);
}

void QHistogramChartWidget::updateDataBoundaries()
{
    const MatrixData* table = m_histogramModel->data();
    const int rows = table ? table->rowCount() : 0;
    double lo = m_histogramModel->min();
    double hi = (rows + 1) * m_histogramModel->intervalSize() + lo;
    double top = 0.0;
    for (int r = 0; r < rows; ++r)
        top = std::max(top, table->toDouble(r, 0));
    const bool test = testActive();
    if (test) {
        const MatrixData* other = m_compareModel->data();
        const int otherRows = other->rowCount();
        if (otherRows > 0) {
            const double otherLo = m_compareModel->min();
            lo = rows > 0 ? std::min(lo, otherLo) : otherLo;
            hi = std::max(hi, (otherRows + 1) * m_compareModel->intervalSize() + otherLo);
            for (int r = 0; r < otherRows; ++r)
                top = std::max(top, other->toDouble(r, 0));
        }
    }
    if (m_azimuthScaling) {
        lo = m_mercatorScaling ? -180.0 : 0.0;
        hi = m_mercatorScaling ? 180.0 : 360.0;
    }
    if (!(top > 0.0) || !std::isfinite(top))
        top = 1.0;
    if (!std::isfinite(lo) || !std::isfinite(hi) || !(hi > lo)) {
        lo = std::isfinite(lo) ? lo - 0.5 : 0.0;
        hi = lo + 1.0;
    }
    for (QCartesianAxisWidget* a : {m_pqBottomAxis, m_pqTopAxis}) {
        a->setRange(lo, hi);
        if (!m_azimuthScaling)
            a->fitNiceRange();
    }
    for (QCartesianAxisWidget* a : {m_pqLeftAxis, m_pqRightAxis})
        a->setRange(0.0, top);
    // The chart spans what the axes show, so that bars stand on their ticks.
    m_histogramPlot->setBoundaries(QPointF(m_pqBottomAxis->minimum(), 0.0), QPointF(m_pqBottomAxis->maximum(), top));
    m_axes->redraw();

    if (!test) {
        m_histogramPlot->setConfidenceIntervalLineID(-1);
        m_histogramPlot->setKolmogorovSmirnovStatistics(0.0, 0.0, 0.0, -1.0);
        clearTestLabels();
        return;
    }
    runTwoSampleTest(lo, hi);
}

void QHistogramChartWidget::clearTestLabels()
{
    for (QLabel* l : {m_pqKSNumbOfPointsSet1, m_pqKSNumbOfPointsSet2, m_pqCriticalDifferenceLabel,
                      m_pqMaxDifferenceLabel, m_pqKStestFailedInfo, m_pqSampleStatisticLabel, m_pqSampleSizesLabel,
                      m_pqSamplePValueLabel})
        l->setText(kNoResult);
    m_binned = KolmogorovSmirnovTest::Binned();
    m_sample = KolmogorovSmirnovTest::Sample();
}

void QHistogramChartWidget::runTwoSampleTest(double lo, double hi)
{
    const MatrixData* a = m_histogramModel->data();
    const MatrixData* b = m_compareModel->data();
    const int n1 = a->validValueRowCount(), n2 = b->validValueRowCount();
    if (n1 == 0 || n2 == 0 || a->rowCount() == 0 || b->rowCount() == 0) {
        // An empty comparison (or data set) has nothing to test.
        m_histogramPlot->setConfidenceIntervalLineID(-1);
        m_histogramPlot->setKolmogorovSmirnovStatistics(0.0, 0.0, 0.0, -1.0);
        clearTestLabels();
        return;
    }
    double step = std::abs(m_pqIntervalSizeSlider->value());
    if (step == 0.0)
        step = 1.0;
    auto curve = [](const QHistogramItemModel* m) {
        const MatrixData* t = m->data();
        return KolmogorovSmirnovTest::Curve{t, m->min(), (t->rowCount() + 1) * m->intervalSize() + m->min(),
                                            t->validValueRowCount()};
    };
    double k = 1.36;
    confidenceInterval(k);
    m_binned = KolmogorovSmirnovTest::binned(curve(m_histogramModel), curve(m_compareModel), lo, hi, step, k);
    m_pqMaxDifferenceLabel->setText(QString::number(m_binned.maxDifference, 'f', 2) + QLatin1Char('%'));
    m_histogramPlot->setKolmogorovSmirnovStatistics(m_binned.x, m_binned.v1, m_binned.v2, m_binned.critical);
    m_histogramPlot->setConfidenceIntervalLineID(!confidenceZoneGroupBox->isChecked() ? -1
                                                 : showConfidenceZoneSet1->isChecked() ? 0
                                                                                       : 1);
    m_pqCriticalDifferenceLabel->setText(QString::number(m_binned.critical, 'f', 2) + QLatin1Char('%'));
    m_pqKSNumbOfPointsSet1->setText(QString::number(n1, 'g', 6));
    m_pqKSNumbOfPointsSet2->setText(QString::number(n2, 'g', 6));
    m_pqKStestFailedInfo->setText(m_binned.passed ? panelText("passed") : panelText("failed"));

    // The statistic of the samples does not follow the display settings: it is computed again
    // only when the samples change.
    PanelLoadStamp stamp;
    stamp.addColumn(m_histogramData.get()).addColumn(m_compareData.get()).addColumn(dataGroupAttribute());
    stamp.add(dataGroupComboBox->currentText()).add(useSmallValues->isChecked());
    stamp.add(std::uint64_t(m_selectedRows.size()));
    std::uint64_t rowsHash = 1469598103934665603ull;
    for (int r : m_selectedRows)
        rowsHash = (rowsHash ^ std::uint64_t(std::uint32_t(r))) * 1099511628211ull;
    stamp.add(rowsHash);
    if (stamp != m_sampleStamp) {
        m_sample = KolmogorovSmirnovTest::sample(m_histogramModel->sampleValues(), m_compareModel->sampleValues());
        m_sampleStamp = stamp;
    }
    m_pqSampleStatisticLabel->setText(QString::number(m_sample.statistic, 'f', 4));
    m_pqSampleSizesLabel->setText(QString::number(m_sample.n1) + QStringLiteral(" / ") + QString::number(m_sample.n2));
    m_pqSamplePValueLabel->setText(m_sample.pValue < 1e-4 ? QString::number(m_sample.pValue, 'e', 2)
                                                         : QString::number(m_sample.pValue, 'f', 4));
}

int QHistogramChartWidget::confidenceInterval(double& k) const
{
    const struct {
        QRadioButton* radio;
        int level;
        double k;
    } levels[] = {{confidenceInterval99, 1, 1.63}, {confidenceInterval95, 5, 1.36}, {confidenceInterval90, 10, 1.22},
                  {confidenceInterval85, 15, 1.14}, {confidenceInterval80, 20, 1.07}};
    for (const auto& l : levels)
        if (l.radio->isChecked()) {
            k = l.k;
            return l.level;
        }
    return 0;
}

void QHistogramChartWidget::slotTwoSampleTestGroupClicked()
{
    if (twoSampleTestGroupBox->isChecked()) {
        // The test is looked at on cumulative curves.
        const QSignalBlocker bars(m_pqShowBars), line(m_pqShowLine), type(m_pqHistogramTypeComboBox);
        m_pqShowBars->setChecked(false);
        m_pqShowLine->setChecked(true);
        m_pqHistogramTypeComboBox->setCurrentIndex(2);
    }
    emit dataSetSelected();
}

void QHistogramChartWidget::updateDiagramSettings(bool redraw)
{
    QHistogramPlotWidget* p = m_histogramPlot;
    p->setGridIsOn(m_pqShowGrid->isChecked());
    p->setShowP10(m_pqP10CheckBox->isChecked());
    p->setShowP50(m_pqP50CheckBox->isChecked());
    p->setShowP90(m_pqP90CheckBox->isChecked());
    p->setShowP10Text(m_pqP10CheckBox->isChecked());
    p->setShowP50Text(m_pqP50CheckBox->isChecked());
    p->setShowP90Text(m_pqP90CheckBox->isChecked());
    p->setShowHistogramLine(m_pqShowLine->isChecked());
    p->setShowHistogramBars(m_pqShowBars->isChecked());
    p->setHistogramLineWidth(lineWidthSpinBox->value());
    if (redraw)
        p->updateChart();
}

void QHistogramChartWidget::setShowP10(bool on) { m_pqP10CheckBox->setChecked(on); updateDiagramSettings(); }
void QHistogramChartWidget::setShowP50(bool on) { m_pqP50CheckBox->setChecked(on); updateDiagramSettings(); }
void QHistogramChartWidget::setShowP90(bool on) { m_pqP90CheckBox->setChecked(on); updateDiagramSettings(); }

void QHistogramChartWidget::displayUnitsChanged()
{
    m_axes->redraw();
    updateHistogram();
}

// ---- boxes ----

int QHistogramChartWidget::currentSelectedDataSet() const
{
    return PanelComboBoxes::currentId(m_pqHistogramDataSetComboBox);
}

QString QHistogramChartWidget::currentSelectedDataSetName() const { return m_pqHistogramDataSetComboBox->currentText(); }

void QHistogramChartWidget::setCurrentDataSet(const QString& name)
{
    PanelComboBoxes::selectText(m_pqHistogramDataSetComboBox, name);
}

void QHistogramChartWidget::updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                      const QList<QColor>&)
{
    PanelComboBoxes::refill(m_pqHistogramDataSetComboBox, names, ids);
    if (m_pqHistogramDataSetComboBox->currentIndex() < 0 && !names.isEmpty()) {
        const QSignalBlocker blocker(m_pqHistogramDataSetComboBox);
        m_pqHistogramDataSetComboBox->setCurrentIndex(0);
    }
    const QString old = PanelComboBoxes::refill(m_pqHistogramDataSetCompareComboBox, names, ids);
    const QSignalBlocker blocker(m_pqHistogramDataSetCompareComboBox);
    if (!PanelComboBoxes::selectText(m_pqHistogramDataSetCompareComboBox, old) && names.size() > 1)
        m_pqHistogramDataSetCompareComboBox->setCurrentIndex(1);
}

void QHistogramChartWidget::updateDataSetSelectionBoxForDataGroup(const QStringList& names, const QList<int>& ids,
                                                                  const QList<QColor>& colours)
{
    const QString old = dataGroupAttributeComboBox->currentText();
    {
        const QSignalBlocker blocker(dataGroupAttributeComboBox);
        dataGroupAttributeComboBox->clear();
        for (int i = 0; i < names.size(); ++i) {
            QPixmap swatch(10, 10);
            swatch.fill(i < colours.size() ? colours[i] : QColor(Qt::gray));
            dataGroupAttributeComboBox->addItem(QIcon(swatch), names[i], i < ids.size() ? ids[i] : -1);
        }
        if (names.size() > 1)
            PanelComboBoxes::selectText(dataGroupAttributeComboBox, old);
    }
    slotUpdateDataGroupComboBoxFromAttribute();
}

void QHistogramChartWidget::slotUpdateDataGroupComboBoxFromAttribute()
{
    const QString old = dataGroupComboBox->currentText();
    const QSignalBlocker blocker(dataGroupComboBox);
    dataGroupComboBox->clear();
    MatrixData* node = m_dataRoot ? m_dataRoot->getNodeFromName(dataGroupAttributeComboBox->currentText()) : nullptr;
    if (!node || node->isGroup())
        return;
    QStringList seen;
    QSet<QString> known;
    for (int r = 0; r < node->validValueRowCount(); ++r) {
        const QVariant v = node->value(r, 0);
        if (!v.isValid() || v.isNull())
            continue;
        const QString text = v.toString();
        if (text.isEmpty() || known.contains(text))
            continue;
        known.insert(text);
        seen << text;
    }
    dataGroupComboBox->addItems(seen);
    PanelComboBoxes::selectText(dataGroupComboBox, old);
}

// ---- zoom, scroll, font, background, cursor ----

void QHistogramChartWidget::applyZoom(double zoom)
{
    if (!std::isfinite(zoom) || zoom < 1.0)
        zoom = 1.0;
    m_scrollBars->apply(zoom);
    m_axes->setZoom(zoom);
    m_histogramPlot->zoom(zoom);
    m_axes->redraw();
}

void QHistogramChartWidget::slotZoomFactorChanged(double zoom) { applyZoom(zoom); }

void QHistogramChartWidget::slotZoomFactorReset(bool on)
{
    m_pqZoomFactorSpinBox->setEnabled(on);
    m_histogramPlot->enableMouseZoom(on);
    applyZoom(on ? m_pqZoomFactorSpinBox->value() : 1.0);
}

void QHistogramChartWidget::slotHorizontalSliderChanged(int value)
{
    m_histogramPlot->xoffset(value);
    m_axes->setHorizontalOffset(value);
}

void QHistogramChartWidget::slotVerticalSliderChanged(int value)
{
    m_histogramPlot->yoffset(value);
    m_axes->setVerticalOffset(value);
}

void QHistogramChartWidget::slotFontSizeChanged(double points) { m_axes->setFontPointSize(points); }

void QHistogramChartWidget::updateCursorPosLabel(const QPointF& data, bool inside)
{
    m_pqCursorPosLabel->setText(inside && m_histogramData ? m_histogramData->printValue(data.x()) + QStringLiteral(" / ")
                                                                + QString::number(data.y(), 'f', 2)
                                                          : QString());
}

void QHistogramChartWidget::blackWhiteSwitch()
{
    const bool black = m_pqBlackBackgroundBtn->isChecked();
    m_histogramPlot->setPalette(PanelBackground::palette(black, m_histogramPlot->palette()));
    PanelBackground::apply(black, m_pqChartFrame, m_histogramPlot, m_axes.get());
}

void QHistogramChartWidget::drawAxes(QPainter& painter, const QRect& rect) { m_axes->draw(&painter, rect); }

void QHistogramChartWidget::copyToClipboard() { m_histogramPlot->copyWEMFToClipboard(); }

// ---- settings ----

void QHistogramChartWidget::readSettings(const QString& prefix)
{
    m_settingsPrefix = prefix;
    PanelSettings s(prefix);
    s.readSplitters(sidePanelSplitter);
    // A style sheet set again, even the same one, polishes the page's whole subtree anew.
    for (QWidget* w : std::initializer_list<QWidget*>{Display, KolmogorovTest, Annotation, widget2}) {
        const QString sheet = QStringLiteral("QWidget#%1 { background-color: white }").arg(w->objectName());
        if (w->styleSheet() != sheet)
            w->setStyleSheet(sheet);
    }
}

void QHistogramChartWidget::writeSettings()
{
    PanelSettings s(m_settingsPrefix);
    s.writeSplitters(sidePanelSplitter);
}

} // namespace rkBase

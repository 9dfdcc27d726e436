#include "QRKEBarChartWidget.h"

#include "ui_QRKEBarChartWidget.h"

#include <CellColumn.h>
#include <MatrixData.h>

#include <QLocale>
#include "PanelSettings.h"

#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace rkBase {

namespace {
QString panelText(const char* text)
{
    return QCoreApplication::translate("QRKEBarChartWidget", text);
}
} // namespace

QRKEBarChartWidget::QRKEBarChartWidget(MatrixData* dataRoot, const QString& settingsKey, QWidget* parent,
                                       int filterStepSize, bool withFieldData)
    : QWidget(parent), m_pqUi(std::make_unique<Ui::QRKEBarChartWidget>()), m_dataRoot(dataRoot),
      m_withFieldData(withFieldData), m_settingsKey(settingsKey),
      m_settingsGroup(settingsKey + QStringLiteral("/barchart/"))
{
    m_pqUi->setupUi(this);
    m_chart = new QBarDiagramWidget(m_pqUi->m_pqChartFrame);
    m_chart->setObjectName(QStringLiteral("m_pqBarDiagram"));
    m_pqUi->m_pqChartLayout->addWidget(m_chart, 0, 0);
    m_pqUi->m_pqRowsPerBarSpinBox->setValue(std::max(0, filterStepSize));
    m_pqUi->m_pqHorizontalScrollBar->hide();
    m_pqUi->m_pqVerticalScrollBar->hide();
    m_chart->enableMouseZoom(false);
    fillCategoryLabelComboBox();

    connect(m_pqUi->m_pqNormalBarsRadioButton, SIGNAL(toggled(bool)), this, SLOT(slotBarModeChanged()));
    connect(m_pqUi->m_pqStackedBarsRadioButton, SIGNAL(toggled(bool)), this, SLOT(slotBarModeChanged()));
    connect(m_pqUi->m_pqPercentBarsRadioButton, SIGNAL(toggled(bool)), this, SLOT(slotBarModeChanged()));
    connect(m_pqUi->m_pqRowsPerBarSpinBox, SIGNAL(valueChanged(int)), this, SLOT(slotRowsPerBarChanged()));
    connect(m_pqUi->m_pqCategoryLabelComboBox, SIGNAL(activated(int)), this, SLOT(slotCategoryLabelChanged()));
    connect(m_pqUi->m_pqShowGridCheckBox, SIGNAL(toggled(bool)), this, SLOT(updateDiagramSettings()));
    connect(m_pqUi->m_pqShowLegendCheckBox, SIGNAL(toggled(bool)), this, SLOT(updateDiagramSettings()));
    connect(m_pqUi->m_pqZoomCheckBox, SIGNAL(toggled(bool)), this, SLOT(slotZoomFactorReset(bool)));
    connect(m_pqUi->m_pqZoomSpinBox, SIGNAL(valueChanged(double)), this, SLOT(slotZoomFactorChanged(double)));
    connect(m_chart, SIGNAL(zoomChanged(double)), this, SLOT(chartZoomChanged(double)));
    connect(m_pqUi->m_pqHorizontalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotHorizontalSliderChanged(int)));
    connect(m_pqUi->m_pqVerticalScrollBar, SIGNAL(valueChanged(int)), this, SLOT(slotVerticalSliderChanged(int)));
    updateDiagramSettings(false);
}

QRKEBarChartWidget::~QRKEBarChartWidget() = default;

void QRKEBarChartWidget::setDataRoot(MatrixData* root)
{
    m_dataRoot = root;
    // Rows of the old tree mean nothing in the new one; the analyser hands new ones.
    m_rows.clear();
    m_chart->setData(BarDiagramData());
    fillCategoryLabelComboBox();
}

// ---- the rows and the tree ----

QList<MatrixData*> QRKEBarChartWidget::barColumns(const MatrixData* labelColumn) const
{
    QList<MatrixData*> out;
    if (!m_dataRoot)
        return out;
    for (MatrixData* leaf : m_dataRoot->shownLeafs())
        if (leaf != labelColumn && CellColumn::isNumericType(leaf->cellType()))
            out.append(leaf);
    return out;
}

MatrixData* QRKEBarChartWidget::labelColumnNode() const
{
    if (!m_dataRoot || m_labelColumnName.isEmpty())
        return nullptr;
    for (MatrixData* leaf : m_dataRoot->shownLeafs())
        if (leaf->name() == m_labelColumnName)
            return leaf;
    return nullptr;
}

void QRKEBarChartWidget::fillCategoryLabelComboBox()
{
    QComboBox* box = m_pqUi->m_pqCategoryLabelComboBox;
    const QSignalBlocker blocker(box);
    box->clear();
    box->addItem(panelText("Row Number"), QString());
    if (m_dataRoot)
        for (MatrixData* leaf : m_dataRoot->shownLeafs())
            if (box->findData(leaf->name()) < 0)
                box->addItem(leaf->name(), leaf->name());
    const int at = box->findData(m_labelColumnName);
    box->setCurrentIndex(at < 0 ? 0 : at);
}

void QRKEBarChartWidget::updateView(const std::vector<int>& rows, bool redraw)
{
    m_rows = rows;
    fillCategoryLabelComboBox();
    const MatrixData* label = labelColumnNode();
    const QList<MatrixData*> columns = barColumns(label);
    int rowCount = static_cast<int>(rows.size());
    if (rows.empty())
        for (const MatrixData* c : columns)
            rowCount = std::max(rowCount, c->validValueRowCount());
    int step = m_pqUi->m_pqRowsPerBarSpinBox->value();
    if (step <= 0 && m_dataRoot) {
        // Side by side, each place along the axis holds a bar per column: the rule is for bars,
        // so it is asked for the rows times the columns.
        const int perPlace = barMode() == QBarDiagramWidget::NormalBars ? std::max(1, columns.size()) : 1;
        const long long bars = static_cast<long long>(rowCount) * perPlace;
        step = m_dataRoot->defaultFilterStepSize(
            static_cast<int>(std::min<long long>(bars, std::numeric_limits<int>::max())));
    }
    const BarDiagramData data = BarDiagramData::reduce(columns, rows, step, label, m_withFieldData);
    m_chart->setData(data);

    const QLocale locale;
    QString header;
    if (data.rowCount() > 0) {
        header = rows.empty() ? panelText("%1 rows").arg(locale.toString(data.rowCount()))
                              : panelText("%1 selected rows").arg(locale.toString(data.rowCount()));
        if (data.step() > 1)
            header += panelText(", %1 per bar").arg(locale.toString(data.step()));
    }
    m_chart->changeHeaderTitle(header);
    if (redraw)
        m_chart->updateChart();
    else
        m_chart->update();
}

void QRKEBarChartWidget::updateView()
{
    const std::vector<int> rows = m_rows;
    updateView(rows, true);
}

// ---- the tool box ----

void QRKEBarChartWidget::setBarMode(QBarDiagramWidget::BarMode mode)
{
    switch (mode) {
    case QBarDiagramWidget::StackedBars: m_pqUi->m_pqStackedBarsRadioButton->setChecked(true); break;
    case QBarDiagramWidget::PercentBars: m_pqUi->m_pqPercentBarsRadioButton->setChecked(true); break;
    default: m_pqUi->m_pqNormalBarsRadioButton->setChecked(true); break;
    }
}

QBarDiagramWidget::BarMode QRKEBarChartWidget::barMode() const
{
    if (m_pqUi->m_pqStackedBarsRadioButton->isChecked())
        return QBarDiagramWidget::StackedBars;
    if (m_pqUi->m_pqPercentBarsRadioButton->isChecked())
        return QBarDiagramWidget::PercentBars;
    return QBarDiagramWidget::NormalBars;
}

void QRKEBarChartWidget::setFilterStepSize(int rowsPerBar)
{
    m_pqUi->m_pqRowsPerBarSpinBox->setValue(std::max(0, rowsPerBar));
}

int QRKEBarChartWidget::filterStepSize() const
{
    return m_pqUi->m_pqRowsPerBarSpinBox->value();
}

void QRKEBarChartWidget::setCategoryLabelColumn(const QString& name)
{
    m_labelColumnName = name;
    fillCategoryLabelComboBox();
    updateView();
}

QString QRKEBarChartWidget::categoryLabelColumn() const
{
    return m_labelColumnName;
}

void QRKEBarChartWidget::showToolBox(bool on)
{
    m_pqUi->m_pqToolBox->setVisible(on);
}

void QRKEBarChartWidget::slotBarModeChanged()
{
    // Each toggle of a radio group comes twice, off and on; the second finds the new mode.
    if (m_chart->barMode() == barMode())
        return;
    updateDiagramSettings(false);
    // The automatic step depends on the mode.
    if (m_pqUi->m_pqRowsPerBarSpinBox->value() == 0)
        updateView();
    else
        m_chart->updateChart();
}

void QRKEBarChartWidget::slotRowsPerBarChanged()
{
    updateView();
}

void QRKEBarChartWidget::slotCategoryLabelChanged()
{
    m_labelColumnName = m_pqUi->m_pqCategoryLabelComboBox->currentData().toString();
    updateView();
}

void QRKEBarChartWidget::updateDiagramSettings(bool redraw)
{
    m_chart->setBarMode(barMode());
    m_chart->setGridIsOn(m_pqUi->m_pqShowGridCheckBox->isChecked());
    m_chart->setShowLegend(m_pqUi->m_pqShowLegendCheckBox->isChecked());
    if (redraw)
        m_chart->updateChart();
}

void QRKEBarChartWidget::resetAxesColor()
{
    m_chart->setLabelColor(Qt::black);
    m_chart->updateChart();
}

void QRKEBarChartWidget::copyToClipboard()
{
    m_chart->copyToClipboard();
}

// ---- zoom ----

void QRKEBarChartWidget::slotZoomFactorChanged(double factor)
{
    const bool zoomed = factor > 1.0;
    for (QScrollBar* bar : {m_pqUi->m_pqHorizontalScrollBar, m_pqUi->m_pqVerticalScrollBar}) {
        if (zoomed)
            bar->setPageStep(static_cast<int>(100.0 / (factor - 1.0)));
        bar->setVisible(zoomed);
    }
    m_chart->zoom(factor);
}

void QRKEBarChartWidget::slotZoomFactorReset(bool on)
{
    m_pqUi->m_pqZoomSpinBox->setEnabled(on);
    m_chart->enableMouseZoom(on);
    slotZoomFactorChanged(on ? m_pqUi->m_pqZoomSpinBox->value() : 1.0);
}

void QRKEBarChartWidget::chartZoomChanged(double factor)
{
    {
        const QSignalBlocker blocker(m_pqUi->m_pqZoomSpinBox);
        m_pqUi->m_pqZoomSpinBox->setValue(factor);
    }
    slotZoomFactorChanged(factor);
}

void QRKEBarChartWidget::slotHorizontalSliderChanged(int value)
{
    m_chart->xoffset(value);
}

void QRKEBarChartWidget::slotVerticalSliderChanged(int value)
{
    m_chart->yoffset(value);
}

// ---- settings ----

void QRKEBarChartWidget::readSettings(const QString& group)
{
    m_settingsGroup = group;
    PanelSettings s(group);
    s.beginGroup(QStringLiteral("display"));
    const int mode = s.readInt(QStringLiteral("bar_mode"), 0, 0, 2);
    setBarMode(mode == 1 ? QBarDiagramWidget::StackedBars
                         : mode == 2 ? QBarDiagramWidget::PercentBars : QBarDiagramWidget::NormalBars);
    {
        const QSignalBlocker blocker(m_pqUi->m_pqRowsPerBarSpinBox);
        s.readInto(m_pqUi->m_pqRowsPerBarSpinBox, QStringLiteral("rows_per_bar"), m_pqUi->m_pqRowsPerBarSpinBox->value());
    }
    m_labelColumnName = s.readString(QStringLiteral("label_column"), QString());
    s.readInto(m_pqUi->m_pqShowGridCheckBox, QStringLiteral("show_grid"), true);
    s.readInto(m_pqUi->m_pqShowLegendCheckBox, QStringLiteral("show_legend"), true);
    const bool zoomOn = s.readBool(QStringLiteral("zoom_factor_on"), false);
    {
        const QSignalBlocker blocker(m_pqUi->m_pqZoomSpinBox);
        s.readInto(m_pqUi->m_pqZoomSpinBox, QStringLiteral("zoom_factor"), 1.0);
    }
    const int horizontal = s.readInt(QStringLiteral("zoom_horizontalScrollBar"), 50, 0, 100);
    const int vertical = s.readInt(QStringLiteral("zoom_verticalScrollBar"), 50, 0, 100);
    s.endGroup();
    {
        const QSignalBlocker blocker(m_pqUi->m_pqZoomCheckBox);
        m_pqUi->m_pqZoomCheckBox->setChecked(zoomOn);
    }
    slotZoomFactorReset(zoomOn);
    m_pqUi->m_pqHorizontalScrollBar->setValue(horizontal);
    m_pqUi->m_pqVerticalScrollBar->setValue(vertical);
    fillCategoryLabelComboBox();
    updateDiagramSettings(false);
}

void QRKEBarChartWidget::writeSettings()
{
    PanelSettings s(m_settingsGroup);
    s.beginGroup(QStringLiteral("display"));
    s.write(QStringLiteral("bar_mode"), static_cast<int>(barMode()));
    s.write(QStringLiteral("rows_per_bar"), m_pqUi->m_pqRowsPerBarSpinBox->value());
    s.write(QStringLiteral("label_column"), m_labelColumnName);
    s.write(QStringLiteral("show_grid"), m_pqUi->m_pqShowGridCheckBox->isChecked());
    s.write(QStringLiteral("show_legend"), m_pqUi->m_pqShowLegendCheckBox->isChecked());
    s.write(QStringLiteral("zoom_factor_on"), m_pqUi->m_pqZoomCheckBox->isChecked());
    s.write(QStringLiteral("zoom_factor"), m_pqUi->m_pqZoomSpinBox->value());
    s.write(QStringLiteral("zoom_horizontalScrollBar"), m_pqUi->m_pqHorizontalScrollBar->value());
    s.write(QStringLiteral("zoom_verticalScrollBar"), m_pqUi->m_pqVerticalScrollBar->value());
    s.endGroup();
}

} // namespace rkBase

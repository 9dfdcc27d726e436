// The cross plot panel's settings: groups prefix + name, keys as the owner's settings file has
// always held them. Values that do not fit a control (a damaged file) read as the default.
#include "QCrossPlotWidget.h"

#include "ui_QCrossPlotWidget.h"

#include "PanelColorButton.h"
#include "PanelComboBoxes.h"
#include "PanelSettings.h"
#include "QCrossPlot.h"

#include <QSignalBlocker>

namespace rkBase {

namespace {
const QString kNoValueText = QStringLiteral("---");

void readBoundary(const PanelSettings& s, const QString& key, QUnitLineEdit* edit)
{
    bool ok = false;
    const double v = s.readString(key, kNoValueText).toDouble(&ok);
    if (ok && std::isfinite(v))
        edit->setModelValue(v, false);
}
} // namespace

void QCrossPlotWidget::writeSettings()
{
    Ui::QCrossPlotWidget& ui = *m_pqUi;
    PanelSettings s(settingsPrefix);
    s.beginGroup(QStringLiteral("splitter_sizes"));
    QVariantList sizes;
    for (int v : ui.sidePanelSplitter->sizes())
        sizes << v;
    s.write(QStringLiteral("side_panel_splitter"), sizes);
    QVariantList legend;
    for (int v : ui.legendSplitter->sizes())
        legend << v;
    s.write(QStringLiteral("legend_splitter"), legend);
    s.endGroup();

    s.beginGroup(QStringLiteral("display"));
    s.write(QStringLiteral("horizontal_selected_data_set"), ui.m_pqHorizontalComboBox->currentText());
    s.write(QStringLiteral("vertical_selected_data_set"), ui.m_pqVerticalComboBox->currentText());
    s.write(QStringLiteral("show_grid"), ui.m_pqShowGrid->isChecked());
    s.write(QStringLiteral("show_bisecting_line"), ui.m_pqShowBisectingLine->isChecked());
    s.write(QStringLiteral("show_90percent_range"), ui.m_pqShow90PercentRange->isChecked());
    s.write(QStringLiteral("show_regression_line"), ui.m_pqShowRegressionLine->isChecked());
    s.write(QStringLiteral("show_regression_equation"), ui.m_pqShowRegressionEquation->isChecked());
    s.write(QStringLiteral("show_log_curve"), ui.m_pqShowPointConnectionLine->isChecked());
    s.write(QStringLiteral("show_points"), ui.m_pqShowPoints->isChecked());
    s.write(QStringLiteral("zoom_factor_on"), ui.m_pqZoomCheckBox->isChecked());
    s.write(QStringLiteral("zoom_factor"), ui.m_pqZoomFactorSpinBox->value());
    s.write(QStringLiteral("zoom_horizontalScrollBar"), ui.horizontalScrollBar->value());
    s.write(QStringLiteral("zoom_verticalScrollBar"), ui.verticalScrollBar->value());
    s.write(QStringLiteral("automatic_update"), ui.automaticCrossPlotUpdate->isChecked());
    s.write(QStringLiteral("show_all_vertices"), ui.m_pqShowDefinedSymbolsOnly->isChecked());
    s.write(QStringLiteral("vertex_sampling"), ui.m_pqVertexFilterSpinBox->value());
    s.endGroup();

    s.beginGroup(QStringLiteral("point_style"));
    s.write(QStringLiteral("type"), ui.m_pqPointStyleComboBox->currentIndex());
    s.write(QStringLiteral("size"), ui.m_pqPixelSizeSpinBox->value());
    s.writeColor(QStringLiteral("point_color"), PanelColorButton::color(ui.pointColorButton, Qt::blue));
    s.endGroup();

    s.beginGroup(QStringLiteral("line_style"));
    s.write(QStringLiteral("size"), ui.m_pqLinePixelSizeSpinBox->value());
    s.writeColor(QStringLiteral("line_color"), PanelColorButton::color(ui.lineColorButton, Qt::blue));
    s.endGroup();

    s.beginGroup(QStringLiteral("add_attributes"));
    s.write(QStringLiteral("symbols_attribute"), ui.m_pqSymbolAttributeComboBox->currentText());
    s.write(QStringLiteral("tadpoles_attribute"), ui.tadpoleAttributeComboBox->currentText());
    s.write(QStringLiteral("colour_map_attribute"), ui.m_pqColorAttributeComboBox->currentText());
    s.endGroup();

    s.beginGroup(QStringLiteral("symbol_attribute_settings"));
    s.write(QStringLiteral("single_point_style"), ui.m_pqSingleSymbol->isChecked());
    s.write(QStringLiteral("multiple_point_style"), ui.m_pqMultiSymbol->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("color_map_settings"));
    s.write(QStringLiteral("color_map_min_range"), ui.m_pqMinRange->text());
    s.write(QStringLiteral("color_map_max_range"), ui.m_pqMaxRange->text());
    s.write(QStringLiteral("color_map_interval_size"), ui.m_pqIntervallSize->text());
    s.write(QStringLiteral("color_map_blue_red"), ui.m_pqBlueRedRadioBtn->isChecked());
    s.write(QStringLiteral("color_map_red_blue"), ui.m_pqRedBlueRadioBtn->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("cluster_generation"));
    s.write(QStringLiteral("expected_clusters"), ui.numberOfClustersSpinBox->value());
    s.write(QStringLiteral("third_dimension"), ui.thirdDimComboBox->currentText());
    s.endGroup();

    s.beginGroup(QStringLiteral("data_decimation"));
    s.write(QStringLiteral("bin_size_on"), ui.intervalSizeRadioBtn->isChecked());
    s.write(QStringLiteral("bin_size"), ui.intervalSizeUnitLineEdit->modelValue());
    s.write(QStringLiteral("numb_of_bins_on"), ui.numbOfIntervalsRadioBtn->isChecked());
    s.write(QStringLiteral("numb_of_bins"), ui.numbOfIntervalsSpinBox->value());
    s.write(QStringLiteral("manual"), ui.graphicalActionRadioBtn->isChecked());
    s.write(QStringLiteral("show_bin_averages"), ui.showIntervalAverages->isChecked());
    s.write(QStringLiteral("show_numb_of_Data_per_bin"), ui.showCountDataPerInterval->isChecked());
    s.write(QStringLiteral("show_bin_boundaries"), ui.showBinBoundaries->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("display_settings"));
    s.write(QStringLiteral("background_white"), ui.m_pqWhiteBackgroundBtn->isChecked());
    s.write(QStringLiteral("background_black"), ui.m_pqBlackBackgroundBtn->isChecked());
    s.write(QStringLiteral("vertical_min"), QString::number(ui.m_pqVertiMinAxis->modelValue(), 'g', 17));
    s.write(QStringLiteral("vertical_max"), QString::number(ui.m_pqVertiMaxAxis->modelValue(), 'g', 17));
    s.write(QStringLiteral("horizontal_min"), QString::number(ui.m_pqHoriMinAxis->modelValue(), 'g', 17));
    s.write(QStringLiteral("horizontal_max"), QString::number(ui.m_pqHoriMaxAxis->modelValue(), 'g', 17));
    s.write(QStringLiteral("font_size"), ui.m_pqFontSizeSpinBox->value());
    s.endGroup();
}

void QCrossPlotWidget::readSettings(const QString& prefix)
{
    settingsPrefix = prefix;
    Ui::QCrossPlotWidget& ui = *m_pqUi;
    PanelSettings s(prefix);

    s.beginGroup(QStringLiteral("splitter_sizes"));
    const QList<int> side = s.readIntList(QStringLiteral("side_panel_splitter"));
    if (side.size() == ui.sidePanelSplitter->count())
        ui.sidePanelSplitter->setSizes(side);
    s.endGroup();

    s.beginGroup(QStringLiteral("point_style"));
    ui.m_pqPointStyleComboBox->setCurrentIndex(
        s.readInt(QStringLiteral("type"), 0, 0, std::max(0, ui.m_pqPointStyleComboBox->count() - 1)));
    s.readInto(ui.m_pqPixelSizeSpinBox, QStringLiteral("size"), 2);
    const QColor point = s.readColor(QStringLiteral("point_color"), QColor(0, 0, 255));
    PanelColorButton::setColor(ui.pointColorButton, point);
    crossPlot->setPointFillColor(point);
    s.endGroup();

    s.beginGroup(QStringLiteral("line_style"));
    s.readInto(ui.m_pqLinePixelSizeSpinBox, QStringLiteral("size"), 2);
    const QColor line = s.readColor(QStringLiteral("line_color"), QColor(0, 0, 255));
    PanelColorButton::setColor(ui.lineColorButton, line);
    crossPlot->setLineColor(line);
    s.endGroup();

    const QString none = PanelComboBoxes::noneText();
    s.beginGroup(QStringLiteral("add_attributes"));
    PanelComboBoxes::selectText(ui.m_pqSymbolAttributeComboBox, s.readString(QStringLiteral("symbols_attribute"), none));
    PanelComboBoxes::selectText(ui.tadpoleAttributeComboBox, s.readString(QStringLiteral("tadpoles_attribute"), none));
    PanelComboBoxes::selectText(ui.m_pqColorAttributeComboBox,
                                s.readString(QStringLiteral("colour_map_attribute"), none));
    s.endGroup();

    s.beginGroup(QStringLiteral("symbol_attribute_settings"));
    const bool single = s.readBool(QStringLiteral("single_point_style"), false);
    const bool multiple = s.readBool(QStringLiteral("multiple_point_style"), true);
    (single && !multiple ? ui.m_pqSingleSymbol : ui.m_pqMultiSymbol)->setChecked(true);
    s.endGroup();

    s.beginGroup(QStringLiteral("color_map_settings"));
    ui.m_pqMinRange->setText(s.readRangeText(QStringLiteral("color_map_min_range")));
    ui.m_pqMaxRange->setText(s.readRangeText(QStringLiteral("color_map_max_range")));
    ui.m_pqIntervallSize->setText(s.readRangeText(QStringLiteral("color_map_interval_size")));
    {
        const QSignalBlocker a(ui.m_pqBlueRedRadioBtn), b(ui.m_pqRedBlueRadioBtn);
        const bool blueRed = s.readBool(QStringLiteral("color_map_blue_red"), true);
        const bool redBlue = s.readBool(QStringLiteral("color_map_red_blue"), false);
        (redBlue && !blueRed ? ui.m_pqRedBlueRadioBtn : ui.m_pqBlueRedRadioBtn)->setChecked(true);
    }
    s.endGroup();

    s.beginGroup(QStringLiteral("cluster_generation"));
    {
        // The maximum follows the points loaded; the stored count is kept within the form's range.
        const int k = s.readInt(QStringLiteral("expected_clusters"), 2, 2, 100000);
        ui.numberOfClustersSpinBox->setMaximum(std::max(ui.numberOfClustersSpinBox->maximum(), k));
        ui.numberOfClustersSpinBox->setValue(k);
    }
    PanelComboBoxes::selectText(ui.thirdDimComboBox, s.readString(QStringLiteral("third_dimension"), none));
    s.endGroup();

    s.beginGroup(QStringLiteral("data_decimation"));
    const bool bySize = s.readBool(QStringLiteral("bin_size_on"), true);
    const bool byNumber = s.readBool(QStringLiteral("numb_of_bins_on"), false);
    if (bySize)
        ui.intervalSizeRadioBtn->setChecked(true);
    else if (byNumber)
        ui.numbOfIntervalsRadioBtn->setChecked(true);
    else
        ui.graphicalActionRadioBtn->setChecked(true);
    ui.intervalSizeUnitLineEdit->setModelValue(s.readDouble(QStringLiteral("bin_size"), 100.0, 1e-300, 1e300), false);
    s.readInto(ui.numbOfIntervalsSpinBox, QStringLiteral("numb_of_bins"), 10);
    s.readInto(ui.showIntervalAverages, QStringLiteral("show_bin_averages"), true);
    s.readInto(ui.showCountDataPerInterval, QStringLiteral("show_numb_of_Data_per_bin"), true);
    s.readInto(ui.showBinBoundaries, QStringLiteral("show_bin_boundaries"), true);
    s.endGroup();
    slotGenerateIntervalsToggled();

    s.beginGroup(QStringLiteral("display_settings"));
    const bool black = s.readBool(QStringLiteral("background_black"), false)
                       && !s.readBool(QStringLiteral("background_white"), true);
    (black ? ui.m_pqBlackBackgroundBtn : ui.m_pqWhiteBackgroundBtn)->setChecked(true);
    readBoundary(s, QStringLiteral("vertical_min"), ui.m_pqVertiMinAxis);
    readBoundary(s, QStringLiteral("vertical_max"), ui.m_pqVertiMaxAxis);
    readBoundary(s, QStringLiteral("horizontal_min"), ui.m_pqHoriMinAxis);
    readBoundary(s, QStringLiteral("horizontal_max"), ui.m_pqHoriMaxAxis);
    s.readInto(ui.m_pqFontSizeSpinBox, QStringLiteral("font_size"), font().pointSizeF());
    s.endGroup();
    blackWhiteSwitch();

    s.beginGroup(QStringLiteral("display"));
    PanelComboBoxes::selectText(ui.m_pqHorizontalComboBox,
                                s.readString(QStringLiteral("horizontal_selected_data_set"), none));
    PanelComboBoxes::selectText(ui.m_pqVerticalComboBox, s.readString(QStringLiteral("vertical_selected_data_set"), none));
    s.readInto(ui.m_pqShowGrid, QStringLiteral("show_grid"), true);
    s.readInto(ui.m_pqShowBisectingLine, QStringLiteral("show_bisecting_line"), false);
    s.readInto(ui.m_pqShow90PercentRange, QStringLiteral("show_90percent_range"), false);
    s.readInto(ui.m_pqShowRegressionLine, QStringLiteral("show_regression_line"), false);
    s.readInto(ui.m_pqShowRegressionEquation, QStringLiteral("show_regression_equation"), false);
    s.readInto(ui.m_pqShowPointConnectionLine, QStringLiteral("show_log_curve"), false);
    s.readInto(ui.m_pqShowPoints, QStringLiteral("show_points"), true);
    {
        const QSignalBlocker blocker(ui.m_pqZoomFactorSpinBox);
        s.readInto(ui.m_pqZoomFactorSpinBox, QStringLiteral("zoom_factor"), 1.0);
    }
    s.readInto(ui.m_pqZoomCheckBox, QStringLiteral("zoom_factor_on"), false);
    slotZoomFactorReset(ui.m_pqZoomCheckBox->isChecked());
    ui.horizontalScrollBar->setValue(s.readInt(QStringLiteral("zoom_horizontalScrollBar"), 50, 0, 100));
    ui.verticalScrollBar->setValue(s.readInt(QStringLiteral("zoom_verticalScrollBar"), 50, 0, 100));
    s.readInto(ui.automaticCrossPlotUpdate, QStringLiteral("automatic_update"), true);
    slotEnableCrossPlotUpdateBtn(ui.automaticCrossPlotUpdate->isChecked());
    {
        const QSignalBlocker a(ui.m_pqShowDefinedSymbolsOnly), b(ui.m_pqVertexFilterSpinBox);
        s.readInto(ui.m_pqShowDefinedSymbolsOnly, QStringLiteral("show_all_vertices"), true);
        s.readInto(ui.m_pqVertexFilterSpinBox, QStringLiteral("vertex_sampling"), 1);
    }
    vertexFilter = ui.m_pqVertexFilterSpinBox->value();
    s.endGroup();
    updateRelationshipDiagramSettings(false);
}

} // namespace rkBase

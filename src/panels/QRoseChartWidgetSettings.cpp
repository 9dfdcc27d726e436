// The rose panel's settings: groups prefix + name, keys as the owner's settings file has always
// held them. Values that do not fit a control (a damaged file) read as the default.
#include "QRoseChartWidget.h"

#include "PanelColorButton.h"
#include "PanelComboBoxes.h"
#include "PanelSettings.h"

namespace rkBase {

namespace {
const QColor kPetalOutlineDefault(0x82, 0x82, 0x82);
} // namespace

void QRoseChartWidget::writeSettings()
{
    PanelSettings s(m_settingsPrefix);
    s.writeSplitters(m_pqSidePanelSplitter, m_pqLegendSplitter);

    s.beginGroup(QStringLiteral("display"));
    s.write(QStringLiteral("rose_plot_selected_data_set"), m_pqRoseDataSetComboBox->currentText());
    s.write(QStringLiteral("rose_plot_interval_size"), m_pqIntervalSizeSpinBox->value());
    s.write(QStringLiteral("show_direction_as_rose_plot"), m_pqRosePlotRadioButton->isChecked());
    s.write(QStringLiteral("show_direction_as_unit_vectors"), m_pqUnitVectorsRadioButton->isChecked());
    s.write(QStringLiteral("scaling_area"), m_pqAreaRadioButton->isChecked());
    s.write(QStringLiteral("scaling_linear"), m_pqLinearRadioButton->isChecked());
    s.write(QStringLiteral("data_type_unidirectional"), m_pqUnidirectionalRadioButton->isChecked());
    s.write(QStringLiteral("data_type_bidirectional"), m_pqBidirectionalRadioButton->isChecked());
    s.write(QStringLiteral("classified_by_attribute"), m_pqColourMapComboBox->currentText());
    s.endGroup();

    s.beginGroup(QStringLiteral("color_map_settings"));
    s.write(QStringLiteral("color_map_min_range"), m_pqColorMinRange->text());
    s.write(QStringLiteral("color_map_max_range"), m_pqColorMaxRange->text());
    s.write(QStringLiteral("color_map_interval_size"), m_pqColorIntervalSize->text());
    s.write(QStringLiteral("color_map_blue_red"), m_pqBlueRedRadioButton->isChecked());
    s.write(QStringLiteral("color_map_red_blue"), m_pqRedBlueRadioButton->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("display_settings"));
    s.write(QStringLiteral("background_white"), m_pqWhiteBackgroundRadioButton->isChecked());
    s.write(QStringLiteral("background_black"), m_pqBlackBackgroundRadioButton->isChecked());
    s.write(QStringLiteral("annotation_angles"), m_pqAnglesRadioButton->isChecked());
    s.write(QStringLiteral("annotation_directions"), m_pqDirectionsRadioButton->isChecked());
    s.write(QStringLiteral("annotation_off"), m_pqAnnotationOffRadioButton->isChecked());
    s.write(QStringLiteral("scaling_interval_size"), m_pqFrequencyScaleSpinBox->value());
    s.write(QStringLiteral("scaling_circles"), m_pqCirclesRadioButton->isChecked());
    s.write(QStringLiteral("scaling_tickmarks"), m_pqTickMarksRadioButton->isChecked());
    s.write(QStringLiteral("scaling_off"), m_pqScalingOffRadioButton->isChecked());
    s.write(QStringLiteral("scaling_circle_frame"), m_pqCircleFrameCheckBox->isChecked());
    s.write(QStringLiteral("zero_circle_size"), m_pqZeroCircleSizeSlider->value());
    s.writeColor(QStringLiteral("petal_outline_color"),
                 PanelColorButton::color(m_pqPetalOutlineColorButton, kPetalOutlineDefault));
    s.write(QStringLiteral("line_width_petal_outline"), m_pqPetalOutlineWidthSpinBox->value());
    s.endGroup();
}

void QRoseChartWidget::readSettings(const QString& prefix)
{
    m_settingsPrefix = prefix;
    PanelSettings s(prefix);
    const QString none = PanelComboBoxes::noneText();
    // The controls fire as they are set; the chart takes the form in one pass at the end.
    const bool wasBlocked = blockSignals(true);
    const QSignalBlocker intervalBlocker(m_pqIntervalSizeSpinBox);

    s.readSplitters(m_pqSidePanelSplitter, m_pqLegendSplitter);

    s.beginGroup(QStringLiteral("display"));
    // A stored "None", or a name the sheet no longer holds, leaves the panel's own choice, so
    // that a rose opened on a new sheet still shows a data set.
    const QString dataSet = s.readString(QStringLiteral("rose_plot_selected_data_set"), none);
    if (dataSet != none)
        PanelComboBoxes::selectText(m_pqRoseDataSetComboBox, dataSet);
    s.readInto(m_pqIntervalSizeSpinBox, QStringLiteral("rose_plot_interval_size"), m_pqIntervalSizeSpinBox->value());
    m_interval = m_pqIntervalSizeSpinBox->value();
    s.readRadios({{m_pqRosePlotRadioButton, QStringLiteral("show_direction_as_rose_plot")},
                  {m_pqUnitVectorsRadioButton, QStringLiteral("show_direction_as_unit_vectors")}}, 0);
    s.readRadios({{m_pqAreaRadioButton, QStringLiteral("scaling_area")},
                  {m_pqLinearRadioButton, QStringLiteral("scaling_linear")}}, 0);
    s.readRadios({{m_pqUnidirectionalRadioButton, QStringLiteral("data_type_unidirectional")},
                  {m_pqBidirectionalRadioButton, QStringLiteral("data_type_bidirectional")}}, 0);
    PanelComboBoxes::selectTextOrNone(m_pqColourMapComboBox, s.readString(QStringLiteral("classified_by_attribute"), none));
    s.endGroup();

    s.beginGroup(QStringLiteral("color_map_settings"));
    m_pqColorMinRange->setText(s.readRangeText(QStringLiteral("color_map_min_range")));
    m_pqColorMaxRange->setText(s.readRangeText(QStringLiteral("color_map_max_range")));
    m_pqColorIntervalSize->setText(s.readRangeText(QStringLiteral("color_map_interval_size")));
    s.readRadios({{m_pqBlueRedRadioButton, QStringLiteral("color_map_blue_red")},
                  {m_pqRedBlueRadioButton, QStringLiteral("color_map_red_blue")}}, 0);
    s.endGroup();

    s.beginGroup(QStringLiteral("display_settings"));
    s.readRadios({{m_pqWhiteBackgroundRadioButton, QStringLiteral("background_white")},
                  {m_pqBlackBackgroundRadioButton, QStringLiteral("background_black")}}, 0);
    s.readRadios({{m_pqAnglesRadioButton, QStringLiteral("annotation_angles")},
                  {m_pqDirectionsRadioButton, QStringLiteral("annotation_directions")},
                  {m_pqAnnotationOffRadioButton, QStringLiteral("annotation_off")}}, 1);
    s.readInto(m_pqFrequencyScaleSpinBox, QStringLiteral("scaling_interval_size"), 5);
    s.readRadios({{m_pqCirclesRadioButton, QStringLiteral("scaling_circles")},
                  {m_pqTickMarksRadioButton, QStringLiteral("scaling_tickmarks")},
                  {m_pqScalingOffRadioButton, QStringLiteral("scaling_off")}}, 0);
    s.readInto(m_pqCircleFrameCheckBox, QStringLiteral("scaling_circle_frame"), true);
    m_pqZeroCircleSizeSlider->setValue(s.readInt(QStringLiteral("zero_circle_size"), 0,
                                                 m_pqZeroCircleSizeSlider->minimum(), m_pqZeroCircleSizeSlider->maximum()));
    PanelColorButton::setColor(m_pqPetalOutlineColorButton,
                               s.readColor(QStringLiteral("petal_outline_color"), kPetalOutlineDefault));
    s.readInto(m_pqPetalOutlineWidthSpinBox, QStringLiteral("line_width_petal_outline"), 1);
    s.endGroup();

    blockSignals(wasBlocked);
    blackWhiteSwitch();
    updateRoseChart();
}

} // namespace rkBase

// The stereo panel's settings: groups prefix + name, keys as the owner's settings file has always
// held them. Values that do not fit a control (a damaged file) read as the default.
#include "QStereoChartWidget.h"

#include "PanelColorButton.h"
#include "PanelComboBoxes.h"
#include "PanelSettings.h"
#include "QStereoPlotWidget.h"
#include "StereoColorButton.h"

#include <QSignalBlocker>

#include <cmath>

namespace rkBase {

namespace {

// One of two radio buttons from a pair of keys; anything but the second alone picks the first.
void readPair(const PanelSettings& s, const QString& firstKey, bool firstDefault, QAbstractButton* first,
              const QString& secondKey, bool secondDefault, QAbstractButton* second)
{
    const bool a = s.readBool(firstKey, firstDefault);
    const bool b = s.readBool(secondKey, secondDefault);
    (b && !a ? second : first)->setChecked(true);
}

void readSlider(const PanelSettings& s, const QString& key, int def, QIntSpinBoxWithSlider* box)
{
    box->setValue(s.readInt(key, def, box->minimum(), box->maximum()));
}
} // namespace

void QStereoChartWidget::writeSettings()
{
    PanelSettings s(m_settingsPrefix);
    s.writeSplitters(m_pqSidePanelSplitter, m_pqLegendSplitter);

    s.beginGroup(QStringLiteral("display"));
    s.write(QStringLiteral("dip_selected_data_set"), m_pqDipComboBox->currentText());
    s.write(QStringLiteral("azimuth_selected_data_set"), m_pqAzimuthComboBox->currentText());
    s.write(QStringLiteral("show_10_degree_intervals"), m_pqShow10DegreeNet->isChecked());
    s.write(QStringLiteral("show_2_degree_intervals"), m_pqShow2DegreeNet->isChecked());
    s.write(QStringLiteral("show_labels"), m_pqShowLabels->isChecked());
    s.write(QStringLiteral("show_projected_planes"), m_pqShowPlanes->isChecked());
    s.write(QStringLiteral("show_mean_principal_plane"), m_pqShowMeanPrincipalPlane->isChecked());
    s.write(QStringLiteral("show_mean_resultant_plane"), m_pqShowMeanResultantPlane->isChecked());
    s.write(QStringLiteral("show_suggested_section_plane"), m_pqShowSuggestedSectionPlane->isChecked());
    s.write(QStringLiteral("show_best_fit_plane"), m_pqShowBestFitPlane->isChecked());
    s.write(QStringLiteral("line_width_projected_planes"), m_pqPlaneWidthSpinBox->value());
    s.write(QStringLiteral("line_width_mean_principal_plane"), m_pqMeanPrincipalPlaneWidthSpinBox->value());
    s.write(QStringLiteral("line_width_mean_resultant_plane"), m_pqMeanResultantPlaneWidthSpinBox->value());
    s.write(QStringLiteral("line_width_suggested_section_plane"), m_pqSuggestedSectionPlaneWidthSpinBox->value());
    s.write(QStringLiteral("line_width_best_fit_plane"), m_pqBestFitPlaneWidthSpinBox->value());
    s.write(QStringLiteral("show_poles"), m_pqShowPoles->isChecked());
    s.write(QStringLiteral("show_mean_principal_pole"), m_pqShowMeanPrincipalPole->isChecked());
    s.write(QStringLiteral("show_mean_resultant_pole"), m_pqShowMeanResultantPole->isChecked());
    s.write(QStringLiteral("show_t_pole"), m_pqShowTPole->isChecked());
    s.write(QStringLiteral("show_l_pole"), m_pqShowLPole->isChecked());
    s.write(QStringLiteral("show_dip_directions"), m_pqShowAzimuths->isChecked());
    s.write(QStringLiteral("show_lineation"), m_pqShowLineation->isChecked());
    s.write(QStringLiteral("show_mean_principal_dip_dir"), m_pqShowMeanPrincipalAzimuth->isChecked());
    s.write(QStringLiteral("show_mean_resultant_dip_dir"), m_pqShowMeanResultantAzimuth->isChecked());
    s.write(QStringLiteral("show_t_dip_dir"), m_pqShowTAzimuth->isChecked());
    s.write(QStringLiteral("show_l_dip_dir"), m_pqShowLAzimuth->isChecked());
    for (const StereoColorButton& c : StereoColorButton::all())
        s.writeColor(QString::fromLatin1(c.key),
                     PanelColorButton::color(this->*c.button, QColor(QString::fromLatin1(c.defaultColor))));
    s.write(QStringLiteral("zoom_factor_on"), m_pqZoomFactorCheckBox->isChecked());
    s.write(QStringLiteral("zoom_factor"), m_pqZoomSpinBox->value());
    s.write(QStringLiteral("zoom_horizontalScrollBar"), m_pqHorizontalScrollBar->value());
    s.write(QStringLiteral("zoom_verticalScrollBar"), m_pqVerticalScrollBar->value());
    s.endGroup();

    s.beginGroup(QStringLiteral("point_style"));
    s.write(QStringLiteral("type"), m_pqPointTypeComboBox->currentIndex());
    s.write(QStringLiteral("size"), m_pqPointSizeSpinBox->value());
    s.endGroup();

    s.beginGroup(QStringLiteral("add_attributes"));
    s.write(QStringLiteral("colour_map_attribute"), m_pqColourMapComboBox->currentText());
    s.write(QStringLiteral("symbols_attribute"), m_pqSymbolsComboBox->currentText());
    s.endGroup();

    s.beginGroup(QStringLiteral("stereographic_projection"));
    s.write(QStringLiteral("equal_area_projection"), m_pqSchmidtRadioButton->isChecked());
    s.write(QStringLiteral("equal_angle_projection"), m_pqWulffRadioButton->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("graphic_action"));
    s.write(QStringLiteral("projected_plane"), m_pqProjectedPlaneRadioButton->isChecked());
    s.write(QStringLiteral("selection"), m_pqSelectionRadioButton->isChecked());
    s.write(QStringLiteral("projected_pole"), m_pqPoleRadioButton->isChecked());
    s.write(QStringLiteral("cursor_information"), m_pqCursorInformationComboBox->currentIndex());
    s.endGroup();

    s.beginGroup(QStringLiteral("symbol_attribute_settings"));
    s.write(QStringLiteral("single_point_style"), m_pqSingleSymbolRadioButton->isChecked());
    s.write(QStringLiteral("multiple_point_style"), m_pqMultipleSymbolRadioButton->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("color_map_settings"));
    s.write(QStringLiteral("color_map_min_range"), m_pqColorMinRange->text());
    s.write(QStringLiteral("color_map_max_range"), m_pqColorMaxRange->text());
    s.write(QStringLiteral("color_map_interval_size"), m_pqColorIntervalSize->text());
    s.write(QStringLiteral("color_map_blue_red"), m_pqBlueRedRadioButton->isChecked());
    s.write(QStringLiteral("color_map_red_blue"), m_pqRedBlueRadioButton->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("contours"));
    s.write(QStringLiteral("density_contours_poles"), m_pqContoursForPoles->isChecked());
    s.write(QStringLiteral("density_contours_dipdir"), m_pqContoursForDipDirections->isChecked());
    s.write(QStringLiteral("discrete_density_ranges"), m_pqDiscreteDensityGroupBox->isChecked());
    s.write(QStringLiteral("show_grid"), m_pqShowDensityGrid->isChecked());
    s.write(QStringLiteral("number_of_grid_cells"), m_pqGridCellsSpinBox->value());
    s.write(QStringLiteral("counting_method"), m_pqCountingMethodComboBox->currentIndex());
    s.endGroup();

    s.beginGroup(QStringLiteral("contour_color_map_settings"));
    s.write(QStringLiteral("color_map_min_range"), m_pqContourMinRange->text());
    s.write(QStringLiteral("color_map_max_range"), m_pqContourMaxRange->text());
    s.write(QStringLiteral("color_map_interval_size"), m_pqContourIntervalSize->text());
    s.write(QStringLiteral("color_map_blue_red"), m_pqContourBlueRedRadioButton->isChecked());
    s.write(QStringLiteral("color_map_red_blue"), m_pqContourRedBlueRadioButton->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("cluster_generation"));
    s.write(QStringLiteral("expected_clusters"), m_pqNumberOfClustersSpinBox->value());
    s.endGroup();

    s.beginGroup(QStringLiteral("lineation"));
    s.write(QStringLiteral("plunge_azimuth_group_box"), m_pqPlungeAzimuthGroupBox->isChecked());
    s.write(QStringLiteral("plane_pitch_group_box"), m_pqPlanePitchGroupBox->isChecked());
    s.write(QStringLiteral("plunge_attribute"), m_pqLineationPlungeComboBox->currentText());
    s.write(QStringLiteral("plunge_azimuth_attribute"), m_pqLineationAzimuthComboBox->currentText());
    s.write(QStringLiteral("plane_dip_attribute"), m_pqPitchPlaneDipComboBox->currentText());
    s.write(QStringLiteral("plane_azimuth_attribute"), m_pqPitchPlaneAzimuthComboBox->currentText());
    s.write(QStringLiteral("pitch_attribute"), m_pqPitchComboBox->currentText());
    s.write(QStringLiteral("pitch_direction_attribute"), m_pqPitchDirectionComboBox->currentText());
    s.write(QStringLiteral("point_type"), m_pqLineationPointStyleComboBox->currentIndex());
    s.write(QStringLiteral("point_size"), m_pqLineationPointSizeSpinBox->value());
    s.endGroup();

    s.beginGroup(QStringLiteral("display_settings"));
    s.write(QStringLiteral("background_white"), m_pqWhiteBackgroundRadioButton->isChecked());
    s.write(QStringLiteral("background_black"), m_pqBlackBackgroundRadioButton->isChecked());
    s.write(QStringLiteral("annotation_angles"), m_pqAnnotationAnglesRadioButton->isChecked());
    s.write(QStringLiteral("annotation_directions"), m_pqAnnotationDirectionsRadioButton->isChecked());
    s.write(QStringLiteral("annotation_off"), m_pqAnnotationOffRadioButton->isChecked());
    s.write(QStringLiteral("dip_dip_azimuth_convention"), m_pqDipDipAzimuthRadioButton->isChecked());
    s.write(QStringLiteral("strike_dip_sense_convention"), m_pqStrikeDipSenseRadioButton->isChecked());
    s.endGroup();

    s.beginGroup(QStringLiteral("rotation"));
    s.write(QStringLiteral("plunge"), m_pqRotationPlungeSpinBox->value());
    s.write(QStringLiteral("azimuth"), m_pqRotationAzimuthSpinBox->value());
    s.write(QStringLiteral("angle"), m_pqRotationAngleSpinBox->value());
    s.endGroup();

    s.beginGroup(QStringLiteral("bias_correction"));
    s.write(QStringLiteral("scanline_plunge"), m_pqScanlinePlungeSpinBox->value());
    s.write(QStringLiteral("scanline_azimuth"), m_pqScanlineAzimuthSpinBox->value());
    s.write(QStringLiteral("minimum_bias_angle"), m_pqMinimumBiasAngleSpinBox->value());
    s.endGroup();
}

void QStereoChartWidget::readSettings(const QString& prefix)
{
    m_settingsPrefix = prefix;
    PanelSettings s(prefix);
    const QString none = PanelComboBoxes::noneText();
    // The controls fire as they are set; the panel's own signals and the slots that would redraw
    // wait until everything is read, and the surface takes the form in one pass at the end.
    const bool wasBlocked = blockSignals(true);

    s.readSplitters(m_pqSidePanelSplitter, m_pqLegendSplitter);

    s.beginGroup(QStringLiteral("display"));
    PanelComboBoxes::selectTextOrNone(m_pqDipComboBox, s.readString(QStringLiteral("dip_selected_data_set"), none));
    PanelComboBoxes::selectTextOrNone(m_pqAzimuthComboBox, s.readString(QStringLiteral("azimuth_selected_data_set"), none));
    s.readInto(m_pqShow10DegreeNet, QStringLiteral("show_10_degree_intervals"), true);
    s.readInto(m_pqShow2DegreeNet, QStringLiteral("show_2_degree_intervals"), false);
    s.readInto(m_pqShowLabels, QStringLiteral("show_labels"), true);
    s.readInto(m_pqShowPlanes, QStringLiteral("show_projected_planes"), false);
    s.readInto(m_pqShowMeanPrincipalPlane, QStringLiteral("show_mean_principal_plane"), false);
    s.readInto(m_pqShowMeanResultantPlane, QStringLiteral("show_mean_resultant_plane"), false);
    s.readInto(m_pqShowSuggestedSectionPlane, QStringLiteral("show_suggested_section_plane"), false);
    s.readInto(m_pqShowBestFitPlane, QStringLiteral("show_best_fit_plane"), false);
    s.readInto(m_pqPlaneWidthSpinBox, QStringLiteral("line_width_projected_planes"), 1);
    s.readInto(m_pqMeanPrincipalPlaneWidthSpinBox, QStringLiteral("line_width_mean_principal_plane"), 2);
    s.readInto(m_pqMeanResultantPlaneWidthSpinBox, QStringLiteral("line_width_mean_resultant_plane"), 2);
    s.readInto(m_pqSuggestedSectionPlaneWidthSpinBox, QStringLiteral("line_width_suggested_section_plane"), 2);
    s.readInto(m_pqBestFitPlaneWidthSpinBox, QStringLiteral("line_width_best_fit_plane"), 2);
    s.readInto(m_pqShowPoles, QStringLiteral("show_poles"), true);
    s.readInto(m_pqShowMeanPrincipalPole, QStringLiteral("show_mean_principal_pole"), true);
    s.readInto(m_pqShowMeanResultantPole, QStringLiteral("show_mean_resultant_pole"), true);
    s.readInto(m_pqShowTPole, QStringLiteral("show_t_pole"), false);
    s.readInto(m_pqShowLPole, QStringLiteral("show_l_pole"), false);
    s.readInto(m_pqShowAzimuths, QStringLiteral("show_dip_directions"), true);
    s.readInto(m_pqShowLineation, QStringLiteral("show_lineation"), false);
    s.readInto(m_pqShowMeanPrincipalAzimuth, QStringLiteral("show_mean_principal_dip_dir"), false);
    s.readInto(m_pqShowMeanResultantAzimuth, QStringLiteral("show_mean_resultant_dip_dir"), false);
    s.readInto(m_pqShowTAzimuth, QStringLiteral("show_t_dip_dir"), false);
    s.readInto(m_pqShowLAzimuth, QStringLiteral("show_l_dip_dir"), false);
    for (const StereoColorButton& c : StereoColorButton::all())
        PanelColorButton::setColor(this->*c.button,
                                   s.readColor(QString::fromLatin1(c.key), QColor(QString::fromLatin1(c.defaultColor))));
    s.readInto(m_pqZoomSpinBox, QStringLiteral("zoom_factor"), 1.0);
    s.readInto(m_pqZoomFactorCheckBox, QStringLiteral("zoom_factor_on"), false);
    const int horizontal = s.readInt(QStringLiteral("zoom_horizontalScrollBar"), 50, 0, 100);
    const int vertical = s.readInt(QStringLiteral("zoom_verticalScrollBar"), 50, 0, 100);
    s.endGroup();

    s.beginGroup(QStringLiteral("point_style"));
    m_pqPointTypeComboBox->setCurrentIndex(
        s.readInt(QStringLiteral("type"), 0, 0, std::max(0, m_pqPointTypeComboBox->count() - 1)));
    s.readInto(m_pqPointSizeSpinBox, QStringLiteral("size"), 2);
    s.endGroup();

    s.beginGroup(QStringLiteral("add_attributes"));
    PanelComboBoxes::selectTextOrNone(m_pqColourMapComboBox, s.readString(QStringLiteral("colour_map_attribute"), none));
    PanelComboBoxes::selectTextOrNone(m_pqSymbolsComboBox, s.readString(QStringLiteral("symbols_attribute"), none));
    s.endGroup();

    s.beginGroup(QStringLiteral("stereographic_projection"));
    readPair(s, QStringLiteral("equal_area_projection"), true, m_pqSchmidtRadioButton,
             QStringLiteral("equal_angle_projection"), false, m_pqWulffRadioButton);
    s.endGroup();

    s.beginGroup(QStringLiteral("graphic_action"));
    {
        const bool plane = s.readBool(QStringLiteral("projected_plane"), false);
        const bool selection = s.readBool(QStringLiteral("selection"), true);
        const bool pole = s.readBool(QStringLiteral("projected_pole"), false);
        if (selection || plane == pole)
            m_pqSelectionRadioButton->setChecked(true);
        else
            (plane ? m_pqProjectedPlaneRadioButton : m_pqPoleRadioButton)->setChecked(true);
    }
    m_pqCursorInformationComboBox->setCurrentIndex(s.readInt(QStringLiteral("cursor_information"), 0, 0, 1));
    s.endGroup();

    s.beginGroup(QStringLiteral("symbol_attribute_settings"));
    readPair(s, QStringLiteral("multiple_point_style"), true, m_pqMultipleSymbolRadioButton,
             QStringLiteral("single_point_style"), false, m_pqSingleSymbolRadioButton);
    s.endGroup();

    s.beginGroup(QStringLiteral("color_map_settings"));
    m_pqColorMinRange->setText(s.readRangeText(QStringLiteral("color_map_min_range")));
    m_pqColorMaxRange->setText(s.readRangeText(QStringLiteral("color_map_max_range")));
    m_pqColorIntervalSize->setText(s.readRangeText(QStringLiteral("color_map_interval_size")));
    readPair(s, QStringLiteral("color_map_blue_red"), true, m_pqBlueRedRadioButton, QStringLiteral("color_map_red_blue"),
             false, m_pqRedBlueRadioButton);
    s.endGroup();

    s.beginGroup(QStringLiteral("contours"));
    s.readInto(m_pqContoursForPoles, QStringLiteral("density_contours_poles"), false);
    s.readInto(m_pqContoursForDipDirections, QStringLiteral("density_contours_dipdir"), false);
    m_pqDiscreteDensityGroupBox->setChecked(s.readBool(QStringLiteral("discrete_density_ranges"), false));
    s.readInto(m_pqShowDensityGrid, QStringLiteral("show_grid"), false);
    s.readInto(m_pqGridCellsSpinBox, QStringLiteral("number_of_grid_cells"), 20);
    s.readInto(m_pqCountingMethodComboBox, QStringLiteral("counting_method"), 0);
    s.endGroup();

    s.beginGroup(QStringLiteral("contour_color_map_settings"));
    m_pqContourMinRange->setText(s.readRangeText(QStringLiteral("color_map_min_range")));
    m_pqContourMaxRange->setText(s.readRangeText(QStringLiteral("color_map_max_range")));
    m_pqContourIntervalSize->setText(s.readRangeText(QStringLiteral("color_map_interval_size")));
    readPair(s, QStringLiteral("color_map_blue_red"), true, m_pqContourBlueRedRadioButton,
             QStringLiteral("color_map_red_blue"), false, m_pqContourRedBlueRadioButton);
    s.endGroup();

    s.beginGroup(QStringLiteral("cluster_generation"));
    s.readInto(m_pqNumberOfClustersSpinBox, QStringLiteral("expected_clusters"), 2);
    s.endGroup();

    s.beginGroup(QStringLiteral("lineation"));
    {
        const bool byPitch = s.readBool(QStringLiteral("plane_pitch_group_box"), false)
                             && !s.readBool(QStringLiteral("plunge_azimuth_group_box"), true);
        const QSignalBlocker a(m_pqPlungeAzimuthGroupBox), b(m_pqPlanePitchGroupBox);
        m_pqPlungeAzimuthGroupBox->setChecked(!byPitch);
        m_pqPlanePitchGroupBox->setChecked(byPitch);
    }
    PanelComboBoxes::selectTextOrNone(m_pqLineationPlungeComboBox, s.readString(QStringLiteral("plunge_attribute"), none));
    PanelComboBoxes::selectTextOrNone(m_pqLineationAzimuthComboBox, s.readString(QStringLiteral("plunge_azimuth_attribute"), none));
    PanelComboBoxes::selectTextOrNone(m_pqPitchPlaneDipComboBox, s.readString(QStringLiteral("plane_dip_attribute"), none));
    PanelComboBoxes::selectTextOrNone(m_pqPitchPlaneAzimuthComboBox, s.readString(QStringLiteral("plane_azimuth_attribute"), none));
    PanelComboBoxes::selectTextOrNone(m_pqPitchComboBox, s.readString(QStringLiteral("pitch_attribute"), none));
    PanelComboBoxes::selectTextOrNone(m_pqPitchDirectionComboBox, s.readString(QStringLiteral("pitch_direction_attribute"), none));
    m_pqLineationPointStyleComboBox->setCurrentIndex(
        s.readInt(QStringLiteral("point_type"), 0, 0, std::max(0, m_pqLineationPointStyleComboBox->count() - 1)));
    s.readInto(m_pqLineationPointSizeSpinBox, QStringLiteral("point_size"), 2);
    s.endGroup();

    s.beginGroup(QStringLiteral("display_settings"));
    readPair(s, QStringLiteral("background_white"), true, m_pqWhiteBackgroundRadioButton,
             QStringLiteral("background_black"), false, m_pqBlackBackgroundRadioButton);
    {
        const bool angles = s.readBool(QStringLiteral("annotation_angles"), true);
        const bool directions = s.readBool(QStringLiteral("annotation_directions"), false);
        const bool off = s.readBool(QStringLiteral("annotation_off"), false);
        if (directions && !angles)
            m_pqAnnotationDirectionsRadioButton->setChecked(true);
        else if (off && !angles)
            m_pqAnnotationOffRadioButton->setChecked(true);
        else
            m_pqAnnotationAnglesRadioButton->setChecked(true);
    }
    readPair(s, QStringLiteral("dip_dip_azimuth_convention"), true,
             m_pqDipDipAzimuthRadioButton, QStringLiteral("strike_dip_sense_convention"),
             false, m_pqStrikeDipSenseRadioButton);
    s.endGroup();

    s.beginGroup(QStringLiteral("rotation"));
    readSlider(s, QStringLiteral("plunge"), 0, m_pqRotationPlungeSpinBox);
    readSlider(s, QStringLiteral("azimuth"), 90, m_pqRotationAzimuthSpinBox);
    readSlider(s, QStringLiteral("angle"), 1, m_pqRotationAngleSpinBox);
    s.endGroup();

    s.beginGroup(QStringLiteral("bias_correction"));
    readSlider(s, QStringLiteral("scanline_plunge"), 0, m_pqScanlinePlungeSpinBox);
    readSlider(s, QStringLiteral("scanline_azimuth"), 90, m_pqScanlineAzimuthSpinBox);
    readSlider(s, QStringLiteral("minimum_bias_angle"), 15, m_pqMinimumBiasAngleSpinBox);
    s.endGroup();

    blockSignals(wasBlocked);

    // The form into the surface, once.
    updateGraphicalSelection();
    updateSymbolPointStyle();
    updateStereoPlotSettings(false);
    applyContourSettings();
    blackWhiteSwitch();
    slotZoomFactorReset(m_pqZoomFactorCheckBox->isChecked());
    m_pqHorizontalScrollBar->setValue(horizontal);
    m_pqVerticalScrollBar->setValue(vertical);
}

} // namespace rkBase

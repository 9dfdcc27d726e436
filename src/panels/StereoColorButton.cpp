#include "StereoColorButton.h"

#include "QStereoPlotWidget.h"

namespace rkBase {

const std::vector<StereoColorButton>& StereoColorButton::all()
{
    using F = Ui::QStereoProjectionWidget;
    using P = QStereoPlotWidget;
    static const std::vector<StereoColorButton> buttons = {
        {&F::m_pqPlaneColorButton, &P::setPlaneColor, "color_plane", "#0000FF"},
        {&F::m_pqMeanPrincipalPlaneColorButton, &P::setMeanPrincipalPlaneColor, "color_mean_principal_plane", "#000000"},
        {&F::m_pqMeanResultantPlaneColorButton, &P::setMeanResultantPlaneColor, "color_mean_resultant_plane", "#000000"},
        {&F::m_pqSuggestedSectionPlaneColorButton, &P::setSuggestedSectionPlaneColor, "color_suggested_section_plane",
         "#000000"},
        {&F::m_pqBestFitPlaneColorButton, &P::setBestFitPlaneColor, "color_best_fit_plane", "#000000"},
        {&F::m_pqPoleColorButton, &P::setPoleColor, "color_poles", "#FF0000"},
        {&F::m_pqMeanPrincipalPoleColorButton, &P::setMeanPrincipalPoleColor, "color_mean_principal_pole", "#AA0000"},
        {&F::m_pqMeanResultantPoleColorButton, &P::setMeanResultantPoleColor, "color_mean_resultant_pole", "#FF5500"},
        {&F::m_pqTPoleColorButton, &P::setTPoleColor, "color_t_pole", "#AA0000"},
        {&F::m_pqLPoleColorButton, &P::setLPoleColor, "color_l_pole", "#AA0000"},
        {&F::m_pqAzimuthColorButton, &P::setDipDirectionColor, "color_dip_directions", "#0000FF"},
        {&F::m_pqMeanPrincipalAzimuthColorButton, &P::setMeanPrincipalAzimuthColor, "color_mean_principal_azimuth",
         "#00007F"},
        {&F::m_pqMeanResultantAzimuthColorButton, &P::setMeanResultantAzimuthColor, "color_mean_resultant_azimuth",
         "#55AAFF"},
        {&F::m_pqTAzimuthColorButton, &P::setTAzimuthColor, "color_t_azimuth", "#00007F"},
        {&F::m_pqLAzimuthColorButton, &P::setLAzimuthColor, "color_l_azimuth", "#00007F"},
        {&F::m_pqLineationColorButton, &P::setLineationColor, "color_lineation", "#AA00FF"},
    };
    return buttons;
}

} // namespace rkBase

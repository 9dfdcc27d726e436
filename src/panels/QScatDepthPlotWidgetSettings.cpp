// The SCAT window's settings, one group per track, and its picture for the clipboard.
#include "QScatDepthPlotWidget.h"

#include "ui_QScatDepthPlotWidget.h"

#include "PanelColorButton.h"
#include "PanelSettings.h"

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

namespace rkBase {

namespace {
const QString kRoot = QStringLiteral("scat_window/");
const QString kTracks = QStringLiteral("scat_window/well_log_plots/");
// The tracks in the order their groups are read and written.
constexpr QScatDepthPlotWidget::Track kSettingsOrder[] = {
    QScatDepthPlotWidget::DipTrack, QScatDepthPlotWidget::AzimuthTrack, QScatDepthPlotWidget::TransverseDipTrack,
    QScatDepthPlotWidget::LongitudinalDipTrack};
} // namespace

void QScatDepthPlotWidget::readSettings()
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    {
        PanelSettings s(kRoot);
        s.beginGroup(QStringLiteral("last_rke_data_file_path"));
        lastFilePath = s.readString(QStringLiteral("path"), QString());
        s.endGroup();
    }
    for (Track track : kSettingsOrder) {
        TrackParts& t = m_tracks[track];
        PanelSettings s(kTracks + t.settingsName + QLatin1Char('/'));
        s.beginGroup(QStringLiteral("display"));
        t.plot->setGridIsOn(s.readBool(QStringLiteral("show_grid"), true));
        t.plot->setPointConnectionLine(s.readBool(QStringLiteral("show_log_curve"), false));
        t.plot->setShowPoints(s.readBool(QStringLiteral("show_points"), true));
        {
            const QSignalBlocker a(ui.m_pqZoomCheckBox), b(ui.m_pqZoomFactorSpinBox), c(ui.verticalScrollBar),
                d(ui.m_pqVertexFilterSpinBox);
            s.readInto(ui.m_pqZoomCheckBox, QStringLiteral("zoom_factor_on"), false);
            s.readInto(ui.m_pqZoomFactorSpinBox, QStringLiteral("zoom_factor"), 1.0);
            ui.verticalScrollBar->setValue(s.readInt(QStringLiteral("zoom_verticalScrollBar"), 50, 0, 100));
            s.readInto(ui.m_pqVertexFilterSpinBox, QStringLiteral("vertex_sampling"), 1);
        }
        s.endGroup();

        s.beginGroup(QStringLiteral("point_style"));
        const int styles = std::max(1, ui.m_pqPointStyleComboBox->count());
        const int style = s.readInt(QStringLiteral("type"), 0, 0, styles - 1);
        bool ok = false;
        const int value = ui.m_pqPointStyleComboBox->itemData(style).toInt(&ok);
        if (ok && value >= QRelationshipItemModel::Circle && value <= QRelationshipItemModel::BigCross4)
            t.model->setPointStyle(static_cast<QRelationshipItemModel::PointStyle>(value));
        t.model->setPointPixelSize(s.readInt(QStringLiteral("size"), 2, 1, 40));
        t.plot->setPointFillColor(s.readColor(QStringLiteral("point_color"), QColor(0, 0, 255)));
        s.endGroup();

        s.beginGroup(QStringLiteral("line_style"));
        t.plot->setLinePixelSize(s.readInt(QStringLiteral("size"), 2, 0, 5));
        t.plot->setLineColor(s.readColor(QStringLiteral("line_color"), QColor(0, 0, 255)));
        s.endGroup();

        s.beginGroup(QStringLiteral("add_attributes"));
        const QString tadpole = s.readString(QStringLiteral("tadpoles_attribute"), QStringLiteral("None"));
        const int at = ui.tadpoleAttributeComboBox->findText(tadpole);
        if (at >= 0) {
            const QSignalBlocker blocker(ui.tadpoleAttributeComboBox);
            ui.tadpoleAttributeComboBox->setCurrentIndex(at);
        }
        s.endGroup();
    }
    ui.m_pqZoomFactorSpinBox->setEnabled(ui.m_pqZoomCheckBox->isChecked());
    enableTandLeditBoxes();
    updateToolboxSettings(AzimuthTrack);
    updateCharts();
}

void QScatDepthPlotWidget::writeSettings()
{
    Ui::QScatDepthPlotWidget& ui = *m_pqUi;
    {
        PanelSettings s(kRoot);
        s.beginGroup(QStringLiteral("last_rke_data_file_path"));
        s.write(QStringLiteral("path"), lastFilePath);
        s.endGroup();
    }
    for (Track track : kSettingsOrder) {
        TrackParts& t = m_tracks[track];
        PanelSettings s(kTracks + t.settingsName + QLatin1Char('/'));
        s.beginGroup(QStringLiteral("display"));
        s.write(QStringLiteral("show_grid"), t.plot->gridIsOn());
        s.write(QStringLiteral("show_log_curve"), t.plot->pointConnectionLineIsOn());
        s.write(QStringLiteral("show_points"), t.plot->showPoints());
        s.write(QStringLiteral("zoom_factor_on"), ui.m_pqZoomCheckBox->isChecked());
        s.write(QStringLiteral("zoom_factor"), ui.m_pqZoomFactorSpinBox->value());
        s.write(QStringLiteral("zoom_verticalScrollBar"), ui.verticalScrollBar->value());
        s.write(QStringLiteral("vertex_sampling"), ui.m_pqVertexFilterSpinBox->value());
        s.endGroup();

        s.beginGroup(QStringLiteral("point_style"));
        s.write(QStringLiteral("type"), std::max(0, ui.m_pqPointStyleComboBox->findData(int(t.model->pointStyle()))));
        s.write(QStringLiteral("size"), t.model->pointPixelSize());
        s.writeColor(QStringLiteral("point_color"), t.plot->pointFillColor());
        s.endGroup();

        s.beginGroup(QStringLiteral("line_style"));
        s.write(QStringLiteral("size"), t.plot->linePixelSize());
        s.writeColor(QStringLiteral("line_color"), t.plot->lineColor());
        s.endGroup();

        s.beginGroup(QStringLiteral("add_attributes"));
        s.write(QStringLiteral("tadpoles_attribute"), ui.tadpoleAttributeComboBox->currentText().isEmpty()
                                                          ? QStringLiteral("None")
                                                          : ui.tadpoleAttributeComboBox->currentText());
        s.write(QStringLiteral("symbols_attribute"), ui.m_pqSymbolAttributeComboBox->currentText());
        s.write(QStringLiteral("colour_map_attribute"), ui.m_pqColorAttributeComboBox->currentText());
        s.endGroup();
    }
}

QImage QScatDepthPlotWidget::renderTracks() { return m_pqUi->m_pqPlotFrame->grab().toImage(); }

void QScatDepthPlotWidget::copyToClipboard() { QApplication::clipboard()->setImage(renderTracks()); }

} // namespace rkBase

#pragma once
// The rose tab: a QRosePlotWidget of one azimuth column in bins of "Interval Size" degrees,
// optionally split by the classes of a colour attribute (shown in a colour legend beside the
// rose), with the resultant mean direction and its normalised length, and a tool box of display,
// colour map and annotation settings. The owner hands it the columns (setDataSet) and re-reads
// its boxes when it asks for new data (dataSetSelected).
//
// Rules kept here that callers could otherwise guess:
// - The columns are not owned. Blank, text, non-finite and 99999.0 azimuths are not counted.
// - The bin count is 360 / interval, truncated: an interval that does not divide 360 leaves the
//   last bin reaching to 360.
// - Plain colour and number attributes are classed from their typed cells (RoseClassCounts);
//   text and computed attributes go through per-bin values that the plot classes itself.
// - The range typed for a colour attribute stays while that attribute is loaded again; another
//   attribute (or none) resets it, and the "Frequency Scale" to the plot's own grid distance.
// - Settings: groups prefix + "splitter_sizes", "display", "color_map_settings",
//   "display_settings"; see readSettings().

#include "RoseClassCounts.h"
#include "ui_QRoseChartWidget.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <vector>

namespace rkBase {

class MatrixData;
class PanelColorRange;
class QLegendListModel;
class QRosePlotWidget;

class QRoseChartWidget : public QWidget, protected Ui::QRoseChartWidget
{
    Q_OBJECT
public:
    // extended1 and extended2 both true: the full panel with the data set boxes and tool box;
    // either false: the rose and its legend only. settingsName is the prefix writeSettings() uses
    // until readSettings() names another.
    QRoseChartWidget(const QString& title, QWidget* parent, bool extended1 = true, bool extended2 = true,
                     Qt::WindowFlags flags = Qt::WindowFlags(), const QString& settingsName = QString());
    ~QRoseChartWidget() override;

    void setDataRoot(MatrixData* root) { m_dataRoot = root; }
    MatrixData* dataRoot() const { return m_dataRoot; }
    // direction: the azimuths; colourNode: the classifying attribute (null: none). An empty
    // row list means every row.
    void setDataSet(MatrixData* direction, MatrixData* colourNode, const std::vector<int>& rows = std::vector<int>());
    MatrixData* directionDataSet() const { return m_directionData; }
    MatrixData* colorDataSet() const { return m_colorData; }
    const std::vector<int>& selectedRows() const { return m_selectedRows; }
    int intervalSize() const { return m_interval; }

    int currentSelectedDataSet() const;
    QString currentSelectedDataSetName() const;
    int currentColorSelectedDataSet() const;
    QString currentColorSelectedDataSetName() const;
    void updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids);
    void updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids, const QList<QColor>& colours);
    // keepText: the entry to select when the old one is gone (empty: "None").
    void updateColorAttributeDataSetSelectionBox(const QStringList& names, const QList<int>& ids,
                                                 const QString& keepText = QString());

    void copyToClipboard();
    void copyEWMFToClipboard();
    void showToolBox(bool on, bool dataSetBoxes = true);
    void setLightMode() {}

    void readSettings(const QString& prefix);
    void writeSettings();
    QString settingsPrefix() const { return m_settingsPrefix; }

    QRosePlotWidget* drawingArea() const { return m_roseChart; }
    QLegendListModel* colorLegend() const { return m_legendModel; }

public slots:
    void blackWhiteSwitch();
    void updateRoseChart();
    void updateRoseChartClassification();
    void updateRoseChartIntervals(int interval);
    void initializeNewRoseChartData();
    void changePetalOutlineColor();
    void resetDisplayColorAttribute();
    void slotResetDisplayColorAttribute();
    void updateColorLegend();
    void slotColorLegendsVerticalScrollBarChanged(int value);

signals:
    void dataSetSelected();

private:
    // The classes of the bins into the plot: typed counts when the attribute allows, else the
    // plot's own classing of the per-bin values it was given.
    void classifyBins(bool keepOwnStep);
    void applyColorRange();

    std::unique_ptr<PanelColorRange> m_colorRange;
    QRosePlotWidget* m_roseChart = nullptr;
    QLegendListModel* m_legendModel = nullptr;
    MatrixData* m_dataRoot = nullptr;
    MatrixData* m_directionData = nullptr;
    MatrixData* m_colorData = nullptr;
    std::vector<int> m_selectedRows;
    RoseClassCounts m_classCounts;
    int m_interval = 10;
    QString m_lastColorName;
    bool m_colorDataUnchanged = false;
    QString m_settingsPrefix;
};

} // namespace rkBase

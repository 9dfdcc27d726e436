#pragma once
// The histogram tab: the frequency chart of one column with four axes, its P10, P50 and P90,
// the coupled "Intervals" and "Interval Size" controls under the chart, and the
// Kolmogorov-Smirnov two-sample test between the column and a comparison: another column, a data
// group of the column, or random orientations that the owner makes on request
// (createRandomOrientation). The owner hands it the column (setDataSet) and re-reads its boxes
// when it asks for new data (dataSetSelected).
//
// Rules kept here that callers could otherwise guess:
// - The panel works on copies of the columns it is handed, so a column edited or removed in the
//   sheet never pulls the ground from under a chart on screen.
// - The test's verdict reads the two cumulative curves at steps of the interval, with n the
//   sample sizes behind the curves; beside it the panel shows the statistic of the samples
//   themselves with its asymptotic p-value (KolmogorovSmirnovTest). Without a comparison, or with
//   one of no values, every result reads "---".
// - "Use Data Group": under an active test the comparison is the column's rows of that group;
//   without the test, the histogram itself shows only that group.
// - Checking "Comparison Data Set" switches to "Cumulative Relative Frequency", line on, bars off.
// - Settings: prefix + "splitter_sizes" only.

#include "KolmogorovSmirnovTest.h"
#include "PanelLoadStamp.h"
#include "ui_QHistogramChartWidget.h"

#include <MatrixData.h>

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <vector>

namespace rkBase {

class DisplayUnitManager;
class PanelAxes;
class PanelZoomScrollBars;
class QHistogramItemModel;
class QHistogramPlotWidget;

class QHistogramChartWidget : public QWidget, protected Ui::QHistogramChartWidget
{
    Q_OBJECT
public:
    // extended false: the chart and its interval controls only, without the side panel.
    QHistogramChartWidget(const QString& title, QWidget* parent, DisplayUnitManager* manager, bool extended = true,
                          bool unused1 = false, bool unused2 = false, Qt::WindowFlags flags = Qt::WindowFlags());
    ~QHistogramChartWidget() override;

    void setDataRoot(MatrixData* root);
    MatrixData* dataRoot() const { return m_dataRoot; }
    void setDataSet(MatrixData* node);
    // intervals -1: the automatic interval; otherwise that many intervals.
    void setDataSet(MatrixData* node, const std::vector<int>& rows, int intervals);
    int currentSelectedDataSet() const;
    QString currentSelectedDataSetName() const;
    void setCurrentDataSet(const QString& name);
    void updateDataSetSelectionBox(const QStringList& names, const QList<int>& ids, const QList<QColor>& colours);
    void updateDataSetSelectionBoxForDataGroup(const QStringList& names, const QList<int>& ids,
                                               const QList<QColor>& colours);
    void setShowP10(bool on);
    void setShowP50(bool on);
    void setShowP90(bool on);
    void setHistogramInitialInterval(double size);
    void setMercatorScaling(bool on) { m_mercatorScaling = on; }
    void setAzimuthScaling(bool on) { m_azimuthScaling = on; }
    void readSettings(const QString& prefix);
    void writeSettings();
    void copyToClipboard();

    // The percent level of the checked confidence radio (1, 5, 10, 15, 20), k set to its
    // coefficient; 0 with none checked, k unchanged.
    int confidenceInterval(double& k) const;

    QHistogramPlotWidget* histogramPlot() const { return m_histogramPlot; }
    QHistogramItemModel* histogramModel() const { return m_histogramModel; }
    QHistogramItemModel* compareModel() const { return m_compareModel; }
    MatrixData* histogramData() const { return m_histogramData.get(); }
    MatrixData* compareData() const { return m_compareData.get(); }
    const KolmogorovSmirnovTest::Binned& binnedResult() const { return m_binned; }
    const KolmogorovSmirnovTest::Sample& sampleResult() const { return m_sample; }

public slots:
    void displayUnitsChanged();
    void updateHistogram();
    void updateHistogramWithDefaultIntervals();
    void updateHistogramIntervals(int count);
    void updateHistogramIntervals(double size);
    void slotTwoSampleTestGroupClicked();
    void slotUpdateDataGroupComboBoxFromAttribute();
    void updateDiagramSettings(bool redraw = true);
    void blackWhiteSwitch();
    void slotZoomFactorChanged(double zoom);
    void slotZoomFactorReset(bool on);
    void slotHorizontalSliderChanged(int value);
    void slotVerticalSliderChanged(int value);
    void slotFontSizeChanged(double points);
    void updateCursorPosLabel(const QPointF& data, bool inside);

signals:
    void dataSetSelected();
    void createRandomOrientation();

private slots:
    void slotIntervalSizeEdited(double size);

private:
    void initializeNewHistogramChart(MatrixData::HistogramType type);
    void updateDataBoundaries();
    void runTwoSampleTest(double lo, double hi);
    void clearTestLabels();
    void setAxisUnitManagers(MatrixData::HistogramType type);
    bool testActive() const;
    MatrixData* dataGroupAttribute() const;
    // The range of the data set over the selected rows (false without values).
    bool dataRange(double& lo, double& hi) const;
    void applyZoom(double zoom);
    void drawAxes(QPainter& painter, const QRect& rect);

    DisplayUnitManager* m_unitManager = nullptr;
    std::unique_ptr<MatrixData> m_histogramData;
    std::unique_ptr<MatrixData> m_compareData;
    MatrixData* m_dataRoot = nullptr;
    std::vector<int> m_selectedRows;
    bool m_updateGuard = false;
    QHistogramPlotWidget* m_histogramPlot = nullptr;
    QHistogramItemModel* m_histogramModel = nullptr;
    QHistogramItemModel* m_compareModel = nullptr;
    bool m_mercatorScaling = false;
    bool m_azimuthScaling = false;
    std::unique_ptr<PanelAxes> m_axes;
    std::unique_ptr<PanelZoomScrollBars> m_scrollBars;
    KolmogorovSmirnovTest::Binned m_binned;
    KolmogorovSmirnovTest::Sample m_sample;
    PanelLoadStamp m_sampleStamp; // of the samples m_sample was computed on
    QString m_settingsPrefix;
};

} // namespace rkBase

#pragma once
// The bar chart tab: a QBarDiagramWidget beside a small tool box. It draws the ticked numeric
// columns of the data root over the rows the analyser hands it (the table's selection, or all
// rows), one bar per column in each place along the axis, as normal, stacked or percent bars.
// Many rows are reduced before anything is drawn: each bar stands for a run of consecutive
// rows and shows their mean, so a million rows draw as fast as a hundred.
//
// Rules kept here that callers could otherwise guess:
// - Rows per bar: the constructor's filterStepSize, or the tool box; 0 means automatic, which
//   is MatrixData::defaultFilterStepSize of the root for the rows in hand.
// - The column chosen to label the bars is not drawn as bars itself.
// - withFieldData: bars show the values as stored (field data is typed in its own units);
//   otherwise in display units, as the table shows them.
// - Settings live in the group given to readSettings (the analyser's ".../barchart/"); before
//   that, under the settings key + "/barchart/".

#include "QBarDiagramWidget.h"

#include <QString>
#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class QRKEBarChartWidget;
}

namespace rkBase {

class MatrixData;

class QRKEBarChartWidget : public QWidget
{
    Q_OBJECT
public:
    QRKEBarChartWidget(MatrixData* dataRoot, const QString& settingsKey, QWidget* parent = nullptr,
                       int filterStepSize = 0, bool withFieldData = false);
    ~QRKEBarChartWidget() override;

    void setDataRoot(MatrixData* root);
    MatrixData* dataRoot() const { return m_dataRoot; }
    QBarDiagramWidget* barDiagram() const { return m_chart; }
    // The rows of the last updateView: an empty list stands for all rows.
    const std::vector<int>& rows() const { return m_rows; }

    void setBarMode(QBarDiagramWidget::BarMode mode);
    QBarDiagramWidget::BarMode barMode() const;
    // 0: automatic.
    void setFilterStepSize(int rowsPerBar);
    int filterStepSize() const;
    // The step of the chart as drawn, after the automatic choice and the cap on bars.
    int effectiveFilterStepSize() const { return m_chart->data().step(); }
    // An empty name labels bars by row number; an unknown name does too.
    void setCategoryLabelColumn(const QString& name);
    QString categoryLabelColumn() const;
    void showToolBox(bool on);

    void readSettings(const QString& group);
    void writeSettings();
    QString settingsGroup() const { return m_settingsGroup; }

public slots:
    // Takes the rows to draw; with redraw the chart is rebuilt at once, otherwise when next shown.
    void updateView(const std::vector<int>& rows, bool redraw);
    // Reads the tree again over the same rows.
    void updateView();
    // Axes and labels back to black on white.
    void resetAxesColor();
    void copyToClipboard();
    // Copies the tool box's display state into the chart in one pass.
    void updateDiagramSettings(bool redraw = true);
    void slotZoomFactorChanged(double factor);
    void slotZoomFactorReset(bool on);
    void chartZoomChanged(double factor);
    void slotHorizontalSliderChanged(int value);
    void slotVerticalSliderChanged(int value);

private slots:
    void slotBarModeChanged();
    void slotRowsPerBarChanged();
    void slotCategoryLabelChanged();

private:
    void fillCategoryLabelComboBox();
    MatrixData* labelColumnNode() const;
    QList<MatrixData*> barColumns(const MatrixData* labelColumn) const;

    std::unique_ptr<Ui::QRKEBarChartWidget> m_pqUi;
    QBarDiagramWidget* m_chart = nullptr;
    MatrixData* m_dataRoot;
    bool m_withFieldData;
    std::vector<int> m_rows;
    QString m_settingsKey;
    QString m_settingsGroup;
    // The label column by name, so that a choice survives a refill of the box and a new tree.
    QString m_labelColumnName;
};

} // namespace rkBase

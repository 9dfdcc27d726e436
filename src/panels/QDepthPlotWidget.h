#pragma once
// The depth plot tab: the cross plot panel as a well log track, depth on the vertical axis and
// a line through the points, without regression. Only depth columns ("Z", "Measured Depth",
// "Depth", "Time") are offered for the vertical axis. A change of that column drops the bins,
// which belong to one depth column.

#include "QCrossPlotWidget.h"

namespace rkBase {

class QDepthPlotWidget : public QCrossPlotWidget
{
    Q_OBJECT
public:
    // fullPanel and showBottomPanel as the cross plot's; the two flags say which of the vertical
    // axes is drawn.
    QDepthPlotWidget(QWidget* parent, DisplayUnitManager* manager, bool fullPanel, bool showBottomPanel,
                     bool showLeftAxis = true, bool showRightAxis = false);

    void updateDataSetSelectionBoxVertical(const QStringList& names, const QList<int>& ids) override;

public slots:
    void slotUpdateChartData();

protected:
    void invertDepthAxis() override;
};

} // namespace rkBase

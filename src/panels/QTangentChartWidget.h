#pragma once
// The tangent plot panel: the stereo panel over a tangent projection of lines, where a
// cylindrical fold's axis shows as a straight line. Planes, lineation, contours, clusters, bias
// correction and rotation mean little on such a plot, so their pages and controls go; the
// "Plot Fold Axis" page, which the stereo panel keeps out of its tool box, comes in.

#include "QStereoChartWidget.h"

namespace rkBase {

class QTangentPlotWidget;

class QTangentChartWidget : public QStereoChartWidget
{
    Q_OBJECT
public:
    QTangentChartWidget(const QString& title, QWidget* parent, DisplayUnitManager* unitManager, bool extended1 = true,
                        bool extended2 = true, Qt::WindowFlags flags = Qt::WindowFlags());

    QTangentPlotWidget* tangentPlot() const;
    // Sets the azimuth box without its signal, and the chart's fold axis azimuth.
    void setFoldAxisAzimuth(double azimuth);

public slots:
    // The plunge and plunge azimuth under the cursor, read back through the tangent projection.
    void updateCursorPosLabel(const QPointF& pixel) override;
    void slotShowFoldAxisToggled(bool on);
    void updateFoldAxisPlunge(double plunge);
    void updateFoldAxisAzimuth(double azimuth);

protected:
    void createChartArea(const QString& title) override;
};

} // namespace rkBase

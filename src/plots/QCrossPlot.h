#pragma once
// The Cartesian plot surface: one relationship model as x/y points, with optional grid,
// bisecting line, regression line with its equation and 90 % range, a connection line, bin
// boundaries, bin averages and counts, cluster centroids, T and L directions, structural tops
// and domains. The same surface serves the cross plot, the depth plot and the depth plots of a
// structural interpretation; its DataCreationType decides what a mouse gesture does.
//
// It computes no statistics: the regression numbers are pushed in by setTrendLine(), and the
// decimation, the interval filter and the tops all come from the model.
//
// Rules kept here that callers could otherwise guess:
// - transformInPixelPoint() yields raster coordinates, transformInDataPoint() takes widget
//   coordinates (it adds the scroll offsets first). An axis without a usable span maps to 0.
// - 99999.0 is "no value" for the regression numbers and for the x of the mouse position.
// - setBoundaries() widens a degenerate range: both axes equal gives a 20-unit square around
//   the maximum; one axis equal takes half the other axis's maximum as half-width (the mixing
//   of the axes is intended).
// - drawChart() (the metafile) differs from redraw() on purpose: it always draws the grid, it
//   leaves out the interval boundaries, and it asks the owner to draw the axes.

#include "QChartDrawingArea.h"

#include <QCursor>
#include <QList>
#include <QPointer>

#include <memory>
#include <vector>

class QMenu;

namespace rkBase {

class DepthLineField;

class QCrossPlot : public QChartDrawingArea
{
    Q_OBJECT
public:
    enum DataCreationType {
        CreateStructuralTops = 0,
        CreateIntervalBoundary = 1,
        SelectDataPoints = 2,
        SelectForOrientation = 3
    };
    enum OriginPosition { OriginTopLeft = 0, OriginBottomLeft = 1 };

    static constexpr double kNoValue = 99999.0;
    static constexpr double kLowestFloat = -3.4028234663852886e+38;
    static constexpr double kHighestFloat = 3.4028234663852886e+38;

    // owner is the panel around the plot, or null. drawChart() asks it, when present, to draw
    // the axes through an invokable drawAxes(QPainter*, QRect): the plots may not know panels.
    QCrossPlot(QWidget* parent, QWidget* owner);
    ~QCrossPlot() override;

    // ---- overrides ----
    void copyWEMFToClipboard() override;
    void drawChart(QPainter& painter) override;
    void redraw() override;
    void addToContextMenuEvent(QMenu* menu) override;
    bool symbolAttributeIsOn() override;
    bool colorAttributeIsOn() override;
    void drawGrid(QPainter* painter) override;
    QPointF transformInPixelPoint(const QPointF& data) override;
    // transformInPixelPoint over a block of points, the raster and ranges read once; the walkers
    // use it.
    void pointsInPixels(const QPointF* data, QPointF* pixels, int count) const;
    virtual std::pair<QPointF, QPointF> calculateDataBoundaries();

    // ---- boundaries and transforms ----
    void setBoundaries(const QPointF& min, const QPointF& max);
    void setXBoundary(double min, double max);
    void setYBoundary(double min, double max);
    QPointF minPoint() const { return m_minPoint; }
    QPointF maxPoint() const { return m_maxPoint; }
    QPointF transformInDataPoint(const QPointF& widgetPixel) const;
    double pickingEpsX() const;
    double pickingEpsY() const;
    void setLimitYPickingToInPlots(const QPointF& limits);
    QPointF limitYPicking() const { return m_limitYPicking; }

    // ---- what is drawn ----
    void setTrendLine(double slope, double intercept, double coefficient);
    double regressionSlope() const { return m_regressionSlope; }
    double regressionIntercept() const { return m_regressionIntercept; }
    double regressionCoefficient() const { return m_regressionCoefficient; }
    void setTandLdirection(double t, double l);
    void setOriginPosition(OriginPosition position);
    OriginPosition originPosition() const { return m_originPosition; }
    void setDataCreationType(DataCreationType type);
    DataCreationType dataCreationType() const { return m_dataCreationType; }
    void setShow90PercentRange(bool on);
    void setShowBisectingLine(bool on);
    void setShowRegressionLine(bool on);
    void setShowRegressionEquation(bool on);
    void setPointConnectionLine(bool on);
    bool pointConnectionLineIsOn() const { return m_pointConnectionLine; }
    void setShowPoints(bool on);
    bool showPoints() const { return m_showPoints; }
    void setIntervalBoundaries(bool on);
    void setBinAverages(bool on);
    void setNumbOfDataPerBin(bool on);
    void setActivePlotWindow(bool on);
    bool activeWindow() const { return m_activeWindow; }
    void showActivePlotWindow(bool on);
    void setModifyOrientation(bool on);
    bool modifyOrientation() const { return m_modifyOrientation; }
    bool intervalBoundaryHeld() const { return m_intervalBoundaryHeld; }
    bool structuralTopsHeld() const { return m_structuralTopsHeld; }
    void setGridPenStyle(int style) { m_gridPenStyle = style; }
    QList<int> verticalGridLines() const { return m_verticalGridLines; }
    QList<int> horizontalGridLines() const { return m_horizontalGridLines; }
    QPolygonF selectionPolygon() const { return m_selectionPolygon; }
    // The cursor of the picking modes (a cross with a hot spot in its middle), made on first use.
    QCursor* crossCursor();

    // ---- structural tops ----
    void setScatContextMenu();
    QAction* renameAction() const { return m_renameAction; }
    QAction* modifyColourAction() const { return m_modifyColourAction; }
    QAction* modifyOrientationAction() const { return m_modifyOrientationAction; }
    QAction* deleteAction() const { return m_deleteAction; }
    void renameSelected(const QString& current);
    void modifySelectedColor(const QColor& current);
    void insertScatStructure(bool& flag);
    void moveStructuralTops(const QPointF& previousPixel);
    void removeIntervalBoundary();

public slots:
    void verticalGridLinesChanged(const QList<int>& lines);
    void horizontalGridLinesChanged(const QList<int>& lines);
    void slotDeleteSelected();

signals:
    void sendInsertScatUpdate(const QPointF& depth);
    void sendScatPickPos(const std::vector<int>& picked);
    void sendMoveSelectedUpdate(const QPointF& delta);
    void sendMoveSelectedUpdateStop();
    void selectedObjectNameRequired();
    void selectedObjectColourRequired();
    void sendScatUpdate(const QColor& colour);
    void sendScatUpdate(const QString& name);
    void sendDeleteSelectedUpdate();
    void sendModifySelectedOrientation();
    void crossPlotLeaveEvent(QEvent* event);
    void signalCopyWEMFToClipboard();

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    // ---- draw steps ----
    void drawBisectingLine(QPainter* painter);
    void drawRegressionLine(QPainter* painter);
    void draw90PercentRange(QPainter* painter);
    void drawRegressionEquation(QPainter* painter);
    void drawPointConnectionLine(QPainter* painter);
    void drawDecimationData(QPainter* painter);
    void drawDecimationCount(QPainter* painter);
    void drawIntervalBoundaries(QPainter* painter);
    using QChartDrawingArea::drawCentroids;
    void drawCentroids(QPainter* painter);
    void drawTandLdirection(QPainter* painter);
    void drawDomains(DepthLineField* field, bool held, QPainter* painter);
    void drawStructuralTops(DepthLineField* field, bool held, QPainter* painter);
    void drawStructuralOrientation(DepthLineField* field, QPainter* painter);
    QRectF placeLabelBox(const QRectF& box, const QPointF& anchor) override;
    void pickStructuralTops();
    // The active scenario of the model (created when the model has none), or null without a model.
    DepthLineField* structuralTops();
    // Erases the interval boundary under the mouse; whether there was one.
    bool takeIntervalBoundary();

private:
    // Everything from the tops to the centroids, in the order both pictures share.
    void drawLayers(QPainter* painter, bool metafile);
    // The two ends of a line of pixels, or false when either is not finite.
    bool pixelLine(const QPointF& a, const QPointF& b, QLineF& out);
    QPointF mouseDataPoint() const { return transformInDataPoint(m_mousePickingPos); }

    QPointF m_minPoint{10.0, 10.0};
    QPointF m_maxPoint{10.0, 10.0};
    bool m_show90PercentRange = true;
    bool m_showBisectingLine = false;
    bool m_showRegressionLine = false;
    bool m_showRegressionEquation = false;
    bool m_pointConnectionLine = false;
    bool m_showPoints = true;
    bool m_intervalBoundaries = false;
    bool m_binAverages = false;
    bool m_numbOfDataPerBin = false;
    bool m_intervalBoundaryHeld = false;
    bool m_structuralTopsHeld = false;
    bool m_showActivePlotWindow = false;
    bool m_activeWindow = false;
    bool m_modifyOrientation = false;
    OriginPosition m_originPosition = OriginBottomLeft;
    DataCreationType m_dataCreationType = SelectDataPoints;
    double m_regressionSlope = kNoValue;
    double m_regressionIntercept = kNoValue;
    double m_regressionCoefficient = kNoValue;
    double m_tDirection = -1.0;
    double m_lDirection = -1.0;
    QList<int> m_verticalGridLines;
    QList<int> m_horizontalGridLines;
    std::unique_ptr<QCursor> m_crossCursor;
    int m_gridPenStyle = Qt::SolidLine;
    QAction* m_modifyOrientationAction = nullptr;
    QAction* m_renameAction = nullptr;
    QAction* m_modifyColourAction = nullptr;
    QAction* m_deleteAction = nullptr;
    QPointer<QWidget> m_ownerPanel;
    QPointF m_limitYPicking{kLowestFloat, kHighestFloat};
    bool m_cursorOverridden = false;
};

} // namespace rkBase

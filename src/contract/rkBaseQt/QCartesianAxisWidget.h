#pragma once
// An axis beside a Cartesian chart (cross plot, depth plot, histogram, the SCAT tracks): tick
// marks, their values in the column's display unit, and a title with the unit. The panels need
// four things of it:
// - The same pixels as the chart. A chart is laid out on a raster of its widget's size times its
//   zoom and scrolled by whole-pixel offsets; the axis, whose length along the chart equals the
//   chart's width or height, maps a value to the pixel the chart maps it to. setZoom() and
//   setOffset() repeat the chart's zoom() and xoffset()/yoffset(); followChart() takes the
//   chart's raster size and offsets as they are (needed after zoomY(), whose raster height is
//   truncated where zoom() rounds).
// - The grid. gridLinesChanged() carries the tick pixels in the form QCrossPlot draws them: a
//   horizontal axis gives widget x, a vertical axis gives height() - widget y.
// - The range. fitNiceRange() widens the range to whole ticks 1, 2 or 5 x 10^n apart, chosen in
//   the display unit, so that the chart's edges fall on round values.
// - A copy on paper. draw() paints the axis into any painter at a rectangle, so a panel can
//   put the axes into a metafile beside the chart.
//
// Rules kept here that callers could otherwise guess:
// - The range is in model units, like the chart's boundaries; ticks and labels are worked out in
//   display units and mapped back (the unit conversions are linear).
// - The tick step follows the room on screen: the finest step of the 1-2-5 ladder whose labels,
//   measured with the axis's font, keep a gap between them. A zoomed axis therefore shows finer
//   ticks. Labels near the ends are pushed inside the widget, and a label that would then
//   overlap its neighbour, or that is wider than the axis is deep, is left out (its tick and
//   grid line stay). A title that would run into the labels is not drawn: widen the axis.
// - The offset percentage counts from the origin's side: for a vertical axis with its origin at
//   the bottom, setOffset(p) scrolls as the chart's yoffset(100 - p) does.
// - A range of no number draws no ticks and gives an empty grid; a range of zero width is drawn
//   as that value +/- 10, as the chart widens it.
// - Positions 4 to 7 are the depth track's axes, which bring their own direction: the elevation
//   positions put the origin at the bottom (values grow upwards), the depth positions at the top.

#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <boost/shared_ptr.hpp>

namespace rkBase {
class UnitManager;
}

class QCartesianAxisWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(AxisPosition axisPosition READ axisPosition WRITE setAxisPosition)
    Q_PROPERTY(OriginPosition originPosition READ originPosition WRITE setOriginPosition)
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(bool titleVisible READ isTitleVisible WRITE setTitleVisible)
    Q_PROPERTY(bool unitLabelVisible READ isUnitLabelVisible WRITE setUnitLabelVisible)
    Q_PROPERTY(double fontPointSize READ fontPointSize WRITE setFontPointSize)
public:
    enum AxisPosition {
        AxisTop = 0,
        AxisBottom = 1,
        AxisLeft = 2,
        AxisRight = 3,
        AxisLeftElevation = 4,
        AxisRightElevation = 5,
        AxisLeftDepth = 6,
        AxisRightDepth = 7
    };
    Q_ENUM(AxisPosition)
    // The same values as QCrossPlot::OriginPosition.
    enum OriginPosition { OriginTopLeft = 0, OriginBottomLeft = 1 };
    Q_ENUM(OriginPosition)

    // A range whose ends are whole multiples of step.
    struct NiceRange {
        double minimum;
        double maximum;
        double step;
    };

    explicit QCartesianAxisWidget(QWidget* parent = nullptr);
    explicit QCartesianAxisWidget(AxisPosition position, QWidget* parent = nullptr);
    ~QCartesianAxisWidget() override;

    // ---- placement ----
    void setAxisPosition(AxisPosition position);
    AxisPosition axisPosition() const { return m_position; }
    bool isHorizontal() const { return m_position == AxisTop || m_position == AxisBottom; }
    void setOriginPosition(OriginPosition origin);
    OriginPosition originPosition() const { return m_origin; }

    // ---- range, in model units ----
    void setRange(double minimum, double maximum);
    double minimum() const { return m_minimum; }
    double maximum() const { return m_maximum; }
    // Widens the range to niceRange() of it in display units.
    void fitNiceRange();
    // The smallest range around [minimum, maximum] (either order) whose ends are multiples of a
    // step of 1, 2 or 5 x 10^n, aiming at about five steps. Awkward input has a fixed answer:
    // - one value v (or a span below 1e-12 of the values' size) is spread to v +/- |v| / 10,
    //   and 0 to -1 .. 1; values nearer 0 than 1e-300 count as 0;
    // - one end not a number or infinite: the other end as a single value;
    //   both: 0 .. 1 with step 0.2;
    // - ends past the largest double are held at it.
    static NiceRange niceRange(double minimum, double maximum);

    // ---- following the chart ----
    void setZoom(double factor);
    double zoom() const { return m_zoom; }
    // Scroll position as a percentage of the scroll range, counted from the origin's side.
    void setOffset(int percent);
    int offset() const { return m_offsetPercent; }
    // The chart's rasterSize(), xOffsetPixels() and yOffsetPixels(), taken as they are until the
    // next setZoom() or setOffset().
    void followChart(const QSize& rasterSize, int xOffsetPixels, int yOffsetPixels);

    // ---- text ----
    void setTitle(const QString& title);
    QString title() const { return m_title; }
    void setTitleVisible(bool on);
    bool isTitleVisible() const { return m_titleVisible; }
    // The unit tag after the title, from the unit manager's display unit.
    void setUnitLabelVisible(bool on);
    bool isUnitLabelVisible() const { return m_unitLabelVisible; }
    // The text the title line shows: title, then the unit tag in brackets.
    QString titleText() const;
    // Null: values are shown as stored.
    void setUnitManager(boost::shared_ptr<rkBase::UnitManager> manager);
    boost::shared_ptr<rkBase::UnitManager> unitManager() const { return m_unitManager; }
    // Point size of the labels and title; not above 0 keeps the current size.
    void setFontPointSize(double points);
    double fontPointSize() const;

    // ---- what is shown, at the widget's size ----
    // Ticks inside the visible window, in increasing value: model values, pixels along the axis
    // (widget x or y), the label texts (empty where a label was left out).
    QVector<double> tickValues() const;
    QList<int> tickPixels() const;
    QStringList tickLabels() const;
    // The tick pixels as gridLinesChanged() carries them.
    QList<int> gridLines() const;
    // Tick step in display units; 0 without ticks.
    double tickStep() const;
    // Model value to the widget pixel along the axis, and back; NaN for a range of no number.
    double valueToPixel(double modelValue) const;
    double pixelToValue(double pixel) const;

    // Paints the axis, background included, into rect of any painter, laid out for rect's size.
    void draw(QPainter* painter, const QRect& rect) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public slots:
    // Lays the ticks out again, repaints, and sends the grid even when it did not change.
    void redraw();

signals:
    void gridLinesChanged(const QList<int>& lines);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct AxisMap;
    struct Tick;
    struct Layout;
    AxisMap mapFor(int length) const;
    // device: where the text will go (its resolution sizes the font); null for the widget.
    Layout layoutFor(const QSize& size, const QPaintDevice* device = nullptr) const;
    void paintLayout(QPainter& painter, const Layout& layout, const QRect& rect) const;
    // Re-lays the widget out and sends the grid if it moved (or always, when forced).
    void relayout(bool forceSignal = false);
    double toDisplay(double modelValue) const;
    double toModel(double displayValue) const;
    void unitsChanged(const QString& category);

    AxisPosition m_position = AxisLeft;
    OriginPosition m_origin = OriginBottomLeft;
    double m_minimum = 0.0;
    double m_maximum = 1.0;
    double m_zoom = 1.0;
    int m_offsetPercent = 50;
    bool m_followsChart = false;
    QSize m_chartRaster;
    int m_chartXOffset = 0;
    int m_chartYOffset = 0;
    QString m_title;
    bool m_titleVisible = true;
    bool m_unitLabelVisible = true;
    boost::shared_ptr<rkBase::UnitManager> m_unitManager;
    QMetaObject::Connection m_unitConnection;
    QList<int> m_lastGrid;
    bool m_gridSent = false;
};

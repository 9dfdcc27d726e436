#pragma once
// The drawing area every chart stands on. It keeps the chart's raster, zoom and scroll, the
// symbol set, the walkers that draw a relationship model's points, contouring of a grid, labels,
// the tooltip balloon, the context menu and the clipboard copies. It draws no chart of its own:
// a chart overrides redraw(), drawChart() and transformInPixelPoint().
//
// Painting happens in two stages. redraw() rebuilds m_chartPixmap, and only when m_redrawNeeded
// is set or updateChart() is called; paintEvent() shows that raster, or m_overlayPixmap when a
// chart has copied the raster there to add transient drawing (a pick, a lasso), so that moving the
// mouse never recomputes a chart.
//
// Zoom. A chart is laid out on a raster of the widget's size times zoomFactor() (rasterSize(); a
// chart's pixel transforms, m_gridRect and m_selectionPolygon are in its pixels), but only the
// window of it that the widget shows is kept: m_chartPixmap is the widget's size and stands for
// pixmapRect() of the raster. Painters open on it through beginRasterPainter(), which translates
// by the scroll offsets, so a chart draws in raster pixels as if the whole raster existed. A zoom
// of 20 would otherwise hold 400 widgets' worth of pixels (1.3 GB for 1000 x 800, and past what
// QImage allows for larger charts). The price: a scroll redraws the chart; a mouse move still
// only copies the window.
//
// Rules kept here that callers could otherwise guess:
// - m_chartPixmap is an image (premultiplied ARGB), not a QPixmap: the point walkers stamp
//   symbols straight into its pixels. Symbols have whole-pixel corners, so a symbol drawn once
//   per pen and brush gives the same pixels wherever it lands. Stamping is used only when the
//   painter targets such an image through a whole-pixel translation; every other painter (a
//   metafile, a recording engine, a rotated view) gets the real shapes. setSymbolStamping(false)
//   turns it off.
// - A row has no point only where its cell is blank (an invalid QVariant). A QVariant holding
//   QPointF(0, 0) reports isNull(), yet it is a point: a flat bed at dip 0 / azimuth 0, a cross
//   plot reading of (0, 0). The walkers, the lassos and the counts treat it like any other.
// - The point walkers choose by the model's attribute switches and the colour classes' cell
//   type; the class arrays report the attribute's type (see QRelationshipItemModel), so a
//   colour-typed attribute reaches drawPointsWithTypeColorAttribute(AndSymbol).
// - A contour grid's first index runs along x and its second along y: cell (i, j) has its top
//   left corner at gridRect.topLeft() + (i, j) * d, with d = gridRect.width() / (rows - 1).
// - A tadpole leaves the painter's transformation as it found it, and so does a rotated label:
//   a painter may carry the scroll translation of the raster or of a widget's overlay, and a
//   reset would throw every later mark one scroll offset off its place.

#include "PointBlockBounds.h"
#include "QRelationshipItemModel.h"
#include "RowSetMetaType.h"

#include <QAction>
#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <boost/dynamic_bitset.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class OpenGLScene;
class QComboBox;
class QMenu;

namespace rkBase {

class MatrixDataArray;
class SymbolStamper;

class QChartDrawingArea : public QWidget
{
    Q_OBJECT
public:
    QChartDrawingArea(QWidget* parent, const QString& title);
    ~QChartDrawingArea() override;

    // ---- virtual operations, in their order ----
    virtual void setLabelColor(const QColor& colour);
    virtual void copyWEMFToClipboard();
    virtual void drawChart(QPainter& painter);
    virtual void drawAxis(QPainter& painter, QRect rect);
    virtual void redraw();
    virtual void addToContextMenuEvent(QMenu* menu);
    virtual bool symbolAttributeIsOn();
    virtual bool colorAttributeIsOn();
    virtual void drawLabel(QPainter* painter, const QPointF& data, const QString& text);
    virtual void drawGrid(QPainter* painter);
    virtual QPointF transformInPixelPoint(const QPointF& data);
    virtual void zoom(double factor);
    virtual void zoomY(double factor);
    virtual void xoffset(int percent);
    virtual void yoffset(int percent);
    virtual void enableMouseZoom(bool on);

    // ---- settings ----
    void setModel(QRelationshipItemModel* model)
    {
        m_model = model;
        m_pointBlockBounds.clear();
    }
    QRelationshipItemModel* model() const { return m_model; }
    QColor labelColor() const { return m_labelColor; }
    QColor backgroundColor() const { return m_backgroundColor; }
    // setLabelColor() sets the background with it; this is for a legend's white swatch.
    void setBackgroundColor(const QColor& colour) { m_backgroundColor = colour; }
    QColor gridColor() const { return m_gridColor; }
    QColor lineColor() const { return m_lineColor; }
    void setLineColor(const QColor& colour) { m_lineColor = colour; }
    QColor pointFillColor() const { return m_pointFillColor; }
    void setPointFillColor(const QColor& colour) { m_pointFillColor = colour; }
    QColor highlightFillColor() const { return m_highlightFillColor; }
    int linePixelSize() const { return m_linePixelSize; }
    void setLinePixelSize(int size) { m_linePixelSize = size; }
    bool symbolColorOnly() const { return m_symbolColorOnly; }
    void setSymbolColorOnly(bool on) { m_symbolColorOnly = on; }
    bool gridIsOn() const { return m_gridIsOn; }
    void setGridIsOn(bool on) { m_gridIsOn = on; }
    QRectF gridRect() const { return m_gridRect; }
    void setGridRect(const QRectF& rect) { m_gridRect = rect; }
    void setClusterPoleCentroidsOn(bool on) { m_clusterPoleCentroidsOn = on; }
    void setClusterAzimuthCentroidsOn(bool on) { m_clusterAzimuthCentroidsOn = on; }
    QPointF mousePickingPos() const { return m_mousePickingPos; }
    void setMousePickingPos(const QPointF& pixel) { m_mousePickingPos = pixel; }
    bool showLabels() const { return m_showLabels; }
    void setShowLabels(bool on) { m_showLabels = on; }
    // Density contours: which grids, and how they are drawn.
    void setContourPolesOn(bool on) { m_contourPolesOn = on; }
    void setContourDipDirOn(bool on) { m_contourDipDirOn = on; }
    void setContourFillOn(bool on) { m_contourFillOn = on; }
    void setContourLinesOn(bool on) { m_contourLinesOn = on; }
    void setContourLabelsOn(bool on) { m_contourLabelsOn = on; }
    void setContourRange(double min, double max) { m_contourMin = min; m_contourMax = max; }
    // How the density grids were counted: grid counts are drawn in percent of the points, the
    // Kamb methods' multiples of sigma as they are.
    void setDensityMethod(DensityMethod method) { m_densityMethod = method; }
    DensityMethod densityMethod() const { return m_densityMethod; }
    const std::vector<QPointF>& contourLabelPositions() const { return m_contourLabelPositions; }
    const std::vector<QString>& contourLabelTexts() const { return m_contourLabelTexts; }
    double zoomFactor() const { return m_zoomFactor; }
    int xOffsetPixels() const { return m_xOffsetPixels; }
    int yOffsetPixels() const { return m_yOffsetPixels; }
    bool mouseZoomEnabled() const { return m_mouseZoomEnabled; }
    QString headerTitle() const { return m_headerTitle; }
    QString baseTitle() const { return m_baseTitle; }
    // The cached window of the raster (the widget's size); valid after the first paint or
    // updateChart().
    const QImage& chartImage() const { return m_chartPixmap; }
    // The size the chart is laid out on: the widget's size times the zoom.
    QSize rasterSize() const { return m_rasterSize; }
    QRect rasterRect() const { return QRect(QPoint(0, 0), m_rasterSize); }
    // Bytes held by the raster window and its overlay copy.
    std::size_t rasterMemoryBytes() const;
    // Symbols stamped into the raster (see the rules above); on by default.
    void setSymbolStamping(bool on) { m_symbolStamping = on; }
    bool symbolStamping() const { return m_symbolStamping; }

    QRect pixmapRect() const;
    OpenGLScene* openGLScene() const { return m_openGLScene.get(); }
    void resizeOpenGLScene(const QSize& size);
    void showModifyAction(bool on) { m_showModifyAction = on; }
    void allowCopyToWMF(bool on);
    QAction* copyAction() const { return m_copyAction; }
    QAction* copyEmfAction() const { return m_copyEmfAction; }
    QAction* modifyAction() const { return m_modifyAction; }
    void changeHeaderTitle(const QString& text);
    void updateChart();
    // A chart that spends most of its life on a page behind another (one of several plots in a
    // tab widget) may leave updateChart()'s drawing to the paint that shows it: a million points
    // are then drawn for the page the user looks at, not for all of them.
    void setRedrawOnlyWhenShown(bool on) { m_redrawOnlyWhenShown = on; }
    // The raster is rebuilt at the next paint rather than now: for changes that come in bursts
    // (a lasso's selection, then the table's answer), so that a million points are drawn once.
    void scheduleRedraw()
    {
        m_redrawNeeded = true;
        update();
    }
    // The context menu as the user would get it; the caller owns it.
    QMenu* createContextMenu();

    // ---- symbols ----
    QPixmap symbolPixmap(int style);
    QPixmap getSymbolPixmap(int style, const QColor& colour);
    QPixmap getSymbolPixmap(int& id, const QColor& colour, bool useId);
    void initializePointSytleComboBox(QComboBox* combo, bool withOutlined);
    void drawOneSymbol(const QPointF& pos, int style, const QColor& colour, int size, QPainter* painter);
    void drawSymbols(const QPointF& pos, int id, const QColor& colour, bool selected, const QColor& selectedColour,
                     int widthHint, QPainter* painter);
    void drawDefaultSymbols(const QPointF& pos, int id, const QColor& colour, bool selected,
                            const QColor& selectedColour, int widthHint, QPainter* painter);
    // The fast form: style and size from the model, the painter's pen and brush.
    void drawPoint(const QPointF& pos, QPainter* painter);

    static void drawCircle(const QPointF& pos, int size, QPainter* painter);
    static void drawRectangle(const QPointF& pos, int size, QPainter* painter);
    static void drawCross(const QPointF& pos, int size, QPainter* painter);
    static void drawTriangle(const QPointF& pos, int size, QPainter* painter);
    static void drawTriangle2(const QPointF& pos, int size, QPainter* painter);
    static void drawDiamond(const QPointF& pos, int size, QPainter* painter);
    static void drawBigCross(const QPointF& pos, int size, QPainter* painter);
    static void drawBigCross45(const QPointF& pos, int size, QPainter* painter);
    static void drawPolygon(const QPointF& pos, int size, int corners, QPainter* painter);
    // The outline of one style at (0, 0), whatever the fill: what the shape functions draw.
    static void drawShape(const QPointF& pos, int style, int size, QPainter* painter);
    // How far left of and above the position drawShape's truncated coordinates reach.
    static int shapeReach(int style, int size);

    // ---- contours ----
    void drawContour(QPainter* painter);
    void drawContour(QPainter* painter, MatrixDataArray* grid, double min, double max, bool percent,
                     double lineWidth);
    void drawOpenGLContour(QPainter* painter, MatrixDataArray* grid, double min, double max);

    // What the widget shows, as a picture on the clipboard (charts and legends alike).
    static void copyWidgetToClipboard(QWidget* widget);
    // The chart in vectors as copyWEMFToClipboard() paints it here (drawChart, then drawAxis,
    // clipped to pixmapRect(), with paintingToWEMF on): the metafile's bytes, also written to
    // fileName unless it is empty. Empty if the metafile could not be made.
    QByteArray toEnhancedMetafile(const QString& fileName = QString());
    // The part of the raster the widget shows, rebuilt first if stale.
    QImage visibleChartImage();
    // The metafile under the types of kMetafileMimeTypes, in that order, and the picture as
    // "image/png" after them: office programs paste the vectors, everything else the picture.
    static void setMetafileOnClipboard(const QByteArray& metafile, const QImage& picture);
    static const char* const kMetafileMimeTypes[3];
    static void drawTooltip(QPainter* painter, const QPointF& tip, const QColor& colour, const QPixmap& pixmap,
                            const QRectF& clip);

public slots:
    void copyToClipboard();
    void slotCopyWEMFToClipboard();

signals:
    void dataPointsSelection(const boost::dynamic_bitset<>& rows);
    void zoomChanged(double factor);
    void cursorPos(const QPointF& pos, bool inside);
    void signalBasicModifyCellValues();
    void signalCopyToClipboard();

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

    bool paintingToWEMF() const { return m_paintingToWEMF; }
    void paintingToWEMF(bool on) { m_paintingToWEMF = on; }
    void setPointPen(QPainter* painter);
    // Copies corners k-1 and k (k in 1..4, the fourth pair wrapping) of a grid cell.
    static void setTriangle(int k, const double* cornerX, const double* cornerY, const double* cornerValues,
                            double* x, double* y, double* values);
    void createOpenGLScene();
    // Recomputes the raster size from the widget size and the zoom; height only for zoomY.
    void resizeRaster(bool heightOnly);
    // The raster copied into m_overlayPixmap, for a chart's transient drawing in paintEvent.
    QImage& beginOverlay();
    // Opens painter on the raster window (m_chartPixmap or the overlay) so that it draws in
    // raster pixels.
    void beginRasterPainter(QPainter& painter, QImage& image) const;
    // Scroll offsets from a percentage; new offsets mark the raster stale.
    int scrollOffset(int percent, int rasterExtent, int widgetExtent) const;
    void setScrollOffsets(int x, int y);
    // Largest side of the OpenGL scene's frame buffer.
    static constexpr int kMaxSceneExtent = 4096;

    // ---- point drawing family ----
    void drawPoints(QPainter* painter);
    void drawPlainPoints(QPainter* painter);
    void drawPointsWith_tadpoles(QPainter* painter);
    void drawPointsWith_color_attribute(QPainter* painter);
    void drawPointsWith_symbol_attribute1(QPainter* painter);
    void drawPointsWith_symbol_attribute2(QPainter* painter);
    void drawPointsWith_symbol_and_color_attribute(QPainter* painter);
    void drawPointsWithTypeColorAttribute(QPainter* painter);
    void drawPointsWithTypeColorAttributeAndSymbol(QPainter* painter);
    void drawTadPole(const QPointF& pos, double azimuth, const QColor& colour, int size, QPainter* painter);
    void drawColorFilledTadPole(const QPointF& pos, double azimuth, int id, const QColor& colour, bool selected,
                                const QColor& selectedColour, int widthHint, QPainter* painter);

    // ---- single results ----
    void drawPoint(QPainter* painter, const QPointF& data, const QColor& fill, const QColor& outline, double limit,
                   bool flip);
    void drawPoint(QPainter* painter, const QPointF& data, const QColor& fill, const QColor& outline, int size,
                   double limit, bool flip);
    void drawPointWithLabel(QPainter* painter, const QPointF& data, const QColor& colour, const QString& label,
                            double limit, bool flip);
    void drawResultPoint(QPainter* painter, const QPointF& data, const QColor& colour, const QString& label,
                         double limit, bool flip);
    void drawCentroids(QPainter* painter, const std::vector<QPointF>& pixels, const QColor& colour);

    // ---- labels ----
    void drawLabel2(QPainter* painter, const QPointF& pixel, const QString& text, const QColor& colour);
    void drawLabel3(QPainter* painter, const QPointF& pixel, const QString& text, const QColor& colour, double angle,
                    bool rotate);
    void drawLabel4(QPainter* painter, const QPointF& pixel, const QString& text, const QColor& colour);
    void drawContourLabels(QPainter* painter);
    // Where the box of a point label goes, given where drawLabel, drawLabel2 or drawLabel4 put
    // it and the point it marks: unchanged here; a chart moves it off what the label would hide.
    virtual QRectF placeLabelBox(const QRectF& box, const QPointF& anchor);

    // ---- fields, in their order ----
    QColor m_backgroundColor{Qt::white};
    bool m_showLabels = true;
    bool m_contourPolesOn = false;
    bool m_contourDipDirOn = false;
    bool m_contourFillOn = true;
    bool m_contourLinesOn = false;
    bool m_contourLabelsOn = false;
    double m_contourMin = 0.0;
    double m_contourMax = 0.0;
    DensityMethod m_densityMethod = DensityMethod::FourCorner;
    QPointF m_mousePickingPos{99999.0, 0.0};
    QPolygonF m_selectionPolygon;
    QImage m_overlayPixmap;
    QImage m_chartPixmap;
    bool m_redrawNeeded = true;
    bool m_redrawOnlyWhenShown = false;
    std::unique_ptr<OpenGLScene> m_openGLScene;
    std::vector<QPointF> m_contourLabelPositions;
    std::vector<QString> m_contourLabelTexts;
    QRelationshipItemModel* m_model = nullptr;
    QColor m_labelColor{Qt::black};
    QColor m_gridColor{Qt::lightGray};
    QColor m_lineColor{Qt::green};
    QColor m_highlightFillColor{183, 200, 255, 255};
    QColor m_pointFillColor{Qt::darkBlue};
    QString m_baseTitle;
    QString m_headerTitle;
    int m_linePixelSize = 2;
    bool m_symbolColorOnly = false;
    bool m_gridIsOn = false;
    bool m_clusterPoleCentroidsOn = true;
    bool m_clusterAzimuthCentroidsOn = false;
    QRectF m_gridRect;
    double m_zoomFactor = 1.0;
    QSize m_rasterSize{1, 1};
    int m_xOffsetPixels = 0;
    int m_yOffsetPixels = 0;
    int m_xOffsetPercent = 50;
    int m_yOffsetPercent = 50;
    bool m_mouseZoomEnabled = true;
    bool m_showModifyAction = false;
    QAction* m_copyAction = nullptr;
    QAction* m_copyEmfAction = nullptr;
    QAction* m_modifyAction = nullptr;
    bool m_paintingToWEMF = false;
    // A chart whose pixel transform runs faster over many points at once sets this; it must
    // give what transformInPixelPoint gives, point for point, and may fall back to it. A chart
    // that overrides transformInPixelPoint again clears or replaces what its base set here.
    std::function<void(const QPointF* data, QPointF* pixels, int count)> m_pixelBlock;
    // Set where m_pixelBlock maps x and y each by an affine function of its own: a walk over a
    // zoomed chart then leaves out the points that cannot reach the view before transforming them.
    bool m_pixelBlockIsAxisAffine = false;
    PointBlockBounds m_pointBlockBounds;
    // The walkers' transform of a block of points: m_pixelBlock where set, else one at a time.
    void transformInPixelPoints(const QPointF* data, QPointF* pixels, int count);
    // Where the model is the plain one over a stored point column: its cells, their validity
    // bytes and how many there are, so that a walk over every point needs no QVariant per row.
    // Null when the points must be read through the model's data().
    const QPointF* modelPointCells(const std::uint8_t*& valid, int& stored) const;

private:
    // The walk the eight walkers share: a first pass over the rows (skipped when only the
    // selection is shown, and leaving out selected rows when they are highlighted), then the
    // selected rows. draw(row, pixel, secondPass) draws one point.
    // onlyPoints: draw() draws the point and nothing else, so that repeated stamps may be skipped.
    // drawRun(pixels, count, secondPass), where given, draws the points of a block of stored
    // cells at once in place of draw(), which still serves points read through the model.
    template <class Draw, class DrawRun = std::nullptr_t>
    void walkPoints(QPainter* painter, Draw&& draw, bool onlyPoints = false, DrawRun&& drawRun = nullptr);
    bool stressOverlayOn() const;
    int modelPointSize() const;
    // Fills one label box (unless painting a metafile) and writes the padded text in it.
    void drawLabelBox(QPainter* painter, const QRectF& box, const QString& padded);

    bool m_symbolStamping = true;
    std::unique_ptr<SymbolStamper> m_stamper;
};

} // namespace rkBase

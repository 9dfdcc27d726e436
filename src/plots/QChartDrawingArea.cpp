#include "QChartDrawingArea.h"

#include "ChartPen.h"
#include "EMFDevice.h"
#include "CellColumn.h"
#include "MatrixDataArray.h"
#include "OpenGLScene.h"
#include "RKColormap.h"
#include "SymbolStamper.h"

#include <QApplication>
#include <QBitmap>
#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGLFormat>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>
#include <typeinfo>

namespace rkBase {

namespace {

constexpr double kNoValue = 99999.0;
const QColor kSelectedColour(255, 255, 0, 255);
const QColor kSymbolTint(183, 200, 255, 255);

inline int trunc(double v) { return static_cast<int>(v); }

// The data box of the points that can reach what the painter shows: its view in logical
// coordinates, widened by how far a symbol reaches, taken back through a pixel transform that
// maps each axis on its own. False where that cannot be known (a target that is not a raster,
// a rotating painter, a flat or undefined axis): the caller then walks every point.
bool pointsThatCanShow(QPainter* painter,
                       const std::function<void(const QPointF*, QPointF*, int)>& pixelBlock, double reach,
                       QRectF& box)
{
    const QPaintDevice* device = painter->device();
    if (!device || !pixelBlock)
        return false;
    const int type = device->devType();
    if (type != QInternal::Image && type != QInternal::Pixmap && type != QInternal::Widget)
        return false;
    const QTransform& toDevice = painter->deviceTransform();
    if (toDevice.type() > QTransform::TxScale)
        return false;
    bool invertible = false;
    const QTransform back = toDevice.inverted(&invertible);
    if (!invertible)
        return false;
    QRectF view = back.mapRect(QRectF(0.0, 0.0, device->width(), device->height()));
    if (painter->hasClipping())
        view = view.intersected(painter->clipBoundingRect());
    view.adjust(-reach, -reach, reach, reach);

    const QPointF unit[2] = {QPointF(0.0, 0.0), QPointF(1.0, 1.0)};
    QPointF pixel[2];
    pixelBlock(unit, pixel, 2);
    const double sx = pixel[1].x() - pixel[0].x();
    const double sy = pixel[1].y() - pixel[0].y();
    if (!(std::isfinite(sx) && std::isfinite(sy) && std::isfinite(pixel[0].x()) && std::isfinite(pixel[0].y()))
        || sx == 0.0 || sy == 0.0)
        return false;
    const double x0 = (view.left() - pixel[0].x()) / sx;
    const double x1 = (view.right() - pixel[0].x()) / sx;
    const double y0 = (view.top() - pixel[0].y()) / sy;
    const double y1 = (view.bottom() - pixel[0].y()) / sy;
    box = QRectF(QPointF(std::min(x0, x1), std::min(y0, y1)), QPointF(std::max(x0, x1), std::max(y0, y1)));
    return std::isfinite(box.left()) && std::isfinite(box.right()) && std::isfinite(box.top())
           && std::isfinite(box.bottom());
}

} // namespace

QChartDrawingArea::QChartDrawingArea(QWidget* parent, const QString& title)
    : QWidget(parent), m_baseTitle(title), m_stamper(std::make_unique<SymbolStamper>(&QChartDrawingArea::drawShape, &QChartDrawingArea::shapeReach))
{
    const QIcon copyIcon(QStringLiteral(":/rkview/Resources/page_copy.png"));
    m_copyAction = new QAction(copyIcon, QCoreApplication::translate("QCrossPlotWidget", "Copy"), this);
    m_copyAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+C")));
    connect(m_copyAction, SIGNAL(triggered()), this, SLOT(copyToClipboard()));
    m_copyEmfAction = new QAction(copyIcon, QCoreApplication::translate("QCrossPlotWidget", "Copy to Enhanced metafile"),
                                  this);
    m_copyEmfAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+C")));
    m_copyEmfAction->setVisible(false);
    connect(m_copyEmfAction, SIGNAL(triggered()), this, SLOT(slotCopyWEMFToClipboard()));
    m_modifyAction = new QAction(QIcon(QStringLiteral(":/rkBaseQt/Resources/table_edit.png")),
                                 QCoreApplication::translate("QChartDrawingArea", "Modify Cell(s)"), this);
    m_modifyAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+M")));
    connect(m_modifyAction, SIGNAL(triggered()), this, SIGNAL(signalBasicModifyCellValues()));
    setFocusPolicy(Qt::ClickFocus);
    createOpenGLScene();
    registerRowSetMetaType();
}

QChartDrawingArea::~QChartDrawingArea() = default;

void QChartDrawingArea::createOpenGLScene()
{
    if (m_openGLScene)
        return;
    QGLFormat format;
    format.setVersion(2, 1);
    format.setProfile(QGLFormat::CoreProfile);
    // A top-level widget that is never shown: it renders into its frame buffer object only.
    m_openGLScene = std::make_unique<OpenGLScene>(format, nullptr);
    resizeOpenGLScene(m_rasterSize);
}

const char* const QChartDrawingArea::kMetafileMimeTypes[3] = {
    "application/x-openoffice-emf;windows_formatname=\"Image EMF\"", "image/emf", "image/x-emf"};

// ---- virtual operations ----

void QChartDrawingArea::setLabelColor(const QColor& colour)
{
    m_labelColor = colour;
    if (colour.red() != 0) {
        m_backgroundColor = QColor(0, 0, 0, 255);
        m_gridColor = QColor(Qt::lightGray);
        m_lineColor = QColor(0, 255, 255, 255);
    } else {
        m_backgroundColor = QColor(255, 255, 255, 255);
        m_gridColor = QColor(Qt::gray);
        m_lineColor = QColor(Qt::darkBlue);
    }
}

void QChartDrawingArea::copyWEMFToClipboard()
{
    QGuiApplication::clipboard()->clear();
    const QByteArray metafile = toEnhancedMetafile();
    if (metafile.isEmpty())
        return;
    setMetafileOnClipboard(metafile, visibleChartImage());
}

void QChartDrawingArea::drawChart(QPainter&) {}

void QChartDrawingArea::drawAxis(QPainter&, QRect) {}

void QChartDrawingArea::redraw()
{
    m_overlayPixmap = QImage();
    if (m_chartPixmap.isNull())
        resizeRaster(false);
    m_chartPixmap.fill(m_backgroundColor);
}

void QChartDrawingArea::addToContextMenuEvent(QMenu*) {}

bool QChartDrawingArea::symbolAttributeIsOn() { return false; }

bool QChartDrawingArea::colorAttributeIsOn() { return false; }

QPointF QChartDrawingArea::transformInPixelPoint(const QPointF&) { return QPointF(0.0, 0.0); }

void QChartDrawingArea::resizeRaster(bool heightOnly)
{
    QSize size = heightOnly ? QSize(width(), trunc(height() * m_zoomFactor)) : this->size() * m_zoomFactor;
    m_rasterSize = size.expandedTo(QSize(1, 1));
    resizeOpenGLScene(m_rasterSize);
    // Only what the widget shows is kept: a zoomed chart is drawn through its scroll offsets.
    m_chartPixmap = QImage(this->size().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    m_chartPixmap.fill(m_backgroundColor);
    m_overlayPixmap = QImage();
    m_redrawNeeded = true;
}

int QChartDrawingArea::scrollOffset(int percent, int rasterExtent, int widgetExtent) const
{
    return m_zoomFactor == 1.0 ? 0 : trunc(percent / 100.0 * (rasterExtent - widgetExtent));
}

void QChartDrawingArea::setScrollOffsets(int x, int y)
{
    if (x == m_xOffsetPixels && y == m_yOffsetPixels)
        return;
    m_xOffsetPixels = x;
    m_yOffsetPixels = y;
    // The raster holds only the visible window of the chart: another window is another picture.
    m_redrawNeeded = true;
}

void QChartDrawingArea::zoom(double factor)
{
    m_zoomFactor = factor;
    resizeRaster(false);
    setScrollOffsets(scrollOffset(m_xOffsetPercent, m_rasterSize.width(), width()),
                     scrollOffset(m_yOffsetPercent, m_rasterSize.height(), height()));
    update();
}

void QChartDrawingArea::zoomY(double factor)
{
    m_zoomFactor = factor;
    resizeRaster(true);
    setScrollOffsets(0, scrollOffset(m_yOffsetPercent, m_rasterSize.height(), height()));
    update();
}

void QChartDrawingArea::xoffset(int percent)
{
    m_xOffsetPercent = percent;
    setScrollOffsets(scrollOffset(percent, m_rasterSize.width(), width()), m_yOffsetPixels);
    update();
}

void QChartDrawingArea::yoffset(int percent)
{
    m_yOffsetPercent = percent;
    setScrollOffsets(m_xOffsetPixels, scrollOffset(percent, m_rasterSize.height(), height()));
    update();
}

void QChartDrawingArea::enableMouseZoom(bool on) { m_mouseZoomEnabled = on; }

// ---- plain operations ----

QRect QChartDrawingArea::pixmapRect() const { return QRect(QPoint(m_xOffsetPixels, m_yOffsetPixels), size()); }

void QChartDrawingArea::resizeOpenGLScene(const QSize& size)
{
    // The scene's picture is stretched over its rectangle, so a zoomed chart need not render
    // a frame buffer of the zoomed size (at zoom 20 that would be gigabytes).
    if (m_openGLScene)
        m_openGLScene->resize(size.boundedTo(QSize(kMaxSceneExtent, kMaxSceneExtent)));
}

void QChartDrawingArea::beginRasterPainter(QPainter& painter, QImage& image) const
{
    painter.begin(&image);
    painter.translate(-m_xOffsetPixels, -m_yOffsetPixels);
}

std::size_t QChartDrawingArea::rasterMemoryBytes() const
{
    return std::size_t(m_chartPixmap.sizeInBytes()) + std::size_t(m_overlayPixmap.sizeInBytes());
}

void QChartDrawingArea::allowCopyToWMF(bool on) { m_copyEmfAction->setVisible(on); }

void QChartDrawingArea::changeHeaderTitle(const QString& text)
{
    m_headerTitle = text.isEmpty() ? QString() : m_baseTitle + QStringLiteral(": ") + text;
}

void QChartDrawingArea::updateChart()
{
    if (m_redrawOnlyWhenShown && !isVisible()) {
        scheduleRedraw();
        return;
    }
    redraw();
    m_redrawNeeded = false;
    update();
}

QImage& QChartDrawingArea::beginOverlay()
{
    if (m_redrawNeeded) {
        redraw();
        m_redrawNeeded = false;
    }
    m_overlayPixmap = m_chartPixmap.copy();
    return m_overlayPixmap;
}

void QChartDrawingArea::copyWidgetToClipboard(QWidget* widget)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    QPixmap pixmap = widget->grab(QRect(QPoint(0, 0), QSize(-1, -1)));
    const QImage image = pixmap.toImage();
    pixmap.convertFromImage(image);
    clipboard->setPixmap(pixmap);
}

QByteArray QChartDrawingArea::toEnhancedMetafile(const QString& fileName)
{
    EMFDevice device(fileName);
    device.setClipRect(pixmapRect());
    const bool wasPainting = m_paintingToWEMF;
    m_paintingToWEMF = true;
    {
        QPainter painter(&device);
        // A painter starts without a brush but does not say so, and the engine starts with a
        // white one: without this, a chart's first unfilled shape would be filled white.
        painter.setBrush(Qt::white);
        painter.setBrush(Qt::NoBrush);
        drawChart(painter);
        drawAxis(painter, pixmapRect());
    }
    m_paintingToWEMF = wasPainting;
    return device.bytes();
}

QImage QChartDrawingArea::visibleChartImage()
{
    if (m_redrawNeeded || m_chartPixmap.isNull()) {
        redraw();
        m_redrawNeeded = false;
    }
    return m_chartPixmap.convertToFormat(QImage::Format_ARGB32);
}

void QChartDrawingArea::setMetafileOnClipboard(const QByteArray& metafile, const QImage& picture)
{
    auto* data = new QMimeData;
    // Office programs here take the vectors only from the first type; the others name the same
    // bytes for programs that look for them, and the picture serves everything else.
    for (const char* type : kMetafileMimeTypes)
        data->setData(QString::fromLatin1(type), metafile);
    if (!picture.isNull()) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        picture.save(&buffer, "PNG");
        data->setData(QStringLiteral("image/png"), png);
    }
    QGuiApplication::clipboard()->setMimeData(data);
}

void QChartDrawingArea::copyToClipboard()
{
    copyWidgetToClipboard(this);
    emit signalCopyToClipboard();
}

void QChartDrawingArea::slotCopyWEMFToClipboard() { copyWEMFToClipboard(); }

// ---- events ----

void QChartDrawingArea::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    // A hidden widget gets its pending resize again at every grab; the raster is still good then.
    if (!m_chartPixmap.isNull() && m_chartPixmap.size() == size().expandedTo(QSize(1, 1)) &&
        m_rasterSize == (size() * m_zoomFactor).expandedTo(QSize(1, 1)))
        return;
    resizeRaster(false);
    update();
}

void QChartDrawingArea::paintEvent(QPaintEvent*)
{
    if (m_redrawNeeded) {
        redraw();
        m_redrawNeeded = false;
    }
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.fillRect(rect(), palette().brush(backgroundRole()));
    const QImage& shown = m_overlayPixmap.isNull() ? m_chartPixmap : m_overlayPixmap;
    painter.drawImage(QPointF(0, 0), shown);
}

void QChartDrawingArea::wheelEvent(QWheelEvent* event)
{
    const QPoint delta = event->angleDelta();
    if (!m_mouseZoomEnabled || std::abs(delta.y()) < std::abs(delta.x())) {
        event->ignore();
        return;
    }
    const int steps = delta.y() / 8 / 15;
    const double zoomed = std::clamp(m_zoomFactor + steps * 0.1, 1.0, 20.0);
    if (zoomed != m_zoomFactor) {
        zoom(zoomed);
        emit zoomChanged(m_zoomFactor);
    }
    event->accept();
}

void QChartDrawingArea::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Slash)
        zoom(1.0);
    QWidget::keyPressEvent(event);
}

void QChartDrawingArea::keyReleaseEvent(QKeyEvent* event)
{
    const Qt::KeyboardModifiers mods = event->modifiers() & ~Qt::KeypadModifier;
    if (event->key() == Qt::Key_C && mods == Qt::ControlModifier)
        copyToClipboard();
    else if (event->key() == Qt::Key_C && mods == (Qt::ControlModifier | Qt::ShiftModifier))
        copyWEMFToClipboard();
    else if (event->key() == Qt::Key_M && mods == Qt::ControlModifier)
        emit signalBasicModifyCellValues();
    QWidget::keyReleaseEvent(event);
}

QMenu* QChartDrawingArea::createContextMenu()
{
    auto* menu = new QMenu(this);
    menu->addAction(m_copyAction);
    menu->addAction(m_copyEmfAction);
    if (m_showModifyAction)
        menu->addAction(m_modifyAction);
    addToContextMenuEvent(menu);
    menu->setDefaultAction(m_copyAction);
    return menu;
}

void QChartDrawingArea::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createContextMenu();
    menu->exec(event->globalPos());
    delete menu;
}

// ---- symbols ----

void QChartDrawingArea::drawCircle(const QPointF& pos, int s, QPainter* painter)
{
    painter->drawEllipse(QRect(trunc(pos.x() - s), trunc(pos.y() - s), 2 * s + 1, 2 * s + 1));
}

void QChartDrawingArea::drawRectangle(const QPointF& pos, int s, QPainter* painter)
{
    painter->drawRect(QRect(trunc(pos.x() - s), trunc(pos.y() - s), 2 * s + 1, 2 * s + 1));
}

void QChartDrawingArea::drawCross(const QPointF& pos, int s, QPainter* painter)
{
    const double px = pos.x(), py = pos.y();
    const QLine lines[2] = {QLine(trunc(px - s), trunc(py), trunc(px + s), trunc(py)),
                            QLine(trunc(px), trunc(py - s), trunc(px), trunc(py + s))};
    painter->drawLines(lines, 2);
}

void QChartDrawingArea::drawTriangle(const QPointF& pos, int s, QPainter* painter)
{
    const double px = pos.x(), py = pos.y();
    const QPoint p[3] = {QPoint(trunc(px), trunc(py - s)), QPoint(trunc(px + s + 1), trunc(py + s)),
                         QPoint(trunc(px - s - 1), trunc(py + s))};
    painter->drawPolygon(p, 3, Qt::OddEvenFill);
}

void QChartDrawingArea::drawTriangle2(const QPointF& pos, int s, QPainter* painter)
{
    const double px = pos.x(), py = pos.y();
    const QPoint p[3] = {QPoint(trunc(px), trunc(py + s)), QPoint(trunc(px - s - 1), trunc(py - s)),
                         QPoint(trunc(px + s + 1), trunc(py - s))};
    painter->drawPolygon(p, 3, Qt::OddEvenFill);
}

void QChartDrawingArea::drawDiamond(const QPointF& pos, int s, QPainter* painter)
{
    const double r = s + 1;
    const int a = static_cast<int>(std::floor(pos.x() + std::cos(-1.57079632679) * r));
    const int b = static_cast<int>(std::floor(pos.y() + std::sin(-1.57079632679) * r));
    const int c = static_cast<int>(std::floor(pos.x() + r));
    const int d = static_cast<int>(std::floor(pos.y()));
    const QPoint p[4] = {QPoint(a, b), QPoint(c, d), QPoint(a, 2 * d - b), QPoint(2 * a - c, d)};
    painter->drawPolygon(p, 4, Qt::WindingFill);
}

void QChartDrawingArea::drawBigCross(const QPointF& pos, int s, QPainter* painter)
{
    const int h = s / 2;
    const int x = trunc(pos.x() - h);
    const int y = trunc(pos.y() - s - h);
    const QPoint p[12] = {QPoint(x, y),                 QPoint(x + s, y),         QPoint(x + s, y + s),
                          QPoint(x + 2 * s, y + s),     QPoint(x + 2 * s, y + 2 * s), QPoint(x + s, y + 2 * s),
                          QPoint(x + s, y + 3 * s),     QPoint(x, y + 3 * s),     QPoint(x, y + 2 * s),
                          QPoint(x - s, y + 2 * s),     QPoint(x - s, y + s),     QPoint(x, y + s)};
    painter->drawPolygon(p, 12, Qt::OddEvenFill);
}

void QChartDrawingArea::drawBigCross45(const QPointF& pos, int s, QPainter* painter)
{
    const int a = s < 4 ? s : s - 1;
    const int b = a / 2 + 2;
    const int x = trunc(pos.x() - b);
    const int y = trunc(pos.y() - a - b);
    const QPoint p[12] = {QPoint(x, y),
                          QPoint(x + b, y + b),
                          QPoint(x + 2 * b, y),
                          QPoint(x + 2 * b + a, y + a),
                          QPoint(x + b + a, y + a + b),
                          QPoint(x + 2 * b + a, y + a + 2 * b),
                          QPoint(x + 2 * b, y + 2 * a + 2 * b),
                          QPoint(x + b, y + 2 * a + b),
                          QPoint(x, y + 2 * a + 2 * b),
                          QPoint(x - a, y + a + 2 * b),
                          QPoint(x - a + b, y + a + b),
                          QPoint(x - a, y + a)};
    painter->drawPolygon(p, 12, Qt::OddEvenFill);
}

void QChartDrawingArea::drawPolygon(const QPointF& pos, int s, int corners, QPainter* painter)
{
    if (corners < 1)
        return;
    const double r = s + 2;
    QPolygon polygon;
    polygon.reserve(corners);
    double angle = -1.57079632679;
    for (int i = 0; i < corners; ++i, angle += 6.28318530716 / corners)
        polygon << QPoint(trunc(pos.x() + std::cos(angle) * r), trunc(pos.y() + std::sin(angle) * r));
    painter->drawPolygon(polygon, Qt::OddEvenFill);
}

void QChartDrawingArea::drawShape(const QPointF& pos, int style, int size, QPainter* painter)
{
    switch (style) {
    case QRelationshipItemModel::Circle:
    case QRelationshipItemModel::Ring:
        drawCircle(pos, size, painter);
        break;
    case QRelationshipItemModel::Cross:
        drawCross(pos, size, painter);
        break;
    case QRelationshipItemModel::Square:
    case QRelationshipItemModel::Square1:
        drawRectangle(pos, size, painter);
        break;
    case QRelationshipItemModel::Triangle1:
    case QRelationshipItemModel::Triangle3:
        drawTriangle(pos, size, painter);
        break;
    case QRelationshipItemModel::Triangle2:
    case QRelationshipItemModel::Triangle4:
        drawTriangle2(pos, size, painter);
        break;
    case QRelationshipItemModel::Diamond:
    case QRelationshipItemModel::Diamond1:
        drawDiamond(pos, size, painter);
        break;
    case QRelationshipItemModel::BigCross1:
    case QRelationshipItemModel::BigCross3:
        drawBigCross(pos, size, painter);
        break;
    case QRelationshipItemModel::BigCross2:
    case QRelationshipItemModel::BigCross4:
        drawBigCross45(pos, size, painter);
        break;
    case QRelationshipItemModel::Dot:
        painter->drawPoint(QPoint(trunc(pos.x()), trunc(pos.y())));
        break;
    default:
        drawCircle(pos, size, painter);
        break;
    }
}

int QChartDrawingArea::shapeReach(int style, int size)
{
    const int s = std::abs(size);
    switch (style) {
    case QRelationshipItemModel::Cross:
    case QRelationshipItemModel::Square:
    case QRelationshipItemModel::Square1:
        return s;
    case QRelationshipItemModel::Triangle1:
    case QRelationshipItemModel::Triangle3:
    case QRelationshipItemModel::Triangle2:
    case QRelationshipItemModel::Triangle4:
        return s + 1;
    case QRelationshipItemModel::Dot:
        return 0;
    default:
        // Circles as cross and square; the diamond floors; the big crosses and polygons reach
        // at most 2 * size + 2.
        return 2 * s + 4;
    }
}

void QChartDrawingArea::drawOneSymbol(const QPointF& pos, int style, const QColor& colour, int size,
                                      QPainter* painter)
{
    switch (style) {
    case QRelationshipItemModel::Cross:
        painter->setBrush(Qt::NoBrush);
        break;
    case QRelationshipItemModel::Square1:
        painter->setBrush(m_backgroundColor);
        break;
    case QRelationshipItemModel::Triangle3:
    case QRelationshipItemModel::Triangle4:
    case QRelationshipItemModel::Diamond1:
    case QRelationshipItemModel::Ring:
    case QRelationshipItemModel::BigCross3:
    case QRelationshipItemModel::BigCross4:
        break; // the caller's brush
    case QRelationshipItemModel::Dot: {
        QPen pen = painter->pen();
        pen.setColor(colour);
        pen.setWidthF(size);
        painter->setPen(pen);
        painter->setBrush(Qt::NoBrush);
        break;
    }
    default:
        painter->setBrush(colour);
        break;
    }
    if (!(m_stamper->isActive() && m_stamper->stamp(pos, style, size, painter)))
        drawShape(pos, style, size, painter);
}

void QChartDrawingArea::drawPoint(const QPointF& pos, QPainter* painter)
{
    if (!m_model)
        return;
    const int style = m_model->pointStyle();
    const int size = m_model->pointPixelSize();
    if (!(m_stamper->isActive() && m_stamper->stamp(pos, style, size, painter)))
        drawShape(pos, style, size, painter);
}

void QChartDrawingArea::setPointPen(QPainter* painter)
{
    const bool dot = m_model && m_model->pointStyle() == QRelationshipItemModel::Dot;
    const double width = dot ? m_model->pointPixelSize() : 2.0;
    painter->setPen(makePen(m_pointFillColor, width, Qt::SquareCap, Qt::MiterJoin));
    const bool outlined = m_model && m_model->outLinePointStyle();
    painter->setBrush(outlined ? m_backgroundColor : m_pointFillColor);
}

int QChartDrawingArea::modelPointSize() const { return m_model ? m_model->pointPixelSize() : 3; }

bool QChartDrawingArea::stressOverlayOn() const
{
    return m_model && m_model->filledStressFieldIsOn() && m_model->showStressState();
}

void QChartDrawingArea::drawSymbols(const QPointF& pos, int id, const QColor& colour, bool selected,
                                    const QColor& selectedColour, int, QPainter* painter)
{
    const int size = modelPointSize();
    if (id == -1) {
        painter->setPen(makePen(m_labelColor, 2.0));
        if (!(m_stamper->isActive() && m_stamper->stamp(pos, QRelationshipItemModel::Cross, size, painter)))
            drawCross(pos, size, painter);
        return;
    }
    painter->setPen(makePen(selected ? selectedColour : colour, 2.0));
    painter->setBrush(m_backgroundColor);
    drawOneSymbol(pos, id, colour, size, painter);
}

void QChartDrawingArea::drawDefaultSymbols(const QPointF& pos, int id, const QColor& colour, bool selected,
                                           const QColor& selectedColour, int widthHint, QPainter* painter)
{
    if (!m_model)
        return;
    const int size = m_model->pointPixelSize();
    if (id == -1) {
        drawSymbols(pos, id, colour, selected, selectedColour, widthHint, painter);
        return;
    }
    QColor pen = colour;
    if (selected)
        pen = selectedColour;
    else if (stressOverlayOn() && !symbolAttributeIsOn())
        pen = m_labelColor;
    painter->setPen(makePen(pen, 2.0));
    drawOneSymbol(pos, m_model->pointStyle(), colour, size, painter);
}

QPixmap QChartDrawingArea::getSymbolPixmap(int style, const QColor& colour)
{
    int savedSize = 0;
    QRelationshipItemModel::PointStyle savedStyle = QRelationshipItemModel::Cross;
    if (m_model) {
        savedSize = m_model->pointPixelSize();
        savedStyle = m_model->pointStyle();
        m_model->setPointStyle(static_cast<QRelationshipItemModel::PointStyle>(style));
        m_model->setPointPixelSize(3);
    }
    const bool savedColorOnly = m_symbolColorOnly;
    m_symbolColorOnly = true;
    int id = 0;
    QPixmap pixmap = getSymbolPixmap(id, colour, true);
    pixmap.setMask(pixmap.createHeuristicMask(true));
    m_symbolColorOnly = savedColorOnly;
    if (m_model) {
        m_model->setPointStyle(savedStyle);
        m_model->setPointPixelSize(savedSize);
    }
    return pixmap;
}

QPixmap QChartDrawingArea::symbolPixmap(int style)
{
    const bool outline = style == QRelationshipItemModel::Cross || (style >= 8 && style <= 15);
    return getSymbolPixmap(style, outline ? QColor(Qt::black) : kSymbolTint);
}

QPixmap QChartDrawingArea::getSymbolPixmap(int& id, const QColor& colour, bool useId)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(8, 8);
    const QColor selectedColour(Qt::black);
    int savedSize = 0;
    if (m_model) {
        savedSize = m_model->pointPixelSize();
        m_model->setPointPixelSize(std::min(savedSize, 6));
    }
    if (symbolAttributeIsOn() && colorAttributeIsOn() && m_model) {
        if (!useId)
            drawDefaultSymbols(centre, m_model->pointStyle(), colour, !m_model->outLinePointStyle(), selectedColour, 1,
                               &painter);
        else
            drawSymbols(centre, id, kSymbolTint, true, selectedColour, 1, &painter);
    } else if (!useId && m_model) {
        drawSymbols(centre, m_model->pointStyle(), colour, false, selectedColour, 1, &painter);
    } else if (useId && m_symbolColorOnly && m_model) {
        drawDefaultSymbols(centre, id, colour, !m_model->outLinePointStyle(), selectedColour, 1, &painter);
    } else {
        drawSymbols(centre, id, colour, false, selectedColour, 1, &painter);
    }
    if (m_model)
        m_model->setPointPixelSize(savedSize);
    return pixmap;
}

void QChartDrawingArea::initializePointSytleComboBox(QComboBox* combo, bool withOutlined)
{
    if (!combo)
        return;
    struct Entry {
        const char* text;
        int style;
    };
    static const Entry filled[] = {{"Cross", 1},     {"Circle", 0},    {"Square", 2},    {"Triangle1", 3},
                                   {"Triangle2", 4}, {"Diamond", 5},   {"BigCross1", 6}, {"BigCross2", 7}};
    static const Entry outlined[] = {{"Ring", 12},      {"Square1", 8},   {"Triangle3", 9}, {"Triangle4", 10},
                                     {"Diamond1", 11},  {"BigCross3", 14}, {"BigCross4", 15}};
    for (const Entry& e : filled)
        combo->addItem(QIcon(symbolPixmap(e.style)), QString::fromLatin1(e.text), e.style);
    if (withOutlined)
        for (const Entry& e : outlined)
            combo->addItem(QIcon(symbolPixmap(e.style)), QString::fromLatin1(e.text), e.style);
}

// ---- the point walk ----

template <class Draw, class DrawRun>
void QChartDrawingArea::walkPoints(QPainter* painter, Draw&& draw, bool onlyPoints, DrawRun&& drawRun)
{
    if (!m_model || !painter)
        return;
    const bool stamping = m_symbolStamping && m_stamper->begin(painter);
    if (stamping && onlyPoints)
        m_stamper->setSkipRepeats(true);
    const auto displayType = m_model->displayType();
    const int rows = m_model->rowCount();

    // Where the model is the plain one over a stored point column, the points come straight
    // from their cells, as its data() would give them, and go through the pixel transform a
    // block at a time. A row has no point only where its cell is blank; a QVariant of a point at
    // the origin reports isNull() and still holds a point.
    const std::uint8_t* valid = nullptr;
    int stored = 0;
    const QPointF* cells = modelPointCells(valid, stored);
    const bool typed = cells != nullptr;
    // A symbol and its tadpole tail stay well within this many pixels of their point.
    QRectF shown;
    const bool cull = typed && m_pixelBlockIsAxisAffine
                      && pointsThatCanShow(painter, m_pixelBlock, 32.0 + 4.0 * modelPointSize(), shown);
    const double left = shown.left(), right = shown.right(), top = shown.top(), bottom = shown.bottom();
    constexpr int kBlock = 512;
    std::vector<QPointF> points(typed ? kBlock : 0);
    std::vector<QPointF> pixels(typed ? kBlock : 0);
    std::vector<int> blockRows(typed ? kBlock : 0);
    int n = 0;
    const auto flush = [&](bool second) {
        transformInPixelPoints(points.data(), pixels.data(), n);
        if constexpr (std::is_same_v<std::decay_t<DrawRun>, std::nullptr_t>) {
            for (int j = 0; j < n; ++j)
                draw(blockRows[std::size_t(j)], pixels[std::size_t(j)], second);
        } else {
            drawRun(pixels.data(), n, second);
        }
        n = 0;
    };
    const auto visit = [&](int row, bool second) {
        if (typed) {
            if (row >= stored || !valid[row])
                return;
            if (cull) {
                const QPointF& p = cells[row];
                if (!(p.x() >= left && p.x() <= right && p.y() >= top && p.y() <= bottom))
                    return;
            }
            points[std::size_t(n)] = cells[row];
            blockRows[std::size_t(n)] = row;
            if (++n == kBlock)
                flush(second);
            return;
        }
        const QVariant v = m_model->data(m_model->index(row, 0));
        if (v.isValid())
            draw(row, transformInPixelPoint(v.toPointF()), second);
    };

    // isSelected() of the model, inline: it is asked twice for every row.
    const boost::dynamic_bitset<>& selection = m_model->selection();
    const auto selected = [&](int row) {
        const int t = m_model->tableRow(row);
        return t >= 0 && std::size_t(t) < selection.size() && selection.test(std::size_t(t));
    };
    // Rows a block at a time, passing over the blocks whose points all lie outside the view.
    const std::vector<PointBlockBounds::Box>* boxes =
        cull ? &m_pointBlockBounds.boxes(cells, valid, stored, m_model->dataRevision()) : nullptr;
    const auto forEachRow = [&](auto&& body) {
        constexpr int kRows = PointBlockBounds::kBlockRows;
        for (int begin = 0; begin < rows; begin += kRows) {
            if (boxes) {
                if (begin >= stored)
                    break;
                if (!(*boxes)[std::size_t(begin / kRows)].meets(left, top, right, bottom))
                    continue;
            }
            const int end = std::min(rows, begin + kRows);
            for (int row = begin; row < end; ++row)
                body(row);
        }
    };
    if (displayType != QRelationshipItemModel::ShowSelectedOnly) {
        const bool skipSelected = displayType == QRelationshipItemModel::HighlightSelected;
        forEachRow([&](int row) {
            if (!(skipSelected && selected(row)))
                visit(row, false);
        });
        flush(false);
    }
    if (displayType != QRelationshipItemModel::ShowAll && m_model->partSelection()) {
        if (displayType == QRelationshipItemModel::HighlightSelected)
            painter->setPen(makePen(kSelectedColour, 2.0, Qt::SquareCap, Qt::BevelJoin));
        forEachRow([&](int row) {
            if (selected(row))
                visit(row, true);
        });
        flush(true);
    }
    if (stamping)
        m_stamper->end();
}

const QPointF* QChartDrawingArea::modelPointCells(const std::uint8_t*& valid, int& stored) const
{
    valid = nullptr;
    stored = 0;
    if (!m_model)
        return nullptr;
    const MatrixDataArray* list = m_model->data();
    const CellColumn* column = list ? list->cellColumn(0) : nullptr;
    const bool typed = typeid(*m_model) == typeid(QRelationshipItemModel) && column
                       && column->type() == QVariant::PointF && column->pointData()
                       && (typeid(*list) == typeid(MatrixDataArray) || typeid(*list) == typeid(MatrixData));
    if (!typed)
        return nullptr;
    valid = column->validData();
    stored = column->size();
    return column->pointData();
}

void QChartDrawingArea::transformInPixelPoints(const QPointF* data, QPointF* pixels, int count)
{
    if (m_pixelBlock) {
        m_pixelBlock(data, pixels, count);
        return;
    }
    for (int i = 0; i < count; ++i)
        pixels[i] = transformInPixelPoint(data[i]);
}

void QChartDrawingArea::drawPoints(QPainter* painter)
{
    if (!m_model)
        return;
    const bool symbolOn = m_model->symbolAttributeIsOn();
    const bool colourOn = m_model->colorAttributeIsOn();
    if (!symbolOn && !colourOn) {
        if (m_model->tadpoleAttributeIsOn())
            drawPointsWith_tadpoles(painter);
        else
            drawPlainPoints(painter);
    } else if (m_model->colorClasses() && m_model->colorClasses()->cellType() == QVariant::Color) {
        if (symbolOn)
            drawPointsWithTypeColorAttributeAndSymbol(painter);
        else
            drawPointsWithTypeColorAttribute(painter);
    } else if (colourOn && symbolOn) {
        drawPointsWith_symbol_and_color_attribute(painter);
    } else if (colourOn) {
        drawPointsWith_color_attribute(painter);
    } else if (m_symbolColorOnly) {
        drawPointsWith_symbol_attribute2(painter);
    } else {
        drawPointsWith_symbol_attribute1(painter);
    }
}

void QChartDrawingArea::drawPlainPoints(QPainter* painter)
{
    if (!m_model)
        return;
    // drawPoint with the symbol read once: the walk asks for a million points.
    const int style = m_model->pointStyle();
    const int size = m_model->pointPixelSize();
    SymbolStamper* stamper = m_stamper.get();
    walkPoints(
        painter,
        [&](int, const QPointF& pixel, bool) {
            if (!(stamper->isActive() && stamper->stamp(pixel, style, size, painter)))
                drawShape(pixel, style, size, painter);
        },
        true,
        [&](const QPointF* pixels, int count, bool) {
            int done = 0;
            while (done < count) {
                if (stamper->isActive())
                    done += stamper->stampRun(pixels + done, count - done, style, size, painter);
                if (done < count)
                    drawShape(pixels[done++], style, size, painter);
            }
        });
}

void QChartDrawingArea::drawPointsWith_tadpoles(QPainter* painter)
{
    const int size = modelPointSize();
    walkPoints(painter, [&](int row, const QPointF& pixel, bool) {
        drawTadPole(pixel, m_model->azimuthTadPole(row), painter->pen().color(), size, painter);
    });
}

void QChartDrawingArea::drawPointsWith_color_attribute(QPainter* painter)
{
    const bool tadpoles = m_model->tadpoleAttributeIsOn();
    const bool stress = stressOverlayOn();
    const bool highlight = m_model->displayType() == QRelationshipItemModel::HighlightSelected;
    const int size = modelPointSize();
    QColor colour;
    walkPoints(painter, [&](int row, const QPointF& pixel, bool second) {
        const int id = m_model->getColor(row, colour);
        if (!second) {
            if (stress)
                colour = m_backgroundColor;
            if (tadpoles)
                drawTadPole(pixel, m_model->azimuthTadPole(row), colour, size, painter);
            else
                drawDefaultSymbols(pixel, id, colour, false, kSelectedColour, 1, painter);
        } else if (tadpoles) {
            drawColorFilledTadPole(pixel, m_model->azimuthTadPole(row), id, colour, highlight, kSelectedColour, 1,
                                   painter);
        } else {
            drawDefaultSymbols(pixel, id, colour, highlight, kSelectedColour, 1, painter);
        }
    });
}

void QChartDrawingArea::drawPointsWith_symbol_attribute1(QPainter* painter)
{
    const bool highlight = m_model->displayType() == QRelationshipItemModel::HighlightSelected;
    QColor colour;
    walkPoints(painter, [&](int row, const QPointF& pixel, bool second) {
        const int id = m_model->getColor(row, colour);
        drawDefaultSymbols(pixel, id, colour, second && highlight, kSelectedColour, 2, painter);
    });
}

void QChartDrawingArea::drawPointsWith_symbol_attribute2(QPainter* painter)
{
    const bool highlight = m_model->displayType() == QRelationshipItemModel::HighlightSelected;
    QColor colour;
    walkPoints(painter, [&](int row, const QPointF& pixel, bool second) {
        const int id = m_model->getColor(row, colour);
        drawSymbols(pixel, id, colour, second && highlight, kSelectedColour, 2, painter);
    });
}

void QChartDrawingArea::drawPointsWith_symbol_and_color_attribute(QPainter* painter)
{
    const bool highlight = m_model->displayType() == QRelationshipItemModel::HighlightSelected;
    const bool stress = stressOverlayOn();
    QColor colour;
    int colourClass = -1;
    walkPoints(painter, [&](int row, const QPointF& pixel, bool second) {
        int id = m_model->getColorAndSymbolInfo(row, colour, colourClass);
        if (stress)
            id = m_model->getSymbolColor(row, colour);
        if (m_symbolColorOnly)
            id = 1;
        drawSymbols(pixel, id, colour, second && highlight, kSelectedColour, 3, painter);
    });
}

void QChartDrawingArea::drawPointsWithTypeColorAttribute(QPainter* painter)
{
    const bool tadpoles = m_model->tadpoleAttributeIsOn();
    const bool highlight = m_model->displayType() == QRelationshipItemModel::HighlightSelected;
    MatrixData* colourNode = m_model->colorAttributeNode();
    MatrixDataArray* classes = m_model->colorClasses();
    const int size = modelPointSize();
    walkPoints(painter, [&](int row, const QPointF& pixel, bool second) {
        const QString text = classes ? classes->value(row, 1).toString() : QString();
        // A model not told its colour node still has the colour's name in the label.
        const QColor colour = colourNode ? colourNode->color(text) : QColor(text);
        const int id = classes ? classes->value(row, 0).toString().toInt() : -1;
        if (tadpoles) {
            // Both passes draw plain tadpoles: a selected one keeps the pen of the walk.
            drawTadPole(pixel, m_model->azimuthTadPole(row), colour, size, painter);
        } else {
            drawDefaultSymbols(pixel, id, colour, second && highlight, kSelectedColour, 1, painter);
        }
    });
}

void QChartDrawingArea::drawPointsWithTypeColorAttributeAndSymbol(QPainter* painter)
{
    const bool highlight = m_model->displayType() == QRelationshipItemModel::HighlightSelected;
    MatrixData* colourNode = m_model->colorAttributeNode();
    QColor colour;
    walkPoints(painter, [&](int row, const QPointF& pixel, bool second) {
        const int id = m_model->getColor(row, colour);
        const QString name = m_model->getColorName(row).toString();
        colour = colourNode ? colourNode->color(name) : QColor(name);
        drawSymbols(pixel, id, colour, second && highlight, kSelectedColour, 3, painter);
    });
}

void QChartDrawingArea::drawTadPole(const QPointF& pos, double azimuth, const QColor& colour, int size,
                                    QPainter* painter)
{
    if (azimuth == kNoValue)
        return;
    painter->setBrush(colour);
    drawCircle(pos, size, painter);
    const double t = (azimuth - 90.0) * M_PI / 180.0;
    const QPointF dir(std::cos(t), std::sin(t));
    const QPointF from = pos + size * dir;
    const QPointF to = pos + (2.0 * size + 10.0) * dir;
    if (from.x() >= 0 && from.y() >= 0 && to.x() >= 0 && to.y() >= 0)
        painter->drawLine(from, to);
}

void QChartDrawingArea::drawColorFilledTadPole(const QPointF& pos, double azimuth, int id, const QColor& colour,
                                               bool selected, const QColor& selectedColour, int, QPainter* painter)
{
    if (azimuth == kNoValue)
        return;
    const int size = modelPointSize();
    if (id == -1) {
        painter->setPen(makePen(m_labelColor, 2.0));
        drawCross(pos, size, painter);
        return;
    }
    painter->setPen(makePen(selected ? selectedColour : colour, 2.0));
    drawTadPole(pos, azimuth, colour, size, painter);
}

// ---- single results ----

namespace {

// A limit of -1 means none; otherwise a point whose dip (or 90 - dip) exceeds it is left out.
bool beyondLimit(const QPointF& data, double limit, bool flip)
{
    if (limit == -1.0)
        return false;
    const double x = flip ? 90.0 - data.x() : data.x();
    return limit < x;
}

// Keeps the model's symbol while a result is drawn with another.
class SymbolOverride
{
public:
    SymbolOverride(QRelationshipItemModel* model) : m_model(model)
    {
        if (m_model) {
            m_size = m_model->pointPixelSize();
            m_style = m_model->pointStyle();
        }
    }
    ~SymbolOverride()
    {
        if (m_model) {
            m_model->setPointPixelSize(m_size);
            m_model->setPointStyle(m_style);
        }
    }
    void set(int style, int size)
    {
        if (m_model) {
            m_model->setPointStyle(static_cast<QRelationshipItemModel::PointStyle>(style));
            m_model->setPointPixelSize(size);
        }
    }
    int size() const { return m_model ? m_size : 2; }

private:
    QRelationshipItemModel* m_model;
    int m_size = 2;
    QRelationshipItemModel::PointStyle m_style = QRelationshipItemModel::Cross;
};

} // namespace

void QChartDrawingArea::drawPoint(QPainter* painter, const QPointF& data, const QColor& fill, const QColor& outline,
                                  double limit, bool flip)
{
    drawPoint(painter, data, fill, outline, modelPointSize(), limit, flip);
}

void QChartDrawingArea::drawPoint(QPainter* painter, const QPointF& data, const QColor& fill, const QColor& outline,
                                  int size, double limit, bool flip)
{
    if (beyondLimit(data, limit, flip))
        return;
    SymbolOverride keep(m_model);
    keep.set(QRelationshipItemModel::Circle, size);
    painter->setPen(makePen(outline, 2.0, Qt::SquareCap, Qt::MiterJoin));
    painter->setBrush(fill);
    drawShape(transformInPixelPoint(data), QRelationshipItemModel::Circle, size, painter);
}

void QChartDrawingArea::drawPointWithLabel(QPainter* painter, const QPointF& data, const QColor& colour,
                                           const QString& label, double limit, bool flip)
{
    if (beyondLimit(data, limit, flip))
        return;
    {
        SymbolOverride keep(m_model);
        const int size = keep.size() + 1;
        keep.set(QRelationshipItemModel::Circle, size);
        painter->setPen(makePen(Qt::black, 2.0));
        painter->setBrush(colour);
        drawShape(transformInPixelPoint(data), QRelationshipItemModel::Circle, size, painter);
    }
    if (m_showLabels)
        drawLabel(painter, data, label);
}

void QChartDrawingArea::drawResultPoint(QPainter* painter, const QPointF& data, const QColor& colour,
                                        const QString& label, double limit, bool flip)
{
    if (beyondLimit(data, limit, flip))
        return;
    {
        SymbolOverride keep(m_model);
        const QPointF pixel = transformInPixelPoint(data);
        const int size = keep.size() + 1;
        keep.set(QRelationshipItemModel::Circle, size);
        painter->setPen(makePen(Qt::lightGray, 2.0));
        painter->setBrush(colour);
        drawShape(pixel, QRelationshipItemModel::Circle, size, painter);
        // A white cross in the disc, so that a result never reads as a data point.
        const int crossSize = keep.size() < 9 ? 3 : keep.size() - 3;
        keep.set(QRelationshipItemModel::Cross, crossSize);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(makePen(Qt::white, 1.0));
        drawShape(pixel, QRelationshipItemModel::Cross, crossSize, painter);
    }
    if (m_showLabels)
        drawLabel(painter, data, label);
}

void QChartDrawingArea::drawCentroids(QPainter* painter, const std::vector<QPointF>& pixels, const QColor& colour)
{
    const int r = modelPointSize() + 3;
    painter->setBrush(colour);
    painter->setPen(makePen(Qt::lightGray, 1.0));
    for (const QPointF& p : pixels)
        drawCircle(p, r, painter);
    painter->setPen(makePen(Qt::white, 1.0));
    for (const QPointF& p : pixels)
        drawCross(p, r, painter);
}

// ---- labels ----

void QChartDrawingArea::drawLabelBox(QPainter* painter, const QRectF& box, const QString& padded)
{
    painter->setBrush(Qt::white);
    if (!m_paintingToWEMF)
        painter->drawRect(box);
    painter->drawText(box, Qt::AlignHCenter | Qt::AlignVCenter, padded);
}

void QChartDrawingArea::drawLabel(QPainter* painter, const QPointF& data, const QString& text)
{
    if (text.isEmpty())
        return;
    const QString padded = QLatin1Char(' ') + text + QLatin1Char(' ');
    const QPointF p = transformInPixelPoint(data) + QPointF(4, -8);
    painter->setPen(makePen(Qt::black, 0.0, Qt::SquareCap, Qt::BevelJoin));
    QRectF box = painter->boundingRect(QRectF(rect()), Qt::AlignLeft, padded);
    // The box's top is added to x and its left to y; both are the widget's origin.
    box.moveTo(box.top() + p.x(), box.left() + p.y() - box.height() / 2);
    const QPointF anchor = box.bottomLeft();
    drawLabelBox(painter, placeLabelBox(box, anchor), padded);
    drawCross(anchor, 4, painter);
}

QRectF QChartDrawingArea::placeLabelBox(const QRectF& box, const QPointF&) { return box; }

void QChartDrawingArea::drawLabel2(QPainter* painter, const QPointF& pixel, const QString& text, const QColor& colour)
{
    const QString padded = QLatin1Char(' ') + text + QLatin1Char(' ');
    QPen pen = makePen(colour, 1.0);
    pen.setCosmetic(true);
    painter->setPen(pen);
    QRectF box = painter->boundingRect(QRectF(rect()), Qt::AlignLeft, padded);
    box.moveTopLeft(pixel);
    drawLabelBox(painter, placeLabelBox(box, pixel), padded);
    drawCross(pixel, 4, painter);
}

void QChartDrawingArea::drawLabel4(QPainter* painter, const QPointF& pixel, const QString& text, const QColor& colour)
{
    const QString padded = QLatin1Char(' ') + text + QLatin1Char(' ');
    QPen pen = makePen(colour, 1.0);
    pen.setCosmetic(false);
    painter->setPen(pen);
    QRectF box = painter->boundingRect(QRectF(rect()), Qt::AlignLeft, padded);
    box.moveTopLeft(pixel);
    drawLabelBox(painter, placeLabelBox(box, pixel), padded);
    drawCross(pixel, 4, painter);
}

void QChartDrawingArea::drawLabel3(QPainter* painter, const QPointF& pixel, const QString& text, const QColor& colour,
                                   double angle, bool rotate)
{
    const QString padded = QLatin1Char(' ') + text + QLatin1Char(' ');
    const QTransform keep = painter->transform();
    if (rotate) {
        QTransform t;
        t.translate(pixel.x(), pixel.y());
        t.rotate(angle);
        t.translate(-pixel.x(), -pixel.y());
        painter->setTransform(t * keep);
    }
    painter->setPen(makePen(colour, 0.0));
    QRectF box = painter->boundingRect(QRectF(rect()), Qt::AlignLeft, padded);
    box.moveTopLeft(pixel);
    painter->drawText(box, Qt::AlignHCenter | Qt::AlignVCenter, padded);
    if (rotate)
        painter->setTransform(keep);
}

void QChartDrawingArea::drawContourLabels(QPainter* painter)
{
    const std::size_t n = std::min(m_contourLabelPositions.size(), m_contourLabelTexts.size());
    for (std::size_t i = 0; i < n; ++i) {
        if (m_contourLabelTexts[i].isEmpty())
            continue;
        const QString padded = QLatin1Char(' ') + m_contourLabelTexts[i] + QLatin1Char(' ');
        QPen pen = makePen(Qt::black, 0.0);
        pen.setCosmetic(true);
        painter->setPen(pen);
        QRectF box = painter->boundingRect(QRectF(rect()), Qt::AlignLeft, padded);
        box.moveTopLeft(m_contourLabelPositions[i]);
        drawLabelBox(painter, box, padded);
        drawCross(m_contourLabelPositions[i], 4, painter);
    }
}


// ---- tooltip ----

void QChartDrawingArea::drawTooltip(QPainter* painter, const QPointF& tip, const QColor& colour, const QPixmap& pixmap,
                                    const QRectF& clip)
{
    if (clip.isValid() && !clip.contains(tip))
        return;
    QRectF balloon(QPointF(0, 0), QSizeF(pixmap.size()) + QSizeF(10, 10));
    balloon.moveBottomLeft(tip + QPointF(-5, -10));
    QPainterPath path;
    path.addRoundedRect(balloon, 5, 5);
    QPainterPath pointer;
    pointer.moveTo(tip + QPointF(5, -10));
    pointer.lineTo(tip);
    pointer.lineTo(tip + QPointF(10, -10));
    path = path.united(pointer).simplified();
    QPen pen = makePen(colour, 2.0);
    pen.setCosmetic(true);
    painter->save();
    painter->setPen(pen);
    QColor fill(Qt::white);
    fill.setAlpha(217);
    painter->setBrush(fill);
    painter->drawPath(path);
    painter->drawPixmap(balloon.topLeft() + QPointF(5, 5), pixmap);
    painter->restore();
}

} // namespace rkBase

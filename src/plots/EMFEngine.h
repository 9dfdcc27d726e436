#pragma once
// The paint engine behind EMFDevice: each drawing call a painter makes becomes GDI calls (see
// EmfGdi.h) that write an enhanced metafile, so that a chart leaves as vectors.
//
// Rules kept here that callers could otherwise guess:
// - Every drawing call first applies the state: the clip region when it is stale, the
//   background mode, a solid pen of the painter's pen colour and integer width (also the text
//   colour), the background colour, and a brush (solid, hatched, a one-bit texture, or none);
//   afterwards the old pen and brush go back and the new ones are deleted, brush first.
// - The painter's transform is applied only with observeTransform() on, except by drawPath,
//   which always maps. With it on, a pen's width is scaled by m11 and is at least 1.
// - Lines and text round to the nearest pixel (halves up, also below zero); polygons, ellipses
//   and pixmaps truncate toward zero.
// - A line with an end outside a non-empty painter clip path is left out whole, and so is a path
//   that the clip path does not contain whole. A polygon is cut into runs at the points outside
//   that path; every run of two or more points is outlined with a polyline and then, for the
//   fill modes, filled as a polygon. A polyline is written twice, and a convex polygon is only
//   outlined.
// - Text (textAlignmentLeft() off) is anchored at the item's start with the item's font; with it
//   on, with the engine's own font and the observed transform. Both anchor the left end of the
//   baseline (alignment 24), which is where the screen starts a painter's text: a pasted label
//   sits where it was shown, where a centred anchor would move it left by half its width and cut
//   the first characters off a label near the left edge. Text is opaque.

#include "EmfGdi.h"

#include <QBrush>
#include <QFont>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>
#include <QRect>
#include <QTransform>

namespace rkBase {

class EMFEngine : public QPaintEngine
{
public:
    // The description handed to CreateEnhMetaFileW: this 8-bit text, byte for byte, in the wide
    // argument (its backslashes and zeros are characters).
    static const char kDescription[];

    explicit EMFEngine(const QString& fileName);
    ~EMFEngine() override;

    bool begin(QPaintDevice* device) override;
    bool end() override;
    void updateState(const QPaintEngineState& state) override;
    void drawLines(const QLineF* lines, int lineCount) override;
    void drawEllipse(const QRect& rect) override;
    void drawEllipse(const QRectF& rect) override;
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int pointCount, PolygonDrawMode mode) override;
    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override;
    void drawTextItem(const QPointF& p, const QTextItem& textItem) override;
    void drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                   Qt::ImageConversionFlags flags = Qt::AutoColor) override;
    Type type() const override;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPolygon;

    // ---- set through EMFDevice ----
    QRect clipRect() const { return m_clipRect; }
    void setClipRect(const QRect& rect);
    void setCircularClip(bool on);
    void setTextAlignmentLeft(bool on) { m_textAlignmentLeft = on; }
    void observeTransform(bool on) { m_observeTransform = on; }
    // The finished metafile: null before end() or if it could not be written.
    gdi::HENHMETAFILE handle() const { return m_metafile; }

    // Nearest integer with halves toward +infinity (the rule for lines and text).
    static int roundCoordinate(double v);
    // Toward zero (the rule for polygons, ellipses and pixmaps).
    static int truncateCoordinate(double v);
    // The height CreateFontW gets for a font without a point size in the left-aligned text path.
    static int pixelFontHeight(int pixelSize);

private:
    void applyState();
    void restoreObjects();
    bool transforming() const { return m_observeTransform && !m_transform.isIdentity(); }
    void flushRun(std::vector<gdi::POINT>& run, PolygonDrawMode mode);
    gdi::HFONT createFont(int height, const QFont& font);

    // ---- fields, in their order ----
    QString m_fileName;
    QRect m_clipRect;
    bool m_observeTransform = false;
    bool m_textAlignmentLeft = false;
    int m_clipKind = 0; // 1 rectangle, 2 ellipse
    QPainter::CompositionMode m_compositionMode = QPainter::CompositionMode_SourceOver;
    int m_backgroundMode = Qt::OpaqueMode;
    QFont m_font;
    QPen m_pen{Qt::black};
    QBrush m_brush{Qt::white, Qt::SolidPattern};
    QBrush m_backgroundBrush{Qt::white, Qt::SolidPattern};
    QTransform m_transform;
    QPainterPath m_clipPath;
    bool m_clipEnabled = false;
    gdi::HDC m_dc = nullptr;
    int m_clipState = -1; // -1: the clip region must be selected again
    gdi::HENHMETAFILE m_metafile = nullptr;
    // Kept from applyState to the end of a drawing call.
    gdi::HPEN m_gdiPen = nullptr;
    gdi::HBRUSH m_gdiBrush = nullptr;
    gdi::HGDIOBJ m_oldPen = nullptr;
    gdi::HGDIOBJ m_oldBrush = nullptr;
};

} // namespace rkBase

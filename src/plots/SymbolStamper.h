#pragma once
// The raster fast path of the point walkers. A chart symbol has whole-pixel corners, so with one
// pen and brush it covers the same pixels wherever it lands: it is drawn once into a small
// sprite and then composited straight into the target image at each point. A walk of a hundred
// thousand crosses then costs a few memory blends per point instead of a stroker run per line.
//
// It only serves a painter that draws into a premultiplied ARGB32 or RGB32 image through a
// whole-pixel translation, at full opacity with source-over composition and a solid or empty
// brush; begin() says no for any other painter, and the caller draws the real shapes.
// A clip is honoured through a coverage mask of the painter's clip path.

#include <QBrush>
#include <QImage>
#include <QPen>
#include <QPointF>

#include <vector>

class QPainter;

namespace rkBase {

class SymbolStamper
{
public:
    // Draws the real shape of a style at a position; the stamper renders its sprites with it.
    using ShapeFunction = void (*)(const QPointF& pos, int style, int size, QPainter* painter);

    explicit SymbolStamper(ShapeFunction shape);

    // False when the painter's target or state cannot be stamped.
    bool begin(QPainter* painter);
    void end();
    bool isActive() const { return m_target != nullptr; }

    // Composites the shape with the painter's current pen and brush. False when this point must
    // be drawn as a real shape: too near the logical origin for whole-pixel truncation to equal
    // flooring, a position that is not finite, or a pen or brush a sprite cannot carry.
    bool stamp(const QPointF& pos, int style, int size, QPainter* painter);

    int cachedSprites() const { return static_cast<int>(m_sprites.size()); }

private:
    struct Sprite {
        int style = 0;
        int size = 0;
        QRgb penColor = 0;
        qreal penWidth = 0.0;
        int penStyle = 0;
        int penCap = 0;
        int penJoin = 0;
        bool cosmetic = false;
        int brushStyle = 0;
        QRgb brushColor = 0;
        bool antialiased = false;
        QImage image;  // cropped to its covered pixels
        int dx = 0;    // offset of image's top left from the floored position
        int dy = 0;
        int reach = 0; // how far the shape's arithmetic reaches left and up of the position
    };

    const Sprite* sprite(int style, int size, const QPen& pen, const QBrush& brush);
    const Sprite* lookUp(int style, int size, const QPen& pen, const QBrush& brush);
    void blend(const Sprite& s, int x, int y);

    ShapeFunction m_shape;
    QPainter* m_painter = nullptr;
    QImage* m_target = nullptr;
    uchar* m_bits = nullptr;
    qsizetype m_stride = 0;
    bool m_opaqueTarget = false;
    int m_tx = 0;
    int m_ty = 0;
    bool m_antialiased = false;
    QImage m_clipMask; // Alpha8 coverage of the clip, null without a clip
    std::vector<Sprite> m_sprites;
    int m_last = -1;
    // What m_last was found for.
    int m_lastStyle = -1;
    int m_lastSize = -1;
    QPen m_lastPen;
    QBrush m_lastBrush;
};

} // namespace rkBase

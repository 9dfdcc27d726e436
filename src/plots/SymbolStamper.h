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

    // How far left of and above its position a shape's truncated arithmetic reaches: below that
    // distance from the logical origin truncation is not flooring and the point is drawn as a
    // real shape. Without one, a bound that holds for any of the chart symbols is used.
    using ReachFunction = int (*)(int style, int size);

    explicit SymbolStamper(ShapeFunction shape, ReachFunction reach = nullptr);

    // False when the painter's target or state cannot be stamped.
    bool begin(QPainter* painter);
    void end();
    bool isActive() const { return m_target != nullptr; }

    // Composites the shape with the painter's current pen and brush. False when this point must
    // be drawn as a real shape: too near the logical origin for whole-pixel truncation to equal
    // flooring, a position that is not finite, or a pen or brush a sprite cannot carry.
    bool stamp(const QPointF& pos, int style, int size, QPainter* painter);

    int cachedSprites() const { return static_cast<int>(m_sprites.size()); }

    // stamp() over a run of points with one style, size, pen and brush, leaving the same picture.
    // Returns how many points it took: it stops before the first one that must be drawn as a
    // real shape. Once a stamp has opened the record of repeats for the run's sprite, the points
    // that land wholly inside the target take a short path of their own.
    int stampRun(const QPointF* pos, int count, int style, int size, QPainter* painter);

    // For a walk that draws nothing but stamps between begin() and end(). Stamps of one sprite
    // whose covered pixels are whole and of one value leave the same picture in any order and
    // any number of times: they are recorded as places, one bit per target pixel, and stamped
    // once each in raster order when the sprite changes, before a point is drawn as a real
    // shape, and at end(). A million random points then write the image line after line instead
    // of missing the cache at every point. Off by default and after end().
    void setSkipRepeats(bool on);
    // Stamps left out as repeats of a recorded place since begin(), for tests.
    int skippedRepeats() const { return m_skipped; }

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
        int reach = 0; // how far the shape's truncated arithmetic reaches left and up
        int margin = 0; // how far its pixels may lie from the position
        // The covered pixels of each line as runs, split where the coverage turns from whole to
        // partial: whole runs are copied, partial ones blended, and empty pixels never visited.
        struct Run {
            int y;
            int x0;
            int x1;
            bool whole;
        };
        std::vector<Run> runs;
        // Every covered pixel whole and of one value: stamping it twice at one place in a walk
        // of this sprite alone draws nothing new.
        bool oneValue = false;
        int width = 0;
        int height = 0;
    };

    const Sprite* sprite(int style, int size, const QPen& pen, const QBrush& brush);
    const Sprite* lookUp(int style, int size, const QPen& pen, const QBrush& brush);
    void blend(const Sprite& s, int x, int y);
    // A sprite wholly inside the target without a clip: the runs only.
    void blendRuns(const Sprite& s, int x, int y);

    ShapeFunction m_shape;
    ReachFunction m_reach;
    QPainter* m_painter = nullptr;
    QImage* m_target = nullptr;
    uchar* m_bits = nullptr;
    qsizetype m_stride = 0;
    bool m_opaqueTarget = false;
    int m_tx = 0;
    int m_ty = 0;
    bool m_antialiased = false;
    QImage m_clipMask; // Alpha8 coverage of the clip, null without a clip
    int m_width = 0;   // of the target
    int m_height = 0;
    // The record: bit y * width + x of m_seen is set where the sprite m_seenSprite is still to
    // be stamped with its top left at (x, y). A bit per pixel keeps it in the processor's cache.
    // A point drawn as a real shape is one within the sprite's reach of the logical origin, and
    // its shape stays within the band m_edgeBand wide along the target's top and left edges:
    // only the recorded places that reach into that band (m_edgePlaces) are stamped before it.
    bool m_skipRepeats = false;
    std::vector<quint64> m_seen;
    std::vector<int> m_edgePlaces;
    bool m_seenDirty = false;
    int m_seenSprite = -1;
    int m_edgeBand = 0;
    int m_skipped = 0;
    // Stamps what the record holds and empties it; edgeOnly keeps the places off the band.
    void flushRepeats(bool edgeOnly = false);

    std::vector<Sprite> m_sprites;
    int m_last = -1;
    // What m_last was found for.
    int m_lastStyle = -1;
    int m_lastSize = -1;
    QPen m_lastPen;
    QBrush m_lastBrush;
};

} // namespace rkBase

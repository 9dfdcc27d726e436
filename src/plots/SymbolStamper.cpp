#include "SymbolStamper.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace rkBase {

namespace {

// x * a / 255 on the four channels of a premultiplied pixel, rounded as the raster engine does.
inline quint32 byteMul(quint32 x, quint32 a)
{
    quint32 t = (x & 0xff00ffu) * a;
    t = (t + ((t >> 8) & 0xff00ffu) + 0x800080u) >> 8;
    t &= 0xff00ffu;
    x = ((x >> 8) & 0xff00ffu) * a;
    x = (x + ((x >> 8) & 0xff00ffu) + 0x800080u);
    x &= 0xff00ff00u;
    return x | t;
}

// Sprites are kept across walks; a chart uses a handful of pens, so this bound is only a guard
// against a colour map that gives every point its own colour.
constexpr std::size_t kMaxSprites = 512;

} // namespace

SymbolStamper::SymbolStamper(ShapeFunction shape, ReachFunction reach) : m_shape(shape), m_reach(reach) {}

bool SymbolStamper::begin(QPainter* painter)
{
    end();
    // A new painter may differ in antialiasing, which the last sprite's key does not show.
    m_lastStyle = -1;
    if (!painter || !painter->isActive() || !painter->device())
        return false;
    QPaintDevice* device = painter->device();
    if (device->devType() != QInternal::Image)
        return false;
    auto* image = static_cast<QImage*>(device);
    const QImage::Format format = image->format();
    if (format != QImage::Format_ARGB32_Premultiplied && format != QImage::Format_RGB32)
        return false;
    if (image->devicePixelRatio() != 1.0 || image->isNull())
        return false;
    if (painter->opacity() < 1.0 || painter->compositionMode() != QPainter::CompositionMode_SourceOver)
        return false;
    const QTransform t = painter->combinedTransform();
    if (t.type() > QTransform::TxTranslate)
        return false;
    if (t.dx() != std::floor(t.dx()) || t.dy() != std::floor(t.dy()) || std::abs(t.dx()) > 1e6 ||
        std::abs(t.dy()) > 1e6)
        return false;
    m_tx = static_cast<int>(t.dx());
    m_ty = static_cast<int>(t.dy());
    m_antialiased = painter->testRenderHint(QPainter::Antialiasing);
    m_clipMask = QImage();
    if (painter->hasClipping()) {
        // The raster engine clips without antialiasing, and so does this mask.
        m_clipMask = QImage(image->size(), QImage::Format_Alpha8);
        m_clipMask.fill(0);
        QPainter mp(&m_clipMask);
        mp.setTransform(t);
        mp.fillPath(painter->clipPath(), QColor(0, 0, 0, 255));
    }
    m_painter = painter;
    m_target = image;
    // constBits: the painter already writes into this buffer; bits() could detach a shared copy
    // from under it.
    m_bits = const_cast<uchar*>(image->constBits());
    m_stride = image->bytesPerLine();
    m_opaqueTarget = format == QImage::Format_RGB32;
    m_width = image->width();
    m_height = image->height();
    m_skipped = 0;
    return true;
}

void SymbolStamper::end()
{
    flushRepeats();
    m_painter = nullptr;
    m_target = nullptr;
    m_bits = nullptr;
    m_clipMask = QImage();
    m_skipRepeats = false;
}

void SymbolStamper::setSkipRepeats(bool on)
{
    flushRepeats();
    m_skipRepeats = on && m_target;
}

void SymbolStamper::flushRepeats(bool edgeOnly)
{
    if (!m_seenDirty || !m_target || m_seenSprite < 0 || m_seenSprite >= static_cast<int>(m_sprites.size())) {
        m_edgePlaces.clear();
        m_seenSprite = -1;
        m_seenDirty = false;
        return;
    }
    const Sprite& s = m_sprites[std::size_t(m_seenSprite)];
    for (int at : m_edgePlaces) {
        m_seen[std::size_t(at) / 64] &= ~(quint64(1) << (std::size_t(at) % 64));
        blendRuns(s, at % m_width, at / m_width);
    }
    m_edgePlaces.clear();
    if (edgeOnly)
        return;
    // The rest line after line: the image is written in the order it lies in memory.
    const std::size_t width = std::size_t(m_width);
    for (std::size_t w = 0; w < m_seen.size(); ++w) {
        quint64 bits = m_seen[w];
        if (!bits)
            continue;
        m_seen[w] = 0;
        while (bits) {
            const std::size_t at = w * 64 + std::size_t(__builtin_ctzll(bits));
            bits &= bits - 1;
            blendRuns(s, static_cast<int>(at % width), static_cast<int>(at / width));
        }
    }
    m_seenSprite = -1;
    m_seenDirty = false;
}

const SymbolStamper::Sprite* SymbolStamper::sprite(int style, int size, const QPen& pen, const QBrush& brush)
{
    // A walk asks a million times with the painter's own pen and brush: the very same shared
    // data as last time needs no look at their colours. m_lastPen and m_lastBrush hold a
    // reference to that data, so an equal address is the same data, never a new one in its place.
    if (m_last >= 0 && m_last < static_cast<int>(m_sprites.size()) && style == m_lastStyle && size == m_lastSize
        && const_cast<QPen&>(pen).data_ptr() == m_lastPen.data_ptr()
        && const_cast<QBrush&>(brush).data_ptr().data() == m_lastBrush.data_ptr().data())
        return &m_sprites[m_last];
    if (m_last >= 0 && m_last < static_cast<int>(m_sprites.size()) && style == m_lastStyle && size == m_lastSize
        && pen == m_lastPen && brush == m_lastBrush)
        return &m_sprites[m_last];
    const Sprite* found = lookUp(style, size, pen, brush);
    if (found) {
        m_lastStyle = style;
        m_lastSize = size;
        m_lastPen = pen;
        m_lastBrush = brush;
    }
    return found;
}

const SymbolStamper::Sprite* SymbolStamper::lookUp(int style, int size, const QPen& pen, const QBrush& brush)
{
    const Qt::BrushStyle bs = brush.style();
    if (bs != Qt::NoBrush && bs != Qt::SolidPattern)
        return nullptr;
    if (pen.style() != Qt::NoPen && pen.brush().style() != Qt::SolidPattern)
        return nullptr;
    const QRgb pc = pen.color().rgba();
    const qreal pw = pen.widthF();
    const QRgb bc = bs == Qt::NoBrush ? 0 : brush.color().rgba();
    auto same = [&](const Sprite& s) {
        return s.style == style && s.size == size && s.penColor == pc && s.penWidth == pw &&
               s.penStyle == pen.style() && s.penCap == pen.capStyle() && s.penJoin == pen.joinStyle() &&
               s.cosmetic == pen.isCosmetic() && s.brushStyle == bs && s.brushColor == bc &&
               s.antialiased == m_antialiased;
    };
    if (m_last >= 0 && m_last < static_cast<int>(m_sprites.size()) && same(m_sprites[m_last]))
        return &m_sprites[m_last];
    for (std::size_t i = 0; i < m_sprites.size(); ++i) {
        if (same(m_sprites[i])) {
            m_last = static_cast<int>(i);
            return &m_sprites[i];
        }
    }
    if (size < 0 || size > 256 || !(pw >= 0.0) || pw > 256.0)
        return nullptr;
    if (m_sprites.size() >= kMaxSprites) {
        flushRepeats();
        m_sprites.clear();
    }

    // Every shape stays within 2 * size + 4 of its position; the pen adds its width.
    const int margin = 2 * size + 4 + static_cast<int>(std::ceil(std::max(pw, 1.0)));
    const int dim = 2 * margin + 1;
    QImage canvas(dim, dim, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    {
        QPainter p(&canvas);
        p.setRenderHint(QPainter::Antialiasing, m_antialiased);
        p.setPen(pen);
        p.setBrush(brush);
        m_shape(QPointF(margin, margin), style, size, &p);
    }
    int minX = dim, minY = dim, maxX = -1, maxY = -1;
    for (int y = 0; y < dim; ++y) {
        const auto* line = reinterpret_cast<const quint32*>(canvas.constScanLine(y));
        for (int x = 0; x < dim; ++x) {
            if (line[x] >> 24) {
                minX = std::min(minX, x);
                maxX = std::max(maxX, x);
                minY = std::min(minY, y);
                maxY = std::max(maxY, y);
            }
        }
    }
    Sprite s;
    s.style = style;
    s.size = size;
    s.penColor = pc;
    s.penWidth = pw;
    s.penStyle = pen.style();
    s.penCap = pen.capStyle();
    s.penJoin = pen.joinStyle();
    s.cosmetic = pen.isCosmetic();
    s.brushStyle = bs;
    s.brushColor = bc;
    s.antialiased = m_antialiased;
    s.reach = m_reach ? std::max(0, m_reach(style, size)) : 2 * size + 4;
    s.margin = margin;
    if (maxX >= 0) {
        s.image = canvas.copy(minX, minY, maxX - minX + 1, maxY - minY + 1);
        s.dx = minX - margin;
        s.dy = minY - margin;
        s.width = s.image.width();
        s.height = s.image.height();
        bool oneValue = true;
        quint32 value = 0;
        for (int y = 0; y < s.height; ++y) {
            const auto* line = reinterpret_cast<const quint32*>(s.image.constScanLine(y));
            int x = 0;
            while (x < s.width) {
                const quint32 a = line[x] >> 24;
                if (a == 0) {
                    ++x;
                    continue;
                }
                const bool whole = a == 255;
                int end = x + 1;
                while (end < s.width && (line[end] >> 24) != 0 && ((line[end] >> 24) == 255) == whole)
                    ++end;
                for (int i = x; i < end; ++i) {
                    if (value == 0)
                        value = line[i];
                    oneValue = oneValue && whole && line[i] == value;
                }
                s.runs.push_back({y, x, end, whole});
                x = end;
            }
        }
        s.oneValue = oneValue && !s.runs.empty();
    }
    m_sprites.push_back(std::move(s));
    m_last = static_cast<int>(m_sprites.size()) - 1;
    return &m_sprites.back();
}

bool SymbolStamper::stamp(const QPointF& pos, int style, int size, QPainter* painter)
{
    if (!m_target || painter != m_painter)
        return false;
    const double px = pos.x();
    const double py = pos.y();
    if (!std::isfinite(px) || !std::isfinite(py)) {
        flushRepeats();
        return false;
    }
    // A wide point is stroked as a zero-length line whose rasterisation is not translation
    // invariant; it has no combo entry and stays on the real path.
    if (style == 13) {
        flushRepeats();
        return false;
    }
    // Far outside the target nothing of the shape shows: a zoomed chart walks many such points,
    // and they need no sprite.
    const double margin = 4.0 * std::abs(size) + 64.0;
    const double tx = std::floor(px) + m_tx, ty = std::floor(py) + m_ty;
    if (tx < -margin || ty < -margin || tx > m_width + margin || ty > m_height + margin)
        return true;
    const Sprite* s = sprite(style, size, painter->pen(), painter->brush());
    // The shapes truncate their coordinates toward zero; that equals flooring, and so a shifted
    // sprite, only where every coordinate they compute is non-negative.
    if (!s || px < s->reach || py < s->reach) {
        // The caller draws a real shape now, over whatever the record holds that it may touch:
        // with the recorded sprite only the band along the edges, with another pen anything.
        const bool sameSprite = s && m_seenSprite >= 0 && s == &m_sprites[std::size_t(m_seenSprite)];
        flushRepeats(sameSprite);
        return false;
    }
    if (s->width == 0)
        return true;
    const double fx = tx + s->dx;
    const double fy = ty + s->dy;
    if (fx >= m_width || fy >= m_height || fx + s->width <= 0 || fy + s->height <= 0)
        return true;
    const int x = static_cast<int>(fx), y = static_cast<int>(fy);
    // Another sprite goes over whatever is recorded: that is stamped first.
    const int index = static_cast<int>(s - m_sprites.data());
    if (m_seenDirty && index != m_seenSprite)
        flushRepeats();
    if (m_skipRepeats && s->oneValue && x >= 0 && y >= 0 && x + s->width <= m_width && y + s->height <= m_height
        && m_clipMask.isNull()) {
        if (index != m_seenSprite) {
            flushRepeats();
            m_seenSprite = index;
            m_edgeBand = s->reach + s->margin + 1;
            m_seen.resize((std::size_t(m_width) * std::size_t(m_height) + 63) / 64, quint64(0));
        }
        const std::size_t bit = std::size_t(y) * std::size_t(m_width) + std::size_t(x);
        quint64& word = m_seen[bit / 64];
        const quint64 mask = quint64(1) << (bit % 64);
        if (word & mask) {
            ++m_skipped;
            return true;
        }
        word |= mask;
        m_seenDirty = true;
        // Where a real shape of an edge point may land: the band along the top and left.
        if (x < m_tx + m_edgeBand || y < m_ty + m_edgeBand)
            m_edgePlaces.push_back(static_cast<int>(bit));
        return true;
    }
    blend(*s, x, y);
    return true;
}

int SymbolStamper::stampRun(const QPointF* pos, int count, int style, int size, QPainter* painter)
{
    if (!m_target || painter != m_painter)
        return 0;
    int i = 0;
    while (i < count) {
        if (!stamp(pos[i], style, size, painter))
            return i;
        ++i;
        if (!m_skipRepeats || m_seenSprite < 0 || !m_clipMask.isNull())
            continue;
        // The record must be of the sprite this run draws: a stamp far outside the target
        // returns before it looks its sprite up.
        const Sprite* current = sprite(style, size, painter->pen(), painter->brush());
        if (current != &m_sprites[std::size_t(m_seenSprite)] || !current->oneValue || current->width == 0)
            continue;
        const Sprite& s = *current;
        const double reach = s.reach;
        const int lastX = m_width - s.width;
        const int lastY = m_height - s.height;
        const int bandX = m_tx + m_edgeBand;
        const int bandY = m_ty + m_edgeBand;
        const std::size_t width = std::size_t(m_width);
        for (; i < count; ++i) {
            const double px = pos[i].x();
            const double py = pos[i].y();
            // Non-negative and far from overflow, truncation is flooring; NaN fails here too.
            if (!(px >= reach && py >= reach && px < 1.0e9 && py < 1.0e9))
                break;
            const int x = static_cast<int>(px) + m_tx + s.dx;
            const int y = static_cast<int>(py) + m_ty + s.dy;
            if (x >= m_width || y >= m_height || x + s.width <= 0 || y + s.height <= 0)
                continue;
            if (x < 0 || y < 0 || x > lastX || y > lastY)
                break;
            const std::size_t bit = std::size_t(y) * width + std::size_t(x);
            quint64& word = m_seen[bit / 64];
            const quint64 mask = quint64(1) << (bit % 64);
            if (word & mask) {
                ++m_skipped;
                continue;
            }
            word |= mask;
            m_seenDirty = true;
            if (x < bandX || y < bandY)
                m_edgePlaces.push_back(static_cast<int>(bit));
        }
    }
    return i;
}

void SymbolStamper::blendRuns(const Sprite& s, int x0, int y0)
{
    const uchar* spriteBits = s.image.constBits();
    const qsizetype spriteStride = s.image.bytesPerLine();
    const quint32 opaque = m_opaqueTarget ? 0xff000000u : 0u;
    for (const Sprite::Run& run : s.runs) {
        const auto* src = reinterpret_cast<const quint32*>(spriteBits + run.y * spriteStride);
        auto* dst = reinterpret_cast<quint32*>(m_bits + (y0 + run.y) * m_stride) + x0;
        if (run.whole) {
            // Whole coverage is alpha 255 already, as an opaque target wants it. The runs are
            // a few pixels long: a loop beats a call to memmove.
            for (int x = run.x0; x < run.x1; ++x)
                dst[x] = src[x];
            continue;
        }
        for (int x = run.x0; x < run.x1; ++x) {
            const quint32 p = src[x];
            dst[x] = (p + byteMul(dst[x], 255 - (p >> 24))) | opaque;
        }
    }
}

void SymbolStamper::blend(const Sprite& s, int x0, int y0)
{
    const int w = s.width;
    const int h = s.height;
    if (m_clipMask.isNull() && x0 >= 0 && y0 >= 0 && x0 + w <= m_width && y0 + h <= m_height) {
        blendRuns(s, x0, y0);
        return;
    }
    const int xBegin = std::max(0, -x0);
    const int xEnd = std::min(w, m_width - x0);
    const int yBegin = std::max(0, -y0);
    const int yEnd = std::min(h, m_height - y0);
    const bool masked = !m_clipMask.isNull();
    const quint32 opaque = m_opaqueTarget ? 0xff000000u : 0u;
    for (int y = yBegin; y < yEnd; ++y) {
        const auto* src = reinterpret_cast<const quint32*>(s.image.constScanLine(y));
        auto* dst = reinterpret_cast<quint32*>(m_bits + (y0 + y) * m_stride) + x0;
        const uchar* mask = masked ? m_clipMask.constScanLine(y0 + y) + x0 : nullptr;
        for (int x = xBegin; x < xEnd; ++x) {
            quint32 p = src[x];
            if (mask) {
                if (!mask[x])
                    continue;
                if (mask[x] != 255)
                    p = byteMul(p, mask[x]);
            }
            const quint32 a = p >> 24;
            if (a == 0)
                continue;
            dst[x] = (a == 255 ? p : p + byteMul(dst[x], 255 - a)) | opaque;
        }
    }
}

} // namespace rkBase

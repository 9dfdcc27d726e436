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

SymbolStamper::SymbolStamper(ShapeFunction shape) : m_shape(shape) {}

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
    return true;
}

void SymbolStamper::end()
{
    m_painter = nullptr;
    m_target = nullptr;
    m_bits = nullptr;
    m_clipMask = QImage();
}

const SymbolStamper::Sprite* SymbolStamper::sprite(int style, int size, const QPen& pen, const QBrush& brush)
{
    // A walk asks a million times with the painter's own pen and brush: the very same objects as
    // last time (a pointer comparison inside QPen and QBrush) need no look at their colours.
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
    if (m_sprites.size() >= kMaxSprites)
        m_sprites.clear();

    // Every shape stays within 2 * size + 3 of its position; the pen adds its width.
    const int reach = 2 * size + 4 + static_cast<int>(std::ceil(std::max(pw, 1.0)));
    const int dim = 2 * reach + 1;
    QImage canvas(dim, dim, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    {
        QPainter p(&canvas);
        p.setRenderHint(QPainter::Antialiasing, m_antialiased);
        p.setPen(pen);
        p.setBrush(brush);
        m_shape(QPointF(reach, reach), style, size, &p);
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
    s.reach = reach;
    if (maxX >= 0) {
        s.image = canvas.copy(minX, minY, maxX - minX + 1, maxY - minY + 1);
        s.dx = minX - reach;
        s.dy = minY - reach;
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
    if (!std::isfinite(px) || !std::isfinite(py))
        return false;
    // A wide point is stroked as a zero-length line whose rasterisation is not translation
    // invariant; it has no combo entry and stays on the real path.
    if (style == 13)
        return false;
    // Far outside the target nothing of the shape shows: a zoomed chart walks many such points,
    // and they need no sprite.
    const double margin = 4.0 * std::abs(size) + 64.0;
    const double tx = std::floor(px) + m_tx, ty = std::floor(py) + m_ty;
    if (tx < -margin || ty < -margin || tx > m_target->width() + margin || ty > m_target->height() + margin)
        return true;
    const Sprite* s = sprite(style, size, painter->pen(), painter->brush());
    if (!s)
        return false;
    // The shapes truncate their coordinates toward zero; that equals flooring, and so a shifted
    // sprite, only where every coordinate they compute is non-negative.
    if (px < s->reach || py < s->reach)
        return false;
    if (s->image.isNull())
        return true;
    const double fx = std::floor(px) + m_tx + s->dx;
    const double fy = std::floor(py) + m_ty + s->dy;
    if (fx >= m_target->width() || fy >= m_target->height() || fx + s->image.width() <= 0 ||
        fy + s->image.height() <= 0)
        return true;
    blend(*s, static_cast<int>(fx), static_cast<int>(fy));
    return true;
}

void SymbolStamper::blend(const Sprite& s, int x0, int y0)
{
    const int w = s.image.width();
    const int h = s.image.height();
    const int xBegin = std::max(0, -x0);
    const int xEnd = std::min(w, m_target->width() - x0);
    const int yBegin = std::max(0, -y0);
    const int yEnd = std::min(h, m_target->height() - y0);
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

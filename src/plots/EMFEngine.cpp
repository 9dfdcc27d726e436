#include "EMFEngine.h"

#include <QPixmap>
#include <QTextItem>

#include <cmath>
#include <cstring>
#include <vector>

namespace rkBase {

using namespace gdi;

const char EMFEngine::kDescription[] = "Rook\\0Metafile\\0\\0";

namespace {

COLORREF colourRef(const QColor& c) { return COLORREF(c.red()) | COLORREF(c.green()) << 8 | COLORREF(c.blue()) << 16; }

std::u16string wide(const QString& s) { return s.toStdU16String(); }

} // namespace

EMFEngine::EMFEngine(const QString& fileName) : QPaintEngine(AllFeatures), m_fileName(fileName) {}

EMFEngine::~EMFEngine()
{
    if (m_dc) // painting never ended: finish the file so that nothing is left open
        DeleteEnhMetaFile(CloseEnhMetaFile(m_dc));
    DeleteEnhMetaFile(m_metafile);
}

int EMFEngine::roundCoordinate(double v)
{
    if (!std::isfinite(v))
        return detail::clampCoordinate(v);
    if (v < 0) {
        const double below = std::trunc(v - 1);
        return detail::clampCoordinate(std::trunc(v - below + 0.5) + below);
    }
    return detail::clampCoordinate(std::trunc(v + 0.5));
}

int EMFEngine::truncateCoordinate(double v) { return detail::clampCoordinate(std::trunc(v)); }

int EMFEngine::pixelFontHeight(int pixelSize)
{
    // The integer form kept bit for bit from the Windows build: the high word of
    // pixelSize * 0x77777777, less pixelSize, shifted right by 4, rounded toward zero. It comes
    // to pixelSize / -30 in integer division, which is what that build wrote.
    const auto high = static_cast<int32_t>((static_cast<int64_t>(pixelSize) * 0x77777777LL) >> 32);
    const int32_t shifted = static_cast<int32_t>(static_cast<int64_t>(high) - pixelSize) >> 4;
    return shifted + (shifted < 0 ? 1 : 0);
}

bool EMFEngine::begin(QPaintDevice*)
{
    // A second painting on the same device starts a new metafile.
    DeleteEnhMetaFile(m_metafile);
    m_metafile = nullptr;
    // The description goes over as it is, its bytes read as UTF-16, padded with null units.
    char16_t description[(sizeof(kDescription) + 1) / 2 + 2] = {};
    std::memcpy(description, kDescription, sizeof(kDescription));
    const std::u16string name = wide(m_fileName);
    m_dc = CreateEnhMetaFileW(nullptr, m_fileName.isEmpty() ? nullptr : name.c_str(), nullptr, description);
    SetMapMode(m_dc, MM_TEXT);
    m_clipState = -1;
    return true;
}

bool EMFEngine::end()
{
    m_metafile = CloseEnhMetaFile(m_dc);
    m_dc = nullptr;
    return true;
}

void EMFEngine::updateState(const QPaintEngineState& state)
{
    const DirtyFlags flags = state.state();
    if (flags & DirtyFont)
        m_font = state.font();
    if (flags & DirtyPen) {
        m_pen = state.pen();
        const QTransform transform = state.transform();
        if (m_observeTransform && !transform.isIdentity())
            m_pen.setWidthF(std::max(std::trunc(transform.m11() * m_pen.widthF()), 1.0));
    }
    if (flags & DirtyBrush)
        m_brush = state.brush();
    if (flags & DirtyBackground)
        m_backgroundBrush = state.backgroundBrush();
    if (flags & DirtyBackgroundMode)
        m_backgroundMode = state.backgroundMode();
    if (flags & DirtyCompositionMode)
        m_compositionMode = state.compositionMode();
    if (flags & DirtyClipPath)
        m_clipPath = state.clipOperation() == Qt::NoClip ? QPainterPath() : state.clipPath();
    else if (flags & DirtyClipRegion) {
        QPainterPath path;
        if (state.clipOperation() != Qt::NoClip)
            path.addRegion(state.clipRegion());
        m_clipPath = path;
    }
    if (flags & DirtyTransform)
        m_transform = state.transform();
    m_clipEnabled = state.isClipEnabled();
}

void EMFEngine::applyState()
{
    if (m_clipState == -1) {
        HRGN region = nullptr;
        if (!m_clipRect.isNull()) {
            if (m_clipKind == 1)
                region = CreateRectRgn(m_clipRect.left(), m_clipRect.top(), m_clipRect.right(), m_clipRect.bottom());
            else if (m_clipKind == 2)
                region = CreateEllipticRgn(m_clipRect.left(), m_clipRect.top(), m_clipRect.right(), m_clipRect.bottom());
        }
        m_clipState = SelectClipRgn(m_dc, region);
        DeleteObject(region); // the context keeps its own copy
    }
    SetBkMode(m_dc, m_backgroundMode == Qt::OpaqueMode ? OPAQUE : TRANSPARENT);

    const COLORREF penColour = colourRef(m_pen.color());
    m_gdiPen = CreatePen(PS_SOLID, m_pen.width(), penColour);
    SetTextColor(m_dc, penColour);
    m_oldPen = SelectObject(m_dc, m_gdiPen);
    SetBkColor(m_dc, colourRef(m_backgroundBrush.color()));

    m_gdiBrush = nullptr;
    const Qt::BrushStyle style = m_brush.style();
    if (style == Qt::TexturePattern) {
        const QImage texture = m_brush.textureImage().convertToFormat(QImage::Format_ARGB32);
        const int w = texture.width(), h = texture.height();
        if (w > 0 && h > 0) {
            const int stride = (w + 7) / 8;
            std::vector<BYTE> bits(std::size_t(stride) * std::size_t(h), 0);
            for (int y = 0; y < h; ++y) {
                const QRgb* line = reinterpret_cast<const QRgb*>(texture.constScanLine(y));
                for (int x = 0; x < w; ++x)
                    if (line[x] != 0xff000000u)
                        bits[std::size_t(y) * stride + std::size_t(x / 8)] |= BYTE(0x80 >> (x % 8));
            }
            HBITMAP bitmap = CreateBitmap(w, h, 1, 1, nullptr);
            SetBitmapBits(bitmap, DWORD(bits.size()), bits.data());
            m_gdiBrush = CreatePatternBrush(bitmap);
            DeleteObject(bitmap); // the brush holds its own copy
        }
    } else {
        const COLORREF brushColour = colourRef(m_brush.color());
        switch (style) {
        case Qt::NoBrush: m_gdiBrush = GetStockObject(NULL_BRUSH); break;
        case Qt::SolidPattern: m_gdiBrush = CreateSolidBrush(brushColour); break;
        case Qt::HorPattern: m_gdiBrush = CreateHatchBrush(HS_HORIZONTAL, brushColour); break;
        case Qt::VerPattern: m_gdiBrush = CreateHatchBrush(HS_VERTICAL, brushColour); break;
        case Qt::CrossPattern: m_gdiBrush = CreateHatchBrush(HS_CROSS, brushColour); break;
        case Qt::BDiagPattern: m_gdiBrush = CreateHatchBrush(HS_BDIAGONAL, brushColour); break;
        case Qt::FDiagPattern: m_gdiBrush = CreateHatchBrush(HS_FDIAGONAL, brushColour); break;
        case Qt::DiagCrossPattern: m_gdiBrush = CreateHatchBrush(HS_DIAGCROSS, brushColour); break;
        default: break; // dense patterns and gradients keep the context's brush
        }
    }
    m_oldBrush = SelectObject(m_dc, m_gdiBrush);
}

void EMFEngine::restoreObjects()
{
    SelectObject(m_dc, m_oldPen);
    SelectObject(m_dc, m_oldBrush);
    DeleteObject(m_gdiBrush);
    DeleteObject(m_gdiPen);
    m_gdiPen = m_gdiBrush = m_oldPen = m_oldBrush = nullptr;
}

void EMFEngine::drawLines(const QLineF* lines, int lineCount)
{
    applyState();
    const bool clipTest = m_clipEnabled && !m_clipPath.isEmpty();
    for (int i = 0; i < lineCount; ++i) {
        QLineF line = lines[i];
        if (clipTest && (!m_clipPath.contains(line.p1()) || !m_clipPath.contains(line.p2())))
            continue;
        if (transforming())
            line = m_transform.map(line);
        MoveToEx(m_dc, roundCoordinate(line.x1()), roundCoordinate(line.y1()), nullptr);
        LineTo(m_dc, roundCoordinate(line.x2()), roundCoordinate(line.y2()));
    }
    restoreObjects();
}

void EMFEngine::drawEllipse(const QRect& rect) { drawEllipse(QRectF(rect)); }

void EMFEngine::drawEllipse(const QRectF& rect)
{
    applyState();
    const QRectF box = transforming() ? m_transform.map(QPolygonF(rect)).boundingRect() : rect;
    Ellipse(m_dc, truncateCoordinate(box.left()), truncateCoordinate(box.top()), truncateCoordinate(box.right()),
            truncateCoordinate(box.bottom()));
    restoreObjects();
}

void EMFEngine::drawPath(const QPainterPath& path)
{
    // The state goes first, as in every drawing call: a path that is left out still brings the
    // device clip into the file.
    applyState();
    if (!m_clipPath.isEmpty() && !m_clipPath.contains(path)) {
        restoreObjects();
        return;
    }
    SetPolyFillMode(m_dc, path.fillRule() == Qt::OddEvenFill ? ALTERNATE : WINDING);
    const QList<QPolygonF> polygons =
        m_transform.isIdentity() ? path.toSubpathPolygons() : path.toSubpathPolygons(m_transform);
    std::vector<POINT> points;
    for (const QPolygonF& polygon : polygons) {
        points.clear();
        for (const QPointF& p : polygon)
            points.push_back(POINT{truncateCoordinate(p.x()), truncateCoordinate(p.y())});
        Polygon(m_dc, points.data(), int(points.size()));
    }
    restoreObjects();
}

void EMFEngine::flushRun(std::vector<POINT>& run, PolygonDrawMode mode)
{
    if (run.size() >= 2) {
        Polyline(m_dc, run.data(), int(run.size()));
        if (mode == PolylineMode) {
            Polyline(m_dc, run.data(), int(run.size()));
        } else if (mode == OddEvenMode || mode == WindingMode) {
            SetPolyFillMode(m_dc, int(mode) + 1);
            Polygon(m_dc, run.data(), int(run.size()));
        }
    }
    run.clear();
}

void EMFEngine::drawPolygon(const QPointF* points, int pointCount, PolygonDrawMode mode)
{
    applyState();
    const bool clipTest = !m_clipPath.isEmpty();
    std::vector<POINT> run;
    run.reserve(std::size_t(std::max(pointCount, 0)));
    for (int i = 0; i < pointCount; ++i) {
        if (clipTest && !m_clipPath.contains(points[i])) {
            flushRun(run, mode);
            continue;
        }
        const QPointF p = transforming() ? m_transform.map(points[i]) : points[i];
        run.push_back(POINT{truncateCoordinate(p.x()), truncateCoordinate(p.y())});
    }
    flushRun(run, mode);
    restoreObjects();
}

void EMFEngine::drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source)
{
    applyState();
    HDC memory = CreateCompatibleDC(m_dc);
    HBITMAP bitmap = toHBITMAP(pixmap, 0);
    HGDIOBJ old = SelectObject(memory, bitmap);
    const QRectF box = transforming() ? m_transform.mapRect(target) : target;
    StretchBlt(m_dc, truncateCoordinate(box.x()), truncateCoordinate(box.y()), truncateCoordinate(box.width()),
               truncateCoordinate(box.height()), memory, truncateCoordinate(source.x()), truncateCoordinate(source.y()),
               truncateCoordinate(source.width()), truncateCoordinate(source.height()), SRCCOPY);
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    restoreObjects();
}

void EMFEngine::drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                          Qt::ImageConversionFlags flags)
{
    drawPixmap(target, QPixmap::fromImage(image, flags), source);
}

HFONT EMFEngine::createFont(int height, const QFont& font)
{
    const std::u16string family = wide(font.family());
    return CreateFontW(height, 0, 0, 0, detail::gdiWeight(font.weight()), font.italic(), font.underline(),
                       font.strikeOut(), DEFAULT_CHARSET, OUT_OUTLINE_PRECIS, 0, 0, 0, family.c_str());
}

void EMFEngine::drawTextItem(const QPointF& p, const QTextItem& textItem)
{
    applyState();
    QPointF at = p;
    int height;
    if (!m_textAlignmentLeft) {
        m_font = textItem.font();
        // p is the left end of the baseline, where the screen starts the text.
        SetTextAlign(m_dc, TA_BASELINE | TA_LEFT);
        height = -MulDiv(m_font.pointSize(), GetDeviceCaps(m_dc, LOGPIXELSY), 72);
    } else {
        SetTextAlign(m_dc, TA_BASELINE);
        height = m_font.pointSize() == -1 ? pixelFontHeight(m_font.pixelSize())
                                          : -MulDiv(m_font.pointSize(), GetDeviceCaps(m_dc, LOGPIXELSY), 72);
        if (transforming())
            at = m_transform.map(p);
    }
    HFONT font = createFont(height, m_font);
    HGDIOBJ oldFont = SelectObject(m_dc, font);
    SetBkMode(m_dc, OPAQUE);
    SetTextColor(m_dc, colourRef(m_pen.color()));
    const std::u16string text = wide(textItem.text());
    TextOutW(m_dc, roundCoordinate(at.x()), roundCoordinate(at.y()), text.c_str(), int(text.size()));
    SelectObject(m_dc, oldFont);
    DeleteObject(font);
    restoreObjects();
}

QPaintEngine::Type EMFEngine::type() const { return QPaintEngine::User; }

void EMFEngine::setClipRect(const QRect& rect)
{
    if (rect != m_clipRect || m_clipKind != 1) {
        m_clipRect = rect;
        m_clipKind = 1;
        m_clipState = -1;
    }
}

void EMFEngine::setCircularClip(bool on)
{
    const int kind = on ? 2 : 1;
    if (kind != m_clipKind) {
        m_clipKind = kind;
        m_clipState = -1;
    }
}

} // namespace rkBase

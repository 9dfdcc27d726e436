#include "EmfGdi.h"

#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>

extern "C" {
#include <uemf.h>
}

#include <algorithm>
#include <array>
#include <functional>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace rkBase::gdi {

namespace {

// The reference device: 96 dpi, with a size whose millimetres are whole numbers.
constexpr int kDpi = 96;
constexpr int kDeviceWidth = 1920;
constexpr int kDeviceHeight = 1440;
constexpr int kDeviceWidthMm = 508;
constexpr int kDeviceHeightMm = 381;
constexpr LONG kCoordinateLimit = 1 << 27;
// Created objects kept alive in one file before the least used is deleted.
constexpr std::size_t kRealizedLimit = 256;
// Largest bitmap side and size accepted.
constexpr int kBitmapSideLimit = 1 << 15;
constexpr std::size_t kBitmapBytesLimit = std::size_t(256) << 20;

enum class Kind { Pen, Brush, Font, Region, Bitmap };
enum class BrushStyle { Solid, Null, Hatch, Pattern };

} // namespace

struct GdiObject {
    Kind kind = Kind::Pen;
    int stockIndex = -1; // >= 0: a stock object, never deleted
    int selections = 0;  // contexts it is selected into, under the table lock
    // What the file needs to reproduce it; equal keys share one created object in a file.
    std::string key;
    // pen
    int penStyle = PS_SOLID;
    int penWidth = 0;
    COLORREF colour = 0;
    // brush
    BrushStyle brushStyle = BrushStyle::Solid;
    int hatch = 0;
    // font
    U_LOGFONT logFont{};
    // region: rectangles with exclusive right and bottom, and their bounding box
    std::vector<RECT> rects;
    RECT bound{0, 0, 0, 0};
    // bitmap, and the pattern of a pattern brush: 1 bit rows padded to a byte, or 32 bit BGRX rows
    int width = 0;
    int height = 0;
    int bitCount = 0;
    std::vector<BYTE> bits;
};

struct EnhMetaFile {
    std::vector<BYTE> bytes;
};

struct DeviceContext {
    bool memory = false;
    HGDIOBJ bitmap = nullptr; // memory contexts: the bitmap StretchBlt reads
    EMFTRACK* et = nullptr;
    EMFHANDLES* eht = nullptr;
    // What the caller has set.
    int mapMode = MM_TEXT;
    int bkMode = OPAQUE;
    int fillMode = ALTERNATE;
    COLORREF textColour = 0;
    COLORREF bkColour = 0xffffff;
    UINT textAlign = 0;
    HGDIOBJ pen = nullptr;
    HGDIOBJ brush = nullptr;
    HGDIOBJ font = nullptr;
    POINT position{0, 0};
    // What a player of the file has at the end of what is written so far.
    int writtenMapMode = MM_TEXT;
    int writtenBkMode = OPAQUE;
    int writtenFillMode = ALTERNATE;
    COLORREF writtenTextColour = 0;
    COLORREF writtenBkColour = 0xffffff;
    UINT writtenTextAlign = 0;
    std::string writtenPen;
    std::string writtenBrush;
    std::string writtenFont;
    struct Realized {
        uint32_t index;
        uint64_t lastUse;
    };
    std::unordered_map<std::string, Realized> realized;
    uint64_t useCounter = 0;
    // Bounds of what is drawn, inclusive, and the clip's bounding box.
    bool hasBounds = false;
    RECT bounds{0, 0, -1, -1};
    bool clipped = false;
    RECT clipBound{0, 0, 0, 0};
};

namespace {

// ---- the table of live handles ----

std::mutex& tableMutex()
{
    static std::mutex m;
    return m;
}

std::unordered_set<const void*>& liveHandles()
{
    static std::unordered_set<const void*> s;
    return s;
}

std::string stockKey(int index) { return "stock:" + std::to_string(index); }

// Stock objects live as long as the program and are told apart by their address, so that a
// stale handle is never read to find out whether it is one.
constexpr int kStockCount = 18;

GdiObject* stockObjects()
{
    static GdiObject* const objects = [] {
        static GdiObject a[kStockCount];
        const COLORREF brushes[] = {0xffffff, 0xc0c0c0, 0x808080, 0x404040, 0x000000};
        for (int i = 0; i < kStockCount; ++i) {
            GdiObject& o = a[i];
            o.stockIndex = i;
            o.key = stockKey(i);
            if (i <= NULL_BRUSH) {
                o.kind = Kind::Brush;
                o.brushStyle = i == NULL_BRUSH ? BrushStyle::Null : BrushStyle::Solid;
                o.colour = i < NULL_BRUSH ? brushes[i] : 0;
            } else if (i <= NULL_PEN) {
                o.kind = Kind::Pen;
                o.penStyle = i == NULL_PEN ? PS_NULL : PS_SOLID;
                o.colour = i == WHITE_PEN ? 0xffffff : 0;
            } else if (i >= 10 && i <= 17 && i != 15) {
                o.kind = Kind::Font;
            } else {
                // 9 (unused), 15 (the default palette): kept as a 1 x 1 bitmap, the default
                // content of a memory context.
                o.kind = Kind::Bitmap;
                o.width = o.height = 1;
                o.bitCount = 1;
                o.bits.assign(1, 0);
            }
        }
        return a;
    }();
    return objects;
}

GdiObject* stockObject(int index)
{
    if (index < 0 || index >= kStockCount)
        return nullptr;
    return stockObjects() + index;
}

GdiObject* defaultBitmap() { return stockObject(9); }

bool isStock(const GdiObject* o)
{
    const GdiObject* first = stockObjects();
    return std::less_equal<const GdiObject*>()(first, o) && std::less<const GdiObject*>()(o, first + kStockCount);
}

// Under the table lock.
bool liveLocked(const void* handle) { return handle && liveHandles().count(handle) != 0; }

bool liveObjectLocked(const GdiObject* o) { return isStock(o) || liveLocked(o); }

HGDIOBJ registerObject(std::unique_ptr<GdiObject> object)
{
    GdiObject* raw = object.release();
    std::lock_guard<std::mutex> lock(tableMutex());
    liveHandles().insert(raw);
    return raw;
}

// A context that is live and writes a file (not a memory context).
HDC metafileDC(HDC dc)
{
    std::lock_guard<std::mutex> lock(tableMutex());
    if (!liveLocked(dc) || dc->memory || !dc->et)
        return nullptr;
    return dc;
}

HDC anyDC(HDC dc)
{
    std::lock_guard<std::mutex> lock(tableMutex());
    return liveLocked(dc) ? dc : nullptr;
}

LONG clampL(long long v) { return LONG(std::clamp<long long>(v, -kCoordinateLimit, kCoordinateLimit - 1)); }

U_COLORREF colourOf(COLORREF c) { return colorref3_set(uint8_t(c), uint8_t(c >> 8), uint8_t(c >> 16)); }

U_RECTL toRectl(const RECT& r) { return U_RECTL{r.left, r.top, r.right, r.bottom}; }

// ---- writing records ----

struct SmallRecord {
    uint32_t type;
    uint32_t size;
    uint32_t a;
    uint32_t b;
};

void appendOwned(HDC dc, char* record)
{
    if (record)
        emf_append(reinterpret_cast<U_ENHMETARECORD*>(record), dc->et, 1);
}

void appendSmall(HDC dc, uint32_t type, uint32_t a)
{
    SmallRecord r{type, 12, a, 0};
    emf_append(reinterpret_cast<U_ENHMETARECORD*>(&r), dc->et, 0);
}

void appendSmall2(HDC dc, uint32_t type, uint32_t a, uint32_t b)
{
    SmallRecord r{type, 16, a, b};
    emf_append(reinterpret_cast<U_ENHMETARECORD*>(&r), dc->et, 0);
}

// The part of a box that the clip lets through, clamped; false if none.
bool visibleBox(HDC dc, long long left, long long top, long long right, long long bottom, RECT& out)
{
    if (right < left || bottom < top)
        return false;
    if (dc->clipped) {
        left = std::max<long long>(left, dc->clipBound.left);
        top = std::max<long long>(top, dc->clipBound.top);
        right = std::min<long long>(right, dc->clipBound.right - 1LL);
        bottom = std::min<long long>(bottom, dc->clipBound.bottom - 1LL);
        if (right < left || bottom < top)
            return false;
    }
    out = RECT{clampL(left), clampL(top), clampL(right), clampL(bottom)};
    return true;
}

// Adds a box (inclusive) to the picture's bounds; returns it as a record's bounds.
U_RECTL addBounds(HDC dc, long long left, long long top, long long right, long long bottom)
{
    RECT r;
    if (!visibleBox(dc, left, top, right, bottom, r))
        return U_RECTL{0, 0, -1, -1};
    if (!dc->hasBounds) {
        dc->bounds = r;
        dc->hasBounds = true;
    } else {
        dc->bounds.left = std::min(dc->bounds.left, r.left);
        dc->bounds.top = std::min(dc->bounds.top, r.top);
        dc->bounds.right = std::max(dc->bounds.right, r.right);
        dc->bounds.bottom = std::max(dc->bounds.bottom, r.bottom);
    }
    return U_RECTL{r.left, r.top, r.right, r.bottom};
}

int penReach(HDC dc)
{
    const GdiObject* pen = dc->pen;
    if (!pen || pen->penStyle == PS_NULL)
        return 0;
    return (std::max(pen->penWidth, 1) + 1) / 2;
}

U_RECTL addPointBounds(HDC dc, const POINT* points, int count, int reach)
{
    long long l = points[0].x, r = points[0].x, t = points[0].y, b = points[0].y;
    for (int i = 1; i < count; ++i) {
        l = std::min<long long>(l, points[i].x), r = std::max<long long>(r, points[i].x);
        t = std::min<long long>(t, points[i].y), b = std::max<long long>(b, points[i].y);
    }
    return addBounds(dc, l - reach, t - reach, r + reach, b + reach);
}

// Frees the least used created object that is not selected in the file.
void evictOne(HDC dc)
{
    auto victim = dc->realized.end();
    for (auto it = dc->realized.begin(); it != dc->realized.end(); ++it) {
        if (it->first == dc->writtenPen || it->first == dc->writtenBrush || it->first == dc->writtenFont)
            continue;
        if (victim == dc->realized.end() || it->second.lastUse < victim->second.lastUse)
            victim = it;
    }
    if (victim == dc->realized.end())
        return;
    uint32_t index = victim->second.index;
    appendOwned(dc, deleteobject_set(&index, dc->eht));
    dc->realized.erase(victim);
}

// The 1 bit pattern as a bottom-up DIB: rows padded to 4 bytes.
std::vector<char> monoDib(const GdiObject* o)
{
    const int srcStride = (o->width + 7) / 8;
    const int dibStride = ((o->width + 31) / 32) * 4;
    std::vector<char> px(std::size_t(dibStride) * std::size_t(o->height), 0);
    for (int y = 0; y < o->height; ++y)
        std::memcpy(px.data() + std::size_t(o->height - 1 - y) * dibStride,
                    o->bits.data() + std::size_t(y) * srcStride, std::size_t(srcStride));
    return px;
}

// A part of 32 bit BGRX rows as a bottom-up 24 bit DIB.
std::vector<char> colourDib(const GdiObject* o, int x0, int y0, int w, int h)
{
    const int stride = ((w * 3 + 3) / 4) * 4;
    std::vector<char> px(std::size_t(stride) * std::size_t(h), 0);
    for (int y = 0; y < h; ++y) {
        const BYTE* src = o->bits.data() + (std::size_t(y0 + y) * o->width + x0) * 4;
        char* dst = px.data() + std::size_t(h - 1 - y) * stride;
        for (int x = 0; x < w; ++x) {
            dst[3 * x] = char(src[4 * x]);
            dst[3 * x + 1] = char(src[4 * x + 1]);
            dst[3 * x + 2] = char(src[4 * x + 2]);
        }
    }
    return px;
}

// Writes the creation of an object, returning its index, or 0 if it could not be written.
uint32_t createInFile(HDC dc, const GdiObject* o)
{
    uint32_t index = 0;
    char* record = nullptr;
    switch (o->kind) {
    case Kind::Pen: {
        U_POINT width{int32_t(o->penWidth), 0};
        record = createpen_set(&index, dc->eht, logpen_set(uint32_t(o->penStyle), width, colourOf(o->colour)));
        break;
    }
    case Kind::Brush:
        if (o->brushStyle == BrushStyle::Pattern && o->bitCount == 1) {
            const U_RGBQUAD table[2] = {rgbquad_set(0, 0, 0, 0), rgbquad_set(255, 255, 255, 0)};
            std::vector<char> px = monoDib(o);
            const U_BITMAPINFOHEADER header =
                bitmapinfoheader_set(o->width, o->height, 1, 1, U_BI_RGB, uint32_t(px.size()), 3780, 3780, 2, 0);
            PU_BITMAPINFO info = bitmapinfo_set(header, const_cast<PU_RGBQUAD>(table));
            record = createmonobrush_set(&index, dc->eht, U_DIB_RGB_COLORS, info, uint32_t(px.size()), px.data());
            std::free(info);
        } else if (o->brushStyle == BrushStyle::Pattern) {
            std::vector<char> px = colourDib(o, 0, 0, o->width, o->height);
            const U_BITMAPINFOHEADER header =
                bitmapinfoheader_set(o->width, o->height, 1, 24, U_BI_RGB, uint32_t(px.size()), 3780, 3780, 0, 0);
            PU_BITMAPINFO info = bitmapinfo_set(header, nullptr);
            record = createdibpatternbrushpt_set(&index, dc->eht, U_DIB_RGB_COLORS, info, uint32_t(px.size()),
                                                 px.data());
            std::free(info);
        } else {
            const uint32_t style = o->brushStyle == BrushStyle::Hatch ? U_BS_HATCHED
                                   : o->brushStyle == BrushStyle::Null ? U_BS_NULL
                                                                        : U_BS_SOLID;
            record = createbrushindirect_set(&index, dc->eht, logbrush_set(style, colourOf(o->colour), o->hatch));
        }
        break;
    case Kind::Font:
        record = extcreatefontindirectw_set(&index, dc->eht, reinterpret_cast<const char*>(&o->logFont), nullptr);
        break;
    default:
        return 0;
    }
    if (!record)
        return 0;
    appendOwned(dc, record);
    return index;
}

// Brings the file's selection of one kind up to the caller's.
void syncObject(HDC dc, const GdiObject* wanted, std::string& written)
{
    if (!wanted || wanted->key == written)
        return;
    if (isStock(wanted)) {
        appendSmall(dc, U_EMR_SELECTOBJECT, U_STOCK_OBJECT | uint32_t(wanted->stockIndex));
        written = wanted->key;
        return;
    }
    auto it = dc->realized.find(wanted->key);
    if (it == dc->realized.end()) {
        if (dc->realized.size() >= kRealizedLimit)
            evictOne(dc);
        const uint32_t index = createInFile(dc, wanted);
        if (!index)
            return;
        it = dc->realized.emplace(wanted->key, DeviceContext::Realized{index, 0}).first;
    }
    it->second.lastUse = ++dc->useCounter;
    appendSmall(dc, U_EMR_SELECTOBJECT, it->second.index);
    written = wanted->key;
}

// Writes what the next drawing record depends on and the file does not have yet.
void prepareDrawing(HDC dc, bool text)
{
    if (dc->mapMode != dc->writtenMapMode)
        appendSmall(dc, U_EMR_SETMAPMODE, uint32_t(dc->writtenMapMode = dc->mapMode));
    if (dc->bkMode != dc->writtenBkMode)
        appendSmall(dc, U_EMR_SETBKMODE, uint32_t(dc->writtenBkMode = dc->bkMode));
    if (dc->fillMode != dc->writtenFillMode)
        appendSmall(dc, U_EMR_SETPOLYFILLMODE, uint32_t(dc->writtenFillMode = dc->fillMode));
    if (dc->bkColour != dc->writtenBkColour)
        appendSmall(dc, U_EMR_SETBKCOLOR, dc->writtenBkColour = dc->bkColour);
    if (text) {
        if (dc->textColour != dc->writtenTextColour)
            appendSmall(dc, U_EMR_SETTEXTCOLOR, dc->writtenTextColour = dc->textColour);
        if (dc->textAlign != dc->writtenTextAlign)
            appendSmall(dc, U_EMR_SETTEXTALIGN, dc->writtenTextAlign = dc->textAlign);
        syncObject(dc, dc->font, dc->writtenFont);
    }
    syncObject(dc, dc->pen, dc->writtenPen);
    syncObject(dc, dc->brush, dc->writtenBrush);
}

std::u16string fromWide(LPCWSTR s, std::size_t limit)
{
    std::u16string out;
    if (!s)
        return out;
    while (out.size() < limit && s[out.size()])
        out.push_back(s[out.size()]);
    return out;
}

bool fits16(const POINT* points, int count)
{
    for (int i = 0; i < count; ++i)
        if (points[i].x < -32768 || points[i].x > 32767 || points[i].y < -32768 || points[i].y > 32767)
            return false;
    return true;
}

BOOL writePoly(HDC dc, const POINT* points, int count, bool closed)
{
    if (!points || count < 2)
        return FALSE;
    // A polygon of two points is its outline, a line there and back; viewers drop it as a
    // polygon, so it is written as the line.
    if (count == 2)
        closed = false;
    std::vector<POINT> clamped(points, points + count);
    for (POINT& p : clamped)
        p = POINT{clampL(p.x), clampL(p.y)};
    prepareDrawing(dc, false);
    const U_RECTL recordBounds = addPointBounds(dc, clamped.data(), count, penReach(dc));
    char* record;
    if (fits16(clamped.data(), count)) {
        std::vector<U_POINT16> p16(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            p16[std::size_t(i)] = U_POINT16{int16_t(clamped[std::size_t(i)].x), int16_t(clamped[std::size_t(i)].y)};
        record = closed ? U_EMRPOLYGON16_set(recordBounds, uint32_t(count), p16.data())
                        : U_EMRPOLYLINE16_set(recordBounds, uint32_t(count), p16.data());
    } else {
        std::vector<U_POINTL> pl(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            pl[std::size_t(i)] = U_POINTL{clamped[std::size_t(i)].x, clamped[std::size_t(i)].y};
        record = closed ? U_EMRPOLYGON_set(recordBounds, uint32_t(count), pl.data())
                        : U_EMRPOLYLINE_set(recordBounds, uint32_t(count), pl.data());
    }
    if (!record)
        return FALSE;
    appendOwned(dc, record);
    return TRUE;
}

QFont fontFor(int height, int weight, bool italic, const QString& face)
{
    QFont font(face);
    font.setPixelSize(std::max(1, std::min(std::abs(height == std::numeric_limits<int>::min() ? 1 : height), 4096)));
    font.setWeight(weight >= 600 ? QFont::Bold : QFont::Normal);
    font.setItalic(italic);
    return font;
}

// Height of a GDI font in pixels: a negative height is the em size, a positive one the cell.
int emPixels(int height, const QFont& font)
{
    if (height == 0)
        return 12;
    if (height < 0 || !qGuiApp)
        return std::min(std::abs(height == std::numeric_limits<int>::min() ? 1 : height), 4096);
    const QFontMetricsF metrics(font);
    const double cell = metrics.ascent() + metrics.descent();
    return std::max(1, int(std::lround(std::min(height, 4096) * font.pixelSize() / std::max(cell, 1.0))));
}

QString faceOf(const U_LOGFONT& lf)
{
    int n = 0;
    while (n < U_LF_FACESIZE && lf.lfFaceName[n])
        ++n;
    return QString::fromUtf16(reinterpret_cast<const ushort*>(lf.lfFaceName), n);
}

} // namespace

// ---- metafiles ----

HDC CreateEnhMetaFileW(HDC, LPCWSTR fileName, const RECT*, LPCWSTR description)
{
    const std::u16string name = fromWide(fileName, 4096);
    const QByteArray path = name.empty() ? QByteArray("/dev/null")
                                         : QFile::encodeName(QString::fromStdU16String(name));
    auto dc = std::make_unique<DeviceContext>();
    if (emf_start(path.constData(), 1 << 16, 1 << 16, &dc->et) != 0) {
        emf_free(&dc->et);
        return nullptr;
    }
    if (emf_htable_create(128, 128, &dc->eht) != 0) {
        emf_free(&dc->et);
        return nullptr;
    }
    // Application name, null, picture name, null, null: the two parts and three nulls at most.
    std::vector<uint16_t> desc;
    if (description) {
        std::size_t i = 0;
        for (int part = 0; part < 2 && i < 4096; ++part) {
            while (i < 4096 && description[i])
                desc.push_back(description[i++]);
            desc.push_back(0);
            ++i;
            if (part == 0 && description[i] == 0)
                break;
        }
        desc.push_back(0);
    }
    const U_RECTL empty{0, 0, -1, -1};
    char* header = U_EMRHEADER_set(empty, empty, nullptr, U_CBSTR(desc.size()), desc.empty() ? nullptr : desc.data(),
                                   sizel_set(kDeviceWidth, kDeviceHeight), sizel_set(kDeviceWidthMm, kDeviceHeightMm),
                                   0);
    if (!header) {
        emf_free(&dc->et);
        emf_htable_free(&dc->eht);
        return nullptr;
    }
    appendOwned(dc.get(), header);
    auto* h = reinterpret_cast<U_EMRHEADER*>(dc->et->buf);
    if (h->emr.nSize >= sizeof(U_EMRHEADER))
        h->szlMicrometers = sizel_set(kDeviceWidthMm * 1000, kDeviceHeightMm * 1000);
    dc->pen = stockObject(BLACK_PEN);
    dc->brush = stockObject(WHITE_BRUSH);
    dc->font = stockObject(SYSTEM_FONT);
    dc->writtenPen = dc->pen->key;
    dc->writtenBrush = dc->brush->key;
    dc->writtenFont = dc->font->key;
    HDC raw = dc.release();
    std::lock_guard<std::mutex> lock(tableMutex());
    liveHandles().insert(raw);
    return raw;
}

HENHMETAFILE CloseEnhMetaFile(HDC handle)
{
    {
        std::lock_guard<std::mutex> lock(tableMutex());
        if (!liveLocked(handle) || handle->memory)
            return nullptr;
        liveHandles().erase(handle);
        for (GdiObject* o : {handle->pen, handle->brush, handle->font})
            if (o && !isStock(o))
                --o->selections;
    }
    std::unique_ptr<DeviceContext> dc(handle);
    // Nothing created in the file outlives it, and nothing is deleted while selected.
    if (dc->writtenPen != stockKey(BLACK_PEN))
        appendSmall(dc.get(), U_EMR_SELECTOBJECT, U_BLACK_PEN);
    if (dc->writtenBrush != stockKey(WHITE_BRUSH))
        appendSmall(dc.get(), U_EMR_SELECTOBJECT, U_WHITE_BRUSH);
    if (dc->writtenFont != stockKey(SYSTEM_FONT))
        appendSmall(dc.get(), U_EMR_SELECTOBJECT, U_SYSTEM_FONT);
    std::vector<uint32_t> indices;
    for (const auto& r : dc->realized)
        indices.push_back(r.second.index);
    std::sort(indices.begin(), indices.end());
    for (uint32_t index : indices)
        appendOwned(dc.get(), deleteobject_set(&index, dc->eht));
    appendOwned(dc.get(), U_EMREOF_set(0, nullptr, dc->et));

    auto* header = reinterpret_cast<U_EMRHEADER*>(dc->et->buf);
    if (dc->hasBounds) {
        const RECT& b = dc->bounds;
        header->rclBounds = toRectl(b);
        auto mm100 = [](long long px) { return int32_t(std::llround(px * 2540.0 / kDpi)); };
        header->rclFrame = U_RECTL{mm100(b.left), mm100(b.top), mm100(b.right + 1LL), mm100(b.bottom + 1LL)};
    }
    const bool written = emf_finish(dc->et, dc->eht) == 0;
    std::unique_ptr<EnhMetaFile> metafile;
    if (written) {
        metafile = std::make_unique<EnhMetaFile>();
        metafile->bytes.assign(reinterpret_cast<BYTE*>(dc->et->buf), reinterpret_cast<BYTE*>(dc->et->buf) + dc->et->used);
    }
    emf_free(&dc->et);
    emf_htable_free(&dc->eht);
    if (!metafile)
        return nullptr;
    HENHMETAFILE raw = metafile.release();
    std::lock_guard<std::mutex> lock(tableMutex());
    liveHandles().insert(raw);
    return raw;
}

BOOL DeleteEnhMetaFile(HENHMETAFILE metafile)
{
    {
        std::lock_guard<std::mutex> lock(tableMutex());
        if (!liveLocked(metafile))
            return FALSE;
        liveHandles().erase(metafile);
    }
    delete metafile;
    return TRUE;
}

UINT GetEnhMetaFileBits(HENHMETAFILE metafile, UINT size, BYTE* data)
{
    std::lock_guard<std::mutex> lock(tableMutex());
    if (!liveLocked(metafile))
        return 0;
    const std::size_t total = metafile->bytes.size();
    if (!data)
        return UINT(total);
    const std::size_t n = std::min<std::size_t>(size, total);
    std::memcpy(data, metafile->bytes.data(), n);
    return UINT(n);
}

// ---- state ----

int SetMapMode(HDC dc, int mode)
{
    if (!(dc = anyDC(dc)) || mode < 1 || mode > 8)
        return 0;
    std::swap(dc->mapMode, mode);
    return mode;
}

int SetBkMode(HDC dc, int mode)
{
    if (!(dc = anyDC(dc)) || (mode != TRANSPARENT && mode != OPAQUE))
        return 0;
    std::swap(dc->bkMode, mode);
    return mode;
}

COLORREF SetTextColor(HDC dc, COLORREF colour)
{
    if (!(dc = anyDC(dc)))
        return CLR_INVALID;
    std::swap(dc->textColour, colour);
    return colour;
}

COLORREF SetBkColor(HDC dc, COLORREF colour)
{
    if (!(dc = anyDC(dc)))
        return CLR_INVALID;
    std::swap(dc->bkColour, colour);
    return colour;
}

int SetPolyFillMode(HDC dc, int mode)
{
    if (!(dc = anyDC(dc)) || (mode != ALTERNATE && mode != WINDING))
        return 0;
    std::swap(dc->fillMode, mode);
    return mode;
}

UINT SetTextAlign(HDC dc, UINT align)
{
    if (!(dc = anyDC(dc)))
        return UINT(GDI_ERROR);
    std::swap(dc->textAlign, align);
    return align;
}

int GetDeviceCaps(HDC dc, int index)
{
    if (!anyDC(dc))
        return 0;
    switch (index) {
    case LOGPIXELSX:
    case LOGPIXELSY: return kDpi;
    case HORZRES: return kDeviceWidth;
    case VERTRES: return kDeviceHeight;
    case HORZSIZE: return kDeviceWidthMm;
    case VERTSIZE: return kDeviceHeightMm;
    default: return 0;
    }
}

// ---- objects ----

HPEN CreatePen(int style, int width, COLORREF colour)
{
    if (style != PS_SOLID && style != PS_NULL)
        style = PS_SOLID;
    auto o = std::make_unique<GdiObject>();
    o->kind = Kind::Pen;
    o->penStyle = style;
    o->penWidth = std::clamp(width, 0, 1 << 20);
    o->colour = colour & 0xffffff;
    o->key = "P" + std::to_string(style) + ',' + std::to_string(o->penWidth) + ',' + std::to_string(o->colour);
    return registerObject(std::move(o));
}

HBRUSH CreateSolidBrush(COLORREF colour)
{
    auto o = std::make_unique<GdiObject>();
    o->kind = Kind::Brush;
    o->colour = colour & 0xffffff;
    o->key = "S" + std::to_string(o->colour);
    return registerObject(std::move(o));
}

HBRUSH CreateHatchBrush(int hatch, COLORREF colour)
{
    if (hatch < HS_HORIZONTAL || hatch > HS_DIAGCROSS)
        return nullptr;
    auto o = std::make_unique<GdiObject>();
    o->kind = Kind::Brush;
    o->brushStyle = BrushStyle::Hatch;
    o->hatch = hatch;
    o->colour = colour & 0xffffff;
    o->key = "H" + std::to_string(hatch) + ',' + std::to_string(o->colour);
    return registerObject(std::move(o));
}

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits)
{
    if (width <= 0 || height <= 0 || width > kBitmapSideLimit || height > kBitmapSideLimit || planes != 1
        || (bitCount != 1 && bitCount != 32))
        return nullptr;
    const std::size_t stride = bitCount == 1 ? std::size_t(width + 7) / 8 : std::size_t(width) * 4;
    const std::size_t size = stride * std::size_t(height);
    if (size > kBitmapBytesLimit)
        return nullptr;
    auto o = std::make_unique<GdiObject>();
    o->kind = Kind::Bitmap;
    o->width = width;
    o->height = height;
    o->bitCount = int(bitCount);
    o->bits.assign(size, 0);
    if (bits)
        std::memcpy(o->bits.data(), bits, size);
    return registerObject(std::move(o));
}

LONG SetBitmapBits(HBITMAP bitmap, DWORD count, const void* bits)
{
    std::lock_guard<std::mutex> lock(tableMutex());
    if (!bits || !liveLocked(bitmap) || bitmap->kind != Kind::Bitmap)
        return 0;
    const std::size_t n = std::min<std::size_t>(count, bitmap->bits.size());
    std::memcpy(bitmap->bits.data(), bits, n);
    return LONG(n);
}

HBRUSH CreatePatternBrush(HBITMAP bitmap)
{
    auto o = std::make_unique<GdiObject>();
    {
        std::lock_guard<std::mutex> lock(tableMutex());
        if (!liveLocked(bitmap) || bitmap->kind != Kind::Bitmap)
            return nullptr;
        o->width = bitmap->width;
        o->height = bitmap->height;
        o->bitCount = bitmap->bitCount;
        o->bits = bitmap->bits;
    }
    o->kind = Kind::Brush;
    o->brushStyle = BrushStyle::Pattern;
    o->key = "B" + std::to_string(o->width) + 'x' + std::to_string(o->height) + 'x' + std::to_string(o->bitCount) + ':';
    o->key.append(reinterpret_cast<const char*>(o->bits.data()), o->bits.size());
    return registerObject(std::move(o));
}

HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                  DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                  DWORD pitchAndFamily, LPCWSTR faceName)
{
    auto o = std::make_unique<GdiObject>();
    o->kind = Kind::Font;
    // The face keeps at most 31 units and its null; a surrogate pair is not cut in two.
    std::u16string face = fromWide(faceName, LF_FACESIZE - 1);
    if (!face.empty() && face.size() == std::size_t(LF_FACESIZE - 1) && QChar::isHighSurrogate(face.back()))
        face.pop_back();
    uint16_t faceUnits[U_LF_FACESIZE] = {};
    std::copy(face.begin(), face.end(), faceUnits);
    o->logFont = logfont_set(height, width, escapement, orientation, std::clamp(weight, 0, 1000), uint8_t(italic != 0),
                             uint8_t(underline != 0), uint8_t(strikeOut != 0), uint8_t(charSet), uint8_t(outPrecision),
                             uint8_t(clipPrecision), uint8_t(quality), uint8_t(pitchAndFamily), faceUnits);
    o->key.assign("F");
    o->key.append(reinterpret_cast<const char*>(&o->logFont), sizeof(o->logFont));
    return registerObject(std::move(o));
}

HRGN CreateRectRgn(int left, int top, int right, int bottom)
{
    auto o = std::make_unique<GdiObject>();
    o->kind = Kind::Region;
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
    if (left < right && top < bottom) {
        o->bound = RECT{clampL(left), clampL(top), clampL(right), clampL(bottom)};
        o->rects.push_back(o->bound);
    }
    return registerObject(std::move(o));
}

HRGN CreateEllipticRgn(int left, int top, int right, int bottom)
{
    auto o = std::make_unique<GdiObject>();
    o->kind = Kind::Region;
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
    o->rects = detail::ellipticRegionRects(clampL(left), clampL(top), clampL(right), clampL(bottom));
    if (!o->rects.empty()) {
        o->bound = o->rects.front();
        for (const RECT& r : o->rects) {
            o->bound.left = std::min(o->bound.left, r.left);
            o->bound.right = std::max(o->bound.right, r.right);
            o->bound.bottom = std::max(o->bound.bottom, r.bottom);
        }
    }
    return registerObject(std::move(o));
}

HGDIOBJ GetStockObject(int index)
{
    GdiObject* o = stockObject(index);
    return o && o->kind != Kind::Bitmap ? o : nullptr;
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object)
{
    std::lock_guard<std::mutex> lock(tableMutex());
    if (!liveLocked(dc) || !liveObjectLocked(object))
        return nullptr;
    HGDIOBJ* slot = nullptr;
    switch (object->kind) {
    case Kind::Pen: slot = &dc->pen; break;
    case Kind::Brush: slot = &dc->brush; break;
    case Kind::Font: slot = &dc->font; break;
    case Kind::Bitmap:
        // Only a memory context holds a bitmap, and a bitmap is held by one context at a time.
        if (!dc->memory || (object->selections > 0 && object != dc->bitmap && !isStock(object)))
            return nullptr;
        slot = &dc->bitmap;
        break;
    case Kind::Region: return nullptr; // SelectClipRgn is the way to clip
    }
    HGDIOBJ previous = *slot;
    if (previous && !isStock(previous))
        --previous->selections;
    if (!isStock(object))
        ++object->selections;
    *slot = object;
    return previous;
}

BOOL DeleteObject(HGDIOBJ object)
{
    {
        std::lock_guard<std::mutex> lock(tableMutex());
        if (isStock(object))
            return TRUE;
        if (!liveLocked(object) || object->selections > 0)
            return FALSE;
        liveHandles().erase(object);
    }
    delete object;
    return TRUE;
}

int SelectClipRgn(HDC handle, HRGN region)
{
    HDC dc = metafileDC(handle);
    if (!dc)
        return ERROR;
    std::vector<RECT> rects;
    RECT bound{0, 0, 0, 0};
    if (region) {
        std::lock_guard<std::mutex> lock(tableMutex());
        if (!liveLocked(region) || region->kind != Kind::Region)
            return ERROR;
        rects = region->rects;
        bound = region->bound;
    }
    // Clip off first: viewers ignore a region that replaces the clip, and honour one that is
    // intersected with the whole picture.
    appendSmall2(dc, U_EMR_EXTSELECTCLIPRGN, 0, U_RGN_COPY);
    if (!region) {
        dc->clipped = false;
        return SIMPLEREGION;
    }
    dc->clipped = true;
    dc->clipBound = bound;
    if (rects.empty()) {
        // libuemf makes no record of an empty region: the header alone says "nothing".
        struct {
            SmallRecord head;
            U_RGNDATAHEADER rdh;
        } record{{U_EMR_EXTSELECTCLIPRGN, 0, uint32_t(sizeof(U_RGNDATAHEADER)), U_RGN_AND},
                 rgndataheader_set(0, U_RECTL{0, 0, 0, 0})};
        record.head.size = uint32_t(sizeof(record));
        emf_append(reinterpret_cast<U_ENHMETARECORD*>(&record), dc->et, 0);
        return NULLREGION;
    }
    std::vector<U_RECTL> data(rects.size());
    for (std::size_t i = 0; i < rects.size(); ++i)
        data[i] = toRectl(rects[i]);
    PU_RGNDATA rgn = rgndata_set(rgndataheader_set(U_NUM_RECTL(data.size()), toRectl(bound)), data.data());
    appendOwned(dc, U_EMREXTSELECTCLIPRGN_set(U_RGN_AND, rgn));
    std::free(rgn);
    return rects.size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

// ---- drawing ----

BOOL MoveToEx(HDC handle, int x, int y, POINT* previous)
{
    HDC dc = anyDC(handle);
    if (!dc)
        return FALSE;
    if (previous)
        *previous = dc->position;
    dc->position = POINT{clampL(x), clampL(y)};
    if (dc->et)
        appendSmall2(dc, U_EMR_MOVETOEX, uint32_t(dc->position.x), uint32_t(dc->position.y));
    return TRUE;
}

BOOL LineTo(HDC handle, int x, int y)
{
    HDC dc = metafileDC(handle);
    if (!dc)
        return FALSE;
    prepareDrawing(dc, false);
    const POINT ends[2] = {dc->position, POINT{clampL(x), clampL(y)}};
    addPointBounds(dc, ends, 2, penReach(dc));
    dc->position = ends[1];
    appendSmall2(dc, U_EMR_LINETO, uint32_t(ends[1].x), uint32_t(ends[1].y));
    return TRUE;
}

BOOL Ellipse(HDC handle, int left, int top, int right, int bottom)
{
    HDC dc = metafileDC(handle);
    if (!dc)
        return FALSE;
    prepareDrawing(dc, false);
    const U_RECTL box{clampL(left), clampL(top), clampL(right), clampL(bottom)};
    const int reach = penReach(dc);
    addBounds(dc, std::min(box.left, box.right) - reach, std::min(box.top, box.bottom) - reach,
              std::max(box.left, box.right) + reach, std::max(box.top, box.bottom) + reach);
    appendOwned(dc, U_EMRELLIPSE_set(box));
    return TRUE;
}

BOOL Polygon(HDC handle, const POINT* points, int count)
{
    HDC dc = metafileDC(handle);
    return dc ? writePoly(dc, points, count, true) : FALSE;
}

BOOL Polyline(HDC handle, const POINT* points, int count)
{
    HDC dc = metafileDC(handle);
    return dc ? writePoly(dc, points, count, false) : FALSE;
}

BOOL TextOutW(HDC handle, int x, int y, LPCWSTR text, int count)
{
    HDC dc = metafileDC(handle);
    if (!dc || !text || count < 0)
        return FALSE;
    if (count == 0)
        return TRUE;
    count = std::min(count, 1 << 20);
    const QString string = QString::fromUtf16(reinterpret_cast<const ushort*>(text), count);
    const GdiObject* font = dc->font;
    const bool stockFont = isStock(font);
    const int height = stockFont ? -16 : font->logFont.lfHeight;
    const int weight = stockFont ? FW_BOLD : font->logFont.lfWeight;
    const bool italic = !stockFont && font->logFont.lfItalic;
    const QString face = stockFont ? QString() : faceOf(font->logFont);
    std::vector<LONG> advances = detail::textAdvances(string, height, weight, italic, face);
    long long width = 0;
    for (LONG a : advances)
        width += a;
    // Ascent and descent for the bounds.
    double ascent = 0.8 * std::abs(height == std::numeric_limits<int>::min() ? 1 : height), descent = 0.2 * ascent / 0.8;
    if (qGuiApp) {
        const QFont qfont = fontFor(height, weight, italic, face);
        QFont sized = qfont;
        sized.setPixelSize(emPixels(height, qfont));
        const QFontMetricsF metrics(sized);
        ascent = metrics.ascent();
        descent = metrics.descent();
    }
    const LONG px = clampL(x), py = clampL(y);
    long long left = px;
    if ((dc->textAlign & TA_CENTER) == TA_CENTER)
        left = px - width / 2;
    else if (dc->textAlign & TA_RIGHT)
        left = px - width;
    long long top = py;
    if ((dc->textAlign & TA_BASELINE) == TA_BASELINE)
        top = py - std::llround(ascent);
    else if (dc->textAlign & TA_BOTTOM)
        top = py - std::llround(ascent + descent);
    const long long bottom = top + std::llround(std::ceil(ascent + descent));
    prepareDrawing(dc, true);
    const U_RECTL recordBounds = addBounds(dc, left, top, left + std::max(width, 1LL) - 1, bottom - 1);

    std::vector<uint32_t> dx(advances.begin(), advances.end());
    std::vector<uint16_t> units(static_cast<std::size_t>(count));
    std::memcpy(units.data(), text, std::size_t(count) * 2);
    char* emrtext = emrtext_set(U_POINTL{px, py}, U_NUM_STR(count), 2, units.data(), U_ETO_NONE,
                                U_RECTL{0, 0, -1, -1}, dx.data());
    if (!emrtext)
        return FALSE;
    const float scale = float(2540.0 / kDpi);
    char* record = U_EMREXTTEXTOUTW_set(recordBounds, U_GM_COMPATIBLE, scale, scale, reinterpret_cast<PU_EMRTEXT>(emrtext));
    std::free(emrtext);
    if (!record)
        return FALSE;
    appendOwned(dc, record);
    return TRUE;
}

HDC CreateCompatibleDC(HDC)
{
    auto dc = std::make_unique<DeviceContext>();
    dc->memory = true;
    dc->bitmap = defaultBitmap();
    dc->pen = stockObject(BLACK_PEN);
    dc->brush = stockObject(WHITE_BRUSH);
    dc->font = stockObject(SYSTEM_FONT);
    HDC raw = dc.release();
    std::lock_guard<std::mutex> lock(tableMutex());
    liveHandles().insert(raw);
    return raw;
}

BOOL DeleteDC(HDC handle)
{
    {
        std::lock_guard<std::mutex> lock(tableMutex());
        if (!liveLocked(handle) || !handle->memory)
            return FALSE;
        liveHandles().erase(handle);
        for (GdiObject* o : {handle->pen, handle->brush, handle->font, handle->bitmap})
            if (o && !isStock(o))
                --o->selections;
    }
    delete handle;
    return TRUE;
}

BOOL StretchBlt(HDC destHandle, int x, int y, int width, int height, HDC sourceHandle, int sourceX, int sourceY,
                int sourceWidth, int sourceHeight, DWORD rop)
{
    HDC dc = metafileDC(destHandle);
    if (!dc || width == 0 || height == 0)
        return FALSE;
    std::vector<char> px;
    int w = 0, h = 0;
    {
        std::lock_guard<std::mutex> lock(tableMutex());
        if (!liveLocked(sourceHandle) || !sourceHandle->memory)
            return FALSE;
        const GdiObject* bitmap = sourceHandle->bitmap;
        if (!bitmap || isStock(bitmap) || bitmap->bitCount != 32)
            return FALSE;
        // The source rectangle within the bitmap; a mirrored source is not supported.
        const long long x0 = std::max<long long>(sourceX, 0), y0 = std::max<long long>(sourceY, 0);
        const long long x1 = std::min<long long>(static_cast<long long>(sourceX) + sourceWidth, bitmap->width);
        const long long y1 = std::min<long long>(static_cast<long long>(sourceY) + sourceHeight, bitmap->height);
        if (sourceWidth <= 0 || sourceHeight <= 0 || x1 <= x0 || y1 <= y0)
            return FALSE;
        w = int(x1 - x0), h = int(y1 - y0);
        px = colourDib(bitmap, int(x0), int(y0), w, h);
    }
    prepareDrawing(dc, false);
    const LONG dx = clampL(x), dy = clampL(y), dw = clampL(width), dh = clampL(height);
    const U_RECTL bounds = addBounds(dc, std::min<long long>(dx, dx + dw), std::min<long long>(dy, dy + dh),
                                     std::max<long long>(dx, dx + dw) - 1, std::max<long long>(dy, dy + dh) - 1);
    const U_BITMAPINFOHEADER header =
        bitmapinfoheader_set(w, h, 1, 24, U_BI_RGB, uint32_t(px.size()), 3780, 3780, 0, 0);
    PU_BITMAPINFO info = bitmapinfo_set(header, nullptr);
    char* record = U_EMRSTRETCHBLT_set(bounds, U_POINTL{dx, dy}, U_POINTL{dw, dh}, U_POINTL{0, 0}, U_POINTL{w, h},
                                       xform_set(1, 0, 0, 1, 0, 0), colourOf(dc->bkColour), U_DIB_RGB_COLORS, rop, info,
                                       uint32_t(px.size()), px.data());
    std::free(info);
    if (!record)
        return FALSE;
    appendOwned(dc, record);
    return TRUE;
}

// ---- arithmetic ----

int MulDiv(int a, int b, int c)
{
    if (c == 0)
        return -1;
    const long long n = static_cast<long long>(a) * b;
    long long q = n / c;
    const long long r = n % c;
    // Half away from zero: |2r| >= |c| moves the quotient one further from zero.
    if (2 * std::llabs(r) >= std::llabs(static_cast<long long>(c)))
        q += ((n < 0) != (c < 0)) ? -1 : 1;
    if (q > std::numeric_limits<int>::max() || q < std::numeric_limits<int>::min())
        return -1;
    return int(q);
}

HBITMAP toHBITMAP(const QPixmap& pixmap, int)
{
    if (pixmap.isNull())
        return nullptr;
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    const int w = image.width(), h = image.height();
    if (w > kBitmapSideLimit || h > kBitmapSideLimit)
        return nullptr;
    std::vector<BYTE> bits(std::size_t(w) * std::size_t(h) * 4);
    for (int y = 0; y < h; ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        BYTE* out = bits.data() + std::size_t(y) * w * 4;
        for (int x = 0; x < w; ++x) {
            const QRgb c = line[x];
            const int a = qAlpha(c);
            auto blend = [a](int v) { return BYTE((v * a + 255 * (255 - a) + 127) / 255); };
            out[4 * x] = blend(qBlue(c));
            out[4 * x + 1] = blend(qGreen(c));
            out[4 * x + 2] = blend(qRed(c));
            out[4 * x + 3] = 0;
        }
    }
    return CreateBitmap(w, h, 1, 32, bits.data());
}

// ---- helpers ----

namespace detail {

std::vector<RECT> ellipticRegionRects(int left, int top, int right, int bottom)
{
    std::vector<RECT> rects;
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
    if (right - left < 1 || bottom - top < 1)
        return rects;
    const double cx = (double(left) + right) / 2, cy = (double(top) + bottom) / 2;
    const double rx = (double(right) - left) / 2, ry = (double(bottom) - top) / 2;
    // A region taller than any picture is cut at the coordinate limit rather than listed row by row.
    const long long rows = std::min<long long>(static_cast<long long>(bottom) - top, 1 << 16);
    const double step = (double(bottom) - top) / rows;
    for (long long i = 0; i < rows; ++i) {
        const double y0 = top + i * step, y1 = top + (i + 1) * step;
        const double dy = ((y0 + y1) / 2 - cy) / ry;
        if (std::abs(dy) >= 1.0)
            continue;
        const double half = rx * std::sqrt(1.0 - dy * dy);
        const LONG x0 = clampL(std::llround(cx - half)), x1 = clampL(std::llround(cx + half));
        if (x1 <= x0)
            continue;
        const RECT r{x0, LONG(std::llround(y0)), x1, LONG(std::llround(y1))};
        if (!rects.empty() && rects.back().left == r.left && rects.back().right == r.right
            && rects.back().bottom == r.top)
            rects.back().bottom = r.bottom;
        else
            rects.push_back(r);
    }
    return rects;
}

std::vector<LONG> textAdvances(const QString& text, int height, int weight, bool italic, const QString& face)
{
    std::vector<LONG> out(std::size_t(text.size()), 0);
    QFont font = fontFor(height, weight, italic, face);
    double sum = 0;
    long long placed = 0;
    std::unique_ptr<QFontMetricsF> metrics;
    const int em = emPixels(height, font);
    if (qGuiApp) {
        font.setPixelSize(em);
        metrics = std::make_unique<QFontMetricsF>(font);
    }
    for (int i = 0; i < text.size();) {
        const int units = text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate() ? 2 : 1;
        // Without a GUI application there are no fonts to measure: a typical advance stands in.
        sum += metrics ? metrics->horizontalAdvance(text.mid(i, units)) : 0.55 * em;
        const long long now = std::llround(sum);
        out[std::size_t(i)] = LONG(now - placed);
        placed = now;
        i += units;
    }
    return out;
}

int gdiWeight(int qtWeight)
{
    // Qt 5's named weights and their GDI values, interpolated between.
    static const int qt[] = {0, 12, 25, 50, 57, 63, 75, 81, 87, 99};
    static const int gdi[] = {100, 200, 300, 400, 500, 600, 700, 800, 900, 900};
    qtWeight = std::clamp(qtWeight, 0, 99);
    for (int i = 1; i < 10; ++i)
        if (qtWeight <= qt[i])
            return gdi[i - 1] + (gdi[i] - gdi[i - 1]) * (qtWeight - qt[i - 1]) / (qt[i] - qt[i - 1]);
    return 900;
}

LONG clampCoordinate(double v)
{
    if (std::isnan(v))
        return 0;
    return LONG(std::clamp(v, double(-kCoordinateLimit), double(kCoordinateLimit - 1)));
}

} // namespace detail

} // namespace rkBase::gdi

#pragma once
// The handful of Windows GDI calls a chart needs to leave as an enhanced metafile, with their
// Windows names and argument lists, written on every platform by libuemf. EMFEngine speaks only
// these calls, so the same engine code would run on Windows against the real ones.
//
// What differs from Windows, on purpose:
// - Only metafile device contexts exist (CreateEnhMetaFileW) and memory contexts that hold a
//   bitmap for StretchBlt (CreateCompatibleDC). The reference device is 96 dpi.
// - SetBitmapBits takes rows padded to a byte, the way EMFEngine packs a brush texture.
// - toHBITMAP stands in for the Qt Windows extras' function of that name.
// - The writer leaves out what does not change the picture: a state record (background mode,
//   colours, fill mode, text alignment, map mode) is written only when a drawing record follows
//   and the value differs from the one last written; a pen, brush or font is written once per
//   distinct look and reused, and selected in the file only before a drawing record needs it.
//   Everything created in the file is deleted before its end, after stock objects are selected
//   back. A chart of ten thousand symbols therefore costs its coordinates and little more.
// - A region is written as clip off followed by RGN_AND with the region, and an elliptic
//   region as one rectangle per scan line: viewers ignore or misdraw the other forms.
// - A polygon of two points is written as a polyline: the same outline, and viewers drop the
//   polygon.
// - Coordinates are clamped to +-2^27, as GDI does in practice; points that fit 16 bits are
//   written in the short record forms.
//
// Threads: every handle is checked against one table of live handles behind a mutex, so a
// stale or foreign handle fails cleanly instead of being followed. Objects are immutable once
// made (bitmap bits change under the same lock). A device context, as on Windows, belongs to one
// thread at a time; different contexts may be used from different threads at once.

#include <QImage>
#include <QPixmap>
#include <QString>

#include <cstdint>
#include <vector>

namespace rkBase::gdi {

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using COLORREF = std::uint32_t;
using WCHAR = char16_t;
using LPCWSTR = const char16_t*;

struct POINT {
    LONG x;
    LONG y;
};
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

struct DeviceContext;
struct GdiObject;
struct EnhMetaFile;
using HDC = DeviceContext*;
using HGDIOBJ = GdiObject*;
using HPEN = GdiObject*;
using HBRUSH = GdiObject*;
using HRGN = GdiObject*;
using HFONT = GdiObject*;
using HBITMAP = GdiObject*;
using HENHMETAFILE = EnhMetaFile*;

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;
constexpr int GDI_ERROR = -1; // UINT/int failure of SetTextAlign and friends

// SetMapMode
constexpr int MM_TEXT = 1;
// SetBkMode
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;
// SetPolyFillMode
constexpr int ALTERNATE = 1;
constexpr int WINDING = 2;
// CreatePen
constexpr int PS_SOLID = 0;
constexpr int PS_NULL = 5;
// CreateHatchBrush
constexpr int HS_HORIZONTAL = 0;
constexpr int HS_VERTICAL = 1;
constexpr int HS_FDIAGONAL = 2;
constexpr int HS_BDIAGONAL = 3;
constexpr int HS_CROSS = 4;
constexpr int HS_DIAGCROSS = 5;
// GetStockObject
constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int SYSTEM_FONT = 13;
// SelectClipRgn results
constexpr int ERROR = 0;
constexpr int NULLREGION = 1;
constexpr int SIMPLEREGION = 2;
constexpr int COMPLEXREGION = 3;
// SetTextAlign
constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;
constexpr UINT TA_BASELINE = 24;
// GetDeviceCaps
constexpr int HORZSIZE = 4;
constexpr int VERTSIZE = 6;
constexpr int HORZRES = 8;
constexpr int VERTRES = 10;
constexpr int LOGPIXELSX = 88;
constexpr int LOGPIXELSY = 90;
// CreateFontW
constexpr int FW_NORMAL = 400;
constexpr int FW_BOLD = 700;
constexpr DWORD DEFAULT_CHARSET = 1;
constexpr DWORD OUT_OUTLINE_PRECIS = 8;
constexpr int LF_FACESIZE = 32;
// StretchBlt
constexpr DWORD SRCCOPY = 0x00CC0020;

inline constexpr COLORREF RGB(int r, int g, int b)
{
    return COLORREF(r & 0xff) | (COLORREF(g & 0xff) << 8) | (COLORREF(b & 0xff) << 16);
}

// ---- metafiles ----
// reference: ignored (the reference device is always 96 dpi). fileName null or empty: a memory
// metafile. frame: ignored, the frame is taken from what is drawn. description: application and
// picture name, each ending in a null character, the whole ending in two; may be null.
// Returns null if the file cannot be opened.
HDC CreateEnhMetaFileW(HDC reference, LPCWSTR fileName, const RECT* frame, LPCWSTR description);
HENHMETAFILE CloseEnhMetaFile(HDC dc);
BOOL DeleteEnhMetaFile(HENHMETAFILE metafile);
// Copies up to size bytes of the metafile into data; with data null, returns the size needed.
UINT GetEnhMetaFileBits(HENHMETAFILE metafile, UINT size, BYTE* data);

// ---- state ----
int SetMapMode(HDC dc, int mode);
int SetBkMode(HDC dc, int mode);
COLORREF SetTextColor(HDC dc, COLORREF colour);
COLORREF SetBkColor(HDC dc, COLORREF colour);
int SetPolyFillMode(HDC dc, int mode);
UINT SetTextAlign(HDC dc, UINT align);
int GetDeviceCaps(HDC dc, int index);

// ---- objects ----
HPEN CreatePen(int style, int width, COLORREF colour);
HBRUSH CreateSolidBrush(COLORREF colour);
HBRUSH CreateHatchBrush(int hatch, COLORREF colour);
// Only one plane of one bit per pixel (a pattern) or of 24 or 32 bits (a picture) is kept.
HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits);
LONG SetBitmapBits(HBITMAP bitmap, DWORD count, const void* bits);
HBRUSH CreatePatternBrush(HBITMAP bitmap);
HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                  DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                  DWORD pitchAndFamily, LPCWSTR faceName);
HRGN CreateRectRgn(int left, int top, int right, int bottom);
HRGN CreateEllipticRgn(int left, int top, int right, int bottom);
HGDIOBJ GetStockObject(int index);
HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
// Fails for an object selected into a context; stock objects are never deleted.
BOOL DeleteObject(HGDIOBJ object);
int SelectClipRgn(HDC dc, HRGN region);

// ---- drawing ----
BOOL MoveToEx(HDC dc, int x, int y, POINT* previous);
BOOL LineTo(HDC dc, int x, int y);
BOOL Ellipse(HDC dc, int left, int top, int right, int bottom);
BOOL Polygon(HDC dc, const POINT* points, int count);
BOOL Polyline(HDC dc, const POINT* points, int count);
BOOL TextOutW(HDC dc, int x, int y, LPCWSTR text, int count);
HDC CreateCompatibleDC(HDC dc);
BOOL DeleteDC(HDC dc);
BOOL StretchBlt(HDC dest, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth,
                int sourceHeight, DWORD rop);

// ---- arithmetic ----
// a * b / c rounded half away from zero; -1 when c is 0 or the result does not fit an int.
int MulDiv(int a, int b, int c);

// A 32-bit bitmap of the pixmap, for StretchBlt through a compatible context; the caller deletes
// it. format is accepted for the Windows signature and ignored (alpha is dropped on white).
HBITMAP toHBITMAP(const QPixmap& pixmap, int format = 0);

// ---- helpers of the writer, public for their tests ----
namespace detail {
// The scan-line rectangles of the ellipse inscribed in [left, right) x [top, bottom), one per
// row, rows with the same span merged; empty for an empty box.
std::vector<RECT> ellipticRegionRects(int left, int top, int right, int bottom);
// Advances in pixels of each UTF-16 unit of the text in the font the fields describe, summed
// and rounded so that they add up to the rounded width of the whole text; the second unit of a
// surrogate pair gets 0.
std::vector<LONG> textAdvances(const QString& text, int height, int weight, bool italic, const QString& face);
// GDI weight (100..900) of a Qt 5 weight (0..99).
int gdiWeight(int qtWeight);
// v clamped to what a GDI coordinate may hold; NaN becomes 0.
LONG clampCoordinate(double v);
} // namespace detail

} // namespace rkBase::gdi

// The GDI layer under the metafile engine: its arithmetic and geometry helpers, and the files it
// writes when called directly, read back with libuemf.
#include "EmfGdi.h"
#include "EmfRecords.h"

#include <QFontMetricsF>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <cmath>
#include <thread>

using namespace rkBase::gdi;

namespace {

QByteArray bitsOf(HENHMETAFILE metafile)
{
    QByteArray out(int(GetEnhMetaFileBits(metafile, 0, nullptr)), Qt::Uninitialized);
    GetEnhMetaFileBits(metafile, UINT(out.size()), reinterpret_cast<BYTE*>(out.data()));
    return out;
}

// Closes the context and returns the bytes, deleting the metafile.
QByteArray finish(HDC dc)
{
    HENHMETAFILE metafile = CloseEnhMetaFile(dc);
    const QByteArray bytes = bitsOf(metafile);
    DeleteEnhMetaFile(metafile);
    return bytes;
}

// A small picture using every kind of record the layer writes.
void drawSample(HDC dc, int shift)
{
    HRGN region = CreateEllipticRgn(0, 0, 200, 150);
    SelectClipRgn(dc, region);
    DeleteObject(region);
    HPEN pen = CreatePen(PS_SOLID, 3, RGB(200, 0, 0));
    HGDIOBJ oldPen = SelectObject(dc, pen);
    HBRUSH brush = CreateHatchBrush(HS_CROSS, RGB(0, 0, 255));
    HGDIOBJ oldBrush = SelectObject(dc, brush);
    MoveToEx(dc, 10 + shift, 10, nullptr);
    LineTo(dc, 100, 80 + shift);
    const POINT triangle[] = {{20, 20}, {60, 20 + shift}, {40, 60}};
    SetPolyFillMode(dc, WINDING);
    Polygon(dc, triangle, 3);
    Ellipse(dc, 50, 50, 90 + shift, 80);
    HFONT font = CreateFontW(-16, 0, 0, 0, FW_BOLD, 0, 0, 0, DEFAULT_CHARSET, OUT_OUTLINE_PRECIS, 0, 0, 0, u"DejaVu Sans");
    HGDIOBJ oldFont = SelectObject(dc, font);
    TextOutW(dc, 30, 120, u"chart", 5);
    SelectObject(dc, oldFont);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldPen);
    DeleteObject(font);
    DeleteObject(brush);
    DeleteObject(pen);
}

} // namespace

class TestEmfGdi : public QObject
{
    Q_OBJECT
private slots:
    void mulDiv_data();
    void mulDiv();
    void ellipticRegion_data();
    void ellipticRegion();
    void textAdvances_data();
    void textAdvances();
    void gdiWeight_data();
    void gdiWeight();
    void handles();
    void fileAndMemoryAreIdentical();
    void unwritableFileFailsCleanly();
    void clipRegions_data();
    void clipRegions();
    void faceNames_data();
    void faceNames();
    void coordinates_data();
    void coordinates();
    void sharedLooksAreWrittenOnce();
    void boundsAndFrame();
    void threads();
};

void TestEmfGdi::mulDiv_data()
{
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("c");
    QTest::addColumn<int>("expected");
    QTest::newRow("exact") << 12 << 96 << 72 << 16;
    QTest::newRow("9 pt at 96 dpi: 12") << 9 << 96 << 72 << 12;
    QTest::newRow("10 pt at 96 dpi: 13.33 down") << 10 << 96 << 72 << 13;
    QTest::newRow("half up") << 3 << 1 << 2 << 2;
    QTest::newRow("half away from zero below") << -3 << 1 << 2 << -2;
    QTest::newRow("negative divisor") << 3 << 1 << -2 << -2;
    QTest::newRow("both negative") << -3 << -1 << 2 << 2;
    QTest::newRow("just under half") << 7 << 1 << 15 << 0;
    QTest::newRow("product beyond 32 bits") << 2000000000 << 3 << 4 << 1500000000;
    QTest::newRow("division by zero") << 5 << 5 << 0 << -1;
    QTest::newRow("result beyond int") << 2000000000 << 2000000000 << 1 << -1;
    QTest::newRow("int min / -1") << std::numeric_limits<int>::min() << 1 << -1 << -1;
}

void TestEmfGdi::mulDiv()
{
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(int, c);
    QFETCH(int, expected);
    QCOMPARE(MulDiv(a, b, c), expected);
}

void TestEmfGdi::ellipticRegion_data()
{
    QTest::addColumn<QRect>("box"); // left, top, right (exclusive), bottom (exclusive)
    QTest::newRow("circle") << QRect(QPoint(0, 0), QPoint(100, 100));
    QTest::newRow("wide, off the origin") << QRect(QPoint(-40, 30), QPoint(260, 90));
    QTest::newRow("tall") << QRect(QPoint(10, 10), QPoint(30, 410));
    QTest::newRow("odd size") << QRect(QPoint(3, 5), QPoint(20, 18));
    QTest::newRow("one pixel high") << QRect(QPoint(0, 0), QPoint(50, 1));
    QTest::newRow("corners swapped") << QRect(QPoint(100, 100), QPoint(0, 0));
}

void TestEmfGdi::ellipticRegion()
{
    QFETCH(QRect, box);
    const int l = std::min(box.left(), box.right()), r = std::max(box.left(), box.right());
    const int t = std::min(box.top(), box.bottom()), b = std::max(box.top(), box.bottom());
    const std::vector<RECT> rects = detail::ellipticRegionRects(box.left(), box.top(), box.right(), box.bottom());
    QVERIFY(!rects.empty());
    double area = 0;
    LONG previousBottom = t;
    for (const RECT& rc : rects) {
        // Inside the box, one band after another, none empty, left and right mirror each other.
        QVERIFY(rc.left >= l && rc.right <= r && rc.top >= t && rc.bottom <= b);
        QVERIFY(rc.left < rc.right && rc.top < rc.bottom);
        QVERIFY(rc.top >= previousBottom);
        QVERIFY2(std::abs((rc.left - l) - (r - rc.right)) <= 1, "not symmetric");
        previousBottom = rc.bottom;
        area += double(rc.right - rc.left) * (rc.bottom - rc.top);
    }
    // The area is the ellipse's within a pixel along its outline.
    const double a = (r - l) / 2.0, c = (b - t) / 2.0;
    const double perimeter = M_PI * (3 * (a + c) - std::sqrt((3 * a + c) * (a + 3 * c)));
    QVERIFY2(std::abs(area - M_PI * a * c) <= perimeter + 2,
             qPrintable(QStringLiteral("area %1 against %2").arg(area).arg(M_PI * a * c)));
    // Rows of one span are merged: no two neighbours have the same span.
    for (std::size_t i = 1; i < rects.size(); ++i)
        QVERIFY(!(rects[i].left == rects[i - 1].left && rects[i].right == rects[i - 1].right
                  && rects[i].top == rects[i - 1].bottom));
    QVERIFY(detail::ellipticRegionRects(5, 5, 5, 50).empty());
}

void TestEmfGdi::textAdvances_data()
{
    QTest::addColumn<QString>("text");
    // Each unit's advance width in DejaVu Sans's own units, 2048 to the em (read from the font's
    // hmtx table); 0 for the second unit of a pair. Empty where a glyph comes from whatever font
    // the machine falls back to.
    QTest::addColumn<QVector<int>>("units");
    QTest::newRow("latin") << QStringLiteral("Porosity 0.21")
                           << QVector<int>{1235, 1253, 842, 1253, 1067, 569, 803, 1212, 651, 1303, 651, 1303, 1303};
    QTest::newRow("accented") << QStringLiteral("Dip direction: 45\u00b0")
                              << QVector<int>{1577, 569, 1300, 651, 1300, 569, 842, 1260, 1126,
                                              803, 569, 1253, 1298, 690, 651, 1303, 1303, 1024};
    QTest::newRow("beyond the BMP") << QString::fromUtf8("a\xf0\x9f\x98\x80" "b\xf0\x90\x8d\x88") << QVector<int>{};
    QTest::newRow("lone surrogate") << QString(QChar(0xd800)) + QStringLiteral("x") << QVector<int>{};
}

void TestEmfGdi::textAdvances()
{
    QFETCH(QString, text);
    QFETCH(QVector<int>, units);
    const std::vector<LONG> dx = detail::textAdvances(text, -16, FW_NORMAL, false, QStringLiteral("DejaVu Sans"));
    QCOMPARE(int(dx.size()), text.size());
    for (int i = 0; i < text.size(); ++i) {
        const bool second = i > 0 && text.at(i).isLowSurrogate() && text.at(i - 1).isHighSurrogate();
        // The pair's second unit carries no advance; every other unit some.
        QVERIFY2(second ? dx[std::size_t(i)] == 0 : dx[std::size_t(i)] > 0, qPrintable(QString::number(i)));
    }
    long long sum = 0;
    for (LONG d : dx)
        sum += d;
    if (!units.isEmpty()) {
        // At 16 pixels to the em: each advance within a pixel of its glyph's width (the rounding
        // is carried from one to the next), the sum the whole text's width rounded.
        QCOMPARE(units.size(), text.size());
        double width = 0;
        for (int i = 0; i < units.size(); ++i) {
            const double glyph = units[i] * 16.0 / 2048.0;
            QVERIFY2(std::abs(dx[std::size_t(i)] - glyph) < 1.0,
                     qPrintable(QStringLiteral("unit %1: %2 for %3").arg(i).arg(dx[std::size_t(i)]).arg(glyph)));
            width += glyph;
        }
        QVERIFY2(std::abs(sum - width) <= 0.5, qPrintable(QStringLiteral("%1 for %2").arg(sum).arg(width)));
    }
    // Twice the font, twice the width.
    const std::vector<LONG> big = detail::textAdvances(text, -32, FW_NORMAL, false, QStringLiteral("DejaVu Sans"));
    long long bigSum = 0;
    for (LONG d : big)
        bigSum += d;
    QVERIFY2(std::abs(bigSum - 2 * sum) <= 1, qPrintable(QStringLiteral("%1 against %2").arg(bigSum).arg(sum)));
}

void TestEmfGdi::gdiWeight_data()
{
    QTest::addColumn<int>("qt");
    QTest::addColumn<int>("gdi");
    QTest::newRow("thin") << int(QFont::Thin) << 100;
    QTest::newRow("light") << int(QFont::Light) << 300;
    QTest::newRow("normal") << int(QFont::Normal) << 400;
    QTest::newRow("demibold") << int(QFont::DemiBold) << 600;
    QTest::newRow("bold") << int(QFont::Bold) << 700;
    QTest::newRow("black") << int(QFont::Black) << 900;
    QTest::newRow("out of range") << 500 << 900;
}

void TestEmfGdi::gdiWeight()
{
    QFETCH(int, qt);
    QFETCH(int, gdi);
    QCOMPARE(detail::gdiWeight(qt), gdi);
}

void TestEmfGdi::handles()
{
    HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    QVERIFY(dc);
    HPEN pen = CreatePen(PS_SOLID, 1, 0);
    HGDIOBJ old = SelectObject(dc, pen);
    QCOMPARE(old, GetStockObject(BLACK_PEN));
    QCOMPARE(DeleteObject(pen), FALSE); // selected
    QCOMPARE(SelectObject(dc, old), pen);
    QCOMPARE(DeleteObject(pen), TRUE);
    QCOMPARE(DeleteObject(pen), FALSE); // gone
    QCOMPARE(DeleteObject(GetStockObject(NULL_BRUSH)), TRUE); // stock objects stay
    QVERIFY(GetStockObject(NULL_BRUSH));
    QVERIFY(!CreateHatchBrush(17, 0));
    QVERIFY(!CreateBitmap(0, 4, 1, 1, nullptr));
    QVERIFY(!CreateBitmap(4, 4, 1, 8, nullptr));
    QVERIFY(!CreatePatternBrush(nullptr));
    HENHMETAFILE metafile = CloseEnhMetaFile(dc);
    QVERIFY(metafile);
    // The closed context is no longer a context.
    QCOMPARE(LineTo(dc, 1, 1), FALSE);
    QCOMPARE(SetBkMode(dc, OPAQUE), 0);
    QVERIFY(!CloseEnhMetaFile(dc));
    QVERIFY(!SelectObject(dc, GetStockObject(WHITE_PEN)));
    // A short buffer gets what fits.
    BYTE four[4] = {};
    QCOMPARE(GetEnhMetaFileBits(metafile, 4, four), UINT(4));
    QCOMPARE(four[0], BYTE(1)); // EMR_HEADER
    QCOMPARE(DeleteEnhMetaFile(metafile), TRUE);
    QCOMPARE(DeleteEnhMetaFile(metafile), FALSE);
    QCOMPARE(GetEnhMetaFileBits(metafile, 0, nullptr), UINT(0));
}

void TestEmfGdi::fileAndMemoryAreIdentical()
{
    QTemporaryDir dir;
    const std::u16string path = dir.filePath(QStringLiteral("sample.emf")).toStdU16String();
    HDC onFile = CreateEnhMetaFileW(nullptr, path.c_str(), nullptr, u"app\0picture\0");
    HDC inMemory = CreateEnhMetaFileW(nullptr, nullptr, nullptr, u"app\0picture\0");
    QVERIFY(onFile && inMemory);
    drawSample(onFile, 0);
    drawSample(inMemory, 0);
    const QByteArray fromFile = finish(onFile);
    const QByteArray fromMemory = finish(inMemory);
    QFile file(QString::fromStdU16String(path));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray written = file.readAll();
    QCOMPARE(written, fromFile);
    QCOMPARE(fromMemory, fromFile);
    const EmfFile emf = readEmf(fromMemory);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    // The description: both names and the closing null.
    QCOMPARE(emf.header.nDescription, uint32_t(13));
    const auto* desc = reinterpret_cast<const char16_t*>(fromMemory.constData() + emf.header.offDescription);
    QCOMPARE(std::u16string(desc, 13), std::u16string(u"app\0picture\0\0", 13));
    // 96 dpi: the reference device's pixels over its millimetres.
    QCOMPARE(emf.header.szlDevice.cx * 254, emf.header.szlMillimeters.cx * 960);
    QCOMPARE(emf.header.szlDevice.cy * 254, emf.header.szlMillimeters.cy * 960);
    QCOMPARE(emf.header.szlMicrometers.cx, emf.header.szlMillimeters.cx * 1000);
    // Another drawing differs.
    HDC other = CreateEnhMetaFileW(nullptr, nullptr, nullptr, u"app\0picture\0");
    drawSample(other, 1);
    QVERIFY(finish(other) != fromMemory);
}

void TestEmfGdi::unwritableFileFailsCleanly()
{
    HDC dc = CreateEnhMetaFileW(nullptr, u"/nonexistent-dir/x/y.emf", nullptr, nullptr);
    QVERIFY(!dc);
    QCOMPARE(MoveToEx(dc, 1, 1, nullptr), FALSE);
    QCOMPARE(TextOutW(dc, 1, 1, u"x", 1), FALSE);
    QVERIFY(!CloseEnhMetaFile(dc));
}

void TestEmfGdi::clipRegions_data()
{
    QTest::addColumn<QRect>("box");
    QTest::addColumn<bool>("elliptic");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("andLine");
    QTest::newRow("rectangle") << QRect(QPoint(10, 20), QPoint(110, 70)) << false << SIMPLEREGION
                               << "CLIP mode 1 rects 1 bound 10,20 110,70";
    QTest::newRow("rectangle, corners swapped") << QRect(QPoint(110, 70), QPoint(10, 20)) << false << SIMPLEREGION
                                                << "CLIP mode 1 rects 1 bound 10,20 110,70";
    QTest::newRow("zero width") << QRect(QPoint(10, 20), QPoint(10, 70)) << false << NULLREGION
                                << "CLIP mode 1 rects 0 bound 0,0 0,0";
    QTest::newRow("zero size ellipse") << QRect(QPoint(5, 5), QPoint(5, 5)) << true << NULLREGION
                                       << "CLIP mode 1 rects 0 bound 0,0 0,0";
    QTest::newRow("ellipse") << QRect(QPoint(0, 0), QPoint(40, 40)) << true << COMPLEXREGION
                             << "CLIP mode 1 rects %1 bound 0,0 40,40";
}

void TestEmfGdi::clipRegions()
{
    QFETCH(QRect, box);
    QFETCH(bool, elliptic);
    QFETCH(int, result);
    QFETCH(QString, andLine);
    HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    HRGN region = elliptic ? CreateEllipticRgn(box.left(), box.top(), box.right(), box.bottom())
                           : CreateRectRgn(box.left(), box.top(), box.right(), box.bottom());
    QCOMPARE(SelectClipRgn(dc, region), result);
    DeleteObject(region);
    QCOMPARE(SelectClipRgn(dc, nullptr), SIMPLEREGION);
    const QByteArray bytes = finish(dc);
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    // Clip off, then the region intersected with the whole picture; then clip off alone.
    const QStringList clips = emf.linesStarting(QStringLiteral("CLIP"));
    QCOMPARE(clips.size(), 3);
    QCOMPARE(clips[0], QStringLiteral("CLIP mode 5 none"));
    if (andLine.contains(QLatin1String("%1")))
        andLine = andLine.arg(detail::ellipticRegionRects(box.left(), box.top(), box.right(), box.bottom()).size());
    QCOMPARE(clips[1], andLine);
    QCOMPARE(clips[2], QStringLiteral("CLIP mode 5 none"));
}

void TestEmfGdi::faceNames_data()
{
    QTest::addColumn<QString>("face");
    QTest::addColumn<QString>("written");
    QTest::newRow("short") << "DejaVu Sans" << "DejaVu Sans";
    QTest::newRow("31 units") << QString(31, QLatin1Char('a')) << QString(31, QLatin1Char('a'));
    QTest::newRow("32 units") << QString(32, QLatin1Char('b')) << QString(31, QLatin1Char('b'));
    QTest::newRow("100 units") << QString(100, QLatin1Char('c')) << QString(31, QLatin1Char('c'));
    // A pair that would be cut at the end is left out whole.
    QTest::newRow("pair at the cut") << QString(30, QLatin1Char('d')) + QString::fromUtf8("\xf0\x9f\x98\x80")
                                     << QString(30, QLatin1Char('d'));
    QTest::newRow("empty") << QString() << QString();
}

void TestEmfGdi::faceNames()
{
    QFETCH(QString, face);
    QFETCH(QString, written);
    HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    const std::u16string wideFace = face.toStdU16String();
    HFONT font = CreateFontW(-13, 0, 0, 0, 400, 1, 0, 0, DEFAULT_CHARSET, OUT_OUTLINE_PRECIS, 0, 0, 0, wideFace.c_str());
    SelectObject(dc, font);
    TextOutW(dc, 5, 20, u"x", 1);
    SelectObject(dc, GetStockObject(SYSTEM_FONT));
    DeleteObject(font);
    const QByteArray bytes = finish(dc);
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    const QStringList fonts = emf.linesStarting(QStringLiteral("FONT"));
    QCOMPARE(fonts.size(), 1);
    QVERIFY2(fonts[0].endsWith(QStringLiteral("height -13 weight 400 italic 1 face ") + written), qPrintable(fonts[0]));
}

void TestEmfGdi::coordinates_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<QString>("polyline");
    QTest::newRow("16 bits") << 32767 << "POLYLINE 0,0 32767,5";
    QTest::newRow("beyond 16 bits") << 32768 << "POLYLINE32 0,0 32768,5";
    QTest::newRow("far negative") << -100000 << "POLYLINE32 0,0 -100000,5";
    QTest::newRow("beyond the GDI range") << 2000000000 << "POLYLINE32 0,0 134217727,5";
    QTest::newRow("int min") << std::numeric_limits<int>::min() << "POLYLINE32 0,0 -134217728,5";
}

void TestEmfGdi::coordinates()
{
    QFETCH(int, x);
    QFETCH(QString, polyline);
    HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    const POINT points[] = {{0, 0}, {x, 5}};
    QCOMPARE(Polyline(dc, points, 2), TRUE);
    QCOMPARE(Polyline(dc, points, 1), FALSE); // one point is not a line
    MoveToEx(dc, x, x, nullptr);
    LineTo(dc, 0, 0);
    Ellipse(dc, x, 0, 0, x);
    const QByteArray bytes = finish(dc);
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    QCOMPARE(emf.linesStarting(QStringLiteral("POLY")), QStringList{polyline});
    const LONG clamped = detail::clampCoordinate(x);
    QCOMPARE(emf.linesStarting(QStringLiteral("MOVETO")), QStringList{QStringLiteral("MOVETO %1,%1").arg(clamped)});
    // The header's bounds cover what was drawn, in the clamped range.
    QVERIFY(emf.header.rclBounds.left <= std::min(0, clamped));
    QVERIFY(emf.header.rclBounds.right >= std::max(0, clamped));
}

void TestEmfGdi::sharedLooksAreWrittenOnce()
{
    // A pen made, selected, used and deleted for every line, as the engine does, is written once;
    // a state set again to its value is not written again.
    HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    for (int i = 0; i < 50; ++i) {
        SetBkMode(dc, TRANSPARENT);
        HPEN pen = CreatePen(PS_SOLID, 2, RGB(0, 0, i < 25 ? 128 : 255));
        HGDIOBJ old = SelectObject(dc, pen);
        MoveToEx(dc, i, 0, nullptr);
        LineTo(dc, i, 10);
        SelectObject(dc, old);
        DeleteObject(pen);
    }
    const QByteArray bytes = finish(dc);
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    QCOMPARE(emf.linesStarting(QStringLiteral("PEN")),
             (QStringList{QStringLiteral("PEN 1 style 0 width 2 800000"), QStringLiteral("PEN 2 style 0 width 2 ff0000")}));
    QCOMPARE(emf.linesStarting(QStringLiteral("BKMODE")), QStringList{QStringLiteral("BKMODE 1")});
    QCOMPARE(emf.count(U_EMR_LINETO), 50);
    QCOMPARE(emf.count(U_EMR_SELECTOBJECT), 2 + 1); // each pen once, the stock pen back at the end
}

void TestEmfGdi::boundsAndFrame()
{
    // Nothing drawn: the empty bounds of GDI.
    HDC empty = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    const QByteArray none = finish(empty);
    EmfFile emf = readEmf(none);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    QCOMPARE(emf.header.rclBounds.right, -1);
    QCOMPARE(emf.records.size(), std::size_t(2));

    // A line, and text whose box reaches further; clip cuts the bounds.
    HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    HPEN pen = CreatePen(PS_SOLID, 4, 0);
    SelectObject(dc, pen);
    MoveToEx(dc, 100, 100, nullptr);
    LineTo(dc, 200, 100);
    SetTextAlign(dc, TA_BASELINE);
    TextOutW(dc, 150, 300, u"a longer label", 14);
    HRGN clip = CreateRectRgn(0, 0, 1000, 310);
    SelectClipRgn(dc, clip);
    DeleteObject(clip);
    TextOutW(dc, 0, 400, u"cut away", 8);
    SelectObject(dc, GetStockObject(BLACK_PEN));
    DeleteObject(pen);
    const QByteArray bytes = finish(dc);
    emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    const U_RECTL b = emf.header.rclBounds;
    QCOMPARE(b.left, 98);
    QCOMPARE(b.top, 98);
    QVERIFY(b.right > 200 && b.bottom > 300 && b.bottom < 310);
    // The frame is the bounds in hundredths of a millimetre at 96 dpi.
    QCOMPARE(emf.header.rclFrame.left, int(std::lround(98 * 2540.0 / 96)));
    QCOMPARE(emf.header.rclFrame.right, int(std::lround((b.right + 1) * 2540.0 / 96)));
}

void TestEmfGdi::threads()
{
    // Contexts on several threads at once, with objects made and deleted all the time: every
    // file is whole and they are all the same.
    constexpr int kThreads = 4;
    std::vector<QByteArray> results(kThreads);
    std::vector<std::thread> workers;
    for (int t = 0; t < kThreads; ++t)
        workers.emplace_back([t, &results] {
            HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
            for (int i = 0; i < 300; ++i)
                drawSample(dc, i % 7);
            results[std::size_t(t)] = finish(dc);
        });
    for (std::thread& w : workers)
        w.join();
    const EmfFile emf = readEmf(results[0]);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    for (int t = 1; t < kThreads; ++t)
        QCOMPARE(results[std::size_t(t)], results[0]);
}

QTEST_MAIN(TestEmfGdi)
#include "tst_emfgdi.moc"

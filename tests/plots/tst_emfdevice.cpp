// What a painter on EMFDevice leaves in the metafile, read back with libuemf: the state each
// drawing call applies, the coordinate rules, the clip tests, text, pixmaps, and random
// sequences of everything that must all give whole, safe files.
#include "EMFDevice.h"
#include "EMFEngine.h"
#include "EmfRecords.h"

#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <cstddef>
#include <cstring>

#include <functional>

using rkBase::EMFDevice;
using rkBase::EMFEngine;

Q_DECLARE_METATYPE(QPainterPath)

namespace {

struct Painted {
    QByteArray bytes;
    EmfFile emf;
};

using Paint = std::function<void(QPainter&)>;
using Setup = std::function<void(EMFDevice&)>;

Painted paint(const Paint& draw, const Setup& setup = {})
{
    EMFDevice device{QString()};
    if (setup)
        setup(device);
    {
        QPainter painter(&device);
        draw(painter);
    }
    Painted out;
    out.bytes = device.bytes();
    out.emf = readEmf(out.bytes);
    return out;
}

// The drawing records, each with the fill mode in force for a polygon.
QStringList shapes(const EmfFile& emf)
{
    QStringList out;
    int fill = 1;
    for (const QString& line : emf.lines) {
        if (line.startsWith(QLatin1String("FILLMODE")))
            fill = line.section(QLatin1Char(' '), 1).toInt();
        else if (line.startsWith(QLatin1String("POLYGON")))
            out << QStringLiteral("fill %1 ").arg(fill) + line;
        else if (line.startsWith(QLatin1String("POLYLINE")) || line.startsWith(QLatin1String("MOVETO"))
                 || line.startsWith(QLatin1String("LINETO")) || line.startsWith(QLatin1String("ELLIPSE")))
            out << line;
    }
    return out;
}

QPainterPath rectPath(const QRectF& r)
{
    QPainterPath p;
    p.addRect(r);
    return p;
}

} // namespace

class TestEmfDevice : public QObject
{
    Q_OBJECT
private slots:
    void engineAndHeader();
    void pens_data();
    void pens();
    void brushes_data();
    void brushes();
    void textureBits();
    void polygonRuns_data();
    void polygonRuns();
    void lines_data();
    void lines();
    void paths_data();
    void paths();
    void leftOutShapesSelectTheClip_data();
    void leftOutShapesSelectTheClip();
    void ellipses_data();
    void ellipses();
    void deviceClip_data();
    void deviceClip();
    void text_data();
    void text();
    void pixelFontHeight_data();
    void pixelFontHeight();
    void pixmaps();
    void emptyAndRepeated();
    void fileMatchesMemory();
    void randomSequences();
};

void TestEmfDevice::engineAndHeader()
{
    EMFDevice device{QString()};
    QCOMPARE(int(device.paintEngine()->type()), 50);
    QVERIFY(device.paintEngine()->hasFeature(QPaintEngine::AllFeatures));
    QVERIFY(!device.handle());
    QVERIFY(device.bytes().isEmpty());
    const Painted p = paint([](QPainter& painter) { painter.drawLine(0, 0, 10, 10); });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    // The 8-bit description, byte for byte, then the wide nulls: 9 units + 2.
    QCOMPARE(p.emf.header.nDescription, uint32_t(11));
    const QByteArray description = p.bytes.mid(int(p.emf.header.offDescription), 22);
    QCOMPARE(description, QByteArray("Rook\\0Metafile\\0\\0\0\0\0\0", 22));
}

void TestEmfDevice::pens_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("observe");
    QTest::addColumn<QString>("expected");
    const QTransform scale2 = QTransform::fromScale(2, 2);
    QTest::newRow("red, 2") << QPen(QColor(255, 0, 0), 2.0) << QTransform() << false << "style 0 width 2 0000ff";
    QTest::newRow("cosmetic 0 stays 0") << QPen(QColor(0, 128, 0), 0) << QTransform() << false << "style 0 width 0 008000";
    QTest::newRow("0 under a transform becomes 1") << QPen(Qt::black, 0) << scale2 << true << "style 0 width 1 000000";
    QTest::newRow("3 scaled by 2") << QPen(Qt::black, 3) << scale2 << true << "style 0 width 6 000000";
    QTest::newRow("scale ignored unless observed") << QPen(Qt::black, 3) << scale2 << false << "style 0 width 3 000000";
    QTest::newRow("truncated, at least 1") << QPen(Qt::black, 1.5) << QTransform::fromScale(0.5, 0.5) << true
                                           << "style 0 width 1 000000";
    QTest::newRow("dashes are drawn solid") << QPen(QBrush(QColor(1, 2, 3)), 4, Qt::DashLine) << QTransform() << false
                                            << "style 0 width 4 030201";
    QTest::newRow("no pen is a black line") << QPen(Qt::NoPen) << QTransform() << false << "style 0 width 1 000000";
}

void TestEmfDevice::pens()
{
    QFETCH(QPen, pen);
    QFETCH(QTransform, transform);
    QFETCH(bool, observe);
    QFETCH(QString, expected);
    const Painted p = paint(
        [&](QPainter& painter) {
            painter.setTransform(transform);
            painter.setPen(pen);
            painter.drawLine(QPointF(1, 1), QPointF(20, 20));
        },
        [&](EMFDevice& d) { d.observeTransform(observe); });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    const QStringList pens = p.emf.linesStarting(QStringLiteral("PEN"));
    QCOMPARE(pens.size(), 1);
    QCOMPARE(pens[0].section(QLatin1Char(' '), 2), expected);
    // The pen's colour is also the text colour: only text needs it written, and there is none.
    QVERIFY(p.emf.linesStarting(QStringLiteral("TEXTCOLOR")).isEmpty());
}

void TestEmfDevice::brushes_data()
{
    QTest::addColumn<QBrush>("brush");
    QTest::addColumn<QString>("expected"); // the brush line, or the stock selection
    const QColor c(10, 20, 30);
    QTest::newRow("solid") << QBrush(c) << "BRUSH 2 style 0 hatch 0 1e140a";
    QTest::newRow("none") << QBrush(Qt::NoBrush) << "SELECT stock 5";
    QTest::newRow("horizontal") << QBrush(c, Qt::HorPattern) << "BRUSH 2 style 2 hatch 0 1e140a";
    QTest::newRow("vertical") << QBrush(c, Qt::VerPattern) << "BRUSH 2 style 2 hatch 1 1e140a";
    QTest::newRow("cross") << QBrush(c, Qt::CrossPattern) << "BRUSH 2 style 2 hatch 4 1e140a";
    QTest::newRow("backward diagonal") << QBrush(c, Qt::BDiagPattern) << "BRUSH 2 style 2 hatch 3 1e140a";
    QTest::newRow("forward diagonal") << QBrush(c, Qt::FDiagPattern) << "BRUSH 2 style 2 hatch 2 1e140a";
    QTest::newRow("diagonal cross") << QBrush(c, Qt::DiagCrossPattern) << "BRUSH 2 style 2 hatch 5 1e140a";
    QTest::newRow("dense: the context's brush") << QBrush(c, Qt::Dense4Pattern) << "";
    QTest::newRow("gradient: the context's brush") << QBrush(QLinearGradient(0, 0, 10, 10)) << "";
    QImage texture(8, 8, QImage::Format_ARGB32);
    texture.fill(Qt::white);
    QTest::newRow("texture") << QBrush(texture) << "MONOBRUSH 2";
}

void TestEmfDevice::brushes()
{
    QFETCH(QBrush, brush);
    QFETCH(QString, expected);
    const Painted p = paint([&](QPainter& painter) {
        // A painter starts without a brush and does not tell the engine, which starts white.
        painter.setBrush(Qt::red);
        painter.setBrush(brush);
        const QPointF triangle[] = {{10, 10}, {40, 10}, {25, 30}};
        painter.drawPolygon(triangle, 3);
    });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QStringList brushes = p.emf.linesStarting(QStringLiteral("BRUSH")) + p.emf.linesStarting(QStringLiteral("MONOBRUSH"))
                          + p.emf.linesStarting(QStringLiteral("SELECT stock 5"));
    if (expected.isEmpty())
        QVERIFY2(brushes.isEmpty(), qPrintable(brushes.join(QLatin1Char('|'))));
    else
        QCOMPARE(brushes, QStringList{expected});
    QCOMPARE(p.emf.count(U_EMR_POLYGON16), 1);
}

void TestEmfDevice::textureBits()
{
    // Every pixel but opaque black sets its bit, most significant first, rows padded to a byte.
    QImage texture(10, 2, QImage::Format_ARGB32);
    texture.fill(Qt::black);
    texture.setPixel(0, 0, qRgb(255, 255, 255));
    texture.setPixel(9, 0, qRgba(0, 0, 0, 0)); // transparent black is not opaque black
    texture.setPixel(3, 1, qRgb(1, 0, 0));
    const Painted p = paint([&](QPainter& painter) {
        painter.setBrush(QBrush(texture));
        painter.drawRect(QRectF(0, 0, 30, 30));
    });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QCOMPARE(p.emf.count(U_EMR_CREATEMONOBRUSH), 1);
    for (const EmfRecord& r : p.emf.records) {
        if (r.type != U_EMR_CREATEMONOBRUSH)
            continue;
        const auto* brush = r.as<U_EMRCREATEMONOBRUSH>();
        const auto* header = reinterpret_cast<const U_BITMAPINFOHEADER*>(r.data + brush->offBmi);
        QCOMPARE(header->biWidth, 10);
        QCOMPARE(header->biHeight, 2);
        QCOMPARE(int(header->biBitCount), 1);
        const auto* bits = reinterpret_cast<const uint8_t*>(r.data + brush->offBits);
        // Bottom-up rows of four bytes: row 1 first.
        QCOMPARE(int(bits[0]), 0x10);
        QCOMPARE(int(bits[1]), 0x00);
        QCOMPARE(int(bits[4]), 0x80);
        QCOMPARE(int(bits[5]), 0x40);
    }
}

void TestEmfDevice::polygonRuns_data()
{
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QRectF>("clip"); // null: none
    QTest::addColumn<QStringList>("expected");
    const QPolygonF square(QVector<QPointF>{QPointF(10.9, 10.2), QPointF(50, 10), QPointF(50, 50.7), QPointF(10, 50)});
    const QString outline = QStringLiteral("POLYLINE 10,10 50,10 50,50 10,50");
    QTest::newRow("odd-even: outline, then fill") << square << int(QPaintEngine::OddEvenMode) << QRectF()
                                                  << QStringList{outline, "fill 1 POLYGON 10,10 50,10 50,50 10,50"};
    QTest::newRow("winding") << square << int(QPaintEngine::WindingMode) << QRectF()
                             << QStringList{outline, "fill 2 POLYGON 10,10 50,10 50,50 10,50"};
    QTest::newRow("polyline: twice") << square << int(QPaintEngine::PolylineMode) << QRectF()
                                     << QStringList{outline, outline};
    QTest::newRow("convex: outline only") << square << int(QPaintEngine::ConvexMode) << QRectF() << QStringList{outline};
    QTest::newRow("a point outside splits the run; one point is nothing")
        << QPolygonF(QVector<QPointF>{QPointF(10, 10), QPointF(500, 10), QPointF(50, 50), QPointF(10, 50)})
        << int(QPaintEngine::OddEvenMode) << QRectF(0, 0, 100, 100)
        << QStringList{"POLYLINE 50,50 10,50", "POLYLINE 50,50 10,50"}; // two points fill nothing
    QTest::newRow("all outside") << square << int(QPaintEngine::OddEvenMode) << QRectF(200, 200, 10, 10)
                                 << QStringList{};
    QTest::newRow("one point") << QPolygonF(QVector<QPointF>{QPointF(3, 3)}) << int(QPaintEngine::PolylineMode) << QRectF()
                               << QStringList{};
}

void TestEmfDevice::polygonRuns()
{
    QFETCH(QPolygonF, points);
    QFETCH(int, mode);
    QFETCH(QRectF, clip);
    QFETCH(QStringList, expected);
    const Painted p = paint([&](QPainter& painter) {
        if (!clip.isNull())
            painter.setClipPath(rectPath(clip));
        painter.setBrush(Qt::red);
        switch (QPaintEngine::PolygonDrawMode(mode)) {
        case QPaintEngine::PolylineMode: painter.drawPolyline(points); break;
        case QPaintEngine::ConvexMode: painter.drawConvexPolygon(points); break;
        case QPaintEngine::WindingMode: painter.drawPolygon(points, Qt::WindingFill); break;
        default: painter.drawPolygon(points, Qt::OddEvenFill); break;
        }
    });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QCOMPARE(shapes(p.emf), expected);
}

void TestEmfDevice::lines_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<QRectF>("clip");
    QTest::addColumn<bool>("clipping");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("observe");
    QTest::addColumn<QStringList>("expected");
    const QLineF l(QPointF(-2.5, 1.5), QPointF(3.49, -0.5));
    QTest::newRow("rounding, halves up also below zero")
        << l << QRectF() << false << QTransform() << false << QStringList{"MOVETO -2,2", "LINETO 3,0"};
    QTest::newRow("more halves") << QLineF(QPointF(-0.5, -1.5), QPointF(0.5, -1.51)) << QRectF() << false
                                 << QTransform() << false << QStringList{"MOVETO 0,-1", "LINETO 1,-2"};
    QTest::newRow("one end outside: left out") << QLineF(10, 10, 500, 10) << QRectF(0, 0, 100, 100) << true
                                               << QTransform() << false << QStringList{};
    QTest::newRow("both ends inside") << QLineF(10, 10, 90, 10) << QRectF(0, 0, 100, 100) << true << QTransform()
                                      << false << QStringList{"MOVETO 10,10", "LINETO 90,10"};
    QTest::newRow("clipping off: drawn") << QLineF(10, 10, 500, 10) << QRectF(0, 0, 100, 100) << false
                                         << QTransform() << false << QStringList{"MOVETO 10,10", "LINETO 500,10"};
    QTest::newRow("transform observed") << QLineF(1, 2, 3, 4) << QRectF() << false << QTransform::fromTranslate(10, 20)
                                        << true << QStringList{"MOVETO 11,22", "LINETO 13,24"};
    QTest::newRow("transform not observed") << QLineF(1, 2, 3, 4) << QRectF() << false
                                            << QTransform::fromTranslate(10, 20) << false
                                            << QStringList{"MOVETO 1,2", "LINETO 3,4"};
    QTest::newRow("beyond 32 bits: clamped") << QLineF(-1e12, 0, 1e12, qInf()) << QRectF() << false << QTransform()
                                             << false << QStringList{"MOVETO -134217728,0", "LINETO 134217727,134217727"};
}

void TestEmfDevice::lines()
{
    QFETCH(QLineF, line);
    QFETCH(QRectF, clip);
    QFETCH(bool, clipping);
    QFETCH(QTransform, transform);
    QFETCH(bool, observe);
    QFETCH(QStringList, expected);
    const Painted p = paint(
        [&](QPainter& painter) {
            if (!clip.isNull()) {
                painter.setClipPath(rectPath(clip));
                painter.setClipping(clipping);
            }
            painter.setTransform(transform);
            painter.drawLine(line);
        },
        [&](EMFDevice& d) { d.observeTransform(observe); });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QCOMPARE(shapes(p.emf), expected);
}

void TestEmfDevice::paths_data()
{
    QTest::addColumn<QPainterPath>("path");
    QTest::addColumn<QRectF>("clip");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<QStringList>("expected");
    QPainterPath ring;
    ring.addRect(QRectF(10, 10, 40, 40));
    ring.addRect(QRectF(20, 20, 10, 10));
    QTest::newRow("two subpaths, odd-even")
        << ring << QRectF() << QTransform()
        << QStringList{"fill 1 POLYGON 10,10 50,10 50,50 10,50 10,10", "fill 1 POLYGON 20,20 30,20 30,30 20,30 20,20"};
    QPainterPath winding = ring;
    winding.setFillRule(Qt::WindingFill);
    QTest::newRow("winding") << winding << QRectF() << QTransform()
                             << QStringList{"fill 2 POLYGON 10,10 50,10 50,50 10,50 10,10",
                                            "fill 2 POLYGON 20,20 30,20 30,30 20,30 20,20"};
    QTest::newRow("partly outside the clip: left out") << ring << QRectF(0, 0, 40, 100) << QTransform() << QStringList{};
    QTest::newRow("inside the clip") << rectPath(QRectF(1, 1, 5, 5)) << QRectF(0, 0, 40, 100) << QTransform()
                                     << QStringList{"fill 1 POLYGON 1,1 6,1 6,6 1,6 1,1"};
    QTest::newRow("mapped even unobserved") << rectPath(QRectF(1, 1, 5, 5)) << QRectF() << QTransform::fromScale(2, 3)
                                            << QStringList{"fill 1 POLYGON 2,3 12,3 12,18 2,18 2,3"};
}

void TestEmfDevice::paths()
{
    QFETCH(QPainterPath, path);
    QFETCH(QRectF, clip);
    QFETCH(QTransform, transform);
    QFETCH(QStringList, expected);
    const Painted p = paint([&](QPainter& painter) {
        if (!clip.isNull())
            painter.setClipPath(rectPath(clip));
        painter.setTransform(transform);
        painter.setBrush(Qt::blue);
        painter.drawPath(path);
    });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QCOMPARE(shapes(p.emf), expected);
}

// A shape the painter's clip path leaves out whole is still a drawing call: the device clip it
// applies is in the file even when nothing is drawn.
void TestEmfDevice::leftOutShapesSelectTheClip_data()
{
    QTest::addColumn<int>("shape");
    QTest::newRow("path partly outside") << 0;
    QTest::newRow("line with an end outside") << 1;
    QTest::newRow("polygon all outside") << 2;
}

void TestEmfDevice::leftOutShapesSelectTheClip()
{
    QFETCH(int, shape);
    const Painted p = paint(
        [&](QPainter& painter) {
            painter.setClipPath(rectPath(QRectF(0, 0, 40, 100)));
            if (shape == 0)
                painter.drawPath(rectPath(QRectF(10, 10, 60, 20)));
            else if (shape == 1)
                painter.drawLine(QPointF(10, 10), QPointF(70, 10));
            else
                painter.drawPolygon(QPolygonF(QRectF(50, 50, 10, 10)));
        },
        [](EMFDevice& d) { d.setClipRect(QRect(5, 5, 50, 50)); });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QVERIFY(shapes(p.emf).isEmpty());
    QCOMPARE(p.emf.linesStarting(QStringLiteral("CLIP")),
             (QStringList{"CLIP mode 5 none", "CLIP mode 1 rects 1 bound 5,5 54,54"}));
}

void TestEmfDevice::ellipses_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("observe");
    QTest::addColumn<QString>("expected");
    QTest::newRow("truncated") << QRectF(1.7, 2.2, 10.9, 5.5) << QTransform() << false << "ELLIPSE 1,2 12,7";
    QTest::newRow("negative truncates toward zero") << QRectF(-3.7, -2.2, 2, 2) << QTransform() << false
                                                    << "ELLIPSE -3,-2 -1,0";
    QTest::newRow("rotated: the bounding box") << QRectF(0, 0, 20, 10) << QTransform().rotate(90) << true
                                               << "ELLIPSE -10,0 0,20";
}

void TestEmfDevice::ellipses()
{
    QFETCH(QRectF, rect);
    QFETCH(QTransform, transform);
    QFETCH(bool, observe);
    QFETCH(QString, expected);
    const Painted p = paint(
        [&](QPainter& painter) {
            painter.setTransform(transform);
            painter.drawEllipse(rect);
        },
        [&](EMFDevice& d) { d.observeTransform(observe); });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QCOMPARE(shapes(p.emf), QStringList{expected});
}

void TestEmfDevice::deviceClip_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<bool>("circular");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("rectangle: right and bottom inclusive")
        << QRect(10, 20, 100, 50) << false
        << QStringList{"CLIP mode 5 none", "CLIP mode 1 rects 1 bound 10,20 109,69"};
    QTest::newRow("ellipse: scan lines") << QRect(0, 0, 41, 41) << true
                                         << QStringList{"CLIP mode 5 none", "CLIP mode 1 rects %1 bound 0,0 40,40"};
    QTest::newRow("null rectangle: no region") << QRect() << false << QStringList{"CLIP mode 5 none"};
    QTest::newRow("zero width: an empty region")
        << QRect(10, 10, 0, 5) << false << QStringList{"CLIP mode 5 none", "CLIP mode 1 rects 1 bound 9,10 10,14"};
}

void TestEmfDevice::deviceClip()
{
    QFETCH(QRect, rect);
    QFETCH(bool, circular);
    QFETCH(QStringList, expected);
    const Painted p = paint([](QPainter& painter) { painter.drawLine(5, 5, 30, 30); },
                            [&](EMFDevice& d) {
                                d.setClipRect(rect);
                                d.setCircularClip(circular);
                            });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    if (circular)
        expected[1] = expected[1].arg(rkBase::gdi::detail::ellipticRegionRects(0, 0, 40, 40).size());
    QCOMPARE(p.emf.linesStarting(QStringLiteral("CLIP")), expected);
    // The clip is selected once, before the first drawing record.
    QVERIFY(p.emf.lines.indexOf(QRegularExpression(QStringLiteral("CLIP.*")))
            < p.emf.lines.indexOf(QRegularExpression(QStringLiteral("LINETO.*"))));
    QVERIFY(p.emf.lines.indexOf(QRegularExpression(QStringLiteral("LINETO.*"))) > 0);
}

void TestEmfDevice::text_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("left");
    QTest::addColumn<QFont>("font");
    QTest::addColumn<QStringList>("expected"); // alignment, font fields after the index, anchor
    // The advances' sum in pixels: the glyphs' advance widths in the font's own units (2048 to
    // the em, from the fonts' hmtx tables) times the em in pixels, the height's magnitude.
    // -1 where a glyph comes from whatever font the machine falls back to.
    QTest::addColumn<int>("width");
    QFont nine(QStringLiteral("DejaVu Sans"), 9);
    QFont boldItalic(QStringLiteral("DejaVu Serif"), 14, QFont::Bold, true);
    QFont pixels(QStringLiteral("DejaVu Sans"));
    pixels.setPixelSize(60);
    // D 1577, i 569, p 1300, space 651, 4 and 5 1303: 6703 units at 12 pixels, 39.28.
    QTest::newRow("baseline start, item's font (default)") << QStringLiteral("Dip 45") << false << nine
                                                           << QStringList{"TEXTALIGN 24", "height -12 weight 400 italic 0 face DejaVu Sans", "TEXT 51,60"}
                                                           << 39;
    // N of the bold italic serif 1872 units at 19 pixels, 17.37.
    QTest::newRow("bold italic") << QStringLiteral("N") << false << boldItalic
                                 << QStringList{"TEXTALIGN 24", "height -19 weight 700 italic 1 face DejaVu Serif", "TEXT 51,60"}
                                 << 17;
    // a 1255, z 1075, i 569, m 1995, u 1298, t 803, h 1298: 8293 units at 12 pixels, 48.59.
    QTest::newRow("left aligned, engine's font") << QStringLiteral("azimuth") << true << nine
                                                 << QStringList{"TEXTALIGN 24", "height -12 weight 400 italic 0 face DejaVu Sans", "TEXT 51,60"}
                                                 << 49;
    // x 1212 units at 2 pixels, 1.18.
    QTest::newRow("left aligned, pixel font") << QStringLiteral("x") << true << pixels
                                              << QStringList{"TEXTALIGN 24", "height -2 weight 400 italic 0 face DejaVu Sans", "TEXT 51,60"}
                                              << 1;
    QTest::newRow("beyond the BMP, exact") << QString::fromUtf8("a\xf0\x9f\x98\x80z \xf0\x90\x8d\x88") << false << nine
                                           << QStringList{"TEXTALIGN 24", "height -12 weight 400 italic 0 face DejaVu Sans", "TEXT"}
                                           << -1;
}

void TestEmfDevice::text()
{
    QFETCH(QString, text);
    QFETCH(bool, left);
    QFETCH(QFont, font);
    QFETCH(QStringList, expected);
    const Painted p = paint(
        [&](QPainter& painter) {
            painter.setFont(font);
            painter.setPen(QColor(200, 100, 50));
            painter.drawText(QPointF(50.5, 60.4), text);
        },
        [&](EMFDevice& d) { d.setTextAlignmentLeft(left); });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QCOMPARE(p.emf.linesStarting(QStringLiteral("TEXTALIGN")), QStringList{expected[0]});
    const QStringList fonts = p.emf.linesStarting(QStringLiteral("FONT"));
    QVERIFY(!fonts.isEmpty());
    QCOMPARE(fonts[0].section(QLatin1Char(' '), 2), expected[1]);
    // Opaque text (the mode a player starts with, so a transparent mode must not precede it) in
    // the pen's colour.
    int bkMode = 2;
    for (const QString& line : p.emf.lines) {
        if (line.startsWith(QLatin1String("BKMODE")))
            bkMode = line.section(QLatin1Char(' '), 1).toInt();
        if (line.startsWith(QLatin1String("TEXT ")))
            break;
    }
    QCOMPARE(bkMode, 2);
    QCOMPARE(p.emf.linesStarting(QStringLiteral("TEXTCOLOR")), QStringList{QStringLiteral("TEXTCOLOR 3264c8")});
    // The text itself, unit for unit, over however many items the layout made.
    QString written;
    const QStringList texts = p.emf.linesStarting(QStringLiteral("TEXT "));
    for (const QString& t : texts)
        written += t.section(QLatin1Char(' '), 2);
    QCOMPARE(written, text);
    QVERIFY(texts[0].startsWith(expected[2]));
    // Every unit has an advance entry, the pair's second unit none and every other one some;
    // together they span the text as the font's own widths say.
    QFETCH(int, width);
    long long sum = 0;
    for (const EmfRecord& r : p.emf.records)
        if (r.type == U_EMR_EXTTEXTOUTW) {
            const auto* t = r.as<U_EMREXTTEXTOUTW>();
            const uint32_t n = t->emrtext.nChars;
            QVERIFY(n > 0);
            QVERIFY(r.size >= t->emrtext.offString + 2 * n);
            // offDx follows the fixed part, after the rectangle unless the options leave it out.
            std::size_t at = offsetof(U_EMREXTTEXTOUTW, emrtext) + sizeof(U_EMRTEXT);
            if (!(t->emrtext.fOptions & U_ETO_NO_RECT))
                at += sizeof(U_RECTL);
            uint32_t offDx = 0;
            QVERIFY(r.size >= at + sizeof offDx);
            std::memcpy(&offDx, r.data + at, sizeof offDx);
            QVERIFY(r.size >= offDx + 4 * n);
            const auto* units = reinterpret_cast<const char16_t*>(r.data + t->emrtext.offString);
            for (uint32_t i = 0; i < n; ++i) {
                int32_t dx = 0;
                std::memcpy(&dx, r.data + offDx + 4 * i, sizeof dx);
                const bool second = QChar::isLowSurrogate(units[i]) && i > 0 && QChar::isHighSurrogate(units[i - 1]);
                QVERIFY2(second ? dx == 0 : dx > 0, qPrintable(QStringLiteral("unit %1: %2").arg(i).arg(dx)));
                sum += dx;
            }
        }
    if (width >= 0)
        QVERIFY2(std::abs(sum - width) <= 1, qPrintable(QStringLiteral("advances sum to %1, not %2").arg(sum).arg(width)));
}

void TestEmfDevice::pixelFontHeight_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("height");
    QTest::newRow("16") << 16 << 0;
    QTest::newRow("30") << 30 << -1;
    QTest::newRow("60") << 60 << -2;
    QTest::newRow("89") << 89 << -2;
    QTest::newRow("90") << 90 << -3;
    QTest::newRow("negative") << -60 << 2;
}

void TestEmfDevice::pixelFontHeight()
{
    QFETCH(int, pixels);
    QFETCH(int, height);
    QCOMPARE(EMFEngine::pixelFontHeight(pixels), height);
}

void TestEmfDevice::pixmaps()
{
    QImage image(40, 20, QImage::Format_ARGB32);
    image.fill(QColor(255, 0, 0));
    image.setPixel(0, 19, qRgb(0, 0, 255));     // bottom left: the first pixel of the DIB
    image.setPixel(1, 19, qRgba(0, 0, 0, 0));   // transparent: white
    const Painted p = paint([&](QPainter& painter) {
        painter.drawImage(QRectF(5.9, 5, 20, 10), image, QRectF(0, 0, 40, 20));
        painter.drawPixmap(QRectF(100, 100, 40, 20), QPixmap::fromImage(image), QRectF(10, 5, 10, 10));
    });
    QVERIFY2(p.emf.ok(), qPrintable(p.emf.error));
    QCOMPARE(p.emf.linesStarting(QStringLiteral("STRETCHBLT")),
             (QStringList{"STRETCHBLT 5,5 20x10 from 40x20 rop cc0020", "STRETCHBLT 100,100 40x20 from 10x10 rop cc0020"}));
    const EmfRecord* blt = nullptr;
    for (const EmfRecord& r : p.emf.records)
        if (r.type == U_EMR_STRETCHBLT) {
            blt = &r;
            break;
        }
    QVERIFY(blt);
    const auto* s = blt->as<U_EMRSTRETCHBLT>();
    const auto* px = reinterpret_cast<const uint8_t*>(blt->data + s->offBitsSrc);
    QCOMPARE(int(px[0]), 255); // blue, in BGR order
    QCOMPARE(int(px[2]), 0);
    QCOMPARE(int(px[3]), 255); // white
    QCOMPARE(int(px[5]), 255);
    QCOMPARE(int(px[6 + 2]), 255); // red
    QCOMPARE(int(px[6]), 0);
}

void TestEmfDevice::emptyAndRepeated()
{
    EMFDevice device{QString()};
    {
        QPainter painter(&device);
    }
    const EmfFile empty = readEmf(device.bytes());
    QVERIFY2(empty.ok(), qPrintable(empty.error));
    QCOMPARE(empty.records.size(), std::size_t(2));
    // A second painting replaces the metafile.
    {
        QPainter painter(&device);
        painter.drawLine(0, 0, 5, 5);
    }
    const QByteArray second = device.bytes();
    const EmfFile emf = readEmf(second);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    QCOMPARE(emf.count(U_EMR_LINETO), 1);
}

void TestEmfDevice::fileMatchesMemory()
{
    QTemporaryDir dir;
    const QString name = dir.filePath(QStringLiteral("chart.emf"));
    auto draw = [](EMFDevice& device) {
        device.setClipRect(QRect(0, 0, 300, 200));
        QPainter painter(&device);
        painter.setPen(QPen(Qt::darkBlue, 2));
        painter.setBrush(Qt::yellow);
        painter.drawEllipse(QRectF(10, 10, 100, 60));
        painter.drawText(QPointF(20, 150), QStringLiteral("Stereonet"));
    };
    EMFDevice onFile(name);
    draw(onFile);
    EMFDevice inMemory{QString()};
    draw(inMemory);
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), inMemory.bytes());
    QCOMPARE(onFile.bytes(), inMemory.bytes());
    // A file that cannot be written: no metafile, no crash.
    EMFDevice nowhere(QStringLiteral("/nonexistent-dir/chart.emf"));
    draw(nowhere);
    QVERIFY(!nowhere.handle());
    QVERIFY(nowhere.bytes().isEmpty());
}

void TestEmfDevice::randomSequences()
{
    // Random primitives, states, transforms and clips, extreme values among them: every file is
    // whole and each of its records passes libuemf's safety check.
    const double extremes[] = {0.0, -0.5, 1e5, -70000.0, 3e9, -1e12, qInf(), -qInf(), qQNaN()};
    for (quint32 seed = 1; seed <= 120; ++seed) {
        QRandomGenerator rng(seed);
        auto coordinate = [&]() {
            return rng.bounded(10) == 0 ? extremes[rng.bounded(int(std::size(extremes)))] : (-50.0 + rng.bounded(700.0));
        };
        auto point = [&]() { return QPointF(coordinate(), coordinate()); };
        auto colour = [&]() { return QColor::fromRgb(rng.generate() | 0xff000000u); };
        QString failure;
        QByteArray bytes;
        {
            EMFDevice device{QString()};
            if (rng.bounded(3) == 0)
                device.setClipRect(QRect(rng.bounded(-20, 300), rng.bounded(-20, 300), rng.bounded(0, 500), rng.bounded(0, 400)));
            device.setCircularClip(rng.bounded(2));
            device.observeTransform(rng.bounded(2));
            device.setTextAlignmentLeft(rng.bounded(2));
            QPainter painter(&device);
            const int steps = rng.bounded(1, 60);
            for (int s = 0; s < steps; ++s) {
                switch (rng.bounded(14)) {
                case 0: painter.setPen(QPen(colour(), rng.bounded(0, 6) * (rng.bounded(2) ? 1.0 : 0.5))); break;
                case 1: painter.setBrush(QBrush(colour(), Qt::BrushStyle(rng.bounded(0, 15)))); break;
                case 2: painter.setTransform(QTransform((rng.bounded(6.0) - 3.0), 0, 0, (rng.bounded(6.0) - 3.0),
                                                        coordinate(), coordinate()));
                    break;
                case 3: painter.drawLine(QLineF(point(), point())); break;
                case 4: {
                    QPolygonF polygon;
                    for (int i = rng.bounded(0, 12); i > 0; --i)
                        polygon << point();
                    painter.drawPolygon(polygon, rng.bounded(2) ? Qt::OddEvenFill : Qt::WindingFill);
                    painter.drawPolyline(polygon);
                    break;
                }
                case 5: painter.drawEllipse(QRectF(point(), point())); break;
                case 6: painter.drawRect(QRectF(point(), point())); break;
                case 7: {
                    QString text;
                    for (int i = rng.bounded(0, 8); i > 0; --i)
                        text += rng.bounded(4) == 0 ? QString::fromUcs4(std::u32string(1, char32_t(rng.bounded(0x10000, 0x10FFFF))).c_str())
                                                    : QString(QChar(ushort(rng.bounded(0x20, 0x2FFF))));
                    QFont font(rng.bounded(2) ? QStringLiteral("DejaVu Sans") : QString(40, QLatin1Char('F')));
                    if (rng.bounded(2))
                        font.setPixelSize(rng.bounded(1, 80));
                    else
                        font.setPointSize(rng.bounded(1, 60));
                    painter.setFont(font);
                    painter.drawText(point(), text);
                    break;
                }
                case 8:
                    if (rng.bounded(2))
                        painter.setClipRect(QRectF(point(), point()));
                    else
                        painter.setClipping(false);
                    break;
                case 9: {
                    QImage image(rng.bounded(1, 30), rng.bounded(1, 30), QImage::Format_ARGB32);
                    image.fill(colour());
                    painter.drawImage(QRectF(point(), point()), image, QRectF(QPointF(coordinate(), coordinate()) / 100, QSizeF(rng.bounded(-5, 40), rng.bounded(-5, 40))));
                    break;
                }
                case 10: {
                    QImage texture(rng.bounded(1, 20), rng.bounded(1, 20), QImage::Format_ARGB32);
                    texture.fill(rng.bounded(2) ? Qt::black : Qt::white);
                    painter.setBrush(QBrush(texture));
                    break;
                }
                case 11: {
                    QPainterPath path;
                    path.moveTo(point());
                    path.cubicTo(point(), point(), point());
                    path.addEllipse(QRectF(point(), point()));
                    painter.drawPath(path);
                    break;
                }
                case 12: painter.setBackgroundMode(rng.bounded(2) ? Qt::OpaqueMode : Qt::TransparentMode); break;
                case 13: device.setClipRect(QRect(rng.bounded(-20, 300), rng.bounded(-20, 300), rng.bounded(-2, 300), rng.bounded(-2, 300))); break;
                }
            }
            painter.end();
            bytes = device.bytes();
        }
        const EmfFile emf = readEmf(bytes);
        QVERIFY2(emf.ok(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(emf.error)));
    }
}

QTEST_MAIN(TestEmfDevice)
#include "tst_emfdevice.moc"

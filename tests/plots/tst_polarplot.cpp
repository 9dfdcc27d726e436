// The polar frame: centre, radius and clip from the raster size; the annotation ring (ticks,
// numbers and words where they belong, outside the circle), title, top-right information and
// north arrow; and the polar tools, above all the arc through three points. Drawing is recorded
// (PaintRecorder), so positions are exact on every machine.
#include "PaintRecorder.h"

#include <QPolarPlotWidget.h>

#include <QPainter>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>

using namespace rkBase;

namespace {

// A polar surface whose raster is built at a given size.
class Polar : public QPolarPlotWidget
{
public:
    explicit Polar(QSize size = QSize(400, 400)) : QPolarPlotWidget(nullptr, QStringLiteral("Polar"))
    {
        resize(size);
        redraw();
    }
    QStringList record(const std::function<void(QPainter*)>& draw, bool positions = false)
    {
        PaintRecorder device(size());
        device.setRecordTextPositions(positions);
        QPainter painter(&device);
        draw(&painter);
        painter.end();
        return device.calls();
    }
};

QStringList matching(const QStringList& calls, const QString& pattern)
{
    return calls.filter(QRegularExpression(pattern));
}

// The points of a recorded polyline.
QVector<QPointF> polylinePoints(const QString& call)
{
    QVector<QPointF> points;
    const QString body = call.section(QLatin1Char('|'), 0, 0).mid(QStringLiteral("polyline ").size()).trimmed();
    for (const QString& pair : body.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList xy = pair.split(QLatin1Char(','));
        points << QPointF(xy[0].toDouble(), xy[1].toDouble());
    }
    return points;
}

// Centre of the circle through three points.
QPointF circumcentre(const QPointF& a, const QPointF& b, const QPointF& c)
{
    const double d = 2 * (a.x() * (b.y() - c.y()) + b.x() * (c.y() - a.y()) + c.x() * (a.y() - b.y()));
    const double a2 = a.x() * a.x() + a.y() * a.y(), b2 = b.x() * b.x() + b.y() * b.y(), c2 = c.x() * c.x() + c.y() * c.y();
    return QPointF((a2 * (b.y() - c.y()) + b2 * (c.y() - a.y()) + c2 * (a.y() - b.y())) / d,
                   (a2 * (c.x() - b.x()) + b2 * (a.x() - c.x()) + c2 * (b.x() - a.x())) / d);
}

// The metrics a painter on the recording device uses.
QFontMetrics recorderMetrics()
{
    PaintRecorder device;
    QPainter painter(&device);
    return painter.fontMetrics();
}

double distance(const QPointF& a, const QPointF& b) { return std::hypot(a.x() - b.x(), a.y() - b.y()); }

} // namespace

class TestPolarPlot : public QObject
{
    Q_OBJECT
private slots:
    void centreRadiusAndClip_data();
    void centreRadiusAndClip();
    void annotationRing_data();
    void annotationRing();
    void labelsSitOutsideTheCircle_data();
    void labelsSitOutsideTheCircle();
    void titleInfoAndNorth();
    void circleFrameTakesTheInverseBackground();
    void lineArrowAndRotation();
    void sectorPassesThroughItsThreePoints_data();
    void sectorPassesThroughItsThreePoints();
    void sectorOfCollinearPointsIsTheDiameter_data();
    void sectorOfCollinearPointsIsTheDiameter();
    void filledSectorIsTheWholeCircle();
};

void TestPolarPlot::centreRadiusAndClip_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("centre");
    QTest::addColumn<int>("radius");
    QTest::newRow("100 high") << QSize(300, 100) << QPoint(149, 49) << 40;
    QTest::newRow("square") << QSize(400, 400) << QPoint(199, 199) << 160;
    QTest::newRow("odd") << QSize(251, 333) << QPoint(125, 166) << 100;
    QTest::newRow("tiny") << QSize(2, 2) << QPoint(0, 0) << 0;
}

void TestPolarPlot::centreRadiusAndClip()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, centre);
    QFETCH(int, radius);
    Polar polar(size);
    QCOMPARE(polar.centre(), centre);
    QCOMPARE(polar.radius(), radius);
    QCOMPARE(polar.gridRect(), QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
    // The clip is the disc: inside near the rim, outside just past it and in the square's corner.
    if (radius > 10) {
        QVERIFY(polar.clipRegion().contains(centre + QPoint(radius - 2, 0)));
        QVERIFY(polar.clipRegion().contains(centre - QPoint(0, radius - 2)));
        QVERIFY(!polar.clipRegion().contains(centre + QPoint(radius + 2, 0)));
        QVERIFY(!polar.clipRegion().contains(centre + QPoint(radius * 3 / 4, radius * 3 / 4)));
        const QRect disc(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
        QVERIFY(disc.contains(polar.clipRegion().boundingRect()));
        QVERIFY(polar.clipRegion().boundingRect().width() >= 2 * radius - 1);
    } else {
        QVERIFY(polar.clipRegion().isEmpty());
    }
}

void TestPolarPlot::annotationRing_data()
{
    QTest::addColumn<bool>("angle");
    QTest::addColumn<bool>("direction");
    QTest::addColumn<int>("ticks");
    QTest::addColumn<QStringList>("texts");
    QStringList numbers;
    for (int a = 0; a <= 360; a += 90)
        numbers << QString::number(a);
    for (int a = 10; a < 360; a += 10)
        if (a % 90)
            numbers << QString::number(a);
    QTest::newRow("angles") << true << false << 36 << numbers;
    QTest::newRow("angles win over words") << true << true << 36 << numbers;
    QTest::newRow("words") << false << true << 4 << QStringList{"East", "South", "West", "North"};
    QTest::newRow("off") << false << false << 0 << QStringList{};
}

void TestPolarPlot::annotationRing()
{
    QFETCH(bool, angle);
    QFETCH(bool, direction);
    QFETCH(int, ticks);
    QFETCH(QStringList, texts);
    Polar polar;
    polar.setAnnotationLabelAsAngle(angle);
    polar.setAnnotationLabelAsDirectionOn(direction);
    const QStringList calls = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); });
    // Ticks: R to R + 7 from the centre, one call each, in the label colour.
    const QStringList tickCalls = matching(calls, "^lines ");
    QCOMPARE(tickCalls.size(), ticks);
    for (const QString& t : tickCalls)
        QVERIFY2(t.contains("pen #ff000000 1"), qPrintable(t));
    if (angle) {
        QVERIFY(tickCalls.contains("lines 199,39-199,32 | pen #ff000000 1 | brush none"));   // north
        QVERIFY(tickCalls.contains("lines 359,199-366,199 | pen #ff000000 1 | brush none")); // east
    }
    QStringList drawn;
    for (const QString& t : matching(calls, "^text "))
        if (t.section(QLatin1Char('\''), 1, 1) != "N") // the north arrow's
            drawn << t.section(QLatin1Char('\''), 1, 1);
    QCOMPARE(drawn, texts);
    // The north arrow goes with the annotation.
    QCOMPARE(matching(calls, "^polygon").size(), angle || direction ? 2 : 0);
}

void TestPolarPlot::labelsSitOutsideTheCircle_data()
{
    QTest::addColumn<bool>("angle");
    QTest::addColumn<QSize>("size");
    QTest::newRow("angles, room to stack 0 over 360") << true << QSize(400, 460);
    QTest::newRow("angles, 0 beside 360") << true << QSize(400, 400);
    QTest::newRow("words") << false << QSize(400, 400);
    QTest::newRow("angles, short and wide") << true << QSize(600, 190);
}

void TestPolarPlot::labelsSitOutsideTheCircle()
{
    QFETCH(bool, angle);
    QFETCH(QSize, size);
    Polar polar(size);
    // A chart too short for its labels keeps them on the raster, whatever the ring's ticks.
    const bool roomy = size.height() >= 300;
    polar.setAnnotationLabelAsAngle(angle);
    polar.setAnnotationLabelAsDirectionOn(!angle);
    polar.showCircleFrame(false);
    const QStringList calls = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); }, true);
    const QFontMetrics fm = recorderMetrics();
    const QPoint c = polar.centre();
    const int r = polar.radius();
    int seen = 0;
    QRegularExpression re("^text '([^']+)' at (-?\\d+),(-?\\d+)");
    QRect zeroBox, northBox;
    for (const QString& call : calls) {
        const auto m = re.match(call);
        if (!m.hasMatch() || m.captured(1) == "N")
            continue;
        ++seen;
        const QString text = m.captured(1);
        // The text's box from its baseline start.
        const QRect box(m.captured(2).toInt(), m.captured(3).toInt() - fm.ascent(), fm.horizontalAdvance(text), fm.height());
        // Every corner of the box is outside the ticks' ring (R + 7), or touches it.
        double nearest = 1e9;
        for (const QPoint& corner : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()})
            nearest = std::min(nearest, std::hypot(corner.x() - c.x(), corner.y() - c.y()));
        const QPoint mid = box.center();
        nearest = std::min(nearest, std::hypot(mid.x() - c.x(), mid.y() - c.y()));
        QVERIFY2(box.top() >= 0 && box.bottom() <= size.height(),
                 qPrintable(QStringLiteral("%1 %2-%3").arg(text).arg(box.top()).arg(box.bottom())));
        if (!roomy)
            continue;
        QVERIFY2(nearest >= r + 6, qPrintable(QStringLiteral("%1 at %2").arg(text).arg(nearest)));
        QVERIFY2(nearest <= r + 40, qPrintable(QStringLiteral("%1 at %2").arg(text).arg(nearest)));
        if (text == "0")
            zeroBox = box;
        if (text == "360" || text == "North")
            northBox = box;
        // East starts right of the tick (words: centred in a box 5 wider), centred on the east line.
        if (text == "90" || text == "East")
            QVERIFY(std::abs(box.left() - (c.x() + r + (angle ? 7 : 12.5))) <= 1 && std::abs(mid.y() - c.y()) <= 2);
        if (text == "180" || text == "South")
            QVERIFY(box.top() >= c.y() + r + 6 && std::abs(mid.x() - c.x()) <= 1);
    }
    QCOMPARE(seen, angle ? 37 : 4);
    if (!roomy) {
        // "0" and "360" share the top line, apart.
        QCOMPARE(zeroBox.top(), 0);
        QCOMPARE(northBox.top(), 0);
        QVERIFY(zeroBox.right() < northBox.left());
        return;
    }
    // At north the label ends 2 above the ring; "0" stands above "360" where there is room for
    // both, and beside it where the stack would leave the raster.
    QCOMPARE(northBox.bottom() + 1, c.y() - r - (angle ? 7 : 10) - 2);
    if (angle && northBox.top() - fm.height() >= 0) {
        QCOMPARE(zeroBox.bottom() + 1, northBox.top());
    } else if (angle) {
        QCOMPARE(zeroBox.top(), northBox.top());
        QVERIFY(zeroBox.right() < northBox.left());
    }
}

void TestPolarPlot::titleInfoAndNorth()
{
    Polar polar(QSize(500, 300));
    polar.changeHeaderTitle(QStringLiteral("dips"));
    polar.setTopRightInfo(QStringLiteral("n = 12"));
    const QStringList calls = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); }, true);
    QVERIFY(!matching(calls, "^text 'Polar: dips' at 1\\d,").isEmpty());
    QVERIFY(!matching(calls, "^text 'n = 12' at ").isEmpty());
    // The top-right text stands in a filled box that ends 8 pixels left of the right edge (pixel
    // 499) and starts 5 below the top; the text starts at the box's left, its first line at the
    // box's top. The box keeps its place while the text changes within a length, and a text
    // longer than that widens it to the left rather than running past its end.
    const QFontMetrics fm = recorderMetrics();
    auto infoBox = [&](const QString& text) {
        polar.setTopRightInfo(text);
        const QStringList drawn = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); }, true);
        const QRegularExpression textAt(QStringLiteral("^text '%1' at (-?\\d+),(-?\\d+)").arg(QRegularExpression::escape(text)));
        const QStringList texts = matching(drawn, textAt.pattern());
        if (texts.size() != 1)
            return QRect();
        const QRegularExpressionMatch at = textAt.match(texts.first());
        const QPoint start(at.captured(1).toInt(), at.captured(2).toInt());
        // The fill whose corner is where the text starts.
        for (const QString& c : matching(drawn, QStringLiteral("^rect %1,%2 ").arg(start.x()).arg(start.y() - fm.ascent()))) {
            const QStringList size = c.section(QLatin1Char(' '), 2, 2).split(QLatin1Char('x'));
            return QRect(start.x(), start.y() - fm.ascent(), size[0].toInt(), size[1].toInt());
        }
        return QRect(start, QSize(-1, -1)); // the text without its box
    };
    const QRect shortBox = infoBox(QStringLiteral("n = 12"));
    QVERIFY2(shortBox.isValid(), qPrintable(QStringLiteral("%1,%2 %3x%4").arg(shortBox.x()).arg(shortBox.y()).arg(shortBox.width()).arg(shortBox.height())));
    QCOMPARE(shortBox.x() + shortBox.width(), 499 - 8);
    QCOMPARE(shortBox.y(), 5);
    QVERIFY(shortBox.height() >= fm.height());
    QCOMPARE(infoBox(QStringLiteral("n = 1234")), shortBox);
    const QString longText = QStringLiteral("poles and planes selected = 123456");
    const QRect longBox = infoBox(longText);
    QVERIFY(longBox.isValid());
    QCOMPARE(longBox.x() + longBox.width(), 499 - 8);
    QVERIFY(longBox.width() >= fm.horizontalAdvance(longText));
    QVERIFY(longBox.x() < shortBox.x());
    polar.setTopRightInfo(QStringLiteral("n = 12"));
    // North arrow: the right half in the label colour, the left in the background, tip 46 above
    // the bottom right corner less 20, and its "N".
    QCOMPARE(matching(calls, "^polygon"),
             QStringList({"polygon odd 479,253 486,277 479,269 | pen #ff000000 1 | brush #ff000000",
                          "polygon odd 479,253 472,277 479,269 | pen #ff000000 1 | brush #ffffffff"}));
    QVERIFY(!matching(calls, "^text 'N' at ").isEmpty());

    polar.setShowPointCount(true);
    const QStringList counted = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); });
    QVERIFY(!matching(counted, "^text 'points = 0'").isEmpty());
    QCOMPARE(polar.topRightInfo(), QStringLiteral("points = 0"));
}

void TestPolarPlot::circleFrameTakesTheInverseBackground()
{
    Polar polar;
    QStringList calls = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); });
    QCOMPARE(matching(calls, "^ellipse"), QStringList{"ellipse 39,39 320x320 | pen #ff000000 1 | brush none"});
    polar.setLabelColor(Qt::white);
    calls = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); });
    QCOMPARE(matching(calls, "^ellipse"), QStringList{"ellipse 39,39 320x320 | pen #ffffffff 1 | brush none"});
    polar.showCircleFrame(false);
    calls = polar.record([&](QPainter* p) { polar.drawFrame(p, 1); });
    QVERIFY(matching(calls, "^ellipse").isEmpty());
}

void TestPolarPlot::lineArrowAndRotation()
{
    Polar polar;
    QStringList calls = polar.record([&](QPainter* p) {
        polar.drawLine(p, 90.0, 5);
        polar.drawLine(p, 30.0, 0);
        polar.drawArrow(p, QPointF(199, 39));
        polar.drawArrow(p, QPointF(199, 199)); // at the centre: no direction, nothing
    });
    QCOMPARE(calls.size(), 3);
    QVERIFY(calls[0].startsWith("lines 199,199-364,199 "));
    // 160 along 30 degrees, truncated: (199 + 80, 199 - 138.56).
    QVERIFY(calls[1].startsWith("lines 199,199-279,60 "));
    QVERIFY(calls[2].startsWith("lines 205,49-199,39 193,49-199,39 "));

    PaintRecorder device(polar.size());
    QPainter painter(&device);
    polar.rotation(&painter, 90.0);
    const QTransform t = painter.transform();
    QCOMPARE(t.map(QPointF(199, 199)), QPointF(199, 199));
    const QPointF east = t.map(QPointF(199, 39));
    QVERIFY(std::abs(east.x() - 359) < 1e-9 && std::abs(east.y() - 199) < 1e-9);
    // The rotation replaces what was set before.
    polar.rotation(&painter, 0.0);
    QVERIFY(painter.transform().isIdentity());
}

void TestPolarPlot::sectorPassesThroughItsThreePoints_data()
{
    QTest::addColumn<double>("direction");
    QTest::addColumn<double>("bulge");
    QTest::addColumn<bool>("swapEnds");
    for (double direction : {0.0, 37.0, 90.0, 145.0, 200.0, 301.0})
        for (double bulge : {0.05, 0.5, 0.95})
            for (bool swap : {false, true})
                QTest::addRow("%g, bulge %g%s", direction, bulge, swap ? ", ends swapped" : "") << direction << bulge << swap;
}

void TestPolarPlot::sectorPassesThroughItsThreePoints()
{
    QFETCH(double, direction);
    QFETCH(double, bulge);
    QFETCH(bool, swapEnds);
    Polar polar;
    // A great circle as the stereonet asks for it: strike ends on the rim, mid on the dip line.
    QPointF from = polar.polarPoint(direction - 90.0, polar.radius());
    QPointF to = polar.polarPoint(direction + 90.0, polar.radius());
    if (swapEnds)
        std::swap(from, to);
    const QPointF mid = polar.polarPoint(direction, bulge * polar.radius());
    const QStringList calls = polar.record([&](QPainter* p) { polar.drawSector(mid, from, to, p, false); });
    QCOMPARE(calls.size(), 1);
    const QVector<QPointF> points = polylinePoints(calls[0]);
    QCOMPARE(points.size(), 51);
    const QPointF o = circumcentre(from, mid, to);
    const double rho = distance(o, from);
    double closestToMid = 1e9;
    for (const QPointF& p : points) {
        // The recorder keeps six digits.
        QVERIFY2(std::abs(distance(p, o) - rho) < 2e-3, qPrintable(QString::number(distance(p, o) - rho)));
        // A great circle stays inside the net.
        QVERIFY(distance(p, polar.centre()) <= polar.radius() + 2e-3);
        closestToMid = std::min(closestToMid, distance(p, mid));
    }
    QVERIFY(distance(points.first(), from) < 2e-3);
    QVERIFY(distance(points.last(), to) < 2e-3);
    // 50 chords over the arc: mid lies within one chord's length of a vertex.
    const double chord = distance(points[0], points[1]);
    QVERIFY2(closestToMid <= chord, qPrintable(QStringLiteral("%1 > %2").arg(closestToMid).arg(chord)));
}

void TestPolarPlot::sectorOfCollinearPointsIsTheDiameter_data()
{
    QTest::addColumn<QPointF>("mid");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::newRow("vertical plane") << QPointF(199, 199) << QPointF(199, 39) << QPointF(199, 359);
    QTest::newRow("east-west line") << QPointF(199, 199) << QPointF(39, 199) << QPointF(359, 199);
    QTest::newRow("from equals to") << QPointF(150, 150) << QPointF(39, 199) << QPointF(39, 199);
    QTest::newRow("all one point") << QPointF(5, 5) << QPointF(5, 5) << QPointF(5, 5);
}

void TestPolarPlot::sectorOfCollinearPointsIsTheDiameter()
{
    QFETCH(QPointF, mid);
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    Polar polar;
    const QStringList calls = polar.record([&](QPainter* p) { polar.drawSector(mid, from, to, p, false); });
    QCOMPARE(calls, QStringList{"lines 199,359-199,39 | pen #ff000000 1 | brush none"});
}

void TestPolarPlot::filledSectorIsTheWholeCircle()
{
    Polar polar;
    const QPointF from(39, 199), to(359, 199), mid(199, 119);
    const QStringList calls = polar.record([&](QPainter* p) {
        p->setBrush(Qt::red);
        polar.drawSector(mid, from, to, p, true);
    });
    QCOMPARE(calls.size(), 1);
    // Circle through the three points: centre (199, 319), radius 200.
    QVERIFY2(calls[0].startsWith("path ") && calls[0].contains(" in -1,119 400x400 "), qPrintable(calls[0]));
}

QTEST_MAIN(TestPolarPlot)
#include "tst_polarplot.moc"

// The rose diagram, recorded: petal radii on both scales with and without the zero circle,
// stacked classes in the legend's colours, classification by colour, text and colour map,
// grid circles, tick marks and spokes, unit vectors with their mirror, the resultant vector, and
// data with nothing or one direction in it.
#include "PaintRecorder.h"

#include <MatrixData.h>
#include <QLegendListModel.h>
#include <QRosePlotWidget.h>

#include <QPainter>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>
#include <memory>

using namespace rkBase;

Q_DECLARE_METATYPE(std::vector<int>)
Q_DECLARE_METATYPE(std::vector<double>)

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const QPointF kCentre(199, 199); // of a 400 x 400 raster, R = 160
constexpr double kR = 160.0;

// A sheet with an azimuth column and an optional class column, and a rose on it.
struct Rose {
    MatrixData sheet{QStringLiteral("sheet"), -1, -1, QVariant::String, true};
    MatrixData* azimuth = nullptr;
    MatrixData* classes = nullptr;
    QRosePlotWidget plot{nullptr, QStringLiteral("Rose Chart")};
    QLegendListModel legend{nullptr, &plot, QLegendListModel::ColorLegend};

    Rose(const std::vector<double>& azimuths, QVariant::Type classType = QVariant::Invalid,
         const QVariantList& classValues = {})
    {
        azimuth = new MatrixData(QStringLiteral("azimuth"), int(azimuths.size()), 1, QVariant::Double, true);
        for (int r = 0; r < int(azimuths.size()); ++r)
            azimuth->setValue(r, 0, azimuths[r]);
        azimuth->setColor(QColor(10, 20, 30));
        sheet.appendChild(azimuth, false);
        if (classType != QVariant::Invalid) {
            classes = new MatrixData(QStringLiteral("class"), classValues.size(), 1, classType, true);
            for (int r = 0; r < classValues.size(); ++r)
                classes->setValue(r, 0, classValues[r]);
            sheet.appendChild(classes, false);
            legend.setSymbolNode(classes);
        }
        sheet.checkValidRowCount();
        plot.resize(400, 400);
        plot.setEqualAreaScaling(false);
    }
    // Bins as the rose panel makes them, handed to the plot.
    void bin(int interval, bool unidirectional = true, bool autoColor = false, const std::vector<int>& rows = {})
    {
        std::vector<std::vector<QVariant>> values;
        MatrixData* table = MatrixData::newFrequencyData(interval, 360 / interval, 0, MatrixData::Frequency, rows,
                                                         azimuth, classes, values, unidirectional);
        double length = 0;
        const double direction = azimuth->resultantMeanDirection(length, rows);
        plot.setDirectionData(azimuth, rows);
        plot.setUnidirectional(unidirectional);
        plot.setRoseData(table, std::move(values), &legend, interval, direction, length, autoColor);
    }
    QStringList record()
    {
        plot.redraw();
        PaintRecorder device(QSize(400, 400));
        QPainter painter(&device);
        plot.drawChart(painter);
        painter.end();
        return device.calls();
    }
};

QString hex(const QColor& c) { return c.name(QColor::HexArgb); }

QStringList matching(const QStringList& calls, const QString& pattern)
{
    return calls.filter(QRegularExpression(pattern));
}

// x, y, w, h of a recorded path or ellipse.
QRectF boxOf(const QString& call)
{
    const auto m = QRegularExpression("(?:in|ellipse) (-?[\\d.e+-]+),(-?[\\d.e+-]+) ([\\d.e+-]+)x([\\d.e+-]+)").match(call);
    return QRectF(m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(), m.captured(4).toDouble());
}

bool near(double a, double b, double tolerance = 2e-3) { return std::abs(a - b) <= tolerance; }

// The segments of a recorded lines call.
QVector<QLineF> segments(const QString& call)
{
    QVector<QLineF> out;
    const QString body = call.section(QLatin1Char('|'), 0, 0).mid(6).trimmed();
    for (const QString& part : body.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList ends = part.split(QLatin1Char('-'));
        // "x1,y1-x2,y2" with no negative coordinates here
        const QStringList a = ends[0].split(','), b = ends[1].split(',');
        out << QLineF(a[0].toDouble(), a[1].toDouble(), b[0].toDouble(), b[1].toDouble());
    }
    return out;
}

// Azimuth of a point seen from the centre.
double azimuthOf(const QPointF& p)
{
    double a = std::atan2(p.x() - kCentre.x(), kCentre.y() - p.y()) * 180.0 / M_PI;
    return a < 0 ? a + 360.0 : a;
}

} // namespace

class TestRosePlot : public QObject
{
    Q_OBJECT
private slots:
    void petalRadii_data();
    void petalRadii();
    void classesStackInLegendColours();
    void classificationByTextAndColourMap();
    void gridCirclesAndSpokes_data();
    void gridCirclesAndSpokes();
    void tickMarks();
    void unitVectors_data();
    void unitVectors();
    void resultantVector_data();
    void resultantVector();
    void nothingOrOneDirection_data();
    void nothingOrOneDirection();
};

void TestRosePlot::petalRadii_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<double>("zeroCircle");
    QTest::addColumn<QList<double>>("radii"); // bins 0 (NE), 1 (SE), 3 (NW)
    // Counts 8, 2, 0, 4 of a maximum 8.
    QTest::newRow("linear") << false << 0.0 << QList<double>{160, 40, 80};
    QTest::newRow("equal area") << true << 0.0 << QList<double>{160, 80, 160 * std::sqrt(0.5)};
    QTest::newRow("linear, zero circle 25%") << false << 25.0 << QList<double>{160, 70, 100};
    QTest::newRow("equal area, zero circle 25%") << true << 25.0 << QList<double>{160, 100, 40 + 120 * std::sqrt(0.5)};
}

void TestRosePlot::petalRadii()
{
    QFETCH(bool, equalArea);
    QFETCH(double, zeroCircle);
    QFETCH(QList<double>, radii);
    std::vector<double> az;
    for (int i = 0; i < 8; ++i)
        az.push_back(45);
    az.insert(az.end(), {135, 135, 315, 315, 315, 315});
    Rose rose(az);
    rose.bin(90);
    rose.plot.setEqualAreaScaling(equalArea);
    rose.plot.setZeroCircleSize(zeroCircle);
    QCOMPARE(rose.plot.maxFrequency(), 8.0);
    const QStringList petals = matching(rose.record(), "^path ");
    QCOMPARE(petals.size(), 3);
    const QRectF expected[3] = {QRectF(199, 199 - radii[0], radii[0], radii[0]), QRectF(199, 199, radii[1], radii[1]),
                                QRectF(199 - radii[2], 199 - radii[2], radii[2], radii[2])};
    for (int i = 0; i < 3; ++i) {
        const QRectF box = boxOf(petals[i]);
        QVERIFY2(near(box.x(), expected[i].x()) && near(box.y(), expected[i].y()) && near(box.width(), expected[i].width()) &&
                     near(box.height(), expected[i].height()),
                 qPrintable(petals[i]));
        QVERIFY(petals[i].endsWith("| pen #ff808080 1 | brush #ff0a141e"));
    }
    // The zero circle covers the centre, over the petals.
    const QStringList zero = matching(rose.record(), "^ellipse .*brush #ffffffff$");
    if (zeroCircle > 0) {
        QCOMPARE(zero.size(), 1);
        QVERIFY(zero[0].startsWith("ellipse 159,159 80x80 | pen #ff000000 1"));
    } else {
        QVERIFY(zero.isEmpty());
    }
}

void TestRosePlot::classesStackInLegendColours()
{
    // Bin 0 (0-90): three red, one blue, one without a colour; bin 1: two blue.
    Rose rose({45, 45, 45, 45, 45, 100, 100}, QVariant::Color,
              {QColor(Qt::red), QColor(Qt::red), QColor(Qt::blue), QColor(Qt::red), QVariant(), QColor(Qt::blue),
               QColor(Qt::blue)});
    rose.bin(90);
    QCOMPARE(rose.plot.classification(),
             (std::vector<std::vector<int>>{{3, 1}, {0, 2}, {0, 0}, {0, 0}}));
    QCOMPARE(rose.legend.rowCount(), 2);
    const auto petals = [&] {
        QStringList out;
        for (const QString& p : matching(rose.record(), "^path "))
            out << QStringLiteral("%1 r%2").arg(p.section("brush ", 1)).arg(qRound(std::max(boxOf(p).width(), boxOf(p).height())));
        return out;
    };
    // Unclassified outside in the node's colour, then the last class, then the first.
    QCOMPARE(petals(), QStringList({"#ff0a141e r160", "#ff0000ff r128", "#ffff0000 r96", "#ff0000ff r64"}));
    // A colour changed in the legend paints at the next redraw.
    rose.legend.changeSymbolColor(rose.legend.index(0, 0), Qt::green);
    QCOMPARE(petals(), QStringList({"#ff0a141e r160", "#ff0000ff r128", "#ff00ff00 r96", "#ff0000ff r64"}));
    // Without a legend node there are no classes: one petal a bin in the node's colour.
    rose.legend.setSymbolNode(nullptr);
    rose.plot.createClassification(19);
    QVERIFY(rose.plot.classification().empty());
    QCOMPARE(petals(), QStringList({"#ff0a141e r160", "#ff0a141e r64"}));
}

void TestRosePlot::classificationByTextAndColourMap()
{
    {
        Rose rose({10, 20, 30, 200}, QVariant::String, {"shale", "sand", "shale", "sand"});
        rose.bin(90);
        QCOMPARE(rose.plot.classification(), (std::vector<std::vector<int>>{{2, 1}, {0, 0}, {0, 1}, {0, 0}}));
        QCOMPARE(rose.legend.classValues().value(1).toString(), QStringLiteral("shale"));
        QCOMPARE(rose.legend.classValues().value(2).toString(), QStringLiteral("sand"));
        QCOMPARE(rose.legend.classColors().value(1), rose.classes->color(QStringLiteral("shale")));
    }
    {
        // Numbers 0..9: two per bin in two bins, so the busiest bin holds two classes.
        Rose rose({10, 10, 200, 200}, QVariant::Double, {0.0, 1.0, 8.0, 9.0});
        rose.classes->setColorMapStepSize(0.5);
        rose.bin(90, true, true); // the attribute's own step: 18 classes
        QCOMPARE(rose.legend.rowCount(), 18);
        QCOMPARE(rose.plot.classification()[0][0] + rose.plot.classification()[0][2], 2);
        rose.bin(90, true, false); // at most 19, trimmed to the two the bins need
        QCOMPARE(rose.legend.rowCount(), 2);
        QCOMPARE(rose.plot.classification(), (std::vector<std::vector<int>>{{2, 0}, {0, 0}, {0, 2}, {0, 0}}));
        QCOMPARE(rose.classes->colorMapStepSize(), 0.5); // the attribute keeps its own step
    }
}

void TestRosePlot::gridCirclesAndSpokes_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<int>("distance");
    QTest::addColumn<int>("maxCount");
    QTest::addColumn<int>("circles");
    QTest::newRow("linear, every 1 of 8") << false << -1 << 8 << 7;
    QTest::newRow("equal area, every 1 of 8") << true << -1 << 8 << 7;
    QTest::newRow("every 3 of 8") << false << 3 << 8 << 2;
    QTest::newRow("distance 0: no step") << false << 0 << 8 << 0;
    QTest::newRow("largest bin under 5") << false << -1 << 4 << 0;
    QTest::newRow("crowded: none") << true << 1 << 1000 << 0;
}

void TestRosePlot::gridCirclesAndSpokes()
{
    QFETCH(bool, equalArea);
    QFETCH(int, distance);
    QFETCH(int, maxCount);
    QFETCH(int, circles);
    Rose rose(std::vector<double>(std::size_t(maxCount), 45.0));
    rose.bin(10);
    rose.plot.setEqualAreaScaling(equalArea);
    if (distance >= 0)
        rose.plot.setGridCircleDistance(distance);
    QCOMPARE(rose.plot.getGridCircleDistance(), distance >= 0 ? distance : maxCount / 5);
    const QStringList calls = rose.record();
    const QString grid = QStringLiteral("pen %1 1.5").arg(hex(rose.plot.gridColor()));
    const QStringList rings = matching(calls, "^ellipse .*" + grid);
    QCOMPARE(rings.size(), circles);
    const double s = double(rose.plot.getGridCircleDistance()) / maxCount;
    for (int k = 0; k < rings.size(); ++k) {
        const double f = (k + 1) * s;
        const double r = kR * (equalArea ? std::sqrt(f) : f);
        const QRectF box = boxOf(rings[k]);
        QVERIFY2(near(box.width(), 2 * r) && near(box.center().x(), 199) && near(box.center().y(), 199), qPrintable(rings[k]));
    }
    // Twelve spokes, 5 past the rim.
    const QStringList spokes = matching(calls, "^lines 199,199-.*" + grid);
    QCOMPARE(spokes.size(), 12);
    QVERIFY(spokes[0].startsWith("lines 199,199-199,34 "));
    QVERIFY(spokes[3].startsWith("lines 199,199-364,199 "));
    rose.plot.showGridCircles(false);
    QVERIFY(matching(rose.record(), grid).isEmpty());
}

void TestRosePlot::tickMarks()
{
    Rose rose(std::vector<double>(8, 45.0));
    rose.bin(10);
    rose.plot.showGridCircles(false);
    rose.plot.showTickMarks(true);
    rose.plot.setTickMarkInterval(90);
    const QStringList calls = rose.record();
    const QStringList ticks = matching(calls, QStringLiteral("pen %1 1.5").arg(hex(rose.plot.gridColor())));
    QCOMPARE(ticks.size(), 1);
    const QVector<QLineF> lines = segments(ticks[0]);
    QCOMPARE(lines.size(), 7 * 4); // seven grid radii, four spokes
    for (int i = 0; i < lines.size(); ++i) {
        const QLineF& t = lines[i];
        const double r = kR * ((i / 4) + 1) / 8.0;
        // Six long, centred on its spoke at the grid radius, across it.
        QVERIFY(near(t.length(), 6.0));
        QVERIFY2(near(std::hypot(t.center().x() - 199, t.center().y() - 199), r), qPrintable(QString::number(r)));
        const QPointF radial = t.center() - kCentre;
        QVERIFY(near(radial.x() * t.dx() + radial.y() * t.dy(), 0.0, 1e-2));
    }
    // Spokes at full width, 5 past the rim.
    QCOMPARE(matching(calls, QStringLiteral("^lines 199,199-.*pen %1 1 ").arg(hex(rose.plot.gridColor()))).size(), 4);
}

void TestRosePlot::unitVectors_data()
{
    QTest::addColumn<std::vector<int>>("rows");
    QTest::addColumn<bool>("unidirectional");
    QTest::addColumn<QList<double>>("azimuths");
    // Azimuths 0, 90, 90, 45, 99999 (none), NaN, 200, -20.
    QTest::newRow("all rows") << std::vector<int>{} << true << QList<double>{0, 45, 90, 200, 340};
    QTest::newRow("some rows") << std::vector<int>{1, 2, 3, 4, 5} << true << QList<double>{45, 90};
    QTest::newRow("some rows, mirrored") << std::vector<int>{1, 2, 3} << false << QList<double>{45, 90, 225, 270};
}

void TestRosePlot::unitVectors()
{
    QFETCH(std::vector<int>, rows);
    QFETCH(bool, unidirectional);
    QFETCH(QList<double>, azimuths);
    Rose rose({0, 90, 90, 45, 99999.0, kNaN, 200, -20});
    rose.bin(10, unidirectional, false, rows);
    rose.plot.showDirectionAsRosePlot(false);
    rose.plot.showResultantMeanDirection(false);
    const QStringList calls = rose.record();
    QVERIFY(matching(calls, "^path ").isEmpty()); // no petals
    // One call, from the centre, in the label colour (the frame's ticks start at the rim).
    const QStringList vectors = matching(calls, "^lines 199,199-.*pen #ff000000 1 ");
    QCOMPARE(vectors.size(), 1);
    const QVector<QLineF> lines = segments(vectors[0]);
    QList<double> seen;
    for (const QLineF& l : lines) {
        QCOMPARE(l.p1(), kCentre);
        QVERIFY(near(l.length(), kR, 1e-2));
        seen << azimuthOf(l.p2());
    }
    std::sort(seen.begin(), seen.end());
    QCOMPARE(seen.size(), azimuths.size());
    // Ends fall on the rim's pixel steps: within a pixel of the true direction.
    for (int i = 0; i < seen.size(); ++i)
        QVERIFY2(std::abs(seen[i] - azimuths[i]) * M_PI / 180.0 * kR < 1.0, qPrintable(QString::number(seen[i])));
}

void TestRosePlot::resultantVector_data()
{
    QTest::addColumn<bool>("petals");
    QTest::addColumn<bool>("normalised");
    QTest::addColumn<QString>("pen");
    QTest::addColumn<double>("reach");
    // Azimuths 80 and 100: resultant 90, length cos 10.
    QTest::newRow("rose") << true << false << "#ff000000 2" << kR + 25;
    QTest::newRow("unit vectors") << false << false << "#ff0000ff 2" << kR + 25;
    QTest::newRow("normalised length") << true << true << "#ff000000 2" << kR * std::cos(10 * M_PI / 180);
}

void TestRosePlot::resultantVector()
{
    QFETCH(bool, petals);
    QFETCH(bool, normalised);
    QFETCH(QString, pen);
    QFETCH(double, reach);
    Rose rose({80, 100});
    rose.bin(10);
    rose.plot.showDirectionAsRosePlot(petals);
    rose.plot.showResultantMeanLength(normalised);
    QCOMPARE(rose.plot.resultantDirection(), 90.0);
    const QStringList shaft = matching(rose.record(), "^lines .*pen " + pen + " ");
    QCOMPARE(shaft.size(), 2); // the line, then the arrow head's two strokes
    const QVector<QLineF> line = segments(shaft[0]);
    QVERIFY2(near(line[0].p2().x(), 199 + reach, 1e-3) && near(line[0].p2().y(), 199), qPrintable(shaft[0]));
    const QVector<QLineF> head = segments(shaft[1]);
    QCOMPARE(head.size(), 2);
    QVERIFY(near(head[0].p2().x(), 199 + reach, 1e-3) && near(head[0].p1().x(), 199 + reach - 10, 1e-3));
    rose.plot.showResultantMeanDirection(false);
    QVERIFY(matching(rose.record(), "pen " + pen + " ").isEmpty());
}

void TestRosePlot::nothingOrOneDirection_data()
{
    QTest::addColumn<std::vector<double>>("azimuths");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("petals");
    QTest::newRow("no rows") << std::vector<double>{} << 10 << 0;
    QTest::newRow("only blanks") << std::vector<double>{99999.0, kNaN} << 10 << 0;
    QTest::newRow("interval 0") << std::vector<double>{10, 20} << 0 << 0;
    QTest::newRow("one direction") << std::vector<double>{123, 123, 123} << 10 << 1;
    QTest::newRow("interval 7: the last bin reaches 360") << std::vector<double>{358} << 7 << 1;
}

void TestRosePlot::nothingOrOneDirection()
{
    QFETCH(std::vector<double>, azimuths);
    QFETCH(int, interval);
    QFETCH(int, petals);
    Rose rose(azimuths);
    std::vector<std::vector<QVariant>> values;
    MatrixData* table = MatrixData::newFrequencyData(interval, interval > 0 ? 360 / interval : 0, 0,
                                                     MatrixData::Frequency, {}, rose.azimuth, nullptr, values, true);
    double length = 0;
    rose.plot.setRoseData(table, std::move(values), &rose.legend, interval, rose.azimuth->resultantMeanDirection(length, {}),
                          length, false);
    const QStringList calls = rose.record();
    const QStringList drawn = matching(calls, "^path ");
    QCOMPARE(drawn.size(), petals);
    if (petals == 0) {
        QCOMPARE(rose.plot.maxFrequency(), 0.0);
        // Only the frame: ticks, labels, the circle and the north arrow.
        QVERIFY(matching(calls, QStringLiteral("pen %1 ").arg(hex(rose.plot.gridColor()))).isEmpty());
    } else {
        // The fullest bin reaches the rim: its box's far corner lies just past it.
        const QRectF box = boxOf(drawn[0]);
        double far = 0;
        for (const QPointF& corner : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()})
            far = std::max(far, std::hypot(corner.x() - 199, corner.y() - 199));
        QVERIFY2(far >= kR - 0.5 && far <= kR * 1.1, qPrintable(drawn[0]));
    }
}

QTEST_MAIN(TestRosePlot)
#include "tst_roseplot.moc"

// The drawing area every chart stands on: what its symbols, walkers, labels and contours ask a
// painter to draw (recorded, so exact on every machine), the raster fast path against the real
// shapes, zoom and scroll, the context menu, the raster copy and the legends.
#include "PaintRecorder.h"
#include "ScatterTestChart.h"

#include <MatrixDataArray.h>
#include <QLegendListModel.h>
#include <QLegendListView.h>
#include <QRelationshipItemModel.h>
#include <RKColormap.h>
#include <SymbolStamper.h>

#include <QClipboard>
#include <QMenu>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace rkBase;
using Model = QRelationshipItemModel;

Q_DECLARE_METATYPE(std::vector<int>)

namespace {

// A model of the given points (x, y as pixels for the scatter chart), loaded as a host would.
template <class M>
struct PointSetOf {
    std::unique_ptr<MatrixData> x, y;
    M model;
    PointSetOf(const QVector<QPointF>& points, Model::DisplayType type, const std::vector<int>& selected = {})
    {
        x = std::make_unique<MatrixData>(QStringLiteral("x"), points.size(), 1, QVariant::Double, true);
        y = std::make_unique<MatrixData>(QStringLiteral("y"), points.size(), 1, QVariant::Double, true);
        for (int r = 0; r < points.size(); ++r) {
            x->setValue(r, 0, points[r].x());
            y->setValue(r, 0, points[r].y());
        }
        model.takeNewDataSet(1, type, x.get(), y.get(), selected);
    }
};
using PointSet = PointSetOf<Model>;

// A model of its own kind: the walkers read its points through data(), one QVariant each.
class DerivedModel : public Model
{
};

// A one-column sheet node of the type, with the cells given.
std::unique_ptr<MatrixData> column(const char* name, QVariant::Type type, const QVariantList& cells)
{
    auto node = std::make_unique<MatrixData>(QString::fromLatin1(name), cells.size(), 1, type, true);
    for (int r = 0; r < cells.size(); ++r)
        node->setValue(r, 0, cells[r]);
    return node;
}

// What the scatter chart's walkers ask a painter to draw for the model.
QStringList drawnPoints(Model& model)
{
    ScatterTestChart chart;
    chart.setModel(&model);
    PaintRecorder device;
    {
        QPainter painter(&device);
        chart.setPointPen(&painter);
        chart.drawPoints(&painter);
    }
    return device.calls();
}

QString hex(const QColor& c) { return c.name(QColor::HexArgb); }

int maxChannelDifference(const QImage& a, const QImage& b)
{
    int worst = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                              std::abs(qBlue(p) - qBlue(q))});
        }
    return worst;
}

} // namespace

class TestChartDrawingArea : public QObject
{
    Q_OBJECT
private slots:
    void symbolShapes_data();
    void symbolShapes();
    void walkersDrawTheSelectionLast_data();
    void walkersDrawTheSelectionLast();
    void colourAttributesReachTheirWalkers_data();
    void colourAttributesReachTheirWalkers();
    void colourTypedTadpolesKeepTheWalkPen_data();
    void colourTypedTadpolesKeepTheWalkPen();
    void nullPointsAreSkipped_data();
    void nullPointsAreSkipped();
    void storedAndVariantReadsDrawAlike_data();
    void storedAndVariantReadsDrawAlike();
    void stampedSymbolsMatchRealShapes_data();
    void stampedSymbolsMatchRealShapes();
    void stampingHonoursTheClip();
    void repeatedStampsLeaveTheSamePicture_data();
    void repeatedStampsLeaveTheSamePicture();
    void resultPointAndCentroids();
    void tadpoles_data();
    void tadpoles();
    void labels();
    void contourBandsOfARamp();
    void contourLabelsKeepApart_data();
    void contourLabelsKeepApart();
    void contourLabelsFollowTheFirstIndex();
    void contourBadGrids_data();
    void contourBadGrids();
    void wheelZoom_data();
    void wheelZoom();
    void zoomOffsets();
    void labelColorSwitchesTheScheme_data();
    void labelColorSwitchesTheScheme();
    void contextMenuAndKeys();
    void rasterIsRebuiltOnlyWhenStale();
    void copyToClipboard();
    void tooltip();
    void legendRowsAndWindow_data();
    void legendRowsAndWindow();
    void legendSymbolsOnlyInTheWindow();
    void legendCellTypeIsTheSampleValues_data();
    void legendCellTypeIsTheSampleValues();
};

// ---- symbols ----

void TestChartDrawingArea::symbolShapes_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("expected");
    // Position (20.7, 30.2), size 3, colour red; the painter's brush before the call is green.
    const QString red = QStringLiteral("#ffff0000"), green = QStringLiteral("#ff00ff00"),
                  white = QStringLiteral("#ffffffff");
    QTest::newRow("0 Circle") << 0 << "ellipse 17,27 7x7 | brush " + red;
    QTest::newRow("1 Cross") << 1 << QStringLiteral("lines 17,30-23,30 20,27-20,33 | brush none");
    QTest::newRow("2 Square") << 2 << "rect 17,27 7x7 | brush " + red;
    QTest::newRow("3 Triangle1") << 3 << "polygon odd 20,27 24,33 16,33 | brush " + red;
    QTest::newRow("4 Triangle2") << 4 << "polygon odd 20,33 16,27 24,27 | brush " + red;
    QTest::newRow("5 Diamond") << 5 << "polygon winding 20,26 24,30 20,34 16,30 | brush " + red;
    QTest::newRow("6 BigCross1") << 6
                                 << "polygon odd 19,26 22,26 22,29 25,29 25,32 22,32 22,35 19,35 19,32 16,32 16,29 "
                                    "19,29 | brush " + red;
    QTest::newRow("7 BigCross2") << 7
                                 << "polygon odd 17,24 20,27 23,24 26,27 23,30 26,33 23,36 20,33 17,36 14,33 17,30 "
                                    "14,27 | brush " + red;
    QTest::newRow("8 Square1") << 8 << "rect 17,27 7x7 | brush " + white;
    QTest::newRow("9 Triangle3") << 9 << "polygon odd 20,27 24,33 16,33 | brush " + green;
    QTest::newRow("10 Triangle4") << 10 << "polygon odd 20,33 16,27 24,27 | brush " + green;
    QTest::newRow("11 Diamond1") << 11 << "polygon winding 20,26 24,30 20,34 16,30 | brush " + green;
    QTest::newRow("12 Ring") << 12 << "ellipse 17,27 7x7 | brush " + green;
    QTest::newRow("13 Dot") << 13 << QStringLiteral("point 20,30 | brush none");
    QTest::newRow("14 BigCross3") << 14
                                  << "polygon odd 19,26 22,26 22,29 25,29 25,32 22,32 22,35 19,35 19,32 16,32 16,29 "
                                     "19,29 | brush " + green;
    QTest::newRow("15 BigCross4") << 15
                                  << "polygon odd 17,24 20,27 23,24 26,27 23,30 26,33 23,36 20,33 17,36 14,33 17,30 "
                                     "14,27 | brush " + green;
    QTest::newRow("other: filled circle") << 42 << "ellipse 17,27 7x7 | brush " + red;
}

void TestChartDrawingArea::symbolShapes()
{
    QFETCH(int, style);
    QFETCH(QString, expected);
    ScatterTestChart chart;
    PaintRecorder device;
    {
        QPainter painter(&device);
        painter.setPen(QPen(Qt::blue, 2.0));
        painter.setBrush(Qt::green);
        chart.drawOneSymbol(QPointF(20.7, 30.2), style, Qt::red, 3, &painter);
    }
    QCOMPARE(device.calls().size(), 1);
    const QString call = device.calls().first();
    // The shape and the fill; the pen is the caller's except for the dot, whose width is the size.
    const QString shapeAndBrush = call.section(QStringLiteral(" | "), 0, 0) + " | " + call.section(" | ", 2, 2);
    QCOMPARE(shapeAndBrush, expected);
    if (style == 13)
        QVERIFY2(call.contains(QStringLiteral("pen #ffff0000 3")), qPrintable(call));
    else
        QVERIFY2(call.contains(QStringLiteral("pen #ff0000ff 2")), qPrintable(call));
}

// ---- walkers ----

void TestChartDrawingArea::walkersDrawTheSelectionLast_data()
{
    QTest::addColumn<int>("displayType");
    QTest::addColumn<std::vector<int>>("selected");
    QTest::addColumn<QStringList>("expected");
    // Crosses of size 2 at (10+10r, 20): first pass in the point colour, selection after it.
    const QString blue = QStringLiteral("pen #ff000080 2"), yellow = QStringLiteral("pen #ffffff00 2");
    auto cross = [](int row, const QString& pen) {
        const int x = 10 + 10 * row;
        return QStringLiteral("lines %1,20-%2,20 %3,18-%3,22 | %4").arg(x - 2).arg(x + 2).arg(x).arg(pen);
    };
    QTest::newRow("show all, selection ignored")
        << 0 << std::vector<int>{1} << QStringList{cross(0, blue), cross(1, blue), cross(2, blue)};
    QTest::newRow("highlight: selected row last, in yellow")
        << 2 << std::vector<int>{1} << QStringList{cross(0, blue), cross(2, blue), cross(1, yellow)};
    QTest::newRow("highlight, nothing selected") << 2 << std::vector<int>{}
                                                 << QStringList{cross(0, blue), cross(1, blue), cross(2, blue)};
    QTest::newRow("selected only, keeps the point pen") << 1 << std::vector<int>{0, 2}
                                                        << QStringList{cross(0, blue), cross(2, blue)};
    QTest::newRow("selected only, no selection: nothing") << 1 << std::vector<int>{} << QStringList{};
}

void TestChartDrawingArea::walkersDrawTheSelectionLast()
{
    QFETCH(int, displayType);
    QFETCH(std::vector<int>, selected);
    QFETCH(QStringList, expected);
    PointSet set({{10, 20}, {20, 20}, {30, 20}}, Model::DisplayType(displayType), selected);
    set.model.setPointStyle(Model::Cross);
    QStringList shapes;
    for (const QString& c : drawnPoints(set.model))
        shapes << c.section(QStringLiteral(" | "), 0, 1);
    QCOMPARE(shapes, expected);
}

void TestChartDrawingArea::colourAttributesReachTheirWalkers_data()
{
    QTest::addColumn<int>("attributeType");
    QTest::addColumn<bool>("symbolOn");
    QTest::addColumn<bool>("symbolColourOnly");
    QTest::addColumn<QString>("expected");
    // Rows red, green, red; the stress overlay is on, which is where the walkers differ most.
    // A colour-typed attribute keeps its own colours under the overlay ...
    QTest::newRow("colour cells") << int(QVariant::Color) << false << false << "red green red";
    // ... a colour map attribute gives way to the overlay: its symbols are background-filled.
    QTest::newRow("colour map") << int(QVariant::Double) << false << false << "white white white";
    // With a symbol attribute, the "Single" style keeps the classes' symbols with colour cells
    // (the other walker would make every point a cross).
    QTest::newRow("colour cells and symbols, single style") << int(QVariant::Color) << true << true << "shapes";
}

void TestChartDrawingArea::colourAttributesReachTheirWalkers()
{
    QFETCH(int, attributeType);
    QFETCH(bool, symbolOn);
    QFETCH(bool, symbolColourOnly);
    QFETCH(QString, expected);
    auto x = column("x", QVariant::Double, {20.0, 40.0, 60.0});
    auto y = column("y", QVariant::Double, {30.0, 30.0, 30.0});
    auto tint = attributeType == int(QVariant::Color)
                    ? column("tint", QVariant::Color, {QColor(Qt::red), QColor(Qt::green), QColor(Qt::red)})
                    : column("tint", QVariant::Double, {1.0, 2.0, 1.0});
    auto kind = column("kind", QVariant::String, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")});
    QMap<int, QVariant> cn, sn;
    QMap<int, QColor> cc, sc;
    Model model;
    model.takeNewDataSet(1, Model::ShowAll, x.get(), y.get(), tint.get(), symbolOn ? kind.get() : nullptr, true, {},
                         cn, cc, sn, sc);
    QCOMPARE(int(model.colorClasses()->cellType()), attributeType);
    // The ids and labels stay readable whatever the attribute's type.
    QVERIFY(!model.colorClasses()->value(0, 0).toString().isEmpty());
    model.setColorAttributeNode(tint.get());
    model.setPointStyle(Model::Circle);
    model.setFilledStressFieldIsOn(true);
    model.setShowStressState(true);
    ScatterTestChart chart;
    chart.setModel(&model);
    chart.setSymbolColorOnly(symbolColourOnly);
    PaintRecorder device;
    {
        QPainter painter(&device);
        chart.setPointPen(&painter);
        chart.drawPoints(&painter);
    }
    const QStringList calls = device.calls();
    QCOMPARE(calls.size(), 3);
    if (expected == QLatin1String("shapes")) {
        QVERIFY2(!calls.filter(QRegularExpression(QStringLiteral("^(rect|polygon|ellipse)"))).isEmpty(),
                 qPrintable(calls.join('\n')));
        return;
    }
    QStringList fills;
    for (const QString& c : calls) {
        const QColor brush(c.section(QStringLiteral("brush "), 1).section(QLatin1Char(' '), 0, 0));
        fills << (brush == Qt::red ? "red" : brush == Qt::green ? "green" : brush == Qt::white ? "white" : brush.name());
    }
    QCOMPARE(fills.join(' '), expected);
}

void TestChartDrawingArea::colourTypedTadpolesKeepTheWalkPen_data()
{
    QTest::addColumn<int>("displayType");
    QTest::addColumn<QString>("selectedPen");
    // The selected row's tadpole is a plain one: it keeps the pen of the walk, the point pen
    // when only the selection is shown, yellow when it is highlighted; its disc is the class's.
    QTest::newRow("selected only") << 1 << QStringLiteral("pen #ff000080 2");
    QTest::newRow("highlight") << 2 << QStringLiteral("pen #ffffff00 2");
}

void TestChartDrawingArea::colourTypedTadpolesKeepTheWalkPen()
{
    QFETCH(int, displayType);
    QFETCH(QString, selectedPen);
    auto x = column("x", QVariant::Double, {20.0, 40.0, 60.0});
    auto y = column("y", QVariant::Double, {30.0, 30.0, 30.0});
    auto tint = column("tint", QVariant::Color, {QColor(Qt::red), QColor(Qt::green), QColor(Qt::red)});
    auto azimuth = column("azimuth", QVariant::Double, {90.0, 90.0, 90.0});
    QMap<int, QVariant> cn, sn;
    QMap<int, QColor> cc, sc;
    Model model;
    model.takeNewDataSet(1, Model::DisplayType(displayType), x.get(), y.get(), tint.get(), nullptr, true, {1}, cn,
                         cc, sn, sc);
    model.setColorAttributeNode(tint.get());
    model.setTadPoleAzimuthDataNode(azimuth.get());
    model.setPointStyle(Model::Circle);
    const QStringList discs = drawnPoints(model).filter(QRegularExpression(QStringLiteral("^ellipse")));
    QVERIFY(!discs.isEmpty());
    const QString last = discs.last();
    QVERIFY2(last.startsWith(QStringLiteral("ellipse 38,")), qPrintable(last));
    QCOMPARE(last.section(QStringLiteral(" | "), 1, 2), selectedPen + QStringLiteral(" | brush #ff00ff00"));
}

void TestChartDrawingArea::nullPointsAreSkipped_data()
{
    QTest::addColumn<bool>("throughData");
    QTest::newRow("cells") << false;
    QTest::newRow("data()") << true;
}

void TestChartDrawingArea::nullPointsAreSkipped()
{
    // Only a blank cell is no point. A point at the origin (a flat bed, a zero reading) is drawn,
    // though a QVariant holding it reports isNull().
    QFETCH(bool, throughData);
    const QVector<QPointF> points = {{10, 20}, {20, 20}, {0, 0}, {30, 20}};
    PointSetOf<Model> stored(points, Model::ShowAll, {});
    PointSetOf<DerivedModel> variant(points, Model::ShowAll, {});
    Model& model = throughData ? static_cast<Model&>(variant.model) : stored.model;
    model.setPointStyle(Model::Circle);
    model.data()->setValue(1, 0, QVariant()); // a point that has gone
    const QStringList calls = drawnPoints(model);
    QCOMPARE(calls.size(), 3);
    QVERIFY(calls[0].startsWith(QStringLiteral("ellipse 8,18 5x5")));
    QVERIFY2(calls[1].startsWith(QStringLiteral("ellipse -2,-2 5x5")), qPrintable(calls[1]));
    QVERIFY(calls[2].startsWith(QStringLiteral("ellipse 28,18 5x5")));
}

void TestChartDrawingArea::storedAndVariantReadsDrawAlike_data()
{
    QTest::addColumn<int>("displayType");
    QTest::newRow("show all") << 0;
    QTest::newRow("selected only") << 1;
    QTest::newRow("highlight") << 2;
}

void TestChartDrawingArea::storedAndVariantReadsDrawAlike()
{
    // The plain model's points are read from their cells in blocks; a derived model's through
    // data(). Both walks must ask for the same drawing, in the same order: blank cells left out,
    // points at the origin drawn, the selection last, across block boundaries.
    QFETCH(int, displayType);
    QRandomGenerator rng(9);
    QVector<QPointF> points;
    std::vector<int> selected;
    for (int r = 0; r < 1300; ++r) {
        points << (r % 97 == 0 ? QPointF(0.0, 0.0) : QPointF(rng.bounded(400), rng.bounded(300)));
        if (rng.bounded(5) == 0)
            selected.push_back(r);
    }
    PointSetOf<Model> stored(points, Model::DisplayType(displayType), selected);
    PointSetOf<DerivedModel> variant(points, Model::DisplayType(displayType), selected);
    for (const int blank : {5, 511, 512, 1299}) {
        stored.model.data()->setValue(blank, 0, QVariant());
        variant.model.data()->setValue(blank, 0, QVariant());
    }
    stored.model.setPointStyle(Model::Cross);
    variant.model.setPointStyle(Model::Cross);
    const QStringList fromCells = drawnPoints(stored.model);
    QVERIFY(fromCells.size() > 200);
    QCOMPARE(fromCells, drawnPoints(variant.model));
}

void TestChartDrawingArea::stampedSymbolsMatchRealShapes_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("antialiased");
    for (int style : {0, 1, 2, 3, 5, 6, 7, 8, 11, 12, 13, 15})
        for (int size : {2, 5})
            QTest::addRow("style %d size %d", style, size) << style << size << (style % 2 == 0);
}

// The raster fast path must leave the same pixels as the real shapes, near the edges too.
void TestChartDrawingArea::stampedSymbolsMatchRealShapes()
{
    QFETCH(int, style);
    QFETCH(int, size);
    QFETCH(bool, antialiased);
    QVector<QPointF> points;
    QRandomGenerator rng(style * 100 + size);
    for (int i = 0; i < 300; ++i)
        points << QPointF(rng.bounded(240.0) - 20.0, rng.bounded(190.0) - 20.0);
    PointSet set(points, Model::HighlightSelected, {3, 7, 11, 250});
    set.model.setPointStyle(Model::PointStyle(style));
    set.model.setPointPixelSize(size);
    ScatterTestChart chart;
    chart.setModel(&set.model);
    QImage images[2];
    for (int stamped = 0; stamped < 2; ++stamped) {
        chart.setSymbolStamping(stamped == 1);
        QImage& image = images[stamped];
        image = QImage(200, 150, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, antialiased);
        chart.setPointPen(&painter);
        chart.drawPoints(&painter);
    }
    // Both ways drew every point: each point well inside the image left ink (a pixel far from
    // the white background) within its symbol's reach, whatever the symbol's outline.
    auto inkNear = [size](const QImage& image, const QPointF& p) {
        const int cx = qRound(p.x()), cy = qRound(p.y()), reach = size + 1;
        for (int y = cy - reach; y <= cy + reach; ++y)
            for (int x = cx - reach; x <= cx + reach; ++x) {
                const QRgb c = image.pixel(x, y);
                if (std::min({qRed(c), qGreen(c), qBlue(c)}) < 192)
                    return true;
            }
        return false;
    };
    int checked = 0;
    for (const QPointF& p : points) {
        if (p.x() < size + 2 || p.x() > 197 - size || p.y() < size + 2 || p.y() > 147 - size)
            continue;
        ++checked;
        for (int stamped = 0; stamped < 2; ++stamped)
            QVERIFY2(inkNear(images[stamped], p),
                     qPrintable(QStringLiteral("no ink near %1,%2 (stamped %3)").arg(p.x()).arg(p.y()).arg(stamped)));
    }
    QVERIFY(checked > 100);
    QVERIFY2(maxChannelDifference(images[0], images[1]) <= 2,
             qPrintable(QStringLiteral("max difference %1").arg(maxChannelDifference(images[0], images[1]))));
}

void TestChartDrawingArea::stampingHonoursTheClip()
{
    QVector<QPointF> points;
    for (int i = 0; i < 20; ++i)
        for (int j = 0; j < 15; ++j)
            points << QPointF(10 + i * 10, 10 + j * 10);
    PointSet set(points, Model::ShowAll);
    set.model.setPointStyle(Model::Square);
    set.model.setPointPixelSize(3);
    ScatterTestChart chart;
    chart.setModel(&set.model);
    QImage images[2];
    for (int stamped = 0; stamped < 2; ++stamped) {
        chart.setSymbolStamping(stamped == 1);
        images[stamped] = QImage(200, 150, QImage::Format_ARGB32_Premultiplied);
        images[stamped].fill(Qt::white);
        QPainter painter(&images[stamped]);
        QPainterPath circle;
        circle.addEllipse(QPointF(100, 75), 60, 60);
        painter.setClipPath(circle);
        painter.translate(3, -2);
        chart.setPointPen(&painter);
        chart.drawPoints(&painter);
    }
    QCOMPARE(images[1].pixel(5, 5), qRgb(255, 255, 255)); // outside the clip
    QVERIFY(maxChannelDifference(images[0], images[1]) <= 2);
}

void TestChartDrawingArea::resultPointAndCentroids()
{
    PointSet set({{1, 1}}, Model::ShowAll);
    set.model.setPointPixelSize(4);
    set.model.setPointStyle(Model::Triangle1);
    ScatterTestChart chart;
    chart.setModel(&set.model);
    chart.setShowLabels(false);
    PaintRecorder device;
    {
        QPainter painter(&device);
        chart.drawResultPoint(&painter, QPointF(50, 60), Qt::red, QStringLiteral("mean"), -1.0, false);
        // Beyond the limit: a dip of 50 against a limit of 40 draws nothing, 90 - 50 does.
        chart.drawResultPoint(&painter, QPointF(50, 60), Qt::red, QString(), 40.0, false);
        chart.drawResultPoint(&painter, QPointF(50, 60), Qt::red, QString(), 40.0, true);
        chart.drawCentroids(&painter, {QPointF(10, 10)}, Qt::blue);
    }
    const QStringList expected{
        QStringLiteral("ellipse 45,55 11x11 | pen #ffc0c0c0 2 | brush #ffff0000"),
        QStringLiteral("lines 47,60-53,60 50,57-50,63 | pen #ffffffff 1 | brush none"),
        QStringLiteral("ellipse 45,55 11x11 | pen #ffc0c0c0 2 | brush #ffff0000"),
        QStringLiteral("lines 47,60-53,60 50,57-50,63 | pen #ffffffff 1 | brush none"),
        QStringLiteral("ellipse 3,3 15x15 | pen #ffc0c0c0 1 | brush #ff0000ff"),
        QStringLiteral("lines 3,10-17,10 10,3-10,17 | pen #ffffffff 1 | brush #ff0000ff")};
    QCOMPARE(device.calls(), expected);
    // The model's symbol is given back.
    QCOMPARE(set.model.pointPixelSize(), 4);
    QCOMPARE(int(set.model.pointStyle()), int(Model::Triangle1));
}

void TestChartDrawingArea::tadpoles_data()
{
    QTest::addColumn<QPointF>("pos");
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("north") << QPointF(50, 50) << 0.0
                           << QStringList{QStringLiteral("ellipse 47,47 7x7"), QStringLiteral("lines 50,47-50,34")};
    QTest::newRow("east") << QPointF(50, 50) << 90.0
                          << QStringList{QStringLiteral("ellipse 47,47 7x7"), QStringLiteral("lines 53,50-66,50")};
    QTest::newRow("tail leaves at the top: circle only")
        << QPointF(50, 5) << 0.0 << QStringList{QStringLiteral("ellipse 47,2 7x7")};
    QTest::newRow("no azimuth") << QPointF(50, 50) << 99999.0 << QStringList{};
}

void TestChartDrawingArea::tadpoles()
{
    QFETCH(QPointF, pos);
    QFETCH(double, azimuth);
    QFETCH(QStringList, expected);
    ScatterTestChart chart;
    PaintRecorder device;
    {
        QPainter painter(&device);
        painter.translate(0.5, 0.5);
        chart.drawTadPole(pos, azimuth, Qt::red, 3, &painter);
        // A tadpole leaves the painter's transformation as it found it: a chart's painter
        // carries the scroll offsets, and later marks must keep them.
        QCOMPARE(painter.transform(), QTransform::fromTranslate(0.5, 0.5));
    }
    {
        // So does a rotated label.
        PaintRecorder other;
        QPainter painter(&other);
        painter.translate(-100, -40);
        chart.drawLabel3(&painter, QPointF(20, 20), QStringLiteral("T"), Qt::black, 30.0, true);
        QCOMPARE(painter.transform(), QTransform::fromTranslate(-100, -40));
    }
    QStringList shapes;
    for (const QString& c : device.calls()) {
        // Line end points are floating: round them for the comparison.
        QString s = c.section(QStringLiteral(" | "), 0, 0);
        if (s.startsWith(QStringLiteral("lines "))) {
            const QStringList n = s.mid(6).split(QRegularExpression(QStringLiteral("[,-]")));
            s = QStringLiteral("lines %1,%2-%3,%4")
                    .arg(qRound(n[0].toDouble()))
                    .arg(qRound(n[1].toDouble()))
                    .arg(qRound(n[2].toDouble()))
                    .arg(qRound(n[3].toDouble()));
        }
        shapes << s;
    }
    QCOMPARE(shapes, expected);
}

// ---- labels ----

void TestChartDrawingArea::labels()
{
    ScatterTestChart chart;
    chart.resize(300, 200);
    PaintRecorder device;
    {
        QPainter painter(&device);
        chart.drawLabel(&painter, QPointF(40, 50), QStringLiteral("S1"));
        chart.drawLabel(&painter, QPointF(40, 50), QString()); // nothing
        chart.paintingToWEMF(true);
        chart.drawLabel2(&painter, QPointF(10, 10), QStringLiteral("two"), Qt::red);
        chart.paintingToWEMF(false);
    }
    const QStringList calls = device.calls();
    // Box, text, cross for the first; no white box behind the label in a metafile.
    QCOMPARE(calls.size(), 5);
    QVERIFY2(calls[0].startsWith(QStringLiteral("rect 44,")) && calls[0].endsWith(QStringLiteral("brush #ffffffff")),
             qPrintable(calls[0]));
    QCOMPARE(calls[1].section(QStringLiteral(" | "), 0, 0), QStringLiteral("text ' S1 '"));
    QVERIFY(calls[2].startsWith(QStringLiteral("lines 40,")));
    QCOMPARE(calls[3].section(QStringLiteral(" | "), 0, 1), QStringLiteral("text ' two ' | pen #ffff0000 1"));
    QVERIFY(calls[4].startsWith(QStringLiteral("lines 6,10-14,10 10,6-10,14")));
}

// ---- contours ----

void TestChartDrawingArea::contourBandsOfARamp()
{
    // Values rise with x from 0 to 2: two bands of one level each, split at the middle.
    MatrixDataArray grid(QStringLiteral("grid"), 3, 3, QVariant::Double);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            grid.setValue(i, j, double(i));
    grid.setColorMapStepSize(1.0);
    ScatterTestChart chart;
    chart.setGridRect(QRectF(0, 0, 40, 40));
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        chart.drawContour(&painter, &grid, 0.0, 2.0, false, 1.0);
    }
    RKColormap map;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(0.0, 2.0, 1.0, false);
    QCOMPARE(QColor(image.pixel(8, 20)), map.value_to_color(0.0));
    QCOMPARE(QColor(image.pixel(32, 20)), map.value_to_color(1.0));
    QVERIFY(map.value_to_color(0.0) != map.value_to_color(1.0));

    // Any other painter gets each triangle's band polygon on its own, outlined and filled in the
    // band's colour: together they tile each band's half of the grid.
    PaintRecorder device;
    {
        QPainter painter(&device);
        chart.drawContour(&painter, &grid, 0.0, 2.0, false, 1.0);
    }
    QVERIFY(device.calls(QStringLiteral("path")).isEmpty());
    const QStringList polygons = device.calls(QStringLiteral("polygon"));
    QCOMPARE(polygons.size(), 2 * 2 * 4); // two by two cells of four triangles, one band each
    double area[2] = {0.0, 0.0};
    for (const QString& call : polygons) {
        QVERIFY2(call.startsWith(QStringLiteral("polygon odd ")), qPrintable(call));
        const QStringList xy = call.section(QStringLiteral(" | "), 0, 0).mid(12).split(QLatin1Char(' '));
        QPolygonF polygon;
        for (const QString& pair : xy)
            polygon << QPointF(pair.section(QLatin1Char(','), 0, 0).toDouble(),
                               pair.section(QLatin1Char(','), 1).toDouble());
        const int band = polygon.boundingRect().center().x() < 20 ? 0 : 1;
        QVERIFY2(polygon.boundingRect().left() >= 20 * band && polygon.boundingRect().right() <= 20 * (band + 1),
                 qPrintable(call));
        const QString colour = hex(map.value_to_color(band));
        QCOMPARE(call.section(QStringLiteral(" | "), 1), QStringLiteral("pen %1 0 | brush %1").arg(colour));
        double twice = 0.0;
        for (int k = 0; k < polygon.size(); ++k)
            twice += polygon[k].x() * polygon[(k + 1) % polygon.size()].y()
                     - polygon[(k + 1) % polygon.size()].x() * polygon[k].y();
        area[band] += std::abs(twice) / 2;
    }
    QCOMPARE(area[0], 800.0);
    QCOMPARE(area[1], 800.0);
}

void TestChartDrawingArea::contourLabelsKeepApart_data()
{
    // Surfaces on a 41 x 41 grid over 400 x 400 pixels, levels every 5.26 from 0 to 100.
    QTest::addColumn<int>("surface");
    QTest::addColumn<int>("atLeast");
    QTest::newRow("cone: circles round the middle") << 0 << 4;
    QTest::newRow("dense ripple") << 1 << 12;
    QTest::newRow("lines along the right and bottom edges") << 2 << 3;
}

void TestChartDrawingArea::contourLabelsKeepApart()
{
    // Labels go where their boxes (and the cross at their corner) stay clear of every earlier
    // label's and inside the grid's rectangle.
    QFETCH(int, surface);
    QFETCH(int, atLeast);
    const int n = 41;
    MatrixDataArray grid(QStringLiteral("grid"), n, n, QVariant::Double);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            grid.setValue(i, j, surface == 0   ? 100.0 - std::hypot(i - 20, j - 20) * 4.0
                                : surface == 1 ? 50.0 + 45.0 * std::sin(i * 0.6) * std::cos(j * 0.5)
                                               : 2.5 * std::max(i, j));
    PointSet set({{1, 1}, {2, 2}}, Model::ShowAll);
    ScatterTestChart chart;
    chart.setModel(&set.model);
    const QRectF area(0, 0, 400, 400);
    chart.setGridRect(area);
    chart.setContourPolesOn(true);
    chart.setContourLabelsOn(true);
    chart.setContourLinesOn(true);
    PaintRecorder device(QSize(400, 400));
    {
        QPainter painter(&device);
        chart.drawContour(&painter, &grid, 0.0, 100.0, false, 1.0);
        device.clear();
        chart.drawContourLabels(&painter);
    }
    const auto& anchors = chart.contourLabelPositions();
    QVERIFY2(int(anchors.size()) >= atLeast, qPrintable(QString::number(anchors.size())));
    QVERIFY(chart.contourLabelTexts().front().endsWith(QLatin1Char('%')));
    QCOMPARE(device.calls(QStringLiteral("text")).size(), int(anchors.size()));
    // The boxes as drawn, each with its cross (4 pixels round its top left corner).
    std::vector<QRectF> boxes;
    for (const QString& call : device.calls(QStringLiteral("rect "))) {
        const QStringList parts = call.section(QStringLiteral(" | "), 0, 0).split(QLatin1Char(' '));
        const QStringList xy = parts[1].split(QLatin1Char(',')), wh = parts[2].split(QLatin1Char('x'));
        const QRectF box(xy[0].toDouble(), xy[1].toDouble(), wh[0].toDouble(), wh[1].toDouble());
        boxes.push_back(box.united(QRectF(box.topLeft() - QPointF(4, 4), QSizeF(8, 8))));
    }
    QCOMPARE(int(boxes.size()), int(anchors.size()));
    for (std::size_t a = 0; a < boxes.size(); ++a) {
        QVERIFY2(area.contains(boxes[a]), qPrintable(QStringLiteral("label %1 leaves the grid").arg(a)));
        for (std::size_t b = a + 1; b < boxes.size(); ++b)
            QVERIFY2(!boxes[a].intersects(boxes[b]),
                     qPrintable(QStringLiteral("labels %1 and %2 overlap").arg(a).arg(b)));
    }
}

void TestChartDrawingArea::contourLabelsFollowTheFirstIndex()
{
    // Peaks at the nodes (1, 2) and (2, 1): the cells are walked along the second index first, so
    // the first label goes to the peak at (1, 2), whose cells come first in the first index,
    // though the other's come first in the second.
    MatrixDataArray grid(QStringLiteral("grid"), 4, 4, QVariant::Double);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            grid.setValue(i, j, 1.0);
    grid.setValue(1, 2, 9.0);
    grid.setValue(2, 1, 9.0);
    grid.setColorMapStepSize(4.0);
    ScatterTestChart chart;
    chart.setGridRect(QRectF(0, 0, 240, 240));
    chart.setContourPolesOn(true);
    chart.setContourLinesOn(true);
    chart.setContourLabelsOn(true);
    PaintRecorder device(QSize(240, 240));
    {
        QPainter painter(&device);
        chart.drawContour(&painter, &grid, 0.0, 10.0, false, 1.0);
    }
    const auto& anchors = chart.contourLabelPositions();
    QVERIFY(!anchors.empty());
    const QPointF first(80, 160), second(160, 80);
    QVERIFY2(QLineF(anchors[0], first).length() < QLineF(anchors[0], second).length(),
             qPrintable(QStringLiteral("%1,%2").arg(anchors[0].x()).arg(anchors[0].y())));
}

void TestChartDrawingArea::contourBadGrids_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<double>("fillValue");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<bool>("drawsSomething");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("empty grid") << 0 << 0 << 1.0 << QRectF(0, 0, 40, 40) << 0.0 << 2.0 << false;
    QTest::newRow("one row") << 1 << 5 << 1.0 << QRectF(0, 0, 40, 40) << 0.0 << 2.0 << false;
    QTest::newRow("zero-width rectangle") << 5 << 5 << 1.0 << QRectF(0, 0, 0, 40) << 0.0 << 2.0 << false;
    QTest::newRow("NaN values") << 5 << 5 << nan << QRectF(0, 0, 40, 40) << 0.0 << 2.0 << false;
    QTest::newRow("infinite values") << 5 << 5 << inf << QRectF(0, 0, 40, 40) << 0.0 << 2.0 << false;
    QTest::newRow("all levels equal") << 5 << 5 << 1.0 << QRectF(0, 0, 40, 40) << 1.0 << 1.0 << false;
    QTest::newRow("a flat grid inside the range") << 5 << 5 << 1.5 << QRectF(0, 0, 40, 40) << 0.0 << 2.0 << true;
}

void TestChartDrawingArea::contourBadGrids()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(double, fillValue);
    QFETCH(QRectF, rect);
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(bool, drawsSomething);
    MatrixDataArray grid(QStringLiteral("grid"), rows, columns, QVariant::Double);
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j)
            grid.setValue(i, j, fillValue);
    ScatterTestChart chart;
    chart.setGridRect(rect);
    chart.setContourPolesOn(true);
    PaintRecorder device;
    {
        QPainter painter(&device);
        chart.drawContour(&painter, &grid, min, max, false, 1.0);
        chart.drawContour(&painter, nullptr, min, max, false, 1.0);
    }
    QCOMPARE(!device.calls().isEmpty(), drawsSomething);
}

// ---- zoom, scroll, keys, menu ----

void TestChartDrawingArea::wheelZoom_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<int>("delta");
    QTest::addColumn<double>("expected");
    QTest::addColumn<int>("emitted");
    QTest::newRow("one notch in") << 1.0 << 120 << 1.1 << 1;
    QTest::newRow("three notches in") << 2.0 << 360 << 2.3 << 1;
    QTest::newRow("under a notch: nothing") << 2.0 << 119 << 2.0 << 0;
    QTest::newRow("out below 1 stops at 1") << 1.05 << -240 << 1.0 << 1;
    QTest::newRow("out at 1: nothing") << 1.0 << -120 << 1.0 << 0;
    QTest::newRow("in at 20: nothing") << 20.0 << 120 << 20.0 << 0;
    QTest::newRow("far in stops at 20") << 19.5 << 1200 << 20.0 << 1;
}

void TestChartDrawingArea::wheelZoom()
{
    QFETCH(double, start);
    QFETCH(int, delta);
    QFETCH(double, expected);
    QFETCH(int, emitted);
    ScatterTestChart chart;
    chart.resize(200, 100);
    chart.zoom(start);
    QSignalSpy spy(&chart, SIGNAL(zoomChanged(double)));
    QWheelEvent wheel(QPointF(10, 10), QPointF(10, 10), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&chart, &wheel);
    QVERIFY(qAbs(chart.zoomFactor() - expected) < 1e-9);
    QCOMPARE(spy.count(), emitted);
    // The raster the chart is laid out on follows the zoom; only the widget's window is held.
    QCOMPARE(chart.rasterSize(), QSize(200, 100) * chart.zoomFactor());
    QCOMPARE(chart.chartImage().size(), QSize(200, 100));

    chart.enableMouseZoom(false);
    QApplication::sendEvent(&chart, &wheel);
    QVERIFY(qAbs(chart.zoomFactor() - expected) < 1e-9);
}

void TestChartDrawingArea::zoomOffsets()
{
    ScatterTestChart chart;
    chart.resize(200, 100);
    chart.xoffset(25);
    QCOMPARE(chart.xOffsetPixels(), 0); // at zoom 1 there is nothing to scroll
    chart.zoom(2.0);
    QCOMPARE(chart.xOffsetPixels(), 50);  // 25 % of (400 - 200)
    QCOMPARE(chart.yOffsetPixels(), 50);  // 50 % of (200 - 100)
    QCOMPARE(chart.pixmapRect(), QRect(50, 50, 200, 100));
    chart.yoffset(100);
    QCOMPARE(chart.yOffsetPixels(), 100);
    chart.zoomY(3.0);
    QCOMPARE(chart.rasterSize(), QSize(200, 300));
    QCOMPARE(chart.xOffsetPixels(), 0);
    QCOMPARE(chart.yOffsetPixels(), 200);
    chart.zoom(1.0);
    QCOMPARE(chart.xOffsetPixels(), 0);
    QCOMPARE(chart.yOffsetPixels(), 0);
    chart.zoom(3.0);
    QTest::keyPress(&chart, Qt::Key_Slash);
    QCOMPARE(chart.zoomFactor(), 1.0);
}

void TestChartDrawingArea::labelColorSwitchesTheScheme_data()
{
    QTest::addColumn<QColor>("label");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("grid");
    QTest::addColumn<QColor>("line");
    QTest::newRow("white labels: dark chart") << QColor(Qt::white) << QColor(0, 0, 0) << QColor(Qt::lightGray)
                                              << QColor(0, 255, 255);
    QTest::newRow("black labels: light chart") << QColor(Qt::black) << QColor(255, 255, 255) << QColor(Qt::gray)
                                               << QColor(Qt::darkBlue);
    // Only red decides: a green label still means a light chart.
    QTest::newRow("green labels") << QColor(Qt::green) << QColor(255, 255, 255) << QColor(Qt::gray)
                                  << QColor(Qt::darkBlue);
}

void TestChartDrawingArea::labelColorSwitchesTheScheme()
{
    QFETCH(QColor, label);
    QFETCH(QColor, background);
    QFETCH(QColor, grid);
    QFETCH(QColor, line);
    ScatterTestChart chart;
    chart.setLabelColor(label);
    QCOMPARE(chart.labelColor(), label);
    QCOMPARE(chart.backgroundColor(), background);
    QCOMPARE(chart.gridColor(), grid);
    QCOMPARE(chart.lineColor(), line);
}

void TestChartDrawingArea::contextMenuAndKeys()
{
    ScatterTestChart chart;
    QCOMPARE(chart.focusPolicy(), Qt::ClickFocus);
    std::unique_ptr<QMenu> menu(chart.createContextMenu());
    QCOMPARE(menu->actions().size(), 2);
    QCOMPARE(menu->defaultAction(), chart.copyAction());
    QCOMPARE(chart.copyAction()->text(), QStringLiteral("Copy"));
    QCOMPARE(chart.copyEmfAction()->text(), QStringLiteral("Copy to Enhanced metafile"));
    QVERIFY(!chart.copyEmfAction()->isVisible());
    chart.allowCopyToWMF(true);
    QVERIFY(chart.copyEmfAction()->isVisible());
    chart.showModifyAction(true);
    menu.reset(chart.createContextMenu());
    QCOMPARE(menu->actions().size(), 3);
    QCOMPARE(menu->actions().at(2)->text(), QStringLiteral("Modify Cell(s)"));

    QSignalSpy modify(&chart, SIGNAL(signalBasicModifyCellValues()));
    QTest::keyRelease(&chart, Qt::Key_M, Qt::ControlModifier);
    QTest::keyRelease(&chart, Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier); // not exactly Control
    QCOMPARE(modify.count(), 1);
    chart.modifyAction()->trigger();
    QCOMPARE(modify.count(), 2);
}

void TestChartDrawingArea::rasterIsRebuiltOnlyWhenStale()
{
    PointSet set({{10, 10}, {30, 30}}, Model::ShowAll);
    ScatterTestChart chart;
    chart.setModel(&set.model);
    chart.resize(120, 80);
    chart.grab();
    QCOMPARE(chart.redraws, 1);
    chart.grab(); // a repaint reads the cached raster
    QCOMPARE(chart.redraws, 1);
    chart.updateChart();
    QCOMPARE(chart.redraws, 2);
    chart.grab();
    QCOMPARE(chart.redraws, 2);
    chart.resize(150, 80);
    chart.grab();
    QCOMPARE(chart.redraws, 3);
    QCOMPARE(chart.chartImage().size(), QSize(150, 80));
}

void TestChartDrawingArea::copyToClipboard()
{
    PointSet set({{10, 10}, {30, 30}}, Model::ShowAll);
    set.model.setPointStyle(Model::Square);
    set.model.setPointPixelSize(4);
    ScatterTestChart chart;
    chart.setModel(&set.model);
    chart.resize(60, 40);
    QSignalSpy copied(&chart, SIGNAL(signalCopyToClipboard()));
    QTest::keyRelease(&chart, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(copied.count(), 1);
    const QImage image = QGuiApplication::clipboard()->image();
    QCOMPARE(image.size(), QSize(60, 40));
    QCOMPARE(QColor(image.pixel(10, 10)), QColor(Qt::darkBlue));
    QCOMPARE(QColor(image.pixel(50, 5)), QColor(Qt::white));
}

void TestChartDrawingArea::tooltip()
{
    QPixmap content(30, 12);
    content.fill(Qt::red);
    PaintRecorder device;
    {
        QPainter painter(&device);
        ScatterTestChart::drawTooltip(&painter, QPointF(100, 100), Qt::black, content, QRectF(0, 0, 50, 50));
        ScatterTestChart::drawTooltip(&painter, QPointF(100, 100), Qt::black, content, QRectF());
    }
    const QStringList calls = device.calls();
    QCOMPARE(calls.size(), 2); // the first tip lies outside its clip
    // Balloon of the pixmap's size plus 10 (40 x 22), bottom left at the tip + (-5, -10); the
    // pointer reaches down to the tip, 10 pixels below it.
    QVERIFY2(calls[0].startsWith(QStringLiteral("path")) && calls[0].contains(QStringLiteral("in 95,68 40x32")),
             qPrintable(calls[0]));
    QVERIFY(calls[0].endsWith(QStringLiteral("brush #d9ffffff")));
    QVERIFY(calls[1].startsWith(QStringLiteral("pixmap 100,73 30x12")));
}

// ---- legends ----

void TestChartDrawingArea::legendRowsAndWindow_data()
{
    QTest::addColumn<int>("classes");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("pageStep");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("no classes") << 0 << 0 << 0 << 10 << 0 << 0;
    QTest::newRow("top of a long legend") << 100001 << 0 << 99990 << 10 << 0 << 75;
    QTest::newRow("middle of a long legend") << 100001 << 50000 << 99990 << 10 << 49985 << 50025;
    QTest::newRow("bottom of a long legend") << 100001 << 99990 << 99990 << 10 << 99974 << 100000;
}

void TestChartDrawingArea::legendRowsAndWindow()
{
    QFETCH(int, classes);
    QFETCH(int, value);
    QFETCH(int, maximum);
    QFETCH(int, pageStep);
    QFETCH(int, first);
    QFETCH(int, last);
    ScatterTestChart chart;
    QLegendListModel legend(nullptr, &chart, QLegendListModel::SymbolLegend);
    QMap<int, QVariant> values;
    QMap<int, QColor> colours;
    for (int id = 0; id < classes; ++id) {
        values.insert(id, QStringLiteral("class %1").arg(id));
        colours.insert(id, Qt::red);
    }
    legend.setClasses(values, colours);
    QCOMPARE(legend.rowCount(), std::max(classes - 1, 0));
    QCOMPARE(legend.columnCount(), 2);
    QCOMPARE(legend.cellType(), classes ? QVariant::String : QVariant::Double);
    QLegendListView::slotLegendsVerticalScrollBarChanged(&legend, value, 0, maximum, pageStep);
    QCOMPARE(legend.firstVisibleRow(), first);
    QCOMPARE(legend.lastVisibleRow(), last);
}

void TestChartDrawingArea::legendSymbolsOnlyInTheWindow()
{
    PointSet set({{1, 1}}, Model::ShowAll);
    set.model.setPointStyle(Model::Square);
    ScatterTestChart chart;
    chart.setModel(&set.model);
    chart.setLabelColor(Qt::white); // a dark chart: the legend swatch is still drawn on white
    QLegendListModel legend(nullptr, &chart, QLegendListModel::SymbolLegend);
    QMap<int, QVariant> values{{0, QStringLiteral("sample")}, {1, QStringLiteral("a")}, {2, QStringLiteral("b")},
                               {3, QStringLiteral("c")}};
    QMap<int, QColor> colours{{0, Qt::black}, {1, Qt::red}, {2, Qt::green}, {3, Qt::blue}};
    legend.setClasses(values, colours);
    legend.setVisibleRows(0, 1);
    QCOMPARE(legend.data(legend.index(2, 1)).toInt(), 3);
    QCOMPARE(legend.data(legend.index(2, 0)).toString(), QStringLiteral("c"));
    QVERIFY(legend.data(legend.index(2, 0), Qt::DecorationRole).isNull()); // outside the window
    const QPixmap swatch = legend.data(legend.index(1, 0), Qt::DecorationRole).value<QPixmap>();
    QCOMPARE(swatch.size(), QSize(16, 16));
    QCOMPARE(QColor(swatch.toImage().pixel(0, 0)), QColor(Qt::white));
    QVERIFY(!legend.symbol(2).isNull());
    QCOMPARE(chart.backgroundColor(), QColor(0, 0, 0)); // restored
    QVERIFY(legend.data(QModelIndex()).isNull());

    QSignalSpy changed(&legend, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)));
    legend.changeSymbolColor(legend.index(0, 0), Qt::magenta);
    QCOMPARE(legend.classColors().value(1), QColor(Qt::magenta));
    QCOMPARE(changed.count(), 1);

    QLegendListModel colourLegend(nullptr, &chart, QLegendListModel::ColorLegend);
    colourLegend.setClasses(values, colours);
    QCOMPARE(colourLegend.data(colourLegend.index(2, 0), Qt::DecorationRole).value<QColor>(), QColor(Qt::blue));
}

void TestChartDrawingArea::legendCellTypeIsTheSampleValues_data()
{
    QTest::addColumn<QList<int>>("ids");
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<int>("type");
    QTest::newRow("no classes") << QList<int>{} << QVariantList{} << int(QVariant::Double);
    QTest::newRow("text") << QList<int>{0, 1} << QVariantList{"sample", "a"} << int(QVariant::String);
    // The sample sits under id 0 whatever ids lie below it.
    QTest::newRow("colours behind a negative id")
        << QList<int>{-1, 0, 1} << QVariantList{"undefined", QColor(Qt::red), QColor(Qt::blue)}
        << int(QVariant::Color);
    QTest::newRow("no sample") << QList<int>{3, 5} << QVariantList{2.5, 4.5} << int(QVariant::Invalid);
}

void TestChartDrawingArea::legendCellTypeIsTheSampleValues()
{
    QFETCH(QList<int>, ids);
    QFETCH(QVariantList, values);
    QFETCH(int, type);
    ScatterTestChart chart;
    QLegendListModel legend(nullptr, &chart, QLegendListModel::SymbolLegend);
    QMap<int, QVariant> classes;
    for (int k = 0; k < ids.size(); ++k)
        classes.insert(ids[k], values[k]);
    legend.setClasses(classes, {});
    QCOMPARE(int(legend.cellType()), type);
}

void TestChartDrawingArea::repeatedStampsLeaveTheSamePicture_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("antialiased");
    QTest::addColumn<QPoint>("scroll");
    QTest::addRow("cross") << 1 << 2 << true << QPoint(0, 0);
    QTest::addRow("cross scrolled") << 1 << 3 << false << QPoint(-7, -5);
    QTest::addRow("square") << 2 << 2 << false << QPoint(0, 0);
    QTest::addRow("circle, partly covered pixels") << 0 << 4 << true << QPoint(-3, 0);
    QTest::addRow("triangle") << 3 << 2 << false << QPoint(0, -4);
}

// The repeat record may change when a pixel is written, never what it ends up holding: a walk
// with it leaves the very picture of a walk without, with points stacked on one another, points
// at the edge drawn as real shapes between them, and the pen changing now and then.
void TestChartDrawingArea::repeatedStampsLeaveTheSamePicture()
{
    QFETCH(int, style);
    QFETCH(int, size);
    QFETCH(bool, antialiased);
    QFETCH(QPoint, scroll);
    QVector<QPointF> points;
    QRandomGenerator rng(uint(style * 31 + size));
    for (int i = 0; i < 6000; ++i) {
        // Few places, many points on each; one in fifty near the logical origin, one in forty
        // over the image's far edges.
        if (i % 50 == 0)
            points << QPointF(rng.bounded(6.0), rng.bounded(120.0));
        else if (i % 40 == 0)
            points << QPointF(122.0 + rng.bounded(15.0), 92.0 + rng.bounded(15.0));
        else
            points << QPointF(5.0 * rng.bounded(26) + 0.25, 4.0 * rng.bounded(24) + 0.5);
    }
    const QColor pens[] = {Qt::darkBlue, Qt::red};
    QImage images[2];
    int skipped = 0;
    for (int skip = 0; skip < 2; ++skip) {
        QImage& image = images[skip];
        image = QImage(130, 100, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, antialiased);
        painter.translate(scroll);
        SymbolStamper stamper(&QChartDrawingArea::drawShape, &QChartDrawingArea::shapeReach);
        QVERIFY(stamper.begin(&painter));
        stamper.setSkipRepeats(skip == 1);
        for (int i = 0; i < points.size(); ++i) {
            // The pen changes, now and then for a single point over the edge.
            const int k = i % 1000;
            if (k == 0 || k == 520 || k == 521)
                painter.setPen(QPen(pens[(i / 1000 + (k == 520)) % 2], 2.0, Qt::SolidLine, Qt::SquareCap,
                                    Qt::MiterJoin));
            painter.setBrush(style == 1 ? QBrush(Qt::NoBrush) : QBrush(pens[(i / 1000) % 2]));
            if (!stamper.stamp(points[i], style, size, &painter))
                QChartDrawingArea::drawShape(points[i], style, size, &painter);
        }
        stamper.end();
        skipped = stamper.skippedRepeats();
    }
    QCOMPARE(images[1], images[0]);
    // The places repeat, so a sprite of one colour has repeats to leave out.
    if (style != 0)
        QVERIFY2(skipped > 1000, qPrintable(QString::number(skipped)));
}

QTEST_MAIN(TestChartDrawingArea)
#include "tst_chartdrawingarea.moc"

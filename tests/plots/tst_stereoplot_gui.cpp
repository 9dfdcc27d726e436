// The stereonet under the mouse, on a shown window: a lasso drawn with the button held selects
// exactly the points inside it (points sit three pixels either side of every edge), on both nets,
// zoomed or not, for poles, dip directions and the lineation set; Control adds to the selection;
// a lasso of one or two points clears it; zoomed, the lineation set is taken where it is
// drawn; picks at the centre, on the rim and outside the net.
#include <QRelationshipItemModel.h>
#include <QStereoPlotWidget.h>

#include <QtTest>

#include <cmath>
#include <memory>
#include <set>

using namespace rkBase;

namespace {

// Orientations (dip, dip azimuth) as a model over two sheet columns.
struct Orientations {
    std::unique_ptr<MatrixData> dip, azimuth;
    QRelationshipItemModel model;
    explicit Orientations(const QVector<QPointF>& rows)
    {
        dip = std::make_unique<MatrixData>(QStringLiteral("dip"), rows.size(), 1, QVariant::Double, true);
        azimuth = std::make_unique<MatrixData>(QStringLiteral("azimuth"), rows.size(), 1, QVariant::Double, true);
        for (int r = 0; r < rows.size(); ++r) {
            dip->setValue(r, 0, rows[r].x());
            azimuth->setValue(r, 0, rows[r].y());
        }
        model.takeNewDataSet(dip.get(), azimuth.get(), QRelationshipItemModel::HighlightSelected);
    }
};

struct Shown {
    QStereoPlotWidget net{nullptr, QStringLiteral("Stereonet")};
    std::set<std::size_t> selected;
    int emitted = 0;
    explicit Shown(bool equalArea = true, double zoom = 1.0)
    {
        net.setEqualAreaScaling(equalArea);
        net.resize(400, 400);
        net.show();
        QVERIFY(QTest::qWaitForWindowExposed(&net));
        if (zoom != 1.0)
            net.zoom(zoom);
        net.updateChart();
        QObject::connect(&net, &QChartDrawingArea::dataPointsSelection, [this](const boost::dynamic_bitset<>& rows) {
            ++emitted;
            selected.clear();
            for (std::size_t b = rows.find_first(); b != boost::dynamic_bitset<>::npos; b = rows.find_next(b))
                selected.insert(b);
        });
    }
    QPoint centre() const { return net.centre() - QPoint(net.xOffsetPixels(), net.yOffsetPixels()); }
    // Press at the first vertex, move along every edge in steps, release at the last vertex.
    void lasso(const QVector<QPoint>& vertices, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int steps = 4)
    {
        QTest::mousePress(&net, Qt::LeftButton, modifiers, vertices.first());
        for (int i = 1; i < vertices.size(); ++i)
            for (int step = 1; step <= steps; ++step)
                QTest::mouseMove(&net, vertices[i - 1] + (vertices[i] - vertices[i - 1]) * step / steps);
        QTest::mouseRelease(&net, Qt::LeftButton, modifiers, vertices.last());
    }
};

// A lopsided quadrilateral about the centre, and test pixels three pixels inside and outside
// the middle of each of its edges.
QVector<QPoint> quadrilateral(const QPoint& c)
{
    return {c + QPoint(-70, -50), c + QPoint(60, -70), c + QPoint(40, 60), c + QPoint(-50, 40)};
}

QVector<QPointF> besideTheEdges(const QVector<QPoint>& polygon, QVector<bool>& inside)
{
    QPointF centroid;
    for (const QPoint& p : polygon)
        centroid += p;
    centroid /= polygon.size();
    QVector<QPointF> pixels;
    for (int i = 0; i < polygon.size(); ++i) {
        const QPointF a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        const QPointF mid = (a + b) / 2.0;
        QPointF normal(b.y() - a.y(), a.x() - b.x());
        normal /= std::hypot(normal.x(), normal.y());
        if (QPointF::dotProduct(normal, centroid - mid) < 0)
            normal = -normal;
        pixels << mid + 3.0 * normal << mid - 3.0 * normal;
        inside << true << false;
    }
    return pixels;
}

} // namespace

class TestStereoPlotGui : public QObject
{
    Q_OBJECT
private slots:
    void lassoSelectsExactlyTheRowsInside_data();
    void lassoSelectsExactlyTheRowsInside();
    void lassoTakesTheLineationSet();
    void zoomedLassoTakesTheLinesDrawnInsideIt_data();
    void zoomedLassoTakesTheLinesDrawnInsideIt();
    void controlAddsAndShortLassosClear();
    void picks_data();
    void picks();
};

void TestStereoPlotGui::lassoSelectsExactlyTheRowsInside_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<bool>("poles");
    for (const bool area : {true, false})
        for (const double zoom : {1.0, 2.0})
            for (const bool poles : {true, false})
                QTest::addRow("%s x%g %s", area ? "area" : "angle", zoom, poles ? "poles" : "dip directions")
                    << area << zoom << poles;
}

void TestStereoPlotGui::lassoSelectsExactlyTheRowsInside()
{
    QFETCH(bool, equalArea);
    QFETCH(double, zoom);
    QFETCH(bool, poles);
    Shown shown(equalArea, zoom);
    QStereoPlotWidget& net = shown.net;
    const QVector<QPoint> polygon = quadrilateral(shown.centre());
    QVector<bool> inside;
    const QVector<QPointF> pixels = besideTheEdges(polygon, inside);
    // The orientation drawn at each pixel: the plane whose pole is there, or the line there.
    QVector<QPointF> rows;
    for (const QPointF& pixel : pixels) {
        double dip, azimuth;
        QVERIFY(net.generateDipAndDipAzimuth(pixel, dip, azimuth));
        rows << (poles ? QPointF(dip, azimuth) : QPointF(90.0 - dip, std::fmod(azimuth + 180.0, 360.0)));
    }
    Orientations data(rows);
    net.setModel(&data.model);
    net.setShowPoles(poles);
    net.setShowDipDirections(!poles);
    net.updateChart();
    shown.lasso(polygon);
    std::set<std::size_t> expected;
    for (int r = 0; r < inside.size(); ++r)
        if (inside[r])
            expected.insert(std::size_t(r));
    QCOMPARE(shown.emitted, 1);
    QCOMPARE(shown.selected, expected);
    QVERIFY(net.selectionPolygon().isEmpty());
}

void TestStereoPlotGui::lassoTakesTheLineationSet()
{
    Shown shown;
    QStereoPlotWidget& net = shown.net;
    const QVector<QPoint> polygon = quadrilateral(shown.centre());
    QVector<bool> inside;
    const QVector<QPointF> pixels = besideTheEdges(polygon, inside);
    // Poles far from the lasso; the lines are the pixels beside its first edge.
    Orientations data({{80.0, 10.0}, {80.0, 100.0}, {80.0, 190.0}});
    QVector<QPointF> lines;
    for (int k : {1, 0}) {
        double dip, azimuth;
        QVERIFY(net.generateDipAndDipAzimuth(pixels[k], dip, azimuth));
        lines << QPointF(90.0 - dip, std::fmod(azimuth + 180.0, 360.0));
    }
    Orientations lineation(lines);
    net.setModel(&data.model);
    net.setLineationModel(&lineation.model);
    shown.lasso(polygon);
    // Line row 1 is inside: its own bit and the main set's bit at its table row.
    QCOMPARE(shown.selected, (std::set<std::size_t>{1}));
    QVERIFY(lineation.model.isSelected(1));
    QVERIFY(!lineation.model.isSelected(0));
}

void TestStereoPlotGui::zoomedLassoTakesTheLinesDrawnInsideIt_data()
{
    QTest::addColumn<bool>("equalArea");
    QTest::newRow("area") << true;
    QTest::newRow("angle") << false;
}

void TestStereoPlotGui::zoomedLassoTakesTheLinesDrawnInsideIt()
{
    // Zoomed and scrolled, the lasso takes exactly the lines that the widget shows inside it:
    // lines are made at widget pixels just inside and just outside each edge.
    QFETCH(bool, equalArea);
    Shown shown(equalArea, 1.5);
    QStereoPlotWidget& net = shown.net;
    QCOMPARE(QPoint(net.xOffsetPixels(), net.yOffsetPixels()), QPoint(100, 100));
    const QPoint c = shown.centre();
    const QVector<QPoint> polygon = {c + QPoint(-30, -20), c + QPoint(25, -30), c + QPoint(20, 25), c + QPoint(-25, 20)};
    QVector<bool> inside;
    const QVector<QPointF> pixels = besideTheEdges(polygon, inside);
    // Line k shown at widget pixel pixels[k]; one more line at the lasso's centre.
    QVector<QPointF> lines;
    for (QPointF pixel : pixels + QVector<QPointF>{QPointF(c)}) {
        double dip, azimuth;
        QVERIFY(net.generateDipAndDipAzimuth(pixel, dip, azimuth));
        lines << QPointF(90.0 - dip, std::fmod(azimuth + 180.0, 360.0));
    }
    Orientations data({{80.0, 10.0}});
    Orientations lineation(lines);
    net.setModel(&data.model);
    net.setShowPoles(false);
    net.setLineationModel(&lineation.model);
    net.updateChart();
    shown.lasso(polygon);
    for (int k = 0; k < lines.size(); ++k) {
        const bool expected = k == pixels.size() || inside[k];
        QVERIFY2(lineation.model.isSelected(k) == expected, qPrintable(QString::number(k)));
    }
}

void TestStereoPlotGui::controlAddsAndShortLassosClear()
{
    Shown shown;
    QStereoPlotWidget& net = shown.net;
    const QPoint c = shown.centre();
    // Row 0 near the centre, row 1 to the east, row 2 to the west.
    QVector<QPointF> rows;
    for (const QPoint& offset : {QPoint(0, 5), QPoint(90, 0), QPoint(-90, 0)}) {
        double dip, azimuth;
        QVERIFY(net.generateDipAndDipAzimuth(c + offset, dip, azimuth));
        rows << QPointF(dip, azimuth);
    }
    Orientations data(rows);
    net.setModel(&data.model);
    const QVector<QPoint> aroundCentre = {c + QPoint(-20, -20), c + QPoint(20, -20), c + QPoint(20, 20), c + QPoint(-20, 20)};
    const QVector<QPoint> aroundEast = {c + QPoint(70, -20), c + QPoint(110, -20), c + QPoint(110, 20), c + QPoint(70, 20)};
    shown.lasso(aroundCentre);
    QCOMPARE(shown.selected, (std::set<std::size_t>{0}));
    shown.lasso(aroundEast, Qt::ControlModifier);
    QCOMPARE(shown.selected, (std::set<std::size_t>{0, 1}));
    QVERIFY(data.model.partSelection());
    // Without Control the press starts afresh.
    shown.lasso(aroundEast);
    QCOMPARE(shown.selected, (std::set<std::size_t>{1}));
    // One point and two points clear the selection, even with Control.
    shown.lasso({c + QPoint(90, 0)}, Qt::ControlModifier);
    QCOMPARE(shown.selected, std::set<std::size_t>{});
    shown.lasso(aroundCentre);
    shown.lasso({c + QPoint(-90, 0), c + QPoint(-60, 0)}, Qt::ControlModifier, 1);
    QCOMPARE(shown.selected, std::set<std::size_t>{});
    QVERIFY(!data.model.partSelection());
    QCOMPARE(shown.emitted, 6);
}

void TestStereoPlotGui::picks_data()
{
    QTest::addColumn<QPoint>("fromCentre");
    QTest::addColumn<double>("dip");
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<QPoint>("picked");
    QTest::newRow("centre") << QPoint(0, 0) << 0.0 << 0.0 << QPoint(0, 0);
    QTest::newRow("on the rim, south") << QPoint(0, 160) << 90.0 << 360.0 << QPoint(0, 160);
    QTest::newRow("outside, west") << QPoint(-185, 0) << 90.0 << 90.0 << QPoint(-160, 0);
    QTest::newRow("outside, corner") << QPoint(190, -190) << 90.0 << 225.0 << QPoint(113, -113);
}

void TestStereoPlotGui::picks()
{
    QFETCH(QPoint, fromCentre);
    QFETCH(double, dip);
    QFETCH(double, azimuth);
    QFETCH(QPoint, picked);
    Shown shown;
    QStereoPlotWidget& net = shown.net;
    net.setSelectionMode(false);
    QSignalSpy presses(&net, &QStereoPlotWidget::mousePress);
    QTest::mouseClick(&net, Qt::LeftButton, Qt::NoModifier, shown.centre() + fromCentre);
    QCOMPARE(presses.size(), 1);
    QCOMPARE(net.pickedDip(), dip);
    QVERIFY2(std::abs(net.pickedAzimuth() - azimuth) < 1e-9, qPrintable(QString::number(net.pickedAzimuth())));
    const QPointF p = net.pickedPixel() - QPointF(shown.centre());
    QVERIFY(std::abs(p.x() - picked.x()) < 0.5 && std::abs(p.y() - picked.y()) < 0.5);
    // The pick is drawn over the raster, which stays as it was.
    const QImage before = net.chartImage();
    QVERIFY(!net.grab().isNull());
    QCOMPARE(net.chartImage(), before);
}

QTEST_MAIN(TestStereoPlotGui)
#include "tst_stereoplot_gui.moc"

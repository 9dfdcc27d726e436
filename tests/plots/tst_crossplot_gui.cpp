// The cross plot under the mouse, on a shown window: a lasso drawn with the button held selects
// exactly the rows whose points lie inside it (points sit three pixels either side of every
// edge), for both origins, zoomed and scrolled or not, and reports them; Control adds to the
// selection; a lasso of one or two points clears it; in the tops mode a drag selects nothing.
#include <QCrossPlot.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <cmath>
#include <memory>
#include <set>

using namespace rkBase;

namespace {

class Points
{
public:
    explicit Points(const QVector<QPointF>& rows)
    {
        x = std::make_unique<MatrixData>(QStringLiteral("x"), rows.size(), 1, QVariant::Double, true);
        y = std::make_unique<MatrixData>(QStringLiteral("y"), rows.size(), 1, QVariant::Double, true);
        for (int r = 0; r < rows.size(); ++r) {
            x->setValue(r, 0, rows[r].x());
            y->setValue(r, 0, rows[r].y());
        }
        model.takeNewDataSet(x.get(), y.get(), QRelationshipItemModel::HighlightSelected);
    }
    std::unique_ptr<MatrixData> x, y;
    QRelationshipItemModel model;
};

struct Shown {
    QCrossPlot plot{nullptr, nullptr};
    std::set<std::size_t> selected;
    int emitted = 0;
    Shown(QCrossPlot::OriginPosition origin, double zoom)
    {
        plot.setOriginPosition(origin);
        plot.setBoundaries(QPointF(-10, 1000), QPointF(30, 1400));
        plot.resize(420, 320);
        plot.show();
        if (!QTest::qWaitForWindowExposed(&plot))
            qWarning("window not exposed");
        if (zoom != 1.0) {
            plot.zoom(zoom);
            plot.xoffset(30);
            plot.yoffset(70);
        }
        plot.updateChart();
        QObject::connect(&plot, &QChartDrawingArea::dataPointsSelection, [this](const boost::dynamic_bitset<>& rows) {
            ++emitted;
            selected.clear();
            for (std::size_t b = rows.find_first(); b != boost::dynamic_bitset<>::npos; b = rows.find_next(b))
                selected.insert(b);
        });
    }
    // Press at the first vertex, move along every edge in steps, release at the last vertex.
    void lasso(const QVector<QPoint>& vertices, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int steps = 4)
    {
        QTest::mousePress(&plot, Qt::LeftButton, modifiers, vertices.first());
        for (int i = 1; i < vertices.size(); ++i)
            for (int step = 1; step <= steps; ++step)
                QTest::mouseMove(&plot, vertices[i - 1] + (vertices[i] - vertices[i - 1]) * step / steps);
        QTest::mouseRelease(&plot, Qt::LeftButton, modifiers, vertices.last());
    }
};

const QVector<QPoint> kQuad{{60, 50}, {330, 30}, {360, 260}, {90, 240}};

// Pixels three pixels inside and outside the middle of each edge of a convex polygon.
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
    pixels << centroid;
    inside << true;
    return pixels;
}

} // namespace

class TestCrossPlotGui : public QObject
{
    Q_OBJECT
private slots:
    void lassoSelectsExactlyTheRowsInside_data();
    void lassoSelectsExactlyTheRowsInside();
    void controlAddsAndShortLassosClear();
    void topsModeSelectsNothing();
};

void TestCrossPlotGui::lassoSelectsExactlyTheRowsInside_data()
{
    QTest::addColumn<int>("origin");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("type");
    for (const int origin : {int(QCrossPlot::OriginBottomLeft), int(QCrossPlot::OriginTopLeft)})
        for (const double zoom : {1.0, 2.5})
            for (const int type : {int(QCrossPlot::SelectDataPoints), int(QCrossPlot::SelectForOrientation)})
                QTest::addRow("%s x%g type %d", origin ? "up" : "down", zoom, type) << origin << zoom << type;
}

void TestCrossPlotGui::lassoSelectsExactlyTheRowsInside()
{
    QFETCH(int, origin);
    QFETCH(double, zoom);
    QFETCH(int, type);
    Shown shown(QCrossPlot::OriginPosition(origin), zoom);
    QCrossPlot& plot = shown.plot;
    plot.setDataCreationType(QCrossPlot::DataCreationType(type));
    QVector<bool> inside;
    const QVector<QPointF> pixels = besideTheEdges(kQuad, inside);
    QVector<QPointF> rows;
    for (const QPointF& pixel : pixels)
        rows << plot.transformInDataPoint(pixel);
    Points data(rows);
    plot.setModel(&data.model);
    plot.updateChart();
    shown.lasso(kQuad);
    std::set<std::size_t> want;
    for (int i = 0; i < inside.size(); ++i)
        if (inside[i])
            want.insert(std::size_t(i));
    QCOMPARE(shown.emitted, 1);
    QCOMPARE(shown.selected, want);
    for (int i = 0; i < inside.size(); ++i)
        QCOMPARE(data.model.isSelected(i), bool(inside[i]));
    QVERIFY(plot.selectionPolygon().isEmpty());
}

void TestCrossPlotGui::controlAddsAndShortLassosClear()
{
    Shown shown(QCrossPlot::OriginBottomLeft, 1.0);
    QCrossPlot& plot = shown.plot;
    const QVector<QPointF> pixels{{100, 100}, {300, 200}};
    QVector<QPointF> rows;
    for (const QPointF& pixel : pixels)
        rows << plot.transformInDataPoint(pixel);
    Points data(rows);
    plot.setModel(&data.model);
    plot.updateChart();
    shown.lasso({{80, 80}, {120, 80}, {120, 120}, {80, 120}});
    QCOMPARE(shown.selected, (std::set<std::size_t>{0}));
    shown.lasso({{280, 180}, {320, 180}, {320, 220}, {280, 220}}, Qt::ControlModifier);
    QCOMPARE(shown.selected, (std::set<std::size_t>{0, 1}));
    // Without Control a new lasso starts over.
    shown.lasso({{280, 180}, {320, 180}, {320, 220}, {280, 220}});
    QCOMPARE(shown.selected, (std::set<std::size_t>{1}));
    // A click, with Control too, clears.
    QTest::mouseClick(&plot, Qt::LeftButton, Qt::ControlModifier, QPoint(10, 10));
    QVERIFY(shown.selected.empty());
    QVERIFY(data.model.selection().none());
}

void TestCrossPlotGui::topsModeSelectsNothing()
{
    Shown shown(QCrossPlot::OriginTopLeft, 1.0);
    QCrossPlot& plot = shown.plot;
    Points data({plot.transformInDataPoint(QPointF(200, 150))});
    plot.setModel(&data.model);
    plot.setDataCreationType(QCrossPlot::CreateStructuralTops);
    plot.updateChart();
    shown.lasso(kQuad);
    QCOMPARE(shown.emitted, 0);
    QVERIFY(!data.model.isSelected(0));
    QVERIFY(plot.selectionPolygon().isEmpty());
}

QTEST_MAIN(TestCrossPlotGui)
#include "tst_crossplot_gui.moc"

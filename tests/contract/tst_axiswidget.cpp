// The axis beside a chart: nice ranges on awkward input, ticks in display units, the grid it
// hands the chart, the depth track's directions, and labels measured as drawn (never over each
// other, never cut by the edges). Its pixels against the cross plot's own mapping are checked in
// tests/plots/tst_axis_alignment.cpp.
#include "PaintRecorder.h"

#include <DisplayUnitManager.h>
#include <QCartesianAxisWidget.h>
#include <UnitManager.h>
#include <UnitRegistry.h>

#include <QPainter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace rkBase;

namespace {

constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

bool close(double a, double b) { return a == b || std::abs(a - b) <= 1e-12 * std::max(std::abs(a), std::abs(b)); }

// k x step for a whole k, as far as doubles tell.
bool onStep(double v, double step)
{
    const double k = v / step;
    return std::abs(k - std::round(k)) < 1e-6;
}

QCartesianAxisWidget::AxisPosition at(int p) { return QCartesianAxisWidget::AxisPosition(p); }

} // namespace

class TestAxisWidget : public QObject
{
    Q_OBJECT
private slots:
    void niceRange_data();
    void niceRange();
    void niceRangeHoldsAnyData();
    void fitsInDisplayUnits();
    void gridSignal();
    void depthDirections_data();
    void depthDirections();
    void labelsKeepApartAndInside_data();
    void labelsKeepApartAndInside();
    void badInputDrawsNothing();
};

void TestAxisWidget::niceRange_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("niceMin");
    QTest::addColumn<double>("niceMax");
    QTest::addColumn<double>("step");
    QTest::newRow("plain") << 0.3 << 9.7 << 0.0 << 10.0 << 2.0;
    QTest::newRow("ends already nice") << 0.0 << 100.0 << 0.0 << 100.0 << 20.0;
    QTest::newRow("across zero") << -0.13 << 0.42 << -0.2 << 0.6 << 0.2;
    QTest::newRow("decimal end exactly") << 0.3 << 0.7 << 0.3 << 0.7 << 0.1;
    QTest::newRow("tiny") << 1.2e-9 << 3.4e-9 << 1e-9 << 3.5e-9 << 5e-10;
    QTest::newRow("huge") << 1.5e20 << 7.7e20 << 0.0 << 8e20 << 2e20;
    QTest::newRow("reversed") << 10.0 << 0.0 << 0.0 << 10.0 << 2.0;
    QTest::newRow("one value") << 5.0 << 5.0 << 4.4 << 5.6 << 0.2;
    QTest::newRow("one zero") << 0.0 << 0.0 << -1.0 << 1.0 << 0.5;
    QTest::newRow("span below resolution") << 1e15 << 1e15 + 0.125 << 9e14 << 1.1e15 << 5e13;
    QTest::newRow("nearer zero than 1e-300") << 1e-310 << 1e-309 << -1.0 << 1.0 << 0.5;
    QTest::newRow("one end infinite") << -kInf << 3.0 << 2.6 << 3.4 << 0.2;
    QTest::newRow("neither end a number") << kNaN << kInf << 0.0 << 1.0 << 0.2;
    QTest::newRow("largest doubles") << -kMax << kMax << -kMax << kMax << 1e308;
}

void TestAxisWidget::niceRange()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, niceMin);
    QFETCH(double, niceMax);
    QFETCH(double, step);
    const QCartesianAxisWidget::NiceRange r = QCartesianAxisWidget::niceRange(min, max);
    QVERIFY2(close(r.minimum, niceMin), qPrintable(QString::number(r.minimum, 'g', 17)));
    QVERIFY2(close(r.maximum, niceMax), qPrintable(QString::number(r.maximum, 'g', 17)));
    QVERIFY2(close(r.step, step), qPrintable(QString::number(r.step, 'g', 17)));
}

// Over many ranges: the data stay inside, the ends are whole steps, the step is 1, 2 or 5 x 10^n
// and there are two to eight of them.
void TestAxisWidget::niceRangeHoldsAnyData()
{
    quint64 seed = 12345;
    auto next = [&seed]() {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        return double(seed >> 11) / double(1ULL << 53);
    };
    for (int i = 0; i < 5000; ++i) {
        const double scale = std::pow(10.0, std::floor(next() * 40.0) - 20.0);
        const double a = (next() - 0.5) * 20.0 * scale;
        const double b = a + next() * 10.0 * scale;
        const QCartesianAxisWidget::NiceRange r = QCartesianAxisWidget::niceRange(a, b);
        const QString what = QStringLiteral("%1 .. %2 gave %3 .. %4 by %5")
                                 .arg(a, 0, 'g', 17).arg(b, 0, 'g', 17).arg(r.minimum, 0, 'g', 17)
                                 .arg(r.maximum, 0, 'g', 17).arg(r.step, 0, 'g', 17);
        QVERIFY2(r.minimum <= a && r.maximum >= b, qPrintable(what));
        QVERIFY2(onStep(r.minimum, r.step) && onStep(r.maximum, r.step), qPrintable(what));
        const double mantissa = r.step / std::pow(10.0, std::floor(std::log10(r.step) + 1e-9));
        QVERIFY2(close(mantissa, 1.0) || close(mantissa, 2.0) || close(mantissa, 5.0), qPrintable(what));
        const double steps = (r.maximum - r.minimum) / r.step;
        QVERIFY2(steps >= 1.99 && steps <= 8.01, qPrintable(what));
    }
}

// A range in metres shown in feet is made nice in feet, and its ticks are whole feet steps.
void TestAxisWidget::fitsInDisplayUnits()
{
    UnitRegistry registry;
    boost::shared_ptr<UnitManager> elevation = registry.getCategory(UnitRegistry::CATEGORY_ELEVATION);
    QVERIFY(registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, elevation->getUnitKey("ft")));
    QCartesianAxisWidget axis(QCartesianAxisWidget::AxisBottom);
    axis.resize(600, 60);
    axis.setUnitManager(elevation);
    axis.setTitle(QStringLiteral("Depth"));
    QCOMPARE(axis.titleText(), QStringLiteral("Depth [ft]"));
    axis.setRange(0.0, 100.0); // 328.08 ft
    axis.fitNiceRange();
    QCOMPARE(axis.minimum(), 0.0);
    QVERIFY(close(axis.maximum(), 400 * 0.3048));
    QVERIFY(axis.tickValues().size() >= 3);
    for (double v : axis.tickValues())
        QVERIFY2(onStep(v / 0.3048, axis.tickStep()), qPrintable(QString::number(v)));
    const QStringList labels = axis.tickLabels();
    QCOMPARE(labels.first(), QStringLiteral("0"));
    QCOMPARE(labels.last().toDouble(), 400.0);

    // Back to metres: the same model range, ticks on whole metres, the grid sent again.
    QSignalSpy grid(&axis, &QCartesianAxisWidget::gridLinesChanged);
    registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 0);
    QCOMPARE(grid.count(), 1);
    QCOMPARE(axis.titleText(), QStringLiteral("Depth [m]"));
    for (double v : axis.tickValues())
        QVERIFY(onStep(v, axis.tickStep()));
    axis.setUnitLabelVisible(false);
    QCOMPARE(axis.titleText(), QStringLiteral("Depth"));
}

// The signal carries the tick pixels, a vertical axis's counted from the bottom as the chart
// draws them; an unchanged layout sends nothing unless redraw() asks; zoomed, the step is finer.
void TestAxisWidget::gridSignal()
{
    QCartesianAxisWidget axis(QCartesianAxisWidget::AxisLeft);
    axis.resize(60, 400);
    QSignalSpy grid(&axis, &QCartesianAxisWidget::gridLinesChanged);
    axis.setRange(-20.0, 80.0);
    const double unzoomedStep = axis.tickStep();
    axis.setZoom(6.0);
    axis.setOffset(100);
    QCOMPARE(grid.count(), 3);
    const QList<int> sent = grid.last().at(0).value<QList<int>>();
    const QList<int> pixels = axis.tickPixels();
    QVERIFY(pixels.size() >= 3);
    QCOMPARE(sent.size(), pixels.size());
    for (int i = 0; i < pixels.size(); ++i) {
        QVERIFY(pixels[i] >= 0 && pixels[i] < 400);
        QCOMPARE(sent[i], 400 - pixels[i]);
    }
    QVERIFY(axis.tickStep() < unzoomedStep);
    axis.setRange(-20.0, 80.0);
    QCOMPARE(grid.count(), 3);
    axis.redraw();
    QCOMPARE(grid.count(), 4);
}

void TestAxisWidget::depthDirections_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("origin");
    QTest::addColumn<bool>("minimumAtTop");
    QTest::newRow("left, origin bottom") << 2 << 1 << false;
    QTest::newRow("left, origin top") << 2 << 0 << true;
    QTest::newRow("elevation left") << 4 << -1 << false;
    QTest::newRow("depth left") << 6 << -1 << true;
    QTest::newRow("depth right") << 7 << -1 << true;
}

// The depth positions bring their direction; the plain vertical axes take the origin given.
void TestAxisWidget::depthDirections()
{
    QFETCH(int, position);
    QFETCH(int, origin);
    QFETCH(bool, minimumAtTop);
    QCartesianAxisWidget axis;
    axis.resize(70, 301);
    if (origin >= 0)
        axis.setOriginPosition(QCartesianAxisWidget::OriginPosition(origin));
    axis.setAxisPosition(at(position));
    QCOMPARE(axis.originPosition(), minimumAtTop ? QCartesianAxisWidget::OriginTopLeft : QCartesianAxisWidget::OriginBottomLeft);
    axis.setRange(1000.0, 1300.0);
    QCOMPARE(axis.valueToPixel(1000.0), minimumAtTop ? 0.0 : 300.0);
    QCOMPARE(axis.valueToPixel(1300.0), minimumAtTop ? 300.0 : 0.0);
    const QList<int> pixels = axis.tickPixels();
    QVERIFY(pixels.size() >= 3);
    for (int i = 1; i < pixels.size(); ++i)
        QVERIFY(minimumAtTop ? pixels[i] > pixels[i - 1] : pixels[i] < pixels[i - 1]);
}

void TestAxisWidget::labelsKeepApartAndInside_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<double>("points");
    QTest::addColumn<int>("labels"); // at least
    QTest::newRow("bottom, ends on ticks") << 1 << QSize(400, 50) << 0.0 << 1000.0 << 1.0 << 9.0 << 3;
    QTest::newRow("top, long labels, narrow") << 0 << QSize(180, 50) << -123456.5 << -123400.0 << 1.0 << 9.0 << 2;
    QTest::newRow("bottom, long exponents") << 1 << QSize(400, 50) << 1.2345e12 << 1.2346e12 << 1.0 << 9.0 << 2;
    QTest::newRow("bottom, long decimals") << 1 << QSize(333, 50) << -1234567.0 << -1234560.0 << 1.0 << 9.0 << 2;
    QTest::newRow("top, title squeezed") << 0 << QSize(300, 30) << 0.0 << 1.0 << 1.0 << 9.0 << 3;
    QTest::newRow("bottom, exponents, big font") << 1 << QSize(300, 70) << 0.0 << 1.7e12 << 1.0 << 16.0 << 2;
    QTest::newRow("bottom, tiny values") << 1 << QSize(350, 50) << 1.2e-9 << 3.4e-9 << 1.0 << 9.0 << 2;
    QTest::newRow("bottom, zoomed") << 1 << QSize(300, 50) << -1.0 << 1.0 << 7.3 << 9.0 << 2;
    QTest::newRow("left, ends on ticks") << 2 << QSize(60, 300) << 0.0 << 50.0 << 1.0 << 9.0 << 3;
    QTest::newRow("left, too narrow for most labels") << 2 << QSize(25, 300) << -99999.0 << 99999.0 << 1.0 << 9.0 << 1;
    QTest::newRow("right, short, big font") << 3 << QSize(60, 90) << 0.0 << 10.0 << 1.0 << 20.0 << 2;
    QTest::newRow("top, a narrow track's azimuths") << 0 << QSize(207, 40) << -180.0 << 180.0 << 1.0 << 9.0 << 3;
    QTest::newRow("depth, zoomed") << 6 << QSize(60, 250) << 1500.0 << 2750.0 << 4.0 << 9.0 << 3;
}

// Text boxes rebuilt from what a recording device was asked to draw: baseline start, advance,
// ascent and descent.
void TestAxisWidget::labelsKeepApartAndInside()
{
    QFETCH(int, position);
    QFETCH(QSize, size);
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, zoom);
    QFETCH(double, points);
    QFETCH(int, labels);
    QCartesianAxisWidget axis(at(position));
    axis.setFontPointSize(points);
    axis.setTitle(QStringLiteral("Title"));
    axis.setRange(min, max);
    axis.setZoom(zoom);
    // Lengths from half the given one up: where the ticks fall against the ends, and so whether
    // a label is pushed into its neighbour, changes from one length to the next.
    const int full = axis.isHorizontal() ? size.width() : size.height();
    for (int length = full / 2; length <= full; length += 2) {
        const QSize here = axis.isHorizontal() ? QSize(length, size.height()) : QSize(size.width(), length);
        axis.resize(here);
        PaintRecorder recorder(here + QSize(40, 40));
        recorder.setRecordTextPositions(true);
        const QRect rect(QPoint(15, 25), here);
        {
            QPainter painter(&recorder);
            axis.draw(&painter, rect);
        }
        const QFontMetricsF fm(QFont(axis.font(), &recorder));
        const QRegularExpression text(QStringLiteral("^text '(.*)' at (-?\\d+),(-?\\d+) "));
        QVector<QRectF> boxes;
        int drawnLabels = 0;
        for (const QString& call : recorder.calls(QStringLiteral("text "))) {
            const QRegularExpressionMatch m = text.match(call);
            QVERIFY2(m.hasMatch(), qPrintable(call));
            const QPointF base(m.captured(2).toDouble(), m.captured(3).toDouble());
            // A vertical axis's title is drawn turned: its recorded place is in turned coordinates.
            const bool title = m.captured(1) == axis.titleText();
            if (title && !axis.isHorizontal())
                continue;
            const QRectF box(base.x(), base.y() - fm.ascent(), fm.horizontalAdvance(m.captured(1)), fm.height());
            const QString what = call + QStringLiteral(" at length %1").arg(length);
            // Positions are recorded rounded: half a pixel either way.
            QVERIFY2(QRectF(rect).adjusted(-0.5, -0.5, 0.5, 0.5).contains(box), qPrintable(what));
            for (const QRectF& other : boxes)
                QVERIFY2(!other.intersects(box), qPrintable(what));
            boxes << box;
            drawnLabels += title ? 0 : 1;
        }
        if (length == full)
            QVERIFY2(drawnLabels >= labels, qPrintable(recorder.calls(QStringLiteral("text ")).join(QLatin1Char('\n'))));
    }
}

// Ranges of no number, zero sizes and wild settings leave an empty axis that still paints.
void TestAxisWidget::badInputDrawsNothing()
{
    QCartesianAxisWidget axis(QCartesianAxisWidget::AxisLeft);
    axis.resize(60, 300);
    for (const auto& range : {std::pair(kNaN, 1.0), std::pair(-kInf, kInf), std::pair(-kMax, kMax)}) {
        axis.setRange(range.first, range.second);
        QVERIFY(axis.tickValues().isEmpty() && axis.gridLines().isEmpty());
        QVERIFY(std::isnan(axis.valueToPixel(0.0)));
    }
    // A flat range is drawn as the chart widens it.
    axis.setRange(3.0, 3.0);
    QCOMPARE(axis.valueToPixel(-7.0), 299.0);
    QCOMPARE(axis.valueToPixel(13.0), 0.0);
    for (double zoom : {kNaN, 0.0, -2.0, kInf, 1e12}) {
        axis.setZoom(zoom);
        QVERIFY(axis.zoom() >= 1.0 && axis.zoom() <= 1000.0);
    }
    axis.setOffset(std::numeric_limits<int>::min());
    axis.setFontPointSize(kNaN);
    axis.setFontPointSize(-3.0);
    QVERIFY(axis.fontPointSize() > 0.0);
    axis.resize(0, 0);
    QVERIFY(axis.tickValues().isEmpty());
    PaintRecorder recorder;
    QPainter painter(&recorder);
    axis.draw(&painter, QRect(0, 0, 1, 1));
    axis.draw(&painter, QRect());
    axis.draw(nullptr, QRect(0, 0, 50, 50));
    painter.end();
    axis.draw(&painter, QRect(0, 0, 50, 50)); // inactive painter
}

QTEST_MAIN(TestAxisWidget)
#include "tst_axiswidget.moc"

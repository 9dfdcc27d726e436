// The bar chart surface: the reduction of rows into bars, the bars of each mode against heights
// worked out by hand, the value axis, and the category labels at sizes and counts where they
// would collide. Drawing is checked on what the painter is asked to draw.
#include "PaintRecorder.h"

#include <BarDiagramData.h>
#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <QBarDiagramWidget.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QImage>
#include <QPainter>

#include <cmath>
#include <limits>
#include <memory>

using namespace rkBase;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();

// A group of Double columns; a NaN in the lists is a blank cell unless blankNaN is false, in
// which case NaN is stored as a value.
struct Sheet {
    std::unique_ptr<MatrixData> group{new MatrixData(QStringLiteral("Sheet"), -1, -1, QVariant::String, true)};
    QList<MatrixData*> columns;
    MatrixData* add(const QString& name, const QVector<double>& cells, const QColor& colour = QColor(),
                    bool blankNaN = true)
    {
        auto* c = new MatrixData(name, cells.size(), 1, QVariant::Double, true);
        for (int r = 0; r < cells.size(); ++r)
            if (!(blankNaN && std::isnan(cells[r])))
                c->setValue(r, 0, cells[r]);
        c->setColor(colour);
        group->appendChild(c, false);
        columns.append(c);
        return c;
    }
};

bool sameValue(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= 1e-9 * std::max(1.0, std::abs(b));
}

QString segmentsText(const std::vector<QBarDiagramWidget::Segment>& segments)
{
    QStringList out;
    for (const auto& s : segments)
        out << QStringLiteral("%1/%2:%3..%4").arg(s.series).arg(s.category).arg(s.base, 0, 'g', 6).arg(s.top, 0, 'g', 6);
    return out.join(QLatin1Char(' '));
}

// The rects the recorder saw in one brush colour, inside an area (the plot: not the legend).
QList<QRectF> rectsIn(const PaintRecorder& recorder, const QColor& colour, const QRectF& area)
{
    QList<QRectF> out;
    const QString brush = QStringLiteral("brush ") + colour.name(QColor::HexArgb);
    for (const QString& call : recorder.calls(QStringLiteral("rect "))) {
        if (!call.endsWith(brush))
            continue;
        const QStringList parts = call.split(QLatin1Char(' '));
        const QStringList xy = parts[1].split(QLatin1Char(','));
        const QStringList wh = parts[2].split(QLatin1Char('x'));
        const QRectF rect(xy[0].toDouble(), xy[1].toDouble(), wh[0].toDouble(), wh[1].toDouble());
        if (area.adjusted(-1, -1, 1, 1).contains(rect))
            out << rect;
    }
    return out;
}

} // namespace

class TestBarDiagram : public QObject
{
    Q_OBJECT
private slots:
    void reduce_data();
    void reduce();
    void reduceCapsTheBars();
    void displayUnits();
    void segments_data();
    void segments();
    void niceTicks_data();
    void niceTicks();
    void tickText_data();
    void tickText();
    void recordedBars_data();
    void recordedBars();
    void labelsStayApart_data();
    void labelsStayApart();
    void nothingToDraw_data();
    void nothingToDraw();
    void anyPainter();
    void hugeValuesStillDrawBars_data();
    void hugeValuesStillDrawBars();
    void duplicateColoursAreSplit();
};

// ---- the reduction ----

void TestBarDiagram::reduce_data()
{
    QTest::addColumn<QVector<double>>("a");
    QTest::addColumn<QVector<double>>("b");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("step");
    QTest::addColumn<QVector<double>>("expectA");
    QTest::addColumn<QVector<double>>("expectB");
    QTest::addColumn<QStringList>("labels");

    QTest::newRow("one row a bar") << QVector<double>{1, 2, 3} << QVector<double>{4, 5, 6} << QList<int>{} << 1
                                   << QVector<double>{1, 2, 3} << QVector<double>{4, 5, 6} << QStringList{"1", "2", "3"};
    QTest::newRow("means of two, the last bar short")
        << QVector<double>{1, 3, 5, 7, 9} << QVector<double>{2, 2, 2, 2, 4} << QList<int>{} << 2
        << QVector<double>{2, 6, 9} << QVector<double>{2, 2, 4} << QStringList{"1", "3", "5"};
    QTest::newRow("blank and NaN cells left out of the mean")
        << QVector<double>{kNaN, 4, kNaN, kNaN} << QVector<double>{1, 3, 5, kNaN} << QList<int>{} << 2
        << QVector<double>{4, kNaN} << QVector<double>{2, 5} << QStringList{"1", "3"};
    QTest::newRow("infinite cells left out") << QVector<double>{kInf, 2, -kInf, 6} << QVector<double>{1, 1, 1, 1}
                                            << QList<int>{} << 2 << QVector<double>{2, 6} << QVector<double>{1, 1}
                                            << QStringList{"1", "3"};
    QTest::newRow("a scattered row list, bars of its entries")
        << QVector<double>{10, 20, 30, 40, 50} << QVector<double>{1, 2, 3, 4, 5} << QList<int>{4, 0, 2} << 2
        << QVector<double>{30, 30} << QVector<double>{3, 3} << QStringList{"5", "3"};
    QTest::newRow("rows outside the sheet count as blank")
        << QVector<double>{10, 20} << QVector<double>{1, 2} << QList<int>{-1, 1, 99} << 1
        << QVector<double>{kNaN, 20, kNaN} << QVector<double>{kNaN, 2, kNaN} << QStringList{"", "2", "100"};
    QTest::newRow("a step below 1 is 1") << QVector<double>{1, 2} << QVector<double>{3, 4} << QList<int>{} << -5
                                         << QVector<double>{1, 2} << QVector<double>{3, 4} << QStringList{"1", "2"};
    QTest::newRow("columns of different lengths") << QVector<double>{1, 2, 3, 4} << QVector<double>{8} << QList<int>{}
                                                  << 2 << QVector<double>{1.5, 3.5} << QVector<double>{8, kNaN}
                                                  << QStringList{"1", "3"};
}

void TestBarDiagram::reduce()
{
    QFETCH(QVector<double>, a);
    QFETCH(QVector<double>, b);
    QFETCH(QList<int>, rows);
    QFETCH(int, step);
    QFETCH(QVector<double>, expectA);
    QFETCH(QVector<double>, expectB);
    QFETCH(QStringList, labels);
    Sheet sheet;
    sheet.add(QStringLiteral("A"), a, Qt::red, false);
    // Infinite cells are stored; a NaN in "a" is stored as NaN, not blanked, to check the mean skips it.
    sheet.add(QStringLiteral("B"), b, Qt::blue);
    const std::vector<int> list(rows.begin(), rows.end());
    const BarDiagramData data = BarDiagramData::reduce(sheet.columns, list, step);
    QCOMPARE(data.seriesCount(), 2);
    QCOMPARE(data.categoryCount(), expectA.size());
    for (int c = 0; c < data.categoryCount(); ++c) {
        QVERIFY2(sameValue(data.value(0, c), expectA[c]), qPrintable(QStringLiteral("A %1: %2").arg(c).arg(data.value(0, c))));
        QVERIFY2(sameValue(data.value(1, c), expectB[c]), qPrintable(QStringLiteral("B %1: %2").arg(c).arg(data.value(1, c))));
        QCOMPARE(data.categoryLabel(c), labels[c]);
        QCOMPARE(data.cellCount(0, c) == 0, std::isnan(expectA[c]));
    }
    QVERIFY(std::isnan(data.value(0, data.categoryCount())));
    QVERIFY(std::isnan(data.value(2, 0)));
    QCOMPARE(data.series(1).colour, QColor(Qt::blue));
}

void TestBarDiagram::reduceCapsTheBars()
{
    Sheet sheet;
    QVector<double> cells(5000);
    for (int r = 0; r < cells.size(); ++r)
        cells[r] = r;
    sheet.add(QStringLiteral("Depth"), cells);
    const BarDiagramData data = BarDiagramData::reduce(sheet.columns, {}, 1);
    QCOMPARE(data.step(), 3);
    QCOMPARE(data.categoryCount(), 1667);
    QVERIFY(data.categoryCount() <= BarDiagramData::kMaxCategories);
    QCOMPARE(data.value(0, 1666), 4999.0 - 0.5); // rows 4998 and 4999
    QCOMPARE(data.firstRow(1666), 4998);
    QCOMPARE(data.lastRow(1666), 4999);

    // A text column names the bars by the first row of each; a blank cell leaves no label.
    auto* names = new MatrixData(QStringLiteral("Sample"), 3, 1, QVariant::String, true);
    names->setValue(0, 0, QStringLiteral("Core A"));
    names->setValue(2, 0, QStringLiteral("Core C"));
    sheet.group->appendChild(names, false);
    const BarDiagramData named = BarDiagramData::reduce(sheet.columns, {0, 1, 2}, 1, names);
    QCOMPARE(named.categoryLabel(0), QStringLiteral("Core A"));
    QCOMPARE(named.categoryLabel(1), QString());
    QVERIFY(!named.numericLabels());
    QCOMPARE(named.labelTitle(), QStringLiteral("Sample"));
}

void TestBarDiagram::displayUnits()
{
    UnitRegistry registry;
    registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1); // feet
    Sheet sheet;
    sheet.group->setRegistry(&registry);
    MatrixData* z = sheet.add(QStringLiteral("Z"), {3.048, 6.096});
    z->setRegistry(&registry);
    z->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
    const BarDiagramData shown = BarDiagramData::reduce(sheet.columns, {}, 2);
    QVERIFY(sameValue(shown.value(0, 0), 15.0));
    QCOMPARE(shown.series(0).unit, QStringLiteral("ft"));
    const BarDiagramData stored = BarDiagramData::reduce(sheet.columns, {}, 2, nullptr, true);
    QVERIFY(sameValue(stored.value(0, 0), 4.572));
}

// ---- bars ----

void TestBarDiagram::segments_data()
{
    QTest::addColumn<QVector<double>>("a");
    QTest::addColumn<QVector<double>>("b");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");
    const QVector<double> a{2, -1, 0, kNaN};
    const QVector<double> b{6, 3, 0, 5};
    QTest::newRow("normal") << a << b << int(QBarDiagramWidget::NormalBars)
                            << "0/0:0..2 1/0:0..6 0/1:0..-1 1/1:0..3 0/2:0..0 1/2:0..0 1/3:0..5";
    QTest::newRow("stacked: negatives stack down from 0")
        << a << b << int(QBarDiagramWidget::StackedBars) << "0/0:0..2 1/0:2..8 0/1:0..-1 1/1:0..3 0/2:0..0 1/2:0..0 1/3:0..5";
    QTest::newRow("percent of the absolute total; an all-zero place draws nothing")
        << a << b << int(QBarDiagramWidget::PercentBars) << "0/0:0..25 1/0:25..100 0/1:0..-25 1/1:0..75 1/3:0..100";
    QTest::newRow("stacked negatives pile up") << QVector<double>{-2} << QVector<double>{-3} << int(QBarDiagramWidget::StackedBars)
                                               << "0/0:0..-2 1/0:-2..-5";
}

void TestBarDiagram::segments()
{
    QFETCH(QVector<double>, a);
    QFETCH(QVector<double>, b);
    QFETCH(int, mode);
    QFETCH(QString, expected);
    Sheet sheet;
    sheet.add(QStringLiteral("A"), a);
    sheet.add(QStringLiteral("B"), b);
    const BarDiagramData data = BarDiagramData::reduce(sheet.columns, {}, 1);
    QCOMPARE(segmentsText(QBarDiagramWidget::segments(data, QBarDiagramWidget::BarMode(mode))), expected);
}

void TestBarDiagram::niceTicks_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<int>("maxTicks");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("last");
    QTest::newRow("depths") << 0.0 << 2480.0 << 12 << 500.0 << 0.0 << 2500.0;
    QTest::newRow("fractions") << 0.0 << 0.27 << 6 << 0.05 << 0.0 << 0.3;
    QTest::newRow("across zero") << -3.0 << 7.0 << 5 << 2.0 << -4.0 << 8.0;
    QTest::newRow("percent") << 0.0 << 100.0 << 5 << 20.0 << 0.0 << 100.0;
    QTest::newRow("one tick asked") << 0.0 << 7.0 << 1 << 10.0 << 0.0 << 10.0;
    QTest::newRow("zero range around 0") << 0.0 << 0.0 << 4 << 0.5 << -1.0 << 1.0;
    QTest::newRow("reversed") << 10.0 << 0.0 << 5 << 2.0 << 0.0 << 10.0;
    QTest::newRow("tiny values") << 0.0 << 3e-7 << 3 << 1e-7 << 0.0 << 3e-7;
    QTest::newRow("NaN") << kNaN << 1.0 << 5 << 0.0 << kNaN << kNaN;
    QTest::newRow("infinite") << 0.0 << kInf << 5 << 0.0 << kNaN << kNaN;
    // A whole step past a value near the largest double is infinite: the axis ends at the
    // largest double instead.
    QTest::newRow("up to 1.7e308") << 0.0 << 1.7e308 << 5 << 5e307 << 0.0 << kLargest;
    QTest::newRow("range overflows") << -1.7e308 << 1.7e308 << 5 << 1e308 << -kLargest << kLargest;
}

void TestBarDiagram::niceTicks()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(int, maxTicks);
    QFETCH(double, step);
    QFETCH(double, first);
    QFETCH(double, last);
    double got = -1.0;
    const std::vector<double> ticks = QBarDiagramWidget::niceTicks(min, max, maxTicks, got);
    if (std::isnan(first)) {
        QVERIFY(ticks.empty());
        return;
    }
    QVERIFY(sameValue(got, step));
    QVERIFY(sameValue(ticks.front(), first));
    QVERIFY(sameValue(ticks.back(), last));
    for (std::size_t i = 1; i < ticks.size(); ++i)
        if (std::abs(ticks[i - 1]) != kLargest && std::abs(ticks[i]) != kLargest)
            QVERIFY(sameValue(ticks[i] - ticks[i - 1], step));
    // Every step is 1, 2 or 5 times a power of ten.
    const double mantissa = step / std::pow(10.0, std::floor(std::log10(step) + 1e-9));
    QVERIFY(sameValue(mantissa, 1.0) || sameValue(mantissa, 2.0) || sameValue(mantissa, 5.0));
}

void TestBarDiagram::tickText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("text");
    QTest::newRow("sums that miss by a little") << 0.30000000000000004 << 0.1 << "0.3";
    QTest::newRow("no minus zero") << -1e-17 << 0.05 << "0.00";
    QTest::newRow("whole numbers") << 2500.0 << 500.0 << "2500";
    QTest::newRow("two decimals") << 0.25 << 0.05 << "0.25";
    QTest::newRow("huge") << 3e9 << 1e9 << "3e+09";
}

void TestBarDiagram::tickText()
{
    QFETCH(double, value);
    QFETCH(double, step);
    QFETCH(QString, text);
    QCOMPARE(QBarDiagramWidget::tickText(value, step), text);
}

void TestBarDiagram::recordedBars_data()
{
    QTest::addColumn<int>("mode");
    // Per bar of A then B in each place: bottom and top in value units.
    QTest::addColumn<QVector<double>>("extentsA");
    QTest::addColumn<QVector<double>>("extentsB");
    // A = {2, 4}, B = {6, 2}.
    QTest::newRow("normal") << int(QBarDiagramWidget::NormalBars) << QVector<double>{0, 2, 0, 4} << QVector<double>{0, 6, 0, 2};
    QTest::newRow("stacked") << int(QBarDiagramWidget::StackedBars) << QVector<double>{0, 2, 0, 4} << QVector<double>{2, 8, 4, 6};
    QTest::newRow("percent") << int(QBarDiagramWidget::PercentBars) << QVector<double>{0, 25, 0, 66.667}
                             << QVector<double>{25, 100, 66.667, 100};
}

void TestBarDiagram::recordedBars()
{
    QFETCH(int, mode);
    QFETCH(QVector<double>, extentsA);
    QFETCH(QVector<double>, extentsB);
    Sheet sheet;
    const QColor red(200, 0, 0), blue(0, 0, 200);
    sheet.add(QStringLiteral("A"), {2, 4}, red);
    sheet.add(QStringLiteral("B"), {6, 2}, blue);
    QBarDiagramWidget chart;
    chart.setData(BarDiagramData::reduce(sheet.columns, {}, 1));
    chart.setBarMode(QBarDiagramWidget::BarMode(mode));
    PaintRecorder recorder(QSize(500, 400));
    {
        QPainter painter(&recorder);
        chart.drawChart(painter);
    }
    const QBarDiagramWidget::Layout l = chart.layout(QSize(500, 400), chart.font(), &recorder);
    const double perPixel = (l.valueMax - l.valueMin) / l.plot.height();
    auto check = [&](const QList<QRectF>& rects, const QVector<double>& extents) {
        QCOMPARE(rects.size(), 2);
        for (int i = 0; i < 2; ++i) {
            // The bar's bottom and top, read back in value units; the outline takes one pixel.
            const double bottom = l.valueMin + (l.plot.bottom() - rects[i].bottom()) * perPixel;
            const double top = l.valueMin + (l.plot.bottom() - rects[i].top()) * perPixel;
            QVERIFY2(std::abs(bottom - extents[2 * i]) <= 1.5 * perPixel,
                     qPrintable(QStringLiteral("bar %1 bottom %2, not %3").arg(i).arg(bottom).arg(extents[2 * i])));
            QVERIFY2(std::abs(top - extents[2 * i + 1]) <= 1.5 * perPixel,
                     qPrintable(QStringLiteral("bar %1 top %2, not %3").arg(i).arg(top).arg(extents[2 * i + 1])));
            // In its own place along the axis.
            QVERIFY(rects[i].left() >= l.plot.left() + i * l.pitch);
            QVERIFY(rects[i].right() <= l.plot.left() + (i + 1) * l.pitch);
        }
    };
    check(rectsIn(recorder, red, l.plot), extentsA);
    check(rectsIn(recorder, blue, l.plot), extentsB);
    // Side by side the bars of one place do not cover each other; stacked, they share the place.
    const QList<QRectF> a = rectsIn(recorder, red, l.plot), b = rectsIn(recorder, blue, l.plot);
    if (mode == QBarDiagramWidget::NormalBars)
        QVERIFY(a[0].right() <= b[0].left());
    else
        QCOMPARE(a[0].left(), b[0].left());
    // The legend names both, the axis the rows.
    QVERIFY(recorder.calls().filter(QStringLiteral("text 'A'")).size() == 1);
    QVERIFY(recorder.calls().filter(QStringLiteral("text 'B'")).size() == 1);
    QVERIFY(!recorder.calls().filter(QStringLiteral("text 'Row'")).isEmpty());
}

// ---- labels ----

void TestBarDiagram::labelsStayApart_data()
{
    QTest::addColumn<int>("categories");
    QTest::addColumn<QString>("labelPattern"); // empty: row numbers
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("upright");
    QTest::newRow("a few row numbers") << 8 << QString() << QSize(600, 400) << false;
    QTest::newRow("row numbers, crowded") << 400 << QString() << QSize(600, 400) << false;
    QTest::newRow("the most bars") << BarDiagramData::kMaxCategories << QString() << QSize(1000, 700) << false;
    QTest::newRow("short names that fit") << 5 << QStringLiteral("S%1") << QSize(600, 400) << false;
    QTest::newRow("long names turn upright")
        << 12 << QStringLiteral("Core %1, upper Alpha sandstone, fine grained and well sorted") << QSize(700, 500) << true;
    QTest::newRow("many long names, thinned") << 300 << QStringLiteral("Sample number %1 of the lower fan") << QSize(700, 500)
                                              << true;
    QTest::newRow("a small chart, labels shortened") << 30 << QStringLiteral("Marker %1 of the Alpha sands") << QSize(260, 220) << true;
}

void TestBarDiagram::labelsStayApart()
{
    QFETCH(int, categories);
    QFETCH(QString, labelPattern);
    QFETCH(QSize, size);
    QFETCH(bool, upright);
    Sheet sheet;
    QVector<double> cells(categories);
    for (int r = 0; r < categories; ++r)
        cells[r] = 100.0 + r % 7 * 15.0;
    sheet.add(QStringLiteral("Porosity of the reservoir interval"), cells, Qt::darkGreen);
    sheet.add(QStringLiteral("Permeability"), cells, Qt::darkBlue);
    MatrixData* labels = nullptr;
    if (!labelPattern.isEmpty()) {
        labels = new MatrixData(QStringLiteral("Sample"), categories, 1, QVariant::String, true);
        for (int r = 0; r < categories; ++r)
            labels->setValue(r, 0, labelPattern.arg(r + 1));
        sheet.group->appendChild(labels, false);
    }
    QBarDiagramWidget chart;
    chart.changeHeaderTitle(QStringLiteral("a header"));
    chart.setData(BarDiagramData::reduce(sheet.columns, {}, 1, labels));
    const QBarDiagramWidget::Layout l = chart.layout(size, chart.font());
    const QRectF device(0, 0, size.width(), size.height());

    QCOMPARE(l.labelsUpright, upright);
    QVERIFY(!l.labelBoxes.empty());
    for (std::size_t i = 0; i < l.labelBoxes.size(); ++i) {
        const QRectF& box = l.labelBoxes[i];
        QVERIFY2(device.contains(box), qPrintable(QStringLiteral("label %1 leaves the chart").arg(i)));
        QVERIFY2(!box.intersects(l.plot), qPrintable(QStringLiteral("label %1 covers the bars").arg(i)));
        QVERIFY(!box.intersects(l.categoryTitle));
        QVERIFY(std::max(box.width(), box.height()) <= QBarDiagramWidget::kMaxLabelPixels + 2.0);
        if (i > 0)
            QVERIFY2(l.labelBoxes[i - 1].right() <= box.left(),
                     qPrintable(QStringLiteral("labels %1 and %2 overlap").arg(i - 1).arg(i)));
        // Each label sits under its own place.
        const double centre = l.plot.left() + (l.labelCategories[i] + 0.5) * l.pitch;
        QVERIFY(std::abs(box.center().x() - centre) < 1.0);
    }
    // Thinned out evenly, never more than needed: the next smaller step would collide.
    QVERIFY(l.labelEvery >= 1);
    QCOMPARE(int(l.labelBoxes.size()), (categories + l.labelEvery - 1) / l.labelEvery);
    // Tick labels stay apart too, beside the axis.
    for (std::size_t i = 0; i < l.tickLabelBoxes.size(); ++i) {
        QVERIFY(device.contains(l.tickLabelBoxes[i]));
        QVERIFY(l.tickLabelBoxes[i].right() <= l.plot.left());
        if (i > 0)
            QVERIFY(l.tickLabelBoxes[i].bottom() <= l.tickLabelBoxes[i - 1].top());
    }
    for (const QRectF& text : l.legendTexts) {
        QVERIFY(device.contains(text));
        QVERIFY(!text.intersects(l.plot));
    }
    QVERIFY(!l.title.intersects(l.legend));
}

// ---- bad input ----

void TestBarDiagram::nothingToDraw_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<QSize>("size");
    QTest::newRow("no ticked column") << 0 << QSize(400, 300);
    QTest::newRow("columns without rows") << 1 << QSize(400, 300);
    QTest::newRow("only NaN cells") << 2 << QSize(400, 300);
    QTest::newRow("a chart of one pixel") << 3 << QSize(1, 1);
    QTest::newRow("rows outside every column") << 4 << QSize(400, 300);
}

void TestBarDiagram::nothingToDraw()
{
    QFETCH(int, what);
    QFETCH(QSize, size);
    Sheet sheet;
    const QColor colour(10, 120, 30);
    std::vector<int> rows;
    if (what == 1)
        sheet.add(QStringLiteral("Empty"), {}, colour);
    else if (what == 2)
        sheet.add(QStringLiteral("NaN"), {kNaN, kNaN}, colour, false);
    else if (what >= 3)
        sheet.add(QStringLiteral("Some"), {1, 2, 3}, colour);
    if (what == 4)
        rows = {-4, 50};
    QBarDiagramWidget chart;
    chart.setData(BarDiagramData::reduce(sheet.columns, rows, 1));
    chart.resize(size);
    chart.updateChart();
    QCOMPARE(chart.chartImage().size(), chart.size());
    PaintRecorder recorder(size);
    {
        QPainter painter(&recorder);
        chart.drawChart(painter);
    }
    // The axes stand even without bars, from 0 up.
    const QBarDiagramWidget::Layout l = chart.layout(size, chart.font(), &recorder);
    if (what != 3)
        QVERIFY(rectsIn(recorder, colour, l.plot).isEmpty());
    QCOMPARE(l.valueMin, 0.0);
    QVERIFY(l.valueMax > 0.0);
    QCOMPARE(chart.categoryAt(QPointF(-5, -5)), -1);
}

void TestBarDiagram::hugeValuesStillDrawBars_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("step");
    QTest::addColumn<QVector<double>>("a");
    QTest::addColumn<QVector<double>>("b");
    QTest::addColumn<double>("valueA"); // the first bar's value in each series; NaN: no series
    QTest::addColumn<double>("valueB");
    // Each drawn bar's bottom and top as shares of the plot's height from its bottom. The axis
    // of these ends at the largest double, 1.7977e308: 1.7e308 reaches 0.9457 of it.
    QTest::addColumn<QVector<double>>("shares");
    const int normal = QBarDiagramWidget::NormalBars, stacked = QBarDiagramWidget::StackedBars,
              percent = QBarDiagramWidget::PercentBars;
    const double big = 1.7e308, top = big / kLargest;
    QTest::newRow("the mean of two cells of 1.7e308") << normal << 2 << QVector<double>{big, big} << QVector<double>{}
                                                      << big << kNaN << QVector<double>{0, top};
    QTest::newRow("the mean of three largest doubles") << normal << 3 << QVector<double>{kLargest, kLargest, kLargest}
                                                       << QVector<double>{} << kLargest << kNaN << QVector<double>{0, 1};
    // Four cells take the four running sums of the long-column loop.
    QTest::newRow("four running sums overflow") << normal << 4 << QVector<double>{big, big, big, big}
                                                << QVector<double>{} << big << kNaN << QVector<double>{0, top};
    QTest::newRow("overflow on the way, then back") << normal << 5
                                                    << QVector<double>{1.6e308, 1.6e308, -1.6e308, 1e308, 0.5e308}
                                                    << QVector<double>{} << 0.62e308 << kNaN << QVector<double>{};
    QTest::newRow("either sign") << normal << 1 << QVector<double>{big} << QVector<double>{-big} << big << -big
                                 << QVector<double>{0.5, 0.5 + top / 2, 0.5 - top / 2, 0.5};
    QTest::newRow("stacked past the largest double") << stacked << 1 << QVector<double>{big} << QVector<double>{big}
                                                     << big << big << QVector<double>{0, top, top, 1};
    QTest::newRow("percent of a total past the largest double")
        << percent << 1 << QVector<double>{big} << QVector<double>{big} << big << big << QVector<double>{0, 0.5, 0.5, 1};
}

// Values near the largest double still give bars where they belong: neither a mean, a stack nor
// a percentage total may become infinite and leave the place empty.
void TestBarDiagram::hugeValuesStillDrawBars()
{
    QFETCH(int, mode);
    QFETCH(int, step);
    QFETCH(QVector<double>, a);
    QFETCH(QVector<double>, b);
    QFETCH(double, valueA);
    QFETCH(double, valueB);
    QFETCH(QVector<double>, shares);
    Sheet sheet;
    const QColor red(200, 0, 0), blue(0, 0, 200);
    sheet.add(QStringLiteral("A"), a, red);
    if (!b.isEmpty())
        sheet.add(QStringLiteral("B"), b, blue);
    const BarDiagramData data = BarDiagramData::reduce(sheet.columns, {}, step);
    QVERIFY2(sameValue(data.value(0, 0), valueA), qPrintable(QString::number(data.value(0, 0))));
    if (!b.isEmpty())
        QVERIFY2(sameValue(data.value(1, 0), valueB), qPrintable(QString::number(data.value(1, 0))));
    QBarDiagramWidget chart;
    chart.setData(data);
    chart.setBarMode(QBarDiagramWidget::BarMode(mode));
    PaintRecorder recorder(QSize(500, 400));
    {
        QPainter painter(&recorder);
        chart.drawChart(painter);
    }
    const QBarDiagramWidget::Layout l = chart.layout(QSize(500, 400), chart.font(), &recorder);
    QVERIFY(std::isfinite(l.valueMin) && std::isfinite(l.valueMax) && l.valueMax > l.valueMin);
    QList<QRectF> bars = rectsIn(recorder, red, l.plot);
    if (!b.isEmpty())
        bars += rectsIn(recorder, blue, l.plot);
    QCOMPARE(bars.size(), b.isEmpty() ? 1 : 2);
    if (shares.isEmpty())
        return; // where the axis ends depends on the font: the bar is there, its height not checked
    for (int i = 0; i < bars.size(); ++i) {
        // The outline is drawn one pixel inside the bar.
        const double bottom = (l.plot.bottom() - bars[i].bottom()) / l.plot.height();
        const double top = (l.plot.bottom() - bars[i].top()) / l.plot.height();
        const double pixel = 1.5 / l.plot.height();
        QVERIFY2(std::abs(bottom - shares[2 * i]) <= pixel && std::abs(top - shares[2 * i + 1]) <= pixel,
                 qPrintable(QStringLiteral("bar %1 from %2 to %3").arg(i).arg(bottom).arg(top)));
    }
}

void TestBarDiagram::anyPainter()
{
    // The same chart on a recording device and on an image of another size: bars on both, laid
    // out for each device, none outside it.
    Sheet sheet;
    const QColor colour(90, 40, 160);
    sheet.add(QStringLiteral("Dip"), {10, 20, 30, 40}, colour);
    QBarDiagramWidget chart;
    chart.resize(300, 200);
    chart.setData(BarDiagramData::reduce(sheet.columns, {}, 1));
    for (const QSize size : {QSize(640, 480), QSize(1200, 300)}) {
        PaintRecorder recorder(size);
        {
            QPainter painter(&recorder);
            chart.drawChart(painter);
        }
        const QList<QRectF> bars = rectsIn(recorder, colour, chart.layout(size, chart.font(), &recorder).plot);
        QCOMPARE(bars.size(), 4);
        for (const QRectF& bar : bars)
            QVERIFY(QRectF(0, 0, size.width(), size.height()).contains(bar));
        QVERIFY(bars[3].height() > bars[0].height() * 3.5);
    }
    QImage image(640, 480, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        chart.drawChart(painter);
    }
    const QBarDiagramWidget::Layout l = chart.layout(image.size(), chart.font(), &image);
    // The tallest bar's middle is the series colour.
    const double top = l.plot.bottom() - (40.0 - l.valueMin) / (l.valueMax - l.valueMin) * l.plot.height();
    const QPointF middle(l.plot.left() + 3.5 * l.pitch, (l.plot.bottom() + top) / 2);
    QCOMPARE(image.pixelColor(middle.toPoint()), colour);
    // The mouse goes by the chart's own raster, whatever other devices were drawn on.
    chart.updateChart();
    const QPointF onRaster = chart.transformInPixelPoint(QPointF(3, 20));
    QVERIFY(QRectF(QPointF(0, 0), QSizeF(chart.chartImage().size())).contains(onRaster));
    QCOMPARE(chart.categoryAt(onRaster), 3);
    QCOMPARE(QColor(chart.chartImage().pixel(onRaster.toPoint())), colour);
}

void TestBarDiagram::duplicateColoursAreSplit()
{
    Sheet sheet;
    sheet.add(QStringLiteral("A"), {1}, Qt::red);
    sheet.add(QStringLiteral("B"), {1}, Qt::red);
    sheet.add(QStringLiteral("C"), {1});
    QBarDiagramWidget chart;
    chart.setData(BarDiagramData::reduce(sheet.columns, {}, 1));
    QCOMPARE(chart.seriesColour(0), QColor(Qt::red));
    QVERIFY(chart.seriesColour(1).isValid());
    QVERIFY(chart.seriesColour(2).isValid());
    QVERIFY(chart.seriesColour(1) != chart.seriesColour(0));
    QVERIFY(chart.seriesColour(2) != chart.seriesColour(0));
    QVERIFY(chart.seriesColour(2) != chart.seriesColour(1));
}

QTEST_MAIN(TestBarDiagram)
#include "tst_bardiagram.moc"

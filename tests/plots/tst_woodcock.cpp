// The Woodcock diagram widget: the picture's axes must lie where the widget's calibration puts
// them at both measured sizes, ratio pairs must land on their pixels, the current point must show
// alone or be found among the classes, and nothing may be clipped or crash at odd sizes.
#include <QWoodcockHelpWidget.h>

#include <QPixmap>
#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>

using namespace rkBase;

namespace {

QImage render(QWoodcockHelpWidget& w)
{
    return w.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// Darkness-weighted centre of the pixels from `from` to `to` (inclusive) along one line of the
// image; pale tints and the faint grid do not count. -1 when nothing is dark.
double darkCentre(const QImage& image, int fixed, int from, int to, bool alongX)
{
    double sum = 0.0, weighted = 0.0;
    for (int i = from; i <= to; ++i) {
        const QRgb c = alongX ? image.pixel(i, fixed) : image.pixel(fixed, i);
        const int grey = qGray(c);
        if (grey >= 200)
            continue;
        const double w = 255.0 - grey;
        sum += w;
        weighted += w * i;
    }
    return sum > 0.0 ? weighted / sum : -1.0;
}

// Centre of the pixels that pass a colour test, and how many there are.
QPointF colourCentre(const QImage& image, const std::function<bool(QRgb)>& match, int* count = nullptr)
{
    double sx = 0.0, sy = 0.0;
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (match(image.pixel(x, y))) {
                sx += x;
                sy += y;
                ++n;
            }
    if (count)
        *count = n;
    return n ? QPointF(sx / n, sy / n) : QPointF(-1, -1);
}

bool isRed(QRgb c) { return qRed(c) > 200 && qGreen(c) < 70 && qBlue(c) < 70; }
bool isGreen(QRgb c) { return qGreen(c) > 200 && qRed(c) < 70 && qBlue(c) < 70; }
bool isYellow(QRgb c) { return qRed(c) > 200 && qGreen(c) > 200 && qBlue(c) < 70; }

} // namespace

class TestWoodcock : public QObject
{
    Q_OBJECT
private slots:
    void pictureIsInTheResources();
    void axesLieUnderTheAnchors_data();
    void axesLieUnderTheAnchors();
    void ratioPixel_data();
    void ratioPixel();
    void ratioPairIsDrawnOnItsPixel_data();
    void ratioPairIsDrawnOnItsPixel();
    void currentPoint_data();
    void currentPoint();
    void resetPointsEmptiesAllLists();
    void valuesAboveFiveAreNotClipped();
    void oddSizesAndValuesDoNotCrash_data();
    void oddSizesAndValuesDoNotCrash();
};

void TestWoodcock::pictureIsInTheResources()
{
    const QPixmap picture(QStringLiteral(":/rkBaseQt/Resources/Woodcock.png"));
    QVERIFY(!picture.isNull());
    // Square, so that both measured sizes scale it to the whole widget.
    QCOMPARE(picture.width(), picture.height());
}

void TestWoodcock::axesLieUnderTheAnchors_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QPoint>("origin");
    QTest::addColumn<QPoint>("xEnd");
    QTest::addColumn<QPoint>("yEnd");
    QTest::newRow("383") << 383 << QPoint(60, 338) << QPoint(330, 338) << QPoint(60, 68);
    QTest::newRow("634") << 634 << QPoint(100, 561) << QPoint(546, 561) << QPoint(100, 113);
}

void TestWoodcock::axesLieUnderTheAnchors()
{
    QFETCH(int, size);
    QFETCH(QPoint, origin);
    QFETCH(QPoint, xEnd);
    QFETCH(QPoint, yEnd);
    QWoodcockHelpWidget w(nullptr);
    w.resize(size, size);
    const QImage image = render(w);
    QCOMPARE(w.scaledPixmap().size(), QSize(size, size));

    const double unit = (xEnd.x() - origin.x()) / 5.0;
    // Sample the axes between the ticks and away from the lines that meet at the origin.
    const int reach = 4;
    for (double v : {2.5, 4.5}) {
        const int column = int(std::lround(origin.x() + v * unit));
        const double xAxis = darkCentre(image, column, origin.y() - reach, origin.y() + reach, false);
        QVERIFY2(std::abs(xAxis - origin.y()) <= 1.0, qPrintable(QStringLiteral("x axis at row %1").arg(xAxis)));
        const int row = int(std::lround(origin.y() - v * unit));
        const double yAxis = darkCentre(image, row, origin.x() - reach, origin.x() + reach, true);
        QVERIFY2(std::abs(yAxis - origin.x()) <= 1.0, qPrintable(QStringLiteral("y axis at column %1").arg(yAxis)));
    }
    QVERIFY(std::abs(xEnd.y() - origin.y()) <= 1 && std::abs(yEnd.x() - origin.x()) <= 1);

    // The ends: the tick of 5 below the x axis and left of the y axis.
    const double xTick = darkCentre(image, xEnd.y() + 4, xEnd.x() - reach, xEnd.x() + reach, true);
    QVERIFY2(std::abs(xTick - xEnd.x()) <= 1.0, qPrintable(QStringLiteral("x tick of 5 at column %1").arg(xTick)));
    const double yTick = darkCentre(image, yEnd.x() - 4, yEnd.y() - reach, yEnd.y() + reach, false);
    QVERIFY2(std::abs(yTick - yEnd.y()) <= 1.0, qPrintable(QStringLiteral("y tick of 5 at row %1").arg(yTick)));
    // The tick of 4 sits one unit before the end: the scale is linear, not just pinned at its ends.
    const double fourTick = darkCentre(image, xEnd.y() + 4, int(xEnd.x() - unit) - reach,
                                       int(xEnd.x() - unit) + reach, true);
    QVERIFY2(std::abs(fourTick - (xEnd.x() - unit)) <= 1.0, qPrintable(QString::number(fourTick)));
}

void TestWoodcock::ratioPixel_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QPointF>("ratio");
    QTest::addColumn<QPointF>("pixel");
    QTest::newRow("383 origin") << 383 << QPointF(0, 0) << QPointF(60, 338);
    QTest::newRow("383 x end") << 383 << QPointF(5, 0) << QPointF(330, 338);
    QTest::newRow("383 y end") << 383 << QPointF(0, 5) << QPointF(60, 68);
    QTest::newRow("383 default point") << 383 << QPointF(2, 3) << QPointF(168, 176);
    QTest::newRow("634 origin") << 634 << QPointF(0, 0) << QPointF(100, 561);
    QTest::newRow("634 x end") << 634 << QPointF(5, 0) << QPointF(546, 561);
    QTest::newRow("634 y end") << 634 << QPointF(0, 5) << QPointF(100, 113);
    QTest::newRow("634 middle") << 634 << QPointF(2.5, 2.5) << QPointF(323, 337);
    // Between the measured sizes every anchor moves in proportion to the size over 383..634.
    QTest::newRow("508 origin") << 508 << QPointF(0, 0) << QPointF(60 + 125 * 40 / 251.0, 338 + 125 * 223 / 251.0);
    QTest::newRow("above 5") << 634 << QPointF(6, 7) << QPointF(100 + 6 * 89.2, 561 - 7 * 89.6);
}

void TestWoodcock::ratioPixel()
{
    QFETCH(int, size);
    QFETCH(QPointF, ratio);
    QFETCH(QPointF, pixel);
    QWoodcockHelpWidget w(nullptr);
    w.resize(size, size);
    render(w);
    const QPointF got = w.ratioPixel(ratio.x(), ratio.y());
    QVERIFY2(std::abs(got.x() - pixel.x()) < 1e-9 && std::abs(got.y() - pixel.y()) < 1e-9,
             qPrintable(QStringLiteral("%1,%2").arg(got.x()).arg(got.y())));
}

void TestWoodcock::ratioPairIsDrawnOnItsPixel_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QPointF>("ratio");
    QTest::newRow("383") << 383 << QPointF(3.5, 1.0);
    QTest::newRow("634") << 634 << QPointF(1.5, 4.0);
}

void TestWoodcock::ratioPairIsDrawnOnItsPixel()
{
    QFETCH(int, size);
    QFETCH(QPointF, ratio);
    QWoodcockHelpWidget w(nullptr);
    QRelationshipItemModel model;
    w.setModel(&model);
    w.resize(size, size);
    w.addPoint(ratio.x(), ratio.y(), QRelationshipItemModel::Square, QColor(0, 255, 0));
    const QImage image = render(w);
    int n = 0;
    const QPointF centre = colourCentre(image, isGreen, &n);
    QVERIFY(n > 0);
    const QPointF want = w.ratioPixel(ratio.x(), ratio.y());
    // Pixel centres sit half a pixel right of and below the point they cover.
    QVERIFY2(std::abs(centre.x() + 0.5 - want.x()) <= 1.0 && std::abs(centre.y() + 0.5 - want.y()) <= 1.0,
             qPrintable(QStringLiteral("drawn at %1,%2, wanted %3,%4")
                            .arg(centre.x()).arg(centre.y()).arg(want.x()).arg(want.y())));
    // The model's symbol size is the widget's, whatever the panel had set.
    QCOMPARE(model.pointPixelSize(), 5);
}

void TestWoodcock::currentPoint_data()
{
    QTest::addColumn<QVector<QPointF>>("stored");
    QTest::addColumn<QPointF>("current");
    QTest::addColumn<bool>("shownAmongStored");
    QTest::newRow("empty list, default point") << QVector<QPointF>{} << QPointF(2, 3) << false;
    QTest::newRow("not among the classes") << QVector<QPointF>{{1, 1}, {4, 2}} << QPointF(2.5, 0.5) << false;
    QTest::newRow("one of the classes") << QVector<QPointF>{{1, 1}, {4, 2}} << QPointF(4, 2) << true;
    // Equality is exact: a class a hair away is another point.
    QTest::newRow("a hair away") << QVector<QPointF>{{4, 2 + 1e-12}} << QPointF(4, 2) << false;
}

void TestWoodcock::currentPoint()
{
    QFETCH(QVector<QPointF>, stored);
    QFETCH(QPointF, current);
    QFETCH(bool, shownAmongStored);
    QWoodcockHelpWidget w(nullptr);
    QRelationshipItemModel model;
    model.setPointStyle(QRelationshipItemModel::Square);
    w.setModel(&model);
    w.resize(383, 383);
    for (const QPointF& p : stored)
        w.addPoint(p.x(), p.y(), QRelationshipItemModel::Circle, QColor(0, 0, 255));
    if (current != QPointF(2, 3))
        w.setPoint(current.x(), current.y());
    QCOMPARE(w.currentX(), current.x());
    const QImage image = render(w);
    QCOMPARE(w.currentPointShown(), shownAmongStored);

    int red = 0, yellow = 0;
    const QPointF redCentre = colourCentre(image, isRed, &red);
    colourCentre(image, isYellow, &yellow);
    if (shownAmongStored) {
        QCOMPARE(red, 0);
        QVERIFY(yellow > 0);
    } else {
        QVERIFY(red > 0);
        QCOMPARE(yellow, 0);
        const QPointF want = w.ratioPixel(current.x(), current.y());
        QVERIFY(std::abs(redCentre.x() + 0.5 - want.x()) <= 1.0 && std::abs(redCentre.y() + 0.5 - want.y()) <= 1.0);
    }
}

void TestWoodcock::resetPointsEmptiesAllLists()
{
    QWoodcockHelpWidget w(nullptr);
    w.addPoint(1, 2, 3, Qt::blue);
    w.addPoint(2, 3, 4, Qt::green);
    QCOMPARE(int(w.points().size()), 2);
    QCOMPARE(w.symbolIds().at(1), 4);
    QCOMPARE(w.colours().at(1), QColor(Qt::green));
    w.resetPoints();
    QVERIFY(w.points().empty() && w.symbolIds().empty() && w.colours().empty());
    // The current point is not a class and stays.
    QCOMPARE(w.currentX(), 2.0);
    QCOMPARE(w.currentY(), 3.0);
}

void TestWoodcock::valuesAboveFiveAreNotClipped()
{
    // A wide widget: the picture keeps its aspect, so the room right of it is free to draw in.
    QWoodcockHelpWidget w(nullptr);
    w.resize(800, 634);
    w.setPoint(6.5, 5.6);
    const QImage image = render(w);
    QCOMPARE(w.scaledPixmap().size(), QSize(634, 634));
    const QPointF want = w.ratioPixel(6.5, 5.6);
    QVERIFY(want.x() > 634.0 && want.y() < 113.0);
    int red = 0;
    const QPointF centre = colourCentre(image, isRed, &red);
    QVERIFY(red > 0);
    QVERIFY(std::abs(centre.x() + 0.5 - want.x()) <= 1.0 && std::abs(centre.y() + 0.5 - want.y()) <= 1.0);
}

void TestWoodcock::oddSizesAndValuesDoNotCrash_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("1 x 1") << QSize(1, 1) << 2.0 << 3.0;
    QTest::newRow("1 x 400") << QSize(1, 400) << 2.0 << 3.0;
    QTest::newRow("not a number") << QSize(383, 383) << nan << 1.0;
    QTest::newRow("infinite") << QSize(383, 383) << inf << -inf;
    QTest::newRow("huge") << QSize(383, 383) << 1e300 << -1e300;
}

void TestWoodcock::oddSizesAndValuesDoNotCrash()
{
    QFETCH(QSize, size);
    QFETCH(double, x);
    QFETCH(double, y);
    QWoodcockHelpWidget w(nullptr);
    w.resize(size);
    w.setPoint(x, y);
    w.addPoint(x, y, QRelationshipItemModel::Circle, Qt::blue);
    w.addPoint(1.0, 1.0, QRelationshipItemModel::Cross, Qt::blue);
    const QImage image = render(w);
    QCOMPARE(image.size(), size);
}

QTEST_MAIN(TestWoodcock)
#include "tst_woodcock.moc"

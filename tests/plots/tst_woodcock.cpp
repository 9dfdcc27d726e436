// The Woodcock diagram widget: the picture's axes lie where the calibration puts them at both
// measured sizes, ratio pairs land on their pixels, the current point shows alone or is found
// among the classes, and nothing is clipped or crashes at odd sizes and values.
#include <QWoodcockHelpWidget.h>

#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>

using namespace rkBase;

namespace {

QImage render(QWoodcockHelpWidget& w) { return w.grab().toImage().convertToFormat(QImage::Format_RGB32); }

// Darkness-weighted centre (pixel index) of pixels from..to along one row (alongX) or column;
// pale tints and the faint grid do not count. -1 when nothing is dark.
double darkCentre(const QImage& image, int fixed, int from, int to, bool alongX)
{
    double sum = 0.0, weighted = 0.0;
    for (int i = from; i <= to; ++i) {
        const int grey = qGray(alongX ? image.pixel(i, fixed) : image.pixel(fixed, i));
        if (grey < 200) {
            sum += 255.0 - grey;
            weighted += (255.0 - grey) * i;
        }
    }
    return sum > 0.0 ? weighted / sum : -1.0;
}

// Centre of the pixels of one colour, as a painter coordinate (pixel centres sit at +0.5).
QPointF colourCentre(const QImage& image, const std::function<bool(QRgb)>& match, int& count)
{
    double sx = 0.0, sy = 0.0;
    count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (match(image.pixel(x, y))) {
                sx += x + 0.5;
                sy += y + 0.5;
                ++count;
            }
    return count ? QPointF(sx / count, sy / count) : QPointF(-1, -1);
}

bool near(const QPointF& a, const QPointF& b) { return std::abs(a.x() - b.x()) <= 1.0 && std::abs(a.y() - b.y()) <= 1.0; }
bool isRed(QRgb c) { return qRed(c) > 200 && qGreen(c) < 70 && qBlue(c) < 70; }
bool isGreen(QRgb c) { return qGreen(c) > 200 && qRed(c) < 70 && qBlue(c) < 70; }
bool isYellow(QRgb c) { return qRed(c) > 200 && qGreen(c) > 200 && qBlue(c) < 70; }

} // namespace

class TestWoodcock : public QObject
{
    Q_OBJECT
private slots:
    void axesLieUnderTheAnchors_data();
    void axesLieUnderTheAnchors();
    void ratioPairIsDrawnOnItsPixel_data();
    void ratioPairIsDrawnOnItsPixel();
    void currentPoint_data();
    void currentPoint();
    void oddSizesAndValuesDoNotCrash_data();
    void oddSizesAndValuesDoNotCrash();
};

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
    QCOMPARE(w.scaledPixmap().size(), QSize(size, size)); // the picture is square

    // The axes between the ticks, away from the lines that meet at the origin.
    const double unit = (xEnd.x() - origin.x()) / 5.0;
    for (double v : {2.5, 4.5}) {
        const double xAxis = darkCentre(image, int(origin.x() + v * unit), origin.y() - 4, origin.y() + 4, false);
        const double yAxis = darkCentre(image, int(origin.y() - v * unit), origin.x() - 4, origin.x() + 4, true);
        QVERIFY2(std::abs(xAxis - origin.y()) <= 1.0, qPrintable(QStringLiteral("x axis at row %1").arg(xAxis)));
        QVERIFY2(std::abs(yAxis - origin.x()) <= 1.0, qPrintable(QStringLiteral("y axis at column %1").arg(yAxis)));
    }
    // The ends: the ticks of 5, below the x axis and left of the y axis.
    const double xTick = darkCentre(image, xEnd.y() + 4, xEnd.x() - 4, xEnd.x() + 4, true);
    const double yTick = darkCentre(image, yEnd.x() - 4, yEnd.y() - 4, yEnd.y() + 4, false);
    QVERIFY2(std::abs(xTick - xEnd.x()) <= 1.0, qPrintable(QStringLiteral("x tick of 5 at %1").arg(xTick)));
    QVERIFY2(std::abs(yTick - yEnd.y()) <= 1.0, qPrintable(QStringLiteral("y tick of 5 at %1").arg(yTick)));
}

void TestWoodcock::ratioPairIsDrawnOnItsPixel_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPointF>("ratio");
    QTest::addColumn<QPointF>("pixel");
    QTest::newRow("383") << QSize(383, 383) << QPointF(3.5, 1.0) << QPointF(249, 284);
    QTest::newRow("634") << QSize(634, 634) << QPointF(1.5, 4.0) << QPointF(233.8, 202.6);
    // Between the measured sizes the anchors move with the size: 508 is half way in steps of 125.
    QTest::newRow("508") << QSize(508, 508) << QPointF(0, 0) << QPointF(60 + 125 * 40 / 251.0, 338 + 125 * 223 / 251.0);
    // A wide widget keeps the picture square and leaves room right of it: 6.5 is not clipped.
    QTest::newRow("above 5") << QSize(800, 634) << QPointF(6.5, 5.6) << QPointF(100 + 6.5 * 89.2, 561 - 5.6 * 89.6);
}

void TestWoodcock::ratioPairIsDrawnOnItsPixel()
{
    QFETCH(QSize, size);
    QFETCH(QPointF, ratio);
    QFETCH(QPointF, pixel);
    QWoodcockHelpWidget w(nullptr);
    QRelationshipItemModel model;
    w.setModel(&model);
    w.resize(size);
    w.addPoint(ratio.x(), ratio.y(), QRelationshipItemModel::Square, QColor(0, 255, 0));
    const QImage image = render(w);
    int n = 0;
    const QPointF drawn = colourCentre(image, isGreen, n);
    QVERIFY(n > 0);
    QVERIFY2(near(drawn, pixel), qPrintable(QStringLiteral("drawn at %1,%2").arg(drawn.x()).arg(drawn.y())));
    QVERIFY(near(w.ratioPixel(ratio.x(), ratio.y()), pixel));
    QCOMPARE(model.pointPixelSize(), 5); // the widget's symbol size, whatever the panel had set
}

void TestWoodcock::currentPoint_data()
{
    QTest::addColumn<QVector<QPointF>>("stored");
    QTest::addColumn<QPointF>("current");
    QTest::addColumn<bool>("amongStored");
    QTest::newRow("empty list, default point") << QVector<QPointF>{} << QPointF(2, 3) << false;
    QTest::newRow("not among the classes") << QVector<QPointF>{{1, 1}, {4, 2}} << QPointF(2.5, 0.5) << false;
    QTest::newRow("one of the classes") << QVector<QPointF>{{1, 1}, {4, 2}} << QPointF(4, 2) << true;
    QTest::newRow("a hair away is another point") << QVector<QPointF>{{4, 2 + 1e-12}} << QPointF(4, 2) << false;
}

void TestWoodcock::currentPoint()
{
    QFETCH(QVector<QPointF>, stored);
    QFETCH(QPointF, current);
    QFETCH(bool, amongStored);
    QWoodcockHelpWidget w(nullptr);
    w.resize(383, 383);
    w.addPoint(0.5, 0.5, QRelationshipItemModel::Circle, Qt::blue);
    w.resetPoints(); // the classes go; the current point stays
    for (const QPointF& p : stored)
        w.addPoint(p.x(), p.y(), QRelationshipItemModel::Circle, QColor(0, 0, 255));
    if (current != QPointF(2, 3))
        w.setPoint(current.x(), current.y());
    const QImage image = render(w);
    QCOMPARE(w.currentPointShown(), amongStored);
    int red = 0, yellow = 0;
    const QPointF redAt = colourCentre(image, isRed, red);
    colourCentre(image, isYellow, yellow);
    QCOMPARE(red > 0, !amongStored);
    QCOMPARE(yellow > 0, amongStored); // a class that is the current point is outlined in yellow
    if (!amongStored)
        QVERIFY(near(redAt, w.ratioPixel(current.x(), current.y())));
}

void TestWoodcock::oddSizesAndValuesDoNotCrash_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("1 x 1") << QSize(1, 1) << 2.0 << 3.0;
    QTest::newRow("1 x 400") << QSize(1, 400) << 2.0 << 3.0;
    QTest::newRow("not a number") << QSize(383, 383) << std::numeric_limits<double>::quiet_NaN() << 1.0;
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
    QCOMPARE(render(w).size(), size);
}

QTEST_MAIN(TestWoodcock)
#include "tst_woodcock.moc"

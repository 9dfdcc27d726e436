// Vector algebra and guarded inverse functions of the orientation geometry; the colour map.
#include <MathConstants.h>
#include <RKColormap.h>
#include <TripleDouble.h>
#include <gdfVertex.h>
#include <rkUtils.h>

#include <QtTest>

#include <cmath>
#include <memory>

Q_DECLARE_METATYPE(gdfVertex)

class TestGeometry : public QObject
{
    Q_OBJECT
private slots:
    void products_data();
    void products();
    void guardedInverse_data();
    void guardedInverse();
    void triple();
    void colormap_data();
    void colormap();
    void steppedColormap();
};

void TestGeometry::products_data()
{
    QTest::addColumn<gdfVertex>("a");
    QTest::addColumn<gdfVertex>("b");
    QTest::addColumn<double>("dot");
    QTest::addColumn<gdfVertex>("cross");
    QTest::newRow("x cross y") << gdfVertex(1, 0, 0) << gdfVertex(0, 1, 0) << 0.0 << gdfVertex(0, 0, 1);
    QTest::newRow("y cross x") << gdfVertex(0, 1, 0) << gdfVertex(1, 0, 0) << 0.0 << gdfVertex(0, 0, -1);
    QTest::newRow("general") << gdfVertex(1, 2, 3) << gdfVertex(4, 5, 6) << 32.0 << gdfVertex(-3, 6, -3);
    QTest::newRow("parallel") << gdfVertex(2, 2, 2) << gdfVertex(1, 1, 1) << 6.0 << gdfVertex(0, 0, 0);
}

void TestGeometry::products()
{
    QFETCH(gdfVertex, a);
    QFETCH(gdfVertex, b);
    QFETCH(double, dot);
    QFETCH(gdfVertex, cross);
    QCOMPARE(a * b, dot);
    QCOMPARE(a ^ b, cross);
    QCOMPARE((a ^ b) * a, 0.0); // the cross product is normal to both
    QCOMPARE((a + b) - b, a);
    QCOMPARE((a * 2.0).length(), 2.0 * a.length());
    const gdfVertex u = a.normalize();
    QVERIFY(std::abs(u.length() - 1.0) < 1e-15);
}

void TestGeometry::guardedInverse_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("asin");
    QTest::addColumn<double>("acos");
    const double pi = rkMath::MathConstantsDouble::PI;
    QTest::newRow("one") << 1.0 << pi / 2 << 0.0;
    QTest::newRow("just above one") << 1.0000000000000002 << pi / 2 << 0.0;
    QTest::newRow("just below minus one") << -1.0000001 << -pi / 2 << pi;
    QTest::newRow("half") << 0.5 << pi / 6 << pi / 3;
    QTest::newRow("far out") << 7.0 << pi / 2 << 0.0;
}

void TestGeometry::guardedInverse()
{
    QFETCH(double, x);
    QFETCH(double, asin);
    QFETCH(double, acos);
    QVERIFY(std::abs(rkUtils::asin(x) - asin) < 1e-12);
    QVERIFY(std::abs(rkUtils::acos(x) - acos) < 1e-12);
    QVERIFY(std::isnan(rkUtils::asin(std::nan(""))));
}

void TestGeometry::triple()
{
    rke::rkUtils::rkMath::TripleDouble t(0.6, 0.3, 0.1);
    QCOMPARE(t.getP() + t.getQ() + t.getR(), 1.0);
    rke::rkUtils::rkMath::TripleDouble copy;
    QCOMPARE(copy.getP(), 0.0);
    copy = t;
    QVERIFY(copy == t);
    QCOMPARE(rkMath::MathConstantsDouble::ZERO_TOLERANCE, 1e-6);
}

void TestGeometry::colormap_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("flip");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("minimum is blue") << 0.0 << false << QColor(0, 0, 255);
    QTest::newRow("maximum is red") << 10.0 << false << QColor(255, 0, 0);
    QTest::newRow("middle is green") << 5.0 << false << QColor(0, 255, 0);
    QTest::newRow("quarter is cyan") << 2.5 << false << QColor(0, 255, 255);
    QTest::newRow("below clamps") << -50.0 << false << QColor(0, 0, 255);
    QTest::newRow("above clamps") << 99.0 << false << QColor(255, 0, 0);
    QTest::newRow("flipped minimum is red") << 0.0 << true << QColor(255, 0, 0);
    QTest::newRow("nan") << std::nan("") << false << QColor();
}

void TestGeometry::colormap()
{
    QFETCH(double, value);
    QFETCH(bool, flip);
    QFETCH(QColor, colour);
    RKColormap map;
    map.fill_spectrum_color_list(0.0, 10.0, 0.0, flip);
    QCOMPARE(map.value_to_color(value), colour);
    std::unique_ptr<RKColormap> copy(map.clone());
    map.fill_spectrum_color_list(100.0, 200.0, 0.0, !flip);
    QCOMPARE(copy->value_to_color(value), colour); // a clone keeps its own range
}

void TestGeometry::steppedColormap()
{
    RKColormap map;
    map.fill_spectrum_color_list(0.0, 1.0, 0.25, false);
    QCOMPARE(map.interpolation(), RKColormap::STEPPED);
    QCOMPARE(map.colorList().size(), 4);
    QCOMPARE(map.value_to_color(0.1), map.value_to_color(0.2)); // one class, one colour
    QVERIFY(map.value_to_color(0.1) != map.value_to_color(0.3));
    QCOMPARE(map.value_to_color(1.0), QColor(255, 0, 0));
    map.fill_spectrum_color_list(5.0, 5.0, 1.0, false); // empty range: continuous, no crash
    QVERIFY(map.value_to_color(5.0).isValid());
    map.fill_spectrum_color_list(0.0, 1.0, std::nan(""), false);
    QCOMPARE(map.interpolation(), RKColormap::INTERPOLATED);
}

QTEST_GUILESS_MAIN(TestGeometry)
#include "tst_geometry.moc"

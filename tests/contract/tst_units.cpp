// Units: conversions of every unit, display switching as a user does it, node units, printing,
// and how columns of the data tree use them.
#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <UnitManager.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QTemporaryDir>

#include <cmath>

using namespace rkBase;

class TestUnits : public QObject
{
    Q_OBJECT
private slots:
    void conversions_data();
    void conversions();
    void roundTripsEveryUnit();
    void unknownCategory();
    void switchingTheDisplayUnit();
    void nodeUnits();
    void printing();
    void properties();
    void columnsFollowTheDisplayUnit();
};

void TestUnits::conversions_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<double>("model");
    QTest::addColumn<double>("display");
    QTest::addColumn<QString>("tag");
    QTest::newRow("degrees") << "Orientation" << "degrees" << 90.0 << 90.0 << QString::fromUtf8("\u00b0");
    QTest::newRow("radians") << "Orientation" << "radians" << 180.0 << M_PI << "rad";
    QTest::newRow("metres") << "Elevation" << "m" << 100.0 << 100.0 << "m";
    QTest::newRow("feet") << "Elevation" << "ft" << 0.3048 << 1.0 << "ft";
    QTest::newRow("fraction as percent") << "Fraction" << "percent" << 0.25 << 25.0 << "%";
    QTest::newRow("percent as fraction") << "Percent" << "fraction" << 25.0 << 0.25 << "";
    QTest::newRow("kilometres") << "Dimension" << "km" << 1500.0 << 1.5 << "km";
    QTest::newRow("dimensionless") << "Dimensionless" << "dimensionless" << 7.0 << 7.0 << "";
}

void TestUnits::conversions()
{
    QFETCH(QString, category);
    QFETCH(QString, unit);
    QFETCH(double, model);
    QFETCH(double, display);
    QFETCH(QString, tag);
    UnitRegistry registry;
    boost::shared_ptr<UnitManager> m = registry.getCategory(category.toStdString());
    QVERIFY(m);
    const int key = m->getUnitKey(unit);
    QVERIFY(key >= 0);
    QVERIFY(registry.displayUnitManager()->setDisplayUnit(category.toStdString(), key));
    QCOMPARE(m->displayUnit(), key);
    QVERIFY(qFuzzyCompare(m->convertModelToDisplay(model), display));
    QVERIFY(qFuzzyCompare(m->convertDisplayToModel(display), model));
    QCOMPARE(m->getDisplayUnitTag(), tag);
    QVERIFY(std::isnan(m->convertModelToDisplay(std::nan(""))));
    QVERIFY(std::isinf(m->convertDisplayToModel(INFINITY)));
}

void TestUnits::roundTripsEveryUnit()
{
    UnitRegistry registry;
    for (const QString& category : registry.displayUnitManager()->categories()) {
        boost::shared_ptr<UnitManager> m = registry.getCategory(category.toStdString());
        QVERIFY(m);
        QCOMPARE(QString::fromStdString(m->category()), category);
        for (int key = 0; key < m->unitCount(); ++key) {
            for (double v : {-1234.5, 0.0, 1e-9, 3.75, 1e12}) {
                const double back = m->convertToModel(m->convertFromModel(v, key), key);
                QVERIFY2(std::abs(back - v) <= 1e-12 * std::max(1.0, std::abs(v)), qPrintable(category + m->getUnitName(key)));
            }
            QCOMPARE(m->getUnitKey(m->getUnitName(key)), key);
        }
        const std::string back = registry.displayUnitManager()->getCategoryFromDisplayName(
            registry.displayUnitManager()->getCategoryDisplayName(category.toStdString()));
        QCOMPARE(QString::fromStdString(back), category);
    }
}

void TestUnits::unknownCategory()
{
    UnitRegistry registry;
    QVERIFY(!registry.getCategory("Temperature"));
    QVERIFY(!registry.displayUnitManager()->setDisplayUnit("Temperature", 1));
    QVERIFY(registry.displayUnitManager()->getCategoryFromDisplayName(QStringLiteral("Nothing")).empty());
    QCOMPARE(registry.getOrientationUnitManager()->getUnitKey(QStringLiteral("gradians")), -1);
    QCOMPARE(registry.getOrientationUnitManager()->convertToModel(5.0, 42), 5.0); // unknown key: no conversion
}

void TestUnits::switchingTheDisplayUnit()
{
    UnitRegistry registry;
    QSignalSpy spy(registry.displayUnitManager(), SIGNAL(displayChanged(QString)));
    DisplayUnitManager* d = registry.displayUnitManager();
    QVERIFY(d->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1));
    QVERIFY(d->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1)); // no change, no signal
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("Elevation"));
    QCOMPARE(registry.getCategory(UnitRegistry::CATEGORY_ELEVATION)->getDisplayUnitName(), QStringLiteral("feet"));
    QCOMPARE(registry.getCategory(UnitRegistry::CATEGORY_DIMENSION)->getDisplayUnitTag(), QStringLiteral("m"));
}

void TestUnits::nodeUnits()
{
    UnitRegistry registry;
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    root.setRegistry(&registry);
    auto* depth = new MatrixData(QStringLiteral("TVD"), 2, 1, QVariant::Double, true);
    root.appendChild(depth, false);
    depth->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
    QVERIFY(depth->unitManager());
    QCOMPARE(depth->unitCategory(), QStringLiteral("Elevation"));
    QCOMPARE(depth->nodeUnitKey(), -1);
    QCOMPARE(depth->convertNodeUnit(10.0), 10.0);
    depth->setNodeUnitKey(depth->unitManager()->getUnitKey(QStringLiteral("ft")));
    QCOMPARE(depth->nodeUnitTag(), QStringLiteral("ft"));
    QVERIFY(qFuzzyCompare(depth->convertNodeUnit(1000.0), 304.8));
    MatrixData unitless(QStringLiteral("n"), 1, 1, QVariant::Double, true);
    QVERIFY(!unitless.unitManager());
    QCOMPARE(unitless.convertModelToDisplay(3.0), 3.0);
    QCOMPARE(unitless.displayUnitTag(), QString());
}

void TestUnits::printing()
{
    UnitRegistry registry;
    boost::shared_ptr<UnitManager> o = registry.getOrientationUnitManager();
    QString text;
    o->printNumber(text, 45.0);
    QCOMPARE(text, QStringLiteral("45.00"));
    o->setPrecision(1);
    registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ORIENTATION, 1);
    o->printNumber(text, 180.0);
    QCOMPARE(text, QStringLiteral("3.1"));
    QCOMPARE(registry.printNumber(2.0, QStringLiteral("Orientation")), QStringLiteral("2.0"));
    QCOMPARE(registry.printNumber(2.0, QStringLiteral("nothing")), QStringLiteral("2.000"));
}

void TestUnits::properties()
{
    UnitRegistry registry;
    QSignalSpy spy(&registry, SIGNAL(property_changed(std::string, int)));
    QVERIFY(registry.find_property("Porosity") == registry.properties_end());
    registry.setProperty("Porosity", 4);
    registry.setProperty("Porosity", 4);
    QCOMPARE(spy.count(), 1);
    QVERIFY(registry.find_property("Porosity") != registry.properties_end());
    QCOMPARE(registry.find_property("Porosity")->second, 4);
    QCOMPARE(registry.printNumber(0.123456, QStringLiteral("Porosity")), QStringLiteral("0.1235"));
}

void TestUnits::columnsFollowTheDisplayUnit()
{
    UnitRegistry registry;
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    root.setRegistry(&registry);
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    root.appendChild(well, true);
    auto* z = new MatrixData(QStringLiteral("Z"), 2, 1, QVariant::Double, true);
    auto* angle = new MatrixData(QStringLiteral("bearing"), 2, 1, QVariant::Double, true);
    well->appendChild(z, false);
    well->appendChild(angle, false);
    z->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
    angle->setUnitManager(QString::fromStdString(UnitRegistry::CATEGORY_ORIENTATION));
    QVERIFY(root.hasOrientationData()); // by category, whatever the name
    z->setValue(0, 0, 3.048);
    z->setValue(1, 0, 30.48);
    angle->setValue(0, 0, 90.0);
    registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    QVERIFY(qFuzzyCompare(z->toDisplayDouble(z->value(0, 0)), 10.0));
    QCOMPARE(z->displayUnitTag(), QStringLiteral("ft"));
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("u.csv"));
    auto readBack = [&file] {
        QFile f(file);
        f.open(QIODevice::ReadOnly);
        return QString::fromUtf8(f.readAll());
    };
    QVERIFY(root.writeCSV(file, nullptr, false, true, false, true, nullptr));
    QCOMPARE(readBack(), QString::fromUtf8("Z [ft],bearing [\u00b0]\r\n10,90\r\n100,\r\n"));
    QVERIFY(root.writeCSV(file, nullptr, true, false, false, true, nullptr)); // field data: as stored
    QCOMPARE(readBack(), QStringLiteral("Z,bearing\r\n3.048,90\r\n30.48,\r\n"));

    // A stream keeps the category and the reader finds the manager through its own registry.
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    z->putDataOnStream(out, false);
    auto* copy = new MatrixData(QStringLiteral("copy"), 1, 1, QVariant::Double, true);
    well->appendChild(copy, false);
    QDataStream in(bytes);
    QVERIFY(copy->getDataFromStream(in));
    QCOMPARE(copy->unitManager(), z->unitManager());
}

QTEST_GUILESS_MAIN(TestUnits)
#include "tst_units.moc"

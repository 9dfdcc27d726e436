// The min/max table: summaries in display units, the names of its rows, field-data editing, and
// moving a column to another unit category.
#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <QVertexMinMaxItemModel.h>
#include <QVertexMinMaxModelTableView.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <cmath>

using namespace rkBase;

class TestMinMaxModel : public QObject
{
    Q_OBJECT
private slots:
    void summaries_data();
    void summaries();
    void rowNamesFollowTheRoot();
    void fieldDataEditing_data();
    void fieldDataEditing();
    void unitCategory();
};

namespace {
struct Sheet {
    UnitRegistry registry;
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    MatrixData* depth = nullptr;
    MatrixData* name = nullptr;
    Sheet()
    {
        root.setRegistry(&registry);
        auto* g = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
        root.appendChild(g, true);
        depth = new MatrixData(QStringLiteral("depth"), 4, 1, QVariant::Double, true);
        name = new MatrixData(QStringLiteral("name"), 4, 1, QVariant::String, true);
        g->appendChild(depth, false);
        g->appendChild(name, false);
        depth->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
        const QVariantList v{304.8, std::nan(""), 609.6, QVariant()};
        for (int r = 0; r < 4; ++r) {
            depth->setValue(r, 0, v[r]);
            name->setValue(r, 0, QStringLiteral("n%1").arg(r));
        }
    }
};
} // namespace

void TestMinMaxModel::summaries_data()
{
    QTest::addColumn<int>("displayUnit");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("metres") << 0 << QStringList{"304.80", "609.60", "457.20"};
    QTest::newRow("feet") << 1 << QStringList{"1000.00", "2000.00", "1500.00"};
}

void TestMinMaxModel::summaries()
{
    QFETCH(int, displayUnit);
    QFETCH(QStringList, texts);
    Sheet s;
    s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, displayUnit);
    QVertexMinMaxItemModel model(nullptr, &s.root, 1, false);
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.columnCount(), 2);
    for (int r = 0; r < 3; ++r)
        QCOMPARE(model.data(model.index(r, 0)).toString(), texts[r]);
    QCOMPARE(model.data(model.index(0, 1)).toString(), QStringLiteral("-----")); // no summary of text
    QVERIFY(model.data(model.index(0, 0), Qt::BackgroundRole).value<QColor>().isValid());
    QVERIFY(!(model.flags(model.index(0, 0)) & Qt::ItemIsEditable)); // not field-data mode
    QVERIFY(!model.setData(model.index(0, 0), 1.0));
}

void TestMinMaxModel::rowNamesFollowTheRoot()
{
    Sheet s;
    QVertexMinMaxItemModel model(nullptr, &s.root, 1, false);
    QCOMPARE(model.headerData(0, Qt::Vertical).toString(), QStringLiteral("Minimum"));
    s.root.setMinName(QStringLiteral("Sand"));
    s.root.setMeanName(QStringLiteral("Carbonate"));
    QCOMPARE(model.headerData(0, Qt::Vertical).toString(), QStringLiteral("Sand"));
    QCOMPARE(model.headerData(2, Qt::Vertical).toString(), QStringLiteral("Carbonate"));
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("2: name"));
}

void TestMinMaxModel::fieldDataEditing_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("minimum") << 0 << QVariant(QStringLiteral("12.5")) << true;
    QTest::newRow("mean") << 2 << QVariant(7) << true;
    QTest::newRow("not a number") << 1 << QVariant(QStringLiteral("deep")) << false;
}

void TestMinMaxModel::fieldDataEditing()
{
    QFETCH(int, row);
    QFETCH(QVariant, value);
    QFETCH(bool, accepted);
    Sheet s;
    QVertexMinMaxItemModel model(nullptr, &s.root, 1, true);
    QSignalSpy modified(&model, SIGNAL(dataModified(bool)));
    QVERIFY(model.flags(model.index(row, 0)) & Qt::ItemIsEditable);
    QVERIFY(!(model.flags(model.index(row, 1)) & Qt::ItemIsEditable));
    QCOMPARE(model.setData(model.index(row, 0), value), accepted);
    QCOMPARE(modified.count(), accepted ? 1 : 0);
    if (accepted) {
        const QVariant stored = row == 0 ? s.depth->minValue() : row == 1 ? s.depth->maxValue() : s.depth->meanValue();
        QCOMPARE(stored.toDouble(), value.toDouble()); // field data is stored as typed
    }
}

void TestMinMaxModel::unitCategory()
{
    Sheet s;
    QVertexMinMaxItemModel model(nullptr, &s.root, 1, false);
    QSignalSpy changed(&model, SIGNAL(unitCategoryChanged()));
    QVERIFY(!model.setColumnUnitCategory(0, QStringLiteral("Temperature")));
    QVERIFY(model.setColumnUnitCategory(0, QStringLiteral("Orientation")));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(s.depth->unitCategory(), QStringLiteral("Orientation"));
    QVERIFY(s.root.hasOrientationData());
    QVertexMinMaxModelTableView view(&s.registry, nullptr);
    view.setModel(&model);
    view.updateView();
    QCOMPARE(view.registry(), &s.registry);
}

QTEST_MAIN(TestMinMaxModel)
#include "tst_qvertexminmaxitemmodel.moc"

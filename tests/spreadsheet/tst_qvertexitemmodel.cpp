// The spreadsheet's cell model: row mapping, roles, unit conversion, edits with their undo
// records, and every refusal leaving the cell and the undo list as they were.
#include <MatrixData.h>
#include <TreeBytes.h>
#include <MatrixDataRestore.h>
#include <QVertexItemModel.h>
#include <UnitManager.h>
#include <UnitRegistry.h>
#include <DisplayUnitManager.h>

#include <QtTest>

#include <QMimeData>
#include <QSettings>
#include <memory>

using namespace rkBase;

namespace {
struct Sheet {
    UnitRegistry registry;
    MatrixData root{QStringLiteral("Data Root"), -1, -1, QVariant::String, true};
    MatrixData* depth = nullptr; // Double, elevation
    MatrixData* count = nullptr; // Int
    MatrixData* name = nullptr;  // String
    MatrixData* flag = nullptr;  // Bool
    MatrixData* colour = nullptr;
    MatrixData* lith = nullptr;  // KeySequence with a lookup

    explicit Sheet(int rows = 10)
    {
        root.setRegistry(&registry);
        auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
        root.appendChild(well, true);
        auto add = [&](const QString& n, QVariant::Type t) {
            auto* c = new MatrixData(n, rows, 1, t, true);
            well->appendChild(c, false);
            return c;
        };
        depth = add(QStringLiteral("Depth"), QVariant::Double);
        depth->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
        count = add(QStringLiteral("Count"), QVariant::Int);
        name = add(QStringLiteral("Label"), QVariant::String);
        flag = add(QStringLiteral("Flag"), QVariant::Bool);
        colour = add(QStringLiteral("Colour"), QVariant::Color);
        lith = add(QStringLiteral("Lith"), QVariant::KeySequence);
        lith->addLookupValue(1, QStringLiteral("Sand"));
        lith->addLookupValue(2, QStringLiteral("Shale"));
        for (int r = 0; r < rows; ++r) {
            depth->setValue(r, 0, 1000.0 + r);
            count->setValue(r, 0, r);
            name->setValue(r, 0, QStringLiteral("n%1").arg(r));
            flag->setValue(r, 0, r % 2 == 0);
            colour->setValue(r, 0, QColor(r, 0, 0));
            lith->setValue(r, 0, 1 + r % 2);
        }
    }
};

// The cells of every column, typed, as undo must give them back; the minimum and maximum that an
// edit recomputes are left out.
QByteArray cellBytes(const MatrixData& root)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const MatrixData* c : root.leafs())
        for (int r = 0; r < c->rowCount(); ++r)
            for (int k = 0; k < c->columnCount(); ++k)
                out << c->value(r, k);
    return bytes;
}
} // namespace

class TestVertexItemModel : public QObject
{
    Q_OBJECT
private slots:
    void rowMapping_data();
    void rowMapping();
    void verticalHeader_data();
    void verticalHeader();
    void roles();
    void displayUnitsAndOwnUnit();
    void edits_data();
    void edits();
    void refusalsTouchNothing_data();
    void refusalsTouchNothing();
    void checkStates();
    void undoGivesBackStoredValues_data();
    void undoGivesBackStoredValues();
    void fieldDataIsStoredAsTyped();
    void settingsRoundTrip();
    void unitSwitchResetsTheModel();
};

void TestVertexItemModel::rowMapping_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QList<int>>("expected"); // stored row of model rows 0, 1, 2
    QTest::addColumn<int>("rowCount");
    QTest::newRow("all") << -1 << QList<int>{} << QList<int>{0, 1, 2} << 10;
    QTest::newRow("step 3") << 3 << QList<int>{} << QList<int>{0, 2, 5} << 4;
    QTest::newRow("list") << 1 << QList<int>{7, 3, 5} << QList<int>{7, 3, 5} << 3;
    QTest::newRow("stepped list, short") << 2 << QList<int>{9, 8, 4} << QList<int>{9, 4, 4} << 2;
}

void TestVertexItemModel::rowMapping()
{
    QFETCH(int, step);
    QFETCH(QList<int>, rows);
    QFETCH(QList<int>, expected);
    QFETCH(int, rowCount);
    Sheet s;
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    model.updateModel(step, std::vector<int>(rows.begin(), rows.end()));
    QCOMPARE(model.rowCount(), rowCount);
    QCOMPARE(model.columnCount(), 6);
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(model.row(model.index(i, 0)), expected[i]);
}

void TestVertexItemModel::verticalHeader_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("all") << -1 << QList<int>{} << QStringList{"1", "2", "3"};
    QTest::newRow("step 3") << 3 << QList<int>{} << QStringList{"1", "3", "6"};
    QTest::newRow("list") << 1 << QList<int>{4, 6, 8} << QStringList{"5", "7", "9"};
    QTest::newRow("stepped list past its end") << 2 << QList<int>{4, 6, 8} << QStringList{"5", "9", "11"};
}

void TestVertexItemModel::verticalHeader()
{
    QFETCH(int, step);
    QFETCH(QList<int>, rows);
    QFETCH(QStringList, labels);
    Sheet s;
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    model.updateModel(step, std::vector<int>(rows.begin(), rows.end()));
    for (int i = 0; i < labels.size(); ++i)
        QCOMPARE(model.headerData(i, Qt::Vertical).toString(), labels[i]);
}

void TestVertexItemModel::roles()
{
    Sheet s;
    s.count->setValue(3, 0, QVariant());
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    const QModelIndex depth = model.index(2, 0), count = model.index(3, 1), flag = model.index(2, 3),
                      colour = model.index(4, 4), lith = model.index(1, 5);
    QCOMPARE(model.data(depth).toString(), QStringLiteral("1002.00"));
    QCOMPARE(model.data(depth, Qt::UserRole), QVariant(1002.0));
    QCOMPARE(model.data(depth, Qt::TextAlignmentRole), QVariant(130));
    QVERIFY(!model.data(count).isValid());
    QCOMPARE(model.data(count, Qt::ForegroundRole).value<QColor>(), QColor(230, 0, 0));
    QCOMPARE(model.data(depth, Qt::ForegroundRole).value<QColor>(), QColor(0, 0, 0));
    QVERIFY(!model.data(flag).isValid());
    QCOMPARE(model.data(flag, Qt::CheckStateRole), QVariant(2));
    QCOMPARE(model.data(flag, Qt::UserRole), QVariant(QStringLiteral("true")));
    QVERIFY(!model.data(model.index(1, 3), Qt::UserRole).isValid()); // false sorts as blank
    QCOMPARE(model.data(colour, Qt::BackgroundRole).value<QColor>(), QColor(4, 0, 0));
    QCOMPARE(model.data(depth, Qt::BackgroundRole).value<QColor>(), QColor(255, 255, 255));
    QCOMPARE(model.data(lith).toString(), QStringLiteral("Shale"));
    QVERIFY(!model.data(depth, Qt::UserRole + 1).isValid());
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("1: Depth"));
    QVERIFY(model.flags(flag) & Qt::ItemIsUserCheckable);
    QVERIFY(model.flags(depth) & Qt::ItemIsEditable);
    QVERIFY(model.flags(depth) & Qt::ItemIsDragEnabled);
    s.depth->setNodeEditable(false);
    QVERIFY(!(model.flags(depth) & Qt::ItemIsEditable));
    QCOMPARE(model.data(depth, Qt::BackgroundRole).value<QColor>(), QColor(240, 240, 240));
}

void TestVertexItemModel::displayUnitsAndOwnUnit()
{
    Sheet s;
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    s.depth->setValue(0, 0, 304.8);
    s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1); // feet
    QCOMPARE(model.data(model.index(0, 0)).toString(), QStringLiteral("1000.00"));
    model.showUnitTagInCells(true);
    QCOMPARE(model.data(model.index(0, 0)).toString(), QStringLiteral("1000.00 ft"));
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Depth"));
    model.showUnitTagInCells(false);
    // A column in a unit of its own shows what it stores, unconverted.
    s.depth->setNodeUnitKey(1);
    QCOMPARE(model.data(model.index(0, 0)).toString(), QStringLiteral("304.80"));
    model.convertNodeUnit(model.index(0, 0));
    QCOMPARE(s.depth->nodeUnitKey(), -1);
    QVERIFY(qFuzzyCompare(s.depth->toDouble(0, 0), 304.8 * 0.3048));
}

void TestVertexItemModel::edits_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("undoName");
    QTest::newRow("number") << 0 << QVariant(QStringLiteral("12.5")) << QVariant(12.5)
                            << QStringLiteral("Edit Cell: value=1001.00, row=2, column=Depth");
    QTest::newRow("the digit zero") << 0 << QVariant(QStringLiteral("0")) << QVariant(0.0)
                                    << QStringLiteral("Edit Cell: value=1001.00, row=2, column=Depth");
    QTest::newRow("one letter reads as zero") << 0 << QVariant(QStringLiteral("x")) << QVariant(0.0)
                                              << QStringLiteral("Edit Cell: value=1001.00, row=2, column=Depth");
    QTest::newRow("integer") << 1 << QVariant(QStringLiteral("42")) << QVariant(42)
                             << QStringLiteral("Edit Cell: value=1, row=2, column=Count");
    QTest::newRow("text") << 2 << QVariant(QStringLiteral("Top")) << QVariant(QStringLiteral("Top"))
                          << QStringLiteral("Edit Cell: value=n1, row=2, column=Label");
    QTest::newRow("clear") << 2 << QVariant(QString()) << QVariant()
                           << QStringLiteral("Clear Cell: value=n1, row=2, column=Label");
    QTest::newRow("colour") << 4 << QVariant(QColor(Qt::green)) << QVariant(QColor(Qt::green))
                            << QStringLiteral("Edit Color Cell: row=2, column=Colour");
    QTest::newRow("coded text") << 5 << QVariant(QStringLiteral("Sand")) << QVariant(QStringLiteral("Sand"))
                                << QStringLiteral("Edit Cell: value=Shale, row=2, column=Lith");
}

void TestVertexItemModel::edits()
{
    QFETCH(int, column);
    QFETCH(QVariant, value);
    QFETCH(QVariant, stored);
    QFETCH(QString, undoName);
    Sheet s;
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    model.enableUndoRedo(true);
    QSignalSpy modified(&model, SIGNAL(dataModified(bool)));
    const QModelIndex cell = model.index(1, column);
    MatrixData* node = model.getNode(column);
    QVERIFY(model.setData(cell, value));
    QCOMPARE(node->value(1, 0), stored);
    QCOMPARE(modified.count(), 1);
    QVERIFY(model.modified());
    QCOMPARE(s.root.sizeUndoActions(), 1);
    QCOMPARE(s.root.undoAction(0)->name(), undoName);
    QCOMPARE(s.root.undoAction(0)->parent(), node);
}

void TestVertexItemModel::refusalsTouchNothing_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("role");
    QTest::newRow("two letters in numbers") << 0 << QVariant(QStringLiteral("ab")) << int(Qt::EditRole);
    QTest::newRow("two letters in integers") << 1 << QVariant(QStringLiteral("ab")) << int(Qt::EditRole);
    QTest::newRow("same at shown precision") << 0 << QVariant(QStringLiteral("1001.001")) << int(Qt::EditRole);
    QTest::newRow("same value") << 1 << QVariant(QStringLiteral("1")) << int(Qt::EditRole);
    QTest::newRow("same lookup text") << 5 << QVariant(QStringLiteral("Shale")) << int(Qt::EditRole);
    QTest::newRow("check state on text") << 2 << QVariant(2) << int(Qt::CheckStateRole);
    QTest::newRow("another role") << 2 << QVariant(QStringLiteral("x")) << int(Qt::ToolTipRole);
    QTest::newRow("past the last column") << 9 << QVariant(QStringLiteral("x")) << int(Qt::EditRole);
}

void TestVertexItemModel::refusalsTouchNothing()
{
    QFETCH(int, column);
    QFETCH(QVariant, value);
    QFETCH(int, role);
    Sheet s;
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    model.enableUndoRedo(true);
    const QByteArray before = treeBytes(s.root);
    QVERIFY(!model.setData(model.index(1, column), value, role));
    QCOMPARE(treeBytes(s.root), before);
    QCOMPARE(s.root.sizeUndoActions(), 0);
    QVERIFY(!model.modified());
}

void TestVertexItemModel::checkStates()
{
    Sheet s;
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    model.enableUndoRedo(true);
    QVERIFY(model.setData(model.index(1, 3), int(Qt::Checked), Qt::CheckStateRole));
    QCOMPARE(s.flag->value(1, 0), QVariant(true));
    QCOMPARE(s.root.undoAction(0)->name(), QStringLiteral("Check State Changed: row=2, column=Flag"));
    s.flag->setCheckStateRoleExclusive(true);
    QVERIFY(!model.setData(model.index(0, 3), int(Qt::Checked), Qt::CheckStateRole)); // already ticked
    QVERIFY(model.setData(model.index(3, 3), int(Qt::Checked), Qt::CheckStateRole));
    for (int r = 0; r < 10; ++r)
        QCOMPARE(s.flag->value(r, 0).toBool(), r == 3); // exclusive: one tick in the column
    s.name->setCheckStateActive(true);
    QVERIFY(model.flags(model.index(0, 2)) & Qt::ItemIsUserCheckable);
    QVERIFY(model.setData(model.index(2, 2), int(Qt::Checked), Qt::CheckStateRole));
    QCOMPARE(s.name->value(2, 1), QVariant(true));
    QCOMPARE(s.name->value(2, 0).toString(), QStringLiteral("n2"));
    QCOMPARE(model.data(model.index(2, 2), Qt::CheckStateRole), QVariant(2));
}

void TestVertexItemModel::undoGivesBackStoredValues_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("records");
    for (const char* op : {"edit", "clear by edit", "clear", "replace", "paste", "fill", "modify", "interpolate",
                           "exclusive tick", "tick beside text"})
        QTest::newRow(op) << QString::fromLatin1(op) << 1;
}

void TestVertexItemModel::undoGivesBackStoredValues()
{
    QFETCH(QString, operation);
    QFETCH(int, records);
    Sheet s(5);
    // Stored in metres with more digits than shown; shown in feet at 2 decimals.
    s.registry.getCategory(UnitRegistry::CATEGORY_ELEVATION)->setPrecision(2);
    s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    for (int r = 0; r < 5; ++r)
        s.depth->setValue(r, 0, 1000.0 + r + 0.123456789 * (r + 1));
    s.flag->setCheckStateRoleExclusive(operation == QLatin1String("exclusive tick"));
    s.flag->setValue(1, 0, false);
    s.name->setCheckStateActive(true);
    s.name->setValue(3, 1, false);
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    model.enableUndoRedo(true);
    const QModelIndex cell = model.index(1, 0);
    const QByteArray before = cellBytes(s.root);
    if (operation == QLatin1String("edit")) {
        QVERIFY(model.setData(cell, QStringLiteral("12.5")));
    } else if (operation == QLatin1String("clear by edit")) {
        QVERIFY(model.setData(cell, QString()));
    } else if (operation == QLatin1String("clear")) {
        QVERIFY(model.clearData({cell}, QVariant()));
    } else if (operation == QLatin1String("replace")) {
        QVERIFY(model.clearData({cell}, QVariant(7.0)));
    } else if (operation == QLatin1String("paste")) {
        QMimeData text;
        text.setText(QStringLiteral("5\n6"));
        model.setMimeData(text, 1, 0, {1, 2});
    } else if (operation == QLatin1String("fill")) {
        delete model.mimeData({model.index(0, 0)});
        QMimeData data;
        data.setData(QStringLiteral("4drook/dragDrop.list"), QByteArray("\0\0\0\1", 4));
        QVERIFY(model.dropMimeData(&data, Qt::CopyAction, 3, 0, model.index(0, 0)));
    } else if (operation == QLatin1String("modify")) {
        model.modifySelectedCells({cell, model.index(2, 0)}, QStringLiteral("3"), QModifyCellsDialog::ShiftByValue, -1);
    } else if (operation == QLatin1String("interpolate")) {
        model.interpolate({model.index(0, 0), model.index(4, 0)});
    } else if (operation == QLatin1String("exclusive tick")) {
        QVERIFY(model.setData(model.index(1, 3), int(Qt::Checked), Qt::CheckStateRole));
    } else if (operation == QLatin1String("tick beside text")) {
        QVERIFY(model.setData(model.index(3, 2), int(Qt::Checked), Qt::CheckStateRole));
    }
    QVERIFY(cellBytes(s.root) != before);
    QCOMPARE(s.root.sizeUndoActions(), records);
    while (s.root.undoLastAction()) {
    }
    QCOMPARE(cellBytes(s.root), before);
}

void TestVertexItemModel::fieldDataIsStoredAsTyped()
{
    Sheet s;
    s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    QVertexItemModel typed(nullptr, &s.root, -1, true, nullptr);
    QVERIFY(typed.setData(typed.index(0, 0), QStringLiteral("10")));
    QCOMPARE(s.depth->toDouble(0, 0), 10.0);
    QVertexItemModel converted(nullptr, &s.root, -1, false, nullptr);
    QVERIFY(converted.setData(converted.index(1, 0), QStringLiteral("10")));
    QVERIFY(qFuzzyCompare(s.depth->toDouble(1, 0), 3.048));
}

void TestVertexItemModel::settingsRoundTrip()
{
    Sheet s(3);
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    s.flag->setCheckStateRoleExclusive(true);
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("rkBaseToolsTest"), QStringLiteral("model"));
    settings.clear();
    QVERIFY(!QVertexItemModel::readSettings(QStringLiteral("sheet"), &settings));
    model.writeSettings(QStringLiteral("sheet"), &settings);
    std::unique_ptr<MatrixData> tree(QVertexItemModel::readSettings(QStringLiteral("sheet"), &settings));
    QVERIFY(tree);
    QCOMPARE(tree->child(0)->name(), QStringLiteral("DataRoot"));
    QCOMPARE(tree->leafs().size(), 6);
    MatrixData* flag = tree->getNodeFromName(QStringLiteral("Flag"));
    QVERIFY(flag->checkStateRoleExclusive());
    QCOMPARE(flag->cellType(), QVariant::Bool);
    QCOMPARE(tree->getNodeFromName(QStringLiteral("Depth"))->value(2, 0), QVariant(1002.0));
    QCOMPARE(tree->getNodeFromName(QStringLiteral("Label"))->value(1, 0), QVariant(QStringLiteral("n1")));
    settings.clear();
}

void TestVertexItemModel::unitSwitchResetsTheModel()
{
    Sheet s;
    QVertexItemModel model(nullptr, &s.root, -1, false, nullptr);
    QSignalSpy reset(&model, SIGNAL(modelReset()));
    s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ORIENTATION, 1); // no such column
    QCOMPARE(reset.count(), 0);
    s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    QCOMPARE(reset.count(), 1);
    s.registry.setProperty("Depth", 1);
    QCOMPARE(reset.count(), 2);
}

QTEST_MAIN(TestVertexItemModel)
#include "tst_qvertexitemmodel.moc"

// The attribute tree: ticks and their propagation, renaming, colours, and deleting columns
// with the rules that protect coordinates and strike columns.
#include <MatrixData.h>
#include <MatrixDataRestore.h>
#include <MatrixDataStrike.h>
#include <QAttributeTreeView.h>
#include <QTreeItemModel.h>

#include <QtTest>

#include <QMenu>

using namespace rkBase;

namespace {
struct Tree {
    MatrixData root{QStringLiteral("Data Root"), -1, -1, QVariant::String, true};
    MatrixData* well = nullptr;
    MatrixData* dip = nullptr;
    MatrixData* azimuth = nullptr;
    MatrixData* strike = nullptr;
    MatrixData* x = nullptr;
    MatrixData* hidden = nullptr;

    Tree()
    {
        well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
        root.appendChild(well, true);
        auto add = [this](const QString& n) {
            auto* c = new MatrixData(n, 4, 1, QVariant::Double, true);
            for (int r = 0; r < 4; ++r)
                c->setValue(r, 0, 10.0 * r);
            well->appendChild(c, false);
            return c;
        };
        dip = add(QStringLiteral("dip"));
        azimuth = add(QStringLiteral("azimuth"));
        x = add(QStringLiteral("X(East)"));
        x->setVertex(true);
        strike = new MatrixDataStrike(QStringLiteral("strike"), azimuth, dip);
        well->appendChild(strike, false);
        hidden = add(QStringLiteral("bookkeeping"));
        hidden->setVisibleToUser(false);
    }
};
} // namespace

class TestTreeItemModel : public QObject
{
    Q_OBJECT
private slots:
    void structureAndText();
    void ticks();
    void nothingToTick();
    void rename();
    void colour();
    void deleting_data();
    void deleting();
    void deleteIsUndoable();
    void insertNewRows();
    void viewSelection();
};

void TestTreeItemModel::structureAndText()
{
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    QCOMPARE(model.rowCount(), 1);
    const QModelIndex well = model.index(0, 0);
    QCOMPARE(model.rowCount(well), 4); // the bookkeeping column is not listed
    QCOMPARE(model.data(well).toString(), QStringLiteral("Well (5)"));
    const QModelIndex dip = model.index(0, 0, well);
    QCOMPARE(model.data(dip).toString(), QStringLiteral("dip (4)"));
    QCOMPARE(model.parent(dip), well);
    QVERIFY(!model.parent(well).isValid());
    QCOMPARE(model.indexFromNode(t.dip), dip);
    QVERIFY(!model.indexFromNode(&t.root).isValid());
    QCOMPARE(model.nodeFromIndex(QModelIndex()), &t.root);
    QCOMPARE(model.data(dip, Qt::ToolTipRole).toString(), QStringLiteral("dip"));
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Tree View"));
    QVERIFY(model.flags(dip) & Qt::ItemIsEditable);
    QVERIFY(model.flags(dip) & Qt::ItemIsUserCheckable);
    QVERIFY(!model.index(9, 0, well).isValid());
}

void TestTreeItemModel::ticks()
{
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    QSignalSpy selected(&model, SIGNAL(treeItemSelected(QModelIndex)));
    const QModelIndex well = model.index(0, 0);
    const QModelIndex dip = model.index(0, 0, well);
    QCOMPARE(model.data(well, Qt::CheckStateRole), QVariant(2));
    QVERIFY(model.setData(dip, 0, Qt::CheckStateRole));
    QCOMPARE(model.data(dip, Qt::CheckStateRole), QVariant(0));
    QCOMPARE(model.data(well, Qt::CheckStateRole), QVariant(1)); // mixed
    QVERIFY(model.setData(well, 0, Qt::CheckStateRole));
    QCOMPARE(model.data(well, Qt::CheckStateRole), QVariant(0));
    for (MatrixData* c : t.well->children())
        QVERIFY(!c->isSelected());
    QCOMPARE(t.root.numberOfSelectedItems(), 0);
    t.azimuth->setSelected(true, false);
    QCOMPARE(model.data(model.index(1, 0, well), Qt::CheckStateRole), QVariant(0)); // its group is unticked
    QVERIFY(model.setData(well, 2, Qt::CheckStateRole));
    QCOMPARE(t.root.numberOfSelectedItems(), 4); // the bookkeeping column never counts
    QCOMPARE(selected.count(), 3);
    QVERIFY(!model.setData(well, QVariant(QStringLiteral("x")), Qt::CheckStateRole));
}

void TestTreeItemModel::nothingToTick()
{
    Tree t;
    auto* emptyColumn = new MatrixData(QStringLiteral("empty"), 0, 1, QVariant::Double, true);
    t.well->insertChild(0, emptyColumn);
    auto* emptyGroup = new MatrixData(QStringLiteral("Empty"), -1, -1, QVariant::String, true);
    t.root.appendChild(emptyGroup, true);
    QTreeItemModel model(nullptr, &t.root);
    QVERIFY(!model.data(model.indexFromNode(emptyColumn), Qt::CheckStateRole).isValid());
    QVERIFY(!model.data(model.indexFromNode(emptyGroup), Qt::CheckStateRole).isValid());
    QCOMPARE(model.data(model.indexFromNode(t.dip), Qt::CheckStateRole), QVariant(2));
}

void TestTreeItemModel::rename()
{
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    QSignalSpy changed(&model, SIGNAL(treeItemNameChanged(rkBase::MatrixData*)));
    const QModelIndex dip = model.indexFromNode(t.dip);
    QVERIFY(!model.setData(dip, QStringLiteral("dip"))); // unchanged
    QVERIFY(!model.setData(dip, QString()));
    QVERIFY(model.setData(dip, QStringLiteral("azimuth")));
    QCOMPARE(t.dip->name(), QStringLiteral("azimuth_1"));
    QCOMPARE(t.dip->interfaceName(), QStringLiteral("azimuth_1"));
    QCOMPARE(changed.count(), 1);
    QVERIFY(model.modified());
    QCOMPARE(t.root.undoAction(0)->name(), QStringLiteral("Change Attribute Name"));
    QVERIFY(t.root.undoLastAction());
    QCOMPARE(t.dip->name(), QStringLiteral("dip"));
    t.x->setNodeRenamable(false);
    QVERIFY(!model.setData(model.indexFromNode(t.x), QStringLiteral("Easting")));
}

void TestTreeItemModel::colour()
{
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    t.dip->setColor(Qt::blue);
    model.changeAttributeColor({model.indexFromNode(t.dip), model.indexFromNode(t.azimuth)}, Qt::red);
    QCOMPARE(t.dip->color(), QColor(Qt::red));
    QCOMPARE(t.root.sizeUndoActions(), 2);
    QVERIFY(!t.root.undoAction(0)->changesData());
    QCOMPARE(t.root.undoAction(0)->name(), QStringLiteral("Change Attribute Color: dip"));
    t.root.undoLastAction();
    t.root.undoLastAction();
    QCOMPARE(t.dip->color(), QColor(Qt::blue));
}

void TestTreeItemModel::deleting_data()
{
    QTest::addColumn<QStringList>("selected");
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<int>("undoRecords");
    QTest::newRow("azimuth takes its strike") << QStringList{"azimuth"} << QStringList{"dip", "X(East)", "bookkeeping"} << 1;
    QTest::newRow("dip takes its strike") << QStringList{"dip"} << QStringList{"azimuth", "X(East)", "bookkeeping"} << 1;
    QTest::newRow("coordinates stay") << QStringList{"X(East)"} << QStringList{"dip", "azimuth", "X(East)", "strike", "bookkeeping"} << 0;
    QTest::newRow("computed, no record") << QStringList{"strike"} << QStringList{"dip", "azimuth", "X(East)", "bookkeeping"} << 0;
}

void TestTreeItemModel::deleting()
{
    QFETCH(QStringList, selected);
    QFETCH(QStringList, left);
    QFETCH(int, undoRecords);
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    QList<QModelIndex> indexes;
    for (const QString& n : selected)
        indexes << model.indexFromNode(t.root.getNodeFromName(n));
    model.deleteSelectedRows(indexes);
    QStringList names;
    for (MatrixData* c : t.well->children())
        names << c->name();
    QCOMPARE(names, left);
    QCOMPARE(t.root.sizeUndoActions(), undoRecords);
}

void TestTreeItemModel::deleteIsUndoable()
{
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    MatrixData* dip = t.dip;
    model.deleteSelectedRows({model.indexFromNode(dip)});
    QVERIFY(!t.root.getNodeFromName(QStringLiteral("dip")));
    QVERIFY(t.root.undoLastAction());
    QCOMPARE(t.root.getNodeFromName(QStringLiteral("dip")), dip);
    QCOMPARE(t.well->indexOfChild(dip), 0);
    QCOMPARE(dip->value(3, 0), QVariant(30.0));
    QVERIFY(t.root.redoNextAction());
    QVERIFY(!t.root.getNodeFromName(QStringLiteral("dip")));
}

void TestTreeItemModel::insertNewRows()
{
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    QVERIFY(!model.insertNewRows(0, 1, QModelIndex()));
    QVERIFY(!model.insertNewRows(0, 1, model.indexFromNode(t.dip))); // not a group under the root
    QVERIFY(model.insertNewRows(1, 2, model.indexFromNode(t.well)));
    QCOMPARE(t.well->child(1)->name(), QStringLiteral("New Inserted Item"));
    QCOMPARE(t.well->childCount(), 7);
}

void TestTreeItemModel::viewSelection()
{
    Tree t;
    QTreeItemModel model(nullptr, &t.root);
    QAttributeTreeView view(nullptr, false);
    view.setModel(&model);
    view.updateView();
    QVERIFY(view.popupMenu());
    QCOMPARE(view.popupMenu()->actions().size(), 1);
    QCOMPARE(view.firstSelected(), nullptr);
    view.selectItem(t.azimuth);
    QCOMPARE(view.firstSelected(), t.azimuth);
    QCOMPARE(view.allSelected().size(), std::size_t(1));
    view.deleteSelectedAttributes();
    QVERIFY(!t.root.getNodeFromName(QStringLiteral("azimuth")));
    QAttributeTreeView fieldView(nullptr, true);
    QCOMPARE(fieldView.popupMenu()->actions().size(), 2);
}

QTEST_MAIN(TestTreeItemModel)
#include "tst_qtreeitemmodel.moc"

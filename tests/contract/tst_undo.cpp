// Undo records replay: random sequences of edits, every one recorded as the library records
// them, are undone back to a deep copy of the starting tree and redone to the edited tree.
#include <MatrixData.h>
#include <TreeBytes.h>
#include <MatrixDataRestore.h>
#include <MatrixDataRestoreProxy.h>
#include <DisplayUnitManager.h>
#include <UnitManager.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QRandomGenerator>

using namespace rkBase;

namespace {
// Numbers shown at 2 decimals and in feet, while stored in metres with more digits than shown.
std::unique_ptr<MatrixData> startTree(UnitRegistry& registry)
{
    registry.getCategory(UnitRegistry::CATEGORY_ELEVATION)->setPrecision(2);
    registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1);
    auto root = std::make_unique<MatrixData>(QStringLiteral("root"), -1, -1, QVariant::String, true);
    root->setRegistry(&registry);
    for (int g = 0; g < 2; ++g) {
        auto* well = new MatrixData(QStringLiteral("Well %1").arg(g), -1, -1, QVariant::String, true);
        root->appendChild(well, true);
        const QVariant::Type types[] = {QVariant::Double, QVariant::Int, QVariant::String, QVariant::Color};
        for (int c = 0; c < 4; ++c) {
            auto* col = new MatrixData(QStringLiteral("c%1%2").arg(g).arg(c), 8, 1, types[c], true);
            for (int r = 0; r < 8; ++r)
                if ((r + c) % 5)
                    col->setValue(r, 0, types[c] == QVariant::Color ? QVariant(QColor(r * 20, c * 50, 9))
                                                                    : QVariant(r * 10 + c + (c == 0 ? 0.123456 : 0)));
            well->appendChild(col, false);
            if (types[c] == QVariant::Double)
                col->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
        }
    }
    return root;
}

class Editor
{
public:
    Editor(MatrixData& root, quint32 seed) : m_root(root), m_rng(seed) {}

    int pick(int n) { return n > 0 ? int(m_rng.bounded(quint32(n))) : 0; }

    QVariant randomValue(QVariant::Type type)
    {
        if (pick(6) == 0)
            return QVariant(); // a clear
        switch (type) {
        case QVariant::Color: return QColor(pick(256), pick(256), pick(256));
        case QVariant::String: return QStringLiteral("t%1").arg(pick(1000));
        case QVariant::Int: return pick(1000) - 500;
        default: return (pick(100000) - 50000) / 7.0;
        }
    }

    // What the sheet hands to the record of a one-cell edit: a number as the text it showed.
    static QVariant shownCell(const MatrixData* col, int row)
    {
        const QVariant old = col->value(row, 0);
        if (col->cellType() != QVariant::Double || !old.isValid())
            return old;
        return QString::number(col->convertModelToDisplay(old.toDouble()), 'f', col->unitPrecision());
    }

    MatrixData* anyGroup() { return m_root.child(pick(m_root.childCount())); }
    MatrixData* anyColumn()
    {
        const QList<MatrixData*> columns = m_root.leafs();
        return columns.isEmpty() ? nullptr : columns[pick(columns.size())];
    }

    void step()
    {
        MatrixData* col = anyColumn();
        MatrixData* group = anyGroup();
        switch (pick(9)) {
        case 0: // one cell, sometimes past the end so the column grows
            if (col) {
                const int row = pick(col->rowCount() + 3);
                auto* r = new MatrixDataRestore(col, QStringLiteral("Edit Cell"), false);
                r->dataStore(row, shownCell(col, row));
                col->setValue(row, 0, randomValue(col->cellType()));
                m_root.appendUndoAction(r, true);
            }
            break;
        case 1:
            if (col) {
                auto* r = new MatrixDataRestore(col, QStringLiteral("Rename"), false);
                r->setOldName(col->name());
                col->setName(QStringLiteral("n%1").arg(pick(100)));
                col->setInterfaceName(QStringLiteral("i%1").arg(pick(100)));
                m_root.appendUndoAction(r, true);
            }
            break;
        case 2:
            if (col) {
                auto* r = new MatrixDataRestore(col, QStringLiteral("Colour"), false);
                r->setColor(col->color());
                col->setColor(QColor(pick(256), 0, 0));
                m_root.appendUndoAction(r, false);
            }
            break;
        case 3: { // insert rows in a sheet
            auto* r = new MatrixDataRestore(group, QStringLiteral("Insert Rows"), true);
            QList<int> rows;
            for (int i = 0, n = 1 + pick(3); i < n; ++i)
                rows << pick(group->rowCount() + 2);
            std::sort(rows.begin(), rows.end());
            rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
            group->reInsertRowAtPos(rows, true);
            r->recordInsertedRows(rows);
            m_root.appendUndoAction(r, true);
            break;
        }
        case 4: { // delete rows, in no particular order
            auto* r = new MatrixDataRestore(group, QStringLiteral("Delete Rows"), true);
            QList<int> rows;
            for (int i = 0, n = 1 + pick(4); i < n; ++i)
                rows << pick(group->rowCount() + 1);
            r->recordRemovedRows(rows);
            group->removeRowsFromEachColumn(rows, true);
            m_root.appendUndoAction(r, true);
            break;
        }
        case 5: // delete an attribute
            if (col && col->parent()->childCount() > 1) {
                auto* r = new MatrixDataRestore(col->parent(), QStringLiteral("Delete Attribute"), true);
                r->recordRemovedAttribute(col);
                col->parent()->removeChild(col);
                m_root.appendUndoAction(r, true);
            }
            break;
        case 6: { // a new attribute
            auto* c = new MatrixData(QStringLiteral("new%1").arg(pick(100)), group->rowCount(), 1, QVariant::Double, true);
            c->setValue(pick(c->rowCount() + 1), 0, 1.25);
            group->insertChild(pick(group->childCount() + 1), c);
            auto* r = new MatrixDataRestore(group, QStringLiteral("New Attribute"), true);
            r->recordInsertedAttribute(c);
            m_root.appendUndoAction(r, true);
            break;
        }
        case 7: { // another column's data dropped on this one
            MatrixData* source = anyColumn();
            if (col && source && col != source) {
                QByteArray bytes;
                QDataStream out(&bytes, QIODevice::WriteOnly);
                source->putDataOnStream(out, false);
                auto* r = new MatrixDataRestore(col, QStringLiteral("Drop Data on Attribute"), true);
                r->recordNodeSnapshot();
                QDataStream in(bytes);
                QVERIFY(col->getDataFromStream(in));
                m_root.appendUndoAction(r, true);
            }
            break;
        }
        case 8: { // a paste over two columns as one action
            MatrixData* other = anyColumn();
            if (!col || !other)
                break;
            auto* proxy = new MatrixDataRestoreProxy(QStringLiteral("Paste"));
            int index = 0;
            for (MatrixData* c : {col, other}) {
                proxy->addToList(new MatrixDataRestore(c, QStringLiteral("Paste"), false), c);
                for (int i = 0; i < 3; ++i) {
                    const int row = pick(c->rowCount() + 1);
                    proxy->addDataStore(index, row, c->value(row, 0));
                    c->setValue(row, 0, randomValue(c->cellType()));
                }
                ++index;
            }
            m_root.appendUndoAction(proxy, true);
            break;
        }
        }
    }

private:
    MatrixData& m_root;
    QRandomGenerator m_rng;
};
} // namespace

class TestUndo : public QObject
{
    Q_OBJECT
private slots:
    void randomEditsUndoAndRedo_data();
    void randomEditsUndoAndRedo();
    void newActionDropsTheUndoneOnes();
    void proxyHandsOverItsOnlyAction();

private:
    UnitRegistry m_registry;
};

void TestUndo::randomEditsUndoAndRedo_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("steps");
    for (quint32 seed = 1; seed <= 24; ++seed)
        QTest::addRow("seed %u", seed) << seed << int(5 + seed * 3);
}

void TestUndo::randomEditsUndoAndRedo()
{
    QFETCH(quint32, seed);
    QFETCH(int, steps);
    auto root = startTree(m_registry);
    const QByteArray start = treeBytes(*root);
    Editor editor(*root, seed);
    for (int i = 0; i < steps; ++i)
        editor.step();
    const QByteArray edited = treeBytes(*root);
    const int actions = root->sizeUndoActions();
    QVERIFY(actions > 0);
    while (root->undoLastAction()) {
    }
    QCOMPARE(treeBytes(*root), start);
    while (root->redoNextAction()) {
    }
    QCOMPARE(root->undoPosition(), actions);
    QCOMPARE(treeBytes(*root), edited);
    // Undo half way and edit again: the rest of the list goes, and undo still gets home.
    for (int i = 0; i < actions / 2; ++i)
        root->undoLastAction();
    editor.step();
    while (root->undoLastAction()) {
    }
    QCOMPARE(treeBytes(*root), start);
}

void TestUndo::newActionDropsTheUndoneOnes()
{
    auto root = startTree(m_registry);
    MatrixData* col = root->getNodeFromName(QStringLiteral("c00"));
    for (int i = 0; i < 3; ++i) {
        auto* r = new MatrixDataRestore(col, QStringLiteral("Edit %1").arg(i), false);
        r->dataStore(0, col->value(0, 0));
        col->setValue(0, 0, double(i));
        root->appendUndoAction(r, true);
    }
    QVERIFY(root->undoLastAction());
    QVERIFY(root->undoLastAction());
    QCOMPARE(col->value(0, 0), QVariant(0.0));
    root->appendUndoAction(new MatrixDataRestore(col, QStringLiteral("Other"), false), true);
    QCOMPARE(root->sizeUndoActions(), 2);
    QCOMPARE(root->undoAction(1)->name(), QStringLiteral("Other"));
    QVERIFY(!root->redoNextAction());
    QVERIFY(!root->undoAction(5));
}

void TestUndo::proxyHandsOverItsOnlyAction()
{
    auto root = startTree(m_registry);
    MatrixData* col = root->getNodeFromName(QStringLiteral("c01"));
    MatrixDataRestoreProxy proxy;
    QVERIFY(!proxy.addDataStore(0, 1, QVariant()));
    proxy.addToList(new MatrixDataRestore(col, QStringLiteral("Paste"), false), col);
    QVERIFY(proxy.addDataStore(0, 1, col->value(1, 0)));
    col->setValue(1, 0, 777);
    QCOMPARE(proxy.size(), 1);
    MatrixDataRestore* only = proxy.firstNode();
    QCOMPARE(proxy.size(), 0);
    root->appendUndoAction(only, true);
    QVERIFY(root->undoLastAction());
    QCOMPARE(col->value(1, 0), QVariant(11));
}

QTEST_MAIN(TestUndo)
#include "tst_undo.moc"

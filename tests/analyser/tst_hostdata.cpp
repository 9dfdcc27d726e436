// Rows that a host adds for its own records: where they land, which columns decide that a row
// is free, what the new rows carry, and one undo action per call that gives the tree back.
#include <MatrixData.h>
#include <QAttributeTreeView.h>
#include <QDataAnalyserDialog.h>
#include <TreeBytes.h>
#include <UnitRegistry.h>

#include <QAction>
#include <QtTest>

#include <memory>

using namespace rkBase;

namespace {
// Six records. Row 2 holds only a "Type", row 3 only a symbol style, row 4 only a cell of an
// unticked column: rows 2 and 4 are free, row 3 is not.
void fillWell(MatrixData* root, bool full)
{
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    root->appendChild(well, true);
    auto add = [well](const char* name, QVariant::Type type, const QVariantList& cells, bool ticked) {
        auto* c = new MatrixData(QString::fromLatin1(name), cells.size(), 1, type, true);
        for (int r = 0; r < cells.size(); ++r)
            c->setValue(r, 0, cells[r]);
        c->setSelected(ticked, false);
        well->appendChild(c, false);
    };
    const QVariant none;
    add("Name", QVariant::String, {"a", "b", full ? "c" : none, none, full ? "e" : none, "f"}, true);
    add("depth", QVariant::Double, {1.0, 2.0, none, none, none, 6.0}, true);
    add("Type", QVariant::String, {none, none, "Top", none, none, none}, true);
    add("Data_Type", QVariant::String, {"Vertex", "Vertex", none, none, none, "Marker"}, true);
    add("Dip Data Symbol Style", QVariant::Int, {none, none, none, 5, none, none}, false);
    add("note", QVariant::String, {none, none, none, none, "x", none}, false);
}

void clearTree(MatrixData* root)
{
    while (root->childCount() > 0) {
        MatrixData* child = root->child(0);
        root->removeChild(child);
        delete child;
    }
}

MatrixData* column(MatrixData* root, const char* name)
{
    return root->getNodeFromName(QString::fromLatin1(name));
}
} // namespace

class TestHostData : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();
    void placesRows_data();
    void placesRows();
    void nothingToAdd_data();
    void nothingToAdd();
    void fieldDataMenu();

private:
    void rebuild(bool full);
    void add(const QString& kind, int row, int count);

    UnitRegistry m_registry;
    std::unique_ptr<QDataAnalyserDialog> m_dialog;
    MatrixData* m_root = nullptr;
};

void TestHostData::initTestCase()
{
    m_dialog = std::make_unique<QDataAnalyserDialog>();
    m_root = m_dialog->dataRoot();
    m_root->setRegistry(&m_registry);
    fillWell(m_root, false);
    m_dialog->initialize(QStringLiteral("test"), nullptr, &m_registry, Qt::Horizontal, false, true, false, false, true,
                         false, 1, true, false);
}

void TestHostData::init()
{
    rebuild(false);
}

void TestHostData::cleanupTestCase()
{
    m_dialog.reset();
}

void TestHostData::rebuild(bool full)
{
    m_root->clearUndoActions();
    clearTree(m_root);
    m_root->setSelected(true, false);
    fillWell(m_root, full);
    m_dialog->updateAllViews(false, false);
}

void TestHostData::add(const QString& kind, int row, int count)
{
    if (kind == QLatin1String("Vertex"))
        m_dialog->addNewVertexData(row, count);
    else if (kind == QLatin1String("Marker"))
        m_dialog->addNewMarkerData(row, count);
    else
        m_dialog->addNewWellCurveData(row, count);
}

void TestHostData::placesRows_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("full");   // rows 2 and 4 hold names: no free row
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("insertAt"); // where blank rows went in
    QTest::addColumn<int>("inserted");
    QTest::newRow("free row past a Type") << "Vertex" << false << -1 << 1 << 2 << 0 << 0;
    QTest::newRow("free row, the rest inserted before a symbol") << "Marker" << false << -1 << 3 << 2 << 3 << 2;
    QTest::newRow("no free row appends") << "Well Curve" << true << -1 << 2 << 6 << 6 << 2;
    QTest::newRow("any negative row is the end rule") << "Vertex" << true << -7 << 1 << 6 << 6 << 1;
    QTest::newRow("explicit row") << "Marker" << false << 1 << 2 << 1 << 1 << 2;
    QTest::newRow("explicit row 0") << "Vertex" << true << 0 << 1 << 0 << 0 << 1;
    QTest::newRow("row past the end appends") << "Well Curve" << false << 99 << 1 << 6 << 6 << 1;
}

void TestHostData::placesRows()
{
    QFETCH(QString, kind);
    QFETCH(bool, full);
    QFETCH(int, row);
    QFETCH(int, count);
    QFETCH(int, first);
    QFETCH(int, insertAt);
    QFETCH(int, inserted);
    rebuild(full);
    const QByteArray before = treeBytes(*m_root);

    add(kind, row, count);
    QCOMPARE(m_dialog->firstNewHostRow(), first);
    for (MatrixData* leaf : m_root->leafs())
        QCOMPARE(leaf->rowCount(), 6 + inserted);
    auto moved = [&](int r) { return r >= insertAt ? r + inserted : r; };
    // Records keep their rows across all columns, ticked or not.
    QCOMPARE(column(m_root, "Name")->value(moved(5), 0).toString(), QStringLiteral("f"));
    QCOMPARE(column(m_root, "note")->value(moved(4), 0).toString(), QStringLiteral("x"));
    QCOMPARE(column(m_root, "Dip Data Symbol Style")->value(moved(3), 0).toInt(), 5);
    QCOMPARE(column(m_root, "Data_Type")->value(moved(5), 0).toString(), QStringLiteral("Marker"));
    for (int r = first; r < first + count; ++r) {
        QCOMPARE(column(m_root, "Data_Type")->value(r, 0).toString(), kind);
        QVERIFY(column(m_root, "Name")->value(r, 0).toString().isEmpty());
    }

    QCOMPARE(m_root->sizeUndoActions(), 1);
    const QByteArray after = treeBytes(*m_root);
    QVERIFY(m_root->undoLastAction());
    QCOMPARE(treeBytes(*m_root), before);
    QVERIFY(m_root->redoNextAction());
    QCOMPARE(treeBytes(*m_root), after);
}

void TestHostData::nothingToAdd_data()
{
    QTest::addColumn<QString>("tree");
    QTest::addColumn<int>("count");
    QTest::newRow("count 0") << "well" << 0;
    QTest::newRow("negative count") << "well" << -3;
    QTest::newRow("no column ticked") << "unticked" << 2;
    QTest::newRow("tree without data") << "empty" << 2;
}

// Bad requests leave the tree and the undo list as they were.
void TestHostData::nothingToAdd()
{
    QFETCH(QString, tree);
    QFETCH(int, count);
    if (tree == QLatin1String("unticked")) {
        for (MatrixData* leaf : m_root->leafs())
            if (leaf->name() != QLatin1String("Dip Data Symbol Style"))
                leaf->setSelected(false, false);
        column(m_root, "Dip Data Symbol Style")->setName(QStringLiteral("Symbol"));
    } else if (tree == QLatin1String("empty")) {
        clearTree(m_root);
    }
    const QByteArray before = treeBytes(*m_root);
    for (const char* kind : {"Vertex", "Marker", "Well Curve"})
        for (int row : {-1, 0, 3})
            add(QString::fromLatin1(kind), row, count);
    QCOMPARE(m_dialog->firstNewHostRow(), -1);
    QCOMPARE(treeBytes(*m_root), before);
    QCOMPARE(m_root->sizeUndoActions(), 0);
}

// The tree view's menu entry reaches the sheet and gives it one line to type into.
void TestHostData::fieldDataMenu()
{
    QAction* entry = nullptr;
    for (QAction* a : m_dialog->treeView()->findChildren<QAction*>())
        if (a->text() == QLatin1String("Create Field Data Columns..."))
            entry = a;
    QVERIFY(entry);
    entry->trigger();
    MatrixData* sheet = nullptr;
    for (MatrixData* child : m_root->children())
        if (child->name() == QLatin1String("Field Data"))
            sheet = child;
    QVERIFY(sheet && sheet->childCount() > 0);
    for (MatrixData* c : sheet->children())
        QCOMPARE(c->rowCount(), 1);
}

QTEST_MAIN(TestHostData)
#include "tst_hostdata.moc"
